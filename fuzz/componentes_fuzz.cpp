// The pieces of a path, one at a time, in both flavours against the models. Lines: the path, another extension (may be
// NULL).
#include "paths/componentes.hpp"

#include "arnes.hpp"
#include "cdir.h"
#include "lumodir.h"
#include "modelos/componentes.hpp"

using namespace arnes;

namespace {

template <class C>
struct entradas;
template <>
struct entradas<wchar_t> {
    static constexpr auto nombre_base = cdir_nombre_base_fichero_UNICODE;
    static constexpr auto extension = cdir_extension_fichero_UNICODE;
    static constexpr auto nombre_y_ext = cdir_nombre_y_ext_fichero_UNICODE;
    static constexpr auto tras_barra = cdir_nombre_de_fichero_suprimiendo_path_UNICODE;
    static constexpr auto directorio = cdir_ruta_acceso_directorio_fichero_UNICODE;
    static constexpr auto sin_extension = cdir_ruta_y_nombre_fichero_sin_extension_UNICODE;
    static constexpr auto con_ext = cdir_nombre_fichero_con_ext_UNICODE;
    static constexpr auto directorio_y_nombre = lumodir_directorio_y_nombre_base_fichero_UNICODE;
};
template <>
struct entradas<char> {
    static constexpr auto nombre_base = cdir_nombre_base_fichero;
    static constexpr auto extension = cdir_extension_fichero;
    static constexpr auto nombre_y_ext = cdir_nombre_y_ext_fichero;
    static constexpr auto tras_barra = cdir_nombre_de_fichero_suprimiendo_path;
    static constexpr auto directorio = cdir_ruta_acceso_directorio_fichero;
    static constexpr auto sin_extension = cdir_ruta_y_nombre_fichero_sin_extension;
    static constexpr auto con_ext = cdir_nombre_fichero_con_ext;
    static constexpr auto directorio_y_nombre = lumodir_directorio_y_nombre_base_fichero;
};

template <class C>
void compara(const modelos::texto<C>& ruta, const std::optional<modelos::texto<C>>& ext) {
    using T = modelos::leido<C>;
    using yo = entradas<C>;
    const T leida = modelos::lee(ruta);
    const modelos::corte<T> c = modelos::corta_con_comodines(leida);
    const justo<C> texto(ruta);
    const quiza_justo<C> otra(ext);
    EXIGE_IGUAL(toma(yo::nombre_base(texto)), modelos::escribe(c.p.nombre));
    EXIGE_IGUAL(informes(), c.informes);
    EXIGE_IGUAL(toma(yo::nombre_y_ext(texto)), modelos::escribe(c.p.nombre + c.p.extension));
    EXIGE_IGUAL(informes(), c.informes);
    EXIGE_IGUAL(toma(yo::extension(texto)), modelos::escribe(modelos::extension_sin_punto(c.p)));
    EXIGE_IGUAL(informes(), modelos::informes_de_extension(leida, c.informes));
    EXIGE_IGUAL(toma(yo::sin_extension(texto)), modelos::escribe(modelos::con_extension(c.p, T())));
    EXIGE_IGUAL(informes(), c.informes);
    const T nueva = ext ? modelos::lee(*ext) : T();
    EXIGE_IGUAL(toma(yo::con_ext(texto, otra)), modelos::escribe(modelos::con_extension(c.p, nueva)));
    EXIGE_IGUAL(informes(), c.informes);

    const std::vector<std::string> vacia(ruta.empty() ? 1 : 0, "num_caracteres > 0");
    EXIGE_IGUAL(toma(yo::directorio(texto)), modelos::escribe(modelos::directorio_de(leida)));
    EXIGE_IGUAL(informes(), vacia);
    EXIGE_IGUAL(toma(yo::tras_barra(texto)), modelos::escribe(modelos::tras_ultima_barra(leida)));
    EXIGE_IGUAL(informes(), std::vector<std::string>());

    for (unsigned short con_extension = 0; con_extension < 3; ++con_extension) {
        C* directorio = nullptr;
        C* nombre = nullptr;
        yo::directorio_y_nombre(texto, con_extension, &directorio, &nombre);
        EXIGE_IGUAL(toma(directorio), modelos::escribe(modelos::directorio_de(leida)));
        EXIGE_IGUAL(toma(nombre),
                    modelos::escribe(con_extension == 1 ? modelos::tras_ultima_barra(leida) : c.p.nombre));
        std::vector<std::string> esperados = vacia;
        if (con_extension != 1) {
            esperados.insert(esperados.end(), c.informes.begin(), c.informes.end());
        }
        EXIGE_IGUAL(informes(), esperados);
    }
}

// The two that change a variable of the caller's, wide alone.
void compara_variables(const texto_w& ruta, const std::optional<texto_w>& ext) {
    const modelos::corte<texto_w> c = modelos::corta_con_comodines(ruta);
    const quiza_justo<wchar_t> otra(ext);
    wchar_t* variable = interno::cadena_w(interno::vista_w(ruta)).suelta();
    cdir_cambia_extension_nombre_fichero_u(&variable, otra);
    EXIGE_IGUAL(toma(variable), modelos::con_extension(c.p, ext.value_or(texto_w())));
    EXIGE_IGUAL(informes(), c.informes);

    variable = interno::cadena_w(interno::vista_w(ruta)).suelta();
    lumodir_suprime_barra_final_si_hay(&variable);
    const bool hay_barra = !ruta.empty() && ruta.back() == L'\\';
    EXIGE_IGUAL(toma(variable), ruta.substr(0, ruta.size() - (hay_barra ? 1 : 0)));
    interno::cadena_w duenyo{interno::vista_w(ruta)};
    interno::i_suprime_barra_final_si_hay(duenyo);
    EXIGE_IGUAL(duenyo.size(), ruta.size() - (hay_barra ? 1u : 0u));
}

}  // namespace

void arnes::prueba(entrada& e) {
    const texto_a ruta = e.bytes();
    const std::optional<texto_a> ext = e.bytes_o_null();
    const std::optional<texto_w> ext_w = ext ? std::optional<texto_w>(en_unidades(*ext)) : std::nullopt;
    compara<char>(ruta, ext);
    compara<wchar_t>(en_unidades(ruta), ext_w);
    compara_variables(en_unidades(ruta), ext_w);
    EXIGE_IGUAL(avisos(), std::vector<std::string>());
}
