// Models of the cut of a path into its pieces and of composing one from them, shares and reports included.
#pragma once

#include <optional>

#include "modelos/path.hpp"

namespace modelos {

template <class C>
using texto = std::conditional_t<std::is_same_v<C, wchar_t>, texto_w, texto_a>;

template <class T>
std::vector<T> trozos_entre(const T& t, const char* separadores) {
    std::vector<T> todos(1);
    for (const auto c : t) {
        if (std::string_view(separadores).find(static_cast<char>(c)) != std::string_view::npos && c < 128) {
            todos.emplace_back();
        } else {
            todos.back() += c;
        }
    }
    std::erase_if(todos, [](const T& trozo) { return trozo.empty(); });
    return todos;
}

// ---- the model of the cut

template <class T>
struct corte {
    piezas<T> p;  // before a blank in the extension is looked for
    std::vector<std::string> informes = {};
};

template <class T>
corte<T> corta_modelo(const T& path, bool es_unc) {
    constexpr bool ancha = std::is_same_v<T, texto_w>;
    corte<T> c = {corta_como_el_crt(path)};
    piezas<T>& p = c.p;
    if (p.nombre.empty()) {
        std::swap(p.nombre, p.extension);
    }
    if (!es_unc) {
        return c;
    }
    const T barras = literal<T>("\\\\");
    std::vector<T> maquinas = trozos_entre(p.directorio, "\\");
    const std::vector<T> partes = trozos_entre(p.directorio, "\\/");
    if (p.unidad.empty() && p.directorio == barras) {  // a server alone
        maquinas = {p.nombre + p.extension};
        p = {};
    }
    if (maquinas.empty()) {
        c.informes.push_back(ancha ? "maquina!=NULL" : "(maquina) != NULL");
        maquinas.emplace_back();
    }
    if (!ancha && partes.size() < 2) {
        c.informes.push_back("(recurso) != NULL");
    }
    p.unidad = barras + maquinas[0];
    if (partes.size() >= 2) {
        p.unidad += literal<T>("\\") + partes[1];
    } else if (!ancha) {
        p.unidad += literal<T>("\\");
    }
    p.unidad = releido(p.unidad);
    const std::size_t donde = p.directorio.find(p.unidad);
    if (donde != T::npos) {
        p.directorio.erase(donde, p.unidad.size());
    }
    return c;
}

template <class T>
piezas<T> con_blancos_juntos(piezas<T> p) {
    if (p.extension.find(' ') != T::npos) {
        p.nombre += p.extension;
        p.extension.clear();
    }
    return p;
}

// ---- the model of composing

template <class T>
struct dadas {
    std::optional<T> unidad, directorio, nombre, extension;
};

inline const char* const ninguna =
    "drive_path != NULL || dir_path != NULL || fname_path != NULL || ext_path != NULL";

template <class T>
T compone_modelo(const dadas<T>& d, std::vector<std::string>& informes) {
    if (!d.unidad && !d.directorio && !d.nombre && !d.extension) {
        informes.push_back(ninguna);
    }
    if (d.extension && !d.nombre) {
        informes.push_back("fname_path != NULL");
    }
    const T unidad = d.unidad.value_or(T());
    const T directorio = d.directorio.value_or(T());
    T nombre = d.nombre.value_or(T());
    const T extension = d.extension.value_or(T());
    const auto es_separador = [](auto c) { return c == '\\' || c == '/'; };
    if (unidad.size() < 3 || unidad.substr(0, 2) != literal<T>("\\\\")) {
        return compone_como_el_crt(unidad, directorio, nombre, extension);
    }
    T base = unidad;
    if (!es_separador(base.back())) {
        base += '\\';
    }
    base += !directorio.empty() && es_separador(directorio[0]) ? directorio.substr(1) : directorio;
    if (!nombre.empty() && nombre[0] == '\\') {
        nombre = nombre.substr(1);
    }
    return compone_como_el_crt(T(), base, nombre, extension);
}

}  // namespace modelos
