// The groups of rows, one per folder of src/.
#pragma once

#include "banco.hpp"

namespace bancos {

void rutas();
void rutas_de_la_pagina();  // 8-bit ones of several bytes a character, in the code page of the system
void listados();
void crecimiento(const std::wstring& directorio);  // one that tools/largo growth has filled
// One action on a directory of so many files, alone in its process; answers whether all went well.
bool resiste(const std::string& accion, const std::wstring& directorio, std::size_t ficheros);
void ficheros();
void registro();
void procesos();

}  // namespace bancos
