#include "comodines.hpp"

#include <set>

#include "consola.hpp"
#include "directorios.hpp"
#include "recorrido.hpp"
#include "textos.hpp"

namespace mando {

std::vector<std::wstring> expande(const std::wstring& patron, que_valen cuales) {
    const size_t fin = patron.find_last_of(L"\\/:");
    const std::wstring delante = fin == patron.npos ? L"" : patron.substr(0, fin + 1);
    const std::wstring nombre = fin == patron.npos ? patron : patron.substr(fin + 1);
    if (es_patron(delante)) {
        throw fallo{di("'%1': only the last part of a path may be a pattern", patron)};
    }
    const std::wstring directorio = delante.empty() ? L"." : delante;
    comprueba_directorio(directorio);
    std::vector<std::wstring> halladas;
    for (const entrada& e : lee_con_progreso(directorio).entradas) {
        if ((cuales == que_valen::todo || !e.es_directorio) && cumple_patron(e.nombre, nombre)) {
            halladas.push_back(delante + e.nombre);
        }
    }
    return halladas;
}

rutas_dadas rutas_expandidas(const std::vector<std::wstring>& escritas, que_valen cuales) {
    rutas_dadas dadas;
    std::set<std::wstring> ya;
    for (const std::wstring& ruta : escritas) {
        if (!es_patron(ruta)) {
            if (ya.insert(ruta).second) {
                dadas.rutas.push_back(ruta);
            }
            continue;
        }
        dadas.hubo_patron = true;
        const std::vector<std::wstring> halladas = expande(ruta, cuales);
        if (halladas.empty()) {
            throw fallo{cuales == que_valen::ficheros ? di("no file matches '%1'", ruta)
                                                      : di("nothing matches '%1'", ruta)};
        }
        for (const std::wstring& hallada : halladas) {
            if (ya.insert(hallada).second) {
                dadas.rutas.push_back(hallada);
            }
        }
    }
    return dadas;
}

rutas_dadas rutas_de(const peticion& p, que_valen cuales) {
    return rutas_expandidas(p.argumentos_o_entrada(), cuales);
}

void rechaza_patron(const std::wstring& ruta) {
    if (es_patron(ruta)) {
        throw fallo{di("'%1' is a pattern; one path is wanted here", ruta)};
    }
}

void di_cuales(const std::vector<std::wstring>& rutas) {
    constexpr size_t a_la_vista_caben = 10;
    for (size_t i = 0; i < std::min(rutas.size(), a_la_vista_caben); ++i) {
        errores().escribe("  ").linea(std::wstring_view(a_la_vista(rutas[i])));
    }
    if (rutas.size() > a_la_vista_caben) {
        errores().escribe("  ").linea(di("and %1 more", con_miles(rutas.size() - a_la_vista_caben)));
    }
}

}  // namespace mando
