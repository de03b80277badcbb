// The exports of companions/lmlongpath.h.
#include "companions/lmlongpath.h"

#include "abi/exportacion.hpp"
#include "abi/tamanyo.hpp"
#include "companions/lmlongpath.hpp"

using namespace interno;

wchar_t* lmlongpath_prepended_path_si_necesario(const wchar_t* path) {
    const bool hay = i_comprueba(path != nullptr, "(path) != NULL");
    return nuevo_texto(hay ? vista_w(ruta_fijada(path).dada_si_cabe()) : vista_w());
}

unsigned long long lmlongpath_GetFileSize(const wchar_t* path, unsigned long* error_out) {
    return i_tamanyo(path, error_out);
}
