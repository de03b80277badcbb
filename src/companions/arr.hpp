// String lists and typed pointer lists: what the exported arr_… operations (abi/arr.cpp) are made of, with
// move-only owners for work inside the library.
//
// Promises: appending n elements one at a time is linear in all; an index out of range is reported and gives
// NULL or changes nothing; a list owns its strings.
// Checked by tests/companions/arr_test.cpp.
#pragma once

#include <algorithm>
#include <new>

#include "companions/arr.h"
#include "companions/cadena.hpp"

namespace interno {

template <class C>
struct lista_textos {
    vector_interno<C*> textos;

    lista_textos() noexcept = default;
    lista_textos(lista_textos&&) noexcept = default;
    ~lista_textos() {
        for (C* texto : textos) {
            i_libera(texto);
        }
    }
    void anade(cadena<C> texto, lugar donde = lugar::aqui()) { textos.anade(texto.suelta(), donde); }
    std::size_t num() const noexcept { return textos.size(); }
    const C* texto(std::size_t i) const noexcept { return textos[i]; }
    vista<C> ver(std::size_t i) const noexcept { return a_vista<C>(textos[i]); }
    void reduce(std::size_t num) noexcept {
        for (std::size_t i = num; i < textos.size(); ++i) {
            i_libera(textos[i]);
        }
        textos.acorta(num);
    }
    void borra(std::size_t indice) noexcept {
        i_libera(textos[indice]);
        std::copy(textos.begin() + indice + 1, textos.end(), textos.begin() + indice);
        textos.quita_ultimo();
    }
};

}  // namespace interno

struct ArrCADENA : interno::lista_textos<char> {};
struct ArrCADENA_u : interno::lista_textos<wchar_t> {};
struct ArrPunteroConTipo {
    interno::vector_interno<void*> punteros;
};

namespace interno {

// The list type of a flavour.
template <class C>
using arr_cadena = segun_sabor<C, ArrCADENA_u, ArrCADENA>;

// The end of a tracked object of a list type, which is constructed in its block, and its owner.
struct destruye_objeto {
    template <class T>
    void operator()(T* objeto) const noexcept {
        objeto->~T();
        i_libera(objeto);
    }
};

template <class T>
class objeto : public duenyo<T, destruye_objeto> {
public:
    using duenyo<T, destruye_objeto>::duenyo;
    static objeto crea(lugar donde = lugar::aqui()) {
        return objeto(::new (i_reserva(sizeof(T), donde)) T());
    }
};

// A whole wide list in 8-bit text; the wide list is destroyed.
objeto<ArrCADENA> utunicode_cadenas_UNICODE_a_ANSI_destruyendo(objeto<ArrCADENA_u> lista);

}  // namespace interno
