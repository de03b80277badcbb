// Cutting and composing against naive models, over every short text, every short set of pieces and many long
// random ones, in both flavours. Each text also shows that its pieces joined give it again and that no block
// is left over.
#include "apoyo/apoyo.hpp"
#include "cdir.h"
#include "companions/lumospy.h"
#include "modelos/corte.hpp"
#include "paths/modelos.hpp"
#include "paths/sabores_split.hpp"

using namespace apoyo;
using namespace sabores;
using modelos::a_w;
using modelos::compone_modelo;
using modelos::con_blancos_juntos;
using modelos::corta_modelo;
using modelos::corte;
using modelos::dadas;
using modelos::juzga;
using modelos::leido;
using modelos::piezas;
using modelos::texto;

namespace {

std::string a_u8(const texto_w& t) {
    return u8(interno::vista_w(t));
}
std::string a_u8(const modelos::texto_c& t) {
    return de_cp1252(modelos::en_bytes(t));
}
template <class T>
trozos a_u8(const piezas<T>& p) {
    return {a_u8(p.unidad), a_u8(p.directorio), a_u8(p.nombre), a_u8(p.extension)};
}

// ---- one text, one flavour

template <class C>
void compara_mascara(const texto<C>& path, const corte<leido<C>>& esperado, unsigned short mascara) {
    using T = leido<C>;
    const piezas<T> p = con_blancos_juntos(esperado.p);
    const auto si = [&](unsigned bit, const T& pieza) {
        return (mascara & bit) != 0 ? std::optional<T>(pieza) : std::nullopt;
    };
    std::vector<std::string> informes = esperado.informes;
    const T compuesto = compone_modelo<T>(
        {si(1, p.unidad), si(2, p.directorio), si(4, p.nombre), si(8, p.extension)}, informes);
    EXPECT_EQ(toma(sabor<C>::quedate(path.c_str(), mascara)), a_u8(compuesto)) << mascara;
    EXPECT_EQ(toma_expresiones(), informes) << mascara;
}

template <class C>
void compara_corte(const std::string& utf8, bool todas_las_mascaras) {
    using T = leido<C>;
    SCOPED_TRACE("[" + utf8 + "]");
    const unsigned long long vivos = lumospy_bloques_vivos();
    const texto<C> path = sabor<C>::de(utf8);
    const T recortado = modelos::recortado(modelos::lee(path));
    const modelos::juicio juicio = juzga(a_w(recortado));
    const std::vector<std::string> avisos =
        juicio.motivo == 0 ? std::vector<std::string>{}
                           : std::vector{modelos::texto_en_ingles(53955, a_u8(recortado))};
    const corte<T> esperado = corta_modelo(recortado, juicio.es_unc);
    const trozos cortados = corta<C>(sabor<C>::con_comprobacion, utf8.c_str());
    EXPECT_EQ(cortados, a_u8(con_blancos_juntos(esperado.p)));
    EXPECT_EQ(toma_expresiones(), esperado.informes);
    EXPECT_EQ(toma_avisos(), avisos);
    // Joined they give the path, wherever the drive is what the path and its directory begin with.
    const std::string entero = a_u8(recortado);
    const bool esta =
        !juicio.es_unc || a_u8(modelos::corta_como_el_crt(recortado)).directorio.starts_with(cortados.unidad);
    if (esta && entero.starts_with(cortados.unidad)) {
        EXPECT_EQ(cortados.unidas(), entero);
    }

    const modelos::juicio con_comodines = juzga(modelos::sin_comodines(a_w(recortado)));
    corte<T> esperado_comodines = corta_modelo(recortado, con_comodines.es_unc);
    if (con_comodines.motivo != 0) {
        esperado_comodines.informes.insert(esperado_comodines.informes.begin(), "pathCorrecto == CIERTO");
    }
    EXPECT_EQ(corta<C>(sabor<C>::con_comodines, utf8.c_str()),
              a_u8(con_blancos_juntos(esperado_comodines.p)));
    EXPECT_EQ(toma_expresiones(), esperado_comodines.informes);
    ESPERA_AVISOS();

    for (unsigned short mascara = todas_las_mascaras ? 0 : 15; mascara < 16; ++mascara) {
        compara_mascara<C>(path, esperado, mascara);
        EXPECT_EQ(toma_avisos(), avisos);
    }
    if (!juicio.es_unc) {
        EXPECT_EQ(toma(sabor<C>::quedate(path.c_str(), 15)), entero);
        toma_avisos();
    }
    EXPECT_EQ(lumospy_bloques_vivos(), vivos);
}

// One character less than elsewhere: each text is cut and composed in some twenty ways.
TEST(split_makepath_modelo, corta_como_el_modelo_todo_texto_corto) {
    const std::size_t longitud = modelos::longitud_exhaustiva - 1;
    const std::size_t vistos =
        modelos::para_cada_texto(modelos::alfabeto, longitud, [&](const std::string& utf8) {
            const bool todas = utf8.size() < longitud;
            compara_corte<wchar_t>(utf8, todas);
            compara_corte<char>(utf8, todas);
        });
    EXPECT_EQ(vistos, modelos::cuantos_textos(modelos::alfabeto.size(), longitud));
    modelos::para_cada_texto("a.\\/: ", modelos::longitud_exhaustiva, [&](const std::string& utf8) {
        if (utf8.size() > longitud) {
            compara_corte<wchar_t>(utf8, false);
            compara_corte<char>(utf8, false);
        }
    });
}

// Network paths need more characters than that: the same behind two backslashes, behind a share, after wildcards.
TEST(split_makepath_modelo, corta_como_el_modelo_detras_de_un_principio) {
    for (const char* principio : {"\\\\", "\\\\s\\r", "C:\\\\", "*.", "\\\\s\\*"}) {
        modelos::para_cada_texto("a.\\/ *", modelos::longitud_exhaustiva - 2, [&](const std::string& utf8) {
            compara_corte<wchar_t>(principio + utf8, false);
            compara_corte<char>(principio + utf8, false);
        });
    }
}

TEST(split_makepath_modelo, corta_como_el_modelo_textos_al_azar) {
    modelos::fabrica fabrica(31337);
    for (int i = 0; i < 1500 && !HasFailure(); ++i) {
        compara_corte<wchar_t>(fabrica.texto(), false);
        const std::string otro = fabrica.texto(i % 2 == 0);
        compara_corte<char>(otro, i % 8 == 0);
        compara_corte<wchar_t>(otro, i % 8 == 0);
    }
}

TEST(split_makepath_modelo, corta_textos_de_todo_tamanyo) {
    for (const std::size_t longitud : {0u, 1u, 32767u, 100000u}) {
        for (const char* letra : {"a", " ", ".", "\\", "/", "ñ", "\x02"}) {
            const std::string utf8 = modelos::repite(letra, longitud);
            compara_corte<wchar_t>(utf8, false);
            compara_corte<char>(utf8, false);
        }
    }
}

// ---- one set of pieces, one flavour

template <class C>
void compara_composicion(const dadas<std::string>& d) {
    using T = leido<C>;
    constexpr bool ancha = std::is_same_v<C, wchar_t>;
    const auto en_sabor = [](const std::optional<std::string>& pieza) {
        return pieza ? std::optional<T>(modelos::lee(sabor<C>::de(*pieza))) : std::nullopt;
    };
    const auto puntero = [](const std::optional<std::string>& pieza) {
        return pieza ? pieza->c_str() : nullptr;
    };
    const auto llama = [&](entrada_compone<C> entrada) {
        return compone<C>(entrada, puntero(d.unidad), puntero(d.directorio), puntero(d.nombre),
                          puntero(d.extension));
    };
    dadas<T> de_aqui = {en_sabor(d.unidad), en_sabor(d.directorio), en_sabor(d.nombre),
                        en_sabor(d.extension)};
    std::vector<std::string> informes;
    T path = compone_modelo(de_aqui, informes);
    const std::vector<std::string> de_las_piezas = informes;
    const T sin_reparar = path;
    const bool puede_ser_vacio = (d.unidad || d.directorio) && !d.nombre && !d.extension;
    bool correcto = juzga(a_w(path), puede_ser_vacio).motivo == 0;
    if (ancha && !correcto) {
        if constexpr (ancha) {
            if (de_aqui.nombre) {
                de_aqui.nombre = modelos::reparado(*de_aqui.nombre);
            }
        }
        path = compone_modelo(de_aqui, informes);
        correcto = juzga(a_w(path), puede_ser_vacio).motivo == 0;
    }
    if (!correcto) {
        informes.push_back(
            ancha ? "i_path_correcto_UNICODE( pathCompleto, puede_ser_vacio, FALSO, NULL, NULL) == CIERTO"
                  : "i_path_correcto( pathCompleto, puede_ser_vacio, FALSO, NULL) == CIERTO");
    }
    EXPECT_EQ(llama(sabor<C>::compone), a_u8(path));
    EXPECT_EQ(toma_expresiones(), informes);

    informes = de_las_piezas;
    if (juzga(modelos::sin_comodines(a_w(sin_reparar))).motivo != 0) {
        informes.push_back(ancha ? "i_path_correcto_con_comodines_UNICODE(pathCompleto, NULL) == CIERTO"
                                 : "i_path_correcto_con_comodines(pathCompleto, NULL) == CIERTO");
    }
    EXPECT_EQ(llama(sabor<C>::compone_con_comodines), a_u8(sin_reparar));
    EXPECT_EQ(toma_expresiones(), informes);
    ESPERA_AVISOS();
}

std::string como_se_ve(const dadas<std::string>& d) {
    std::string linea;
    for (const auto* pieza : {&d.unidad, &d.directorio, &d.nombre, &d.extension}) {
        linea += "[" + pieza->value_or("(NULL)") + "]";
    }
    return linea;
}

using opciones = std::vector<std::optional<std::string>>;

opciones todas_las_cortas(std::string_view letras) {
    opciones todas = {std::nullopt};
    modelos::para_cada_texto(letras, 2, [&](const std::string& t) { todas.emplace_back(t); });
    return todas;
}

TEST(split_makepath_modelo, compone_como_el_modelo_todas_las_piezas_cortas) {
    const opciones unidades = {std::nullopt, "",        "C:",     "C",   "\\\\",
                               "\\\\s",      "\\\\s\\", "\\\\s/", "//s", "\\\\s\\r"};
    const opciones directorios = todas_las_cortas("a\\/|");
    const opciones nombres = todas_las_cortas("a.\\ *");
    const opciones extensiones = {std::nullopt, "", ".", ".t", "t", "*", ".*", "a b"};
    for (const auto& unidad : unidades) {
        for (const auto& directorio : directorios) {
            for (const auto& nombre : nombres) {
                for (const auto& extension : extensiones) {
                    const dadas<std::string> d = {unidad, directorio, nombre, extension};
                    const unsigned long long vivos = lumospy_bloques_vivos();
                    compara_composicion<wchar_t>(d);
                    compara_composicion<char>(d);
                    ASSERT_EQ(lumospy_bloques_vivos(), vivos);
                    ASSERT_FALSE(HasFailure()) << como_se_ve(d);
                }
            }
        }
    }
}

TEST(split_makepath_modelo, compone_como_el_modelo_piezas_al_azar) {
    modelos::fabrica fabrica(271828);
    const auto pieza = [&](bool solo_ascii) {
        return fabrica.numero(6) == 0 ? std::nullopt : std::optional<std::string>(fabrica.texto(solo_ascii));
    };
    for (int i = 0; i < 2000; ++i) {
        const bool solo_ascii = i % 3 == 0;
        dadas<std::string> d;
        d.unidad = fabrica.numero(3) == 0 ? std::optional<std::string>("\\\\srv\\share") : pieza(solo_ascii);
        d.directorio = pieza(solo_ascii);
        d.nombre = pieza(solo_ascii);
        d.extension = pieza(solo_ascii);
        compara_composicion<wchar_t>(d);
        compara_composicion<char>(d);
        ASSERT_FALSE(HasFailure()) << como_se_ve(d);
    }
}

}  // namespace
