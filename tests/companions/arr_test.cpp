// The exported lists, 8-bit, wide and of records: every operation, every NULL, every index out of range.
#include "companions/arr.hpp"

#include <algorithm>
#include <climits>
#include <random>
#include <stdexcept>

#include "apoyo/paginas.hpp"
#include "companions/lumospy.h"
#include "companions/lumostr.h"
#include "companions/sabores.hpp"
#include "companions/widestr.h"

using namespace apoyo;
using namespace interno;

namespace {

// The exports of a flavour under common names.
template <class C>
struct arr;
template <>
struct arr<char> {
    using lista = ArrCADENA;
    static constexpr auto crea = arr_CreaCADENA;
    static constexpr auto anade = arr_AppendCADENA;
    static constexpr auto anade_original = arr_AppendCADENAOriginal;
    static constexpr auto num = arr_NumElemsCADENA;
    static constexpr auto da = arr_GetCADENA;
    static constexpr auto da_copia = arr_GetCopiaCADENA;
    static constexpr auto pon = arr_SetCADENA;
    static constexpr auto borra = arr_BorrarCADENA;
    static constexpr auto reduce = arr_ReduceTamanyoCADENA;
    static constexpr auto ordena = arr_QSortCADENA;
    static constexpr auto destruye = arr_DestruyeCADENA;
    static char* texto_nuevo(const char* texto) { return cadena_a(vista_a(texto)).suelta(); }
};
template <>
struct arr<wchar_t> {
    using lista = ArrCADENA_u;
    static constexpr auto crea = arr_CreaCADENA_u;
    static constexpr auto anade = arr_AppendCADENA_u;
    static constexpr auto anade_original = arr_AppendCADENAOriginal_u;
    static constexpr auto num = arr_NumElemsCADENA_u;
    static constexpr auto da = arr_GetCADENA_u;
    static constexpr auto da_copia = arr_GetCopiaCADENA_u;
    static constexpr auto pon = arr_SetCADENA_u;
    static constexpr auto borra = arr_BorrarCADENA_u;
    static constexpr auto reduce = arr_ReduceTamanyoCADENA_u;
    static constexpr auto ordena = arr_QSortCADENA_u;
    static constexpr auto destruye = arr_DestruyeCADENA_u;
    static wchar_t* texto_nuevo(const wchar_t* texto) { return cadena_w(vista_w(texto)).suelta(); }
};

template <class C>
typename arr<C>::lista* lista_de(const std::vector<std::string>& textos) {
    auto* lista = arr<C>::crea(0);
    for (const std::string& texto : textos) {
        arr<C>::anade(lista, txt<C>(texto).c_str());
    }
    return lista;
}

using textos = std::vector<std::string>;

}  // namespace

TEST(arr, nace_vacia_sea_cual_sea_el_sitio) {
    en_ambos_sabores([]<class C>() {
        for (const unsigned long sitio : {0ul, 1ul, 1000ul, 0xFFFFFFFFul}) {  // room is a hint
            auto* lista = arr<C>::crea(sitio);
            EXPECT_EQ(arr<C>::num(lista), 0u) << sitio;
            arr<C>::anade(lista, txt<C>("x").c_str());
            EXPECT_EQ(textos_de<arr<C>>(lista), textos{"x"}) << sitio;
            arr<C>::destruye(&lista);
            EXPECT_EQ(lista, nullptr) << sitio;
        }
    });
    ArrPunteroConTipo* punteros = arr_CreaPunteroConTipo(0xFFFFFFFFul);
    EXPECT_EQ(arr_NumElemsPuntero(punteros), 0u);
    arr_DestruyeEstructurasConTipo(&punteros, [](void**) {});
}

// A thousand elements that were announced are not moved while they come; a wild number does not exhaust the memory.
TEST(arr, el_sitio_anunciado_se_toma_de_una_vez_y_con_medida) {
    static std::vector<std::size_t> pedidos;
    static void* (*de_antes)(std::size_t) = nullptr;
    de_antes = memoria.reserva;
    const sustituye<decltype(memoria.reserva)> apunta(memoria.reserva, [](std::size_t bytes) {
        pedidos.push_back(bytes);
        return de_antes(bytes);
    });
    struct fila {
        unsigned long sitio;
        std::size_t elementos;
    };
    for (const fila& f :
         {fila{0, 0}, fila{1, 1}, fila{1000, 1000}, fila{65536, 65536}, fila{0xFFFFFFFFul, 65536}}) {
        std::vector<std::size_t> esperados;
        if (f.elementos != 0) {
            esperados.push_back(f.elementos * sizeof(void*));
        }
        const auto el_sitio = [&] {
            pedidos.erase(pedidos.begin());  // the list itself
            return pedidos;
        };
        en_ambos_sabores([&]<class C>() {
            pedidos.clear();
            auto* lista = arr<C>::crea(f.sitio);
            EXPECT_EQ(el_sitio(), esperados) << f.sitio;
            arr<C>::destruye(&lista);
        });
        pedidos.clear();
        ArrPunteroConTipo* punteros = arr_CreaPunteroConTipo(f.sitio);
        EXPECT_EQ(el_sitio(), esperados) << f.sitio;
        arr_DestruyeEstructurasConTipo(&punteros, [](void**) {});
    }
    auto lista = objeto<ArrCADENA_u>::crea();
    for (int i = 0; i < 40; ++i) {
        lista->anade(cadena_w(vista_w(L"x")));
    }
    pedidos.clear();
    const auto convertida = utunicode_cadenas_UNICODE_a_ANSI_destruyendo(std::move(lista));
    EXPECT_EQ(convertida->num(), 40u);
    EXPECT_EQ(std::count(pedidos.begin(), pedidos.end(), 40 * sizeof(char*)), 1);
}

TEST(arr, anade_copias_en_su_orden) {
    en_ambos_sabores([]<class C>() {
        auto texto = txt<C>("año");
        auto* lista = arr<C>::crea(0);
        arr<C>::anade(lista, texto.c_str());
        texto[0] = C('X');  // the list has a copy
        arr<C>::anade(lista, txt<C>("").c_str());
        arr<C>::anade(lista, txt<C>("año").c_str());
        EXPECT_EQ(textos_de<arr<C>>(lista), (textos{"año", "", "año"}));
        EXPECT_EQ(arr<C>::da(lista, 0), arr<C>::da(lista, 0));  // borrowed, not copied
        arr<C>::destruye(&lista);
    });
}

TEST(arr, anade_original_toma_el_bloque_y_limpia_la_variable) {
    en_ambos_sabores([]<class C>() {
        auto* lista = arr<C>::crea(0);
        const unsigned long long antes = lumospy_bloques_vivos();
        C* texto = arr<C>::texto_nuevo(txt<C>("ñ").c_str());
        const C* bloque = texto;
        arr<C>::anade_original(lista, &texto);
        EXPECT_EQ(texto, nullptr);
        EXPECT_EQ(arr<C>::da(lista, 0), bloque);
        EXPECT_EQ(lumospy_bloques_vivos(), antes + 1);
        arr<C>::destruye(&lista);
    });
}

TEST(arr, crece_hasta_miles_sin_perder_ninguno) {
    en_ambos_sabores([]<class C>() {
        textos esperados;
        for (int i = 0; i < 3000; ++i) {
            esperados.push_back(std::to_string(i));
        }
        auto* lista = lista_de<C>(esperados);
        EXPECT_EQ(textos_de<arr<C>>(lista), esperados);
        arr<C>::destruye(&lista);
    });
}

TEST(arr, da_copia_nueva_de_quien_llama) {
    en_ambos_sabores([]<class C>() {
        auto* lista = lista_de<C>({"uno", "dós"});
        C* copia = arr<C>::da_copia(lista, 1);
        EXPECT_NE(copia, arr<C>::da(lista, 1));
        arr<C>::destruye(&lista);
        EXPECT_EQ(toma(copia), "dós");
    });
}

TEST(arr, pon_cambia_uno_tambien_por_si_mismo) {
    en_ambos_sabores([]<class C>() {
        auto* lista = lista_de<C>({"a", "b", "c"});
        arr<C>::pon(lista, 1, txt<C>("más largo").c_str());
        arr<C>::pon(lista, 0, arr<C>::da(lista, 0));  // its own text
        arr<C>::pon(lista, 2, arr<C>::da(lista, 1));  // another element's
        EXPECT_EQ(textos_de<arr<C>>(lista), (textos{"a", "más largo", "más largo"}));
        EXPECT_NE(arr<C>::da(lista, 1), arr<C>::da(lista, 2));
        arr<C>::destruye(&lista);
    });
}

TEST(arr, borra_y_reduce) {
    struct fila {
        const char* nombre;
        unsigned long borra;
        textos quedan;
    };
    const fila filas[] = {{.nombre = "first", .borra = 0, .quedan = {"b", "c"}},
                          {.nombre = "middle", .borra = 1, .quedan = {"a", "c"}},
                          {.nombre = "last", .borra = 2, .quedan = {"a", "b"}}};
    en_ambos_sabores([&]<class C>() {
        for (const fila& f : filas) {
            auto* lista = lista_de<C>({"a", "b", "c"});
            const unsigned long long antes = lumospy_bloques_vivos();
            arr<C>::borra(lista, f.borra);
            EXPECT_EQ(textos_de<arr<C>>(lista), f.quedan) << f.nombre;
            EXPECT_EQ(lumospy_bloques_vivos(), antes - 1) << f.nombre;
            arr<C>::destruye(&lista);
        }
        for (unsigned long n = 0; n <= 3; ++n) {
            auto* lista = lista_de<C>({"a", "b", "c"});
            arr<C>::reduce(lista, n);
            const textos todos = {"a", "b", "c"};
            EXPECT_EQ(textos_de<arr<C>>(lista), textos(todos.begin(), todos.begin() + static_cast<long>(n)))
                << n;
            arr<C>::anade(lista, txt<C>("d").c_str());  // it still grows
            EXPECT_EQ(lee(arr<C>::da(lista, n)), "d");
            arr<C>::destruye(&lista);
        }
    });
}

TEST(arr, un_indice_fuera_se_informa_y_no_cambia_nada) {
    en_ambos_sabores([]<class C>() {
        auto* lista = lista_de<C>({"a", "b"});
        for (const unsigned long indice : {2ul, 3ul, 0x7FFFFFFFul, 0xFFFFFFFFul}) {
            EXPECT_EQ(arr<C>::da(lista, indice), nullptr) << indice;
            ESPERA_INFORMES("indice < num_elems");
            EXPECT_EQ(arr<C>::da_copia(lista, indice), nullptr) << indice;
            ESPERA_INFORMES("indice < num_elems");
            arr<C>::pon(lista, indice, txt<C>("x").c_str());
            ESPERA_INFORMES("indice < num_elems");
            arr<C>::borra(lista, indice);
            ESPERA_INFORMES("indice < num_elems");
            EXPECT_EQ(textos_de<arr<C>>(lista), (textos{"a", "b"})) << indice;
        }
        arr<C>::reduce(lista, 3);
        ESPERA_INFORMES("nuevo_tamanyo <= num_elems");
        EXPECT_EQ(arr<C>::num(lista), 2u);
        arr<C>::destruye(&lista);
        auto* vacia = arr<C>::crea(5);
        EXPECT_EQ(arr<C>::da(vacia, 0), nullptr);  // room is no element
        ESPERA_INFORMES("indice < num_elems");
        arr<C>::destruye(&vacia);
    });
}

TEST(arr, null_se_informa_y_no_cambia_nada) {
    en_ambos_sabores([]<class C>() {
        const auto x = txt<C>("x");
        typename arr<C>::lista* nula = nullptr;
        C* texto = arr<C>::texto_nuevo(x.c_str());
        C* sin_texto = nullptr;

        arr<C>::anade(nullptr, x.c_str());
        arr<C>::anade_original(nullptr, &texto);
        EXPECT_NE(texto, nullptr);  // it stays the caller's
        EXPECT_EQ(arr<C>::num(nullptr), 0u);
        EXPECT_EQ(arr<C>::da(nullptr, 0), nullptr);
        EXPECT_EQ(arr<C>::da_copia(nullptr, 0), nullptr);
        arr<C>::pon(nullptr, 0, x.c_str());
        arr<C>::borra(nullptr, 0);
        arr<C>::reduce(nullptr, 0);
        arr<C>::ordena(nullptr, nullptr);
        arr<C>::destruye(nullptr);
        EXPECT_EQ(toma_expresiones(), textos(10, "(arr) != NULL"));
        arr<C>::destruye(&nula);
        ESPERA_INFORMES("(*arr) != NULL");

        auto* lista = lista_de<C>({"a"});
        arr<C>::anade(lista, nullptr);
        ESPERA_INFORMES("(cadena) != NULL");
        arr<C>::anade_original(lista, nullptr);
        ESPERA_INFORMES("(cadena) != NULL");
        arr<C>::anade_original(lista, &sin_texto);
        ESPERA_INFORMES("(*cadena) != NULL");
        arr<C>::pon(lista, 0, nullptr);
        ESPERA_INFORMES("(cadena) != NULL");
        EXPECT_EQ(textos_de<arr<C>>(lista), textos{"a"});
        arr<C>::destruye(&lista);
        EXPECT_EQ(toma(texto), "x");
    });
}

TEST(arr, ordena_por_defecto_unidad_a_unidad) {
    // Bytes and units unsigned, a shorter beginning first, no locale: "Z" before "a", "ñ" after "z".
    const textos desordenados = {"ñ", "z", "ab", "", "Z", "a", "aa", "é", "a", "A b"};
    const textos ordenados = {"", "A b", "Z", "a", "a", "aa", "ab", "z", "é", "ñ"};
    en_ambos_sabores([&]<class C>() {
        // In another code page than 1252 other characters stand for the last two.
        textos esperados = ordenados;
        std::ranges::sort(esperados, {}, txt<C>);
        EXPECT_TRUE(esperados == ordenados || pagina() != 1252);
        auto* lista = lista_de<C>(desordenados);
        arr<C>::ordena(lista, nullptr);
        EXPECT_EQ(textos_de<arr<C>>(lista), esperados);
        arr<C>::ordena(lista, nullptr);
        EXPECT_EQ(textos_de<arr<C>>(lista), esperados);
        arr<C>::destruye(&lista);
        auto* vacia = arr<C>::crea(0);
        arr<C>::ordena(vacia, nullptr);
        EXPECT_EQ(arr<C>::num(vacia), 0u);
        arr<C>::destruye(&vacia);
    });
    ArrCADENA_u* anchos =
        lista_de<wchar_t>({"\uFFFD", "\U0001F600", "\u4E2D"});  // a surrogate is below U+FFFD
    arr_QSortCADENA_u(anchos, nullptr);
    EXPECT_EQ(textos_de<arr<wchar_t>>(anchos), (textos{"\u4E2D", "\U0001F600", "\uFFFD"}));
    arr_DestruyeCADENA_u(&anchos);
}

TEST(arr, ordena_con_la_comparacion_del_anfitrion_y_es_estable) {
    en_ambos_sabores([]<class C>() {
        auto* lista = lista_de<C>({"b1", "a1", "b2", "c1", "a2", "b3", "a3", "c2"});
        arr<C>::ordena(
            lista, [](const C* a, const C* b) { return static_cast<int>(a[0]) - static_cast<int>(b[0]); });
        EXPECT_EQ(textos_de<arr<C>>(lista), (textos{"a1", "a2", "a3", "b1", "b2", "b3", "c1", "c2"}));
        arr<C>::ordena(
            lista, [](const C* a, const C* b) { return static_cast<int>(b[0]) - static_cast<int>(a[0]); });
        EXPECT_EQ(textos_de<arr<C>>(lista), (textos{"c1", "c2", "b1", "b2", "b3", "a1", "a2", "a3"}));
        arr<C>::destruye(&lista);
    });
}

TEST(arr, una_comparacion_que_se_contradice_o_lanza_no_pierde_textos) {
    en_ambos_sabores([]<class C>() {
        static std::mt19937 azar;
        azar.seed(7);
        int (*const comparaciones[])(const C*, const C*) = {
            [](const C*, const C*) { return -1; },
            [](const C*, const C*) { return 1; },
            [](const C*, const C*) { return static_cast<int>(azar() % 3) - 1; },
            [](const C*, const C*) -> int { throw std::runtime_error("no"); },
        };
        for (const auto comparacion : comparaciones) {
            textos esperados;
            for (int i = 0; i < 300; ++i) {
                esperados.push_back(std::to_string(azar() % 100));
            }
            auto* lista = lista_de<C>(esperados);
            arr<C>::ordena(lista, comparacion);
            textos quedan = textos_de<arr<C>>(lista);
            std::sort(quedan.begin(), quedan.end());
            std::sort(esperados.begin(), esperados.end());
            EXPECT_EQ(quedan, esperados);
            arr<C>::destruye(&lista);
        }
    });
}

// ---- lists of records

namespace {

std::vector<int> g_destruidos;

void destruye_registro(void** registro) {
    g_destruidos.push_back(*static_cast<int*>(*registro));
    delete static_cast<int*>(*registro);
    *registro = nullptr;
}

}  // namespace

TEST(arr, los_registros_se_destruyen_una_vez_cada_uno_y_en_orden) {
    g_destruidos.clear();
    ArrPunteroConTipo* lista = arr_CreaPunteroConTipo(0);
    std::vector<int> esperados;
    for (int i = 0; i < 40; ++i) {
        arr_AppendPunteroConTipo(lista, new int(i));
        esperados.push_back(i);
    }
    EXPECT_EQ(arr_NumElemsPuntero(lista), 40u);
    EXPECT_EQ(*static_cast<int*>(arr_GetPunteroConTipo(lista, 17)), 17);
    arr_DestruyeEstructurasConTipo(&lista, destruye_registro);
    EXPECT_EQ(lista, nullptr);
    EXPECT_EQ(g_destruidos, esperados);
}

TEST(arr, los_null_de_las_listas_de_registros_se_informan) {
    int registro = 0;
    arr_AppendPunteroConTipo(nullptr, &registro);
    EXPECT_EQ(arr_NumElemsPuntero(nullptr), 0u);
    EXPECT_EQ(arr_GetPunteroConTipo(nullptr, 0), nullptr);
    arr_DestruyeEstructurasConTipo(nullptr, destruye_registro);
    EXPECT_EQ(toma_expresiones(), textos(4, "(arr) != NULL"));
    ArrPunteroConTipo* lista = nullptr;
    arr_DestruyeEstructurasConTipo(&lista, destruye_registro);
    ESPERA_INFORMES("(*arr) != NULL");
    lista = arr_CreaPunteroConTipo(2);
    arr_AppendPunteroConTipo(lista, nullptr);
    ESPERA_INFORMES("(puntero) != NULL");
    EXPECT_EQ(arr_NumElemsPuntero(lista), 0u);
    EXPECT_EQ(arr_GetPunteroConTipo(lista, 0), nullptr);
    ESPERA_INFORMES("indice < num_elems");
    arr_AppendPunteroConTipo(lista, &registro);
    EXPECT_EQ(arr_GetPunteroConTipo(lista, 1), nullptr);
    ESPERA_INFORMES("indice < num_elems");
    arr_DestruyeEstructurasConTipo(&lista, nullptr);  // the record stays, the list goes
    ESPERA_INFORMES("(func_destruye) != NULL");
    EXPECT_EQ(lista, nullptr);
}

TEST(arr, una_destruccion_que_lanza_no_impide_las_demas) {
    ArrPunteroConTipo* lista = arr_CreaPunteroConTipo(0);
    static int llamadas;
    llamadas = 0;
    for (int i = 0; i < 3; ++i) {
        arr_AppendPunteroConTipo(lista, &llamadas);
    }
    arr_DestruyeEstructurasConTipo(&lista, [](void**) {
        ++llamadas;
        throw 1;
    });
    EXPECT_EQ(llamadas, 3);
    EXPECT_EQ(lista, nullptr);
}

namespace {

ArrPunteroConTipo* g_lista;
int g_registros_destruidos;

void destruye_y_vuelve_a_la_lista(void** registro) {
    *registro = nullptr;
    if (++g_registros_destruidos < 10) {  // without end otherwise
        arr_DestruyeEstructurasConTipo(&g_lista, destruye_y_vuelve_a_la_lista);
    }
}

}  // namespace

TEST(arr, una_destruccion_que_vuelve_a_la_lista_la_halla_ya_tomada) {
    g_registros_destruidos = 0;
    g_lista = arr_CreaPunteroConTipo(0);
    for (int i = 0; i < 3; ++i) {
        arr_AppendPunteroConTipo(g_lista, &g_registros_destruidos);
    }
    arr_DestruyeEstructurasConTipo(&g_lista, destruye_y_vuelve_a_la_lista);
    EXPECT_EQ(g_registros_destruidos, 3);
    EXPECT_EQ(g_lista, nullptr);
    ESPERA_INFORMES("(*arr) != NULL", "(*arr) != NULL", "(*arr) != NULL");
}

TEST(arr, una_lista_ancha_pasa_entera_a_8_bits_y_se_destruye) {
    struct fila {
        unsigned pagina;
        textos esperados;
    };
    const fila filas[] = {{1252, {"uno", "ñandú", "", "?"}},
                          {932, {"uno", "ñandú", "", "\u4E2D"}},
                          {874, {"uno", "ñandú", "", "?"}},
                          {65001, {"uno", "ñandú", "", "\u4E2D"}}};
    for (const fila& f : filas) {
        const en_pagina p(f.pagina);
        const unsigned long long antes = lumospy_bloques_vivos();
        objeto<ArrCADENA_u> ancha(lista_de<wchar_t>({"uno", "ñandú", "", "\u4E2D"}));
        ArrCADENA* estrecha = utunicode_cadenas_UNICODE_a_ANSI_destruyendo(std::move(ancha)).suelta();
        EXPECT_EQ(textos_de<arr<char>>(estrecha), f.esperados) << f.pagina;
        EXPECT_EQ(lumospy_bloques_vivos(), antes + 5);
        arr_DestruyeCADENA(&estrecha);
    }
}
