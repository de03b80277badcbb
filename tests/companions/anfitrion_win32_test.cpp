// Exceptions of other runtimes that a host's functions let out: they end at the call, which counts as "no", and the
// library loses nothing. They are raised as those runtimes raise them, by RaiseException() with their code.
#include "companions/anfitrion.hpp"

#include <stdexcept>

#include "apoyo/apoyo.hpp"
#include "cdir.h"
#include "companions/apunorde.h"
#include "companions/arr.h"
#include "companions/buclrein.h"
#include "companions/buclrein.hpp"
#include "companions/error_interno.h"
#include "companions/lmaviso.h"
#include "companions/lumospy.h"

using namespace apoyo;

namespace {

constexpr DWORD de_microsoft = 0xE06D7363;
constexpr DWORD codigos[] = {de_microsoft, 0xE0434352, 0x0EEDFADE, 0xE0000001};

DWORD codigo_de_ahora = de_microsoft;
int llamadas = 0;

void lanza() {
    ++llamadas;
    // Microsoft's: a magic number, the object, what is known of its type, the module. No object stands behind these.
    const ULONG_PTR argumentos[] = {0x19930520, 0, 0, 0};
    ::RaiseException(codigo_de_ahora, EXCEPTION_NONCONTINUABLE, 4, argumentos);
}

// With something to unwind on the way, and registers that must come back.
struct deshecho {
    int* cuenta;
    ~deshecho() { ++*cuenta; }
};

void lanza_aviso(const wchar_t*, void*) {
    lanza();
}
void lanza_informe(const char*, const char*, unsigned long, const wchar_t*, void*) {
    lanza();
}
unsigned short lanza_pregunta(const wchar_t*, unsigned long, void*) {
    lanza();
    return 1;
}
int lanza_comparacion(const char*, const char*) {
    lanza();
    return 1;
}
int lanza_comparacion_de_punteros(const void*, const void*) {
    lanza();
    return 1;
}
void lanza_destruccion(void** registro) {
    lumospy_nousar_free_pp(registro);
    lanza();
}

}  // namespace

TEST(anfitrion, que_excepciones_acaban_aqui) {
    for (const DWORD codigo : codigos) {
        EXPECT_TRUE(interno::i_acaba_en_la_barrera(codigo)) << std::hex << codigo;
    }
    // GCC's three kinds, faults, a breakpoint, a name given to a thread, a line for the debugger.
    for (const DWORD codigo : {0x20474343ul, 0x21474343ul, 0x22474343ul, 0xC0000005ul, 0xC0000094ul,
                               0xC00000FDul, 0x80000003ul, 0x406D1388ul, 0x40010006ul}) {
        EXPECT_FALSE(interno::i_acaba_en_la_barrera(codigo)) << std::hex << codigo;
    }
}

TEST(anfitrion, la_llamada_vuelve_como_si_nada) {
    int sumados = 0;
    for (const DWORD codigo : codigos) {
        codigo_de_ahora = codigo;
        for (int i = 0; i < 100; ++i) {
            const int respuesta = interno::llama_al_anfitrion(
                [](int* suma) {
                    ++*suma;
                    lanza();
                    return 7;
                },
                &sumados);
            ASSERT_EQ(respuesta, 0);
        }
    }
    EXPECT_EQ(sumados, 400);
    EXPECT_EQ(interno::llama_al_anfitrion([](int x) { return x + 1; }, 41), 42);
}

#if defined(__x86_64__) && defined(__MINGW32__)
extern "C" EXCEPTION_DISPOSITION lumodir_barrera_manejador(EXCEPTION_RECORD* excepcion, void* marco,
                                                           CONTEXT* registros, DISPATCHER_CONTEXT* reparto);

// A frame further out takes the exception and unwinds this one: the search is over, and it goes to nobody else.
TEST(anfitrion, lo_que_ya_se_deshace_sigue_su_camino) {
    for (const DWORD codigo : codigos) {
        for (const DWORD avisos : {0x2ul, 0x4ul, 0x6ul}) {  // unwinding, to its end, or both
            EXCEPTION_RECORD excepcion = {};
            excepcion.ExceptionCode = codigo;
            excepcion.ExceptionFlags = avisos;
            EXPECT_EQ(lumodir_barrera_manejador(&excepcion, nullptr, nullptr, nullptr),
                      ExceptionContinueSearch);
        }
    }
}
#endif

TEST(anfitrion, excepciones_de_gcc) {
    int deshechos = 0;
    const int respuesta = interno::llama_al_anfitrion(
        [](int* cuenta) -> int {
            const deshecho d{cuenta};
            throw std::runtime_error("from a host");
        },
        &deshechos);
    EXPECT_EQ(respuesta, 0);
    EXPECT_EQ(deshechos, 1);
    interno::llama_al_anfitrion([](int x) { throw x; }, 5);
}

TEST(anfitrion, ninguna_funcion_del_anfitrion_se_lleva_un_bloque) {
    for (const DWORD codigo : codigos) {
        codigo_de_ahora = codigo;
        llamadas = 0;
        const unsigned long long vivos = lumospy_bloques_vivos();
        lmaviso_establece_receptor(lanza_aviso, nullptr);
        EXPECT_EQ(cdir_path_valido_UNICODE(L"name.", 1), 0);
        EXPECT_EQ(cdir_path_valido("name.", 1), 0);
        error_interno_establece_receptor(lanza_informe, nullptr);
        interno::cadena_a::adopta(cdir_nombre_base_fichero("a|b.txt"));
        interno::cadena_w::adopta(cdir_concatena_directorios_UNICODE(nullptr, L"b"));
        EXPECT_EQ(llamadas, 4);
        EXPECT_EQ(lumospy_bloques_vivos(), vivos);

        buclrein_establece_receptor(lanza_pregunta, nullptr);
        buclrein_establece_politica(0, 0);
        {
            interno::BuclRein bucle = interno::buclrein_crea(true, true);
            interno::buclrein_set_mensaje_reintentar(
                bucle, [] { return interno::cadena_w(L"x"); }, 5);
            EXPECT_FALSE(interno::buclrein_reintentar(bucle, false));
        }
        EXPECT_EQ(lumospy_bloques_vivos(), vivos);

        ArrCADENA* lista = arr_CreaCADENA(0);
        for (const char* texto : {"c", "b", "a", "d"}) {
            arr_AppendCADENA(lista, texto);
        }
        arr_QSortCADENA(lista, lanza_comparacion);
        EXPECT_EQ(arr_NumElemsCADENA(lista), 4u);
        arr_DestruyeCADENA(&lista);
        EXPECT_EQ(lumospy_bloques_vivos(), vivos);

        ApunOrde* punteros = apunorde_nousar_crea(lanza_comparacion_de_punteros, lanza_destruccion);
        for (int i = 0; i < 3; ++i) {
            void* registro = lumospy_nousar_malloc(8);
            apunorde_nousar_inserta_original(punteros, &registro);
        }
        EXPECT_EQ(apunorde_nousar_num_elems(punteros), 3u);
        apunorde_nousar_destruye(&punteros);
        EXPECT_EQ(lumospy_bloques_vivos(), vivos);
        EXPECT_GT(llamadas, 9);
    }
}
