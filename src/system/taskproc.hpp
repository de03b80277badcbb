// Running processes found by the modules that they have loaded.
//
// Promises: snapshots are closed before a call returns; without a list nothing is allocated; of the other processes
// only their modules are asked for; a process gives one record for each path of a module, however often it lists it.
// Cannot promise: to see into processes of other users and protected ones: they show no modules.
// Checked by tests/system/taskproc_win32_test.cpp.
#pragma once

#include "companions/lumospy.hpp"
#include "companions/sistema.hpp"
#include "taskproc.h"

namespace lumodir {

// A new record of a module; NULL (reported) without one.
registro<Taskproc> i_crea_taskproc(const MODULEENTRY32W* pModuleEntry);

}  // namespace lumodir
