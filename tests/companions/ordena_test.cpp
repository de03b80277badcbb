// The stable sort against insertion sort, the slow, obvious model.
#include "companions/ordena.hpp"

#include <algorithm>
#include <random>

#include "apoyo/apoyo.hpp"

using namespace apoyo;
using namespace interno;

namespace {

struct ficha {
    int clave;
    int orden;  // position before sorting: equal keys must keep it
    friend bool operator==(const ficha& a, const ficha& b) = default;
};

std::string en_texto(const std::vector<ficha>& fichas) {
    std::string texto;
    for (const ficha& f : fichas) {
        texto += std::to_string(f.clave) + "." + std::to_string(f.orden) + " ";
    }
    return texto;
}

std::vector<ficha> fichas_de(const std::vector<int>& claves) {
    std::vector<ficha> fichas;
    for (const int clave : claves) {
        fichas.push_back({clave, static_cast<int>(fichas.size())});
    }
    return fichas;
}

// Takes the first of the smallest keys, again and again.
std::vector<ficha> ordenadas_despacio(std::vector<ficha> fichas) {
    std::vector<ficha> resultado;
    while (!fichas.empty()) {
        std::size_t menor = 0;
        for (std::size_t i = 1; i < fichas.size(); ++i) {
            if (fichas[i].clave < fichas[menor].clave) {
                menor = i;
            }
        }
        resultado.push_back(fichas[menor]);
        fichas.erase(fichas.begin() + static_cast<long>(menor));
    }
    return resultado;
}

void comprueba(const std::vector<int>& claves) {
    std::vector<ficha> fichas = fichas_de(claves);
    const std::vector<ficha> esperadas = ordenadas_despacio(fichas);
    std::vector<const ficha*> punteros;
    for (const ficha& f : fichas) {
        punteros.push_back(&f);
    }
    ordena_estable(punteros.data(), punteros.size(), [](const ficha* a, const ficha* b) {
        return a->clave < b->clave ? -1 : a->clave > b->clave;
    });
    std::vector<ficha> ordenadas;
    for (const ficha* f : punteros) {
        ordenadas.push_back(*f);
    }
    ASSERT_EQ(ordenadas, esperadas) << en_texto(fichas) << "\ngave " << en_texto(ordenadas);
}

}  // namespace

TEST(ordena, todas_las_listas_cortas) {
    // Every list of up to 7 keys out of three.
    std::vector<int> claves;
    const auto sigue = [&](auto&& yo) -> void {
        comprueba(claves);
        if (claves.size() == 7) {
            return;
        }
        for (int clave = 0; clave < 3; ++clave) {
            claves.push_back(clave);
            yo(yo);
            claves.pop_back();
        }
    };
    sigue(sigue);
}

TEST(ordena, listas_al_azar_de_todos_los_largos_con_muchas_repeticiones) {
    std::mt19937 azar(42);
    for (std::size_t largo = 0; largo < 200; ++largo) {
        for (const unsigned distintas : {1u, 3u, 1000u}) {
            std::vector<int> claves(largo);
            for (int& clave : claves) {
                clave = static_cast<int>(azar() % distintas);
            }
            comprueba(claves);
        }
    }
}

TEST(ordena, ya_ordenada_y_al_reves) {
    for (const int largo : {11, 12, 13, 24, 25, 97, 500}) {  // around the run length and its multiples
        std::vector<int> claves;
        for (int i = 0; i < largo; ++i) {
            claves.push_back(i / 2);
        }
        comprueba(claves);
        std::reverse(claves.begin(), claves.end());
        comprueba(claves);
    }
}

TEST(ordena, hace_n_log_n_comparaciones_y_n_si_ya_esta_ordenada) {
    constexpr std::size_t largo = 20000;
    std::mt19937 azar(1);
    std::vector<unsigned> numeros(largo);
    for (unsigned& n : numeros) {
        n = static_cast<unsigned>(azar());
    }
    std::size_t comparaciones = 0;
    const auto compara = [&](unsigned a, unsigned b) {
        ++comparaciones;
        return a < b ? -1 : a > b;
    };
    ordena_estable(numeros.data(), numeros.size(), compara);
    EXPECT_TRUE(std::is_sorted(numeros.begin(), numeros.end()));
    EXPECT_LT(comparaciones,
              largo * 18);  // log2(20000) is 14.3; insertion in the short runs costs a little more
    comparaciones = 0;
    ordena_estable(numeros.data(), numeros.size(), compara);
    EXPECT_EQ(comparaciones, largo - 1);  // each with its neighbour
}

TEST(ordena, lo_que_es_igual_se_compara_como_lo_ordenado) {
    std::vector<int> numeros(20000, 7);
    std::size_t comparaciones = 0;
    ordena_estable(numeros.data(), numeros.size(), [&](int, int) {
        ++comparaciones;
        return 0;
    });
    EXPECT_EQ(comparaciones, numeros.size() - 1);
}

TEST(ordena, lo_corto_se_ordena_en_su_sitio) {
    static unsigned peticiones;
    static void* (*de_antes)(std::size_t) = nullptr;
    de_antes = memoria.reserva;
    const sustituye<decltype(memoria.reserva)> cuenta(memoria.reserva, [](std::size_t bytes) {
        ++peticiones;
        return de_antes(bytes);
    });
    for (std::size_t largo = 0; largo < 30; ++largo) {
        std::vector<int> numeros(largo);
        for (std::size_t i = 0; i < largo; ++i) {
            numeros[i] = static_cast<int>(largo - i);
        }
        peticiones = 0;
        ordena_estable(numeros.data(), largo, [](int a, int b) { return a < b ? -1 : a > b; });
        EXPECT_EQ(peticiones, largo > 12 ? 1u : 0u) << largo;
        EXPECT_TRUE(std::is_sorted(numeros.begin(), numeros.end())) << largo;
    }
}

TEST(ordena, una_comparacion_contradictoria_solo_cambia_el_orden) {
    std::mt19937 azar(3);
    for (std::size_t largo = 0; largo < 120; ++largo) {
        for (int caso = 0; caso < 3; ++caso) {
            // Guards on both sides: nothing outside the array may be read as an element or written.
            std::vector<unsigned> numeros(largo + 2, 0xFFFFFFFFu);
            for (std::size_t i = 1; i <= largo; ++i) {
                numeros[i] = static_cast<unsigned>(i);
            }
            bool fuera = false;
            ordena_estable(numeros.data() + 1, largo, [&](unsigned a, unsigned b) {
                fuera = fuera || a == 0xFFFFFFFFu || b == 0xFFFFFFFFu;
                return caso == 0 ? -1 : caso == 1 ? 1 : static_cast<int>(azar() % 3) - 1;
            });
            EXPECT_FALSE(fuera) << largo << " case " << caso;
            EXPECT_EQ(numeros.front(), 0xFFFFFFFFu);
            EXPECT_EQ(numeros.back(), 0xFFFFFFFFu);
            std::sort(numeros.begin() + 1, numeros.end() - 1);
            for (std::size_t i = 1; i <= largo; ++i) {
                ASSERT_EQ(numeros[i], i) << largo << " case " << caso;
            }
        }
    }
}
