// The library's allocator under guard: with LUMODIR_MEMORIA=guardada in the environment every block ends at a page
// that cannot be touched, and a block that was freed cannot be touched either. tools/largo guarded runs the tests so.
//
// Finds: one byte read or written past a block, any use after it was freed, a second freeing, a pointer that the
// library never gave, bytes written before a block, and, by filling new blocks with rubbish, much that was never set.
// Cannot find: what is read before a block; a use after so many others were freed that the address came back.
// Windows only; natively the sanitizers do this.
#pragma once

#include <cstddef>

namespace apoyo {

// Puts the guarding allocator in the library's table when the environment asks for it. Before any block is made.
void guarda_la_memoria_si_se_pide();

// Whether it is there; and how often guarded memory was touched (a fault that Windows itself swallowed counts too).
bool memoria_guardada() noexcept;
unsigned long faltas_de_memoria() noexcept;

}  // namespace apoyo
