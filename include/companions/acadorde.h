/**
 * @file acadorde.h
 * String arrays that are always sorted: 8-bit (`acadorde_`) and UTF-16 (`acadordeu_`).
 *
 * The order is that of the code units, in 8-bit text of the bytes taken as unsigned, a shorter beginning first; no
 * locale takes part. An array owns its strings.
 */
#ifndef LUMODIR_ACADORDE_H
#define LUMODIR_ACADORDE_H

#include "../lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/** Sorted array of UTF-16 strings. */
typedef struct AcadOrdeU AcadOrdeU;
/** Sorted array of 8-bit strings. */
typedef struct AcadOrde AcadOrde;

/**
 * Creates an empty array.
 *
 * @param admite_repetidos  1 keeps repeated texts, in their order of insertion; 0 ignores the insertion of a
 *                          text that is already there.
 * @return New array (acadordeu_destruye()).
 */
LUMODIR_API AcadOrdeU *acadordeu_crea(unsigned short admite_repetidos);
/** 8-bit flavour. */
LUMODIR_API AcadOrde *acadorde_crea(unsigned short admite_repetidos);

/**
 * Inserts a copy of a text in its place.
 *
 * @param array  Array. NULL is reported.
 * @param text   Text (UTF-16). NULL is reported and not inserted.
 */
LUMODIR_API void acadordeu_inserta(AcadOrdeU *array, const wchar_t *text);
/** 8-bit flavour. */
LUMODIR_API void acadorde_inserta(AcadOrde *array, const char *text);

/**
 * Counts the elements.
 *
 * @param array  Array. NULL is reported and answered with 0.
 * @return Number of elements.
 */
LUMODIR_API unsigned long acadordeu_num_elems(const AcadOrdeU *array);
/** 8-bit flavour. */
LUMODIR_API unsigned long acadorde_num_elems(const AcadOrde *array);

/**
 * Gives an element.
 *
 * @param array  Array. NULL is reported.
 * @param index  Position from 0; out of range is reported.
 * @return Borrowed string, valid as long as the array; NULL when there is none.
 */
LUMODIR_API const wchar_t *acadordeu_get(const AcadOrdeU *array, unsigned long index);
/** 8-bit flavour. */
LUMODIR_API const char *acadorde_get(const AcadOrde *array, unsigned long index);

/**
 * Frees an array with its strings and sets the variable to NULL.
 *
 * @param array  Address of the array variable. NULL, and a variable that is NULL, are reported.
 */
LUMODIR_API void acadordeu_destruye(AcadOrdeU **array);
/** 8-bit flavour. */
LUMODIR_API void acadorde_destruye(AcadOrde **array);

LUMODIR_EXTERN_C_FIN

#endif
