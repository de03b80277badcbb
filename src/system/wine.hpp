// Whether the process runs under Wine. Checked by tests/system/wine_win32_test.cpp.
#pragma once

namespace lumodir {

// Tests only: in the product the registry is asked once and the answer kept.
void i_olvida_si_estamos_en_wine() noexcept;

}  // namespace lumodir
