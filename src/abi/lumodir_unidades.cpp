// The exports of lumodir_unidades.h.
#include "lumodir_unidades.h"

#include "abi/exportacion.hpp"
#include "frame/puente.hpp"
#include "system/unidades.hpp"

using namespace interno;

ArrPunteroConTipo* lumodir_UnidadesDelSistema(void) {
    return i_unidades_del_sistema(false).suelta();
}

ArrPunteroConTipo* lumodir_UnidadesDelSistemaConNombre(void) {
    return i_unidades_del_sistema(true).suelta();
}

wchar_t* lumodir_nombreCompleto_UnidadSistema_UNICODE(const UnidadSistema* unidad) {
    const wchar_t* nombre = i_comprueba(unidad != nullptr, "(unidad) != NULL") ? unidad->nombre : nullptr;
    return nuevo_texto(a_vista(nombre));
}
char* lumodir_nombreCompleto_UnidadSistema(const UnidadSistema* unidad) {
    return puente<lumodir_nombreCompleto_UnidadSistema_UNICODE>(unidad);
}

unsigned long lumodir_tipoDrive_UnidadSistema(const UnidadSistema* unidad) {
    return i_comprueba(unidad != nullptr, "(unidad) != NULL") ? unidad->tipo : 0;
}

void lumodir_destruyeEstructuraUnidadSistema(UnidadSistema** unidad) {
    i_destruye_en(unidad, "(unidad) != NULL", "(*unidad) != NULL", [](UnidadSistema* suya) {
        i_libera(suya->nombre);
        i_libera(suya);
    });
}
