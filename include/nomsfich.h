/**
 * @file nomsfich.h
 * File-name records: one file name, without directory, held as two lower-case parts, so that names are
 * compared, sorted and given another extension without string surgery. 8-bit text in the active code page
 * only.
 *
 * Each part is checked when a record is built: it must hold none of `< > : " | \ / * ?`, and the base name
 * must not be empty. An empty one is reported as "lmstdc_strlen(nombre_base) > 0", each offending character,
 * with the text, as (two lines here, a single line in the report)
 *     "c >= ' ' && c != '<' && c != '>' && c != ':' && c != '\"' && c != '|' && c != '\\'
 *      && c != '/' && c != '*' && c != '?'"
 * A text whose only offence is a control character is not noticed: only one that holds one of the nine is looked at
 * character by character, and its control characters are then reported too.
 * A NULL text is reported as "(cadena) != NULL" unless stated otherwise. Reports never stop a function: one
 * that gives a record gives it all the same, with an empty string for each part that is missing.
 */
#ifndef LUMODIR_NOMSFICH_H
#define LUMODIR_NOMSFICH_H

#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/** File-name record, freed with nomsfich_destruye(). Both strings belong to it. */
typedef struct Nomsfich {
    char *nombre_base; /**< base name in lower case, never empty in a sound record */
    char *extension;   /**< extension without its dot, in lower case; may be "" */
} Nomsfich;

/**
 * Builds a record from a bare file name, cut at its last dot: `Informe.Final.DOC` gives `informe.final` and
 * `doc`, `Leeme` gives `leeme` and an empty extension. Trailing blanks are cut from the extension only.
 *
 * A name whose only dot is its first character (`.config`) has an empty base name, which is reported; a
 * name with a directory or a drive is reported too.
 *
 * @param nombre  File name. NULL is reported.
 * @return New record.
 */
LUMODIR_API Nomsfich *nomsfich_crea(const char *nombre);

/**
 * Builds a record from its two parts, copied, in lower case and without trailing blanks.
 *
 * @param nombre_base  Base name. NULL is reported.
 * @param extension    Extension without its dot, "" for none. NULL is reported.
 * @return New record.
 */
LUMODIR_API Nomsfich *
nomsfich_crea_por_nombre_base_y_extension(const char *nombre_base, const char *extension);

/**
 * Copies a record; the parts are checked again.
 *
 * @param nomsfich  Record to copy. NULL is reported as "(nomsfich) != NULL".
 * @return New record.
 */
LUMODIR_API Nomsfich *nomsfich_copia(const Nomsfich *nomsfich);

/**
 * Builds a record with the base name of another and a new extension, in lower case and without trailing
 * blanks.
 *
 * @param nomsfich   Record that gives the base name; it does not change. NULL is reported as
 *                   "(nomsfich) != NULL".
 * @param extension  New extension without its dot. NULL is reported.
 * @return New record.
 */
LUMODIR_API Nomsfich *nomsfich_cambia_extension(const Nomsfich *nomsfich, const char *extension);

/**
 * Frees a record with its strings and sets the variable to NULL.
 *
 * @param nomsfich  Address of the record variable. NULL is reported as "(nomsfich) != NULL", a variable that
 *                  is NULL as "(*nomsfich) != NULL".
 */
LUMODIR_API void nomsfich_destruye(Nomsfich **nomsfich);

/**
 * Gives the base name of a record.
 *
 * @param nomsfich  Record. NULL is reported as "(nomsfich) != NULL" and answered with NULL.
 * @return Borrowed string: the record's own, valid as long as the record.
 */
LUMODIR_API const char *nomsfich_nombre_base_fichero(const Nomsfich *nomsfich);

/**
 * Gives the extension of a record, without its dot.
 *
 * @param nomsfich  Record. NULL is reported as "(nomsfich) != NULL" and answered with NULL.
 * @return Borrowed string: the record's own, valid as long as the record.
 */
LUMODIR_API const char *nomsfich_extension_fichero(const Nomsfich *nomsfich);

/**
 * Gives the whole name: both parts with a dot between them, or the base name alone when there is no
 * extension.
 *
 * @param nomsfich  Record. NULL is reported as "(nomsfich) != NULL".
 * @return New string (lumostr_destruye()).
 */
LUMODIR_API char *nomsfich_nombre_fichero(const Nomsfich *nomsfich);

/**
 * Tells whether two records hold the same name. The parts are stored in lower case, so letter case does not
 * count.
 *
 * @param nomsfich1  Record. NULL is reported as "(nomsfich1) != NULL".
 * @param nomsfich2  Record. NULL is reported as "(nomsfich2) != NULL".
 * @return 1 when both parts are equal, else 0.
 */
LUMODIR_API unsigned short nomsfich_iguales(const Nomsfich *nomsfich1, const Nomsfich *nomsfich2);

/**
 * Orders two records by base name and then by extension, byte by byte (unsigned, no locale).
 *
 * @param nomsfich1  Record. NULL is reported as "(nomsfich1) != NULL".
 * @param nomsfich2  Record. NULL is reported as "(nomsfich2) != NULL".
 * @return Negative, 0 or positive.
 */
LUMODIR_API int nomsfich_compara(const Nomsfich *nomsfich1, const Nomsfich *nomsfich2);

/**
 * Compares two extensions given as plain text, exactly; each is checked as a record's would be.
 *
 * @param extension1  Extension without its dot. NULL is reported.
 * @param extension2  Extension without its dot. NULL is reported.
 * @return 1 when equal, else 0.
 */
LUMODIR_API unsigned short nomsfich_misma_extension(const char *extension1, const char *extension2);

/**
 * Compares two base names given as plain text, exactly; each is checked as a record's would be.
 *
 * @param nombre_base1  Base name. NULL is reported.
 * @param nombre_base2  Base name. NULL is reported.
 * @return 1 when equal, else 0.
 */
LUMODIR_API unsigned short nomsfich_mismo_nombre_base(const char *nombre_base1, const char *nombre_base2);

/**
 * Gives the base name of a full path in lower case, checked for invalid characters: `C:\Dir\Photo.PNG` gives
 * `photo`.
 *
 * @param path_completo  Path. NULL is reported as "(path_completo) != NULL".
 * @return New string (lumostr_destruye()).
 */
LUMODIR_API char *nomsfich_nombre_base_path_completo(const char *path_completo);

LUMODIR_EXTERN_C_FIN

#endif
