// The exports of cdir_proceso.h.
#include "cdir_proceso.h"

#include "system/unidades.hpp"

using namespace lumodir;

const wchar_t* cdir_disco_de_programa_UNICODE(void) {
    return i_disco_de_programa();
}
