// Renaming, moving and protecting real files in both flavours, with files held open by another process; and under
// faults.
#include "files/renombra_protege.hpp"

#include "apoyo/apoyo.hpp"
#include "apoyo/como_windows.hpp"
#include "apoyo/directorio.hpp"
#include "apoyo/exportada.hpp"
#include "apoyo/fallos.hpp"
#include "apoyo/lado_unix.hpp"
#include "apoyo/otro_proceso.hpp"
#include "cdir.h"
#include "companions/buclrein.h"
#include "companions/lmlongpath.hpp"
#include "companions/plataforma.hpp"
#include "lumodir.h"

using namespace apoyo;

namespace {

using lista = std::vector<std::string>;

// The renamings and the move, as one: the answer is 1, 0 or `no_contesta`.
struct cambio {
    const char* nombre;
    bool es_ancho;
    bool contesta;
    bool reintenta;
    std::function<unsigned short(const std::string&, const std::string&)> hace;
};

const cambio cambios[] = {
    {"cdir_renombra_fichero_UNICODE", true, false, true,
     [](const std::string& a, const std::string& b) { return llama(cdir_renombra_fichero_UNICODE, a, b); }},
    {"cdir_renombra_fichero", false, false, true,
     [](const std::string& a, const std::string& b) { return llama(cdir_renombra_fichero, a, b); }},
    {"cdir_renombra_fichero_si_es_posible_UNICODE", true, true, false,
     [](const std::string& a, const std::string& b) {
         return llama(cdir_renombra_fichero_si_es_posible_UNICODE, a, b);
     }},
    {"cdir_mueve_fichero", true, true, false,
     [](const std::string& a, const std::string& b) { return llama(cdir_mueve_fichero, a, b); }},
};

struct renombrado {
    std::string vieja;
    std::string nueva;
    bool sale;
    bool solo_ancha = false;
    bool solo_letras = false;  // Wine answers yes to that and leaves the name as it is
};

const std::string ruta_larga =
    std::string(100, 'a') + "\\" + std::string(100, 'b') + "\\" + std::string(100, 'c');

const renombrado renombrados[] = {
    {.vieja = "f.txt", .nueva = "g.txt", .sale = true},
    {.vieja = "f.txt", .nueva = "F.TXT", .sale = true, .solo_letras = true},
    {.vieja = "f.txt", .nueva = "sub\\g.txt", .sale = true},
    {.vieja = "sub/dentro.txt", .nueva = "fuera.txt", .sale = true},
    {.vieja = "sub", .nueva = "otro", .sale = true},  // a directory is renamed as well
    {.vieja = "f.txt", .nueva = "\u00f1 \u20ac.txt", .sale = true},
    {.vieja = "f.txt", .nueva = "\u4e2d\U0001F600.txt", .sale = true, .solo_ancha = true},
    {.vieja = "f.txt", .nueva = ruta_larga + "\\g.txt", .sale = true},
    {.vieja = ruta_larga + "\\f.txt", .nueva = "g.txt", .sale = true},
    {.vieja = "protegido.txt", .nueva = "g.txt", .sale = true},
    {.vieja = "f.txt", .nueva = "protegido.txt", .sale = false},  // a target is never replaced
    {.vieja = "f.txt", .nueva = "sub", .sale = false},
    {.vieja = "no.txt", .nueva = "g.txt", .sale = false},
    {.vieja = "f.txt", .nueva = "no\\g.txt", .sale = false},
    {.vieja = "f.txt", .nueva = "g?.txt", .sale = false},
};

void prepara(const directorio_temporal& dir) {
    dir.limpia();
    dir.fichero("f.txt", "de f");
    dir.fichero("protegido.txt", "intacto", FILE_ATTRIBUTE_READONLY);
    dir.fichero("sub\\dentro.txt");
    dir.fichero(ruta_larga + "\\f.txt");
}

}  // namespace

TEST(renombra_protege, cada_fila_con_cada_funcion) {
    const directorio_temporal dir;
    for (const renombrado& f : renombrados) {
        for (const cambio& c : cambios) {
            if (f.solo_ancha && !c.es_ancho) {
                continue;
            }
            SCOPED_TRACE(std::string(c.nombre) + ": " + f.vieja + " -> " + f.nueva);
            prepara(dir);
            const lista antes = dir.arbol();
            const std::string texto = dir.contenido(f.vieja);
            const unsigned short respuesta = c.hace(dir.ruta(f.vieja), dir.ruta(f.nueva));
            EXPECT_EQ(respuesta, !c.contesta ? no_contesta : f.sale ? 1 : 0);
            if (f.sale) {
                const lista despues = dir.arbol();
                EXPECT_TRUE(despues != antes || f.solo_letras);
                EXPECT_EQ(despues.size(), antes.size());
                EXPECT_TRUE(dir.existe(f.nueva));
                EXPECT_EQ(dir.contenido(f.nueva), texto);
            } else {
                EXPECT_EQ(dir.arbol(), antes);
                EXPECT_EQ(dir.contenido("protegido.txt"), "intacto");
                EXPECT_EQ(dir.contenido("f.txt"), "de f");
            }
            EXPECT_EQ(toma_preguntas().size(), !f.sale && c.reintenta ? 1u : 0u);
            EXPECT_EQ(toma_esperas().size(), !f.sale && c.reintenta ? 5u : 0u);
        }
    }
}

TEST(renombra_protege, la_pregunta_lleva_ambos_nombres_y_el_codigo) {
    const directorio_temporal dir;
    prepara(dir);
    for (const bool ocho : {false, true}) {
        const std::string vieja = dir.ruta("f.txt");
        const std::string nueva = dir.ruta("sub");
        unsigned si = 2;  // yes, yes, no
        contesta([&](const pregunta&) -> unsigned short { return si-- > 0 ? 1 : 0; });
        fallos f;
        cambios[ocho ? 1 : 0].hace(vieja, nueva);
        EXPECT_EQ(f.cuenta("MoveFileExW"), 8u);
        EXPECT_EQ(toma_esperas(), std::vector<unsigned long>(5, 100));
        const std::vector<pregunta> preguntas = toma_preguntas();
        ASSERT_EQ(preguntas.size(), 3u);
        for (const pregunta& p : preguntas) {
            EXPECT_EQ(p.mensaje, "The file cannot be renamed.\n- " + vieja + "\n- " + nueva + "\n" +
                                     texto_de_codigo(ERROR_ALREADY_EXISTS));
            EXPECT_EQ(p.codigo, DWORD{ERROR_ALREADY_EXISTS});
        }
    }
}

TEST(renombra_protege, los_nombres_no_son_formatos) {
    cdir_renombra_fichero_UNICODE(L"no%s%d", L"%n%ls");
    const std::vector<pregunta> preguntas = toma_preguntas();
    ASSERT_EQ(preguntas.size(), 1u);
    EXPECT_EQ(preguntas[0].mensaje,
              "The file cannot be renamed.\n- no%s%d\n- %n%ls\n" + texto_de_codigo(preguntas[0].codigo));
}

TEST(renombra_protege, un_fichero_sujeto_por_otro_proceso_se_espera) {
    const directorio_temporal dir;
    for (const bool ocho : {false, true}) {
        prepara(dir);
        otro_proceso sujeta(dir.ruta("f.txt"), GENERIC_READ, FILE_SHARE_READ);
        EXPECT_EQ(cambios[2].hace(dir.ruta("f.txt"), dir.ruta("g.txt")), 0);
        EXPECT_EQ(cambios[3].hace(dir.ruta("f.txt"), dir.ruta("g.txt")), 0);
        EXPECT_TRUE(toma_esperas().empty());
        unsigned pausas = 0;
        al_dormir([&](unsigned long) {
            if (++pausas == 3) {
                sujeta.suelta();
            }
        });
        cambios[ocho ? 1 : 0].hace(dir.ruta("f.txt"), dir.ruta("g.txt"));
        EXPECT_EQ(dir.contenido("g.txt"), "de f");
        EXPECT_FALSE(dir.existe("f.txt"));
        EXPECT_EQ(toma_esperas().size(), 3u);
    }
}

TEST(renombra_protege, si_no_lo_sueltan_se_pregunta_y_se_abandona) {
    const directorio_temporal dir;
    prepara(dir);
    const lista antes = dir.arbol();
    otro_proceso sujeta(dir.ruta("f.txt"), GENERIC_READ, FILE_SHARE_READ);
    cambios[0].hace(dir.ruta("f.txt"), dir.ruta("g.txt"));
    const std::vector<pregunta> preguntas = toma_preguntas();
    ASSERT_EQ(preguntas.size(), 1u);
    EXPECT_EQ(preguntas[0].codigo, DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(dir.arbol(), antes);
    // The user lets the file go when asked.
    contesta([&](const pregunta&) -> unsigned short {
        sujeta.suelta();
        return 1;
    });
    cambios[0].hace(dir.ruta("f.txt"), dir.ruta("g.txt"));
    EXPECT_EQ(toma_preguntas().size(), 1u);
    EXPECT_EQ(dir.contenido("g.txt"), "de f");
}

TEST(renombra_protege, en_modo_servicio_un_intento_y_silencio) {
    const directorio_temporal dir;
    const como_windows windows({});  // where links are followed, it is asked first whether this is one
    lumodir_establece_modo_servicio_sin_reintentos();
    fallos f;
    cambios[0].hace(dir.ruta("no.txt"), dir.ruta("g.txt"));
    EXPECT_EQ(f.cuenta("MoveFileExW"), 1u);
    lumodir_protege_fichero_UNICODE(dir.ruta_w("no.txt").c_str());
    EXPECT_EQ(f.cuenta("GetFileAttributesW"), 1u);
    EXPECT_TRUE(toma_esperas().empty());
}

TEST(renombra_protege, null_se_informa_y_no_se_toca_nada) {
    const directorio_temporal dir;
    prepara(dir);
    const lista antes = dir.arbol();
    const std::string ruta = dir.ruta("f.txt");
    fallos f;
    se_niega(llama(cdir_renombra_fichero_UNICODE, nullptr, ruta), {"(nombre_viejo) != NULL"});
    se_niega(llama(cdir_renombra_fichero_UNICODE, ruta, nullptr), {"(nombre_nuevo) != NULL"});
    se_niega(llama(cdir_renombra_fichero, nullptr, ruta), {"(nombre_viejo) != NULL"});
    se_niega(llama(cdir_renombra_fichero, ruta, nullptr), {"(nombre_nuevo) != NULL"});
    se_niega(llama(cdir_renombra_fichero_si_es_posible_UNICODE, nullptr, ruta), {"(nombre_viejo) != NULL"});
    se_niega(llama(cdir_renombra_fichero_si_es_posible_UNICODE, ruta, nullptr), {"(nombre_nuevo) != NULL"});
    se_niega(cdir_mueve_fichero(nullptr, nullptr), {"(origen) != NULL", "(destino) != NULL"});
    se_niega(llama(lumodir_protege_fichero_UNICODE, nullptr), {"(nomfich) != NULL"});
    se_niega(llama(lumodir_protege_fichero, nullptr), {"(nomfich) != NULL"});
    se_niega(llama(lumodir_desprotege_fichero_UNICODE, nullptr), {"(nomfich) != NULL"});
    se_niega(llama(lumodir_desprotege_fichero, nullptr), {"(nomfich) != NULL"});
    se_niega(llama(lumodir_desprotege_fichero_si_existe_UNICODE, nullptr), {"(nombre) != NULL"});
    se_niega(llama(lumodir_desprotege_fichero_si_existe, nullptr), {"(nombre) != NULL"});
    EXPECT_EQ(f.llamadas(), 0u);
    EXPECT_EQ(dir.arbol(), antes);
}

TEST(renombra_protege, mover_es_una_llamada_sin_indicadores) {
    static std::vector<DWORD> indicadores;
    indicadores.clear();
    const sustituye espia(interno::sistema.MoveFileExW,
                          [](const wchar_t*, const wchar_t*, DWORD i) WINAPI -> BOOL {
                              indicadores.push_back(i);
                              ::SetLastError(ERROR_ACCESS_DENIED);
                              return FALSE;
                          });
    const sustituye sin_enlaces(interno::sistema.sigue_enlaces, []() WINAPI { return BOOL{FALSE}; });
    EXPECT_EQ(cdir_mueve_fichero(L"a", L"b"), 0);
    EXPECT_EQ(indicadores, std::vector<DWORD>{0});
    EXPECT_TRUE(toma_esperas().empty());
}

TEST(renombra_protege, un_enlace_que_el_sistema_seguiria_se_queda_donde_esta) {
    LADO_UNIX_QUE_SIGUE_ENLACES(u);
    buclrein_establece_politica(0, 0);
    u.corre(
        "mkdir fuera s; echo 1 >fuera/v; ln -s fuera/v l; ln -s fuera ld; ln -s ../fuera/v s/v; ln -s s por");
    const lista antes = u.censo_exacto(".");
    for (const char* vieja : {"l", "ld", "ld\\", "s\\v", "por\\v", "s/v"}) {
        for (const cambio& c : cambios) {
            SCOPED_TRACE(std::string(c.nombre) + " " + vieja);
            fallos libro;
            EXPECT_EQ(c.hace(u.d.ruta(vieja), u.d.ruta("nueva")), c.contesta ? 0 : no_contesta);
            EXPECT_EQ(libro.cuenta("MoveFileExW"), 0u);
            EXPECT_EQ(libro.manijas_abiertas(), 0u);
            const std::vector<pregunta> preguntas = toma_preguntas();
            ASSERT_EQ(preguntas.size(), c.reintenta ? 1u : 0u);
            if (c.reintenta) {
                EXPECT_EQ(preguntas[0].codigo, DWORD{ERROR_CANT_ACCESS_FILE});
            }
            EXPECT_EQ(u.censo_exacto("."), antes);
        }
    }
    // A link on the way is the caller's business.
    for (const cambio& c : cambios) {
        u.corre("echo 2 >s/f");
        EXPECT_EQ(c.hace(u.d.ruta("por\\f"), u.d.ruta("por\\g")), c.contesta ? 1 : no_contesta);
        EXPECT_EQ(u.corre("cat s/g; rm s/g"), "2\n");
    }
}

// ---- Protection ----

struct marca {
    const char* nombre;
    std::function<void(const std::string&)> hace;
    bool protege;
};
const marca marcas[] = {
    {"protege wide", [](const std::string& r) { lumodir_protege_fichero_UNICODE(w(r).c_str()); }, true},
    {"protege", [](const std::string& r) { lumodir_protege_fichero(cp1252(r).c_str()); }, true},
    {"desprotege wide", [](const std::string& r) { lumodir_desprotege_fichero_UNICODE(w(r).c_str()); },
     false},
    {"desprotege", [](const std::string& r) { lumodir_desprotege_fichero(cp1252(r).c_str()); }, false},
    {"si_existe wide",
     [](const std::string& r) { lumodir_desprotege_fichero_si_existe_UNICODE(w(r).c_str()); }, false},
    {"si_existe", [](const std::string& r) { lumodir_desprotege_fichero_si_existe(cp1252(r).c_str()); },
     false},
};

TEST(renombra_protege, proteger_y_desproteger_cambian_un_solo_atributo) {
    const directorio_temporal dir;
    for (const std::string& nombre :
         {std::string("f.txt"), std::string("\u00f1 \u20ac.txt"), ruta_larga + "\\f.txt"}) {
        for (const DWORD otros : {DWORD{0}, DWORD{FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM}}) {
            for (const DWORD antes : {DWORD{0}, DWORD{FILE_ATTRIBUTE_READONLY}}) {
                for (const marca& p : marcas) {
                    SCOPED_TRACE(std::string(p.nombre) + " " + nombre);
                    dir.limpia();
                    const DWORD todos = otros | antes;
                    dir.fichero(nombre, "x", todos == 0 ? DWORD{FILE_ATTRIBUTE_NORMAL} : todos);
                    p.hace(dir.ruta(nombre));
                    EXPECT_EQ(dir.es_de_solo_lectura(nombre), p.protege);  // also when it was so already
                    EXPECT_EQ(dir.atributos(nombre) & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM), otros);
                    EXPECT_TRUE(toma_esperas().empty());
                }
            }
        }
    }
}

TEST(renombra_protege, un_enlace_que_el_sistema_seguiria_no_marca_lo_que_hay_detras) {
    LADO_UNIX_QUE_SIGUE_ENLACES(u);
    buclrein_establece_politica(2, 10);
    u.corre(
        "mkdir fuera s 'p '; echo 1 >fuera/v; echo 2 >fuera/p; chmod 644 fuera/v; chmod 444 fuera/p;"
        "for f in v p; do ln -s fuera/$f l$f; ln -s l$f doble$f; ln -s ../fuera/$f s/$f;"
        "ln -s ../fuera/$f \"p /$f\"; ln -s fuera/$f \"\xc3\xb1$f\"; done; ln -s fuera ld; ln -s s por");
    const lista antes = u.censo_exacto(".");
    const std::string literal = "\\\\?\\" + u.d.ruta() + "\\";
    for (const char* de : {"v", "p"}) {
        for (const std::string& ruta :
             {u.d.ruta("l") + de, u.d.ruta("doble") + de, u.d.ruta("s\\") + de, u.d.ruta("por\\") + de,
              u.d.ruta("s/") + de, literal + "l" + de, literal + "p \\" + de, u.d.ruta("\u00f1") + de,
              u.d.ruta("ld"), u.d.ruta("ld\\")}) {
            for (const marca& m : marcas) {
                SCOPED_TRACE(std::string(m.nombre) + " " + ruta);
                fallos libro;
                m.hace(ruta);
                EXPECT_EQ(libro.cuenta("SetFileAttributesW"), 0u);
                EXPECT_EQ(libro.manijas_abiertas(), 0u);
                EXPECT_EQ(toma_preguntas().size(), 1u);
                EXPECT_EQ(toma_esperas().size(), 2u);
            }
        }
        EXPECT_EQ(u.censo_exacto("."), antes);
    }
    // A link on the way is the caller's business.
    for (const marca& m : marcas) {
        u.corre("echo 2 >s/f; chmod " + std::string(m.protege ? "644" : "444") + " s/f");
        m.hace(u.d.ruta("por\\f"));
        EXPECT_EQ(u.corre("stat -c %a s/f; rm -f s/f"), m.protege ? "444\n" : "644\n") << m.nombre;
    }
    // Whatever call fails.
    for (const marca& m : marcas) {
        con_cada_fallo([] {}, [&] { m.hace(u.d.ruta(m.protege ? "lv" : "lp")); },
                       [&](const ronda& r) {
                           EXPECT_EQ(u.d.es_de_solo_lectura("fuera\\v"), false) << m.nombre << " " << r;
                           EXPECT_EQ(u.d.es_de_solo_lectura("fuera\\p"), true) << m.nombre << " " << r;
                           olvida_todo();
                       });
    }
    EXPECT_EQ(u.censo_exacto("."), antes);
}

TEST(renombra_protege, proteger_lo_que_falta_se_reintenta_y_se_pregunta) {
    const directorio_temporal dir;
    const std::string falta = dir.ruta("no \u00f1.txt");
    const std::string cerrar = "It is not possible to lock the file '" + falta + "'";
    const std::string abrir = "It is not possible to unlock the file '" + falta + "'";
    const auto queda = [](const std::string& mensaje) {
        const std::vector<pregunta> preguntas = toma_preguntas();
        ASSERT_EQ(preguntas.size(), 1u);
        EXPECT_EQ(preguntas[0].mensaje, mensaje);  // no code, so no text of the system's
        EXPECT_EQ(preguntas[0].codigo, 0u);
        EXPECT_EQ(toma_esperas(), std::vector<unsigned long>(5, 100));
    };
    lumodir_protege_fichero_UNICODE(w(falta).c_str());
    queda(cerrar);
    lumodir_protege_fichero(cp1252(falta).c_str());
    queda(cerrar);
    lumodir_desprotege_fichero_UNICODE(w(falta).c_str());
    queda(abrir);
    lumodir_desprotege_fichero(cp1252(falta).c_str());
    queda(abrir);
    // Asked only of what exists: nothing to say about what does not.
    lumodir_desprotege_fichero_si_existe_UNICODE(w(falta).c_str());
    lumodir_desprotege_fichero_si_existe(cp1252(falta).c_str());
    EXPECT_TRUE(toma_esperas().empty());
    // Without report: the retries, and silence.
    EXPECT_EQ(interno::i_cambia_proteccion(w(falta).c_str(), interno::modo_escritura, 0), 0);
    EXPECT_EQ(toma_esperas().size(), 5u);
}

TEST(renombra_protege, otro_modo_se_informa_y_se_sigue) {
    const directorio_temporal dir;
    dir.fichero("f.txt", "x", FILE_ATTRIBUTE_READONLY);
    const texto_w ruta = dir.ruta_w("f.txt");
    EXPECT_EQ(interno::i_cambia_proteccion(ruta.c_str(), interno::modo_lectura | interno::modo_escritura, 1),
              1);
    const informe dado = toma_el_informe();
    EXPECT_EQ(dado.expresion, "mode == _S_IREAD || mode == _S_IWRITE");
    EXPECT_EQ(dado.detalle, dir.ruta("f.txt"));
    EXPECT_FALSE(dir.es_de_solo_lectura("f.txt"));  // a mode with writing in it allows writing
    EXPECT_EQ(interno::i_cambia_proteccion(ruta.c_str(), interno::modo_lectura, 1), 1);
    EXPECT_TRUE(dir.es_de_solo_lectura("f.txt"));
    EXPECT_EQ(interno::i_cambia_proteccion(ruta.c_str(), interno::modo_escritura, 1), 1);
    EXPECT_FALSE(dir.es_de_solo_lectura("f.txt"));
}

TEST(renombra_protege, si_el_usuario_insiste_se_intenta_otra_vez) {
    const directorio_temporal dir;
    dir.fichero("f.txt");
    fallos f;
    f.falla_siempre("SetFileAttributesW", ERROR_ACCESS_DENIED, 8);
    contesta([](const pregunta&) -> unsigned short { return 1; });
    lumodir_protege_fichero_UNICODE(dir.ruta_w("f.txt").c_str());
    EXPECT_EQ(f.cuenta("SetFileAttributesW"), 9u);
    EXPECT_EQ(toma_preguntas().size(),
              3u);  // after 1 + 5 attempts, and after each of the two granted that failed
    EXPECT_TRUE(dir.es_de_solo_lectura("f.txt"));
}

// ---- Under faults ----

TEST(renombra_protege, bajo_fallos_o_se_hace_entero_o_todo_queda_como_estaba) {
    const directorio_temporal dir;
    for (const std::string& nueva : {std::string("g.txt"), ruta_larga + "\\g.txt"}) {
        for (const cambio& c : cambios) {
            SCOPED_TRACE(c.nombre);
            unsigned short respuesta = 0;
            con_cada_fallo([&] { prepara(dir); },
                           [&] { respuesta = c.hace(dir.ruta("protegido.txt"), dir.ruta(nueva)); },
                           [&](const ronda& r) {
                               const bool hecho = dir.existe(nueva);
                               EXPECT_EQ(dir.existe("protegido.txt"), !hecho) << r;
                               EXPECT_TRUE(dir.es_de_solo_lectura(hecho ? nueva : "protegido.txt")) << r;
                               EXPECT_EQ(dir.contenido(hecho ? nueva : "protegido.txt"), "intacto") << r;
                               if (c.contesta) {
                                   EXPECT_EQ(respuesta, hecho ? 1 : 0) << r;
                               }
                               EXPECT_TRUE(hecho || !r.limpia) << r;
                               EXPECT_TRUE(hecho || r.para_siempre || !c.reintenta) << r;
                               EXPECT_EQ(toma_preguntas().size(), !hecho && c.reintenta ? 1u : 0u) << r;
                               toma_esperas();
                           });
        }
    }
}

TEST(renombra_protege, bajo_fallos_la_proteccion_se_reintenta) {
    const sustituye sin_enlaces(interno::sistema.sigue_enlaces, []() WINAPI { return BOOL{FALSE}; });
    const directorio_temporal dir;
    for (const bool protege : {true, false}) {
        unsigned short respuesta = 0;
        con_cada_fallo(
            [&] {
                dir.limpia();
                dir.fichero("f.txt", "x", FILE_ATTRIBUTE_HIDDEN | (protege ? 0 : FILE_ATTRIBUTE_READONLY));
            },
            [&] {
                respuesta = interno::i_cambia_proteccion(
                    dir.ruta_w("f.txt").c_str(), protege ? interno::modo_lectura : interno::modo_escritura,
                    1);
            },
            [&](const ronda& r) {
                EXPECT_EQ(respuesta, r.limpia || !r.para_siempre ? 1 : 0) << r;
                EXPECT_EQ(dir.es_de_solo_lectura("f.txt"), (respuesta == 1) == protege) << r;
                EXPECT_NE(dir.atributos("f.txt") & FILE_ATTRIBUTE_HIDDEN, 0u) << r;
                EXPECT_EQ(toma_preguntas().size(), respuesta == 1 ? 0u : 1u) << r;
                EXPECT_EQ(toma_esperas().size(), respuesta != 1 ? 5u : r.limpia ? 0u : 1u) << r;
            });
    }
}

TEST(renombra_protege, mientras_se_pregunta_nadie_lleva_el_cambio_a_otro_directorio) {
    const directorio_temporal dir;
    const como_windows windows({});  // where links are followed, it is asked first whether this is one
    const std::string unidad = dir.ruta().substr(0, 2);
    for (const std::string& principio : {std::string(), unidad, dir.ruta("uno").substr(2) + "\\"}) {
        for (const bool ocho : {false, true}) {
            SCOPED_TRACE(principio);
            dir.limpia();
            dir.fichero("uno\\a.txt", "uno");
            dir.fichero("otro\\a.txt", "otro");
            const en_directorio ahi(dir.ruta_w("uno"));
            fallos f;
            f.falla_siempre("MoveFileExW", ERROR_SHARING_VIOLATION, 6);
            const std::string mensaje =
                "The file cannot be renamed.\n- " + principio + "a.txt\n- " + principio + "\u00f1.txt\n";
            contesta([&](const pregunta& p) -> unsigned short {
                EXPECT_EQ(p.mensaje.substr(0, mensaje.size()), mensaje);  // as they were given
                ::SetCurrentDirectoryW(dir.ruta_w("otro").c_str());
                return 1;
            });
            if (ocho) {
                cdir_renombra_fichero(cp1252(principio + "a.txt").c_str(),
                                      cp1252(principio + "\u00f1.txt").c_str());
            } else {
                cdir_renombra_fichero_UNICODE(w(principio + "a.txt").c_str(),
                                              w(principio + "\u00f1.txt").c_str());
            }
            EXPECT_EQ(toma_preguntas().size(), 1u);
            toma_esperas();
            EXPECT_EQ(dir.contenido("uno\\\u00f1.txt"), "uno");
            EXPECT_EQ(dir.contenido("otro\\a.txt"), "otro");
            EXPECT_EQ(dir.arbol().size(), 4u);
            // Seven attempts, and each of the two paths is made full once.
            EXPECT_EQ(f.cuenta("MoveFileExW"), 7u);
            EXPECT_EQ(f.cuenta("GetFullPathNameW"), 2u);
            EXPECT_EQ(f.llamadas(), 9u);
        }
    }
}

TEST(renombra_protege, se_desprotege_el_fichero_que_se_vio) {
    const sustituye sin_enlaces(interno::sistema.sigue_enlaces, []() WINAPI { return BOOL{FALSE}; });
    const directorio_temporal dir;
    dir.fichero("uno\\a.txt", "uno", FILE_ATTRIBUTE_READONLY);
    dir.fichero("otro\\a.txt", "otro", FILE_ATTRIBUTE_READONLY);
    static texto_w otro;
    otro = dir.ruta_w("otro");
    const sustituye cambia(interno::sistema.GetFileAttributesW, [](LPCWSTR ruta) WINAPI {
        const DWORD atributos = ::GetFileAttributesW(ruta);
        ::SetCurrentDirectoryW(otro.c_str());
        return atributos;
    });
    for (const bool ocho : {false, true}) {
        const en_directorio ahi(dir.ruta_w("uno"));
        fallos f;
        if (ocho) {
            lumodir_desprotege_fichero_si_existe("a.txt");
        } else {
            lumodir_desprotege_fichero_si_existe_UNICODE(L"a.txt");
        }
        EXPECT_FALSE(dir.es_de_solo_lectura("uno\\a.txt"));
        EXPECT_TRUE(dir.es_de_solo_lectura("otro\\a.txt"));
        EXPECT_EQ(f.cuenta("GetFullPathNameW"), 1u);
        dir.pon_atributos("uno\\a.txt", FILE_ATTRIBUTE_READONLY);
    }
}
