// Time values: seconds since 1970 out of FILETIME and back, and the wall clock of the user's time zone.
// Here, below listings and files, because both date files.
// Checked by tests/files/timefich_win32_test.cpp.
#pragma once

#include "companions/sistema.hpp"

namespace lumodir {

inline constexpr long long intervalos_por_segundo = 10'000'000;              // a FILETIME counts 100 ns
inline constexpr long long intervalos_hasta_1970 = 116'444'736'000'000'000;  // from 1601-01-01

constexpr long long i_intervalos(const FILETIME& fecha) noexcept {
    return static_cast<long long>(static_cast<unsigned long long>(fecha.dwHighDateTime) << 32 |
                                  fecha.dwLowDateTime);
}

constexpr FILETIME i_filetime(long long intervalos) noexcept {
    const auto valor = static_cast<unsigned long long>(intervalos);
    return {static_cast<DWORD>(valor & 0xFFFFFFFFu), static_cast<DWORD>(valor >> 32)};
}

// Signed division: before 1970 the fraction is cut towards 1970.
constexpr long long i_segundos_desde_1970(const FILETIME& fecha) noexcept {
    return (i_intervalos(fecha) - intervalos_hasta_1970) / intervalos_por_segundo;
}

// The true wall clock of the date in the current time zone, with the daylight rules of that date.
long long i_segundos_locales_desde_1970(const FILETIME& fecha_utc) noexcept;

}  // namespace lumodir
