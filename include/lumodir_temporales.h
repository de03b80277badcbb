/**
 * @file lumodir_temporales.h
 * Temporary files.
 *
 * The temporary directory is that of the system. When it does not exist, `\temp` under the user's
 * local-settings folder takes its place or, when that is unknown, under the Windows directory; the fallback
 * is neither checked nor created. A directory of more than 246 units leaves no room for a name and counts as one
 * that does not exist (https://learn.microsoft.com/en-us/windows/win32/api/fileapi/nf-fileapi-gettempfilenamew).
 * Results are new strings (widestr_nousar_destruye()).
 */
#ifndef LUMODIR_LUMODIR_TEMPORALES_H
#define LUMODIR_LUMODIR_TEMPORALES_H

#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/**
 * Gives the temporary directory in its long form. Reported: one too long ("longitud < _MAX_PATH"), and a
 * Windows directory that the system does not tell ("ret != 0").
 *
 * @return New string.
 */
LUMODIR_API wchar_t *lumodir_dameDirectorioTemporal(void);

/**
 * Creates an empty file in the temporary directory, with a name of the system's that ends in `.tmp`.
 *
 * After 21 failures a warning is shown, in service mode too: 385690 "Windows does not allow a temporary file
 * to be created in the directory that has been established for it (%s).", 385691 "The error code returned by
 * Windows is '%s'." and 402847 "To resolve this problem, you can delete the files located in the '%s'
 * directory or modify the Windows 'TEMP' environment variable to set the directory where the program's
 * temporary files will be created." Another 21 failures are reported with 385690, 385691 and 385692 "To solve
 * this problem, you can modify the 'TEMP' environment variable in Windows and establish the directory where
 * temporary program files should be created." as detail; the result then names no file.
 *
 * @return New string: the path of the file in its long form.
 */
LUMODIR_API wchar_t *lumodir_creaFicheroTemporal(void);

/**
 * Creates an empty file with a given extension in the temporary directory; `tmp` in any letter case is
 * lumodir_creaFicheroTemporal(), the rest lumodir_creaFicheroUnicoEnDirectorio().
 *
 * @param ext  Extension without its dot (UTF-16). NULL is reported as "(ext) != NULL" and gives an empty
 *             string.
 * @return New string: the path of the file in its long form.
 */
LUMODIR_API wchar_t *lumodir_creaFicheroTemporalConExt(const wchar_t *ext);

/**
 * Creates an empty file with a new name and a given extension in a directory. No stray temporary file stays
 * behind. While another program (a virus scanner) holds the new file for a moment, the same name is tried again before
 * the next one.
 *
 * Reported: a directory too long ("longitud < _MAX_PATH"), a system that gives no name ("resp != 0" with the
 * directory; the result is then an empty string) and 150 names taken ("contador < 150"; the last one is
 * returned and does not exist as a file of the caller's).
 *
 * @param directorioTemporal  Directory (UTF-16). NULL is reported as "(directorioTemporal) != NULL" and gives
 *                            an empty string.
 * @param ext                 Extension with or without its dot; an empty one adds nothing. NULL is reported
 *                            as "(ext) != NULL" and gives an empty string.
 * @return New string: the path of the file, not converted to its long form.
 */
LUMODIR_API wchar_t *
lumodir_creaFicheroUnicoEnDirectorio(const wchar_t *directorioTemporal, const wchar_t *ext);

/**
 * Creates a directory with its missing parents and gives the path of a file in it; the file is not created.
 *
 * @param directorioTemporal  Directory (UTF-16). NULL or empty is not reported and answered with NULL.
 * @param nombre              File name (UTF-16). NULL or empty is not reported and answered with NULL.
 * @return New string, or NULL.
 */
LUMODIR_API wchar_t *
lumodir_creaFicheroTemporalEnDirectorio(const wchar_t *directorioTemporal, const wchar_t *nombre);

LUMODIR_EXTERN_C_FIN

#endif
