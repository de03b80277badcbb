// Calls into the host: receivers, callbacks, comparisons. A host may let an exception out of them, of whatever language
// and compiler; it must not cross the library's C interface nor lose what the library holds, so it ends here and counts
// as the answer "no".
//
// Promises: what ends here has unwound the host's own functions first. An exception of GCC's is caught as usual; those
// of other languages' runtimes, which GCC's `catch` does not see, end at a barrier of their own (anfitrion_win32.cpp).
// Cannot promise: to destroy the object that an exception of another runtime carries; a fault (an access violation)
// goes on to whoever handles those.
// Checked by tests/companions/error_interno_test.cpp and anfitrion_win32_test.cpp.
#pragma once

#include <type_traits>

#include "companions/plataforma.hpp"

namespace interno {

// What an operation asks on its way, when the host may be the one to answer; empty where nobody does.
template <class R>
struct consulta {
    R (*pregunta)(void* a_quien) = nullptr;
    void* a_quien = nullptr;

    R contesta(R sin_nadie) const { return pregunta == nullptr ? sin_nadie : pregunta(a_quien); }
};

// Whether an exception of Windows' with this code ends at the barrier (anfitrion_win32.cpp).
bool i_acaba_en_la_barrera(unsigned long codigo) noexcept;

template <class Funcion, class... Argumentos>
auto llama_al_anfitrion(Funcion funcion, Argumentos... argumentos) noexcept {
    using resultado = decltype(funcion(argumentos...));
    const auto tras_la_barrera = [](auto& llamada) {
        plataforma::llama_tras_barrera(
            [](void* que) { (*static_cast<std::remove_reference_t<decltype(llamada)>*>(que))(); }, &llamada);
    };
    try {
        if constexpr (std::is_void_v<resultado>) {
            auto llamada = [&] { funcion(argumentos...); };
            tras_la_barrera(llamada);
        } else {
            resultado respuesta{};
            auto llamada = [&] { respuesta = funcion(argumentos...); };
            tras_la_barrera(llamada);
            return respuesta;
        }
    } catch (...) {
        return resultado();
    }
}

}  // namespace interno
