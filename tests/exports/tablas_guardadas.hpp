// Every table of system calls, put back as it was at the end of a block. Windows only.
#pragma once

#include "companions/sistema.hpp"
#include "companions/tabla_entorno.hpp"
#include "files/nombre_largo.hpp"
#include "files/programa.hpp"
#include "system/tabla_procesos.hpp"
#include "system/tabla_registro.hpp"
#include "system/tabla_unidades.hpp"

namespace exports {

class tablas_guardadas {
public:
    tablas_guardadas() { lumodir::i_olvida_nombre_largo(); }
    ~tablas_guardadas() {
        lumodir::sistema = sistema;
        lumodir::sistema_registro = registro;
        lumodir::procesos = procesos;
        lumodir::unidades = unidades;
        lumodir::directorio_actual = actual;
        lumodir::entorno = entorno;
        lumodir::escritorio = escritorio;
        lumodir::busca_nombre_largo = largo;
        lumodir::i_olvida_nombre_largo();
    }
    tablas_guardadas(const tablas_guardadas&) = delete;
    tablas_guardadas& operator=(const tablas_guardadas&) = delete;

    const lumodir::tabla_sistema sistema = lumodir::sistema;
    const lumodir::tabla_registro registro = lumodir::sistema_registro;
    const lumodir::tabla_procesos procesos = lumodir::procesos;
    const lumodir::tabla_unidades unidades = lumodir::unidades;
    const lumodir::tabla_entorno entorno = lumodir::entorno;
    const lumodir::tabla_directorio_actual actual = lumodir::directorio_actual;
    const lumodir::tabla_escritorio escritorio = lumodir::escritorio;
    lumodir::funcion_nombre_largo (*const largo)() noexcept = lumodir::busca_nombre_largo;
};

}  // namespace exports
