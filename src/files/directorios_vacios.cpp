// Removing a directory and its ancestors while they are empty.
//
// Promises: the base is never removed, whatever separators or points lead to it; one silent attempt a directory; the
// first that is not empty, or does not go, ends the climb. A directory that holds only directories with a point in
// front counts as empty here, and the system then refuses its removal.
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

vista_w i_sin_separadores_finales(vista_w directorio) noexcept {
    while (acaba_en_separador(directorio)) {
        directorio.remove_suffix(1);
    }
    return directorio;
}

// A last component that the system resolves, or cuts to nothing ("..", "...", " "): removing it would remove another
// directory than the text says, perhaps the base.
bool i_nombra_a_otro(vista_w directorio) noexcept {
    const vista_w nombre = directorio.substr(i_directorio_de_fichero(directorio).size());
    return !nombre.empty() && nombre.find_first_not_of(L". ") == vista_w::npos;
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

// Whether the climb goes on: it was empty and is gone, or was not there at all.
bool i_borra_si_esta_vacio(vista_w directorio) {
    if (!i_esta_vacio(directorio)) {
        return false;
    }
    const cadena_w actual(directorio);
    return cdir_existe_directorio_UNICODE(actual.c_str()) != CIERTO ||
           lmlongpath_RemoveDirectoryW(actual.c_str(), nullptr);
}

// Without a base the climb ends at the drive.
cadena_w i_unidad_como_base(vista_w directorio) {
    const path_comprobado<wchar_t> comprobado = i_comprueba_fichero(directorio);
    const division<wchar_t> piezas(comprobado.path, comprobado.es_unc);
    return i_makepath(piezas.unidad.data() == nullptr ? vista_w(L"") : piezas.unidad, {}, {}, {});
}

void i_borra_mientras_esten_vacios(vista_w directorio, vista_w base) {
    const vista_w tope = i_sin_separadores_finales(base);
    for (;;) {
        // Going up leaves a "/" or a doubled "\\" at the end; the base may bear one too.
        const vista_w comparable = i_sin_separadores_finales(directorio);
        if (iguales_sin_caja(comparable, tope) ||
            !i_comprueba(comparable.size() > tope.size(),
                         "widestr_longitud(dir) > widestr_longitud(path_base)")) {
            return;
        }
        const bool es_el_mismo = acaba_en(comparable, L"\\.") || acaba_en(comparable, L"/.");
        if (!es_el_mismo && (i_nombra_a_otro(comparable) || !i_borra_si_esta_vacio(directorio))) {
            return;
        }
        const vista_w padre =
            i_sin_barra_final(i_directorio_de_fichero(es_el_mismo ? comparable : directorio));
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
