// What the exports of all headers share: truth values on their way out, the end of texts.
#pragma once

#include "companions/error_interno.hpp"
#include "lumodir_base.h"

namespace lumodir {

constexpr unsigned short logico(bool valor) noexcept {
    return valor ? CIERTO : FALSO;
}

// A text that the caller may want; NULL stands for none.
template <class C>
void entrega(cadena<C> texto, C** destino) noexcept {
    if (destino != nullptr) {
        *destino = texto.suelta();
    }
}

// The plain destroyers report a variable that is NULL, the optional ones accept it.
template <class C>
void destruye_texto(C** texto, bool opcional, lugar donde = lugar::aqui()) noexcept {
    if (texto == nullptr || *texto != nullptr || !opcional) {
        i_destruye_en(texto, "(cadena) != NULL", "(*cadena) != NULL", libera_bloque(), donde);
    }
}

}  // namespace lumodir
