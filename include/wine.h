/**
 * @file wine.h
 * Tells whether the process runs under Wine.
 */
#ifndef LUMODIR_WINE_H
#define LUMODIR_WINE_H

#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/**
 * Tells whether the process runs under Wine, by the key `Software\Wine` of the current user, which Wine makes
 * for its own settings; nothing else is looked at.
 *
 * The registry is asked at the first call and the answer is kept. Two threads that make the first call at the same
 * time both ask, and keep the same answer.
 *
 * @return 1 under Wine, else 0.
 */
LUMODIR_API unsigned short wine_estamos_en_wine(void);

LUMODIR_EXTERN_C_FIN

#endif
