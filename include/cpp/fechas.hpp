/**
 * @file fechas.hpp
 * Dates of files (timefich.h) and file-name records (nomsfich.h). The names are those of the C functions, as told
 * in rutas.hpp; a date that could not be read is an empty optional. So is the one second whose value is -1, the
 * last of 1969: in C both give -1.
 */
#ifndef LUMODIR_CPP_FECHAS_HPP
#define LUMODIR_CPP_FECHAS_HPP

#include "../nomsfich.h"
#include "../timefich.h"
#include "base.hpp"

namespace lumodir {
namespace timefich {

namespace detalle {
inline std::optional<long long> leida(long long fecha) noexcept {
    return fecha == -1 ? std::nullopt : std::optional<long long>(fecha);
}
}  // namespace detalle

/** Local dates of a file. */
struct fechas {
    FILETIME creacion;
    FILETIME modificacion;
};

/** The dates of a file, in local time. */
inline std::optional<fechas> obtener_fecha(const argumento& fichero) {
    fechas f;
    if (!lumodir::detalle::si(timefich_obtener_fecha_u(fichero.c_str(), &f.creacion, &f.modificacion))) {
        return std::nullopt;
    }
    return f;
}
/** Sets the dates of a file, in local time; nullptr leaves one as it is. */
inline bool asignar_fecha(const argumento& fichero, const FILETIME* creacion, const FILETIME* modificacion) {
    return lumodir::detalle::si(timefich_asignar_fecha_u(fichero.c_str(), creacion, modificacion));
}
/** The modification date, in UTC seconds since 1970. */
inline std::optional<long long> obtener_fecha_fichero_UTC(const argumento& fichero) {
    return detalle::leida(timefich_obtener_fecha_fichero_UTC(fichero.c_str()));
}
/** The same for a file that must exist: a failure is reported. */
inline std::optional<long long> obtener_fecha_fichero_existente_UTC(const argumento& fichero) {
    return detalle::leida(timefich_obtener_fecha_fichero_existente_UTC(fichero.c_str()));
}
/** Sets the modification date, in UTC. */
inline bool asignar_fecha_fichero_UTC(const argumento& fichero, long long fecha) {
    return lumodir::detalle::si(timefich_asignar_fecha_fichero_UTC(fichero.c_str(), fecha));
}
/** The same without any message. */
inline bool asignar_fecha_fichero_UTC_si_es_posible(const argumento& fichero, long long fecha) {
    return lumodir::detalle::si(timefich_asignar_fecha_fichero_UTC_si_es_posible(fichero.c_str(), fecha));
}
/** The modification date as a local time value (local time less 3600 s). */
inline std::optional<long long> obtener_fecha_fichero(const argumento& fichero) {
    return detalle::leida(timefich_obtener_fecha_fichero_u(fichero.c_str()));
}
/** The same for a file that must exist: a failure is reported. */
inline std::optional<long long> obtener_fecha_fichero_existente(const argumento& fichero) {
    return detalle::leida(timefich_obtener_fecha_fichero_existente_u(fichero.c_str()));
}
/** Sets the modification date from a local time value. */
inline bool asignar_fecha_fichero(const argumento& fichero, long long fecha) {
    return lumodir::detalle::si(timefich_asignar_fecha_fichero_unicode(fichero.c_str(), fecha));
}
/** A date in UTC as local wall-clock seconds since 1970. */
inline long long convertir_fecha(const FILETIME& fecha) {
    return timefich_convertir_fecha(&fecha);
}
/** The same from a UTC time value. */
inline long long convierte_timet_UTC_a_timet_local(long long fecha) {
    return timefich_convierte_timet_UTC_a_timet_local(fecha);
}
/** Whether two time values are exactly equal. */
inline bool fechas_iguales(long long fecha1, long long fecha2) {
    return lumodir::detalle::si(timefich_fechas_iguales(fecha1, fecha2));
}

}  // namespace timefich

namespace detalle {
template <>
struct destruccion<Nomsfich> {
    static void libera(Nomsfich** registro) noexcept { nomsfich_destruye(registro); }
};
}  // namespace detalle

namespace nomsfich {

/** A file name in lower case, held as base name and extension; 8-bit, owned. */
class registro {
public:
    /** From a bare file name, cut at its last dot. */
    explicit registro(const argumento_a& nombre) : nomsfich_(nomsfich_crea(nombre.c_str())) {}
    registro(const argumento_a& nombre_base, const argumento_a& extension)
        : nomsfich_(nomsfich_crea_por_nombre_base_y_extension(nombre_base.c_str(), extension.c_str())) {}
    /** A second record of the same name. */
    registro copia() const { return registro(nomsfich_copia(nomsfich_.get())); }
    /** A second record with another extension. */
    registro cambia_extension(const argumento_a& extension) const {
        return registro(nomsfich_cambia_extension(nomsfich_.get(), extension.c_str()));
    }
    /** Valid as long as the record. */
    std::string_view nombre_base_fichero() const {
        return lumodir::detalle::vista(nomsfich_nombre_base_fichero(nomsfich_.get()));
    }
    /** Without its dot; valid as long as the record. */
    std::string_view extension_fichero() const {
        return lumodir::detalle::vista(nomsfich_extension_fichero(nomsfich_.get()));
    }
    /** The whole name. */
    cadena_a nombre_fichero() const { return cadena_a(nomsfich_nombre_fichero(nomsfich_.get())); }
    /** By base name and then by extension, byte by byte. */
    int compara(const registro& otro) const {
        return nomsfich_compara(nomsfich_.get(), otro.nomsfich_.get());
    }
    friend bool operator==(const registro& a, const registro& b) {
        return lumodir::detalle::si(nomsfich_iguales(a.nomsfich_.get(), b.nomsfich_.get()));
    }
    friend bool operator!=(const registro& a, const registro& b) { return !(a == b); }
    friend bool operator<(const registro& a, const registro& b) { return a.compara(b) < 0; }

private:
    explicit registro(Nomsfich* nuevo) noexcept : nomsfich_(nuevo) {}
    lumodir::detalle::dueno<Nomsfich*> nomsfich_;
};

/** Whether two extensions are exactly equal. */
inline bool misma_extension(const argumento_a& extension1, const argumento_a& extension2) {
    return lumodir::detalle::si(nomsfich_misma_extension(extension1.c_str(), extension2.c_str()));
}
/** Whether two base names are exactly equal. */
inline bool mismo_nombre_base(const argumento_a& nombre_base1, const argumento_a& nombre_base2) {
    return lumodir::detalle::si(nomsfich_mismo_nombre_base(nombre_base1.c_str(), nombre_base2.c_str()));
}
/** The base name of a full path, in lower case. */
inline cadena_a nombre_base_path_completo(const argumento_a& path) {
    return cadena_a(nomsfich_nombre_base_path_completo(path.c_str()));
}

}  // namespace nomsfich
}  // namespace lumodir

#endif
