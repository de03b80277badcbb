// Sorted lists of the files and subdirectories of one directory: what the list records and the tree listings are
// made of.
//
// Promises: one block per name and one for the array; the names are sorted once, at the end, without regard to the
// case of A to Z; equal names keep the order in which the system gave them.
// Cannot promise: an order that a user's language would choose.
// Checked by tests/listings/listas_ficheros_win32_test.cpp and listas_arbol_win32_test.cpp.
#pragma once

#include "cdir_listas.h"
#include "companions/acadorde.hpp"
#include "listings/dirwin.hpp"
#include "listings/filtro_extension.hpp"

namespace interno {

template <class C>
using lista_ficheros = segun_sabor<C, ListaFicheros_u, ListaFicheros>;

// The order of lists: without regard to the case of A to Z.
int i_compara_nombres_de_lista(vista_w a, vista_w b) noexcept;

// Names on their way into a list.
template <class C>
struct nombres_en_curso : lista_textos<C> {
    void ordena();
    // Hands the names to the record, in an array of exactly their number.
    void entrega(lista_ficheros<C>& lista);
};

// The names of the entries that a pattern finds, that `sirve` takes and whose extension passes the filter, sorted.
template <class C>
nombres_en_curso<C> i_nombres_de_lista(const C* patron, sirve_entrada* sirve,
                                       const filtro_extension& filtro = filtro_extension(vista_w()));

// The directory as a record shows it: each "/" as "\", and without one final "\".
template <class C>
cadena<C> i_path_de_lista(vista<C> unidad, std::type_identity_t<vista<C>> directorio);

template <class C>
void i_libera_lista(lista_ficheros<C>& lista) noexcept;

// The files whose extension is one of the list; without a list, all of them. Sorted code unit by code unit.
objeto<AcadOrdeU> i_ficheros_con_extension_de(const wchar_t* path_filtro, const ArrCADENA_u* extensiones);

// Whether a directory has an entry that `sirve` takes.
bool i_hay_entrada(const wchar_t* directorio, sirve_entrada* sirve);

}  // namespace interno
