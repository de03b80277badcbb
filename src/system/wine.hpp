// Whether the process runs under Wine. Checked by tests/system/wine_win32_test.cpp.
#pragma once

namespace interno {

// The registry is asked once and the answer kept.
bool i_estamos_en_wine() noexcept;
// Tests only: the next question asks again.
void i_olvida_si_estamos_en_wine() noexcept;

}  // namespace interno
