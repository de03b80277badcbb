// See rutas.hpp.
#include "paths/rutas.hpp"

#include "cdir.h"
#include "companions/error_interno.hpp"
#include "companions/plataforma.hpp"
#include "lumodir.h"
#include "paths/split_makepath.hpp"

namespace lumodir {
namespace {

division<wchar_t> i_division_comprobada(vista_w path) {
    const path_juzgado<wchar_t> comprobado = i_comprueba_fichero(path);
    return division<wchar_t>(comprobado);
}

bool i_empieza_por_barra(vista_w texto) noexcept {
    return !texto.empty() && texto.front() == L'\\';
}

}  // namespace

bool i_ruta_es_absoluta(vista_w ruta) {
    return hay_texto(i_division_comprobada(ruta).unidad) || i_empieza_por_barra(ruta);
}

vista_w i_ruta_relativa(vista_w base, vista_w ruta) {
    if (!hay_texto(ruta) || !hay_texto(base)) {
        return ruta;
    }
    const division<wchar_t> piezas_base = i_division_comprobada(base);
    // The checker refuses most final points, and none changes the drive.
    const division<wchar_t> piezas_ruta =
        i_division_comprobada(ruta.substr(0, ruta.size() - (ruta.back() == L'.' ? 1 : 0)));
    vista_w principio = base;
    if (!hay_texto(piezas_ruta.unidad) && empieza_por(base, piezas_base.unidad)) {
        principio.remove_prefix(piezas_base.unidad.size());
    }
    if (!empieza_por(ruta, principio)) {
        return ruta;
    }
    const vista_w resto = ruta.substr(principio.size());
    return resto.substr(i_empieza_por_barra(resto) ? 1 : 0);
}

cadena_w i_ruta_absoluta(vista_w base, vista_w ruta) {
    if (!hay_texto(ruta) || !hay_texto(base) || i_ruta_es_absoluta(ruta)) {
        return cadena_w(ruta);
    }
    // Only "\" counts here, on either side: "C:\a/" and "./c" give "C:\a/\./c".
    const vista_w barra = base.back() == L'\\' ? vista_w() : vista_w(L"\\");
    return concatena<wchar_t>({base, barra, ruta.substr(empieza_por(ruta, L".\\") ? 2 : 0)});
}

objeto<ArrCADENA_u> i_directorios_del_path() {
    objeto<ArrCADENA_u> lista = objeto<ArrCADENA_u>::crea();
    const cadena_w valor = plataforma::variable_de_entorno(L"PATH");
    vista_w resto = valor.ver();
    while (!resto.empty()) {
        const std::size_t fin = resto.find(L';');
        const vista_w pieza = resto.substr(0, fin);
        // A blank piece is not an empty one: it stays, as an empty text.
        if (!pieza.empty()) {
            lista->anade(cadena_w(recorta_izquierda(recorta_derecha(pieza))));
        }
        resto.remove_prefix(fin == vista_w::npos ? resto.size() : fin + 1);
    }
    return lista;
}

namespace {

// Each one that is missing is reported.
template <class... V>
bool i_hay_directorios(V... directorios) {
    return (0 + ... + (i_comprueba(directorios != nullptr, "(directorio) != NULL") ? 0 : 1)) == 0;
}

template <class C>
C* i_vacia() {
    return cadena<C>(vista<C>()).suelta();
}

template <class C>
C* i_concatenados(const C* directorio1, const C* directorio2) {
    return i_hay_directorios(directorio1, directorio2)
               ? i_concatena_directorios(a_vista(directorio1), a_vista(directorio2)).suelta()
               : i_vacia<C>();
}

template <class C>
C* i_path_construido(const C* directorio1, const C* directorio2, const C* nombre) {
    const bool hay_directorios = i_hay_directorios(directorio1, directorio2);
    return i_comprueba(nombre != nullptr, "(nombre) != NULL") && hay_directorios
               ? i_construye_path(a_vista(directorio1), a_vista(directorio2), a_vista(nombre)).suelta()
               : i_vacia<C>();
}

bool i_hay_base_y_ruta(const wchar_t* base, const wchar_t* ruta) {
    const bool hay_base = i_comprueba(base != nullptr, "(base) != NULL");
    return i_comprueba(ruta != nullptr, "(ruta) != NULL") && hay_base;
}

}  // namespace
}  // namespace lumodir

using namespace lumodir;

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

unsigned short lumodir_ruta_es_absoluta(const wchar_t* ruta) {
    if (!i_comprueba(ruta != nullptr, "(ruta) != NULL")) {
        return FALSO;
    }
    return i_ruta_es_absoluta(a_vista(ruta)) ? CIERTO : FALSO;
}

wchar_t* lumodir_ruta_absoluta_a_relativa(const wchar_t* base, const wchar_t* ruta) {
    return i_hay_base_y_ruta(base, ruta) ? cadena_w(i_ruta_relativa(a_vista(base), a_vista(ruta))).suelta()
                                         : i_vacia<wchar_t>();
}

wchar_t* lumodir_ruta_relativa_a_absoluta(const wchar_t* base, const wchar_t* ruta) {
    return i_hay_base_y_ruta(base, ruta) ? i_ruta_absoluta(a_vista(base), a_vista(ruta)).suelta()
                                         : i_vacia<wchar_t>();
}

ArrCADENA_u* lumodir_directorios_del_path(void) {
    return i_directorios_del_path().suelta();
}
