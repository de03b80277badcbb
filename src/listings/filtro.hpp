// The directory enumerator's own filter: which names pass when the system's search does not answer a pattern.
// Pure text, so that it can be tested against a model, and fuzzed, away from Windows.
//
// Promises: no allocation for what a file system takes for a name, no recursion, one look at each character. In 8-bit
// text "?" is one character, whatever its bytes.
// Cannot promise: what the system's own wildcards do. The rules are looser on purpose (a filter without a dot
// ignores the name's extension) and the two flavours differ: see `i_cola_comparada`.
// Checked by tests/listings/filtro_test.cpp against a naive model over all short names and filters, and by fuzzing.
#pragma once

#include <algorithm>

#include "companions/caracteres.hpp"
#include "companions/plataforma.hpp"

namespace interno {

// Texts of the same length, unit by unit.
template <class C>
constexpr bool i_casan_todos(vista<C> texto, vista<C> patron) noexcept {
    return std::equal(texto.begin(), texto.end(), patron.begin(),
                      [](C uno, C pedido) { return pedido == C('?') || uno == pedido; });
}

// What is compared of the text after the `*`. The wide flavour has always skipped its first unit, so that
// `*abc` finds what ends in `bc` and `*x` finds everything; programs rely on it.
template <class C>
constexpr vista<C> i_cola_comparada(vista<C> tras_asterisco) noexcept {
    return es_ancho<C> && !tras_asterisco.empty() ? tras_asterisco.substr(1) : tras_asterisco;
}

// One piece (base name or extension). Only the first `*` is a wildcard.
template <class C>
constexpr bool i_cumple_pieza(vista<C> texto, vista<C> patron) noexcept {
    const std::size_t asterisco = patron.find(C('*'));
    if (asterisco == vista<C>::npos) {
        return texto.size() == patron.size() && i_casan_todos(texto, patron);
    }
    const vista<C> principio = patron.substr(0, asterisco);
    const vista<C> cola = i_cola_comparada(patron.substr(asterisco + 1));
    return texto.size() >= principio.size() + cola.size() &&
           i_casan_todos(texto.substr(0, principio.size()), principio) &&
           i_casan_todos(texto.substr(texto.size() - cola.size()), cola);
}

template <class C>
struct nombre_partido {
    vista<C> base;
    vista<C> extension;  // without its dot
};

// Cut at the last dot; a name without one is all base.
template <class C>
constexpr nombre_partido<C> i_parte_nombre(vista<C> nombre) noexcept {
    const std::size_t punto = nombre.rfind(C('.'));
    return {nombre.substr(0, punto), punto == vista<C>::npos ? vista<C>() : nombre.substr(punto + 1)};
}

// The filter, read unit by unit: each unit is one character.
template <class C>
constexpr bool i_cumple_filtro_por_unidades(vista<C> nombre_y_extension,
                                            vista<C> filtro_nombre_y_extension) noexcept {
    const nombre_partido<C> nombre = i_parte_nombre(nombre_y_extension);
    const nombre_partido<C> filtro = i_parte_nombre(filtro_nombre_y_extension);
    return i_cumple_pieza(nombre.base, filtro.base) &&
           (filtro.extension.empty() || i_cumple_pieza(nombre.extension, filtro.extension));
}

// 8-bit text with each of its characters as one unit, made of its bytes.
class caracteres_en_unidades {
public:
    explicit caracteres_en_unidades(vista_a texto) {
        if (texto.size() > sitio_corto) {
            largo_.reserva_sitio(texto.size());
        }
        char32_t* const unidades = texto.size() > sitio_corto ? largo_.data() : corto_;
        std::size_t num = 0;
        por_caracteres(texto, [&](vista_a caracter) {
            char32_t junto = 0;
            for (const char c : caracter) {
                junto = junto << 8 | static_cast<unsigned char>(c);
            }
            unidades[num++] = junto;
        });
        vista_ = {unidades, num};
    }
    caracteres_en_unidades(const caracteres_en_unidades&) = delete;
    caracteres_en_unidades& operator=(const caracteres_en_unidades&) = delete;

    vista<char32_t> ver() const noexcept { return vista_; }

private:
    static constexpr std::size_t sitio_corto = 260;  // bytes: a name that the 8-bit search can give
    char32_t corto_[sitio_corto];
    vector_interno<char32_t> largo_;
    vista<char32_t> vista_;
};

// 8-bit text in lower case for the time of one comparison; file names need no block.
class minusculas_temporales {
public:
    explicit minusculas_temporales(vista_a texto) : longitud_(texto.size()) {
        if (longitud_ > sitio_corto) {
            largo_ = cadena_a::con_sitio(longitud_);
        }
        char* destino = largo_.es_nula() ? corto_ : largo_.datos();
        rasgos<char>::copy(destino, texto.data(), longitud_);
        plataforma::minusculas_ansi(destino, longitud_);
    }
    minusculas_temporales(const minusculas_temporales&) = delete;
    minusculas_temporales& operator=(const minusculas_temporales&) = delete;
    vista_a ver() const noexcept { return {largo_.es_nula() ? corto_ : largo_.c_str(), longitud_}; }

private:
    static constexpr std::size_t sitio_corto = 260;  // bytes
    char corto_[sitio_corto];
    cadena_a largo_;
    std::size_t longitud_;
};

// Letter case counts: the 8-bit flavour hands over both texts in lower case.
template <class C>
bool i_cumple_filtro(vista<C> nombre_y_extension, std::type_identity_t<vista<C>> filtro_nombre_y_extension) {
    if constexpr (!es_ancho<C>) {
        if (i_puede_tener_caracteres_largos(nombre_y_extension) ||
            i_puede_tener_caracteres_largos(filtro_nombre_y_extension)) {
            return i_cumple_filtro_por_unidades(caracteres_en_unidades(nombre_y_extension).ver(),
                                                caracteres_en_unidades(filtro_nombre_y_extension).ver());
        }
    }
    return i_cumple_filtro_por_unidades(nombre_y_extension, filtro_nombre_y_extension);
}

}  // namespace interno
