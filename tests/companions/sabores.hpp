// One body for both flavours of text: the companions are templates over the character type.
#pragma once

#include <string>
#include <type_traits>
#include <vector>

#include "apoyo/apoyo.hpp"

namespace apoyo {

// Runs `cuerpo.operator()<char>()` and `cuerpo.operator()<wchar_t>()`; failures name the flavour.
template <class Cuerpo>
void en_ambos_sabores(Cuerpo cuerpo) {
    {
        SCOPED_TRACE("8-bit");
        cuerpo.template operator()<char>();
    }
    {
        SCOPED_TRACE("UTF-16");
        cuerpo.template operator()<wchar_t>();
    }
}

// A text of the flavour out of UTF-8, and back.
template <class C>
auto txt(std::string_view utf8) {
    if constexpr (std::is_same_v<C, wchar_t>) {
        return w(utf8);
    } else {
        return cp1252(utf8);
    }
}
inline std::string lee(interno::vista_w texto) {
    return u8(texto);
}
inline std::string lee(interno::vista_a texto) {
    return de_cp1252(texto);
}
inline std::string lee(const wchar_t* texto) {
    return u8(texto);
}
inline std::string lee(const char* texto) {
    return texto == nullptr ? "(NULL)" : de_cp1252(texto);
}

// The texts of a list, whose exports `tipo` has under common names.
template <class tipo>
std::vector<std::string> textos_de(const auto* lista) {
    std::vector<std::string> textos;
    for (unsigned long i = 0; i < tipo::num(lista); ++i) {
        textos.push_back(lee(tipo::da(lista, i)));
    }
    return textos;
}

// Every text of up to `maximo` units over the alphabet, the empty one first.
template <class C, class Cuerpo>
void para_cada_texto(std::string_view alfabeto_utf8, std::size_t maximo, Cuerpo cuerpo) {
    const auto alfabeto = txt<C>(alfabeto_utf8);
    decltype(txt<C>("")) texto;
    const auto sigue = [&](auto&& yo) -> void {
        cuerpo(interno::vista<C>(texto));
        if (texto.size() == maximo) {
            return;
        }
        for (const C c : alfabeto) {
            texto.push_back(c);
            yo(yo);
            texto.pop_back();
        }
    };
    sigue(sigue);
}

}  // namespace apoyo
