// Splitting and composing as the C runtime does it (_splitpath, _makepath), on views: the plain pieces on which
// the library's own splitter and composer put their rules. Both flavours, and both names that the family knows
// these calls by (lmlongpath_wsplitpath_s and lmstdc__splitpath, lmlongpath_wmakepath_s and lmstdc__makepath).
//
// Promises: no allocation in splitting; the four views joined give the path again.
// Cannot promise: to know a device prefix or a share: to the C runtime those are directory text.
// Checked by tests/companions/crt_rutas_test.cpp.
#pragma once

#include "companions/cadena.hpp"

namespace lumodir {

template <class C>
struct trozos_de_ruta {
    vista<C> unidad;      // "X:" or empty
    vista<C> directorio;  // with its separators, final one included
    vista<C> nombre;      // base name
    vista<C> extension;   // with its point
};

template <class C>
constexpr trozos_de_ruta<C> crt_splitpath(vista<C> ruta) noexcept {
    trozos_de_ruta<C> trozos;
    const std::size_t tras_unidad = ruta.size() >= 2 && ruta[1] == C(':') ? 2 : 0;
    std::size_t tras_directorio = tras_unidad;
    std::size_t punto = ruta.size();
    for (std::size_t i = ruta.size(); i > tras_unidad; --i) {
        const C c = ruta[i - 1];
        if (es_separador(c)) {
            tras_directorio = i;
            break;
        }
        if (c == C('.') && punto == ruta.size()) {
            punto = i - 1;
        }
    }
    trozos.unidad = ruta.substr(0, tras_unidad);
    trozos.directorio = ruta.substr(tras_unidad, tras_directorio - tras_unidad);
    trozos.nombre = ruta.substr(tras_directorio, punto - tras_directorio);
    trozos.extension = ruta.substr(punto);
    return trozos;
}

// Only the first unit of the drive counts; a directory gets a final "\" and an extension its point where they
// lack them; empty pieces add nothing.
template <class C>
cadena<C> crt_makepath(vista<C> unidad, std::type_identity_t<vista<C>> directorio,
                       std::type_identity_t<vista<C>> nombre, std::type_identity_t<vista<C>> extension,
                       lugar donde = lugar::aqui()) {
    const bool falta_barra = !directorio.empty() && !es_separador(directorio.back());
    const bool falta_punto = !extension.empty() && extension.front() != C('.');
    return concatena<C>({unidad.substr(0, 1), unidad.empty() ? vista<C>() : LITERAL(C, ":"), directorio,
                         falta_barra ? LITERAL(C, "\\") : vista<C>(), nombre,
                         falta_punto ? LITERAL(C, ".") : vista<C>(), extension},
                        donde);
}

}  // namespace lumodir
