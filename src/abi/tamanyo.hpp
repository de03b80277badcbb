// The size of a file, as two exports tell it.
#pragma once

#include "abi/exportacion.hpp"
#include "companions/lmlongpath.hpp"

namespace interno {

// ~0 when the path is NULL, which is reported, or when the system does not tell it; the code is handed over then.
inline unsigned long long i_tamanyo(const wchar_t* path, unsigned long* error_out,
                                    lugar donde = lugar::aqui()) noexcept {
    constexpr unsigned long long sin_tamanyo = ~0ull;
    if (!i_comprueba(path != nullptr, "(path) != NULL", donde)) {
        return sin_tamanyo;
    }
    const datos_de_fichero datos = lmlongpath_GetFileAttributesExW(path);
    if (datos.leidos()) {
        return static_cast<unsigned long long>(datos.nFileSizeHigh) << 32 | datos.nFileSizeLow;
    }
    if (error_out != nullptr) {
        *error_out = datos.codigo;
    }
    return sin_tamanyo;
}

}  // namespace interno
