// The command as a host of the library: where warnings, internal errors and questions of the library go, and which
// languages a person may name.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lumodir.hpp"

namespace mando {

// Installs the receivers for as long as it lives. Warnings go to standard error; so do internal errors, but only when
// `verboso`. The retry question is put to the person at the terminal; when nobody is there, it is answered with no and
// its text is shown as a warning.
class anfitrion {
public:
    explicit anfitrion(bool verboso);

private:
    lumodir::receptor_errores errores_;
    lumodir::receptor_avisos avisos_;
    lumodir::receptor_preguntas preguntas_;
};

// What the library has said since the last call: warnings, and questions answered with no.
std::vector<std::wstring> toma_avisos();

// Whether there are such texts.
bool hay_avisos();

// True when the library has warned, or reported an internal error, since the last call.
bool hubo_quejas();

// The path that the command is working on: when the library asks whether to try again, the person is told which
// programs hold it.
class ruta_en_curso {
public:
    explicit ruta_en_curso(const std::wstring& ruta);
    ~ruta_en_curso();
    ruta_en_curso(const ruta_en_curso&) = delete;
    ruta_en_curso& operator=(const ruta_en_curso&) = delete;
};

// "notepad.exe (1234), backup.exe (77)"; nothing when the system does not tell.
std::wstring quienes_tienen(const std::wstring& ruta);

// Finds a language by its slot, its code (with or without a country: es-ES), or its name in English or in the language
// itself; case is ignored.
std::optional<lumodir::idioma> busca_idioma(std::wstring_view nombre);
std::wstring nombres_de_idiomas();
std::wstring nombre_de_idioma(lumodir::idioma cual);
// The language whose texts are shown for a language: itself, or Spanish or English where it has none.
lumodir::idioma idioma_de_los_textos(lumodir::idioma cual);

}  // namespace mando
