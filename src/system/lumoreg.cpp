// See lumoreg.hpp.
#include "system/lumoreg.hpp"

namespace interno {
namespace {

struct intento {
    HKEY clave;  // NULL when it does not open
    LSTATUS error;
};

// A success that gives no key is reported and counts as none.
template <class C>
intento i_abre_una_vez(HKEY raiz, const C* ruta, DWORD opciones, REGSAM acceso) noexcept {
    HKEY hKey = nullptr;
    const LSTATUS error = (sistema.*llamadas_de<C>::abre)(raiz, ruta, opciones, acceso, &hKey);
    if (error != ERROR_SUCCESS) {
        return {nullptr, error};
    }
    i_comprueba(hKey != nullptr, "(hKey) != NULL");
    return {hKey, error};
}

// Whoever asks for a key without naming a view wants it wherever it is: a program's settings may have been
// written by the 32-bit or by the 64-bit edition. A 32-bit process sees the 32-bit view without asking.
template <class C>
HKEY i_abre_por_turno(HKEY raiz, const C* ruta, const apertura& como, REGSAM acceso,
                      REGSAM& bandera) noexcept {
    for (const REGSAM turno : {REGSAM{0}, REGSAM{KEY_WOW64_64KEY}, REGSAM{KEY_WOW64_32KEY}}) {
        if (turno == KEY_WOW64_32KEY && !sistema.machine_es_imagen_de_64bits()) {
            break;
        }
        const intento i = i_abre_una_vez(raiz, ruta, como.opciones, acceso | turno);
        if (i.clave != nullptr) {
            bandera = turno;
            return i.clave;
        }
        if (como.cuales == apertura::turno::si_no_esta && i.error != ERROR_FILE_NOT_FOUND) {
            break;
        }
    }
    return nullptr;
}

}  // namespace

HKEY i_raiz(unsigned long raiz) noexcept {
    switch (raiz) {
        case LUMOREG_RAIZ_CLASSES_ROOT:
            return HKEY_CLASSES_ROOT;
        case LUMOREG_RAIZ_CURRENT_CONFIG:
            return HKEY_CURRENT_CONFIG;
        case LUMOREG_RAIZ_CURRENT_USER:
            return HKEY_CURRENT_USER;
        case LUMOREG_RAIZ_LOCAL_MACHINE:
            return HKEY_LOCAL_MACHINE;
        case LUMOREG_RAIZ_USERS:
            return HKEY_USERS;
        default:
            error_interno_default_error();
            return nullptr;
    }
}

std::optional<REGSAM> i_bandera_de_claves(unsigned long vista_de_claves) noexcept {
    switch (vista_de_claves) {
        case LUMOREG_VISTA_PROCESO:
            return REGSAM{0};
        case LUMOREG_VISTA_64BITS:
            return REGSAM{KEY_WOW64_64KEY};
        case LUMOREG_VISTA_32BITS:
            return REGSAM{KEY_WOW64_32KEY};
        default:
            error_interno_default_error();
            return {};
    }
}

template <class C>
clave_abierta<C>::clave_abierta(const apertura& como, const C* ruta, REGSAM acceso) noexcept
    : ruta_(a_vista(ruta)) {
    const bool hay_ruta = i_comprueba(ruta != nullptr, "(clave) != NULL");
    const std::optional<REGSAM> bandera = i_bandera_de_claves(como.vista_de_claves);
    const HKEY raiz = i_raiz(como.raiz);
    if (hay_ruta && bandera && raiz != nullptr) {
        clave_ = como.cuales == apertura::turno::uno
                     ? i_abre_una_vez(raiz, ruta, como.opciones, acceso | *bandera).clave
                     : i_abre_por_turno(raiz, ruta, como, acceso | *bandera, bandera_);
    }
}

template <class C>
clave_abierta<C>::~clave_abierta() {
    if (abierta()) {
        comprueba(sistema.RegCloseKey(clave_));
    }
}

bool i_existe_clave(const apertura& como, const wchar_t* clave) noexcept {
    return clave_abierta<wchar_t>(como, clave, KEY_QUERY_VALUE).abierta();
}

template class clave_abierta<char>;
template class clave_abierta<wchar_t>;

}  // namespace interno
