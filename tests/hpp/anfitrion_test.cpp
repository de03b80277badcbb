// The receivers as objects.
#include <map>
#include <set>
#include <stdexcept>

#include "hpp/apoyo.hpp"

namespace {

using hpp::prueba_de_disco;
class anfitrion : public prueba_de_disco {};

int g_avisos = 0;
void muestra(std::wstring_view) {
    ++g_avisos;
}

TEST_F(anfitrion, el_ultimo_receptor_manda_y_devuelve_el_mando) {
    std::vector<std::string> dentro;
    {
        lumodir::receptor_errores uno([&](const lumodir::error_interno& e) {
            dentro.push_back(e.expresion);
            EXPECT_NE(std::string(e.etiqueta), "");
            EXPECT_GT(e.linea, 0u);
            EXPECT_EQ(e.detalle, L"");
        });
        EXPECT_FALSE(lumodir::cdir::path_valido(nullptr));
    }
    EXPECT_EQ(dentro, std::vector<std::string>{"(path_sin_espacios) != NULL"});
    EXPECT_FALSE(lumodir::cdir::path_valido(nullptr));
    EXPECT_EQ(toma_informes(), std::vector<std::string>{"(path_sin_espacios) != NULL"});
    EXPECT_EQ(dentro.size(), 1u);
}

TEST_F(anfitrion, se_quitan_en_cualquier_orden) {
    std::string quien;
    auto uno = std::make_unique<lumodir::receptor_avisos>([&](std::wstring_view) { quien += '1'; });
    auto dos = std::make_unique<lumodir::receptor_avisos>([&](std::wstring_view) { quien += '2'; });
    const auto avisa = [] { EXPECT_FALSE(lumodir::cdir::path_valido(L"9:\\a", true)); };
    avisa();
    uno.reset();
    avisa();
    dos.reset();
    avisa();
    EXPECT_EQ(quien, "22");
    EXPECT_EQ(toma_avisos(), std::vector<std::wstring>{L"The name of the disk drive must be a letter."});
}

TEST_F(anfitrion, vale_una_funcion_corriente) {
    lumodir::receptor_avisos corriente(muestra);
    g_avisos = 0;
    EXPECT_FALSE(lumodir::cdir::path_valido(L"9:\\a", true));
    EXPECT_EQ(g_avisos, 1);
}

TEST_F(anfitrion, una_excepcion_no_sale_y_contesta_que_no) {
    lumodir::receptor_avisos avisos([](std::wstring_view) { throw std::runtime_error("no"); });
    EXPECT_FALSE(lumodir::cdir::path_valido(L"9:\\a", true));
    lumodir::receptor_preguntas preguntas(
        [](std::wstring_view, unsigned long) -> bool { throw std::runtime_error("no"); });
    const hpp::fs::path tomado = fichero(L"tomado.txt");
    const HANDLE solo = ::CreateFileW(tomado.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_FALSE(lumodir::cdir::borra_fichero(tomado));
    ::CloseHandle(solo);
}

TEST_F(anfitrion, la_pregunta_decide_y_se_avisa_de_quien_lo_tiene_abierto) {
    const hpp::fs::path tomado = fichero(L"tomado.txt");
    HANDLE mio = ::CreateFileW(tomado.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(mio, INVALID_HANDLE_VALUE);
    std::vector<unsigned long> codigos;
    std::vector<std::wstring> avisados;
    lumodir::receptor_ficheros_abiertos abiertos(
        [&](std::wstring_view path) { avisados.emplace_back(path); });
    lumodir::receptor_preguntas preguntas([&](std::wstring_view texto, unsigned long codigo) {
        EXPECT_NE(texto.find(L"Cannot delete the file"), texto.npos);
        codigos.push_back(codigo);
        if (codigos.size() == 2) {
            ::CloseHandle(mio);
        }
        return codigos.size() <= 2;
    });
    EXPECT_TRUE(lumodir::cdir::borra_fichero(tomado));
    EXPECT_EQ(codigos, (std::vector<unsigned long>{ERROR_SHARING_VIOLATION, ERROR_SHARING_VIOLATION}));
    EXPECT_EQ(avisados, std::vector<std::wstring>{tomado.wstring()});
    EXPECT_FALSE(hpp::fs::exists(tomado));
}

// Which languages have texts is what the library says, not what a list of ours does.
TEST_F(anfitrion, los_idiomas_con_textos_son_los_que_los_tienen) {
    std::map<unsigned long, std::wstring> texto;
    for (unsigned long ranura = 0; ranura <= 40; ++ranura) {
        lumodir::establece_idioma(ranura);
        texto[ranura] =
            lumodir::cdir::es_path_valido(L"").motivo;  // without "fichero", the same in all of Spanish
    }
    const std::vector<lumodir::idioma> con_textos = lumodir::idiomas_con_textos();
    std::set<std::wstring> distintos;
    for (const lumodir::idioma cual : con_textos) {
        EXPECT_TRUE(lumodir::tiene_textos(cual));
        distintos.insert(texto[static_cast<unsigned long>(cual)]);
    }
    EXPECT_EQ(con_textos.size(), 17u);
    EXPECT_EQ(distintos.size(), 14u);
    for (unsigned long ranura = 0; ranura <= 40; ++ranura) {
        EXPECT_EQ(distintos.count(texto[ranura]), 1u);
        const auto cual = static_cast<lumodir::idioma>(ranura);
        if (!lumodir::tiene_textos(cual)) {
            EXPECT_TRUE(texto[ranura] == texto[MSGLOCAL_ESPANYOL] || texto[ranura] == texto[MSGLOCAL_INGLES])
                << ranura;
        }
        if (const std::string_view etiqueta = lumodir::etiqueta(cual); !etiqueta.empty()) {
            EXPECT_EQ(lumodir::idioma_de_etiqueta(etiqueta), cual);
        }
    }
    EXPECT_EQ(lumodir::etiqueta(lumodir::idioma::portugues_brasil), "pt-BR");
    EXPECT_EQ(lumodir::etiqueta(static_cast<lumodir::idioma>(40)), "");
    struct fila {
        const char* etiqueta;
        std::optional<lumodir::idioma> cual;
    };
    const fila filas[] = {
        {"pt-br", lumodir::idioma::portugues_brasil},
        {"pt-PT", lumodir::idioma::portugues_portugal},
        {"DE-ch", lumodir::idioma::aleman},
        {"es_ES", lumodir::idioma::espanyol},
        {"es-CO", lumodir::idioma::espanyol_america},
        {"es-MX", lumodir::idioma::espanyol_mexico},
        {"zh-CN", lumodir::idioma::chino_simplificado},
        {"zh", lumodir::idioma::chino_simplificado},
        {"zh-Hans-SG", lumodir::idioma::chino_simplificado},
        {"zh-TW", std::nullopt},
        {"zh-Hant", std::nullopt},
        {"eo", std::nullopt},
        {"", std::nullopt},
        {"d", std::nullopt},
        {"ger", std::nullopt},
        {"en-GB", lumodir::idioma::ingles},
    };
    for (const fila& f : filas) {
        EXPECT_EQ(lumodir::idioma_de_etiqueta(f.etiqueta), f.cual) << f.etiqueta;
    }
    lumodir::establece_idioma(lumodir::idioma::aleman);
    EXPECT_EQ(lumodir::dame_idioma(), lumodir::idioma::aleman);
    EXPECT_EQ(lumodir::cdir::es_path_valido(L"").motivo, texto[MSGLOCAL_ALEMAN]);
}

TEST_F(anfitrion, el_idioma_y_la_politica) {
    lumodir::establece_idioma(MSGLOCAL_ESPANYOL);
    EXPECT_EQ(lumodir::dame_idioma(), lumodir::idioma::espanyol);
    EXPECT_NE(lumodir::cdir::es_path_valido(L"").motivo, L"You have not specified any directory name");
    lumodir::establece_idioma(MSGLOCAL_INGLES);
    EXPECT_EQ(lumodir::cdir::es_path_valido(L"").motivo, L"You have not specified any directory name");
    // 0 retries: the question comes at once; the callback of open files is told at the first retry alone.
    lumodir::establece_politica(0, 0);
    const hpp::fs::path tomado = fichero(L"tomado.txt");
    const HANDLE mio = ::CreateFileW(tomado.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    int veces = 0;
    lumodir::receptor_preguntas preguntas([&](std::wstring_view, unsigned long) { return ++veces < 3; });
    EXPECT_FALSE(lumodir::cdir::borra_fichero(tomado));
    EXPECT_EQ(veces, 3);
    ::CloseHandle(mio);
}

}  // namespace
