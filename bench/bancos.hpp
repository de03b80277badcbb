// The groups of rows, one per folder of src/.
#pragma once

#include "banco.hpp"

namespace bancos {

void rutas();
void listados();
void crecimiento();  // its 100,000 files take minutes to make under Wine
void ficheros();
void registro();
void procesos();

}  // namespace bancos
