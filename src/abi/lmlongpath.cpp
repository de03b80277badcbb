// The exports of companions/lmlongpath.h.
#include "companions/lmlongpath.h"

#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"

using namespace interno;

wchar_t* lmlongpath_prepended_path_si_necesario(const wchar_t* path) {
    const bool hay = i_comprueba(path != nullptr, "(path) != NULL");
    return cadena_w(hay ? vista_w(ruta_fijada(path).dada_si_cabe()) : vista_w()).suelta();
}

unsigned long long lmlongpath_GetFileSize(const wchar_t* path, unsigned long* error_out) {
    constexpr unsigned long long sin_tamanyo = ~0ull;
    if (!i_comprueba(path != nullptr, "(path) != NULL")) {
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
