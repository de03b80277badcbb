// Slow, obvious models of the rules on paths: the checker, the repair of a name, the plain cut and composition. Like
// all in this folder each is written from the rules alone, with standard strings, and shares no line with the library;
// tests run them over every short text, fuzzers over anything.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "modelos/caracteres.hpp"

namespace modelos {

// The text of a flavour, out of ASCII.
template <class T>
T literal(std::string_view ascii) {
    return T(ascii.begin(), ascii.end());
}

template <class T>
T recortado(T texto) {
    while (!texto.empty() && texto.back() == ' ') {
        texto.pop_back();
    }
    return texto;
}

// ---- the name rule and the path checker

constexpr std::array<std::string_view, 20> reservados = {
    "con",      "nul",      "lpt1",     "lpt2",   "lpt3",   "prn",      "com1",
    "com2",     "com3",     "com4",     "aux",    "clock$", "ifs$hlp$", "setverxx",
    "$mmxxxx0", "&mmxxxx0", "xmsxxxx0", "lumogr", "korax",  "lumodev"};

inline bool caracter_valido(unsigned c) {
    return !(c >= 1 && c <= 31) &&
           (c > 126 || std::string_view("\\/:*\"?<>|").find(static_cast<char>(c)) == std::string_view::npos);
}

inline bool nombre_valido(const texto_w& con_blancos) {
    const texto_w nombre = recortado(con_blancos);
    if (nombre.empty() || nombre.size() > 255) {
        return false;
    }
    std::string minusculas;  // units above ASCII count as "~": no reserved name holds one
    for (const wchar_t c : nombre) {
        if (!caracter_valido(static_cast<unsigned short>(c))) {
            return false;
        }
        const char ascii = c < 128 ? static_cast<char>(c) : '~';
        minusculas.push_back(static_cast<char>(ascii >= 'A' && ascii <= 'Z' ? ascii + 32 : ascii));
    }
    for (const std::string_view reservado : reservados) {
        if (minusculas == reservado || minusculas.starts_with(std::string(reservado) + ".")) {
            return false;
        }
    }
    return true;
}

inline std::vector<texto_w> componentes(const texto_w& path) {
    std::vector<texto_w> todos;
    texto_w actual;
    for (const wchar_t c : path + L"\\") {
        if (c != L'\\' && c != L'/') {
            actual += c;
        } else if (!actual.empty()) {
            todos.push_back(actual);
            actual.clear();
        }
    }
    return todos;
}

struct juicio {
    int motivo = 0;  // number of the message; 0: the path is correct
    texto_w argumento;
    bool es_unc = false;
};

inline juicio juzga(const texto_w& path, bool puede_ser_vacio = false) {
    if (path.empty()) {
        return {puede_ser_vacio ? 0 : 53960, {}, false};
    }
    if (path.size() > 10240) {
        return {374376, path, false};
    }
    texto_w resto = path;
    if (path.find(L':') != texto_w::npos) {
        const wchar_t letra = path[0];
        const bool es_letra = (letra >= L'a' && letra <= L'z') || (letra >= L'A' && letra <= L'Z');
        if (path.size() < 2 || !es_letra || path[1] != L':') {
            return {53958, {}, false};
        }
        resto = path.substr(2);
    }
    if (path[path.size() - 1] == L'.') {
        bool admitido = false;
        for (const char* principio : {"./", ".\\", "../", "..\\"}) {
            admitido = admitido || path.find(apoyo::w(principio)) == 0;
        }
        for (const char* final : {"/.", "\\.", "/..", "\\.."}) {
            const texto_w f = apoyo::w(final);
            admitido = admitido || (path.size() >= f.size() && path.substr(path.size() - f.size()) == f);
        }
        if (!admitido) {
            return {53957, path, false};
        }
    }
    juicio fallo;
    fallo.es_unc = resto.size() > 2 && resto[0] == L'\\' && resto[1] == L'\\';
    for (const texto_w& componente : componentes(resto)) {
        if (componente != L"." && componente != L".." && !nombre_valido(componente)) {
            fallo.motivo = 53949;
            fallo.argumento = recortado(componente);
            return fallo;
        }
    }
    if (fallo.es_unc && componentes(path).size() < 2) {
        fallo.motivo = 53959;
    }
    return fallo;
}

inline std::string texto_en_ingles(int motivo, const std::string& argumento) {
    switch (motivo) {
        case 53949:
            return "There are invalid characters in the name '" + argumento + "'";
        case 53955:
            return "The file '" + argumento + "' is not correct";
        case 53957:
            return "A point was found at beginning or end of the path: '" + argumento + "'";
        case 53958:
            return "The name of the disk drive must be a letter.";
        case 53959:
            return "The name of the network drive is incomplete.";
        case 53960:
            return "You have not specified any directory name";
        case 374376:
            return "The length of path '" + argumento + "' exceeds the maximum permitted length (10240).";
        default:
            return "";
    }
}

// ---- the repair of a name

// Exactly so many characters, those that no name may hold as "_".
template <class T>
T convertido(const T& nombre, std::size_t longitud) {
    T resultado;
    for (std::size_t i = 0; i < longitud; ++i) {
        const auto c = i < nombre.size() ? nombre[i] : static_cast<typename T::value_type>(' ');
        const bool alto = c < 0 || c > 126;
        resultado += alto || caracter_valido(static_cast<unsigned>(c)) ? c : '_';
    }
    return resultado;
}

// The steps as they are told: convert, cut the front, cut the end until nothing changes, keep 255.
inline texto_w reparado(const texto_w& nombre) {
    texto_w texto = convertido(nombre, nombre.size() > 65535 ? 65535 : nombre.size());
    while (!texto.empty() && texto[0] == L' ') {
        texto = texto.substr(texto.find_first_not_of(L' ') == texto_w::npos ? texto.size()
                                                                            : texto.find_first_not_of(L' '));
    }
    for (bool cambia = true; cambia;) {
        cambia = false;
        if (!texto.empty() && texto.back() == L'.') {
            texto.pop_back();
            cambia = true;
        }
        if (!texto.empty() && texto.back() == L' ') {
            texto.pop_back();
            cambia = true;
        }
    }
    return texto.substr(0, 255);
}

// ---- splitting and composing as the C runtime does it

template <class T>
struct piezas {
    T unidad, directorio, nombre, extension;
    T unidas() const { return unidad + directorio + nombre + extension; }
    friend bool operator==(const piezas&, const piezas&) = default;
};

inline void PrintTo(const piezas<std::string>& p, std::ostream* salida) {
    *salida << "[" << p.unidad << "][" << p.directorio << "][" << p.nombre << "][" << p.extension << "]";
}

template <class T>
piezas<T> corta_como_el_crt(const T& path) {
    piezas<T> p;
    T resto = path;
    if (path.size() >= 2 && path[1] == ':') {
        p.unidad = path.substr(0, 2);
        resto = path.substr(2);
    }
    std::size_t fichero = 0;
    for (std::size_t i = 0; i < resto.size(); ++i) {
        if (resto[i] == '\\' || resto[i] == '/') {
            fichero = i + 1;
        }
    }
    p.directorio = resto.substr(0, fichero);
    p.nombre = resto.substr(fichero);
    const std::size_t punto = p.nombre.rfind('.');
    if (punto != T::npos) {
        p.extension = p.nombre.substr(punto);
        p.nombre = p.nombre.substr(0, punto);
    }
    return p;
}

template <class T>
T compone_como_el_crt(const T& unidad, const T& directorio, const T& nombre, const T& extension) {
    T path;
    if (!unidad.empty()) {
        path += unidad[0];
        path += ':';
    }
    path += directorio;
    if (!directorio.empty() && directorio.back() != '\\' && directorio.back() != '/') {
        path += '\\';
    }
    path += nombre;
    if (!extension.empty() && extension[0] != '.') {
        path += '.';
    }
    return path + extension;
}

// The path that is judged in place of one with wildcards.
inline texto_w sin_comodines(const texto_w& path) {
    const piezas<texto_w> p = corta_como_el_crt(path);
    if (p.extension == L".*") {
        return p.unidad + p.directorio + (p.nombre == L"*" ? texto_w() : p.nombre);
    }
    return p.nombre == L"*" ? p.unidad + p.directorio + L"comprobar" + p.extension : path;
}

}  // namespace modelos
