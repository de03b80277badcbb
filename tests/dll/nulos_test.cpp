// A NULL sweep over every export: each pointer argument NULL in turn, the others sane. Whatever the headers do not
// allow to be NULL must be reported, with the expression that the header promises; nothing may crash or leak.
//
// The cases are made from the headers (one per function), so that a new export cannot be forgotten.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>

#include "apoyo/en_curso.hpp"
#include "dll/cabeceras.hpp"
#include "dll/valores.hpp"

namespace dll {
namespace {

using apoyo::en_curso;
using apoyo::pon_en_curso;

std::vector<std::string> g_informes;

void recibe(const char* expresion, const char*, unsigned long, const wchar_t*, void*) {
    g_informes.push_back(expresion);
}

const std::wstring& carpeta_guardada() {
    static const std::wstring una = [] {
        wchar_t temporal[MAX_PATH];
        ::GetTempPathW(MAX_PATH, temporal);
        return temporal + (L"lumodir_nulos_" + std::to_wstring(::GetCurrentProcessId()));
    }();
    return una;
}
// The folder that the calls work in. Some remove empty parents too: the file beside it stops them there.
std::wstring carpeta() {
    return carpeta_guardada() + L"\\dentro";
}

constexpr const wchar_t* clave_de_prueba = L"Software\\lumodir_prueba_nulos";

// Before each call: nothing left of the one before, and a host that never waits and never answers yes.
void prepara() {
    std::error_code da_igual;
    std::filesystem::remove_all(carpeta(), da_igual);
    std::filesystem::create_directories(carpeta(), da_igual);
    std::ofstream(std::filesystem::path(carpeta_guardada() + L"\\guarda.txt")) << "guarda";
    ::RegDeleteTreeW(HKEY_CURRENT_USER, clave_de_prueba);
    buclrein_establece_politica(0, 0);
    buclrein_establece_receptor([](const wchar_t*, unsigned long, void*) -> unsigned short { return 0; },
                                nullptr);
    lmaviso_establece_receptor([](const wchar_t*, void*) {}, nullptr);
    error_interno_establece_receptor(recibe, nullptr);
    g_informes.clear();
}

constexpr std::size_t ninguno = ~std::size_t{0};

// What the cases need to know of an export, and how it is called.
class prueba_de_nulos : inmovil {
public:
    virtual ~prueba_de_nulos() = default;
    virtual bool esta() const = 0;
    // For each argument.
    std::vector<bool> punteros;
    std::vector<bool> con_valor_sano;

    // Calls with sane arguments, all but number `nulo`; answers the reports.
    std::vector<std::string> informes(std::size_t nulo) {
        prepara();
        std::vector<std::string> resultado;
        llama(nulo, resultado);
        EXPECT_TRUE(g_informes.empty())
            << "freeing what " << en_curso() << " left: " << testing::PrintToString(g_informes);
        return resultado;
    }

private:
    virtual void llama(std::size_t nulo, std::vector<std::string>& informes) = 0;
};

template <class R, class... A>
class prueba_de final : public prueba_de_nulos {
public:
    explicit prueba_de(const llamada& como)
        : como_(como), funcion_(exportada<R (*)(A...)>(como.funcion.c_str())) {
        punteros = {std::is_pointer_v<A>...};
        con_valor_sano = {valor<A>::hay...};
    }
    bool esta() const override { return funcion_ != nullptr; }

private:
    void llama(std::size_t nulo, std::vector<std::string>& informes) override {
        juego<valor, A...> valores(como_);
        g_informes.clear();
        const auto uno_nulo = [nulo](std::size_t n, auto& argumento) {
            if constexpr (std::is_pointer_v<decltype(argumento.da())>) {
                return n == nulo ? nullptr : argumento.da();
            } else {
                return argumento.da();
            }
        };
        if constexpr (std::is_void_v<R>) {
            valores.da_a(funcion_, uno_nulo);
        } else {
            const R resultado = valores.da_a(funcion_, uno_nulo);
            informes.swap(g_informes);
            libera_resultado(resultado, como_);
        }
        informes.insert(informes.end(), g_informes.begin(), g_informes.end());
        g_informes.clear();
    }

    const llamada& como_;
    R (*funcion_)(A...);
};

class barrido : public testing::Test {
public:
    using fabrica = std::unique_ptr<prueba_de_nulos> (*)(const llamada&);
    barrido(const char* nombre, fabrica hace) : como_{nombre}, prueba_(hace(como_)) {}

    void TestBody() override {
        if (!prueba_->esta()) {
            GTEST_SKIP() << como_.funcion << " is not in the DLL";
        }
        const declaracion& dicho = declaraciones().at(como_.funcion);
        const std::vector<bool>& punteros = prueba_->punteros;
        const std::vector<bool>& sanos = prueba_->con_valor_sano;
        ASSERT_EQ(dicho.parametros.size(), punteros.size())
            << "the comment or the declaration was not understood";
        const auto num_punteros = std::count(punteros.begin(), punteros.end(), true);
        const bool todos_sanos = std::count(sanos.begin(), sanos.end(), false) == 0;
        ASSERT_TRUE(todos_sanos || num_punteros == 1)
            << "a type without a sane value: give it one in valores.hpp";

        const unsigned long long vivos = lumospy_bloques_vivos();
        // What the sane call reports by itself (that a file does not exist, say) is no report of a NULL.
        std::vector<std::string> sin_nulos;
        if (todos_sanos && num_punteros > 0) {
            sin_nulos = barre(ninguno);
        }
        for (std::size_t i = 0; i < punteros.size(); ++i) {
            if (punteros[i]) {
                comprueba(dicho.parametros[i], sin_nulos, barre(i));
            }
        }
        EXPECT_EQ(lumospy_bloques_vivos(), vivos) << como_.funcion << " leaks";
    }

private:
    std::vector<std::string> barre(std::size_t nulo) {
        pon_en_curso(como_.funcion +
                     (nulo == ninguno ? "" : ", argument " + std::to_string(nulo + 1) + " NULL"));
        const unsigned long long vivos = lumospy_bloques_vivos();
        std::vector<std::string> informes = prueba_->informes(nulo);
        EXPECT_EQ(lumospy_bloques_vivos(), vivos) << en_curso();
        return informes;
    }
    void comprueba(const parametro& p, const std::vector<std::string>& sin_nulos,
                   const std::vector<std::string>& informes) {
        const auto hecho = [&](const std::string& expresion) {
            return std::find(informes.begin(), informes.end(), expresion) != informes.end();
        };
        const std::string dicho = " of " + como_.funcion + "; reported: " + testing::PrintToString(informes);
        EXPECT_NE(p.comentario, "") << "no comment for " << p.nombre << dicho;
        if (p.admite_null()) {
            EXPECT_FALSE(hecho("(" + p.nombre + ") != NULL") || hecho(p.nombre + " != NULL"))
                << "reported, though it may be NULL: " << p.nombre << dicho;
            return;
        }
        EXPECT_NE(p.comentario.find("eported"), std::string::npos)
            << "the comment does not say what NULL does: " << p.nombre << dicho;
        if (!p.expresion_de_null().empty()) {
            EXPECT_TRUE(hecho(p.expresion_de_null()))
                << "expected " << p.expresion_de_null() << " for a NULL " << p.nombre << dicho;
            return;
        }
        const bool alguno_nuevo =
            std::any_of(informes.begin(), informes.end(), [&](const std::string& informe) {
                return std::find(sin_nulos.begin(), sin_nulos.end(), informe) == sin_nulos.end();
            });
        EXPECT_TRUE(alguno_nuevo) << "no report of a NULL " << p.nombre << dicho;
    }

    const llamada como_;
    const std::unique_ptr<prueba_de_nulos> prueba_;
};

class sin_restos : public testing::Environment {
    // There even if no case of these runs.
    void SetUp() override {
        std::error_code da_igual;
        std::filesystem::create_directories(carpeta(), da_igual);
        std::ofstream(std::filesystem::path(carpeta_guardada() + L"\\guarda.txt")) << "guarda";
    }
    void TearDown() override {
        std::error_code da_igual;
        EXPECT_TRUE(std::filesystem::exists(carpeta_guardada() + L"\\guarda.txt")) << "a call went too far";
        std::filesystem::remove_all(carpeta_guardada(), da_igual);
        ::RegDeleteTreeW(HKEY_CURRENT_USER, clave_de_prueba);
    }
};

template <class R, class... A>
void registra(const char* nombre, R (*)(A...)) {
    const barrido::fabrica hace = [](const llamada& como) -> std::unique_ptr<prueba_de_nulos> {
        return std::unique_ptr<prueba_de_nulos>(new prueba_de<R, A...>(como));
    };
    testing::RegisterTest("nulos", nombre, nullptr, nullptr, __FILE__, __LINE__,
                          [=]() -> testing::Test* { return new barrido(nombre, hace); });
}

}  // namespace

std::wstring texto_sano(const llamada& para) {
    if (para.es("lumoreg_")) {
        return clave_de_prueba;
    }
    if (para.es("taskproc_")) {
        return L"lumodir_no_hay.exe";
    }
    if (para.es("nomsfich_")) {
        return L"nada.txt";
    }
    return carpeta() + L"\\nada.txt";
}

std::string en_8_bits(const std::wstring& texto) {
    std::string resultado;
    for (const wchar_t c : texto) {
        resultado.push_back(static_cast<char>(c));  // the test's own texts are ASCII
    }
    return resultado;
}

void registra_nulos() {
    testing::AddGlobalTestEnvironment(new sin_restos);
#define EXPORTACION(nombre) registra(#nombre, static_cast<decltype(&nombre)>(nullptr));
#include "cabeceras/exportaciones.inc"
#undef EXPORTACION
}

}  // namespace dll
