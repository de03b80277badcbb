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
