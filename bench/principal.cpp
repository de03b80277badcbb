// lumodir_bench [group...]: the benchmark tables of the README, in Markdown. growth:DIRECTORY is run by tools/largo growth,
// endurance ACTION DIRECTORY FILES by tools/largo endurance.
#include <cstdlib>
#include <cstring>

#include "bancos.hpp"

namespace {

constexpr struct {
    const char* nombre;
    void (*corre)();
} grupos[] = {{"paths", bancos::rutas},       {"pages", bancos::rutas_de_la_pagina},
              {"listings", bancos::listados}, {"files", bancos::ficheros},
              {"registry", bancos::registro}, {"processes", bancos::procesos}};
constexpr char crecimiento[] = "growth:";

}  // namespace

int main(int argc, char** argv) {
    if (argc == 5 && std::strcmp(argv[1], "endurance") == 0) {
        const std::wstring directorio(argv[3], argv[3] + std::strlen(argv[3]));
        return bancos::resiste(argv[2], directorio, std::strtoull(argv[4], nullptr, 10)) ? 0 : 1;
    }
    banco::encabezado();
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], crecimiento, sizeof crecimiento - 1) == 0) {
            const char* const directorio = argv[i] + sizeof crecimiento - 1;
            bancos::crecimiento(std::wstring(directorio, directorio + std::strlen(directorio)));
        }
    }
    for (const auto& grupo : grupos) {
        bool elegido = argc == 1;
        for (int i = 1; i < argc; ++i) {
            elegido = elegido || std::strcmp(argv[i], grupo.nombre) == 0;
        }
        if (elegido) {
            grupo.corre();
        }
    }
}
