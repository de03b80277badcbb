/**
 * @file apunorde.h
 * Arrays of records that are always sorted by a comparison of the caller's.
 *
 * An array owns its records. Records that compare as equal are all kept, in their order of insertion.
 */
#ifndef LUMODIR_APUNORDE_H
#define LUMODIR_APUNORDE_H

#include "../lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/** Sorted array of records. */
typedef struct ApunOrde ApunOrde;

/**
 * Compares two records.
 *
 * @return Negative, 0 or positive, as the first goes before, with or after the second.
 */
typedef int (*ApunOrdeCompara)(const void *record1, const void *record2);

/**
 * Compares a record with a key, consistently with the order of the array. fichsdir_compara_nombre() is passed
 * with a cast to this type.
 *
 * @return Negative, 0 or positive, as the record goes before, with or after the key.
 */
typedef int (*ApunOrdeComparaClave)(const void *record, const void *key);

/** Frees the record of a variable and sets it to NULL. */
typedef void (*ApunOrdeDestruye)(void **record);

/**
 * Creates an empty array.
 *
 * @param compare  Order of the records. NULL is reported.
 * @param destroy  Frees a record. NULL is reported, and the records are then not freed.
 * @return New array (apunorde_nousar_destruye()).
 */
LUMODIR_API ApunOrde *apunorde_nousar_crea(ApunOrdeCompara compare, ApunOrdeDestruye destroy);

/**
 * Inserts a record itself in its place: the array takes it over and the variable becomes NULL.
 *
 * @param array   Array. NULL is reported, and the variable keeps its record.
 * @param record  Address of a variable that owns a record. NULL, and a variable that is NULL, are reported.
 */
LUMODIR_API void apunorde_nousar_inserta_original(ApunOrde *array, void **record);

/**
 * Counts the records.
 *
 * @param array  Array. NULL is reported and answered with 0.
 * @return Number of records.
 */
LUMODIR_API unsigned long apunorde_nousar_num_elems(const ApunOrde *array);

/**
 * Gives a record.
 *
 * @param array  Array. NULL is reported.
 * @param index  Position from 0; out of range is reported.
 * @return Borrowed record, valid as long as the array; NULL when there is none.
 */
LUMODIR_API void *apunorde_nousar_get(const ApunOrde *array, unsigned long index);

/**
 * Finds a record by a key.
 *
 * @param array    Array. NULL is reported.
 * @param key      Handed to the comparison as it is; it may be NULL (not reported here).
 * @param compare  Comparison of a record with the key. NULL is reported and nothing is found.
 * @return Borrowed record, valid as long as the array; NULL when there is none. Of several equal ones, any.
 */
LUMODIR_API void *apunorde_nousar_busca(const ApunOrde *array, const void *key, ApunOrdeComparaClave compare);

/**
 * Frees an array with its records and sets the variable to NULL.
 *
 * @param array  Address of the array variable. NULL, and a variable that is NULL, are reported. It is NULL
 *               already when the first record is freed.
 */
LUMODIR_API void apunorde_nousar_destruye(ApunOrde **array);

LUMODIR_EXTERN_C_FIN

#endif
