// What a deletion of a tree says and does where it may not go: a drive without a directory, a root that is a link or
// held by somebody else, a subdirectory held by somebody else; the climb and its base; and the truth of its answers
// whatever call fails.
#include "apoyo/fallos.hpp"
#include "apoyo/formas_de_borrar.hpp"
#include "apoyo/lado_unix.hpp"
#include "apoyo/otro_proceso.hpp"
#include "companions/buclrein.h"
#include "companions/directorio_abierto.hpp"
#include "companions/sistema.hpp"
#include "lumodir.h"

using namespace apoyo;

namespace {

using lista = std::vector<std::string>;

void siembra_raiz(const directorio_temporal& d) {
    d.fichero("t\\a", "a");
    d.fichero("t\\s\\b", "b");
    d.fichero("t\\s\\p", "p", FILE_ATTRIBUTE_READONLY);
    d.directorio("t\\v");
    d.fichero("fuera\\f", "f");
}

// Nothing went: whoever answers says so, whoever must succeed reports it.
void nada_se_fue(const forma_de_borrar& f, unsigned short contestado, const std::string& de) {
    EXPECT_EQ(contestado, f.contesta == respuesta::ninguna ? no_contesta : 0) << de;
    const lista informes = toma_expresiones();
    if (f.por_pasadas || f.con_puntos) {
        EXPECT_EQ(informes, f.debe ? lista{no_se_han_borrado_todos} : lista{}) << de;
        EXPECT_EQ(toma_preguntas().size(), 0u) << de;
        EXPECT_EQ(toma_avisos(), lista{}) << de;
    } else if (f.quita_raiz) {
        EXPECT_GT(toma_preguntas().size() + toma_avisos().size(), 0u) << de << ": the user is told";
    }
    toma_preguntas();
    toma_avisos();
    toma_esperas();
}

}  // namespace

TEST(nombres_atados, una_unidad_sin_directorio_se_rechaza) {
    const directorio_temporal d;
    siembra_raiz(d);
    const lista antes = d.arbol();
    wchar_t actual[MAX_PATH];
    ::GetCurrentDirectoryW(MAX_PATH, actual);
    ASSERT_TRUE(::SetCurrentDirectoryW(d.ruta_w("t").c_str()));
    const std::string propia = d.ruta().substr(0, 2);
    for (const std::string& unidad : {std::string("Q:"), std::string("q:"), propia}) {
        for (const forma_de_borrar& f : formas_de_borrar) {
            const std::string de = std::string(f.nombre) + " of " + unidad;
            fallos libro;
            libro.falla(1, ERROR_ACCESS_DENIED, true);  // nothing would reach a drive all the same
            const unsigned short contestado = f.borra(unidad);
            EXPECT_EQ(contestado, f.contesta == respuesta::ninguna ? no_contesta : 0) << de;
            EXPECT_EQ(libro.llamadas(), 0u) << de << ": nothing is even looked at";
            const informe dado = toma_el_informe();
            EXPECT_EQ(dado.expresion, "unidad_sin_directorio == FALSO") << de;
            EXPECT_EQ(dado.detalle, unidad) << de;
            EXPECT_EQ(toma_preguntas().size(), 0u) << de;
            EXPECT_EQ(toma_avisos(), lista{}) << de;
            EXPECT_EQ(toma_esperas().size(), 0u) << de;
            toma_informes();
        }
        fallos libro;
        libro.falla(1, ERROR_ACCESS_DENIED, true);
        const pasada una = una_pasada(unidad);
        EXPECT_EQ(una.respuesta, 0);
        EXPECT_EQ(una.sin_borrar, lista{});
        EXPECT_EQ(toma_expresiones(), lista{"unidad_sin_directorio == FALSO"});
    }
    ::SetCurrentDirectoryW(actual);
    EXPECT_EQ(d.arbol(), antes);
}

TEST(nombres_atados, un_directorio_de_la_unidad_no_es_una_unidad) {
    const directorio_temporal d;
    wchar_t actual[MAX_PATH];
    ::GetCurrentDirectoryW(MAX_PATH, actual);
    for (const forma_de_borrar& f : formas_de_borrar) {
        siembra_raiz(d);
        ASSERT_TRUE(::SetCurrentDirectoryW(d.ruta_w().c_str()));
        const unsigned short contestado = f.borra(d.ruta().substr(0, 2) + "t");
        EXPECT_EQ(contestado, f.contesta == respuesta::ninguna ? no_contesta : 1) << f.nombre;
        EXPECT_EQ(d.existe("t"), !f.quita_raiz) << f.nombre;
        EXPECT_FALSE(d.existe("t\\a")) << f.nombre;
        EXPECT_EQ(d.contenido("fuera\\f"), "f") << f.nombre;
        ::SetCurrentDirectoryW(actual);
    }
}

// Windows takes such a root itself away, where a root goes; Wine would come to what it points to: there it stays too.
TEST(nombres_atados, una_raiz_que_es_un_enlace_no_se_toca_y_se_dice) {
    buclrein_establece_politica(0, 0);
    const sustituye azar(interno::sistema.numero_al_azar, siempre_cero);
    LADO_UNIX(u);
    const bool se_va = !interno::sistema.sigue_enlaces();
    const char* const enlaces =
        "[ -L l ] || ln -s lleno l; [ -L lv ] || ln -s vacio lv; [ -L lp ] || ln -s puntos lp;"
        "[ -L yo ] || ln -s . yo; [ -L doble ] || ln -s l doble";
    u.corre(
        std::string(
            "mkdir -p lleno/s vacio puntos/.git; echo 1 >lleno/a; echo 2 >lleno/s/b; chmod 444 lleno/a;") +
        enlaces);
    const lista antes = u.censo_exacto(".");
    for (const char* raiz : {"l", "l\\", "l/", "l\\\\", "l\\.", "lv", "lv\\", "lp", "doble", "l\\..\\l"}) {
        for (const forma_de_borrar& f : formas_de_borrar) {
            const std::string de = std::string(f.nombre) + " of " + raiz;
            fallos libro;
            const unsigned short contestado = f.borra(u.d.ruta(raiz));
            if (se_va && f.quita_raiz) {
                EXPECT_EQ(contestado, f.contesta == respuesta::ninguna ? no_contesta : 1) << de;
                EXPECT_FALSE(u.d.existe(raiz)) << de;
                u.corre(enlaces);
            } else {
                nada_se_fue(f, contestado, de);
            }
            EXPECT_EQ(libro.manijas_abiertas(), 0u) << de;
            EXPECT_TRUE(u.d.existe("lleno\\s\\b") && u.d.existe("vacio")) << de;
        }
        const pasada una = una_pasada(u.d.ruta(raiz));
        EXPECT_EQ(una.respuesta, se_va ? 1 : 0) << raiz;
        EXPECT_EQ(una.sin_borrar, lista{}) << raiz;
        u.corre(enlaces);
    }
    EXPECT_EQ(u.censo_exacto("."), antes);
    // A link on the way is the caller's business: the directory that was named is behind it.
    EXPECT_EQ(cdir_borra_contenido_directorio_si_es_posible_reintentando_u(u.d.ruta_w("l\\s").c_str()), 1);
    EXPECT_FALSE(u.d.existe("lleno\\s"));
    EXPECT_TRUE(u.d.existe("lleno\\a"));
}

TEST(nombres_atados, una_raiz_que_otro_tiene_sin_compartir_se_dice) {
    buclrein_establece_politica(0, 0);
    const sustituye azar(interno::sistema.numero_al_azar, siempre_cero);
    const directorio_temporal d;
    siembra_raiz(d);
    const lista antes = d.arbol();
    {
        otro_proceso sujeta(d.ruta("t"), GENERIC_READ, 0);
        ASSERT_EQ(d.abre("t", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE),
                  INVALID_HANDLE_VALUE);
        for (const forma_de_borrar& f : formas_de_borrar) {
            for (const char* raiz : {"t", "t\\"}) {
                fallos libro;
                nada_se_fue(f, f.borra(d.ruta(raiz)), f.nombre);
                EXPECT_EQ(libro.manijas_abiertas(), 0u) << f.nombre;
                EXPECT_TRUE(d.existe("t\\a") && d.existe("t\\v") && d.existe("t\\s\\b")) << f.nombre;
            }
        }
        const pasada una = una_pasada(d.ruta("t"));
        EXPECT_EQ(una.respuesta, 0);
        EXPECT_EQ(una.sin_borrar, lista{}) << "directories do not go into the list";
        sujeta.suelta();
    }
    EXPECT_EQ(d.arbol(), antes);
    EXPECT_EQ(cdir_borra_directorio_y_subdirectorios_UNICODE(d.ruta_w("t").c_str()), 1);
    EXPECT_EQ(d.arbol(), (lista{"fuera\\", "fuera\\f"}));
}

TEST(nombres_atados, un_subdirectorio_que_otro_tiene) {
    buclrein_establece_politica(0, 0);
    const sustituye azar(interno::sistema.numero_al_azar, siempre_cero);
    // Whoever shares all but deletion lets the files go; the directory stays.
    for (const DWORD compartir : {DWORD{0}, DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE}}) {
        const bool se_entra = compartir != 0;
        for (const forma_de_borrar& f : formas_de_borrar) {
            if (!f.recursiva) {
                continue;
            }
            const std::string de = std::string(f.nombre) + (se_entra ? ", shared" : ", not shared");
            const directorio_temporal d;
            siembra_raiz(d);
            const HANDLE sujeto = d.abre("t\\s", GENERIC_READ, compartir);
            ASSERT_NE(sujeto, INVALID_HANDLE_VALUE);
            {
                fallos libro;
                const unsigned short contestado = f.borra(d.ruta("t"));
                EXPECT_EQ(libro.manijas_abiertas(), 0u) << de;
                if (f.contesta == respuesta::se_fue_el_directorio) {
                    EXPECT_EQ(contestado, 0) << de;
                } else if (f.contesta == respuesta::se_fueron_los_ficheros) {
                    EXPECT_EQ(contestado, se_entra ? 1 : 0) << de;
                }
            }
            const lista informes = toma_expresiones();
            if (f.por_pasadas) {
                EXPECT_EQ(informes, f.debe && !se_entra ? lista{no_se_han_borrado_todos} : lista{}) << de;
            }
            toma_preguntas();
            toma_avisos();
            toma_esperas();
            ::CloseHandle(sujeto);
            EXPECT_EQ(d.existe("t\\s\\b"), !se_entra) << de;
            EXPECT_TRUE(d.existe("t\\s")) << de;
            EXPECT_FALSE(d.existe("t\\a") || d.existe("t\\v")) << de << ": the rest goes";
            EXPECT_EQ(d.contenido("fuera\\f"), "f") << de;
        }
        const directorio_temporal d;
        siembra_raiz(d);
        const HANDLE sujeto = d.abre("t\\s", GENERIC_READ, compartir);
        const pasada una = una_pasada(d.ruta("t"));
        EXPECT_EQ(una.respuesta, 0);
        EXPECT_EQ(una.sin_borrar, lista{}) << "directories do not go into the list";
        ::CloseHandle(sujeto);
    }
}

// The name that is looked at is the one that is walked, or none is.
TEST(nombres_atados, una_raiz_que_acaba_en_blanco_o_punto) {
    buclrein_establece_politica(0, 0);
    const sustituye azar(interno::sistema.numero_al_azar, siempre_cero);
    for (const char* raiz : {"t ", "t..", "t. ", "t  \\"}) {
        for (const forma_de_borrar& f : formas_de_borrar) {
            const std::string de = std::string(f.nombre) + " of '" + raiz + "'";
            const directorio_temporal d;
            const std::string literal = std::string(raiz).substr(0, std::string(raiz).find('\\'));
            d.fichero("t\\f");
            d.fichero(literal + "\\g");
            const unsigned short contestado = f.borra(d.ruta(raiz));
            const lista informes = toma_expresiones();
            toma_preguntas();
            toma_avisos();
            toma_esperas();
            EXPECT_TRUE(d.existe("t\\f") || d.existe(literal + "\\g")) << de << ": one of them at most";
            const bool se_fue = !d.existe("t\\f") || !d.existe(literal + "\\g");
            if (f.contesta != respuesta::ninguna) {
                EXPECT_EQ(contestado, se_fue ? 1 : 0) << de;
            }
            if (f.debe) {
                EXPECT_EQ(informes, se_fue ? lista{} : lista{no_se_han_borrado_todos}) << de;
            }
        }
    }
}

// Whatever call fails: "every file went" is said only when it did.
TEST(nombres_atados, lo_que_se_contesta_es_verdad_falle_lo_que_falle) {
    buclrein_establece_politica(0, 0);
    const sustituye azar(interno::sistema.numero_al_azar, siempre_cero);
    const directorio_temporal d;
    constexpr unsigned max_llamadas = 500;
    for (const forma_de_borrar& f : formas_de_borrar) {
        if (f.contesta == respuesta::ninguna && !f.debe) {
            continue;
        }
        bool seguir = true;
        for (const std::vector<DWORD>& codigos :
             series_de_codigos({ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION, ERROR_INVALID_PARAMETER,
                                ERROR_NETNAME_DELETED})) {
            for (const bool para_siempre : {false, true}) {
                bool limpia = false;
                for (unsigned n = 1; seguir && !limpia && n <= max_llamadas; ++n) {
                    const DWORD codigo = codigos[n % codigos.size()];
                    siembra_raiz(d);
                    unsigned short contestado = 0;
                    std::string fallada;
                    {
                        fallos libro;
                        libro.falla(n, codigo, para_siempre);
                        contestado = f.borra(d.ruta("t"));
                        limpia = libro.llamadas() < n;
                        fallada = limpia ? std::string() : libro.historia()[n - 1].nombre;
                        EXPECT_EQ(libro.manijas_abiertas(), 0u) << f.nombre << " " << n << " " << fallada;
                    }
                    const std::string de = std::string(f.nombre) + ", call " + std::to_string(n) + " (" +
                                           fallada + ") fails with " + std::to_string(codigo) +
                                           (para_siempre ? " for ever" : " once");
                    const bool hay_ficheros =
                        d.existe("t\\a") || (f.recursiva && (d.existe("t\\s\\b") || d.existe("t\\s\\p")));
                    const lista informes = toma_expresiones();
                    const bool se_dice = f.debe ? std::find(informes.begin(), informes.end(),
                                                            no_se_han_borrado_todos) == informes.end()
                                                : contestado != 0;
                    EXPECT_FALSE(hay_ficheros && se_dice) << de << ": files are there";
                    EXPECT_FALSE(f.contesta == respuesta::se_fue_el_directorio && contestado != 0 &&
                                 d.existe("t"))
                        << de << ": the directory is there";
                    EXPECT_EQ(d.contenido("fuera\\f"), "f") << de;
                    toma_preguntas();
                    toma_avisos();
                    toma_esperas();
                    seguir = !testing::Test::HasFailure() || n < 3;
                }
            }
        }
    }
}

namespace {

struct subida {
    const char* nombre;
    std::string directorio;
    std::string base;
};

}  // namespace

TEST(nombres_atados, la_base_de_la_subida_se_queda_como_se_escriba) {
    wchar_t actual[MAX_PATH];
    ::GetCurrentDirectoryW(MAX_PATH, actual);
    for (const bool ancha : {true, false}) {
        const directorio_temporal d;
        ASSERT_TRUE(::SetCurrentDirectoryW(d.ruta_w().c_str()));
        const std::string r = d.ruta();
        std::string barras = r;
        std::replace(barras.begin(), barras.end(), '\\', '/');
        const subida filas[] = {
            {"a doubled separator before the base", r + "\\\\base\\a\\b", r + "\\base"},
            {"two points before the base", r + "\\x\\..\\base\\a\\b", r + "\\base"},
            {"a point before the base", r + "\\.\\base\\a\\b", r + "\\base"},
            {"the long prefix", "\\\\?\\" + r + "\\base\\a\\b", r + "\\base"},
            {"the device prefix", "\\\\.\\" + r + "\\base\\a\\b", r + "\\base"},
            {"the base with the long prefix", r + "\\base\\a\\b", "\\\\?\\" + r + "\\base"},
            {"a base from the root of the drive", r + "\\base\\a\\b", r.substr(2) + "\\base"},
            {"a relative base", r + "\\base\\a\\b", "base"},
            {"a relative directory", "base\\a\\b", r + "\\base"},
            {"both relative", "base\\a\\b", "base"},
            {"both relative, with a point", ".\\base\\a\\b", "base"},
            {"a base of the drive's current directory", r + "\\base\\a\\b", r.substr(0, 2) + "base"},
            {"a blank base", r + "\\base\\a\\b", " "},
            {"an empty base", r + "\\base\\a\\b", ""},
            {"forward slashes in the directory", barras + "/base/a/b", r + "\\base"},
            {"forward slashes in the base", r + "\\base\\a\\b", barras + "/base"},
            {"a base that ends in a point", r + "\\base\\a\\b", r + "\\base."},
            {"a base that ends in a blank", r + "\\base\\a\\b", r + "\\base "},
            {"a base that ends in two points", r + "\\base\\a\\b", r + "\\base\\a\\.."},
            {"two points within", r + "\\base\\a\\..\\a\\b", r + "\\base"},
            {"two points out and in", r + "\\base\\..\\base\\a\\b", r + "\\base"},
            {"two points at the end", r + "\\base\\a\\..", r + "\\base"},
            {"out of the base", r + "\\base\\..\\base", r + "\\base"},
            {"a name that the system cuts", r + "\\base.\\a\\b", r + "\\base"},
            {"above the base", r, r + "\\base"},
            {"beside the base", r + "\\otra\\c", r + "\\base"},
        };
        for (const subida& caso : filas) {
            const std::string de = std::string(caso.nombre) + (ancha ? ", wide" : ", 8-bit");
            d.directorio("base\\a\\b");
            d.directorio("otra\\c");
            d.directorio("x");
            const lista antes = d.arbol();
            {
                fallos libro;
                if (ancha) {
                    lumodir_borra_directorios_de_path_si_estan_vacios_UNICODE(w(caso.directorio).c_str(),
                                                                              w(caso.base).c_str());
                } else {
                    lumodir_borra_directorios_de_path_si_estan_vacios(cp1252(caso.directorio).c_str(),
                                                                      cp1252(caso.base).c_str());
                }
                EXPECT_EQ(libro.manijas_abiertas(), 0u) << de;
            }
            EXPECT_TRUE(d.existe("base")) << de;
            EXPECT_TRUE(d.existe("x")) << de;
            EXPECT_TRUE(d.existe("")) << de;
            const lista informes = toma_expresiones();
            if (std::find(informes.begin(), informes.end(), no_es_principio) != informes.end()) {
                EXPECT_EQ(d.arbol(), antes) << de << ": reported, and nothing removed";
            }
            EXPECT_EQ(toma_avisos(), lista{}) << de;
            d.directorio("");
        }
        ::SetCurrentDirectoryW(actual);
    }
}

TEST(nombres_atados, la_subida_no_quita_enlaces_ni_su_destino) {
    LADO_UNIX(u);
    u.corre(
        "mkdir -p base/a vacio fuera/v; ln -s ../../vacio base/a/l; ln -s ../fuera base/f; ln -s base otra");
    const lista antes = u.censo_exacto(".");
    struct fila {
        const char* directorio;
        const char* base;
    };
    const fila filas[] = {
        {"base\\a\\l", "base"},
        {"base\\a\\l\\", "base"},
        {"base\\f", "base"},
        {"otra", ""},
    };
    for (const fila& caso : filas) {
        for (const bool con_base : {true, false}) {
            const texto_w base = u.d.ruta_w(caso.base);
            if (con_base) {
                lumodir_borra_directorios_de_path_si_estan_vacios_UNICODE(u.d.ruta_w(caso.directorio).c_str(),
                                                                          base.c_str());
            } else {
                lumodir_borra_directorios_de_path_si_estan_vacios(u.d.ruta_a(caso.directorio).c_str(),
                                                                  nullptr);
            }
            EXPECT_EQ(u.censo_exacto("."), antes) << caso.directorio;
        }
    }
}

// Somebody puts another directory in the place of the one that is open, and back: what a link of the other one led to
// keeps its attributes.
TEST(nombres_atados, una_marca_no_cambia_detras_de_un_enlace_que_ya_no_esta) {
    LADO_UNIX_QUE_SIGUE_ENLACES(u);
    u.corre(
        "mkdir fuera t t/d otro; echo x >fuera/f; chmod 444 fuera/f; echo y >t/d/f\n"
        "ln -s \"$PWD/fuera/f\" otro/f; mv t/d aparte; mv otro t/d");
    const texto_w dada = u.d.ruta_w("t");
    const interno::ruta_fijada ruta(dada.c_str());
    interno::trato_con_volumen trato;
    interno::directorio_abierto raiz;
    ASSERT_EQ(raiz.abre(ruta, trato), DWORD{ERROR_SUCCESS});
    const auto lee = [](interno::directorio_abierto& directorio, const wchar_t* nombre) {
        interno::lector_de_directorio lector(directorio);
        const interno::entrada_leida* e = lector.siguiente();
        while (e != nullptr && e->nombre != nombre) {
            e = lector.siguiente();
        }
        interno::entrada_leida leida = e == nullptr ? interno::entrada_leida{} : *e;
        leida.nombre = nombre;
        return leida;
    };
    interno::directorio_abierto hijo;
    ASSERT_EQ(hijo.abre(raiz, lee(raiz, L"d")), DWORD{ERROR_SUCCESS});
    const interno::entrada_leida f = lee(hijo, L"f");
    u.corre("mv t/d otro; mv aparte t/d");
    EXPECT_EQ(hijo.pon_atributos(f, FILE_ATTRIBUTE_NORMAL), DWORD{ERROR_CANT_ACCESS_FILE});
    EXPECT_EQ(u.corre("stat -c %a fuera/f"), "444\n");
    hijo.borra(f);
    EXPECT_EQ(u.corre("cat fuera/f t/d/f"), "x\ny\n");
    u.corre("chmod 644 fuera/f");
    // And once more between the mark for deletion and the end of the handle, by which the system follows the path again.
    static const lado_unix* lado;
    lado = &u;
    const sustituye cambia(
        interno::sistema.SetFileInformationByHandle,
        [](HANDLE abierta, FILE_INFO_BY_HANDLE_CLASS clase, LPVOID datos, DWORD bytes) WINAPI {
            const BOOL hecho = ::SetFileInformationByHandle(abierta, clase, datos, bytes);
            lado->corre("[ -e aparte ] || { mv t/d aparte; ln -s \"$PWD/fuera\" t/d; }");
            return hecho;
        });
    hijo.borra(f);
    EXPECT_EQ(u.corre("cat fuera/f"), "x\n");
}

// A directory stood in the place of the root while it was opened, and is back where it belongs: the system has a name for it
// that says nothing any more.
namespace {

const lado_unix* el_lado_unix;
decltype(interno::sistema.CreateFileW) abre_de_verdad;
unsigned aperturas_cambiadas;

HANDLE WINAPI i_abre_otro_en_su_sitio(LPCWSTR ruta, DWORD acceso, DWORD compartir,
                                      LPSECURITY_ATTRIBUTES seguridad, DWORD disposicion, DWORD indicadores,
                                      HANDLE plantilla) {
    const bool es_la_raiz = texto_w(ruta).ends_with(L"\\t") && (acceso & FILE_LIST_DIRECTORY) != 0;
    if (es_la_raiz) {
        ++aperturas_cambiadas;
        el_lado_unix->corre("mv t aparte; mv fuera t");
    }
    const HANDLE abierta =
        abre_de_verdad(ruta, acceso, compartir, seguridad, disposicion, indicadores, plantilla);
    if (es_la_raiz) {
        el_lado_unix->corre("mv t fuera; mv aparte t");
    }
    return abierta;
}

}  // namespace

TEST(nombres_atados, una_raiz_que_era_otra_cuando_se_abrio) {
    LADO_UNIX_QUE_SIGUE_ENLACES(u);
    u.corre("mkdir fuera t; echo x >fuera/f; echo y >t/f");
    const texto_w dada = u.d.ruta_w("t");
    el_lado_unix = &u;
    abre_de_verdad = interno::sistema.CreateFileW;
    aperturas_cambiadas = 0;
    {
        const sustituye cambia(interno::sistema.CreateFileW, i_abre_otro_en_su_sitio);
        const interno::ruta_fijada ruta(dada.c_str());
        interno::trato_con_volumen trato;
        interno::directorio_abierto raiz;
        EXPECT_EQ(raiz.abre(ruta, trato), DWORD{ERROR_CANT_ACCESS_FILE});
        EXPECT_EQ(aperturas_cambiadas, 1u);
    }
    EXPECT_EQ(u.corre("cat fuera/f t/f"), "x\ny\n");
    // Undisturbed it is opened.
    const interno::ruta_fijada ruta(dada.c_str());
    interno::trato_con_volumen trato;
    interno::directorio_abierto raiz;
    EXPECT_EQ(raiz.abre(ruta, trato), DWORD{ERROR_SUCCESS});
}
