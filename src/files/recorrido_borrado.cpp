// See recorrido_borrado.hpp.
#include "files/recorrido_borrado.hpp"

namespace interno {
namespace {

bool i_interesa(vista_w nombre, subdirectorios cuales) noexcept {
    return cuales == subdirectorios::todos ||
           (cuales == subdirectorios::sin_punto_inicial && !empieza_por(nombre, L"."));
}

bool i_recorre_ficheros(recorrido& arbol, visitante_borrado& visitante) {
    const entradas_guardadas& ficheros = arbol.ficheros();
    for (std::size_t i = 0; i < ficheros.num(); ++i) {
        entrada_de_arbol fichero(arbol, ficheros[i]);
        if (!visitante.fichero(fichero)) {
            return false;
        }
    }
    return true;
}

// Windows cuts blanks and dots where a path ends, so that it names another directory than the text says. With the
// prefix nothing is cut.
bool i_se_recorta(vista_w raiz) noexcept {
    const vista_w nombre = raiz.substr(raiz.find_last_of(L"\\/:") + 1);
    return !empieza_por(raiz, L"\\\\?\\") && !i_es_punto_o_dos(nombre) &&
           sin_final_recortable(nombre).size() < nombre.size();
}

}  // namespace

const wchar_t* entrada_de_arbol::texto() {
    if (ruta_.es_nula()) {
        ruta_ = arbol_.ruta(entrada_.nombre);
    }
    return ruta_.c_str();
}

desenlace raiz_de_arbol::borra() {
    if (i_se_ha_entrado(como_)) {
        const DWORD codigo = arbol_.borra_raiz();
        return {codigo == ERROR_SUCCESS, codigo};
    }
    if (como_ == llegada::falta || i_se_recorta(vista_w(arbol_.raiz().ruta().dada()))) {
        return {false, arbol_.codigo()};
    }
    return lmlongpath_RemoveDirectoryW(arbol_.raiz().ruta());  // a link goes itself
}

existencia raiz_de_arbol::mira() {
    return como_ == llegada::falta
               ? existencia{existencia::estado::falta, arbol_.codigo(), INVALID_FILE_ATTRIBUTES}
               : i_existencia(arbol_.raiz().ruta());
}

llegada i_recorre_para_borrar(recorrido& arbol, subdirectorios cuales, visitante_borrado& visitante) {
    const auto toma = [cuales](const entrada_leida& entrada) {
        return !entrada.es_directorio() || i_interesa(entrada.nombre, cuales);
    };
    if (i_se_recorta(vista_w(arbol.raiz().ruta().dada()))) {
        return i_existencia(arbol.raiz().ruta()).falta() ? llegada::falta : llegada::cerrado;
    }
    const llegada raiz = arbol.entra_en_raiz(toma);
    if (!i_se_ha_entrado(raiz) || !i_recorre_ficheros(arbol, visitante)) {
        return raiz;
    }
    while (arbol.queda_hijo() || !arbol.en_la_raiz()) {
        llegada como = llegada::leido;
        if (arbol.queda_hijo()) {
            if (!visitante.sigue()) {
                return raiz;
            }
            como = arbol.entra_en_hijo(toma);
            if (i_se_ha_entrado(como)) {
                if (!i_recorre_ficheros(arbol, visitante)) {
                    return raiz;
                }
                continue;
            }
        } else {
            como = arbol.sale();
        }
        entrada_de_arbol directorio(arbol, arbol.ultimo_hijo());
        visitante.subdirectorio(directorio, como);
    }
    return raiz;
}

}  // namespace interno
