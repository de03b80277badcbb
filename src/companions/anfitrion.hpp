// Calls into the host: receivers, callbacks, comparisons. A host written in C++ may throw from them; an
// exception must not cross the library's C interface, so it ends here and counts as the answer "no".
// Checked by tests/companions/error_interno_test.cpp.
#pragma once

#include <type_traits>

namespace lumodir {

template <class Funcion, class... Argumentos>
auto llama_al_anfitrion(Funcion funcion, Argumentos... argumentos) noexcept {
    using resultado = decltype(funcion(argumentos...));
    try {
        return funcion(argumentos...);
    } catch (...) {
        return resultado();
    }
}

}  // namespace lumodir
