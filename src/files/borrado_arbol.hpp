// Deleting the contents of a directory and whole trees, in the two ways of the library: strictly, entry by entry, where
// each that does not go is asked about, and the host may stop it; and in passes with pauses in between, where what does
// not go is left to the next pass (only a read-only mark that cannot be taken off is asked about).
//
// Promises: nothing outside the tree is touched, even if somebody puts links in the place of directories meanwhile; links
// are removed themselves, or left where the system would remove what they point to. "All deleted" is answered only by a
// walk that saw all. Strict deletion leaves directories whose name begins with "." alone, and with them their parents;
// the passes take them too. Both are intended.
// Cannot promise: that a tree other programs write into is gone at the end; the answer and the messages tell.
// Checked by tests/files/borrado_arbol_win32_test.cpp and tools/attack.
#pragma once

#include "companions/anfitrion.hpp"
#include "companions/arr.hpp"

namespace interno {

// How much of a strict deletion goes on; asked between entries, since another thread, or a callback, may stop it.
enum class marcha { entera, sin_quitar_directorios, ninguna };
using freno = consulta<marcha>;

// Strictly: the contents and, where `lo_quita`, the directory itself. Answers whether the directory was removed.
bool i_borra_arbol(const wchar_t* directorio, bool lo_quita, const freno& para = {});

// Passes until nothing is left, with a pause of random length after each that left something, the last included,
// so that two processes that clean the same tree do not retry in step. Answers whether all files are gone.
bool i_borra_en_pasadas(const wchar_t* directorio, bool lo_quita, bool recursiva);

// One pass over the tree and its root. Answers whether the root was removed; the files that stayed are listed where a
// list is given.
bool i_borra_en_una_pasada(const wchar_t* directorio, lista_textos<wchar_t>* sin_borrar);

}  // namespace interno
