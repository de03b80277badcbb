/**
 * @file cdir.h
 * The whole `cdir_` family: paths as text, the paths of the process, files and directories on disk, and lists of their
 * names.
 *
 * A program that needs one part alone may include that header instead.
 */
#ifndef LUMODIR_CDIR_H
#define LUMODIR_CDIR_H

#include "cdir_ficheros.h"
#include "cdir_listas.h"
#include "cdir_proceso.h"
#include "cdir_rutas.h"

#endif
