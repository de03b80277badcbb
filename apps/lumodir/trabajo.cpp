#include "trabajo.hpp"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

#include "consola.hpp"
#include "ordenes.hpp"
#include "sistema_windows.hpp"

namespace mando {

namespace {

using namespace std::chrono_literals;
constexpr auto primer_momento = 400ms;  // shorter work shows nothing
constexpr auto paso = 200ms;

std::atomic<unsigned short*> bandera{nullptr};

int __stdcall i_al_interrumpir(unsigned long) {
    unsigned short* continuar = bandera.load();
    if (continuar == nullptr) {
        // At once, whatever the other threads are doing, but with the terminal left tidy.
        progreso().borra();
        TerminateProcess(GetCurrentProcess(), no);
        return TRUE;
    }
    // The library promises to read it from another thread.
    *static_cast<volatile unsigned short*>(continuar) = 0;
    return TRUE;
}

}  // namespace

void con_progreso(const std::function<void()>& trabajo, const std::function<std::wstring(unsigned)>& texto) {
    if (!errores().es_consola()) {
        trabajo();
        return;
    }
    std::mutex guarda;
    std::condition_variable aviso;
    bool terminado = false;
    std::exception_ptr excepcion;
    const auto comienzo = std::chrono::steady_clock::now();
    std::thread obrero([&] {
        try {
            trabajo();
        } catch (...) {
            excepcion = std::current_exception();
        }
        const std::lock_guard cierre(guarda);
        terminado = true;
        aviso.notify_one();
    });
    {
        std::unique_lock cierre(guarda);
        for (auto espera = primer_momento; !aviso.wait_for(cierre, espera, [&] { return terminado; });
             espera = paso) {
            cierre.unlock();
            const auto segundos = std::chrono::steady_clock::now() - comienzo;
            progreso().muestra(texto(
                static_cast<unsigned>(std::chrono::duration_cast<std::chrono::seconds>(segundos).count())));
            cierre.lock();
        }
    }
    obrero.join();
    progreso().borra();
    if (excepcion) {
        std::rethrow_exception(excepcion);
    }
}

void atiende_interrupciones() {
    SetConsoleCtrlHandler(i_al_interrumpir, TRUE);
}

interruptor::interruptor(unsigned short& continuar) {
    bandera = &continuar;
}

interruptor::~interruptor() {
    bandera = nullptr;
}

}  // namespace mando
