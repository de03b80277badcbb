// What the benches hold the library's walks against: the recursion that a careful programmer writes, by paths; and bare,
// the same calls that the library makes, so that it is seen what of a time is the system's own.
#pragma once

#include <cstddef>
#include <string>

namespace bancos {

// By paths: files first, then the directories below, then the directory.
void borra_a_mano(const std::wstring& directorio);

// By handles: each directory opened through the one above it, read by its handle, its entries opened by their names and
// marked for deletion. Nothing is checked, no link is known, no failure looked at: never to be copied.
std::size_t lista_por_manijas(const std::wstring& raiz);  // answers how many files there are
void borra_por_manijas(const std::wstring& raiz);

// A search of everything in a directory, of which nothing is kept.
void solo_busca(const std::wstring& directorio);

}  // namespace bancos
