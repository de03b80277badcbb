/**
 * @file lmaviso.h
 * Where warnings for the user go.
 *
 * Set the receiver at start-up, before any thread uses the library.
 */
#ifndef LUMODIR_LMAVISO_H
#define LUMODIR_LMAVISO_H

#include "../lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/**
 * Shows a warning, on the thread that made the call.
 *
 * @param text     Localized text (UTF-16), valid only during the call.
 * @param context  What was given with the receiver.
 */
typedef void (*LmavisoReceptor)(const wchar_t *text, void *context);

/**
 * Sets the receiver of warnings. By default the text goes to standard error.
 *
 * @param show     Receiver; NULL restores the default (not reported).
 * @param context  Handed to the receiver as it is; may be NULL.
 */
LUMODIR_API void lmaviso_establece_receptor(LmavisoReceptor show, void *context);

LUMODIR_EXTERN_C_FIN

#endif
