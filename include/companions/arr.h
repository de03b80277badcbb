/**
 * @file arr.h
 * Growable lists: of strings, 8-bit and wide (`_u`), and of pointers to records of one kind.
 *
 * A list owns its strings or records. Indices count from 0; one out of range is reported and gives NULL or
 * changes nothing. A NULL list is reported and counts as an empty one; a NULL text is reported and changes
 * nothing.
 */
#ifndef LUMODIR_ARR_H
#define LUMODIR_ARR_H

#include "../lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/* ---- Lists of strings ---- */

/** List of UTF-16 strings. */
typedef struct ArrCADENA_u ArrCADENA_u;
/** List of 8-bit strings. */
typedef struct ArrCADENA ArrCADENA;

/**
 * Compares two elements of a list, which it must leave as it is.
 *
 * @return Negative, 0 or positive, as the first goes before, with or after the second.
 */
typedef int (*ArrComparaCADENA_u)(const wchar_t *text1, const wchar_t *text2);
/** As ArrComparaCADENA_u, for 8-bit texts. */
typedef int (*ArrComparaCADENA)(const char *text1, const char *text2);

/**
 * Creates an empty list.
 *
 * @param initial  Elements to make room for; the list is empty all the same.
 * @return New list (arr_DestruyeCADENA_u()).
 */
LUMODIR_API ArrCADENA_u *arr_CreaCADENA_u(unsigned long initial);
/** 8-bit flavour. */
LUMODIR_API ArrCADENA *arr_CreaCADENA(unsigned long initial);

/**
 * Appends a copy of a text.
 *
 * @param list  List. NULL is reported.
 * @param text  Text (UTF-16), which stays the caller's. NULL is reported.
 */
LUMODIR_API void arr_AppendCADENA_u(ArrCADENA_u *list, const wchar_t *text);
/** 8-bit flavour. */
LUMODIR_API void arr_AppendCADENA(ArrCADENA *list, const char *text);

/**
 * Appends a text itself: the list takes it over and the variable becomes NULL.
 *
 * @param list  List. NULL is reported, and the variable keeps its text.
 * @param text  Address of a variable that owns a library string (widestr_nousar_destruye()). NULL, and a
 *              variable that is NULL, are reported.
 */
LUMODIR_API void arr_AppendCADENAOriginal_u(ArrCADENA_u *list, wchar_t **text);
/** 8-bit flavour. */
LUMODIR_API void arr_AppendCADENAOriginal(ArrCADENA *list, char **text);

/**
 * Counts the elements.
 *
 * @param list  List. NULL is reported and answered with 0.
 * @return Number of elements.
 */
LUMODIR_API unsigned long arr_NumElemsCADENA_u(const ArrCADENA_u *list);
/** 8-bit flavour. */
LUMODIR_API unsigned long arr_NumElemsCADENA(const ArrCADENA *list);

/**
 * Gives an element.
 *
 * @param list   List. NULL is reported.
 * @param index  Position; out of range is reported.
 * @return Borrowed string, valid until the element changes or goes; NULL when there is none.
 */
LUMODIR_API const wchar_t *arr_GetCADENA_u(const ArrCADENA_u *list, unsigned long index);
/** 8-bit flavour. */
LUMODIR_API const char *arr_GetCADENA(const ArrCADENA *list, unsigned long index);

/**
 * Gives a copy of an element.
 *
 * @param list   List. NULL is reported.
 * @param index  Position; out of range is reported.
 * @return New string (widestr_nousar_destruye()); NULL when there is no such element.
 */
LUMODIR_API wchar_t *arr_GetCopiaCADENA_u(const ArrCADENA_u *list, unsigned long index);
/** 8-bit flavour. */
LUMODIR_API char *arr_GetCopiaCADENA(const ArrCADENA *list, unsigned long index);

/**
 * Replaces an element by a copy of a text.
 *
 * @param list   List. NULL is reported.
 * @param index  Position; out of range is reported.
 * @param text   Text (UTF-16), which may be the element itself. NULL is reported and changes nothing.
 */
LUMODIR_API void arr_SetCADENA_u(ArrCADENA_u *list, unsigned long index, const wchar_t *text);
/** 8-bit flavour. */
LUMODIR_API void arr_SetCADENA(ArrCADENA *list, unsigned long index, const char *text);

/**
 * Removes and frees an element; the later ones move down by one.
 *
 * @param list   List. NULL is reported.
 * @param index  Position; out of range is reported.
 */
LUMODIR_API void arr_BorrarCADENA_u(ArrCADENA_u *list, unsigned long index);
/** 8-bit flavour. */
LUMODIR_API void arr_BorrarCADENA(ArrCADENA *list, unsigned long index);

/**
 * Keeps the first elements and frees the rest.
 *
 * @param list   List. NULL is reported.
 * @param count  Elements to keep; a number above that of the elements is reported and changes nothing.
 */
LUMODIR_API void arr_ReduceTamanyoCADENA_u(ArrCADENA_u *list, unsigned long count);
/** 8-bit flavour. */
LUMODIR_API void arr_ReduceTamanyoCADENA(ArrCADENA *list, unsigned long count);

/**
 * Sorts a list in place.
 *
 * @param list     List. NULL is reported.
 * @param compare  Comparison, or NULL (not reported) for the order of the code units (of bytes taken as unsigned), a
 *                 shorter beginning first, without a locale.
 */
LUMODIR_API void arr_QSortCADENA_u(ArrCADENA_u *list, ArrComparaCADENA_u compare);
/** 8-bit flavour. */
LUMODIR_API void arr_QSortCADENA(ArrCADENA *list, ArrComparaCADENA compare);

/**
 * Frees a list with its strings and sets the variable to NULL.
 *
 * @param list  Address of the list variable. NULL, and a variable that is NULL, are reported.
 */
LUMODIR_API void arr_DestruyeCADENA_u(ArrCADENA_u **list);
/** 8-bit flavour. */
LUMODIR_API void arr_DestruyeCADENA(ArrCADENA **list);

/* ---- List of records ---- */

/** List of pointers to records of one kind. */
typedef struct ArrPunteroConTipo ArrPunteroConTipo;

/**
 * Frees the record of a variable and sets it to NULL. The typed destroyers of the library
 * (fichsdir_destruye(), taskproc_destruye() and the rest) are passed with a cast to this type.
 */
typedef void (*ArrDestruyeRegistro)(void **record);

/**
 * Creates an empty list.
 *
 * @param initial  Elements to make room for; the list is empty all the same.
 * @return New list (arr_DestruyeEstructurasConTipo()).
 */
LUMODIR_API ArrPunteroConTipo *arr_CreaPunteroConTipo(unsigned long initial);

/**
 * Appends a record, which the list takes over.
 *
 * @param list    List. NULL is reported, and the record stays the caller's.
 * @param record  Record. NULL is reported and not appended.
 */
LUMODIR_API void arr_AppendPunteroConTipo(ArrPunteroConTipo *list, void *record);

/**
 * Counts the records.
 *
 * @param list  List. NULL is reported and answered with 0.
 * @return Number of records.
 */
LUMODIR_API unsigned long arr_NumElemsPuntero(const ArrPunteroConTipo *list);

/**
 * Gives a record.
 *
 * @param list   List. NULL is reported.
 * @param index  Position; out of range is reported.
 * @return Borrowed record, valid as long as the list; NULL when there is none.
 */
LUMODIR_API void *arr_GetPunteroConTipo(const ArrPunteroConTipo *list, unsigned long index);

/**
 * Frees a list with its records and sets the variable to NULL.
 *
 * @param list     Address of the list variable. NULL, and a variable that is NULL, are reported.
 *                 It is NULL already when the first record is freed.
 * @param destroy  Called once for each record. NULL is reported, and the records are then not freed.
 */
LUMODIR_API void arr_DestruyeEstructurasConTipo(ArrPunteroConTipo **list, ArrDestruyeRegistro destroy);

LUMODIR_EXTERN_C_FIN

#endif
