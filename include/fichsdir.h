/**
 * @file fichsdir.h
 * File sets: the contents of one directory as lists of names, or as records with date and protection.
 *
 * Every list is new and never NULL: a directory that cannot be read gives an empty one. A NULL directory is
 * reported as "(directorio) != NULL", a NULL search pattern as "(path_filtro_generico) != NULL", and both
 * give an empty list. A directory may end with `\` or not. Entries come in the system's order unless a
 * function says "sorted"; sorting is by code unit, without a locale. "The directories" below are the
 * subdirectories of the given directory, by bare name.
 */
#ifndef LUMODIR_FICHSDIR_H
#define LUMODIR_FICHSDIR_H

#include "companions/acadorde.h"
#include "companions/apunorde.h"
#include "companions/arr.h"
#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

#pragma pack(push, 1)

/**
 * One file of a directory. Every operation on a record reports a broken one as "(fichsdir) != NULL",
 * "(fichsdir->nombre) != NULL", "fichsdir->fecha >= 0" (a file dated before 1970) or
 * "(fichsdir->ruta) != NULL".
 */
typedef struct Fichsdir {
    char *nombre;             /**< name with extension, 8-bit, owned, never NULL */
    long long fecha;          /**< last write, local seconds since 1970 (timefich_convertir_fecha()) */
    unsigned short protegido; /**< 1 when the file is read-only */
    wchar_t *ruta;            /**< listed directory as the caller gave it, UTF-16, owned, never NULL */
} Fichsdir;

#pragma pack(pop)

/**
 * Asked before each entry of an interruptible listing.
 *
 * @param progreso  What the caller gave to the listing.
 * @return 1 when the user has closed the progress display; anything else goes on.
 */
typedef unsigned short (*FichsdirFncUsuarioCierraProgreso)(void *progreso);

/* ---- Records of files ---- */

/**
 * Lists the files of a directory as records.
 *
 * @param directorio  Directory (UTF-16). NULL is reported.
 * @return New list of Fichsdir; free it with arr_DestruyeEstructurasConTipo() and fichsdir_destruye().
 */
LUMODIR_API ArrPunteroConTipo *fichsdir_ficheros_u(const wchar_t *directorio);
/** 8-bit flavour. */
LUMODIR_API ArrPunteroConTipo *fichsdir_ficheros(const char *directorio);

/**
 * As fichsdir_ficheros(), interruptible: when the callback answers 1 the walk stops, and what was taken so
 * far is returned.
 *
 * @param directorio   Directory (8-bit). NULL is reported.
 * @param progreso     Handed to the callback as it is. NULL is reported as "(progreso) != NULL".
 * @param interrumpido Set to 1 when the walk is stopped and never to 0: the caller initialises it. NULL is
 *                     reported as "(interrumpido) != NULL".
 * @param fncptr_prgs_usuario_cierra_progreso  Callback. NULL is reported as
 *                     "(fncptr_prgs_usuario_cierra_progreso) != NULL".
 * @return New list of Fichsdir, freed like that of fichsdir_ficheros_u().
 */
LUMODIR_API ArrPunteroConTipo *
fichsdir_ficheros_prog(const char *directorio, void *progreso, unsigned short *interrumpido,
                       FichsdirFncUsuarioCierraProgreso fncptr_prgs_usuario_cierra_progreso);

/**
 * Lists the files of a directory as records sorted by name.
 *
 * @param directorio  Directory (8-bit). NULL is reported.
 * @return New sorted array of Fichsdir; apunorde_nousar_destruye() frees it with its records. Look a name up
 *         with apunorde_nousar_busca() and fichsdir_compara_nombre().
 */
LUMODIR_API ApunOrde *fichsdir_ficheros_existentes_ordenados(const char *directorio);

/**
 * Gives an empty sorted array like that of fichsdir_ficheros_existentes_ordenados(), for the caller to fill.
 *
 * @return New sorted array; free it with apunorde_nousar_destruye().
 */
LUMODIR_API ApunOrde *fichsdir_ficheros_ordenados(void);

/* ---- Names of directories ---- */

/**
 * Lists the directories, sorted, hidden ones included. Names that begin with "." are left out.
 *
 * @param directorio  Directory (UTF-16). NULL is reported.
 * @return New list (arr_DestruyeCADENA_u()).
 */
LUMODIR_API ArrCADENA_u *fichsdir_directorios_u(const wchar_t *directorio);
/** 8-bit flavour. */
LUMODIR_API ArrCADENA *fichsdir_directorios(const char *directorio);

/**
 * As fichsdir_directorios(), interruptible; what was taken before the stop is sorted all the same.
 *
 * @param directorio   Directory (8-bit). NULL is reported.
 * @param progreso     Handed to the callback as it is. NULL is reported as "(progreso) != NULL".
 * @param interrumpido Set to 1 when the walk is stopped and never to 0. NULL is reported as
 *                     "(interrumpido) != NULL".
 * @param fncptr_prgs_usuario_cierra_progreso  Callback. NULL is reported as
 *                     "(fncptr_prgs_usuario_cierra_progreso) != NULL".
 * @return New list (arr_DestruyeCADENA()).
 */
LUMODIR_API ArrCADENA *
fichsdir_directorios_prog(const char *directorio, void *progreso, unsigned short *interrumpido,
                          FichsdirFncUsuarioCierraProgreso fncptr_prgs_usuario_cierra_progreso);

/**
 * As fichsdir_directorios(), without the names that have an extension: `a`, `b.old`, `c.bak`, `d` give `a`,
 * `d`.
 *
 * @param directorio  Directory (8-bit). NULL is reported.
 * @return New list (arr_DestruyeCADENA()).
 */
LUMODIR_API ArrCADENA *fichsdir_directorios_sin_extension(const char *directorio);

/**
 * As fichsdir_directorios_u(), without the hidden directories.
 *
 * @param directorio  Directory (UTF-16). NULL is reported.
 * @return New list (arr_DestruyeCADENA_u()).
 */
LUMODIR_API ArrCADENA_u *fichsdir_directorios_sin_ocultos_u(const wchar_t *directorio);

/**
 * As fichsdir_directorios_u(), with the names that begin with "."; only "." and ".." are left out.
 *
 * @param directorio  Directory (UTF-16). NULL is reported.
 * @return New list (arr_DestruyeCADENA_u()).
 */
LUMODIR_API ArrCADENA_u *fichsdir_directorios_incluyendo_empiezan_por_puntos_u(const wchar_t *directorio);

/**
 * Lists the directories that a pattern finds, "." and ".." included; not sorted.
 *
 * @param path_filtro  Search pattern: directory and name with wildcards (UTF-16). NULL is reported.
 * @return New list (arr_DestruyeCADENA_u()).
 */
LUMODIR_API ArrCADENA_u *fichsdir_nombres_directorios_cumplen_filtro_u(const wchar_t *path_filtro);

/* ---- Names of files ---- */

/**
 * Lists the names of the files; not sorted.
 *
 * @param directorio  Directory (UTF-16). NULL is reported.
 * @return New list (arr_DestruyeCADENA_u()).
 */
LUMODIR_API ArrCADENA_u *fichsdir_nombres_ficheros_u(const wchar_t *directorio);
/** 8-bit flavour. */
LUMODIR_API ArrCADENA *fichsdir_nombres_ficheros(const char *directorio);

/**
 * As fichsdir_nombres_ficheros(), interruptible.
 *
 * @param directorio   Directory (8-bit). NULL is reported.
 * @param progreso     Handed to the callback as it is. NULL is reported as "(progreso) != NULL".
 * @param interrumpido Set to 1 when the walk is stopped and never to 0. NULL is reported as
 *                     "(interrumpido) != NULL".
 * @param fncptr_prgs_usuario_cierra_progreso  Callback. NULL is reported as
 *                     "(fncptr_prgs_usuario_cierra_progreso) != NULL".
 * @return New list (arr_DestruyeCADENA()).
 */
LUMODIR_API ArrCADENA *
fichsdir_nombres_ficheros_prog(const char *directorio, void *progreso, unsigned short *interrumpido,
                               FichsdirFncUsuarioCierraProgreso fncptr_prgs_usuario_cierra_progreso);

/**
 * Lists the files that a pattern finds; not sorted.
 *
 * @param path_filtro  Search pattern: directory and name with wildcards (UTF-16). NULL is reported.
 * @return New list (arr_DestruyeCADENA_u()).
 */
LUMODIR_API ArrCADENA_u *fichsdir_nombres_ficheros_cumplen_filtro_u(const wchar_t *path_filtro);

/**
 * As fichsdir_nombres_ficheros_cumplen_filtro_u() with an 8-bit result. Only the result is 8-bit: the pattern
 * is UTF-16 in both, so that a directory that the code page cannot write can be searched.
 *
 * @param path_filtro  Search pattern (UTF-16). NULL is reported.
 * @return New list (arr_DestruyeCADENA()).
 */
LUMODIR_API ArrCADENA *fichsdir_nombres_ficheros_cumplen_filtro(const wchar_t *path_filtro);

/**
 * Lists the names, with extension, of the files that have an extension, letter case aside; not sorted.
 *
 * @param directorio  Directory (UTF-16). NULL is reported.
 * @param extension   Extension without its dot (UTF-16). NULL is reported and gives an empty list.
 * @return New list (arr_DestruyeCADENA_u()).
 */
LUMODIR_API ArrCADENA_u *
fichsdir_nombres_ficheros_con_extension_u(const wchar_t *directorio, const wchar_t *extension);

/**
 * As fichsdir_nombres_ficheros_con_extension_u() in 8-bit, with two differences: the file's extension is the
 * lower-case one of its file-name record and the given one is compared as it is, so `TXT` finds nothing; and in such a
 * record a name whose only dot is its first character is all extension, so `txt` finds `.txt` here alone.
 *
 * @param directorio  Directory (8-bit). NULL is reported.
 * @param extension   Extension without its dot, in lower case (8-bit). NULL is reported and gives an empty
 *                    list.
 * @return New list (arr_DestruyeCADENA()).
 */
LUMODIR_API ArrCADENA *fichsdir_nombres_ficheros_con_extension(const char *directorio, const char *extension);

/**
 * Gives the base names, in upper case, of the files that fichsdir_nombres_ficheros_con_extension() finds;
 * sorted, without repeats.
 *
 * @param directorio  Directory (8-bit). NULL is reported.
 * @param extension   Extension without its dot, in lower case (8-bit). NULL is reported and gives an empty
 *                    set.
 * @return New sorted array (acadorde_destruye()).
 */
LUMODIR_API AcadOrde *
fichsdir_nombres_base_en_mayusculas_ficheros_con_extension(const char *directorio, const char *extension);

/**
 * As fichsdir_nombres_base_en_mayusculas_ficheros_con_extension(), in lower case.
 *
 * @param directorio  Directory (8-bit). NULL is reported.
 * @param extension   Extension without its dot, in lower case (8-bit). NULL is reported and gives an empty
 *                    set.
 * @return New sorted array (acadorde_destruye()).
 */
LUMODIR_API AcadOrde *
fichsdir_nombres_base_en_minusculas_ficheros_con_extension(const char *directorio, const char *extension);

/* ---- Operations on a record ---- */

/**
 * Gives the name of a file.
 *
 * @param fichsdir  Record. NULL is reported as "(fichsdir) != NULL".
 * @return New 8-bit copy (lumostr_destruye()).
 */
LUMODIR_API char *fichsdir_nombre_fichero(const Fichsdir *fichsdir);

/**
 * Gives the full path of a file: the listed directory joined with the name.
 *
 * @param fichsdir  Record. NULL is reported as "(fichsdir) != NULL".
 * @return New UTF-16 string (widestr_nousar_destruye()). A name with a character that the code page lacks has
 *         lost it, since the record holds the name in 8-bit.
 */
LUMODIR_API wchar_t *fichsdir_path_fichero(const Fichsdir *fichsdir);

/**
 * Gives the date of a file.
 *
 * @param fichsdir  Record. NULL is reported as "(fichsdir) != NULL" and answered with 0.
 * @return Last write, local wall-clock seconds since 1970.
 */
LUMODIR_API long long fichsdir_fecha_fichero(const Fichsdir *fichsdir);

/**
 * Tells whether a file was read-only when it was listed.
 *
 * @param fichsdir  Record. NULL is reported as "(fichsdir) != NULL" and answered with 0.
 * @return 1 when read-only, else 0.
 */
LUMODIR_API unsigned short fichsdir_fichero_esta_protegido(const Fichsdir *fichsdir);

/**
 * Compares the name of a record with a name, byte by byte (unsigned); for looking names up in sorted arrays.
 *
 * @param fichsdir  Record. NULL is reported as "(fichsdir) != NULL".
 * @param nombre    Name with extension (8-bit). NULL is reported.
 * @return Negative, 0 or positive, as the record's name goes before, with or after @p nombre.
 */
LUMODIR_API int fichsdir_compara_nombre(const Fichsdir *fichsdir, const char *nombre);

/**
 * Frees a record with its strings and sets the variable to NULL.
 *
 * @param fichsdir  Address of the record variable. NULL, and a variable that is NULL, are reported as
 *                  "(fichsdir) != NULL".
 */
LUMODIR_API void fichsdir_destruye(Fichsdir **fichsdir);

LUMODIR_EXTERN_C_FIN

#endif
