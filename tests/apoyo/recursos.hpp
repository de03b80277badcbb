// What this process has of the system's: open handles, memory in use. Windows only.
#pragma once

#include <windows.h>
#include <winternl.h>

#include <psapi.h>

#include <algorithm>
#include <vector>

namespace apoyo {

// Wine knows no count of a process's handles and says 0, but lists those of all.
inline std::size_t manijas_del_proceso() {
    DWORD cuantas = 0;
    ::GetProcessHandleCount(::GetCurrentProcess(), &cuantas);
    if (cuantas != 0) {
        return cuantas;
    }
    constexpr auto las_de_todos = static_cast<SYSTEM_INFORMATION_CLASS>(16);
    constexpr NTSTATUS no_cabe = static_cast<NTSTATUS>(0xC0000004);
    struct manija {
        USHORT proceso;
        USHORT traza;
        UCHAR tipo;
        UCHAR rasgos;
        USHORT valor;
        void* objeto;
        ULONG acceso;
    };
    struct todas {
        ULONG cuantas;
        manija una[1];
    };
    thread_local std::vector<todas> lista(1024);
    ULONG bytes;
    while (::NtQuerySystemInformation(las_de_todos, lista.data(),
                                      static_cast<ULONG>(lista.size() * sizeof(todas)), &bytes) == no_cabe) {
        lista.resize(lista.size() * 2);
    }
    const todas& t = lista[0];
    return static_cast<std::size_t>(std::count_if(
        t.una, t.una + t.cuantas, [](const manija& m) { return m.proceso == ::GetCurrentProcessId(); }));
}

struct memoria {
    std::size_t bytes;
    std::size_t pico_bytes;
};
inline memoria memoria_del_proceso() {
    PROCESS_MEMORY_COUNTERS cuenta = {};
    ::GetProcessMemoryInfo(::GetCurrentProcess(), &cuenta, sizeof cuenta);
    return {cuenta.WorkingSetSize, cuenta.PeakWorkingSetSize};
}

}  // namespace apoyo
