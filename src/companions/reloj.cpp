// See reloj.hpp.
#include "companions/reloj.hpp"

namespace lumodir {
namespace {

// A NULL zone is the current one.
long long i_segundos_en_zona(const FILETIME& fecha_utc, const TIME_ZONE_INFORMATION* zona) noexcept {
    SYSTEMTIME utc;
    SYSTEMTIME local;
    FILETIME fecha_local;
    if (!sistema.FileTimeToSystemTime(&fecha_utc, &utc) ||
        !sistema.SystemTimeToTzSpecificLocalTime(zona, &utc, &local) ||
        !sistema.SystemTimeToFileTime(&local, &fecha_local)) {
        return i_segundos_desde_1970(fecha_utc);  // outside the calendar of the system: no zone to apply
    }
    return i_segundos_desde_1970(fecha_local);
}

}  // namespace

long long i_segundos_locales_desde_1970(const FILETIME& fecha_utc) noexcept {
    return i_segundos_en_zona(fecha_utc, nullptr);
}

conversor_de_fechas::conversor_de_fechas() noexcept
    : hay_zona_(sistema.GetTimeZoneInformation(&zona_) != TIME_ZONE_ID_INVALID) {}

long long conversor_de_fechas::segundos_locales_desde_1970(const FILETIME& fecha_utc) const noexcept {
    return i_segundos_en_zona(fecha_utc, hay_zona_ ? &zona_ : nullptr);
}

bool i_filetime_de_segundos(long long segundos, FILETIME& fecha) noexcept {
    if (segundos < min_segundos_filetime || segundos > max_segundos_filetime) {
        return false;
    }
    fecha = i_filetime(segundos * intervalos_por_segundo + intervalos_hasta_1970);
    return true;
}

}  // namespace lumodir
