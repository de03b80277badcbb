// What tests may change of the system that stands in for Windows off Windows (plataforma_nativa.cpp), and the codes for
// which it has not every text.
#pragma once

#include <cstdint>

namespace apoyo {

inline constexpr unsigned long sin_catalan = 10001;       // all but the Catalan one
inline constexpr unsigned long solo_del_sistema = 10002;  // the one in its own language
inline constexpr unsigned long sin_texto = 10003;         // none

inline std::uint16_t idioma_del_usuario = 0x0409;
inline void (*al_depurador)(const wchar_t* linea) = [](const wchar_t*) {};

}  // namespace apoyo
