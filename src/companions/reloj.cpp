// See reloj.hpp.
#include "companions/reloj.hpp"

namespace lumodir {

long long i_segundos_locales_desde_1970(const FILETIME& fecha_utc) noexcept {
    SYSTEMTIME utc;
    SYSTEMTIME local;
    FILETIME fecha_local;
    if (!::FileTimeToSystemTime(&fecha_utc, &utc) ||
        !::SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local) ||
        !::SystemTimeToFileTime(&local, &fecha_local)) {
        return i_segundos_desde_1970(fecha_utc);  // outside the calendar of the system: no zone to apply
    }
    return i_segundos_desde_1970(fecha_local);
}

}  // namespace lumodir
