// See borrado_filtro.hpp.
#include "files/borrado_filtro.hpp"

#include "companions/lmlongpath.hpp"
#include "listings/dirwin.hpp"
#include "listings/recorrido.hpp"

namespace interno {
namespace {

// The matching files. They are collected before the first one goes: what a search shows while its directory shrinks
// is up to the file system.
entradas_guardadas i_ficheros_del_filtro(const wchar_t* filtro) {
    entradas_guardadas ficheros;
    enumerador<wchar_t> entradas(filtro);
    while (const WIN32_FIND_DATAW* entrada = entradas.siguiente(i_es_fichero)) {
        if (!entradas.con_filtro_propio()) {
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

}  // namespace

void i_borra_lo_que_encuentra(const wchar_t* filtro) {
    const ruta_fijada patron(filtro, ruta_fijada::uso::busqueda);
    const cadena_w texto = i_directorio_del_filtro(patron);
    const ruta_fijada ruta(texto.c_str());
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

}  // namespace interno
