// What the rules on paths ask about a text, noted in one pass: a bit for each unit that is a separator, a dot, a blank
// or something that no name may hold. The rules judge from the notes (path_correcto.cpp), so there is one copy of them,
// for UTF-16 and for 8-bit text whose bytes of ASCII are characters, and none for the usual path.
//
// A block of 64 units at a time where the processor has SSE2, as every x86-64 has; the plain loop beside it is the model
// that tests compare it with, and what other processors use.
// Promises: no allocation; what is noted of a text does not depend on what stands behind it.
// Checked by tests/paths/notas_test.cpp: every unit at every place of texts of every length, by both ways.
#pragma once

#include <algorithm>

#include "companions/bloques.hpp"
#include "companions/texto.hpp"

namespace interno {

// Up to 64 units, the first in the lowest bit.
struct notas_de_64 {
    bits separador;  // \ and /
    bits punto;
    bits blanco;
    bits raro;  // control characters, and : * " ? < > |
};

// The plain way.
template <class C>
constexpr notas_de_64 i_notas_llanas(vista<C> texto) noexcept {
    notas_de_64 todas{};
    for (std::size_t i = 0; i < texto.size(); ++i) {
        const auto c = static_cast<sin_signo<C>>(texto[i]);
        const bits suya = bits{1} << i;
        todas.separador |= c == '\\' || c == '/' ? suya : 0;
        todas.punto |= c == '.' ? suya : 0;
        todas.blanco |= c == ' ' ? suya : 0;
        todas.raro |=
            c < ' ' || c == ':' || c == '*' || c == '"' || c == '?' || c == '<' || c == '>' || c == '|' ? suya
                                                                                                        : 0;
    }
    return todas;
}

#ifdef LUMODIR_SSE2

inline notas_de_64 i_notas_de_bloque(const bloque& b) noexcept {
    const auto es = [](__m128i c, char cual) { return _mm_cmpeq_epi8(c, _mm_set1_epi8(cual)); };
    // One comparison recognises two characters that differ in one bit.
    const auto es_salvo = [&es](__m128i c, char cual, int bit) {
        return es(_mm_and_si128(c, _mm_set1_epi8(static_cast<char>(~bit))), cual);
    };
    const auto es_raro = [&](__m128i c) {
        const __m128i de_control = _mm_cmpeq_epi8(_mm_min_epu8(c, _mm_set1_epi8(0x1F)), c);
        const __m128i con_comillas = es_salvo(c, '"', 0x08);  // " and *
        const __m128i con_menor = es_salvo(c, '<', 0x40);     // < and |
        const __m128i con_mayor = es_salvo(c, '>', 0x01);     // > and ?
        return _mm_or_si128(_mm_or_si128(_mm_or_si128(de_control, con_comillas), es(c, ':')),
                            _mm_or_si128(con_menor, con_mayor));
    };
    return {b.que_cumplen([&](__m128i c) { return _mm_or_si128(es(c, '\\'), es(c, '/')); }),
            b.que_cumplen([&](__m128i c) { return es(c, '.'); }),
            b.que_cumplen([&](__m128i c) { return es(c, ' '); }), b.que_cumplen(es_raro)};
}

// What stands behind the end of the text does not count; a copy is judged where it cannot be read. Each file that asks has
// its own: asked in one place alone, it is compiled into that place.
template <class C>
static notas_de_64 i_notas_rapidas(vista<C> texto) noexcept {
    const C* p = texto.data();
    C copia[unidades_de_bloque];
    if (texto.size() < unidades_de_bloque && !es_de_una_pagina(p)) {
        std::fill(std::copy(texto.begin(), texto.end(), copia), copia + unidades_de_bloque, C('|'));
        p = copia;
    }
    notas_de_64 n = i_notas_de_bloque(bloque(p));
    const bits dentro = los_primeros(texto.size());
    n.separador &= dentro;
    n.punto &= dentro;
    n.blanco &= dentro;
    n.raro &= dentro;
    return n;
}

#endif

// The notes of the first 64 units of a text, or of all where there are fewer; nothing is noted behind its end.
template <class C>
static notas_de_64 i_notas(vista<C> texto) noexcept {
#ifdef LUMODIR_SSE2
    return i_notas_rapidas(texto);
#else
    return i_notas_llanas(texto.substr(0, unidades_de_bloque));
#endif
}

}  // namespace interno
