// See reloj.hpp.
#include "companions/reloj.hpp"

namespace interno {
namespace {

constexpr long long intervalos_por_ms = 10'000;
// Where clocks change, they do so by quarters of an hour and stay for longer than one.
constexpr long long intervalos_por_cuarto = 15LL * 60 * intervalos_por_segundo;

// The wall clock in intervals, cut to whole milliseconds, as the system's calendar counts them; -1 where that does not
// reach. A NULL zone is the current one, with the rules that the year of the date had.
long long i_reloj_de_pared(const FILETIME& fecha_utc) noexcept {
    SYSTEMTIME utc;
    SYSTEMTIME local;
    FILETIME fecha_local;
    const bool bien = sistema.FileTimeToSystemTime(&fecha_utc, &utc) &&
                      sistema.SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local) &&
                      sistema.SystemTimeToFileTime(&local, &fecha_local);
    return bien && i_intervalos(fecha_local) >= 0 ? i_intervalos(fecha_local) : -1;
}

long long i_segundos_de_pared(long long pared, const FILETIME& fecha_utc) noexcept {
    // Outside the calendar of the system there is no zone to apply.
    return i_segundos_desde_1970(pared < 0 ? fecha_utc : i_filetime(pared));
}

constexpr long long i_ms_enteros(long long intervalos) noexcept {
    return intervalos - intervalos % intervalos_por_ms;
}

// May wrap, as nonsense does elsewhere here.
constexpr FILETIME i_suma(long long intervalos, long long desfase) noexcept {
    return i_filetime(static_cast<long long>(static_cast<unsigned long long>(intervalos) +
                                             static_cast<unsigned long long>(desfase)));
}

}  // namespace

long long i_segundos_locales_desde_1970(const FILETIME& fecha_utc) noexcept {
    return i_segundos_de_pared(i_reloj_de_pared(fecha_utc), fecha_utc);
}

long long conversor_de_fechas::segundos_locales_desde_1970(const FILETIME& fecha_utc) noexcept {
    const long long intervalos = i_intervalos(fecha_utc);
    if (intervalos < 0 || intervalos > INT64_MAX - intervalos_por_cuarto) {
        return i_segundos_locales_desde_1970(fecha_utc);
    }
    const long long numero = intervalos / intervalos_por_cuarto;
    cuarto& c = cuartos_[numero % num_cuartos];
    if (c.numero == numero && c.estado == visto::por_los_dos_extremos) {
        return i_segundos_desde_1970(i_suma(i_ms_enteros(intervalos), c.desfase));
    }
    const long long pared = i_reloj_de_pared(fecha_utc);
    if (c.numero != numero) {
        c = {numero, 0, pared < 0 ? visto::no_vale : visto::una_vez};
    } else if (c.estado == visto::una_vez) {
        // A second date in it: it pays to see whether the clock stands equally far off at both of its ends.
        const long long principio = numero * intervalos_por_cuarto;
        const long long fin = principio + intervalos_por_cuarto - intervalos_por_ms;
        const long long desfase = pared - i_ms_enteros(intervalos);
        const bool vale = pared >= 0 && i_reloj_de_pared(i_filetime(principio)) - principio == desfase &&
                          i_reloj_de_pared(i_filetime(fin)) - fin == desfase;
        c = {numero, desfase, vale ? visto::por_los_dos_extremos : visto::no_vale};
    }
    return i_segundos_de_pared(pared, fecha_utc);
}

}  // namespace interno
