/**
 * @file cdir_ficheros.h
 * Files and directories on disk: existence and access, deletion, creation, renaming and moving.
 *
 * Paths may be of any length that the library accepts. Unless stated otherwise a NULL path is reported and
 * answered with 0, and an out-parameter that is NULL means that it is not wanted and is not reported.
 *
 * "Retried" means the retry loop: silent attempts with a short wait, and then, if the function reports, a
 * question to the user with the message and the system's text for the error (buclrein_establece_receptor());
 * in service mode there is one attempt and no message. Nobody knows what the user decides, so look at the answer
 * where there is one.
 *
 * A path that is not full (relative, `X:name`, `\name`) is made full once, where a function begins: a question, a
 * callback or another thread that changes the current directory meanwhile redirects nothing. Messages show the path as
 * it was given.
 */
#ifndef LUMODIR_CDIR_FICHEROS_H
#define LUMODIR_CDIR_FICHEROS_H

#include "companions/arr.h"
#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/* ---- Existence ----
 *
 * What is there but cannot be asked (held without sharing, no right to look at it) exists: its directory says so. What
 * cannot be reached at all (an empty drive, a share that is away) is answered with 0, like what is missing.
 */

/**
 * Tells whether a name exists, a file or a directory alike; cdir_es_directorio_u() tells them apart.
 *
 * @param nombre  Path (UTF-16). NULL is reported as "(nombre) != NULL".
 * @return 1 when it exists, else 0.
 */
LUMODIR_API unsigned short cdir_existe_fichero_UNICODE(const wchar_t *nombre);
/** 8-bit flavour. */
LUMODIR_API unsigned short cdir_existe_fichero(const char *nombre);

/**
 * The same test as cdir_existe_fichero_UNICODE(): the answer is 1 for a plain file as well.
 *
 * @param nombre_directorio  Path (UTF-16). NULL is reported as "(nombre_directorio) != NULL".
 * @return 1 when it exists, else 0.
 */
LUMODIR_API unsigned short cdir_existe_directorio_UNICODE(const wchar_t *nombre_directorio);
/** 8-bit flavour. */
LUMODIR_API unsigned short cdir_existe_directorio(const char *nombre_directorio);

/**
 * As cdir_existe_directorio_UNICODE(), with a text for the user.
 *
 * @param nombre_directorio  Path (UTF-16). NULL is reported as "(nombre_directorio) != NULL".
 * @param mensaje            Always stored when given: a new text (widestr_nousar_destruye()) with message
 *                           31827 "Directory '%s' does not exist.", or NULL when it exists.
 * @return 1 when it exists, else 0.
 */
LUMODIR_API unsigned short
cdir_existe_directorio_UNICODE_con_mensaje_opc(const wchar_t *nombre_directorio, wchar_t **mensaje);

/**
 * Tells whether a file that must exist does; if not it shows 74876 "This file '%s' does not exist" and
 * reports an internal error with an empty expression.
 *
 * @param fichero  Path (UTF-16). NULL is reported.
 * @return 1 when it exists, else 0.
 */
LUMODIR_API unsigned short cdir_comprueba_existe_fichero(const wchar_t *fichero);

/**
 * Tells whether a name is a directory.
 *
 * @param path  Path (UTF-16). NULL is reported as "(path) != NULL".
 * @return 1 for an existing directory, else 0.
 */
LUMODIR_API unsigned short cdir_es_directorio_u(const wchar_t *path);

/**
 * Tells whether a search pattern finds an entry that is not a directory.
 *
 * @param path_filtro  Directory and name with wildcards (UTF-16). NULL is reported as
 *                     "(path_filtro_generico) != NULL".
 * @return 1 when it finds one, else 0.
 */
LUMODIR_API unsigned short cdir_existe_fichero_filtro_UNICODE(const wchar_t *path_filtro);
/** 8-bit flavour. */
LUMODIR_API unsigned short cdir_existe_fichero_filtro(const char *path_filtro);

/**
 * Tells whether a search pattern finds a directory; "." and ".." count.
 *
 * @param path_filtro        Directory and name with wildcards (UTF-16). NULL is reported as
 *                           "(path_filtro_generico) != NULL".
 * @param nombre_directorio  Receives a new string (widestr_nousar_destruye()) with the bare name of the first
 *                           one found; untouched when there is none. NULL when it is not wanted.
 * @return 1 when it finds one, else 0.
 */
LUMODIR_API unsigned short
cdir_existe_directorio_filtro(const wchar_t *path_filtro, wchar_t **nombre_directorio);

/* ---- Access ----
 *
 * Reasons are new texts (widestr_nousar_destruye()), stored on every outcome when the out-parameter is given,
 * NULL when there is nothing to say; nothing is shown.
 */

/**
 * Tells whether a file can be opened for reading; a directory cannot, nor a file that another program holds
 * without sharing.
 *
 * @param fichero  Path (UTF-16). NULL is reported as "(fichero) != NULL".
 * @return 1 when readable, else 0.
 */
LUMODIR_API unsigned short cdir_se_puede_leer_UNICODE(const wchar_t *fichero);
/** 8-bit flavour. */
LUMODIR_API unsigned short cdir_se_puede_leer(const char *fichero);

/**
 * Tells whether this program alone can write a file: lumodir_se_puede_escribir_UNICODE_ex() without the
 * reason. A missing file is created and deleted again, by the handle that made it; nothing else is ever deleted.
 *
 * @param fichero  Path (UTF-16). NULL is reported as "(fichero) != NULL".
 * @return 1 when writable, else 0.
 */
LUMODIR_API unsigned short cdir_se_puede_escribir_UNICODE(const wchar_t *fichero);
/** 8-bit flavour. */
LUMODIR_API unsigned short cdir_se_puede_escribir(const char *fichero);

/**
 * Tells whether a new file can be created in a directory, by creating and deleting one. The directory and its
 * missing parents are created first and stay, whatever the answer. A bare drive (`X:`) is its current directory.
 *
 * @param directorio  Directory (UTF-16). NULL is reported as "(path_sin_espacios) != NULL".
 * @param motivo_out  Receives the reason, or NULL: that of an invalid path (cdir_es_path_valido_UNICODE()),
 *                    53948 "Cannot create the directory '%s'", or 404522 "Unable to write to the directory
 *                    '%s' because you do not have write permission. If you are trying to access a network
 *                    drive, please check that you have write permission."
 * @return 1 when a file can be created, else 0.
 */
LUMODIR_API unsigned short cdir_se_puede_escribir_en_directorio(const wchar_t *directorio, wchar_t **motivo_out);

/**
 * As cdir_se_puede_escribir_en_directorio(), for the directory of a file; the file itself is not touched. A name
 * without a directory stands for the current one, `X:name` for that of the drive.
 *
 * @param fichero     Path of the file (UTF-16). NULL is reported as "(path_sin_espacios) != NULL".
 * @param motivo_out  Receives the reason, or NULL.
 * @return 1 when a file can be created there, else 0.
 */
LUMODIR_API unsigned short
cdir_se_puede_escribir_fichero_en_directorio(const wchar_t *fichero, wchar_t **motivo_out);

/**
 * 8-bit flavour of lumodir_tiene_permiso_escritura_fichero_UNICODE(): asks for write permission, opens
 * nothing.
 *
 * @param fichero  Path (8-bit). NULL is reported.
 * @return 1 when permission is granted, else 0.
 */
LUMODIR_API unsigned short cdir_tiene_permiso_escritura_fichero(const char *fichero);

/* ---- Deleting files ----
 *
 * "Deletes a file" below means: a read-only file is made writable first (53962 "It is not possible to unlock
 * the file '%s'" when that fails), a file that is gone counts as deleted, and the deletion is retried with
 * message 53951 "Cannot delete the file '%s'", a line break, and the extra text or else 401224 "It may be
 * that it is being used by another application or you do not have sufficient privileges to write to this
 * directory." At the first retry the callback of lumodir_set_func_comprobar_fichero_no_esta_abierto() is told
 * the path. The 8-bit flavours of actions give no answer: their callers learn the outcome from the messages
 * and the disk.
 */

/**
 * Deletes a file that must exist. A missing one shows 53950 "Cannot delete the file '%s' (it does not exist)"
 * and is reported as "CR_existe" with the path.
 *
 * @param fichero  Path (UTF-16). NULL is reported.
 * @return 1 when deleted, else 0.
 */
LUMODIR_API unsigned short cdir_borra_fichero_UNICODE(const wchar_t *fichero);
/** 8-bit flavour, without its answer. */
LUMODIR_API void cdir_borra_fichero(const char *fichero);

/**
 * As cdir_borra_fichero_UNICODE(), with a text of the caller's in the retry message.
 *
 * @param fichero        Path (UTF-16). NULL is reported.
 * @param mensaje_extra  Second line of the message (UTF-16), or NULL for message 401224 (not reported).
 * @return 1 when deleted, else 0.
 */
LUMODIR_API unsigned short
cdir_borra_fichero_con_mensaje_extra_UNICODE(const wchar_t *fichero, const wchar_t *mensaje_extra);
/** 8-bit flavour, without its answer. */
LUMODIR_API void cdir_borra_fichero_con_mensaje_extra(const char *fichero, const char *mensaje_extra);

/**
 * Deletes a file if it exists; a missing one is a success, without a message.
 *
 * @param fichero  Path (UTF-16). NULL is reported.
 * @return 1 when deleted or absent, else 0.
 */
LUMODIR_API unsigned short cdir_borra_fichero_si_existe_UNICODE(const wchar_t *fichero);
/** 8-bit flavour, without its answer. */
LUMODIR_API void cdir_borra_fichero_si_existe(const char *fichero);

/**
 * Deletes a file in one attempt: no retry, no change of attributes, no message. A missing or read-only file
 * is a failure here.
 *
 * @param nombre  Path (UTF-16). NULL is reported as "(nombre) != NULL".
 * @return 1 when the system deleted it, else 0.
 */
LUMODIR_API unsigned short cdir_borra_fichero_con_comprobacion_UNICODE(const wchar_t *nombre);
/** 8-bit flavour. */
LUMODIR_API unsigned short cdir_borra_fichero_con_comprobacion(const char *nombre);

/**
 * Deletes the files that a pattern finds, one silent attempt each; read-only files stay, failures are
 * ignored.
 *
 * Only what the system's own search finds is deleted, never what the enumerator's looser rules would find. On volumes
 * with short names that search looks at these too, so that `*.htm` finds `page.html`:
 * https://devblogs.microsoft.com/oldnewthing/20050720-16/?p=34883
 *
 * A pattern with other wildcards than a whole `*` name and a whole `.*` extension is reported as
 * "path_correcto == CIERTO" with the pattern, and carried out all the same.
 *
 * @param path_filtro  Directory and name with wildcards (UTF-16). NULL is reported and nothing is deleted.
 */
LUMODIR_API void cdir_delete_ficheros_UNICODE(const wchar_t *path_filtro);
/** 8-bit flavour. */
LUMODIR_API void cdir_delete_ficheros(const char *path_filtro);

/**
 * Gives every file of a directory that has an extension another one. A file that already has the new name is
 * deleted first, on purpose (cdir_borra_fichero_si_existe_UNICODE()); the renaming is that of
 * cdir_renombra_fichero_UNICODE(). Changing an extension to itself changes nothing, even when it is spelled with other
 * blanks or dots at its end.
 *
 * Only a file whose entry bears exactly the new name, letter case aside, is deleted: not one that merely answers to it
 * (by its short name, or because the system cuts a blank or dot at the end), nor the source by another of its names.
 * A new extension with a separator or a colon makes no name: the renaming fails with code 123 and nothing changes.
 *
 * @param dirBase  Directory (UTF-16); a bare drive is its current directory. A NULL argument is reported as
 *                 "dirBase!=NULL && oldExt!=NULL && newExt !=NULL", an empty or blank directory as
 *                 "widestr_longitud(directorio) > 0", and nothing is changed.
 * @param oldExt   Extension to change, with or without its dot. NULL is reported.
 * @param newExt   New extension, with or without its dot. NULL is reported.
 */
LUMODIR_API void
cdir_cambia_extension_ficheros_u(const wchar_t *dirBase, const wchar_t *oldExt, const wchar_t *newExt);

/* ---- Deleting directories ----
 *
 * Removing a directory is retried with message 53954 "Unable to delete the directory '%s'". Deleting contents
 * or a tree never enters a junction or a symbolic link: the link itself is removed, never what it points
 * to; where the system would remove that (Wine), the link stays and counts as not deleted. Everything below the root is
 * reached through the directories that are open, so somebody who swaps directories for links meanwhile gains nothing.
 * For a directory that is NULL, empty, blank or a bare drive (`X:`) the contents and tree deletions delete nothing: it is
 * reported as "(directorio) != NULL", "widestr_longitud(directorio) > 0" or "unidad_sin_directorio == FALSO" and
 * answered with 0.
 * On links: https://learn.microsoft.com/en-us/windows/win32/fileio/reparse-points
 */

/**
 * Removes an empty directory that must exist. A missing one shows 53953 "Cannot delete the directory '%s' (it
 * does not exist)" and is reported as "CR_existe" with the path.
 *
 * @param directorio  Directory (UTF-16). NULL is reported.
 * @return 1 when removed, else 0.
 */
LUMODIR_API unsigned short cdir_borra_directorio_UNICODE(const wchar_t *directorio);
/** 8-bit flavour, without its answer. */
LUMODIR_API void cdir_borra_directorio(const char *directorio);

/**
 * Removes an empty directory if it exists.
 *
 * @param directorio  Directory (UTF-16). NULL is reported.
 * @return 1 when removed; 0 when absent (without a message) or not removed.
 */
LUMODIR_API unsigned short cdir_borra_directorio_si_existe_UNICODE(const wchar_t *directorio);
/** 8-bit flavour, without its answer. */
LUMODIR_API void cdir_borra_directorio_si_existe(const char *directorio);

/**
 * Removes an empty directory if it exists, with retries but without any message.
 *
 * @param directorio  Directory (UTF-16). NULL is reported.
 * @return 1 when removed; 0 when absent or not removed.
 */
LUMODIR_API unsigned short cdir_se_borra_directorio(const wchar_t *directorio);

/**
 * Deletes the contents of a directory, which itself stays. Each file is deleted with messages, and must still
 * exist when its turn comes.
 *
 * Subdirectories whose name begins with "." are left alone on purpose, so their parents stay too, with a
 * message.
 *
 * @param directorio  Directory (UTF-16). NULL, empty or blank is reported.
 */
LUMODIR_API void cdir_borra_contenido_directorio_UNICODE(const wchar_t *directorio);
/** 8-bit flavour. */
LUMODIR_API void cdir_borra_contenido_directorio(const char *directorio);

/**
 * Deletes the contents of a directory as cdir_borra_contenido_directorio_UNICODE() does, and then the
 * directory as cdir_borra_directorio_UNICODE() does.
 *
 * @param directorio  Directory (UTF-16). NULL, empty or blank is reported.
 * @return 1 when the directory was removed, else 0.
 */
LUMODIR_API unsigned short cdir_borra_directorio_y_subdirectorios_UNICODE(const wchar_t *directorio);
/** 8-bit flavour, without its answer. */
LUMODIR_API void cdir_borra_directorio_y_subdirectorios(const char *directorio);

/**
 * As cdir_borra_directorio_y_subdirectorios_UNICODE(), interruptible: before each entry the flag is read, and
 * 0 stops the deletion, leaving what is left.
 *
 * @param directorio  Directory (UTF-16). NULL, empty or blank is reported.
 * @param continuar   Flag, 1 at the start, which another thread or a callback sets to 0 to stop. NULL is
 *                    reported as "cotinuar != NULL" (spelled so) and nothing is deleted.
 * @return 0 when stopped; else 1 when the directory was removed and 0 when not. Where the flag is neither 0 nor 1 at
 *         the end, the directory is kept, and the flag is the answer.
 */
LUMODIR_API unsigned short
cdir_borra_directorio_y_subdirectorios_parando(const wchar_t *directorio, unsigned short *continuar);

/**
 * Deletes the files directly in a directory, in up to 20 silent passes with a random pause of 50 to 500 ms
 * after each that left something. Subdirectories and the directory stay. Files that remain are reported as
 * "se_han_borrado_todos_los_ficheros_loc == CIERTO".
 *
 * @param directorio  Directory (UTF-16). NULL, empty or blank is reported.
 */
LUMODIR_API void cdir_borra_contenido_directorio_reintentando_u(const wchar_t *directorio);

/**
 * Deletes a whole tree, the directory itself included although the name speaks of its contents, in passes
 * like those of cdir_borra_contenido_directorio_reintentando_u(). Nothing is reported when files remain.
 *
 * @param directorio  Directory (UTF-16). NULL, empty or blank is reported.
 * @return 1 when every file was deleted, whether or not the directories could be removed; else 0.
 */
LUMODIR_API unsigned short
cdir_borra_contenido_directorio_si_es_posible_reintentando_u(const wchar_t *directorio);

/**
 * Deletes a whole tree, the directory included, in passes like those of
 * cdir_borra_contenido_directorio_reintentando_u(). Files that remain are reported as
 * "se_han_borrado_todos_los_ficheros_loc == CIERTO".
 *
 * @param directorio  Directory (UTF-16). NULL, empty or blank is reported.
 */
LUMODIR_API void cdir_borra_directorio_y_subdirectorios_reintentando_u(const wchar_t *directorio);

/**
 * Deletes a whole tree, the directory included, in one silent pass; directories whose name begins with "."
 * too.
 *
 * @param directorio  Directory (UTF-16). NULL, empty or blank is reported.
 * @param fallos      The caller's list, to which the full paths of the files that could not be deleted are
 *                    appended (never those of directories); NULL when it is not wanted (not reported).
 * @return 1 when the directory was removed, else 0.
 */
LUMODIR_API unsigned short
cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE(const wchar_t *directorio, ArrCADENA_u *fallos);

/* ---- Creating directories ----
 *
 * Each missing level is created in turn, retried with message 53948 "Cannot create the directory '%s'";
 * existing levels cost nothing and cannot fail. `\..\` is resolved first: `C:\a\x\..\b` creates `C:\a` and
 * `C:\a\b`. When a level fails for good and the function reports, 53952 "The directory name '%s' is
 * incorrect" is shown. An invalid path shows 53955 "The file '%s' is not correct" and is tried all the same.
 * A path without a directory needs nothing and gives 1. A share may be written with either separator and with several
 * of them, and a path may bear the prefix `\\?\` or `\\.\`. The answer is 1 only when the directory that was named is
 * there: a file of its name is not one, and a drive or share that is missing is a failure too.
 */

/**
 * Creates the directories of a path.
 *
 * @param path           Path (UTF-16). NULL is reported.
 * @param es_directorio  1 when the path names a directory, with or without a final separator; 0 when it names
 *                       a file whose directory is wanted.
 * @return 1 when every level exists at the end, else 0.
 */
LUMODIR_API unsigned short cdir_crea_directorios_UNICODE(const wchar_t *path, unsigned short es_directorio);
/** 8-bit flavour, without its answer. */
LUMODIR_API void cdir_crea_directorios(const char *path, unsigned short es_directorio);

/**
 * Creates a directory with its missing parents.
 *
 * @param path  Directory (UTF-16). NULL is reported.
 * @return 1 when every level exists at the end, else 0.
 */
LUMODIR_API unsigned short cdir_crea_directorios_del_path_UNICODE(const wchar_t *path);
/** 8-bit flavour, without its answer. */
LUMODIR_API void cdir_crea_directorios_del_path(const char *path);

/**
 * Creates the directory of a file with its missing parents; the file is not created.
 *
 * @param path  Path of the file (UTF-16). NULL is reported.
 * @return 1 when every level exists at the end, else 0.
 */
LUMODIR_API unsigned short cdir_crea_directorios_fichero_UNICODE(const wchar_t *path);
/** 8-bit flavour, without its answer. */
LUMODIR_API void cdir_crea_directorios_fichero(const char *path);

/**
 * As cdir_crea_directorios_del_path_UNICODE(), with retries but without the messages 53948 and 53952.
 *
 * @param path  Directory (UTF-16). NULL is reported.
 * @return 1 when every level exists at the end, else 0.
 */
LUMODIR_API unsigned short cdir_crea_directorios_si_es_posible_UNICODE(const wchar_t *path);

/**
 * As cdir_crea_directorios_fichero_UNICODE(), with retries but without the messages 53948 and 53952.
 *
 * @param path  Path of the file (UTF-16). NULL is reported.
 * @return 1 when every level exists at the end, else 0.
 */
LUMODIR_API unsigned short cdir_crea_directorios_fichero_si_es_posible_UNICODE(const wchar_t *path);
/** 8-bit flavour. */
LUMODIR_API unsigned short cdir_crea_directorios_fichero_si_es_posible(const char *path);

/* ---- Renaming and moving ---- */

/**
 * Renames a file, retried with message 53951 "The file cannot be renamed" and both paths. An existing target
 * is never replaced. There is no answer: whoever needs one calls cdir_renombra_fichero_si_es_posible_UNICODE().
 *
 * @param nombre_viejo  Path (UTF-16). NULL is reported and nothing is renamed.
 * @param nombre_nuevo  New path (UTF-16). NULL is reported and nothing is renamed.
 */
LUMODIR_API void cdir_renombra_fichero_UNICODE(const wchar_t *nombre_viejo, const wchar_t *nombre_nuevo);
/** 8-bit flavour. */
LUMODIR_API void cdir_renombra_fichero(const char *nombre_viejo, const char *nombre_nuevo);

/**
 * Renames a file in one attempt without any message. An existing target is never replaced.
 *
 * @param nombre_viejo  Path (UTF-16). NULL is reported.
 * @param nombre_nuevo  New path (UTF-16). NULL is reported.
 * @return 1 when renamed, else 0.
 */
LUMODIR_API unsigned short
cdir_renombra_fichero_si_es_posible_UNICODE(const wchar_t *nombre_viejo, const wchar_t *nombre_nuevo);

/**
 * Moves a file within its volume in one attempt without any message. An existing target is never replaced. (The
 * renamings go to other volumes too, where the system copies and then deletes: a source that cannot be deleted stays,
 * and the answer is that of a success. See https://learn.microsoft.com/windows/win32/api/winbase/nf-winbase-movefileexw)
 *
 * @param origen   Path (UTF-16). NULL is reported.
 * @param destino  New path (UTF-16). NULL is reported.
 * @return 1 when moved, else 0.
 */
LUMODIR_API unsigned short cdir_mueve_fichero(const wchar_t *origen, const wchar_t *destino);

LUMODIR_EXTERN_C_FIN

#endif
