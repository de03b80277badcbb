// Time values: seconds since 1970 out of FILETIME and back, and the wall clock of the user's time zone.
// It stands in the companions because listings and files both need it.
// Checked by tests/files/timefich_win32_test.cpp.
#pragma once

#include <cstdint>
#include <optional>

#include "companions/sistema.hpp"

namespace interno {

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

// The date of a time value, where a FILETIME can hold it.
constexpr std::optional<FILETIME> i_filetime_de_segundos(long long segundos) noexcept {
    return segundos < min_segundos_filetime || segundos > max_segundos_filetime
               ? std::nullopt
               : std::optional(i_filetime(segundos * intervalos_por_segundo + intervalos_hasta_1970));
}

// The true wall clock of the date in the current time zone, with the daylight rules that the year of the date had. A
// date that the system's calendar does not reach stays in UTC.
long long i_segundos_locales_desde_1970(const FILETIME& fecha_utc) noexcept;

// The same, to the second and in every year, for many dates in a row: the system is asked the same question, but once
// a quarter of an hour has had two dates, all others in it are reckoned. (Handing the system a zone that was asked for
// once would be fast too, and wrong: such a zone holds the daylight rules of this year alone.)
class conversor_de_fechas {
public:
    long long segundos_locales_desde_1970(const FILETIME& fecha_utc) noexcept;

private:
    enum class visto : unsigned char { una_vez, por_los_dos_extremos, no_vale };
    struct cuarto {
        long long numero = -1;  // since 1601
        long long desfase = 0;  // of the wall clock, in intervals; once it is known
        visto estado = visto::una_vez;
    };
    static constexpr int num_cuartos = 64;  // the files of a directory come from few moments
    cuarto cuartos_[num_cuartos];
};

}  // namespace interno
