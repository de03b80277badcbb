/**
 * @file widestr.h
 * Copying and freeing the library's UTF-16 strings.
 *
 * `tag` and `line` name the place of the call (the caller's module and `__LINE__`) for the reports; the tag
 * must stay valid until the end of the process.
 */
#ifndef LUMODIR_WIDESTR_H
#define LUMODIR_WIDESTR_H

#include "../lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/**
 * Copies a string.
 *
 * @param text  UTF-16 string. NULL is reported and gives an empty string.
 * @param tag   Module of the caller; NULL counts as an empty text (not reported).
 * @param line  Line of the call.
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *widestr_nousar_copia(const wchar_t *text, const char *tag, unsigned long line);

/**
 * Frees a string and sets the variable to NULL.
 *
 * @param text  Address of the string variable. NULL, and a variable that is NULL, are reported.
 * @param tag   Module of the caller; NULL counts as an empty text (not reported).
 * @param line  Line of the call.
 */
LUMODIR_API void widestr_nousar_destruye(wchar_t **text, const char *tag, unsigned long line);

/**
 * As widestr_nousar_destruye() for a string that may be missing: a variable that is NULL is no error.
 *
 * @param text  Address of the string variable. NULL is reported.
 * @param tag   Module of the caller; NULL counts as an empty text (not reported).
 * @param line  Line of the call.
 */
LUMODIR_API void widestr_nousar_destruye_opcional(wchar_t **text, const char *tag, unsigned long line);

LUMODIR_EXTERN_C_FIN

#endif
