// Directories one inside the other, as many as one likes: each is made through the one above it, since a path of a
// thousand levels costs a system a thousand looks at each of them. Windows only; nothing of the library is needed.
#pragma once

#include <windows.h>
#include <winternl.h>

#include <cstddef>

namespace apoyo {

// Below an existing directory, all of this name; the last one holds the file. Answers whether all could be made.
inline bool crea_niveles(const wchar_t* raiz, std::size_t niveles, const wchar_t* nombre,
                         const wchar_t* fichero) {
    constexpr DWORD comparte = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    constexpr ULONG crea = 2;  // FILE_CREATE
    HANDLE actual = ::CreateFileW(raiz, FILE_LIST_DIRECTORY | SYNCHRONIZE, comparte, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    for (std::size_t i = 0; i <= niveles && actual != INVALID_HANDLE_VALUE; ++i) {
        const bool es_fichero = i == niveles;
        UNICODE_STRING texto;
        ::RtlInitUnicodeString(&texto, es_fichero ? fichero : nombre);
        OBJECT_ATTRIBUTES objeto;
        InitializeObjectAttributes(&objeto, &texto, 0, actual, nullptr);
        IO_STATUS_BLOCK estado;
        HANDLE siguiente = INVALID_HANDLE_VALUE;
        const NTSTATUS resultado = ::NtCreateFile(
            &siguiente, FILE_LIST_DIRECTORY | SYNCHRONIZE, &objeto, &estado, nullptr, FILE_ATTRIBUTE_NORMAL,
            comparte, crea,
            (es_fichero ? FILE_NON_DIRECTORY_FILE : FILE_DIRECTORY_FILE) | FILE_SYNCHRONOUS_IO_NONALERT,
            nullptr, 0);
        ::CloseHandle(actual);
        actual = resultado >= 0 ? siguiente : INVALID_HANDLE_VALUE;
    }
    const bool hecho = actual != INVALID_HANDLE_VALUE;
    if (hecho) {
        ::CloseHandle(actual);
    }
    return hecho;
}

}  // namespace apoyo
