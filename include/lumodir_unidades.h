/**
 * @file lumodir_unidades.h
 * The drives of the system with labels for display.
 */
#ifndef LUMODIR_LUMODIR_UNIDADES_H
#define LUMODIR_LUMODIR_UNIDADES_H

#include "companions/arr.h"
#include "lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

#pragma pack(push, 1)

/** One drive with its label for display; freed with lumodir_destruyeEstructuraUnidadSistema(). */
typedef struct UnidadSistema {
    wchar_t *nombre;    /**< label: `C:`, volume name or network path in parentheses after it; owned */
    unsigned long tipo; /**< type code, one of INFO_TIPO_... of info.h */
} UnidadSistema;

#pragma pack(pop)

/**
 * Lists the drives of the system in the order of their letters; network drives show their path, the rest the
 * letter alone.
 *
 * @return New list of UnidadSistema (arr_DestruyeEstructurasConTipo() with
 *         lumodir_destruyeEstructuraUnidadSistema()).
 */
LUMODIR_API ArrPunteroConTipo *lumodir_UnidadesDelSistema(void);

/**
 * As lumodir_UnidadesDelSistema(), with the volume name of fixed and removable drives (`C: (Data)`). A drive
 * without a medium is reported by discos_nombre_volumen() and has empty parentheses.
 *
 * @return New list of UnidadSistema, freed likewise.
 */
LUMODIR_API ArrPunteroConTipo *lumodir_UnidadesDelSistemaConNombre(void);

/**
 * Gives the label of a drive.
 *
 * @param unidad  Record. NULL is reported as "(unidad) != NULL" and gives an empty string.
 * @return New UTF-16 copy (widestr_nousar_destruye()).
 */
LUMODIR_API wchar_t *lumodir_nombreCompleto_UnidadSistema_UNICODE(const UnidadSistema *unidad);
/** 8-bit flavour. */
LUMODIR_API char *lumodir_nombreCompleto_UnidadSistema(const UnidadSistema *unidad);

/**
 * Gives the type of a drive.
 *
 * @param unidad  Record. NULL is reported as "(unidad) != NULL" and answered with 0.
 * @return Type code, one of INFO_TIPO_... of info.h.
 */
LUMODIR_API unsigned long lumodir_tipoDrive_UnidadSistema(const UnidadSistema *unidad);

/**
 * Frees a record with its label and sets the variable to NULL.
 *
 * @param unidad  Address of the record variable. NULL is reported as "(unidad) != NULL", a variable that is
 *                NULL as "(*unidad) != NULL".
 */
LUMODIR_API void lumodir_destruyeEstructuraUnidadSistema(UnidadSistema **unidad);

LUMODIR_EXTERN_C_FIN

#endif
