// Stable sorting of arrays of pointers with any comparison, a host's included.
//
// Promises: stable; n log n comparisons; a comparison that contradicts itself leaves the array in some order,
// but never makes the sort read or write outside it (which the standard library's sorts may do).
// Checked by tests/companions/ordena_test.cpp.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "companions/lumospy.hpp"

namespace interno {

inline constexpr std::size_t tramo_insercion = 12;  // runs this short are cheaper to insert than to merge

template <class T, class Compara>
void i_ordena_por_insercion(T* datos, std::size_t num, Compara compara) {
    for (std::size_t i = 1; i < num; ++i) {
        const T elemento = datos[i];
        std::size_t j = i;
        for (; j > 0 && compara(elemento, datos[j - 1]) < 0; --j) {
            datos[j] = datos[j - 1];
        }
        datos[j] = elemento;
    }
}

// The first half has an element at least.
template <class T, class Compara>
void i_mezcla(const T* a, std::size_t num_a, const T* b, std::size_t num_b, T* destino, Compara compara) {
    // Directories often come already in order: then the halves only need to be put side by side.
    if (num_b > 0 && compara(b[0], a[num_a - 1]) < 0) {
        while (num_a > 0 && num_b > 0) {
            if (compara(*b, *a) < 0) {
                *destino++ = *b++;
                --num_b;
            } else {
                *destino++ = *a++;
                --num_a;
            }
        }
    }
    std::memcpy(destino, a, num_a * sizeof(T));
    std::memcpy(destino + num_a, b, num_b * sizeof(T));
}

// Sorts by `compara(x, y)`: negative when x comes first, 0 when equal.
template <class T, class Compara>
void ordena_estable(T* datos, std::size_t num, Compara compara, lugar donde = lugar::aqui()) {
    for (std::size_t i = 0; i < num; i += tramo_insercion) {
        i_ordena_por_insercion(datos + i, std::min(tramo_insercion, num - i), compara);
    }
    if (num <= tramo_insercion) {
        return;
    }
    vector_interno<T> auxiliar;
    auxiliar.reserva_sitio(num, donde);
    T* origen = datos;
    T* destino = auxiliar.data();
    for (std::size_t ancho = tramo_insercion; ancho < num; ancho *= 2) {
        for (std::size_t i = 0; i < num; i += 2 * ancho) {
            const std::size_t num_a = std::min(ancho, num - i);
            const std::size_t num_b = std::min(ancho, num - i - num_a);
            i_mezcla(origen + i, num_a, origen + i + num_a, num_b, destino + i, compara);
        }
        std::swap(origen, destino);
    }
    if (origen != datos) {
        std::memcpy(datos, origen, num * sizeof(T));
    }
}

}  // namespace interno
