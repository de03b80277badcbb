// Where the characters of 8-bit text begin. In the double-byte code pages of Chinese, Japanese and Korean the second
// byte of a character may be that of a separator or of a bar; text is read as the system's conversion reads it.
//
// Promises: two bytes are one character only if the code page holds the pair; a byte that could begin one and does
// not is a character by itself. The system is asked once a process which bytes begin pairs, and once for each of those
// which pairs it begins; where every character is one byte, once what each byte means. Safe in any thread.
// Cannot promise: a character that a cut has halved.
// Checked by tests/companions/caracteres_test.cpp against the system's own conversion, in every code page.
#pragma once

#include "companions/texto.hpp"

namespace interno {

// How the code page of 8-bit text writes its characters.
enum class escritura : unsigned char {
    de_un_byte,    // each of one byte
    de_dos_bytes,  // some of two
    utf8           // of up to four; no byte of a longer one is ASCII
};
escritura i_escritura() noexcept;

// Whether the text may hold characters of several bytes.
bool i_puede_tener_caracteres_largos(vista_a texto) noexcept;

// Copies text so that each byte of ASCII in it is a character of ASCII: the second byte of any other becomes a letter, and
// nothing else changes.
void i_copia_sin_segundos(vista_a texto, char* destino) noexcept;

// Converts text of a code page of one byte a character, unit by unit from a table; false in other code pages.
bool i_convierte_de_un_byte(vista_a texto, wchar_t* destino) noexcept;

// One character after another: `f(character)` with all its bytes.
template <class F>
void por_caracteres(vista_a texto, F f) {
    while (!texto.empty()) {
        const std::size_t bytes = unidades_del_primero(texto);
        f(texto.substr(0, bytes));
        texto.remove_prefix(bytes);
    }
}

}  // namespace interno
