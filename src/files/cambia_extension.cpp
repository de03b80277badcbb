// Giving the files of a directory another extension.
//
// Promises: a file in the way of the new name is deleted first, on purpose; nothing is deleted for a file that
// then has no way of being renamed: an extension changed to itself changes nothing, and no target goes for a
// source that does not exist.
// Cannot promise: one step for both: a renaming that fails after the deletion leaves the old file alone there.
// Checked by tests/files/cambia_extension_win32_test.cpp.
#include "cdir.h"
#include "companions/error_interno.hpp"
#include "companions/sistema.hpp"
#include "paths/componentes.hpp"
#include "paths/split_makepath.hpp"

namespace lumodir {
namespace {

vista_w i_sin_punto(vista_w extension) noexcept {
    return extension.substr(empieza_por(extension, L".") ? 1 : 0);
}

void i_cambia(vista_w directorio, vista_w nombre, vista_w antigua, vista_w nueva) {
    const division<wchar_t> piezas(nombre, false);
    const cadena_w origen = i_makepath<wchar_t>({}, directorio, piezas.nombre, antigua);
    const cadena_w destino = i_makepath<wchar_t>({}, directorio, piezas.nombre, nueva);
    // Another letter case, of any alphabet, is the same file: deleting the target would delete the source.
    const bool mismo_fichero =
        ::CompareStringOrdinal(origen.c_str(), -1, destino.c_str(), -1, TRUE) == CSTR_EQUAL;
    if (!mismo_fichero && cdir_existe_fichero_UNICODE(origen.c_str()) == CIERTO) {
        cdir_borra_fichero_si_existe_UNICODE(destino.c_str());
    }
    cdir_renombra_fichero_UNICODE(origen.c_str(), destino.c_str());
}

}  // namespace
}  // namespace lumodir

using namespace lumodir;

void cdir_cambia_extension_ficheros_u(const wchar_t* dirBase, const wchar_t* oldExt, const wchar_t* newExt) {
    if (!i_comprueba(dirBase != nullptr && oldExt != nullptr && newExt != nullptr,
                     "dirBase!=NULL && oldExt!=NULL && newExt !=NULL")) {
        return;
    }
    const vista_w antigua = i_sin_punto(vista_w(oldExt));
    const vista_w nueva = i_sin_punto(vista_w(newExt));
    if (antigua == nueva) {
        return;
    }
    ListaFicheros_u lista;
    cdir_lista_de_ficheros_UNICODE(dirBase, antigua.data(), &lista);
    for (unsigned long i = 0; i < lista.num; ++i) {
        i_cambia(a_vista(lista.path), a_vista(lista.lista[i]), antigua, nueva);
    }
    cdir_libera_lista_de_ficheros_UNICODE(&lista);
}
