// Deleting one file, removing one directory: real ones, held open by another process, and under faults.
#include "files/borrado.hpp"

#include "apoyo/como_windows.hpp"
#include "apoyo/directorio.hpp"
#include "apoyo/exportada.hpp"
#include "apoyo/fallos.hpp"
#include "apoyo/lado_unix.hpp"
#include "apoyo/otro_proceso.hpp"
#include "cdir.h"
#include "companions/buclrein.h"
#include "companions/plataforma.hpp"
#include "lumodir.h"

using namespace apoyo;

namespace {

using lista = std::vector<std::string>;

const std::string sugerencia =
    "It may be that it is being used by another application or you do not have sufficient privileges to "
    "write to "
    "this directory.";

std::string mensaje_fichero(const std::string& ruta, const std::string& extra = sugerencia) {
    return "Cannot delete the file '" + ruta + "'\n" + extra;
}

// A way of deleting a file. Its answer is 1, 0 or `no_contesta`.
struct forma_fichero {
    const char* nombre;
    bool ancha;
    bool exige;     // a missing file is reported
    bool insiste;   // retries, and clears the read-only mark
    bool pregunta;  // asks the user in the end
    bool contesta;
    std::function<unsigned short(const std::string&)> borra;
};

const forma_fichero formas_fichero[] = {
    {"cdir_borra_fichero_UNICODE", true, true, true, true, true,
     [](const std::string& r) { return llama(cdir_borra_fichero_UNICODE, r); }},
    {"cdir_borra_fichero", false, true, true, true, false,
     [](const std::string& r) { return llama(cdir_borra_fichero, r); }},
    {"cdir_borra_fichero_con_mensaje_extra_UNICODE", true, true, true, true, true,
     [](const std::string& r) { return llama(cdir_borra_fichero_con_mensaje_extra_UNICODE, r, nullptr); }},
    {"cdir_borra_fichero_con_mensaje_extra", false, true, true, true, false,
     [](const std::string& r) { return llama(cdir_borra_fichero_con_mensaje_extra, r, nullptr); }},
    {"cdir_borra_fichero_si_existe_UNICODE", true, false, true, true, true,
     [](const std::string& r) { return llama(cdir_borra_fichero_si_existe_UNICODE, r); }},
    {"cdir_borra_fichero_si_existe", false, false, true, true, false,
     [](const std::string& r) { return llama(cdir_borra_fichero_si_existe, r); }},
    {"lumodir_borra_fichero_si_existe_UNICODE", true, false, true, false, true,
     [](const std::string& r) -> unsigned short {
         unsigned short error = 9;
         llama(lumodir_borra_fichero_si_existe_UNICODE, r, &error);
         EXPECT_LE(error, 1);
         return error == 0;
     }},
    {"lumodir_borra_fichero_con_mensaje_extra_si_existe_UNICODE", true, false, true, false, true,
     [](const std::string& r) -> unsigned short {
         unsigned short error = 9;
         llama(lumodir_borra_fichero_con_mensaje_extra_si_existe_UNICODE, r, "extra", &error);
         EXPECT_LE(error, 1);
         return error == 0;
     }},
    {"cdir_borra_fichero_con_comprobacion_UNICODE", true, false, false, false, true,
     [](const std::string& r) { return llama(cdir_borra_fichero_con_comprobacion_UNICODE, r); }},
    {"cdir_borra_fichero_con_comprobacion", false, false, false, false, true,
     [](const std::string& r) { return llama(cdir_borra_fichero_con_comprobacion, r); }},
};

void espera_respuesta(const forma_fichero& f, unsigned short respuesta, unsigned short esperada) {
    EXPECT_EQ(respuesta, f.contesta ? esperada : no_contesta) << f.nombre;
}

// A way of removing a directory.
struct forma_directorio {
    const char* nombre;
    bool exige;
    bool pregunta;
    bool contesta;
    std::function<unsigned short(const std::string&)> borra;
};

const forma_directorio formas_directorio[] = {
    {"cdir_borra_directorio_UNICODE", true, true, true,
     [](const std::string& r) { return llama(cdir_borra_directorio_UNICODE, r); }},
    {"cdir_borra_directorio", true, true, false,
     [](const std::string& r) { return llama(cdir_borra_directorio, r); }},
    {"cdir_borra_directorio_si_existe_UNICODE", false, true, true,
     [](const std::string& r) { return llama(cdir_borra_directorio_si_existe_UNICODE, r); }},
    {"cdir_borra_directorio_si_existe", false, true, false,
     [](const std::string& r) { return llama(cdir_borra_directorio_si_existe, r); }},
    {"cdir_se_borra_directorio", false, false, true,
     [](const std::string& r) { return llama(cdir_se_borra_directorio, r); }},
};

std::vector<std::string> g_fichero_abierto;
unsigned short anota_fichero_abierto(const wchar_t* ruta) {
    g_fichero_abierto.push_back(u8(ruta));
    return 0;
}

// The host's callback, for the life of one test.
class con_aviso_de_fichero_abierto {
public:
    con_aviso_de_fichero_abierto() {
        g_fichero_abierto.clear();
        lumodir_set_func_comprobar_fichero_no_esta_abierto(anota_fichero_abierto);
    }
    ~con_aviso_de_fichero_abierto() { lumodir_set_func_comprobar_fichero_no_esta_abierto(nullptr); }
};

}  // namespace

TEST(borrado, un_fichero_corriente_cuesta_una_llamada_al_sistema) {
    const directorio_temporal d;
    const como_windows windows({});  // where links are followed, it is asked first whether this is one
    for (const forma_fichero& f : formas_fichero) {
        const std::string ruta = d.fichero("\u00f1 fichero.txt");
        fallos libro;
        espera_respuesta(f, f.borra(ruta), 1);
        EXPECT_EQ(libro.llamadas(), 1u) << f.nombre;
        EXPECT_EQ(libro.cuenta("DeleteFileW"), 1u) << f.nombre;
        EXPECT_FALSE(d.existe("\u00f1 fichero.txt")) << f.nombre;
    }
}

TEST(borrado, el_fichero_de_solo_lectura_se_desprotege_antes) {
    const directorio_temporal d;
    for (const forma_fichero& f : formas_fichero) {
        const std::string ruta = d.fichero("f.txt", "x", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
        espera_respuesta(f, f.borra(ruta), f.insiste ? 1 : 0);
        EXPECT_EQ(d.existe("f.txt"), !f.insiste) << f.nombre;
        if (!f.insiste) {
            EXPECT_TRUE(d.es_de_solo_lectura("f.txt")) << f.nombre << " changes no attribute";
        }
        d.borra("f.txt");
    }
    EXPECT_EQ(toma_esperas().size(), 0u);
}

TEST(borrado, un_fichero_que_falta_es_exito_salvo_para_quien_lo_exige) {
    const directorio_temporal d;
    for (const forma_fichero& f : formas_fichero) {
        for (const char* relativa : {"falta.txt", "falta\\falta.txt"}) {
            const std::string ruta = d.ruta(relativa);
            espera_respuesta(f, f.borra(ruta), f.exige || !f.insiste ? 0 : 1);
            if (f.exige) {
                EXPECT_EQ(toma_avisos(), lista{"Cannot delete the file '" + ruta + "' (it does not exist)"});
                const informe dado = toma_el_informe();
                EXPECT_EQ(dado.expresion, "CR_existe");
                EXPECT_EQ(dado.detalle, ruta);
                EXPECT_EQ(dado.etiqueta, "lumodir (LUMODIR.DLL)");
            }
        }
    }
}

TEST(borrado, lo_que_falta_se_calla_en_modo_servicio_pero_se_informa) {
    const directorio_temporal d;
    lumodir_establece_modo_servicio_sin_reintentos();
    EXPECT_EQ(cdir_borra_fichero_UNICODE(d.ruta_w("falta").c_str()), 0);
    EXPECT_EQ(cdir_borra_directorio_UNICODE(d.ruta_w("falta").c_str()), 0);
    ESPERA_INFORMES("CR_existe", "CR_existe");
}

TEST(borrado, un_fichero_en_manos_de_otro_se_reintenta_y_se_pregunta) {
    const directorio_temporal d;
    const std::string ruta = d.fichero("abierto.txt");
    otro_proceso otro(ruta, GENERIC_READ, FILE_SHARE_READ);
    for (const forma_fichero& f : formas_fichero) {
        const con_aviso_de_fichero_abierto aviso;
        espera_respuesta(f, f.borra(ruta), 0);
        EXPECT_TRUE(d.existe("abierto.txt")) << f.nombre;
        EXPECT_EQ(toma_esperas(), std::vector<unsigned long>(f.insiste ? 5 : 0, 100)) << f.nombre;
        EXPECT_EQ(g_fichero_abierto, f.insiste ? lista{ruta} : lista{}) << f.nombre;
        const auto preguntas = toma_preguntas();
        ASSERT_EQ(preguntas.size(), f.pregunta ? 1u : 0u) << f.nombre;
        if (f.pregunta) {
            EXPECT_EQ(preguntas[0].mensaje,
                      mensaje_fichero(ruta) + "\n" + texto_de_codigo(ERROR_SHARING_VIOLATION));
            EXPECT_EQ(preguntas[0].codigo, static_cast<unsigned long>(ERROR_SHARING_VIOLATION));
        }
    }
    otro.suelta();
}

TEST(borrado, el_texto_extra_sustituye_a_la_sugerencia) {
    const directorio_temporal d;
    const std::string ruta = d.fichero("abierto.txt");
    otro_proceso otro(ruta, GENERIC_READ, FILE_SHARE_READ);
    buclrein_establece_politica(0, 100);
    EXPECT_EQ(cdir_borra_fichero_con_mensaje_extra_UNICODE(w(ruta).c_str(), w("100% \u00f1").c_str()), 0);
    cdir_borra_fichero_con_mensaje_extra(cp1252(ruta).c_str(), cp1252("100% \u00f1").c_str());
    const auto preguntas = toma_preguntas();
    ASSERT_EQ(preguntas.size(), 2u);
    for (const pregunta& p : preguntas) {
        EXPECT_EQ(p.mensaje,
                  mensaje_fichero(ruta, "100% \u00f1") + "\n" + texto_de_codigo(ERROR_SHARING_VIOLATION));
    }
    otro.suelta();
}

TEST(borrado, el_fichero_que_se_suelta_a_tiempo_se_borra_sin_pregunta) {
    const directorio_temporal d;
    for (const forma_fichero& f : formas_fichero) {
        if (!f.insiste) {
            continue;
        }
        const con_aviso_de_fichero_abierto aviso;
        const std::string ruta = d.fichero("abierto.txt");
        otro_proceso otro(ruta, GENERIC_READ, FILE_SHARE_READ);
        unsigned pausas = 0;
        al_dormir([&](unsigned long) {
            if (++pausas == 3) {
                otro.suelta();
            }
        });
        espera_respuesta(f, f.borra(ruta), 1);
        EXPECT_FALSE(d.existe("abierto.txt")) << f.nombre;
        EXPECT_EQ(pausas, 3u) << f.nombre;
        EXPECT_EQ(g_fichero_abierto, lista{ruta}) << f.nombre;
        al_dormir(nullptr);
    }
    toma_esperas();
}

TEST(borrado, quien_contesta_otra_vez_consigue_un_intento_mas_sin_espera) {
    const directorio_temporal d;
    const std::string ruta = d.fichero("abierto.txt");
    otro_proceso otro(ruta, GENERIC_READ, FILE_SHARE_READ);
    unsigned veces = 0;
    contesta([&](const pregunta&) -> unsigned short { return ++veces < 3 ? 1 : 0; });
    fallos libro;
    EXPECT_EQ(cdir_borra_fichero_UNICODE(w(ruta).c_str()), 0);
    EXPECT_EQ(toma_preguntas().size(), 3u);
    EXPECT_EQ(toma_esperas().size(), 5u);
    EXPECT_EQ(libro.cuenta("DeleteFileW"), 1u + 5u + 2u);
    contesta([&](const pregunta&) -> unsigned short {
        otro.suelta();
        return 1;
    });
    EXPECT_EQ(cdir_borra_fichero_UNICODE(w(ruta).c_str()), 1);
    EXPECT_EQ(toma_preguntas().size(), 1u);
    EXPECT_FALSE(d.existe("abierto.txt"));
    toma_esperas();
}

TEST(borrado, el_aviso_de_fichero_abierto_calla_cuando_no_toca) {
    const directorio_temporal d;
    const con_aviso_de_fichero_abierto aviso;
    EXPECT_EQ(cdir_borra_fichero_UNICODE(w(d.fichero("libre.txt")).c_str()), 1);
    EXPECT_EQ(g_fichero_abierto, lista{}) << "the first attempt succeeded";
    const std::string ruta = d.fichero("abierto.txt");
    otro_proceso otro(ruta, GENERIC_READ, FILE_SHARE_READ);
    buclrein_establece_politica(0, 100);
    unsigned short error = 9;
    lumodir_borra_fichero_si_existe_UNICODE(w(ruta).c_str(), &error);
    EXPECT_EQ(error, 1);
    EXPECT_EQ(g_fichero_abierto, lista{}) << "this loop is not going to retry";
    lumodir_establece_modo_servicio_sin_reintentos();
    EXPECT_EQ(cdir_borra_fichero_UNICODE(w(ruta).c_str()), 0);
    EXPECT_EQ(g_fichero_abierto, lista{}) << "service mode";
    EXPECT_EQ(toma_esperas().size(), 0u);
    otro.suelta();
}

TEST(borrado, en_modo_servicio_hay_un_intento_y_ninguna_pregunta) {
    const directorio_temporal d;
    const std::string ruta = d.fichero("abierto.txt");
    otro_proceso otro(ruta, GENERIC_READ, FILE_SHARE_READ);
    lumodir_establece_modo_servicio_sin_reintentos();
    for (const forma_fichero& f : formas_fichero) {
        fallos libro;
        espera_respuesta(f, f.borra(ruta), 0);
        EXPECT_EQ(libro.cuenta("DeleteFileW"), 1u) << f.nombre;
    }
    EXPECT_EQ(toma_esperas().size(), 0u);
    otro.suelta();
}

TEST(borrado, un_directorio_no_se_borra_como_fichero) {
    const directorio_temporal d;
    const std::string ruta = d.directorio("d");
    buclrein_establece_politica(1, 50);
    for (const forma_fichero& f : formas_fichero) {
        espera_respuesta(f, f.borra(ruta), 0);
        EXPECT_TRUE(d.es_directorio("d")) << f.nombre;
        EXPECT_EQ(toma_preguntas().size(), f.pregunta ? 1u : 0u) << f.nombre;
    }
    EXPECT_EQ(toma_esperas().size(), 8u);
}

TEST(borrado, rutas_largas_y_de_cualquier_escritura) {
    const directorio_temporal d;
    const std::string larga =
        std::string(120, 'a') + "\\" + std::string(120, 'b') + "\\\u4e2d\u6587 \U0001F600.txt";
    EXPECT_EQ(cdir_borra_fichero_UNICODE(w(d.fichero(larga)).c_str()), 1);
    EXPECT_FALSE(d.existe(larga));
    const std::string hondo = std::string(120, 'a') + "\\" + std::string(120, 'b');
    EXPECT_EQ(cdir_borra_directorio_UNICODE(d.ruta_w(hondo).c_str()), 1);
    EXPECT_FALSE(d.existe(hondo));
}

TEST(borrado, los_argumentos_nulos_se_informan_y_se_sobreviven) {
    for (const forma_fichero& f : formas_fichero) {
        espera_respuesta(f, f.borra("(NULL)"), 0);
        EXPECT_EQ(toma_expresiones(), lista{"(nombre) != NULL"}) << f.nombre;
    }
    for (const forma_directorio& f : formas_directorio) {
        EXPECT_EQ(f.borra("(NULL)"), f.contesta ? 0 : no_contesta) << f.nombre;
        EXPECT_EQ(toma_expresiones(), lista{"(nombre_directorio) != NULL"}) << f.nombre;
    }
}

TEST(borrado, sin_donde_guardar_el_error_el_fichero_se_borra_igual) {
    const directorio_temporal d;
    lumodir_borra_fichero_si_existe_UNICODE(w(d.fichero("a.txt")).c_str(), nullptr);
    lumodir_borra_fichero_con_mensaje_extra_si_existe_UNICODE(w(d.fichero("b.txt")).c_str(), L"extra",
                                                              nullptr);
    ESPERA_INFORMES("(hay_error) != NULL", "(hay_error) != NULL");
    EXPECT_EQ(d.arbol(), lista{});
}

TEST(borrado, un_directorio_vacio_cuesta_una_llamada_al_sistema) {
    const directorio_temporal d;
    const como_windows windows({});
    for (const forma_directorio& f : formas_directorio) {
        const std::string ruta = d.directorio("\u00f1 dir");
        fallos libro;
        EXPECT_EQ(f.borra(ruta), f.contesta ? 1 : no_contesta) << f.nombre;
        EXPECT_EQ(libro.llamadas(), 1u) << f.nombre;
        EXPECT_FALSE(d.existe("\u00f1 dir")) << f.nombre;
    }
}

TEST(borrado, un_directorio_que_falta) {
    const directorio_temporal d;
    const std::string ruta = d.ruta("falta");
    for (const forma_directorio& f : formas_directorio) {
        EXPECT_EQ(f.borra(ruta), f.contesta ? 0 : no_contesta) << f.nombre;
        if (f.exige) {
            ESPERA_AVISOS("Cannot delete the directory '" + ruta + "' (it does not exist)");
            const informe dado = toma_el_informe();
            EXPECT_EQ(dado.expresion, "CR_existe");
            EXPECT_EQ(dado.detalle, ruta);
        }
    }
    EXPECT_EQ(toma_esperas().size(), 0u);
}

TEST(borrado, un_directorio_con_algo_dentro_se_reintenta_y_se_pregunta) {
    const directorio_temporal d;
    d.fichero("d\\dentro.txt");
    const std::string ruta = d.ruta("d");
    for (const forma_directorio& f : formas_directorio) {
        EXPECT_EQ(f.borra(ruta), f.contesta ? 0 : no_contesta) << f.nombre;
        EXPECT_EQ(toma_esperas().size(), 5u) << f.nombre;
        const auto preguntas = toma_preguntas();
        ASSERT_EQ(preguntas.size(), f.pregunta ? 1u : 0u) << f.nombre;
        if (f.pregunta) {
            EXPECT_EQ(preguntas[0].mensaje, "Unable to delete the directory '" + ruta + "'\n" +
                                                texto_de_codigo(ERROR_DIR_NOT_EMPTY));
            EXPECT_EQ(preguntas[0].codigo, static_cast<unsigned long>(ERROR_DIR_NOT_EMPTY));
        }
        EXPECT_TRUE(d.existe("d\\dentro.txt"));
    }
}

TEST(borrado, un_directorio_que_se_vacia_a_tiempo_se_borra) {
    const directorio_temporal d;
    for (const forma_directorio& f : formas_directorio) {
        d.fichero("d\\dentro.txt");
        al_dormir([&](unsigned long) { d.borra("d\\dentro.txt"); });
        EXPECT_EQ(f.borra(d.ruta("d")), f.contesta ? 1 : no_contesta) << f.nombre;
        EXPECT_FALSE(d.existe("d")) << f.nombre;
        EXPECT_EQ(toma_esperas().size(), 1u) << f.nombre;
    }
}

TEST(borrado, un_enlace_a_un_fichero_no_se_lleva_lo_que_hay_detras) {
    LADO_UNIX_QUE_SIGUE_ENLACES(u);
    buclrein_establece_politica(2, 10);
    u.corre(
        "mkdir fuera s 'p ' q..; echo 1 >fuera/v; echo 2 >fuera/p; chmod 444 fuera/p; ln -s fuera/v l; ln -s "
        "fuera/p lp;"
        "ln -s l doble; ln -s ../fuera/v s/v; ln -s s por; ln -s '../fuera/v' 'p /v'; ln -s ../fuera/v q../v;"
        "ln -s 'l' 'l.'; echo 3 >igual; ln -s ../igual s/igual; ln -s fuera/v '\xc3\xb1'");
    const lista antes = u.censo_exacto(".");
    const std::string literal = "\\\\?\\" + u.d.ruta() + "\\";
    for (const std::string& ruta :
         {u.d.ruta("l"), u.d.ruta("lp"), u.d.ruta("doble"), u.d.ruta("s\\v"), u.d.ruta("por\\v"),
          u.d.ruta("s/v"), u.d.ruta("s\\..\\l"), u.d.ruta("s\\igual"), literal + "l", literal + "l.",
          literal + "p \\v", literal + "q..\\v", u.d.ruta("\u00f1"), u.d.ruta("L")}) {
        for (const forma_fichero& f : formas_fichero) {
            SCOPED_TRACE(ruta + " " + f.nombre);
            fallos libro;
            espera_respuesta(f, f.borra(ruta), 0);
            EXPECT_EQ(libro.cuenta("DeleteFileW") + libro.cuenta("SetFileAttributesW"), 0u);
            EXPECT_EQ(libro.manijas_abiertas(), 0u);
            EXPECT_EQ(toma_esperas().size(), f.insiste ? 2u : 0u);
            const std::vector<pregunta> preguntas = toma_preguntas();
            ASSERT_EQ(preguntas.size(), f.pregunta ? 1u : 0u);
            if (f.pregunta) {
                EXPECT_EQ(preguntas[0].mensaje,
                          mensaje_fichero(ruta) + "\n" + texto_de_codigo(ERROR_CANT_ACCESS_FILE));
            }
        }
        if (HasFailure()) {
            break;
        }
    }
    EXPECT_EQ(u.censo_exacto("."), antes);
    // Not a link: whatever its directory is called, and by whatever way it is reached.
    for (const std::string& ruta :
         {u.d.ruta("s\\f"), u.d.ruta("por\\f"), u.d.ruta("S\\F"), literal + "p \\f", literal + "q..\\f ",
          literal + "q..\\f", literal + " ", literal + "l..", u.d.ruta("s/f"), u.d.ruta("s\\.\\f")}) {
        for (const forma_fichero& f : formas_fichero) {
            SCOPED_TRACE(ruta + " " + f.nombre);
            u.corre(": >s/f; : >'p /f'; : >'q../f '; : >q../f; : >' '; : >l..");
            const std::size_t eran = u.censo(".").size();
            espera_respuesta(f, f.borra(ruta), 1);
            EXPECT_EQ(u.censo(".").size(), eran - 1);
        }
        if (HasFailure()) {
            break;
        }
    }
    u.corre("rm -f s/f 'p /f' q../f 'q../f ' ' ' l..");
    EXPECT_EQ(u.censo_exacto("."), antes);
    // Whatever call fails.
    for (const forma_fichero& f : formas_fichero) {
        con_cada_fallo([] {}, [&] { f.borra(u.d.ruta("s\\v")); },
                       [&](const ronda& r) {
                           EXPECT_EQ(u.d.contenido("s\\v"), "1\n") << f.nombre << " " << r;
                           olvida_todo();
                       });
    }
    EXPECT_EQ(u.censo_exacto("."), antes);
}

// Who holds a directory without sharing keeps others from listing it, not from what lies in it.
TEST(borrado, donde_no_se_puede_listar_se_borra_lo_que_no_es_enlace) {
    LADO_UNIX(u);
    const bool sigue = interno::sistema.sigue_enlaces();
    buclrein_establece_politica(0, 0);
    for (const char* nombre : {"f", "l", "F", "f "}) {
        if (!sigue && std::string(nombre) != "f") {
            continue;  // only Windows itself would take the link then, and not what it leads to
        }
        for (const forma_fichero& f : formas_fichero) {
            SCOPED_TRACE(std::string(nombre) + " " + f.nombre);
            u.corre("rm -rf *; mkdir t; : >v; : >t/f; ln -s ../v t/l; ln -s f t/F; ln -s f 't/f '");
            const lista antes = u.censo(".");
            const HANDLE suyo = ::CreateFileW(u.d.ruta_w("t").c_str(), GENERIC_READ, 0, nullptr,
                                              OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
            ASSERT_NE(suyo, INVALID_HANDLE_VALUE);
            const bool se_va = std::string(nombre) == "f";
            espera_respuesta(f, f.borra("\\\\?\\" + u.d.ruta("t\\") + nombre), se_va ? 1 : 0);
            ::CloseHandle(suyo);
            EXPECT_EQ(u.censo(".").size(), antes.size() - (se_va ? 1 : 0));
            EXPECT_TRUE(u.d.existe("v"));
            olvida_todo();
        }
    }
}

TEST(borrado, un_enlace_a_un_directorio_se_va_el_mismo_o_se_queda) {
    LADO_UNIX(u);
    const bool se_va = !interno::sistema.sigue_enlaces();
    buclrein_establece_politica(0, 0);
    const char* const enlaces =
        "[ -L l ] || ln -s vacio l; [ -L ll ] || ln -s lleno ll; [ -L s/l ] || ln -s ../vacio s/l";
    u.corre(std::string("mkdir vacio lleno s 'p '; : >lleno/f;") + enlaces);
    const lista antes = u.censo_exacto(".");
    for (const char* relativa : {"l", "ll", "s\\l", "l\\", "s/l"}) {
        for (const forma_directorio& f : formas_directorio) {
            SCOPED_TRACE(std::string(relativa) + " " + f.nombre);
            const std::string ruta = u.d.ruta(relativa);
            fallos libro;
            EXPECT_EQ(f.borra(ruta), f.contesta ? (se_va ? 1 : 0) : no_contesta);
            EXPECT_EQ(libro.manijas_abiertas(), 0u);
            const std::vector<pregunta> preguntas = toma_preguntas();
            ASSERT_EQ(preguntas.size(), f.pregunta && !se_va ? 1u : 0u);
            if (!preguntas.empty()) {
                EXPECT_EQ(preguntas[0].mensaje, "Unable to delete the directory '" + ruta + "'\n" +
                                                    texto_de_codigo(ERROR_CANT_ACCESS_FILE));
            }
            u.corre(enlaces);
            EXPECT_EQ(u.censo("."),
                      (lista{"d lleno", "d p ", "d s", "d vacio", "f lleno/f", "l l", "l ll", "l s/l"}));
        }
    }
    EXPECT_EQ(u.censo("lleno"), lista{"f f"});
    // No links: they go, whatever their names end in.
    for (const char* nombre : {"vacio", "p ", "p.", "P", "con"}) {
        for (const forma_directorio& f : formas_directorio) {
            SCOPED_TRACE(std::string(nombre) + " " + f.nombre);
            u.corre("rmdir 'p ' 2>/dev/null; [ -d s/x ] || mkdir s/x; mkdir -p \"s/x/" + std::string(nombre) +
                    "\"");
            EXPECT_EQ(f.borra("\\\\?\\" + u.d.ruta("s\\x\\") + nombre), f.contesta ? 1 : no_contesta);
            EXPECT_EQ(u.censo("s/x"), lista{});
        }
    }
}

TEST(borrado, un_fallo_sin_codigo_es_un_fallo) {
    const directorio_temporal d;
    buclrein_establece_politica(1, 10);
    for (const forma_fichero& f : formas_fichero) {
        const std::string ruta = d.fichero("f.txt");
        fallos libro;
        libro.falla_siempre("DeleteFileW", ERROR_SUCCESS);
        espera_respuesta(f, f.borra(ruta), 0);
        EXPECT_EQ(libro.cuenta("DeleteFileW"), f.insiste ? 2u : 1u) << f.nombre;
        EXPECT_EQ(toma_preguntas().size(), f.pregunta ? 1u : 0u) << f.nombre;
    }
    for (const forma_directorio& f : formas_directorio) {
        const std::string ruta = d.directorio("d");
        fallos libro;
        libro.falla_siempre("RemoveDirectoryW", ERROR_SUCCESS);
        EXPECT_EQ(f.borra(ruta), f.contesta ? 0 : no_contesta) << f.nombre;
        EXPECT_EQ(libro.cuenta("RemoveDirectoryW"), 2u) << f.nombre;
        EXPECT_EQ(toma_preguntas().size(), f.pregunta ? 1u : 0u) << f.nombre;
    }
    toma_esperas();
}

TEST(borrado, con_cualquier_llamada_fallando_la_respuesta_dice_la_verdad) {
    const directorio_temporal d;
    buclrein_establece_politica(2, 10);
    for (const forma_fichero& f : formas_fichero) {
        for (const DWORD atributos : {DWORD{FILE_ATTRIBUTE_NORMAL}, DWORD{FILE_ATTRIBUTE_READONLY}}) {
            unsigned short respuesta = 0;
            con_cada_fallo(
                [&] {
                    d.borra("f.txt");
                    d.fichero("f.txt", "x", atributos);
                },
                [&] { respuesta = f.borra(d.ruta("f.txt")); },
                [&](const ronda& r) {
                    // The system itself says that the file is gone: then it counts as deleted.
                    const bool dado_por_borrado =
                        f.insiste && !r.limpia &&
                        (r.fallada == "DeleteFileW" || r.fallada == "CreateFileW" || r.para_siempre) &&
                        (r.codigo == ERROR_FILE_NOT_FOUND || r.codigo == ERROR_PATH_NOT_FOUND);
                    if (f.contesta && !dado_por_borrado) {
                        EXPECT_EQ(respuesta == 1, !d.existe("f.txt")) << f.nombre << " " << r;
                    }
                    if (r.limpia && f.insiste) {
                        EXPECT_FALSE(d.existe("f.txt")) << f.nombre;
                    }
                    olvida_todo();
                });
        }
    }
}

TEST(borrado, con_cualquier_llamada_fallando_el_directorio_dice_la_verdad) {
    const directorio_temporal d;
    buclrein_establece_politica(2, 10);
    for (const forma_directorio& f : formas_directorio) {
        unsigned short respuesta = 0;
        con_cada_fallo(
            [&] {
                d.borra("d");
                d.directorio("d");
            },
            [&] { respuesta = f.borra(d.ruta("d")); },
            [&](const ronda& r) {
                if (f.contesta) {
                    EXPECT_EQ(respuesta == 1, !d.existe("d")) << f.nombre << " " << r;
                }
                olvida_todo();
            });
    }
}

TEST(borrado, el_fichero_que_otro_borra_mientras_se_espera_esta_borrado) {
    const directorio_temporal d;
    d.fichero("f");
    fallos f;
    f.falla_siempre("DeleteFileW", ERROR_SHARING_VIOLATION, 1);
    al_dormir([&](unsigned long) { ::DeleteFileW(d.ruta_w("f").c_str()); });
    EXPECT_EQ(cdir_borra_fichero_si_existe_UNICODE(d.ruta_w("f").c_str()), 1);
    EXPECT_EQ(toma_esperas().size(), 1u);
}

// Only the mark for which it does not go is taken off a directory, and only from one that is still there put on again.
TEST(borrado, la_marca_de_un_directorio_cambia_solo_si_por_ella_no_se_va) {
    constexpr DWORD marcado = FILE_ATTRIBUTE_READONLY;
    const struct {
        DWORD marca;
        DWORD codigo;
        unsigned veces;
        unsigned cambios;
        bool se_va;
    } filas[] = {
        {marcado, ERROR_ACCESS_DENIED, 1, 1, true},
        {marcado, ERROR_ACCESS_DENIED, 2, 2, false},
        {marcado, ERROR_SHARING_VIOLATION, 1, 0, false},
        {0, ERROR_ACCESS_DENIED, 1, 0, false},
    };
    buclrein_establece_politica(0, 0);
    static DWORD atributos;  // not every file system keeps that mark of a directory
    static unsigned cambios;
    for (const auto& fila : filas) {
        const directorio_temporal d;
        d.directorio("s");
        atributos = FILE_ATTRIBUTE_DIRECTORY | fila.marca;
        cambios = 0;
        fallos f;
        const sustituye mira(interno::sistema.GetFileAttributesW, [](LPCWSTR) WINAPI { return atributos; });
        const sustituye pone(interno::sistema.SetFileAttributesW, [](LPCWSTR, DWORD nuevos) WINAPI {
            ++cambios;
            atributos = nuevos;
            return BOOL{TRUE};
        });
        f.falla_siempre("RemoveDirectoryW", fila.codigo, fila.veces);
        EXPECT_EQ(interno::i_borra_directorio_si_existe(d.ruta_w("s").c_str(), false), fila.se_va);
        EXPECT_EQ(cambios, fila.cambios) << fila.codigo << " " << fila.marca;
        EXPECT_EQ(!d.existe("s"), fila.se_va);
        EXPECT_TRUE(fila.se_va || atributos == (FILE_ATTRIBUTE_DIRECTORY | fila.marca));
    }
}
