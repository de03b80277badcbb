// See wine.hpp. Two threads that ask first at the same time both ask the registry and store the same answer.
#include "system/wine.hpp"

#include <atomic>

#include "lumoreg.h"
#include "wine.h"

namespace lumodir {
namespace {

std::atomic<unsigned short> i_sin_preguntar{CIERTO};
std::atomic<unsigned short> i_respuesta{FALSO};

}  // namespace

void i_olvida_si_estamos_en_wine() noexcept {
    i_sin_preguntar = CIERTO;
}

}  // namespace lumodir

using namespace lumodir;

unsigned short wine_estamos_en_wine(void) {
    if (i_sin_preguntar == CIERTO) {
        i_respuesta = lumoreg_existe_clave(LUMOREG_RAIZ_CURRENT_USER, "Software\\Wine");
        i_sin_preguntar = FALSO;
    }
    return i_respuesta;
}
