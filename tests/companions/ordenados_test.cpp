// Arrays that are always sorted, of strings and of records.
#include <algorithm>
#include <random>
#include <stdexcept>

#include "companions/acadorde.hpp"
#include "companions/apunorde.hpp"
#include "companions/lumospy.h"
#include "companions/sabores.hpp"

using namespace apoyo;
using namespace interno;

namespace {

template <class C>
struct orden;
template <>
struct orden<char> {
    using conjunto = AcadOrde;
    static constexpr auto crea = acadorde_crea;
    static constexpr auto inserta = acadorde_inserta;
    static constexpr auto num = acadorde_num_elems;
    static constexpr auto da = acadorde_get;
    static constexpr auto destruye = acadorde_destruye;
};
template <>
struct orden<wchar_t> {
    using conjunto = AcadOrdeU;
    static constexpr auto crea = acadordeu_crea;
    static constexpr auto inserta = acadordeu_inserta;
    static constexpr auto num = acadordeu_num_elems;
    static constexpr auto da = acadordeu_get;
    static constexpr auto destruye = acadordeu_destruye;
};

using textos = std::vector<std::string>;

template <class C>
textos ordenados(const textos& entrada, unsigned short admite_repetidos) {
    auto* conjunto = orden<C>::crea(admite_repetidos);
    for (const std::string& texto : entrada) {
        orden<C>::inserta(conjunto, txt<C>(texto).c_str());
    }
    const textos resultado = textos_de<orden<C>>(conjunto);
    orden<C>::destruye(&conjunto);
    EXPECT_EQ(conjunto, nullptr);
    return resultado;
}

}  // namespace

TEST(ordenados, textos_por_filas) {
    struct fila {
        textos entrada;
        textos sin_repetidos;
        textos con_repetidos;
    };
    const fila filas[] = {
        {.entrada = {}, .sin_repetidos = {}, .con_repetidos = {}},
        {.entrada = {"b", "a"}, .sin_repetidos = {"a", "b"}, .con_repetidos = {"a", "b"}},
        {.entrada = {"a", "a", "a"}, .sin_repetidos = {"a"}, .con_repetidos = {"a", "a", "a"}},
        {.entrada = {"b", "a", "b", "", "a"},
         .sin_repetidos = {"", "a", "b"},
         .con_repetidos = {"", "a", "a", "b", "b"}},
        {.entrada = {"abc", "ab", "abcd"},
         .sin_repetidos = {"ab", "abc", "abcd"},
         .con_repetidos = {"ab", "abc", "abcd"}},
        {.entrada = {"ñ", "z", "A", "a"},
         .sin_repetidos = {"A", "a", "z", "ñ"},
         .con_repetidos = {"A", "a", "z", "ñ"}},
    };
    en_ambos_sabores([&]<class C>() {
        for (const fila& f : filas) {
            EXPECT_EQ(ordenados<C>(f.entrada, 0), f.sin_repetidos) << testing::PrintToString(f.entrada);
            EXPECT_EQ(ordenados<C>(f.entrada, 1), f.con_repetidos) << testing::PrintToString(f.entrada);
            // Anything but 1 is false.
            EXPECT_EQ(ordenados<C>(f.entrada, 2), f.sin_repetidos) << testing::PrintToString(f.entrada);
        }
    });
}

TEST(ordenados, textos_al_azar_como_el_modelo) {
    std::mt19937 azar(11);
    for (int vuelta = 0; vuelta < 60; ++vuelta) {
        textos entrada;
        for (int i = 0; i < 80; ++i) {
            entrada.push_back(std::to_string(azar() % 50));
        }
        textos todos = entrada;
        std::sort(todos.begin(), todos.end());  // digits only: the order of any model
        textos distintos = todos;
        distintos.erase(std::unique(distintos.begin(), distintos.end()), distintos.end());
        en_ambos_sabores([&]<class C>() {
            ASSERT_EQ(ordenados<C>(entrada, 1), todos);
            ASSERT_EQ(ordenados<C>(entrada, 0), distintos);
        });
    }
}

// As the listings make one for a directory that is not there, which the host may fill.
TEST(ordenados, un_conjunto_nuevo_no_admite_repetidos) {
    const auto conjunto = objeto<AcadOrde>::crea();
    for (int vez = 0; vez < 2; ++vez) {
        acadorde_inserta(conjunto.get(), "a");
        EXPECT_EQ(acadorde_num_elems(conjunto.get()), 1u);
    }
}

TEST(ordenados, los_textos_son_copias_prestadas) {
    en_ambos_sabores([]<class C>() {
        auto* conjunto = orden<C>::crea(0);
        auto texto = txt<C>("a");
        orden<C>::inserta(conjunto, texto.c_str());
        texto[0] = C('z');
        EXPECT_EQ(textos_de<orden<C>>(conjunto), textos{"a"});
        EXPECT_EQ(orden<C>::da(conjunto, 0), orden<C>::da(conjunto, 0));
        orden<C>::destruye(&conjunto);
    });
}

TEST(ordenados, null_e_indices_de_textos_se_informan) {
    en_ambos_sabores([]<class C>() {
        orden<C>::inserta(nullptr, txt<C>("x").c_str());
        EXPECT_EQ(orden<C>::num(nullptr), 0u);
        EXPECT_EQ(orden<C>::da(nullptr, 0), nullptr);
        orden<C>::destruye(nullptr);
        EXPECT_EQ(toma_expresiones(), textos(4, "(acadorde) != NULL"));
        typename orden<C>::conjunto* conjunto = nullptr;
        orden<C>::destruye(&conjunto);
        ESPERA_INFORMES("(*acadorde) != NULL");
        conjunto = orden<C>::crea(1);
        orden<C>::inserta(conjunto, nullptr);
        ESPERA_INFORMES("(cadena) != NULL");
        EXPECT_EQ(orden<C>::num(conjunto), 0u);
        EXPECT_EQ(orden<C>::da(conjunto, 0), nullptr);
        ESPERA_INFORMES("indice < num_elems");
        orden<C>::inserta(conjunto, txt<C>("x").c_str());
        EXPECT_EQ(orden<C>::da(conjunto, 1), nullptr);
        ESPERA_INFORMES("indice < num_elems");
        orden<C>::destruye(&conjunto);
    });
}

// ---- records

namespace {

struct registro_con_clave {
    int clave;
    int orden;
};

int g_vivas = 0;

void* nueva(int clave, int orden_de_llegada) {
    ++g_vivas;
    return new registro_con_clave{clave, orden_de_llegada};
}
void destruye_ficha(void** registro) {
    delete static_cast<registro_con_clave*>(*registro);
    *registro = nullptr;
    --g_vivas;
}
int compara_fichas(const void* a, const void* b) {
    const int x = static_cast<const registro_con_clave*>(a)->clave;
    const int y = static_cast<const registro_con_clave*>(b)->clave;
    return x < y ? -1 : x > y;
}
int compara_con_clave(const void* registro, const void* clave) {
    const int x = static_cast<const registro_con_clave*>(registro)->clave;
    const int y = *static_cast<const int*>(clave);
    return x < y ? -1 : x > y;
}

std::vector<std::pair<int, int>> registros_de(const ApunOrde* conjunto) {
    std::vector<std::pair<int, int>> fichas;
    for (unsigned long i = 0; i < apunorde_nousar_num_elems(conjunto); ++i) {
        const auto* f = static_cast<const registro_con_clave*>(apunorde_nousar_get(conjunto, i));
        fichas.emplace_back(f->clave, f->orden);
    }
    return fichas;
}

}  // namespace

TEST(ordenados, los_registros_iguales_guardan_su_orden_de_llegada) {
    std::mt19937 azar(5);
    for (int vuelta = 0; vuelta < 40; ++vuelta) {
        ApunOrde* conjunto = apunorde_nousar_crea(compara_fichas, destruye_ficha);
        std::vector<std::pair<int, int>> esperadas;
        for (int i = 0; i < 60; ++i) {
            const int clave = static_cast<int>(azar() % 9);
            void* registro = nueva(clave, i);
            apunorde_nousar_inserta_original(conjunto, &registro);
            ASSERT_EQ(registro, nullptr);
            esperadas.emplace_back(clave, i);
        }
        std::sort(esperadas.begin(), esperadas.end());  // by key, then by arrival
        ASSERT_EQ(registros_de(conjunto), esperadas);
        for (int clave = -1; clave < 10; ++clave) {
            const auto* hallada = static_cast<const registro_con_clave*>(
                apunorde_nousar_busca(conjunto, &clave, compara_con_clave));
            const bool esta = std::any_of(esperadas.begin(), esperadas.end(),
                                          [&](const auto& par) { return par.first == clave; });
            ASSERT_EQ(hallada != nullptr, esta) << clave;
            if (esta) {
                ASSERT_EQ(hallada->clave, clave);
            }
        }
        apunorde_nousar_destruye(&conjunto);
        ASSERT_EQ(conjunto, nullptr);
        ASSERT_EQ(g_vivas, 0);
    }
}

// What comes in order is compared once, with the last one; else the search halves what is left.
TEST(ordenados, pocas_comparaciones) {
    static int comparaciones = 0;
    ApunOrde* conjunto = apunorde_nousar_crea(
        [](const void* a, const void* b) {
            ++comparaciones;
            return compara_fichas(a, b);
        },
        destruye_ficha);
    const auto inserta = [&](int clave) {
        comparaciones = 0;
        void* registro = nueva(clave, 0);
        apunorde_nousar_inserta_original(conjunto, &registro);
        return comparaciones;
    };
    EXPECT_EQ(inserta(0), 0);
    for (int i = 1; i < 1023; ++i) {
        ASSERT_EQ(inserta(2 * i), 1) << i;
    }
    ASSERT_EQ(inserta(2 * 1022), 1);  // as great as the last one
    for (int i = 0; i < 1024; ++i) {
        ASSERT_LE(inserta(2 * i - 1), 1 + 11) << i;
    }
    apunorde_nousar_destruye(&conjunto);
}

// In a block that the elements fill to its last byte.
TEST(ordenados, insertar_no_mueve_nada_detras_del_ultimo) {
    vector_interno<int> elementos;
    for (int i = 0; i < 16; ++i) {
        elementos.anade(i);
    }
    while (elementos.size() > 3) {
        elementos.quita_ultimo();
    }
    for (const unsigned posicion : {0u, 1u, 4u, 5u}) {
        i_inserta_en(elementos, posicion, 100);
    }
    EXPECT_EQ(std::vector<int>(elementos.begin(), elementos.end()),
              (std::vector<int>{100, 100, 0, 1, 100, 100, 2}));
    EXPECT_EQ(std::vector<int>(elementos.data() + 7, elementos.data() + 16),
              (std::vector<int>{7, 8, 9, 10, 11, 12, 13, 14, 15}));
}

TEST(ordenados, buscar_en_un_conjunto_vacio_no_halla_nada) {
    ApunOrde* conjunto = apunorde_nousar_crea(compara_fichas, destruye_ficha);
    const int clave = 1;
    EXPECT_EQ(apunorde_nousar_busca(conjunto, &clave, compara_con_clave), nullptr);
    apunorde_nousar_destruye(&conjunto);
}

TEST(ordenados, la_clave_llega_a_la_comparacion_tal_cual) {
    ApunOrde* conjunto = apunorde_nousar_crea(compara_fichas, destruye_ficha);
    void* registro = nueva(1, 0);
    const void* const mismo = registro;
    apunorde_nousar_inserta_original(conjunto, &registro);
    const auto compara_null = [](const void*, const void* clave) { return clave == nullptr ? 0 : 1; };
    EXPECT_EQ(apunorde_nousar_busca(conjunto, nullptr, compara_null), mismo);
    apunorde_nousar_destruye(&conjunto);
}

TEST(ordenados, null_e_indices_de_registros_se_informan) {
    int x = 0;
    void* registro = &x;
    void* sin_registro = nullptr;
    apunorde_nousar_inserta_original(nullptr, &registro);
    EXPECT_EQ(registro, &x);
    EXPECT_EQ(apunorde_nousar_num_elems(nullptr), 0u);
    EXPECT_EQ(apunorde_nousar_get(nullptr, 0), nullptr);
    EXPECT_EQ(apunorde_nousar_busca(nullptr, &x, compara_con_clave), nullptr);
    apunorde_nousar_destruye(nullptr);
    EXPECT_EQ(toma_expresiones(), textos(5, "(apunorde) != NULL"));
    ApunOrde* conjunto = nullptr;
    apunorde_nousar_destruye(&conjunto);
    ESPERA_INFORMES("(*apunorde) != NULL");

    conjunto = apunorde_nousar_crea(compara_fichas, destruye_ficha);
    apunorde_nousar_inserta_original(conjunto, nullptr);
    ESPERA_INFORMES("(registro) != NULL");
    apunorde_nousar_inserta_original(conjunto, &sin_registro);
    ESPERA_INFORMES("(*registro) != NULL");
    EXPECT_EQ(apunorde_nousar_num_elems(conjunto), 0u);
    EXPECT_EQ(apunorde_nousar_get(conjunto, 0), nullptr);
    ESPERA_INFORMES("indice < num_elems");
    EXPECT_EQ(apunorde_nousar_busca(conjunto, &x, nullptr), nullptr);
    ESPERA_INFORMES("(func_compara) != NULL");
    apunorde_nousar_destruye(&conjunto);
}

TEST(ordenados, sin_comparacion_ni_destruccion_se_informa_y_sigue) {
    ApunOrde* conjunto = apunorde_nousar_crea(nullptr, nullptr);
    ESPERA_INFORMES("(func_compara) != NULL", "(func_destruye) != NULL");
    int uno = 1;
    int dos = 2;
    for (int* p : {&dos, &uno}) {
        void* registro = p;
        apunorde_nousar_inserta_original(conjunto, &registro);
    }
    EXPECT_EQ(apunorde_nousar_get(conjunto, 0), &dos);  // the order of insertion
    EXPECT_EQ(apunorde_nousar_get(conjunto, 1), &uno);
    apunorde_nousar_destruye(&conjunto);  // and the records stay
}

TEST(ordenados, una_comparacion_que_lanza_o_se_contradice_no_pierde_registros) {
    int (*const comparaciones[])(const void*, const void*) = {
        [](const void*, const void*) -> int { throw std::runtime_error("no"); },
        [](const void*, const void*) { return 1; },
        [](const void*, const void*) { return -1; },
    };
    for (const auto comparacion : comparaciones) {
        ApunOrde* conjunto = apunorde_nousar_crea(comparacion, destruye_ficha);
        for (int i = 0; i < 30; ++i) {
            void* registro = nueva(i, i);
            apunorde_nousar_inserta_original(conjunto, &registro);
        }
        EXPECT_EQ(apunorde_nousar_num_elems(conjunto), 30u);
        const int clave = 3;
        apunorde_nousar_busca(conjunto, &clave, comparacion);
        apunorde_nousar_destruye(&conjunto);
        EXPECT_EQ(g_vivas, 0);
    }
}

namespace {

ApunOrde* g_conjunto;
int g_destruidos_del_conjunto;

// The first time, the array grows under the search.
int compara_y_trae_mas(const void* registro, const void* clave) {
    const int resultado = compara_con_clave(registro, clave);
    const int vivas = g_vivas;
    for (int i = 0; vivas < 100 && i < 1000; ++i) {
        void* otro = nueva(1000, i);
        apunorde_nousar_inserta_original(g_conjunto, &otro);
    }
    return resultado;
}

void destruye_y_vuelve_al_conjunto(void** registro) {
    *registro = nullptr;
    if (++g_destruidos_del_conjunto < 10) {  // without end otherwise
        apunorde_nousar_destruye(&g_conjunto);
    }
}

}  // namespace

TEST(ordenados, una_comparacion_puede_traer_mas_registros) {
    g_conjunto = apunorde_nousar_crea(compara_fichas, destruye_ficha);
    for (int i = 0; i < 50; ++i) {
        void* registro = nueva(i, 0);
        apunorde_nousar_inserta_original(g_conjunto, &registro);
    }
    const int clave = 31;
    const auto* hallada =
        static_cast<const registro_con_clave*>(apunorde_nousar_busca(g_conjunto, &clave, compara_y_trae_mas));
    ASSERT_NE(hallada, nullptr);
    EXPECT_EQ(hallada->clave, clave);
    EXPECT_EQ(apunorde_nousar_num_elems(g_conjunto), 1050u);
    apunorde_nousar_destruye(&g_conjunto);
    EXPECT_EQ(g_vivas, 0);
}

TEST(ordenados, una_destruccion_que_vuelve_al_conjunto_lo_halla_ya_tomado) {
    g_destruidos_del_conjunto = 0;
    g_conjunto = apunorde_nousar_crea(compara_fichas, destruye_y_vuelve_al_conjunto);
    registro_con_clave fichas[3] = {{2, 0}, {1, 1}, {3, 2}};
    for (registro_con_clave& f : fichas) {
        void* registro = &f;
        apunorde_nousar_inserta_original(g_conjunto, &registro);
    }
    apunorde_nousar_destruye(&g_conjunto);
    EXPECT_EQ(g_destruidos_del_conjunto, 3);
    EXPECT_EQ(g_conjunto, nullptr);
    ESPERA_INFORMES("(*apunorde) != NULL", "(*apunorde) != NULL", "(*apunorde) != NULL");
}
