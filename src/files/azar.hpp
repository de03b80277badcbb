// Random numbers for pauses: unpredictable enough that two processes do not wait in step.
#pragma once

namespace lumodir {

// Replaced in tests.
extern unsigned (*numero_al_azar)() noexcept;

}  // namespace lumodir
