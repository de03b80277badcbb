// See timefich.hpp.
#include "files/timefich.hpp"

#include "companions/buclrein.hpp"
#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"
#include "companions/sin_dialogos.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"

namespace interno {
namespace {

constexpr long long sin_fecha = -1;  // what the readers of time values answer to a failure

// Local time values run one hour behind local time wherever they are read: programs have stored them so, and a
// true zone offset here would move every stored date.
constexpr long long segundos_convenio_local = 3600;

constexpr unsigned intentos_de_lectura = 5;
constexpr unsigned long espera_entre_lecturas_ms = 100;

// The only dates that cannot be converted are those that do not fit: trying again would not help.
template <auto Llamada>
std::optional<FILETIME> i_convertida(const FILETIME& fecha) noexcept {
    FILETIME otra;
    return i_comprueba((sistema.*Llamada)(&fecha, &otra) != FALSE, "resp != FALSE") ? std::optional(otra)
                                                                                    : std::nullopt;
}
constexpr auto i_a_local = i_convertida<&tabla_sistema::FileTimeToLocalFileTime>;
constexpr auto i_a_utc = i_convertida<&tabla_sistema::LocalFileTimeToFileTime>;

// For the readers of time values, which may have to report a missing file.
datos_de_fichero i_lee_fechas_para_valor(const wchar_t* fichero, si_falta entonces) noexcept {
    const datos_de_fichero datos = i_lee_fechas(fichero);
    if (!datos.leidos() && entonces == si_falta::informa && fichero != nullptr) {
        error_interno_liberando_mensaje_u(i_mensaje(i_msg_74876_no_existe_fichero_sin_comillas, {fichero}));
    }
    return datos;
}

desenlace i_pon_fechas(HANDLE abierto, const fechas& utc) noexcept {
    const auto dada = [](const std::optional<FILETIME>& fecha) { return fecha ? &*fecha : nullptr; };
    const sin_dialogos callado;
    ::SetLastError(ERROR_SUCCESS);
    const bool hecho =
        sistema.SetFileTime(abierto, dada(utc.creacion), nullptr, dada(utc.modificacion)) != FALSE;
    return {hecho, ::GetLastError()};
}

// One attempt. Opened alone: a program that is still writing the file would date it again.
desenlace i_intenta_asignar(const ruta_fijada& fichero, const fechas& utc) noexcept {
    fichero_abierto abierto = lmlongpath_CreateFileW(fichero, GENERIC_WRITE, 0);
    if (!abierto.valida()) {
        return {false, abierto.codigo};
    }
    const desenlace asignadas = i_pon_fechas(abierto.get(), utc);
    if (asignadas.hecho) {
        i_comprueba_con(abierto.cierra(), "resp != FALSE", a_vista(fichero.dada()));
    }
    return asignadas;
}

bool i_asigna_fechas(const ruta_fijada& fichero, const fechas& utc, bool informar) noexcept {
    return i_insiste(
        informar, [&] { return i_intenta_asignar(fichero, utc); },
        [&] { return i_mensaje(i_msg_158391_no_se_puede_abrir_para_cambiar_fecha, {fichero.dada()}); });
}

// 0 means to the system "leave the date as it is", and so do -1 and -2 ("from now on" and "again from now on"); other
// negative counts are no dates: setting one would succeed without dating the file, or ask the user in vain.
std::optional<FILETIME> i_si_es_asignable(std::optional<FILETIME> fecha) noexcept {
    return fecha && i_intervalos(*fecha) > 0 ? fecha : std::nullopt;
}

std::optional<FILETIME> i_utc_de_local(const FILETIME& local) noexcept {
    return i_si_es_asignable(i_a_utc(local));
}

// Each date that there is; nothing when one of them cannot be converted.
std::optional<fechas> i_convierte(const fechas& de,
                                  std::optional<FILETIME> (*convierte)(const FILETIME&) noexcept) noexcept {
    fechas convertidas;
    for (const auto cual : {&fechas::creacion, &fechas::modificacion}) {
        if (de.*cual) {
            convertidas.*cual = convierte(*(de.*cual));
            if (!(convertidas.*cual)) {
                return {};
            }
        }
    }
    return convertidas;
}

// Patiently: a scanner or a slow share may keep the file busy for a moment.
datos_de_fichero i_lee_insistiendo(const ruta_fijada& fichero) noexcept {
    datos_de_fichero datos = i_lee_fechas(fichero);
    for (unsigned intento = 1; !datos.leidos() && intento < intentos_de_lectura; ++intento) {
        sistema.duerme_ms(espera_entre_lecturas_ms);
        datos = i_lee_fechas(fichero);
    }
    i_comprueba_con(datos.leidos(), "ok == CIERTO", a_vista(fichero.dada()));
    return datos;
}

}  // namespace

datos_de_fichero i_lee_fechas(const ruta_fijada& fichero) noexcept {
    return i_comprueba(fichero.dada() != nullptr, "(fichero) != NULL")
               ? lmlongpath_GetFileAttributesExW(fichero)
               : datos_de_fichero{{}, ERROR_INVALID_PARAMETER};
}

valor_leido i_lee_valor_utc(const wchar_t* fichero, si_falta entonces) noexcept {
    const datos_de_fichero datos = i_lee_fechas_para_valor(fichero, entonces);
    return {datos.leidos() ? i_segundos_desde_1970(datos.ftLastWriteTime) : sin_fecha, datos.codigo};
}

long long i_lee_valor_local(const wchar_t* fichero, si_falta entonces) noexcept {
    const datos_de_fichero datos = i_lee_fechas_para_valor(fichero, entonces);
    const std::optional<FILETIME> local = datos.leidos() ? i_a_local(datos.ftLastWriteTime) : std::nullopt;
    return local ? i_segundos_desde_1970(*local) - segundos_convenio_local : sin_fecha;
}

std::optional<fechas> i_lee_fechas_locales(const wchar_t* fichero, bool con_creacion,
                                           bool con_modificacion) noexcept {
    const datos_de_fichero datos = i_lee_insistiendo(fichero);
    if (!datos.leidos()) {
        return {};
    }
    fechas utc;
    if (con_creacion) {
        utc.creacion = datos.ftCreationTime;
    }
    if (con_modificacion) {
        utc.modificacion = datos.ftLastWriteTime;
    }
    return i_convierte(utc, i_a_local);
}

bool i_asigna_fechas_locales(const wchar_t* fichero, const fechas& locales) noexcept {
    const std::optional<fechas> utc = i_convierte(locales, i_utc_de_local);
    return utc && i_asigna_fechas(fichero, *utc, true);
}

bool i_asigna_valor_utc(const wchar_t* fichero, long long valor, bool informar) noexcept {
    const std::optional<FILETIME> utc = i_si_es_asignable(i_filetime_de_segundos(valor));
    return utc && i_asigna_fechas(fichero, {.modificacion = utc}, informar);
}

bool i_asigna_valor_local(const wchar_t* fichero, long long valor) noexcept {
    // The sum may wrap: what comes out then is no date either.
    const auto suma = static_cast<unsigned long long>(valor) + segundos_convenio_local;
    const std::optional<FILETIME> local = i_filetime_de_segundos(static_cast<long long>(suma));
    const std::optional<FILETIME> utc = local ? i_utc_de_local(*local) : std::nullopt;
    return utc && i_asigna_fechas(fichero, {.modificacion = utc}, true);
}

}  // namespace interno
