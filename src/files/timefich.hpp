// Dates of files: reading them without opening the file, and setting them on a file opened for it alone.
//
// Promises: a reading costs one call to the system; the last-access date is neither handed out nor changed; a
// final failure of timefich_obtener_fecha_u is never quiet.
// Cannot promise: that local dates follow the daylight rules of the date: the offset is that of today, so a
// local date that was stored in the other half of the year reads one hour apart.
// Checked by tests/files/timefich_win32_test.cpp.
#pragma once

#include "companions/lmlongpath.hpp"
#include "companions/reloj.hpp"

namespace interno {

// The three dates of a file, in UTC. The code, where it is wanted, receives 0 or the system's error. After a failure the
// dates are untouched.
bool i_lee_fechas(const ruta_fijada& fichero, FILETIME* fecha_creacion, FILETIME* fecha_acceso,
                  FILETIME* fecha_modificacion, unsigned int* codigo_error) noexcept;

// Of time values: the modification date, -1 when it cannot be read.
enum class si_falta : unsigned char { calla, informa };
long long i_lee_valor_utc(const wchar_t* fichero, si_falta entonces,
                          unsigned int* codigo_error = nullptr) noexcept;
long long i_lee_valor_local(const wchar_t* fichero, si_falta entonces) noexcept;
bool i_asigna_valor_utc(const wchar_t* fichero, long long valor, bool informar) noexcept;
bool i_asigna_valor_local(const wchar_t* fichero, long long valor) noexcept;

// In local time; NULL stands for a date that is not wanted, or stays.
bool i_lee_fechas_locales(const wchar_t* fichero, FILETIME* creacion, FILETIME* modificacion) noexcept;
bool i_asigna_fechas_locales(const wchar_t* fichero, const FILETIME* creacion,
                             const FILETIME* modificacion) noexcept;

}  // namespace interno
