// The exports of lumodir_ficheros.h.
#include "lumodir_ficheros.h"

#include "abi/exportacion.hpp"
#include "abi/tamanyo.hpp"
#include "companions/lmlongpath.hpp"
#include "files/borrado.hpp"
#include "files/directorios_vacios.hpp"
#include "files/existencia.hpp"
#include "files/permisos_escritura.hpp"
#include "files/programa.hpp"
#include "files/renombra_protege.hpp"
#include "frame/puente.hpp"

using namespace interno;

namespace {

void i_borra_si_existe(const wchar_t* fichero, const wchar_t* mensaje_extra,
                       unsigned short* hay_error) noexcept {
    const bool borrado =
        i_comprueba(fichero != nullptr, "(nombre) != NULL") && i_borra_fichero(fichero, mensaje_extra, false);
    if (i_comprueba(hay_error != nullptr, "(hay_error) != NULL")) {
        *hay_error = logico(!borrado);
    }
}

void i_cambia(const wchar_t* nomfich, int modo) noexcept {
    if (i_comprueba(nomfich != nullptr, "(nomfich) != NULL")) {
        i_cambia_proteccion(nomfich, modo, true);
    }
}

}  // namespace

// ---- Access

unsigned short lumodir_se_puede_escribir_UNICODE_ex(const wchar_t* fichero, wchar_t** motivo_out) {
    const bool hay = i_comprueba(fichero != nullptr, "(fichero) != NULL");
    motivo por_que = hay ? i_prueba_escritura(fichero) : motivo();
    const bool bien = hay && por_que.es_nula();
    entrega(motivo_out, std::move(por_que));
    return logico(bien);
}

unsigned short lumodir_tiene_permiso_escritura_fichero_UNICODE(const wchar_t* fichero) {
    return logico(i_comprueba(fichero != nullptr, "(fichero) != NULL") &&
                  lmlongpath_waccess(fichero, acceso_escritura));
}

unsigned long long lumodir_get_tamanyo_fichero(const wchar_t* path, unsigned long* error_out) {
    return i_tamanyo(path, error_out);
}

unsigned short lumodir_espera_acceso_a_recursos_en_directorio(const char* directorio) {
    return logico(i_comprueba(directorio != nullptr, "(directorio) != NULL") &&
                  i_espera_directorio(utf16_temporal(directorio).c_str()));
}

// ---- Deletion

void lumodir_borra_fichero_si_existe_UNICODE(const wchar_t* fichero, unsigned short* hay_error) {
    i_borra_si_existe(fichero, nullptr, hay_error);
}

void lumodir_borra_fichero_con_mensaje_extra_si_existe_UNICODE(const wchar_t* fichero,
                                                               const wchar_t* mensaje_extra,
                                                               unsigned short* hay_error) {
    i_borra_si_existe(fichero, mensaje_extra, hay_error);
}

void lumodir_borra_directorios_de_path_si_estan_vacios_UNICODE(const wchar_t* path_directorio,
                                                               const wchar_t* path_base_no_borrar) {
    if (i_comprueba(path_directorio != nullptr, "(directorio) != NULL") &&
        i_comprueba(hay_texto(vista_w(path_directorio)), "widestr_longitud(directorio) > 0")) {
        i_borra_directorios_vacios(path_directorio, a_vista(path_base_no_borrar));
    }
}
void lumodir_borra_directorios_de_path_si_estan_vacios(const char* path_directorio,
                                                       const char* path_base_no_borrar) {
    puente<lumodir_borra_directorios_de_path_si_estan_vacios_UNICODE>(path_directorio, path_base_no_borrar);
}

// ---- Protection

void lumodir_protege_fichero_UNICODE(const wchar_t* nomfich) {
    i_cambia(nomfich, modo_lectura);
}
void lumodir_protege_fichero(const char* nomfich) {
    puente<lumodir_protege_fichero_UNICODE>(nomfich);
}

void lumodir_desprotege_fichero_UNICODE(const wchar_t* nomfich) {
    i_cambia(nomfich, modo_escritura);
}
void lumodir_desprotege_fichero(const char* nomfich) {
    puente<lumodir_desprotege_fichero_UNICODE>(nomfich);
}

void lumodir_desprotege_fichero_si_existe_UNICODE(const wchar_t* nomfich) {
    if (i_comprueba(nomfich != nullptr, "(nombre) != NULL")) {
        i_desprotege_si_existe(nomfich);
    }
}
void lumodir_desprotege_fichero_si_existe(const char* nomfich) {
    puente<lumodir_desprotege_fichero_si_existe_UNICODE>(nomfich);
}

// ---- Forms of a path

wchar_t* lumodir_dame_path_corto_UNICODE(const wchar_t* path) {
    const bool hay = i_comprueba(path != nullptr, "(path) != NULL");
    return hay ? i_path_corto(path).suelta() : nuevo_texto(vista_w());
}

wchar_t* lumodir_dame_path_largo_UNICODE(const wchar_t* path) {
    const bool hay = i_comprueba(path != nullptr, "(path) != NULL");
    return hay ? i_path_largo(path).suelta() : nuevo_texto(vista_w());
}

wchar_t* lumodir_lmlongpath_prepended_path_si_necesario(const wchar_t* path) {
    const bool hay = i_comprueba(path != nullptr, "(path) != NULL");
    return nuevo_texto(hay ? vista_w(ruta_fijada(path).dada_si_cabe()) : vista_w());
}
