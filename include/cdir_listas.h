/**
 * @file cdir_listas.h
 * Sorted lists of the files or of the subdirectories of one directory, in records that the caller holds.
 *
 * Names are bare, with extension, and sorted without regard to the case of A to Z. A directory that cannot be
 * read gives an empty list without any message. A NULL directory is reported as "(directorio) != NULL", a
 * NULL pattern as "(path_filtro_generico) != NULL", a NULL record is reported too; lists are then empty.
 *
 * A record is cleared before it is filled: release a used one first, or its strings are lost. Extension
 * filter: an extension without its dot, NULL (not reported) or beginning with `*` for every file, empty for
 * the files without an extension. Letter case does not count and `?` stands for one character: `p?g` accepts
 * `a.PNG`. A `*` after the first character is an ordinary one.
 *
 * Both flavours search in UTF-16. An 8-bit name is the library's conversion, never cut and without look-alikes; what
 * the code page lacks becomes its default character, so that such a name finds no file rather than another one.
 */
#ifndef LUMODIR_CDIR_LISTAS_H
#define LUMODIR_CDIR_LISTAS_H

#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

#pragma pack(push, 1)

/** List of names, 8-bit. The record is the caller's; its strings are the record's until it is released. */
typedef struct ListaFicheros {
    char *path;        /**< listed directory, no `/` and no final `\`; NULL when listed by full pattern */
    unsigned long num; /**< number of names */
    char **lista;      /**< the names; NULL exactly when num is 0 */
} ListaFicheros;

/** List of names, UTF-16. */
typedef struct ListaFicheros_u {
    wchar_t *path;     /**< listed directory, no `/` and no final `\`; NULL when listed by full pattern */
    unsigned long num; /**< number of names */
    wchar_t **lista;   /**< the names; NULL exactly when num is 0 */
} ListaFicheros_u;

#pragma pack(pop)

/**
 * Lists the files of a directory.
 *
 * @param directorio  Directory (UTF-16). NULL is reported.
 * @param extension   Extension filter; NULL for every file (not reported).
 * @param lista       Record to fill; release it with cdir_libera_lista_de_ficheros_UNICODE(). NULL is
 *                    reported.
 */
LUMODIR_API void
cdir_lista_de_ficheros_UNICODE(const wchar_t *directorio, const wchar_t *extension, ListaFicheros_u *lista);
/** 8-bit flavour. */
LUMODIR_API void cdir_lista_de_ficheros(const char *directorio, const char *extension, ListaFicheros *lista);

/**
 * Lists the files of a directory whose name the system finds by a pattern and whose extension passes the
 * filter.
 *
 * @param directorio  Directory (UTF-16). NULL is reported.
 * @param extension   Extension filter, also the extension of the search pattern; NULL for none (not
 *                    reported).
 * @param patron      Pattern of the base name (`*`, `img??`). NULL is reported.
 * @param lista       Record to fill; release it with cdir_libera_lista_de_ficheros_UNICODE(). NULL is
 *                    reported.
 */
LUMODIR_API void cdir_lista_de_ficherosFiltro_UNICODE(const wchar_t *directorio, const wchar_t *extension,
                                                      const wchar_t *patron, ListaFicheros_u *lista);
/** 8-bit flavour. */
LUMODIR_API void cdir_lista_de_ficherosFiltro(const char *directorio, const char *extension,
                                              const char *patron, ListaFicheros *lista);

/**
 * As cdir_lista_de_ficherosFiltro_UNICODE() with the drive apart; the record's path is drive and directory. With an
 * empty directory a drive is its current directory, though its path (`X:`) looks like that of its root: `.` tells them
 * apart.
 *
 * @param unidad      Drive (`C:` or `\\server\share`), or NULL for none (not reported).
 * @param directorio  Directory (UTF-16). NULL is reported.
 * @param extension   Extension filter, also the extension of the search pattern; NULL for none (not
 *                    reported).
 * @param patron      Pattern of the base name. NULL is reported.
 * @param lista       Record to fill; release it with cdir_libera_lista_de_ficheros_UNICODE(). NULL is
 *                    reported.
 */
LUMODIR_API void cdir_lista_de_ficherosFiltro_en_unidad(const wchar_t *unidad, const wchar_t *directorio,
                                                        const wchar_t *extension, const wchar_t *patron,
                                                        ListaFicheros_u *lista);

/**
 * Lists the files that a full search pattern finds; the record's path stays NULL.
 *
 * @param path_filtro  Directory and name with wildcards (UTF-16). NULL is reported.
 * @param lista        Record to fill; release it with cdir_libera_lista_de_ficheros_UNICODE(). NULL is
 *                     reported.
 */
LUMODIR_API void
cdir_lista_de_ficheros_en_path_filtro_UNICODE(const wchar_t *path_filtro, ListaFicheros_u *lista);
/** 8-bit flavour. */
LUMODIR_API void cdir_lista_de_ficheros_en_path_filtro(const char *path_filtro, ListaFicheros *lista);

/**
 * Lists the subdirectories of a directory that a pattern finds, without those whose name begins with ".". An empty text
 * is the root of the current drive here, not the current directory (`.`) as in the lists of files.
 *
 * @param directorio  Directory (UTF-16). NULL is reported.
 * @param patron      Pattern of the subdirectories (`*`). NULL is reported.
 * @param lista       Record to fill; release it with cdir_libera_lista_de_ficheros_UNICODE(). NULL is
 *                    reported.
 */
LUMODIR_API void
cdir_lista_de_directorios_UNICODE(const wchar_t *directorio, const wchar_t *patron, ListaFicheros_u *lista);
/** 8-bit flavour. */
LUMODIR_API void cdir_lista_de_directorios(const char *directorio, const char *patron, ListaFicheros *lista);

/**
 * Frees the strings of a record and leaves it empty; the record itself is not freed.
 *
 * @param lista  Record. Reported: NULL ("(lista) != NULL"), names counted without an array
 *               ("(lista->lista) != NULL") and an array without names ("lista->lista == NULL").
 */
LUMODIR_API void cdir_libera_lista_de_ficheros_UNICODE(ListaFicheros_u *lista);
/** 8-bit flavour. */
LUMODIR_API void cdir_libera_lista_de_ficheros(ListaFicheros *lista);

LUMODIR_EXTERN_C_FIN

#endif
