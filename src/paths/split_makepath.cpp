// See split_makepath.hpp.
#include "paths/split_makepath.hpp"

#include "cdir.h"
#include "companions/error_interno.hpp"
#include "companions/unicode.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "paths/nombres_validos.hpp"
#include "paths/path_correcto.hpp"

namespace lumodir {
namespace {

// One name for the check of either flavour.
unsigned short i_correcto(vista_w path, unsigned short puede_ser_vacio, unsigned short* es_unc) {
    return i_path_correcto_UNICODE(path, puede_ser_vacio, FALSO, es_unc, nullptr);
}
unsigned short i_correcto(vista_a path, unsigned short puede_ser_vacio, unsigned short* es_unc) {
    return i_path_correcto(path, puede_ser_vacio, FALSO, es_unc);
}
unsigned short i_correcto_con_comodines(vista_w path, unsigned short* es_unc) {
    return i_path_correcto_con_comodines_UNICODE(path, es_unc);
}
unsigned short i_correcto_con_comodines(vista_a path, unsigned short* es_unc) {
    return i_path_correcto_con_comodines(path, es_unc);
}

void i_muestra_fichero_incorrecto(vista_w path) {
    i_muestra_mensaje(i_msg_53955_fichero_no_correcto, path);
}
void i_muestra_fichero_incorrecto(vista_a path) {
    i_muestra_mensaje(i_msg_53955_fichero_no_correcto, a_utf16(path).ver());
}

// Where the text first stands in another as characters of it; `npos` when nowhere.
template <class C>
std::size_t i_busca(vista<C> texto, vista<C> buscado) noexcept {
    std::size_t donde = texto.find(buscado);
    while (donde != vista<C>::npos &&
           !(empieza_caracter(texto, donde) && empieza_caracter(texto, donde + buscado.size()))) {
        donde = texto.find(buscado, donde + 1);
    }
    return donde;
}

template <class C>
std::size_t i_fin_de_componente(vista<C> texto, std::size_t desde) noexcept {
    while (desde < texto.size() && !(es_separador(texto[desde]) && empieza_caracter(texto, desde))) {
        ++desde;
    }
    return desde;
}

// The length of the "\\server\share" that a directory begins with, in the wide flavour also of a "\\server\" without
// its last separator; 0 when it is neither.
template <class C>
std::size_t i_longitud_de_recurso(vista<C> directorio) noexcept {
    if (!empieza_por(directorio, LITERAL(C, "\\\\"))) {
        return 0;
    }
    const std::size_t maquina = i_fin_de_componente(directorio, 2);
    if (maquina == 2 || maquina == directorio.size() || !es_barra(directorio[maquina])) {
        return 0;
    }
    const std::size_t recurso = i_fin_de_componente(directorio, maquina + 1);
    if (recurso > maquina + 1) {
        return recurso;
    }
    return std::is_same_v<C, wchar_t> && recurso == directorio.size() ? maquina : 0;
}

}  // namespace

// The drive of a UNC path is "\\server\share". The wide flavour does without a share, the 8-bit one reports it
// and keeps the separator before it.
template <class C>
void division<C>::i_toma_unidad_unc(lugar donde) {
    constexpr bool ancha = std::is_same_v<C, wchar_t>;
    if (const std::size_t longitud = i_longitud_de_recurso(directorio); longitud > 0) {
        unidad = directorio.substr(0, longitud);
        directorio.remove_prefix(longitud);
        return;
    }
    const vista<C> directorio_entero = directorio;
    vista<C> maquina = extrae_token(directorio, 1, LITERAL(C, "\\"));
    const vista<C> recurso = extrae_token(directorio, 2, LITERAL(C, "\\/"));
    cadena<C> solo_maquina;
    if (unidad.empty() && directorio == LITERAL(C, "\\\\")) {
        // The path is its server and nothing more. `\\\name` and `C:\\name` are no servers: their name stays.
        solo_maquina = concatena<C>({nombre, extension}, donde);
        maquina = solo_maquina.ver();
        nombre = extension = directorio = {};
    }
    if constexpr (ancha) {
        i_comprueba_con(!maquina.empty(), "maquina!=NULL", directorio_entero, donde);
    } else {
        i_comprueba(!maquina.empty(), "(maquina) != NULL", donde);
        i_comprueba(!recurso.empty(), "(recurso) != NULL", donde);
    }
    const bool con_barra = !ancha || !recurso.empty();
    unidad_propia_ = concatena<C>(
        {LITERAL(C, "\\\\"), maquina, con_barra ? LITERAL(C, "\\") : vista<C>(), recurso}, donde);
    unidad = unidad_propia_.ver();
    const std::size_t donde_esta = i_busca(directorio, unidad);
    if (donde_esta == 0) {
        directorio.remove_prefix(unidad.size());
    } else if (donde_esta != vista<C>::npos) {
        directorio_propio_ = concatena<C>(
            {directorio.substr(0, donde_esta), directorio.substr(donde_esta + unidad.size())}, donde);
        directorio = directorio_propio_.ver();
    }
}

template class division<char>;
template class division<wchar_t>;

namespace {

template <class C>
path_juzgado<C> i_juzga_y_muestra(vista<C> path) {
    path_juzgado<C> juzgado = i_juzga(path);
    if (!juzgado.correcto) {
        i_muestra_fichero_incorrecto(path);
    }
    return juzgado;
}

template <class C>
path_juzgado<C> i_juzga_e_informa(vista<C> path, lugar donde) {
    path_juzgado<C> juzgado = i_juzga_con_comodines(path);
    i_comprueba_con(juzgado.correcto, "pathCorrecto == CIERTO", path, donde);
    return juzgado;
}

}  // namespace

template <class C>
path_juzgado<C> i_comprueba_fichero(vista<C> path, lugar donde) {
    return i_comprueba(path.data() != nullptr, "(path) != NULL", donde)
               ? i_juzga_y_muestra(recorta_derecha(path))
               : path_juzgado<C>();
}

template <class C>
path_juzgado<C> i_comprueba_con_comodines(vista<C> path, lugar donde) {
    return i_comprueba(path.data() != nullptr, "(path) != NULL", donde)
               ? i_juzga_e_informa(recorta_derecha(path), donde)
               : path_juzgado<C>();
}

template <class C>
cadena<C> i_makepath(vista<C> unidad, std::type_identity_t<vista<C>> directorio,
                     std::type_identity_t<vista<C>> nombre, std::type_identity_t<vista<C>> extension,
                     lugar donde) {
    i_comprueba(unidad.data() != nullptr || directorio.data() != nullptr || nombre.data() != nullptr ||
                    extension.data() != nullptr,
                "drive_path != NULL || dir_path != NULL || fname_path != NULL || ext_path != NULL", donde);
    i_comprueba(extension.data() == nullptr || nombre.data() != nullptr, "fname_path != NULL", donde);
    if (unidad.size() < 3 || !empieza_por(unidad, LITERAL(C, "\\\\"))) {
        return crt_makepath(unidad, directorio, nombre, extension, donde);
    }
    // A share stands in front of the directory with exactly one separator between them, and of the name.
    if (!directorio.empty() && es_separador(directorio.front())) {
        directorio.remove_prefix(1);
    }
    if (!nombre.empty() && nombre.front() == C('\\')) {
        nombre.remove_prefix(1);
    }
    const vista<C> barra = LITERAL(C, "\\");
    const bool barra_tras_unidad = !acaba_en_separador(unidad);
    const bool barra_tras_directorio = !directorio.empty() && !acaba_en_separador(directorio);
    const bool falta_punto = !extension.empty() && extension.front() != C('.');
    return concatena<C>({unidad, barra_tras_unidad ? barra : vista<C>(), directorio,
                         barra_tras_directorio ? barra : vista<C>(), nombre,
                         falta_punto ? LITERAL(C, ".") : vista<C>(), extension},
                        donde);
}

template path_juzgado<char> i_comprueba_fichero(vista<char>, lugar);
template path_juzgado<wchar_t> i_comprueba_fichero(vista<wchar_t>, lugar);
template path_juzgado<char> i_comprueba_con_comodines(vista<char>, lugar);
template path_juzgado<wchar_t> i_comprueba_con_comodines(vista<wchar_t>, lugar);
template cadena<char> i_makepath(vista<char>, vista<char>, vista<char>, vista<char>, lugar);
template cadena<wchar_t> i_makepath(vista<wchar_t>, vista<wchar_t>, vista<wchar_t>, vista<wchar_t>, lugar);

namespace {

// Hands out the wanted pieces as new strings.
template <class C>
void i_entrega(const path_juzgado<C>& comprobado, C** unidad, C** directorio, C** nombre, C** extension,
               lugar donde) {
    const division<C> piezas(comprobado, donde);
    const bool junta = nombre != nullptr && extension != nullptr && piezas.extension_es_del_nombre();
    entrega_copias<C>({{unidad, piezas.unidad},
                       {directorio, piezas.directorio},
                       {nombre, junta ? piezas.nombre_y_extension() : piezas.nombre},
                       {extension, junta ? vista<C>() : piezas.extension}},
                      donde);
}

enum mascara_piezas : unsigned short {
    con_unidad = 1,
    con_directorio = 2,
    con_nombre = 4,
    con_extension = 8
};

template <class C>
cadena<C> i_split_make_path(const C* path, unsigned short mascara, lugar donde) {
    const path_juzgado<C> comprobado = i_comprueba_fichero(a_vista(path), donde);
    const division<C> piezas(comprobado, donde);
    const bool junta = piezas.extension_es_del_nombre();
    // A piece that is kept counts as given even when it is empty.
    const auto pieza = [&](unsigned short bit, vista<C> texto) {
        return (mascara & bit) == 0 ? vista<C>() : texto.data() == nullptr ? LITERAL(C, "") : texto;
    };
    return i_makepath<C>(pieza(con_unidad, piezas.unidad), pieza(con_directorio, piezas.directorio),
                         pieza(con_nombre, junta ? piezas.nombre_y_extension() : piezas.nombre),
                         pieza(con_extension, junta ? vista<C>() : piezas.extension), donde);
}

template <class C>
unsigned short i_puede_ser_vacio(const C* unidad, const C* directorio, const C* nombre,
                                 const C* extension) noexcept {
    const bool lugar_dado = unidad != nullptr || directorio != nullptr;
    return lugar_dado && nombre == nullptr && extension == nullptr ? CIERTO : FALSO;
}

template <class C>
C* i_makepath_con_comodines(const C* unidad, const C* directorio, const C* nombre, const C* extension,
                            const char* expresion, lugar donde) {
    cadena<C> path =
        i_makepath(a_vista(unidad), a_vista(directorio), a_vista(nombre), a_vista(extension), donde);
    i_comprueba_con(i_correcto_con_comodines(path.ver(), nullptr) == CIERTO, expresion, path.ver(), donde);
    return path.suelta();
}

}  // namespace
}  // namespace lumodir

using namespace lumodir;

void cdir_splitpath_con_comprobacion_UNICODE(const wchar_t* path, wchar_t** drive, wchar_t** dir,
                                             wchar_t** fname, wchar_t** ext) {
    i_entrega(i_comprueba_fichero(a_vista(path)), drive, dir, fname, ext, lugar::aqui());
}

void cdir_splitpath_con_comprobacion(const char* path, char** drive, char** dir, char** fname, char** ext) {
    i_entrega(i_comprueba_fichero(a_vista(path)), drive, dir, fname, ext, lugar::aqui());
}

void cdir_splitpath_con_comodines_UNICODE(const wchar_t* path, wchar_t** drive, wchar_t** dir,
                                          wchar_t** fname, wchar_t** ext) {
    i_entrega(i_comprueba_con_comodines(a_vista(path)), drive, dir, fname, ext, lugar::aqui());
}

void cdir_splitpath_con_comodines(const char* path, char** drive, char** dir, char** fname, char** ext) {
    i_entrega(i_comprueba_con_comodines(a_vista(path)), drive, dir, fname, ext, lugar::aqui());
}

wchar_t* cdir_split_make_path_UNICODE(const wchar_t* path, unsigned short mascara) {
    return i_split_make_path(path, mascara, lugar::aqui()).suelta();
}

char* cdir_split_make_path(const char* path, unsigned short mascara) {
    return i_split_make_path(path, mascara, lugar::aqui()).suelta();
}

wchar_t* cdir_makepath_UNICODE(const wchar_t* drive, const wchar_t* dir, const wchar_t* fname,
                               const wchar_t* ext) {
    const unsigned short puede_ser_vacio = i_puede_ser_vacio(drive, dir, fname, ext);
    cadena_w path = i_makepath(a_vista(drive), a_vista(dir), a_vista(fname), a_vista(ext));
    if (i_correcto(path.ver(), puede_ser_vacio, nullptr) == CIERTO) {
        return path.suelta();
    }
    // A second attempt with the base name repaired; it is returned whatever its check says.
    const cadena_w valido = fname == nullptr ? cadena_w() : i_nombre_base_reparado(a_vista(fname));
    path = i_makepath(a_vista(drive), a_vista(dir), valido.ver(), a_vista(ext));
    i_comprueba_con(i_correcto(path.ver(), puede_ser_vacio, nullptr) == CIERTO,
                    "i_path_correcto_UNICODE( pathCompleto, puede_ser_vacio, FALSO, NULL, NULL) == CIERTO",
                    path.ver());
    return path.suelta();
}

char* cdir_makepath(const char* drive, const char* dir, const char* fname, const char* ext) {
    cadena_a path = i_makepath(a_vista(drive), a_vista(dir), a_vista(fname), a_vista(ext));
    i_comprueba_con(i_correcto(path.ver(), i_puede_ser_vacio(drive, dir, fname, ext), nullptr) == CIERTO,
                    "i_path_correcto( pathCompleto, puede_ser_vacio, FALSO, NULL) == CIERTO", path.ver());
    return path.suelta();
}

wchar_t* cdir_makepath_con_comodines_UNICODE(const wchar_t* drive, const wchar_t* dir, const wchar_t* fname,
                                             const wchar_t* ext) {
    return i_makepath_con_comodines(drive, dir, fname, ext,
                                    "i_path_correcto_con_comodines_UNICODE(pathCompleto, NULL) == CIERTO",
                                    lugar::aqui());
}

char* cdir_makepath_con_comodines(const char* drive, const char* dir, const char* fname, const char* ext) {
    return i_makepath_con_comodines(
        drive, dir, fname, ext, "i_path_correcto_con_comodines(pathCompleto, NULL) == CIERTO", lugar::aqui());
}
