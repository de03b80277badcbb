/**
 * @file lumodir_ajustes.h
 * Settings, to be made once at start-up, before any thread works with files.
 */
#ifndef LUMODIR_LUMODIR_AJUSTES_H
#define LUMODIR_LUMODIR_AJUSTES_H

#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/**
 * Told the path of a file whose deletion has failed, at the first retry, so that the program can close its
 * own handle on it. It runs on the thread that deletes.
 *
 * @param fichero  Path (UTF-16), valid only during the call.
 * @return Ignored.
 */
typedef unsigned short (*LumodirFncComprobarFichero)(const wchar_t *fichero);

/**
 * Puts the library in service mode, for good: its warnings are not shown and its retry loops make one attempt
 * without a message. Tree deletions in passes keep their pauses.
 */
LUMODIR_API void lumodir_establece_modo_servicio_sin_reintentos(void);

/**
 * Sets the function that is told, once, the path of a file whose deletion has failed and is about to be tried again, in
 * place of any earlier one.
 *
 * @param func_comprobar  Function, or NULL to switch it off (not reported).
 */
LUMODIR_API void
lumodir_set_func_comprobar_fichero_no_esta_abierto(LumodirFncComprobarFichero func_comprobar);

LUMODIR_EXTERN_C_FIN

#endif
