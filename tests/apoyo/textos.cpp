#include "apoyo/textos.hpp"

#include <algorithm>
#include <cstdlib>
#include <map>

#ifdef _WIN32
#include <windows.h>
#endif

#include "companions/lumostr.h"
#include "companions/plataforma.hpp"
#include "companions/widestr.h"

namespace apoyo {
namespace {

// Code page 1252 between 0x80 and 0x9F; 0 where it has no character.
constexpr unsigned short alto_1252[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                          0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                          0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                          0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

// The byte that code page 1252 has for a character, 0 where it has none.
char i_byte_1252(wchar_t c) {
    if (static_cast<unsigned short>(c) < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
        return static_cast<char>(c);
    }
    const auto donde = std::find(std::begin(alto_1252), std::end(alto_1252), c);
    return donde == std::end(alto_1252) ? '\0' : static_cast<char>(0x80 + (donde - std::begin(alto_1252)));
}

texto_a i_en_la_pagina(wchar_t c) {
    char bytes[4];
    return texto_a(bytes, interno::plataforma::utf16_a_ansi(interno::vista_w(&c, 1), bytes, sizeof bytes));
}
texto_w i_de_la_pagina(std::string_view bytes) {
    texto_w unidades(bytes.size(), L' ');
    unidades.resize(interno::plataforma::ansi_a_utf16(bytes, unidades.data(), unidades.size()));
    return unidades;
}
bool i_lo_tiene_la_pagina(wchar_t c) {
    return i_de_la_pagina(i_en_la_pagina(c)) == texto_w(1, c);
}

// In another code page than 1252 a character that it lacks is written as another one that no test uses: of those with
// the most telling second bytes first. UTF-8 lacks none.
class suplentes {
public:
    wchar_t de(wchar_t c) {
        if (i_lo_tiene_la_pagina(c)) {
            return c;
        }
        const auto esta = por_original_.find(c);
        if (esta != por_original_.end()) {
            return esta->second;
        }
        const wchar_t otro = i_siguiente();
        por_original_[c] = otro;
        originales_[otro] = c;
        return otro;
    }
    wchar_t original(wchar_t c) const {
        const auto esta = originales_.find(c);
        return esta == originales_.end() ? c : esta->second;
    }

private:
    // Those of two bytes that end in a separator or a bar; where there are none, letters behind them; else those of one.
    wchar_t i_siguiente() {
        constexpr std::string_view segundos = {"\\|AZa\xA1\xC1\xFE\0", 9};  // the terminator: no second byte
        constexpr unsigned primero = 0x90, primero_de_uno = 0xA1, cuantos = 0x60;
        for (; probados_ < segundos.size() * cuantos; ++probados_) {
            const unsigned byte = primero + probados_ % cuantos;
            const char segundo = segundos[probados_ / cuantos];
            const texto_a bytes =
                texto_a(1, static_cast<char>(byte)) + (segundo == 0 ? texto_a() : texto_a(1, segundo));
            const texto_w unidad = i_de_la_pagina(bytes);
            if (unidad.size() == 1 && unidad[0] != 0xFFFD && (segundo != 0 || byte >= primero_de_uno) &&
                originales_.count(unidad[0]) == 0 && i_en_la_pagina(unidad[0]) == bytes) {
                return unidad[0];
            }
        }
        std::abort();  // more characters of 1252 than the code page has at all
    }

    std::map<wchar_t, wchar_t> por_original_;
    std::map<wchar_t, wchar_t> originales_;
    unsigned probados_ = 0;
};
suplentes& los_suplentes() {
    static std::map<unsigned, suplentes> por_pagina;
    return por_pagina[pagina()];
}

}  // namespace

unsigned pagina() {
    const unsigned elegida = interno::plataforma::pagina_de_codigos;
#ifdef _WIN32
    static const unsigned de_la_maquina = ::GetACP();
#else
    constexpr unsigned de_la_maquina = 1252;
#endif
    return elegida == 0 ? de_la_maquina : elegida;
}

texto_w en_utf16(std::string_view utf8) {
    texto_w resultado;
    resultado.reserve(utf8.size());
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

texto_w w(std::string_view utf8) {
    texto_w resultado = en_utf16(utf8);
    if (pagina() != 1252) {
        for (wchar_t& c : resultado) {
            c = static_cast<unsigned short>(c) >= 0x80 && i_byte_1252(c) != 0 ? los_suplentes().de(c) : c;
        }
    }
    return resultado;
}

std::string u8(interno::vista_w texto) {
    const suplentes* const suplen = pagina() == 1252 ? nullptr : &los_suplentes();
    std::string resultado;
    resultado.reserve(texto.size());
    const auto anade = [&](unsigned long byte) { resultado.push_back(static_cast<char>(byte)); };
    for (std::size_t i = 0; i < texto.size(); ++i) {
        unsigned long c =
            static_cast<unsigned short>(suplen == nullptr ? texto[i] : suplen->original(texto[i]));
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
    return texto == nullptr ? "(NULL)" : u8(interno::vista_w(texto));
}

texto_a cp1252(std::string_view utf8) {
    texto_a resultado;
    for (const wchar_t c : w(utf8)) {
        if (pagina() != 1252) {
            resultado += i_en_la_pagina(c);
        } else {
            const char byte = i_byte_1252(c);
            resultado.push_back(byte != 0 || c == 0 ? byte : '?');
        }
    }
    return resultado;
}

texto_w de_8_bits(std::string_view texto) {
    if (pagina() != 1252) {
        return i_de_la_pagina(texto);
    }
    texto_w resultado(texto.size(), L' ');
    std::transform(texto.begin(), texto.end(), resultado.begin(), [](char c) {
        const auto b = static_cast<unsigned char>(c);
        return static_cast<wchar_t>(b >= 0x80 && b < 0xA0 ? alto_1252[b - 0x80] : b);
    });
    return resultado;
}

std::string de_cp1252(std::string_view texto) {
    return u8(interno::vista_w(de_8_bits(texto)));
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

texto_a toma_bytes(char* texto) {
    return texto_a(interno::cadena_a::adopta(texto).ver());
}

}  // namespace apoyo
