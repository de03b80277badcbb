// The codes for which the system that stands in for Windows off Windows has not every text (plataforma_nativa.cpp).
#pragma once

namespace apoyo {

inline constexpr unsigned long sin_catalan = 10001;       // all but the Catalan one
inline constexpr unsigned long solo_del_sistema = 10002;  // the one in its own language
inline constexpr unsigned long sin_texto = 10003;         // none

}  // namespace apoyo
