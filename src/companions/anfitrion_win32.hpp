// Which exceptions end at the library's barrier; see anfitrion_win32.cpp.
#pragma once

#include "companions/sistema.hpp"

namespace interno {

bool i_acaba_en_la_barrera(unsigned long codigo) noexcept;

}  // namespace interno
