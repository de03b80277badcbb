// See info.hpp.
#include "system/info.hpp"

#include "companions/error_interno.hpp"
#include "companions/sin_dialogos.hpp"
#include "system/discos.hpp"

namespace interno {
namespace {

constexpr DWORD tamanyo_nombre_red = 64;  // units, terminator included
constexpr vista_w nombre_red_desconocido = L"?";
constexpr int tamanyo_directorio_actual = 260;   // units, terminator included
constexpr int primera_unidad_de_disco_duro = 2;  // C; A and B are floppy drives by tradition

unsigned long i_tipo(UINT del_sistema, int disco) noexcept {
    switch (del_sistema) {
        case DRIVE_UNKNOWN:
        case DRIVE_REMOVABLE:
            return disco < primera_unidad_de_disco_duro ? INFO_TIPO_DISQUETE : INFO_TIPO_EXTRAIBLE;
        case DRIVE_FIXED:
            return INFO_TIPO_FIJO;
        case DRIVE_CDROM:
            return INFO_TIPO_CDROM;
        case DRIVE_REMOTE:
            return INFO_TIPO_RED;
        default:
            return INFO_TIPO_OTRO;
    }
}

// 0 stands for the current drive.
bool i_hay_unidad(int unidad) {
    if (unidad <= 0 || unidad > i_NUM_MAX_UNIDADES) {
        return unidad == 0;
    }
    const wchar_t letra = i_letra_de_unidad(unidad - 1);
    const UINT tipo = sistema.GetDriveTypeW(raiz_de_unidad(letra).c_str());
    return tipo != DRIVE_UNKNOWN && tipo != DRIVE_NO_ROOT_DIR;
}

cadena_w i_nombre_de_red(wchar_t letra) {
    wchar_t nombre[tamanyo_nombre_red + 1] = {};
    DWORD sitio = tamanyo_nombre_red;
    const bool dicho =
        sistema.WNetGetConnectionW(nombre_de_unidad(letra).c_str(), nombre, &sitio) == NO_ERROR;
    return cadena_w(dicho ? a_vista<wchar_t>(nombre) : nombre_red_desconocido);
}

void i_libera_disco(const InfoDisco& disco) noexcept {
    if (disco.tipo == INFO_TIPO_RED) {
        i_libera(disco.pathNetwork);
    } else {
        i_comprueba(disco.pathNetwork == nullptr, "tabla->discos[i].pathNetwork == NULL");
    }
}

}  // namespace

void i_llena_tabla(InfoTabla& tabla) {
    vector_interno<InfoDisco> discos;
    const sin_dialogos callado;
    const DWORD presentes = sistema.GetLogicalDrives();
    for (int i = 0; i < i_NUM_MAX_UNIDADES; ++i) {
        if ((presentes >> i & 1) == 0) {
            continue;
        }
        const wchar_t letra = i_letra_de_unidad(i);
        const UINT tipo = sistema.GetDriveTypeW(raiz_de_unidad(letra).c_str());
        if (tipo != DRIVE_NO_ROOT_DIR) {
            cadena_w red = tipo == DRIVE_REMOTE ? i_nombre_de_red(letra) : cadena_w();
            discos.anade({static_cast<std::uint16_t>(i), i_tipo(tipo, i), red.suelta()});
        }
    }
    tabla.numDiscos = static_cast<std::uint16_t>(discos.size());
    tabla.discos = discos.suelta_en_bloque();
}

void i_vacia_tabla(InfoTabla& tabla) noexcept {
    if (tabla.numDiscos == 0) {
        // Nobody knows what it is: a record that was never filled, perhaps.
        i_comprueba(tabla.discos == nullptr, "tabla->discos == NULL");
    } else if (i_comprueba(tabla.discos != nullptr, "tabla->discos != NULL")) {
        for (unsigned i = 0; i < tabla.numDiscos; ++i) {
            i_libera_disco(tabla.discos[i]);
        }
        i_libera(tabla.discos);
    }
    tabla = {};
}

std::optional<std::uint16_t> i_busca_disco(const InfoTabla& tabla, unsigned disco) noexcept {
    for (std::uint16_t i = 0; i < tabla.numDiscos && tabla.discos[i].disco <= disco; ++i) {
        if (tabla.discos[i].disco == disco) {
            return i;
        }
    }
    return {};
}

cadena_w i_directorio_actual_de(int unidad) {
    const sin_dialogos callado;
    wchar_t actual[tamanyo_directorio_actual + 1] = {};
    // A drive that is not there would go to the C runtime's handler of invalid parameters, which ends programs.
    const bool hay =
        i_hay_unidad(unidad) && sistema._wgetdcwd(unidad, actual, tamanyo_directorio_actual) != nullptr;
    return hay ? cadena_w(a_vista<wchar_t>(actual)) : cadena_w();
}

}  // namespace interno
