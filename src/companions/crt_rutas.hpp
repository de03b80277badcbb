// Splitting and composing as the C runtime does it (_splitpath, _makepath), on views: the plain pieces on which
// the library's own splitter and composer put their rules. Both flavours, and both names that the family knows
// these calls by (lmlongpath_wsplitpath_s and lmstdc__splitpath, lmlongpath_wmakepath_s and lmstdc__makepath).
//
// Promises: no allocation in splitting; the four views joined give the path again.
// Cannot promise: to know a device prefix or a share: to the C runtime those are directory text.
// (https://learn.microsoft.com/en-us/cpp/c-runtime-library/reference/splitpath-wsplitpath)
// Checked by tests/companions/crt_rutas_test.cpp.
#pragma once

#include "companions/cadena.hpp"

namespace interno {

template <class C>
struct trozos_de_ruta {
    vista<C> unidad;      // "X:" or empty
    vista<C> directorio;  // with its separators, final one included
    vista<C> nombre;      // base name
    vista<C> extension;   // with its dot
};

// Where the pieces of a path begin that come after its drive.
struct cortes_de_ruta {
    std::size_t directorio = 0;
    std::size_t nombre = 0;
    std::size_t extension = 0;
};
template <class C>
constexpr trozos_de_ruta<C> i_trozos(vista<C> ruta, const cortes_de_ruta& cortes) noexcept {
    return {ruta.substr(0, cortes.directorio),
            ruta.substr(cortes.directorio, cortes.nombre - cortes.directorio),
            ruta.substr(cortes.nombre, cortes.extension - cortes.nombre), ruta.substr(cortes.extension)};
}

// The drive is the first character and a colon.
template <class C>
constexpr std::size_t i_longitud_de_unidad(vista<C> ruta) noexcept {
    const std::size_t letra = ruta.empty() ? 0 : unidades_del_primero(ruta);
    return ruta.size() > letra && ruta[letra] == C(':') ? letra + 1 : 0;
}

template <class C>
constexpr cortes_de_ruta i_cortes(vista<C> ruta) noexcept {
    const std::size_t unidad = i_longitud_de_unidad(ruta);
    const vista<C> resto = ruta.substr(unidad);
    std::size_t nombre = resto.size();
    std::size_t punto = resto.size();
    for (; nombre > 0; --nombre) {
        const C c = resto[nombre - 1];
        if (es_separador(c) && empieza_caracter(resto, nombre - 1)) {
            break;
        }
        // A dot is no second byte in any code page.
        if (es_punto(c) && punto == resto.size()) {
            punto = nombre - 1;
        }
    }
    return {unidad, unidad + nombre, unidad + punto};
}
template <class C>
constexpr trozos_de_ruta<C> crt_splitpath(vista<C> ruta) noexcept {
    return i_trozos(ruta, i_cortes(ruta));
}

// What the drive becomes in front, then the rest: a directory gets a final "\" and an extension its dot where they lack
// them; empty pieces add nothing.
template <class C>
cadena<C> i_compone_piezas(vista<C> unidad, vista<C> tras_unidad, vista<C> directorio, vista<C> nombre,
                           vista<C> extension) {
    const bool falta_barra = !directorio.empty() && !acaba_en_separador(directorio);
    const bool falta_punto = !extension.empty() && extension.front() != C('.');
    return concatena<C>({unidad, tras_unidad, directorio, falta_barra ? LITERAL(C, "\\") : vista<C>(), nombre,
                         falta_punto ? LITERAL(C, ".") : vista<C>(), extension});
}

// Only the first character of the drive counts.
template <class C>
cadena<C> crt_makepath(vista<C> unidad, std::type_identity_t<vista<C>> directorio,
                       std::type_identity_t<vista<C>> nombre, std::type_identity_t<vista<C>> extension) {
    const vista<C> letra = unidad.substr(0, unidad.empty() ? 0 : unidades_del_primero(unidad));
    return i_compone_piezas(letra, letra.empty() ? letra : LITERAL(C, ":"), directorio, nombre, extension);
}

}  // namespace interno
