// Cutting a path into drive, directory, base name and extension, and building one from such pieces: what the C
// runtime does, plus a share as the drive and an extension with a blank given back to the base name.
//
// Promises: cutting allocates nothing for usual paths; pieces come out whole, however long, whether or not the path is
// correct; the separators of 8-bit text are characters of it.
// Checked by tests/paths/split_makepath_test.cpp and, in every code page, paginas_modelo_test.cpp.
#pragma once

#include "companions/error_interno.hpp"
#include "paths/path_correcto.hpp"

namespace interno {

// The four pieces as views, into the path or into this object.
template <class C>
class division {
public:
    // An extension without a name is the name.
    division(vista<C> path, const cortes_de_ruta& cortes, bool es_unc)
        : unidad(path.substr(0, cortes.directorio)),
          directorio(path.substr(cortes.directorio, cortes.nombre - cortes.directorio)),
          nombre(path.substr(cortes.nombre, cortes.extension > cortes.nombre
                                                ? cortes.extension - cortes.nombre
                                                : vista<C>::npos)),
          extension(cortes.extension > cortes.nombre ? path.substr(cortes.extension) : vista<C>()) {
        if (es_unc) {
            i_toma_unidad_unc();
        }
    }
    division(vista<C> path, bool es_unc) : division(path, i_cortes(path), es_unc) {}
    explicit division(const path_juzgado<C>& juzgado)
        : division(juzgado.path, juzgado.cortes, juzgado.juicio.es_unc) {}
    division(const division&) = delete;
    division& operator=(const division&) = delete;

    vista<C> unidad;
    vista<C> directorio;
    vista<C> nombre;
    vista<C> extension;

    // Name and extension stand together in the path.
    vista<C> nombre_y_extension() const noexcept {
        return vista<C>(nombre.data(), nombre.size() + extension.size());
    }

private:
    void i_toma_unidad_unc();

    cadena<C> unidad_propia_;
    cadena<C> directorio_propio_;
};

void i_muestra_fichero_incorrecto(vista_w path);
void i_muestra_fichero_incorrecto(vista_a path);
template <class C>
path_juzgado<C> i_juzga_y_muestra(vista<C> path) {
    path_juzgado<C> juzgado = i_juzga(path);
    if (!juzgado.juicio.correcto) {
        i_muestra_fichero_incorrecto(path);
    }
    return juzgado;
}
template <class C>
path_juzgado<C> i_juzga_e_informa(vista<C> path) {
    path_juzgado<C> juzgado = i_juzga_con_comodines(path);
    i_comprueba_con(juzgado.juicio.correcto, "pathCorrecto == CIERTO", path);
    return juzgado;
}

// The pieces become what callers get: an extension that holds a blank belongs to the base name, where both are asked for.
// In place, for a copy of the pieces would wait until they are written.
template <class C>
void i_junta_extension_con_blanco(division<C>& piezas, bool ambos = true) noexcept {
    if (ambos && piezas.extension.find(C(' ')) != vista<C>::npos) {
        piezas.nombre = piezas.nombre_y_extension();
        piezas.extension = {};
    }
}

// The check that goes before a cut: trailing blanks removed, message 53955 shown for an incorrect path.
template <class C>
path_juzgado<C> i_comprueba_fichero(vista<C> path) {
    return i_comprueba(path.data() != nullptr, "(path) != NULL") ? i_juzga_y_muestra(recorta_derecha(path))
                                                                 : path_juzgado<C>();
}

// Trailing blanks removed and the wildcard variant of the check; an incorrect path is an internal error.
template <class C>
path_juzgado<C> i_comprueba_con_comodines(vista<C> path) {
    return i_comprueba(path.data() != nullptr, "(path) != NULL") ? i_juzga_e_informa(recorta_derecha(path))
                                                                 : path_juzgado<C>();
}

// Composes without checking. A view without data is a piece that was not given (NULL).
template <class C>
cadena<C> i_makepath(vista<C> unidad, std::type_identity_t<vista<C>> directorio,
                     std::type_identity_t<vista<C>> nombre, std::type_identity_t<vista<C>> extension);

// Composes and checks: an incorrect path is an internal error, in the wide flavour only when repairing the base name does
// not help.
cadena_w i_makepath_correcto_UNICODE(trozos_de_ruta<wchar_t> piezas);
cadena_a i_makepath_correcto(const trozos_de_ruta<char>& piezas);
template <class C>
cadena<C> i_makepath_con_comodines(const trozos_de_ruta<C>& piezas);

// The path made of some of its own pieces (CDIR_PIEZA_... of cdir_rutas.h).
template <class C>
cadena<C> i_split_make_path(vista<C> path, unsigned mascara);

}  // namespace interno
