#include "manijas.hpp"

#include <vector>

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <winternl.h>

namespace bancos {
namespace {

constexpr DWORD comparte_todo = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr ACCESS_MASK para_leer = FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES | SYNCHRONIZE;
constexpr ACCESS_MASK para_borrar = DELETE | SYNCHRONIZE;
constexpr ULONG solo_directorio = FILE_DIRECTORY_FILE | FILE_SYNCHRONOUS_IO_NONALERT |
                                  FILE_OPEN_FOR_BACKUP_INTENT | FILE_OPEN_REPARSE_POINT;
constexpr ULONG fichero = FILE_NON_DIRECTORY_FILE | FILE_SYNCHRONOUS_IO_NONALERT | FILE_OPEN_REPARSE_POINT;

HANDLE abre(HANDLE padre, std::wstring& nombre, ACCESS_MASK acceso, ULONG opciones) {
    UNICODE_STRING texto;
    texto.Length = texto.MaximumLength = static_cast<USHORT>(nombre.size() * sizeof(wchar_t));
    texto.Buffer = nombre.data();
    OBJECT_ATTRIBUTES objeto;
    InitializeObjectAttributes(&objeto, &texto, 0, padre, nullptr);
    IO_STATUS_BLOCK estado;
    HANDLE abierto = nullptr;
    ::NtOpenFile(&abierto, acceso, &objeto, &estado, comparte_todo, opciones);
    return abierto;
}

HANDLE abre_raiz(const std::wstring& raiz) {
    return ::CreateFileW(raiz.c_str(), para_leer, comparte_todo, nullptr, OPEN_EXISTING,
                         FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
}

void marca(HANDLE abierto) {
    FILE_DISPOSITION_INFO borrar = {TRUE};
    ::SetFileInformationByHandle(abierto, FileDispositionInfo, &borrar, sizeof borrar);
    ::CloseHandle(abierto);
}

struct contenido {
    std::vector<std::wstring> ficheros;
    std::vector<std::wstring> directorios;
};

contenido lee(HANDLE abierto) {
    alignas(8) static unsigned char bufer[64 * 1024];
    contenido resultado;
    while (::GetFileInformationByHandleEx(abierto, FileIdBothDirectoryInfo, bufer, sizeof bufer)) {
        for (const unsigned char* p = bufer;;) {
            const auto* r = reinterpret_cast<const FILE_ID_BOTH_DIR_INFO*>(p);
            std::wstring nombre(r->FileName, r->FileNameLength / sizeof(wchar_t));
            if ((r->FileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
                resultado.ficheros.push_back(std::move(nombre));
            } else if (nombre != L"." && nombre != L"..") {
                resultado.directorios.push_back(std::move(nombre));
            }
            if (r->NextEntryOffset == 0) {
                break;
            }
            p += r->NextEntryOffset;
        }
    }
    return resultado;
}

std::size_t lista(HANDLE abierto) {
    contenido dentro = lee(abierto);
    std::size_t num = dentro.ficheros.size();
    for (std::wstring& d : dentro.directorios) {
        const HANDLE hijo = abre(abierto, d, para_leer, solo_directorio);
        num += lista(hijo);
        ::CloseHandle(hijo);
    }
    return num;
}

void vacia(HANDLE abierto) {
    contenido dentro = lee(abierto);
    for (std::wstring& f : dentro.ficheros) {
        marca(abre(abierto, f, para_borrar, fichero));
    }
    for (std::wstring& d : dentro.directorios) {
        const HANDLE hijo = abre(abierto, d, para_leer, solo_directorio);
        vacia(hijo);
        ::CloseHandle(hijo);
        marca(abre(abierto, d, para_borrar, solo_directorio));
    }
}

}  // namespace

std::size_t lista_por_manijas(const std::wstring& raiz) {
    const HANDLE abierta = abre_raiz(raiz);
    const std::size_t num = lista(abierta);
    ::CloseHandle(abierta);
    return num;
}

void borra_por_manijas(const std::wstring& raiz) {
    const HANDLE abierta = abre_raiz(raiz);
    vacia(abierta);
    ::CloseHandle(abierta);
    ::RemoveDirectoryW(raiz.c_str());
}

void borra_a_mano(const std::wstring& directorio) {
    WIN32_FIND_DATAW datos;
    HANDLE busqueda = ::FindFirstFileExW((directorio + L"\\*").c_str(), FindExInfoBasic, &datos,
                                         FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (busqueda == INVALID_HANDLE_VALUE) {
        return;
    }
    std::vector<std::wstring> directorios;
    do {
        const std::wstring nombre = datos.cFileName;
        if ((datos.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            ::DeleteFileW((directorio + L"\\" + nombre).c_str());
        } else if (nombre != L"." && nombre != L"..") {
            directorios.push_back(directorio + L"\\" + nombre);
        }
    } while (::FindNextFileW(busqueda, &datos));
    ::FindClose(busqueda);
    for (const std::wstring& d : directorios) {
        borra_a_mano(d);
    }
    ::RemoveDirectoryW(directorio.c_str());
}

void solo_busca(const std::wstring& directorio) {
    WIN32_FIND_DATAW datos;
    const HANDLE busqueda = ::FindFirstFileExW((directorio + L"\\*").c_str(), FindExInfoBasic, &datos,
                                               FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
    while (::FindNextFileW(busqueda, &datos)) {
    }
    ::FindClose(busqueda);
}

}  // namespace bancos
