// See listas_arbol.hpp.
#include "listings/listas_arbol.hpp"

#include "listings/recorrido.hpp"
#include "paths/componentes.hpp"

namespace interno {

arbol_de_listas::~arbol_de_listas() {
    for (ListaFicheros_u& lista : listas_) {
        i_libera_lista<wchar_t>(lista);  // GCOVR_EXCL_LINE: no walk is given up half-way
    }
}

void arbol_de_listas::anade(vista_w directorio, nombres_en_curso<wchar_t>& ficheros) {
    ListaFicheros_u lista = {};
    ficheros.entrega(lista);
    lista.path = i_path_de_lista<wchar_t>({}, directorio).suelta();
    listas_.anade(lista);
}

namespace {

// The base without one final separator, as its record shows it; one that is only a separator is the root.
vista_w i_base_mostrada(vista_w dada) noexcept {
    return dada.substr(0, dada.size() - (dada.size() > 1 && acaba_en(dada, L"\\") ? 1 : 0));
}

// The base as it is walked: with the separator that the root of a drive or of a volume is nothing without.
cadena_w i_base_de_recorrido(vista_w dada) {
    const vista_w mostrada = i_base_mostrada(dada);
    const bool lo_lleva = mostrada.size() < dada.size() && !acaba_en_separador(mostrada);
    return concatena<wchar_t>({mostrada, lo_lleva || es_unidad_sola(dada) ? vista_w(L"\\") : vista_w()});
}

}  // namespace

arbol_de_listas i_lista_arbol(vista_w dada, const filtro_extension& filtro, registros cuales) {
    arbol_de_listas arbol;
    const cadena_w texto = i_base_de_recorrido(dada);
    const vista_w base = i_base_mostrada(dada);
    const raiz_de_recorrido raiz(texto.c_str());
    recorrido directorios(raiz, {i_compara_nombres_de_lista, true});
    nombres_en_curso<wchar_t> ficheros;
    const auto toma = [&](const entrada_leida& entrada) {
        if (entrada.es_directorio()) {
            return !empieza_por(entrada.nombre, L".") &&
                   !i_es_de_enlace(entrada.atributos, entrada.reanalisis);
        }
        if (filtro.admite(entrada.nombre)) {
            ficheros.anade(cadena_w(entrada.nombre));
        }
        return false;
    };
    const auto anota = [&](vista_w directorio) {
        ficheros.ordena();
        if (cuales == registros::todos || ficheros.num() > 0) {
            arbol.anade(directorio, ficheros);
        }
    };
    const bool hay_base = i_se_ha_entrado(directorios.entra_en_raiz(toma));
    anota(base);
    while (hay_base && (directorios.queda_hijo() || !directorios.en_la_raiz())) {
        if (!directorios.queda_hijo()) {
            directorios.sale();
            continue;
        }
        const llegada como = directorios.entra_en_hijo(toma);
        if (i_se_ha_entrado(como)) {
            anota(directorios.ruta());
        } else if (directorios.codigo() != ERROR_CANT_ACCESS_FILE) {
            anota(directorios.ruta(
                directorios.ultimo_hijo().nombre));  // it may not be read, or is gone already
        }
    }
    return arbol;
}

}  // namespace interno
