// The bridge that every 8-bit twin of a wide function crosses: 8-bit texts become UTF-16 for the time of the
// call, a text result becomes a new 8-bit string, everything else goes through as it is.
//
//     unsigned short cdir_path_valido(const char* path, unsigned short mostrar) {
//         return puente<cdir_path_valido_UNICODE>(path, mostrar);
//     }
//
// Promises: NULL reaches the wide function as NULL, whose own reports name it; nothing is converted twice; the
// wide result is freed.
// Cannot promise: out-parameters that are texts: a twin that has some converts them itself.
// Checked by tests/frame/puente_test.cpp and by every test that runs both flavours.
#pragma once

#include "companions/unicode.hpp"

namespace interno {

template <class A>
struct paso {
    A valor;
    explicit paso(A argumento) noexcept : valor(argumento) {}
    A get() const noexcept { return valor; }
};
template <>
struct paso<const char*> {
    utf16_temporal valor;
    explicit paso(const char* argumento) : valor(argumento) {}
    const wchar_t* get() const noexcept { return valor.c_str(); }
};

// The function may be given as a value of any callable type whose call is known at compile time.
template <auto Ancha, class... A>
auto puente(A... argumentos) noexcept {
    using resultado = decltype(Ancha(paso<A>(argumentos).get()...));
    if constexpr (std::is_same_v<resultado, wchar_t*>) {
        const cadena_w ancha = cadena_w::adopta(Ancha(paso<A>(argumentos).get()...));
        return utunicode_UNICODE_a_ANSI(ancha.c_str()).suelta();
    } else {
        return Ancha(paso<A>(argumentos).get()...);
    }
}

}  // namespace interno
