// The exports of companions/acadorde.h.
//
// Promises: inserting in ascending order is linear in all (the listings insert sorted); any other order costs a binary
// search and a block move an insertion.
// Checked by tests/companions/ordenados_test.cpp.
#include "companions/acadorde.hpp"

#include "companions/error_interno.hpp"

namespace interno {
namespace {

template <class A>
bool i_hay(const A* conjunto, lugar donde) noexcept {
    return i_comprueba(conjunto != nullptr, "(acadorde) != NULL", donde);
}

template <class C, class A>
void i_inserta(A* conjunto, const C* texto, lugar donde) {
    if (i_hay(conjunto, donde) && i_comprueba(texto != nullptr, "(cadena) != NULL", donde)) {
        conjunto->inserta(cadena<C>(vista<C>(texto), donde), donde);
    }
}

template <class C, class A>
const C* i_get(const A* conjunto, unsigned long indice, lugar donde) noexcept {
    return i_hay(conjunto, donde) && i_comprueba(indice < conjunto->textos.num(), "indice < num_elems", donde)
               ? conjunto->textos.texto(indice)
               : nullptr;
}

template <class A>
A* i_crea(unsigned short admite_repetidos, lugar donde) {
    auto conjunto = objeto<A>::crea(donde);
    conjunto->admite_repetidos = admite_repetidos == 1;
    return conjunto.suelta();
}

}  // namespace
}  // namespace interno

using namespace interno;

AcadOrde* acadorde_crea(unsigned short admite_repetidos) {
    return i_crea<AcadOrde>(admite_repetidos, lugar::aqui());
}
void acadorde_inserta(AcadOrde* array, const char* text) {
    i_inserta<char>(array, text, lugar::aqui());
}
unsigned long acadorde_num_elems(const AcadOrde* array) {
    return i_hay(array, lugar::aqui()) ? static_cast<unsigned long>(array->textos.num()) : 0;
}
const char* acadorde_get(const AcadOrde* array, unsigned long index) {
    return i_get<char>(array, index, lugar::aqui());
}
void acadorde_destruye(AcadOrde** array) {
    i_destruye_en(array, "(acadorde) != NULL", "(*acadorde) != NULL", destruye_objeto());
}

AcadOrdeU* acadordeu_crea(unsigned short admite_repetidos) {
    return i_crea<AcadOrdeU>(admite_repetidos, lugar::aqui());
}
void acadordeu_inserta(AcadOrdeU* array, const wchar_t* text) {
    i_inserta<wchar_t>(array, text, lugar::aqui());
}
unsigned long acadordeu_num_elems(const AcadOrdeU* array) {
    return i_hay(array, lugar::aqui()) ? static_cast<unsigned long>(array->textos.num()) : 0;
}
const wchar_t* acadordeu_get(const AcadOrdeU* array, unsigned long index) {
    return i_get<wchar_t>(array, index, lugar::aqui());
}
void acadordeu_destruye(AcadOrdeU** array) {
    i_destruye_en(array, "(acadorde) != NULL", "(*acadorde) != NULL", destruye_objeto());
}
