// The exports of companions/lumostr.h: what hosts do with the 8-bit texts they were given.
// Checked by tests/companions/textos_exportados_test.cpp.
#include "companions/lumostr.h"

#include "abi/exportacion.hpp"

using namespace interno;

void lumostr_destruye(char** text) {
    destruye_texto(text, false);
}

void lumostr_destruye_opcional(char** text) {
    destruye_texto(text, true);
}
