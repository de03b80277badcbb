/**
 * @file discos.h
 * Questions about one drive, named by its letter or by its index.
 *
 * The drive table of the machine is in info.h and the labels for display are in lumodir_unidades.h.
 *
 * For a drive without a medium (an empty card reader, an optical drive) the system brings up no dialog: the
 * question fails, and the error mode of the thread is afterwards what it was.
 */
#ifndef LUMODIR_DISCOS_H
#define LUMODIR_DISCOS_H

#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/**
 * Tells whether a drive is local: any but what the system calls a network drive. Missing, unknown and removable
 * drives count as local.
 *
 * @param unidad  Letter A to Z or a to z (UTF-16). Any other character is reported as
 *                "(unidad >= L'A' && unidad <= L'Z') || (unidad >= L'a' && unidad <= L'z')".
 * @return 1 when local, 0 for a network drive.
 */
LUMODIR_API unsigned short discos_es_unidad_local(wchar_t unidad);

/**
 * Tells whether a drive is a substitution (SUBST) of a directory: the device behind it begins with `\??\`. One
 * whose directory has more than 248 units cannot be recognised and counts as none. The call that is made:
 * https://learn.microsoft.com/en-us/windows/win32/api/fileapi/nf-fileapi-querydosdevicew
 *
 * @param unidad  Letter in either case (UTF-16). Any other character is reported as
 *                "unidad2 >= L'A' && unidad2 <= L'Z'".
 * @return 1 for a substituted drive, else 0.
 */
LUMODIR_API unsigned short discos_es_unidad_subst(wchar_t unidad);

/**
 * Gives the volume name of a drive.
 *
 * @param disco  Drive index, 0 = A to 25 = Z. A larger one is reported as "disco < i_NUM_MAX_UNIDADES".
 * @return New UTF-16 string (widestr_nousar_destruye()). Empty when the system cannot tell, which is reported
 *         as "retorno != 0" with the root (`C:\`), and for an index above 25.
 */
LUMODIR_API wchar_t *discos_nombre_volumen(unsigned short disco);

LUMODIR_EXTERN_C_FIN

#endif
