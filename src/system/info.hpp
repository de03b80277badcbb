// The drive table of the machine, and the current directory of each drive.
//
// Promises: the entries stand in ascending drive order; nothing is read or written past a record; a drive without
// medium brings up no dialog of the system.
// Cannot promise: the name of a share of 64 units or more: it counts as one that cannot be told.
// Checked by tests/system/info_win32_test.cpp.
#pragma once

#include <cstdint>
#include <optional>

#include "companions/cadena.hpp"
#include "info.h"

namespace interno {

void i_llena_tabla(InfoTabla& tabla);
// Frees the entries; what does not look like a filled table is reported.
void i_vacia_tabla(InfoTabla& tabla) noexcept;
// The place of a drive, by its index.
std::optional<std::uint16_t> i_busca_disco(const InfoTabla& tabla, unsigned disco) noexcept;

// Of a drive, 1 = A, or of the current one, 0; NULL when it has none.
cadena_w i_directorio_actual_de(int unidad);

}  // namespace interno
