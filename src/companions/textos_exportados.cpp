// The string operations that hosts use on the texts they were given: copy and free, in both flavours.
// Checked by tests/companions/textos_exportados_test.cpp.
#include "companions/cadena.hpp"
#include "companions/error_interno.hpp"
#include "companions/lumostr.h"
#include "companions/widestr.h"

using namespace lumodir;

namespace {

// The plain destroyers report a pointer to NULL, the optional ones accept it.
template <class C>
void i_destruye(C** texto, bool opcional, lugar donde) noexcept {
    if (texto == nullptr || *texto != nullptr || !opcional) {
        i_destruye_en(texto, "(cadena) != NULL", "(*cadena) != NULL", libera_bloque(), donde);
    }
}

}  // namespace

wchar_t* widestr_nousar_copia(const wchar_t* text, const char* tag, unsigned long line) {
    const lugar donde = lugar::del_anfitrion(tag, line);
    i_comprueba(text != nullptr, "(cadena) != NULL", donde);
    return cadena_w(a_vista(text), donde).suelta();
}

void widestr_nousar_destruye(wchar_t** text, const char* tag, unsigned long line) {
    i_destruye(text, false, lugar::del_anfitrion(tag, line));
}

void widestr_nousar_destruye_opcional(wchar_t** text, const char* tag, unsigned long line) {
    i_destruye(text, true, lugar::del_anfitrion(tag, line));
}

void lumostr_destruye(char** text) {
    i_destruye(text, false, lugar::aqui());
}

void lumostr_destruye_opcional(char** text) {
    i_destruye(text, true, lugar::aqui());
}
