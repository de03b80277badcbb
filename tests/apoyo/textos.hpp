// Texts as the tests and the fuzzers hold them, conversions between them, and results taken and freed. Nothing of
// GoogleTest is here: the fuzzers do without it.
#pragma once

#include <string>

#include "companions/texto.hpp"

namespace apoyo {

using texto_w = std::basic_string<wchar_t, lumodir::rasgos_utf16>;
using texto_a = std::string;  // in the code page of the run: 1252 unless told otherwise (LUMODIR_PAGINA)

// Conversions between the test's UTF-8 and the library's flavours. Lone surrogates travel as WTF-8. Characters are those
// of code page 1252; in a run with another one each that it lacks has one that stands for it in 8-bit text, which `u8`
// takes back.
texto_w w(std::string_view utf8);
std::string u8(lumodir::vista_w texto);
std::string u8(const wchar_t* texto);  // NULL gives "(NULL)"
texto_a cp1252(std::string_view utf8);
std::string de_cp1252(std::string_view texto);

// Takes a new string that the library gave: frees it as a host does, and answers its text in UTF-8.
// NULL gives "(NULL)".
std::string toma(wchar_t* texto);
std::string toma(char* texto);

}  // namespace apoyo
