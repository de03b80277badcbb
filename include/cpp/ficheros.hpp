/**
 * @file ficheros.hpp
 * Files and directories on disk (cdir_ficheros.h, lumodir_ficheros.h and the like): existence, access, creation,
 * deletion, renaming, protection, temporary files, search in PATH. The names are those of the C functions, as
 * told in rutas.hpp. A `bool` says whether it was done; functions without an answer have none in C either.
 */
#ifndef LUMODIR_CPP_FICHEROS_HPP
#define LUMODIR_CPP_FICHEROS_HPP

#include "../cdir_ficheros.h"
#include "../lumodir.h"
#include "base.hpp"

namespace lumodir {
namespace cdir {

/* ---- Existence and access ---- */

/** Whether a name exists, a file or a directory alike. */
inline bool existe_fichero(const argumento& nombre) {
    return lumodir::detalle::si(cdir_existe_fichero_UNICODE(nombre.c_str()));
}
/** The same test. */
inline bool existe_directorio(const argumento& nombre) {
    return lumodir::detalle::si(cdir_existe_directorio_UNICODE(nombre.c_str()));
}
/** The same test, with a text for the user. */
inline respuesta existe_directorio_con_mensaje_opc(const argumento& nombre) {
    respuesta r;
    r.bien = lumodir::detalle::si(
        cdir_existe_directorio_UNICODE_con_mensaje_opc(nombre.c_str(), r.motivo.direccion()));
    return r;
}
/** Whether a file that must exist does; if not it is shown and reported. */
inline bool comprueba_existe_fichero(const argumento& fichero) {
    return lumodir::detalle::si(cdir_comprueba_existe_fichero(fichero.c_str()));
}
/** Whether a name is a directory. */
inline bool es_directorio(const argumento& path) {
    return lumodir::detalle::si(cdir_es_directorio_u(path.c_str()));
}
/** Whether a search pattern finds a file. */
inline bool existe_fichero_filtro(const argumento& path_filtro) {
    return lumodir::detalle::si(cdir_existe_fichero_filtro_UNICODE(path_filtro.c_str()));
}
/** The bare name of the first directory that a search pattern finds. */
inline std::optional<cadena> existe_directorio_filtro(const argumento& path_filtro) {
    cadena nombre;
    if (!lumodir::detalle::si(cdir_existe_directorio_filtro(path_filtro.c_str(), nombre.direccion()))) {
        return std::nullopt;
    }
    return nombre;
}
/** Whether a file can be opened for reading. */
inline bool se_puede_leer(const argumento& fichero) {
    return lumodir::detalle::si(cdir_se_puede_leer_UNICODE(fichero.c_str()));
}
/** Whether this program alone can write a file. */
inline bool se_puede_escribir(const argumento& fichero) {
    return lumodir::detalle::si(cdir_se_puede_escribir_UNICODE(fichero.c_str()));
}
/** Whether a new file can be created in a directory, which is created when it is missing. */
inline respuesta se_puede_escribir_en_directorio(const argumento& directorio) {
    respuesta r;
    r.bien =
        lumodir::detalle::si(cdir_se_puede_escribir_en_directorio(directorio.c_str(), r.motivo.direccion()));
    return r;
}
/** The same for the directory of a file. */
inline respuesta se_puede_escribir_fichero_en_directorio(const argumento& fichero) {
    respuesta r;
    r.bien = lumodir::detalle::si(
        cdir_se_puede_escribir_fichero_en_directorio(fichero.c_str(), r.motivo.direccion()));
    return r;
}

/* ---- Creating, renaming ---- */

/** Creates the directories of a path, which names a directory or else a file. */
inline bool crea_directorios(const argumento& path, bool es_directorio_el_path) {
    return lumodir::detalle::si(
        cdir_crea_directorios_UNICODE(path.c_str(), lumodir::detalle::corto(es_directorio_el_path)));
}
/** Creates a directory with its missing parents. */
inline bool crea_directorios_del_path(const argumento& path) {
    return lumodir::detalle::si(cdir_crea_directorios_del_path_UNICODE(path.c_str()));
}
/** Creates the directory of a file with its missing parents. */
inline bool crea_directorios_fichero(const argumento& path) {
    return lumodir::detalle::si(cdir_crea_directorios_fichero_UNICODE(path.c_str()));
}
/** Creates a directory with its missing parents, without a message. */
inline bool crea_directorios_si_es_posible(const argumento& path) {
    return lumodir::detalle::si(cdir_crea_directorios_si_es_posible_UNICODE(path.c_str()));
}
/** Creates the directory of a file with its missing parents, without a message. */
inline bool crea_directorios_fichero_si_es_posible(const argumento& path) {
    return lumodir::detalle::si(cdir_crea_directorios_fichero_si_es_posible_UNICODE(path.c_str()));
}
/** Renames a file, with retries and messages; an existing target is never replaced. */
inline void renombra_fichero(const argumento& viejo, const argumento& nuevo) {
    cdir_renombra_fichero_UNICODE(viejo.c_str(), nuevo.c_str());
}
/** Renames a file in one silent attempt. */
inline bool renombra_fichero_si_es_posible(const argumento& viejo, const argumento& nuevo) {
    return lumodir::detalle::si(cdir_renombra_fichero_si_es_posible_UNICODE(viejo.c_str(), nuevo.c_str()));
}
/** Moves a file within its volume in one silent attempt. */
inline bool mueve_fichero(const argumento& origen, const argumento& destino) {
    return lumodir::detalle::si(cdir_mueve_fichero(origen.c_str(), destino.c_str()));
}
/** Gives every file of a directory that has an extension another one; a file in the way is deleted. */
inline void cambia_extension_ficheros(const argumento& directorio, const argumento& vieja,
                                      const argumento& nueva) {
    cdir_cambia_extension_ficheros_u(directorio.c_str(), vieja.c_str(), nueva.c_str());
}

/* ---- Deleting ---- */

/** Deletes a file that must exist. */
inline bool borra_fichero(const argumento& fichero) {
    return lumodir::detalle::si(cdir_borra_fichero_UNICODE(fichero.c_str()));
}
/** The same with a text of the caller's in the retry message; nullptr for the usual one. */
inline bool borra_fichero_con_mensaje_extra(const argumento& fichero, const argumento& mensaje_extra) {
    return lumodir::detalle::si(
        cdir_borra_fichero_con_mensaje_extra_UNICODE(fichero.c_str(), mensaje_extra.c_str()));
}
/** Deletes a file if it exists, with retries and messages; a missing one counts as done. */
inline bool borra_fichero_si_existe(const argumento& fichero) {
    return lumodir::detalle::si(cdir_borra_fichero_si_existe_UNICODE(fichero.c_str()));
}
/** Deletes a file in one silent attempt. */
inline bool borra_fichero_con_comprobacion(const argumento& fichero) {
    return lumodir::detalle::si(cdir_borra_fichero_con_comprobacion_UNICODE(fichero.c_str()));
}
/** Deletes the files that a pattern finds, silently. */
inline void delete_ficheros(const argumento& path_filtro) {
    cdir_delete_ficheros_UNICODE(path_filtro.c_str());
}
/** Removes an empty directory that must exist. */
inline bool borra_directorio(const argumento& directorio) {
    return lumodir::detalle::si(cdir_borra_directorio_UNICODE(directorio.c_str()));
}
/** Removes an empty directory if it exists. */
inline bool borra_directorio_si_existe(const argumento& directorio) {
    return lumodir::detalle::si(cdir_borra_directorio_si_existe_UNICODE(directorio.c_str()));
}
/** Removes an empty directory if it exists, without a message. */
inline bool se_borra_directorio(const argumento& directorio) {
    return lumodir::detalle::si(cdir_se_borra_directorio(directorio.c_str()));
}
/** Deletes the contents of a directory. */
inline void borra_contenido_directorio(const argumento& directorio) {
    cdir_borra_contenido_directorio_UNICODE(directorio.c_str());
}
/** Deletes a tree. */
inline bool borra_directorio_y_subdirectorios(const argumento& directorio) {
    return lumodir::detalle::si(cdir_borra_directorio_y_subdirectorios_UNICODE(directorio.c_str()));
}
/** Deletes a tree until a flag, 1 at the start, is set to 0. */
inline bool borra_directorio_y_subdirectorios_parando(const argumento& directorio,
                                                      unsigned short& continuar) {
    return lumodir::detalle::si(
        cdir_borra_directorio_y_subdirectorios_parando(directorio.c_str(), &continuar));
}
/** Deletes the files directly in a directory, in passes. */
inline void borra_contenido_directorio_reintentando(const argumento& directorio) {
    cdir_borra_contenido_directorio_reintentando_u(directorio.c_str());
}
/** Deletes a tree, the directory included, in passes; files that remain are not reported. */
inline bool borra_contenido_directorio_si_es_posible_reintentando(const argumento& directorio) {
    return lumodir::detalle::si(
        cdir_borra_contenido_directorio_si_es_posible_reintentando_u(directorio.c_str()));
}
/** Deletes a tree, the directory included, in passes; files that remain are reported. */
inline void borra_directorio_y_subdirectorios_reintentando(const argumento& directorio) {
    cdir_borra_directorio_y_subdirectorios_reintentando_u(directorio.c_str());
}

/** What was left of a tree. */
struct borrado {
    bool bien = false; /**< the directory was removed */
    lista fallos;      /**< full paths of the files that could not be deleted */
    explicit operator bool() const noexcept { return bien; }
};

/** Deletes a tree in one silent pass. */
inline borrado borra_directorio_y_subdirectorios_si_se_puede(const argumento& directorio) {
    borrado r{false, lista(arr_CreaCADENA_u(0))};
    r.bien = lumodir::detalle::si(
        cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE(directorio.c_str(), r.fallos.get()));
    return r;
}

}  // namespace cdir

/* ---- The later members ---- */

/** Waits, as far as the retry loop does, for a directory (8-bit) on a network or removable drive. */
inline bool espera_acceso_a_recursos_en_directorio(const argumento_a& directorio) {
    return detalle::si(lumodir_espera_acceso_a_recursos_en_directorio(directorio.c_str()));
}
/** Whether this program alone can write a file, with the reason. */
inline respuesta se_puede_escribir_ex(const argumento& fichero) {
    respuesta r;
    r.bien = detalle::si(lumodir_se_puede_escribir_UNICODE_ex(fichero.c_str(), r.motivo.direccion()));
    return r;
}
/** Asks for write permission on a file; nothing is opened. */
inline bool tiene_permiso_escritura_fichero(const argumento& fichero) {
    return detalle::si(lumodir_tiene_permiso_escritura_fichero_UNICODE(fichero.c_str()));
}
/** The size of a file in bytes; on failure nothing, and the system's code where it is wanted. */
inline std::optional<unsigned long long> get_tamanyo_fichero(const argumento& path,
                                                             unsigned long* codigo_error = nullptr) {
    const unsigned long long bytes = lumodir_get_tamanyo_fichero(path.c_str(), codigo_error);
    return bytes == ~0ull ? std::nullopt : std::optional<unsigned long long>(bytes);
}
/**
 * Deletes a file if it exists, with retries, without a message; a missing one counts as done.
 *
 * The C function is lumodir_borra_fichero_si_existe_UNICODE(). It has a name of its own here, because the one of
 * `cdir` differs in nothing but that it asks and warns: which of the two is meant must not hang on a forgotten
 * `cdir::`, and `using namespace` of both must not be ambiguous.
 */
inline bool borra_fichero_si_existe_sin_mensaje(const argumento& fichero) {
    unsigned short hay_error = CIERTO;
    lumodir_borra_fichero_si_existe_UNICODE(fichero.c_str(), &hay_error);
    return hay_error == FALSO;
}
/** The same with a text of the caller's for the retry message, or nullptr. */
inline bool borra_fichero_con_mensaje_extra_si_existe(const argumento& fichero,
                                                      const argumento& mensaje_extra) {
    unsigned short hay_error = CIERTO;
    lumodir_borra_fichero_con_mensaje_extra_si_existe_UNICODE(fichero.c_str(), mensaje_extra.c_str(),
                                                              &hay_error);
    return hay_error == FALSO;
}
/** Removes a directory and its parents while they are empty, up to a base that stays (nullptr: the drive). */
inline void borra_directorios_de_path_si_estan_vacios(const argumento& directorio,
                                                      const argumento& base_que_queda = nullptr) {
    lumodir_borra_directorios_de_path_si_estan_vacios_UNICODE(directorio.c_str(), base_que_queda.c_str());
}
/** Makes a file read-only. */
inline void protege_fichero(const argumento& fichero) {
    lumodir_protege_fichero_UNICODE(fichero.c_str());
}
/** Makes a file writable. */
inline void desprotege_fichero(const argumento& fichero) {
    lumodir_desprotege_fichero_UNICODE(fichero.c_str());
}
/** Makes a file writable if it exists. */
inline void desprotege_fichero_si_existe(const argumento& fichero) {
    lumodir_desprotege_fichero_si_existe_UNICODE(fichero.c_str());
}
/** The temporary directory of the system. */
inline cadena dameDirectorioTemporal() {
    return cadena(lumodir_dameDirectorioTemporal());
}
/** Creates an empty temporary file and gives its path; it is the caller's to delete. */
inline cadena creaFicheroTemporal() {
    return cadena(lumodir_creaFicheroTemporal());
}
/** The same with an extension, without its dot. */
inline cadena creaFicheroTemporalConExt(const argumento& ext) {
    return cadena(lumodir_creaFicheroTemporalConExt(ext.c_str()));
}
/** Creates an empty file with a new name in a directory. */
inline cadena creaFicheroUnicoEnDirectorio(const argumento& directorio, const argumento& ext) {
    return cadena(lumodir_creaFicheroUnicoEnDirectorio(directorio.c_str(), ext.c_str()));
}
/** Creates a directory and gives the path of a file in it; nothing when one of the two is empty. */
inline std::optional<cadena> creaFicheroTemporalEnDirectorio(const argumento& directorio,
                                                             const argumento& nombre) {
    wchar_t* path = lumodir_creaFicheroTemporalEnDirectorio(directorio.c_str(), nombre.c_str());
    return path == nullptr ? std::nullopt : std::optional<cadena>(cadena(path));
}
/** Every file of that name in the directories of PATH. */
inline lista busca_ejecutables_del_path(const argumento& nombre) {
    lista encontrados;
    lumodir_busca_ejecutables_del_path(nombre.c_str(), encontrados.direccion());
    return encontrados;
}
/** The first file of that name in the directories of PATH. */
inline std::optional<cadena> busca_ejecutable_del_path(const argumento& nombre) {
    cadena encontrado;
    if (!detalle::si(lumodir_busca_ejecutable_del_path(nombre.c_str(), encontrado.direccion()))) {
        return std::nullopt;
    }
    return encontrado;
}

}  // namespace lumodir

#endif
