// Deleting what a search pattern finds.
//
// Promises: only files that the system's own search finds are touched, one attempt each; directories and
// read-only files stay. The enumerator's own filter is looser than the system's and never deletes anything.
// Checked by tests/files/borrado_filtro_win32_test.cpp.
#include "cdir.h"
#include "companions/arr.hpp"
#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"
#include "frame/puente.hpp"
#include "listings/dirwin.hpp"
#include "paths/path_correcto.hpp"
#include "paths/split_makepath.hpp"

namespace lumodir {
namespace {

// The matching files as full paths. They are collected before the first one goes: what a search shows while its
// directory shrinks is up to the file system.
objeto<ArrCADENA_u> i_ficheros_del_filtro(const wchar_t* filtro, const division<wchar_t>& piezas) {
    auto ficheros = objeto<ArrCADENA_u>::crea();
    enumerador<wchar_t> entradas(filtro);
    while (const WIN32_FIND_DATAW* entrada = entradas.siguiente()) {
        if (!entradas.con_filtro_propio() && !i_es_directorio(*entrada)) {
            ficheros->anade(i_makepath(piezas.unidad, piezas.directorio, vista_w(entrada->cFileName), {}));
        }
    }
    return ficheros;
}

}  // namespace
}  // namespace lumodir

using namespace lumodir;

void cdir_delete_ficheros_UNICODE(const wchar_t* path_filtro) {
    const vista_w filtro = a_vista(path_filtro);
    unsigned short es_unc = FALSO;
    if (!i_comprueba(filtro.data() != nullptr, "(path_filtro) != NULL")) {
        return;
    }
    i_comprueba_con(i_path_correcto_con_comodines_UNICODE(filtro, &es_unc) == CIERTO,
                    "path_correcto == CIERTO", filtro);
    const division<wchar_t> piezas(filtro, es_unc == CIERTO);
    const auto ficheros = i_ficheros_del_filtro(path_filtro, piezas);
    for (std::size_t i = 0; i < ficheros->num(); ++i) {
        lmlongpath_DeleteFileW(ficheros->texto(i), nullptr);
    }
}

void cdir_delete_ficheros(const char* path_filtro) {
    puente<cdir_delete_ficheros_UNICODE>(path_filtro);
}
