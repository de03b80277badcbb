// A model of abbreviated paths that follows the rules step by step with signed numbers and lists of texts.
#pragma once

#include <algorithm>

#include "modelos/rutas.hpp"

namespace modelos {

inline std::vector<texto_w> componentes_hasta_vacio(texto_w resto) {
    std::vector<texto_w> componentes;
    for (;;) {
        if (!resto.empty() && (resto[0] == L'\\' || resto[0] == L'/')) {
            resto.erase(0, 1);
        }
        const wchar_t corte = resto.find(L'\\') != texto_w::npos ? L'\\' : L'/';
        const texto_w componente = resto.substr(0, resto.find(corte));
        if (componente.empty()) {
            return componentes;
        }
        componentes.push_back(componente);
        resto.erase(0, componente.size());
    }
}

inline texto_w directorio_abreviado(const texto_w& directorio, long D, long E,
                                    std::vector<std::string>& informes) {
    const auto exige = [&](bool condicion, const char* expresion) {
        if (!condicion) {
            informes.push_back(expresion);
        }
    };
    const long T = D - E;
    exige(T > 5, "tam_dir_abreviado > 5");
    exige(T < D, "tam_dir_abreviado < tam_dir_completo");
    const long H = std::max(0L, (T - 3) / 2);
    const long cola = std::max(0L, T - 3 - H);
    const std::vector<texto_w> componentes = componentes_hasta_vacio(directorio);
    const texto_w puntos = L"...";
    texto_w resultado = L"\\";
    long P = 1;
    bool reemplazado = false;
    for (const texto_w& c : componentes) {
        const long n = static_cast<long>(c.size());
        if (P + n + 1 <= H) {
            resultado += c + L"\\";
        } else if (n >= E + 3) {
            resultado = L"\\";
            for (const texto_w& otro : componentes) {
                resultado += (&otro == &c ? puntos : otro) + L"\\";
            }
            reemplazado = true;
            break;
        } else if (!reemplazado) {
            resultado += L"...\\";
            reemplazado = true;
        } else if (P > D - cola) {
            resultado += c + L"\\";
        }
        P += n + 1;
    }
    if (!reemplazado) {
        resultado += L"...\\";
    }
    exige(static_cast<long>(resultado.size()) <= T, "widestr_longitud(dir_abreviado) <= tam_dir_abreviado");
    return resultado;
}

inline texto_w forma_fija(const piezas<texto_w>& p) {
    return p.unidad + L"\\...\\" + p.nombre + p.extension;
}

// `corta` gives the pieces of the path; it is asked only when they are needed.
template <class Corta>
texto_w abreviada(const texto_w& ruta, long maximo, Corta corta, std::vector<std::string>& informes) {
    const long L = static_cast<long>(ruta.size());
    if (L <= maximo) {
        return ruta;
    }
    const piezas<texto_w> p = corta();
    const texto_w fija = forma_fija(p);
    if (static_cast<long>(fija.size()) >= maximo) {
        return fija;
    }
    const long D = static_cast<long>(p.directorio.size());
    const long E = L - maximo;
    if (D <= 5) {
        return ruta;
    }
    return D > E ? p.unidad + directorio_abreviado(p.directorio, D, E, informes) + p.nombre + p.extension
                 : fija;
}

}  // namespace modelos
