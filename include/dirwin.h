/**
 * @file dirwin.h
 * Directory enumerator: walks the entries that a search pattern finds, with a filter of its own for patterns
 * that the system's search does not answer.
 *
 * Create, ask for the next entry until the answer is 0, destroy. Every entry that the system gives is handed
 * out, "." and "..", hidden and system entries included, in the system's order. An enumerator belongs to one
 * thread at a time.
 *
 * When the system finds nothing for the pattern, or rejects it, the whole directory is searched and the
 * entries are filtered here, by looser rules that serve listings: read them at dirwin_cumple_filtro() before
 * you delete anything by what an enumerator yields. Both searches look into the directory that the pattern named when
 * the enumerator was opened, even if the current directory is changed meanwhile. Where that directory is missing or
 * out of reach (an empty drive, a share that is away) there is no second search. The system's own search looks at short
 * names too: `*.htm` finds `page.html` (https://devblogs.microsoft.com/oldnewthing/20050720-16/?p=34883).
 *
 * Both flavours search in UTF-16. An 8-bit name is the library's conversion, without look-alikes; what the code page
 * lacks becomes its default character, so that such a name finds no file rather than another one.
 */
#ifndef LUMODIR_DIRWIN_H
#define LUMODIR_DIRWIN_H

#include "lumodir_base.h"

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#define LUMODIR_SIN_LO_DEMAS
#endif
#include <windows.h>
#ifdef LUMODIR_SIN_LO_DEMAS
#undef WIN32_LEAN_AND_MEAN
#undef LUMODIR_SIN_LO_DEMAS
#endif
#endif

LUMODIR_EXTERN_C_INICIO

/** Enumerator of the 8-bit flavour. */
typedef struct Dirwin Dirwin;

/** Enumerator of the wide flavour. */
typedef struct Dirwin_u Dirwin_u;

#ifdef _WIN32

#pragma pack(push, 1)

/** The fields are the library's; programs only rely on the layout. */
struct Dirwin {
    WIN32_FIND_DATAA primera_entrada; /**< what the opening search found, handed out first */
    HANDLE busqueda;                  /**< INVALID_HANDLE_VALUE when no search could be opened */
    unsigned long num_entradas;       /**< steps taken; 0 after opening */
    unsigned short con_filtro_propio; /**< 1 when the entries are filtered here */
    char *filtro_propio;              /**< last component of the pattern, owned; only when the flag is 1 */
};

/** The same for UTF-16. */
struct Dirwin_u {
    WIN32_FIND_DATAW primera_entrada; /**< what the opening search found, handed out first */
    HANDLE busqueda;                  /**< INVALID_HANDLE_VALUE when no search could be opened */
    unsigned long num_entradas;       /**< steps taken; 0 after opening */
    unsigned short con_filtro_propio; /**< 1 when the entries are filtered here */
    wchar_t *filtro_propio;           /**< last component of the pattern, owned; only when the flag is 1 */
};

#pragma pack(pop)

#endif

/**
 * Opens an enumerator on a pattern.
 *
 * When the search cannot be opened, the directory of the pattern is searched with `*` and the last component
 * of the pattern becomes the own filter. Reported then: a pattern without a separator, or NULL
 * ("(path_filtro_generico) != NULL", and the enumerator yields nothing), and one that ends with a separator
 * ("i+1 < len").
 *
 * An entry whose 8-bit name is too long for the record (in code pages of several bytes a character) is handed out by
 * its short name, and passed over when it has none.
 *
 * @param patron  Path of any length whose last component may hold `*` and `?` (8-bit). NULL is reported.
 * @return New enumerator, never NULL, even when nothing could be opened; free it with dirwin_destruye().
 */
LUMODIR_API Dirwin *dirwin_crea(const char *patron);

/**
 * As dirwin_crea(), in UTF-16.
 *
 * @param patron  Path whose last component may hold `*` and `?`. NULL is reported as
 *                "(path_filtro_generico) != NULL" and the enumerator yields nothing.
 * @return New enumerator, never NULL; free it with dirwin_destruye_UNICODE(). When its `busqueda` is
 *         INVALID_HANDLE_VALUE, the last error of the thread (GetLastError()) tells why.
 */
LUMODIR_API Dirwin_u *dirwin_crea_UNICODE(const wchar_t *patron);

#ifdef _WIN32

/**
 * Gives the next entry. After an answer of 0 it may be called again and answers 0 again.
 *
 * A search that ends for any reason but the end of the directory is reported as
 * "last_error == ERROR_NO_MORE_FILES" with "GetLastError() = %d" and ends the walk like a normal end.
 *
 * @param dirwin     Enumerator. NULL is reported as "(dirwin) != NULL".
 * @param find_data  The caller's buffer for the entry. NULL is reported as "(find_data) != NULL".
 * @return 1 when an entry was written, 0 at the end.
 */
LUMODIR_API unsigned short dirwin_findnextfile(Dirwin *dirwin, WIN32_FIND_DATAA *find_data);

/**
 * As dirwin_findnextfile(), in UTF-16; the report has an expression of its own and the detail "GetLastError()
 * = %u [%s]" with the name left in the buffer.
 *
 * @param dirwinW    Enumerator. NULL is reported as "(dirwinW) != NULL".
 * @param find_data  The caller's buffer for the entry. NULL is reported as "(find_data) != NULL".
 * @return 1 when an entry was written, 0 at the end; the last error of the thread is then ERROR_NO_MORE_FILES,
 *         unless the walk ended before its end.
 */
LUMODIR_API unsigned short dirwin_findnextfile_UNICODE(Dirwin_u *dirwinW, WIN32_FIND_DATAW *find_data);

/**
 * Tells whether an entry is a directory, by FILE_ATTRIBUTE_DIRECTORY alone.
 *
 * @param findData  Entry. NULL is reported as "(findData) != NULL".
 * @return 1 for a directory, else 0.
 */
LUMODIR_API unsigned short dirwin_es_directorio(const WIN32_FIND_DATAA *findData);

/**
 * As dirwin_es_directorio(), for an entry of the wide flavour.
 *
 * @param findData  Entry. NULL is reported as "(findData) != NULL".
 * @return 1 for a directory, else 0.
 */
LUMODIR_API unsigned short dirwin_es_directorio_UNICODE(const WIN32_FIND_DATAW *findData);

/**
 * Tells whether an entry is read-only, by FILE_ATTRIBUTE_READONLY alone.
 *
 * @param findData  Entry. NULL is reported as "(findData) != NULL".
 * @return 1 when read-only, else 0.
 */
LUMODIR_API unsigned short dirwin_es_solo_lectura_UNICODE(const WIN32_FIND_DATAW *findData);

#endif

/**
 * Tells whether a name passes a filter by the enumerator's own rules, in their 8-bit form.
 *
 * Name and filter are cut at their last dot. Base names are matched, and then the extensions if the
 * filter's is not empty: `readme` and `readme.` match `readme.txt` on purpose, and `*` matches every name.
 * `?` stands for exactly one character. Only the first `*` of a piece is a wildcard; a second one is an
 * ordinary character, which no file name holds. Letter case does not count.
 *
 * The own filter of a wide enumerator differs, and programs rely on it: letter case counts, and the character
 * right after the `*` is not compared, so that `*abc` matches a base name that ends in `bc` and `*x` matches
 * all.
 *
 * @param nombre_y_extension         Bare file name. NULL is reported as "(nombre_y_extension) != NULL".
 * @param filtro_nombre_y_extension  Filter. NULL is reported as "(filtro_nombre_y_extension) != NULL".
 * @return 1 when it matches, else 0.
 */
LUMODIR_API unsigned short
dirwin_cumple_filtro(const char *nombre_y_extension, const char *filtro_nombre_y_extension);

/**
 * Closes the search, frees the enumerator and sets the variable to NULL.
 *
 * @param dirwin  Address of the enumerator variable. NULL is reported as "(dirwin) != NULL", a variable that
 *                is NULL as "(*dirwin) != NULL".
 */
LUMODIR_API void dirwin_destruye(Dirwin **dirwin);

/**
 * As dirwin_destruye(), for a wide enumerator.
 *
 * @param dirwinW  Address of the enumerator variable. NULL is reported as "(dirwinW) != NULL", a variable
 *                 that is NULL as "(*dirwinW) != NULL".
 */
LUMODIR_API void dirwin_destruye_UNICODE(Dirwin_u **dirwinW);

LUMODIR_EXTERN_C_FIN

#endif
