// One piece out of a path: directory, base name, extension, name with extension; and the path with another
// extension.
//
// Promises: a view is a part of the path given; an incorrect path is reported and still gives its pieces; a
// view without data (NULL) is reported and gives nothing.
// Cannot promise: that `i_directorio_de_fichero` and `i_nombre_tras_ultima_barra` agree with the rest: those two look
// at separators alone, on purpose.
// Checked by tests/paths/componentes_test.cpp, also against naive models over every short string, and in every code
// page by paginas_modelo_test.cpp.
#pragma once

#include "companions/cadena.hpp"

namespace interno {

// A drive and nothing behind it: to the system its current directory, to who joins a name to it the root.
constexpr bool es_unidad_sola(vista_w ruta) noexcept {
    return ruta.size() == 2 && lmstdc_isalpha(ruta[0]) && ruta[1] == L':';
}

// Up to the last separator of either kind, that one included; nothing when there is none. Neither trimmed nor
// checked, and silent.
template <class C>
constexpr vista<C> i_directorio_de_fichero(vista<C> ruta) noexcept {
    return ruta.substr(0, tras_el_ultimo(ruta, es_separador<C>));
}

// What follows the last "\" ("/" does not count here). Neither trimmed nor checked, and silent.
template <class C>
constexpr vista<C> i_nombre_tras_ultima_barra(vista<C> ruta) noexcept {
    return ruta.substr(tras_el_ultimo(ruta, es_barra<C>));
}

// The functions below ignore trailing blanks, accept wildcards and report an incorrect path.

template <class C>
vista<C> i_nombre_base_fichero(vista<C> ruta);

// Without its dot. A blank path and one that ends with "\" are reported.
template <class C>
vista<C> i_extension_fichero(vista<C> ruta);

template <class C>
cadena<C> i_nombre_y_ext_fichero(vista<C> ruta);

template <class C>
cadena<C> i_ruta_y_nombre_fichero_sin_extension(vista<C> ruta);

// The path with another extension, with or without its dot; a view without data means none.
template <class C>
cadena<C> i_nombre_fichero_con_ext(vista<C> ruta, std::type_identity_t<vista<C>> ext);

// In place.
void i_suprime_barra_final_si_hay(cadena_w& directorio) noexcept;

}  // namespace interno
