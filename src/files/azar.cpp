// See azar.hpp.
#include "files/azar.hpp"

#include "companions/sistema.hpp"

namespace lumodir {
namespace {

// The counter's low bits differ between any two calls; the multiplier (of a linear congruential generator) and
// the shift bring them to bear on the bits that are used.
unsigned i_al_azar() noexcept {
    LARGE_INTEGER contador;
    ::QueryPerformanceCounter(&contador);
    const auto semilla = static_cast<unsigned long long>(contador.QuadPart) ^
                         static_cast<unsigned long long>(::GetCurrentProcessId()) << 32;
    return static_cast<unsigned>(semilla * 6364136223846793005ull >> 40);
}

}  // namespace

unsigned (*numero_al_azar)() noexcept = i_al_azar;

}  // namespace lumodir
