// The assertion service: broken preconditions are reported with their source text, and the caller goes on.
//
// Promises: a report never stops the function that makes it, and never lets an exception of the host's receiver
// through. The detail is valid only during the report; a NULL one is no detail.
// Checked by tests/companions/error_interno_test.cpp.
#pragma once

#include "companions/cadena.hpp"
#include "companions/error_interno.h"

namespace interno {

void i_establece_receptor(ErrorInternoReceptor receptor, void* contexto) noexcept;

void error_interno(const char* expresion, lugar donde = lugar::aqui()) noexcept;
void error_interno_msg_u(const char* expresion, const wchar_t* detalle, lugar donde = lugar::aqui()) noexcept;
void error_interno_msg_u(const char* expresion, vista_w detalle, lugar donde = lugar::aqui()) noexcept;
void error_interno_msg(const char* expresion, vista_a detalle, lugar donde = lugar::aqui()) noexcept;
void error_interno_liberando_mensaje_u(cadena_w mensaje, lugar donde = lugar::aqui()) noexcept;
// A value that no branch provides for.
void error_interno_default_error(lugar donde = lugar::aqui()) noexcept;

// The assertion itself: reports when the condition does not hold, and answers whether it does.
inline bool i_comprueba(bool condicion, const char* expresion, lugar donde = lugar::aqui()) noexcept {
    if (!condicion) {
        error_interno(expresion, donde);
    }
    return condicion;
}
template <class Detalle>
bool i_comprueba_con(bool condicion, const char* expresion, Detalle detalle,
                     lugar donde = lugar::aqui()) noexcept {
    if (!condicion) {
        if constexpr (std::is_pointer_v<Detalle>) {
            i_comprueba_con(false, expresion, a_vista(detalle), donde);
        } else if constexpr (std::is_convertible_v<Detalle, vista_a>) {
            error_interno_msg(expresion, detalle, donde);
        } else {
            error_interno_msg_u(expresion, vista_w(detalle), donde);
        }
    }
    return condicion;
}

// The end of what a host owns, by the address of its variable: reports a missing address, and a variable that is NULL.
// The variable is NULL before `fin` runs, which may lead back to it.
template <class T, class Fin>
void i_destruye_en(T** variable, const char* hay_variable, const char* hay_objeto, Fin fin,
                   lugar donde = lugar::aqui()) noexcept {
    if (i_comprueba(variable != nullptr, hay_variable, donde) &&
        i_comprueba(*variable != nullptr, hay_objeto, donde)) {
        T* const objeto = *variable;
        *variable = nullptr;
        fin(objeto);
    }
}

}  // namespace interno
