// See caracteres.hpp.
#include "companions/caracteres.hpp"

#include <atomic>
#include <bit>
#include <cstring>

#include "companions/plataforma.hpp"

namespace interno {
namespace {

constexpr unsigned ninguna = ~0u;  // no code page

// What the system has told of the code page. Threads that come first at once all ask and write the same.
struct lo_preguntado {
    std::atomic<unsigned> pagina{ninguna};
    std::atomic<escritura> como{escritura::de_un_byte};
    struct fila {
        std::atomic<bool> es_inicial;
        std::atomic<bool> se_conoce;
        std::atomic<std::uint64_t> segundos[4] = {};  // bit n of the 256: this byte and n are one character
    };
    fila filas[128];                          // by the first byte, from 0x80 on
    std::atomic<wchar_t> unidades[128] = {};  // where each is a character, what it means
};
lo_preguntado preguntado;

// The code page is that of the process, for as long as it lives; only tests change it.
void i_pregunta_pagina() noexcept {
    const unsigned pagina = plataforma::pagina_de_codigos;
    bool iniciales[256] = {};
    const bool dobles = plataforma::bytes_iniciales(iniciales);
    for (unsigned i = 0; i < 128; ++i) {
        preguntado.filas[i].es_inicial.store(iniciales[0x80 + i], std::memory_order_relaxed);
        preguntado.filas[i].se_conoce.store(false, std::memory_order_relaxed);
    }
    for (unsigned i = 0; i < 128 && !dobles; ++i) {
        const char byte = static_cast<char>(0x80 + i);
        wchar_t significa = 0;
        plataforma::ansi_a_utf16(vista_a(&byte, 1), &significa, 1);
        preguntado.unidades[i].store(significa, std::memory_order_relaxed);
    }
    preguntado.como.store(dobles                  ? escritura::de_dos_bytes
                          : plataforma::es_utf8() ? escritura::utf8
                                                  : escritura::de_un_byte,
                          std::memory_order_relaxed);
    preguntado.pagina.store(pagina, std::memory_order_release);
}

lo_preguntado::fila& i_fila(unsigned char primero) noexcept {
    return preguntado.filas[primero - 0x80];
}

void i_pregunta_fila(unsigned char primero) noexcept {
    lo_preguntado::fila& fila = i_fila(primero);
    for (unsigned i = 0; i < 4; ++i) {
        std::uint64_t bits = 0;
        for (unsigned k = 0; k < 64; ++k) {
            const bool hay =
                plataforma::es_caracter_doble(static_cast<char>(primero), static_cast<char>(64 * i + k));
            bits |= static_cast<std::uint64_t>(hay) << k;
        }
        fila.segundos[i].store(bits, std::memory_order_relaxed);
    }
    fila.se_conoce.store(true, std::memory_order_release);
}

bool i_es_inicial(char c) noexcept {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 && i_fila(byte).es_inicial.load(std::memory_order_relaxed);
}

// Two bytes, the first of which may begin a pair.
bool i_son_uno(char primero, char segundo) noexcept {
    const lo_preguntado::fila& fila = i_fila(static_cast<unsigned char>(primero));
    if (!fila.se_conoce.load(std::memory_order_acquire)) {
        i_pregunta_fila(static_cast<unsigned char>(primero));
    }
    const auto byte = static_cast<unsigned char>(segundo);
    return (fila.segundos[byte / 64].load(std::memory_order_relaxed) >> byte % 64 & 1) != 0;
}

bool i_es_alto(char c) noexcept {
    return static_cast<unsigned char>(c) >= 0x80;
}

// The place of the first byte from `i` on that is not ASCII, or the end of the text.
std::size_t i_hasta_alto(vista_a texto, std::size_t i) noexcept {
    static_assert(std::endian::native == std::endian::little);
    for (std::uint64_t ocho = 0; i + sizeof ocho <= texto.size(); i += sizeof ocho) {
        std::memcpy(&ocho, texto.data() + i, sizeof ocho);
        if (const std::uint64_t altos = ocho & 0x8080808080808080u; altos != 0) {
            return i + static_cast<unsigned>(std::countr_zero(altos)) / 8;
        }
    }
    while (i < texto.size() && !i_es_alto(texto[i])) {
        ++i;
    }
    return i;
}

// How many bytes a well-formed character takes that a text begins with, 1 for what is none.
std::size_t i_bytes_utf8(vista_a texto) noexcept {
    const auto byte = [&](std::size_t i) -> unsigned {
        return i < texto.size() ? static_cast<unsigned char>(texto[i]) : 0u;
    };
    const unsigned primero = byte(0);
    const std::size_t bytes = primero < 0xC2   ? 1
                              : primero < 0xE0 ? 2
                              : primero < 0xF0 ? 3
                              : primero < 0xF5 ? 4
                                               : 1;
    for (std::size_t i = 1; i < bytes; ++i) {
        if ((byte(i) & 0xC0) != 0x80) {
            return 1;
        }
    }
    // Longer than need be, a half of a pair, past the last of all.
    const bool es_de_sobra = (primero == 0xE0 && byte(1) < 0xA0) || (primero == 0xED && byte(1) > 0x9F) ||
                             (primero == 0xF0 && byte(1) < 0x90) || (primero == 0xF4 && byte(1) > 0x8F);
    return es_de_sobra ? 1 : bytes;
}

}  // namespace

escritura i_escritura() noexcept {
    if (preguntado.pagina.load(std::memory_order_acquire) != plataforma::pagina_de_codigos) {
        i_pregunta_pagina();
    }
    return preguntado.como.load(std::memory_order_relaxed);
}

std::size_t i_bytes_de_caracter(vista_a texto) noexcept {
    switch (i_escritura()) {
        case escritura::de_dos_bytes:
            return texto.size() > 1 && i_es_inicial(texto[0]) && i_son_uno(texto[0], texto[1]) ? 2 : 1;
        case escritura::utf8:
            return i_bytes_utf8(texto);
        default:
            return 1;
    }
}

bool i_empieza_caracter(vista_a texto, std::size_t posicion) noexcept {
    if (i_escritura() != escritura::de_dos_bytes) {
        return true;
    }
    // Behind a byte that begins no pair a character begins, whatever stands before.
    std::size_t i = posicion;
    while (i > 0 && i_es_inicial(texto[i - 1])) {
        --i;
    }
    while (i < posicion) {
        i += i + 1 < texto.size() && i_son_uno(texto[i], texto[i + 1]) ? 2 : 1;
    }
    return i == posicion;
}

bool i_convierte_de_un_byte(vista_a texto, wchar_t* destino) noexcept {
    if (i_escritura() != escritura::de_un_byte) {
        return false;
    }
    for (const char c : texto) {
        const auto byte = static_cast<unsigned char>(c);
        *destino++ = byte < 0x80 ? static_cast<wchar_t>(byte)
                                 : preguntado.unidades[byte - 0x80].load(std::memory_order_relaxed);
    }
    return true;
}

bool i_puede_tener_caracteres_largos(vista_a texto) noexcept {
    return i_escritura() != escritura::de_un_byte && i_hasta_alto(texto, 0) < texto.size();
}

void i_copia_sin_segundos(vista_a texto, char* destino) noexcept {
    copia_unidades(destino, texto.data(), texto.size());
    if (i_escritura() != escritura::de_dos_bytes) {
        return;
    }
    for (std::size_t i = i_hasta_alto(texto, 0); i < texto.size(); i = i_hasta_alto(texto, i)) {
        do {
            if (i + 1 < texto.size() && i_es_inicial(texto[i]) && i_son_uno(texto[i], texto[i + 1])) {
                destino[++i] = 'x';
            }
            ++i;
        } while (i < texto.size() && i_es_alto(texto[i]));
    }
}

}  // namespace interno
