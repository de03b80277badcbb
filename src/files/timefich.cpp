// See timefich.hpp.
#include "files/timefich.hpp"

#include "companions/buclrein.hpp"
#include "companions/directorio_abierto.hpp"
#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"
#include "companions/plataforma.hpp"
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
bool i_a_local(const FILETIME& utc, FILETIME* local) noexcept {
    return i_comprueba(sistema.FileTimeToLocalFileTime(&utc, local) != FALSE, "resp != FALSE");
}

bool i_a_utc(const FILETIME& local, FILETIME* utc) noexcept {
    return i_comprueba(sistema.LocalFileTimeToFileTime(&local, utc) != FALSE, "resp != FALSE");
}

// The modification date in UTC, for the readers of time values.
bool i_lee_modificacion(const wchar_t* fichero, si_falta entonces, unsigned int* codigo_error,
                        FILETIME* modificacion) noexcept {
    FILETIME creacion;
    FILETIME acceso;
    if (i_lee_fechas(fichero, &creacion, &acceso, modificacion, codigo_error)) {
        return true;
    }
    if (entonces == si_falta::informa && fichero != nullptr) {
        error_interno_liberando_mensaje_u(i_mensaje(i_msg_74876_no_existe_fichero_sin_comillas, {fichero}));
    }
    return false;
}

BOOL i_pon_fechas(HANDLE abierto, const FILETIME* creacion, const FILETIME* modificacion,
                  DWORD* codigo) noexcept {
    const sin_dialogos callado;
    ::SetLastError(ERROR_SUCCESS);
    const BOOL asignadas = sistema.SetFileTime(abierto, creacion, nullptr, modificacion);
    *codigo = ::GetLastError();
    return asignadas;
}

// One attempt. Opened alone: a program that is still writing the file would date it again. And as what bears the name:
// a link gets the date itself, as it is the link's own date that is read.
bool i_intenta_asignar(const ruta_fijada& fichero, const FILETIME* creacion, const FILETIME* modificacion,
                       DWORD* codigo) noexcept {
    manija_fichero abierto = lmlongpath_CreateFileW(fichero, GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                                    FILE_FLAG_OPEN_REPARSE_POINT, nullptr, codigo);
    if (!abierto.valida()) {
        return false;
    }
    if (!i_es_lo_que_nombra(abierto.get(), fichero)) {
        *codigo = ERROR_CANT_ACCESS_FILE;
        return false;
    }
    const BOOL asignadas = i_pon_fechas(abierto.get(), creacion, modificacion, codigo);
    if (asignadas) {
        i_comprueba_con(abierto.cierra() != FALSE, "resp != FALSE", a_vista(fichero.dada()));
    }
    return asignadas != FALSE;
}

// The dates are in UTC; NULL leaves one as it is.
bool i_asigna_fechas(const ruta_fijada& fichero, const FILETIME* creacion, const FILETIME* modificacion,
                     bool informar) noexcept {
    DWORD codigo = ERROR_SUCCESS;
    return i_insiste(
        informar, [&] { return i_intenta_asignar(fichero, creacion, modificacion, &codigo); }, codigo,
        [&] { return i_mensaje(i_msg_158391_no_se_puede_abrir_para_cambiar_fecha, {fichero.dada()}); });
}

// 0 means to the system "leave the date as it is", and so do -1 and -2 ("from now on" and "again from now on"); other
// negative counts are no dates: setting one would succeed without dating the file, or ask the user in vain.
constexpr bool i_es_asignable(const FILETIME& fecha) noexcept {
    return i_intervalos(fecha) > 0;
}

bool i_utc_de_valor(long long valor, FILETIME* utc) noexcept {
    return i_filetime_de_segundos(valor, *utc) && i_es_asignable(*utc);
}

bool i_utc_de_local(const FILETIME& local, FILETIME* utc) noexcept {
    return i_a_utc(local, utc) && i_es_asignable(*utc);
}

bool i_utc_de_valor_local(long long valor, FILETIME* utc) noexcept {
    FILETIME local;
    return valor <= max_segundos_filetime && i_filetime_de_segundos(valor + segundos_convenio_local, local) &&
           i_utc_de_local(local, utc);
}

// The dates in UTC, patiently: a scanner or a slow share may keep the file busy for a moment.
bool i_lee_insistiendo(const ruta_fijada& fichero, FILETIME* creacion, FILETIME* modificacion) noexcept {
    FILETIME acceso;
    bool ok = i_lee_fechas(fichero, creacion, &acceso, modificacion, nullptr);
    for (unsigned intento = 1; !ok && intento < intentos_de_lectura; ++intento) {
        plataforma::duerme_ms(espera_entre_lecturas_ms);
        ok = i_lee_fechas(fichero, creacion, &acceso, modificacion, nullptr);
    }
    return i_comprueba_con(ok, "ok == CIERTO", a_vista(fichero.dada()));
}

}  // namespace

bool i_lee_fechas(const ruta_fijada& fichero, FILETIME* fecha_creacion, FILETIME* fecha_acceso,
                  FILETIME* fecha_modificacion, unsigned int* codigo_error) noexcept {
    const bool preguntable = i_comprueba(fichero.dada() != nullptr, "(fichero) != NULL") &&
                             i_comprueba(fecha_creacion != nullptr, "(fecha_creacion) != NULL") &&
                             i_comprueba(fecha_acceso != nullptr, "(fecha_acceso) != NULL") &&
                             i_comprueba(fecha_modificacion != nullptr, "(fecha_modificacion) != NULL");
    WIN32_FILE_ATTRIBUTE_DATA datos;
    const bool leidas = preguntable && lmlongpath_GetFileAttributesExW(fichero, &datos) != FALSE;
    if (codigo_error != nullptr) {
        *codigo_error = leidas ? ERROR_SUCCESS : preguntable ? ::GetLastError() : ERROR_INVALID_PARAMETER;
    }
    if (!leidas) {
        return false;
    }
    *fecha_creacion = datos.ftCreationTime;
    *fecha_acceso = datos.ftLastAccessTime;
    *fecha_modificacion = datos.ftLastWriteTime;
    return true;
}

long long i_lee_valor_utc(const wchar_t* fichero, si_falta entonces, unsigned int* codigo_error) noexcept {
    FILETIME modificacion;
    return i_lee_modificacion(fichero, entonces, codigo_error, &modificacion)
               ? i_segundos_desde_1970(modificacion)
               : sin_fecha;
}

long long i_lee_valor_local(const wchar_t* fichero, si_falta entonces) noexcept {
    FILETIME modificacion;
    FILETIME local;
    return i_lee_modificacion(fichero, entonces, nullptr, &modificacion) && i_a_local(modificacion, &local)
               ? i_segundos_desde_1970(local) - segundos_convenio_local
               : sin_fecha;
}

bool i_lee_fechas_locales(const wchar_t* fichero, FILETIME* creacion, FILETIME* modificacion) noexcept {
    FILETIME utc_creacion;
    FILETIME utc_modificacion;
    if (!i_lee_insistiendo(fichero, &utc_creacion, &utc_modificacion)) {
        return false;
    }
    // Both are converted before one is stored, so that a failure stores none.
    FILETIME local_1 = {};
    FILETIME local_2 = {};
    if ((creacion != nullptr && !i_a_local(utc_creacion, &local_1)) ||
        (modificacion != nullptr && !i_a_local(utc_modificacion, &local_2))) {
        return false;
    }
    if (creacion != nullptr) {
        *creacion = local_1;
    }
    if (modificacion != nullptr) {
        *modificacion = local_2;
    }
    return true;
}

bool i_asigna_fechas_locales(const wchar_t* fichero, const FILETIME* creacion,
                             const FILETIME* modificacion) noexcept {
    FILETIME utc_creacion;
    FILETIME utc_modificacion;
    return (creacion == nullptr || i_utc_de_local(*creacion, &utc_creacion)) &&
           (modificacion == nullptr || i_utc_de_local(*modificacion, &utc_modificacion)) &&
           i_asigna_fechas(fichero, creacion == nullptr ? nullptr : &utc_creacion,
                           modificacion == nullptr ? nullptr : &utc_modificacion, true);
}

bool i_asigna_valor_utc(const wchar_t* fichero, long long valor, bool informar) noexcept {
    FILETIME modificacion;
    return i_utc_de_valor(valor, &modificacion) && i_asigna_fechas(fichero, nullptr, &modificacion, informar);
}

bool i_asigna_valor_local(const wchar_t* fichero, long long valor) noexcept {
    FILETIME modificacion;
    return i_utc_de_valor_local(valor, &modificacion) &&
           i_asigna_fechas(fichero, nullptr, &modificacion, true);
}

}  // namespace interno
