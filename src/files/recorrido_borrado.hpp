// The walk of a tree that is to be deleted: what lies in a directory is read once, files are handed out first,
// then each subdirectory is walked and handed out after its contents.
//
// Promises: a link to a directory is handed out, never entered, whether its entry or the directory itself, opened
// without following links, says so; what cannot be judged is not entered either, nor a root whose name Windows cuts
// at its end, so that what was looked at is what is walked. No recursion: depth costs heap, not stack.
// Cannot promise: against somebody who puts a link in a directory's place between the look and the walk.
// Checked by tests/files/borrado_arbol_win32_test.cpp.
#pragma once

#include "companions/arr.hpp"
#include "companions/cadena.hpp"

namespace lumodir {

// Which subdirectories a walk sees.
enum class subdirectorios {
    ninguno,
    sin_punto_inicial,  // names that begin with "." are left out, so they and their parents stay
    todos
};

class visitante_borrado {
public:
    // Answers whether the walk goes on.
    virtual bool fichero(vista_w directorio, vista_w nombre) = 0;
    // The walk is about to look at the next subdirectory.
    virtual bool sigue() = 0;
    // The contents of the subdirectory have been walked.
    virtual void subdirectorio(const wchar_t* ruta) = 0;

protected:
    ~visitante_borrado() = default;
};

void i_recorre_para_borrar(vista_w directorio, subdirectorios cuales, visitante_borrado& visitante);

}  // namespace lumodir
