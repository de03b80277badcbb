// Is a file read-only, can it be read, does a directory come back: the questions, besides that of existence
// (`i_existencia`), that every other file operation asks first.
//
// Promises: nothing on disk changes; an answer is one call to the system, two for reading, and one more for a name
// that is there but cannot be asked itself: it exists all the same. Only the wait for a directory asks again.
// Cannot promise: that the answer still holds when the caller acts on it; nor to tell a missing name from one that
// cannot be reached (an empty drive, a share that is away): both answer no.
// Checked by tests/files/existencia_win32_test.cpp and espera_directorio_win32_test.cpp.
#pragma once

#include "companions/lmlongpath.hpp"

namespace interno {

// An existing file, or directory, whose read-only mark is set.
bool es_fichero_de_solo_lectura(const ruta_fijada& path) noexcept;

bool i_se_puede_leer(const ruta_fijada& fichero) noexcept;

// Waits for a directory on a network or removable drive to come back, as long as the retry policy of the program says.
// Nothing in the directory is opened, and the user is not asked.
bool i_espera_directorio(const ruta_fijada& directorio) noexcept;

}  // namespace interno
