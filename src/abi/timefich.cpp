// The exports of timefich.h.
#include "timefich.h"

#include "abi/exportacion.hpp"
#include "files/timefich.hpp"
#include "frame/puente.hpp"

using namespace interno;

namespace {

bool i_hay_alguna(const wchar_t* fichero, const FILETIME* creacion, const FILETIME* modificacion) noexcept {
    return i_comprueba_con(creacion != nullptr || modificacion != nullptr,
                           "local_creacion != NULL || local_modificacion != NULL", a_vista(fichero));
}

std::optional<FILETIME> i_si_la_hay(const FILETIME* fecha) noexcept {
    return fecha == nullptr ? std::nullopt : std::optional(*fecha);
}

// Where a date has a place, it was read.
void i_entrega(const std::optional<FILETIME>& fecha, FILETIME* sitio) noexcept {
    if (sitio != nullptr) {
        *sitio = *fecha;
    }
}

unsigned short i_asigna_utc(const wchar_t* fichero, long long fecha, bool informar) noexcept {
    return logico(i_comprueba(fichero != nullptr, "fichero_u != NULL") &&
                  i_asigna_valor_utc(fichero, fecha, informar));
}

}  // namespace

unsigned short timefich_obtener_fecha_u(const wchar_t* fichero, FILETIME* local_creacion,
                                        FILETIME* local_modificacion) {
    if (!i_hay_alguna(fichero, local_creacion, local_modificacion) ||
        !i_comprueba(fichero != nullptr, "(fichero) != NULL")) {
        return FALSO;
    }
    const std::optional<fechas> leidas =
        i_lee_fechas_locales(fichero, local_creacion != nullptr, local_modificacion != nullptr);
    if (leidas) {
        i_entrega(leidas->creacion, local_creacion);
        i_entrega(leidas->modificacion, local_modificacion);
    }
    return logico(leidas.has_value());
}
void timefich_obtener_fecha(const char* fichero, FILETIME* local_creacion, FILETIME* local_modificacion) {
    puente<timefich_obtener_fecha_u>(fichero, local_creacion, local_modificacion);
}

unsigned short timefich_asignar_fecha_u(const wchar_t* fichero, const FILETIME* local_creacion,
                                        const FILETIME* local_modificacion) {
    return logico(
        i_hay_alguna(fichero, local_creacion, local_modificacion) &&
        i_comprueba(fichero != nullptr, "fichero_u != NULL") &&
        i_asigna_fechas_locales(fichero, {i_si_la_hay(local_creacion), i_si_la_hay(local_modificacion)}));
}
void timefich_asignar_fecha(const char* fichero, const FILETIME* local_creacion,
                            const FILETIME* local_modificacion) {
    puente<timefich_asignar_fecha_u>(fichero, local_creacion, local_modificacion);
}

long long timefich_obtener_fecha_fichero_UTC(const wchar_t* fichero) {
    return i_lee_valor_utc(fichero, si_falta::calla).valor;
}
long long timefich_obtener_fecha_fichero_ansi_UTC(const char* fichero) {
    return puente<timefich_obtener_fecha_fichero_UTC>(fichero);
}

long long timefich_obtener_fecha_fichero_existente_UTC(const wchar_t* fichero) {
    return i_lee_valor_utc(fichero, si_falta::informa).valor;
}
long long timefich_obtener_fecha_fichero_ansi_existente_UTC(const char* fichero) {
    return puente<timefich_obtener_fecha_fichero_existente_UTC>(fichero);
}

long long timefich_obtener_fecha_fichero_ansi_y_codigo_error_UTC(const char* fichero,
                                                                 unsigned int* codigo_error) {
    const valor_leido leido = i_lee_valor_utc(utf16_temporal(fichero).c_str(), si_falta::calla);
    if (codigo_error != nullptr) {
        *codigo_error = leido.codigo;
    }
    return leido.valor;
}

unsigned short timefich_asignar_fecha_fichero_UTC(const wchar_t* fichero, long long fecha) {
    return i_asigna_utc(fichero, fecha, true);
}
unsigned short timefich_asignar_fecha_fichero_ansi_UTC(const char* fichero, long long fecha) {
    return puente<timefich_asignar_fecha_fichero_UTC>(fichero, fecha);
}

unsigned short timefich_asignar_fecha_fichero_UTC_si_es_posible(const wchar_t* fichero, long long fecha) {
    return i_asigna_utc(fichero, fecha, false);
}

long long timefich_obtener_fecha_fichero_u(const wchar_t* fichero) {
    return i_lee_valor_local(fichero, si_falta::calla);
}
long long timefich_obtener_fecha_fichero(const char* fichero) {
    return puente<timefich_obtener_fecha_fichero_u>(fichero);
}

long long timefich_obtener_fecha_fichero_existente_u(const wchar_t* fichero) {
    return i_lee_valor_local(fichero, si_falta::informa);
}
long long timefich_obtener_fecha_fichero_existente(const char* fichero) {
    return puente<timefich_obtener_fecha_fichero_existente_u>(fichero);
}

unsigned short timefich_asignar_fecha_fichero_unicode(const wchar_t* fichero, long long fecha) {
    return logico(i_comprueba(fichero != nullptr, "fichero_u != NULL") &&
                  i_asigna_valor_local(fichero, fecha));
}
unsigned short timefich_asignar_fecha_fichero(const char* fichero, long long fecha) {
    return puente<timefich_asignar_fecha_fichero_unicode>(fichero, fecha);
}

long long timefich_convertir_fecha(const FILETIME* fecha) {
    return i_comprueba(fecha != nullptr, "(fecha) != NULL") ? i_segundos_locales_desde_1970(*fecha) : 0;
}

long long timefich_convierte_timet_UTC_a_timet_local(long long fecha) {
    const std::optional<FILETIME> utc = i_filetime_de_segundos(fecha);
    // A date beyond FILETIME is beyond every calendar too: there is no zone to apply.
    return utc ? i_segundos_locales_desde_1970(*utc) : fecha;
}

unsigned short timefich_fechas_iguales(long long fecha1, long long fecha2) {
    return logico(fecha1 == fecha2);
}
