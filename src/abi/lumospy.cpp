// The exports of companions/lumospy.h.
#include "companions/lumospy.h"

#include "companions/error_interno.hpp"

using namespace interno;

void* lumospy_nousar_malloc(size_t size) {
    return i_reserva(size);
}

void* lumospy_nousar_calloc(size_t count, size_t size) {
    return i_reserva_a_cero(count, size);
}

void* lumospy_nousar_realloc(void* pointer, size_t size) {
    return i_cambia(pointer, size);
}

void lumospy_nousar_free_pp(void** pointer) {
    i_destruye_en(pointer, "(pointer) != NULL", "(*pointer) != NULL", libera_bloque());
}

unsigned long long lumospy_bloques_vivos(void) {
    return i_bloques_vivos();
}
