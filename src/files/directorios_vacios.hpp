// Removing a directory and its ancestors while they are empty.
//
// Promises: the base is opened first and everything below it through it, so the base, and what lies above it, cannot
// be removed, however base and directory are spelled; links are left alone, and what lies behind them; nothing is
// removed after a report. A base that ends in the middle of a name does not end the climb, and is reported after it. Each
// directory is tried once, in silence; the first that is not empty, or does not go, ends the climb.
// A directory that holds only directories whose names begin with a dot counts as empty here, and the system then refuses
// its removal.
// Checked by tests/files/directorios_vacios_win32_test.cpp.
#pragma once

#include "companions/texto.hpp"

namespace interno {

// A base without data stands for the drive.
void i_borra_directorios_vacios(const wchar_t* path_directorio, vista_w path_base_no_borrar);

}  // namespace interno
