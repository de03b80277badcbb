// Giving the files of a directory another extension.
//
// Promises: only files of the directory that was given change, whatever the current directory is by then: the root
// stays the root, and no extension leads anywhere else. A file in the way of the new name is deleted first, on
// purpose: one whose entry bears exactly that name, letter case aside. Not the source itself by another spelling, nor
// a file that only answers to the name (by its short name, or with a blank or dot at the end cut off). Nothing is
// deleted for a source that is not there, and nothing happens to links that the system would follow (Wine).
// Cannot promise: to do both in one step: when the renaming fails after the deletion, only the old file is left.
// Checked by tests/files/cambia_extension_win32_test.cpp.
#pragma once

#include "companions/texto.hpp"

namespace interno {

// The extensions with or without their dot.
void i_cambia_extension(const wchar_t* directorio, vista_w antigua, vista_w nueva);

}  // namespace interno
