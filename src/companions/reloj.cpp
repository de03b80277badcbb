// See reloj.hpp.
#include "companions/reloj.hpp"

namespace lumodir {

long long i_segundos_locales_desde_1970(const FILETIME& fecha_utc) noexcept {
    SYSTEMTIME utc;
    SYSTEMTIME local;
    FILETIME fecha_local;
    if (!sistema.FileTimeToSystemTime(&fecha_utc, &utc) ||
        !sistema.SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local) ||
        !sistema.SystemTimeToFileTime(&local, &fecha_local)) {
        return i_segundos_desde_1970(fecha_utc);  // outside the calendar of the system: no zone to apply
    }
    return i_segundos_desde_1970(fecha_local);
}

bool i_filetime_de_segundos(long long segundos, FILETIME& fecha) noexcept {
    if (segundos < min_segundos_filetime || segundos > max_segundos_filetime) {
        return false;
    }
    fecha = i_filetime(segundos * intervalos_por_segundo + intervalos_hasta_1970);
    return true;
}

}  // namespace lumodir
