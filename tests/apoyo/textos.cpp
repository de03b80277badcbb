#include "apoyo/textos.hpp"

#include "companions/lumostr.h"
#include "companions/widestr.h"

namespace apoyo {
namespace {

// Code page 1252 between 0x80 and 0x9F; 0 where it has no character.
constexpr unsigned short alto_1252[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                          0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                          0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                          0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

}  // namespace

texto_w w(std::string_view utf8) {
    texto_w resultado;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto b = static_cast<unsigned char>(utf8[i]);
        const std::size_t largo = b < 0x80 ? 1 : b < 0xE0 ? 2 : b < 0xF0 ? 3 : 4;
        unsigned long c = largo == 1 ? b : b & (0xFFu >> (largo + 1));
        for (std::size_t k = 1; k < largo && i + k < utf8.size(); ++k) {
            c = c << 6 | (static_cast<unsigned char>(utf8[i + k]) & 0x3Fu);
        }
        i += largo;
        if (c >= 0x10000) {
            resultado.push_back(static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10)));
            resultado.push_back(static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
        } else {
            resultado.push_back(static_cast<wchar_t>(c));
        }
    }
    return resultado;
}

std::string u8(lumodir::vista_w texto) {
    std::string resultado;
    const auto anade = [&](unsigned long byte) { resultado.push_back(static_cast<char>(byte)); };
    for (std::size_t i = 0; i < texto.size(); ++i) {
        unsigned long c = static_cast<unsigned short>(texto[i]);
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < texto.size() && (texto[i + 1] & 0xFC00) == 0xDC00) {
            c = 0x10000 + ((c - 0xD800) << 10) + (static_cast<unsigned long>(texto[++i]) - 0xDC00);
        }
        if (c < 0x80) {
            anade(c);
        } else if (c < 0x800) {
            anade(0xC0 | c >> 6);
            anade(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            anade(0xE0 | c >> 12);
            anade(0x80 | (c >> 6 & 0x3F));
            anade(0x80 | (c & 0x3F));
        } else {
            anade(0xF0 | c >> 18);
            anade(0x80 | (c >> 12 & 0x3F));
            anade(0x80 | (c >> 6 & 0x3F));
            anade(0x80 | (c & 0x3F));
        }
    }
    return resultado;
}

std::string u8(const wchar_t* texto) {
    return texto == nullptr ? "(NULL)" : u8(lumodir::vista_w(texto));
}

texto_a cp1252(std::string_view utf8) {
    texto_a resultado;
    for (const wchar_t c : w(utf8)) {
        char byte = static_cast<char>(c);
        if (c >= 0x80 && (c < 0xA0 || c > 0xFF)) {
            byte = '?';
            for (unsigned i = 0; i < 32; ++i) {
                if (alto_1252[i] == c) {
                    byte = static_cast<char>(0x80 + i);
                }
            }
        }
        resultado.push_back(byte);
    }
    return resultado;
}

std::string de_cp1252(std::string_view texto) {
    texto_w resultado;
    for (const char c : texto) {
        const auto b = static_cast<unsigned char>(c);
        resultado.push_back(static_cast<wchar_t>(b >= 0x80 && b < 0xA0 ? alto_1252[b - 0x80] : b));
    }
    return u8(lumodir::vista_w(resultado));
}

std::string toma(wchar_t* texto) {
    const std::string resultado = u8(texto);
    widestr_nousar_destruye_opcional(&texto, "prueba", 1);
    return resultado;
}

std::string toma(char* texto) {
    const std::string resultado = texto == nullptr ? "(NULL)" : de_cp1252(texto);
    lumostr_destruye_opcional(&texto);
    return resultado;
}

}  // namespace apoyo
