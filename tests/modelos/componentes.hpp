// Models of the pieces that are taken out of a path one at a time.
#pragma once

#include "modelos/corte.hpp"

namespace modelos {

// A path cut after the check that lets wildcards through; what that check and the cut report.
template <class T>
corte<T> corta_con_comodines(const T& ruta) {
    const T limpia = recortado(ruta);
    const juicio j = juzga(sin_comodines(a_w(limpia)));
    corte<T> c = corta_modelo(limpia, j.es_unc);
    if (j.motivo != 0) {
        c.informes.insert(c.informes.begin(), "pathCorrecto == CIERTO");
    }
    return c;
}

// The path with another extension; none when it is empty. Blanks before the extension go.
template <class T>
T con_extension(const piezas<T>& p, const T& extension) {
    std::vector<std::string> ninguno;
    return compone_modelo<T>({p.unidad, p.directorio, recortado(p.nombre), extension}, ninguno);
}

template <class T>
T extension_sin_punto(const piezas<T>& p) {
    return p.extension.empty() || p.extension[0] != '.' ? p.extension : p.extension.substr(1);
}

// What is reported of the path whose extension is asked for, before anything else.
template <class T>
std::vector<std::string> informes_de_extension(const T& ruta, std::vector<std::string> del_corte) {
    const T limpia = recortado(ruta);
    if (limpia.empty()) {
        del_corte.insert(del_corte.begin(), "num_caracteres > 0");
    } else if (limpia.back() == '\\') {
        del_corte.insert(del_corte.begin(), std::string("path_sin_espacios[num_caracteres - 1] != ") +
                                                (std::is_same_v<T, texto_w> ? "L" : "") + R"('\\')");
    }
    return del_corte;
}

template <class T>
T directorio_de(const T& ruta) {
    std::size_t longitud = 0;
    for (std::size_t i = 0; i < ruta.size(); ++i) {
        if (ruta[i] == '\\' || ruta[i] == '/') {
            longitud = i + 1;
        }
    }
    return ruta.substr(0, longitud);
}

template <class T>
T tras_ultima_barra(T ruta) {
    while (ruta.find('\\') != T::npos) {
        ruta = ruta.substr(ruta.find('\\') + 1);
    }
    return ruta;
}

}  // namespace modelos
