// The exports of companions/msglocal.h.
#include "companions/msglocal.h"

#include "companions/error_interno.hpp"
#include "companions/msglocal.hpp"

using namespace interno;

void msglocal_establece_idioma(unsigned long slot) {
    if (i_comprueba(slot < num_ranuras_idioma, "slot < 41")) {
        i_establece_idioma(slot);
    }
}

unsigned long msglocal_dame_idioma(void) {
    return i_idioma();
}
