// Cutting and composing in both flavours against the models: pieces, reports, warnings; what is cut and joined again
// gives the path, and so does what is cut and composed. Lines: which pieces are wanted (a number of four bits), the
// path; then drive, directory, base name and extension of another path, each of which may be NULL.
#include "paths/split_makepath.hpp"

#include "arnes.hpp"
#include "modelos/corte.hpp"
#include "modelos/entradas_corte.hpp"

using namespace arnes;
using modelos::corte;
using modelos::juicio;
using modelos::juzga;
using modelos::piezas;

namespace {

template <class C>
struct entradas;
template <>
struct entradas<wchar_t> : modelos::entradas_corte<wchar_t> {
    static constexpr const char* incorrecto =
        "i_path_correcto_UNICODE( pathCompleto, puede_ser_vacio, FALSO, NULL, NULL) == CIERTO";
    static constexpr const char* incorrecto_con_comodines =
        "i_path_correcto_con_comodines_UNICODE(pathCompleto, NULL) == CIERTO";
};
template <>
struct entradas<char> : modelos::entradas_corte<char> {
    static constexpr const char* incorrecto =
        "i_path_correcto( pathCompleto, puede_ser_vacio, FALSO, NULL) == CIERTO";
    static constexpr const char* incorrecto_con_comodines =
        "i_path_correcto_con_comodines(pathCompleto, NULL) == CIERTO";
};

// ---- cutting

// A blank in the extension gives it to the base name only where both are wanted.
template <class T>
piezas<T> deseadas_de(piezas<T> p, unsigned deseadas) {
    if ((deseadas & 12) == 12) {
        p = modelos::con_blancos_juntos(p);
    }
    T* todas[] = {&p.unidad, &p.directorio, &p.nombre, &p.extension};
    for (unsigned i = 0; i < 4; ++i) {
        if ((deseadas >> i & 1) == 0) {
            todas[i]->clear();
        }
    }
    return p;
}

template <class C, class Corta>
piezas<modelos::texto<C>> corta(Corta entrada, const modelos::texto<C>& path, unsigned deseadas) {
    const justo<C> texto(path);
    C* trozos[4] = {};
    const auto sitio = [&](unsigned i) { return (deseadas >> i & 1) != 0 ? &trozos[i] : nullptr; };
    entrada(texto, sitio(0), sitio(1), sitio(2), sitio(3));
    const auto saca = [&](unsigned i) {
        EXIGE((deseadas >> i & 1) != 0 || trozos[i] == nullptr);
        return (deseadas >> i & 1) != 0 ? toma(trozos[i]) : modelos::texto<C>();
    };
    return {saca(0), saca(1), saca(2), saca(3)};
}

template <class C>
piezas<modelos::texto<C>> escritas(const piezas<modelos::leido<C>>& p) {
    return {modelos::escribe(p.unidad), modelos::escribe(p.directorio), modelos::escribe(p.nombre),
            modelos::escribe(p.extension)};
}

template <class C>
void compara_corte(const modelos::texto<C>& path, unsigned deseadas) {
    using T = modelos::leido<C>;
    const T limpio = modelos::recortado(modelos::lee(path));
    const texto_w ancho = modelos::a_w(limpio);
    const juicio j = juzga(ancho);
    std::vector<std::string> esperados;
    if (j.motivo != 0) {
        esperados = {modelos::texto_en_ingles(53955, apoyo::u8(interno::vista_w(ancho)))};
    }
    const corte<T> c = modelos::corta_modelo(limpio, j.es_unc);
    EXIGE_IGUAL(corta<C>(entradas<C>::con_comprobacion, path, deseadas),
                escritas<C>(deseadas_de(c.p, deseadas)));
    EXIGE_IGUAL(informes(), c.informes);
    EXIGE_IGUAL(avisos(), esperados);

    // The pieces joined give the path wherever the drive is, in characters, what its directory begins with and nothing
    // is cut off. (The share of `\\s/b\b.x` is looked for in a directory that holds only a part of it.)
    const piezas<modelos::texto<C>> todas = corta<C>(entradas<C>::con_comprobacion, path, 15);
    const modelos::texto<C> entero = modelos::escribe(limpio);
    informes();
    avisos();
    const T unidad = modelos::lee(todas.unidad);
    const bool esta = !j.es_unc || modelos::corta_como_el_crt(limpio).directorio.starts_with(unidad);
    if (esta && limpio.starts_with(unidad)) {
        EXIGE_IGUAL(todas.unidas(), entero);
    }

    const juicio con_comodines = juzga(modelos::sin_comodines(ancho));
    corte<T> d = modelos::corta_modelo(limpio, con_comodines.es_unc);
    if (con_comodines.motivo != 0) {
        d.informes.insert(d.informes.begin(), "pathCorrecto == CIERTO");
    }
    EXIGE_IGUAL(corta<C>(entradas<C>::con_comodines, path, deseadas),
                escritas<C>(deseadas_de(d.p, deseadas)));
    EXIGE_IGUAL(informes(), d.informes);
    EXIGE_IGUAL(avisos(), std::vector<std::string>());

    // Cut and composed again, with the pieces of the mask.
    const piezas<T> p = modelos::con_blancos_juntos(c.p);
    const auto si = [&](unsigned bit, const T& pieza) {
        return (deseadas & bit) != 0 ? std::optional<T>(pieza) : std::nullopt;
    };
    std::vector<std::string> de_la_composicion = c.informes;
    const T compuesto = modelos::compone_modelo<T>(
        {si(1, p.unidad), si(2, p.directorio), si(4, p.nombre), si(8, p.extension)}, de_la_composicion);
    const justo<C> texto(path);
    EXIGE_IGUAL(toma(entradas<C>::quedate(texto, static_cast<unsigned short>(deseadas))),
                modelos::escribe(compuesto));
    EXIGE_IGUAL(informes(), de_la_composicion);
    EXIGE_IGUAL(avisos(), esperados);
    if (!j.es_unc) {
        EXIGE_IGUAL(toma(entradas<C>::quedate(texto, 15)), entero);
        informes();
        avisos();
    }
}

// ---- composing

template <class C>
modelos::texto<C> llama(C* (*entrada)(const C*, const C*, const C*, const C*),
                        const modelos::dadas<modelos::texto<C>>& d) {
    return toma(entrada(quiza_justo<C>(d.unidad), quiza_justo<C>(d.directorio), quiza_justo<C>(d.nombre),
                        quiza_justo<C>(d.extension)));
}

template <class C>
void compara_composicion(modelos::dadas<modelos::texto<C>> d) {
    using T = modelos::texto<C>;
    const auto compuesto = [](const modelos::dadas<T>& textos, std::vector<std::string>& reportados) {
        const auto leida = [](const std::optional<T>& pieza) {
            return pieza ? std::optional<modelos::leido<C>>(modelos::lee(*pieza)) : std::nullopt;
        };
        return modelos::escribe(modelos::compone_modelo<modelos::leido<C>>(
            {leida(textos.unidad), leida(textos.directorio), leida(textos.nombre), leida(textos.extension)},
            reportados));
    };
    std::vector<std::string> de_las_piezas;
    const T sin_reparar = compuesto(d, de_las_piezas);
    std::vector<std::string> esperados = de_las_piezas;
    if (juzga(modelos::sin_comodines(modelos::a_w(sin_reparar))).motivo != 0) {
        esperados.push_back(entradas<C>::incorrecto_con_comodines);
    }
    EXIGE_IGUAL(llama<C>(entradas<C>::compone_con_comodines, d), sin_reparar);
    EXIGE_IGUAL(informes(), esperados);

    const bool puede_ser_vacio = (d.unidad || d.directorio) && !d.nombre && !d.extension;
    const auto es_correcto = [&](const T& path) {
        return juzga(modelos::a_w(path), puede_ser_vacio).motivo == 0;
    };
    esperados = de_las_piezas;
    T path = sin_reparar;
    const modelos::dadas<T> dadas = d;
    if constexpr (sizeof(C) > 1) {
        if (!es_correcto(path)) {
            d.nombre = d.nombre ? std::optional<T>(modelos::reparado(*d.nombre)) : std::nullopt;
            path = compuesto(d, esperados);
        }
    }
    if (!es_correcto(path)) {
        esperados.push_back(entradas<C>::incorrecto);
    }
    EXIGE_IGUAL(llama<C>(entradas<C>::compone, dadas), path);
    EXIGE_IGUAL(informes(), esperados);
    EXIGE_IGUAL(avisos(), std::vector<std::string>());
}

}  // namespace

void arnes::prueba(entrada& e) {
    const unsigned deseadas = static_cast<unsigned>(e.numero() & 15);
    const texto_a path = e.bytes();
    compara_corte<wchar_t>(en_unidades(path), deseadas);
    compara_corte<char>(path, deseadas);

    modelos::dadas<texto_a> d;
    d.unidad = e.bytes_o_null();
    d.directorio = e.bytes_o_null();
    d.nombre = e.bytes_o_null();
    d.extension = e.bytes_o_null();
    const auto ancha = [](const std::optional<texto_a>& pieza) {
        return pieza ? std::optional<texto_w>(en_unidades(*pieza)) : std::nullopt;
    };
    compara_composicion<char>(d);
    compara_composicion<wchar_t>({ancha(d.unidad), ancha(d.directorio), ancha(d.nombre), ancha(d.extension)});
}
