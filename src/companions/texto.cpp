// The length of a text, and the formatter behind every message: see texto.hpp and cadena.hpp for what they promise.
// Checked by tests/companions/texto_test.cpp and cadena_test.cpp.
#include <bit>

#include "companions/bloques.hpp"
#include "companions/cadena.hpp"

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
                bloque(p).donde([](__m128i c) { return _mm_cmpeq_epi8(c, _mm_setzero_si128()); });
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

// Length of the placeholder at the start of `formato` (which begins with %); 0 when it is none.
template <class C>
std::size_t i_longitud_marcador(vista<C> formato) noexcept {
    const std::size_t letra = formato.size() > 1 && formato[1] == C('l') ? 2 : 1;
    if (letra >= formato.size()) {
        return 0;
    }
    const C c = formato[letra];
    const bool numero = c == C('d') || c == C('u');
    return numero || (c == C('s') && letra == 1) ? letra + 1 : 0;
}

// Calls `emite` with each piece of the result, in order.
template <class C, class Emite>
void i_recorre_formato(vista<C> formato, const argumento<C>* argumentos, std::size_t num, Emite emite) {
    std::size_t siguiente = 0;
    while (!formato.empty()) {
        const std::size_t marca = formato.find(C('%'));
        if (marca == vista<C>::npos) {
            emite(formato);
            return;
        }
        emite(formato.substr(0, marca));
        formato.remove_prefix(marca);
        const std::size_t largo = i_longitud_marcador(formato);
        if (largo > 0 && siguiente < num) {
            emite(argumentos[siguiente++].ver());
            formato.remove_prefix(largo);
        } else {
            emite(formato.substr(0, 1));
            const bool doble = formato.size() > 1 && formato[1] == C('%');
            formato.remove_prefix(doble ? 2 : 1);
        }
    }
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

template <class C>
cadena<C> i_formatea(vista<C> formato, const argumento<C>* argumentos, std::size_t num, lugar donde) {
    std::size_t longitud = 0;
    i_recorre_formato(formato, argumentos, num, [&](vista<C> trozo) { longitud += trozo.size(); });
    cadena<C> resultado = cadena<C>::con_sitio(longitud, donde);
    C* p = resultado.datos();
    i_recorre_formato(formato, argumentos, num, [&](vista<C> trozo) {
        rasgos<C>::copy(p, trozo.data(), trozo.size());
        p += trozo.size();
    });
    return resultado;
}

template cadena<char> i_formatea(vista<char>, const argumento<char>*, std::size_t, lugar);
template cadena<wchar_t> i_formatea(vista<wchar_t>, const argumento<wchar_t>*, std::size_t, lugar);

}  // namespace interno
