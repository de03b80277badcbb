// See texto.hpp.
#include "companions/texto.hpp"

#include <bit>

#include "companions/bloques.hpp"

namespace interno {
namespace {

// Near the end of a page, and where there is no SSE2, unit by unit.
template <class C>
std::size_t i_longitud_de(const C* texto) noexcept {
    const C* p = texto;
    for (;;) {
#ifdef LUMODIR_SSE2
        if (es_de_una_pagina(p)) {
            const bits fines =
                bloque(p).que_cumplen([](__m128i c) { return _mm_cmpeq_epi8(c, _mm_setzero_si128()); });
            if (fines != 0) {
                return static_cast<std::size_t>(p - texto) + static_cast<unsigned>(std::countr_zero(fines));
            }
            p += unidades_de_bloque;
            continue;
        }
#endif
        for (std::size_t i = 0; i < unidades_de_bloque; ++i, ++p) {
            if (*p == C(0)) {
                return static_cast<std::size_t>(p - texto);
            }
        }
    }
}

// The first so many bytes and the last so many, which together are all of them.
template <std::size_t Tamanyo>
void i_copia_los_extremos(char* destino, const char* origen, std::size_t bytes) noexcept {
    std::memcpy(destino, origen, Tamanyo);
    std::memcpy(destino + bytes - Tamanyo, origen + bytes - Tamanyo, Tamanyo);
}

}  // namespace

void i_copia_bytes(void* destino, const void* origen, std::size_t bytes) noexcept {
    char* const d = static_cast<char*>(destino);
    const char* const o = static_cast<const char*>(origen);
    if (bytes > 128) {
        std::memcpy(d, o, bytes);
    } else if (bytes >= 64) {
        i_copia_los_extremos<64>(d, o, bytes);
    } else if (bytes >= 32) {
        i_copia_los_extremos<32>(d, o, bytes);
    } else if (bytes >= 16) {
        i_copia_los_extremos<16>(d, o, bytes);
    } else if (bytes >= 8) {
        i_copia_los_extremos<8>(d, o, bytes);
    } else if (bytes >= 4) {
        i_copia_los_extremos<4>(d, o, bytes);
    } else if (bytes >= 2) {
        i_copia_los_extremos<2>(d, o, bytes);
    } else if (bytes == 1) {
        *d = *o;
    }
}

std::size_t i_longitud(const wchar_t* texto) noexcept {
    return i_longitud_de(texto);
}
std::size_t i_longitud(const char* texto) noexcept {
    return i_longitud_de(texto);
}

}  // namespace interno
