// Patterns among the arguments: the shells of Windows pass them on as they were typed.
//
// Promises: a pattern stands for the entries whose names match it; short (8.3) names are not looked at, so "*.htm" never
// finds a .html. No path comes twice in the same words.
// Checked by tests/cli.
#pragma once

#include <string>
#include <vector>

#include "ordenes.hpp"

namespace mando {

enum class que_valen { ficheros, todo };

// The entries that a path with * and ? in its last component stands for, as paths, sorted. Throws fallo when another
// component has them, and when the directory is missing.
std::vector<std::wstring> expande(const std::wstring& patron, que_valen cuales);

struct rutas_dadas {
    std::vector<std::wstring> rutas;
    bool hubo_patron = false;
};

// The arguments with their patterns expanded; a single "-" stands for the lines of standard input. Throws fallo when a
// pattern finds nothing.
rutas_dadas rutas_de(const peticion& p, que_valen cuales);
rutas_dadas rutas_expandidas(const std::vector<std::wstring>& escritas, que_valen cuales);

// Throws fallo for a pattern where one path is wanted.
void rechaza_patron(const std::wstring& ruta);

// Shows, before a question, the first few paths and how many more there are, on standard error.
void di_cuales(const std::vector<std::wstring>& rutas);

}  // namespace mando
