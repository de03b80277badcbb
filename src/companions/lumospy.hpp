// Tracked memory: every block that the library hands out, or works with, comes from here.
//
// Promises: no allocation returns NULL; exhausted memory is reported once and ends the process; the census of
// the blocks that callers own is atomic and exact. Inner arrays of lists are counted apart, so that a string
// counts one and a list counts one, however far it has grown.
// Cannot promise: to notice a block that is freed twice (the guarded allocator of the tests does).
// Checked by tests/companions/lumospy_test.cpp.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

#include "companions/lugar.hpp"

namespace interno {

// The allocator underneath, replaced in tests by one that fails or that guards its blocks.
struct tabla_memoria {
    void* (*reserva)(std::size_t bytes);
    void* (*cambia)(void* bloque, std::size_t bytes);
    void (*libera)(void* bloque);
};
extern tabla_memoria memoria;

// Reports it once, whichever thread comes first, and does not come back. Of error_interno.cpp: whoever reports needs memory
// and not the other way round.
[[noreturn]] void i_memoria_agotada(lugar donde) noexcept;

extern std::atomic<unsigned long long> i_vivos;

// Blocks that callers own (strings, lists, records): counted in the public census. Whoever takes several takes each by
// itself and counts all of them at once: those that are still to be counted are, before exhausted memory is reported.
inline void i_cuenta_bloques(unsigned cuantos) noexcept {
    i_vivos.fetch_add(cuantos, std::memory_order_relaxed);
}
inline void* i_reserva_sin_contar(std::size_t bytes, unsigned por_contar, lugar donde) noexcept {
    void* bloque = memoria.reserva(bytes == 0 ? 1 : bytes);
    if (bloque == nullptr) {
        i_cuenta_bloques(por_contar);
        i_memoria_agotada(donde);
    }
    return bloque;
}
inline void* i_reserva(std::size_t bytes, lugar donde = lugar::aqui()) noexcept {
    void* bloque = i_reserva_sin_contar(bytes, 0, donde);
    i_cuenta_bloques(1);
    return bloque;
}
void* i_reserva_a_cero(std::size_t cuantos, std::size_t bytes, lugar donde = lugar::aqui());
void* i_cambia(void* bloque, std::size_t bytes, lugar donde = lugar::aqui());
inline void i_libera(void* bloque) noexcept {
    if (bloque != nullptr) {
        memoria.libera(bloque);
        i_vivos.fetch_sub(1, std::memory_order_relaxed);
    }
}
unsigned long long i_bloques_vivos() noexcept;

// Inner arrays: never handed out, outside the public census.
void* i_reserva_interno(std::size_t bytes, lugar donde = lugar::aqui());
void* i_cambia_interno(void* bloque, std::size_t bytes, lugar donde = lugar::aqui());
void i_libera_interno(void* bloque) noexcept;
unsigned long long i_bloques_internos_vivos() noexcept;

// A record's field takes over the text of a variable, which is cleared: no copy is made.
template <class T>
void lumospy_nousar_asigna_doble_puntero_no_null(T** campo, T** variable) noexcept {
    *campo = *variable;
    *variable = nullptr;
}

// Owner of what `Fin` ends. `suelta()` gives it up, where a result leaves the library.
template <class T, class Fin>
class duenyo : public std::unique_ptr<T, Fin> {
public:
    using std::unique_ptr<T, Fin>::unique_ptr;
    T* suelta() noexcept { return this->release(); }
};

struct libera_bloque {
    void operator()(void* bloque) const noexcept { i_libera(bloque); }
};

// Owner of a block that callers will own: a record, or a buffer that becomes a string.
template <class T>
class registro : public duenyo<T, libera_bloque> {
public:
    using duenyo<T, libera_bloque>::duenyo;

    static registro a_cero(lugar donde = lugar::aqui()) {
        return registro(static_cast<T*>(i_reserva_a_cero(1, sizeof(T), donde)));
    }
};

// Growable array of trivially copyable elements for work inside one call; grows geometrically.
template <class T>
class vector_interno {
public:
    vector_interno() noexcept = default;
    vector_interno(const vector_interno&) = delete;
    vector_interno& operator=(const vector_interno&) = delete;
    vector_interno(vector_interno&& otro) noexcept
        : datos_(std::exchange(otro.datos_, nullptr)),
          num_(std::exchange(otro.num_, 0)),
          sitio_(std::exchange(otro.sitio_, 0)) {}
    ~vector_interno() { i_libera_interno(datos_); }

    void anade(const T& elemento, lugar donde = lugar::aqui()) {
        if (num_ == sitio_) {
            const T copia = elemento;
            reserva_sitio(sitio_ == 0 ? 16 : sitio_ * 2, donde);
            datos_[num_++] = copia;
            return;
        }
        datos_[num_++] = elemento;
    }
    void anade_varios(const T* elementos, std::size_t cuantos, lugar donde = lugar::aqui()) {
        if (cuantos > sitio_ - num_) {
            reserva_sitio((num_ + cuantos) * 2, donde);
        }
        std::copy(elementos, elementos + cuantos, datos_ + num_);
        num_ += cuantos;
    }
    void reserva_sitio(std::size_t sitio, lugar donde = lugar::aqui()) {
        if (sitio > sitio_) {
            // A product that overflows becomes a size that no allocator has. Some elements are pointers.
            // NOLINTNEXTLINE(bugprone-sizeof-expression)
            const std::size_t bytes = sitio > SIZE_MAX / sizeof(T) ? SIZE_MAX : sitio * sizeof(T);
            datos_ = static_cast<T*>(i_cambia_interno(datos_, bytes, donde));
            sitio_ = sitio;
        }
    }
    // The elements in a block that callers will own, of exactly their number; NULL when there is none.
    T* suelta_en_bloque(lugar donde = lugar::aqui()) {
        const std::size_t bytes = num_ * sizeof(T);  // NOLINT(bugprone-sizeof-expression)
        T* const bloque = num_ == 0 ? nullptr : static_cast<T*>(i_reserva(bytes, donde));
        if (bloque != nullptr) {
            std::memcpy(bloque, datos_, bytes);
        }
        num_ = 0;
        return bloque;
    }
    void quita_ultimo() noexcept { --num_; }
    void vacia() noexcept { num_ = 0; }
    void acorta(std::size_t num) noexcept {
        if (num < num_) {
            num_ = num;
        }
    }
    std::size_t size() const noexcept { return num_; }
    bool empty() const noexcept { return num_ == 0; }
    T* data() noexcept { return datos_; }
    const T* data() const noexcept { return datos_; }
    T& operator[](std::size_t i) noexcept { return datos_[i]; }
    const T& operator[](std::size_t i) const noexcept { return datos_[i]; }
    T& back() noexcept { return datos_[num_ - 1]; }
    const T& back() const noexcept { return datos_[num_ - 1]; }
    T* begin() noexcept { return datos_; }
    T* end() noexcept { return datos_ + num_; }
    const T* begin() const noexcept { return datos_; }
    const T* end() const noexcept { return datos_ + num_; }

private:
    static_assert(std::is_trivially_copyable_v<T>, "elements are moved as bytes");
    T* datos_ = nullptr;
    std::size_t num_ = 0;
    std::size_t sitio_ = 0;
};

}  // namespace interno
