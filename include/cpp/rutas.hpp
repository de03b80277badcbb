/**
 * @file rutas.hpp
 * Paths as text (cdir_rutas.h, lumodir_rutas.h). Each function bears the name of the C
 * function that it calls, its prefix as a namespace, without the ending of the flavour: what is said there of
 * messages, reports and odd inputs holds here.
 */
#ifndef LUMODIR_CPP_RUTAS_HPP
#define LUMODIR_CPP_RUTAS_HPP

#include "../cdir_rutas.h"
#include "../lumodir.h"
#include "base.hpp"

namespace lumodir {
namespace cdir {

/** The four pieces of a path. */
struct piezas {
    cadena unidad;
    cadena directorio;
    cadena nombre_base;
    cadena extension; /**< with its dot */
};

namespace detalle {

/** Calls a function on a name whose trailing blanks it removes in place. */
inline bool con_recorte(unsigned short (*valido)(wchar_t*), std::wstring& nombre) {
    const bool bien = lumodir::detalle::si(valido(nombre.data()));
    nombre.resize(std::char_traits<wchar_t>::length(nombre.c_str()));
    return bien;
}

}  // namespace detalle

/** Whether a path is acceptable; the message of a failure is shown on demand. */
inline bool path_valido(const argumento& path, bool mostrar_mensaje = false) {
    return lumodir::detalle::si(
        cdir_path_valido_UNICODE(path.c_str(), lumodir::detalle::corto(mostrar_mensaje)));
}
/** Whether a path is acceptable, with the message of the failure. */
inline respuesta es_path_valido(const argumento& path) {
    respuesta r;
    r.bien = lumodir::detalle::si(cdir_es_path_valido_UNICODE(path.c_str(), r.motivo.direccion()));
    return r;
}
/** Whether a base name is valid; its trailing blanks go. */
inline bool nombre_base_valido(std::wstring& nombre) {
    return detalle::con_recorte(cdir_nombre_base_valido_UNICODE, nombre);
}
/** Whether a file name is valid; its trailing blanks go. */
inline bool nombre_fichero_valido(std::wstring& nombre) {
    return detalle::con_recorte(cdir_nombre_fichero_valido, nombre);
}
/** Splits a path; an invalid one shows a message. */
inline piezas splitpath_con_comprobacion(const argumento& path) {
    piezas p;
    cdir_splitpath_con_comprobacion_UNICODE(path.c_str(), p.unidad.direccion(), p.directorio.direccion(),
                                            p.nombre_base.direccion(), p.extension.direccion());
    return p;
}
/** Splits a path that may have wildcards; an invalid one is reported. */
inline piezas splitpath_con_comodines(const argumento& path) {
    piezas p;
    cdir_splitpath_con_comodines_UNICODE(path.c_str(), p.unidad.direccion(), p.directorio.direccion(),
                                         p.nombre_base.direccion(), p.extension.direccion());
    return p;
}
/** Keeps some pieces of a path, CDIR_PIEZA_... added up. */
inline cadena split_make_path(const argumento& path, unsigned short mascara) {
    return cadena(cdir_split_make_path_UNICODE(path.c_str(), mascara));
}
/** Composes a path, repairing its base name where that is invalid; nullptr for a piece that there is not. */
inline cadena makepath(const argumento& unidad, const argumento& directorio, const argumento& nombre_base,
                       const argumento& extension) {
    return cadena(
        cdir_makepath_UNICODE(unidad.c_str(), directorio.c_str(), nombre_base.c_str(), extension.c_str()));
}
/** Composes a path that may have wildcards. */
inline cadena makepath_con_comodines(const argumento& unidad, const argumento& directorio,
                                     const argumento& nombre_base, const argumento& extension) {
    return cadena(cdir_makepath_con_comodines_UNICODE(unidad.c_str(), directorio.c_str(), nombre_base.c_str(),
                                                      extension.c_str()));
}
/** A name of exactly `longitud` units: invalid characters as '_', blanks after its end. */
inline std::wstring convierte_a_nombre_base_valido(const argumento& nombre, unsigned short longitud) {
    std::wstring resultado(longitud, L' ');
    cdir_convierte_a_nombre_base_valido_UNICODE(nombre.c_str(), resultado.data(), longitud);
    return resultado;
}
/** Repairs a base name. */
inline cadena dame_nombre_base_valido(const argumento& nombre) {
    return cadena(cdir_dame_nombre_base_valido_UNICODE(nombre.c_str()));
}
/** Whether an extension holds valid characters only. */
inline bool extension_valida(const argumento& ext) {
    return lumodir::detalle::si(cdir_extension_valida_UNICODE(ext.c_str()));
}
/** The dollar form of an extension: `.txt` gives `.tx$`. */
inline cadena extension_con_dolar(const argumento& ext) {
    return cadena(cdir_extension_con_dolar_UNICODE(ext.c_str()));
}
/** `C:\a\b.txt` gives `b`. */
inline cadena nombre_base_fichero(const argumento& ruta) {
    return cadena(cdir_nombre_base_fichero_UNICODE(ruta.c_str()));
}
/** `C:\a\b.txt` gives `txt`. */
inline cadena extension_fichero(const argumento& ruta) {
    return cadena(cdir_extension_fichero_UNICODE(ruta.c_str()));
}
/** `C:\a\b.txt` gives `b.txt`. */
inline cadena nombre_y_ext_fichero(const argumento& ruta) {
    return cadena(cdir_nombre_y_ext_fichero_UNICODE(ruta.c_str()));
}
/** What follows the last `\`. */
inline cadena nombre_de_fichero_suprimiendo_path(const argumento& ruta) {
    return cadena(cdir_nombre_de_fichero_suprimiendo_path_UNICODE(ruta.c_str()));
}
/** `C:\a\b.txt` gives `C:\a\`. */
inline cadena ruta_acceso_directorio_fichero(const argumento& ruta) {
    return cadena(cdir_ruta_acceso_directorio_fichero_UNICODE(ruta.c_str()));
}
/** `C:\a\b.txt` gives `C:\a\b`. */
inline cadena ruta_y_nombre_fichero_sin_extension(const argumento& ruta) {
    return cadena(cdir_ruta_y_nombre_fichero_sin_extension_UNICODE(ruta.c_str()));
}
/** The path with another extension; nullptr for none. */
inline cadena nombre_fichero_con_ext(const argumento& ruta, const argumento& ext) {
    return cadena(cdir_nombre_fichero_con_ext_UNICODE(ruta.c_str(), ext.c_str()));
}
/** Gives a path that is held another extension; nullptr for none. */
inline void cambia_extension_nombre_fichero(cadena& ruta, const argumento& ext) {
    cdir_cambia_extension_nombre_fichero_u(lumodir::detalle::con_texto(ruta.direccion()), ext.c_str());
}
/** Joins two directories, or a directory and a name. */
inline cadena concatena_directorios(const argumento& directorio1, const argumento& directorio2) {
    return cadena(cdir_concatena_directorios_UNICODE(directorio1.c_str(), directorio2.c_str()));
}
/** Joins two directories and a name. */
inline cadena construye_path(const argumento& directorio1, const argumento& directorio2,
                             const argumento& nombre) {
    return cadena(cdir_construye_path_UNICODE(directorio1.c_str(), directorio2.c_str(), nombre.c_str()));
}
/** Shortens a path towards a length, for display. */
inline cadena ruta_abreviada_con_logitud_maxima(const argumento& ruta, unsigned short maximo) {
    return cadena(cdir_ruta_abreviada_con_logitud_maxima_u(ruta.c_str(), maximo));
}
/** `C:\a\b\f.txt` gives `C:\...\f.txt`. */
inline cadena nombre_fichero_abreviado(const argumento& nombre) {
    return cadena(cdir_nombre_fichero_abreviado_UNICODE(nombre.c_str()));
}
/** The current directory. */
inline cadena obtener_path_actual() {
    return cadena(cdir_obtener_path_actual_UNICODE());
}
/** The drive of the running program; the text is the library's, valid until the end of the process. */
inline std::wstring_view disco_de_programa() {
    return lumodir::detalle::vista(cdir_disco_de_programa_UNICODE());
}

}  // namespace cdir

/** Directory and name of a path. */
struct directorio_y_nombre {
    cadena directorio; /**< with its final separator */
    cadena nombre;
};

/** Directory and name of a path, with or without the extension of the name. */
inline directorio_y_nombre directorio_y_nombre_base_fichero(const argumento& ruta, bool con_extension) {
    directorio_y_nombre r;
    lumodir_directorio_y_nombre_base_fichero_UNICODE(ruta.c_str(), detalle::corto(con_extension),
                                                     r.directorio.direccion(), r.nombre.direccion());
    return r;
}
/** Removes one final `\` of a path that is held. */
inline void suprime_barra_final_si_hay(cadena& directorio) {
    lumodir_suprime_barra_final_si_hay(detalle::con_texto(directorio.direccion()));
}
/** Whether a path is absolute. */
inline bool ruta_es_absoluta(const argumento& ruta) {
    return detalle::si(lumodir_ruta_es_absoluta(ruta.c_str()));
}
/** A path relative to a base, when the base is its exact beginning. */
inline cadena ruta_absoluta_a_relativa(const argumento& base, const argumento& ruta) {
    return cadena(lumodir_ruta_absoluta_a_relativa(base.c_str(), ruta.c_str()));
}
/** A path made absolute on a base. */
inline cadena ruta_relativa_a_absoluta(const argumento& base, const argumento& ruta) {
    return cadena(lumodir_ruta_relativa_a_absoluta(base.c_str(), ruta.c_str()));
}
/** The directories of the environment variable PATH. */
inline lista directorios_del_path() {
    return lista(lumodir_directorios_del_path());
}
/** The short (8.3) form of a path. */
inline cadena dame_path_corto(const argumento& path) {
    return cadena(lumodir_dame_path_corto_UNICODE(path.c_str()));
}
/** The long form of a path. */
inline cadena dame_path_largo(const argumento& path) {
    return cadena(lumodir_dame_path_largo_UNICODE(path.c_str()));
}
/** A path in the form that the system takes whatever its length. */
inline cadena lmlongpath_prepended_path_si_necesario(const argumento& path) {
    return cadena(lumodir_lmlongpath_prepended_path_si_necesario(path.c_str()));
}
/** The full path of the running program. */
inline cadena dame_path_completo_del_programa() {
    return cadena(lumodir_dame_path_completo_del_programa_UNICODE());
}

}  // namespace lumodir

#endif
