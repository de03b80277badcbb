// See lumospy.hpp.
#include "companions/lumospy.hpp"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "companions/error_interno.hpp"
#include "companions/lumospy.h"
#include "companions/plataforma.hpp"

namespace lumodir {

tabla_memoria memoria = {std::malloc, std::realloc, std::free};

namespace {

std::atomic<unsigned long long> i_vivos{0};
std::atomic<unsigned long long> i_internos{0};
std::atomic<bool> i_agotada{false};

// Reports once, whichever thread comes first, and does not come back.
[[noreturn]] void i_memoria_agotada(lugar donde) noexcept {
    if (!i_agotada.exchange(true)) {
        error_interno("memoria disponible", donde);
    }
    for (;;) {
        plataforma::termina_proceso();
    }
}

void* i_bloque(std::size_t bytes, lugar donde) noexcept {
    void* bloque = memoria.reserva(bytes == 0 ? 1 : bytes);
    if (bloque == nullptr) {
        i_memoria_agotada(donde);
    }
    return bloque;
}

void* i_bloque_cambiado(void* bloque, std::size_t bytes, lugar donde) noexcept {
    void* nuevo = memoria.cambia(bloque, bytes == 0 ? 1 : bytes);
    if (nuevo == nullptr) {
        i_memoria_agotada(donde);
    }
    return nuevo;
}

}  // namespace

void* i_reserva(std::size_t bytes, lugar donde) {
    void* bloque = i_bloque(bytes, donde);
    i_vivos.fetch_add(1, std::memory_order_relaxed);
    return bloque;
}

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

void i_libera(void* bloque) noexcept {
    if (bloque != nullptr) {
        memoria.libera(bloque);
        i_vivos.fetch_sub(1, std::memory_order_relaxed);
    }
}

void* i_reserva_interno(std::size_t bytes, lugar donde) {
    void* bloque = i_bloque(bytes, donde);
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

unsigned long long i_bloques_internos_vivos() noexcept {
    return i_internos.load(std::memory_order_relaxed);
}

}  // namespace lumodir

using namespace lumodir;

void* lumospy_nousar_malloc(size_t size) {
    return i_reserva(size);
}

void* lumospy_nousar_calloc(size_t count, size_t size) {
    return i_reserva_a_cero(count, size);
}

void* lumospy_nousar_realloc(void* pointer, size_t size) {
    return i_cambia(pointer, size);
}

void lumospy_nousar_free_pp(void** pointer) {
    if (i_comprueba(pointer != nullptr, "(pointer) != NULL") &&
        i_comprueba(*pointer != nullptr, "(*pointer) != NULL")) {
        i_libera(*pointer);
        *pointer = nullptr;
    }
}

unsigned long long lumospy_bloques_vivos(void) {
    return i_vivos.load(std::memory_order_relaxed);
}
