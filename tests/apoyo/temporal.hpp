// Where the tests make their files: LUMODIR_TEMPORAL instead of the system's TEMP, for this process and its children
// (tools/con_wine gives one in memory). Windows only.
#pragma once

#include <windows.h>

#include <cstdlib>

namespace apoyo {

inline void va_al_temporal_pedido() {
    if (const wchar_t* pedido = ::_wgetenv(L"LUMODIR_TEMPORAL")) {
        ::SetEnvironmentVariableW(L"TEMP", pedido);
        ::SetEnvironmentVariableW(L"TMP", pedido);
    }
}

}  // namespace apoyo
