/*
 * Stands in for windows.h where Clang compiles as Visual Studio does and Visual Studio is not there (tools/msvc): what
 * the headers of include/ and principal.c need of it, with the layouts that Windows documents.
 */
#ifndef LUMODIR_PRUEBA_WINDOWS_H
#define LUMODIR_PRUEBA_WINDOWS_H

#include <stddef.h> /* wchar_t in C */

typedef void *HANDLE;
typedef unsigned long DWORD;
typedef int BOOL;

typedef struct _FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
} FILETIME;

typedef struct _WIN32_FIND_DATAA {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime, ftLastAccessTime, ftLastWriteTime;
    DWORD nFileSizeHigh, nFileSizeLow, dwReserved0, dwReserved1;
    char cFileName[260];
    char cAlternateFileName[14];
} WIN32_FIND_DATAA;

typedef struct _WIN32_FIND_DATAW {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime, ftLastAccessTime, ftLastWriteTime;
    DWORD nFileSizeHigh, nFileSizeLow, dwReserved0, dwReserved1;
    wchar_t cFileName[260];
    wchar_t cAlternateFileName[14];
} WIN32_FIND_DATAW;

#ifdef __cplusplus
extern "C" {
#endif
__declspec(dllimport) __declspec(noreturn) void __stdcall ExitProcess(unsigned int code);
#ifdef __cplusplus
}
#endif

#endif
