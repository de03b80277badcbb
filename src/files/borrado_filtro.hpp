// Deleting what a search pattern finds.
//
// Promises: only files that the system's own search finds are touched, one attempt each, in the directory that the
// pattern names and by the very names that the search gave, whatever they end in; directories and read-only files
// stay. The enumerator's own filter is looser than the system's and never deletes anything.
// Checked by tests/files/borrado_filtro_win32_test.cpp.
#pragma once

namespace interno {

void i_borra_lo_que_encuentra(const wchar_t* filtro);

}  // namespace interno
