/**
 * @file taskproc.h
 * Finds running processes by the name of a module that they have loaded, and terminates them.
 *
 * Of the other processes only the lists of their modules are asked for, those of 32-bit programs included.
 *
 * It cannot promise to find every process: those of other users and protected ones usually show no modules. And a
 * process may start or end between the search and what follows it. The system gives the number of an ended process
 * to another one sooner or later, so a record is not for keeping.
 */
#ifndef LUMODIR_TASKPROC_H
#define LUMODIR_TASKPROC_H

#include "companions/arr.h"
#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

#pragma pack(push, 1)

/** One loaded module that matched. A list of results owns its records. */
typedef struct Taskproc {
    wchar_t *modulo;   /**< name of the module, owned */
    unsigned long pid; /**< identifier of the process that has loaded it */
    wchar_t *ruta;     /**< full path of the module, owned */
} Taskproc;

#pragma pack(pop)

/**
 * Tells whether some process has loaded a module of the given name; usually the name of an executable, but
 * any loaded library counts. The system's idle process (number 0) is passed over: it has no modules, and the
 * system would show those of the process that asks in their place.
 *
 * @param modulo    Module name with its extension (UTF-16), compared exactly, letter case included. NULL is
 *                  reported and nothing is found.
 * @param procesos  Where to store a new list with one Taskproc per matching module of every process, or NULL
 *                  when it is not wanted (not reported; the search then stops at the first match). Modules of
 *                  one name in two directories are two; the same path, letter case aside, counts once in a
 *                  process, however often it is listed there (a 32-bit program lists its executable twice).
 *                  It receives NULL when nothing matches. Free it with arr_DestruyeEstructurasConTipo() and
 *                  taskproc_destruye().
 * @return 1 when something matched, else 0. A system that gives no process list is reported as
 *         "hSnapshot != INVALID_HANDLE_VALUE" and answered with 0.
 */
LUMODIR_API unsigned short
taskproc_busca_proceso_abierto(const wchar_t *modulo, ArrPunteroConTipo **procesos);

/**
 * Terminates the process of a record, with exit code 0. One that cannot be opened for it is left alone
 * without a report.
 *
 * @param taskproc  Record of a search. NULL is reported as "(taskproc) != NULL".
 * @return 1 when termination was attempted, else 0. Even then the process may not have ended yet: its files may stay
 *         locked for a moment more.
 *         https://learn.microsoft.com/en-us/windows/win32/api/processthreadsapi/nf-processthreadsapi-terminateprocess
 */
LUMODIR_API unsigned short taskproc_mata_proceso(const Taskproc *taskproc);

/**
 * Terminates every process that taskproc_busca_proceso_abierto() finds for a name.
 *
 * @param modulo  Module name with its extension (UTF-16), letter case included. NULL is reported and nothing
 *                is terminated.
 * @return 0 when none was found, else 1.
 */
LUMODIR_API unsigned short taskproc_mata_procesos_nombre_dado(const wchar_t *modulo);

/**
 * Gives the full path of the module of a record.
 *
 * @param taskproc  Record of a search. NULL is reported as "(taskproc) != NULL" and answered with NULL.
 * @return Borrowed UTF-16 string: the record's own, valid as long as the record.
 */
LUMODIR_API const wchar_t *taskproc_ruta_proceso(const Taskproc *taskproc);

/**
 * Frees a record with its strings and sets the variable to NULL.
 *
 * @param taskproc  Address of the record variable. NULL is reported as "(taskproc) != NULL", a variable that
 *                  is NULL as "(*taskproc) != NULL".
 */
LUMODIR_API void taskproc_destruye(Taskproc **taskproc);

LUMODIR_EXTERN_C_FIN

#endif
