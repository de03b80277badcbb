// What the environment library tells about the running program.
// Checked by tests/files/programa_win32_test.cpp.
#pragma once

namespace lumodir {

// The library lives in the process that asks, so the width of its own pointers is the answer.
constexpr unsigned short machine_es_imagen_de_64bits() noexcept {
    return sizeof(void*) == 8 ? 1 : 0;
}

}  // namespace lumodir
