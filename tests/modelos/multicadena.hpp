// A model of how the text of a registry value is cut, unit by unit.
#pragma once

#include "modelos/path.hpp"

namespace modelos {

// A terminator ends a piece; an empty piece ends the list, unless it is the first; the end of the text ends a piece
// too.
template <class T>
std::vector<T> trozos_de_multicadena(const T& texto) {
    std::vector<T> resultado;
    T trozo;
    for (std::size_t i = 0; i < texto.size(); ++i) {
        if (texto[i] != 0) {
            trozo.push_back(texto[i]);
            continue;
        }
        if (trozo.empty() && i > 0) {
            return resultado;
        }
        if (!trozo.empty()) {
            resultado.push_back(trozo);
        }
        trozo.clear();
    }
    if (!trozo.empty()) {
        resultado.push_back(trozo);
    }
    return resultado;
}

}  // namespace modelos
