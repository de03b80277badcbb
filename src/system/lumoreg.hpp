// What the registry functions share: which key is meant, and the owner of an open key.
//
// Promises: no handle outlives its call; a key that does not open is not reported; a root or a view that does
// not exist is reported, and then nothing opens.
// Cannot promise: that the 64-bit and the 32-bit view differ: most of the registry is shared.
// Checked by tests/system/lumoreg_win32_test.cpp.
#pragma once

#include <optional>

#include "companions/arr.hpp"
#include "companions/error_interno.hpp"
#include "companions/sistema.hpp"
#include "lumoreg.h"

namespace interno {

// Root, and which views an opening tries: one, or each in its turn until the key opens.
struct apertura {
    enum class turno : unsigned char {
        uno,                // the one view
        hasta_que_se_abra,  // each, whatever the failure
        si_no_esta,         // another one only where the key is missing: a key that may not be opened is not
                            // looked for in a view that nobody meant
    };
    unsigned long raiz;
    turno cuales;
    unsigned long vista_de_claves = LUMOREG_VISTA_PROCESO;
    DWORD opciones = 0;

    static constexpr apertura en_cualquiera(unsigned long raiz) noexcept {
        return {raiz, turno::hasta_que_se_abra};
    }
    static constexpr apertura en_vista(unsigned long vista_de_claves, unsigned long raiz) noexcept {
        return {raiz, turno::uno, vista_de_claves};
    }
    // A link as the last part of the path: the link itself, or what it points to.
    static constexpr apertura para_borrar(unsigned long raiz, bool el_propio_enlace) noexcept {
        return {raiz, turno::si_no_esta, LUMOREG_VISTA_PROCESO,
                el_propio_enlace ? DWORD{REG_OPTION_OPEN_LINK} : DWORD{0}};
    }
};

// The root key of an index; NULL after the report.
HKEY i_raiz(unsigned long raiz) noexcept;
// The flag of a view for an access mask; nothing after the report.
std::optional<REGSAM> i_bandera_de_claves(unsigned long vista_de_claves) noexcept;

// What RegQueryInfoKey counts, as far as anyone here asks. Lengths are in units without terminator, sizes in
// bytes.
struct censo_de_clave {
    DWORD num_subclaves;
    DWORD mayor_subclave;
    DWORD num_valores;
    DWORD mayor_nombre_valor;
    DWORD mayor_dato_bytes;
};

// The calls that exist in both flavours.
template <class C>
struct llamadas_de {
    static constexpr auto abre = &tabla_sistema::RegOpenKeyExW;
    static constexpr auto cuenta = &tabla_sistema::RegQueryInfoKeyW;
    static constexpr auto lee_valor = &tabla_sistema::RegQueryValueExW;
    static constexpr auto dame_subclave = &tabla_sistema::RegEnumKeyExW;
};
template <>
struct llamadas_de<char> {
    static constexpr auto abre = &tabla_sistema::RegOpenKeyExA;
    static constexpr auto cuenta = &tabla_sistema::RegQueryInfoKeyA;
    static constexpr auto lee_valor = &tabla_sistema::RegQueryValueExA;
    static constexpr auto dame_subclave = &tabla_sistema::RegEnumKeyExA;
};

// Owner of an open key. The path must outlive it: it is the detail of its reports.
template <class C>
class clave_abierta {
public:
    clave_abierta(const apertura& como, const C* ruta, REGSAM acceso) noexcept;
    clave_abierta(const clave_abierta&) = delete;
    clave_abierta& operator=(const clave_abierta&) = delete;
    ~clave_abierta();

    bool abierta() const noexcept { return clave_ != nullptr; }
    HKEY get() const noexcept { return clave_; }
    vista<C> ruta() const noexcept { return ruta_; }
    // The flag of the view in which it opened; 0 for the process's own.
    REGSAM bandera() const noexcept { return bandera_; }
    // Reports a failure of the system with the path of the key.
    bool comprueba(LSTATUS error) const noexcept {
        return i_comprueba_con(error == ERROR_SUCCESS, "error == ERROR_SUCCESS", ruta_);
    }
    // Nothing, reported, when the system does not tell.
    std::optional<censo_de_clave> cuenta() const noexcept {
        censo_de_clave c = {};
        return comprueba((sistema.*llamadas_de<C>::cuenta)(
                   clave_, nullptr, nullptr, nullptr, &c.num_subclaves, &c.mayor_subclave, nullptr,
                   &c.num_valores, &c.mayor_nombre_valor, &c.mayor_dato_bytes, nullptr, nullptr))
                   ? std::optional(c)
                   : std::nullopt;
    }
    // The next name of the enumeration, which has `longitud` units then.
    LSTATUS dame_subclave(DWORD indice, C* nombre, DWORD& longitud) const noexcept {
        return (sistema.*llamadas_de<C>::dame_subclave)(clave_, indice, nombre, &longitud, nullptr, nullptr,
                                                        nullptr, nullptr);
    }

private:
    vista<C> ruta_;
    REGSAM bandera_ = 0;
    HKEY clave_ = nullptr;
};

extern template class clave_abierta<char>;
extern template class clave_abierta<wchar_t>;

bool i_existe_clave(const apertura& como, const wchar_t* clave) noexcept;

}  // namespace interno
