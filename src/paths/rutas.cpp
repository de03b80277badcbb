// See rutas.hpp.
#include "paths/rutas.hpp"

#include "companions/error_interno.hpp"
#include "companions/plataforma.hpp"
#include "paths/split_makepath.hpp"

namespace interno {
namespace {

division<wchar_t> i_division_comprobada(vista_w path) {
    const path_juzgado<wchar_t> comprobado = i_comprueba_fichero(path);
    return division<wchar_t>(comprobado);
}

bool i_empieza_por_barra(vista_w texto) noexcept {
    return empieza_por(texto, L"\\");
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
    // The checker refuses most final dots, and none changes the drive.
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

cadena_w i_ruta_absoluta(vista_w base, vista_w ruta) noexcept {
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

}  // namespace interno
