// See split_makepath.hpp.
#include "paths/split_makepath.hpp"

#include "cdir_rutas.h"
#include "companions/error_interno.hpp"
#include "companions/unicode.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "paths/nombres_validos.hpp"
#include "paths/path_correcto.hpp"

namespace interno {
void i_muestra_fichero_incorrecto(vista_w path) {
    i_muestra_mensaje(i_msg_53955_fichero_no_correcto, path);
}
void i_muestra_fichero_incorrecto(vista_a path) {
    i_muestra_mensaje(i_msg_53955_fichero_no_correcto, path);
}

namespace {

// Where the text first stands in another as characters of it; `npos` when nowhere.
template <class C>
std::size_t i_busca(vista<C> texto, vista<C> buscado) noexcept {
    std::size_t i = texto.find(buscado);
    while (i != vista<C>::npos &&
           !(empieza_caracter(texto, i) && empieza_caracter(texto, i + buscado.size()))) {
        i = texto.find(buscado, i + 1);
    }
    return i;
}

template <class C>
std::size_t i_fin_de_componente(vista<C> texto, std::size_t desde) noexcept {
    while (desde < texto.size() && !(es_separador(texto[desde]) && empieza_caracter(texto, desde))) {
        ++desde;
    }
    return desde;
}

// Of a directory that begins with two backslashes: the length of its "\\server\share", in the wide flavour also of a
// "\\server\" without its last separator; 0 when it is neither.
template <class C>
std::size_t i_longitud_de_recurso(vista<C> directorio) noexcept {
    const std::size_t maquina = i_fin_de_componente(directorio, 2);
    if (maquina == 2 || maquina == directorio.size() || !es_barra(directorio[maquina])) {
        return 0;
    }
    const std::size_t recurso = i_fin_de_componente(directorio, maquina + 1);
    if (recurso > maquina + 1) {
        return recurso;
    }
    return es_ancho<C> && recurso == directorio.size() ? maquina : 0;
}

}  // namespace

// The drive of a UNC path is "\\server\share". The wide flavour does without a share, the 8-bit one reports it
// and keeps the separator before it.
template <class C>
void division<C>::i_toma_unidad_unc() {
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
        solo_maquina = concatena<C>({nombre, extension});
        maquina = solo_maquina.ver();
        nombre = extension = directorio = {};
    }
    if constexpr (es_ancho<C>) {
        i_comprueba_con(!maquina.empty(), "maquina!=NULL", directorio_entero);
    } else {
        i_comprueba(!maquina.empty(), "(maquina) != NULL");
        i_comprueba(!recurso.empty(), "(recurso) != NULL");
    }
    const bool con_barra = !es_ancho<C> || !recurso.empty();
    unidad_propia_ =
        concatena<C>({LITERAL(C, "\\\\"), maquina, con_barra ? LITERAL(C, "\\") : vista<C>(), recurso});
    unidad = unidad_propia_.ver();
    const std::size_t posicion = i_busca(directorio, unidad);
    if (posicion != vista<C>::npos) {
        directorio_propio_ =
            concatena<C>({directorio.substr(0, posicion), directorio.substr(posicion + unidad.size())});
        directorio = directorio_propio_.ver();
    }
}

template class division<char>;
template class division<wchar_t>;

template <class C>
cadena<C> i_makepath(vista<C> unidad, std::type_identity_t<vista<C>> directorio,
                     std::type_identity_t<vista<C>> nombre, std::type_identity_t<vista<C>> extension) {
    i_comprueba(unidad.data() != nullptr || directorio.data() != nullptr || nombre.data() != nullptr ||
                    extension.data() != nullptr,
                "drive_path != NULL || dir_path != NULL || fname_path != NULL || ext_path != NULL");
    i_comprueba(extension.data() == nullptr || nombre.data() != nullptr, "fname_path != NULL");
    if (unidad.size() < 3 || !empieza_por(unidad, LITERAL(C, "\\\\"))) {
        return crt_makepath(unidad, directorio, nombre, extension);
    }
    // A share stands in front of the directory with exactly one separator between them, and of the name.
    if (!directorio.empty() && es_separador(directorio.front())) {
        directorio.remove_prefix(1);
    }
    if (!nombre.empty() && nombre.front() == C('\\')) {
        nombre.remove_prefix(1);
    }
    return i_compone_piezas(unidad, acaba_en_separador(unidad) ? vista<C>() : LITERAL(C, "\\"), directorio,
                            nombre, extension);
}

namespace {

template <class C>
cadena<C> i_compuesto(const trozos_de_ruta<C>& piezas) {
    return i_makepath(piezas.unidad, piezas.directorio, piezas.nombre, piezas.extension);
}

template <class C>
bool i_puede_ser_vacio(const trozos_de_ruta<C>& piezas) noexcept {
    const bool delante_dado = piezas.unidad.data() != nullptr || piezas.directorio.data() != nullptr;
    return delante_dado && piezas.nombre.data() == nullptr && piezas.extension.data() == nullptr;
}

}  // namespace

template <class C>
cadena<C> i_split_make_path(vista<C> path, unsigned mascara) {
    const path_juzgado<C> comprobado = i_comprueba_fichero(path);
    division<C> piezas(comprobado);
    i_junta_extension_con_blanco(piezas);
    // A piece that is kept counts as given even when it is empty.
    const auto pieza = [&](unsigned bit, vista<C> texto) {
        return (mascara & bit) == 0 ? vista<C>() : texto.data() == nullptr ? LITERAL(C, "") : texto;
    };
    return i_makepath<C>(
        pieza(CDIR_PIEZA_UNIDAD, piezas.unidad), pieza(CDIR_PIEZA_DIRECTORIO, piezas.directorio),
        pieza(CDIR_PIEZA_NOMBRE_BASE, piezas.nombre), pieza(CDIR_PIEZA_EXTENSION, piezas.extension));
}

cadena_w i_makepath_correcto_UNICODE(trozos_de_ruta<wchar_t> piezas) {
    const bool puede_ser_vacio = i_puede_ser_vacio(piezas);
    cadena_w path = i_compuesto(piezas);
    if (i_path_correcto_UNICODE(path.ver(), puede_ser_vacio).correcto) {
        return path;
    }
    // A second attempt with the base name repaired; it is returned whatever its check says.
    const cadena_w valido =
        piezas.nombre.data() == nullptr ? cadena_w() : i_nombre_base_reparado(piezas.nombre);
    piezas.nombre = valido.ver();
    path = i_compuesto(piezas);
    i_comprueba_con(i_path_correcto_UNICODE(path.ver(), puede_ser_vacio).correcto,
                    "i_path_correcto_UNICODE( pathCompleto, puede_ser_vacio, FALSO, NULL, NULL) == CIERTO",
                    path.ver());
    return path;
}

cadena_a i_makepath_correcto(const trozos_de_ruta<char>& piezas) {
    cadena_a path = i_compuesto(piezas);
    i_comprueba_con(i_path_correcto(path.ver(), i_puede_ser_vacio(piezas)).correcto,
                    "i_path_correcto( pathCompleto, puede_ser_vacio, FALSO, NULL) == CIERTO", path.ver());
    return path;
}

template <class C>
cadena<C> i_makepath_con_comodines(const trozos_de_ruta<C>& piezas) {
    cadena<C> path = i_compuesto(piezas);
    i_comprueba_con(i_juzga_con_comodines(path.ver()).juicio.correcto,
                    es_ancho<C> ? "i_path_correcto_con_comodines_UNICODE(pathCompleto, NULL) == CIERTO"
                                : "i_path_correcto_con_comodines(pathCompleto, NULL) == CIERTO",
                    path.ver());
    return path;
}

template cadena<char> i_makepath(vista<char>, vista<char>, vista<char>, vista<char>);
template cadena<wchar_t> i_makepath(vista<wchar_t>, vista<wchar_t>, vista<wchar_t>, vista<wchar_t>);
template cadena<char> i_makepath_con_comodines(const trozos_de_ruta<char>&);
template cadena<wchar_t> i_makepath_con_comodines(const trozos_de_ruta<wchar_t>&);
template cadena<char> i_split_make_path(vista<char>, unsigned);
template cadena<wchar_t> i_split_make_path(vista<wchar_t>, unsigned);

}  // namespace interno
