// Where characters begin, in every code page, against the system's own conversion: a text has as many characters as
// converting it gives, each of them alone gives its own, and the questions asked at one place agree with reading from
// the beginning.
#include "companions/caracteres.hpp"

#include <random>

#include "apoyo/apoyo.hpp"
#include "apoyo/paginas.hpp"
#include "companions/unicode.hpp"

using namespace apoyo;
using interno::escritura;
using interno::utunicode_ANSI_a_UNICODE;
using interno::vista_a;

namespace {

std::vector<texto_a> caracteres_de(const texto_a& t) {
    std::vector<texto_a> todos;
    interno::por_caracteres(t, [&](vista_a c) { todos.emplace_back(c); });
    return todos;
}

texto_w convertido(vista_a t) {
    return texto_w(utunicode_ANSI_a_UNICODE(t).ver());
}

// In the copy without second bytes nothing else has changed, and each byte of ASCII is a character.
void compara_copia(const texto_a& t) {
    texto_a esperada;
    for (const texto_a& c : caracteres_de(t)) {
        const bool doble = interno::i_escritura() == escritura::de_dos_bytes && c.size() == 2;
        esperada += doble ? texto_a{c[0], 'x'} : c;
    }
    texto_a copia(t.size(), '?');
    interno::i_copia_sin_segundos(t, copia.data());
    ASSERT_EQ(copia, esperada);
}

// Read in characters and converted one by one, and converted whole.
void compara(const texto_a& t) {
    texto_w de_uno_en_uno;
    texto_a otra_vez;
    std::vector<bool> empieza(t.size() + 1, false);
    for (const texto_a& c : caracteres_de(t)) {
        empieza[otra_vez.size()] = true;
        otra_vez += c;
        de_uno_en_uno += convertido(c);
    }
    empieza[t.size()] = true;
    ASSERT_EQ(otra_vez, t);
    compara_copia(t);
    ASSERT_EQ(de_uno_en_uno, convertido(t)) << testing::PrintToString(t);
    for (std::size_t i = 0; i <= t.size(); ++i) {
        // Asked only where an ASCII character seems to stand, or the text ends.
        if (i == t.size() || static_cast<unsigned char>(t[i]) < 0x80) {
            ASSERT_EQ(interno::empieza_caracter(vista_a(t), i), empieza[i])
                << testing::PrintToString(t) << " at " << i;
        }
    }
}

}  // namespace

TEST(caracteres, cada_pagina_dice_como_escribe) {
    struct fila {
        unsigned pagina;
        escritura como;
    };
    for (const fila& f : {fila{932, escritura::de_dos_bytes}, fila{1252, escritura::de_un_byte},
                          fila{936, escritura::de_dos_bytes}, fila{874, escritura::de_un_byte},
                          fila{949, escritura::de_dos_bytes}, fila{65001, escritura::utf8},
                          fila{950, escritura::de_dos_bytes}}) {
        const en_pagina p(f.pagina);
        EXPECT_EQ(static_cast<int>(interno::i_escritura()), static_cast<int>(f.como)) << f.pagina;
    }
}

TEST(caracteres, parejas_conocidas) {
    struct fila {
        unsigned pagina;
        texto_a texto;
        std::vector<texto_a> caracteres;
    };
    const fila filas[] = {
        {932, "a\x83\\b", {"a", "\x83\\", "b"}},      // katakana so
        {932, "\x83/", {"\x83", "/"}},                // no pair ends in a slash
        {932, "\x83\x83\\", {"\x83\x83", "\\"}},      // small katakana ya, and a separator
        {932, "\xB1\\", {"\xB1", "\\"}},              // half-width katakana a: one byte
        {932, "\x83", {"\x83"}},                      // half a character
        {932, "\xFC\xFC\\", {"\xFC", "\xFC", "\\"}},  // a lead byte that begins nothing here
        {936, "\x81|\\", {"\x81|", "\\"}},
        {949, "\xB0\xA1\\", {"\xB0\xA1", "\\"}},  // hangul ga
        {949, "\xB0\\", {"\xB0", "\\"}},          // 0x5C is no second byte of this code page
        {950, "\xA5\\\\", {"\xA5\\", "\\"}},
        {65001, "\xE8\xA1\xA8\\", {"\xE8\xA1\xA8", "\\"}},
        {65001, "\xE8\\\xA1", {"\xE8", "\\", "\xA1"}},  // cut short
        {65001, "\xF0\x9F\x98\x80", {"\xF0\x9F\x98\x80"}},
        {65001, "\xED\xA0\x80", {"\xED", "\xA0", "\x80"}},  // half of a pair is no character of UTF-8
        {65001, "\xF0\x90\x80\x80", {"\xF0\x90\x80\x80"}},  // the first behind those of three bytes
        {65001, "\xF0\x8F\xBF\xBF", {"\xF0", "\x8F", "\xBF", "\xBF"}},  // longer than need be
        {65001, "\xF4\x8F\xBF\xBF", {"\xF4\x8F\xBF\xBF"}},              // the last of all
        {65001, "\xF4\x90\x80\x80", {"\xF4", "\x90", "\x80", "\x80"}},  // past it
        {1252, "\x83\\", {"\x83", "\\"}},
    };
    for (const fila& f : filas) {
        const en_pagina p(f.pagina);
        EXPECT_EQ(caracteres_de(f.texto), f.caracteres) << f.pagina << " " << testing::PrintToString(f.texto);
    }
}

TEST(caracteres, se_leen_como_los_lee_la_conversion) {
    std::mt19937 azar(20260401);
    for (const unsigned pagina : paginas) {
        const en_pagina p(pagina);
        for (int n = 0; n < 4000; ++n) {
            texto_a t;
            for (std::size_t i = azar() % 12; i > 0; --i) {
                // Separators, bars and letters that may be second bytes, among bytes of every kind.
                const bool ascii = azar() % 3 == 0;
                t.push_back(ascii ? "\\|/.aZ@~"[azar() % 8] : static_cast<char>(0x80 + azar() % 128));
            }
            compara(t);
            ASSERT_FALSE(HasFailure()) << pagina;
        }
    }
}

// Every pair of bytes by itself, behind another that may begin one.
TEST(caracteres, cada_pareja) {
    for (const unsigned pagina : paginas_dobles) {
        const en_pagina p(pagina);
        for (unsigned primero = 0x80; primero < 0x100; ++primero) {
            for (unsigned segundo = 1; segundo < 0x100; ++segundo) {
                compara({static_cast<char>(primero), static_cast<char>(segundo), '\\'});
                ASSERT_FALSE(HasFailure()) << pagina;
            }
        }
    }
}

// A long run of bytes that may begin pairs is gone back over once, not once for each of them.
TEST(caracteres, un_texto_largo_de_bytes_iniciales) {
    const en_pagina p(932);
    texto_a t(200000, '\x83');
    t += "\\";
    EXPECT_TRUE(interno::empieza_caracter(vista_a(t), t.size() - 1));
    t.insert(0, 1, '\x83');
    EXPECT_FALSE(interno::empieza_caracter(vista_a(t), t.size() - 1));
    EXPECT_EQ(interno::tras_el_ultimo(vista_a(t), interno::es_separador<char>), 0u);
}
