// Every export with sane arguments on a real directory, with each of its system calls failing in turn (whatever the
// table), once and for ever; and with each of its allocations failing in turn. Nothing crashes, no handle and no block
// stays, nothing outside the directory is changed, no file is left half-written; exhausted memory leaves by its one
// door, after its one report.
//
// The cases are made from the headers (one per function), so that a new export cannot be forgotten.
#include <csetjmp>
#include <cstdlib>
#include <memory>

#include "apoyo/directorio.hpp"
#include "companions/plataforma.hpp"
#include "exports/exportaciones.hpp"
#include "exports/todas_las_llamadas.hpp"

namespace exports {
namespace {

// The directory of the calls, inside another one that they must leave alone.
class escenario {
public:
    escenario() {
        d_.directorio("dentro");
        ::SetEnvironmentVariableW(L"TMP", d_.ruta_w("dentro").c_str());
        ::SetEnvironmentVariableW(L"TEMP", d_.ruta_w("dentro").c_str());
    }
    // As if nothing had been called yet. Some calls remove empty parents: the file beside the directory stops them.
    void prepara() {
        if (sucio_) {
            d_.limpia();
            d_.fichero("guarda.txt");
            d_.fichero("dentro\\arbol\\uno.txt");
            d_.fichero("dentro\\arbol\\sub\\dos.txt");
        }
        sucio_ = false;
    }
    void comprueba(bool cambiado, const std::string& que) {
        if (!cambiado) {
            return;
        }
        sucio_ = true;
        EXPECT_EQ(d_.contenido("guarda.txt"), "contenido") << que;
        for (const std::string& nombre : d_.arbol()) {
            if (nombre.back() != '\\') {
                const std::string contenido = d_.contenido(nombre);
                EXPECT_TRUE(contenido == "contenido" || contenido.empty())
                    << que << ": half a file, " << nombre;
            }
        }
    }
    std::vector<std::wstring> textos() const {
        return {d_.ruta_w("dentro\\arbol").c_str(), d_.ruta_w("dentro\\arbol\\uno.txt").c_str(),
                d_.ruta_w("dentro\\arbol\\*.txt").c_str()};
    }
    apoyo::texto_w carpeta() const { return d_.ruta_w("dentro"); }

private:
    apoyo::directorio_temporal d_;
    bool sucio_ = true;
};

std::unique_ptr<escenario> g_escenario;
unsigned long g_sin_memoria = 0;       // allocations that were made to fail
unsigned long g_informes_de_ello = 0;  // reports of it

class alrededor : public testing::Environment {
    void SetUp() override { g_escenario = std::make_unique<escenario>(); }
    void TearDown() override {
        g_escenario.reset();
        ::RegDeleteTreeW(HKEY_CURRENT_USER, clave_de_prueba);
        std::printf("allocations made to fail: %lu\n", g_sin_memoria);
        if (g_sin_memoria > 0) {
            EXPECT_EQ(g_informes_de_ello, 1u) << "reported once in a process";
        }
    }
};

// In short: what tries many names in a row, or walks over all processes or drives, does the same again and again. At
// length (tools/largo stress): each to the end; where 150 names are tried alike, in growing steps.
bool largo() {
    return std::getenv("LUMODIR_RONDAS") != nullptr;
}
unsigned ultimo_fallo(const llamada& de) {
    return largo() ? ~0u : de.es("taskproc_") ? 3u : de.es("creaFichero") ? 5u : 8u;
}
unsigned siguiente_fallo(const llamada& de, unsigned n) {
    return n + 1 + (de.es("creaFichero") ? n / 10 : 0);
}
// The directory, and the file for what is about files; at length: a pattern too, and all for whatever takes a path.
std::vector<std::wstring> textos_para(const llamada& de) {
    std::vector<std::wstring> textos = g_escenario->textos();
    const bool de_ficheros = de.es("fichero") || de.es("Fichero") || de.es("timefich_");
    if (!largo() || !(de_ficheros || de.es("dir"))) {
        textos.resize(de_ficheros ? 2 : 1);
    }
    return textos;
}

class con_fallos : public testing::Test {
public:
    explicit con_fallos(const exportacion& e) : e_(e) {}

    void TestBody() override {
        for (const std::wstring& texto : textos_para(e_.como)) {
            texto_en_curso() = texto;
            quiso_nombre_largo_ = false;
            todas_las_rondas(false);
            if (quiso_nombre_largo_) {
                al_escritorio_ = 0;
                todas_las_rondas(true);
                EXPECT_GT(al_escritorio_, 0u) << "the shell was not asked";
            }
            EXPECT_TRUE(quiso_nombre_largo_ || e_.como.funcion != "cdir_obtener_path_actual");
        }
    }

private:
    void todas_las_rondas(bool por_el_escritorio) {
        const unsigned ultima = ultimo_fallo(e_.como);
        for (const bool para_siempre : {false, true}) {
            bool limpia = false;
            for (unsigned n = 1; n <= ultima && !limpia && !HasFailure(); n = siguiente_fallo(e_.como, n)) {
                limpia = ronda(n, para_siempre, por_el_escritorio);
            }
        }
    }
    // Answers whether the operation ended before the fault.
    bool ronda(unsigned n, bool para_siempre, bool por_el_escritorio) {
        const std::string que = e_.como.funcion + ", call " + std::to_string(n) +
                                (para_siempre ? " on" : "") + (por_el_escritorio ? ", by the shell" : "");
        pon_en_curso(que);
        g_escenario->prepara();
        const unsigned long long vivos = lumospy_bloques_vivos();
        todas_las_llamadas tablas(g_escenario->carpeta(), clave_de_prueba);
        if (por_el_escritorio) {
            tablas.sin_nombres_largos();
        }
        unsigned long llamadas;
        bool cambiado;
        {
            const std::unique_ptr<preparada> una = e_.prepara();
            tablas.falla(n, para_siempre);
            una->llama();
            llamadas = tablas.llamadas();
            cambiado = tablas.ha_cambiado_algo();
            quiso_nombre_largo_ = quiso_nombre_largo_ || tablas.quiso_nombre_largo();
            al_escritorio_ += tablas.llamadas_al_escritorio();
            tablas.falla(0, false);
        }
        lumodir_set_func_comprobar_fichero_no_esta_abierto(nullptr);
        EXPECT_EQ(tablas.abiertas(), 0u) << que << ": handles left open";
        EXPECT_EQ(tablas.fuera(), std::vector<std::string>()) << que << ": outside its directory";
        EXPECT_EQ(tablas.con_dialogos(), std::set<std::string>()) << que << ": dialogs were allowed";
        EXPECT_EQ(lumospy_bloques_vivos(), vivos) << que << ": blocks left";
        g_escenario->comprueba(cambiado, que);
        apoyo::toma_informes();
        apoyo::toma_avisos();
        apoyo::toma_preguntas();
        apoyo::toma_esperas();
        return llamadas < n;
    }
    const exportacion& e_;
    bool quiso_nombre_largo_ = false;
    unsigned long al_escritorio_ = 0;
};

// ---- exhausted memory

std::set<void*> g_bloques;  // given in the call under test, not freed yet
unsigned g_faltan = 0;      // allocations until the one that fails; 0: none does
unsigned g_pedidos = 0;
unsigned g_puertas = 0;

bool falta_memoria() {
    ++g_pedidos;
    if (g_faltan == 0 || g_pedidos != g_faltan) {
        return false;
    }
    ++g_sin_memoria;
    return true;
}

// The allocator underneath, which may be the guarding one.
interno::tabla_memoria g_memoria;

void* reserva(std::size_t bytes) {
    void* bloque = falta_memoria() ? nullptr : g_memoria.reserva(bytes);
    if (bloque != nullptr) {
        g_bloques.insert(bloque);
    }
    return bloque;
}
void* cambia(void* antes, std::size_t bytes) {
    if (falta_memoria()) {
        return nullptr;
    }
    // A block from before the call stays its owner's, wherever it moves.
    const bool nuestro = g_bloques.erase(antes) != 0;
    void* bloque = g_memoria.cambia(antes, bytes);
    if (nuestro) {
        g_bloques.insert(bloque);
    }
    return bloque;
}
void libera(void* bloque) {
    g_bloques.erase(bloque);
    g_memoria.libera(bloque);
}

#ifdef __GNUC__
jmp_buf g_salto;
// Runs it; false when the process would have ended in it. No destructor runs then, as none would: without a frame the
// way back unwinds nothing. (Of the compilers' own pairs Clang's comes back with another frame pointer.)
__attribute__((noinline)) bool corre(const std::function<void()>& accion) {
    if (_setjmp(g_salto, nullptr) != 0) {
        return false;
    }
    accion();
    return true;
}
__attribute__((noinline)) void sale() noexcept {
    ++g_puertas;
    longjmp(g_salto, 1);
}
constexpr bool se_puede_salir = true;
#else
bool corre(const std::function<void()>& accion) {
    accion();
    return true;
}
void sale() noexcept {}
constexpr bool se_puede_salir = false;
#endif

class sin_memoria : public testing::Test {
public:
    explicit sin_memoria(const exportacion& e) : e_(e) {}

    void TestBody() override {
        if (!se_puede_salir) {
            GTEST_SKIP() << "this compiler cannot leave a call half-way";
        }
        const unsigned ultima = ultimo_fallo(e_.como);
        for (const std::wstring& texto : textos_para(e_.como)) {
            texto_en_curso() = texto;
            bool limpia = false;
            for (unsigned n = 1; n <= ultima && !limpia && !HasFailure(); n = siguiente_fallo(e_.como, n)) {
                limpia = ronda(n);
            }
        }
        lumodir_set_func_comprobar_fichero_no_esta_abierto(nullptr);
    }

private:
    bool ronda(unsigned n) {
        const std::string que = e_.como.funcion + ", allocation " + std::to_string(n);
        pon_en_curso(que);
        g_escenario->prepara();
        const unsigned long long vivos = lumospy_bloques_vivos();
        const unsigned long long internos = interno::i_bloques_internos_vivos();
        todas_las_llamadas tablas(g_escenario->carpeta(), clave_de_prueba);
        const apoyo::sustituye puerta(interno::plataforma::termina_proceso, sale);
        g_memoria = interno::memoria;
        g_bloques.clear();
        bool entera;
        {
            const apoyo::sustituye cuenta(interno::memoria, {reserva, cambia, libera});
            const std::unique_ptr<preparada> una = e_.prepara();
            if (!e_.como.es("realloc")) {  // what that one was given stays given when it fails
                g_bloques.clear();
            }
            g_pedidos = 0;
            g_puertas = 0;
            g_faltan = n;
            entera = corre([&] { una->llama(); });
            g_faltan = 0;
        }
        EXPECT_EQ(g_puertas, entera ? 0u : 1u) << que;
        EXPECT_EQ(entera, g_pedidos < n || n == 0) << que;
        if (!entera) {
            tablas.cierra_lo_abierto();
            libera_lo_dejado(vivos, internos, que);
        }
        EXPECT_EQ(tablas.fuera(), std::vector<std::string>()) << que << ": outside its directory";
        g_escenario->comprueba(tablas.ha_cambiado_algo(), que);
        for (const apoyo::informe& i : apoyo::toma_informes()) {
            g_informes_de_ello += i.expresion == "memoria disponible" ? 1 : 0;
        }
        apoyo::toma_avisos();
        apoyo::toma_preguntas();
        apoyo::toma_esperas();
        return entera;
    }
    // What the ended process would have taken with it: each block was counted, in one census or the other.
    void libera_lo_dejado(unsigned long long vivos, unsigned long long internos, const std::string& que) {
        unsigned long long publicos = lumospy_bloques_vivos() - vivos;
        EXPECT_EQ(publicos + interno::i_bloques_internos_vivos() - internos, g_bloques.size()) << que;
        for (void* bloque : std::set<void*>(g_bloques)) {
            if (publicos > 0) {
                --publicos;
                interno::i_libera(bloque);
            } else {
                interno::i_libera_interno(bloque);
            }
        }
        g_bloques.clear();
    }
    const exportacion& e_;
};

}  // namespace

TEST(agotada, un_producto_que_desborda_sale_por_la_misma_puerta) {
    if (!se_puede_salir) {
        GTEST_SKIP() << "this compiler cannot leave a call half-way";
    }
    const apoyo::sustituye puerta(interno::plataforma::termina_proceso, sale);
    g_puertas = 0;
    EXPECT_FALSE(corre([] { lumospy_nousar_calloc(SIZE_MAX / 2 + 1, 2); }));
    EXPECT_EQ(g_puertas, 1u);
    ++g_sin_memoria;
    for (const apoyo::informe& i : apoyo::toma_informes()) {
        EXPECT_EQ(i.expresion, "memoria disponible");
        ++g_informes_de_ello;
    }
}

namespace {

[[maybe_unused]] const bool registradas = [] {
    testing::AddGlobalTestEnvironment(new alrededor);
    for (const exportacion& e : exportaciones()) {
        testing::RegisterTest("fallos", e.como.funcion.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                              [&e]() -> testing::Test* { return new con_fallos(e); });
        testing::RegisterTest("sin_memoria", e.como.funcion.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                              [&e]() -> testing::Test* { return new sin_memoria(e); });
    }
    return true;
}();

}  // namespace
}  // namespace exports
