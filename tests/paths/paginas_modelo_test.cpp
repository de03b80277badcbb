// 8-bit text in every code page against the models on characters: cutting, composing, joining, one piece at a time,
// records. Every short text of the bytes that the rules look at and of bytes that begin characters of two, and random
// ones with characters whose second byte is that of a separator or a bar.
#include "apoyo/apoyo.hpp"
#include "apoyo/paginas.hpp"
#include "cdir.h"
#include "companions/unicode.hpp"
#include "lumodir.h"
#include "modelos/componentes.hpp"
#include "modelos/nomsfich.hpp"
#include "modelos/rutas.hpp"
#include "modelos/textos_de_pagina.hpp"
#include "nomsfich.h"
#include "paths/modelos.hpp"
#include "paths/path_correcto.hpp"

using namespace apoyo;
using modelos::a_w;
using modelos::en_bytes;
using modelos::en_caracteres;
using modelos::texto_c;

namespace {

struct dado {
    texto_a resultado;
    std::vector<std::string> informes;
    friend bool operator==(const dado&, const dado&) = default;
    friend void PrintTo(const dado& d, std::ostream* salida) {
        *salida << testing::PrintToString(d.resultado) << " " << testing::PrintToString(d.informes);
    }
};

dado tras(char* texto) {
    const texto_a resultado = toma_bytes(texto);
    return {resultado, toma_expresiones()};
}

using piezas_a = modelos::piezas<texto_a>;

piezas_a corta_bytes(void (*entrada)(const char*, char**, char**, char**, char**), const texto_a& path) {
    char* p[4];
    entrada(path.c_str(), &p[0], &p[1], &p[2], &p[3]);
    return {toma_bytes(p[0]), toma_bytes(p[1]), toma_bytes(p[2]), toma_bytes(p[3])};
}

piezas_a piezas_en_bytes(const modelos::piezas<texto_c>& p) {
    return {en_bytes(p.unidad), en_bytes(p.directorio), en_bytes(p.nombre), en_bytes(p.extension)};
}

void compara_corte_en_bytes(const texto_a& path) {
    const texto_c limpio = modelos::recortado(en_caracteres(path));
    const modelos::juicio j = modelos::juzga(a_w(limpio));
    const modelos::corte<texto_c> c = modelos::corta_modelo(limpio, j.es_unc);
    const modelos::piezas<texto_c> p = modelos::con_blancos_juntos(c.p);
    EXPECT_EQ(corta_bytes(cdir_splitpath_con_comprobacion, path), piezas_en_bytes(p));
    EXPECT_EQ(toma_expresiones(), c.informes);
    EXPECT_EQ(toma_avisos().size(), j.motivo == 0 ? 0u : 1u);
    const modelos::corte<texto_c> d = modelos::corta_con_comodines(en_caracteres(path));
    EXPECT_EQ(corta_bytes(cdir_splitpath_con_comodines, path),
              piezas_en_bytes(modelos::con_blancos_juntos(d.p)));
    EXPECT_EQ(toma_expresiones(), d.informes);
    std::vector<std::string> informes = c.informes;
    const texto_c compuesto =
        modelos::compone_modelo<texto_c>({p.unidad, p.directorio, p.nombre, p.extension}, informes);
    EXPECT_EQ(tras(cdir_split_make_path(path.c_str(), 15)), (dado{en_bytes(compuesto), informes}));
    toma_avisos();
}

void compara_componentes(const texto_a& path) {
    const texto_c t = en_caracteres(path);
    const modelos::corte<texto_c> c = modelos::corta_con_comodines(t);
    const char* const ruta = path.c_str();
    const auto esperado = [&](const texto_c& resultado) { return dado{en_bytes(resultado), c.informes}; };
    EXPECT_EQ(tras(cdir_nombre_base_fichero(ruta)), esperado(c.p.nombre));
    EXPECT_EQ(tras(cdir_nombre_y_ext_fichero(ruta)), esperado(c.p.nombre + c.p.extension));
    EXPECT_EQ(tras(cdir_ruta_y_nombre_fichero_sin_extension(ruta)),
              esperado(modelos::con_extension(c.p, texto_c())));
    EXPECT_EQ(tras(cdir_nombre_fichero_con_ext(ruta, "dat")),
              esperado(modelos::con_extension(c.p, texto_c(U"dat"))));
    EXPECT_EQ(tras(cdir_extension_fichero(ruta)), (dado{en_bytes(modelos::extension_sin_punto(c.p)),
                                                        modelos::informes_de_extension(t, c.informes)}));
    const std::vector<std::string> vacia(path.empty() ? 1 : 0, "num_caracteres > 0");
    EXPECT_EQ(tras(cdir_ruta_acceso_directorio_fichero(ruta)),
              (dado{en_bytes(modelos::directorio_de(t)), vacia}));
    EXPECT_EQ(tras(cdir_nombre_de_fichero_suprimiendo_path(ruta)),
              (dado{en_bytes(modelos::tras_ultima_barra(t)), {}}));
}

// The wide flavour of the converted text gives the same pieces, converted: 8-bit text is read as it is converted.
void compara_con_ancha(const texto_a& path) {
    const texto_w ancho = a_w(path);
    const auto es = [&](char* corto, wchar_t* largo) {
        const texto_a de_8_bits = toma_bytes(corto);
        const interno::cadena_w de_utf16 = interno::cadena_w::adopta(largo);
        EXPECT_EQ(a_w(de_8_bits), texto_w(de_utf16.ver()));
    };
    es(cdir_nombre_base_fichero(path.c_str()), cdir_nombre_base_fichero_UNICODE(ancho.c_str()));
    es(cdir_ruta_acceso_directorio_fichero(path.c_str()),
       cdir_ruta_acceso_directorio_fichero_UNICODE(ancho.c_str()));
    es(cdir_nombre_de_fichero_suprimiendo_path(path.c_str()),
       cdir_nombre_de_fichero_suprimiendo_path_UNICODE(ancho.c_str()));
    toma_informes();
}

void compara_uniones(const texto_a& a, const texto_a& b) {
    const texto_c x = en_caracteres(a);
    const texto_c y = en_caracteres(b);
    EXPECT_EQ(toma_bytes(cdir_concatena_directorios(a.c_str(), b.c_str())), en_bytes(modelos::une(x, y)));
    EXPECT_EQ(toma_bytes(cdir_construye_path(a.c_str(), b.c_str(), a.c_str())),
              en_bytes(modelos::construye(x, y, x)));
}

void compara_composicion_en_bytes(const texto_a& unidad, const texto_a& directorio, const texto_a& nombre,
                                  const texto_a& extension) {
    std::vector<std::string> informes;
    const texto_a path = en_bytes(modelos::compone_modelo<texto_c>(
        {en_caracteres(unidad), en_caracteres(directorio), en_caracteres(nombre), en_caracteres(extension)},
        informes));
    if (modelos::juzga(a_w(path)).motivo != 0) {
        informes.push_back("i_path_correcto( pathCompleto, puede_ser_vacio, FALSO, NULL) == CIERTO");
    }
    EXPECT_EQ(tras(cdir_makepath(unidad.c_str(), directorio.c_str(), nombre.c_str(), extension.c_str())),
              (dado{path, informes}));
}

void compara_registro(const texto_a& nombre) {
    const modelos::partes esperadas = modelos::crea_nomsfich(nombre);
    Nomsfich* registro = nomsfich_crea(nombre.c_str());
    EXPECT_EQ((modelos::partes{nomsfich_nombre_base_fichero(registro), nomsfich_extension_fichero(registro)}),
              esperadas);
    nomsfich_destruye(&registro);
    EXPECT_EQ(toma_expresiones(), modelos::informes_de(esperadas));
    const texto_a base = en_bytes(modelos::corta_como_el_crt(en_caracteres(nombre)).nombre);
    EXPECT_EQ(tras(nomsfich_nombre_base_path_completo(nombre.c_str())),
              (dado{modelos::minusculas(base), modelos::informes_de({"x", base})}));
}

void compara_todo(const texto_a& texto) {
    compara_corte_en_bytes(texto);
    compara_componentes(texto);
    compara_registro(texto);
    for (std::size_t i = 0; i <= texto.size(); ++i) {
        compara_uniones(texto.substr(0, i), texto.substr(i));
    }
}

std::string visto(unsigned pagina, const texto_a& texto) {
    return std::to_string(pagina) + ": " + testing::PrintToString(texto);
}

}  // namespace

TEST(paginas_modelo, todo_texto_corto) {
    for (const unsigned pagina : paginas) {
        const en_pagina p(pagina);
        modelos::para_cada_texto("a\\/.: |\x83\xA5\xFF", modelos::longitud_exhaustiva - 2,
                                 [&](const texto_a& t) {
                                     SCOPED_TRACE(visto(pagina, t));
                                     compara_todo(t);
                                 });
        // Shares need more room than that.
        modelos::para_cada_texto("a\\/\x83\xA5", modelos::longitud_exhaustiva - 2, [&](const texto_a& t) {
            SCOPED_TRACE(visto(pagina, "\\\\" + t));
            compara_corte_en_bytes("\\\\" + t);
            compara_componentes("\\\\s\x83" + t);
        });
    }
}

TEST(paginas_modelo, textos_al_azar) {
    for (const unsigned pagina : paginas) {
        const en_pagina p(pagina);
        modelos::azar_de_pagina azar(pagina);
        for (int n = 0; n < 1500 && !HasFailure(); ++n) {
            const texto_a t = azar.texto();
            SCOPED_TRACE(visto(pagina, t));
            compara_todo(t);
            const texto_a otros[] = {azar.texto(), azar.texto(), azar.texto()};
            SCOPED_TRACE(testing::PrintToString(otros));
            compara_composicion_en_bytes(azar.numero(4) == 0 ? "\\\\s\\r" : t, otros[0], otros[1], otros[2]);
            compara_composicion_en_bytes(t, otros[0], otros[1], "");
        }
    }
}

// The capitals that the code pages hold, and all that is none; in UTF-8 those capitals alone.
TEST(paginas_modelo, la_minuscula_de_cada_caracter) {
    for (const unsigned pagina : paginas) {
        const en_pagina p(pagina);
        std::size_t cambian = 0;
        const auto compara = [&](const texto_a& texto) {
            texto_a menor = texto;
            interno::plataforma::minusculas_ansi(menor.data(), menor.size());
            EXPECT_EQ(modelos::minusculas(texto), menor) << visto(pagina, texto);
            cambian += menor != texto ? 1 : 0;
        };
        for (unsigned byte = 0; byte < 256; ++byte) {
            compara(texto_a(1, static_cast<char>(byte)));
        }
        for (unsigned par = 0x8000; pagina != 65001 && par < 0x10000; ++par) {
            const texto_a t = {static_cast<char>(par / 256), static_cast<char>(par % 256)};
            if (en_caracteres(t).size() == 1) {
                compara(t);
            }
        }
        for (const modelos::mayusculas_seguidas& m : modelos::mayusculas_de_las_paginas) {
            for (wchar_t c = m.primera; pagina == 65001 && c <= m.ultima; ++c) {
                char bytes[8];
                compara(texto_a(bytes, interno::plataforma::utf16_a_ansi(interno::vista_w(&c, 1), bytes, 8)));
            }
        }
        EXPECT_GE(cambian, 26u) << pagina;
    }
}

// What the two flavours agree on, in each code page and without a model.
TEST(paginas_modelo, las_dos_formas_dan_las_mismas_piezas) {
    for (const unsigned pagina : paginas) {
        const en_pagina p(pagina);
        modelos::azar_de_pagina azar(pagina + 1);
        for (int n = 0; n < 1500 && !HasFailure(); ++n) {
            const texto_a t = azar.texto();
            // In UTF-8 a character may be two units of UTF-16, and only one unit is a drive there; what means nothing
            // may be so in pieces.
            if (pagina != 65001 ||
                (a_w(t).find(0xFFFD) == texto_w::npos && t.find("\x80:") == texto_a::npos)) {
                SCOPED_TRACE(visto(pagina, t));
                compara_con_ancha(t);
            }
        }
    }
}

// Every answer of the check about bytes is the one about the text that they are converted to, whatever they mean.
namespace {

bool se_juzga_como_convertido(const texto_a& t) {
    const texto_w ancho = a_w(t);
    const auto igual = [](const interno::veredicto& a, const interno::veredicto& b) {
        return a.correcto == b.correcto && a.es_unc == b.es_unc && a.motivo == b.motivo;
    };
    const interno::vista_a ver(t);
    const interno::path_juzgado<char> juzgado = interno::i_juzga(ver);
    const interno::cortes_de_ruta cortes = interno::i_cortes(ver);
    return igual(interno::i_path_correcto(ver), interno::i_path_correcto_UNICODE(interno::vista_w(ancho))) &&
           igual(juzgado.juicio, interno::i_juzga(interno::vista_w(ancho)).juicio) &&
           igual(interno::i_path_correcto_con_comodines(ver),
                 interno::i_path_correcto_con_comodines_UNICODE(interno::vista_w(ancho))) &&
           juzgado.cortes.directorio == cortes.directorio && juzgado.cortes.nombre == cortes.nombre &&
           juzgado.cortes.extension == cortes.extension &&
           cdir_nombre_base_valido(t.c_str()) == cdir_nombre_base_valido_UNICODE(texto_w(ancho).data()) &&
           cdir_extension_valida(t.c_str()) == cdir_extension_valida_UNICODE(ancho.c_str());
}

}  // namespace

TEST(paginas_comprobacion, todo_texto_corto) {
    for (const unsigned pagina : paginas) {
        const en_pagina p(pagina);
        for (const char* delante : {"", "C:\\", "\\\\", "con"}) {
            modelos::para_cada_texto(
                "a\\/.: |\x81\x95\xA5\xC3\xFF", modelos::longitud_exhaustiva - 2, [&](const texto_a& t) {
                    ASSERT_TRUE(se_juzga_como_convertido(delante + t)) << visto(pagina, delante + t);
                });
        }
    }
}

// Whole characters, halves, and what stands behind them.
TEST(paginas_comprobacion, todos_los_pares_de_bytes) {
    for (const unsigned pagina : {932u, 936u, 949u, 950u, 65001u}) {
        const en_pagina p(pagina);
        for (unsigned par = 0x8000; par < 0x10000; ++par) {
            if (par % 256 == 0) {
                continue;
            }
            const texto_a t = {static_cast<char>(par / 256), static_cast<char>(par % 256)};
            for (const texto_a& texto : {"C:\\" + t + "\\con", t + " \\" + t + "."}) {
                ASSERT_TRUE(se_juzga_como_convertido(texto)) << visto(pagina, texto);
            }
        }
    }
}

// The text is read in stretches: a character may stand in two of them, and so may a run of bytes that could begin one.
TEST(paginas_comprobacion, en_cada_sitio) {
    for (const unsigned pagina : paginas) {
        const en_pagina p(pagina);
        modelos::azar_de_pagina azar(pagina + 2);
        for (std::size_t delante = 40; delante < 190; ++delante) {
            for (const texto_a& cabeza :
                 {modelos::repite("a", delante), modelos::repite("\x95", delante),
                  "C:" + modelos::repite("\x95\\", delante / 2), modelos::repite("aaaaaaa\\", delante / 8),
                  modelos::repite("\xC3", delante / 2) + modelos::repite(" ", delante / 2)}) {
                for (int n = 0; n < 6; ++n) {
                    const texto_a t = cabeza + azar.texto();
                    ASSERT_TRUE(se_juzga_como_convertido(t)) << visto(pagina, t);
                }
            }
        }
    }
}

// Limits count characters.
TEST(paginas_comprobacion, alrededor_de_los_limites) {
    for (const unsigned pagina : paginas) {
        const en_pagina p(pagina);
        modelos::azar_de_pagina azar(pagina + 3);
        for (const texto_a& letra : modelos::caracteres_de(pagina)) {
            for (std::size_t n = 60; n <= 260; n += n == 66 || n == 130 ? 54 : 1) {
                for (const texto_a& cola :
                     {texto_a(), texto_a("  "), texto_a("  \\a"), texto_a("a"), azar.texto()}) {
                    const texto_a t = modelos::repite(letra, n) + cola;
                    ASSERT_TRUE(se_juzga_como_convertido(t)) << visto(pagina, t);
                    ASSERT_TRUE(se_juzga_como_convertido("b\\" + t)) << visto(pagina, t);
                }
            }
            for (std::size_t bytes = 10236; bytes <= 10244; ++bytes) {
                const texto_a t = letra + modelos::repite("a\\", bytes / 2) + azar.texto();
                ASSERT_TRUE(se_juzga_como_convertido(t)) << pagina << " " << bytes;
            }
        }
    }
}

TEST(paginas_comprobacion, textos_al_azar) {
    for (const unsigned pagina : paginas) {
        const en_pagina p(pagina);
        modelos::azar_de_pagina azar(pagina + 4);
        for (int n = 0; n < 6000; ++n) {
            texto_a t;
            for (std::size_t trozos = azar.numero(n % 10 == 0 ? 40 : 4) + 1; trozos > 0; --trozos) {
                t += azar.texto();
            }
            if (!t.empty() && azar.numero(2) == 0) {
                t[azar.numero(t.size())] = static_cast<char>(1 + azar.numero(255));
            }
            ASSERT_TRUE(se_juzga_como_convertido(t)) << visto(pagina, t);
        }
    }
}

// Paths as people write them.
TEST(paginas, rutas_de_verdad) {
    struct fila {
        unsigned pagina;
        const char* ruta;
        const char* directorio;
        const char* nombre;
        const char* extension;
        const char* con_dat;
    };
    const fila filas[] = {
        {932, "C:\\\x97\x5C\x92\xE8\\\x95\\.txt", "C:\\\x97\x5C\x92\xE8\\", "\x95\\", "txt",
         "C:\\\x97\x5C\x92\xE8\\\x95\\.dat"},
        {932, "\x83\x5C\x81\x5B\x83X/\x94\\.c", "\x83\x5C\x81\x5B\x83X/", "\x94\\", "c",
         "\x83\x5C\x81\x5B\x83X/\x94\\.dat"},
        {950, "D:\\\xA5\\\xAF\xE0\\\xB3\\.doc", "D:\\\xA5\\\xAF\xE0\\", "\xB3\\", "doc",
         "D:\\\xA5\\\xAF\xE0\\\xB3\\.dat"},
        {936, "\\\\srv\\\x8F\\\\a.b", "\\\\srv\\\x8F\\\\", "a", "b", "\\\\srv\\\x8F\\\\a.dat"},
        {949, "C:\\\xC7\xD1\xB1\xDB\\\xB0\xA1.hwp", "C:\\\xC7\xD1\xB1\xDB\\", "\xB0\xA1", "hwp",
         "C:\\\xC7\xD1\xB1\xDB\\\xB0\xA1.dat"},
    };
    for (const fila& f : filas) {
        const en_pagina p(f.pagina);
        SCOPED_TRACE(visto(f.pagina, f.ruta));
        EXPECT_EQ(cdir_path_valido(f.ruta, 1), 1);
        EXPECT_EQ(toma_bytes(cdir_ruta_acceso_directorio_fichero(f.ruta)), f.directorio);
        EXPECT_EQ(toma_bytes(cdir_nombre_base_fichero(f.ruta)), f.nombre);
        EXPECT_EQ(toma_bytes(cdir_extension_fichero(f.ruta)), f.extension);
        EXPECT_EQ(toma_bytes(cdir_nombre_fichero_con_ext(f.ruta, "dat")), f.con_dat);
    }
}

TEST(paginas, una_union_guarda_su_separador) {
    const en_pagina p(932);
    EXPECT_EQ(toma_bytes(cdir_concatena_directorios("C:\\\x83\\", "\x94\\.txt")), "C:\\\x83\\\\\x94\\.txt");
    EXPECT_EQ(toma_bytes(cdir_construye_path("C:\\\x83\\", "\x95\\", "a")), "C:\\\x83\\\\\x95\\\\a");
    EXPECT_EQ(toma_bytes(cdir_makepath("C:", "\\\x83\\", "\x94\\", ".c")), "C:\\\x83\\\\\x94\\.c");
    // A drive is composed of one whole character, in UTF-8 too.
    EXPECT_EQ(toma_bytes(cdir_makepath("\x95\\longer", nullptr, "a", nullptr)), "\x95\\:a");
    ESPERA_INFORMES("i_path_correcto( pathCompleto, puede_ser_vacio, FALSO, NULL) == CIERTO");
    const en_pagina utf8(65001);
    EXPECT_EQ(toma_bytes(cdir_makepath("\xC3\xB1longer", nullptr, "a", nullptr)), "\xC3\xB1:a");
    ESPERA_INFORMES("i_path_correcto( pathCompleto, puede_ser_vacio, FALSO, NULL) == CIERTO");
}

// A wrong network path loses its server and share where they stand again, and keeps them where they do only as bytes: the
// first of the separators is the second half of a character, or their last byte the first half of one.
TEST(paginas, una_unidad_de_red_no_se_halla_dentro_de_un_caracter) {
    const en_pagina p(932);
    struct fila {
        std::string directorio;
        std::string unidad;
        std::string queda;
    };
    for (const fila& f :
         {fila{"\\\\\\m\\\\s\\x\\\\m\\s\\", "\\\\m\\s", "\\\\\\m\\\\s\\x\\"},
          fila{"\\\\\\m\\\\s\\\x83\\\\m\\s\\", "\\\\m\\s", "\\\\\\m\\\\s\\\x83\\\\m\\s\\"},
          fila{"\\\\\\m\\\\\x83/\\\\m\\\x83\\x\\", "\\\\m\\\x83", "\\\\\\m\\\\\x83/\\\\m\\\x83\\x\\"}}) {
        char *unidad = nullptr, *queda = nullptr;
        cdir_splitpath_con_comprobacion(f.directorio.c_str(), &unidad, &queda, nullptr, nullptr);
        EXPECT_EQ(toma_bytes(unidad), f.unidad);
        EXPECT_EQ(toma_bytes(queda), f.queda);
        ESPERA_AVISOS();
    }
}

TEST(paginas, registros_de_nombres) {
    const en_pagina p(932);
    Nomsfich* registro = nomsfich_crea("\x95\\.\x83|");  // neither a separator nor a bar
    EXPECT_STREQ(nomsfich_nombre_base_fichero(registro), "\x95\\");
    EXPECT_STREQ(nomsfich_extension_fichero(registro), "\x83|");
    nomsfich_destruye(&registro);
    EXPECT_EQ(nomsfich_mismo_nombre_base("\x95\\", "\x95\\"), 1);
    EXPECT_EQ(toma_bytes(nomsfich_nombre_base_path_completo("C:\\\x83\\\\\x95\\.txt")), "\x95\\");
    ESPERA_INFORMES();
    registro = nomsfich_crea("\x95\\\\.a");  // and one that is
    nomsfich_destruye(&registro);
    ESPERA_INFORMES(modelos::caracter_malo);
}

// By the code page, not by A to Z alone.
TEST(paginas, la_caja_de_un_registro_es_la_de_la_pagina) {
    struct fila {
        unsigned pagina;
        const char* nombre;
        const char* en_minusculas;
    };
    const fila filas[] = {
        {1252, "\xD1", "\xF1"},
        {932, "\x83\x9F\x84\x40\x82\x60", "\x83\xBF\x84\x70\x82\x81"},  // Greek, Cyrillic, of full width
        {932, "\x83\x41", "\x83\x41"},  // katakana a: its second byte is an "A"
        {936, "\xA6\xA1\xA7\xA1\xA3\xC1", "\xA6\xC1\xA7\xD1\xA3\xE1"},
        {949, "\xA5\xC1\xAC\xA1\xA3\xC1", "\xA5\xE1\xAC\xD1\xA3\xE1"},
        {949, "\x81\x41", "\x81\x41"},
        {950, "\xA3\x44\xA2\xCF", "\xA3\\\xA2\xE9"},  // the small alpha ends in a byte like a separator's
        {874, "\xA1\xE1", "\xA1\xE1"},
        {65001, "\xC3\x91\xCE\x91\xD0\x90\xEF\xBC\xA1", "\xC3\xB1\xCE\xB1\xD0\xB0\xEF\xBD\x81"},
        {65001,
         "\xC3"
         "A",
         "\xC3"
         "a"},
    };
    for (const fila& f : filas) {
        const en_pagina p(f.pagina);
        const texto_a nombre = f.nombre;
        const texto_a esperado = f.en_minusculas;
        Nomsfich* registro = nomsfich_crea((nombre + "Z." + nombre).c_str());
        EXPECT_EQ(nomsfich_nombre_base_fichero(registro), esperado + "z") << f.pagina;
        EXPECT_EQ(nomsfich_extension_fichero(registro), esperado) << f.pagina;
        Nomsfich* otro = nomsfich_crea((esperado + "z." + esperado).c_str());
        EXPECT_EQ(nomsfich_iguales(registro, otro), 1) << f.pagina;
        nomsfich_destruye(&registro);
        nomsfich_destruye(&otro);
    }
}

// A path of many double-byte characters, far past the 1023 bytes that pieces were once cut to.
TEST(paginas, un_directorio_largo_sale_entero) {
    const en_pagina p(932);
    texto_a ruta = "C:";
    for (int i = 0; i < 40; ++i) {
        ruta += "\\" + modelos::repite("\x95\\", 90);
    }
    EXPECT_EQ(cdir_path_valido((ruta + "\\f.txt").c_str(), 1), 1);
    EXPECT_EQ(toma_bytes(cdir_nombre_fichero_con_ext((ruta + "\\f.txt").c_str(), "dat")), ruta + "\\f.dat");
    EXPECT_EQ(toma_bytes(cdir_split_make_path((ruta + "\\f.txt").c_str(), 3)), ruta + "\\");
}
