/**
 * @file lumodir.h
 * The `lumodir_` family: start-up settings, and the later members of the families of cdir.h (path conversion,
 * access, deletion, protection, temporary files, program location, listings of trees) and of the drives.
 *
 * Unless stated otherwise a NULL text is reported and answered with 0 or with a new empty string or list, and
 * an out-parameter that is NULL means that it is not wanted and is not reported. "Retried" has the meaning of
 * cdir_ficheros.h.
 */
#ifndef LUMODIR_LUMODIR_H
#define LUMODIR_LUMODIR_H

#include "cdir_listas.h"
#include "companions/acadorde.h"
#include "companions/arr.h"
#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/* ---- Settings, to be made once at start-up, before any thread works with files ---- */

/**
 * Told the path of a file whose deletion has failed, at the first retry, so that the program can close its
 * own handle on it. It runs on the thread that deletes.
 *
 * @param fichero  Path (UTF-16), valid only during the call.
 * @return Ignored.
 */
typedef unsigned short (*LumodirFncComprobarFichero)(const wchar_t *fichero);

/**
 * Puts the library in service mode, for good: its warnings are not shown and its retry loops make one attempt
 * without a message. Tree deletions in passes keep their pauses.
 */
LUMODIR_API void lumodir_establece_modo_servicio_sin_reintentos(void);

/**
 * Sets the function that is told about a file held open, in place of any earlier one.
 *
 * @param func_comprobar  Function, or NULL to switch it off (not reported).
 */
LUMODIR_API void
lumodir_set_func_comprobar_fichero_no_esta_abierto(LumodirFncComprobarFichero func_comprobar);

/**
 * Waits, as far as the retry loop does, for a directory on a network or removable drive to come back. The
 * message 53963 "Waiting for access to directory '%s'" goes with the loop, which does not ask the user here.
 * Nothing in the directory is opened. Windows remembers for some seconds (5, by default) that a share did not answer:
 * a retry policy that lasts longer (buclrein_establece_politica()) is what sees it come back.
 *
 * @param directorio  Directory (8-bit). NULL is reported.
 * @return 1 when the directory is, or has become, reachable; else 0.
 */
LUMODIR_API unsigned short lumodir_espera_acceso_a_recursos_en_directorio(const char *directorio);

/* ---- Paths as text ---- */

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
 * The comparison is one of plain text and stays so: base `C:\dir` and path `C:\directory\f` give `ectory\f`.
 * An invalid path or base shows 53955 "The file '%s' is not correct".
 *
 * @param base  Base directory (UTF-16), with or without a final `\`; a blank one gives the path as it is.
 *              NULL is reported.
 * @param ruta  Path (UTF-16). NULL is reported and gives an empty string.
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *lumodir_ruta_absoluta_a_relativa(const wchar_t *base, const wchar_t *ruta);

/**
 * Gives a path made absolute on a base directory, or the path as it is when it or the base is blank or it is
 * already absolute. One leading `.\` goes; `..` stays in the text for the system to resolve. An invalid path
 * shows 53955 "The file '%s' is not correct".
 *
 * @param base  Base directory (UTF-16). NULL is reported.
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

/* ---- Access ---- */

/**
 * Tells whether a file can be opened for writing by this program alone; one open elsewhere cannot. A missing
 * file is created and deleted again; a read-only one is not touched.
 *
 * @param fichero  Path (UTF-16). NULL is reported as "(fichero) != NULL".
 * @param motivo   Always stored when given: a new text (widestr_nousar_destruye()) with 404523 "The file does
 *                 not have write permission." for a read-only file, else the system's text for the error;
 *                 NULL when it can be written.
 * @return 1 when writable, else 0.
 */
LUMODIR_API unsigned short lumodir_se_puede_escribir_UNICODE_ex(const wchar_t *fichero, wchar_t **motivo);

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
 * attempt each, and the first that fails ends it. Entries whose name begins with "." do not count, but hold
 * the removal. A base that is not the beginning of the directory is reported as
 * "widestr_es_subcadena_inicial_may_o_min(path_directorio, path_base_no_borrar) == CIERTO".
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

/* ---- Temporary files ----
 *
 * The temporary directory is that of the system. When it does not exist, `\temp` under the user's
 * local-settings folder takes its place or, when that is unknown, under the Windows directory; the fallback
 * is neither checked nor created. A directory of more than 246 units leaves no room for a name and counts as one
 * that does not exist. Results are new strings (widestr_nousar_destruye()).
 */

/**
 * Gives the temporary directory in its long form. Reported: one too long ("longitud < _MAX_PATH"), and a
 * Windows directory that the system does not tell ("ret != 0").
 *
 * @return New string.
 */
LUMODIR_API wchar_t *lumodir_dameDirectorioTemporal(void);

/**
 * Creates an empty file in the temporary directory, with a name of the system's that ends in `.tmp`.
 *
 * After 21 failures a warning is shown, in service mode too: 385690 "Windows does not allow a temporary file
 * to be created in the directory that has been established for it (%s).", 385691 "The error code returned by
 * Windows is '%s'." and 402847 "To resolve this problem, you can delete the files located in the '%s'
 * directory or modify the Windows 'TEMP' environment variable to set the directory where the program's
 * temporary files will be created." Another 21 failures are reported with 385690, 385691 and 385692 "To solve
 * this problem, you can modify the 'TEMP' environment variable in Windows and establish the directory where
 * temporary program files should be created." as detail; the result then names no file.
 *
 * @return New string: the path of the file in its long form.
 */
LUMODIR_API wchar_t *lumodir_creaFicheroTemporal(void);

/**
 * Creates an empty file with a given extension in the temporary directory; `tmp` in any letter case is
 * lumodir_creaFicheroTemporal(), the rest lumodir_creaFicheroUnicoEnDirectorio().
 *
 * @param ext  Extension without its point (UTF-16). NULL is reported as "(ext) != NULL" and gives an empty
 *             string.
 * @return New string: the path of the file in its long form.
 */
LUMODIR_API wchar_t *lumodir_creaFicheroTemporalConExt(const wchar_t *ext);

/**
 * Creates an empty file with a new name and a given extension in a directory. No stray temporary file stays
 * behind. A new file that another program holds for a moment (a virus scanner) is tried again under its name first.
 *
 * Reported: a directory too long ("longitud < _MAX_PATH"), a system that gives no name ("resp != 0" with the
 * directory; the result is then an empty string) and 150 names taken ("contador < 150"; the last one is
 * returned and does not exist as a file of the caller's).
 *
 * @param directorioTemporal  Directory (UTF-16). NULL is reported as "(directorioTemporal) != NULL" and gives
 *                            an empty string.
 * @param ext                 Extension with or without its point; an empty one adds nothing. NULL is reported
 *                            as "(ext) != NULL" and gives an empty string.
 * @return New string: the path of the file, not converted to its long form.
 */
LUMODIR_API wchar_t *
lumodir_creaFicheroUnicoEnDirectorio(const wchar_t *directorioTemporal, const wchar_t *ext);

/**
 * Creates a directory with its missing parents and gives the path of a file in it; the file is not created.
 *
 * @param directorioTemporal  Directory (UTF-16). NULL or empty is not reported and answered with NULL.
 * @param nombre              File name (UTF-16). NULL or empty is not reported and answered with NULL.
 * @return New string, or NULL.
 */
LUMODIR_API wchar_t *
lumodir_creaFicheroTemporalEnDirectorio(const wchar_t *directorioTemporal, const wchar_t *nombre);

/* ---- Program location and search ---- */

/**
 * Gives the full path of the running program (not of this library). Reported: no answer of the system
 * ("tam_path > 0") and a path cut at 10240 units ("tam_path < LMLONGPATH_LUMO_MAX_PATH").
 *
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *lumodir_dame_path_completo_del_programa_UNICODE(void);

/**
 * 8-bit flavour of lumodir_dame_path_completo_del_programa_UNICODE(): its path, converted. A character that the
 * code page lacks becomes its default character, never one that looks alike.
 *
 * @return New string (lumostr_destruye()).
 */
LUMODIR_API char *lumodir_dame_path_completo_del_programa(void);

/**
 * Gives the short (8.3) form of a path, or the path as it is when it does not exist or has none. The form of a path
 * of 248 units or more keeps the prefix `\\?\`.
 *
 * @param path  Path (UTF-16). NULL is reported as "(path) != NULL" and gives an empty string.
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *lumodir_dame_path_corto_UNICODE(const wchar_t *path);

/**
 * Gives the long form of a path, or the path as it is when it does not exist; without the long-path prefix in
 * both cases, unless it names what has no letter (`\\?\Volume{...}\x`): such a path has no form without it.
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

/**
 * Looks for a name in the directories of PATH. The name is taken as it is, no extension is added, and nothing
 * checks that what is found is an executable file.
 *
 * @param nombre     File name with its extension (UTF-16). NULL is reported and nothing is found.
 * @param path_exes  Receives a new list (arr_DestruyeCADENA_u()) with every path found, empty when there is
 *                   none; or NULL, and then the search stops at the first.
 * @return 1 when found, else 0.
 */
LUMODIR_API unsigned short lumodir_busca_ejecutables_del_path(const wchar_t *nombre, ArrCADENA_u **path_exes);

/**
 * Looks for a name in the directories of PATH as lumodir_busca_ejecutables_del_path() does, first match only.
 *
 * @param nombre    File name with its extension (UTF-16). NULL is reported and nothing is found.
 * @param path_exe  Always stored when given: a new string (widestr_nousar_destruye()) with the path, or NULL
 *                  when there is none.
 * @return 1 when found, else 0.
 */
LUMODIR_API unsigned short lumodir_busca_ejecutable_del_path(const wchar_t *nombre, wchar_t **path_exe);

/* ---- Listings ----
 *
 * The extension filter is that of cdir_listas.h. Subdirectories whose name begins with "." are left out. A
 * junction or a symbolic link to a directory is not gone into and has no record of its own.
 */

/**
 * Lists the files of a directory tree: one record for each directory that has a matching file.
 *
 * The order of the records is fixed: the base first, then depth first, and among siblings the one that sorts
 * last comes first.
 *
 * @param dirBase    Base directory (UTF-16). NULL is reported as "(dirBase) != NULL".
 * @param extension  Extension filter (UTF-16); NULL for every file (not reported).
 * @param numDir     Receives the number of records. NULL is reported as "(numDir) != NULL".
 * @param ficheros   Receives a new array of records, NULL when there is none; release it with
 *                   lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(). NULL is
 *                   reported as "(ficheros) != NULL".
 */
LUMODIR_API void lumodir_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(const wchar_t *dirBase,
                                                                                  const wchar_t *extension,
                                                                                  unsigned long *numDir,
                                                                                  ListaFicheros_u **ficheros);

/**
 * As lumodir_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(), with one record for every directory
 * of the tree, also those without a matching file.
 *
 * @param dirBase    Base directory (UTF-16). NULL is reported as "(dirBase) != NULL".
 * @param extension  Extension filter (UTF-16); NULL for every file (not reported).
 * @param numDir     Receives the number of records. NULL is reported as "(numDir) != NULL".
 * @param ficheros   Receives a new array of records, freed likewise. NULL is reported as
 *                   "(ficheros) != NULL".
 */
LUMODIR_API void lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE(const wchar_t *dirBase,
                                                                                const wchar_t *extension,
                                                                                unsigned long *numDir,
                                                                                ListaFicheros_u **ficheros);

/**
 * Frees the records of a tree listing and their array, and sets the variable to NULL.
 *
 * @param numDir    Number of records.
 * @param ficheros  Address of the array variable. Reported: NULL ("(ficheros) != NULL"), records without an
 *                  array ("(*ficheros) != NULL") and an array without records ("*ficheros == NULL").
 */
LUMODIR_API void
lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(unsigned long numDir,
                                                                        ListaFicheros_u **ficheros);

/**
 * Lists the files that a search pattern finds and whose extension is one of a list; sorted by code unit.
 *
 * @param path_filtro  Directory and name with wildcards (UTF-16). NULL is reported as
 *                     "(path_filtro_generico) != NULL" and gives an empty array.
 * @param extensiones  Extensions without their point, letter case aside; NULL for every file (not reported).
 *                     With a list, names without a point are left out.
 * @return New sorted array with the bare names (acadordeu_destruye()).
 */
LUMODIR_API AcadOrdeU *lumodir_lista_de_fichero(const wchar_t *path_filtro, const ArrCADENA_u *extensiones);

/**
 * Tells whether a directory holds an entry that is not a directory; hidden and system ones count.
 *
 * @param path  Directory (UTF-16). NULL is reported as "(path) != NULL".
 * @return 1 when it does; 0 when not, and when the directory cannot be read.
 */
LUMODIR_API unsigned short lumodir_existenFicheros_UNICODE(const wchar_t *path);
/** 8-bit flavour. */
LUMODIR_API unsigned short lumodir_existenFicheros(const char *path);

/**
 * Tells whether a directory holds a subdirectory whose name does not begin with "."; hidden and system ones
 * count.
 *
 * @param path  Directory (UTF-16). NULL is reported as "(path) != NULL".
 * @return 1 when it does; 0 when not, and when the directory cannot be read.
 */
LUMODIR_API unsigned short lumodir_existenSubdirectorios_UNICODE(const wchar_t *path);
/** 8-bit flavour. */
LUMODIR_API unsigned short lumodir_existenSubdirectorios(const char *path);

/* ---- Drives of the system ---- */

#pragma pack(push, 1)

/** One drive with its label for display; freed with lumodir_destruyeEstructuraUnidadSistema(). */
typedef struct UnidadSistema {
    wchar_t *nombre;    /**< label: `C:`, volume name or network path in parentheses after it; owned */
    unsigned long tipo; /**< type code, one of INFO_TIPO_... of info.h */
} UnidadSistema;

#pragma pack(pop)

/**
 * Lists the drives of the system in the order of their letters; network drives show their path, the rest the
 * letter alone.
 *
 * @return New list of UnidadSistema (arr_DestruyeEstructurasConTipo() with
 *         lumodir_destruyeEstructuraUnidadSistema()).
 */
LUMODIR_API ArrPunteroConTipo *lumodir_UnidadesDelSistema(void);

/**
 * As lumodir_UnidadesDelSistema(), with the volume name of fixed and removable drives (`C: (Data)`). A drive
 * without a medium is reported by discos_nombre_volumen() and has empty parentheses.
 *
 * @return New list of UnidadSistema, freed likewise.
 */
LUMODIR_API ArrPunteroConTipo *lumodir_UnidadesDelSistemaConNombre(void);

/**
 * Gives the label of a drive.
 *
 * @param unidad  Record. NULL is reported as "(unidad) != NULL" and gives an empty string.
 * @return New UTF-16 copy (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *lumodir_nombreCompleto_UnidadSistema_UNICODE(const UnidadSistema *unidad);
/** 8-bit flavour. */
LUMODIR_API char *lumodir_nombreCompleto_UnidadSistema(const UnidadSistema *unidad);

/**
 * Gives the type of a drive.
 *
 * @param unidad  Record. NULL is reported as "(unidad) != NULL" and answered with 0.
 * @return Type code, one of INFO_TIPO_... of info.h.
 */
LUMODIR_API unsigned long lumodir_tipoDrive_UnidadSistema(const UnidadSistema *unidad);

/**
 * Frees a record with its label and sets the variable to NULL.
 *
 * @param unidad  Address of the record variable. NULL is reported as "(unidad) != NULL", a variable that is
 *                NULL as "(*unidad) != NULL".
 */
LUMODIR_API void lumodir_destruyeEstructuraUnidadSistema(UnidadSistema **unidad);

LUMODIR_EXTERN_C_FIN

#endif
