// Creation of the directories of a path, level by level, each inside a retry loop.
//
// Promises: levels that exist cost no creation, and a path that exists whole costs a single question; a level that
// somebody else creates meanwhile counts as existing. The path is tied to its place once, so that all levels are made
// there, whoever changes the current directory. The answer is yes only when the directory that was named is one.
// Cannot promise: to take back the levels already made when a later one fails. A file in the place of a level above
// the last is noticed only when the level below it is created.
// Checked by tests/files/crea_directorios_win32_test.cpp.
#pragma once

namespace interno {

// `es_directorio`: the path names a directory; else a file, whose directory is wanted. `informa`: the retry loops ask
// the user and a failure is shown at the end; else it works in silence, but for the warning about an incorrect path.
// Answers whether every level exists at the end.
bool i_crea_directorios(const wchar_t* path, bool es_directorio, bool informa) noexcept;

}  // namespace interno
