/**
 * @file lumostr.h
 * Freeing the library's 8-bit strings.
 */
#ifndef LUMODIR_LUMOSTR_H
#define LUMODIR_LUMOSTR_H

#include "../lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/**
 * Frees a string and sets the variable to NULL.
 *
 * @param text  Address of the string variable. NULL, and a variable that is NULL, are reported.
 */
LUMODIR_API void lumostr_destruye(char **text);

/**
 * As lumostr_destruye() for a string that may be missing: a variable that is NULL is no error.
 *
 * @param text  Address of the string variable. NULL is reported.
 */
LUMODIR_API void lumostr_destruye_opcional(char **text);

LUMODIR_EXTERN_C_FIN

#endif
