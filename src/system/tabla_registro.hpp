// The one table of registry calls: every access of the library to the registry ends here, so tests replace an
// entry and make any call fail, once or for ever.
//
// Promises: each entry has the signature and the answers of the Windows function whose name it bears.
// Checked by the fault tests of tests/system/lumoreg_win32_test.cpp.
#pragma once

#include <type_traits>

#include "companions/sistema.hpp"

// Of the system's own interface, which no public header declares: it deletes a key by its handle; 0 is success.
using borrado_por_manija = LONG NTAPI(HANDLE);
extern "C" __declspec(dllimport) borrado_por_manija NtDeleteKey;

namespace lumodir {

struct tabla_registro {
    decltype(&::RegOpenKeyExA) RegOpenKeyExA;
    decltype(&::RegOpenKeyExW) RegOpenKeyExW;
    decltype(&::RegCreateKeyExW) RegCreateKeyExW;
    decltype(&::RegCloseKey) RegCloseKey;
    decltype(&::RegQueryInfoKeyA) RegQueryInfoKeyA;
    decltype(&::RegQueryInfoKeyW) RegQueryInfoKeyW;
    decltype(&::RegQueryValueExA) RegQueryValueExA;
    decltype(&::RegQueryValueExW) RegQueryValueExW;
    decltype(&::RegSetValueExW) RegSetValueExW;
    decltype(&::RegDeleteValueW) RegDeleteValueW;
    decltype(&::RegEnumKeyExA) RegEnumKeyExA;
    decltype(&::RegEnumKeyExW) RegEnumKeyExW;
    decltype(&::RegEnumValueW) RegEnumValueW;
    decltype(&::NtDeleteKey) NtDeleteKey;
    unsigned short (*machine_es_imagen_de_64bits)() noexcept;
};

extern tabla_registro sistema_registro;

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
struct registro_de {
    static constexpr bool ancha = std::is_same_v<C, wchar_t>;

    static LSTATUS abre(HKEY raiz, const C* ruta, DWORD opciones, REGSAM acceso, HKEY* clave) noexcept {
        if constexpr (ancha) {
            return sistema_registro.RegOpenKeyExW(raiz, ruta, opciones, acceso, clave);
        } else {
            return sistema_registro.RegOpenKeyExA(raiz, ruta, opciones, acceso, clave);
        }
    }
    static LSTATUS cuenta(HKEY clave, censo_de_clave* censo) noexcept {
        *censo = {};
        if constexpr (ancha) {
            return sistema_registro.RegQueryInfoKeyW(
                clave, nullptr, nullptr, nullptr, &censo->num_subclaves, &censo->mayor_subclave, nullptr,
                &censo->num_valores, &censo->mayor_nombre_valor, &censo->mayor_dato_bytes, nullptr, nullptr);
        } else {
            return sistema_registro.RegQueryInfoKeyA(
                clave, nullptr, nullptr, nullptr, &censo->num_subclaves, &censo->mayor_subclave, nullptr,
                &censo->num_valores, &censo->mayor_nombre_valor, &censo->mayor_dato_bytes, nullptr, nullptr);
        }
    }
    static LSTATUS lee_valor(HKEY clave, const C* nombre_valor, C* datos, DWORD* bytes) noexcept {
        auto* destino = reinterpret_cast<BYTE*>(datos);
        if constexpr (ancha) {
            return sistema_registro.RegQueryValueExW(clave, nombre_valor, nullptr, nullptr, destino, bytes);
        } else {
            return sistema_registro.RegQueryValueExA(clave, nombre_valor, nullptr, nullptr, destino, bytes);
        }
    }
    static LSTATUS dame_subclave(HKEY clave, DWORD indice, C* nombre, DWORD* longitud) noexcept {
        if constexpr (ancha) {
            return sistema_registro.RegEnumKeyExW(clave, indice, nombre, longitud, nullptr, nullptr, nullptr,
                                                  nullptr);
        } else {
            return sistema_registro.RegEnumKeyExA(clave, indice, nombre, longitud, nullptr, nullptr, nullptr,
                                                  nullptr);
        }
    }
};

}  // namespace lumodir
