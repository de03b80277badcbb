/**
 * @file lumoreg.h
 * A thin layer over the registry: keys, string and 32-bit values, lists of subkeys and of string values.
 *
 * Every function opens the key that it needs and closes it again. Without an explicit view a key is tried
 * with the plain access, then in the 64-bit view and, in a 64-bit process, in the 32-bit view; `_en_vista`
 * and `_ex` functions try the given view alone.
 *
 * A key that does not open is answered with 0 and not reported, unless stated otherwise. Other errors of the
 * system are reported with the key path or the name as detail. A NULL key path is reported as
 * "(clave) != NULL" and an invalid view or root index is reported too; the answer is then 0.
 */
#ifndef LUMODIR_LUMOREG_H
#define LUMODIR_LUMOREG_H

#include "companions/arr.h"
#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/** Root key index, the `raiz` of every function. */
enum {
    LUMOREG_RAIZ_CLASSES_ROOT = 0,   /**< HKEY_CLASSES_ROOT */
    LUMOREG_RAIZ_CURRENT_CONFIG = 1, /**< HKEY_CURRENT_CONFIG */
    LUMOREG_RAIZ_CURRENT_USER = 2,   /**< HKEY_CURRENT_USER */
    LUMOREG_RAIZ_LOCAL_MACHINE = 3,  /**< HKEY_LOCAL_MACHINE */
    LUMOREG_RAIZ_USERS = 4           /**< HKEY_USERS */
};

/**
 * Registry view, the `vista` of the functions that have one:
 * https://learn.microsoft.com/en-us/windows/win32/winprog64/accessing-an-alternate-registry-view
 */
enum {
    LUMOREG_VISTA_PROCESO = 0, /**< that of the process */
    LUMOREG_VISTA_64BITS = 1,  /**< KEY_WOW64_64KEY */
    LUMOREG_VISTA_32BITS = 2   /**< KEY_WOW64_32KEY */
};

/* ---- Keys ---- */

/**
 * Tells whether a key exists and may be read.
 *
 * @param raiz   Root index.
 * @param clave  Key path below the root (UTF-16). NULL is reported.
 * @return 1 when it opens, else 0.
 */
LUMODIR_API unsigned short lumoreg_existe_clave_u(unsigned long raiz, const wchar_t *clave);
/** 8-bit flavour. */
LUMODIR_API unsigned short lumoreg_existe_clave(unsigned long raiz, const char *clave);

/**
 * As lumoreg_existe_clave_u(), in one view.
 *
 * @param vista  View.
 * @param raiz   Root index.
 * @param clave  Key path below the root (UTF-16). NULL is reported.
 * @return 1 when it opens, else 0.
 */
LUMODIR_API unsigned short
lumoreg_existe_clave_en_vista_u(unsigned long vista, unsigned long raiz, const wchar_t *clave);

/**
 * Creates a key with its missing parents, or opens it when it exists, in the view of the process.
 *
 * @param raiz   Root index.
 * @param clave  Key path below the root (UTF-16). NULL is reported as "(clave) != NULL".
 * @return 1 on success, else 0.
 */
LUMODIR_API unsigned short lumoreg_crea_clave_u(unsigned long raiz, const wchar_t *clave);

/**
 * As lumoreg_crea_clave_u(), in one view.
 *
 * @param vista  View.
 * @param raiz   Root index.
 * @param clave  Key path below the root (UTF-16). NULL is reported as "(clave) != NULL".
 * @return 1 on success, else 0.
 */
LUMODIR_API unsigned short
lumoreg_crea_clave_en_vista_u(unsigned long vista, unsigned long raiz, const wchar_t *clave);

/**
 * Deletes a key and what is below it, one pass.
 *
 * A pass leaves every second subkey of a level in place: of `k1`, `k2`, `k3` it removes `k1` and `k3`.
 * Programs rely on that, so it stays. A key that still holds subkeys cannot be deleted, which
 * is reported as "resultado == ERROR_SUCCESS" with its name; a key or subkey that does not open is reported as
 * "clave_abierta == CIERTO" with its path, and goes all the same if it is empty and may be deleted. Subkeys
 * whose name is longer than 99 characters are passed over; one whose name holds a NUL cannot be opened.
 *
 * Nothing is deleted that was not named. A key that is a symbolic link, the named one included, is never entered:
 * the link itself is deleted and what it points to stays. (Links on the way to the parent are followed.)
 * All of it happens in one view, the one in which the parent opened; the 64-bit and the 32-bit view are
 * tried for the parent only where it is missing, not where it may not be opened.
 *
 * @param raiz    Root index.
 * @param clave   Path of the parent key (UTF-16); empty for the root itself. NULL is reported and nothing is
 *                deleted. Nothing is done either when the parent does not open.
 * @param nombre  Name of the key to delete (UTF-16); empty for the parent itself. NULL is reported and nothing
 *                is deleted. Both empty is the root, which cannot be deleted: it is reported as
 *                "widestr_longitud(clave) > 0 || widestr_longitud(nombre) > 0" and everything stays.
 */
LUMODIR_API void lumoreg_borra_clave_u(unsigned long raiz, const wchar_t *clave, const wchar_t *nombre);
/** 8-bit flavour. */
LUMODIR_API void lumoreg_borra_clave(unsigned long raiz, const char *clave, const char *nombre);

/**
 * Tells whether the process may write under HKEY_LOCAL_MACHINE, by writing a value in the key
 * `SOFTWARE\LUMO`, which is created when it is missing. The key is removed afterwards as far as the system
 * lets it.
 *
 * @return 1 when the value could be written, else 0.
 */
LUMODIR_API unsigned short lumoreg_tiene_permisos_escribir_en_registro(void);

/* ---- Writing values: the key must exist, it is never created ---- */

/**
 * Deletes a value. A failure of the deletion is reported as "error == ERROR_SUCCESS" with the key path.
 *
 * @param raiz          Root index.
 * @param clave         Key path below the root (UTF-16). NULL is reported.
 * @param nombre_valor  Value name (UTF-16). NULL is reported and nothing is deleted.
 */
LUMODIR_API void
lumoreg_borra_valor_clave_u(unsigned long raiz, const wchar_t *clave, const wchar_t *nombre_valor);

/**
 * Writes a string value (REG_SZ).
 *
 * @param raiz          Root index.
 * @param clave         Key path below the root (UTF-16). NULL is reported.
 * @param nombre_valor  Value name (UTF-16). NULL is reported as "(nombre_valor) != NULL".
 * @param dato          Text (UTF-16). NULL is reported as "(dato) != NULL".
 * @return 1 when written, else 0.
 */
LUMODIR_API unsigned short lumoreg_establece_cadena_u(unsigned long raiz, const wchar_t *clave,
                                                      const wchar_t *nombre_valor, const wchar_t *dato);

/**
 * As lumoreg_establece_cadena_u(), a string whose environment variables the reader expands (REG_EXPAND_SZ).
 *
 * @param raiz          Root index.
 * @param clave         Key path below the root (UTF-16). NULL is reported.
 * @param nombre_valor  Value name (UTF-16). NULL is reported as "(nombre_valor) != NULL".
 * @param dato          Text (UTF-16). NULL is reported as "(dato) != NULL".
 * @return 1 when written, else 0.
 */
LUMODIR_API unsigned short lumoreg_establece_cadena_expand_u(unsigned long raiz, const wchar_t *clave,
                                                             const wchar_t *nombre_valor,
                                                             const wchar_t *dato);

/**
 * As lumoreg_establece_cadena_u(), in one view.
 *
 * @param vista         View.
 * @param raiz          Root index.
 * @param clave         Key path below the root (UTF-16). NULL is reported.
 * @param nombre_valor  Value name (UTF-16). NULL is reported as "(nombre_valor) != NULL".
 * @param dato          Text (UTF-16). NULL is reported as "(dato) != NULL".
 * @return 1 when written, else 0.
 */
LUMODIR_API unsigned short
lumoreg_establece_cadena_en_vista_u(unsigned long vista, unsigned long raiz, const wchar_t *clave,
                                    const wchar_t *nombre_valor, const wchar_t *dato);

/**
 * Writes a 32-bit value (REG_DWORD).
 *
 * @param raiz          Root index.
 * @param clave         Key path below the root (UTF-16). NULL is reported.
 * @param nombre_valor  Value name (UTF-16). NULL is reported as "(nombre_valor) != NULL".
 * @param dato          Value.
 * @return 1 when written, else 0.
 */
LUMODIR_API unsigned short lumoreg_establece_ulong_u(unsigned long raiz, const wchar_t *clave,
                                                     const wchar_t *nombre_valor, unsigned long dato);
/** 8-bit flavour. */
LUMODIR_API unsigned short
lumoreg_establece_ulong(unsigned long raiz, const char *clave, const char *nombre_valor, unsigned long dato);

/* ---- Reading ---- */

/**
 * Reads a value as a string. The type of the value is not looked at: whatever bytes it holds are taken as
 * text up to the first terminator, and never past their end. (A stored string need not be terminated:
 * https://learn.microsoft.com/en-us/windows/win32/api/winreg/nf-winreg-regqueryvalueexw)
 *
 * @param raiz          Root index.
 * @param clave         Key path below the root (UTF-16). NULL is reported.
 * @param nombre_valor  Value name (UTF-16). NULL is reported.
 * @param contenido     Receives a new string (widestr_nousar_destruye()), only on success. NULL is reported
 *                      as "(contenido) != NULL".
 * @return 1 when read, else 0.
 */
LUMODIR_API unsigned short lumoreg_lee_cadena_u(unsigned long raiz, const wchar_t *clave,
                                                const wchar_t *nombre_valor, wchar_t **contenido);

/**
 * As lumoreg_lee_cadena_u() in 8-bit; the bytes of the system's 8-bit reading come back as they are.
 *
 * @param raiz          Root index.
 * @param clave         Key path below the root (8-bit). NULL is reported.
 * @param nombre_valor  Value name (8-bit). NULL is reported.
 * @param contenido     Receives a new string (lumostr_destruye()), only on success. NULL is reported as
 *                      "(contenido) != NULL".
 * @return 1 when read, else 0.
 */
LUMODIR_API unsigned short
lumoreg_lee_cadena(unsigned long raiz, const char *clave, const char *nombre_valor, char **contenido);

/**
 * As lumoreg_lee_cadena_u(), in one view.
 *
 * @param vista         View.
 * @param raiz          Root index.
 * @param clave         Key path below the root (UTF-16). NULL is reported.
 * @param nombre_valor  Value name (UTF-16). NULL is reported.
 * @param contenido     Receives a new string (widestr_nousar_destruye()), only on success. NULL is reported
 *                      as "(contenido) != NULL".
 * @return 1 when read, else 0.
 */
LUMODIR_API unsigned short lumoreg_lee_cadena_ex_u(unsigned long vista, unsigned long raiz,
                                                   const wchar_t *clave, const wchar_t *nombre_valor,
                                                   wchar_t **contenido);

/**
 * Appends the names of the subkeys of a key to a list, in the system's order. A failing step is reported as
 * "error == ERROR_SUCCESS || error == ERROR_MORE_DATA" with the key path, and still counts as one element:
 * while others create and delete subkeys, a name may stand twice in the list, or an empty text in place of one.
 *
 * @param raiz      Root index.
 * @param clave     Key path below the root (UTF-16). NULL is reported.
 * @param subclaves The caller's list; untouched when there is nothing to append. NULL is reported.
 * @return 1 when the key opened and has a subkey, else 0.
 */
LUMODIR_API unsigned short
lumoreg_dame_subclaves_u(unsigned long raiz, const wchar_t *clave, ArrCADENA_u *subclaves);

/**
 * As lumoreg_dame_subclaves_u() in 8-bit; the bytes of the system's 8-bit listing come back as they are.
 *
 * @param raiz      Root index.
 * @param clave     Key path below the root (8-bit). NULL is reported.
 * @param subclaves The caller's list; untouched when there is nothing to append. NULL is reported.
 * @return 1 when the key opened and has a subkey, else 0.
 */
LUMODIR_API unsigned short
lumoreg_dame_subclaves(unsigned long raiz, const char *clave, ArrCADENA *subclaves);

/**
 * As lumoreg_dame_subclaves_u(), in one view.
 *
 * @param vista     View.
 * @param raiz      Root index.
 * @param clave     Key path below the root (UTF-16). NULL is reported.
 * @param subclaves The caller's list; untouched when there is nothing to append. NULL is reported.
 * @return 1 when the key opened and has a subkey, else 0.
 */
LUMODIR_API unsigned short lumoreg_dame_subclaves_ex_u(unsigned long vista, unsigned long raiz,
                                                       const wchar_t *clave, ArrCADENA_u *subclaves);

/**
 * Lists the string values of a key (REG_SZ and REG_MULTI_SZ; others are passed over), as two parallel lists.
 *
 * A multi-string gives the pieces before its first empty one: `a`, empty, `b` gives `a` alone; a last piece
 * without a terminator counts. A value that cannot be read is reported as "status == 0".
 *
 * @param vista          View.
 * @param raiz           Root index.
 * @param clave          Key path below the root (UTF-16). NULL is reported.
 * @param valores        Receives a new list with the names of the values (arr_DestruyeCADENA_u()). NULL is
 *                       reported as "(valores) != NULL".
 * @param datos_valores  Receives a new list with one ArrCADENA_u per value: a single element for REG_SZ, one
 *                       per piece for REG_MULTI_SZ (arr_DestruyeEstructurasConTipo() with
 *                       arr_DestruyeCADENA_u()). NULL is reported as "(datos_valores) != NULL".
 * @return 1 when the key opened; else 0, and both lists are set to NULL.
 */
LUMODIR_API unsigned short lumoreg_lee_valores_cadena_clave_ex_u(unsigned long vista, unsigned long raiz,
                                                                 const wchar_t *clave, ArrCADENA_u **valores,
                                                                 ArrPunteroConTipo **datos_valores);

LUMODIR_EXTERN_C_FIN

#endif
