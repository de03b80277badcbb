// The drives of the system with labels for display, and the drive of the running program.
//
// Promises: one record per drive, in the order of the letters.
// Cannot promise: that the first question for the program's drive may come from two threads at once: it is found out
// then, without a lock.
// Checked by tests/system/unidades_win32_test.cpp.
#pragma once

#include "companions/arr.hpp"
#include "info.h"
#include "lumodir_unidades.h"

namespace interno {

// "X:", with the network path or, if wanted and the drive has one, the volume name in parentheses after it.
cadena_w i_etiqueta_de_unidad(const InfoDisco& disco, bool con_nombre);

// Records of UnidadSistema.
objeto<ArrPunteroConTipo> i_unidades_del_sistema(bool con_nombre);

// Of the running program; kept for good.
const wchar_t* i_disco_de_programa();
// Tests only: the next question finds the program's drive out again.
void i_olvida_disco_de_programa() noexcept;

}  // namespace interno
