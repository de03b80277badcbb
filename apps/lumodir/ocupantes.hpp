// Which programs hold a file, as the system's Restart Manager tells; it is loaded when it is needed.
//
// Promises: where the system does not tell, nobody is named.
// Cannot promise: to see the programs of other users; the system decides who may.
// Checked by tests/cli/ocupantes_test.cpp, with the system's part replaced.
#pragma once

#include <string>
#include <vector>

#include "sistema_windows.hpp"
// After windows.h
#include <restartmanager.h>

namespace mando {

struct ocupante {
    unsigned long pid = 0;
    std::wstring nombre;
};

// The calls of the Restart Manager, NULL where the system has none. Tests put others here.
struct puerta_de_ocupantes {
    unsigned long(WINAPI* empieza)(unsigned long*, unsigned long, wchar_t*) = nullptr;
    unsigned long(WINAPI* registra)(unsigned long, unsigned, const wchar_t**, unsigned, RM_UNIQUE_PROCESS*,
                                    unsigned, const wchar_t**) = nullptr;
    unsigned long(WINAPI* lista)(unsigned long, unsigned*, unsigned*, RM_PROCESS_INFO*,
                                 unsigned long*) = nullptr;
    unsigned long(WINAPI* termina)(unsigned long) = nullptr;
};
extern puerta_de_ocupantes puerta_ocupantes;
void abre_puerta_de_ocupantes();  // loads the calls, unless something stands there already

// The programs that hold a file, this one not counted.
std::vector<ocupante> quien_tiene(const std::wstring& ruta_completa);

}  // namespace mando
