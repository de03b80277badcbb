// Child processes: the test executable started again, itself or a copy of it under another name, to play a part
// (hold a file open, wait to be found, look at the clock of another time zone). Windows only.
//
//     const papel sujeta("sujeta_fichero", [] { ...; hijo_listo(); hijo_espera_fin(); return 0; });
//     proceso_hijo otro("sujeta_fichero", ruta);
//     ASSERT_TRUE(otro.espera_listo());
//
// A part is played at the beginning of main, so that a child never runs tests, and finds everything as a program does. A
// child left alone ends after a minute; the destructor of its owner ends it at once.
#pragma once

#include <cstdio>
#include <functional>
#include <map>
#include <string>

#include "apoyo/apoyo.hpp"
#include "companions/sistema.hpp"

namespace apoyo {

inline constexpr DWORD paciencia_hijo_ms = 60'000;

inline texto_w variable(const wchar_t* nombre) {
    wchar_t valor[4096];
    const DWORD largo = ::GetEnvironmentVariableW(nombre, valor, 4096);
    return largo < 4096 ? texto_w(valor, largo) : texto_w();
}

// A part of the test executable: the action's answer is the exit code.
class papel {
public:
    papel(const char* nombre, std::function<UINT()> accion) { todos()[w(nombre)] = std::move(accion); }

    // In a child: plays its part, and does not come back.
    static void representa_si_se_pide() {
        const texto_w pedido = variable(L"LUMODIR_PAPEL");
        if (pedido.empty()) {
            return;
        }
        const auto suyo = todos().find(pedido);
        if (suyo == todos().end()) {
            std::fprintf(stderr, "a child has no part to play: '%s'\n", u8(pedido).c_str());
        }
        constexpr UINT sin_papel = 98;
        ::TerminateProcess(::GetCurrentProcess(), suyo == todos().end() ? sin_papel : suyo->second());
    }

private:
    static std::map<texto_w, std::function<UINT()>>& todos() {
        static std::map<texto_w, std::function<UINT()>> unos;
        return unos;
    }
};

// For the child: what its parent gave it, and the two signals.
inline texto_w hijo_dato() {
    return variable(L"LUMODIR_PAPEL_DATO");
}
inline HANDLE i_senyal(const texto_w& base, const char* cual) {
    return ::CreateEventW(nullptr, TRUE, FALSE, (base + w(cual)).c_str());
}
inline void hijo_listo() {
    ::SetEvent(i_senyal(variable(L"LUMODIR_PAPEL_SENYAL"), "listo"));
}
inline void hijo_espera_fin() {
    ::WaitForSingleObject(i_senyal(variable(L"LUMODIR_PAPEL_SENYAL"), "fin"), paciencia_hijo_ms);
}

inline texto_w ruta_del_ejecutable() {
    wchar_t ruta[4096];
    return texto_w(ruta, ::GetModuleFileNameW(nullptr, ruta, 4096));
}

class proceso_hijo {
public:
    explicit proceso_hijo(const char* papel, const texto_w& dato = {},
                          const texto_w& ejecutable = ruta_del_ejecutable()) {
        static unsigned numero = 0;
        const texto_w base =
            w("lumodir_" + std::to_string(::GetCurrentProcessId()) + "_" + std::to_string(++numero) + "_");
        listo_ = i_senyal(base, "listo");
        fin_ = i_senyal(base, "fin");
        ::SetEnvironmentVariableW(L"LUMODIR_PAPEL", w(papel).c_str());
        ::SetEnvironmentVariableW(L"LUMODIR_PAPEL_DATO", dato.c_str());
        ::SetEnvironmentVariableW(L"LUMODIR_PAPEL_SENYAL", base.c_str());
        STARTUPINFOW arranque = {};
        arranque.cb = sizeof arranque;
        texto_w orden = w("\"") + ejecutable + w("\"");
        creado_ = ::CreateProcessW(ejecutable.c_str(), orden.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                   nullptr, &arranque, &proceso_) != FALSE;
        if (!creado_) {
            por_que_ = "cannot be started: error " + std::to_string(::GetLastError());
        }
        ::SetEnvironmentVariableW(L"LUMODIR_PAPEL", nullptr);
        ::SetEnvironmentVariableW(L"LUMODIR_PAPEL_DATO", nullptr);
        ::SetEnvironmentVariableW(L"LUMODIR_PAPEL_SENYAL", nullptr);
    }
    ~proceso_hijo() {
        if (creado_) {
            ::TerminateProcess(proceso_.hProcess, 9);
            ::WaitForSingleObject(proceso_.hProcess, paciencia_hijo_ms);
            ::CloseHandle(proceso_.hThread);
            ::CloseHandle(proceso_.hProcess);
        }
        ::CloseHandle(listo_);
        ::CloseHandle(fin_);
    }
    proceso_hijo(const proceso_hijo&) = delete;
    proceso_hijo& operator=(const proceso_hijo&) = delete;

    DWORD pid() const { return proceso_.dwProcessId; }
    // Whether it plays its part; one that does not fails the test, which tells why.
    bool espera_listo() const {
        std::string por_que = por_que_;
        if (creado_) {
            const HANDLE cualquiera[] = {listo_, proceso_.hProcess};
            const DWORD cual = ::WaitForMultipleObjects(2, cualquiera, FALSE, paciencia_hijo_ms);
            if (cual == WAIT_OBJECT_0) {
                return true;
            }
            DWORD codigo = 0;
            ::GetExitCodeProcess(proceso_.hProcess, &codigo);
            por_que = cual == WAIT_TIMEOUT ? "is not ready after a minute"
                                           : "ended before it was ready: exit code " + std::to_string(codigo);
        }
        ADD_FAILURE() << "the child process " << por_que;
        return false;
    }
    bool vive() const { return creado_ && ::WaitForSingleObject(proceso_.hProcess, 0) == WAIT_TIMEOUT; }
    // Tells it to end. The second waits for it, with the usual patience on top of the time that it
    // is known to need, and answers its exit code.
    void suelta() const { ::SetEvent(fin_); }
    DWORD espera_fin(unsigned segundos = 0) const {
        EXPECT_TRUE(creado_) << "the child process " << por_que_;
        DWORD codigo = STILL_ACTIVE;
        ::WaitForSingleObject(proceso_.hProcess, 1000 * segundos + paciencia_hijo_ms);
        ::GetExitCodeProcess(proceso_.hProcess, &codigo);
        return codigo;
    }

private:
    PROCESS_INFORMATION proceso_ = {};
    HANDLE listo_ = nullptr;
    HANDLE fin_ = nullptr;
    bool creado_ = false;
    std::string por_que_;
};

}  // namespace apoyo
