/**
 * @file buclrein.h
 * How failing file operations are retried, and who asks the user.
 *
 * A failed operation is first retried in silence. When the silent retries are used up, an operation that
 * reports asks whether to go on: each yes gives one more attempt, made at once, and then the next question.
 * Service mode (lumodir_establece_modo_servicio_sin_reintentos()) leaves a single attempt and no question.
 * Make both settings at start-up, before any thread uses the library.
 */
#ifndef LUMODIR_BUCLREIN_H
#define LUMODIR_BUCLREIN_H

#include "../lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/**
 * Asks whether to try again, on the thread that made the call.
 *
 * @param message     Localized text (UTF-16) of what failed and, when there is an error code, a line break
 *                    and the system's text for it; valid only during the call.
 * @param error_code  System error code, 0 when there is none.
 * @param context     What was given with the receiver.
 * @return 1 to try again; anything else gives up.
 */
typedef unsigned short (*BuclreinReceptor)(const wchar_t *message, unsigned long error_code, void *context);

/**
 * Sets how often and how slowly an operation is retried in silence. The default is 5 retries of 100 ms.
 * Deletions of trees in passes have pauses of their own and do not follow this.
 *
 * @param silent_retries  Retries before the question; may be 0.
 * @param wait_ms         Wait before each of them, in milliseconds.
 */
LUMODIR_API void buclrein_establece_politica(unsigned long silent_retries, unsigned long wait_ms);

/**
 * Sets who asks the user. By default the message is shown as a warning (lmaviso_establece_receptor()) and the
 * operation gives up.
 *
 * @param ask      Receiver; NULL restores the default (not reported).
 * @param context  Handed to the receiver as it is; may be NULL.
 */
LUMODIR_API void buclrein_establece_receptor(BuclreinReceptor ask, void *context);

LUMODIR_EXTERN_C_FIN

#endif
