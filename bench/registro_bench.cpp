// Registry: reading a string against the calls that it takes by hand.
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include "bancos.hpp"
#include "companions/widestr.h"
#include "lumoreg.h"

namespace {

const wchar_t* const clave = L"Software\\lumodir-pruebas";

// A key of the bench's own, which goes with it.
class clave_propia {
public:
    clave_propia() {
        lumoreg_crea_clave_u(LUMOREG_RAIZ_CURRENT_USER, clave);
        for (const wchar_t* nombre : {L"Language", L"Last directory", L"Window", L"Recent"}) {
            lumoreg_establece_cadena_u(LUMOREG_RAIZ_CURRENT_USER, clave, nombre,
                                       L"C:\\Users\\Public\\Documents\\Projects\\Site2024\\Images");
        }
    }
    ~clave_propia() { ::RegDeleteTreeW(HKEY_CURRENT_USER, clave); }
};

// Into a fixed buffer; how long a value of the key may be is asked for besides, as whoever wants it whole must.
bool lee_a_mano(bool con_informacion) {
    HKEY abierta;
    wchar_t texto[260];
    DWORD bytes = sizeof texto;
    DWORD valores = 0;
    DWORD nombre_mas_largo = 0;
    DWORD dato_mas_largo = 0;
    ::RegOpenKeyExW(HKEY_CURRENT_USER, clave, 0, KEY_QUERY_VALUE, &abierta);
    if (con_informacion) {
        ::RegQueryInfoKeyW(abierta, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &valores,
                           &nombre_mas_largo, &dato_mas_largo, nullptr, nullptr);
    }
    const LSTATUS codigo = ::RegQueryValueExW(abierta, L"Last directory", nullptr, nullptr,
                                              reinterpret_cast<BYTE*>(texto), &bytes);
    ::RegCloseKey(abierta);
    return codigo == ERROR_SUCCESS;
}

}  // namespace

void bancos::registro() {
    const clave_propia propia;
    volatile bool sumidero = false;
    banco::corre({.nombre = "read a registry string",
                  .nuestro =
                      [&] {
                          wchar_t* texto = nullptr;
                          sumidero = lumoreg_lee_cadena_u(LUMOREG_RAIZ_CURRENT_USER, clave, L"Last directory",
                                                          &texto) == 1;
                          widestr_nousar_destruye(&texto, "bench", 1);
                      },
                  .otros = {{"the same four calls by hand", [&] { sumidero = lee_a_mano(true); }, 1.05},
                            {"open, query, close by hand", [&] { sumidero = lee_a_mano(false); }, 1.35}},
                  .vueltas = 25,
                  .rondas = 200});  // short ones: a process of the system takes part
}
