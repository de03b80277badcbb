// File-name records: one file name, without directory, as two lower-case parts in 8-bit text.
//
// Promises: every record that a function gives has both its strings, whatever was handed in; broken parts are
// reported each time a record is built, and kept.
// Cannot promise: to notice a control character alone: only a text with one of < > : " | \ / * ? is looked at
// character by character.
// Checked by tests/paths/nomsfich_test.cpp, also against a naive model over every short name.
#pragma once

#include "companions/cadena.hpp"
#include "nomsfich.h"

namespace interno {

struct destruye_registro_nomsfich {
    void operator()(Nomsfich* registro) const noexcept;
};

// Owner of a record for work inside the library.
using registro_nomsfich = duenyo<Nomsfich, destruye_registro_nomsfich>;

// A bare file name cut at its last dot.
registro_nomsfich i_crea_nomsfich(vista_a nombre);
// Of two parts.
registro_nomsfich i_crea_nomsfich(vista_a nombre_base, vista_a extension);
registro_nomsfich i_copia_nomsfich(const Nomsfich& original);
registro_nomsfich i_copia_nomsfich(const Nomsfich& original, vista_a extension);
// What a function gives for a record that is not there; the report has been made.
registro_nomsfich i_registro_vacio();

cadena_a i_nombre_fichero(const Nomsfich& nomsfich) noexcept;
bool i_iguales(const Nomsfich& nomsfich1, const Nomsfich& nomsfich2) noexcept;
// By base name, then by extension: negative, 0 or positive.
int i_compara(const Nomsfich& nomsfich1, const Nomsfich& nomsfich2) noexcept;

// Of two parts, each of which is checked.
bool i_misma_extension(vista_a extension1, vista_a extension2);
bool i_mismo_nombre_base(vista_a nombre_base1, vista_a nombre_base2);

cadena_a i_nombre_base_de_path(vista_a path) noexcept;

}  // namespace interno
