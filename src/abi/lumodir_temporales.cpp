// The exports of lumodir_temporales.h.
#include "lumodir_temporales.h"

#include "abi/exportacion.hpp"
#include "files/crea_directorios.hpp"
#include "files/temporales.hpp"
#include "paths/rutas.hpp"

using namespace interno;

wchar_t* lumodir_dameDirectorioTemporal(void) {
    return i_directorio_temporal().suelta();
}

wchar_t* lumodir_creaFicheroTemporal(void) {
    return i_crea_fichero_temporal().suelta();
}

wchar_t* lumodir_creaFicheroTemporalConExt(const wchar_t* ext) {
    const bool hay = i_comprueba(ext != nullptr, "(ext) != NULL");
    return hay ? i_crea_fichero_temporal_con_ext(ext).suelta() : nuevo_texto(vista_w());
}

wchar_t* lumodir_creaFicheroUnicoEnDirectorio(const wchar_t* directorioTemporal, const wchar_t* ext) {
    return estan({{directorioTemporal, "(directorioTemporal) != NULL"}, {ext, "(ext) != NULL"}})
               ? i_crea_fichero_unico(directorioTemporal, ext).suelta()
               : nuevo_texto(vista_w());
}

wchar_t* lumodir_creaFicheroTemporalEnDirectorio(const wchar_t* directorioTemporal, const wchar_t* nombre) {
    const vista_w directorio = a_vista(directorioTemporal);
    if (directorio.empty() || a_vista(nombre).empty()) {
        return nullptr;
    }
    i_crea_directorios(directorioTemporal, true, true);
    return i_concatena_directorios<wchar_t>(directorio, nombre).suelta();
}
