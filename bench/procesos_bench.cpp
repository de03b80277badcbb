// Processes against a hand-written snapshot walk.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
// Leans on the types that the header above brings.
#include <tlhelp32.h>

#include <vector>

#include "bancos.hpp"
#include "taskproc.h"

namespace {

struct hallado {
    DWORD pid;
    std::wstring modulo;
    std::wstring ruta;
};

// What a careful programmer writes: each process, each of its modules, those of one name kept.
std::vector<hallado> busca_a_mano(const std::wstring& nombre) {
    std::vector<hallado> hallados;
    HANDLE lista = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W proceso;
    proceso.dwSize = sizeof proceso;
    for (BOOL hay = ::Process32FirstW(lista, &proceso); hay; hay = ::Process32NextW(lista, &proceso)) {
        HANDLE modulos = ::CreateToolhelp32Snapshot(TH32CS_SNAPALL, proceso.th32ProcessID);
        if (modulos == INVALID_HANDLE_VALUE) {
            continue;
        }
        MODULEENTRY32W modulo;
        modulo.dwSize = sizeof modulo;
        for (BOOL otro = ::Module32FirstW(modulos, &modulo); otro; otro = ::Module32NextW(modulos, &modulo)) {
            if (nombre == modulo.szModule) {
                hallados.push_back({modulo.th32ProcessID, modulo.szModule, modulo.szExePath});
            }
        }
        ::CloseHandle(modulos);
    }
    ::CloseHandle(lista);
    return hallados;
}

}  // namespace

void bancos::procesos() {
    banco::corre({.nombre = "processes that have loaded a library",
                  .nuestro =
                      [] {
                          ArrPunteroConTipo* lista = nullptr;
                          if (taskproc_busca_proceso_abierto(L"ntdll.dll", &lista) == 1) {
                              arr_DestruyeEstructurasConTipo(
                                  &lista, reinterpret_cast<ArrDestruyeRegistro>(taskproc_destruye));
                          }
                      },
                  .otros = {{"hand-written snapshot walk",
                             [] { banco::usa(busca_a_mano(L"ntdll.dll").data()); }, 1.0}},
                  .vueltas = 3,
                  .rondas = 10});
}
