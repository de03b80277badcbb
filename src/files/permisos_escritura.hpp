// Can a file be written, can a file be created in a directory: tried out rather than asked.
//
// Promises: a file that exists is opened and closed, never changed; a missing one, and the probe in a directory, is
// created and deleted again, by the handle that made it; the directory of a directory test, made first where it is
// missing, stays. What this test did not make is never deleted. A path is tied to its place once.
// Cannot promise: that a file system which refuses the deletion leaves nothing behind; nor that the answer still holds
// when the caller acts on it.
// Checked by tests/files/permisos_escritura_win32_test.cpp.
#pragma once

#include "companions/lmlongpath.hpp"

namespace interno {

// What a test found: a NULL string means that writing works.
using motivo = cadena_w;

motivo i_prueba_escritura(const ruta_fijada& fichero) noexcept;
// `mostrado`: as messages show it. The separator of a directory is part of the place: without it the root would be
// another. `se_crea`: it is made first where it is missing.
motivo i_prueba_escritura_en_directorio(vista_w directorio, vista_w mostrado, bool se_crea) noexcept;
// In the directory of a file.
motivo i_prueba_escritura_junto_a(vista_w fichero) noexcept;

// Creates a probe file of this process in the directory, and deletes it; answers whether that can be done.
bool prueba_escritura_en_directorio(const wchar_t* directorio) noexcept;

}  // namespace interno
