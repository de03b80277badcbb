// What the text code needs from the system it runs on, and nothing else: the one door between frame, paths and
// text companions on one side and Windows on the other. The native build for sanitizers and fuzzers puts
// another implementation behind it (tests/nativo/plataforma_nativa.cpp).
//
// Promises: no function allocates for its caller except where it returns a `cadena`.
// Checked by tests/companions/unicode_test.cpp and tests/companions/plataforma_win32_test.cpp.
#pragma once

#include "companions/cadena.hpp"

namespace interno::plataforma {

// Converts 8-bit text of the active code page to UTF-16: writes at most `sitio` units and returns how many the
// whole text needs. Invalid bytes become U+FFFD.
std::size_t ansi_a_utf16(vista_a texto, wchar_t* destino, std::size_t sitio) noexcept;

// Converts UTF-16 to the active code page, likewise. What the code page lacks becomes its default character;
// look-alikes are never taken.
std::size_t utf16_a_ansi(vista_w texto, char* destino, std::size_t sitio) noexcept;

// The code page of 8-bit text: the active one (0). Tests put another one here to see what a single-byte code page
// cannot show.
extern unsigned pagina_de_codigos;

// How the code page writes its characters: in UTF-8; or some of two bytes, the first of which is an initial one. What
// these answer is asked once (companions/caracteres.hpp).
bool es_utf8() noexcept;
bool bytes_iniciales(bool (&iniciales)[256]) noexcept;  // sets its own; false when there are none
// Whether the code page holds these two bytes, the first an initial one, as one character.
bool es_caracter_doble(char primero, char segundo) noexcept;

// Lower and upper case of 8-bit text by the active code page, in place, whatever the locale. A character
// whose counterpart takes another number of bytes stays.
void minusculas_ansi(char* texto, std::size_t longitud) noexcept;
void mayusculas_ansi(char* texto, std::size_t longitud) noexcept;

// The value of an environment variable as the process has it now, whichever C runtime has set it; a NULL string when it
// is not set.
cadena_w variable_de_entorno(const wchar_t* nombre);

// One line for whoever watches a program that has no receiver of its own.
void escribe_error_estandar(vista_w linea) noexcept;
void escribe_depurador(const wchar_t* linea) noexcept;

// Primary language and sublanguage of the user's display language, as Windows numbers them (LANGID).
std::uint16_t idioma_del_usuario() noexcept;

// The system's text for an error code in a language (LANGID, 0 for the system's own), without its line break; a NULL
// string when it has none.
cadena_w texto_de_codigo(unsigned long codigo, std::uint16_t idioma);

// Calls a function of the host's so that an exception of a foreign runtime ends here; one of this compiler's own goes on
// to the caller (companions/anfitrion.hpp).
void llama_tras_barrera(void (*funcion)(void*), void* argumento);

// Pauses, and the end of the process at once, the only answer to exhausted memory: entries of the platform's table, which
// tests replace so that they neither wait nor end.
extern void (*&duerme_ms)(unsigned long milisegundos);
extern void (*&termina_proceso)();

}  // namespace interno::plataforma
