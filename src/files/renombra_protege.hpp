// Renaming and moving files, and their read-only protection.
//
// Promises: an existing target is never replaced; a failed renaming leaves both files as they were.
// Cannot promise: that protection keeps anybody from anything: it is one attribute, which deletion here takes off.
// Checked by tests/files/renombra_protege_win32_test.cpp.
#pragma once

#include "files/objetivo.hpp"

namespace interno {

// Makes a file read-only (`modo_lectura`) or writable (`modo_escritura`, both of ruta_fijada.hpp), retried; the user
// is asked where `informa` says so. Any other mode is reported and handed to the system all the same.
bool i_cambia_proteccion(objetivo& fichero, int modo, bool informa) noexcept;
bool i_cambia_proteccion(const ruta_fijada& fichero, int modo, bool informa) noexcept;
void i_desprotege_si_existe(const ruta_fijada& fichero) noexcept;

// Renames, retried, the user being asked. With a code in `negativa` every attempt fails with that code, and the system
// is not asked.
void i_renombra_fichero(const ruta_fijada& viejo, const ruta_fijada& nuevo, DWORD negativa = ERROR_SUCCESS);

}  // namespace interno
