// Text of the command: UTF-8 at the borders, widths for display.
//
// Inside the command text is UTF-16, like the library's; a lone surrogate, which file names may hold, is kept
// and becomes U+FFFD only where UTF-8 leaves the program.
// Checked by tests/cli.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "frases.hpp"

namespace mando {

std::string a_utf8(std::wstring_view texto);
std::wstring de_utf8(std::string_view texto);
// Nothing when the bytes are not valid in that code page.
std::optional<std::wstring> de_pagina_estricta(unsigned pagina, std::string_view texto);

// ASCII literals of the program itself.
std::wstring ancho_de(std::string_view ascii);

std::wstring de_pagina_activa(std::string_view texto);

// Text for people: what turns the writing direction, breaks a line or does not show at all is spelled out
// (<U+202E>). What scripts read is never changed like this.
std::wstring sin_trampas(std::wstring_view texto);
// A name for people: as above, control characters too, and in quotes when a blank stands at one of its ends.
std::wstring a_la_vista(std::wstring_view nombre);

// Columns that a text takes on a terminal: 2 for East Asian wide characters and emoji, 0 for combining ones.
size_t columnas_de(std::wstring_view texto);
std::wstring a_la_izquierda(std::wstring_view texto, size_t columnas);
std::wstring a_la_derecha(std::wstring_view texto, size_t columnas);

// A path made to fit a number of columns by the library's abbreviation, and cut with "..." when even that is
// too long.
std::wstring abreviado(std::wstring_view ruta, size_t columnas);
std::wstring cortado(std::wstring_view texto, size_t columnas);

std::wstring con_miles(unsigned long long numero);
std::wstring plural(unsigned long long numero, frase singular, frase plural);
std::wstring tamanyo_legible(unsigned long long bytes);

std::wstring en_minusculas(std::wstring_view texto);  // A to Z
std::wstring en_mayusculas(std::wstring_view texto);  // of every script, as the file system folds names
bool iguales_sin_caja(std::wstring_view a, std::wstring_view b);
std::wstring sin_blancos(std::wstring_view texto);

}  // namespace mando
