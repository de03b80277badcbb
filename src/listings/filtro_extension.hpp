// Which files a list takes, by their extension. Pure text, apart from the lists, so that it is also built natively
// and fuzzed.
//
// Promises: letter case of A to Z does not count; a name without extension passes the empty filter alone.
// Checked by tests/listings/filtro_test.cpp against a naive model, and by the tests of the lists.
#pragma once

#include "companions/arr.hpp"

namespace interno {

// The extension that a file must have: NULL, or beginning with `*`, accepts all; `?` stands for one character.
class filtro_extension {
public:
    explicit filtro_extension(vista_w extension) noexcept
        : extension_(extension),
          admite_todos_(extension.data() == nullptr || (!extension.empty() && extension.front() == L'*')) {}

    bool admite(vista_w nombre) const;
    bool admite(vista_a nombre) const;

private:
    bool i_admite_extension(vista_w nombre) const;

    vista_w extension_;
    bool admite_todos_;
};

// Names without a dot have no extension, and are in no list of extensions.
bool i_tiene_extension_de_la_lista(vista_w nombre, const ArrCADENA_u& extensiones) noexcept;

}  // namespace interno
