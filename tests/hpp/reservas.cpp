// The allocations of this program, counted; those of the library are not among them.
#include <cstdlib>
#include <new>

#include "hpp/apoyo.hpp"

namespace {
unsigned long g_reservas = 0;
unsigned long g_la_que_falla = 0;  // its number; 0: none
}  // namespace

unsigned long hpp::reservas() {
    return g_reservas;
}

void hpp::falla_la_reserva(unsigned long cual) {
    g_la_que_falla = cual == 0 ? 0 : g_reservas + cual;
}

void* operator new(std::size_t bytes) {
    if (++g_reservas == g_la_que_falla) {
        throw std::bad_alloc();
    }
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
