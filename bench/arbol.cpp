#include "arbol.hpp"

#include <vector>

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace bancos {
namespace {

void crea_fichero(const std::wstring& ruta) {
    ::CloseHandle(::CreateFileW(ruta.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
}

void crea_ramas(const std::wstring& raiz, unsigned ramas, unsigned niveles,
                std::vector<std::wstring>& todos) {
    ::CreateDirectoryW(raiz.c_str(), nullptr);
    todos.push_back(raiz);
    for (unsigned i = 0; niveles > 0 && i < ramas; ++i) {
        crea_ramas(raiz + L"\\branch" + std::to_wstring(i), ramas, niveles - 1, todos);
    }
}

}  // namespace

directorio_temporal::directorio_temporal() {
    wchar_t temporal[MAX_PATH];
    ::GetTempPathW(MAX_PATH, temporal);
    ruta_ = std::wstring(temporal) + L"lumodir-bench-" + std::to_wstring(::GetCurrentProcessId());
    std::filesystem::create_directories(ruta_);
}

std::wstring directorio_temporal::con_ficheros(const wchar_t* nombre, unsigned cuantos) const {
    const std::wstring directorio = ruta_ + L"\\" + nombre;
    ::CreateDirectoryW(directorio.c_str(), nullptr);
    for (unsigned i = 0; i < cuantos; ++i) {
        const unsigned revuelto = i * 2654435761u;  // Knuth's multiplier: each number once, in no order
        wchar_t fichero[64];
        wsprintfW(fichero, L"\\Photo %08x of the site.%s", revuelto, i % 3 == 0 ? L"png" : L"txt");
        crea_fichero(directorio + fichero);
    }
    return directorio;
}

std::wstring directorio_temporal::con_arbol(const wchar_t* nombre, unsigned ramas, unsigned niveles,
                                            unsigned ficheros) const {
    std::vector<std::wstring> todos;
    const std::wstring raiz = ruta_ + L"\\" + nombre;
    crea_ramas(raiz, ramas, niveles, todos);
    for (unsigned i = 0; i < ficheros; ++i) {
        crea_fichero(todos[i % todos.size()] + L"\\file " + std::to_wstring(i) + L".dat");
    }
    return raiz;
}

}  // namespace bancos
