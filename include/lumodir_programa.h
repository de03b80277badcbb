/**
 * @file lumodir_programa.h
 * The running program, and the search for others in the directories of PATH.
 */
#ifndef LUMODIR_LUMODIR_PROGRAMA_H
#define LUMODIR_LUMODIR_PROGRAMA_H

#include "companions/arr.h"
#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/**
 * Gives the full path of the running program (not of this library). Reported: no answer from the system
 * ("tam_path > 0") and a path cut at 10240 units ("tam_path < LMLONGPATH_LUMO_MAX_PATH").
 *
 * @return New string (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *lumodir_dame_path_completo_del_programa_UNICODE(void);

/**
 * 8-bit flavour of lumodir_dame_path_completo_del_programa_UNICODE(): its path, converted. A character that the
 * code page lacks becomes the code page's default character, never one that looks alike.
 *
 * @return New string (lumostr_destruye()).
 */
LUMODIR_API char *lumodir_dame_path_completo_del_programa(void);

/**
 * Looks for a name in the directories of PATH. The name is taken as it is, no extension is added, and nothing
 * checks that what is found is an executable file.
 *
 * @param nombre     File name with its extension (UTF-16). NULL is reported and nothing is found.
 * @param path_exes  Receives a new list (arr_DestruyeCADENA_u()) with every path found, empty when there is
 *                   none; or NULL, and then the search stops at the first.
 * @return 1 when found, else 0.
 */
LUMODIR_API unsigned short lumodir_busca_ejecutables_del_path(const wchar_t *nombre, ArrCADENA_u **path_exes);

/**
 * Looks for a name in the directories of PATH as lumodir_busca_ejecutables_del_path() does, first match only.
 *
 * @param nombre    File name with its extension (UTF-16). NULL is reported and nothing is found.
 * @param path_exe  Always stored when given: a new string (widestr_nousar_destruye()) with the path, or NULL
 *                  when there is none.
 * @return 1 when found, else 0.
 */
LUMODIR_API unsigned short lumodir_busca_ejecutable_del_path(const wchar_t *nombre, wchar_t **path_exe);

LUMODIR_EXTERN_C_FIN

#endif
