// Cutting a path into drive, directory, base name and extension, and building one from such pieces: what the C
// runtime does, plus a share as the drive and an extension with a blank given back to the base name.
//
// Promises: cutting allocates nothing for usual paths; pieces come out whole, however long, whether or not the path is
// correct; the separators of 8-bit text are characters of it.
// Checked by tests/paths/split_makepath_test.cpp and, in every code page, paginas_modelo_test.cpp.
#pragma once

#include "paths/path_correcto.hpp"

namespace lumodir {

// The four pieces as views, into the path or into this object.
template <class C>
class division {
public:
    // An extension without a name is the name.
    division(vista<C> path, const cortes_de_ruta& cortes, bool es_unc, lugar donde = lugar::aqui())
        : unidad(path.substr(0, cortes.directorio)),
          directorio(path.substr(cortes.directorio, cortes.nombre - cortes.directorio)),
          nombre(path.substr(cortes.nombre, cortes.extension > cortes.nombre
                                                ? cortes.extension - cortes.nombre
                                                : path.size() - cortes.nombre)),
          extension(cortes.extension > cortes.nombre ? path.substr(cortes.extension) : vista<C>()) {
        if (es_unc) {
            i_toma_unidad_unc(donde);
        }
    }
    division(vista<C> path, bool es_unc, lugar donde = lugar::aqui())
        : division(path, i_cortes(path), es_unc, donde) {}
    explicit division(const path_juzgado<C>& juzgado, lugar donde = lugar::aqui())
        : division(juzgado.path, juzgado.cortes, juzgado.es_unc, donde) {}
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
    // Both were asked for: an extension that holds a blank belongs to the base name.
    bool extension_es_del_nombre() const noexcept { return extension.find(C(' ')) != vista<C>::npos; }

private:
    void i_toma_unidad_unc(lugar donde);

    cadena<C> unidad_propia_;
    cadena<C> directorio_propio_;
};

extern template class division<char>;
extern template class division<wchar_t>;

// The check that goes before a cut: trailing blanks removed, message 53955 shown for an incorrect path.
template <class C>
path_juzgado<C> i_comprueba_fichero(vista<C> path, lugar donde = lugar::aqui());

// Trailing blanks removed and the wildcard variant of the check; an incorrect path is an internal error.
template <class C>
path_juzgado<C> i_comprueba_con_comodines(vista<C> path, lugar donde = lugar::aqui());

// Composes without checking. A view without data is a piece that was not given (NULL).
template <class C>
cadena<C> i_makepath(vista<C> unidad, std::type_identity_t<vista<C>> directorio,
                     std::type_identity_t<vista<C>> nombre, std::type_identity_t<vista<C>> extension,
                     lugar donde = lugar::aqui());

extern template path_juzgado<char> i_comprueba_fichero(vista<char>, lugar);
extern template path_juzgado<wchar_t> i_comprueba_fichero(vista<wchar_t>, lugar);
extern template path_juzgado<char> i_comprueba_con_comodines(vista<char>, lugar);
extern template path_juzgado<wchar_t> i_comprueba_con_comodines(vista<wchar_t>, lugar);
extern template cadena<char> i_makepath(vista<char>, vista<char>, vista<char>, vista<char>, lugar);
extern template cadena<wchar_t> i_makepath(vista<wchar_t>, vista<wchar_t>, vista<wchar_t>, vista<wchar_t>,
                                           lugar);

}  // namespace lumodir
