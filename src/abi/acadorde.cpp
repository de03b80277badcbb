// The exports of companions/acadorde.h.
//
// Promises: inserting in ascending order is linear in all (the listings insert sorted); in any other order each
// insertion costs a binary search and a block move.
// Checked by tests/companions/ordenados_test.cpp.
#include "companions/acadorde.hpp"

#include "companions/error_interno.hpp"

namespace interno {
namespace {

template <class C>
bool i_hay(const conjunto_ordenado<C>* conjunto, lugar donde) noexcept {
    return i_comprueba(conjunto != nullptr, "(acadorde) != NULL", donde);
}

template <class A>
A* i_crea(unsigned short admite_repetidos) {
    auto conjunto = objeto<A>::crea();
    conjunto->admite_repetidos = admite_repetidos == 1;
    return conjunto.suelta();
}

template <class C>
void i_inserta(conjunto_ordenado<C>* conjunto, const C* texto, lugar donde = lugar::aqui()) {
    if (i_hay(conjunto, donde) && i_comprueba(texto != nullptr, "(cadena) != NULL", donde)) {
        conjunto->inserta(cadena<C>(vista<C>(texto)));
    }
}

template <class C>
unsigned long i_num(const conjunto_ordenado<C>* conjunto, lugar donde = lugar::aqui()) noexcept {
    return i_hay(conjunto, donde) ? static_cast<unsigned long>(conjunto->textos.num()) : 0;
}

template <class C>
const C* i_get(const conjunto_ordenado<C>* conjunto, unsigned long indice,
               lugar donde = lugar::aqui()) noexcept {
    return i_hay(conjunto, donde) && i_comprueba(indice < conjunto->textos.num(), "indice < num_elems", donde)
               ? conjunto->textos.texto(indice)
               : nullptr;
}

}  // namespace
}  // namespace interno

using namespace interno;

AcadOrde* acadorde_crea(unsigned short admite_repetidos) {
    return i_crea<AcadOrde>(admite_repetidos);
}
void acadorde_inserta(AcadOrde* array, const char* text) {
    i_inserta(array, text);
}
unsigned long acadorde_num_elems(const AcadOrde* array) {
    return i_num(array);
}
const char* acadorde_get(const AcadOrde* array, unsigned long index) {
    return i_get(array, index);
}
void acadorde_destruye(AcadOrde** array) {
    i_destruye_en(array, "(acadorde) != NULL", "(*acadorde) != NULL", destruye_objeto());
}

AcadOrdeU* acadordeu_crea(unsigned short admite_repetidos) {
    return i_crea<AcadOrdeU>(admite_repetidos);
}
void acadordeu_inserta(AcadOrdeU* array, const wchar_t* text) {
    i_inserta(array, text);
}
unsigned long acadordeu_num_elems(const AcadOrdeU* array) {
    return i_num(array);
}
const wchar_t* acadordeu_get(const AcadOrdeU* array, unsigned long index) {
    return i_get(array, index);
}
void acadordeu_destruye(AcadOrdeU** array) {
    i_destruye_en(array, "(acadorde) != NULL", "(*acadorde) != NULL", destruye_objeto());
}
