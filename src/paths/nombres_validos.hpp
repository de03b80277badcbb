// Valid base names and extensions made out of any text.
// Checked by tests/paths/nombres_validos_test.cpp.
#pragma once

#include <span>

#include "companions/cadena.hpp"

namespace interno {

// Exactly as many characters as there is room for: those of the name, the invalid ones as "_", then blanks.
template <class C>
void i_convierte_a_nombre_base_valido(const C* nombre, std::span<C> resultado) noexcept;

// The repair: invalid characters become "_", blanks at the front and dots and blanks at the end go, the
// component limit holds. Reserved device names stay, and a name of nothing but dots and blanks becomes empty: the repair
// is limited to characters, ends and length on purpose.
cadena_w i_nombre_base_reparado(vista_w nombre);

// The last character of four or more becomes "$", else one is added. A missing dot is reported.
cadena_w i_extension_con_dolar(vista_w ext) noexcept;

}  // namespace interno
