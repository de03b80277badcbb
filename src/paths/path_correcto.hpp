// The path checker: whether a text is an acceptable path or name, by its syntax alone. Every other path function
// consults it.
//
// Promises: no file-system access; no allocation for a path that passes; the first broken rule decides. One pass over
// the text (notas.hpp); 8-bit text is judged by its bytes, and converted only where a limit on its length may depend on it.
// Cannot promise: that a valid path exists, or that the file system at hand admits its characters.
// Checked by tests/paths/path_correcto_test.cpp and path_correcto_nombres_test.cpp, and against a naive model over
// every short string by path_correcto_modelo_test.cpp.
#pragma once

#include "companions/crt_rutas.hpp"
#include "companions/registro_mensaje.hpp"

namespace interno {

// A character that no name may hold: a control character or one of \/:*"?<>|
bool i_caracter_valido(wchar_t c) noexcept;
bool i_caracter_valido(char c) noexcept;
bool i_caracteres_validos_UNICODE(vista_w texto) noexcept;
bool i_caracteres_validos(vista_a texto) noexcept;

// The rule for one component, "." and ".." admitted. It judges the name without its trailing blanks; who owns the text
// trims it.
bool i_nombre_base_correcto_UNICODE(vista_w nombre) noexcept;
bool i_nombre_base_correcto(vista_a nombre) noexcept;

struct veredicto {
    bool correcto = false;
    bool es_unc = false;
    ConstructorMensaje motivo = nullptr;  // the message of the rule that a path breaks
};

// A view without data stands for NULL: it is reported, and the path is not correct, without a message.
veredicto i_path_correcto_UNICODE(vista_w path, bool puede_ser_vacio = false);
veredicto i_path_correcto(vista_a path, bool puede_ser_vacio = false);

// The message of a path that breaks a rule.
cadena_w i_texto_del_fallo(const veredicto& juicio, vista_w path);
// Shows it, where there is one that may be shown.
void i_muestra_fallo(const veredicto& juicio, vista_w path);
void i_muestra_fallo(const veredicto& juicio, vista_a path);

// For those who cut a path: the verdict, and where its pieces begin, which the check has noted on its way. The path must
// not stand for NULL.
template <class C>
struct path_juzgado {
    vista<C> path;
    veredicto juicio;
    cortes_de_ruta cortes;

    trozos_de_ruta<C> trozos() const noexcept { return i_trozos(path, cortes); }
};
template <class C>
path_juzgado<C> i_juzga(vista<C> path);

// The same check for a search pattern whose whole base name is "*" or whose whole extension is ".*".
template <class C>
path_juzgado<C> i_juzga_con_comodines(vista<C> path);
inline veredicto i_path_correcto_con_comodines_UNICODE(vista_w path) {
    return i_juzga_con_comodines(path).juicio;
}
inline veredicto i_path_correcto_con_comodines(vista_a path) {
    return i_juzga_con_comodines(path).juicio;
}

}  // namespace interno
