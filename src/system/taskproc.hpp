// Running processes found by the modules that they have loaded.
//
// Promises: snapshots are closed before a call returns; without a list nothing is allocated; of the other processes
// only their modules are asked for; a process gives one record for each path of a module, however often it lists it.
// Cannot promise: to see into processes of other users and protected ones: they show no modules.
// Checked by tests/system/taskproc_win32_test.cpp.
#pragma once

#include "companions/arr.hpp"
#include "companions/sistema.hpp"
#include "taskproc.h"

namespace interno {

struct destruye_taskproc {
    void operator()(Taskproc* taskproc) const noexcept {
        i_libera(taskproc->modulo);
        i_libera(taskproc->ruta);
        i_libera(taskproc);
    }
};

// A new record of a module; NULL (reported) without one.
registro<Taskproc> i_crea_taskproc(const MODULEENTRY32W* pModuleEntry);

struct procesos_encontrados {
    bool hay;
    objeto<ArrPunteroConTipo> lista;  // of Taskproc; NULL when none was found or none was wanted
};
procesos_encontrados i_busca_procesos(vista_w modulo, bool con_lista);

// False when the process does not open.
bool i_mata_proceso(const Taskproc& taskproc) noexcept;
// False when there is none.
bool i_mata_procesos(vista_w modulo);

}  // namespace interno
