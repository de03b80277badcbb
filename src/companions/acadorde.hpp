// Sorted string arrays as the library itself fills them (the exported operations are in abi/acadorde.cpp): order code unit
// by code unit, a shorter prefix first; where repeats are not admitted, a text that is already there changes nothing.
#pragma once

#include "companions/acadorde.h"
#include "companions/arr.hpp"

namespace interno {

// How many elements stand before the first one for which `esta_antes` does not hold. Each is asked for by its place: a
// host's comparison may have moved the elements.
template <class T, class EstaAntes>
std::size_t i_cuantos_antes(const vector_interno<T>& elementos, EstaAntes esta_antes) {
    std::size_t desde = 0;
    std::size_t hasta = elementos.size();
    while (desde < hasta) {
        const std::size_t medio = desde + (hasta - desde) / 2;
        if (esta_antes(elementos[medio])) {
            desde = medio + 1;
        } else {
            hasta = medio;
        }
    }
    return desde;
}

// Position of the first element that comes after `clave`: `compara(elemento)` is negative or 0 before it.
template <class T, class Compara>
std::size_t i_posicion_tras(const vector_interno<T>& elementos, Compara compara) {
    // The usual insertion comes in order: look at the end first.
    if (elementos.empty() || compara(elementos[elementos.size() - 1]) <= 0) {
        return elementos.size();
    }
    return i_cuantos_antes(elementos, [&](const T& elemento) { return compara(elemento) <= 0; });
}

template <class T>
void i_inserta_en(vector_interno<T>& elementos, std::size_t posicion, T elemento,
                  lugar donde = lugar::aqui()) {
    elementos.anade(elemento, donde);
    T* datos = elementos.data();
    std::memmove(datos + posicion + 1, datos + posicion, (elementos.size() - 1 - posicion) * sizeof(T));
    datos[posicion] = elemento;
}

template <class C>
struct conjunto_ordenado {
    lista_textos<C> textos;
    bool admite_repetidos = false;

    void inserta(cadena<C> texto, lugar donde = lugar::aqui()) {
        const vista<C> nuevo = texto.ver();
        const std::size_t posicion = i_posicion_tras(
            textos.textos, [&](const C* elemento) { return vista<C>(elemento).compare(nuevo); });
        if (!admite_repetidos && posicion > 0 && textos.ver(posicion - 1) == nuevo) {
            return;
        }
        i_inserta_en(textos.textos, posicion, texto.suelta(), donde);
    }
};

}  // namespace interno

struct AcadOrde : interno::conjunto_ordenado<char> {};
struct AcadOrdeU : interno::conjunto_ordenado<wchar_t> {};
