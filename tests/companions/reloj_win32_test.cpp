// Wall-clock dates: a listing's converter tells every date as the single question does, in zones whose daylight rules
// changed from year to year, and asks the system seldom.
#include "companions/reloj.hpp"

#include <algorithm>
#include <random>

#include "apoyo/apoyo.hpp"
#include "apoyo/reglas_por_anyo.hpp"

using namespace apoyo;
using namespace interno;

namespace {

constexpr long long un_ms = 10'000;

FILETIME fecha(long long segundos, long long resto = 0) {
    return i_filetime(intervalos_hasta_1970 + segundos * intervalos_por_segundo + resto);
}

constexpr long long una_hora = 3600 * intervalos_por_segundo;
constexpr long long un_cuarto = una_hora / 4;

// A wall clock that is set by hand: so far ahead of UTC before a moment, and so far from then on.
struct reloj_de_prueba {
    long long cambio;
    long long antes;
    long long despues;
    int preguntas = 0;
};
reloj_de_prueba g_reloj;

BOOL WINAPI pon_en_hora(const TIME_ZONE_INFORMATION* zona, const SYSTEMTIME* utc, SYSTEMTIME* local) {
    EXPECT_EQ(zona, nullptr);
    ++g_reloj.preguntas;
    FILETIME cuando;
    ::SystemTimeToFileTime(utc, &cuando);
    const long long desde_1601 = i_intervalos(cuando);
    cuando = i_filetime(desde_1601 + (desde_1601 < g_reloj.cambio ? g_reloj.antes : g_reloj.despues));
    return ::FileTimeToSystemTime(&cuando, local);
}

}  // namespace

// The first and the last moment of each offset, years whose rules differ, and what lies outside every calendar.
TEST(reloj, muchas_fechas_se_dicen_como_cada_una) {
    for (const reglas_por_anyo::zona& zona : reglas_por_anyo::zonas) {
        SCOPED_TRACE(zona.nombre);
        const reglas_por_anyo reglas(zona);
        std::vector<FILETIME> fechas;
        for (long long anyo = 1969; anyo <= 2031; ++anyo) {
            const long long principio = (anyo - 1970) * 31'556'952;
            for (long long s = principio; s < principio + 31'556'952; s += 6'000'000) {
                fechas.push_back(fecha(s, 1));
            }
        }
        for (const long long cambio : zona.cambios) {
            for (const long long s : {-901, -900, -899, -1, 0, 1, 899, 900, 901}) {
                for (const long long resto : {0ll, 1ll, un_ms - 1, un_ms, intervalos_por_segundo - 1}) {
                    fechas.push_back(fecha(cambio + s, resto));
                }
            }
        }
        for (const long long intervalos :
             {0ll, 1ll, -1ll, -2ll, INT64_MIN, INT64_MAX, INT64_MAX - 1, 0x7FFF35F4F06C58F0ll,
              0x7FFF35F4F06C58EFll, intervalos_hasta_1970 - 1, intervalos_hasta_1970}) {
            fechas.push_back(i_filetime(intervalos));
        }
        // Each three times, in an order that mixes them: what was seen of one quarter must not serve another.
        std::vector<FILETIME> todas = fechas;
        todas.insert(todas.end(), fechas.begin(), fechas.end());
        todas.insert(todas.end(), fechas.begin(), fechas.end());
        std::shuffle(todas.begin(), todas.end(), std::mt19937(7));
        conversor_de_fechas mezclado;
        for (const FILETIME& f : todas) {
            ASSERT_EQ(mezclado.segundos_locales_desde_1970(f), i_segundos_locales_desde_1970(f))
                << i_intervalos(f);
        }
        conversor_de_fechas seguido;
        for (const FILETIME& f : fechas) {
            for (int vez = 0; vez < 3; ++vez) {
                ASSERT_EQ(seguido.segundos_locales_desde_1970(f), i_segundos_locales_desde_1970(f))
                    << i_intervalos(f);
            }
        }
    }
}

// Not only near a change: each quarter of an hour of a year with two of them, at its ends and between.
TEST(reloj, un_cuarto_de_hora_en_que_cambia_el_reloj_no_se_calcula) {
    const reglas_por_anyo reglas(reglas_por_anyo::zonas[0]);
    for (const long long cambio : reglas_por_anyo::zonas[0].cambios) {
        conversor_de_fechas conversor;
        // Seven minutes before and after: the same quarter where a zone's changes do not fall on quarters.
        for (long long s = -420; s <= 420; s += 7) {
            EXPECT_EQ(conversor.segundos_locales_desde_1970(fecha(cambio + s)),
                      i_segundos_locales_desde_1970(fecha(cambio + s)));
        }
    }
}

TEST(reloj, diez_mil_fechas_de_un_rato_se_preguntan_pocas_veces) {
    const reglas_por_anyo reglas(reglas_por_anyo::zonas[0]);
    conversor_de_fechas conversor;
    for (int i = 0; i < 10'000; ++i) {
        conversor.segundos_locales_desde_1970(fecha(1'700'000'000 + i / 10, i));
    }
    EXPECT_LE(reglas_por_anyo::preguntas, 4u * 3u) << "1,000 seconds touch three quarters of an hour at most";
}

// A quarter's first date is asked for alone, its second one with both ends of the quarter, and then none, unless the clock
// changes in it; two quarters that are kept in one place drive each other out.
TEST(reloj, lo_que_se_pregunta_por_cada_fecha) {
    constexpr long long q = 470'000;  // some quarter of an hour
    struct paso {
        long long intervalos;
        int preguntas;
    };
    const struct {
        const char* que;
        reloj_de_prueba reloj;
        std::vector<paso> pasos;
    } filas[] = {
        {"a clock that does not change",
         {0, 0, una_hora},
         {{q * un_cuarto, 1},
          {q * un_cuarto + 1, 3},
          {(q + 1) * un_cuarto - 1, 0},
          {(q + 1) * un_cuarto, 1},
          {(q + 64) * un_cuarto, 1},
          {q * un_cuarto, 1},
          {q * un_cuarto, 3},
          {q * un_cuarto, 0},
          {(q + 1) * un_cuarto, 3}}},
        {"the beginning of the calendar",
         {0, 0, una_hora},
         {{0, 1}, {un_cuarto, 1}, {0, 3}, {0, 0}, {un_cuarto, 3}, {un_cuarto, 0}}},
        {"the beginning of the calendar on the wall",
         {0, 0, -una_hora},
         {{una_hora, 1}, {una_hora, 3}, {una_hora, 0}, {una_hora - 1, 1}, {una_hora - 1, 1}}},
        {"a change between two quarters",
         {q * un_cuarto, una_hora, 2 * una_hora},
         {{q * un_cuarto - 1, 1},
          {q * un_cuarto - 2, 3},
          {q * un_cuarto - 3, 0},
          {q * un_cuarto, 1},
          {q * un_cuarto, 3},
          {q * un_cuarto, 0}}},
        {"a change within a quarter",
         {q * un_cuarto + un_cuarto / 2, una_hora, 2 * una_hora},
         {{q * un_cuarto, 1}, {q * un_cuarto, 3}, {q * un_cuarto, 1}, {(q + 1) * un_cuarto - 1, 1}}},
    };
    const sustituye reloj(sistema.SystemTimeToTzSpecificLocalTime, pon_en_hora);
    for (const auto& fila : filas) {
        SCOPED_TRACE(fila.que);
        conversor_de_fechas conversor;
        for (const paso& p : fila.pasos) {
            g_reloj = fila.reloj;
            const long long sabida = i_segundos_locales_desde_1970(i_filetime(p.intervalos));
            g_reloj.preguntas = 0;
            EXPECT_EQ(conversor.segundos_locales_desde_1970(i_filetime(p.intervalos)), sabida)
                << p.intervalos;
            const long long desfase =
                p.intervalos < fila.reloj.cambio ? fila.reloj.antes : fila.reloj.despues;
            const long long en_la_pared = std::max(p.intervalos / un_ms * un_ms + desfase, 0ll);
            EXPECT_EQ(sabida, p.intervalos + desfase < 0 ? i_segundos_desde_1970(i_filetime(p.intervalos))
                                                         : i_segundos_desde_1970(i_filetime(en_la_pared)))
                << p.intervalos;
            EXPECT_EQ(g_reloj.preguntas, p.preguntas) << p.intervalos;
        }
    }
}

// What is remembered of the quarters stays where it belongs, whichever they are.
TEST(reloj, ningun_cuarto_se_apunta_fuera) {
    const sustituye reloj(sistema.SystemTimeToTzSpecificLocalTime, pon_en_hora);
    g_reloj = {0, 0, una_hora};
    struct {
        conversor_de_fechas conversor;
        unsigned char detras[sizeof(conversor_de_fechas) / 8];
    } puesto;
    std::fill(std::begin(puesto.detras), std::end(puesto.detras), static_cast<unsigned char>(0xA5));
    for (long long q = 0; q < 200; ++q) {
        puesto.conversor.segundos_locales_desde_1970(i_filetime(q * un_cuarto));
    }
    EXPECT_TRUE(std::all_of(std::begin(puesto.detras), std::end(puesto.detras),
                            [](unsigned char byte) { return byte == 0xA5; }));
}

TEST(reloj, los_segundos_que_una_fecha_admite) {
    const std::optional<FILETIME> primera = i_filetime_de_segundos(min_segundos_filetime),
                                  ultima = i_filetime_de_segundos(max_segundos_filetime);
    ASSERT_TRUE(primera && ultima);
    EXPECT_EQ(i_intervalos(*primera), 0);
    EXPECT_EQ(i_intervalos(*ultima), INT64_MAX / intervalos_por_segundo * intervalos_por_segundo);
    EXPECT_FALSE(i_filetime_de_segundos(min_segundos_filetime - 1));
    EXPECT_FALSE(i_filetime_de_segundos(max_segundos_filetime + 1));
}
