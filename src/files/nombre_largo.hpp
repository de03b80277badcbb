// The question for the long form of a path that the 8-bit current directory asks, through one pointer for the whole
// process: KERNEL32's own answer where it has one, else the shell's.
//
// Promises: the choice is made once, at the first question; both answer as GetLongPathNameW does (0 on failure, the
// length when it fits, else the size needed with the terminator); the shell is loaded only when it is asked.
// Cannot promise: that the shell tells the long form of every path: it is asked only for existing ones whose full
// form is shorter than 260 characters.
// Checked by tests/files/nombre_largo_win32_test.cpp.
#pragma once

#include "companions/sistema.hpp"

namespace interno {

DWORD i_nombre_largo(const wchar_t* corto, wchar_t* largo, DWORD sitio) noexcept;

// The shell's answer.
DWORD WINAPI i_nombre_largo_del_escritorio(const wchar_t* corto, wchar_t* largo, DWORD sitio) noexcept;

// Tests only: the next question chooses anew.
void i_olvida_nombre_largo() noexcept;

}  // namespace interno
