// Where the program runs from and how names look to the system: its path, short and long forms, the current
// directory, and the search of the directories of PATH.
//
// Promises: a form that the system cannot tell is the path as it was given; no answer is cut at a classic length,
// except the current directory, which is the C runtime's; 8-bit answers are those of the wide questions, converted, so
// that neither look-alikes nor another code page that the host has chosen get into them.
// Cannot promise: that what the search finds is a program: a directory of that name counts too.
// Checked by tests/files/programa_win32_test.cpp.
#pragma once

#include "companions/arr.hpp"

namespace interno {

cadena_w i_path_del_programa() noexcept;

cadena_w i_path_corto(const wchar_t* path) noexcept;
// The long form without extended-length prefix.
cadena_w i_path_largo(const wchar_t* path) noexcept;

// The current directory; one that the C runtime does not tell is reported, and the answer empty.
cadena_w i_path_actual() noexcept;
cadena_a i_path_actual_ansi() noexcept;

// The paths of PATH where the name exists, or the first of them.
objeto<ArrCADENA_u> i_busca_en_el_path(vista_w nombre, bool todos) noexcept;

}  // namespace interno
