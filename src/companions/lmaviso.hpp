// Warnings to the user, through the receiver that the host plugged in.
// Promises: the text is valid only during the call; no exception of the receiver comes back.
// Checked by tests/companions/lmaviso_test.cpp.
#pragma once

#include "companions/lmaviso.h"

namespace interno {

void i_establece_receptor(LmavisoReceptor receptor, void* contexto) noexcept;

void lmaviso_aviso_interno_como_error_u(const wchar_t* texto) noexcept;

}  // namespace interno
