// Deleting one file, removing one directory: the two operations under every deletion of the library.
//
// Promises: the usual case costs one call to the system; only after a failure is the reason looked for (missing,
// read-only, held open), with the outcomes, messages and order of the careful way: look, unprotect, then delete.
// Cannot promise: that a file that was held open is gone when the loop gives up; the answer tells.
// Checked by tests/files/borrado_win32_test.cpp.
#pragma once

#include "companions/lmlongpath.hpp"
#include "companions/texto.hpp"
#include "lumodir_base.h"

namespace lumodir {

// A file that is already gone counts as deleted. `texto_extra` (may be NULL) replaces the usual hint in the
// message.
unsigned short i_borra_fichero(const ruta_fijada& fichero, const wchar_t* texto_extra,
                               unsigned short informar);

// Where a file stands in the deletion of a tree, for the report of a missing file: "root\\rest".
struct contexto_borrado {
    vista_w raiz;
    vista_w resto;
};

// Reports a missing file (message, "CR_existe") with its path, and with the context on a line of its own where
// there is one (a root without data: there is none).
unsigned short i_borra_fichero_existente(const wchar_t* fichero, const wchar_t* texto_extra,
                                         contexto_borrado contexto = {});

// Reports a missing directory (message, "CR_existe").
unsigned short i_borra_directorio_existente(const wchar_t* directorio);

}  // namespace lumodir
