// The exports of discos.h.
#include "discos.h"

#include "abi/exportacion.hpp"
#include "system/discos.hpp"

using namespace interno;

namespace {

constexpr wchar_t i_mayuscula(wchar_t c) noexcept {
    return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - (L'a' - L'A')) : c;
}

}  // namespace

unsigned short discos_es_unidad_local(wchar_t unidad) {
    i_comprueba((unidad >= L'A' && unidad <= L'Z') || (unidad >= L'a' && unidad <= L'z'),
                "(unidad >= L'A' && unidad <= L'Z') || (unidad >= L'a' && unidad <= L'z')");
    return logico(i_es_unidad_local(unidad));
}

unsigned short discos_es_unidad_subst(wchar_t unidad) {
    const wchar_t unidad2 = i_mayuscula(unidad);
    i_comprueba(unidad2 >= L'A' && unidad2 <= L'Z', "unidad2 >= L'A' && unidad2 <= L'Z'");
    return logico(i_es_unidad_subst(unidad2));
}

wchar_t* discos_nombre_volumen(unsigned short disco) {
    const bool hay = i_comprueba(disco < i_NUM_MAX_UNIDADES, "disco < i_NUM_MAX_UNIDADES");
    return hay ? i_nombre_de_volumen(disco).suelta() : nuevo_texto(vista_w());
}
