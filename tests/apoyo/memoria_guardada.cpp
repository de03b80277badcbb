// See memoria_guardada.hpp.
#include "apoyo/memoria_guardada.hpp"

#ifdef _WIN32

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <map>
#include <mutex>

#include "apoyo/apoyo.hpp"
#include "companions/lumospy.hpp"
#include "companions/sistema.hpp"

namespace apoyo {
namespace {

constexpr std::size_t pagina_bytes = 4096;
constexpr std::size_t max_en_cuarentena = 8192;  // freed blocks whose addresses are not given again yet
constexpr unsigned char antes_del_bloque = 0xA5;
constexpr unsigned char sin_poner = 0xCD;

struct bloque {
    std::size_t bytes;
    unsigned char* region;
    bool libre;
};

std::mutex g_cerrojo;
std::map<std::uintptr_t, bloque>& bloques() {
    static auto* todos = new std::map<std::uintptr_t, bloque>;  // until the process ends
    return *todos;
}
std::deque<std::uintptr_t>& cuarentena() {
    static auto* cola = new std::deque<std::uintptr_t>;
    return *cola;
}
bool g_guardada = false;
std::atomic<unsigned long> g_faltas{0};

constexpr std::size_t en_paginas(std::size_t bytes) {
    return (bytes + pagina_bytes - 1) / pagina_bytes * pagina_bytes;
}

[[noreturn]] void acaba(const char* que, const void* donde) {
    std::fprintf(stderr, "guarded memory: %s, block %p\n", que, donde);
    std::fflush(stderr);
    ::TerminateProcess(::GetCurrentProcess(), 86);
    std::abort();
}

void* reserva(std::size_t bytes) {
    constexpr std::size_t demasiados = std::size_t{1} << 40;
    if (bytes > demasiados) {
        return nullptr;
    }
    const std::size_t usables = en_paginas(bytes);
    auto* region = static_cast<unsigned char*>(
        ::VirtualAlloc(nullptr, usables + pagina_bytes, MEM_RESERVE, PAGE_NOACCESS));
    if (region == nullptr || ::VirtualAlloc(region, usables, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
        return nullptr;
    }
    unsigned char* principio = region + usables - bytes;
    std::memset(region, antes_del_bloque, usables - bytes);
    std::memset(principio, sin_poner, bytes);
    const std::lock_guard<std::mutex> cierra(g_cerrojo);
    bloques()[reinterpret_cast<std::uintptr_t>(principio)] = {bytes, region, false};
    return principio;
}

bloque quita(void* donde) {
    const std::lock_guard<std::mutex> cierra(g_cerrojo);
    const auto clave = reinterpret_cast<std::uintptr_t>(donde);
    const auto este = bloques().find(clave);
    if (este == bloques().end()) {
        acaba("freed, but never given", donde);
    }
    if (este->second.libre) {
        acaba("freed twice", donde);
    }
    este->second.libre = true;
    cuarentena().push_back(clave);
    return este->second;
}

void libera(void* donde) {
    if (donde == nullptr) {
        return;
    }
    const bloque este = quita(donde);
    for (const unsigned char* p = este.region; p != donde; ++p) {
        if (*p != antes_del_bloque) {
            acaba("written before its beginning", donde);
        }
    }
    ::VirtualFree(este.region, en_paginas(este.bytes), MEM_DECOMMIT);
    const std::lock_guard<std::mutex> cierra(g_cerrojo);
    while (cuarentena().size() > max_en_cuarentena) {
        const auto viejo = bloques().find(cuarentena().front());
        cuarentena().pop_front();
        ::VirtualFree(viejo->second.region, 0, MEM_RELEASE);
        bloques().erase(viejo);
    }
}

void* cambia(void* donde, std::size_t bytes) {
    void* nuevo = reserva(bytes);
    if (nuevo != nullptr && donde != nullptr) {
        std::size_t antes;
        {
            const std::lock_guard<std::mutex> cierra(g_cerrojo);
            const auto este = bloques().find(reinterpret_cast<std::uintptr_t>(donde));
            if (este == bloques().end() || este->second.libre) {
                acaba("changed, but not alive", donde);
            }
            antes = este->second.bytes;
        }
        std::memcpy(nuevo, donde, antes < bytes ? antes : bytes);
        libera(donde);
    }
    return nuevo;
}

// Tells which block was missed by how much; then the fault takes its way.
LONG CALLBACK dice_cual(EXCEPTION_POINTERS* excepcion) {
    const EXCEPTION_RECORD& registro = *excepcion->ExceptionRecord;
    if (registro.ExceptionCode != static_cast<DWORD>(EXCEPTION_ACCESS_VIOLATION) ||
        registro.NumberParameters < 2 || !g_cerrojo.try_lock()) {
        return EXCEPTION_CONTINUE_SEARCH;
    }
    const auto donde = static_cast<std::uintptr_t>(registro.ExceptionInformation[1]);
    auto este = bloques().upper_bound(donde);
    if (este != bloques().begin()) {
        --este;
        const bloque& b = este->second;
        if (donde < reinterpret_cast<std::uintptr_t>(b.region) + en_paginas(b.bytes) + pagina_bytes) {
            ++g_faltas;
            std::fprintf(stderr, "guarded memory: byte %lld of a block of %llu that is %s was %s\n",
                         static_cast<long long>(donde - este->first),
                         static_cast<unsigned long long>(b.bytes), b.libre ? "free" : "alive",
                         registro.ExceptionInformation[0] == 0 ? "read" : "written");
            std::fflush(stderr);
        }
    }
    g_cerrojo.unlock();
    return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

void guarda_la_memoria_si_se_pide() {
    char valor[16] = "";
    ::GetEnvironmentVariableA("LUMODIR_MEMORIA", valor, sizeof valor);
    if (std::strcmp(valor, "guardada") == 0) {
        ::AddVectoredExceptionHandler(1, dice_cual);
        interno::memoria = {reserva, cambia, libera};
        g_guardada = true;
        std::printf("memory is guarded\n");
    }
}

bool memoria_guardada() noexcept {
    return g_guardada;
}

unsigned long faltas_de_memoria() noexcept {
    return g_faltas;
}

}  // namespace apoyo

#else

namespace apoyo {

void guarda_la_memoria_si_se_pide() {}
bool memoria_guardada() noexcept {
    return false;
}
unsigned long faltas_de_memoria() noexcept {
    return 0;
}

}  // namespace apoyo

#endif
