// The exports of companions/arr.h: argument checks over the lists, one template for both flavours of text.
#include "companions/arr.hpp"

#include <algorithm>

#include "companions/anfitrion.hpp"
#include "companions/error_interno.hpp"
#include "companions/ordena.hpp"

namespace interno {
namespace {

template <class Lista>
bool i_hay(const Lista* lista, lugar donde = lugar::aqui()) noexcept {
    return i_comprueba(lista != nullptr, "(arr) != NULL", donde);
}

template <class Lista>
bool i_indice_valido(const Lista* lista, unsigned long indice, lugar donde = lugar::aqui()) noexcept {
    return i_hay(lista, donde) && i_comprueba(indice < lista->num(), "indice < num_elems", donde);
}

// The room that a host asks for is a hint: a wild number must not exhaust the memory. The list grows anyway.
std::size_t i_sitio_inicial(unsigned long sitio) noexcept {
    constexpr unsigned long maximo = 65536;  // elements
    return std::min(sitio, maximo);
}

template <class C>
arr_cadena<C>* i_crea(unsigned long sitio) {
    auto lista = objeto<arr_cadena<C>>::crea();
    lista->textos.reserva_sitio(i_sitio_inicial(sitio));
    return lista.suelta();
}

template <class C>
void i_append(lista_textos<C>* lista, const C* texto, lugar donde = lugar::aqui()) {
    if (i_hay(lista, donde) && i_comprueba(texto != nullptr, "(cadena) != NULL", donde)) {
        lista->anade(cadena<C>(vista<C>(texto)));
    }
}

template <class C>
void i_append_original(lista_textos<C>* lista, C** texto, lugar donde = lugar::aqui()) {
    if (i_hay(lista, donde) && i_comprueba(texto != nullptr, "(cadena) != NULL", donde) &&
        i_comprueba(*texto != nullptr, "(*cadena) != NULL", donde)) {
        lista->textos.anade(*texto);
        *texto = nullptr;
    }
}

template <class Lista>
unsigned long i_num(const Lista* lista, lugar donde = lugar::aqui()) noexcept {
    return i_hay(lista, donde) ? static_cast<unsigned long>(lista->num()) : 0;
}

template <class C>
const C* i_get(const lista_textos<C>* lista, unsigned long indice, lugar donde = lugar::aqui()) noexcept {
    return i_indice_valido(lista, indice, donde) ? lista->texto(indice) : nullptr;
}

template <class C>
C* i_get_copia(const lista_textos<C>* lista, unsigned long indice, lugar donde = lugar::aqui()) {
    return i_indice_valido(lista, indice, donde) ? cadena<C>(lista->ver(indice)).suelta() : nullptr;
}

template <class C>
void i_set(lista_textos<C>* lista, unsigned long indice, const C* texto, lugar donde = lugar::aqui()) {
    if (i_indice_valido(lista, indice, donde) && i_comprueba(texto != nullptr, "(cadena) != NULL", donde)) {
        C* nuevo = cadena<C>(vista<C>(texto)).suelta();  // first: the text may be the old element
        i_libera(lista->textos[indice]);
        lista->textos[indice] = nuevo;
    }
}

template <class Lista>
void i_borra(Lista* lista, unsigned long indice, lugar donde = lugar::aqui()) noexcept {
    if (i_indice_valido(lista, indice, donde)) {
        lista->borra(indice);
    }
}

template <class Lista>
void i_reduce(Lista* lista, unsigned long num, lugar donde = lugar::aqui()) noexcept {
    if (i_hay(lista, donde) && i_comprueba(num <= lista->num(), "nuevo_tamanyo <= num_elems", donde)) {
        lista->reduce(num);
    }
}

template <class C>
void i_qsort(lista_textos<C>* lista, int (*compara)(const C*, const C*), lugar donde = lugar::aqui()) {
    if (!i_hay(lista, donde)) {
        return;
    }
    C** textos = lista->textos.data();
    if (compara == nullptr) {
        ordena_estable(textos, lista->num(), widestr_fun_compara);
    } else {
        ordena_estable(textos, lista->num(),
                       [compara](const C* a, const C* b) { return llama_al_anfitrion(compara, a, b); });
    }
}

}  // namespace
}  // namespace interno

using namespace interno;

ArrCADENA* arr_CreaCADENA(unsigned long initial) {
    return i_crea<char>(initial);
}
void arr_AppendCADENA(ArrCADENA* list, const char* text) {
    i_append(list, text);
}
void arr_AppendCADENAOriginal(ArrCADENA* list, char** text) {
    i_append_original(list, text);
}
unsigned long arr_NumElemsCADENA(const ArrCADENA* list) {
    return i_num(list);
}
const char* arr_GetCADENA(const ArrCADENA* list, unsigned long index) {
    return i_get(list, index);
}
char* arr_GetCopiaCADENA(const ArrCADENA* list, unsigned long index) {
    return i_get_copia(list, index);
}
void arr_SetCADENA(ArrCADENA* list, unsigned long index, const char* text) {
    i_set(list, index, text);
}
void arr_BorrarCADENA(ArrCADENA* list, unsigned long index) {
    i_borra(list, index);
}
void arr_ReduceTamanyoCADENA(ArrCADENA* list, unsigned long count) {
    i_reduce(list, count);
}
void arr_QSortCADENA(ArrCADENA* list, int (*compare)(const char*, const char*)) {
    i_qsort(list, compare);
}
void arr_DestruyeCADENA(ArrCADENA** list) {
    i_destruye_en(list, "(arr) != NULL", "(*arr) != NULL", destruye_objeto());
}

ArrCADENA_u* arr_CreaCADENA_u(unsigned long initial) {
    return i_crea<wchar_t>(initial);
}
void arr_AppendCADENA_u(ArrCADENA_u* list, const wchar_t* text) {
    i_append(list, text);
}
void arr_AppendCADENAOriginal_u(ArrCADENA_u* list, wchar_t** text) {
    i_append_original(list, text);
}
unsigned long arr_NumElemsCADENA_u(const ArrCADENA_u* list) {
    return i_num(list);
}
const wchar_t* arr_GetCADENA_u(const ArrCADENA_u* list, unsigned long index) {
    return i_get(list, index);
}
wchar_t* arr_GetCopiaCADENA_u(const ArrCADENA_u* list, unsigned long index) {
    return i_get_copia(list, index);
}
void arr_SetCADENA_u(ArrCADENA_u* list, unsigned long index, const wchar_t* text) {
    i_set(list, index, text);
}
void arr_BorrarCADENA_u(ArrCADENA_u* list, unsigned long index) {
    i_borra(list, index);
}
void arr_ReduceTamanyoCADENA_u(ArrCADENA_u* list, unsigned long count) {
    i_reduce(list, count);
}
void arr_QSortCADENA_u(ArrCADENA_u* list, int (*compare)(const wchar_t*, const wchar_t*)) {
    i_qsort(list, compare);
}
void arr_DestruyeCADENA_u(ArrCADENA_u** list) {
    i_destruye_en(list, "(arr) != NULL", "(*arr) != NULL", destruye_objeto());
}

ArrPunteroConTipo* arr_CreaPunteroConTipo(unsigned long initial) {
    auto lista = objeto<ArrPunteroConTipo>::crea();
    lista->punteros.reserva_sitio(i_sitio_inicial(initial));
    return lista.suelta();
}
void arr_AppendPunteroConTipo(ArrPunteroConTipo* list, void* record) {
    if (i_hay(list) && i_comprueba(record != nullptr, "(puntero) != NULL")) {
        list->punteros.anade(record);
    }
}
unsigned long arr_NumElemsPuntero(const ArrPunteroConTipo* list) {
    return i_hay(list) ? static_cast<unsigned long>(list->punteros.size()) : 0;
}
void* arr_GetPunteroConTipo(const ArrPunteroConTipo* list, unsigned long index) {
    return i_hay(list) && i_comprueba(index < list->punteros.size(), "indice < num_elems")
               ? list->punteros[index]
               : nullptr;
}
void arr_DestruyeEstructurasConTipo(ArrPunteroConTipo** list, void (*destroy)(void** record)) {
    i_destruye_en(list, "(arr) != NULL", "(*arr) != NULL", [destroy](ArrPunteroConTipo* suelta) {
        const objeto<ArrPunteroConTipo> lista(suelta);
        if (i_comprueba(destroy != nullptr, "(func_destruye) != NULL")) {
            for (void*& elemento : lista->punteros) {
                llama_al_anfitrion(destroy, &elemento);
            }
        }
    });
}
