// Listings of a whole tree: one list record per directory.
//
// Promises: no recursion, so depth costs memory only; the base first, then depth first, and among siblings the one
// that sorts last comes first; a link to a directory is not entered and has no record, nor has a directory that
// was put in another's place meanwhile.
// Cannot promise: a picture of a single moment while somebody else changes the tree.
// Checked by tests/listings/listas_arbol_win32_test.cpp.
#pragma once

#include "listings/listas_ficheros.hpp"

namespace interno {

// The records of a tree, until they are handed over.
class arbol_de_listas {
public:
    arbol_de_listas() noexcept = default;
    arbol_de_listas(const arbol_de_listas&) = delete;
    arbol_de_listas& operator=(const arbol_de_listas&) = delete;
    arbol_de_listas(arbol_de_listas&&) noexcept = default;
    ~arbol_de_listas();

    void anade(vista_w directorio, nombres_en_curso<wchar_t>& ficheros);
    unsigned long num() const noexcept { return static_cast<unsigned long>(listas_.size()); }
    // The records in an array of exactly their number; NULL when there is none.
    ListaFicheros_u* suelta() { return listas_.suelta_en_bloque(); }

private:
    vector_interno<ListaFicheros_u> listas_;
};

// Which directories have a record.
enum class registros { con_ficheros, todos };

arbol_de_listas i_lista_arbol(vista_w dada, const filtro_extension& filtro, registros cuales);

}  // namespace interno
