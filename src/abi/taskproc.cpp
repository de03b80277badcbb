// The exports of taskproc.h.
#include "taskproc.h"

#include "abi/exportacion.hpp"
#include "companions/error_interno.hpp"
#include "system/taskproc.hpp"

using namespace interno;

unsigned short taskproc_busca_proceso_abierto(const wchar_t* modulo, ArrPunteroConTipo** procesos) {
    if (procesos != nullptr) {
        *procesos = nullptr;
    }
    if (!i_comprueba(modulo != nullptr, "(modulo) != NULL")) {
        return FALSO;
    }
    procesos_encontrados encontrados = i_busca_procesos(a_vista(modulo), procesos != nullptr);
    if (procesos != nullptr) {
        *procesos = encontrados.lista.suelta();
    }
    return logico(encontrados.hay);
}

unsigned short taskproc_mata_proceso(const Taskproc* taskproc) {
    return logico(i_comprueba(taskproc != nullptr, "(taskproc) != NULL") && i_mata_proceso(*taskproc));
}

unsigned short taskproc_mata_procesos_nombre_dado(const wchar_t* modulo) {
    return logico(i_comprueba(modulo != nullptr, "(modulo) != NULL") && i_mata_procesos(a_vista(modulo)));
}

const wchar_t* taskproc_ruta_proceso(const Taskproc* taskproc) {
    return i_comprueba(taskproc != nullptr, "(taskproc) != NULL") ? taskproc->ruta : nullptr;
}

void taskproc_destruye(Taskproc** taskproc) {
    i_destruye_en(taskproc, "(taskproc) != NULL", "(*taskproc) != NULL", destruye_taskproc());
}
