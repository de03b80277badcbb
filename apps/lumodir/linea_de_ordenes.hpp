// Reading the command line against the table of subcommands.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ordenes.hpp"

namespace mando {

// What every subcommand understands.
extern const std::span<const opcion> opciones_generales;

struct invocacion {
    peticion que;
    bool ayuda = false;
    bool version = false;
    bool verboso = false;
    std::optional<std::wstring> idioma;
    std::wstring grupo_a_medias;  // "reg" alone: the first word of several subcommands
};

// Throws uso_incorrecto; `leida` then holds what was understood before, so that the complaint can name the command.
void lee_linea_de_ordenes(const std::vector<std::wstring>& palabras, invocacion& leida);

}  // namespace mando
