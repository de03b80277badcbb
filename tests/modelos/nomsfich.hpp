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

// A to Z, the letters of Latin-1, and those that code page 1252 has between 0x80 and 0x9F. In other code pages each
// character by itself is the system's business.
inline std::string minusculas(std::string texto) {
    if (apoyo::pagina() != 1252) {
        std::string todas;
        for (const char32_t c : en_caracteres(texto)) {
            std::string una = en_bytes({c});
            interno::plataforma::minusculas_ansi(una.data(), una.size());
            todas += una;
        }
        return todas;
    }
    for (char& c : texto) {
        const auto b = static_cast<unsigned char>(c);
        if ((b >= 'A' && b <= 'Z') || (b >= 0xC0 && b <= 0xDE && b != 0xD7)) {
            c = static_cast<char>(b + 32);
        } else if (b == 0x8A || b == 0x8C || b == 0x8E) {
            c = static_cast<char>(b + 16);
        } else if (b == 0x9F) {
            c = '\xFF';
        }
    }
    return texto;
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
