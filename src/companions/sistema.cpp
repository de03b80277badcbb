// See sistema.hpp.
#include "companions/sistema.hpp"

#include <winternl.h>

#include <cstring>
#include <cwchar>

namespace lumodir {
namespace {

// The object's name in NtQueryObject.
constexpr auto clase_nombre_de_objeto = static_cast<OBJECT_INFORMATION_CLASS>(1);
// The file's number in NtQueryInformationFile.
constexpr auto clase_numero_de_fichero = static_cast<FILE_INFORMATION_CLASS>(6);

// Answers as the Windows API does.
BOOL i_con_ultimo_error(NTSTATUS estado) noexcept {
    if (estado >= 0) {
        return TRUE;
    }
    ::SetLastError(::RtlNtStatusToDosError(estado));
    return FALSE;
}

HANDLE WINAPI i_abre_entrada(const wchar_t* nombre, HANDLE directorio, DWORD acceso, DWORD compartir,
                             DWORD opciones, DWORD atributos) {
    constexpr std::size_t max_unidades = 0x7FFE;  // of a text that counts its bytes in 16 bits
    const std::size_t largo = std::wcslen(nombre);
    if (largo > max_unidades) {
        ::SetLastError(ERROR_FILENAME_EXCED_RANGE);
        return INVALID_HANDLE_VALUE;
    }
    UNICODE_STRING texto;
    texto.Length = texto.MaximumLength = static_cast<USHORT>(largo * sizeof(wchar_t));
    texto.Buffer =
        const_cast<wchar_t*>(nombre);  // NOLINT(cppcoreguidelines-pro-type-const-cast): it is only read
    OBJECT_ATTRIBUTES objeto;
    InitializeObjectAttributes(&objeto, &texto, atributos, directorio, nullptr);
    IO_STATUS_BLOCK estado;
    HANDLE abierto = INVALID_HANDLE_VALUE;
    return i_con_ultimo_error(::NtOpenFile(&abierto, acceso, &objeto, &estado, compartir, opciones))
               ? abierto
               : INVALID_HANDLE_VALUE;
}

BOOL WINAPI i_numero_de_fichero(HANDLE fichero, unsigned long long* numero) {
    IO_STATUS_BLOCK estado;
    return i_con_ultimo_error(
        ::NtQueryInformationFile(fichero, &estado, numero, sizeof *numero, clase_numero_de_fichero));
}

BOOL WINAPI i_nombre_de_fichero(HANDLE fichero, void* bufer, DWORD bytes, const wchar_t** nombre,
                                DWORD* unidades) {
    ULONG escritos = 0;
    if (!i_con_ultimo_error(::NtQueryObject(fichero, clase_nombre_de_objeto, bufer, bytes, &escritos))) {
        return FALSE;
    }
    UNICODE_STRING texto;
    std::memcpy(&texto, bufer, sizeof texto);
    *nombre = texto.Buffer;
    *unidades = texto.Length / sizeof(wchar_t);
    return TRUE;
}

BOOL WINAPI i_sigue_enlaces() {
    static const bool siguelos =
        ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    return siguelos ? TRUE : FALSE;
}

}  // namespace

tabla_sistema sistema = {
    ::GetFileAttributesW,
    ::GetFileAttributesExW,
    ::SetFileAttributesW,
    ::CreateFileW,
    ::CloseHandle,
    ::GetFileInformationByHandle,
    ::GetFileInformationByHandleEx,
    ::SetFileInformationByHandle,
    ::SetFileTime,
    ::FileTimeToLocalFileTime,
    ::LocalFileTimeToFileTime,
    ::FileTimeToSystemTime,
    ::SystemTimeToTzSpecificLocalTime,
    ::SystemTimeToFileTime,
    ::DeleteFileW,
    ::CreateDirectoryW,
    ::RemoveDirectoryW,
    ::MoveFileExW,
    ::FindFirstFileExW,
    ::FindNextFileW,
    ::FindClose,
    ::GetFullPathNameW,
    ::GetShortPathNameW,
    ::GetLongPathNameW,
    ::GetTempPathW,
    ::GetTempFileNameW,
    ::GetWindowsDirectoryW,
    ::GetModuleFileNameW,
    i_abre_entrada,
    i_numero_de_fichero,
    i_nombre_de_fichero,
    i_sigue_enlaces,
};

}  // namespace lumodir
