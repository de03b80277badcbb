// The path checker: whether a text is an acceptable path or name, by its syntax alone. Every other path function
// consults it.
//
// Promises: no file-system access; no allocation for a path that passes; the first broken rule decides. One pass over
// the text (notas.hpp); 8-bit text is judged as it is where each character is one byte, or where it is ASCII, and
// otherwise converted.
// Cannot promise: that a valid path exists, or that the file system at hand admits its characters.
// Checked by tests/paths/path_correcto_test.cpp and path_correcto_nombres_test.cpp, and against a naive model over
// every short string by path_correcto_modelo_test.cpp.
#pragma once

#include "companions/crt_rutas.hpp"
#include "lumodir_base.h"

namespace lumodir {

// A character that no name may hold: a control character or one of \/:*"?<>|
bool i_caracter_valido(wchar_t c) noexcept;
bool i_caracter_valido(char c) noexcept;

// The rule for one component. It judges the name without its trailing blanks; who owns the text trims it.
bool i_nombre_base_correcto_UNICODE(vista_w nombre) noexcept;
// The same rule, "." and ".." admitted.
bool i_nombre_base_valido_UNICODE(vista_w nombre) noexcept;

// A view without data stands for NULL: it is reported, and the path is not correct.
// `mostrar_mensaje` 1 shows the message of a failure; `mensaje`, when wanted, receives it as a new text.
unsigned short i_path_correcto_UNICODE(vista_w path, unsigned short puede_ser_vacio,
                                       unsigned short mostrar_mensaje, unsigned short* es_unc,
                                       wchar_t** mensaje);
unsigned short i_path_correcto(vista_a path, unsigned short puede_ser_vacio, unsigned short mostrar_mensaje,
                               unsigned short* es_unc);

// What who cuts a path asks of it: whether it is correct, whether it is a network path, and where its pieces begin,
// which the check has noted by the way. The path is none that stands for NULL.
template <class C>
struct path_juzgado {
    vista<C> path;
    bool correcto = false;
    bool es_unc = false;
    cortes_de_ruta cortes;

    trozos_de_ruta<C> trozos() const noexcept { return i_trozos(path, cortes); }
};
template <class C>
path_juzgado<C> i_juzga(vista<C> path);

// The same check for a search pattern whose whole base name is "*" or whose whole extension is ".*".
template <class C>
path_juzgado<C> i_juzga_con_comodines(vista<C> path);
unsigned short i_path_correcto_con_comodines_UNICODE(vista_w path, unsigned short* es_unc);
unsigned short i_path_correcto_con_comodines(vista_a path, unsigned short* es_unc);

extern template path_juzgado<char> i_juzga(vista<char>);
extern template path_juzgado<wchar_t> i_juzga(vista<wchar_t>);
extern template path_juzgado<char> i_juzga_con_comodines(vista<char>);
extern template path_juzgado<wchar_t> i_juzga_con_comodines(vista<wchar_t>);

}  // namespace lumodir
