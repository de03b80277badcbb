// An export called with the texts of the tests: each of them goes in as the flavour of the export has it, everything else
// as it is; "(NULL)" is NULL. What gives no answer gives `no_contesta`.
//
//     llama(cdir_borra_fichero, ruta)
//     llama(cdir_crea_directorios_UNICODE, ruta, 1)
#pragma once

#include <optional>

#include "apoyo/apoyo.hpp"

namespace apoyo {

template <class P>
struct en_su_sabor {
    template <class A>
    explicit en_su_sabor(A argumento) : valor(static_cast<P>(argumento)) {}
    P valor;
    P get() const { return valor; }
};
template <>
struct en_su_sabor<const wchar_t*> {
    explicit en_su_sabor(const std::string& utf8) {
        if (utf8 != "(NULL)") {
            texto = w(utf8);
        }
    }
    explicit en_su_sabor(std::nullptr_t) {}
    std::optional<texto_w> texto;
    const wchar_t* get() const { return texto ? texto->c_str() : nullptr; }
};
template <>
struct en_su_sabor<const char*> {
    explicit en_su_sabor(const std::string& utf8) {
        if (utf8 != "(NULL)") {
            texto = cp1252(utf8);
        }
    }
    explicit en_su_sabor(std::nullptr_t) {}
    std::optional<texto_a> texto;
    const char* get() const { return texto ? texto->c_str() : nullptr; }
};

template <class R, class... P, class... A>
unsigned short llama(R (*exportada)(P...), const A&... argumentos) {
    if constexpr (std::is_void_v<R>) {
        exportada(en_su_sabor<P>(argumentos).get()...);
        return no_contesta;
    } else {
        return exportada(en_su_sabor<P>(argumentos).get()...);
    }
}

// What an export answers that refuses its arguments, which it has reported so.
inline void se_niega(unsigned short respuesta, const std::vector<std::string>& informes) {
    EXPECT_TRUE(respuesta == 0 || respuesta == no_contesta) << respuesta;
    EXPECT_EQ(toma_expresiones(), informes);
}

}  // namespace apoyo
