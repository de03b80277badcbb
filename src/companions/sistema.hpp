// The door to the system: the one table of all calls that reach files, the registry, processes, drives, the shell, the
// process itself, sleep and chance (llamadas.hpp names them). Every operation of the library ends here, so tests replace
// an entry and make any call fail, once or for ever.
//
// Promises: each entry has the signature and the error convention of the Windows function whose name it bears.
// Checked by the fault tests of tests/exports, files, listings and system; that nothing goes round it, by
// tests/dll/llamadas_test.cpp.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <utility>

#include "companions/llamadas.hpp"

namespace interno {

struct tabla_sistema {
#define LUMODIR_ENTRADA(Nombre) propias::tipo_de_##Nombre Nombre;
#define LUMODIR_ENTRADA_QUE_FALLA(Clase, Nombre, Fallo) LUMODIR_ENTRADA(Nombre)
    LUMODIR_LLAMADAS_QUE_FALLAN(LUMODIR_ENTRADA_QUE_FALLA)
    LUMODIR_LLAMADAS_QUE_NO_FALLAN(LUMODIR_ENTRADA)
#undef LUMODIR_ENTRADA_QUE_FALLA
#undef LUMODIR_ENTRADA
};

extern tabla_sistema sistema;

// The thread's last error survives whatever happens in the scope: destructors that call Windows use it.
class conserva_ultimo_error {
public:
    conserva_ultimo_error() noexcept : codigo_(::GetLastError()) {}
    ~conserva_ultimo_error() { ::SetLastError(codigo_); }
    conserva_ultimo_error(const conserva_ultimo_error&) = delete;
    conserva_ultimo_error& operator=(const conserva_ultimo_error&) = delete;

private:
    DWORD codigo_;
};

// Of a call that has failed: a failure stays one even when the system has no code for it.
inline DWORD i_ultimo_error() noexcept {
    const DWORD codigo = ::GetLastError();
    return codigo == ERROR_SUCCESS ? ERROR_GEN_FAILURE : codigo;
}

// Owner of a handle, which that entry of the table closes.
template <auto Cierra>
class manija {
public:
    manija() noexcept = default;
    explicit manija(HANDLE valor) noexcept : valor_(valor) {}
    manija(manija&& otra) noexcept : valor_(otra.suelta()) {}
    manija& operator=(manija&& otra) noexcept {
        if (this != &otra) {
            cierra();
            valor_ = otra.suelta();
        }
        return *this;
    }
    ~manija() { cierra(); }

    // Some calls fail with one of these, some with the other.
    bool valida() const noexcept { return valor_ != INVALID_HANDLE_VALUE && valor_ != nullptr; }
    HANDLE get() const noexcept { return valor_; }
    HANDLE suelta() noexcept { return std::exchange(valor_, INVALID_HANDLE_VALUE); }
    // Closes now; answers whether the system did, or there was nothing to close.
    bool cierra() noexcept {
        if (!valida()) {
            return true;
        }
        const conserva_ultimo_error conserva;
        return (sistema.*Cierra)(suelta()) != FALSE;
    }

private:
    HANDLE valor_ = INVALID_HANDLE_VALUE;
};

// Of a file, a process, a snapshot.
using manija_comun = manija<&tabla_sistema::CloseHandle>;
using manija_busqueda = manija<&tabla_sistema::FindClose>;

// What was opened, or why nothing was.
struct fichero_abierto : manija_comun {
    fichero_abierto() noexcept = default;
    // Right after the call that opens, for the sake of its code.
    explicit fichero_abierto(HANDLE abierto) noexcept
        : manija_comun(abierto), codigo(valida() ? DWORD{ERROR_SUCCESS} : ::GetLastError()) {}
    static fichero_abierto ninguno(DWORD por_que) noexcept {
        fichero_abierto nada;
        nada.codigo = por_que;
        return nada;
    }

    // Never that of a success when nothing was opened.
    DWORD codigo_de_fallo() const noexcept {
        return valida() || codigo != ERROR_SUCCESS ? codigo : DWORD{ERROR_GEN_FAILURE};
    }

    DWORD codigo = ERROR_INVALID_HANDLE;
};

}  // namespace interno
