// What the rules on paths ask for of a text, noted in one pass: a bit for each unit that is a separator, a point, a blank
// or something that no name may hold. The rules judge from the notes (path_correcto.cpp), so there is one copy of them,
// for UTF-16 and for 8-bit text of one byte a character, and none for the usual path.
//
// Sixteen units at a time where the processor has SSE2, as every x86-64 has; the plain loop beside it is the model that
// tests compare it with, and what other processors use.
// Promises: no unit outside the text is read; no allocation.
// Checked by tests/paths/notas_test.cpp: every unit at every place of texts of every length, by both ways.
#pragma once

#include "companions/bloques.hpp"
#include "companions/texto.hpp"

namespace interno {

using bits = std::uint64_t;

// Up to 64 units, the first in the lowest bit.
struct notas_de_64 {
    bits separador;  // \ and /
    bits punto;
    bits blanco;
    bits raro;  // control characters, and : * " ? < > |
    bits alto;  // in 8-bit text: what is not ASCII
};

constexpr notas_de_64 operator|(const notas_de_64& a, const notas_de_64& b) noexcept {
    return {a.separador | b.separador, a.punto | b.punto, a.blanco | b.blanco, a.raro | b.raro,
            a.alto | b.alto};
}
// Notes of units that stand further on; those of the first `fuera` are left out.
constexpr notas_de_64 i_en_su_lugar(const notas_de_64& n, unsigned fuera, unsigned lugar) noexcept {
    return {n.separador >> fuera << lugar, n.punto >> fuera << lugar, n.blanco >> fuera << lugar,
            n.raro >> fuera << lugar, n.alto >> fuera << lugar};
}

// The plain way.
template <class C>
constexpr notas_de_64 i_notas_llanas(vista<C> texto) noexcept {
    notas_de_64 todas{};
    for (std::size_t i = 0; i < texto.size(); ++i) {
        const auto c =
            static_cast<std::make_unsigned_t<std::conditional_t<sizeof(C) == 1, char, short>>>(texto[i]);
        const bits unidad = bits{1} << i;
        todas.separador |= c == '\\' || c == '/' ? unidad : 0;
        todas.punto |= c == '.' ? unidad : 0;
        todas.blanco |= c == ' ' ? unidad : 0;
        todas.raro |=
            c < ' ' || c == ':' || c == '*' || c == '"' || c == '?' || c == '<' || c == '>' || c == '|'
                ? unidad
                : 0;
        todas.alto |= sizeof(C) == 1 && c >= 0x80 ? unidad : 0;
    }
    return todas;
}

#ifdef LUMODIR_SSE2

// Sixteen units as bytes: those above 0xFF, which mean nothing to the rules, as 0xFF.
inline __m128i i_dieciseis(const char* p) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}
inline __m128i i_dieciseis(const wchar_t* p) noexcept {
    const __m128i tope = _mm_set1_epi16(0xFF);
    const auto acotado = [tope](__m128i unidades) {
        return _mm_sub_epi16(unidades, _mm_subs_epu16(unidades, tope));
    };
    const __m128i primeras = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const __m128i segundas = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 8));
    return _mm_packus_epi16(acotado(primeras), acotado(segundas));
}

inline bits i_donde(__m128i iguales) noexcept {
    return static_cast<unsigned>(_mm_movemask_epi8(iguales));
}

inline notas_de_64 i_notas_de_bytes(__m128i c, bool con_altos) noexcept {
    const auto es = [c](char cual) { return _mm_cmpeq_epi8(c, _mm_set1_epi8(cual)); };
    // Two characters that differ in one bit are told in one comparison.
    const auto es_salvo = [c](char cual, int bit) {
        return _mm_cmpeq_epi8(_mm_and_si128(c, _mm_set1_epi8(static_cast<char>(~bit))), _mm_set1_epi8(cual));
    };
    const __m128i de_control = _mm_cmpeq_epi8(_mm_min_epu8(c, _mm_set1_epi8(0x1F)), c);
    const __m128i con_comillas = es_salvo('"', 0x08);  // " and *
    const __m128i con_menor = es_salvo('<', 0x40);     // < and |
    const __m128i con_mayor = es_salvo('>', 0x01);     // > and ?
    const __m128i raro = _mm_or_si128(_mm_or_si128(_mm_or_si128(de_control, con_comillas), es(':')),
                                      _mm_or_si128(con_menor, con_mayor));
    return {i_donde(_mm_or_si128(es('\\'), es('/'))), i_donde(es('.')), i_donde(es(' ')), i_donde(raro),
            con_altos ? i_donde(c) : 0};
}
template <class C>
notas_de_64 i_notas_de_dieciseis(const C* p) noexcept {
    return i_notas_de_bytes(i_dieciseis(p), sizeof(C) == 1);
}

// Units of a text from `desde` on. A block that is not whole is read with units that stand before it.
template <class C>
notas_de_64 i_notas_rapidas(vista<C> texto, std::size_t desde) noexcept {
    const C* const p = texto.data() + desde;
    const std::size_t quedan = texto.size() - desde;
    if (quedan >= 64) {
        return i_en_su_lugar(i_notas_de_dieciseis(p), 0, 0) |
               i_en_su_lugar(i_notas_de_dieciseis(p + 16), 0, 16) |
               i_en_su_lugar(i_notas_de_dieciseis(p + 32), 0, 32) |
               i_en_su_lugar(i_notas_de_dieciseis(p + 48), 0, 48);
    }
    notas_de_64 todas{};
    const auto num = static_cast<unsigned>(quedan);
    for (unsigned i = 0; i + 16 <= num; i += 16) {
        todas = todas | i_en_su_lugar(i_notas_de_dieciseis(p + i), 0, i);
    }
    if (num % 16 == 0) {
        return todas;
    }
    if (num >= 16) {
        return todas | i_en_su_lugar(i_notas_de_dieciseis(p + num - 16), 0, num - 16);
    }
    if (texto.size() >= 16) {
        return i_en_su_lugar(i_notas_de_dieciseis(p + num - 16), 16 - num, 0);
    }
    C corto[16];
    for (unsigned k = 0; k < 16; ++k) {
        corto[k] = k < num ? p[k] : C('a');
    }
    return i_notas_de_dieciseis(corto);
}

#endif

// What lies behind a text counts as a separator, for it ends a component.
inline constexpr notas_de_64 notas_de_fuera{~bits{0}, 0, 0, 0, 0};

// The notes of a text, 64 units at a time from its beginning on.
template <class C>
class notas_de_vista {
public:
    explicit notas_de_vista(vista<C> texto) noexcept : texto_(texto) {}

    vista<C> texto() const noexcept { return texto_; }
    notas_de_64 operator()(std::size_t desde) const noexcept {
        if (desde >= texto_.size()) {
            return notas_de_fuera;
        }
#ifdef LUMODIR_SSE2
        notas_de_64 n = i_notas_rapidas(texto_, desde);
#else
        notas_de_64 n = i_notas_llanas(texto_.substr(desde, 64));
#endif
        if (texto_.size() - desde < 64) {
            n.separador |= ~bits{0} << (texto_.size() - desde);
        }
        return n;
    }

private:
    vista<C> texto_;
};

}  // namespace interno
