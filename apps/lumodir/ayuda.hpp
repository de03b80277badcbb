// The help texts, made from the table of subcommands.
#pragma once

#include "consola.hpp"
#include "ordenes.hpp"

namespace mando {

// "lumodir ls [DIR] [OPTION...]"
std::wstring uso_de(const orden& cual);
void di_uso(corriente& donde, const orden& cual);
void ayuda_general(corriente& donde);
void ayuda_de_orden(corriente& donde, const orden& cual);
void ayuda_de_familia(corriente& donde, std::wstring_view primera_palabra);  // "reg"
void di_version(corriente& donde);

}  // namespace mando
