// The exports of cdir_proceso.h.
#include "cdir_proceso.h"

#include "files/programa.hpp"
#include "system/unidades.hpp"

using namespace interno;

wchar_t* cdir_obtener_path_actual_UNICODE(void) {
    return i_path_actual().suelta();
}
char* cdir_obtener_path_actual(void) {
    return i_path_actual_ansi().suelta();
}

const wchar_t* cdir_disco_de_programa_UNICODE(void) {
    return i_disco_de_programa();
}
