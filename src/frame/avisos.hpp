// The warnings of the library, but for those of the retry loop, and how its messages are made.
//
// Promises: nothing is shown in service mode. (The retry loop, which has then nothing to say either, and the creation of
// temporary files, which warns even then, show theirs without this.)
// Checked by tests/frame/avisos_test.cpp.
#pragma once

#include "companions/buclrein.hpp"
#include "companions/cadena.hpp"
#include "companions/registro_mensaje.hpp"
#include "lumodir_ajustes.h"

namespace interno {

// The message in the user's language, formatted with its arguments.
cadena_w i_mensaje(ConstructorMensaje construye, std::initializer_list<argumento<wchar_t>> argumentos = {});

void i_muestra_mensaje(ConstructorMensaje construye, vista_w argumento) noexcept;
void i_muestra_mensaje(ConstructorMensaje construye, vista_a argumento) noexcept;
// A text that is already formatted.
void i_muestra_texto(const wchar_t* texto) noexcept;

// The file-open callback of the host; NULL when there is none.
void i_establece_func_comprobar_fichero_no_esta_abierto(LumodirFncComprobarFichero func) noexcept;
LumodirFncComprobarFichero i_func_comprobar_fichero_no_esta_abierto() noexcept;

}  // namespace interno
