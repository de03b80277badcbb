// Models of the filters of listings: the enumerator's own, and the extension that a list asks for.
#pragma once

#include "modelos/path.hpp"

namespace modelos {

// ---- the enumerator's filter: every way of splitting is tried

template <class T>
bool casan(const T& texto, const T& patron) {
    bool bien = texto.size() == patron.size();
    for (std::size_t i = 0; bien && i < texto.size(); ++i) {
        bien = patron[i] == '?' || patron[i] == texto[i];
    }
    return bien;
}

template <class T>
bool cumple_pieza(const T& texto, const T& patron, bool ancha) {
    const std::size_t k = patron.find('*');
    if (k == T::npos) {
        return casan(texto, patron);
    }
    T cola = patron.substr(k + 1);
    const T principio = patron.substr(0, k);
    if (ancha && !cola.empty()) {
        cola.erase(0, 1);
    }
    if (texto.size() < k || !casan(texto.substr(0, k), principio)) {
        return false;
    }
    for (std::size_t m = k; m <= texto.size(); ++m) {
        if (texto.size() - m == cola.size() && casan(texto.substr(m), cola)) {
            return true;
        }
    }
    return cola.empty();
}

template <class T>
std::pair<T, T> parte_nombre(const T& nombre) {
    T base = nombre;
    T extension;
    while (base.find('.') != T::npos) {
        extension.insert(extension.begin(), base.back());
        base.pop_back();
        if (extension[0] == '.') {
            return {base, extension.substr(1)};
        }
    }
    return {nombre, T()};
}

template <class T>
bool cumple_filtro(const T& nombre, const T& filtro, bool ancha) {
    const auto [base, extension] = parte_nombre(nombre);
    const auto [filtro_base, filtro_extension] = parte_nombre(filtro);
    return cumple_pieza(base, filtro_base, ancha) &&
           (filtro_extension.empty() || cumple_pieza(extension, filtro_extension, ancha));
}

// ---- the extension that a list asks for; `informa` says whether a name that ends in a bare point is reported

struct admision {
    bool admite = false;
    bool informa = false;
};

inline wchar_t mayuscula(wchar_t c) {
    return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - 32) : c;
}

inline admision admite_extension(const texto_w& nombre, const texto_w& filtro) {
    if (!filtro.empty() && filtro[0] == L'*') {
        return {true, false};
    }
    const piezas<texto_w> p = corta_como_el_crt(recortado(nombre));
    // A name that is all extension has none.
    const texto_w con_punto = p.nombre.empty() ? texto_w() : p.extension;
    if (con_punto.empty()) {
        return {filtro.empty(), false};
    }
    const texto_w extension = con_punto.substr(1);
    bool iguales = extension.size() == filtro.size();
    for (std::size_t i = 0; iguales && i < filtro.size(); ++i) {
        iguales = filtro[i] == L'?' || mayuscula(filtro[i]) == mayuscula(extension[i]);
    }
    return {iguales, extension.empty()};
}

inline bool esta_en_la_lista(const texto_w& nombre, const std::vector<texto_w>& extensiones) {
    const std::size_t punto = nombre.rfind(L'.');
    bool esta = false;
    for (const texto_w& extension : extensiones) {
        const texto_w mia = punto == texto_w::npos ? texto_w() : nombre.substr(punto + 1);
        bool iguales = punto != texto_w::npos && mia.size() == extension.size();
        for (std::size_t i = 0; iguales && i < mia.size(); ++i) {
            iguales = mayuscula(mia[i]) == mayuscula(extension[i]);
        }
        esta = esta || iguales;
    }
    return esta;
}

}  // namespace modelos
