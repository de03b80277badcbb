/**
 * @file lumodir_listas.h
 * Listings beside those of cdir_listas.h: whole trees, several extensions at once, and whether there is anything.
 *
 * The extension filter is that of cdir_listas.h. Subdirectories whose name begins with "." are left out. A
 * junction or a symbolic link to a directory is not entered and has no record of its own.
 *
 * Unless stated otherwise a NULL text is reported and answered with 0 or with a new empty list, and
 * an out-parameter that is NULL means that it is not wanted and is not reported.
 */
#ifndef LUMODIR_LUMODIR_LISTAS_H
#define LUMODIR_LUMODIR_LISTAS_H

#include "cdir_listas.h"
#include "companions/acadorde.h"
#include "companions/arr.h"
#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

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
 * of the tree, those without a matching file included.
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
 * @param extensiones  Extensions without their dot, letter case aside; NULL for every file (not reported).
 *                     With a list, names without a dot are left out.
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

LUMODIR_EXTERN_C_FIN

#endif
