// The exports of companions/lmaviso.h.
#include "companions/lmaviso.hpp"

void lmaviso_establece_receptor(LmavisoReceptor show, void* context) {
    interno::i_establece_receptor(show, context);
}
