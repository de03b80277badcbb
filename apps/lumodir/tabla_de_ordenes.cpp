// All subcommands, in the order of the general help.
#include "ordenes.hpp"

namespace mando {

std::span<const grupo> grupos() {
    static const grupo todos[] = {
        {"Paths as text: nothing here looks at the disk", ordenes_rutas},
        {"Listings", ordenes_listados},
        {"Searches and sizes", ordenes_busqueda},
        {"Files and directories", ordenes_ficheros},
        {"Deletion: asks first", ordenes_borrado},
        {"The system", ordenes_sistema},
        {"The registry", ordenes_registro},
        {"For the shell", ordenes_interprete},
    };
    return todos;
}

}  // namespace mando
