// The exports of cdir_listas.h, one template for both flavours of text.
#include "cdir_listas.h"

#include "abi/exportacion.hpp"
#include "companions/unicode.hpp"
#include "listings/listas_ficheros.hpp"
#include "paths/rutas.hpp"
#include "paths/split_makepath.hpp"

using namespace interno;

namespace {

// Clears the record, whatever it held: it is the caller's, and usually has never been written.
template <class L>
bool i_prepara(L* lista, bool hay_argumentos) noexcept {
    if (!i_comprueba(lista != nullptr, "(lista) != NULL")) {
        return false;
    }
    *lista = {};
    return hay_argumentos;
}

template <class C>
bool i_prepara(const C* directorio, const C* patron, lista_ficheros<C>* lista) noexcept {
    return i_prepara(
        lista, estan({{directorio, "(directorio) != NULL"}, {patron, "(path_filtro_generico) != NULL"}}));
}

// The filter is UTF-16 in both flavours.
cadena_w i_filtro_ancho(const char* extension) {
    return utunicode_ANSI_a_UNICODE(extension);
}
vista_w i_filtro_ancho(const wchar_t* extension) noexcept {
    return a_vista(extension);
}

template <class C>
void i_llena_de_ficheros(lista_ficheros<C>& lista, const C* patron, const C* extension) {
    const auto filtro = i_filtro_ancho(extension);
    i_nombres_de_lista(patron, i_es_fichero, filtro_extension(filtro)).entrega(lista);
}

// A view without data is a drive, or an extension of the pattern, that was not given.
template <class C>
void i_lista_ficheros(vista<C> unidad, const C* directorio, const C* nombre,
                      std::type_identity_t<vista<C>> ext, const C* extension, lista_ficheros<C>* lista) {
    if (i_prepara(directorio, nombre, lista)) {
        const vista<C> listado(directorio);
        const cadena<C> patron = i_makepath<C>(unidad, listado, vista<C>(nombre), ext);
        i_llena_de_ficheros(*lista, patron.c_str(), extension);
        lista->path = i_path_de_lista<C>(unidad, listado).suelta();
    }
}

template <class C>
void i_lista_ficheros_en_path_filtro(const C* path_filtro, lista_ficheros<C>* lista) {
    if (i_prepara(lista, i_comprueba(path_filtro != nullptr, "(path_filtro_generico) != NULL"))) {
        i_llena_de_ficheros<C>(*lista, path_filtro, nullptr);
    }
}

template <class C>
void i_lista_subdirectorios(const C* directorio, const C* patron, lista_ficheros<C>* lista) {
    if (i_prepara(directorio, patron, lista)) {
        const vista<C> listado(directorio);
        const cadena<C> path_filtro = i_concatena_directorios<C>(listado, vista<C>(patron));
        i_nombres_de_lista(path_filtro.c_str(), i_es_directorio_sin_punto).entrega(*lista);
        lista->path = i_path_de_lista<C>({}, listado).suelta();
    }
}

template <class C>
void i_vacia(lista_ficheros<C>* lista) noexcept {
    if (i_comprueba(lista != nullptr, "(lista) != NULL")) {
        i_libera_lista<C>(*lista);
    }
}

}  // namespace

void cdir_lista_de_ficheros_UNICODE(const wchar_t* directorio, const wchar_t* extension,
                                    ListaFicheros_u* lista) {
    i_lista_ficheros<wchar_t>({}, directorio, comodin_de_todo_u, {}, extension, lista);
}
void cdir_lista_de_ficheros(const char* directorio, const char* extension, ListaFicheros* lista) {
    i_lista_ficheros<char>({}, directorio, comodin_de_todo, {}, extension, lista);
}

void cdir_lista_de_ficherosFiltro_UNICODE(const wchar_t* directorio, const wchar_t* extension,
                                          const wchar_t* patron, ListaFicheros_u* lista) {
    i_lista_ficheros<wchar_t>({}, directorio, patron, a_vista(extension), extension, lista);
}
void cdir_lista_de_ficherosFiltro(const char* directorio, const char* extension, const char* patron,
                                  ListaFicheros* lista) {
    i_lista_ficheros<char>({}, directorio, patron, a_vista(extension), extension, lista);
}

void cdir_lista_de_ficherosFiltro_en_unidad(const wchar_t* unidad, const wchar_t* directorio,
                                            const wchar_t* extension, const wchar_t* patron,
                                            ListaFicheros_u* lista) {
    i_lista_ficheros<wchar_t>(a_vista(unidad), directorio, patron, a_vista(extension), extension, lista);
}

void cdir_lista_de_ficheros_en_path_filtro_UNICODE(const wchar_t* path_filtro, ListaFicheros_u* lista) {
    i_lista_ficheros_en_path_filtro(path_filtro, lista);
}
void cdir_lista_de_ficheros_en_path_filtro(const char* path_filtro, ListaFicheros* lista) {
    i_lista_ficheros_en_path_filtro(path_filtro, lista);
}

void cdir_lista_de_directorios_UNICODE(const wchar_t* directorio, const wchar_t* patron,
                                       ListaFicheros_u* lista) {
    i_lista_subdirectorios(directorio, patron, lista);
}
void cdir_lista_de_directorios(const char* directorio, const char* patron, ListaFicheros* lista) {
    i_lista_subdirectorios(directorio, patron, lista);
}

void cdir_libera_lista_de_ficheros_UNICODE(ListaFicheros_u* lista) {
    i_vacia<wchar_t>(lista);
}
void cdir_libera_lista_de_ficheros(ListaFicheros* lista) {
    i_vacia<char>(lista);
}
