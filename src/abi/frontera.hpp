// What the exports of all headers share: truth values on their way out.
#pragma once

#include "lumodir_base.h"

namespace lumodir {

constexpr unsigned short logico(bool valor) noexcept {
    return valor ? CIERTO : FALSO;
}

}  // namespace lumodir
