/**
 * @file error_interno.h
 * Where internal errors go: broken preconditions and invariants, bad arguments, refusals of the system.
 *
 * Set the receiver at start-up, before any thread uses the library.
 */
#ifndef LUMODIR_ERROR_INTERNO_H
#define LUMODIR_ERROR_INTERNO_H

#include "../lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/**
 * Receives an internal error, on the thread that made the call. When it returns, the function that reported
 * goes on.
 *
 * @param expression  Condition that failed, as source text (ASCII); may be empty.
 * @param tag         Source module, for example "lumodir (LUMODIR.DLL)".
 * @param line        Source line.
 * @param detail      Text about it (UTF-16), valid only during the call; NULL when there is none.
 * @param context     What was given with the receiver.
 */
typedef void (*ErrorInternoReceptor)(const char *expression, const char *tag, unsigned long line,
                                     const wchar_t *detail, void *context);

/**
 * Sets the receiver of internal errors. By default each goes as one line to standard error and to the
 * debugger's output, and the program goes on.
 *
 * @param receive  Receiver; NULL restores the default (not reported).
 * @param context  Handed to the receiver as it is; may be NULL.
 */
LUMODIR_API void error_interno_establece_receptor(ErrorInternoReceptor receive, void *context);

LUMODIR_EXTERN_C_FIN

#endif
