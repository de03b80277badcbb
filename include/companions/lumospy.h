/**
 * @file lumospy.h
 * Tracked memory for records, and the census: the number of blocks that the library's callers own.
 *
 * Exhausted memory is reported once and ends the process: no function here returns NULL. Strings are freed
 * with their own functions, never with these.
 */
#ifndef LUMODIR_LUMOSPY_H
#define LUMODIR_LUMOSPY_H

#include "../lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/**
 * Gives a new block, not cleared.
 *
 * @param size  Bytes; 0 gives a block that can be freed.
 * @return New block (lumospy_nousar_free_pp()).
 */
LUMODIR_API void *lumospy_nousar_malloc(size_t size);

/**
 * Gives a new block filled with zeros. A product that overflows is exhausted memory.
 *
 * @param count  Elements; 0 gives a block that can be freed.
 * @param size   Bytes of each element.
 * @return New block (lumospy_nousar_free_pp()).
 */
LUMODIR_API void *lumospy_nousar_calloc(size_t count, size_t size);

/**
 * Changes the size of a block; what fits of its contents is kept.
 *
 * @param pointer  Block, which is no longer valid afterwards; NULL gives a new one (not reported).
 * @param size     Bytes; 0 gives a block that can be freed.
 * @return The block in its new place (lumospy_nousar_free_pp()).
 */
LUMODIR_API void *lumospy_nousar_realloc(void *pointer, size_t size);

/**
 * Frees a block and sets the variable to NULL.
 *
 * @param pointer  Address of the variable that holds the block. NULL, and a variable that is NULL, are
 *                 reported.
 */
LUMODIR_API void lumospy_nousar_free_pp(void **pointer);

/**
 * Counts the blocks that callers still own: strings, lists, records and the blocks of this header count 1
 * each. If some work leaks nothing, the number is the same after it as before. Counting is always on and safe
 * on any thread. While a function of the library runs, on any thread or around the callback that asks, the blocks
 * that it works with count too, and are gone when it returns: compare numbers that were taken outside of calls.
 *
 * @return Live blocks.
 */
LUMODIR_API unsigned long long lumospy_bloques_vivos(void);

LUMODIR_EXTERN_C_FIN

#endif
