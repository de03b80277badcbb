/**
 * @file lumodir_ficheros.h
 * Files on disk, beside cdir_ficheros.h: access, deletion, protection, and the other forms of a path.
 *
 * Unless stated otherwise a NULL text is reported and answered with 0 or with a new empty string, and
 * an out-parameter that is NULL means that it is not wanted and is not reported. "Retried" has the meaning of
 * cdir_ficheros.h.
 */
#ifndef LUMODIR_LUMODIR_FICHEROS_H
#define LUMODIR_LUMODIR_FICHEROS_H

#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/* ---- Access ---- */

/**
 * Tells whether a file can be opened for writing by this program alone; one open elsewhere cannot. A missing
 * file is created and deleted again; a read-only one is not touched.
 *
 * @param fichero     Path (UTF-16). NULL is reported as "(fichero) != NULL".
 * @param motivo_out  Always stored when given: a new text (widestr_nousar_destruye()) with 404523 "The file does
 *                    not have write permission." for a read-only file, else the system's text for the error;
 *                    NULL when it can be written.
 * @return 1 when writable, else 0.
 */
LUMODIR_API unsigned short lumodir_se_puede_escribir_UNICODE_ex(const wchar_t *fichero, wchar_t **motivo_out);

/**
 * Asks for write permission on a file; nothing is opened, so a file in use may still be granted.
 *
 * @param fichero  Path (UTF-16). NULL is reported.
 * @return 1 when permission is granted, else 0.
 */
LUMODIR_API unsigned short lumodir_tiene_permiso_escritura_fichero_UNICODE(const wchar_t *fichero);

/**
 * Gives the size of a file, as lmlongpath_GetFileSize() does.
 *
 * @param path       Path (UTF-16). NULL is reported and answered with all bits set.
 * @param error_out  Receives the system's error code on failure, or NULL.
 * @return Size in bytes; all bits set on failure.
 */
LUMODIR_API unsigned long long lumodir_get_tamanyo_fichero(const wchar_t *path, unsigned long *error_out);

/**
 * Waits, as long as the retry loop does, for a directory on a network or removable drive to come back. The
 * message 53963 "Waiting for access to directory '%s'" goes with the loop, which does not ask the user here.
 * Nothing in the directory is opened. Windows remembers for some seconds (5, by default) that a share did not answer,
 * so only a retry policy that lasts longer (buclrein_establece_politica()) sees it come back.
 *
 * @param directorio  Directory (8-bit). NULL is reported.
 * @return 1 when the directory is, or has become, reachable; else 0.
 */
LUMODIR_API unsigned short lumodir_espera_acceso_a_recursos_en_directorio(const char *directorio);

/* ---- Deletion ---- */

/**
 * Deletes a file if it exists, with retries and clearing of the read-only attribute but without any message.
 *
 * @param fichero    Path (UTF-16). NULL is reported.
 * @param hay_error  Receives 1 on failure, 0 when the file is deleted or absent. NULL is reported as
 *                   "(hay_error) != NULL", and the file is deleted all the same.
 */
LUMODIR_API void lumodir_borra_fichero_si_existe_UNICODE(const wchar_t *fichero, unsigned short *hay_error);

/**
 * As lumodir_borra_fichero_si_existe_UNICODE(), with a text of the caller's for the retry message.
 *
 * @param fichero        Path (UTF-16). NULL is reported.
 * @param mensaje_extra  Second line of the message (UTF-16), or NULL (not reported).
 * @param hay_error      Receives 1 on failure, 0 otherwise. NULL is reported as "(hay_error) != NULL".
 */
LUMODIR_API void lumodir_borra_fichero_con_mensaje_extra_si_existe_UNICODE(const wchar_t *fichero,
                                                                           const wchar_t *mensaje_extra,
                                                                           unsigned short *hay_error);

/**
 * Removes a directory and its parents while they are empty, up to a base that is never removed; one silent
 * attempt each, and the first that fails ends it. Subdirectories whose name begins with "." do not count as contents:
 * where there is nothing else, the removal is tried, and the system refuses it. A base that is not the beginning of
 * the directory is reported as
 * "widestr_es_subcadena_inicial_may_o_min(path_directorio, path_base_no_borrar) == CIERTO"; one that ends within a name of it
 * is passed, and then reported as "widestr_longitud(dir) > widestr_longitud(path_base)".
 *
 * @param path_directorio      Directory (UTF-16). NULL, empty or blank is reported ("(directorio) != NULL" or
 *                             "widestr_longitud(directorio) > 0") and nothing is removed.
 * @param path_base_no_borrar  Beginning of the directory that stays (UTF-16), letter case aside. NULL stands
 *                             for the drive (not reported).
 */
LUMODIR_API void
lumodir_borra_directorios_de_path_si_estan_vacios_UNICODE(const wchar_t *path_directorio,
                                                          const wchar_t *path_base_no_borrar);
/** 8-bit flavour. */
LUMODIR_API void lumodir_borra_directorios_de_path_si_estan_vacios(const char *path_directorio,
                                                                   const char *path_base_no_borrar);

/* ---- Protection: the read-only attribute ---- */

/**
 * Makes a file read-only, retried with message 53961 "It is not possible to lock the file '%s'".
 *
 * @param nomfich  Path (UTF-16). NULL is reported as "(nomfich) != NULL" and nothing is done.
 */
LUMODIR_API void lumodir_protege_fichero_UNICODE(const wchar_t *nomfich);
/** 8-bit flavour. */
LUMODIR_API void lumodir_protege_fichero(const char *nomfich);

/**
 * Makes a file writable, retried with message 53962 "It is not possible to unlock the file '%s'".
 *
 * @param nomfich  Path (UTF-16). NULL is reported as "(nomfich) != NULL" and nothing is done.
 */
LUMODIR_API void lumodir_desprotege_fichero_UNICODE(const wchar_t *nomfich);
/** 8-bit flavour. */
LUMODIR_API void lumodir_desprotege_fichero(const char *nomfich);

/**
 * Makes a file writable if it exists; a missing one gives no message.
 *
 * @param nomfich  Path (UTF-16). NULL is reported and nothing is done.
 */
LUMODIR_API void lumodir_desprotege_fichero_si_existe_UNICODE(const wchar_t *nomfich);
/** 8-bit flavour. */
LUMODIR_API void lumodir_desprotege_fichero_si_existe(const char *nomfich);

/* ---- Other forms of a path ---- */

/**
 * Gives the short (8.3) form of a path, or the path as it is when it does not exist or has none. The form of a path
 * of 248 units or more keeps the prefix `\\?\`. Not every volume makes short names:
 * https://learn.microsoft.com/en-us/windows/win32/api/fileapi/nf-fileapi-getshortpathnamew
 *
 * @param path  Path (UTF-16). NULL is reported as "(path) != NULL" and gives an empty string.
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *lumodir_dame_path_corto_UNICODE(const wchar_t *path);

/**
 * Gives the long form of a path, or the path as it is when it does not exist; in both cases without the long-path
 * prefix, unless it names a volume without a letter (`\\?\Volume{...}\x`), which cannot be named without it.
 *
 * @param path  Path (UTF-16). NULL is reported as "(path) != NULL" and gives an empty string.
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *lumodir_dame_path_largo_UNICODE(const wchar_t *path);

/**
 * Gives a path with the long-path prefix where the system needs it, as
 * lmlongpath_prepended_path_si_necesario() does.
 *
 * @param path  Path (UTF-16). NULL is reported and gives an empty string.
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *lumodir_lmlongpath_prepended_path_si_necesario(const wchar_t *path);

LUMODIR_EXTERN_C_FIN

#endif
