// The filters of listings, exhaustively against naive models of their rules.
#include "listings/filtro.hpp"

#include "apoyo/apoyo.hpp"
#include "apoyo/paginas.hpp"
#include "listings/filtro_extension.hpp"
#include "modelos/filtro.hpp"
#include "paths/modelos.hpp"

using namespace apoyo;

namespace {

std::vector<std::string> todas(const std::string& alfabeto, std::size_t longitud_maxima) {
    std::vector<std::string> textos{""};
    for (std::size_t desde = 0, i = 0; i < longitud_maxima; ++i) {
        const std::size_t hasta = textos.size();
        for (; desde < hasta; ++desde) {
            for (const char c : alfabeto) {
                textos.push_back(textos[desde] + c);
            }
        }
    }
    return textos;
}

}  // namespace

TEST(filtro, coincide_con_el_modelo_en_todos_los_nombres_cortos) {
    const std::vector<std::string> nombres = todas("ab.", 4);
    const std::vector<std::string> filtros = todas("ab.*?", 5);
    ASSERT_EQ(nombres.size(), 121u);
    ASSERT_EQ(filtros.size(), 3906u);
    std::vector<texto_w> nombres_w;
    for (const std::string& nombre : nombres) {
        nombres_w.push_back(w(nombre));
    }
    std::size_t aceptados[2] = {};
    for (const std::string& filtro : filtros) {
        const texto_w filtro_w = w(filtro);
        for (std::size_t i = 0; i < nombres.size(); ++i) {
            const bool corta = interno::i_cumple_filtro<char>(nombres[i], filtro);
            const bool ancha = interno::i_cumple_filtro<wchar_t>(nombres_w[i], filtro_w);
            aceptados[0] += corta;
            aceptados[1] += ancha;
            ASSERT_EQ(corta, modelos::cumple_filtro(nombres[i], filtro, false))
                << nombres[i] << " by " << filtro << ", 8-bit";
            ASSERT_EQ(ancha, modelos::cumple_filtro(nombres[i], filtro, true))
                << nombres[i] << " by " << filtro << ", wide";
        }
    }
    EXPECT_GT(aceptados[1], aceptados[0]) << "the wide flavour compares one unit less after the *";
}

TEST(filtro, coincide_con_el_modelo_en_todos_los_textos_cortos) {
    for (const std::string filtro : {"", "*", "a", "?", "*.*", "*a", "a*", "a*.", "?*?", "*.?", "a?*a.\\"}) {
        const texto_w filtro_w = w(filtro);
        for (const std::string& nombre : todas("a.\\/:? *", modelos::longitud_de_nombres)) {
            const texto_w nombre_w = w(nombre);
            ASSERT_EQ(interno::i_cumple_filtro<char>(nombre, filtro),
                      modelos::cumple_filtro(nombre, filtro, false))
                << nombre << " by " << filtro << ", 8-bit";
            ASSERT_EQ(interno::i_cumple_filtro<wchar_t>(nombre_w, filtro_w),
                      modelos::cumple_filtro(nombre_w, filtro_w, true))
                << nombre << " by " << filtro << ", wide";
        }
    }
}

TEST(filtro, reglas_sueltas_y_asimetria_de_los_dos_sabores) {
    struct fila {
        std::string nombre;
        std::string filtro;
        bool corta;
        bool ancha;
    };
    const fila filas[] = {
        {.nombre = "readme", .filtro = "readme", .corta = true, .ancha = true},
        {.nombre = "readme.txt", .filtro = "readme", .corta = true, .ancha = true},   // extension ignored
        {.nombre = "readme.txt", .filtro = "readme.", .corta = true, .ancha = true},  // empty: not compared
        {.nombre = "readme", .filtro = "readme.txt", .corta = false, .ancha = false},
        {.nombre = "a.b.c", .filtro = "a.b.c", .corta = true, .ancha = true},
        {.nombre = "a.b.c", .filtro = "???.c", .corta = true, .ancha = true},  // base "a.b"
        {.nombre = "a.b.c", .filtro = "a.?", .corta = false, .ancha = false},
        {.nombre = "a.b.c", .filtro = "?????", .corta = false, .ancha = false},
        {.nombre = "ab", .filtro = "ab?", .corta = false, .ancha = false},
        {.nombre = "abc", .filtro = "ab?", .corta = true, .ancha = true},
        {.nombre = "abc", .filtro = "ab", .corta = false, .ancha = false},
        {.nombre = "abc", .filtro = "a*c", .corta = true, .ancha = true},
        {.nombre = "ac", .filtro = "a*c", .corta = true, .ancha = true},
        {.nombre = "ab", .filtro = "a*c", .corta = false, .ancha = true},  // one unit after *: skipped
        {.nombre = "xbc", .filtro = "*abc", .corta = false, .ancha = true},
        {.nombre = "abc", .filtro = "*abc", .corta = true, .ancha = true},
        {.nombre = "c", .filtro = "*abc", .corta = false, .ancha = false},  // shorter than the tail
        {.nombre = "q", .filtro = "*x", .corta = false, .ancha = true},
        {.nombre = "", .filtro = "*x", .corta = false, .ancha = true},
        {.nombre = "cualquiera.txt", .filtro = "*", .corta = true, .ancha = true},
        {.nombre = "", .filtro = "*", .corta = true, .ancha = true},
        {.nombre = "a.txt", .filtro = "*.*", .corta = true, .ancha = true},
        {.nombre = "a", .filtro = "*.*", .corta = true, .ancha = true},
        {.nombre = "abab", .filtro = "a*b*", .corta = false, .ancha = false},  // second *: ordinary
        {.nombre = "abb*", .filtro = "a*b*", .corta = true, .ancha = true},
        {.nombre = "ab", .filtro = "a**", .corta = false, .ancha = true},  // the skipped unit is a *
        {.nombre = ".profile",
         .filtro = "",
         .corta = true,
         .ancha = true},  // base "" and extension "profile"
        {.nombre = "x", .filtro = "", .corta = false, .ancha = false},
        {.nombre = "aba",
         .filtro = "ab*ba",
         .corta = false,
         .ancha = true},                                                     // prefix and tail do not overlap
        {.nombre = "Abc", .filtro = "abc", .corta = false, .ancha = false},  // folding is not done here
    };
    for (const fila& f : filas) {
        EXPECT_EQ(interno::i_cumple_filtro<char>(f.nombre, f.filtro), f.corta)
            << f.nombre << " by " << f.filtro;
        const texto_w nombre = w(f.nombre);
        const texto_w filtro = w(f.filtro);
        EXPECT_EQ(interno::i_cumple_filtro<wchar_t>(nombre, filtro), f.ancha)
            << f.nombre << " by " << f.filtro;
    }
}

// Around the length up to which a name needs no block, with a character of two bytes at its end and without.
TEST(filtro, nombres_largos_de_8_bits) {
    const en_pagina p(932);
    for (std::size_t num = 250; num < 280; ++num) {
        for (const texto_a cola : {"", "\x83\\", "\x83\x40"}) {
            const texto_a nombre = texto_a(num - cola.size(), 'X') + cola;
            const texto_a distinto = texto_a(num - 2, 'X') + "\x83\xC0";
            const reservas_contadas reservas;
            EXPECT_TRUE(interno::i_cumple_filtro<char>(nombre, nombre)) << num << cola;
            EXPECT_TRUE(interno::i_cumple_filtro<char>(nombre, "X*" + cola)) << num << cola;
            EXPECT_FALSE(interno::i_cumple_filtro<char>(nombre, distinto)) << num << cola;
            const interno::minusculas_temporales minusculas{interno::vista_a(nombre)};
            EXPECT_EQ(texto_a(minusculas.ver()), texto_a(num - cola.size(), 'x') + cola) << num;
            if (num <= 260) {
                EXPECT_EQ(reservas.toma(), 0u) << num << cola;
            }
        }
    }
}

TEST(filtro, un_interrogante_es_una_unidad_utf16) {
    EXPECT_TRUE(interno::i_cumple_filtro<wchar_t>(L"\xD83D\xDE00", L"??"));
    EXPECT_FALSE(interno::i_cumple_filtro<wchar_t>(L"\xD83D\xDE00", L"?"));
    EXPECT_TRUE(interno::i_cumple_filtro<wchar_t>(L"\xD83D", L"?"));
    EXPECT_TRUE(interno::i_cumple_filtro<wchar_t>(L"\x65E5\x672C.txt", L"\x65E5*.t?t"));
    EXPECT_FALSE(interno::i_cumple_filtro<wchar_t>(L"\x672C.txt", L"\x65E5*.t?t"));
}

TEST(filtro, la_extension_pedida_como_el_modelo_en_todos_los_nombres_cortos) {
    const std::vector<std::string> nombres = todas("aB. ?*", 4);
    const std::vector<std::string> extensiones = todas("Ab?* ", 2);
    std::size_t admitidos = 0;
    std::size_t informados = 0;
    for (const std::string& extension : extensiones) {
        const texto_w extension_w = w(extension);
        const interno::filtro_extension filtro{interno::vista_w(extension_w)};
        for (const std::string& nombre : nombres) {
            const texto_w nombre_w = w(nombre);
            const modelos::admision esperada = modelos::admite_extension(nombre_w, extension_w);
            const std::vector<std::string> informes(esperada.informa ? 1 : 0,
                                                    "widestr_longitud(extFich) > 1");
            ASSERT_EQ(filtro.admite(interno::vista_w(nombre_w)), esperada.admite)
                << nombre << " by " << extension;
            ASSERT_EQ(toma_expresiones(), informes) << nombre << " by " << extension;
            ASSERT_EQ(filtro.admite(interno::vista_a(nombre)), esperada.admite)
                << nombre << " by " << extension;
            ASSERT_EQ(toma_expresiones(), informes) << nombre << " by " << extension;
            admitidos += esperada.admite;
            informados += esperada.informa;
        }
    }
    EXPECT_GT(admitidos, nombres.size());
    EXPECT_GT(informados, 0u);
}

TEST(filtro, sin_extension_pedida_pasan_todos_y_con_la_vacia_los_que_no_la_tienen) {
    using interno::filtro_extension;
    using interno::vista_w;
    for (const vista_w todas : {vista_w(), vista_w(L"*"), vista_w(L"*x")}) {
        EXPECT_TRUE(filtro_extension(todas).admite(vista_w(L"a.txt")));
        EXPECT_TRUE(filtro_extension(todas).admite(vista_w(L"a")));
    }
    const filtro_extension ninguna(vista_w(L"*", 0));  // what stands behind a text does not belong to it
    EXPECT_FALSE(ninguna.admite(vista_w(L"a.txt")));
    EXPECT_TRUE(ninguna.admite(vista_w(L"a")));
}

TEST(filtro, una_lista_de_extensiones_como_el_modelo) {
    const std::vector<std::string> extensiones = todas("aB", 2);
    for (const std::string& una : extensiones) {
        auto lista = interno::objeto<ArrCADENA_u>::crea();
        lista->anade(interno::cadena_w(interno::vista_w(w(una))));
        lista->anade(interno::cadena_w(L"bb"));
        for (const std::string& nombre : todas("Ab.", 5)) {
            const texto_w nombre_w = w(nombre);
            ASSERT_EQ(interno::i_tiene_extension_de_la_lista(interno::vista_w(nombre_w), *lista),
                      modelos::esta_en_la_lista(nombre_w, {w(una), L"bb"}))
                << nombre << ", " << una;
        }
    }
}

// 8-bit text is matched character by character, in every code page.
TEST(filtro_modelo, caracteres_de_cada_pagina) {
    for (const unsigned pagina : apoyo::paginas) {
        const apoyo::en_pagina p(pagina);
        std::vector<std::string> textos;
        modelos::para_cada_texto("a.*?\\\x83\xA5", 3, [&](const std::string& t) { textos.push_back(t); });
        for (std::size_t i = 0; i < textos.size(); i += 3) {
            for (std::size_t k = i % 5; k < textos.size(); k += 5) {
                const std::string nombre = "\x83" + textos[i];
                const bool esperado = modelos::cumple_filtro(modelos::en_caracteres(nombre),
                                                             modelos::en_caracteres(textos[k]), false);
                ASSERT_EQ(interno::i_cumple_filtro<char>(nombre, textos[k]), esperado)
                    << pagina << testing::PrintToString(nombre) << testing::PrintToString(textos[k]);
            }
        }
    }
}

TEST(filtro, un_caracter_de_dos_bytes_es_uno) {
    const apoyo::en_pagina p(932);
    EXPECT_TRUE(interno::i_cumple_filtro<char>("\x95\\.txt", "?.txt"));
    EXPECT_FALSE(interno::i_cumple_filtro<char>("\x95\\.txt", "??.txt"));
    EXPECT_FALSE(interno::i_cumple_filtro<char>("\x95\\.txt", "*\\.txt"));
    const std::string largo(400, '\x95');  // longer than what stands on the stack
    EXPECT_TRUE(interno::i_cumple_filtro<char>(largo, largo));
    EXPECT_TRUE(interno::i_cumple_filtro<char>(largo, "*"));
    EXPECT_FALSE(interno::i_cumple_filtro<char>(largo, std::string(402, '\x95')));
}
