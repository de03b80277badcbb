// The table of system calls that list and end processes: tests replace an entry, and so show the library systems with
// other processes, other structure sizes and other failures.
//
// Promises: each entry has the signature and the error convention of the system function whose name it bears.
// Checked by tests/system/taskproc_win32_test.cpp.
#pragma once

#include "companions/sistema.hpp"
// Leans on the types that the header above brings.
#include <tlhelp32.h>

namespace lumodir {

struct tabla_procesos {
    decltype(&::CreateToolhelp32Snapshot) CreateToolhelp32Snapshot;
    decltype(&::Process32FirstW) Process32FirstW;
    decltype(&::Process32NextW) Process32NextW;
    decltype(&::Module32FirstW) Module32FirstW;
    decltype(&::Module32NextW) Module32NextW;
    decltype(&::OpenProcess) OpenProcess;
    decltype(&::TerminateProcess) TerminateProcess;
    decltype(&::CloseHandle) CloseHandle;
};

extern tabla_procesos procesos;

}  // namespace lumodir
