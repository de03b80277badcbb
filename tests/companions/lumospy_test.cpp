// Tracked memory: the census, the sizes of nothing, and exhausted memory, which ends the process.
#include "companions/lumospy.hpp"

#include <cstdlib>
#include <cstring>
#include <thread>

#include "apoyo/apoyo.hpp"
#include "companions/arr.h"
#include "companions/error_interno.h"
#include "companions/error_interno.hpp"
#include "companions/lumospy.h"
#include "companions/plataforma.hpp"
#include "companions/widestr.h"

using namespace apoyo;
using namespace interno;

TEST(lumospy, el_censo_cuenta_cada_bloque_una_vez) {
    const unsigned long long antes = lumospy_bloques_vivos();
    void* a = lumospy_nousar_malloc(10);
    void* b = lumospy_nousar_calloc(3, 7);
    EXPECT_EQ(lumospy_bloques_vivos(), antes + 2);
    a = lumospy_nousar_realloc(a, 100000);
    EXPECT_EQ(lumospy_bloques_vivos(), antes + 2);
    void* c = lumospy_nousar_realloc(nullptr, 4);
    EXPECT_EQ(lumospy_bloques_vivos(), antes + 3);
    for (void** p : {&a, &b, &c}) {
        lumospy_nousar_free_pp(p);
        EXPECT_EQ(*p, nullptr);
    }
    EXPECT_EQ(lumospy_bloques_vivos(), antes);
}

TEST(lumospy, un_texto_y_una_lista_cuentan_uno_por_mucho_que_crezcan) {
    const unsigned long long antes = lumospy_bloques_vivos();
    ArrPunteroConTipo* lista = arr_CreaPunteroConTipo(0);
    int registro = 0;
    for (int i = 0; i < 1000; ++i) {
        arr_AppendPunteroConTipo(lista, &registro);
    }
    wchar_t* texto = widestr_nousar_copia(L"texto", "prueba", 1);
    EXPECT_EQ(lumospy_bloques_vivos(), antes + 2);
    widestr_nousar_destruye(&texto, "prueba", 1);
    arr_DestruyeEstructurasConTipo(&lista, [](void** r) { *r = nullptr; });
    EXPECT_EQ(lumospy_bloques_vivos(), antes);
}

TEST(lumospy, calloc_llena_de_ceros_y_realloc_conserva) {
    auto* ceros = static_cast<unsigned char*>(lumospy_nousar_calloc(50, 4));
    for (int i = 0; i < 200; ++i) {
        ASSERT_EQ(ceros[i], 0) << i;
        ceros[i] = static_cast<unsigned char>(i);
    }
    ceros = static_cast<unsigned char*>(lumospy_nousar_realloc(ceros, 100000));
    for (int i = 0; i < 200; ++i) {
        ASSERT_EQ(ceros[i], i);
    }
    ceros = static_cast<unsigned char*>(lumospy_nousar_realloc(ceros, 20));
    for (int i = 0; i < 20; ++i) {
        ASSERT_EQ(ceros[i], i);
    }
    void* bloque = ceros;
    lumospy_nousar_free_pp(&bloque);
}

TEST(lumospy, cero_bytes_dan_un_bloque_que_se_puede_liberar) {
    void* bloques[] = {lumospy_nousar_malloc(0), lumospy_nousar_calloc(0, 8), lumospy_nousar_calloc(8, 0),
                       lumospy_nousar_realloc(nullptr, 0),
                       lumospy_nousar_realloc(lumospy_nousar_malloc(9), 0)};
    for (void*& bloque : bloques) {
        EXPECT_NE(bloque, nullptr);
        lumospy_nousar_free_pp(&bloque);
        EXPECT_EQ(bloque, nullptr);
    }
}

TEST(lumospy, liberar_null_se_informa) {
    lumospy_nousar_free_pp(nullptr);
    ESPERA_INFORMES("(pointer) != NULL");
    void* nulo = nullptr;
    lumospy_nousar_free_pp(&nulo);
    ESPERA_INFORMES("(*pointer) != NULL");
}

TEST(lumospy, el_censo_es_exacto_con_varios_hilos) {
    const unsigned long long antes = lumospy_bloques_vivos();
    std::vector<std::thread> hilos;
    for (int h = 0; h < 4; ++h) {
        hilos.emplace_back([] {
            for (int i = 0; i < 20000; ++i) {
                void* bloque = lumospy_nousar_malloc(8);
                lumospy_nousar_free_pp(&bloque);
            }
        });
    }
    for (std::thread& hilo : hilos) {
        hilo.join();
    }
    EXPECT_EQ(lumospy_bloques_vivos(), antes);
}

TEST(lumospy, los_bloques_internos_van_aparte) {
    const unsigned long long vivos = lumospy_bloques_vivos();
    const unsigned long long internos = i_bloques_internos_vivos();
    {
        vector_interno<int> numeros;
        for (int i = 0; i < 100; ++i) {
            numeros.anade(i);
        }
        EXPECT_EQ(i_bloques_internos_vivos(), internos + 1);
        EXPECT_EQ(lumospy_bloques_vivos(), vivos);
        numeros.anade(numeros[7]);  // an element of its own, also when the array moves
        EXPECT_EQ(numeros.back(), 7);
        EXPECT_EQ(numeros.size(), 101u);
        numeros.acorta(200);
        EXPECT_EQ(numeros.size(), 101u);
        numeros.acorta(3);
        numeros.quita_ultimo();
        EXPECT_EQ(numeros.size(), 2u);
        vector_interno<int> otros = std::move(numeros);
        EXPECT_EQ(otros.size(), 2u);
        EXPECT_EQ(i_bloques_internos_vivos(), internos + 1);
    }
    EXPECT_EQ(i_bloques_internos_vivos(), internos);
}

namespace {

// What the allocator underneath is asked for while it lives.
class peticiones {
public:
    peticiones() : de_antes_(memoria) {
        actual_ = this;
        memoria.reserva = [](std::size_t bytes) {
            actual_->pedidos.push_back(bytes);
            return actual_->de_antes_.reserva(bytes);
        };
        memoria.cambia = [](void* bloque, std::size_t bytes) {
            actual_->pedidos.push_back(bytes);
            return actual_->de_antes_.cambia(bloque, bytes);
        };
        memoria.libera = [](void* bloque) {
            ++actual_->liberados;
            actual_->de_antes_.libera(bloque);
        };
    }
    ~peticiones() { memoria = de_antes_; }
    peticiones(const peticiones&) = delete;
    peticiones& operator=(const peticiones&) = delete;

    std::vector<std::size_t> pedidos;
    unsigned liberados = 0;

private:
    static inline peticiones* actual_ = nullptr;
    tabla_memoria de_antes_;
};

}  // namespace

TEST(lumospy, pide_lo_justo_y_lo_devuelve_todo) {
    peticiones p;
    void* bloque = lumospy_nousar_malloc(0);  // NULL would be exhausted memory
    bloque = lumospy_nousar_realloc(bloque, 10);
    bloque = lumospy_nousar_realloc(bloque, 0);
    lumospy_nousar_free_pp(&bloque);
    bloque = lumospy_nousar_calloc(3, 5);
    lumospy_nousar_free_pp(&bloque);
    { const auto uno = registro<long long>::a_cero(); }
    EXPECT_EQ(p.pedidos, (std::vector<std::size_t>{1, 10, 1, 15, sizeof(long long)}));
    EXPECT_EQ(p.liberados, 3u);
}

TEST(lumospy, un_vector_dobla_su_sitio_y_lo_devuelve) {
    peticiones p;
    {
        vector_interno<int> numeros;
        for (int i = 0; i < 65; ++i) {
            numeros.anade(i);
        }
        EXPECT_EQ(p.pedidos, (std::vector<std::size_t>{16 * sizeof(int), 32 * sizeof(int), 64 * sizeof(int),
                                                       128 * sizeof(int)}));
    }
    EXPECT_EQ(p.liberados, 1u);
}

TEST(lumospy, un_vector_que_se_ha_movido_esta_vacio_y_vuelve_a_crecer) {
    vector_interno<int> numeros;
    numeros.anade(1);
    const vector_interno<int> otros = std::move(numeros);
    EXPECT_EQ(std::vector<int>(otros.begin(), otros.end()), std::vector<int>{1});
    EXPECT_EQ(otros.back(), 1);
    EXPECT_TRUE(numeros.empty());  // NOLINT: what is left behind is promised
    numeros.anade(2);
    numeros.anade(3);
    EXPECT_EQ(numeros.size(), 2u);
    EXPECT_EQ(numeros.back(), 3);
    numeros.vacia();
    EXPECT_TRUE(numeros.empty());
}

TEST(lumospy, varios_de_una_vez_como_de_uno_en_uno) {
    for (std::size_t antes = 0; antes < 40; ++antes) {
        for (std::size_t cuantos = 0; cuantos < 80; ++cuantos) {
            std::vector<int> esperados;
            vector_interno<int> numeros;
            for (std::size_t i = 0; i < antes; ++i) {
                esperados.push_back(static_cast<int>(i));
                numeros.anade(static_cast<int>(i));
            }
            std::vector<int> varios(cuantos);
            for (std::size_t i = 0; i < cuantos; ++i) {
                varios[i] = static_cast<int>(1000 + i);
            }
            esperados.insert(esperados.end(), varios.begin(), varios.end());
            peticiones p;
            numeros.anade_varios(varios.data(), cuantos);
            const std::size_t sitio = antes == 0 ? 0 : antes <= 16 ? 16 : antes <= 32 ? 32 : 64;
            std::vector<std::size_t> pedidos;
            if (antes + cuantos > sitio) {
                pedidos.push_back((antes + cuantos) * 2 * sizeof(int));
            }
            ASSERT_EQ(p.pedidos, pedidos) << antes << " " << cuantos;
            ASSERT_EQ(std::vector<int>(numeros.begin(), numeros.end()), esperados) << antes << " " << cuantos;
        }
    }
}

TEST(lumospy, un_vector_suelta_sus_elementos_en_un_bloque_justo) {
    vector_interno<int> numeros;
    EXPECT_EQ(numeros.suelta_en_bloque(), nullptr);
    for (int i = 0; i < 5; ++i) {
        numeros.anade(i * i);
    }
    peticiones p;
    int* const bloque = numeros.suelta_en_bloque();
    EXPECT_EQ(p.pedidos, std::vector<std::size_t>{5 * sizeof(int)});
    EXPECT_EQ(std::vector<int>(bloque, bloque + 5), (std::vector<int>{0, 1, 4, 9, 16}));
    EXPECT_TRUE(numeros.empty());
    void* suelto = bloque;
    lumospy_nousar_free_pp(&suelto);
}

TEST(lumospy, un_elemento_propio_se_anade_al_llenarse_el_sitio) {
    vector_interno<int> numeros;
    for (int i = 0; i < 16; ++i) {
        numeros.anade(i + 100);
    }
    numeros.anade(numeros[3]);  // the 17th: the array grows while it is read
    EXPECT_EQ(numeros.back(), 103);
}

TEST(lumospy, registro_es_dueno_unico) {
    const unsigned long long antes = lumospy_bloques_vivos();
    {
        registro<int> a = registro<int>::a_cero();
        EXPECT_EQ(*a, 0);
        int* bloque = a.get();
        registro<int> b = std::move(a);
        EXPECT_FALSE(static_cast<bool>(a));  // NOLINT: what is left behind is promised
        EXPECT_EQ(b.get(), bloque);
        registro<int> c = registro<int>::a_cero();
        c = std::move(b);
        EXPECT_EQ(c.get(), bloque);
        EXPECT_EQ(lumospy_bloques_vivos(), antes + 1);
        void* suelto = c.suelta();
        EXPECT_FALSE(static_cast<bool>(c));
        lumospy_nousar_free_pp(&suelto);
    }
    EXPECT_EQ(lumospy_bloques_vivos(), antes);
}

TEST(lumospy, un_campo_toma_el_texto_de_una_variable) {
    wchar_t* variable = widestr_nousar_copia(L"x", "prueba", 1);
    wchar_t* const bloque = variable;
    wchar_t* campo = nullptr;
    lumospy_nousar_asigna_doble_puntero_no_null(&campo, &variable);
    EXPECT_EQ(campo, bloque);
    EXPECT_EQ(variable, nullptr);
    EXPECT_EQ(toma(campo), "x");
}

// ---- exhausted memory: every row dies in a process of its own

namespace {

constexpr int muerte_esperada = 77;
int g_informes_de_agotada = 0;
unsigned long long g_vivos_entonces = 0;  // how many blocks are to be counted when it is reported

void cuenta_agotada(const char* expresion, const char* etiqueta, unsigned long, const wchar_t* detalle,
                    void*) {
    if (std::strcmp(expresion, "memoria disponible") == 0 &&
        std::strcmp(etiqueta, "lumodir (LUMODIR.DLL)") == 0 && detalle == nullptr &&
        lumospy_bloques_vivos() == g_vivos_entonces) {
        ++g_informes_de_agotada;
    }
    // A receiver that needs memory itself must not start it all over.
    void* otro = lumospy_nousar_malloc(1);
    lumospy_nousar_free_pp(&otro);
}

void muere() noexcept {
    std::_Exit(g_informes_de_agotada == 1 ? muerte_esperada : 1);
}

void agota(void (*accion)(), unsigned reservados) {
    g_vivos_entonces = lumospy_bloques_vivos() + reservados;
    error_interno_establece_receptor(cuenta_agotada, nullptr);
    plataforma::termina_proceso = muere;
    memoria.reserva = [](std::size_t) -> void* { return nullptr; };
    memoria.cambia = [](void*, std::size_t) -> void* { return nullptr; };
    accion();
    std::_Exit(2);  // it came back: no allocator may
}

struct fila_agotada {
    const char* nombre;
    void (*accion)();
    unsigned reservados = 0;  // that it has taken before
};

}  // namespace

TEST(lumospy, la_memoria_agotada_se_informa_una_vez_y_acaba_el_proceso) {
    static void* bloque = nullptr;
    const fila_agotada filas[] = {
        {.nombre = "malloc", .accion = [] { lumospy_nousar_malloc(1); }},
        {.nombre = "realloc", .accion = [] { lumospy_nousar_realloc(bloque, 10); }},
        {.nombre = "text", .accion = [] { widestr_nousar_copia(L"x", "lumodir (LUMODIR.DLL)", 1); }},
        {.nombre = "inner array",
         .accion =
             [] {
                 vector_interno<int> numeros;
                 numeros.anade(1, lugar::aqui("arr.cpp", 1));
             }},
        {.nombre = "the second of two strings",
         .accion =
             [] {
                 static void* (*const sin_memoria)(std::size_t) = memoria.reserva;
                 memoria.reserva = std::malloc;
                 wchar_t* copias[2];
                 entrega_de_copias entrega;
                 entrega.copia(&copias[0], vista_w(L"a"), lugar::aqui("arr.cpp", 1));
                 memoria.reserva = sin_memoria;
                 entrega.copia(&copias[1], vista_w(L"b"), lugar::aqui("arr.cpp", 1));
             },
         .reservados = 1},
    };
    bloque = lumospy_nousar_malloc(1);
    for (const fila_agotada& fila : filas) {
        EXPECT_EXIT(agota(fila.accion, fila.reservados), testing::ExitedWithCode(muerte_esperada), "")
            << fila.nombre;
    }
    lumospy_nousar_free_pp(&bloque);
}

TEST(lumospy, un_producto_que_desborda_es_memoria_agotada) {
    const auto calcula = [] {
        g_vivos_entonces = lumospy_bloques_vivos();
        error_interno_establece_receptor(cuenta_agotada, nullptr);
        plataforma::termina_proceso = muere;
        lumospy_nousar_calloc(SIZE_MAX / 2 + 1, 2);
        std::_Exit(2);
    };
    EXPECT_EXIT(calcula(), testing::ExitedWithCode(muerte_esperada), "");
    const auto crece = [] {
        g_vivos_entonces = lumospy_bloques_vivos();
        error_interno_establece_receptor(cuenta_agotada, nullptr);
        plataforma::termina_proceso = muere;
        // What the allocator is asked for must not be the wrapped product.
        static const auto de_antes = memoria.reserva;
        memoria.reserva = [](std::size_t bytes) -> void* {
            return bytes == SIZE_MAX ? nullptr : de_antes(bytes);
        };
        vector_interno<long long> numeros;
        numeros.reserva_sitio(SIZE_MAX / 8 + 2, lugar::aqui("arr.cpp", 1));
        std::_Exit(2);
    };
    EXPECT_EXIT(crece(), testing::ExitedWithCode(muerte_esperada), "");
}

TEST(lumospy, sin_nadie_que_lo_cambie_el_proceso_acaba_de_verdad) {
    const auto sin_cambios = [] {
        error_interno_establece_receptor(nullptr, nullptr);
        memoria.reserva = [](std::size_t) -> void* { return nullptr; };
        lumospy_nousar_malloc(1);
    };
#ifdef _WIN32
    EXPECT_EXIT(sin_cambios(), testing::ExitedWithCode(3), "memoria disponible");
#else
    EXPECT_EXIT(sin_cambios(), testing::KilledBySignal(SIGABRT), "memoria disponible");
#endif
}
