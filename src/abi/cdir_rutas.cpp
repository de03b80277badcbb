// The exports of cdir_rutas.h.
#include "cdir_rutas.h"

#include "abi/exportacion.hpp"
#include "frame/puente.hpp"
#include "paths/componentes.hpp"
#include "paths/nombres_validos.hpp"
#include "paths/path_correcto.hpp"
#include "paths/ruta_abreviada.hpp"
#include "paths/rutas.hpp"
#include "paths/split_makepath.hpp"

using namespace interno;

// ---- Validity

namespace {

template <class C>
unsigned short i_responde(const veredicto& juicio, vista<C> path, unsigned short mostrar_mensaje) {
    if (mostrar_mensaje == CIERTO) {
        i_muestra_fallo(juicio, path);
    }
    return logico(juicio.correcto);
}

// The name rule trims the text that it is given, the caller's own. A name with nothing to trim may be a constant
// and is not written to.
bool i_recorta_y_comprueba(wchar_t* nombre, vista_w entero) noexcept {
    const vista_w recortado = recorta_derecha(entero);
    if (recortado.size() < entero.size()) {
        nombre[recortado.size()] = L'\0';
    }
    return i_nombre_base_correcto_UNICODE(recortado);
}

}  // namespace

unsigned short cdir_path_valido_UNICODE(const wchar_t* path, unsigned short mostrar_mensaje) {
    const vista_w recortado = recorta_derecha(a_vista(path));
    return i_responde(i_path_correcto_UNICODE(recortado), recortado, mostrar_mensaje);
}
unsigned short cdir_path_valido(const char* path, unsigned short mostrar_mensaje) {
    const vista_a recortado = recorta_derecha(a_vista(path));
    return i_responde(i_path_correcto(recortado), recortado, mostrar_mensaje);
}

unsigned short cdir_es_path_valido_UNICODE(const wchar_t* path, wchar_t** mensaje) {
    const vista_w recortado = recorta_derecha(a_vista(path));
    const veredicto juicio = i_path_correcto_UNICODE(recortado);
    if (mensaje != nullptr && juicio.motivo != nullptr) {
        *mensaje = i_texto_del_fallo(juicio, recortado).suelta();
    }
    return logico(juicio.correcto);
}

unsigned short cdir_nombre_base_valido_UNICODE(wchar_t* nombre) {
    return logico(i_comprueba(nombre != nullptr, "nombre != NULL") &&
                  i_recorta_y_comprueba(nombre, a_vista(nombre)));
}
unsigned short cdir_nombre_base_valido(const char* nombre) {
    return logico(i_comprueba(nombre != nullptr, "nombre != NULL") &&
                  i_nombre_base_correcto(a_vista(nombre)));
}

unsigned short cdir_nombre_fichero_valido(wchar_t* nombre) {
    const vista_w entero = a_vista(nombre);
    return logico(i_comprueba(nombre != nullptr, "nombre != NULL") && !acaba_en(entero, L".") &&
                  i_recorta_y_comprueba(nombre, entero));
}

// ---- Splitting

namespace {

template <class C>
void i_entrega_piezas(const path_juzgado<C>& comprobado, C** unidad, C** directorio, C** nombre_base,
                      C** extension) {
    division<C> piezas(comprobado);
    i_junta_extension_con_blanco(piezas, nombre_base != nullptr && extension != nullptr);
    entrega_de_copias entrega;
    entrega.copia(unidad, piezas.unidad);
    entrega.copia(directorio, piezas.directorio);
    entrega.copia(nombre_base, piezas.nombre);
    entrega.copia(extension, piezas.extension);
}

}  // namespace

void cdir_splitpath_con_comprobacion_UNICODE(const wchar_t* path, wchar_t** unidad, wchar_t** directorio,
                                             wchar_t** nombre_base, wchar_t** extension) {
    i_entrega_piezas(i_comprueba_fichero(a_vista(path)), unidad, directorio, nombre_base, extension);
}
void cdir_splitpath_con_comprobacion(const char* path, char** unidad, char** directorio, char** nombre_base,
                                     char** extension) {
    i_entrega_piezas(i_comprueba_fichero(a_vista(path)), unidad, directorio, nombre_base, extension);
}

void cdir_splitpath_con_comodines_UNICODE(const wchar_t* path, wchar_t** unidad, wchar_t** directorio,
                                          wchar_t** nombre_base, wchar_t** extension) {
    i_entrega_piezas(i_comprueba_con_comodines(a_vista(path)), unidad, directorio, nombre_base, extension);
}
void cdir_splitpath_con_comodines(const char* path, char** unidad, char** directorio, char** nombre_base,
                                  char** extension) {
    i_entrega_piezas(i_comprueba_con_comodines(a_vista(path)), unidad, directorio, nombre_base, extension);
}

wchar_t* cdir_split_make_path_UNICODE(const wchar_t* path, unsigned short piezas) {
    return i_split_make_path(a_vista(path), piezas).suelta();
}
char* cdir_split_make_path(const char* path, unsigned short piezas) {
    return i_split_make_path(a_vista(path), piezas).suelta();
}

// ---- Composing

namespace {

template <class C>
trozos_de_ruta<C> i_trozos(const C* unidad, const C* directorio, const C* nombre_base, const C* extension) {
    return {a_vista(unidad), a_vista(directorio), a_vista(nombre_base), a_vista(extension)};
}

}  // namespace

wchar_t* cdir_makepath_UNICODE(const wchar_t* unidad, const wchar_t* directorio, const wchar_t* nombre_base,
                               const wchar_t* extension) {
    return i_makepath_correcto_UNICODE(i_trozos(unidad, directorio, nombre_base, extension)).suelta();
}
char* cdir_makepath(const char* unidad, const char* directorio, const char* nombre_base,
                    const char* extension) {
    return i_makepath_correcto(i_trozos(unidad, directorio, nombre_base, extension)).suelta();
}

wchar_t* cdir_makepath_con_comodines_UNICODE(const wchar_t* unidad, const wchar_t* directorio,
                                             const wchar_t* nombre_base, const wchar_t* extension) {
    return i_makepath_con_comodines(i_trozos(unidad, directorio, nombre_base, extension)).suelta();
}
char* cdir_makepath_con_comodines(const char* unidad, const char* directorio, const char* nombre_base,
                                  const char* extension) {
    return i_makepath_con_comodines(i_trozos(unidad, directorio, nombre_base, extension)).suelta();
}

// ---- Valid names and extensions

namespace {

template <class C>
unsigned short i_convierte(const C* nombre, C* result, unsigned short longitud) noexcept {
    if (!estan({{nombre, "(nombre) != NULL"}, {result, "(result) != NULL"}})) {
        return 0;
    }
    i_convierte_a_nombre_base_valido(nombre, std::span(result, longitud));
    result[longitud] = C(0);
    return longitud;
}

}  // namespace

unsigned short cdir_convierte_a_nombre_base_valido_UNICODE(const wchar_t* nombre, wchar_t* result,
                                                           unsigned short longitud) {
    return i_convierte(nombre, result, longitud);
}
unsigned short cdir_convierte_a_nombre_base_valido(const char* nombre, char* result,
                                                   unsigned short longitud) {
    return i_convierte(nombre, result, longitud);
}

wchar_t* cdir_dame_nombre_base_valido_UNICODE(const wchar_t* nombre) {
    i_comprueba(nombre != nullptr, "(nombre) != NULL");
    return i_nombre_base_reparado(a_vista(nombre)).suelta();
}

unsigned short cdir_extension_valida_UNICODE(const wchar_t* ext) {
    return logico(i_comprueba(ext != nullptr, "ext != NULL") && i_caracteres_validos_UNICODE(a_vista(ext)));
}
unsigned short cdir_extension_valida(const char* ext) {
    return logico(i_comprueba(ext != nullptr, "ext != NULL") && i_caracteres_validos(a_vista(ext)));
}

wchar_t* cdir_extension_con_dolar_UNICODE(const wchar_t* ext) {
    const bool hay_ext = i_comprueba(ext != nullptr, "(ext) != NULL");
    return hay_ext ? i_extension_con_dolar(a_vista(ext)).suelta() : nuevo_texto(vista_w());
}

// ---- Name components

namespace {

template <class C>
C* i_nombre_de_fichero(const C* nombre) {
    i_comprueba(nombre != nullptr, "(nombre) != NULL");
    return nuevo_texto(i_nombre_tras_ultima_barra(a_vista(nombre)));
}

template <class C>
C* i_ruta_acceso(const C* ruta_completa) {
    const vista<C> ruta = a_vista(ruta_completa);
    if (i_comprueba(ruta_completa != nullptr, "ruta_completa != NULL")) {
        i_comprueba_con(!ruta.empty(), "num_caracteres > 0", ruta);
    }
    return nuevo_texto(i_directorio_de_fichero(ruta));
}

}  // namespace

wchar_t* cdir_nombre_base_fichero_UNICODE(const wchar_t* ruta_completa) {
    return nuevo_texto(i_nombre_base_fichero(a_vista(ruta_completa)));
}
char* cdir_nombre_base_fichero(const char* ruta_completa) {
    return nuevo_texto(i_nombre_base_fichero(a_vista(ruta_completa)));
}

wchar_t* cdir_extension_fichero_UNICODE(const wchar_t* ruta_completa) {
    return nuevo_texto(i_extension_fichero(a_vista(ruta_completa)));
}
char* cdir_extension_fichero(const char* ruta_completa) {
    return nuevo_texto(i_extension_fichero(a_vista(ruta_completa)));
}

wchar_t* cdir_nombre_y_ext_fichero_UNICODE(const wchar_t* nombre) {
    return i_nombre_y_ext_fichero(a_vista(nombre)).suelta();
}
char* cdir_nombre_y_ext_fichero(const char* nombre) {
    return i_nombre_y_ext_fichero(a_vista(nombre)).suelta();
}

wchar_t* cdir_nombre_de_fichero_suprimiendo_path_UNICODE(const wchar_t* nombre) {
    return i_nombre_de_fichero(nombre);
}
char* cdir_nombre_de_fichero_suprimiendo_path(const char* nombre) {
    return i_nombre_de_fichero(nombre);
}

wchar_t* cdir_ruta_acceso_directorio_fichero_UNICODE(const wchar_t* ruta_completa) {
    return i_ruta_acceso(ruta_completa);
}
char* cdir_ruta_acceso_directorio_fichero(const char* ruta_completa) {
    return i_ruta_acceso(ruta_completa);
}

wchar_t* cdir_ruta_y_nombre_fichero_sin_extension_UNICODE(const wchar_t* ruta_completa) {
    return i_ruta_y_nombre_fichero_sin_extension(a_vista(ruta_completa)).suelta();
}
char* cdir_ruta_y_nombre_fichero_sin_extension(const char* ruta_completa) {
    return i_ruta_y_nombre_fichero_sin_extension(a_vista(ruta_completa)).suelta();
}

wchar_t* cdir_nombre_fichero_con_ext_UNICODE(const wchar_t* nombre, const wchar_t* ext) {
    return i_nombre_fichero_con_ext(a_vista(nombre), a_vista(ext)).suelta();
}
char* cdir_nombre_fichero_con_ext(const char* nombre, const char* ext) {
    return i_nombre_fichero_con_ext(a_vista(nombre), a_vista(ext)).suelta();
}

void cdir_cambia_extension_nombre_fichero_u(wchar_t** nombre, const wchar_t* ext) {
    if (i_comprueba(nombre != nullptr, "(nombre) != NULL")) {
        // The extension may be a part of the name that goes: the old string lives until the new one is made.
        const cadena_w antiguo = cadena_w::adopta(*nombre);
        *nombre = i_nombre_fichero_con_ext(antiguo.ver(), a_vista(ext)).suelta();
    }
}

// ---- Joining

namespace {

template <class C>
C* i_concatenados(const C* directorio1, const C* directorio2) {
    return estan({{directorio1, "(directorio) != NULL"}, {directorio2, "(directorio) != NULL"}})
               ? i_concatena_directorios(a_vista(directorio1), a_vista(directorio2)).suelta()
               : nuevo_texto(vista<C>());
}

template <class C>
C* i_path_construido(const C* directorio1, const C* directorio2, const C* nombre) {
    return estan({{directorio1, "(directorio) != NULL"},
                  {directorio2, "(directorio) != NULL"},
                  {nombre, "(nombre) != NULL"}})
               ? i_construye_path(a_vista(directorio1), a_vista(directorio2), a_vista(nombre)).suelta()
               : nuevo_texto(vista<C>());
}

}  // namespace

wchar_t* cdir_concatena_directorios_UNICODE(const wchar_t* directorio1, const wchar_t* directorio2) {
    return i_concatenados(directorio1, directorio2);
}
char* cdir_concatena_directorios(const char* directorio1, const char* directorio2) {
    return i_concatenados(directorio1, directorio2);
}

wchar_t* cdir_construye_path_UNICODE(const wchar_t* directorio1, const wchar_t* directorio2,
                                     const wchar_t* nombre) {
    return i_path_construido(directorio1, directorio2, nombre);
}
char* cdir_construye_path(const char* directorio1, const char* directorio2, const char* nombre) {
    return i_path_construido(directorio1, directorio2, nombre);
}

// ---- Abbreviation for display

wchar_t* cdir_ruta_abreviada_con_logitud_maxima_u(const wchar_t* ruta, unsigned short maximo) {
    i_comprueba(ruta != nullptr, "(ruta) != NULL");
    return i_ruta_abreviada(a_vista(ruta), maximo).suelta();
}

wchar_t* cdir_nombre_fichero_abreviado_UNICODE(const wchar_t* nombre) {
    const bool hay_nombre = i_comprueba(nombre != nullptr, "(nombre) != NULL");
    return hay_nombre ? i_nombre_fichero_abreviado(a_vista(nombre)).suelta() : nuevo_texto(vista_w());
}
