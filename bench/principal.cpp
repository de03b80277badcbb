// lumodir_bench [group...]: the benchmark tables of the README, in Markdown.
#include <cstring>

#include "bancos.hpp"

namespace {

constexpr struct {
    const char* nombre;
    void (*corre)();
} grupos[] = {{"paths", bancos::rutas},    {"listings", bancos::listados}, {"growth", bancos::crecimiento},
              {"files", bancos::ficheros}, {"registry", bancos::registro}, {"processes", bancos::procesos}};

}  // namespace

int main(int argc, char** argv) {
    banco::encabezado();
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
