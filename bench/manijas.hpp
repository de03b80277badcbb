// What the benches hold the library's walks against: the recursion that a careful programmer writes, by paths; and bare,
// the same calls that the library makes, so that it is seen what of a time is the system's own.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace bancos {

// By paths: files into one list, directories into another, sorted.
void lista_a_mano(const std::wstring& directorio, std::vector<std::wstring>& ficheros,
                  std::vector<std::wstring>* directorios);
std::size_t recorre_a_mano(
    const std::wstring& raiz);  // all of them below, kept; answers how many files there are
// Files first, then the directories below, then the directory.
void borra_a_mano(const std::wstring& directorio);

// By handles: each directory opened through the one above it, read by its handle, its entries opened by their names and
// marked for deletion. Nothing is checked, no link is known, no failure looked at: never to be copied.
std::size_t lista_por_manijas(const std::wstring& raiz);  // answers how many files there are
void borra_por_manijas(const std::wstring& raiz);

// A search of everything in a directory, of which nothing is kept.
std::size_t solo_busca(const std::wstring& directorio);  // answers how many files there are

}  // namespace bancos
