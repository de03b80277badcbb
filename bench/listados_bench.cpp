// Directory listings against hand-written FindFirstFileExW loops.
#include <algorithm>
#include <cstring>

#include "arbol.hpp"
#include "bancos.hpp"
#include "cdir.h"
#include "lumodir.h"
#include "manijas.hpp"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace {

void lista(const std::wstring& directorio) {
    ListaFicheros_u ficheros;
    cdir_lista_de_ficheros_UNICODE(directorio.c_str(), L"*", &ficheros);
    cdir_libera_lista_de_ficheros_UNICODE(&ficheros);
}

}  // namespace

void bancos::listados() {
    const directorio_temporal temporal;
    const std::wstring diez_mil = temporal.con_ficheros(L"ten thousand", 10'000);
    banco::corre({.nombre = "list and sort 10,000 files",
                  .nuestro = [&] { lista(diez_mil); },
                  .otros = {{"hand-written loop into a sorted vector",
                             [&] {
                                 std::vector<std::wstring> ficheros;
                                 lista_a_mano(diez_mil, ficheros, nullptr);
                             },
                             0.85},
                            {"the same search, keeping nothing", [&] { solo_busca(diez_mil); }}},
                  .vueltas = 1,
                  .rondas = 10});
    const std::wstring arbol = temporal.con_arbol(L"tree", 6, 3, 2'000);  // 1 + 6 + 36 + 216 directories
    banco::corre(
        {.nombre = "tree of 2,000 files in 259 directories",
         .nuestro =
             [&] {
                 unsigned long num = 0;
                 ListaFicheros_u* listas = nullptr;
                 lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE(arbol.c_str(), L"*", &num,
                                                                                &listas);
                 lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(num, &listas);
             },
         .otros = {{"hand-written walk", [&] { recorre_a_mano(arbol); }, 0.75},
                   {"the same calls, unchecked, keeping nothing", [&] { lista_por_manijas(arbol); }}},
         .vueltas = 1,
         .rondas = 10});
}

// The system's own cost grows with the directory; the ratio to the hand-written loop shall not.
void bancos::crecimiento(const std::wstring& directorio) {
    for (const char* cuantos : {"1000", "100000"}) {
        const std::wstring num(cuantos, cuantos + std::strlen(cuantos));
        const std::wstring lleno = directorio + L"\\list-" + num;
        const unsigned vueltas = num.size() < 5 ? 10 : 1;
        banco::corre({.nombre = std::string("list and sort ") + cuantos + " files",
                      .nuestro = [&] { lista(lleno); },
                      .otros = {{"hand-written loop into a sorted vector",
                                 [&] {
                                     std::vector<std::wstring> ficheros;
                                     lista_a_mano(lleno, ficheros, nullptr);
                                 },
                                 0.85},
                                {"the same search, keeping nothing", [&] { solo_busca(lleno); }}},
                      .vueltas = vueltas,
                      .rondas = 5});
        const std::pair<const char*, void (*)(const std::wstring&)> formas[] = {
            {"ours",
             [](const std::wstring& d) { cdir_borra_directorio_y_subdirectorios_UNICODE(d.c_str()); }},
            {"hand-written recursion", borra_a_mano},
            {"the same calls, unchecked", borra_por_manijas}};
        double mejor[3] = {1e300, 1e300, 1e300};
        for (int i = 0;; ++i) {
            const std::wstring uno = directorio + L"\\delete-" + num + L"-" + std::to_wstring(i);
            if (::GetFileAttributesW(uno.c_str()) == INVALID_FILE_ATTRIBUTES) {
                break;
            }
            mejor[i % 3] = std::min(mejor[i % 3], banco::ronda([&] { formas[i % 3].second(uno); }, 1));
        }
        const std::string que = std::string("delete a directory of ") + cuantos + " files";
        banco::escribe(que, mejor[0], {formas[1].first, {}, 0}, mejor[1]);
        banco::escribe(que, mejor[0], {formas[2].first, {}, 0}, mejor[2]);
    }
}
