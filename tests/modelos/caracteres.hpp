// 8-bit text read in characters, for the models: one after another from its beginning, two bytes where the code page
// holds the pair, as many as UTF-8 says, and else one.
#pragma once

#include <string>
#include <type_traits>

#include "apoyo/textos.hpp"
#include "companions/plataforma.hpp"

namespace modelos {

using apoyo::texto_a;
using apoyo::texto_w;

// A unit for each character, made of its bytes.
using texto_c = std::u32string;

// How the code page writes its characters, asked once for a text.
struct pagina_leida {
    bool iniciales[256] = {};
    bool es_utf8 = interno::plataforma::es_utf8();
    bool es_de_un_byte = !es_utf8 && !interno::plataforma::bytes_iniciales(iniciales);
};

// How many bytes the character at `i` takes.
inline std::size_t bytes_de_caracter(const pagina_leida& pagina, const texto_a& t, std::size_t i) {
    if (pagina.es_de_un_byte || static_cast<unsigned char>(t[i]) < 0x80) {
        return 1;
    }
    if (pagina.es_utf8) {
        // The longest beginning that means one character and nothing that has none.
        for (const std::size_t bytes : {4u, 3u, 2u}) {
            wchar_t unidades[8];
            if (t.size() - i < bytes || static_cast<unsigned char>(t[i]) < 0xC0) {
                continue;
            }
            const std::size_t n = interno::plataforma::ansi_a_utf16(t.substr(i, bytes), unidades, 8);
            const bool es_uno = n == 1 || (n == 2 && (unidades[0] & 0xFC00) == 0xD800);
            const bool tiene_sentido = unidades[0] != 0xFFFD || t.compare(i, bytes, "\xEF\xBF\xBD") == 0;
            if (es_uno && tiene_sentido) {
                return bytes;
            }
        }
        return 1;
    }
    const bool dos = pagina.iniciales[static_cast<unsigned char>(t[i])] && i + 1 < t.size() &&
                     interno::plataforma::es_caracter_doble(t[i], t[i + 1]);
    return dos ? 2 : 1;
}

inline texto_c en_caracteres(const texto_a& t) {
    texto_c caracteres;
    const pagina_leida pagina;
    for (std::size_t i = 0; i < t.size();) {
        char32_t c = 0;
        const std::size_t bytes = bytes_de_caracter(pagina, t, i);
        for (std::size_t k = 0; k < bytes; ++k) {
            c = c << 8 | static_cast<unsigned char>(t[i + k]);
        }
        caracteres.push_back(c);
        i += bytes;
    }
    return caracteres;
}

inline texto_a en_bytes(const texto_c& t) {
    texto_a bytes;
    for (const char32_t c : t) {
        for (int k = c > 0xFFFFFF ? 3 : c > 0xFFFF ? 2 : c > 0xFF ? 1 : 0; k >= 0; --k) {
            bytes.push_back(static_cast<char>(c >> (8 * k)));
        }
    }
    return bytes;
}

// What models work on, by the flavour: characters of 8-bit text, units of UTF-16. And back.
template <class C>
using leido = std::conditional_t<std::is_same_v<C, wchar_t>, texto_w, texto_c>;
inline texto_w lee(const texto_w& t) {
    return t;
}
inline texto_c lee(const texto_a& t) {
    return en_caracteres(t);
}
inline texto_w escribe(const texto_w& t) {
    return t;
}
inline texto_a escribe(const texto_c& t) {
    return en_bytes(t);
}

// A text put together from others, read anew: half a character at the end of one may be whole with what follows.
inline texto_w releido(const texto_w& t) {
    return t;
}
inline texto_a releido(const texto_a& t) {
    return t;
}
inline texto_c releido(const texto_c& t) {
    return en_caracteres(en_bytes(t));
}

// In UTF-16.
inline texto_w a_w(const texto_w& t) {
    return t;
}
inline texto_w a_w(const texto_a& t) {
    return apoyo::de_8_bits(t);
}
inline texto_w a_w(const texto_c& t) {
    return a_w(en_bytes(t));
}

}  // namespace modelos
