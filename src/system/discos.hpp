// Questions about one drive, by its letter or its index.
//
// Promises: no question opens the drive but that for its volume name; a drive without medium brings up no dialog of the
// system.
// Cannot promise: that a drive which answers now is there for the next call.
// Checked by tests/system/discos_win32_test.cpp.
#pragma once

#include "companions/cadena.hpp"

namespace interno {

bool i_es_unidad_local(wchar_t letra) noexcept;
bool i_es_unidad_subst(wchar_t letra) noexcept;
// Empty, and reported, when the system does not tell it.
cadena_w i_nombre_de_volumen(unsigned short disco);

}  // namespace interno
