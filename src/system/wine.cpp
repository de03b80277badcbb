// See wine.hpp. Two threads that ask first at the same time both ask the registry and store the same answer.
#include "system/wine.hpp"

#include <atomic>

#include "system/lumoreg.hpp"

namespace interno {
namespace {

enum class respuesta : unsigned char { sin_preguntar, no, si };
std::atomic<respuesta> i_respuesta{respuesta::sin_preguntar};

}  // namespace

bool i_estamos_en_wine() noexcept {
    respuesta dicha = i_respuesta;
    if (dicha == respuesta::sin_preguntar) {
        const bool hay =
            i_existe_clave(apertura::en_cualquiera(LUMOREG_RAIZ_CURRENT_USER), L"Software\\Wine");
        dicha = hay ? respuesta::si : respuesta::no;
        i_respuesta = dicha;
    }
    return dicha == respuesta::si;
}

void i_olvida_si_estamos_en_wine() noexcept {
    i_respuesta = respuesta::sin_preguntar;
}

}  // namespace interno
