// Text in blocks of 64 units, of which sixteen are looked at a time: SSE2 is part of every x86-64.
//
// Promises: nothing is read beyond the page of memory that a unit of the text stands in.
// Cannot promise: that what is read belongs to the text: who asks leaves out what stands behind its end.
// Checked by tests/companions/texto_test.cpp and tests/paths/notas_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(__SSE2__) || defined(_M_X64)
#define LUMODIR_SSE2 1
#include <emmintrin.h>
#endif

// Sanitizers would take what is read of a block behind the end of a text for an error.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define LUMODIR_UNIDAD_A_UNIDAD 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define LUMODIR_UNIDAD_A_UNIDAD 1
#endif
#endif

namespace interno {

// One for each of 64 units, the first in the lowest bit.
using bits = std::uint64_t;
inline constexpr std::size_t unidades_de_bloque = 64;

// Those of the first so many of 64 units, all where there are more.
constexpr bits los_primeros(std::size_t num) noexcept {
    return num < unidades_de_bloque ? (bits{1} << num) - 1 : ~bits{0};
}

#ifdef LUMODIR_SSE2

// Whether a block that begins here lies in one page: it can be read, however much of it belongs to the text.
template <class C>
bool es_de_una_pagina(const C* p) noexcept {
#ifdef LUMODIR_UNIDAD_A_UNIDAD
    return p == nullptr;
#else
    constexpr std::uintptr_t pagina = 4096;
    return reinterpret_cast<std::uintptr_t>(p) % pagina <= pagina - unidades_de_bloque * sizeof(C);
#endif
}

// A block as bytes. What is not ASCII becomes DEL or a byte that is not ASCII either, a terminator stays one.
class bloque {
public:
    template <class C>
    explicit bloque(const C* p) noexcept
        : partes_{i_dieciseis(p), i_dieciseis(p + 16), i_dieciseis(p + 32), i_dieciseis(p + 48)} {}

    // Where the question, asked of sixteen bytes at a time, answers with a byte whose highest bit is set.
    template <class Pregunta>
    bits que_cumplen(Pregunta pregunta) const noexcept {
        const auto parte = [&](int cual) -> bits {
            return static_cast<unsigned>(_mm_movemask_epi8(pregunta(partes_[cual])));
        };
        return (parte(0) | parte(1) << 16) | (parte(2) | parte(3) << 16) << 32;
    }

private:
    static __m128i i_dieciseis(const char* p) noexcept {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    }
    static __m128i i_dieciseis(const wchar_t* p) noexcept {
        return _mm_packs_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)),
                               _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 8)));
    }

    __m128i partes_[4];
};

#endif

}  // namespace interno
