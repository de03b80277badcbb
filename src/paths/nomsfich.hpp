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
class registro_nomsfich : public duenyo<Nomsfich, destruye_registro_nomsfich> {
public:
    using duenyo::duenyo;
    vista_a nombre_base() const noexcept { return a_vista<char>(get()->nombre_base); }
    vista_a extension() const noexcept { return a_vista<char>(get()->extension); }
};

// A bare file name cut at its last point.
registro_nomsfich i_crea_nomsfich(vista_a nombre);
// The record takes over both strings and is checked; a missing one becomes empty.
registro_nomsfich i_registro(cadena_a nombre_base, cadena_a extension);
// What a function gives for a record that is not there; the report has been made.
registro_nomsfich i_registro_vacio();
// A part as records hold it; NULL stays NULL, for the checks to report.
cadena_a i_parte(vista_a texto);

// Report what is forbidden in a part; answer whether there is a text at all. A missing base name is reported as such, and
// not as an empty one too.
bool i_comprueba_caracteres(vista_a cadena);
bool i_comprueba_nombre_base(vista_a nombre_base);

// After those checks.
bool i_misma_extension(vista_a extension1, vista_a extension2);
bool i_mismo_nombre_base(vista_a nombre_base1, vista_a nombre_base2);

cadena_a i_nombre_base_de_path(vista_a path);

}  // namespace interno
