// The exports of companions/apunorde.h: the records belong to the array; repeats keep their order of insertion.
// Checked by tests/companions/ordenados_test.cpp.
#include "companions/apunorde.hpp"

#include "companions/error_interno.hpp"

using namespace interno;

namespace {

bool i_hay(const ApunOrde* conjunto, lugar donde = lugar::aqui()) noexcept {
    return i_comprueba(conjunto != nullptr, "(apunorde) != NULL", donde);
}

}  // namespace

ApunOrde* apunorde_nousar_crea(int (*compare)(const void*, const void*), void (*destroy)(void** record)) {
    i_comprueba(compare != nullptr, "(func_compara) != NULL");
    i_comprueba(destroy != nullptr, "(func_destruye) != NULL");
    auto conjunto = objeto<ApunOrde>::crea();
    conjunto->compara = compare;
    conjunto->destruye = destroy;
    return conjunto.suelta();
}

void apunorde_nousar_inserta_original(ApunOrde* array, void** record) {
    if (!i_hay(array) || !i_comprueba(record != nullptr, "(registro) != NULL") ||
        !i_comprueba(*record != nullptr, "(*registro) != NULL")) {
        return;
    }
    // An array without a comparison keeps the order of insertion: nothing is lost, the report was made.
    const std::size_t posicion =
        array->compara == nullptr
            ? array->registros.size()
            : i_posicion_tras(array->registros, [&](const void* elemento) {
                  return llama_al_anfitrion(array->compara, elemento, static_cast<const void*>(*record));
              });
    i_inserta_en(array->registros, posicion, *record);
    *record = nullptr;
}

unsigned long apunorde_nousar_num_elems(const ApunOrde* array) {
    return i_hay(array) ? static_cast<unsigned long>(array->registros.size()) : 0;
}

void* apunorde_nousar_get(const ApunOrde* array, unsigned long index) {
    return i_hay(array) && i_comprueba(index < array->registros.size(), "indice < num_elems")
               ? array->registros[index]
               : nullptr;
}

void* apunorde_nousar_busca(const ApunOrde* array, const void* key,
                            int (*compare)(const void* record, const void* key)) {
    if (!i_hay(array) || !i_comprueba(compare != nullptr, "(func_compara) != NULL")) {
        return nullptr;
    }
    const auto compara = [&](const void* elemento) { return llama_al_anfitrion(compare, elemento, key); };
    const std::size_t posicion =
        i_cuantos_antes(array->registros, [&](const void* elemento) { return compara(elemento) < 0; });
    return posicion < array->registros.size() && compara(array->registros[posicion]) == 0
               ? array->registros[posicion]
               : nullptr;
}

void apunorde_nousar_destruye(ApunOrde** array) {
    i_destruye_en(array, "(apunorde) != NULL", "(*apunorde) != NULL", destruye_objeto());
}
