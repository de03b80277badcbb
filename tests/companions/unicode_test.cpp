// The bridge between 8-bit text and UTF-16, in every code page.
#include "companions/unicode.hpp"

#include "apoyo/apoyo.hpp"
#include "apoyo/paginas.hpp"
#include "companions/caracteres.hpp"
#include "companions/lumospy.h"
#include "modelos/caracteres.hpp"

using namespace apoyo;
using namespace interno;

namespace {

struct texto_y_bytes {
    unsigned pagina = 1252;
    const char* texto;      // UTF-8
    const char* en_8_bits;  // what the code page makes of it
};

const texto_y_bytes textos_y_bytes[] = {
    {.texto = "", .en_8_bits = ""},
    {.texto = "C:\\dir\\file.txt", .en_8_bits = "C:\\dir\\file.txt"},
    {.texto = "ñandú",
     .en_8_bits = "\xF1"
                  "and\xFA"},
    {.texto = "€", .en_8_bits = "\x80"},
    {.texto = "a\u4E2D"
              "b",
     .en_8_bits = "a?b"},                   // not in the code page
    {.texto = "\u0100", .en_8_bits = "?"},  // A with macron: never a plain A
    {.texto = "\uFF21", .en_8_bits = "?"},  // full-width A: never a plain A
    {.texto = "\u2215", .en_8_bits = "?"},  // division slash: never a separator
    {.texto = "\u2044", .en_8_bits = "?"},  // fraction slash
    {.texto = "\uFF3C", .en_8_bits = "?"},  // full-width backslash: never a separator
    {.texto = "\u221E", .en_8_bits = "?"},  // infinity: never an 8
    {.pagina = 932, .texto = "ñ\u221E\uFF3C\u30BD", .en_8_bits = "?\x81\x87\x81\x5F\x83\\"},
    {.pagina = 936, .texto = "ñ\u4E2D\u20AC", .en_8_bits = "?\xD6\xD0\x80"},
    {.pagina = 949, .texto = "ñ\u4E2D\uAC00", .en_8_bits = "?\xF1\xE9\xB0\xA1"},
    {.pagina = 950, .texto = "ñ\u4E2D\u529F", .en_8_bits = "?\xA4\xA4\xA5\\"},
    {.pagina = 874, .texto = "ñ\u4E2D\u0E01\u20AC", .en_8_bits = "??\xA1\x80"},
    {.pagina = 65001, .texto = "ñ\u4E2D", .en_8_bits = "\xC3\xB1\xE4\xB8\xAD"},
};

}  // namespace

TEST(unicode, a_8_bits_sin_parecidos) {
    for (const texto_y_bytes& f : textos_y_bytes) {
        const en_pagina p(f.pagina);
        const texto_w ancho = en_utf16(f.texto);
        EXPECT_EQ(std::string(utunicode_UNICODE_a_ANSI(vista_w(ancho)).c_str()), f.en_8_bits) << f.texto;
        EXPECT_EQ(std::string(utunicode_UNICODE_a_ANSI(ancho.c_str()).c_str()), f.en_8_bits) << f.texto;
    }
}

// Over the whole of the first plane: what becomes a character of the code page is what that character becomes.
TEST(unicode, ninguna_unidad_se_vuelve_otra) {
    for (const unsigned pagina : paginas) {
        const en_pagina p(pagina);
        unsigned la_tiene = 0;
        for (unsigned c = 1; c < 0x10000; ++c) {
            const texto_w unidad(1, static_cast<wchar_t>(c));
            const bool media_pareja = c >= 0xD800 && c < 0xE000;
            const cadena_a bytes = utunicode_UNICODE_a_ANSI(vista_w(unidad));
            if (bytes.ver() != (pagina == 65001 ? "\xEF\xBF\xBD" : "?")) {
                ++la_tiene;
                const texto_w otra_vez(utunicode_ANSI_a_UNICODE(bytes.ver()).ver());
                // Private characters stand for bytes that are none.
                ASSERT_TRUE(otra_vez == unidad ||
                            (c >= 0xE000 && c < 0xF900 && otra_vez == texto_w(1, 0xFFFD)))
                    << pagina << " " << c;
                ASSERT_EQ(modelos::en_caracteres(texto_a(bytes.ver())).size(), 1u) << pagina << " " << c;
                ASSERT_FALSE(media_pareja) << pagina << " " << c;
            }
        }
        EXPECT_GT(la_tiene, 200u) << pagina;
    }
}

TEST(unicode, cada_byte_va_y_vuelve) {
    const en_pagina p(1252);
    for (unsigned b = 1; b < 256; ++b) {
        const char bytes[] = {'x', static_cast<char>(b), 'y', '\0'};
        const cadena_w ancho = utunicode_ANSI_a_UNICODE(bytes);
        ASSERT_EQ(ancho.size(), 3u) << b;
        EXPECT_EQ(u8(ancho.c_str()), de_cp1252(bytes)) << b;
        EXPECT_EQ(std::string(utunicode_UNICODE_a_ANSI(ancho.c_str()).c_str()), bytes) << b;
    }
}

TEST(unicode, null_da_null_y_vacio_da_vacio) {
    EXPECT_TRUE(utunicode_ANSI_a_UNICODE(static_cast<const char*>(nullptr)).es_nula());
    EXPECT_TRUE(utunicode_UNICODE_a_ANSI(static_cast<const wchar_t*>(nullptr)).es_nula());
    EXPECT_FALSE(utunicode_ANSI_a_UNICODE("").es_nula());
    EXPECT_FALSE(utunicode_UNICODE_a_ANSI(L"").es_nula());
    EXPECT_EQ(utf16_temporal(nullptr).c_str(), nullptr);
    EXPECT_EQ(u8(utf16_temporal("").c_str()), "");
    EXPECT_EQ(utf16_temporal(interno::vista_a()).c_str(), nullptr);
    EXPECT_EQ(utf16_temporal(interno::vista_a()).ver().data(), nullptr);
    EXPECT_EQ(utf16_temporal(interno::vista_a()).ver().size(), 0u);
    EXPECT_NE(utf16_temporal(interno::vista_a("")).ver().data(), nullptr);
}

TEST(unicode, textos_de_cualquier_largo) {
    // Around the length up to which a temporary text needs no block, in ASCII and not, of one byte and of two.
    for (const unsigned pagina : {1252u, 65001u}) {
        const en_pagina p(pagina);
        for (const std::size_t largo : {1u, 317u, 318u, 319u, 320u, 321u, 640u, 20000u}) {
            for (const std::string letra : {"a", "ñ"}) {
                SCOPED_TRACE(testing::Message() << pagina << " " << largo << letra);
                std::string esperado;
                for (std::size_t i = 0; i < largo; ++i) {
                    esperado += i + 1 == largo ? "z" : letra;
                }
                const texto_a bytes = pagina == 1252 ? cp1252(esperado) : texto_a(esperado);
                const utf16_temporal temporal(bytes.c_str());
                EXPECT_EQ(u8(temporal.c_str()), esperado);
                EXPECT_EQ(u8(temporal.ver()), esperado);
                // A part of a text: what follows it is not read.
                const utf16_temporal parte(interno::vista_a(bytes).substr(0, bytes.size() - 1));
                EXPECT_EQ(u8(parte.c_str()), esperado.substr(0, esperado.size() - 1));
                const cadena_w ancho = utunicode_ANSI_a_UNICODE(bytes.c_str());
                EXPECT_EQ(ancho.size(), largo);
                EXPECT_EQ(std::string(utunicode_UNICODE_a_ANSI(ancho.c_str()).c_str()), bytes);
            }
        }
    }
}

TEST(unicode, un_texto_corto_no_pide_memoria) {
    const unsigned long long antes = lumospy_bloques_vivos();
    const utf16_temporal corto("C:\\ñ");
    EXPECT_EQ(lumospy_bloques_vivos(), antes);
    const texto_a bytes(1000, 'x');
    const utf16_temporal largo(bytes.c_str());
    EXPECT_EQ(lumospy_bloques_vivos(), antes + 1);
}

TEST(unicode, pide_memoria_justo_donde_no_cabe) {
    for (const char letra : {'x', '\xF1'}) {
        if (letra != 'x' && interno::i_escritura() != interno::escritura::de_un_byte) {
            continue;  // there it is no character by itself
        }
        for (std::size_t num = 310; num < 330; ++num) {
            const unsigned long long antes = lumospy_bloques_vivos();
            const texto_a bytes(num, letra);
            const utf16_temporal temporal(bytes.c_str());
            EXPECT_EQ(lumospy_bloques_vivos(), antes + (num < 320 ? 0 : 1)) << letra << num;
            EXPECT_EQ(temporal.ver().size(), num) << letra;
        }
    }
}
