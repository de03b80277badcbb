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
    return i_comprueba(path != nullptr, "(path) != NULL") ? i_tamanyo(path, error_out).value_or(sin_tamanyo)
                                                          : sin_tamanyo;
}
