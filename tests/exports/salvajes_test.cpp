// Wild arguments for every export: whatever a caller hands over, nothing crashes, nothing is read or written past its
// end, every block and every handle comes back, and a report names its place. The system underneath only pretends
// (sistema_mentiroso.hpp), so that no wild path, key or process number can reach a real one.
//
// The cases are made from the headers (one per function), so that a new export cannot be forgotten.
// LUMODIR_RONDAS tells how many calls each export gets (tools/stress gives more).
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "exports/valores_salvajes.hpp"

namespace dll {

std::wstring texto_sano(const llamada& para) {
    if (para.es("lumoreg_")) {
        return exports::clave_en_curso();
    }
    return para.es("taskproc_") ? L"lumodir_no_hay.exe" : exports::texto_en_curso();
}

std::string en_8_bits(const std::wstring& texto) {
    return apoyo::cp1252(apoyo::u8(texto.c_str()));
}

void libera_registros(ArrPunteroConTipo** v, const llamada& de) {
    if (*v == nullptr) {
        return;
    }
    ArrDestruyeRegistro destruye = destruye_bloque;
    if (de.es("fichsdir_")) {
        destruye = reinterpret_cast<ArrDestruyeRegistro>(reinterpret_cast<void (*)()>(fichsdir_destruye));
    } else if (de.es("Unidades")) {
        destruye = reinterpret_cast<ArrDestruyeRegistro>(
            reinterpret_cast<void (*)()>(lumodir_destruyeEstructuraUnidadSistema));
    } else if (de.es("taskproc_")) {
        destruye = reinterpret_cast<ArrDestruyeRegistro>(reinterpret_cast<void (*)()>(taskproc_destruye));
    } else if (de.es("lumoreg_")) {
        destruye = [](void** registro) { arr_DestruyeCADENA_u(reinterpret_cast<ArrCADENA_u**>(registro)); };
    }
    arr_DestruyeEstructurasConTipo(v, destruye);
}

}  // namespace dll

namespace exports {
namespace {

std::string g_en_curso;  // for whoever reads the log of a crash
unsigned long g_llamadas = 0;

LONG CALLBACK dice_donde(EXCEPTION_POINTERS* excepcion) {
    if (excepcion->ExceptionRecord->ExceptionCode == static_cast<DWORD>(EXCEPTION_ACCESS_VIOLATION)) {
        std::fprintf(stderr, "access violation in %s\n", g_en_curso.c_str());
        std::fflush(stderr);
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

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

template <class R, class... A, std::size_t... I>
void llama(R (*funcion)(A...), const llamada& como, std::index_sequence<I...>) {
    std::tuple<salvaje<A>...> valores((static_cast<void>(I), como)...);  // in place: they do not move
    [[maybe_unused]] const auto argumento = [&]<std::size_t n>() {
        using tipo = std::tuple_element_t<n, std::tuple<A...>>;
        if constexpr (std::is_pointer_v<tipo>) {
            return uno_de(azar(), 12) == 0 ? tipo(nullptr) : tipo(std::get<n>(valores).da());
        } else {
            return std::get<n>(valores).da();
        }
    };
    const std::tuple<A...> argumentos(argumento.template operator()<I>()...);
    if constexpr (std::is_void_v<R>) {
        std::apply(funcion, argumentos);
    } else {
        const R resultado = std::apply(funcion, argumentos);
        if (!lleva_bufer(como) || !(es_el_mismo(resultado, std::get<I>(argumentos)) || ...)) {
            dll::libera_resultado(resultado, como);
        }
    }
}

bool etiqueta_conocida(const std::string& etiqueta) {
    for (const lumodir::modulo& m : lumodir::modulos) {
        if (etiqueta == m.etiqueta) {
            return true;
        }
    }
    return false;
}

template <class R, class... A>
class llamada_salvaje : public testing::Test {
public:
    llamada_salvaje(const char* nombre, R (*funcion)(A...)) : como_{nombre}, funcion_(funcion) {}

    void TestBody() override {
        for (unsigned ronda = 0; ronda < rondas() && !HasFailure(); ++ronda) {
            azar().seed(ronda);
            g_en_curso = como_.funcion + ", round " + std::to_string(ronda);
            const unsigned long long vivos = lumospy_bloques_vivos();
            sitio_del_bufer() = uno_de(azar(), 3) == 0 ? 0xFFFF : uno_de(azar(), 300);
            {
                // A third of the systems always fail, the others lie for a while.
                sistema_mentiroso sistema(azar(), uno_de(azar(), 3) == 0 ? 0 : uno_de(azar(), 60));
                llama(funcion_, como_, std::index_sequence_for<A...>());
                EXPECT_EQ(sistema.abiertas(), 0u) << g_en_curso << ": handles left open";
            }
            lumodir_set_func_comprobar_fichero_no_esta_abierto(nullptr);
            EXPECT_EQ(lumospy_bloques_vivos(), vivos) << g_en_curso << ": blocks left";
            for (const apoyo::informe& i : apoyo::toma_informes()) {
                // Copying and releasing texts report with the place that their caller gave.
                EXPECT_TRUE(como_.es("widestr_") || (etiqueta_conocida(i.etiqueta) && i.linea > 0))
                    << g_en_curso << ": " << i.etiqueta << " " << i.linea;
                // One has always reported an empty expression after its message.
                EXPECT_TRUE(i.expresion != "" || como_.es("cdir_comprueba_existe_fichero")) << g_en_curso;
            }
            apoyo::toma_avisos();
            apoyo::toma_preguntas();
            apoyo::toma_esperas();
            ++g_llamadas;
        }
    }

private:
    llamada como_;
    R (*funcion_)(A...);
};

class cuenta_las_llamadas : public testing::Environment {
    void TearDown() override { std::printf("wild calls: %lu\n", g_llamadas); }
};

template <class R, class... A>
void registra(const char* nombre, R (*funcion)(A...)) {
    testing::RegisterTest(
        "salvajes", nombre, nullptr, nullptr, __FILE__, __LINE__,
        [nombre, funcion]() -> testing::Test* { return new llamada_salvaje<R, A...>(nombre, funcion); });
}

[[maybe_unused]] const bool registradas = [] {
    testing::AddGlobalTestEnvironment(new cuenta_las_llamadas);
    ::AddVectoredExceptionHandler(1, dice_donde);
#define EXPORTACION(nombre) registra(#nombre, nombre);
#include "cabeceras/exportaciones.inc"
#undef EXPORTACION
    return true;
}();

}  // namespace
}  // namespace exports
