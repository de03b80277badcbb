// Dates of files: reading them without opening the file, and setting them on a file opened for it alone.
//
// Promises: a reading costs one call to the system; the last-access date is neither handed out nor changed; a
// final failure of timefich_obtener_fecha_u is never quiet.
// Cannot promise: that local dates follow the daylight rules of the date: the offset is that of today, so a
// local date that was stored in the other half of the year reads one hour off.
// Checked by tests/files/timefich_win32_test.cpp.
#pragma once

#include <optional>

#include "companions/lmlongpath.hpp"
#include "companions/reloj.hpp"

namespace interno {

// In UTC. A NULL path is reported.
datos_de_fichero i_lee_fechas(const ruta_fijada& fichero) noexcept;

// Of time values: the modification date, -1 when it cannot be read, and then why.
enum class si_falta : unsigned char { calla, informa };
struct valor_leido {
    long long valor;
    DWORD codigo;
};
valor_leido i_lee_valor_utc(const wchar_t* fichero, si_falta entonces) noexcept;
long long i_lee_valor_local(const wchar_t* fichero, si_falta entonces) noexcept;
bool i_asigna_valor_utc(const wchar_t* fichero, long long valor, bool informar) noexcept;
bool i_asigna_valor_local(const wchar_t* fichero, long long valor) noexcept;

// Dates that are wanted, or that are to be set; the others stay.
struct fechas {
    std::optional<FILETIME> creacion = {};
    std::optional<FILETIME> modificacion = {};
};
std::optional<fechas> i_lee_fechas_locales(const wchar_t* fichero, bool con_creacion,
                                           bool con_modificacion) noexcept;
bool i_asigna_fechas_locales(const wchar_t* fichero, const fechas& locales) noexcept;

}  // namespace interno
