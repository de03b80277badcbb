// Temporary and unique files: empty files that the system names and reserves on disk, in the temporary directory or
// in a given one.
//
// Promises: a file that is handed out exists, is empty and was never handed out to anybody else, however many
// processes ask at once (the system creates it, and a renaming never replaces); what could not be used is deleted. A
// directory is tied to its place once; one that leaves no room for a name counts as missing.
// Cannot promise: that the fallback for a missing temporary directory exists: it is neither checked nor created.
// Checked by tests/files/temporales_win32_test.cpp and unicos_win32_test.cpp.
#pragma once

#include "companions/cadena.hpp"

namespace interno {

// In its long form, as the paths of the files in it.
cadena_w i_directorio_temporal();
cadena_w i_crea_fichero_temporal();
cadena_w i_crea_fichero_temporal_con_ext(vista_w ext) noexcept;

// In a directory that is given; the path begins with that.
cadena_w i_crea_fichero_unico(const wchar_t* directorio, vista_w extension) noexcept;

}  // namespace interno
