// The exports of companions/widestr.h: what hosts do with the wide texts they were given, under their own place.
// Checked by tests/companions/textos_exportados_test.cpp.
#include "companions/widestr.h"

#include "abi/exportacion.hpp"

using namespace interno;

wchar_t* widestr_nousar_copia(const wchar_t* text, const char* tag, unsigned long line) {
    const lugar donde = lugar::del_anfitrion(tag, line);
    i_comprueba(text != nullptr, "(cadena) != NULL", donde);
    return cadena_w(a_vista(text), donde).suelta();
}

void widestr_nousar_destruye(wchar_t** text, const char* tag, unsigned long line) {
    destruye_texto(text, false, lugar::del_anfitrion(tag, line));
}

void widestr_nousar_destruye_opcional(wchar_t** text, const char* tag, unsigned long line) {
    destruye_texto(text, true, lugar::del_anfitrion(tag, line));
}
