// Models of joining, of relative and absolute paths, and of the directories of PATH: step by step, with copies. What
// is told to the host counts as a part of the answer.
#pragma once

#include "modelos/corte.hpp"

namespace modelos {

template <class T>
bool acaba_en_separador(const T& texto) {
    return !texto.empty() && (texto.back() == '\\' || texto.back() == '/');
}

template <class T>
T une(const T& a, const T& b) {
    T resultado = a;
    if (!acaba_en_separador(resultado)) {
        resultado += '\\';
    }
    T copia = b;
    if (copia.substr(0, 1) == literal<T>("\\")) {
        copia.erase(0, 1);
    } else if (copia.substr(0, 1) == literal<T>("/")) {
        copia.erase(0, 1);
    }
    return resultado + copia;
}

// The flavours differ in the separator at the front of the name.
template <class T>
T construye(const T& a, const T& b, const T& nombre) {
    if constexpr (std::is_same_v<T, texto_w>) {
        return une(une(a, b), nombre);
    } else {
        T resultado = une(a, b);
        if (!acaba_en_separador(resultado)) {
            resultado += '\\';
        }
        return resultado + nombre;
    }
}

// What the host has been told while an answer was made.
struct dicho {
    std::vector<std::string> avisos;
    std::vector<std::string> informes;
    friend bool operator==(const dicho&, const dicho&) = default;
};

template <class T>
bool blanco(const T& texto) {
    return recortado(texto).empty();
}

inline std::string aviso_de_incorrecto(const texto_w& path) {
    return texto_en_ingles(53955, apoyo::u8(interno::vista_w(path)));
}

// The cut that is checked first, with its warning.
inline piezas<texto_w> corta_comprobado(const texto_w& path, dicho& d) {
    const texto_w limpio = recortado(path);
    const juicio j = juzga(limpio);
    if (j.motivo != 0) {
        d.avisos.push_back(aviso_de_incorrecto(limpio));
    }
    const corte<texto_w> c = corta_modelo(limpio, j.es_unc);
    d.informes.insert(d.informes.end(), c.informes.begin(), c.informes.end());
    return c.p;
}

inline bool es_absoluta(const texto_w& ruta, dicho& d) {
    return !blanco(corta_comprobado(ruta, d).unidad) || ruta.substr(0, 1) == L"\\";
}

inline texto_w relativa(const texto_w& base, const texto_w& ruta, dicho& d) {
    if (blanco(ruta) || blanco(base)) {
        return ruta;
    }
    texto_w resultado = ruta;
    texto_w base_de_trabajo = base;
    const texto_w unidad_base = corta_comprobado(base, d).unidad;
    texto_w sin_punto = ruta;
    if (sin_punto.back() == L'.') {
        sin_punto.pop_back();
    }
    const texto_w unidad_ruta = corta_comprobado(sin_punto, d).unidad;
    if (blanco(unidad_ruta) && base_de_trabajo.substr(0, unidad_base.size()) == unidad_base) {
        base_de_trabajo.erase(0, unidad_base.size());
    }
    if (ruta.substr(0, base_de_trabajo.size()) == base_de_trabajo) {
        resultado.erase(0, base_de_trabajo.size());
        if (resultado.substr(0, 1) == L"\\") {
            resultado.erase(0, 1);
        }
    }
    return resultado;
}

inline texto_w absoluta(const texto_w& base, const texto_w& ruta, dicho& d) {
    if (blanco(ruta)) {
        return ruta;
    }
    if (blanco(base) || es_absoluta(ruta, d)) {
        return ruta;
    }
    texto_w resultado = base;
    if (resultado.back() != L'\\') {
        resultado += L"\\";
    }
    return resultado + (ruta.substr(0, 2) == L".\\" ? ruta.substr(2) : ruta);
}

template <class T>
std::vector<T> directorios_del_path(const T& valor) {
    std::vector<T> directorios;
    T pieza;
    for (const auto c : valor + literal<T>(";")) {
        if (c != ';') {
            pieza.push_back(c);
            continue;
        }
        if (!pieza.empty()) {
            pieza = recortado(pieza);
            while (!pieza.empty() && pieza[0] == ' ') {
                pieza.erase(0, 1);
            }
            directorios.push_back(pieza);
        }
        pieza.clear();
    }
    return directorios;
}

}  // namespace modelos
