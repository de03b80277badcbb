/**
 * @file cdir_proceso.h
 * The two paths that come from the process: its current directory and its program's drive.
 */
#ifndef LUMODIR_CDIR_PROCESO_H
#define LUMODIR_CDIR_PROCESO_H

#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/**
 * Gives the current directory in its long form. One that does not fit 260 characters is reported as
 * "(getcwd_ret) != NULL".
 *
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *cdir_obtener_path_actual_UNICODE(void);

/**
 * As cdir_obtener_path_actual_UNICODE() in 8-bit: read in wide text and converted.
 *
 * @return New string (lumostr_destruye()).
 */
LUMODIR_API char *cdir_obtener_path_actual(void);

/**
 * Gives the drive of the running program (`C:`, or the share that it runs from), or the current drive when the
 * system does not tell the program's path. It is found out at the first call, without a lock: two threads must
 * not be the first at once. A drive too long for the library's buffer is reported as "tam < _MAX_DIR".
 *
 * @return Borrowed string: the library's own, valid and unchanged until the end of the process.
 */
LUMODIR_API const wchar_t *cdir_disco_de_programa_UNICODE(void);

LUMODIR_EXTERN_C_FIN

#endif
