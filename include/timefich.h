/**
 * @file timefich.h
 * Dates of files: creation and modification as local FILETIME values, or the modification date alone as a
 * count of seconds. The last-access date is neither told nor changed.
 *
 * Time values are signed 64-bit counts of seconds since 1970-01-01 00:00:
 * - UTC values are the classic `time_t`, parts of a second cut off towards 0;
 * - local values are the same count taken of the local FILETIME, less 3600. That hour is intended, and is no zone
 *   offset: values that programs have stored keep their meaning only with it.
 *
 * Local FILETIME values and local time values use the zone offset of today, not that of the date, as the system does:
 * https://learn.microsoft.com/en-us/windows/win32/sysinfo/file-times
 * Functions with FILETIME arguments exist on Windows only.
 */
#ifndef LUMODIR_TIMEFICH_H
#define LUMODIR_TIMEFICH_H

#include "lumodir_base.h"

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#define LUMODIR_SIN_LO_DEMAS
#endif
#include <windows.h>
#ifdef LUMODIR_SIN_LO_DEMAS
#undef WIN32_LEAN_AND_MEAN
#undef LUMODIR_SIN_LO_DEMAS
#endif
#endif

LUMODIR_EXTERN_C_INICIO

#ifdef _WIN32

/* ---- Local FILETIME dates ---- */

/**
 * Reads the dates of a file. It tries 5 times, 100 ms apart; a final failure is reported as "ok == CIERTO"
 * with the path.
 *
 * @param fichero             Path (UTF-16). NULL is reported as "(fichero) != NULL".
 * @param local_creacion      Receives the creation date in local time, or NULL when it is not wanted.
 * @param local_modificacion  Receives the date of the last write in local time, or NULL when it is not
 *                            wanted. Both NULL is reported as
 *                            "local_creacion != NULL || local_modificacion != NULL".
 * @return 1 when the wanted dates were stored, else 0 and nothing is stored.
 */
LUMODIR_API unsigned short
timefich_obtener_fecha_u(const wchar_t *fichero, FILETIME *local_creacion, FILETIME *local_modificacion);

/**
 * As timefich_obtener_fecha_u() with an 8-bit path, and without its answer: a failure is only reported.
 *
 * @param fichero             Path (8-bit). NULL is reported.
 * @param local_creacion      Receives the creation date, or NULL.
 * @param local_modificacion  Receives the date of the last write, or NULL. Both NULL is reported.
 */
LUMODIR_API void
timefich_obtener_fecha(const char *fichero, FILETIME *local_creacion, FILETIME *local_modificacion);

/**
 * Sets the dates of a file; a date that is not given stays.
 *
 * The file is opened alone for writing, in a retry loop that reports: 158391 "The '%s' file cannot be opened
 * to modify its date." with the path. So neither a read-only file nor one that anybody has open is dated.
 *
 * @param fichero             Path (UTF-16). NULL is reported as "fichero_u != NULL".
 * @param local_creacion      Creation date in local time, or NULL to leave it.
 * @param local_modificacion  Date of the last write in local time, or NULL to leave it. Both NULL is reported
 *                            as "local_creacion != NULL || local_modificacion != NULL". A date that cannot be
 *                            converted to UTC is reported as "resp != FALSE".
 * @return 1 when set, else 0. A date whose UTC value the system takes for "leave it as it is" (0, -1 and -2:
 *         https://learn.microsoft.com/en-us/windows/win32/api/fileapi/nf-fileapi-setfiletime), or for none at all
 *         (any other negative one), is answered with 0 too: nobody is asked, nothing is opened and the other date is
 *         not set either.
 */
LUMODIR_API unsigned short timefich_asignar_fecha_u(const wchar_t *fichero, const FILETIME *local_creacion,
                                                    const FILETIME *local_modificacion);

/**
 * As timefich_asignar_fecha_u() with an 8-bit path, and without its answer.
 *
 * @param fichero             Path (8-bit). NULL is reported.
 * @param local_creacion      Creation date in local time, or NULL to leave it.
 * @param local_modificacion  Date of the last write in local time, or NULL to leave it. Both NULL is
 *                            reported.
 */
LUMODIR_API void timefich_asignar_fecha(const char *fichero, const FILETIME *local_creacion,
                                        const FILETIME *local_modificacion);

#endif

/* ---- Modification date as a UTC time value ---- */

/**
 * Reads the modification date of a file, in UTC, without any message.
 *
 * @param fichero  Path (UTF-16). NULL is reported as "(fichero) != NULL".
 * @return UTC time value, or -1 when the file cannot be asked.
 */
LUMODIR_API long long timefich_obtener_fecha_fichero_UTC(const wchar_t *fichero);
/** 8-bit flavour. */
LUMODIR_API long long timefich_obtener_fecha_fichero_ansi_UTC(const char *fichero);

/**
 * As timefich_obtener_fecha_fichero_UTC() for a file that must exist: a failure is also reported, with
 * message 74876 "This file %s does not exist" as detail.
 *
 * @param fichero  Path (UTF-16). NULL is reported as "(fichero) != NULL".
 * @return UTC time value, or -1.
 */
LUMODIR_API long long timefich_obtener_fecha_fichero_existente_UTC(const wchar_t *fichero);
/** 8-bit flavour. */
LUMODIR_API long long timefich_obtener_fecha_fichero_ansi_existente_UTC(const char *fichero);

/**
 * As timefich_obtener_fecha_fichero_ansi_UTC(), with the system's error code.
 *
 * @param fichero       Path (8-bit). NULL is reported.
 * @param codigo_error  Receives 0 on success and the system's error code on failure (that of an invalid
 *                      parameter for a NULL path), or NULL when it is not wanted (not reported).
 * @return UTC time value, or -1.
 */
LUMODIR_API long long
timefich_obtener_fecha_fichero_ansi_y_codigo_error_UTC(const char *fichero, unsigned int *codigo_error);

/**
 * Sets the modification date of a file, in UTC, in a retry loop that reports: 158391 "The '%s' file cannot be
 * opened to modify its date."
 *
 * @param fichero  Path (UTF-16). NULL is reported as "fichero_u != NULL".
 * @param fecha    UTC time value. One that a FILETIME cannot hold, and 1601-01-01 00:00:00 itself, which the
 *                 system takes for "leave the date as it is", are answered with 0 and nothing is opened.
 * @return 1 when set, else 0.
 */
LUMODIR_API unsigned short timefich_asignar_fecha_fichero_UTC(const wchar_t *fichero, long long fecha);
/** 8-bit flavour. */
LUMODIR_API unsigned short timefich_asignar_fecha_fichero_ansi_UTC(const char *fichero, long long fecha);

/**
 * As timefich_asignar_fecha_fichero_UTC(), without any message: it retries, and the answer says whether it
 * worked.
 *
 * @param fichero  Path (UTF-16). NULL is reported as "fichero_u != NULL".
 * @param fecha    UTC time value.
 * @return 1 when set, else 0.
 */
LUMODIR_API unsigned short
timefich_asignar_fecha_fichero_UTC_si_es_posible(const wchar_t *fichero, long long fecha);

/* ---- Modification date as a local time value ---- */

/**
 * Reads the modification date of a file as a local time value (local time less 3600 s), without any message.
 *
 * @param fichero  Path (UTF-16). NULL is reported as "(fichero) != NULL".
 * @return Local time value, or -1 when the file cannot be asked.
 */
LUMODIR_API long long timefich_obtener_fecha_fichero_u(const wchar_t *fichero);
/** 8-bit flavour. */
LUMODIR_API long long timefich_obtener_fecha_fichero(const char *fichero);

/**
 * As timefich_obtener_fecha_fichero_u() for a file that must exist: a failure is also reported, with message
 * 74876 "This file %s does not exist" as detail.
 *
 * @param fichero  Path (UTF-16). NULL is reported as "(fichero) != NULL".
 * @return Local time value, or -1.
 */
LUMODIR_API long long timefich_obtener_fecha_fichero_existente_u(const wchar_t *fichero);
/** 8-bit flavour. */
LUMODIR_API long long timefich_obtener_fecha_fichero_existente(const char *fichero);

/**
 * Sets the modification date of a file from a local time value; what timefich_obtener_fecha_fichero_u() read
 * is restored exactly. Messages as in timefich_asignar_fecha_fichero_UTC().
 *
 * @param fichero  Path (UTF-16). NULL is reported as "fichero_u != NULL".
 * @param fecha    Local time value, within the same limits as there.
 * @return 1 when set, else 0.
 */
LUMODIR_API unsigned short timefich_asignar_fecha_fichero_unicode(const wchar_t *fichero, long long fecha);
/** 8-bit flavour. */
LUMODIR_API unsigned short timefich_asignar_fecha_fichero(const char *fichero, long long fecha);

/* ---- Conversion and comparison ---- */

#ifdef _WIN32

/**
 * Converts a date to the local wall-clock time, with the daylight rules of that date and without the 3600 s
 * of the local time values.
 *
 * @param fecha  Date in UTC. NULL is reported and answered with 0.
 * @return Local wall-clock seconds since 1970; negative for earlier dates.
 */
LUMODIR_API long long timefich_convertir_fecha(const FILETIME *fecha);

#endif

/**
 * As timefich_convertir_fecha(), from a UTC time value.
 *
 * @param fecha  UTC time value.
 * @return Local wall-clock seconds since 1970.
 */
LUMODIR_API long long timefich_convierte_timet_UTC_a_timet_local(long long fecha);

/**
 * Tells whether two time values of the same kind are exactly equal; there is no tolerance.
 *
 * @param fecha1  Time value.
 * @param fecha2  Time value.
 * @return 1 when equal, else 0.
 */
LUMODIR_API unsigned short timefich_fechas_iguales(long long fecha1, long long fecha2);

LUMODIR_EXTERN_C_FIN

#endif
