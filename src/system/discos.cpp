// Questions about one drive, by its letter or its index.
//
// Promises: no question opens the drive but that for its volume name; a drive without medium brings up no dialog of the
// system.
// Cannot promise: that a drive which answers now is there for the next call.
// Checked by tests/system/discos_win32_test.cpp.
#include "discos.h"

#include "companions/error_interno.hpp"
#include "companions/sin_dialogos.hpp"
#include "system/unidades.hpp"

namespace lumodir {

namespace {

constexpr DWORD tamanyo_nombre_volumen = 1024;      // units, terminator included
constexpr DWORD tamanyo_destino_dispositivo = 254;  // units, terminator included

// What a substituted drive stands for is a path of the object manager; real drives stand for a device.
constexpr vista_w principio_subst = L"\\??\\";

constexpr wchar_t i_mayuscula(wchar_t c) noexcept {
    return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - (L'a' - L'A')) : c;
}

bool i_lee_nombre_de_volumen(const wchar_t* raiz, wchar_t* nombre) noexcept {
    const sin_dialogos callado;
    return sistema.GetVolumeInformationW(raiz, nombre, tamanyo_nombre_volumen, nullptr, nullptr, nullptr,
                                         nullptr, 0) != FALSE;
}

}  // namespace
}  // namespace lumodir

using namespace lumodir;

unsigned short discos_es_unidad_local(wchar_t unidad) {
    i_comprueba((unidad >= L'A' && unidad <= L'Z') || (unidad >= L'a' && unidad <= L'z'),
                "(unidad >= L'A' && unidad <= L'Z') || (unidad >= L'a' && unidad <= L'z')");
    const sin_dialogos callado;
    return sistema.GetDriveTypeW(raiz_de_unidad(unidad).c_str()) != DRIVE_REMOTE ? CIERTO : FALSO;
}

unsigned short discos_es_unidad_subst(wchar_t unidad) {
    const wchar_t unidad2 = i_mayuscula(unidad);
    i_comprueba(unidad2 >= L'A' && unidad2 <= L'Z', "unidad2 >= L'A' && unidad2 <= L'Z'");
    // The answer of the call does not matter: a drive that has no device leaves the text empty.
    wchar_t destino[tamanyo_destino_dispositivo + 1] = {};
    sistema.QueryDosDeviceW(nombre_de_unidad(unidad2).c_str(), destino, tamanyo_destino_dispositivo);
    return empieza_por(a_vista<wchar_t>(destino), principio_subst) ? CIERTO : FALSO;
}

wchar_t* discos_nombre_volumen(unsigned short disco) {
    if (!i_comprueba(disco < i_NUM_MAX_UNIDADES, "disco < i_NUM_MAX_UNIDADES")) {
        return cadena_w(vista_w()).suelta();
    }
    const raiz_de_unidad raiz(i_letra_de_unidad(disco));
    wchar_t nombre[tamanyo_nombre_volumen + 1] = {};
    if (!i_comprueba_con(i_lee_nombre_de_volumen(raiz.c_str(), nombre), "retorno != 0",
                         a_vista(raiz.c_str()))) {
        nombre[0] = L'\0';  // whatever the failed call has left there
    }
    return cadena_w(a_vista<wchar_t>(nombre)).suelta();
}
