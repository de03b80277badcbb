// Directories as the listings and the deletions look at them.
#pragma once

#include <functional>
#include <string>

#include "recorrido.hpp"

namespace mando {

// Throws fallo, with the library's text, when it is missing, a file, or cannot be read.
void comprueba_directorio(const std::wstring& directorio);

// A walk, with a progress line over a long one; Ctrl-C ends the program, which says how far it came.
void recorre_con_progreso(const std::wstring& base, const std::function<void(carpeta&)>& visita);
carpeta lee_con_progreso(const std::wstring& directorio);

// On standard error: the directories that could not be read.
void di_ilegibles(const recuento& total);

}  // namespace mando
