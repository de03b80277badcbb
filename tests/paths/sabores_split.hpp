// Both flavours of the entries that cut and compose, to be called alike: texts go in and come out as UTF-8.
#pragma once

#include "apoyo/apoyo.hpp"
#include "modelos/entradas_corte.hpp"
#include "paths/modelos.hpp"

namespace sabores {

using trozos = modelos::piezas<std::string>;

template <class C>
using entrada_corte = void (*)(const C*, C**, C**, C**, C**);
template <class C>
using entrada_compone = C* (*)(const C*, const C*, const C*, const C*);

template <class C>
struct sabor;
template <>
struct sabor<wchar_t> : modelos::entradas_corte<wchar_t> {
    static apoyo::texto_w de(std::string_view utf8) { return apoyo::w(utf8); }
};
template <>
struct sabor<char> : modelos::entradas_corte<char> {
    static apoyo::texto_a de(std::string_view utf8) { return apoyo::cp1252(utf8); }
};

// Cuts a path (NULL too) into the wanted pieces, by the bits of the piece mask; "-" stands for the others.
template <class C>
trozos corta(entrada_corte<C> entrada, const char* path, unsigned deseadas = 15) {
    const auto texto = sabor<C>::de(path == nullptr ? "" : path);
    C* piezas[4] = {};
    const auto sitio = [&](unsigned i) { return (deseadas >> i & 1u) != 0 ? &piezas[i] : nullptr; };
    entrada(path == nullptr ? nullptr : texto.c_str(), sitio(0), sitio(1), sitio(2), sitio(3));
    const auto toma = [&](unsigned i) {
        return (deseadas >> i & 1u) != 0 ? apoyo::toma(piezas[i]) : std::string("-");
    };
    return {toma(0), toma(1), toma(2), toma(3)};
}

// A piece of a path to compose; NULL is one that is not given.
template <class C>
class dada {
public:
    explicit dada(const char* utf8)
        : texto_(sabor<C>::de(utf8 == nullptr ? "" : utf8)), es_null_(utf8 == nullptr) {}
    const C* c_str() const { return es_null_ ? nullptr : texto_.c_str(); }

private:
    decltype(sabor<C>::de("")) texto_;
    bool es_null_;
};

template <class C>
std::string compone(entrada_compone<C> entrada, const char* unidad, const char* directorio,
                    const char* nombre, const char* extension) {
    return apoyo::toma(entrada(dada<C>(unidad).c_str(), dada<C>(directorio).c_str(), dada<C>(nombre).c_str(),
                               dada<C>(extension).c_str()));
}

// Expects these reports, each as "expression" or "expression [detail]".
inline void espera_informes(const std::vector<std::string>& esperados) {
    std::vector<std::string> vistos;
    for (const apoyo::informe& i : apoyo::toma_informes()) {
        EXPECT_EQ(i.etiqueta, "lumodir (LUMODIR.DLL)");
        vistos.push_back(i.detalle == "(NULL)" ? i.expresion : i.expresion + " [" + i.detalle + "]");
    }
    EXPECT_EQ(vistos, esperados);
}

}  // namespace sabores
