// The one way of asking the system for a text whose length nobody knows: short answers cost one call and one block,
// longer ones are asked for until they fit.
//
// Promises: an answer that grows between two questions is asked for again; nothing is cut.
// Checked by the tests of those who ask: tests/files/programa_win32_test.cpp, tests/companions/plataforma_win32_test.cpp.
#pragma once

#include "companions/cadena.hpp"

namespace interno {

// `pregunta(buffer, room)` answers the length when it fits, else the size needed with the terminator, 0 on failure. The
// whole answer, of which it has said that it needs so much; NULL on failure.
template <class C, class Pregunta>
cadena<C> i_respuesta_de(unsigned long necesario, Pregunta pregunta) noexcept {
    while (necesario != 0) {
        cadena<C> entera = cadena<C>::con_sitio(necesario);
        const unsigned long longitud = pregunta(entera.datos(), necesario + 1);
        if (longitud != 0 && longitud <= necesario) {
            entera.acorta(longitud);
            return entera;
        }
        necesario = longitud;
    }
    return {};
}

// The same, when nothing has been asked yet.
template <class C, class Pregunta>
cadena<C> i_respuesta_entera(Pregunta pregunta) noexcept {
    constexpr unsigned long sitio_corto = 512;  // characters: a path and some more
    C corto[sitio_corto];
    const unsigned long longitud = pregunta(corto, sitio_corto);
    return longitud == 0 || longitud >= sitio_corto ? i_respuesta_de<C>(longitud, pregunta)
                                                    : cadena<C>(vista<C>(corto, longitud));
}

}  // namespace interno
