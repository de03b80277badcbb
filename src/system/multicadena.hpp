// The text of a registry value: where a string ends, and how a multi-string is cut. Pure text, apart from the
// registry, so that it is also built natively and fuzzed.
//
// Promises: nothing past the end of the given text is read, whatever terminators it has or lacks.
// Checked by tests/system/multicadena_test.cpp.
#pragma once

#include "companions/texto.hpp"

namespace interno {

// What precedes the first terminator; everything when there is none.
template <class C>
constexpr vista<C> i_hasta_terminador(vista<C> texto) noexcept {
    return texto.substr(0, texto.find(C(0)));
}

// Hands the pieces of a multi-string to `recibe`, in their order, up to the first empty one. One terminator at
// the very start is passed over, and the last piece may lack its own: registry editors write both.
template <class C, class Recibe>
constexpr void i_para_cada_trozo(vista<C> texto, Recibe recibe) {
    if (!texto.empty() && texto.front() == C(0)) {
        texto.remove_prefix(1);
    }
    while (!texto.empty() && texto.front() != C(0)) {
        const vista<C> trozo = i_hasta_terminador(texto);
        recibe(trozo);
        texto.remove_prefix(trozo.size() < texto.size() ? trozo.size() + 1 : trozo.size());
    }
}

}  // namespace interno
