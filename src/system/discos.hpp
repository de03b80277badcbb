// One drive, by its letter or its index: its names, and questions about it.
//
// Promises: only the question for the volume name opens the drive; a drive without medium brings up no dialog of the
// system.
// Cannot promise: that a drive which answers now is there for the next call.
// Checked by tests/system/discos_win32_test.cpp.
#pragma once

#include "companions/cadena.hpp"

namespace interno {

inline constexpr int i_NUM_MAX_UNIDADES = 26;

constexpr wchar_t i_letra_de_unidad(int indice) noexcept {
    return static_cast<wchar_t>(L'A' + indice);
}

// "X:\", which the system takes for the drive itself.
struct raiz_de_unidad {
    wchar_t texto[4];
    constexpr explicit raiz_de_unidad(wchar_t letra) noexcept : texto{letra, L':', L'\\', L'\0'} {}
    constexpr const wchar_t* c_str() const noexcept { return texto; }
};

// "X:", the name of the device.
struct nombre_de_unidad {
    wchar_t texto[3];
    constexpr explicit nombre_de_unidad(wchar_t letra) noexcept : texto{letra, L':', L'\0'} {}
    constexpr const wchar_t* c_str() const noexcept { return texto; }
};

bool i_es_unidad_local(wchar_t letra) noexcept;
bool i_es_unidad_subst(wchar_t letra) noexcept;
// Empty, and reported, when the system does not tell it.
cadena_w i_nombre_de_volumen(int disco);

}  // namespace interno
