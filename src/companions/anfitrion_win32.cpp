// The barrier that exceptions of other runtimes end at (anfitrion.hpp): those of Microsoft's C++, of .NET, of Delphi,
// and what a program raises by itself. GCC has no `__try`, so the frame that stands for it is written by hand: a function
// that calls another one, whose handler the system asks while it looks for one.
//
// Promises: after an exception that ends here the call returns as if the function had; GCC's own exceptions, faults of
// the processor and the system's own codes go on.
// Cannot promise: anything on other processors than x86-64 and with other compilers than GCC and Clang for MinGW: there
// the call is a plain one, and what `catch (...)` sees is what ends.
// Checked by tests/companions/anfitrion_win32_test.cpp.
#include "companions/anfitrion.hpp"
#include "companions/sistema.hpp"

namespace interno {

bool i_acaba_en_la_barrera(unsigned long codigo) noexcept {
    constexpr unsigned long de_programa = 1ul << 29;  // the bit of codes that the system leaves to programs
    constexpr unsigned long de_gcc =
        0x00474343;  // "GCC" behind the bits of each kind: `catch (...)` sees those
    constexpr unsigned long de_delphi = 0x0EEDFADE;  // bears no such bit
    return ((codigo & de_programa) != 0 && (codigo & 0x00FFFFFF) != de_gcc) || codigo == de_delphi;
}

}  // namespace interno

#if defined(__x86_64__) && defined(__MINGW32__)

extern "C" {

void lumodir_barrera(void (*funcion)(void*), void* argumento);
extern char lumodir_barrera_salida[];

// Asked twice at most: while the system looks for a handler, and never again for a frame that it unwinds to. Used by the
// lines in assembler alone, which an optimiser of the whole program does not read.
[[gnu::used]] EXCEPTION_DISPOSITION lumodir_barrera_manejador(EXCEPTION_RECORD* excepcion, void* marco,
                                                              CONTEXT*, DISPATCHER_CONTEXT* reparto) {
    constexpr DWORD se_deshace = 0x2 | 0x4;  // EXCEPTION_UNWINDING, EXCEPTION_EXIT_UNWIND
    if ((excepcion->ExceptionFlags & se_deshace) == 0 &&
        interno::i_acaba_en_la_barrera(excepcion->ExceptionCode)) {
        ::RtlUnwindEx(marco, lumodir_barrera_salida, excepcion, nullptr, reparto->ContextRecord,
                      reparto->HistoryTable);
    }
    return ExceptionContinueSearch;
}
}

__asm__(
    "\t.text\n"
    "\t.p2align 4\n"
    "\t.globl\tlumodir_barrera\n"
    "\t.def\tlumodir_barrera;\t.scl\t2;\t.type\t32;\t.endef\n"
    "\t.seh_proc\tlumodir_barrera\n"
    "lumodir_barrera:\n"
    "\tsubq\t$40, %rsp\n"
    "\t.seh_stackalloc\t40\n"
    "\t.seh_endprologue\n"
    "\tmovq\t%rcx, %rax\n"
    "\tmovq\t%rdx, %rcx\n"
    "\tcall\t*%rax\n"
    "\tnop\n"
    "\t.globl\tlumodir_barrera_salida\n"
    "lumodir_barrera_salida:\n"
    "\taddq\t$40, %rsp\n"
    "\tret\n"
    "\t.seh_handler\tlumodir_barrera_manejador, @except\n"
    "\t.seh_endproc\n");

#endif

namespace interno::plataforma {

void llama_tras_barrera(void (*funcion)(void*), void* argumento) {
#if defined(__x86_64__) && defined(__MINGW32__)
    lumodir_barrera(funcion, argumento);
#else
    funcion(argumento);
#endif
}

}  // namespace interno::plataforma
