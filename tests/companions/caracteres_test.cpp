// Where characters begin, in every code page, against the system's own conversion: a text has as many characters as
// converting it gives, each of them alone gives its own, and the questions asked at one place agree with reading from
// the beginning.
#include "companions/caracteres.hpp"

#include <random>

#include "apoyo/apoyo.hpp"
#include "apoyo/pagina_ultima.hpp"
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
            for (unsigned segundo = 0; segundo < 0x100; ++segundo) {
                compara({static_cast<char>(primero), static_cast<char>(segundo), '\\'});
                ASSERT_FALSE(HasFailure()) << pagina;
            }
        }
    }
}

// Every beginning of two bytes against the table of well-formed characters, whole and cut short, with what would make it
// whole behind the end of the text.
TEST(caracteres, utf8_como_la_tabla_de_lo_bien_formado) {
    struct fila {
        unsigned primero, ultimo;          // the first byte
        unsigned segundo, segundo_ultimo;  // the second; those behind it go from 0x80 to 0xBF
        std::size_t bytes;
    };
    static constexpr fila filas[] = {
        {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3}, {0xE1, 0xEC, 0x80, 0xBF, 3},
        {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3}, {0xF0, 0xF0, 0x90, 0xBF, 4},
        {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
    };
    const auto esperados = [](vista_a t) -> std::size_t {
        const auto byte = [&](std::size_t i) {
            return static_cast<unsigned>(static_cast<unsigned char>(t[i]));
        };
        for (const fila& f : filas) {
            if (byte(0) >= f.primero && byte(0) <= f.ultimo && t.size() >= f.bytes) {
                bool bien = byte(1) >= f.segundo && byte(1) <= f.segundo_ultimo;
                for (std::size_t i = 2; i < f.bytes; ++i) {
                    bien = bien && byte(i) >= 0x80 && byte(i) <= 0xBF;
                }
                return bien ? f.bytes : 1;
            }
        }
        return 1;
    };
    const en_pagina p(65001);
    for (unsigned primero = 0; primero < 0x100; ++primero) {
        for (unsigned segundo = 0; segundo < 0x100; ++segundo) {
            for (const char tercero : {'\x7F', '\x80', '\xBF', '\xC0'}) {
                for (const char cuarto : {'\x7F', '\x80', '\xBF', '\xC0'}) {
                    const char bytes[] = {static_cast<char>(primero), static_cast<char>(segundo), tercero,
                                          cuarto};
                    for (std::size_t num = 1; num <= 4; ++num) {
                        const vista_a t(bytes, num);
                        ASSERT_EQ(interno::unidades_del_primero(t), esperados(t))
                            << testing::PrintToString(texto_a(t)) << " of " << num;
                    }
                }
            }
        }
    }
}

// One byte beyond ASCII at every place of a text, eight bytes of which are looked at together, and the half of a pair at
// its end; what stands behind the end is not looked at.
TEST(caracteres, un_byte_alto_en_cada_sitio) {
    pagina_ultima pagina;
    const auto compara_en = [&](const texto_a& t, bool hay_alto, std::size_t sobran) {
        const vista_a ver = pagina.pon(vista_a(t), sobran);
        const bool de_un_byte = interno::i_escritura() == escritura::de_un_byte;
        ASSERT_EQ(interno::i_puede_tener_caracteres_largos(ver), !de_un_byte && hay_alto);
        std::size_t caracteres = 0;
        interno::por_caracteres(ver, [&](vista_a) { ++caracteres; });
        ASSERT_EQ(caracteres, caracteres_de(t).size());
        ASSERT_TRUE(interno::empieza_caracter(ver, ver.size()));
        texto_a copia(t.size() + 1, '?');
        interno::i_copia_sin_segundos(ver, copia.data());
        texto_a esperada;
        for (const texto_a& c : caracteres_de(t)) {
            esperada += c.size() == 2 && !interno::plataforma::es_utf8() ? texto_a{c[0], 'x'} : c;
        }
        ASSERT_EQ(copia, esperada + '?');
    };
    for (const unsigned numero : paginas) {
        const en_pagina p(numero);
        for (std::size_t num = 1; num < 36; ++num) {
            for (std::size_t sitio = 0; sitio <= num; ++sitio) {
                for (const char alto : {'\x80', '\x83', '\xFF'}) {
                    for (const char bajo : {'\\', '\x7F'}) {
                        texto_a t(num, bajo);
                        if (sitio < num) {
                            t[sitio] = alto;
                        }
                        for (const char detras : {'\0', '\\', '\x83'}) {
                            *(pagina.fin<char>() - 1) = detras;
                            compara_en(t, sitio < num, 1);
                            ASSERT_FALSE(HasFailure()) << numero << " " << testing::PrintToString(t);
                        }
                        compara_en(t, sitio < num, 0);
                        ASSERT_FALSE(HasFailure()) << numero << " " << testing::PrintToString(t);
                    }
                }
            }
        }
    }
}

// What stands before a text is not looked at either.
TEST(caracteres, un_texto_tras_la_mitad_de_una_pareja) {
    const en_pagina p(932);
    const char bytes[] = "\x83\x83\\x";
    EXPECT_TRUE(interno::empieza_caracter(vista_a(bytes + 2, 2), 0));
    EXPECT_TRUE(interno::empieza_caracter(vista_a(bytes + 1, 3), 0));
    EXPECT_FALSE(interno::empieza_caracter(vista_a(bytes + 1, 3), 1));
    EXPECT_TRUE(interno::empieza_caracter(vista_a(bytes, 4), 2));
    EXPECT_FALSE(interno::empieza_caracter(vista_a("\x7F\x83\\"), 2));
}

TEST(caracteres, la_tabla_convierte_donde_cada_caracter_es_un_byte) {
    texto_a todos;
    for (unsigned byte = 0; byte < 0x100; ++byte) {
        todos.push_back(static_cast<char>(byte));
    }
    for (const unsigned numero : paginas) {
        const en_pagina p(numero);
        texto_w convertidos(todos.size(), L'?');
        const bool de_un_byte = interno::i_escritura() == escritura::de_un_byte;
        ASSERT_EQ(interno::i_convierte_de_un_byte(todos, convertidos.data()), de_un_byte) << numero;
        for (std::size_t i = 0; de_un_byte && i < todos.size(); ++i) {
            wchar_t unidad = 0;
            ASSERT_EQ(interno::plataforma::ansi_a_utf16(vista_a(&todos[i], 1), &unidad, 1), 1u);
            ASSERT_EQ(convertidos[i], unidad) << numero << " " << i;
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
