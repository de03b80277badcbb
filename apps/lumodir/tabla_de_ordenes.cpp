// All subcommands, in the order of the general help.
#include "ordenes.hpp"

namespace mando {

std::span<const grupo> grupos() {
    static const grupo todos[] = {
        {"Paths as text: nothing here looks at the disk", ordenes_rutas},
        {"Listings", ordenes_listados},
    };
    return todos;
}

}  // namespace mando
