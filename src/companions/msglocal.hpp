// The message library: which language texts are shown in, and how a text is taken out of a message record.
//
// Promises: the text has no id prefix and is never freed; a language set by the host stays until the next one.
// Checked by tests/companions/msglocal_test.cpp.
#pragma once

#include "companions/registro_mensaje.hpp"

namespace interno {

// The slot that texts are shown in; the user's language until one was set.
void i_establece_idioma(unsigned long ranura) noexcept;
unsigned long i_idioma() noexcept;

const wchar_t* nousar_msglocal_original_u(ConstructorMensaje construye) noexcept;

// The accessor of internal-error reports: the same text.
inline const wchar_t* nousar_original_u(ConstructorMensaje construye) noexcept {
    return nousar_msglocal_original_u(construye);
}

// Language slot of a display language as Windows numbers it; English where the catalogue has none for it.
unsigned long i_ranura_de_idioma(unsigned short langid) noexcept;

// The display languages (LANGID) in which the system is asked for a text of its own that goes with messages of a slot:
// the slot's, and its nearest relative or 0. A slot that has no language speaks that of its fallback.
struct idiomas_de_ranura {
    unsigned short primero;
    unsigned short segundo;
};
idiomas_de_ranura i_idiomas_de_ranura(unsigned long ranura) noexcept;

}  // namespace interno
