// The allocations of this program, counted; those of the library are not among them.
#include <cstdlib>
#include <new>

#include "hpp/apoyo.hpp"

namespace {
unsigned long g_reservas = 0;
}

unsigned long hpp::reservas() {
    return g_reservas;
}

void* operator new(std::size_t bytes) {
    ++g_reservas;
    if (void* bloque = std::malloc(bytes)) {
        return bloque;
    }
    throw std::bad_alloc();
}
void operator delete(void* bloque) noexcept {
    std::free(bloque);
}
void operator delete(void* bloque, std::size_t) noexcept {
    std::free(bloque);
}
