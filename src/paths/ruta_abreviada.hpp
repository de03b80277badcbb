// Paths shortened for display: "..." in place of directories. Drive, base name and extension stay whole and
// no component is ever cut.
//
// Promises: linear in the length of the path; a path within the maximum comes back as it is.
// Cannot promise: the maximum (a long name alone may exceed it), nor a result shorter than the path: the
// fixed form of a short path is longer than the path itself. Callers accept both.
// Checked by tests/paths/ruta_abreviada_test.cpp, also against a naive model over directories of every small
// shape with every maximum.
#pragma once

#include "companions/cadena.hpp"

namespace interno {

// Towards `maximo` units.
cadena_w i_ruta_abreviada(vista_w ruta, std::size_t maximo) noexcept;

// The fixed form, whatever the length.
cadena_w i_nombre_fichero_abreviado(vista_w nombre) noexcept;

}  // namespace interno
