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
                  .otros = {{"open, query, close by hand",
                             [&] {
                                 HKEY abierta;
                                 wchar_t texto[260];
                                 DWORD bytes = sizeof texto;
                                 ::RegOpenKeyExW(HKEY_CURRENT_USER, clave, 0, KEY_QUERY_VALUE, &abierta);
                                 sumidero = ::RegQueryValueExW(abierta, L"Last directory", nullptr, nullptr,
                                                               reinterpret_cast<BYTE*>(texto), &bytes) == 0;
                                 ::RegCloseKey(abierta);
                             },
                             1.35}},
                  .vueltas = 25,
                  .rondas = 200});  // short ones: a process of the system takes part
}
