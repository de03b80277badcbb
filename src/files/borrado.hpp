// Deleting one file, removing one directory: the two operations under every deletion of the library.
//
// Promises: the usual case costs one attempt; only after a failure is the reason looked for (missing, read-only, held
// open), with the outcomes, messages and order of the careful way: look, unprotect, then delete. A read-only
// directory goes like a read-only file, and gets its mark back if it stays.
// Cannot promise: that a file that was held open is gone when the loop gives up; the answer tells.
// Checked by tests/files/borrado_win32_test.cpp.
#pragma once

#include "companions/lmlongpath.hpp"
#include "companions/texto.hpp"
#include "files/objetivo.hpp"
#include "lumodir_base.h"

namespace lumodir {

// A file that is already gone counts as deleted. `texto_extra` (may be NULL) replaces the usual hint in the
// message.
unsigned short i_borra_fichero(objetivo& fichero, const wchar_t* texto_extra, unsigned short informar);
unsigned short i_borra_fichero(const ruta_fijada& fichero, const wchar_t* texto_extra,
                               unsigned short informar);

// Reports a missing file (message, "CR_existe") with its path; in the deletion of a tree also, on a line of its own,
// where it stands below the root that the user knows: "root\\rest". `raiz`, what its path begins with, has no data
// where there is no tree.
unsigned short i_borra_fichero_existente(objetivo& fichero, const wchar_t* texto_extra, vista_w raiz = {});

// Reports a missing directory (message, "CR_existe").
unsigned short i_borra_directorio_existente(objetivo& directorio);

// One attempt, in silence.
desenlace i_quita_directorio(objetivo& directorio);

}  // namespace lumodir
