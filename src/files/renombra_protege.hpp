// Renaming and moving files, and their read-only protection.
//
// Promises: an existing target is never replaced; a failed renaming leaves both files as they were.
// Cannot promise: that protection keeps anybody from anything: it is one attribute, which deletion here takes off.
// Checked by tests/files/renombra_protege_win32_test.cpp.
#pragma once

#include "files/objetivo.hpp"
#include "lumodir_base.h"

namespace lumodir {

// Makes a file read-only (`modo_lectura`) or writable (`modo_escritura`, both of lmlongpath.hpp), retried; the user
// is asked when `informa` is 1. Any other mode is reported and handed to the system all the same. 1 when done.
unsigned short i_cambia_proteccion(objetivo& fichero, int modo, unsigned short informa) noexcept;
unsigned short i_cambia_proteccion(const ruta_fijada& nomfich, int modo, unsigned short informa) noexcept;

// Renames, retried, the user being asked. `negativa`: the code for which the system is not asked to, if any.
void i_renombra_fichero(const ruta_fijada& viejo, const ruta_fijada& nuevo, DWORD negativa = ERROR_SUCCESS);

}  // namespace lumodir
