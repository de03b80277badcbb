// The records of file sets: one file with its date and protection. Promises and limits: see fichsdir.hpp.
#pragma once

#include "companions/apunorde.hpp"
#include "listings/fichsdir.hpp"

namespace interno {

struct destruye_fichsdir {
    void operator()(Fichsdir* fichsdir) const noexcept {
        i_libera(fichsdir->nombre);
        i_libera(fichsdir->ruta);
        i_libera(fichsdir);
    }
};
// Reports what is broken; answers whether there is a record at all.
bool i_comprueba_registro(const Fichsdir* fichsdir) noexcept;

objeto<ArrPunteroConTipo> i_ficheros(const wchar_t* directorio, const interrupcion& corta);
// By name; the records belong to it.
objeto<ApunOrde> i_ficheros_ordenados();
objeto<ApunOrde> i_ficheros_existentes_ordenados(const wchar_t* directorio);

}  // namespace interno
