// Keys: creating, listing and deleting them, and the probe of the right to write.
//
// Promises: a deletion acts in the one view in which the parent of the named key was opened. Below it every key is
// opened relative to the handle of its parent, always as itself and never as what a link points to, and what is
// deleted is the very key that was opened. So a link goes and its target stays, even if somebody puts a link there
// meanwhile. Each level of depth costs heap, and no stack.
// Cannot promise: a key whose name holds a NUL, which the calls by name cannot open: it is reported and stays.
// Checked by tests/system/lumoreg_claves_win32_test.cpp and lumoreg_borrado_win32_test.cpp.
#pragma once

#include "system/lumoreg.hpp"

namespace interno {

// With its missing parents; true also when it was there.
bool i_crea_clave(HKEY raiz, const wchar_t* clave, REGSAM acceso) noexcept;
// One text for each subkey is added; false when there is none.
template <class C>
bool i_dame_subclaves(const clave_abierta<C>& clave, arr_cadena<C>& subclaves) noexcept;
// Without a name, the open key itself is deleted.
void i_borra_clave(const clave_abierta<wchar_t>& padre, vista_w nombre) noexcept;
// Makes a key for everybody, writes to it and deletes it.
bool i_se_puede_escribir() noexcept;

}  // namespace interno
