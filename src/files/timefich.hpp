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

namespace lumodir {

// The three dates of a file, in UTC; 1 on success. The code, where it is wanted, receives 0 or the system's
// error. After a failure the dates are untouched.
unsigned short i_lee_fechas(const ruta_fijada& fichero, FILETIME* fecha_creacion, FILETIME* fecha_acceso,
                            FILETIME* fecha_modificacion, unsigned int* codigo_error) noexcept;

}  // namespace lumodir
