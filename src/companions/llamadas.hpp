// Every call of the library that tests replace, named once: the table and its type (sistema.hpp), the faults, the lies
// and the checks of the tests are all made from this list. A new call is one line here; one with a name of our own is
// declared below too, and its body stands in sistema.cpp.
#pragma once

#include <windows.h>
// These need the types of the one above.
#include <direct.h>
#include <tlhelp32.h>
#include <winnetwk.h>

// (kind, call, what a failed one answers)
#define LUMODIR_LLAMADAS_QUE_FALLAN(X)                          \
    X(ficheros, GetFileAttributesW, INVALID_FILE_ATTRIBUTES)    \
    X(ficheros, GetFileAttributesExW, FALSE)                    \
    X(ficheros, SetFileAttributesW, FALSE)                      \
    X(ficheros, CreateFileW, INVALID_HANDLE_VALUE)              \
    X(ficheros, CloseHandle, FALSE)                             \
    X(ficheros, GetFileInformationByHandle, FALSE)              \
    X(ficheros, GetFileInformationByHandleEx, FALSE)            \
    X(ficheros, SetFileInformationByHandle, FALSE)              \
    X(ficheros, SetFileTime, FALSE)                             \
    X(ficheros, FileTimeToLocalFileTime, FALSE)                 \
    X(ficheros, LocalFileTimeToFileTime, FALSE)                 \
    X(ficheros, FileTimeToSystemTime, FALSE)                    \
    X(ficheros, SystemTimeToTzSpecificLocalTime, FALSE)         \
    X(ficheros, SystemTimeToFileTime, FALSE)                    \
    X(ficheros, DeleteFileW, FALSE)                             \
    X(ficheros, CreateDirectoryW, FALSE)                        \
    X(ficheros, RemoveDirectoryW, FALSE)                        \
    X(ficheros, MoveFileExW, FALSE)                             \
    X(ficheros, FindFirstFileExW, INVALID_HANDLE_VALUE)         \
    X(ficheros, FindNextFileW, FALSE)                           \
    X(ficheros, FindClose, FALSE)                               \
    X(ficheros, GetFullPathNameW, 0)                            \
    X(ficheros, GetShortPathNameW, 0)                           \
    X(ficheros, GetLongPathNameW, 0)                            \
    X(ficheros, GetTempPathW, 0)                                \
    X(ficheros, GetTempFileNameW, 0)                            \
    X(ficheros, GetWindowsDirectoryW, 0)                        \
    X(ficheros, GetModuleFileNameW, 0)                          \
    X(ficheros, abre_entrada, INVALID_HANDLE_VALUE)             \
    X(ficheros, numero_de_fichero, FALSE)                       \
    X(ficheros, nombre_de_fichero, FALSE)                       \
    X(claves, RegOpenKeyExA, ERROR_ACCESS_DENIED)               \
    X(claves, RegOpenKeyExW, ERROR_ACCESS_DENIED)               \
    X(claves, RegCreateKeyExW, ERROR_ACCESS_DENIED)             \
    X(claves, RegCloseKey, ERROR_ACCESS_DENIED)                 \
    X(claves, RegQueryInfoKeyA, ERROR_ACCESS_DENIED)            \
    X(claves, RegQueryInfoKeyW, ERROR_ACCESS_DENIED)            \
    X(claves, RegQueryValueExA, ERROR_ACCESS_DENIED)            \
    X(claves, RegQueryValueExW, ERROR_ACCESS_DENIED)            \
    X(claves, RegSetValueExW, ERROR_ACCESS_DENIED)              \
    X(claves, RegDeleteValueW, ERROR_ACCESS_DENIED)             \
    X(claves, RegEnumKeyExA, ERROR_ACCESS_DENIED)               \
    X(claves, RegEnumKeyExW, ERROR_ACCESS_DENIED)               \
    X(claves, RegEnumValueW, ERROR_ACCESS_DENIED)               \
    X(claves, NtDeleteKey, ERROR_ACCESS_DENIED)                 \
    X(procesos, CreateToolhelp32Snapshot, INVALID_HANDLE_VALUE) \
    X(procesos, Process32FirstW, FALSE)                         \
    X(procesos, Process32NextW, FALSE)                          \
    X(procesos, Module32FirstW, FALSE)                          \
    X(procesos, Module32NextW, FALSE)                           \
    X(procesos, OpenProcess, nullptr)                           \
    X(procesos, TerminateProcess, FALSE)                        \
    X(discos, GetLogicalDrives, 0)                              \
    X(discos, GetDriveTypeW, 0)                                 \
    X(discos, GetVolumeInformationW, FALSE)                     \
    X(discos, QueryDosDeviceW, 0)                               \
    X(discos, WNetGetConnectionW, ERROR_ACCESS_DENIED)          \
    X(discos, _wgetdcwd, nullptr)                               \
    X(discos, _getdrive, 0)                                     \
    X(escritorio, SHGetMalloc, E_ACCESSDENIED)                  \
    X(escritorio, SHGetDesktopFolder, E_ACCESSDENIED)           \
    X(escritorio, SHGetPathFromIDListW, FALSE)                  \
    X(proceso, _wgetcwd, nullptr)                               \
    X(proceso, GetEnvironmentVariableW, 0)                      \
    X(proceso, FormatMessageW, 0)                               \
    X(proceso, GetConsoleMode, FALSE)                           \
    X(proceso, WriteConsoleW, FALSE)                            \
    X(proceso, GetThreadErrorMode, 0)                           \
    X(proceso, SetThreadErrorMode, FALSE)

// What cannot fail: (call)
#define LUMODIR_LLAMADAS_QUE_NO_FALLAN(X) \
    X(sigue_enlaces)                      \
    X(busca_nombre_largo)                 \
    X(machine_es_imagen_de_64bits)        \
    X(numero_al_azar)                     \
    X(duerme_ms)                          \
    X(termina_proceso)

struct IMalloc;
struct IShellFolder;
struct _ITEMIDLIST;  // NOLINT(bugprone-reserved-identifier): the system's name

// Of the system's own interface, which no public header declares: it deletes a key by its handle; 0 is success.
using borrado_por_manija = LONG NTAPI(HANDLE);
extern "C" __declspec(dllimport) borrado_por_manija NtDeleteKey;

namespace interno {

using funcion_nombre_largo = DWORD(WINAPI*)(const wchar_t* corto, wchar_t* largo, DWORD sitio);

// What the table holds where nobody has replaced it and Windows' function itself does not serve.
namespace propias {

// What Windows offers only in its native interface, with the error convention of the other calls (GetLastError); each
// is one call.
// Opens an entry of an open directory by its bare name, which is taken literally; with no directory, `nombre` is a
// whole native path. `opciones` and `atributos` as NtOpenFile takes them.
HANDLE WINAPI abre_entrada(const wchar_t* nombre, HANDLE directorio, DWORD acceso, DWORD compartir,
                           DWORD opciones, DWORD atributos);
// The number that tells a file from all others of its volume, as listings by handle tell it.
BOOL WINAPI numero_de_fichero(HANDLE fichero, unsigned long long* numero);
// The name under which the system holds an open file: where it really lies. At most 64 KiB.
BOOL WINAPI nombre_de_fichero(HANDLE fichero, void* bufer, DWORD bytes, const wchar_t** nombre,
                              DWORD* unidades);

// Its last argument has a type with an attribute that templates would lose, with a warning.
DWORD WINAPI FormatMessageW(DWORD opciones, LPCVOID origen, DWORD codigo, DWORD idioma, LPWSTR destino,
                            DWORD sitio, char** argumentos);

// The shell's; each loads it when it is called: whoever loads this library for files alone, a service for example, does
// not get it too.
HRESULT WINAPI SHGetMalloc(IMalloc** asignador);
HRESULT WINAPI SHGetDesktopFolder(IShellFolder** carpeta);
BOOL WINAPI SHGetPathFromIDListW(const _ITEMIDLIST* lista, LPWSTR ruta);

// Whether this system opens what a link points to although it was asked for the link itself (Wine does).
BOOL WINAPI sigue_enlaces();
// GetLongPathNameW of KERNEL32, NULL when it has none.
funcion_nombre_largo busca_nombre_largo();
// The library lives in the process that asks, so the width of its own pointers is the answer.
bool machine_es_imagen_de_64bits();
// For pauses: unpredictable enough that two processes do not wait in step.
unsigned numero_al_azar();
void duerme_ms(unsigned long milisegundos);
// At once: the only answer to exhausted memory.
void termina_proceso();

// The type of each call, by a name that the members of the table do not hide.
#define LUMODIR_TIPO(Nombre) using tipo_de_##Nombre = decltype(&(Nombre));
#define LUMODIR_TIPO_QUE_FALLA(Clase, Nombre, Fallo) LUMODIR_TIPO(Nombre)
LUMODIR_LLAMADAS_QUE_FALLAN(LUMODIR_TIPO_QUE_FALLA)
LUMODIR_LLAMADAS_QUE_NO_FALLAN(LUMODIR_TIPO)
#undef LUMODIR_TIPO_QUE_FALLA
#undef LUMODIR_TIPO

}  // namespace propias
}  // namespace interno
