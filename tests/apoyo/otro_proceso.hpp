// Another process that holds a file open: the test program runs itself again with an argument.
//
//     apoyo::otro_proceso sujeta(ruta, GENERIC_READ, 0);   // open when the constructor is through
//     ...
//     sujeta.suelta();                                     // closed when this returns
#pragma once

#include "apoyo/apoyo.hpp"
#include "companions/sistema.hpp"

#include <shellapi.h>  // needs windows.h before it

namespace apoyo {

inline constexpr const char* argumento_sujeta = "--sujeta";

class otro_proceso {
public:
    otro_proceso(const std::string& ruta, DWORD acceso, DWORD compartir) {
        HANDLE ordenes_hijo = nullptr;
        HANDLE avisos = nullptr;
        HANDLE avisos_hijo = nullptr;
        SECURITY_ATTRIBUTES heredable = {sizeof heredable, nullptr, TRUE};
        EXPECT_TRUE(::CreatePipe(&ordenes_hijo, &ordenes_, &heredable, 0));
        EXPECT_TRUE(::CreatePipe(&avisos, &avisos_hijo, &heredable, 0));
        ::SetHandleInformation(ordenes_, HANDLE_FLAG_INHERIT, 0);
        ::SetHandleInformation(avisos, HANDLE_FLAG_INHERIT, 0);
        wchar_t programa[1024];
        ::GetModuleFileNameW(nullptr, programa, 1024);
        texto_w linea = w("\"" + u8(programa) + "\" " + argumento_sujeta + " " + std::to_string(acceso) +
                          " " + std::to_string(compartir) + " \"" + ruta + "\"");
        STARTUPINFOW comienzo = {};
        comienzo.cb = sizeof comienzo;
        comienzo.dwFlags = STARTF_USESTDHANDLES;
        comienzo.hStdInput = ordenes_hijo;
        comienzo.hStdOutput = avisos_hijo;
        comienzo.hStdError = avisos_hijo;
        PROCESS_INFORMATION datos = {};
        EXPECT_TRUE(::CreateProcessW(programa, linea.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                     &comienzo, &datos));
        proceso_ = datos.hProcess;
        ::CloseHandle(datos.hThread);
        ::CloseHandle(ordenes_hijo);
        ::CloseHandle(avisos_hijo);
        char respuesta = 0;
        DWORD leidos = 0;
        ::ReadFile(avisos, &respuesta, 1, &leidos, nullptr);
        ::CloseHandle(avisos);
        EXPECT_EQ(respuesta, 'S') << "the other process cannot open " << ruta;
    }
    ~otro_proceso() { suelta(); }
    otro_proceso(const otro_proceso&) = delete;
    otro_proceso& operator=(const otro_proceso&) = delete;

    void suelta() {
        if (proceso_ != nullptr) {
            ::CloseHandle(ordenes_);
            ::WaitForSingleObject(proceso_, INFINITE);
            ::CloseHandle(proceso_);
            proceso_ = nullptr;
        }
    }

private:
    HANDLE ordenes_ = nullptr;  // the other process ends when this is closed
    HANDLE proceso_ = nullptr;
};

// The other side, called by main: holds the file until its input ends. Answers false for an ordinary test run.
inline bool hace_de_otro_proceso() {
    int num = 0;
    wchar_t** argumentos = ::CommandLineToArgvW(::GetCommandLineW(), &num);
    const bool es_el_otro = num == 5 && u8(argumentos[1]) == argumento_sujeta;
    if (es_el_otro) {
        const HANDLE h = ::CreateFileW(argumentos[4], static_cast<DWORD>(std::stoul(u8(argumentos[2]))),
                                       static_cast<DWORD>(std::stoul(u8(argumentos[3]))), nullptr,
                                       OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
        char byte = h == INVALID_HANDLE_VALUE ? 'N' : 'S';
        DWORD cuantos = 0;
        ::WriteFile(::GetStdHandle(STD_OUTPUT_HANDLE), &byte, 1, &cuantos, nullptr);
        ::ReadFile(::GetStdHandle(STD_INPUT_HANDLE), &byte, 1, &cuantos, nullptr);
        ::CloseHandle(h);
    }
    ::LocalFree(argumentos);
    return es_el_otro;
}

}  // namespace apoyo
