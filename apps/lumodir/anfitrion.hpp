// The command as a host of the library: where its warnings, internal errors and questions go, and the
// languages that a person may name.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mando {

// Installs the receivers: warnings to standard error, internal errors there too but only when `verboso`, the
// retry question to the person at the terminal; without one it gives up, and its text is a warning.
void instala_anfitrion(bool verboso);

// The texts of the library since the last call, warnings and questions given up alike.
std::vector<std::wstring> toma_avisos();

// Whether there are such texts.
bool hay_avisos();

// True when the library has warned, or reported an internal error, since the last call.
bool hubo_quejas();

// The paths that the command is working on at the moment: when the library asks whether to try again, the person
// is told who holds it.
class ruta_en_curso {
public:
    explicit ruta_en_curso(const std::wstring& ruta);
    ~ruta_en_curso();
    ruta_en_curso(const ruta_en_curso&) = delete;
    ruta_en_curso& operator=(const ruta_en_curso&) = delete;
};

// "notepad.exe (1234), backup.exe (77)"; nothing when the system does not tell.
std::wstring quienes_tienen(const std::wstring& ruta);

struct idioma {
    unsigned long ranura;
    std::string_view codigo;  // "pt-br"
    std::string_view ingles;  // "portuguese-brazil"
};

// By slot, code, name in English or in its own tongue, letter case aside; a code may name a country too (es-ES).
std::optional<unsigned long> busca_idioma(std::wstring_view nombre);
std::wstring nombres_de_idiomas();
std::wstring nombre_de_idioma(unsigned long ranura);
// The slot whose texts a slot shows: its own or those of Spanish or English.
unsigned long ranura_de_los_textos(unsigned long ranura);

}  // namespace mando
