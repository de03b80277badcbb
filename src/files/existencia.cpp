// See existencia.hpp.
#include "files/existencia.hpp"

#include "cdir.h"
#include "companions/error_interno.hpp"
#include "companions/lmlongpath.h"
#include "companions/lmlongpath.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "frame/puente.hpp"
#include "listings/dirwin.hpp"
#include "lumodir.h"

namespace lumodir {
namespace {

constexpr unsigned short i_logico(bool valor) noexcept {
    return valor ? CIERTO : FALSO;
}

// The first entry of the wanted kind; NULL when there is none.
const entrada<wchar_t>* i_busca_entrada(enumerador<wchar_t>& entradas, bool directorios) noexcept {
    const entrada<wchar_t>* actual = entradas.siguiente();
    while (actual != nullptr && i_es_directorio(*actual) != directorios) {
        actual = entradas.siguiente();
    }
    return actual;
}

}  // namespace

unsigned short es_fichero_de_solo_lectura(const ruta_fijada& path) noexcept {
    return i_logico(i_existencia(path).es_de_solo_lectura());
}

}  // namespace lumodir

using namespace lumodir;

unsigned short cdir_existe_fichero_UNICODE(const wchar_t* nombre) {
    if (!i_comprueba(nombre != nullptr, "(nombre) != NULL")) {
        return FALSO;
    }
    return lmlongpath_waccess(nombre, acceso_existencia);
}

unsigned short cdir_existe_fichero(const char* nombre) {
    return puente<cdir_existe_fichero_UNICODE>(nombre);
}

unsigned short cdir_existe_directorio_UNICODE(const wchar_t* nombre_directorio) {
    if (!i_comprueba(nombre_directorio != nullptr, "(nombre_directorio) != NULL")) {
        return FALSO;
    }
    return lmlongpath_waccess(nombre_directorio, acceso_existencia);
}

unsigned short cdir_existe_directorio(const char* nombre_directorio) {
    return puente<cdir_existe_directorio_UNICODE>(nombre_directorio);
}

unsigned short cdir_existe_directorio_UNICODE_con_mensaje_opc(const wchar_t* nombre_directorio,
                                                              wchar_t** mensaje) {
    const unsigned short existe = cdir_existe_directorio_UNICODE(nombre_directorio);
    if (mensaje != nullptr) {
        *mensaje = existe == CIERTO
                       ? nullptr
                       : i_mensaje(i_msg_31827_no_existe_directorio, {nombre_directorio}).suelta();
    }
    return existe;
}

unsigned short cdir_comprueba_existe_fichero(const wchar_t* fichero) {
    if (cdir_existe_fichero_UNICODE(fichero) == CIERTO) {
        return CIERTO;
    }
    i_muestra_mensaje(i_msg_74876_no_existe_fichero, a_vista(fichero));
    error_interno("");
    return FALSO;
}

unsigned short cdir_es_directorio_u(const wchar_t* path) {
    if (!i_comprueba(path != nullptr, "(path) != NULL")) {
        return FALSO;
    }
    return i_logico(i_existencia(path).es_directorio());
}

unsigned short cdir_existe_fichero_filtro_UNICODE(const wchar_t* path_filtro) {
    enumerador<wchar_t> entradas(path_filtro);
    return i_logico(i_busca_entrada(entradas, false) != nullptr);
}

unsigned short cdir_existe_fichero_filtro(const char* path_filtro) {
    return puente<cdir_existe_fichero_filtro_UNICODE>(path_filtro);
}

unsigned short cdir_existe_directorio_filtro(const wchar_t* path_filtro, wchar_t** nombre_directorio) {
    enumerador<wchar_t> entradas(path_filtro);
    const entrada<wchar_t>* encontrada = i_busca_entrada(entradas, true);
    if (encontrada != nullptr && nombre_directorio != nullptr) {
        *nombre_directorio = cadena_w(a_vista(encontrada->cFileName)).suelta();
    }
    return i_logico(encontrada != nullptr);
}

unsigned short cdir_se_puede_leer_UNICODE(const wchar_t* fichero) {
    if (!i_comprueba(fichero != nullptr, "(fichero) != NULL")) {
        return FALSO;
    }
    const ruta_fijada fijada(fichero);
    const existencia que_hay = i_existencia(fijada);
    return i_logico(que_hay.hay() && !que_hay.es_directorio() &&
                    lmlongpath_CreateFileW(fijada, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0,
                                           nullptr, nullptr)
                        .valida());
}

unsigned short cdir_se_puede_leer(const char* fichero) {
    return puente<cdir_se_puede_leer_UNICODE>(fichero);
}

unsigned long long lumodir_get_tamanyo_fichero(const wchar_t* path, unsigned long* error_out) {
    return lmlongpath_GetFileSize(path, error_out);
}
