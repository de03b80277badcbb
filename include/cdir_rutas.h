/**
 * @file cdir_rutas.h
 * Paths as text: validity, splitting and composing, valid names, name components, joining and abbreviation.
 *
 * Nothing here asks the file system, and no "." or ".." is ever resolved. Pieces of a path:
 * - drive: `C:`, or `\\server\share` of a network path; empty in a relative path;
 * - directory: with its leading and final separators;
 * - base name: the last component without its extension;
 * - extension: from the last dot of the last component on, the dot included.
 * A name whose only dot is its first character (`.cfg`) is all base name.
 *
 * 8-bit text is read in characters of the active code page. Text that ends in half a character is taken as it is, and
 * what is put behind it may complete that character: a separator added there is then none.
 */
#ifndef LUMODIR_CDIR_RUTAS_H
#define LUMODIR_CDIR_RUTAS_H

#include "cdir_proceso.h"
#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/* ---- Validity ----
 *
 * Rules of a path, in this order; the first that fails decides and gives its message:
 * 1. not empty: 53960 "You have not specified any directory name";
 * 2. at most 10240 units: 374376 "The length of path '%s' exceeds the maximum permitted length (%ld).";
 * 3. a path with a colon begins with a letter A-Z or a-z and ':':
 *    53958 "The name of the disk drive must be a letter.";
 * 4. a path ending in '.' begins with ./ .\ ../ or ..\ or ends with /. \. /.. or \.. : 53957 "A point was
 *    found at beginning or end of the path: '%s'". Only the end is looked at, so `.profile` is valid, and "."
 *    and ".." alone are not; programs rely on that;
 * 5. every component is "." or ".." or a valid name: 53949 "There are invalid characters in the name '%s'",
 *    which is handed back to the caller but never shown;
 * 6. a network path (it begins with two backslashes) has a share:
 *    53959 "The name of the network drive is incomplete." A drive before the two backslashes counts as a component,
 *    so that `C:\\server` passes.
 * `/` separates components as `\` does, and repeated separators are accepted.
 *
 * Rules of a name: 1 to 255 units without trailing blanks; no character from 1 to 31 and none of \ / : * " ?
 * < > |; not a reserved name in any letter case, alone or followed by a dot: CON, NUL, LPT1 to LPT3, PRN,
 * COM1 to COM4, AUX, CLOCK$, IFS$HLP$, SETVERXX, $MMXXXX0, &MMXXXX0, XMSXXXX0, LUMOGR, KORAX, LUMODEV.
 *
 * A path with wildcards may have `*` as its whole base name and `.*` as its whole extension, nothing else.
 *
 * The system's own rules: https://learn.microsoft.com/en-us/windows/win32/fileio/naming-a-file
 */

/**
 * Tells whether a path is acceptable by the rules above.
 *
 * @param path             Path (UTF-16), trailing blanks ignored. NULL is reported as
 *                         "(path_sin_espacios) != NULL".
 * @param mostrar_mensaje  1 shows the message of a failure, except 53949.
 * @return 1 when valid, else 0.
 */
LUMODIR_API unsigned short cdir_path_valido_UNICODE(const wchar_t *path, unsigned short mostrar_mensaje);
/** 8-bit flavour. */
LUMODIR_API unsigned short cdir_path_valido(const char *path, unsigned short mostrar_mensaje);

/**
 * As cdir_path_valido_UNICODE(), but the message is handed back and never shown.
 *
 * @param path     Path (UTF-16), trailing blanks ignored. NULL is reported as "(path_sin_espacios) != NULL".
 * @param mensaje  Receives a new text (widestr_nousar_destruye()) on failure only, untouched otherwise; NULL
 *                 when it is not wanted (not reported).
 * @return 1 when valid, else 0.
 */
LUMODIR_API unsigned short cdir_es_path_valido_UNICODE(const wchar_t *path, wchar_t **mensaje);

/**
 * Tells whether a base name is valid; exactly "." and ".." are.
 *
 * @param nombre  Name (UTF-16); its trailing blanks are removed in place. NULL is reported as
 *                "nombre != NULL".
 * @return 1 when valid, else 0.
 */
LUMODIR_API unsigned short cdir_nombre_base_valido_UNICODE(wchar_t *nombre);

/**
 * 8-bit flavour of cdir_nombre_base_valido_UNICODE(); it works on a copy and leaves the caller's text alone.
 *
 * @param nombre  Name (8-bit). NULL is reported.
 * @return 1 when valid, else 0.
 */
LUMODIR_API unsigned short cdir_nombre_base_valido(const char *nombre);

/**
 * Tells whether a file name is valid. One that ends with a dot is not, "." and ".." included; this is
 * looked at before the blanks are removed.
 *
 * @param nombre  Name (UTF-16); its trailing blanks are removed in place. NULL is reported as
 *                "nombre != NULL".
 * @return 1 when valid, else 0.
 */
LUMODIR_API unsigned short cdir_nombre_fichero_valido(wchar_t *nombre);

/* ---- Splitting ----
 *
 * The outputs are new strings (wide: widestr_nousar_destruye(), 8-bit: lumostr_destruye()); an output that is
 * NULL is not wanted, and not reported. An invalid path is split all the same, and a NULL one is reported as
 * "(path) != NULL" and gives empty pieces without any message.
 *
 * An extension with a blank in it is no extension: when both are wanted it is given back to the base name
 * (`notes.my file` is all base name); when the base name is not wanted it comes as it is.
 * A network path without a server is reported ("maquina!=NULL"; in 8-bit "(maquina) != NULL"), and in 8-bit also one
 * without a share that a separator follows (`\\srv\share` too: "(recurso) != NULL").
 */

/** Bits of the piece mask of cdir_split_make_path_UNICODE(). */
enum {
    CDIR_PIEZA_UNIDAD = 1,      /**< drive */
    CDIR_PIEZA_DIRECTORIO = 2,  /**< directory */
    CDIR_PIEZA_NOMBRE_BASE = 4, /**< base name */
    CDIR_PIEZA_EXTENSION = 8    /**< extension */
};

/**
 * Splits a path. An invalid one shows 53955 "The file '%s' is not correct" with the path.
 *
 * @param path         Path (UTF-16), trailing blanks ignored. NULL is reported.
 * @param unidad       Receives the drive, or NULL.
 * @param directorio   Receives the directory, or NULL.
 * @param nombre_base  Receives the base name, or NULL.
 * @param extension    Receives the extension with its dot, or NULL.
 */
LUMODIR_API void cdir_splitpath_con_comprobacion_UNICODE(const wchar_t *path, wchar_t **unidad,
                                                         wchar_t **directorio, wchar_t **nombre_base,
                                                         wchar_t **extension);
/** 8-bit flavour. */
LUMODIR_API void cdir_splitpath_con_comprobacion(const char *path, char **unidad, char **directorio,
                                                 char **nombre_base, char **extension);

/**
 * Splits a path that may have wildcards. An invalid one is reported as "pathCorrecto == CIERTO" with the
 * path.
 *
 * @param path         Path (UTF-16), trailing blanks ignored. NULL is reported.
 * @param unidad       Receives the drive, or NULL.
 * @param directorio   Receives the directory, or NULL.
 * @param nombre_base  Receives the base name, or NULL.
 * @param extension    Receives the extension with its dot, or NULL.
 */
LUMODIR_API void cdir_splitpath_con_comodines_UNICODE(const wchar_t *path, wchar_t **unidad,
                                                      wchar_t **directorio, wchar_t **nombre_base,
                                                      wchar_t **extension);
/** 8-bit flavour. */
LUMODIR_API void cdir_splitpath_con_comodines(const char *path, char **unidad, char **directorio,
                                              char **nombre_base, char **extension);

/**
 * Keeps some pieces of a path: `C:\dir\file.txt` with drive and directory gives `C:\dir\`. The path is split
 * as by cdir_splitpath_con_comprobacion_UNICODE(), with its message; the result is not checked.
 *
 * @param path    Path (UTF-16). NULL is reported and gives an empty string.
 * @param piezas  Pieces to keep, CDIR_PIEZA_... added up.
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *cdir_split_make_path_UNICODE(const wchar_t *path, unsigned short piezas);
/** 8-bit flavour. */
LUMODIR_API char *cdir_split_make_path(const char *path, unsigned short piezas);

/* ---- Composing ----
 *
 * A separator after the directory and a dot before the extension are added where they are missing. Each
 * piece may be NULL, which is not reported. Reported: no piece at all
 * ("drive_path != NULL || dir_path != NULL || fname_path != NULL || ext_path != NULL") and an extension
 * without a base name ("fname_path != NULL"). A network drive `\\srv\share` is a drive here too. The path is
 * returned in any case, however long.
 */

/**
 * Composes a path and checks it. When it is invalid the base name is repaired
 * (cdir_dame_nombre_base_valido_UNICODE()) and the path composed again; one that is still invalid is
 * reported as "i_path_correcto_UNICODE( pathCompleto, puede_ser_vacio, FALSO, NULL, NULL) == CIERTO" with the
 * path.
 *
 * @param unidad       Drive (UTF-16), or NULL.
 * @param directorio   Directory, or NULL.
 * @param nombre_base  Base name, or NULL.
 * @param extension    Extension with or without its dot, or NULL.
 * @return New path (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *cdir_makepath_UNICODE(const wchar_t *unidad, const wchar_t *directorio,
                                           const wchar_t *nombre_base, const wchar_t *extension);

/**
 * As cdir_makepath_UNICODE() in 8-bit, without the repair: an invalid path is reported at once as
 * "i_path_correcto( pathCompleto, puede_ser_vacio, FALSO, NULL) == CIERTO" and returned.
 *
 * @param unidad       Drive (8-bit), or NULL.
 * @param directorio   Directory, or NULL.
 * @param nombre_base  Base name, or NULL.
 * @param extension    Extension with or without its dot, or NULL.
 * @return New path (lumostr_destruye()).
 */
LUMODIR_API char *
cdir_makepath(const char *unidad, const char *directorio, const char *nombre_base, const char *extension);

/**
 * Composes a path that may have wildcards. An invalid one is reported as
 * "i_path_correcto_con_comodines_UNICODE(pathCompleto, NULL) == CIERTO" with the path, and returned.
 *
 * @param unidad       Drive (UTF-16), or NULL.
 * @param directorio   Directory, or NULL.
 * @param nombre_base  Base name, or NULL.
 * @param extension    Extension with or without its dot, or NULL.
 * @return New path (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *cdir_makepath_con_comodines_UNICODE(const wchar_t *unidad, const wchar_t *directorio,
                                                         const wchar_t *nombre_base,
                                                         const wchar_t *extension);

/**
 * 8-bit flavour of cdir_makepath_con_comodines_UNICODE(); the report is
 * "i_path_correcto_con_comodines(pathCompleto, NULL) == CIERTO".
 *
 * @param unidad       Drive (8-bit), or NULL.
 * @param directorio   Directory, or NULL.
 * @param nombre_base  Base name, or NULL.
 * @param extension    Extension with or without its dot, or NULL.
 * @return New path (lumostr_destruye()).
 */
LUMODIR_API char *cdir_makepath_con_comodines(const char *unidad, const char *directorio,
                                              const char *nombre_base, const char *extension);

/* ---- Valid names and extensions ---- */

/**
 * Writes a name of a fixed length: each invalid character as '_', and blanks after the end of the name.
 * Reserved names are not changed.
 *
 * @param nombre    Name (UTF-16). NULL is reported as "(nombre) != NULL" and answered with 0.
 * @param result    Buffer with room for @p longitud + 1 characters, trusted; it is terminated. NULL is
 *                  reported as "(result) != NULL" and answered with 0.
 * @param longitud  Characters to write.
 * @return @p longitud.
 */
LUMODIR_API unsigned short
cdir_convierte_a_nombre_base_valido_UNICODE(const wchar_t *nombre, wchar_t *result, unsigned short longitud);

/**
 * 8-bit flavour of cdir_convierte_a_nombre_base_valido_UNICODE(), on bytes; those from 128 to 255 are all
 * valid.
 *
 * @param nombre    Name (8-bit). NULL is reported as "(nombre) != NULL" and answered with 0.
 * @param result    Buffer with room for @p longitud + 1 bytes, trusted; it is terminated. NULL is reported as
 *                  "(result) != NULL" and answered with 0.
 * @param longitud  Bytes to write.
 * @return @p longitud.
 */
LUMODIR_API unsigned short
cdir_convierte_a_nombre_base_valido(const char *nombre, char *result, unsigned short longitud);

/**
 * Repairs a base name: invalid characters become '_', leading blanks and trailing dots and blanks go, and
 * 255 units are kept. Reserved names stay, and a name made of dots and blanks becomes empty.
 *
 * @param nombre  Name (UTF-16). NULL is reported as "(nombre) != NULL" and gives an empty string.
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *cdir_dame_nombre_base_valido_UNICODE(const wchar_t *nombre);

/**
 * Tells whether an extension holds valid characters only. An empty one is valid, and neither its length nor
 * reserved names count.
 *
 * @param ext  Extension (UTF-16). NULL is reported as "ext != NULL".
 * @return 1 when valid, else 0.
 */
LUMODIR_API unsigned short cdir_extension_valida_UNICODE(const wchar_t *ext);
/** 8-bit flavour. */
LUMODIR_API unsigned short cdir_extension_valida(const char *ext);

/**
 * Gives the dollar form of an extension: its last character becomes '$' when it has four or more, the dot
 * included, else '$' is added. `.txt` gives `.tx$`, `.c` gives `.c$`, an empty one `.$`.
 *
 * @param ext  Extension with its dot (UTF-16), trailing blanks ignored. NULL is reported as "(ext) != NULL"
 *             and gives an empty string; a missing dot as "ext_sin_espacios[0] == L'.'", and the rule is
 *             applied all the same.
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *cdir_extension_con_dolar_UNICODE(const wchar_t *ext);

/* ---- Name components ----
 *
 * Results are new strings (wide: widestr_nousar_destruye(), 8-bit: lumostr_destruye()), empty when the path
 * lacks the piece and when it is NULL. "Checked" means that trailing blanks are ignored, wildcards are
 * accepted, and an invalid path is reported as "pathCorrecto == CIERTO" with the path and used all the same.
 */

/**
 * Gives the base name: `C:\a\b.txt` gives `b`, `C:\dir\` nothing. Checked.
 *
 * @param ruta_completa  Path (UTF-16). NULL is reported as "(ruta_completa) != NULL".
 * @return New string.
 */
LUMODIR_API wchar_t *cdir_nombre_base_fichero_UNICODE(const wchar_t *ruta_completa);
/** 8-bit flavour. */
LUMODIR_API char *cdir_nombre_base_fichero(const char *ruta_completa);

/**
 * Gives the extension without its dot: `b.tar.gz` gives `gz`; `.profile` and `name.` give nothing. Checked.
 *
 * @param ruta_completa  Path (UTF-16). Reported: NULL ("ruta_completa != NULL"), a blank path
 *                       ("num_caracteres > 0") and one that ends with a backslash
 *                       ("path_sin_espacios[num_caracteres - 1] != L'\\'").
 * @return New string.
 */
LUMODIR_API wchar_t *cdir_extension_fichero_UNICODE(const wchar_t *ruta_completa);

/**
 * 8-bit flavour of cdir_extension_fichero_UNICODE().
 *
 * @param ruta_completa  Path (8-bit). Reported: NULL ("ruta_completa != NULL"), a blank path
 *                       ("num_caracteres > 0") and one that ends with a backslash
 *                       ("path_sin_espacios[num_caracteres - 1] != '\\'", with the path).
 * @return New string.
 */
LUMODIR_API char *cdir_extension_fichero(const char *ruta_completa);

/**
 * Gives the name with its extension: `C:\a\b.txt` gives `b.txt`. Checked.
 *
 * @param nombre  Path (UTF-16). NULL is reported as "(nombre) != NULL".
 * @return New string.
 */
LUMODIR_API wchar_t *cdir_nombre_y_ext_fichero_UNICODE(const wchar_t *nombre);
/** 8-bit flavour. */
LUMODIR_API char *cdir_nombre_y_ext_fichero(const char *nombre);

/**
 * Gives what follows the last `\`, neither trimmed nor checked. `/` is not a separator here, on purpose:
 * `a/b\c/d` gives `c/d`.
 *
 * @param nombre  Path (UTF-16). NULL is reported.
 * @return New string.
 */
LUMODIR_API wchar_t *cdir_nombre_de_fichero_suprimiendo_path_UNICODE(const wchar_t *nombre);
/** 8-bit flavour. */
LUMODIR_API char *cdir_nombre_de_fichero_suprimiendo_path(const char *nombre);

/**
 * Gives the path up to its last `\` or `/`, that one included, neither trimmed nor checked: `C:\a\b.txt`
 * gives `C:\a\`. Without a separator it gives nothing, for `C:file.txt` too.
 *
 * @param ruta_completa  Path (UTF-16). NULL is reported as "ruta_completa != NULL", an empty one as
 *                       "num_caracteres > 0" with the path.
 * @return New string.
 */
LUMODIR_API wchar_t *cdir_ruta_acceso_directorio_fichero_UNICODE(const wchar_t *ruta_completa);
/** 8-bit flavour. */
LUMODIR_API char *cdir_ruta_acceso_directorio_fichero(const char *ruta_completa);

/**
 * Gives the path without its extension: `C:\a\b.txt` gives `C:\a\b`. Checked.
 *
 * @param ruta_completa  Path (UTF-16). NULL is reported as "(ruta_completa) != NULL".
 * @return New string.
 */
LUMODIR_API wchar_t *cdir_ruta_y_nombre_fichero_sin_extension_UNICODE(const wchar_t *ruta_completa);
/** 8-bit flavour. */
LUMODIR_API char *cdir_ruta_y_nombre_fichero_sin_extension(const char *ruta_completa);

/**
 * Gives the path with another extension: `C:\a\b .txt` with `dat` gives `C:\a\b.dat`. Checked.
 *
 * @param nombre  Path (UTF-16). NULL is reported as "(nombre) != NULL".
 * @param ext     New extension with or without its dot; NULL for none (not reported).
 * @return New string.
 */
LUMODIR_API wchar_t *cdir_nombre_fichero_con_ext_UNICODE(const wchar_t *nombre, const wchar_t *ext);
/** 8-bit flavour. */
LUMODIR_API char *cdir_nombre_fichero_con_ext(const char *nombre, const char *ext);

/**
 * Replaces the path of a variable by what cdir_nombre_fichero_con_ext_UNICODE() gives for it; the old string
 * is freed.
 *
 * @param nombre  Address of a variable that owns a library string (UTF-16). NULL is reported, and so is a
 *                variable that is NULL ("(nombre) != NULL"), which gets a new empty string.
 * @param ext     New extension with or without its dot; NULL for none (not reported).
 */
LUMODIR_API void cdir_cambia_extension_nombre_fichero_u(wchar_t **nombre, const wchar_t *ext);

/* ---- Joining ---- */

/**
 * Joins two directories, or a directory and a name, with one `\` where the first does not end with `\` or
 * `/`; one leading separator of the second goes. Nothing else is touched: `C:\a\` and `\\b` give `C:\a\\b`,
 * and an empty first part gives a result that begins with `\`.
 *
 * @param directorio1  First part (UTF-16). NULL is reported and gives an empty string.
 * @param directorio2  Second part (UTF-16). NULL is reported and gives an empty string.
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *
cdir_concatena_directorios_UNICODE(const wchar_t *directorio1, const wchar_t *directorio2);
/** 8-bit flavour. */
LUMODIR_API char *cdir_concatena_directorios(const char *directorio1, const char *directorio2);

/**
 * Joins two directories and a name by cdir_concatena_directorios_UNICODE(), so one leading separator of the
 * name goes: `C:\a`, `b` and `\f.txt` give `C:\a\b\f.txt`.
 *
 * @param directorio1  First directory (UTF-16). NULL is reported and gives an empty string.
 * @param directorio2  Second directory (UTF-16). NULL is reported and gives an empty string.
 * @param nombre       File name (UTF-16). NULL is reported and gives an empty string.
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *
cdir_construye_path_UNICODE(const wchar_t *directorio1, const wchar_t *directorio2, const wchar_t *nombre);

/**
 * As cdir_construye_path_UNICODE() in 8-bit, except that the name is added as it stands: `C:\a`, `b` and
 * `\f.txt` give `C:\a\b\\f.txt`. The flavours differ on purpose.
 *
 * @param directorio1  First directory (8-bit). NULL is reported and gives an empty string.
 * @param directorio2  Second directory (8-bit). NULL is reported and gives an empty string.
 * @param nombre       File name (8-bit). NULL is reported and gives an empty string.
 * @return New string (lumostr_destruye()).
 */
LUMODIR_API char *cdir_construye_path(const char *directorio1, const char *directorio2, const char *nombre);

/* ---- Abbreviation for display ---- */

/**
 * Shortens a path towards a length by putting "..." in place of directories; drive, base name and extension
 * stay whole and no component is cut. The result is as a rule shorter than the maximum, and may be longer
 * than it and even than the path. An invalid path that has to be shortened shows 53955 "The file '%s' is not
 * correct".
 *
 * Broken invariants are reported as "tam_dir_abreviado > 5", "tam_dir_abreviado < tam_dir_completo" or
 * "widestr_longitud(dir_abreviado) <= tam_dir_abreviado".
 *
 * @param ruta    Path (UTF-16). NULL is reported and gives an empty string.
 * @param maximo  Wanted length in UTF-16 units. A path that is not longer comes back as it is; 0 gives drive,
 *                `\...\` and name.
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *cdir_ruta_abreviada_con_logitud_maxima_u(const wchar_t *ruta, unsigned short maximo);

/**
 * Gives drive, `\...\` and name of a path, whatever its length: `C:\a\b\f.txt` gives `C:\...\f.txt`, and
 * `f.txt` gives `\...\f.txt`. An invalid path shows the message of the rule that failed, is reported as
 * "pathCorrecto == CIERTO" with the path, and is abbreviated all the same.
 *
 * @param nombre  Path (UTF-16), trailing blanks ignored. NULL is reported as "(nombre) != NULL" and gives an
 *                empty string.
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *cdir_nombre_fichero_abreviado_UNICODE(const wchar_t *nombre);

LUMODIR_EXTERN_C_FIN

#endif
