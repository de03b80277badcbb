// The path checker, rule by rule in both flavours: the reason, the component that the message names, whether the
// path is a network path, what is shown and what is handed back.
#include "paths/path_correcto.hpp"

#include "apoyo/apoyo.hpp"
#include "apoyo/pagina_ultima.hpp"
#include "apoyo/paginas.hpp"
#include "cdir.h"
#include "companions/msglocal.h"
#include "companions/sabores.hpp"
#include "lumodir.h"
#include "paths/modelos.hpp"
#include "paths/split_makepath.hpp"

using modelos::ver;
using namespace apoyo;
using interno::i_path_correcto;
using interno::i_path_correcto_con_comodines;
using interno::i_path_correcto_con_comodines_UNICODE;
using interno::i_path_correcto_UNICODE;
using interno::i_texto_del_fallo;
using interno::vista_w;

namespace {

// ---- every rule

struct juicio_esperado {
    std::string path;
    int motivo = 0;
    std::string argumento = {};
    bool es_unc = false;
};

std::ostream& operator<<(std::ostream& salida, const juicio_esperado& f) {
    return salida << "path [" << f.path << "], expected " << f.motivo << " [" << f.argumento << "], UNC "
                  << f.es_unc;
}

const std::vector<juicio_esperado>& juicios_esperados() {
    static const std::vector<juicio_esperado> todas = {
        {.path = "", .motivo = 53960},
        // correct ones
        {.path = "C:\\dir\\file.txt"},
        {.path = "c:/dir/file"},
        {.path = "\\\\server\\share\\file", .es_unc = true},
        {.path = "\\\\server\\share", .es_unc = true},
        {.path = "\\\\server/share", .es_unc = true},
        {.path = "\\\\\\\\server\\\\share\\", .es_unc = true},  // runs of separators count once
        {.path = "C:\\\\server\\share", .es_unc = true},        // looked for after the drive
        {.path = "C:\\\\server", .es_unc = true},  // the drive counts as a part of the whole path
        {.path = "\\\\..\\.", .es_unc = true},
        {.path = "\\\\" + std::string(70, 'x') + "\\share", .es_unc = true},
        {.path = "dir\\sub"},
        {.path = "./a"},
        {.path = "../a"},
        {.path = "a\\."},
        {.path = "a\\.."},
        {.path = "a/."},
        {.path = "a/.."},
        {.path = "C:"},
        {.path = "z:"},
        {.path = "C:\\"},
        {.path = "C:file"},
        {.path = "\\"},
        {.path = "/"},
        {.path = "\\\\"},  // not longer than its two backslashes: no network path
        {.path = "C:\\\\"},
        {.path = "C:\\a\\\\b\\"},
        {.path = "//server/share"},  // forward slashes make no network path
        {.path = "/\\server"},
        {.path = "\\/server"},
        {.path = ".profile"},
        {.path = "..\\name."},
        {.path = ".\\name."},
        {.path = "../dir\\name."},
        {.path = "./name."},
        {.path = "name.\\file"},  // only the last character is looked at
        {.path = " name"},
        {.path = "..."
                 "\\a"},
        {.path = "a\\. \\b"},  // the blank goes, the point is a name like any other
        {.path = "C:\\dir\\CONFIG.SYS"},
        {.path = "C:\\COM5\\LPT4\\CONX.txt\\AUXILIAR"},
        {.path = "C:\\x.con\\LUMOGRX"},
        {.path = "C:\\España\\Año €.txt"},
        {.path = "\x7F"},
        // the drive
        {.path = "1:\\dir", .motivo = 53958},
        {.path = ":x", .motivo = 53958},
        {.path = ":", .motivo = 53958},
        {.path = "::", .motivo = 53958},
        {.path = "ab:c", .motivo = 53958},
        {.path = "\\\\srv\\a:b", .motivo = 53958},
        {.path = "ñ:\\dir", .motivo = 53958},
        {.path = "@:\\dir", .motivo = 53958},
        {.path = "[:\\dir", .motivo = 53958},
        {.path = "`:\\dir", .motivo = 53958},
        {.path = "{:\\dir", .motivo = 53958},
        {.path = "1:.", .motivo = 53958},  // before the rule of the final point
        // the final point
        {.path = "dir\\name.", .motivo = 53957, .argumento = "dir\\name."},
        {.path = ".", .motivo = 53957, .argumento = "."},
        {.path = "..", .motivo = 53957, .argumento = ".."},
        {.path = "...", .motivo = 53957, .argumento = "..."},
        {.path = "C:.", .motivo = 53957, .argumento = "C:."},
        {.path = "C:..", .motivo = 53957, .argumento = "C:.."},
        {.path = "C:.\\name.", .motivo = 53957, .argumento = "C:.\\name."},
        {.path = "a\\...", .motivo = 53957, .argumento = "a\\..."},
        {.path = "...\\a.", .motivo = 53957, .argumento = "...\\a."},
        {.path = "\\\\srv\\share\\name.",
         .motivo = 53957,
         .argumento = "\\\\srv\\share\\name."},                  // no flag yet
        {.path = "a|b.", .motivo = 53957, .argumento = "a|b."},  // before the rule of the components
        {.path = "C:\\Año%s.", .motivo = 53957, .argumento = "C:\\Año%s."},  // an argument, never a format
        // the components
        {.path = "C:\\a:b", .motivo = 53949, .argumento = "a:b"},
        {.path = "C::", .motivo = 53949, .argumento = ":"},
        {.path = "C:\\dir\\con", .motivo = 53949, .argumento = "con"},
        {.path = "C:\\dir\\COM1.txt", .motivo = 53949, .argumento = "COM1.txt"},
        {.path = "C:\\LUMOGR.dat", .motivo = 53949, .argumento = "LUMOGR.dat"},
        {.path = "nul\\con", .motivo = 53949, .argumento = "nul"},  // the first that breaks the rule
        {.path = "C:con", .motivo = 53949, .argumento = "con"},
        {.path = "dir\\a\tb\\c", .motivo = 53949, .argumento = "a\tb"},
        {.path = "dir\\a*b", .motivo = 53949, .argumento = "a*b"},
        {.path = "dir\\a\"b", .motivo = 53949, .argumento = "a\"b"},
        {.path = "dir\\a?b", .motivo = 53949, .argumento = "a?b"},
        {.path = "dir\\a<b", .motivo = 53949, .argumento = "a<b"},
        {.path = "dir\\a>b", .motivo = 53949, .argumento = "a>b"},
        {.path = "dir\\a|b", .motivo = 53949, .argumento = "a|b"},
        {.path = "dir/Ñ\x1F%ld/b", .motivo = 53949, .argumento = "Ñ\x1F%ld"},
        {.path = "a\\con   \\b", .motivo = 53949, .argumento = "con"},  // named without its blanks
        {.path = "a\\   \\b", .motivo = 53949, .argumento = ""},
        {.path = "con\\a \\b", .motivo = 53949, .argumento = "con"},  // whatever comes behind it
        {.path = " \\a \\b", .motivo = 53949, .argumento = ""},
        {.path = "\\\\con\\share", .motivo = 53949, .argumento = "con", .es_unc = true},
        {.path = "\\\\a?b", .motivo = 53949, .argumento = "a?b", .es_unc = true},
        {.path = "\\\\?\\C:\\dir", .motivo = 53958},
        {.path = "\\\\.\\dev|ice", .motivo = 53949, .argumento = "dev|ice", .es_unc = true},
        // the network drive
        {.path = "\\\\server", .motivo = 53959, .es_unc = true},
        {.path = "\\\\server\\", .motivo = 53959, .es_unc = true},
        {.path = "\\\\server//\\", .motivo = 53959, .es_unc = true},
        {.path = "\\\\\\", .motivo = 53959, .es_unc = true},
        {.path = "\\\\/", .motivo = 53959, .es_unc = true},
        {.path = "C:\\\\\\", .motivo = 53959, .es_unc = true},
        // the lengths
        {.path = std::string(255, 'x')},
        {.path = "a\\" + std::string(255, 'x') + "\\b"},
        {.path = "a\\" + std::string(255, 'x') + "   \\b"},  // trailing blanks do not count
        {.path = std::string(256, 'x'), .motivo = 53949, .argumento = std::string(256, 'x')},
        {.path = "a/" + std::string(252, 'x') + ".txt/b",
         .motivo = 53949,
         .argumento = std::string(252, 'x') + ".txt"},
        {.path = std::string(10240, '\\'), .motivo = 53959, .es_unc = true},
        {.path = "C:" + std::string(10238, '/')},
        {.path = "C:" + std::string(10239, '/'),
         .motivo = 374376,
         .argumento = "C:" + std::string(10239, '/')},
        {.path = std::string(10241, '.'), .motivo = 374376, .argumento = std::string(10241, '.')},
        {.path = std::string(10241, ':'), .motivo = 374376, .argumento = std::string(10241, ':')},
    };
    return todas;
}

std::vector<std::string> avisos_de(const juicio_esperado& f) {
    return f.motivo == 0 || f.motivo == 53949
               ? std::vector<std::string>{}
               : std::vector<std::string>{modelos::texto_en_ingles(f.motivo, f.argumento)};
}

void comprueba_utf16(const juicio_esperado& f) {
    const texto_w path = w(f.path);
    const unsigned short esperado = f.motivo == 0 ? 1 : 0;
    const interno::veredicto juicio = i_path_correcto_UNICODE(ver(path));
    EXPECT_EQ(juicio.correcto, f.motivo == 0);
    EXPECT_EQ(juicio.es_unc, f.es_unc);
    ESPERA_AVISOS();
    interno::i_muestra_fallo(juicio, ver(path));
    EXPECT_EQ(toma_avisos(), avisos_de(f));
    ASSERT_EQ(juicio.motivo == nullptr, f.motivo == 0);
    EXPECT_EQ(cdir_path_valido_UNICODE(path.c_str(), 0), esperado);
    ESPERA_AVISOS();
    EXPECT_EQ(cdir_path_valido_UNICODE(path.c_str(), 1), esperado);
    EXPECT_EQ(toma_avisos(), avisos_de(f));
    wchar_t aguja[] = L"";
    wchar_t* mensaje = aguja;
    EXPECT_EQ(cdir_es_path_valido_UNICODE(path.c_str(), &mensaje), esperado);
    if (f.motivo == 0) {
        EXPECT_EQ(mensaje, aguja) << "written on success";
    } else {
        ASSERT_NE(mensaje, aguja) << "not written";
        EXPECT_EQ(toma(mensaje), modelos::texto_en_ingles(f.motivo, f.argumento));
    }
    EXPECT_EQ(cdir_es_path_valido_UNICODE(path.c_str(), nullptr), esperado);
    ESPERA_AVISOS();
}

void comprueba_8_bits(const juicio_esperado& f) {
    const texto_a path = cp1252(f.path);
    const unsigned short esperado = f.motivo == 0 ? 1 : 0;
    const interno::veredicto juicio = i_path_correcto(interno::vista_a(path));
    EXPECT_EQ(juicio.correcto, f.motivo == 0);
    EXPECT_EQ(juicio.es_unc, f.es_unc);
    ESPERA_AVISOS();
    interno::i_muestra_fallo(juicio, interno::vista_a(path));
    EXPECT_EQ(toma_avisos(), avisos_de(f));
    EXPECT_EQ(cdir_path_valido(path.c_str(), 0), esperado);
    ESPERA_AVISOS();
    EXPECT_EQ(cdir_path_valido(path.c_str(), 1), esperado);
    EXPECT_EQ(toma_avisos(), avisos_de(f));
}

TEST(path_correcto, cada_regla_da_su_mensaje_y_su_marca_de_red) {
    for (const juicio_esperado& f : juicios_esperados()) {
        SCOPED_TRACE(testing::PrintToString(f));
        comprueba_utf16(f);
        comprueba_8_bits(f);
        const modelos::juicio modelo = modelos::juzga(w(f.path));
        EXPECT_EQ(modelo.motivo, f.motivo) << "the model itself";
        EXPECT_EQ(u8(ver(modelo.argumento)), f.argumento) << "the model itself";
        EXPECT_EQ(modelo.es_unc, f.es_unc) << "the model itself";
    }
}

// A path is judged and cut as its view is, whatever stands before it and behind, and where nothing does.
TEST(path_correcto, lo_que_rodea_al_path_no_cuenta) {
    const auto son_iguales = [](const auto& a, const auto& b) {
        return a.juicio.correcto == b.juicio.correcto && a.juicio.es_unc == b.juicio.es_unc &&
               a.juicio.motivo == b.juicio.motivo && a.cortes.directorio == b.cortes.directorio &&
               a.cortes.nombre == b.cortes.nombre && a.cortes.extension == b.cortes.extension;
    };
    const auto nombre_correcto = []<class C>(interno::vista<C> nombre) {
        if constexpr (sizeof(C) == 1) {
            return interno::i_nombre_base_correcto(nombre);
        } else {
            return interno::i_nombre_base_correcto_UNICODE(nombre);
        }
    };
    pagina_ultima pagina;
    en_ambos_sabores([&]<class C>() {
        para_cada_texto<C>("a.\\: ", 4, [&](interno::vista<C> texto) {
            using cadena_de_prueba = decltype(txt<C>(""));
            const cadena_de_prueba solo(texto);
            for (const interno::vista<C>& en_el_borde : {pagina.pon_al_principio(texto), pagina.pon(texto)}) {
                ASSERT_TRUE(
                    son_iguales(interno::i_juzga(en_el_borde), interno::i_juzga(interno::vista<C>(solo))))
                    << lee(texto);
                ASSERT_EQ(nombre_correcto(en_el_borde), nombre_correcto(interno::vista<C>(solo)))
                    << lee(texto);
            }
            for (const char* delante : {".", "\\", "a"}) {
                for (const char* detras : {".", "\\", ":", " ", "a"}) {
                    const cadena_de_prueba entero = txt<C>(delante) + solo + txt<C>(detras);
                    const interno::vista<C> parte = interno::vista<C>(entero).substr(1, solo.size());
                    ASSERT_TRUE(
                        son_iguales(interno::i_juzga(parte), interno::i_juzga(interno::vista<C>(solo))))
                        << "'" << lee(parte) << "' between " << delante << " and " << detras;
                    ASSERT_TRUE(son_iguales(interno::i_juzga_con_comodines(parte),
                                            interno::i_juzga_con_comodines(interno::vista<C>(solo))))
                        << "'" << lee(parte) << "' between " << delante << " and " << detras;
                }
            }
        });
    });
}

TEST(path_correcto, vacio_vale_solo_donde_puede_serlo) {
    for (const bool puede : {true, false}) {
        SCOPED_TRACE(puede);
        for (const interno::veredicto& juicio :
             {i_path_correcto_UNICODE(L"", puede), i_path_correcto("", puede)}) {
            EXPECT_EQ(juicio.correcto, puede);
            EXPECT_FALSE(juicio.es_unc);
            interno::i_muestra_fallo(juicio, interno::vista_w(L""));
            EXPECT_EQ(toma_avisos().size(), puede ? 0u : 1u);
        }
    }
    // Room for an empty path lets no other rule off.
    EXPECT_FALSE(i_path_correcto_UNICODE(L"a.", true).correcto);
    EXPECT_FALSE(i_path_correcto_UNICODE(L" ", true).correcto);
}

TEST(path_correcto, los_blancos_finales_no_cuentan_en_las_entradas_publicas) {
    struct fila_blancos {
        const char* path;
        int motivo_entero;     // of the checker, which takes the text as it is
        int motivo_recortado;  // of the exported entries
        const char* argumento = "";
    };
    const fila_blancos filas_blancos[] = {
        {.path = "C:\\dir\\file.txt   ", .motivo_entero = 0, .motivo_recortado = 0},
        {.path = "   ", .motivo_entero = 53949, .motivo_recortado = 53960},
        {.path = "name.  ", .motivo_entero = 0, .motivo_recortado = 53957, .argumento = "name."},
        {.path = "..  ", .motivo_entero = 0, .motivo_recortado = 53957, .argumento = ".."},
        {.path = "C:\\ ", .motivo_entero = 53949, .motivo_recortado = 0},
        {.path = "\\\\srv\\ ", .motivo_entero = 53949, .motivo_recortado = 53959},
        {.path = "\\\\ ", .motivo_entero = 53949, .motivo_recortado = 0},
        {.path = "  dir", .motivo_entero = 0, .motivo_recortado = 0},
        {.path = "dir\t", .motivo_entero = 53949, .motivo_recortado = 53949, .argumento = "dir\t"},
        {.path = "con\xC2\xA0", .motivo_entero = 0, .motivo_recortado = 0},  // no blank: part of the name
    };
    for (const fila_blancos& f : filas_blancos) {
        SCOPED_TRACE(testing::Message() << "[" << f.path << "]");
        const texto_w path = w(f.path);
        EXPECT_EQ(i_path_correcto_UNICODE(ver(path)).correcto, f.motivo_entero == 0);
        EXPECT_EQ(i_path_correcto(cp1252(f.path)).correcto, f.motivo_entero == 0);
        const juicio_esperado recortada = {
            .path = f.path, .motivo = f.motivo_recortado, .argumento = f.argumento};
        wchar_t* mensaje = nullptr;
        EXPECT_EQ(cdir_es_path_valido_UNICODE(path.c_str(), &mensaje), f.motivo_recortado == 0);
        EXPECT_EQ(toma(mensaje), f.motivo_recortado == 0
                                     ? "(NULL)"
                                     : modelos::texto_en_ingles(f.motivo_recortado, f.argumento));
        EXPECT_EQ(cdir_path_valido_UNICODE(path.c_str(), 1), f.motivo_recortado == 0);
        EXPECT_EQ(toma_avisos(), avisos_de(recortada));
        EXPECT_EQ(cdir_path_valido(cp1252(f.path).c_str(), 1), f.motivo_recortado == 0);
        EXPECT_EQ(toma_avisos(), avisos_de(recortada));
    }
    // Trimming comes before the length is measured.
    const std::string justo = "C:" + std::string(10238, '/');
    EXPECT_EQ(cdir_path_valido((justo + "  ").c_str(), 1), 1);
    EXPECT_EQ(cdir_path_valido_UNICODE(w(justo + "  ").c_str(), 1), 1);
}

TEST(path_correcto, solo_el_valor_1_muestra_el_mensaje) {
    for (const unsigned short mostrar : std::initializer_list<unsigned short>{0, 2, 0x100, 0xFFFF}) {
        EXPECT_EQ(cdir_path_valido_UNICODE(L"1:\\dir", mostrar), 0);
        EXPECT_EQ(cdir_path_valido("1:\\dir", mostrar), 0);
        ESPERA_AVISOS();
    }
}

TEST(path_correcto, un_componente_incorrecto_nunca_se_muestra) {
    EXPECT_EQ(cdir_path_valido_UNICODE(L"C:\\a|b", 1), 0);
    EXPECT_EQ(cdir_path_valido("C:\\a|b", 1), 0);
    EXPECT_EQ(cdir_path_valido_UNICODE(w("C:\\" + std::string(256, 'x')).c_str(), 1), 0);
    ESPERA_AVISOS();
}

TEST(path_correcto, los_mensajes_salen_en_el_idioma_del_usuario) {
    msglocal_establece_idioma(0);
    EXPECT_EQ(cdir_path_valido_UNICODE(L"año.", 1), 0);
    EXPECT_EQ(cdir_path_valido(cp1252("año.").c_str(), 1), 0);
    ESPERA_AVISOS("Se encontró un punto al principio o final del path: 'año.'",
                  "Se encontró un punto al principio o final del path: 'año.'");
    wchar_t* mensaje = nullptr;
    EXPECT_EQ(cdir_es_path_valido_UNICODE(L"a?b", &mensaje), 0);
    EXPECT_EQ(toma(mensaje), "Existen caracteres no válidos en el nombre 'a?b'");
    EXPECT_EQ(cdir_es_path_valido_UNICODE(L"\\\\srv", &mensaje), 0);
    EXPECT_EQ(toma(mensaje), "El nombre de la Unidad de Red está incompleto.");
    EXPECT_EQ(cdir_es_path_valido_UNICODE(L"1:", &mensaje), 0);
    EXPECT_EQ(toma(mensaje), "El nombre de la unidad debe ser una letra.");
    EXPECT_EQ(cdir_es_path_valido_UNICODE(L"", &mensaje), 0);
    EXPECT_EQ(toma(mensaje), "No ha especificado ningún nombre de directorio");
    EXPECT_EQ(cdir_es_path_valido_UNICODE(w(std::string(10241, '%')).c_str(), &mensaje), 0);
    EXPECT_EQ(toma(mensaje),
              "El path '" + std::string(10241, '%') + "' supera la longitud máxima permitida (10240).");
}

// Whoever asks often asks the allocator for nothing, but for what a path is told with that somebody sees.
TEST(path_correcto, un_path_correcto_no_pide_memoria) {
    const std::string largo = "C:\\" + modelos::repite("dir\\", 100) + "file.txt";
    const texto_w largo_w = w(largo);
    for (const unsigned pagina : {1252u, 932u, 65001u}) {
        const en_pagina p(pagina);
        const reservas_contadas reservas;
        EXPECT_TRUE(i_path_correcto_UNICODE(ver(largo_w)).correcto);
        EXPECT_TRUE(i_path_correcto(largo).correcto);
        EXPECT_FALSE(interno::i_nombre_base_correcto(largo));
        EXPECT_FALSE(interno::i_caracteres_validos(largo));
        const auto recurso = interno::i_juzga(interno::vista_a("\\\\m\\s\\file"));
        EXPECT_EQ(interno::division<char>(recurso).unidad, "\\\\m\\s");
        EXPECT_EQ(reservas.toma(), 0u) << pagina;
    }
    lumodir_establece_modo_servicio_sin_reintentos();
    const std::string malo = largo + ".";
    const texto_w malo_w = w(malo);
    const reservas_contadas reservas;
    interno::i_muestra_fallo(i_path_correcto(malo), interno::vista_a(malo));
    interno::i_muestra_fallo(i_path_correcto_UNICODE(ver(malo_w)), ver(malo_w));
    EXPECT_EQ(reservas.toma(), 0u);
}

// The component that a path is refused for is looked for in the path alone.
TEST(path_correcto, el_fallo_nombra_el_componente_entero) {
    for (const char* path : {"?", "a\\?", "C:?", "C:\\x\\?", "x/?"}) {
        for (const char* detras : {"", ":", "\\", "a"}) {
            const texto_w entero = w(path + std::string(detras));
            const vista_w solo = vista_w(entero).substr(0, std::string(path).size());
            EXPECT_EQ(u8(i_texto_del_fallo(i_path_correcto_UNICODE(solo), solo).ver()),
                      "There are invalid characters in the name '?'")
                << path << " before " << detras;
        }
    }
}

// The names of the path and the limit reach every translation.
TEST(path_correcto, todo_idioma_formatea_sus_argumentos) {
    for (unsigned long ranura = 0; ranura <= 40; ++ranura) {
        SCOPED_TRACE(ranura);
        msglocal_establece_idioma(ranura);
        wchar_t* mensaje = nullptr;
        EXPECT_EQ(cdir_es_path_valido_UNICODE(L"dir\\name.", &mensaje), 0);
        EXPECT_NE(toma(mensaje).find("dir\\name."), std::string::npos);
        const std::string largo(10241, 'q');
        EXPECT_EQ(cdir_es_path_valido_UNICODE(w(largo).c_str(), &mensaje), 0);
        const std::string texto = toma(mensaje);
        EXPECT_NE(texto.find(largo), std::string::npos);
        EXPECT_NE(texto.find("10240"), std::string::npos);
    }
}

TEST(path_correcto, en_modo_servicio_no_se_muestra_nada_pero_el_texto_se_entrega) {
    lumodir_establece_modo_servicio_sin_reintentos();
    for (const juicio_esperado& f : juicios_esperados()) {
        SCOPED_TRACE(testing::PrintToString(f));
        EXPECT_EQ(cdir_path_valido_UNICODE(w(f.path).c_str(), 1), f.motivo == 0);
        EXPECT_EQ(cdir_path_valido(cp1252(f.path).c_str(), 1), f.motivo == 0);
        ESPERA_AVISOS();
        wchar_t* mensaje = nullptr;
        EXPECT_EQ(cdir_es_path_valido_UNICODE(w(f.path).c_str(), &mensaje), f.motivo == 0);
        ESPERA_AVISOS();
        EXPECT_EQ(toma(mensaje), f.motivo == 0 ? "(NULL)" : modelos::texto_en_ingles(f.motivo, f.argumento));
    }
}

TEST(path_correcto, un_path_null_se_denuncia_y_no_es_correcto) {
    for (const interno::veredicto& juicio :
         {i_path_correcto_UNICODE({}, true), i_path_correcto({}, true),
          i_path_correcto_con_comodines_UNICODE({}), i_path_correcto_con_comodines({})}) {
        EXPECT_FALSE(juicio.correcto);
        EXPECT_FALSE(juicio.es_unc);
        EXPECT_EQ(juicio.motivo, nullptr);
        interno::i_muestra_fallo(juicio, interno::vista_w());
        interno::i_muestra_fallo(juicio, interno::vista_a());
    }
    wchar_t aguja[] = L"";
    wchar_t* mensaje = aguja;
    EXPECT_EQ(cdir_path_valido_UNICODE(nullptr, 1), 0);
    EXPECT_EQ(cdir_path_valido(nullptr, 1), 0);
    EXPECT_EQ(cdir_es_path_valido_UNICODE(nullptr, &mensaje), 0);
    EXPECT_EQ(mensaje, aguja);
    EXPECT_EQ(cdir_es_path_valido_UNICODE(nullptr, nullptr), 0);
    const std::vector<informe> informes = toma_informes();
    EXPECT_EQ(informes.size(), 8u);
    for (const informe& i : informes) {
        EXPECT_EQ(i.expresion, "(path_sin_espacios) != NULL");
        EXPECT_EQ(i.etiqueta, "lumodir (LUMODIR.DLL)");
        EXPECT_EQ(i.detalle, "(NULL)");
        EXPECT_GT(i.linea, 0u);
    }
    ESPERA_AVISOS();
}

// ---- wildcards

TEST(path_correcto, solo_un_nombre_o_una_extension_enteros_son_comodin) {
    struct fila_comodin {
        std::string path;
        bool valido;
        bool es_unc = false;
    };
    const std::vector<fila_comodin> filas_comodin = {
        {.path = "C:\\dir\\*.*", .valido = true},
        {.path = "C:\\dir\\*", .valido = true},
        {.path = "C:\\dir\\name.*", .valido = true},
        {.path = "C:\\dir\\*.txt", .valido = true},
        {.path = "C:\\año\\*.ñ", .valido = true},
        {.path = "C:*.*", .valido = true},
        {.path = "*", .valido = true},
        {.path = "*.txt", .valido = true},
        {.path = "*.a b", .valido = true},
        {.path = "name.*", .valido = true},
        {.path = "\\\\srv\\share\\*.*", .valido = true, .es_unc = true},
        {.path = "\\\\srv\\share\\*", .valido = true, .es_unc = true},
        {.path = "\\\\srv\\*", .valido = true, .es_unc = true},     // "comprobar" stands for the share
        {.path = "\\\\srv\\*.*", .valido = false, .es_unc = true},  // nothing stands for it
        {.path = "C:\\dir\\file.txt", .valido = true},
        {.path = "C:\\dir\\.*", .valido = true},
        {.path = "*.*", .valido = false},  // nothing is left
        {.path = ".*", .valido = false},
        {.path = "", .valido = false},
        {.path = "C:\\dir\\a*.txt", .valido = false},
        {.path = "C:\\dir\\*.t?t", .valido = false},
        {.path = "C:\\dir\\*.t*", .valido = false},
        {.path = "C:\\dir\\?.*", .valido = false},
        {.path = "C:\\dir\\**.*", .valido = false},
        {.path = "C:\\dir\\*.**", .valido = false},
        {.path = "C:\\d*r\\*.*", .valido = false},
        {.path = "C:\\*\\*.*", .valido = false},
        {.path = "C:\\dir\\*.", .valido = false},  // the final point
        {.path = "C:\\dir\\con.*", .valido = false},
        {.path = "C:\\dir\\name..*", .valido = false},
        {.path = "1:\\*.*", .valido = false},
        {.path = "C:\\dir\\*.* ", .valido = false},  // not trimmed here
        {.path = "C:\\dir\\" + std::string(255, 'x') + ".*", .valido = true},
        {.path = "C:\\dir\\*." + std::string(245, 'x'), .valido = true},
        {.path = "C:\\dir\\*." + std::string(246, 'x'), .valido = false},  // 256 with "comprobar" in front
    };
    for (const fila_comodin& f : filas_comodin) {
        SCOPED_TRACE("[" + f.path + "]");
        for (const interno::veredicto& juicio : {i_path_correcto_con_comodines_UNICODE(ver(w(f.path))),
                                                 i_path_correcto_con_comodines(cp1252(f.path))}) {
            EXPECT_EQ(juicio.correcto, f.valido);
            EXPECT_EQ(juicio.es_unc, f.es_unc);
        }
    }
    ESPERA_AVISOS();
}

}  // namespace
