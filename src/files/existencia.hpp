// Does a name exist, is it a directory, is it read-only, can it be read, how large is it: the questions that every
// other file operation asks first.
//
// Promises: nothing on disk changes; nothing is retried; an answer is one call to the system, two for reading, and one
// more for a name that is there but cannot be asked itself: it exists all the same.
// Cannot promise: that the answer still holds when the caller acts on it; nor to tell a missing name from one that
// cannot be reached (an empty drive, a share that is away): both answer 0.
// Checked by tests/files/existencia_win32_test.cpp.
#pragma once

#include "companions/lmlongpath.hpp"
#include "lumodir_base.h"

namespace lumodir {

// 1 for an existing file whose read-only mark is set (a directory may bear the mark too).
unsigned short es_fichero_de_solo_lectura(const ruta_fijada& path) noexcept;

}  // namespace lumodir
