// The exports of lumodir_programa.h.
#include "lumodir_programa.h"

#include "abi/exportacion.hpp"
#include "files/programa.hpp"
#include "frame/puente.hpp"

using namespace interno;

namespace {

objeto<ArrCADENA_u> i_busca(const wchar_t* nombre, bool todos) {
    return i_comprueba(nombre != nullptr, "(nombre) != NULL") ? i_busca_en_el_path(nombre, todos)
                                                              : objeto<ArrCADENA_u>::crea();
}

}  // namespace

wchar_t* lumodir_dame_path_completo_del_programa_UNICODE(void) {
    return i_path_del_programa().suelta();
}
char* lumodir_dame_path_completo_del_programa(void) {
    return puente<lumodir_dame_path_completo_del_programa_UNICODE>();
}

unsigned short lumodir_busca_ejecutables_del_path(const wchar_t* nombre, ArrCADENA_u** path_exes) {
    objeto<ArrCADENA_u> encontrados = i_busca(nombre, path_exes != nullptr);
    const bool alguno = encontrados->num() > 0;
    if (path_exes != nullptr) {
        *path_exes = encontrados.suelta();
    }
    return logico(alguno);
}

unsigned short lumodir_busca_ejecutable_del_path(const wchar_t* nombre, wchar_t** path_exe) {
    const objeto<ArrCADENA_u> encontrados = i_busca(nombre, false);
    const bool alguno = encontrados->num() > 0;
    entrega(path_exe, alguno ? cadena_w(encontrados->ver(0)) : cadena_w());
    return logico(alguno);
}
