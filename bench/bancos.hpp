// The groups of rows, one per folder of src/.
#pragma once

#include "banco.hpp"

namespace bancos {

void rutas();
void listados();
void crecimiento(const std::wstring& directorio);  // one that tools/largo growth has filled
void ficheros();
void registro();
void procesos();

}  // namespace bancos
