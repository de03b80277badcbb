/**
 * @file lmlongpath.h
 * Paths beyond the classic length limit of the system, for programs that call the system themselves.
 *
 * The library accepts paths of up to 10240 UTF-16 units with components of up to 255. The system's limits:
 * https://learn.microsoft.com/en-us/windows/win32/fileio/maximum-file-path-limitation
 */
#ifndef LUMODIR_LMLONGPATH_H
#define LUMODIR_LMLONGPATH_H

#include "../lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/**
 * Gives a path in the form that the system takes whatever its length. One whose full form is shorter than 248
 * units, and one that already begins with `\\?\` or `\\.\`, comes back as it is; any other is made full, with
 * `/` turned into `\`, and prefixed with `\\?\`, or with `\\?\UNC\` for a share.
 *
 * @param path  Path (UTF-16). NULL is reported and gives an empty string.
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *lmlongpath_prepended_path_si_necesario(const wchar_t *path);

/**
 * Gives the size of a file.
 *
 * @param path       Path (UTF-16). NULL is reported and answered with all bits set.
 * @param error_out  Receives the system's error code on failure; NULL when it is not wanted (not reported).
 * @return Size in bytes; all bits set on failure.
 */
LUMODIR_API unsigned long long lmlongpath_GetFileSize(const wchar_t *path, unsigned long *error_out);

LUMODIR_EXTERN_C_FIN

#endif
