// Deleting what a search pattern finds.
//
// Promises: only files that the system's own search finds are touched, one attempt each, in the directory that the
// pattern names and by the very names that the search gave, whatever they end in; directories and read-only files
// stay. The enumerator's own filter is looser than the system's and never deletes anything.
// Checked by tests/files/borrado_filtro_win32_test.cpp.
#include "cdir.h"
#include "companions/directorio_abierto.hpp"
#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"
#include "frame/puente.hpp"
#include "listings/dirwin.hpp"
#include "listings/recorrido.hpp"
#include "paths/path_correcto.hpp"

namespace lumodir {
namespace {

// The matching files. They are collected before the first one goes: what a search shows while its directory shrinks
// is up to the file system.
entradas_guardadas i_ficheros_del_filtro(const wchar_t* filtro) {
    entradas_guardadas ficheros;
    enumerador<wchar_t> entradas(filtro);
    while (const WIN32_FIND_DATAW* entrada = entradas.siguiente()) {
        if (!entradas.con_filtro_propio() && !i_es_directorio(*entrada)) {
            ficheros.guarda({i_nombre_de_entrada(*entrada), entrada->dwFileAttributes, entrada->dwReserved0,
                             0, entrada->ftLastWriteTime});
        }
    }
    return ficheros;
}

// The directory that a search looks into: with its separator, so that a link is followed as the search follows it.
cadena_w i_directorio_del_filtro(const ruta_fijada& filtro) {
    const vista_w ruta(filtro.c_str());
    return cadena_w(ruta.substr(0, ruta.find_last_of(L"\\/") + 1));
}

void i_borra_lo_que_encuentra(const wchar_t* filtro) {
    const ruta_fijada patron(filtro, ruta_fijada::uso::busqueda);
    const cadena_w donde = i_directorio_del_filtro(patron);
    const ruta_fijada ruta(donde.c_str());
    trato_con_volumen trato;
    directorio_abierto directorio;
    const bool abierto = directorio.abre(ruta, trato, enlace_raiz::se_sigue) == ERROR_SUCCESS;
    const entradas_guardadas ficheros = i_ficheros_del_filtro(patron.c_str());
    // Opened before it is searched, and looked for once more afterwards: nothing is deleted in one directory for having
    // been found in another that had taken its place.
    if (!abierto || ficheros.num() == 0 || !directorio.esta_en(ruta)) {
        return;
    }
    for (std::size_t i = 0; i < ficheros.num(); ++i) {
        directorio.borra(ficheros[i]);
    }
}

}  // namespace
}  // namespace lumodir

using namespace lumodir;

void cdir_delete_ficheros_UNICODE(const wchar_t* path_filtro) {
    const vista_w filtro = a_vista(path_filtro);
    if (!i_comprueba(filtro.data() != nullptr, "(path_filtro) != NULL")) {
        return;
    }
    i_comprueba_con(i_path_correcto_con_comodines_UNICODE(filtro).correcto, "path_correcto == CIERTO",
                    filtro);
    i_borra_lo_que_encuentra(path_filtro);
}

void cdir_delete_ficheros(const char* path_filtro) {
    puente<cdir_delete_ficheros_UNICODE>(path_filtro);
}
