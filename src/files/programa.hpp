// Where the program runs from and how names look to the system: its path, short and long forms, the current
// directory, and the search of the directories of PATH.
//
// Promises: a form that the system cannot tell is the path as it was given; no answer is cut at a classic length
// but the current directory, which is the C runtime's; 8-bit answers are those of the wide questions, converted, so
// that no look-alike and no other code page of the host's choice gets into them.
// Cannot promise: that what the search finds is a program: a directory of the name counts too.
// Checked by tests/files/programa_win32_test.cpp.
#pragma once

#include "companions/cadena.hpp"

namespace lumodir {

// The long form without extended-length prefix.
cadena_w i_path_largo(const wchar_t* path) noexcept;

}  // namespace lumodir
