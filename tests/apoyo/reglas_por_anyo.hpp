// Time zones whose daylight rules changed from year to year, as Windows has them and Wine has not: in the place of the
// system's conversion. Asked without a zone it takes the rules of the year of the date; asked with one, those it is
// handed, which can be one year's only. Windows only.
#pragma once

#include "apoyo/apoyo.hpp"
#include "companions/sistema.hpp"

namespace apoyo {

class reglas_por_anyo {
public:
    struct tramo {
        long long desde;  // seconds since 1970, UTC
        long minutos;     // local less UTC
    };
    struct zona {
        const char* nombre;
        long minutos_antes;  // of the first change
        std::vector<tramo> tramos;
        std::vector<long long> cambios;
    };
    static const std::vector<zona> zonas;
    static inline unsigned preguntas = 0;  // since the last of these began to live

    explicit reglas_por_anyo(const zona& cual) {
        i_zona() = &cual;
        preguntas = 0;
    }

private:
    static const zona*& i_zona() {
        static const zona* z = nullptr;
        return z;
    }
    static long i_minutos(long long segundos) {
        long minutos = i_zona()->minutos_antes;
        for (const tramo& t : i_zona()->tramos) {
            minutos = segundos >= t.desde ? t.minutos : minutos;
        }
        return minutos;
    }
    static BOOL WINAPI i_convierte(const TIME_ZONE_INFORMATION* reglas, const SYSTEMTIME* utc,
                                   SYSTEMTIME* local) {
        ++preguntas;
        if (reglas != nullptr) {
            return ::SystemTimeToTzSpecificLocalTime(reglas, utc, local);
        }
        FILETIME f;
        if (!::SystemTimeToFileTime(utc, &f)) {
            return FALSE;
        }
        constexpr long long segundo = 10'000'000;
        constexpr long long en_1970 = 116'444'736'000'000'000;
        auto intervalos = static_cast<long long>(f.dwHighDateTime) << 32 | f.dwLowDateTime;
        const long long desde_1970 = intervalos - en_1970;
        // Towards the past: the fraction belongs to the second that has begun.
        const long long segundos = desde_1970 / segundo - (desde_1970 % segundo < 0 ? 1 : 0);
        intervalos += i_minutos(segundos) * 60ll * segundo;
        f = {static_cast<DWORD>(intervalos & 0xFFFFFFFF), static_cast<DWORD>(intervalos >> 32)};
        return intervalos >= 0 && ::FileTimeToSystemTime(&f, local);
    }

    sustituye<decltype(interno::sistema.SystemTimeToTzSpecificLocalTime)> conversion_{
        interno::sistema.SystemTimeToTzSpecificLocalTime, i_convierte};
};

inline const std::vector<reglas_por_anyo::zona> reglas_por_anyo::zonas = [] {
    std::vector<zona> z = {
        // Summer time until 2019, none since.
        {"Brazil",
         -180,
         {{1'413'687'600, -120}, {1'424'570'400, -180}, {1'541'300'400, -120}, {1'550'368'800, -180}},
         {}},
        // Summer time all the year from 2011 on, the other half of it from 2014 on.
        {"Russia",
         180,
         {{1'269'730'800, 240}, {1'288'479'600, 180}, {1'301'180'400, 240}, {1'414'274'400, 180}},
         {}},
        // Half an hour, and changes that fall on the half of an hour of UTC.
        {"Lord Howe", 630, {{1'696'087'800, 660}, {1'712'415'600, 630}}, {}},
        // Changes that no real zone has: in the middle of a quarter of an hour, and a second before its end.
        {"odd", 45, {{1'600'000'123, 105}, {1'610'000'099, 45}, {1'620'000'899, 105}}, {}},
        {"UTC", 0, {}, {0, 951'782'400}},
    };
    for (zona& una : z) {
        for (const tramo& t : una.tramos) {
            una.cambios.push_back(t.desde);
        }
    }
    return z;
}();

}  // namespace apoyo
