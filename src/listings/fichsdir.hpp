// File sets: what one directory holds, as lists of names (fichsdir.cpp) or as records with date and protection
// (fichsdir_registros.cpp), with variants that sort, choose and can be interrupted. Here, what both stand on.
//
// Promises: every list is new and never NULL, and empty when the directory cannot be read; what was taken before an
// interruption is returned; the names that the system gives are not put through the checks that a caller's paths
// undergo, so that hardly a file on a disk makes a listing report.
// Cannot promise: that the 8-bit name of a record finds its file again, when the code page lacks a character of it.
// Checked by tests/listings/fichsdir_win32_test.cpp.
#pragma once

#include "companions/anfitrion.hpp"
#include "companions/error_interno.hpp"
#include "companions/unicode.hpp"
#include "fichsdir.h"
#include "listings/dirwin.hpp"

namespace lumodir {

// How a listing can be interrupted; without a callback it cannot.
struct progreso_listado {
    void* progreso = nullptr;
    unsigned short* interrumpido = nullptr;
    FichsdirFncUsuarioCierraProgreso cierra = nullptr;
};

inline progreso_listado i_progreso(void* progreso, unsigned short* interrumpido,
                                   FichsdirFncUsuarioCierraProgreso cierra, lugar donde = lugar::aqui()) {
    i_comprueba(progreso != nullptr, "(progreso) != NULL", donde);
    i_comprueba(interrumpido != nullptr, "(interrumpido) != NULL", donde);
    if (!i_comprueba(cierra != nullptr, "(fncptr_prgs_usuario_cierra_progreso) != NULL", donde)) {
        i_comprueba(progreso == nullptr, "progreso == NULL", donde);
        i_comprueba(interrumpido == nullptr, "interrumpido == NULL", donde);
    }
    return {progreso, interrumpido, cierra};
}

inline bool i_interrumpe(const progreso_listado& progreso) {
    if (progreso.cierra == nullptr || llama_al_anfitrion(progreso.cierra, progreso.progreso) != CIERTO) {
        return false;
    }
    if (progreso.interrumpido != nullptr) {
        *progreso.interrumpido = CIERTO;
    }
    return true;
}

// The loop of every listing: asks the callback before each entry is looked at.
template <class Toma>
void i_recorre(const wchar_t* patron, const progreso_listado& progreso, Toma toma) {
    enumerador<wchar_t> entradas(patron);
    while (const WIN32_FIND_DATAW* e = entradas.siguiente()) {
        if (i_interrumpe(progreso)) {
            return;
        }
        toma(*e);
    }
}

template <class Toma>
void i_recorre_directorio(const wchar_t* directorio, const progreso_listado& progreso, Toma toma) {
    if (!i_comprueba(directorio != nullptr, "(directorio) != NULL")) {
        return;
    }
    const vista_w donde(directorio);
    const vista_w barra = acaba_en(donde, L"\\") ? vista_w() : vista_w(L"\\");
    i_recorre(concatena<wchar_t>({donde, barra, comodin_de_todo_u}).c_str(), progreso, toma);
}

}  // namespace lumodir
