// lumodir_bench [group...]: the benchmark tables of the README, in Markdown. growth:DIRECTORY is run by tools/largo growth.
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
