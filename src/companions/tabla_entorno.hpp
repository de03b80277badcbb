// The table of system calls that reach the process and the thread that asks, its environment, its console and the
// system's texts: tests replace an entry, and so show the library values that grow, languages that are not installed
// and consoles that nobody has.
//
// Promises: each entry has the signature and the error convention of the system function whose name it bears.
// Checked by tests/companions/plataforma_win32_test.cpp and sin_dialogos_win32_test.cpp.
#pragma once

#include "companions/sistema.hpp"

namespace lumodir {

struct tabla_entorno {
    decltype(&::GetEnvironmentVariableW) GetEnvironmentVariableW;
    // Spelled out: the type of its last argument bears an attribute that templates would lose, with a warning.
    DWORD(WINAPI* FormatMessageW)(DWORD, LPCVOID, DWORD, DWORD, LPWSTR, DWORD, char**);
    decltype(&::GetConsoleMode) GetConsoleMode;
    decltype(&::WriteConsoleW) WriteConsoleW;
    decltype(&::GetThreadErrorMode) GetThreadErrorMode;
    decltype(&::SetThreadErrorMode) SetThreadErrorMode;
};

extern tabla_entorno entorno;

}  // namespace lumodir
