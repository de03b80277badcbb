// The command's own words, in English or in Spanish, whichever suits the language of the library's messages.
//
// A phrase is written in English where it is used; the compiler looks it up in the table of catalogo_de_frases.hpp. A
// phrase without a row there does not compile, nor does a translation that lacks a value.
// Keys and fixed words in JSON are not phrases: they are always English.
// Checked by tests/cli.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "catalogo_de_frases.hpp"

namespace mando {

class frase {
public:
    // NOLINTNEXTLINE(google-explicit-constructor): a literal is a phrase wherever one is wanted.
    consteval frase(const char* ingles) : fila_(i_busca(ingles)) {}
    constexpr frase() = default;

    constexpr std::string_view ingles() const { return catalogo_de_frases[fila_].ingles; }
    constexpr bool vacia() const { return ingles().empty(); }
    std::wstring texto() const;

private:
    static consteval size_t i_busca(std::string_view ingles) {
        for (size_t i = 0; i < std::size(catalogo_de_frases); ++i) {
            if (catalogo_de_frases[i].ingles == ingles) {
                return i;
            }
        }
        throw "the phrase is not in the table of catalogo_de_frases.hpp";
    }

    size_t fila_ = 0;  // the first row is the empty text
};

// The text of a phrase with its values in the places of %1, %2 and so on.
std::wstring i_di(frase que, std::initializer_list<std::wstring_view> valores);

template <typename... V>
std::wstring di(frase que, const V&... valores) {
    return i_di(que, {std::wstring_view(valores)...});
}

// Whether the command speaks Spanish: also where the messages fall back on Spanish, and with Catalan.
bool en_espanyol();

// Whether the library's messages and the command's own words are in the same language. Only then does the command repeat
// in its own words what the library has said.
bool en_la_lengua_de_los_mensajes();

}  // namespace mando
