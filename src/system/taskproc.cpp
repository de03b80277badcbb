// See taskproc.hpp.
#include "system/taskproc.hpp"

#include <algorithm>

#include "companions/error_interno.hpp"

namespace interno {

namespace {

// Sizes of the structures as the family has always passed them; the system is asked with them first.
constexpr DWORD tamanyo_proceso = 556;
constexpr DWORD tamanyo_modulo = 1072;

// The modules of a process, those of a 32-bit one included, and nothing else: for the heaps the system would start a
// thread in the other process and wait for it, and the threads are those of the whole machine each time.
constexpr DWORD modulos_del_proceso = TH32CS_SNAPMODULE | TH32CS_SNAPMODULE32;

// How often a snapshot is taken while the process loads libraries meanwhile, which the system answers with
// ERROR_BAD_LENGTH and the advice to try again. One that never settles shows no modules.
constexpr unsigned tomas_de_instantanea = 10;

// The system's idle process. To the snapshot service this number means the process that asks, which would so be
// found twice.
constexpr DWORD pid_inactivo = 0;

manija_comun i_instantanea_de_modulos(DWORD pid) noexcept {
    for (unsigned tomas = 1;; ++tomas) {
        manija_comun instantanea(sistema.CreateToolhelp32Snapshot(modulos_del_proceso, pid));
        if (instantanea.valida() || ::GetLastError() != ERROR_BAD_LENGTH || tomas == tomas_de_instantanea) {
            return instantanea;
        }
    }
}

// One walk over a snapshot's entries. A system that refuses the size gets the same call again with that of its own
// structure, and keeps it for the rest of the search: `tamanyo` outlives the walk.
template <class Entrada>
class paseo {
public:
    using llamada = BOOL(WINAPI*)(HANDLE, Entrada*);

    paseo(HANDLE instantanea, DWORD* tamanyo) noexcept : instantanea_(instantanea), tamanyo_(tamanyo) {}

    bool primera(llamada pide) noexcept { return i_pide(pide) || i_pide_con_el_propio(pide); }
    bool siguiente(llamada pide) noexcept {
        return i_pide(pide) || (::GetLastError() == ERROR_INSUFFICIENT_BUFFER && i_pide_con_el_propio(pide));
    }
    const Entrada& entrada() const noexcept { return entrada_; }

private:
    bool i_pide(llamada pide) noexcept {
        entrada_.dwSize = *tamanyo_;
        return pide(instantanea_, &entrada_) != FALSE;
    }
    bool i_pide_con_el_propio(llamada pide) noexcept {
        const DWORD antes = *tamanyo_;
        if (antes == sizeof(Entrada)) {
            return false;
        }
        *tamanyo_ = sizeof(Entrada);
        const bool hay = i_pide(pide);
        if (!hay) {
            *tamanyo_ = antes;  // it was not the size that was wrong
        }
        return hay;
    }

    Entrada entrada_ = {};
    HANDLE instantanea_;
    DWORD* tamanyo_;
};

class busqueda {
public:
    // Without a list the search ends at the first match.
    busqueda(vista_w modulo, bool con_lista) noexcept : modulo_(modulo), con_lista_(con_lista) {}

    bool encuentra() {
        const manija_comun instantanea(sistema.CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
        if (!i_comprueba(instantanea.valida(), "hSnapshot != INVALID_HANDLE_VALUE")) {
            return false;
        }
        paseo<PROCESSENTRY32W> paseo_procesos(instantanea.get(), &tamanyo_proceso_);
        for (bool hay = paseo_procesos.primera(sistema.Process32FirstW); hay;
             hay = !basta() && paseo_procesos.siguiente(sistema.Process32NextW)) {
            const DWORD pid = paseo_procesos.entrada().th32ProcessID;
            if (pid != pid_inactivo) {
                i_mira_modulos(pid);
            }
        }
        return encontrado_;
    }
    objeto<ArrPunteroConTipo> suelta_lista() noexcept { return std::move(lista_); }

private:
    bool basta() const noexcept { return encontrado_ && !con_lista_; }

    void i_mira_modulos(DWORD pid) {
        const manija_comun instantanea = i_instantanea_de_modulos(pid);
        if (!instantanea.valida()) {
            return;  // of another user, or protected, or gone
        }
        primero_del_proceso_ = lista_ ? lista_->punteros.size() : 0;
        paseo<MODULEENTRY32W> paseo_modulos(instantanea.get(), &tamanyo_modulo_);
        for (bool hay = paseo_modulos.primera(sistema.Module32FirstW); hay;
             hay = !basta() && paseo_modulos.siguiente(sistema.Module32NextW)) {
            if (a_vista<wchar_t>(paseo_modulos.entrada().szModule) == modulo_) {
                i_anota(paseo_modulos.entrada());
            }
        }
    }
    void i_anota(const MODULEENTRY32W& modulo) {
        encontrado_ = true;
        if (!con_lista_) {
            return;
        }
        if (!lista_) {
            lista_ = objeto<ArrPunteroConTipo>::crea();
        }
        if (i_esta_anotado(a_vista<wchar_t>(modulo.szExePath))) {
            return;
        }
        lista_->punteros.anade(i_crea_taskproc(&modulo).suelta());
    }

    // A 32-bit process lists its executable twice, once for each width, and not always in the same case.
    bool i_esta_anotado(vista_w ruta) const noexcept {
        const auto& punteros = lista_->punteros;
        return std::any_of(punteros.begin() + primero_del_proceso_, punteros.end(), [ruta](const void* otro) {
            return iguales_sin_caja(a_vista<wchar_t>(static_cast<const Taskproc*>(otro)->ruta), ruta);
        });
    }

    vista_w modulo_;
    bool con_lista_;
    bool encontrado_ = false;
    objeto<ArrPunteroConTipo> lista_;
    std::size_t primero_del_proceso_ = 0;  // in the list
    DWORD tamanyo_proceso_ = tamanyo_proceso;
    DWORD tamanyo_modulo_ = tamanyo_modulo;
};

}  // namespace

registro<Taskproc> i_crea_taskproc(const MODULEENTRY32W* pModuleEntry) {
    if (!i_comprueba(pModuleEntry != nullptr, "(pModuleEntry) != NULL")) {
        return {};
    }
    auto nuevo = registro<Taskproc>::a_cero();
    nuevo->modulo = cadena_w(a_vista<wchar_t>(pModuleEntry->szModule)).suelta();
    nuevo->pid = pModuleEntry->th32ProcessID;
    nuevo->ruta = cadena_w(a_vista<wchar_t>(pModuleEntry->szExePath)).suelta();
    return nuevo;
}

procesos_encontrados i_busca_procesos(vista_w modulo, bool con_lista) {
    busqueda busca(modulo, con_lista);
    const bool encontrado = busca.encuentra();
    return {encontrado, busca.suelta_lista()};
}

bool i_mata_proceso(const Taskproc& taskproc) noexcept {
    const manija_comun proceso(sistema.OpenProcess(PROCESS_TERMINATE, FALSE, taskproc.pid));
    if (!proceso.valida()) {
        return false;
    }
    // What it answers changes nothing: the process may be ending.
    sistema.TerminateProcess(proceso.get(), 0);
    return true;
}

bool i_mata_procesos(vista_w modulo) {
    const procesos_encontrados encontrados = i_busca_procesos(modulo, true);
    if (!encontrados.hay) {
        return false;
    }
    for (void* elemento : encontrados.lista->punteros) {
        const duenyo<Taskproc, destruye_taskproc> proceso(static_cast<Taskproc*>(elemento));
        i_mata_proceso(*proceso);
    }
    return true;
}

}  // namespace interno
