// What the exports of all headers share: arguments on their way in, truth values and texts on their way out, the end of
// texts.
#pragma once

#include "companions/error_interno.hpp"
#include "lumodir_base.h"

namespace interno {

constexpr unsigned short logico(bool valor) noexcept {
    return valor ? CIERTO : FALSO;
}

// Reports each argument that is missing; answers whether none is.
struct argumento_de_anfitrion {
    const void* puntero;
    const char* expresion;
};
inline bool estan(std::initializer_list<argumento_de_anfitrion> argumentos,
                  lugar donde = lugar::aqui()) noexcept {
    bool todos = true;
    for (const argumento_de_anfitrion& a : argumentos) {
        todos = i_comprueba(a.puntero != nullptr, a.expresion, donde) && todos;
    }
    return todos;
}

// A text for the host.
template <class C>
C* nuevo_texto(vista<C> texto) noexcept {
    return cadena<C>(texto).suelta();
}
// To an argument that may be NULL when the text is not wanted.
template <class C>
void entrega(C** sitio, vista<C> texto) noexcept {
    if (sitio != nullptr) {
        *sitio = nuevo_texto(texto);
    }
}
template <class C>
void entrega(C** sitio, cadena<C> texto) noexcept {
    if (sitio != nullptr) {
        *sitio = texto.suelta();
    }
}

// The plain destroyers report a variable that is NULL, the optional ones accept it.
template <class C>
void destruye_texto(C** texto, bool opcional, lugar donde = lugar::aqui()) noexcept {
    if (texto == nullptr || *texto != nullptr || !opcional) {
        i_destruye_en(texto, "(cadena) != NULL", "(*cadena) != NULL", libera_bloque(), donde);
    }
}

}  // namespace interno
