// See lumospy.hpp.
#include "companions/lumospy.hpp"

#include <atomic>
#include <cstdlib>
#include <cstring>

namespace interno {

tabla_memoria memoria = {std::malloc, std::realloc, std::free};

std::atomic<unsigned long long> i_vivos;

namespace {

std::atomic<unsigned long long> i_internos;

void* i_bloque_cambiado(void* bloque, std::size_t bytes, lugar donde) noexcept {
    void* nuevo = memoria.cambia(bloque, bytes == 0 ? 1 : bytes);
    if (nuevo == nullptr) {
        i_memoria_agotada(donde);
    }
    return nuevo;
}

}  // namespace

void* i_reserva_a_cero(std::size_t cuantos, std::size_t bytes, lugar donde) {
    if (bytes != 0 && cuantos > SIZE_MAX / bytes) {
        i_memoria_agotada(donde);
    }
    void* bloque = i_reserva(cuantos * bytes, donde);
    return std::memset(bloque, 0, cuantos * bytes);
}

void* i_cambia(void* bloque, std::size_t bytes, lugar donde) {
    return bloque == nullptr ? i_reserva(bytes, donde) : i_bloque_cambiado(bloque, bytes, donde);
}

void* i_reserva_interno(std::size_t bytes, lugar donde) {
    void* bloque = i_reserva_sin_contar(bytes, 0, donde);
    i_internos.fetch_add(1, std::memory_order_relaxed);
    return bloque;
}

void* i_cambia_interno(void* bloque, std::size_t bytes, lugar donde) {
    return bloque == nullptr ? i_reserva_interno(bytes, donde) : i_bloque_cambiado(bloque, bytes, donde);
}

void i_libera_interno(void* bloque) noexcept {
    if (bloque != nullptr) {
        memoria.libera(bloque);
        i_internos.fetch_sub(1, std::memory_order_relaxed);
    }
}

unsigned long long i_bloques_vivos() noexcept {
    return i_vivos.load(std::memory_order_relaxed);
}

unsigned long long i_bloques_internos_vivos() noexcept {
    return i_internos.load(std::memory_order_relaxed);
}

}  // namespace interno
