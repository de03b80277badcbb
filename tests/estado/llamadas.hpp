// How an operation of a sequence is called: arguments made out of texts, answers turned into texts, whatever the types of
// the function.
#pragma once

#include "cdir.h"
#include "companions/lumostr.h"
#include "companions/widestr.h"
#include "estado/filas.hpp"
#include "fichsdir.h"
#include "lumodir.h"

namespace estado {

// A new text of the library's, taken and freed.
inline std::string toma(wchar_t* texto) {
    const std::string t = u8(texto);
    widestr_nousar_destruye_opcional(&texto, "prueba", 1);
    return t;
}

struct ancho {
    const argumento& t;
    operator const wchar_t*() const { return t ? t->c_str() : nullptr; }
};
struct estrecho {
    explicit estrecho(const argumento& a) {
        if (a) {
            t = a_pagina(*a);
        }
    }
    std::optional<std::string> t;
    operator const char*() const { return t ? t->c_str() : nullptr; }
};
inline long long entero(const argumento& a) {
    return std::stoll(u(*a));
}

template <class T>
auto convierte(const argumento& a) {
    if constexpr (std::is_same_v<T, const wchar_t*>) {
        return ancho{a};
    } else if constexpr (std::is_same_v<T, const char*>) {
        return estrecho(a);
    } else {
        return static_cast<T>(entero(a));
    }
}

inline std::string muestra(unsigned short v) {
    return std::to_string(v);
}
inline std::string muestra(long long v) {
    return std::to_string(v);
}
inline std::string muestra(wchar_t* t) {
    return toma(t);
}
inline std::string muestra(char* t) {
    if (t == nullptr) {
        return "(NULL)";
    }
    const std::string r = u(de_pagina(t));
    lumostr_destruye(&t);
    return r;
}

inline std::string entre_barras(const std::vector<std::string>& v) {
    std::string t = "[";
    for (const std::string& x : v) {
        t += (t.size() > 1 ? "|" : "") + x;
    }
    return t + "]";
}
inline std::string muestra(ArrCADENA_u* l) {
    std::vector<std::string> v;
    for (unsigned long i = 0; i < arr_NumElemsCADENA_u(l); ++i) {
        v.push_back(u8(arr_GetCADENA_u(l, i)));
    }
    arr_DestruyeCADENA_u(&l);
    return entre_barras(v);
}
inline std::string muestra(ArrCADENA* l) {
    std::vector<std::string> v;
    for (unsigned long i = 0; i < arr_NumElemsCADENA(l); ++i) {
        v.push_back(u(de_pagina(arr_GetCADENA(l, i))));
    }
    arr_DestruyeCADENA(&l);
    return entre_barras(v);
}
inline std::string muestra(AcadOrdeU* l) {
    std::vector<std::string> v;
    for (unsigned long i = 0; i < acadordeu_num_elems(l); ++i) {
        v.push_back(u8(acadordeu_get(l, i)));
    }
    acadordeu_destruye(&l);
    return entre_barras(v);
}
inline std::string muestra(AcadOrde* l) {
    std::vector<std::string> v;
    for (unsigned long i = 0; i < acadorde_num_elems(l); ++i) {
        v.push_back(u(de_pagina(acadorde_get(l, i))));
    }
    acadorde_destruye(&l);
    return entre_barras(v);
}
inline std::string de_un_fichsdir(const Fichsdir& f) {
    return u(de_pagina(f.nombre)) + " " + std::to_string(f.fecha) + " " + std::to_string(f.protegido) + " " +
           u8(f.ruta);
}
inline std::string muestra(ArrPunteroConTipo* l) {
    std::vector<std::string> v;
    for (unsigned long i = 0; i < arr_NumElemsPuntero(l); ++i) {
        v.push_back(de_un_fichsdir(*static_cast<const Fichsdir*>(arr_GetPunteroConTipo(l, i))));
    }
    arr_DestruyeEstructurasConTipo(&l, reinterpret_cast<ArrDestruyeRegistro>(fichsdir_destruye));
    return entre_barras(v);
}
inline std::string muestra(ApunOrde* l) {
    std::vector<std::string> v;
    for (unsigned long i = 0; i < apunorde_nousar_num_elems(l); ++i) {
        v.push_back(de_un_fichsdir(*static_cast<const Fichsdir*>(apunorde_nousar_get(l, i))));
    }
    apunorde_nousar_destruye(&l);
    return entre_barras(v);
}
inline std::string muestra(ListaFicheros_u& l) {
    std::vector<std::string> v;
    for (unsigned long i = 0; i < l.num; ++i) {
        v.push_back(u8(l.lista[i]));
    }
    const std::string t = (l.path == nullptr ? "(NULL)" : u8(l.path)) + " " + entre_barras(v) +
                          ((l.num == 0) == (l.lista == nullptr) ? "" : " list and number disagree");
    cdir_libera_lista_de_ficheros_UNICODE(&l);
    return t;
}
inline std::string muestra(ListaFicheros& l) {
    std::vector<std::string> v;
    for (unsigned long i = 0; i < l.num; ++i) {
        v.push_back(u(de_pagina(l.lista[i])));
    }
    const std::string t = (l.path == nullptr ? "(NULL)" : u(de_pagina(l.path))) + " " + entre_barras(v) +
                          ((l.num == 0) == (l.lista == nullptr) ? "" : " list and number disagree");
    cdir_libera_lista_de_ficheros(&l);
    return t;
}

template <class R, class... A, std::size_t... I>
std::string aplica(R (*f)(A...), const argumentos& a, std::index_sequence<I...>) {
    if constexpr (std::is_void_v<R>) {
        f(convierte<A>(a[I])...);
        return "(void)";
    } else {
        return muestra(f(convierte<A>(a[I])...));
    }
}
template <class R, class... A>
std::string aplica(R (*f)(A...), const argumentos& a) {
    return aplica(f, a, std::index_sequence_for<A...>());
}
// A plain call.
template <auto F>
std::string simple(const argumentos& a) {
    return aplica(F, a);
}
}  // namespace estado
