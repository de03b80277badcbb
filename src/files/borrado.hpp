// Deleting one file, removing one directory, in the way that takes read-only marks off, tries again and asks.
//
// Promises: the usual case costs one attempt; only after a failure is the reason looked for (missing, read-only, held
// open), with the outcomes, messages and order of the careful way: look, unprotect, then delete. A read-only
// directory goes like a read-only file, and gets its mark back if it stays.
// Cannot promise: that a file that was held open is gone when the loop gives up; the answer tells.
// Checked by tests/files/borrado_win32_test.cpp.
#pragma once

#include "files/objetivo.hpp"

namespace interno {

// A file that is already gone counts as deleted. `texto_extra` (may be NULL) replaces the usual hint in the
// message.
bool i_borra_fichero(objetivo& fichero, const wchar_t* texto_extra, bool informar) noexcept;
bool i_borra_fichero(const ruta_fijada& fichero, const wchar_t* texto_extra, bool informar) noexcept;

// Reports a missing file (message, "CR_existe") with its path. In the deletion of a tree a second line says where it
// stands below the root that the user knows: "root\\rest". `raiz` is that root, with which the path begins; without a
// tree it has no data.
bool i_borra_fichero_existente(objetivo& fichero, const wchar_t* texto_extra, vista_w raiz = {}) noexcept;
bool i_borra_fichero_existente(const ruta_fijada& fichero, const wchar_t* texto_extra) noexcept;

// Reports a missing directory (message, "CR_existe").
bool i_borra_directorio_existente(objetivo& directorio) noexcept;
bool i_borra_directorio_existente(const ruta_fijada& directorio) noexcept;
// Says nothing of a missing one, and answers that it removed none.
bool i_borra_directorio_si_existe(const ruta_fijada& directorio, bool informar) noexcept;

// One attempt, in silence.
desenlace i_quita_directorio(objetivo& directorio);

}  // namespace interno
