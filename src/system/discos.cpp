// See discos.hpp.
#include "system/discos.hpp"

#include "companions/error_interno.hpp"
#include "companions/sin_dialogos.hpp"

namespace interno {
namespace {

constexpr DWORD tamanyo_nombre_volumen = 1024;      // units, terminator included
constexpr DWORD tamanyo_destino_dispositivo = 254;  // units, terminator included

// What a substituted drive stands for is a path of the object manager; real drives stand for a device.
constexpr vista_w principio_subst = L"\\??\\";

bool i_lee_nombre_de_volumen(const wchar_t* raiz, wchar_t* nombre) noexcept {
    const sin_dialogos callado;
    return sistema.GetVolumeInformationW(raiz, nombre, tamanyo_nombre_volumen, nullptr, nullptr, nullptr,
                                         nullptr, 0) != FALSE;
}

}  // namespace

bool i_es_unidad_local(wchar_t letra) noexcept {
    const sin_dialogos callado;
    return sistema.GetDriveTypeW(raiz_de_unidad(letra).c_str()) != DRIVE_REMOTE;
}

bool i_es_unidad_subst(wchar_t letra) noexcept {
    // The answer of the call does not matter: a drive that has no device leaves the text empty.
    wchar_t destino[tamanyo_destino_dispositivo + 1] = {};
    sistema.QueryDosDeviceW(nombre_de_unidad(letra).c_str(), destino, tamanyo_destino_dispositivo);
    return empieza_por(a_vista<wchar_t>(destino), principio_subst);
}

cadena_w i_nombre_de_volumen(int disco) {
    const raiz_de_unidad raiz(i_letra_de_unidad(disco));
    wchar_t nombre[tamanyo_nombre_volumen + 1] = {};
    if (!i_comprueba_con(i_lee_nombre_de_volumen(raiz.c_str(), nombre), "retorno != 0",
                         a_vista(raiz.c_str()))) {
        nombre[0] = L'\0';  // whatever the failed call has left there
    }
    return cadena_w(a_vista<wchar_t>(nombre));
}

}  // namespace interno
