// The walk of a tree that is to be deleted: what lies in a directory is handed out, files first, then each
// subdirectory is walked and handed out after its contents.
//
// Promises: a link to a directory is handed out, never entered; nothing is entered that cannot be judged. The caller is
// told of what was not seen, so that nobody takes silence for "all gone".
// Checked by tests/files/borrado_arbol_win32_test.cpp and tools/attack.
#pragma once

#include "files/objetivo.hpp"
#include "listings/recorrido.hpp"

namespace interno {

// Which subdirectories a walk sees.
enum class subdirectorios {
    ninguno,
    sin_punto_inicial,  // names that begin with "." are left out, so they and their parents stay
    todos
};

// A file or a subdirectory of the current directory of a walk. Its path is written when somebody asks for it.
class entrada_de_arbol final : public objetivo_en_directorio {
public:
    entrada_de_arbol(recorrido& arbol, const entrada_leida& entrada) noexcept
        : objetivo_en_directorio(arbol.aqui(), entrada), arbol_(arbol) {}

    const wchar_t* texto() override;
    // How many directories lead to it, the root included.
    std::size_t profundidad() const noexcept { return arbol_.profundidad(); }

private:
    recorrido& arbol_;
    cadena_w ruta_;
};

// The root of a walk, to be removed at its end: the very directory that was walked.
class raiz_de_arbol final : public objetivo {
public:
    raiz_de_arbol(recorrido& arbol, llegada como) noexcept : arbol_(arbol), como_(como) {}

    desenlace borra() override;
    existencia mira() override;
    bool protege(int modo) override {
        return i_se_ha_entrado(como_) ? arbol_.protege_raiz(modo)
                                      : lmlongpath_wchmod(arbol_.raiz().ruta(), modo);
    }
    const wchar_t* texto() override { return arbol_.raiz().dada().data(); }

private:
    recorrido& arbol_;
    llegada como_;
};

class visitante_borrado {
public:
    // Answers whether the walk goes on.
    virtual bool fichero(entrada_de_arbol& fichero) = 0;
    // The walk is about to look at the next subdirectory.
    virtual bool sigue() = 0;
    // The contents of the subdirectory have been walked, if it could be entered.
    virtual void subdirectorio(entrada_de_arbol& directorio, llegada como) = 0;

protected:
    ~visitante_borrado() = default;
};

// Answers what became of the root.
llegada i_recorre_para_borrar(recorrido& arbol, subdirectorios cuales, visitante_borrado& visitante);

// The order in which subdirectories are deleted: by name, code unit by code unit.
inline constexpr recorrido::orden orden_de_borrado = {
    [](vista_w a, vista_w b) noexcept { return a.compare(b); }, false};

}  // namespace interno
