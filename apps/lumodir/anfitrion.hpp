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

// True when the library has warned, or reported an internal error, since the last call.
bool hubo_quejas();

struct idioma {
    unsigned long ranura;
    std::string_view codigo;  // "pt-br"
    std::string_view ingles;  // "portuguese-brazil"
};

// By slot, code or English name, letter case aside.
std::optional<unsigned long> busca_idioma(std::wstring_view nombre);
std::wstring nombres_de_idiomas();
std::wstring nombre_de_idioma(unsigned long ranura);

}  // namespace mando
