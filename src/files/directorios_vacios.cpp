// Removing a directory and its ancestors while they are empty.
//
// Promises: the base is never removed; one silent attempt a directory; the first that is not empty, or does not
// go, ends the climb. A directory that holds only directories with a point in front counts as empty here, and the
// system then refuses its removal.
// Checked by tests/files/directorios_vacios_win32_test.cpp.
#include "cdir.h"
#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"
#include "frame/puente.hpp"
#include "listings/dirwin.hpp"
#include "lumodir.h"
#include "paths/componentes.hpp"
#include "paths/rutas.hpp"
#include "paths/split_makepath.hpp"

namespace lumodir {
namespace {

vista_w i_sin_barra_final(vista_w directorio) noexcept {
    if (acaba_en(directorio, L"\\")) {
        directorio.remove_suffix(1);
    }
    return directorio;
}

bool i_esta_vacio(vista_w directorio) {
    i_comprueba(!directorio.empty(), "widestr_longitud(directorio) > 0");
    const cadena_w patron = i_concatena_directorios(directorio, L"*.*");
    enumerador<wchar_t> entradas(patron.c_str());
    while (const WIN32_FIND_DATAW* entrada = entradas.siguiente()) {
        if (!i_es_directorio(*entrada) || entrada->cFileName[0] != L'.') {
            return false;
        }
    }
    return true;
}

// Without a base the climb ends at the drive.
cadena_w i_unidad_como_base(vista_w directorio) {
    const path_comprobado<wchar_t> comprobado = i_comprueba_fichero(directorio);
    const division<wchar_t> piezas(comprobado.path, comprobado.es_unc);
    return i_makepath(piezas.unidad.data() == nullptr ? vista_w(L"") : piezas.unidad, {}, {}, {});
}

void i_borra_mientras_esten_vacios(vista_w directorio, vista_w base) {
    while (!iguales_sin_caja(directorio, base)) {
        if (!i_comprueba(directorio.size() > base.size(),
                         "widestr_longitud(dir) > widestr_longitud(path_base)") ||
            !i_esta_vacio(directorio)) {
            return;
        }
        const cadena_w actual(directorio);
        if (cdir_existe_directorio_UNICODE(actual.c_str()) == CIERTO &&
            !lmlongpath_RemoveDirectoryW(actual.c_str(), nullptr)) {
            return;
        }
        const vista_w padre = i_sin_barra_final(i_directorio_de_fichero(directorio));
        if (padre == directorio) {
            return;  // a final "/" stays where it is: there is no further up
        }
        directorio = padre;
    }
}

}  // namespace
}  // namespace lumodir

using namespace lumodir;

void lumodir_borra_directorios_de_path_si_estan_vacios_UNICODE(const wchar_t* path_directorio,
                                                               const wchar_t* path_base_no_borrar) {
    if (!i_comprueba(path_directorio != nullptr, "(directorio) != NULL") ||
        !i_comprueba(hay_texto(a_vista(path_directorio)), "widestr_longitud(directorio) > 0")) {
        return;
    }
    const cadena_w unidad =
        path_base_no_borrar == nullptr ? i_unidad_como_base(a_vista(path_directorio)) : cadena_w();
    const vista_w directorio = i_sin_barra_final(a_vista(path_directorio));
    const vista_w base =
        i_sin_barra_final(path_base_no_borrar == nullptr ? unidad.ver() : a_vista(path_base_no_borrar));
    if (path_base_no_borrar != nullptr) {
        i_comprueba(empieza_por_sin_caja(directorio, base),
                    "widestr_es_subcadena_inicial_may_o_min(path_directorio, path_base_no_borrar) == CIERTO");
    }
    i_borra_mientras_esten_vacios(directorio, base);
}

void lumodir_borra_directorios_de_path_si_estan_vacios(const char* path_directorio,
                                                       const char* path_base_no_borrar) {
    puente<lumodir_borra_directorios_de_path_si_estan_vacios_UNICODE>(path_directorio, path_base_no_borrar);
}
