// The exports of lumodir_ajustes.h.
#include "lumodir_ajustes.h"

#include "frame/avisos.hpp"

using namespace interno;

void lumodir_establece_modo_servicio_sin_reintentos(void) {
    buclrein_establece_modo_servicio_sin_reintentos();
}

void lumodir_set_func_comprobar_fichero_no_esta_abierto(LumodirFncComprobarFichero func_comprobar) {
    i_establece_func_comprobar_fichero_no_esta_abierto(func_comprobar);
}
