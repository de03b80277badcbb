// Valid base names made out of any text.
// Checked by tests/paths/nombres_validos_test.cpp.
#pragma once

#include "companions/cadena.hpp"

namespace lumodir {

// The repair: invalid characters become "_", blanks at the front and points and blanks at the end go, the
// component limit holds. Reserved device names stay, and nothing but points and blanks becomes empty: the repair
// is limited to characters, ends and length on purpose.
cadena_w i_nombre_base_reparado(vista_w nombre, lugar donde = lugar::aqui());

}  // namespace lumodir
