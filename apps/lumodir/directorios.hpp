// Directories, read and walked under a progress line, for listings, searches and deletions.
#pragma once

#include <functional>
#include <string>

#include "recorrido.hpp"

namespace mando {

// Throws fallo when the directory is missing, is a file or cannot be read.
void comprueba_directorio(const std::wstring& directorio);

// Walks a tree, or reads one directory, with a progress line if it takes long. Ctrl-C ends the program, which says how
// far it got.
void recorre_con_progreso(const std::wstring& base, const std::function<void(carpeta&)>& visita);
carpeta lee_con_progreso(const std::wstring& directorio);

// Names the directories that could not be read, on standard error.
void di_ilegibles(const recuento& total);

}  // namespace mando
