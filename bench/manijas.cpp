#include "manijas.hpp"

#include <algorithm>

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

bool menor_sin_caja(const std::wstring& a, const std::wstring& b) {
    return _wcsicmp(a.c_str(), b.c_str()) < 0;
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

void lista_a_mano(const std::wstring& directorio, std::vector<std::wstring>& ficheros,
                  std::vector<std::wstring>* directorios) {
    WIN32_FIND_DATAW datos;
    HANDLE busqueda = ::FindFirstFileExW((directorio + L"\\*").c_str(), FindExInfoBasic, &datos,
                                         FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (busqueda == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        if ((datos.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            ficheros.emplace_back(datos.cFileName);
        } else if (directorios != nullptr && datos.cFileName[0] != L'.') {
            directorios->emplace_back(datos.cFileName);
        }
    } while (::FindNextFileW(busqueda, &datos));
    ::FindClose(busqueda);
    std::sort(ficheros.begin(), ficheros.end(), menor_sin_caja);
    if (directorios != nullptr) {
        std::sort(directorios->begin(), directorios->end(), menor_sin_caja);
    }
}

std::size_t recorre_a_mano(const std::wstring& raiz) {
    std::size_t num = 0;
    std::vector<std::pair<std::wstring, std::vector<std::wstring>>> resultado;
    std::vector<std::wstring> pendientes{raiz};
    while (!pendientes.empty()) {
        std::wstring actual = std::move(pendientes.back());
        pendientes.pop_back();
        std::vector<std::wstring> ficheros;
        std::vector<std::wstring> directorios;
        lista_a_mano(actual, ficheros, &directorios);
        for (const std::wstring& d : directorios) {
            pendientes.push_back(actual + L"\\" + d);
        }
        num += ficheros.size();
        resultado.emplace_back(std::move(actual), std::move(ficheros));
    }
    return num;
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

std::size_t solo_busca(const std::wstring& directorio) {
    WIN32_FIND_DATAW datos;
    const HANDLE busqueda = ::FindFirstFileExW((directorio + L"\\*").c_str(), FindExInfoBasic, &datos,
                                               FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (busqueda == INVALID_HANDLE_VALUE) {
        return 0;
    }
    std::size_t num = 0;
    do {
        num += (datos.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 ? 1 : 0;
    } while (::FindNextFileW(busqueda, &datos));
    ::FindClose(busqueda);
    return num;
}

}  // namespace bancos
