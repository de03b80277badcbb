// See unidades.hpp.
#include "system/unidades.hpp"

#include "cdir.h"
#include "companions/arr.hpp"
#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"
#include "discos.h"
#include "frame/puente.hpp"
#include "lumodir.h"
#include "paths/split_makepath.hpp"

namespace lumodir {
namespace {

constexpr DWORD tamanyo_path_programa = 260;  // units: the drive stands at the beginning, the rest may be cut
constexpr std::size_t tamanyo_disco_programa = 256;  // units, terminator included: _MAX_DIR of the C runtime
constexpr unsigned long ultimo_tipo_de_unidad = INFO_TIPO_OTRO;

// Kept for good, behind a plain flag: the program does not move.
wchar_t i_disco_programa[tamanyo_disco_programa];
bool i_hay_disco_programa = false;

cadena_w i_etiqueta_con(vista_w unidad, vista_w nombre) {
    return concatena<wchar_t>({unidad, L" (", nombre, L")"});
}

objeto<ArrPunteroConTipo> i_unidades_del_sistema(bool con_nombre) {
    auto lista = objeto<ArrPunteroConTipo>::crea();
    InfoTabla tabla;
    info_GetDriveInfoSystem(&tabla);
    for (unsigned short i = 0; i < tabla.numDiscos; ++i) {
        auto unidad = registro<UnidadSistema>::a_cero();
        unidad->nombre = i_etiqueta_de_unidad(tabla.discos[i], con_nombre).suelta();
        unidad->tipo = tabla.discos[i].tipo;
        lista->punteros.anade(unidad.suelta());
    }
    info_LiberaTabla(&tabla);
    return lista;
}

cadena_w i_disco_actual() {
    const int numero = sistema._getdrive();
    if (numero < 1 || numero > i_NUM_MAX_UNIDADES) {
        return {};  // a share is current: it has no letter
    }
    return cadena_w(nombre_de_unidad(static_cast<wchar_t>(L'A' + numero - 1)).c_str());
}

cadena_w i_averigua_disco_programa() {
    wchar_t path[tamanyo_path_programa + 1] = {};
    if (sistema.GetModuleFileNameW(nullptr, path, tamanyo_path_programa) == 0) {
        return i_disco_actual();
    }
    const cadena_w sin_prefijo = lmlongpath_desprepend_path(a_vista<wchar_t>(path));
    return cadena_w(division<wchar_t>(sin_prefijo, empieza_por(sin_prefijo.ver(), L"\\\\")).unidad);
}

}  // namespace

cadena_w i_etiqueta_de_unidad(const InfoDisco& disco, bool con_nombre) {
    const nombre_de_unidad letra(i_letra_de_unidad(disco.disco));
    const vista_w unidad(letra.c_str());
    if (disco.pathNetwork != nullptr) {
        return i_etiqueta_con(unidad, vista_w(disco.pathNetwork));
    }
    if (con_nombre && (disco.tipo == INFO_TIPO_FIJO || disco.tipo == INFO_TIPO_EXTRAIBLE)) {
        return i_etiqueta_con(unidad, cadena_w::adopta(discos_nombre_volumen(disco.disco)));
    }
    if (con_nombre && disco.tipo > ultimo_tipo_de_unidad) {
        error_interno_default_error();
    }
    return cadena_w(unidad);
}

void i_olvida_disco_de_programa() noexcept {
    i_hay_disco_programa = false;
}

}  // namespace lumodir

using namespace lumodir;

ArrPunteroConTipo* lumodir_UnidadesDelSistema(void) {
    return i_unidades_del_sistema(false).suelta();
}

ArrPunteroConTipo* lumodir_UnidadesDelSistemaConNombre(void) {
    return i_unidades_del_sistema(true).suelta();
}

wchar_t* lumodir_nombreCompleto_UnidadSistema_UNICODE(const UnidadSistema* unidad) {
    const wchar_t* nombre = i_comprueba(unidad != nullptr, "(unidad) != NULL") ? unidad->nombre : nullptr;
    return cadena_w(a_vista(nombre)).suelta();
}

char* lumodir_nombreCompleto_UnidadSistema(const UnidadSistema* unidad) {
    return puente<lumodir_nombreCompleto_UnidadSistema_UNICODE>(unidad);
}

unsigned long lumodir_tipoDrive_UnidadSistema(const UnidadSistema* unidad) {
    return i_comprueba(unidad != nullptr, "(unidad) != NULL") ? unidad->tipo : 0;
}

void lumodir_destruyeEstructuraUnidadSistema(UnidadSistema** unidad) {
    if (i_comprueba(unidad != nullptr, "(unidad) != NULL") &&
        i_comprueba(*unidad != nullptr, "(*unidad) != NULL")) {
        i_libera((*unidad)->nombre);
        i_libera(*unidad);
        *unidad = nullptr;
    }
}

const wchar_t* cdir_disco_de_programa_UNICODE(void) {
    if (!i_hay_disco_programa) {
        const cadena_w disco = i_averigua_disco_programa();
        const std::size_t tam = disco.size();
        i_comprueba(tam < tamanyo_disco_programa, "tam < _MAX_DIR");
        const vista_w cabe = disco.ver().substr(0, tamanyo_disco_programa - 1);
        rasgos_utf16::copy(i_disco_programa, cabe.data(), cabe.size());
        i_disco_programa[cabe.size()] = L'\0';
        i_hay_disco_programa = true;
    }
    return i_disco_programa;
}
