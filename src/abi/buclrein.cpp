// The exports of companions/buclrein.h.
#include "companions/buclrein.hpp"

void buclrein_establece_politica(unsigned long silent_retries, unsigned long wait_ms) {
    interno::i_establece_politica(silent_retries, wait_ms);
}

void buclrein_establece_receptor(BuclreinReceptor ask, void* context) {
    interno::i_establece_receptor(ask, context);
}
