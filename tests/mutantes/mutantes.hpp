// What tools/mutantes puts before every source: a number for each change that it has made, one of which is active.
//
// Promises: without LUMODIR_MUTANTE nothing is changed, and what is evaluated while compiling never is.
#pragma once
#ifdef __cplusplus

#include <cstdlib>

namespace mutantes {

inline unsigned i_lee() noexcept {
    const char* const numero = std::getenv("LUMODIR_MUTANTE");
    return numero == nullptr ? 0 : static_cast<unsigned>(std::strtoul(numero, nullptr, 10));
}

inline const unsigned activo = i_lee();
inline unsigned char* alcanzados = nullptr;  // which of them have been met, when somebody wants to know

inline bool es(unsigned numero) noexcept {
    if (alcanzados != nullptr) {
        alcanzados[numero] = 1;
    }
    return numero == activo;
}

// In functions that are also evaluated while compiling.
constexpr bool es_ahora(unsigned numero) noexcept {
    return !__builtin_is_constant_evaluated() && es(numero);
}

}  // namespace mutantes

#endif
