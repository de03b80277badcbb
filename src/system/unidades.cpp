// See unidades.hpp.
#include "system/unidades.hpp"

#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"
#include "paths/split_makepath.hpp"
#include "system/discos.hpp"
#include "system/info.hpp"

namespace interno {
namespace {

constexpr DWORD tamanyo_path_programa = 260;  // units: the drive stands at the beginning, the rest may be cut
constexpr std::size_t tamanyo_disco_programa = 256;  // units, terminator included: _MAX_DIR of the C runtime
constexpr unsigned long ultimo_tipo_de_unidad = INFO_TIPO_OTRO;

// Kept for good, behind a plain flag: the program does not move.
wchar_t i_disco_programa[tamanyo_disco_programa];
bool i_hay_disco_programa = false;

cadena_w i_disco_actual() {
    const int numero = sistema._getdrive();
    if (numero < 1 || numero > i_NUM_MAX_UNIDADES) {
        return {};  // a share is current: it has no letter
    }
    return cadena_w(nombre_de_unidad(i_letra_de_unidad(numero - 1)).c_str());
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
        return concatena<wchar_t>({unidad, L" (", disco.pathNetwork, L")"});
    }
    if (con_nombre && (disco.tipo == INFO_TIPO_FIJO || disco.tipo == INFO_TIPO_EXTRAIBLE)) {
        return concatena<wchar_t>({unidad, L" (", i_nombre_de_volumen(disco.disco), L")"});
    }
    if (con_nombre && disco.tipo > ultimo_tipo_de_unidad) {
        error_interno_default_error();
    }
    return cadena_w(unidad);
}

void i_olvida_disco_de_programa() noexcept {
    i_hay_disco_programa = false;
}

objeto<ArrPunteroConTipo> i_unidades_del_sistema(bool con_nombre) {
    auto lista = objeto<ArrPunteroConTipo>::crea();
    InfoTabla tabla;
    i_llena_tabla(tabla);
    for (unsigned i = 0; i < tabla.numDiscos; ++i) {
        auto unidad = registro<UnidadSistema>::a_cero();
        unidad->nombre = i_etiqueta_de_unidad(tabla.discos[i], con_nombre).suelta();
        unidad->tipo = tabla.discos[i].tipo;
        lista->punteros.anade(unidad.suelta());
    }
    i_vacia_tabla(tabla);
    return lista;
}

const wchar_t* i_disco_de_programa() {
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

}  // namespace interno
