// Wild arguments for every export: whatever a caller hands over, nothing crashes, nothing is read or written past its
// end, every block and every handle comes back, and a report names its place. The system underneath only pretends
// (sistema_mentiroso.hpp), so that no wild path, key or process number can reach a real one.
//
// The cases are made from the headers (one per function), so that a new export cannot be forgotten.
// LUMODIR_RONDAS tells how many calls each export gets (tools/largo stress gives more).
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "companions/lugar.hpp"
#include "exports/exportaciones.hpp"

namespace exports {
namespace {

unsigned long g_llamadas = 0;

unsigned rondas() {
    const char* texto = std::getenv("LUMODIR_RONDAS");
    const unsigned pedidas = texto == nullptr ? 0 : static_cast<unsigned>(std::atoi(texto));
    return pedidas == 0 ? 100 : pedidas;
}

// Some give back the caller's own buffer.
template <class R, class A>
bool es_el_mismo(R resultado, A argumento) {
    if constexpr (std::is_pointer_v<R> && std::is_same_v<R, A>) {
        return resultado == argumento;
    } else {
        return false;
    }
}

// A pointer is NULL once in twelve times.
const auto a_veces_nulo = [](std::size_t, auto& valor) {
    if constexpr (std::is_pointer_v<decltype(valor.da())>) {
        return uno_de(azar(), 12) == 0 ? nullptr : valor.da();
    } else {
        return valor.da();
    }
};

template <class R, class... A>
void llama(void (*cual)(), const llamada& como) {
    const auto funcion = reinterpret_cast<R (*)(A...)>(cual);
    dll::juego<salvaje, A...> valores(como);
    if constexpr (std::is_void_v<R>) {
        valores.da_a(funcion, a_veces_nulo);
    } else {
        valores.da_a(
            [&](A... argumentos) {
                const R resultado = funcion(argumentos...);
                if (!lleva_bufer(como) || !(es_el_mismo(resultado, argumentos) || ...)) {
                    dll::libera_resultado(resultado, como);
                }
            },
            a_veces_nulo);
    }
}

bool etiqueta_conocida(const std::string& etiqueta) {
    return etiqueta == interno::etiqueta_de_las_demas ||
           std::any_of(std::begin(interno::familias), std::end(interno::familias),
                       [&](const interno::familia& f) { return etiqueta == f.etiqueta; });
}

// The first report that does not say what and where. The others are not kept, and the details of some alone are read
// to their ends: of a long text there may be one for each of its characters, each with the whole of it.
std::string g_informe_raro;
unsigned g_detalles_por_leer = 0;
const llamada* g_llamada = nullptr;

void mira_el_informe(const char* expresion, const char* etiqueta, unsigned long linea, const wchar_t* detalle,
                     void*) {
    if (detalle != nullptr && g_detalles_por_leer > 0) {
        --g_detalles_por_leer;
        apoyo::u8(detalle);
    }
    // Copying and releasing texts report with the place that their caller gave.
    const bool con_lugar = g_llamada->es("widestr_") || (etiqueta_conocida(etiqueta) && linea > 0);
    // One has always reported an empty expression after its message.
    const bool con_expresion = *expresion != '\0' || g_llamada->es("cdir_comprueba_existe_fichero");
    if (g_informe_raro.empty() && !(con_lugar && con_expresion)) {
        g_informe_raro = std::string(etiqueta) + " " + std::to_string(linea) + ": '" + expresion + "'";
    }
}

// Any export: its function, and how one of its signature is called.
struct salvajemente {
    void (*funcion)();
    void (*llama)(void (*)(), const llamada&);
};

class llamada_salvaje : public testing::Test {
public:
    llamada_salvaje(const char* nombre, salvajemente esta) : como_{nombre}, esta_(esta) {}

    void TestBody() override {
        g_informe_raro.clear();
        g_llamada = &como_;
        error_interno_establece_receptor(mira_el_informe, nullptr);
        for (unsigned ronda = 0; ronda < rondas() && !HasFailure(); ++ronda) {
            azar().seed(ronda);
            g_detalles_por_leer = 50;
            pon_en_curso(como_.funcion + ", round " + std::to_string(ronda));
            const unsigned long long vivos = lumospy_bloques_vivos();
            sitio_del_bufer() = uno_de(azar(), 3) == 0 ? 0xFFFF : uno_de(azar(), 300);
            {
                // A third of the systems always fail, the others lie for a while.
                sistema_mentiroso sistema(azar(), uno_de(azar(), 3) == 0 ? 0 : uno_de(azar(), 60));
                esta_.llama(esta_.funcion, como_);
                EXPECT_EQ(sistema.abiertas(), 0u) << en_curso() << ": handles left open";
            }
            lumodir_set_func_comprobar_fichero_no_esta_abierto(nullptr);
            EXPECT_EQ(lumospy_bloques_vivos(), vivos) << en_curso() << ": blocks left";
            EXPECT_EQ(g_informe_raro, "") << en_curso();
            apoyo::toma_avisos();
            apoyo::toma_preguntas();
            apoyo::toma_esperas();
            ++g_llamadas;
        }
    }

private:
    const llamada como_;
    const salvajemente esta_;
};

class cuenta_las_llamadas : public testing::Environment {
    void TearDown() override { std::printf("wild calls: %lu\n", g_llamadas); }
};

template <class R, class... A>
void registra(const char* nombre, R (*funcion)(A...)) {
    const salvajemente esta = {reinterpret_cast<void (*)()>(funcion), llama<R, A...>};
    testing::RegisterTest("salvajes", nombre, nullptr, nullptr, __FILE__, __LINE__,
                          [=]() -> testing::Test* { return new llamada_salvaje(nombre, esta); });
}

[[maybe_unused]] const bool salvajes_registrados = [] {
    testing::AddGlobalTestEnvironment(new cuenta_las_llamadas);
#define EXPORTACION(nombre) registra(#nombre, nombre);
#include "cabeceras/exportaciones.inc"
#undef EXPORTACION
    return true;
}();

}  // namespace
}  // namespace exports
