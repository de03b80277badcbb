// Time values: seconds since 1970 out of FILETIME and back, and the wall clock of the user's time zone.
// Here, below listings and files, because both date files.
// Checked by tests/files/timefich_win32_test.cpp.
#pragma once

#include <cstdint>

#include "companions/sistema.hpp"

namespace lumodir {

inline constexpr long long intervalos_por_segundo = 10'000'000;              // a FILETIME counts 100 ns
inline constexpr long long intervalos_hasta_1970 = 116'444'736'000'000'000;  // from 1601-01-01

// Time values that a FILETIME holds: the system takes its count as signed, from 0 on.
inline constexpr long long min_segundos_filetime = -intervalos_hasta_1970 / intervalos_por_segundo;
inline constexpr long long max_segundos_filetime =
    (INT64_MAX - intervalos_hasta_1970) / intervalos_por_segundo;

constexpr long long i_intervalos(const FILETIME& fecha) noexcept {
    return static_cast<long long>(static_cast<unsigned long long>(fecha.dwHighDateTime) << 32 |
                                  fecha.dwLowDateTime);
}

constexpr FILETIME i_filetime(long long intervalos) noexcept {
    const auto valor = static_cast<unsigned long long>(intervalos);
    return {static_cast<DWORD>(valor & 0xFFFFFFFFu), static_cast<DWORD>(valor >> 32)};
}

// Signed division: before 1970 the fraction is cut towards 1970. The difference may wrap: a FILETIME can hold
// anything, and nonsense must give a number all the same.
constexpr long long i_segundos_desde_1970(const FILETIME& fecha) noexcept {
    return static_cast<long long>(static_cast<unsigned long long>(i_intervalos(fecha)) -
                                  intervalos_hasta_1970) /
           intervalos_por_segundo;
}

// The date of a time value; false, and nothing stored, where a FILETIME cannot hold it.
bool i_filetime_de_segundos(long long segundos, FILETIME& fecha) noexcept;

// The true wall clock of the date in the current time zone, with the daylight rules of that date. A date that
// the system's calendar does not reach stays in UTC.
long long i_segundos_locales_desde_1970(const FILETIME& fecha_utc) noexcept;

// The same for many dates in a row: asking the system for its time zone costs more than all the rest of a listing's
// entry, so it is asked once.
class conversor_de_fechas {
public:
    conversor_de_fechas() noexcept;
    long long segundos_locales_desde_1970(const FILETIME& fecha_utc) const noexcept;

private:
    TIME_ZONE_INFORMATION zona_;
    bool hay_zona_;
};

}  // namespace lumodir
