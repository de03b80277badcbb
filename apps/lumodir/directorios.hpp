// Directories as the listings and the deletions look at them.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace mando {

// Throws fallo, with the library's text, when it is missing, a file, or cannot be read.
void comprueba_directorio(const std::wstring& directorio);

// One directory of a tree with its files.
struct rama {
    std::wstring ruta;
    std::vector<std::wstring> ficheros;
};

// Every directory of a tree, in the order of their paths, with the files that have the extension (NULL: all).
// A progress line goes with a long walk.
std::vector<rama> recorre(const std::wstring& base, const wchar_t* extension);
size_t cuenta_ficheros(const std::vector<rama>& arbol);

// A path of the tree below its base; "." for the base itself.
std::wstring bajo_la_base(const std::wstring& ruta, const std::wstring& base);

}  // namespace mando
