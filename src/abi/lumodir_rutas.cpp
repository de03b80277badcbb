// The exports of lumodir_rutas.h.
#include "lumodir_rutas.h"

#include "abi/exportacion.hpp"
#include "paths/componentes.hpp"
#include "paths/rutas.hpp"

using namespace interno;

namespace {

bool i_hay_base_y_ruta(const wchar_t* base, const wchar_t* ruta) {
    return estan({{base, "(base) != NULL"}, {ruta, "(ruta) != NULL"}});
}

// The name with its extension is cut at "\" alone and not checked, the base name is: callers rely on both.
template <class C>
void i_directorio_y_nombre(const C* ruta, bool con_extension, C** directorio, C** nombre) {
    const vista<C> texto = a_vista(ruta);
    if (!i_comprueba(ruta != nullptr, "(ruta_completa) != NULL")) {
        entrega(directorio, vista<C>());
        entrega(nombre, vista<C>());
        return;
    }
    if (directorio != nullptr) {
        i_comprueba_con(!texto.empty(), "num_caracteres > 0", texto);
        *directorio = nuevo_texto(i_directorio_de_fichero(texto));
    }
    if (nombre != nullptr) {
        *nombre =
            nuevo_texto(con_extension ? i_nombre_tras_ultima_barra(texto) : i_nombre_base_fichero(texto));
    }
}

}  // namespace

void lumodir_directorio_y_nombre_base_fichero_UNICODE(const wchar_t* ruta_completa,
                                                      unsigned short con_extension, wchar_t** directorio,
                                                      wchar_t** nombre) {
    i_directorio_y_nombre(ruta_completa, con_extension == CIERTO, directorio, nombre);
}
void lumodir_directorio_y_nombre_base_fichero(const char* ruta_completa, unsigned short con_extension,
                                              char** directorio, char** nombre) {
    i_directorio_y_nombre(ruta_completa, con_extension == CIERTO, directorio, nombre);
}

void lumodir_suprime_barra_final_si_hay(wchar_t** directorio) {
    if (i_comprueba(directorio != nullptr && *directorio != nullptr, "(directorio) != NULL")) {
        cadena_w suyo = cadena_w::adopta(*directorio);
        i_suprime_barra_final_si_hay(suyo);
        *directorio = suyo.suelta();
    }
}

unsigned short lumodir_ruta_es_absoluta(const wchar_t* ruta) {
    return logico(i_comprueba(ruta != nullptr, "(ruta) != NULL") && i_ruta_es_absoluta(a_vista(ruta)));
}

wchar_t* lumodir_ruta_absoluta_a_relativa(const wchar_t* base, const wchar_t* ruta) {
    return nuevo_texto(i_hay_base_y_ruta(base, ruta) ? i_ruta_relativa(a_vista(base), a_vista(ruta))
                                                     : vista_w());
}

wchar_t* lumodir_ruta_relativa_a_absoluta(const wchar_t* base, const wchar_t* ruta) {
    return i_hay_base_y_ruta(base, ruta) ? i_ruta_absoluta(a_vista(base), a_vista(ruta)).suelta()
                                         : nuevo_texto(vista_w());
}

ArrCADENA_u* lumodir_directorios_del_path(void) {
    return i_directorios_del_path().suelta();
}
