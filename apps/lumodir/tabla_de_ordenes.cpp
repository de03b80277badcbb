// All subcommands, in the order of the general help.
#include "ordenes.hpp"

namespace mando {

std::span<const grupo> grupos() {
    static const grupo todos[] = {
        {.titulo = "Paths as text: nothing here looks at the disk", .ordenes = ordenes_rutas},
        {.titulo = "Listings", .ordenes = ordenes_listados},
        {.titulo = "Searches and sizes", .ordenes = ordenes_busqueda},
        {.titulo = "Files and directories", .ordenes = ordenes_ficheros},
        {.titulo = "Deletion: asks first", .ordenes = ordenes_borrado},
        {.titulo = "The system", .ordenes = ordenes_sistema},
        {.titulo = "The registry", .ordenes = ordenes_registro},
        {.titulo = "For the shell", .ordenes = ordenes_interprete},
    };
    return todos;
}

}  // namespace mando
