/**
 * @file lumodir.h
 * The whole `lumodir_` family: start-up settings, and the later members of the families of cdir.h and of the drives.
 *
 * A program that needs one part alone may include that header instead.
 */
#ifndef LUMODIR_LUMODIR_H
#define LUMODIR_LUMODIR_H

#include "lumodir_ajustes.h"
#include "lumodir_ficheros.h"
#include "lumodir_listas.h"
#include "lumodir_programa.h"
#include "lumodir_rutas.h"
#include "lumodir_temporales.h"
#include "lumodir_unidades.h"

#endif
