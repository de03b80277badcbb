/**
 * @file info.h
 * The drive table of the machine and the current directory of each drive.
 *
 * The records are packed: programs rely on their layout. For a drive without a medium the system brings up no dialog,
 * as it would by default: https://learn.microsoft.com/en-us/windows/win32/debug/error-mode
 */
#ifndef LUMODIR_INFO_H
#define LUMODIR_INFO_H

#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/** Values of InfoDisco::tipo, and of the type of a system drive (lumodir_tipoDrive_UnidadSistema()). */
enum {
    INFO_TIPO_DISQUETE = 3,  /**< removable or unknown drive, A or B */
    INFO_TIPO_FIJO = 5,      /**< fixed disk */
    INFO_TIPO_EXTRAIBLE = 6, /**< removable or unknown drive, C or later */
    INFO_TIPO_CDROM = 7,     /**< optical drive */
    INFO_TIPO_RED = 8,       /**< network drive, the only one with a path */
    INFO_TIPO_OTRO = 9       /**< memory disk or any other kind */
};

/** Answer of info_BuscaDiscoId() for a drive that is not in the table. */
enum { INFO_DISCO_AUSENTE = 0xFFFF };

#pragma pack(push, 1)

/** One drive of the table. */
typedef struct InfoDisco {
    unsigned short disco; /**< drive index, 0 = A to 25 = Z */
    unsigned long tipo;   /**< one of INFO_TIPO_... */
    wchar_t *pathNetwork; /**< remote name, "?" when it cannot be told; owned; NULL unless tipo is 8 */
} InfoDisco;

/** Drive table. The record is the caller's, usually a local variable; what it points to is the table's. */
typedef struct InfoTabla {
    unsigned short numDiscos; /**< number of entries */
    InfoDisco *discos;        /**< entries in ascending drive order; NULL when there are none */
} InfoTabla;

#pragma pack(pop)

/**
 * Fills a table with the drives that are present. A letter without a root directory gets no entry.
 *
 * @param tabla  Table to fill; what it held is overwritten, so release a used one first. NULL is reported.
 *               Release it with info_LiberaTabla().
 */
LUMODIR_API void info_GetDriveInfoSystem(InfoTabla *tabla);

/**
 * Finds a drive in a table, relying on the ascending order of the entries.
 *
 * @param tabla  Table filled by info_GetDriveInfoSystem(). NULL is reported and answered with 65535.
 * @param disco  Drive index, 0 = A to 25 = Z.
 * @return Position of the entry, or INFO_DISCO_AUSENTE (65535).
 */
LUMODIR_API unsigned short info_BuscaDiscoId(const InfoTabla *tabla, unsigned short disco);

/**
 * Gives the text of a drive entry: its letter and a colon (`C:`).
 *
 * @param disco  Entry of a table. NULL, or an index above 25, is reported and gives an empty string.
 * @return New 8-bit string (lumostr_destruye()).
 */
LUMODIR_API char *info_GetTxtDrive(const InfoDisco *disco);

/**
 * Frees the network paths and the entries of a table and leaves it empty (0 entries, NULL); the record itself
 * is not freed.
 *
 * Reported: entries without an array ("tabla->discos != NULL"), an array without entries
 * ("tabla->discos == NULL"), and a path on an entry that is not a network drive
 * ("tabla->discos[i].pathNetwork == NULL"). Such an array or path is not freed because nobody knows whose it is.
 *
 * @param tabla  Table to release. NULL is reported.
 */
LUMODIR_API void info_LiberaTabla(InfoTabla *tabla);

/**
 * Gives the current directory of a drive as the C runtime knows it: with a final `\` only when it is a root.
 * https://learn.microsoft.com/en-us/cpp/c-runtime-library/reference/getdcwd-wgetdcwd
 *
 * @param unidad  0 = current drive, 1 = A, 2 = B, and so on.
 * @param buf     Buffer for the result, or NULL for a new string (not reported).
 * @param nbuf    Size of @p buf in UTF-16 units, the terminator included. A buffer too small, 0 included, is
 *                reported as "nbuf > len", and the text is cut to what fits, always terminated when there is
 *                room for a terminator. Without a buffer it must be 0, reported as "nbuf == 0" otherwise.
 * @return @p buf, or a new string (widestr_nousar_destruye()); NULL when the drive has no current directory, or
 *         one of 260 units or more.
 */
LUMODIR_API wchar_t *info_GetActualDirectorio_compatible_chdir(int unidad, wchar_t *buf, unsigned long nbuf);

LUMODIR_EXTERN_C_FIN

#endif
