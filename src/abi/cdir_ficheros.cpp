// The exports of cdir_ficheros.h.
#include "cdir_ficheros.h"

#include "abi/exportacion.hpp"
#include "files/borrado.hpp"
#include "files/borrado_arbol.hpp"
#include "files/borrado_filtro.hpp"
#include "files/cambia_extension.hpp"
#include "files/crea_directorios.hpp"
#include "files/existencia.hpp"
#include "files/permisos_escritura.hpp"
#include "files/renombra_protege.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "frame/puente.hpp"
#include "listings/dirwin.hpp"
#include "lumodir_ficheros.h"
#include "paths/componentes.hpp"
#include "paths/path_correcto.hpp"

using namespace interno;

namespace {

bool i_hay_fichero(const wchar_t* fichero) noexcept {
    return i_comprueba(fichero != nullptr, "(nombre) != NULL");
}

bool i_hay_directorio(const wchar_t* directorio) noexcept {
    return i_comprueba(directorio != nullptr, "(nombre_directorio) != NULL");
}

bool i_existe_directorio(const wchar_t* directorio) noexcept {
    return i_hay_directorio(directorio) && i_existencia(directorio).hay();
}

bool i_hay_nombres(const wchar_t* viejo, const wchar_t* nuevo) noexcept {
    return estan({{viejo, "(nombre_viejo) != NULL"}, {nuevo, "(nombre_nuevo) != NULL"}});
}

// An empty directory must never become the root. A bare drive means its current directory to the system and its root to
// the reader: nobody guesses.
bool i_es_borrable(const wchar_t* directorio) noexcept {
    return i_comprueba(directorio != nullptr, "(directorio) != NULL") &&
           i_comprueba(hay_texto(a_vista(directorio)), "widestr_longitud(directorio) > 0") &&
           i_comprueba_con(!es_unidad_sola(recorta_derecha(a_vista(directorio))),
                           "unidad_sin_directorio == FALSO", a_vista(directorio));
}

void i_borra_en_pasadas_que_deben_bastar(const wchar_t* directorio, bool lo_quita, bool recursiva) {
    if (i_es_borrable(directorio)) {
        i_comprueba(i_borra_en_pasadas(directorio, lo_quita, recursiva),
                    "se_han_borrado_todos_los_ficheros_loc == CIERTO");
    }
}

// The flag of a caller who may stop a deletion.
marcha i_marcha_de_bandera(void* bandera) noexcept {
    const unsigned short valor = *static_cast<const volatile unsigned short*>(bandera);
    return valor == CIERTO ? marcha::entera : valor != 0 ? marcha::sin_quitar_directorios : marcha::ninguna;
}

// Whether the path is one to go on with; if not, the reason is delivered.
bool i_path_valido(const wchar_t* path, wchar_t** motivo_out) noexcept {
    const vista_w recortado = recorta_derecha(a_vista(path));
    const veredicto juicio = i_path_correcto_UNICODE(recortado);
    entrega(motivo_out, motivo_out == nullptr || juicio.motivo == nullptr
                            ? motivo()
                            : i_texto_del_fallo(juicio, recortado));
    return juicio.correcto;
}

unsigned short i_entrega_motivo(motivo por_que, wchar_t** motivo_out) noexcept {
    const bool bien = por_que.es_nula();
    entrega(motivo_out, std::move(por_que));
    return logico(bien);
}

unsigned short i_crea(const wchar_t* path, bool es_directorio, bool informa) noexcept {
    return logico(i_comprueba(path != nullptr, "(path) != NULL") &&
                  i_crea_directorios(path, es_directorio, informa));
}

}  // namespace

// ---- Existence

unsigned short cdir_existe_fichero_UNICODE(const wchar_t* nombre) {
    return logico(i_hay_fichero(nombre) && i_existencia(nombre).hay());
}
unsigned short cdir_existe_fichero(const char* nombre) {
    return puente<cdir_existe_fichero_UNICODE>(nombre);
}

unsigned short cdir_existe_directorio_UNICODE(const wchar_t* nombre_directorio) {
    return logico(i_existe_directorio(nombre_directorio));
}
unsigned short cdir_existe_directorio(const char* nombre_directorio) {
    return puente<cdir_existe_directorio_UNICODE>(nombre_directorio);
}

unsigned short cdir_existe_directorio_UNICODE_con_mensaje_opc(const wchar_t* nombre_directorio,
                                                              wchar_t** mensaje) {
    const bool existe = i_existe_directorio(nombre_directorio);
    entrega(mensaje, existe ? cadena_w() : i_mensaje(i_msg_31827_no_existe_directorio, {nombre_directorio}));
    return logico(existe);
}

unsigned short cdir_comprueba_existe_fichero(const wchar_t* fichero) {
    if (i_hay_fichero(fichero) && i_existencia(fichero).hay()) {
        return CIERTO;
    }
    i_muestra_mensaje(i_msg_74876_no_existe_fichero, a_vista(fichero));
    error_interno("");
    return FALSO;
}

unsigned short cdir_es_directorio_u(const wchar_t* path) {
    return logico(i_comprueba(path != nullptr, "(path) != NULL") && i_existencia(path).es_directorio());
}

unsigned short cdir_existe_fichero_filtro_UNICODE(const wchar_t* path_filtro) {
    return logico(enumerador<wchar_t>(path_filtro).siguiente(i_es_fichero) != nullptr);
}
unsigned short cdir_existe_fichero_filtro(const char* path_filtro) {
    return puente<cdir_existe_fichero_filtro_UNICODE>(path_filtro);
}

unsigned short cdir_existe_directorio_filtro(const wchar_t* path_filtro, wchar_t** nombre_directorio) {
    enumerador<wchar_t> entradas(path_filtro);
    const WIN32_FIND_DATAW* encontrado = entradas.siguiente(i_es_directorio<WIN32_FIND_DATAW>);
    if (encontrado != nullptr) {
        entrega(nombre_directorio, i_nombre_de_entrada(*encontrado));
    }
    return logico(encontrado != nullptr);
}

// ---- Access

unsigned short cdir_se_puede_leer_UNICODE(const wchar_t* fichero) {
    return logico(i_comprueba(fichero != nullptr, "(fichero) != NULL") && i_se_puede_leer(fichero));
}
unsigned short cdir_se_puede_leer(const char* fichero) {
    return puente<cdir_se_puede_leer_UNICODE>(fichero);
}

unsigned short cdir_se_puede_escribir_UNICODE(const wchar_t* fichero) {
    return logico(i_comprueba(fichero != nullptr, "(fichero) != NULL") &&
                  i_prueba_escritura(fichero).es_nula());
}
unsigned short cdir_se_puede_escribir(const char* fichero) {
    return puente<cdir_se_puede_escribir_UNICODE>(fichero);
}

unsigned short cdir_se_puede_escribir_en_directorio(const wchar_t* directorio, wchar_t** motivo_out) {
    if (!i_path_valido(directorio, motivo_out)) {
        return FALSO;
    }
    return i_entrega_motivo(i_prueba_escritura_en_directorio(directorio, directorio, true), motivo_out);
}

unsigned short cdir_se_puede_escribir_fichero_en_directorio(const wchar_t* fichero, wchar_t** motivo_out) {
    return i_path_valido(fichero, motivo_out)
               ? i_entrega_motivo(i_prueba_escritura_junto_a(fichero), motivo_out)
               : FALSO;
}

unsigned short cdir_tiene_permiso_escritura_fichero(const char* fichero) {
    return puente<lumodir_tiene_permiso_escritura_fichero_UNICODE>(fichero);
}

// ---- Deleting files

unsigned short cdir_borra_fichero_UNICODE(const wchar_t* fichero) {
    return logico(i_hay_fichero(fichero) && i_borra_fichero_existente(fichero, nullptr));
}
void cdir_borra_fichero(const char* fichero) {
    puente<cdir_borra_fichero_UNICODE>(fichero);
}

unsigned short cdir_borra_fichero_con_mensaje_extra_UNICODE(const wchar_t* fichero,
                                                            const wchar_t* mensaje_extra) {
    return logico(i_hay_fichero(fichero) && i_borra_fichero_existente(fichero, mensaje_extra));
}
void cdir_borra_fichero_con_mensaje_extra(const char* fichero, const char* mensaje_extra) {
    puente<cdir_borra_fichero_con_mensaje_extra_UNICODE>(fichero, mensaje_extra);
}

unsigned short cdir_borra_fichero_si_existe_UNICODE(const wchar_t* fichero) {
    return logico(i_hay_fichero(fichero) && i_borra_fichero(fichero, nullptr, true));
}
void cdir_borra_fichero_si_existe(const char* fichero) {
    puente<cdir_borra_fichero_si_existe_UNICODE>(fichero);
}

unsigned short cdir_borra_fichero_con_comprobacion_UNICODE(const wchar_t* nombre) {
    return logico(i_hay_fichero(nombre) && lmlongpath_DeleteFileW(nombre).hecho);
}
unsigned short cdir_borra_fichero_con_comprobacion(const char* nombre) {
    return puente<cdir_borra_fichero_con_comprobacion_UNICODE>(nombre);
}

void cdir_delete_ficheros_UNICODE(const wchar_t* path_filtro) {
    if (i_comprueba(path_filtro != nullptr, "(path_filtro) != NULL")) {
        i_comprueba_con(i_path_correcto_con_comodines_UNICODE(path_filtro).correcto,
                        "path_correcto == CIERTO", path_filtro);
        i_borra_lo_que_encuentra(path_filtro);
    }
}
void cdir_delete_ficheros(const char* path_filtro) {
    puente<cdir_delete_ficheros_UNICODE>(path_filtro);
}

void cdir_cambia_extension_ficheros_u(const wchar_t* dirBase, const wchar_t* oldExt, const wchar_t* newExt) {
    if (i_comprueba(dirBase != nullptr && oldExt != nullptr && newExt != nullptr,
                    "dirBase!=NULL && oldExt!=NULL && newExt !=NULL") &&
        i_comprueba(hay_texto(vista_w(dirBase)), "widestr_longitud(directorio) > 0")) {
        i_cambia_extension(dirBase, oldExt, newExt);
    }
}

// ---- Deleting directories

unsigned short cdir_borra_directorio_UNICODE(const wchar_t* directorio) {
    return logico(i_hay_directorio(directorio) && i_borra_directorio_existente(directorio));
}
void cdir_borra_directorio(const char* directorio) {
    puente<cdir_borra_directorio_UNICODE>(directorio);
}

unsigned short cdir_borra_directorio_si_existe_UNICODE(const wchar_t* directorio) {
    return logico(i_hay_directorio(directorio) && i_borra_directorio_si_existe(directorio, true));
}
void cdir_borra_directorio_si_existe(const char* directorio) {
    puente<cdir_borra_directorio_si_existe_UNICODE>(directorio);
}

unsigned short cdir_se_borra_directorio(const wchar_t* directorio) {
    return logico(i_hay_directorio(directorio) && i_borra_directorio_si_existe(directorio, false));
}

void cdir_borra_contenido_directorio_UNICODE(const wchar_t* directorio) {
    if (i_es_borrable(directorio)) {
        i_borra_arbol(directorio, false);
    }
}
void cdir_borra_contenido_directorio(const char* directorio) {
    puente<cdir_borra_contenido_directorio_UNICODE>(directorio);
}

unsigned short cdir_borra_directorio_y_subdirectorios_UNICODE(const wchar_t* directorio) {
    return logico(i_es_borrable(directorio) && i_borra_arbol(directorio, true));
}
void cdir_borra_directorio_y_subdirectorios(const char* directorio) {
    puente<cdir_borra_directorio_y_subdirectorios_UNICODE>(directorio);
}

unsigned short cdir_borra_directorio_y_subdirectorios_parando(const wchar_t* directorio,
                                                              unsigned short* continuar) {
    // The expression has always been spelled so.
    if (!i_comprueba(continuar != nullptr, "cotinuar != NULL") || !i_es_borrable(directorio)) {
        return FALSO;
    }
    const bool borrado = i_borra_arbol(directorio, true, {i_marcha_de_bandera, continuar});
    const volatile unsigned short* bandera = continuar;
    const unsigned short valor = *bandera;
    return borrado || valor == CIERTO ? logico(borrado) : valor;
}

// The three sets of arguments are as callers have come to rely on them: the content deletion that may fail removes
// the directory too, the one that must not fail leaves subdirectories alone.
void cdir_borra_contenido_directorio_reintentando_u(const wchar_t* directorio) {
    i_borra_en_pasadas_que_deben_bastar(directorio, false, false);
}

unsigned short cdir_borra_contenido_directorio_si_es_posible_reintentando_u(const wchar_t* directorio) {
    return logico(i_es_borrable(directorio) && i_borra_en_pasadas(directorio, true, true));
}

void cdir_borra_directorio_y_subdirectorios_reintentando_u(const wchar_t* directorio) {
    i_borra_en_pasadas_que_deben_bastar(directorio, true, true);
}

unsigned short cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE(const wchar_t* directorio,
                                                                          ArrCADENA_u* fallos) {
    return logico(i_es_borrable(directorio) && i_borra_en_una_pasada(directorio, fallos));
}

// ---- Creating directories

unsigned short cdir_crea_directorios_UNICODE(const wchar_t* path, unsigned short es_directorio) {
    return i_crea(path, es_directorio == CIERTO, true);
}
void cdir_crea_directorios(const char* path, unsigned short es_directorio) {
    puente<cdir_crea_directorios_UNICODE>(path, es_directorio);
}

unsigned short cdir_crea_directorios_del_path_UNICODE(const wchar_t* path) {
    return i_crea(path, true, true);
}
void cdir_crea_directorios_del_path(const char* path) {
    puente<cdir_crea_directorios_del_path_UNICODE>(path);
}

unsigned short cdir_crea_directorios_fichero_UNICODE(const wchar_t* path) {
    return i_crea(path, false, true);
}
void cdir_crea_directorios_fichero(const char* path) {
    puente<cdir_crea_directorios_fichero_UNICODE>(path);
}

unsigned short cdir_crea_directorios_si_es_posible_UNICODE(const wchar_t* path) {
    return i_crea(path, true, false);
}

unsigned short cdir_crea_directorios_fichero_si_es_posible_UNICODE(const wchar_t* path) {
    return i_crea(path, false, false);
}
unsigned short cdir_crea_directorios_fichero_si_es_posible(const char* path) {
    return puente<cdir_crea_directorios_fichero_si_es_posible_UNICODE>(path);
}

// ---- Renaming and moving

void cdir_renombra_fichero_UNICODE(const wchar_t* nombre_viejo, const wchar_t* nombre_nuevo) {
    if (i_hay_nombres(nombre_viejo, nombre_nuevo)) {
        i_renombra_fichero(nombre_viejo, nombre_nuevo);
    }
}
void cdir_renombra_fichero(const char* nombre_viejo, const char* nombre_nuevo) {
    puente<cdir_renombra_fichero_UNICODE>(nombre_viejo, nombre_nuevo);
}

unsigned short cdir_renombra_fichero_si_es_posible_UNICODE(const wchar_t* nombre_viejo,
                                                           const wchar_t* nombre_nuevo) {
    // A single attempt with nothing to say: what a loop without retries comes to.
    return logico(i_hay_nombres(nombre_viejo, nombre_nuevo) &&
                  lmlongpath_RenameFileW(nombre_viejo, nombre_nuevo).hecho);
}

unsigned short cdir_mueve_fichero(const wchar_t* origen, const wchar_t* destino) {
    return logico(estan({{origen, "(origen) != NULL"}, {destino, "(destino) != NULL"}}) &&
                  lmlongpath_MoveFileW(origen, destino, 0).hecho);
}
