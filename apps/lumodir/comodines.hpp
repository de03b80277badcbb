// Patterns among the arguments: the shells of Windows hand them over as they were typed.
//
// Promises: what a pattern gives is what the directory holds under names that pass it; short (8.3) names take no
// part, so "*.htm" never finds a .html. Nothing is given twice.
// Checked by tests/cli.
#pragma once

#include <string>
#include <vector>

#include "ordenes.hpp"

namespace mando {

enum class que_valen { ficheros, todo };

// The entries that a path with * and ? in its last component stands for, as paths, sorted. Throws fallo when the
// pattern stands elsewhere or the directory is missing.
std::vector<std::wstring> expande(const std::wstring& patron, que_valen cuales);

struct rutas_dadas {
    std::vector<std::wstring> rutas;
    bool hubo_patron = false;
};

// The arguments from `desde` on, where a single "-" stands for standard input, with their patterns expanded. Throws
// fallo when a pattern finds nothing.
rutas_dadas rutas_de(const peticion& p, que_valen cuales);
rutas_dadas rutas_expandidas(const std::vector<std::wstring>& escritas, que_valen cuales);

// Throws fallo for a pattern where one path is wanted.
void rechaza_patron(const std::wstring& ruta);

// On standard error, before a question: the first of several, and how many more.
void di_cuales(const std::vector<std::wstring>& rutas);

}  // namespace mando
