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

namespace lumodir {

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

}  // namespace lumodir
