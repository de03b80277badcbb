// Texts as the tests and the fuzzers hold them, conversions between them, and results taken and freed. Nothing of
// GoogleTest is here: the fuzzers do without it.
#pragma once

#include <string>

#include "companions/texto.hpp"

namespace apoyo {

using texto_w = std::basic_string<wchar_t, interno::rasgos_utf16>;
using texto_a = std::string;  // in the code page of the run

// The code page that 8-bit text is in now: the one chosen (LUMODIR_PAGINA, en_pagina), else that of the machine.
unsigned pagina();

// Conversions between the test's UTF-8 and the library's flavours. Lone surrogates travel as WTF-8. Characters are those
// of code page 1252; in a run with another one each that it lacks has one that stands for it, which `u8` and `de_cp1252`
// take back. (Rows that are about 1252 choose it, with `en_pagina`.)
texto_w w(std::string_view utf8);
texto_w en_utf16(std::string_view utf8);  // the characters themselves, in every code page
std::string u8(interno::vista_w texto);
std::string u8(const wchar_t* texto);  // NULL gives "(NULL)"
texto_a cp1252(std::string_view utf8);
std::string de_cp1252(std::string_view texto);
// 8-bit text in UTF-16, of code page 1252 by a table of the tests' own; what others hold the system knows.
texto_w de_8_bits(std::string_view texto);

// Takes a new string that the library gave: frees it as a host does, and answers its text in UTF-8.
// NULL gives "(NULL)".
std::string toma(wchar_t* texto);
std::string toma(char* texto);
texto_a toma_bytes(char* texto);  // as they are; NULL gives ""

}  // namespace apoyo
