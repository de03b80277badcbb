#include "trabajo.hpp"

#include <atomic>
#include <chrono>
#include <cmath>
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
std::atomic<int> interruptores{0};
std::atomic<bool> se_quiere_parar{false};
void* fin_del_trabajo = nullptr;  // an event

std::mutex guarda_de_despedida;
std::function<std::wstring()> que_decir;

std::wstring i_despedida() {
    const std::lock_guard guarda(guarda_de_despedida);
    return que_decir ? que_decir() : di("stopped");
}

// At once, whatever the other threads are doing, but with the terminal left tidy.
[[noreturn]] void i_acaba() {
    constexpr auto paciencia = 300ms;  // somebody may hold the console for good, waiting for an answer
    const bool turno = turno_de_consola().try_lock_for(paciencia);
    progreso().borra();
    errores().linea();
    errores().escribe("lumodir: ", estilo::aviso).linea(std::wstring_view(i_despedida()));
    if (turno) {
        turno_de_consola().unlock();
    }
    TerminateProcess(GetCurrentProcess(), static_cast<unsigned>(acabado_por_control_c));
    for (;;) {
        Sleep(INFINITE);
    }
}

int __stdcall i_al_interrumpir(unsigned long que) {
    const bool se_cierra = que != CTRL_C_EVENT && que != CTRL_BREAK_EVENT;
    if (interruptores.load() == 0 || (se_quiere_parar.exchange(true) && !se_cierra)) {
        i_acaba();
    }
    if (unsigned short* continuar = bandera.load()) {
        // The library promises to read it from another thread.
        *static_cast<volatile unsigned short*>(continuar) = 0;
    }
    if (se_cierra) {
        // The system ends the program when this returns, and after five seconds in any case.
        constexpr unsigned long lo_que_deja_el_sistema_ms = 4800;
        WaitForSingleObject(fin_del_trabajo, lo_que_deja_el_sistema_ms);
        return TRUE;
    }
    if (turno_de_consola().try_lock()) {
        progreso().borra();
        errores().linea(di("stopping after the entry at hand; Ctrl-C again ends at once"), estilo::aviso);
        turno_de_consola().unlock();
    }
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

std::wstring lo_que_falta(double parte_hecha, unsigned segundos) {
    constexpr double lo_bastante = 0.02;
    constexpr unsigned pronto_s = 2;
    if (parte_hecha < lo_bastante || parte_hecha >= 1 || segundos < pronto_s) {
        return {};
    }
    const auto faltan = static_cast<unsigned long>(std::lround(segundos * (1 - parte_hecha) / parte_hecha));
    return di(", about %1 s left", std::to_wstring(faltan));
}

void atiende_interrupciones() {
    fin_del_trabajo = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    SetConsoleCtrlHandler(i_al_interrumpir, TRUE);
}

interruptor::interruptor(unsigned short* continuar) {
    bandera = continuar;
    ++interruptores;
}

interruptor::~interruptor() {
    bandera = nullptr;
    --interruptores;
    SetEvent(fin_del_trabajo);
}

bool interrumpido() {
    return se_quiere_parar.load();
}

despedida::despedida(std::function<std::wstring()> que_se_hizo) {
    const std::lock_guard guarda(guarda_de_despedida);
    que_decir = std::move(que_se_hizo);
}

despedida::~despedida() {
    const std::lock_guard guarda(guarda_de_despedida);
    que_decir = nullptr;
}

}  // namespace mando
