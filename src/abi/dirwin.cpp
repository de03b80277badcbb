// The exports of dirwin.h.
#include "dirwin.h"

#include "abi/exportacion.hpp"
#include "listings/dirwin.hpp"

using namespace interno;

namespace {

template <class C>
unsigned short i_findnextfile(registro_dirwin<C>* dirwin, const char* expresion,
                              entrada<C>* find_data) noexcept {
    return logico(estan({{dirwin, expresion}, {find_data, "(find_data) != NULL"}}) &&
                  i_siguiente<C>(*dirwin, find_data));
}

template <class E>
unsigned short i_con_atributo(const E* entrada, DWORD atributo) noexcept {
    return logico(i_comprueba(entrada != nullptr, "(findData) != NULL") &&
                  (entrada->dwFileAttributes & atributo) != 0);
}

}  // namespace

Dirwin* dirwin_crea(const char* patron) {
    return i_crea_dirwin(patron).suelta();
}
Dirwin_u* dirwin_crea_UNICODE(const wchar_t* patron) {
    return i_crea_dirwin(patron).suelta();
}

unsigned short dirwin_findnextfile(Dirwin* dirwin, WIN32_FIND_DATAA* find_data) {
    return i_findnextfile<char>(dirwin, "(dirwin) != NULL", find_data);
}
unsigned short dirwin_findnextfile_UNICODE(Dirwin_u* dirwinW, WIN32_FIND_DATAW* find_data) {
    return i_findnextfile<wchar_t>(dirwinW, "(dirwinW) != NULL", find_data);
}

unsigned short dirwin_es_directorio(const WIN32_FIND_DATAA* findData) {
    return i_con_atributo(findData, FILE_ATTRIBUTE_DIRECTORY);
}
unsigned short dirwin_es_directorio_UNICODE(const WIN32_FIND_DATAW* findData) {
    return i_con_atributo(findData, FILE_ATTRIBUTE_DIRECTORY);
}

unsigned short dirwin_es_solo_lectura_UNICODE(const WIN32_FIND_DATAW* findData) {
    return i_con_atributo(findData, FILE_ATTRIBUTE_READONLY);
}

unsigned short dirwin_cumple_filtro(const char* nombre_y_extension, const char* filtro_nombre_y_extension) {
    return logico(estan({{nombre_y_extension, "(nombre_y_extension) != NULL"},
                         {filtro_nombre_y_extension, "(filtro_nombre_y_extension) != NULL"}}) &&
                  i_pasa_filtro(a_vista(nombre_y_extension), a_vista(filtro_nombre_y_extension)));
}

void dirwin_destruye(Dirwin** dirwin) {
    i_destruye_en(dirwin, "(dirwin) != NULL", "(*dirwin) != NULL", destruye_dirwin());
}
void dirwin_destruye_UNICODE(Dirwin_u** dirwinW) {
    i_destruye_en(dirwinW, "(dirwinW) != NULL", "(*dirwinW) != NULL", destruye_dirwin());
}
