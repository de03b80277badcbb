/**
 * @file lumodir_rutas.h
 * Paths as text, beside cdir_rutas.h: relative and absolute, a path in two pieces, the directories of PATH.
 *
 * Unless stated otherwise a NULL text is reported and answered with 0 or with a new empty string or list, and
 * an out-parameter that is NULL means that it is not wanted and is not reported. Where paths are split, one like
 * `\\\`, which names no server, is reported as "maquina!=NULL".
 */
#ifndef LUMODIR_LUMODIR_RUTAS_H
#define LUMODIR_LUMODIR_RUTAS_H

#include "companions/arr.h"
#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/**
 * Gives the directory and the name of a path. The two names are cut differently, on purpose: with the
 * extension it is what follows the last `\` (cdir_nombre_de_fichero_suprimiendo_path_UNICODE()), without it
 * the base name (cdir_nombre_base_fichero_UNICODE(), with its checks).
 *
 * @param ruta_completa  Path (UTF-16). NULL is reported and gives empty strings.
 * @param con_extension  1 keeps the extension of the name.
 * @param directorio     Receives a new string with the directory and its final separator
 *                       (widestr_nousar_destruye()), or NULL.
 * @param nombre         Receives a new string with the name, or NULL.
 */
LUMODIR_API void lumodir_directorio_y_nombre_base_fichero_UNICODE(const wchar_t *ruta_completa,
                                                                  unsigned short con_extension,
                                                                  wchar_t **directorio, wchar_t **nombre);
/** 8-bit flavour. */
LUMODIR_API void lumodir_directorio_y_nombre_base_fichero(const char *ruta_completa,
                                                          unsigned short con_extension, char **directorio,
                                                          char **nombre);

/**
 * Removes one final `\` in place; a final `/` stays.
 *
 * @param directorio  Address of a string variable (UTF-16). NULL is reported as "(directorio) != NULL", and
 *                    so is a variable that is NULL.
 */
LUMODIR_API void lumodir_suprime_barra_final_si_hay(wchar_t **directorio);

/**
 * Tells whether a path is absolute: it has a drive (`C:x` counts, and network paths do) or begins with `\`.
 * `/x` is not absolute. An invalid path shows 53955 "The file '%s' is not correct".
 *
 * @param ruta  Path (UTF-16). NULL is reported.
 * @return 1 when absolute, else 0.
 */
LUMODIR_API unsigned short lumodir_ruta_es_absoluta(const wchar_t *ruta);

/**
 * Gives a path relative to a base directory when the base is its exact beginning, letter case included, else
 * the path as it is; `..` steps are never made. The drive of the base does not count when the path has none.
 *
 * Plain text is compared, and programs rely on it: base `C:\dir` and path `C:\directory\f` give `ectory\f`.
 * An invalid path or base shows 53955 "The file '%s' is not correct".
 *
 * @param base  Base directory (UTF-16), with or without a final `\`; a blank one gives the path as it is.
 *              NULL is reported and gives an empty string.
 * @param ruta  Path (UTF-16). NULL is reported and gives an empty string.
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *lumodir_ruta_absoluta_a_relativa(const wchar_t *base, const wchar_t *ruta);

/**
 * Gives a path made absolute on a base directory, or the path as it is when it or the base is blank or it is
 * already absolute. One leading `.\` goes; `..` stays in the text for the system to resolve. An invalid path
 * shows 53955 "The file '%s' is not correct".
 *
 * @param base  Base directory (UTF-16). NULL is reported and gives an empty string.
 * @param ruta  Path (UTF-16). NULL is reported and gives an empty string.
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *lumodir_ruta_relativa_a_absoluta(const wchar_t *base, const wchar_t *ruta);

/**
 * Lists the directories of the environment variable PATH in their order, without surrounding blanks. Empty
 * pieces are left out, blank ones become empty strings, repeats and quotes stay. The variable is read as the
 * process has it at this moment, whichever C runtime (or SetEnvironmentVariableW()) has set it.
 *
 * @return New list (arr_DestruyeCADENA_u()), empty when the variable is not set.
 */
LUMODIR_API ArrCADENA_u *lumodir_directorios_del_path(void);

LUMODIR_EXTERN_C_FIN

#endif
