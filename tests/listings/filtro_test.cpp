// The enumerator's own filter, exhaustively against a naive model of its rules.
#include "listings/filtro.hpp"
#include "apoyo/apoyo.hpp"

using namespace apoyo;

namespace {

// The model: plain strings, one flavour as an argument, every way of splitting tried.
bool casan(const std::string& texto, const std::string& patron) {
    bool bien = texto.size() == patron.size();
    for (std::size_t i = 0; bien && i < texto.size(); ++i) {
        bien = patron[i] == '?' || patron[i] == texto[i];
    }
    return bien;
}

bool modelo_pieza(const std::string& texto, const std::string& patron, bool ancha) {
    const std::size_t k = patron.find('*');
    if (k == std::string::npos) {
        return casan(texto, patron);
    }
    std::string cola = patron.substr(k + 1);
    const std::string principio = patron.substr(0, k);
    if (ancha && !cola.empty()) {
        cola.erase(0, 1);
    }
    if (texto.size() < k || !casan(texto.substr(0, k), principio)) {
        return false;
    }
    for (std::size_t m = k; m <= texto.size(); ++m) {
        if (casan(texto.substr(m), cola)) {
            return true;
        }
    }
    return cola.empty();
}

std::pair<std::string, std::string> modelo_parte(const std::string& nombre) {
    std::string base = nombre;
    std::string extension;
    while (base.find('.') != std::string::npos) {
        extension.insert(0, 1, base.back());
        base.pop_back();
        if (extension[0] == '.') {
            return {base, extension.substr(1)};
        }
    }
    return {nombre, ""};
}

bool modelo(const std::string& nombre, const std::string& filtro, bool ancha) {
    const auto [base, extension] = modelo_parte(nombre);
    const auto [filtro_base, filtro_extension] = modelo_parte(filtro);
    return modelo_pieza(base, filtro_base, ancha) &&
           (filtro_extension.empty() || modelo_pieza(extension, filtro_extension, ancha));
}

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
            const bool corta = lumodir::i_cumple_filtro<char>(nombres[i], filtro);
            const bool ancha = lumodir::i_cumple_filtro<wchar_t>(nombres_w[i], filtro_w);
            aceptados[0] += corta;
            aceptados[1] += ancha;
            ASSERT_EQ(corta, modelo(nombres[i], filtro, false))
                << nombres[i] << " by " << filtro << ", 8-bit";
            ASSERT_EQ(ancha, modelo(nombres[i], filtro, true)) << nombres[i] << " by " << filtro << ", wide";
        }
    }
    EXPECT_GT(aceptados[1], aceptados[0]) << "the wide flavour compares one unit less after the *";
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
        EXPECT_EQ(lumodir::i_cumple_filtro<char>(f.nombre, f.filtro), f.corta)
            << f.nombre << " by " << f.filtro;
        const texto_w nombre = w(f.nombre);
        const texto_w filtro = w(f.filtro);
        EXPECT_EQ(lumodir::i_cumple_filtro<wchar_t>(nombre, filtro), f.ancha)
            << f.nombre << " by " << f.filtro;
    }
}

TEST(filtro, un_interrogante_es_una_unidad_utf16) {
    EXPECT_TRUE(lumodir::i_cumple_filtro<wchar_t>(L"\xD83D\xDE00", L"??"));
    EXPECT_FALSE(lumodir::i_cumple_filtro<wchar_t>(L"\xD83D\xDE00", L"?"));
    EXPECT_TRUE(lumodir::i_cumple_filtro<wchar_t>(L"\xD83D", L"?"));
    EXPECT_TRUE(lumodir::i_cumple_filtro<wchar_t>(L"\x65E5\x672C.txt", L"\x65E5*.t?t"));
    EXPECT_FALSE(lumodir::i_cumple_filtro<wchar_t>(L"\x672C.txt", L"\x65E5*.t?t"));
}
