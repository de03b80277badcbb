// The one way of asking the system for a text whose length nobody knows: short answers cost one call and one block,
// longer ones are asked for until they fit.
//
// Promises: an answer that grows between two questions is asked for again; nothing is cut.
// Checked by the tests of those who ask: tests/files/programa_win32_test.cpp, tests/companions/plataforma_win32_test.cpp.
#pragma once

#include "companions/cadena.hpp"

namespace interno {

// `pregunta(buffer, room)` answers the length when it fits, else the size needed with the terminator, 0 on failure. The
// whole answer; NULL on failure.
template <class C, class Pregunta>
cadena<C> i_respuesta_entera(Pregunta pregunta) noexcept {
    constexpr unsigned long sitio_corto = 512;  // characters: a path and some more
    C corto[sitio_corto];
    unsigned long longitud = pregunta(corto, sitio_corto);
    if (longitud < sitio_corto) {
        return longitud == 0 ? cadena<C>() : cadena<C>(vista<C>(corto, longitud));
    }
    while (longitud != 0) {
        const unsigned long necesario = longitud;
        cadena<C> entera = cadena<C>::con_sitio(necesario);
        longitud = pregunta(entera.datos(), necesario + 1);
        if (longitud != 0 && longitud <= necesario) {
            entera.acorta(longitud);
            return entera;
        }
    }
    return {};
}

}  // namespace interno
