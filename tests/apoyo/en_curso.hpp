// What each thread of a test program is calling, which a crash tells before it ends the process. Windows only.
#pragma once

#include <windows.h>

#include <cstdio>
#include <string>

namespace apoyo {

// No object: MinGW's threads free what is local to them before they run its destructors.
inline char (&i_en_curso())[200] {
    static thread_local char llamada[200] = "";
    return llamada;
}

// Kept up to its first 199 characters.
inline void pon_en_curso(const std::string& llamada) {
    i_en_curso()[llamada.copy(i_en_curso(), sizeof i_en_curso() - 1)] = '\0';
}
inline const char* en_curso() {
    return i_en_curso();
}

inline LONG CALLBACK i_dice_donde(EXCEPTION_POINTERS* excepcion) {
    const DWORD codigo = excepcion->ExceptionRecord->ExceptionCode;
    // The second is how undefined behaviour traps.
    if (codigo == static_cast<DWORD>(EXCEPTION_ACCESS_VIOLATION) ||
        codigo == static_cast<DWORD>(EXCEPTION_ILLEGAL_INSTRUCTION)) {
        std::fprintf(stderr, "exception %lX in %s\n", codigo, en_curso());
        std::fflush(stderr);
    }
    return EXCEPTION_CONTINUE_SEARCH;
}
inline void* const i_escucha = ::AddVectoredExceptionHandler(1, i_dice_donde);

}  // namespace apoyo
