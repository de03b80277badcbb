// File sets: what one directory holds, as lists of names or as records (fichsdir_registros.hpp), with variants that sort,
// choose and can be interrupted. Here are the names, and what both are built on.
//
// Promises: every list is new and never NULL, and empty when the directory cannot be read; what was taken before an
// interruption is returned; names that the system gives are not checked as a caller's paths are, so that a listing
// hardly ever reports a file that really lies on a disk.
// Cannot promise: that the 8-bit name of a record finds its file again, when the code page lacks a character of it.
// Checked by tests/listings/fichsdir_win32_test.cpp.
#pragma once

#include "companions/acadorde.hpp"
#include "companions/anfitrion.hpp"
#include "companions/error_interno.hpp"
#include "companions/ordena.hpp"
#include "companions/unicode.hpp"
#include "fichsdir.h"
#include "listings/dirwin.hpp"

namespace interno {

// Whether a listing ends before the entry that comes next.
using interrupcion = consulta<bool>;

// The loop of every listing: asks before each entry is looked at.
template <class Toma>
void i_recorre(const wchar_t* patron, const interrupcion& corta, Toma toma) {
    enumerador<wchar_t> entradas(patron);
    while (const WIN32_FIND_DATAW* e = entradas.siguiente()) {
        if (corta.contesta(false)) {
            return;
        }
        toma(*e);
    }
}

template <class Toma>
void i_recorre_directorio(const wchar_t* directorio, const interrupcion& corta, Toma toma) {
    if (!i_comprueba(directorio != nullptr, "(directorio) != NULL")) {
        return;
    }
    const vista_w base(directorio);
    const vista_w barra = acaba_en(base, L"\\") ? vista_w() : vista_w(L"\\");
    i_recorre(concatena<wchar_t>({base, barra, comodin_de_todo_u}).c_str(), corta, toma);
}

// Takes the names of the entries that `sirve` chooses.
template <class C, class Sirve>
auto i_toma_nombres(arr_cadena<C>& lista, Sirve sirve) {
    return [&lista, sirve](const WIN32_FIND_DATAW& e) {
        if (sirve(e)) {
            lista.anade(i_en_sabor<C>(i_nombre_de_entrada(e)));
        }
    };
}

template <class C, class Sirve>
objeto<arr_cadena<C>> i_nombres(const wchar_t* directorio, const interrupcion& corta, Sirve sirve) {
    auto lista = objeto<arr_cadena<C>>::crea();
    i_recorre_directorio(directorio, corta, i_toma_nombres<C>(*lista, sirve));
    return lista;
}

// Sorted.
template <class C>
objeto<arr_cadena<C>> i_directorios(const wchar_t* directorio, sirve_entrada* sirve,
                                    const interrupcion& corta) {
    auto lista = i_nombres<C>(directorio, corta, sirve);
    ordena_estable(lista->textos.data(), lista->num(), widestr_fun_compara);
    return lista;
}
objeto<ArrCADENA> i_directorios_sin_extension(const wchar_t* directorio);

// A NULL pattern is reported by the enumerator.
template <class C>
objeto<arr_cadena<C>> i_nombres_cumplen_filtro(const wchar_t* path_filtro, sirve_entrada* sirve) {
    auto lista = objeto<arr_cadena<C>>::crea();
    i_recorre(path_filtro, {}, i_toma_nombres<C>(*lista, sirve));
    return lista;
}
objeto<ArrCADENA_u> i_nombres_con_extension(const wchar_t* directorio, vista_w extension) noexcept;
objeto<ArrCADENA> i_nombres_con_extension(const wchar_t* directorio, const char* extension) noexcept;
// As file-name records have them, in the case that is asked for; sorted, without repeats.
objeto<AcadOrde> i_nombres_base(const wchar_t* directorio, const char* extension,
                                bool en_mayusculas) noexcept;

}  // namespace interno
