// Walking the entries that a search pattern finds: the exported enumerator, the lists of one directory, the file sets
// and the deletion by pattern take their entries from here. (Trees are read by handle: companions/directorio_abierto.hpp.)
//
// Promises: every entry that the system gives comes out, "." and ".." included, in the system's order; the search
// is closed on every way out; an open failure is an empty walk; only an unexpected end of the walk is reported.
// When the system's search finds nothing, the directory is walked with a filter of our own (filtro.hpp), looser
// than the system's: ask `con_filtro_propio()` before doing harm to what came out. Both searches look into the same
// directory, even if the current one is changed meanwhile. Both flavours search in UTF-16; 8-bit names are
// converted by the library, so that no look-alike makes one the name of another file.
// Cannot promise: that an 8-bit record holds every name: one that is too long for it comes out by its short name, or
// not at all where it has none.
// Checked by tests/listings/dirwin_win32_test.cpp.
#pragma once

#include "companions/lmlongpath.hpp"
#include "dirwin.h"

namespace interno {

// What the exported next-entry operation of a flavour fills in.
template <class C>
using entrada = segun_sabor<C, WIN32_FIND_DATAW, WIN32_FIND_DATAA>;

template <class C>
using registro_dirwin = segun_sabor<C, Dirwin_u, Dirwin>;

template <class E>
bool i_es_directorio(const E& entrada) noexcept {
    return (entrada.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// The bare name; the system always ends it within its buffer.
template <class E>
auto i_nombre_de_entrada(const E& entrada) noexcept {
    return a_vista(&entrada.cFileName[0]);
}

// Which entries are wanted.
using sirve_entrada = bool(const WIN32_FIND_DATAW& e) noexcept;
sirve_entrada i_es_fichero;
sirve_entrada i_es_directorio_sin_punto;  // none whose name begins with a dot
sirve_entrada i_es_directorio_a_la_vista;
sirve_entrada i_es_directorio_con_punto;  // except "." and ".."

// Searched for, it finds all that a directory holds. "*.*" says the same, but costs a tenth more: the system then
// looks at each name.
inline constexpr wchar_t comodin_de_todo_u[] = L"*";
inline constexpr char comodin_de_todo[] = "*";

// An open search and, when the system's search could not answer the pattern, the filter to apply to the names as
// the flavour has them.
template <class C>
struct busqueda {
    manija_busqueda manija;
    cadena<C> filtro;  // NULL when the system filters

    // A NULL pattern is reported and opens nothing.
    busqueda(const C* patron, WIN32_FIND_DATAW& primera, detalle cuanto);
};

// Steps until an entry passes the filter (NULL passes all) and leaves it in `destino`, which holds the first
// entry before the first step. Returns false at the end, which is reported when it is not that of the directory.
template <class C>
bool i_siguiente_entrada(HANDLE manija, const C* filtro, unsigned long& num_entradas,
                         WIN32_FIND_DATAW& destino) noexcept;

// Reports a reading of a directory that ended before the directory did, with the name of the last entry that came.
void i_informa_de_final(DWORD codigo, vista_w ultimo_nombre) noexcept;

// A walk inside the library. Each entry is valid until the next one is asked for.
template <class C>
class enumerador {
public:
    explicit enumerador(const C* patron, detalle cuanto = detalle::sin_nombre_corto)
        : busqueda_(patron, entrada_, cuanto) {}
    enumerador(const enumerador&) = delete;
    enumerador& operator=(const enumerador&) = delete;

    // NULL at the end.
    const WIN32_FIND_DATAW* siguiente() noexcept {
        return i_siguiente_entrada<C>(busqueda_.manija.get(), busqueda_.filtro.c_str(), num_entradas_,
                                      entrada_)
                   ? &entrada_
                   : nullptr;
    }
    // The next one that `sirve` takes.
    const WIN32_FIND_DATAW* siguiente(sirve_entrada* sirve) noexcept {
        const WIN32_FIND_DATAW* e = siguiente();
        while (e != nullptr && !sirve(*e)) {
            e = siguiente();
        }
        return e;
    }
    bool con_filtro_propio() const noexcept { return !busqueda_.filtro.es_nula(); }

private:
    WIN32_FIND_DATAW entrada_;  // before the search, which fills it in
    busqueda<C> busqueda_;
    unsigned long num_entradas_ = 0;
};

// Whether a name passes a filter; letter case counts in the wide flavour only.
bool i_pasa_filtro(vista_w nombre, vista_w filtro) noexcept;
bool i_pasa_filtro(vista_a nombre, vista_a filtro) noexcept;

// ---- The records that hosts walk with

struct destruye_dirwin {
    template <class R>
    void operator()(R* dirwin) const noexcept {
        const manija_busqueda cierra(dirwin->busqueda);
        if (dirwin->con_filtro_propio == 1) {
            i_libera(dirwin->filtro_propio);
        }
        i_libera(dirwin);
    }
};
template <class C>
using duenyo_dirwin = duenyo<registro_dirwin<C>, destruye_dirwin>;

template <class C>
duenyo_dirwin<C> i_crea_dirwin(const C* patron);

template <class C>
bool i_siguiente(registro_dirwin<C>& dirwin, entrada<C>* destino) noexcept;

}  // namespace interno
