// The one table of Windows calls that touch files and directories: every file operation of the library ends
// here, so tests replace an entry and make any call fail, once or for ever. The conversions of dates stand here
// too, so that tests choose the time zone.
//
// Promises: each entry has the signature and the error convention (GetLastError) of the Windows function whose
// name it bears. Four entries, with names of our own, stand for what Windows offers only in its native interface;
// they keep the same convention, and each is one call.
// Checked by the fault tests of tests/files and tests/listings.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace lumodir {

struct tabla_sistema {
    decltype(&::GetFileAttributesW) GetFileAttributesW;
    decltype(&::GetFileAttributesExW) GetFileAttributesExW;
    decltype(&::SetFileAttributesW) SetFileAttributesW;
    decltype(&::CreateFileW) CreateFileW;
    decltype(&::CloseHandle) CloseHandle;
    decltype(&::GetFileInformationByHandle) GetFileInformationByHandle;
    decltype(&::GetFileInformationByHandleEx) GetFileInformationByHandleEx;
    decltype(&::SetFileInformationByHandle) SetFileInformationByHandle;
    decltype(&::SetFileTime) SetFileTime;
    decltype(&::FileTimeToLocalFileTime) FileTimeToLocalFileTime;
    decltype(&::LocalFileTimeToFileTime) LocalFileTimeToFileTime;
    decltype(&::FileTimeToSystemTime) FileTimeToSystemTime;
    decltype(&::SystemTimeToTzSpecificLocalTime) SystemTimeToTzSpecificLocalTime;
    decltype(&::SystemTimeToFileTime) SystemTimeToFileTime;
    decltype(&::DeleteFileW) DeleteFileW;
    decltype(&::CreateDirectoryW) CreateDirectoryW;
    decltype(&::RemoveDirectoryW) RemoveDirectoryW;
    decltype(&::MoveFileExW) MoveFileExW;
    decltype(&::FindFirstFileExW) FindFirstFileExW;
    decltype(&::FindNextFileW) FindNextFileW;
    decltype(&::FindClose) FindClose;
    decltype(&::GetFullPathNameW) GetFullPathNameW;
    decltype(&::GetShortPathNameW) GetShortPathNameW;
    decltype(&::GetLongPathNameW) GetLongPathNameW;
    decltype(&::GetTempPathW) GetTempPathW;
    decltype(&::GetTempFileNameW) GetTempFileNameW;
    decltype(&::GetWindowsDirectoryW) GetWindowsDirectoryW;
    decltype(&::GetModuleFileNameW) GetModuleFileNameW;
    // Opens an entry of an open directory by its bare name, which is taken literally; with no directory, `nombre` is a
    // whole native path. `opciones` and `atributos` as NtOpenFile takes them.
    HANDLE(WINAPI* abre_entrada)
    (const wchar_t* nombre, HANDLE directorio, DWORD acceso, DWORD compartir, DWORD opciones,
     DWORD atributos);
    // The number that tells a file from all others of its volume, as listings by handle tell it.
    BOOL(WINAPI* numero_de_fichero)(HANDLE fichero, unsigned long long* numero);
    // The name under which the system holds an open file: where it really lies. At most 64 KiB.
    BOOL(WINAPI* nombre_de_fichero)
    (HANDLE fichero, void* bufer, DWORD bytes, const wchar_t** nombre, DWORD* unidades);
    // Whether this system opens what a link points to although it was asked for the link itself (Wine does).
    BOOL(WINAPI* sigue_enlaces)();
};

extern tabla_sistema sistema;

// The thread's last error survives whatever happens in the scope: destructors that call Windows use it.
class conserva_ultimo_error {
public:
    conserva_ultimo_error() noexcept : codigo_(::GetLastError()) {}
    ~conserva_ultimo_error() { ::SetLastError(codigo_); }
    conserva_ultimo_error(const conserva_ultimo_error&) = delete;
    conserva_ultimo_error& operator=(const conserva_ultimo_error&) = delete;

private:
    DWORD codigo_;
};

// Owner of a handle: which call closes it and what an empty one looks like is in its traits.
template <class Rasgos>
class manija {
public:
    manija() noexcept = default;
    explicit manija(HANDLE valor) noexcept : valor_(valor) {}
    manija(manija&& otra) noexcept : valor_(otra.suelta()) {}
    manija& operator=(manija&& otra) noexcept {
        if (this != &otra) {
            cierra();
            valor_ = otra.suelta();
        }
        return *this;
    }
    ~manija() { cierra(); }

    bool valida() const noexcept { return valor_ != Rasgos::vacia(); }
    HANDLE get() const noexcept { return valor_; }
    HANDLE suelta() noexcept {
        HANDLE valor = valor_;
        valor_ = Rasgos::vacia();
        return valor;
    }
    // Closes now; answers what Windows answers (TRUE for an empty owner).
    BOOL cierra() noexcept {
        if (!valida()) {
            return TRUE;
        }
        const conserva_ultimo_error conserva;
        return Rasgos::cierra(suelta());
    }

private:
    HANDLE valor_ = Rasgos::vacia();
};

struct rasgos_fichero {
    static HANDLE vacia() noexcept { return INVALID_HANDLE_VALUE; }
    static BOOL cierra(HANDLE valor) noexcept { return sistema.CloseHandle(valor); }
};
struct rasgos_busqueda {
    static HANDLE vacia() noexcept { return INVALID_HANDLE_VALUE; }
    static BOOL cierra(HANDLE valor) noexcept { return sistema.FindClose(valor); }
};
using manija_fichero = manija<rasgos_fichero>;
using manija_busqueda = manija<rasgos_busqueda>;

}  // namespace lumodir
