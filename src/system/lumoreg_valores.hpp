// Values of registry keys: writing, reading, listing and deleting them. Checked by
// tests/system/lumoreg_valores_win32_test.cpp.
#pragma once

#include "system/lumoreg.hpp"

namespace interno {

bool i_escribe(const clave_abierta<wchar_t>& clave, const wchar_t* nombre_valor, DWORD tipo, const void* dato,
               std::size_t bytes) noexcept;
bool i_escribe_cadena(const clave_abierta<wchar_t>& clave, const wchar_t* nombre_valor, DWORD tipo,
                      const wchar_t* dato) noexcept;
void i_borra_valor(const clave_abierta<wchar_t>& clave, const wchar_t* nombre_valor) noexcept;
// A NULL string when it cannot be read.
template <class C>
cadena<C> i_lee_cadena(const clave_abierta<C>& clave, const C* nombre_valor) noexcept;
cadena_w i_lee_cadena(const apertura& como, const wchar_t* clave, const wchar_t* nombre_valor) noexcept;

// The values that are texts, with the texts of each.
struct valores_de_clave {
    objeto<ArrCADENA_u> nombres;
    objeto<ArrPunteroConTipo> datos;
};
valores_de_clave i_lista_valores(const clave_abierta<wchar_t>& clave) noexcept;

}  // namespace interno
