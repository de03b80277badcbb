// The message library: which language texts are shown in, how a text is taken out of a message record, and the system's
// own texts that go with it.
//
// Promises: the text has no id prefix and is never freed; a language set by the host stays until the next one.
// Checked by tests/companions/msglocal_test.cpp.
#pragma once

#include <cstdint>

#include "companions/cadena.hpp"
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
unsigned long i_ranura_de_idioma(std::uint16_t langid) noexcept;

// The system's text for an error code, in the language of the messages where the system has it, else in the system's
// own, without its line break; the number itself when it has none.
cadena_w strgetlasterror_texto_cod_error(unsigned long codigo);

}  // namespace interno
