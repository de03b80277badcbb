// What the registry functions share: which key is meant, and the owner of an open key.
//
// Promises: no handle outlives its call; a key that does not open is not reported; a root or a view that there
// is none of is reported, and then nothing opens.
// Cannot promise: that the 64-bit and the 32-bit view differ: most of the registry is shared.
// Checked by tests/system/lumoreg_win32_test.cpp.
#pragma once

#include "companions/error_interno.hpp"
#include "lumoreg.h"
#include "system/tabla_registro.hpp"

namespace lumodir {

// Root, and which views an opening tries: one, or each in its turn until the key opens.
struct apertura {
    unsigned long raiz;
    bool por_turno;
    unsigned long vista;

    static constexpr apertura en_cualquiera(unsigned long raiz) noexcept {
        return {raiz, true, LUMOREG_VISTA_PROCESO};
    }
    static constexpr apertura en_vista(unsigned long vista, unsigned long raiz) noexcept {
        return {raiz, false, vista};
    }
};

// The root key of an index; NULL after the report.
HKEY i_raiz(unsigned long raiz, lugar donde) noexcept;
// Adds the flag of a view to an access mask; false after the report.
bool i_anade_vista(unsigned long vista, REGSAM* acceso, lugar donde) noexcept;

// Owner of an open key. The path must outlive it: it is the detail of its reports.
template <class C>
class clave_abierta {
public:
    clave_abierta(const apertura& como, const C* ruta, REGSAM acceso, lugar donde = lugar::aqui()) noexcept;
    clave_abierta(const clave_abierta&) = delete;
    clave_abierta& operator=(const clave_abierta&) = delete;
    ~clave_abierta();

    bool abierta() const noexcept { return clave_ != nullptr; }
    HKEY get() const noexcept { return clave_; }
    // Reports a failure of the system with the path of the key.
    bool comprueba(LSTATUS error) const noexcept {
        return i_comprueba_con(error == ERROR_SUCCESS, "error == ERROR_SUCCESS", ruta_, donde_);
    }

private:
    vista<C> ruta_;
    lugar donde_;
    HKEY clave_ = nullptr;
};

extern template class clave_abierta<char>;
extern template class clave_abierta<wchar_t>;

}  // namespace lumodir
