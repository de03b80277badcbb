// Models of file-name records: how a name is cut, what is reported of it, how names are ordered.
#pragma once

#include "modelos/path.hpp"

namespace modelos {

struct partes {
    std::string base;
    std::string extension;
    friend bool operator==(const partes&, const partes&) = default;
    friend void PrintTo(const partes& p, std::ostream* salida) { *salida << p.base << "|" << p.extension; }
};

inline const std::string caracter_malo =
    R"(c >= ' ' && c != '<' && c != '>' && c != ':' && c != '\"' && c != '|' && c != '\\' && c != '/' )"
    R"(&& c != '*' && c != '?')";
inline const std::string prohibidos = "<>:\"|\\/*?";
inline const std::string sin_nombre = "lmstdc_strlen(nombre_base) > 0";
inline const std::string sin_cadena = "(cadena) != NULL";

// The letters that the code pages of the tests hold in both cases: the first and the last of each run of capitals, and
// how far behind them the small ones are.
struct mayusculas_seguidas {
    wchar_t primera, ultima;
    int distancia;
};
inline constexpr mayusculas_seguidas mayusculas_de_las_paginas[] = {
    {L'A', L'Z', 32},   // ASCII
    {0xC0, 0xD6, 32},   // Latin-1, up to the multiplication sign
    {0xD8, 0xDE, 32},   // and behind it
    {0x126, 0x126, 1},  // Korean and Western letters of Latin Extended-A
    {0x132, 0x132, 1},  //
    {0x13F, 0x13F, 1},  //
    {0x141, 0x141, 1},  //
    {0x14A, 0x14A, 1},  //
    {0x152, 0x152, 1},  //
    {0x160, 0x160, 1},  //
    {0x166, 0x166, 1},  //
    {0x178, 0x178, 0xFF - 0x178},
    {0x17D, 0x17D, 1},      //
    {0x391, 0x3A1, 32},     // Greek, the final sigma having no capital
    {0x3A3, 0x3A9, 32},     //
    {0x401, 0x401, 80},     // Cyrillic
    {0x410, 0x42F, 32},     //
    {0x2160, 0x2169, 16},   // Roman numbers
    {0xFF21, 0xFF3A, 32}};  // full width

inline wchar_t minuscula(wchar_t c) {
    for (const mayusculas_seguidas& m : mayusculas_de_las_paginas) {
        if (c >= m.primera && c <= m.ultima) {
            return static_cast<wchar_t>(c + m.distancia);
        }
    }
    return c;
}

// A character whose small letter takes another number of bytes, or is not in the code page, stays. One that stands twice
// in the code page comes out as the system writes it, so that names compare by characters.
inline std::string minusculas(const std::string& texto) {
    std::string todas;
    for (const char32_t c : en_caracteres(texto)) {
        const texto_a caracter = en_bytes({c});
        const texto_w ancho = a_w(caracter);
        if (ancho.size() != 1) {
            todas += caracter;
            continue;
        }
        const wchar_t menor = minuscula(ancho[0]);
        char bytes[8];
        const texto_a otro(
            bytes, interno::plataforma::utf16_a_ansi(interno::vista_w(&menor, 1), bytes, sizeof bytes));
        todas += otro.size() == caracter.size() && a_w(otro) == texto_w(1, menor) ? otro : caracter;
    }
    return todas;
}

// Cutting off what stands before the first point, again and again.
inline partes crea_nomsfich(const std::string& nombre) {
    const texto_c caracteres = en_caracteres(nombre);
    texto_c extension = caracteres;
    if (extension.find('.') == texto_c::npos) {
        return {minusculas(nombre), ""};
    }
    while (extension.find('.') != texto_c::npos) {
        extension = extension.substr(extension.find('.') + 1);
    }
    const texto_c base = caracteres.substr(0, caracteres.size() - extension.size() - 1);
    return {minusculas(en_bytes(base)), minusculas(en_bytes(recortado(extension)))};
}

inline std::size_t malos_de(const std::string& texto) {
    std::size_t malos = 0;
    bool alguno = false;
    for (const char32_t c : en_caracteres(texto)) {
        const bool prohibido = c < 128 && prohibidos.find(static_cast<char>(c)) != std::string::npos;
        alguno = alguno || prohibido;
        malos += prohibido || (c > 0 && c < 32) ? 1 : 0;
    }
    return alguno ? malos : 0;
}

// What is reported when these are a record's two parts.
inline std::vector<std::string> informes_de(const partes& p) {
    std::vector<std::string> informes(p.base.empty() ? 1 : 0, sin_nombre);
    informes.insert(informes.end(), malos_de(p.base) + malos_de(p.extension), caracter_malo);
    return informes;
}

inline int signo(int valor) {
    return valor < 0 ? -1 : valor > 0 ? 1 : 0;
}

// Byte by byte, unsigned, the shorter first.
inline int orden_de_bytes(const std::string& a, const std::string& b) {
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
        const auto x = static_cast<unsigned char>(a[i]);
        const auto y = static_cast<unsigned char>(b[i]);
        if (x != y) {
            return x < y ? -1 : 1;
        }
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

inline int orden(const partes& a, const partes& b) {
    const int por_base = orden_de_bytes(a.base, b.base);
    return por_base != 0 ? por_base : orden_de_bytes(a.extension, b.extension);
}

}  // namespace modelos
