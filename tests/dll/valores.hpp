// Sane arguments for any export: a harmless value for each type, made before a call and freed after it.
//
// Texts name things that do not exist, in a folder of the test's own, so that nothing of the machine is touched.
#pragma once

#include <windows.h>

#include <string>
#include <type_traits>
#include <utility>

// All of the library's headers.
#include "cabeceras/cabeceras.inc"

namespace dll {

// What the values depend on besides their type: the function that they are for.
struct llamada {
    std::string funcion;
    bool es(const char* trozo) const { return funcion.find(trozo) != std::string::npos; }
    // Its address-of-a-variable argument is read, not only written: the variable must hold something.
    bool toma_la_variable() const {
        return es("destruye") || es("Destruye") || es("Original") || es("original");
    }
};

std::wstring texto_sano(const llamada& para);
std::string en_8_bits(const std::wstring& texto);
template <class F>
F exportada(const char* nombre) {
    return reinterpret_cast<F>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("lumodir.dll"), nombre)));
}
// How the functions that only the DLL has are reached; tests that are linked with the library call them as they are.
#ifndef DE_LA_DLL
#define DE_LA_DLL(nombre) (::dll::exportada<decltype(&nombre)>(#nombre))
#endif
#define LLAMA_DLL(nombre, ...) (DE_LA_DLL(nombre)(__VA_ARGS__))

// `hay` tells whether the value is a real one. The first form serves numbers and pointers without a form of their
// own, which stay NULL.
struct inmovil {
    inmovil() = default;
    inmovil(const inmovil&) = delete;
    inmovil& operator=(const inmovil&) = delete;
};

template <class T>
struct valor : inmovil {
    T v{};
    explicit valor(const llamada&) {
        if constexpr (std::is_integral_v<T>) {
            v = static_cast<T>(
                2);  // an element, the user's root of the registry, a view of it: 2 is always valid
        }
    }
    static constexpr bool hay = std::is_integral_v<T>;
    T da() { return v; }
};

// Frees what a variable holds.
inline void libera(wchar_t** v) {
    widestr_nousar_destruye_opcional(v, "prueba", 1);
}
inline void libera(char** v) {
    lumostr_destruye_opcional(v);
}
inline void libera(void** v) {
    if (*v != nullptr) {
        lumospy_nousar_free_pp(v);
    }
}
inline void destruye_bloque(void** registro) {
    lumospy_nousar_free_pp(registro);
}
inline void libera(ArrCADENA** v) {
    if (*v != nullptr) {
        arr_DestruyeCADENA(v);
    }
}
inline void libera(ArrCADENA_u** v) {
    if (*v != nullptr) {
        arr_DestruyeCADENA_u(v);
    }
}
inline void libera(AcadOrde** v) {
    if (*v != nullptr) {
        acadorde_destruye(v);
    }
}
inline void libera(AcadOrdeU** v) {
    if (*v != nullptr) {
        acadordeu_destruye(v);
    }
}
inline void libera(ApunOrde** v) {
    if (*v != nullptr) {
        apunorde_nousar_destruye(v);
    }
}
inline void libera(Nomsfich** v) {
    if (*v != nullptr) {
        LLAMA_DLL(nomsfich_destruye, v);
    }
}
inline void libera(Dirwin** v) {
    if (*v != nullptr) {
        LLAMA_DLL(dirwin_destruye, v);
    }
}
inline void libera(Dirwin_u** v) {
    if (*v != nullptr) {
        LLAMA_DLL(dirwin_destruye_UNICODE, v);
    }
}
template <class T>
ArrDestruyeRegistro como_destructor(void (*destruye)(T**)) {
    return reinterpret_cast<ArrDestruyeRegistro>(reinterpret_cast<void (*)()>(destruye));
}
// The results that are such lists hold different records; they are released by the families' own destroyers.
inline void libera_registros(ArrPunteroConTipo** v, const llamada& de) {
    if (*v == nullptr) {
        return;
    }
    ArrDestruyeRegistro destruye = destruye_bloque;
    if (de.es("fichsdir_")) {
        destruye = como_destructor(DE_LA_DLL(fichsdir_destruye));
    } else if (de.es("Unidades")) {
        destruye = como_destructor(DE_LA_DLL(lumodir_destruyeEstructuraUnidadSistema));
    } else if (de.es("taskproc_")) {
        destruye = como_destructor(DE_LA_DLL(taskproc_destruye));
    } else if (de.es("lumoreg_")) {
        destruye = como_destructor(DE_LA_DLL(arr_DestruyeCADENA_u));
    }
    arr_DestruyeEstructurasConTipo(v, destruye);
}

inline void crea(wchar_t*& v) {
    v = widestr_nousar_copia(L"x", "prueba", 1);
}
inline void crea(char*& v) {
    // The library has no copier of 8-bit strings: by way of a list.
    ArrCADENA* lista = arr_CreaCADENA(0);
    arr_AppendCADENA(lista, "x");
    v = arr_GetCopiaCADENA(lista, 0);
    arr_DestruyeCADENA(&lista);
}
inline void crea(void*& v) {
    v = lumospy_nousar_malloc(1);
}
inline void crea(ArrCADENA*& v) {
    v = arr_CreaCADENA(0);
    for (const char* texto : {"a", "b", "c"}) {  // the sane index is 2
        arr_AppendCADENA(v, texto);
    }
}
inline void crea(ArrCADENA_u*& v) {
    v = arr_CreaCADENA_u(0);
    for (const wchar_t* texto : {L"a", L"b", L"c"}) {
        arr_AppendCADENA_u(v, texto);
    }
}
inline void crea(AcadOrde*& v) {
    v = acadorde_crea(0);
}
inline void crea(AcadOrdeU*& v) {
    v = acadordeu_crea(0);
}
inline int compara_nada(const void*, const void*) {
    return 0;
}
inline void crea(ApunOrde*& v) {
    v = apunorde_nousar_crea(compara_nada, destruye_bloque);
}
inline void crea(Nomsfich*& v) {
    v = LLAMA_DLL(nomsfich_crea, "nombre.ext");
}
inline void crea(Dirwin*& v) {
    v = LLAMA_DLL(dirwin_crea, en_8_bits(texto_sano({""})).c_str());
}
inline void crea(Dirwin_u*& v) {
    v = LLAMA_DLL(dirwin_crea_UNICODE, texto_sano({""}).c_str());
}

// Objects of the library, const or not.
template <class T>
concept objeto_de_la_dll = requires(T* p) {
    crea(p);
    libera(&p);
};

// Texts and untyped blocks have forms of their own below.
template <class T>
concept objeto_opaco = objeto_de_la_dll<std::remove_const_t<T>> && std::is_class_v<T>;

template <objeto_opaco T>
struct valor<T*> : inmovil {
    std::remove_const_t<T>* v = nullptr;
    explicit valor(const llamada&) { crea(v); }
    ~valor() { libera(&v); }
    static constexpr bool hay = true;
    T* da() { return v; }
};

// Addresses of variables: results, and arguments that are taken over.
template <objeto_de_la_dll T>
struct valor<T**> : inmovil {
    T* v = nullptr;
    explicit valor(const llamada& para) {
        if (para.toma_la_variable()) {
            crea(v);
        }
    }
    ~valor() { libera(&v); }
    static constexpr bool hay = true;
    T** da() { return &v; }
};

template <>
struct valor<const wchar_t*> : inmovil {
    std::wstring v;
    explicit valor(const llamada& para) : v(texto_sano(para)) {}
    static constexpr bool hay = true;
    const wchar_t* da() { return v.c_str(); }
};
template <>
struct valor<const char*> : inmovil {
    std::string v;
    explicit valor(const llamada& para) : v(en_8_bits(texto_sano(para))) {}
    static constexpr bool hay = true;
    const char* da() { return v.c_str(); }
};
// Texts that are changed in place, and buffers; numbers and dates that are filled in.
template <class T>
struct en_sitio : inmovil {
    T v[300] = {};
    explicit en_sitio(const llamada&) {}
    static constexpr bool hay = true;
    T* da() { return v; }
};
template <>
struct valor<wchar_t*> : en_sitio<wchar_t> {
    explicit valor(const llamada& para) : en_sitio(para) { v[0] = L'x'; }
};
template <>
struct valor<char*> : en_sitio<char> {
    explicit valor(const llamada& para) : en_sitio(para) { v[0] = 'x'; }
};
template <>
struct valor<unsigned short*> : en_sitio<unsigned short> {
    using en_sitio::en_sitio;
};
// Static: the tree listing's result can only be freed with the number that was stored here.
template <>
struct valor<unsigned long*> : inmovil {
    static inline thread_local unsigned long v = 0;
    explicit valor(const llamada&) { v = 0; }
    static constexpr bool hay = true;
    unsigned long* da() { return &v; }
};
template <>
struct valor<unsigned int*> : en_sitio<unsigned int> {
    using en_sitio::en_sitio;
};
template <>
struct valor<FILETIME*> : en_sitio<FILETIME> {
    using en_sitio::en_sitio;
};
template <>
struct valor<const FILETIME*> : en_sitio<FILETIME> {
    explicit valor(const llamada& para) : en_sitio(para) { v[0].dwHighDateTime = 0x01D00000; }
};
template <>
struct valor<WIN32_FIND_DATAA*> : en_sitio<WIN32_FIND_DATAA> {
    using en_sitio::en_sitio;
};
template <>
struct valor<WIN32_FIND_DATAW*> : en_sitio<WIN32_FIND_DATAW> {
    using en_sitio::en_sitio;
};
template <>
struct valor<wchar_t> : inmovil {
    explicit valor(const llamada&) {}
    static constexpr bool hay = true;
    wchar_t da() { return L'C'; }
};
// A block; one that the function takes is no longer the caller's to free.
template <>
struct valor<void*> : inmovil {
    void* v = nullptr;
    bool lo_toma;
    explicit valor(const llamada& para) : lo_toma(para.es("realloc")) { crea(v); }
    ~valor() { libera(&v); }
    static constexpr bool hay = true;
    void* da() {
        void* bloque = v;
        if (lo_toma) {
            v = nullptr;
        }
        return bloque;
    }
};
template <>
struct valor<const void*> : valor<void*> {
    using valor<void*>::valor;
};

template <>
struct valor<ListaFicheros*> : inmovil {
    ListaFicheros v = {};
    explicit valor(const llamada&) {}
    ~valor() {
        if (v.lista != nullptr || v.path != nullptr) {
            LLAMA_DLL(cdir_libera_lista_de_ficheros, &v);
        }
    }
    static constexpr bool hay = true;
    ListaFicheros* da() { return &v; }
};
template <>
struct valor<ListaFicheros_u*> : inmovil {
    ListaFicheros_u v = {};
    explicit valor(const llamada&) {}
    ~valor() {
        if (v.lista != nullptr || v.path != nullptr) {
            LLAMA_DLL(cdir_libera_lista_de_ficheros_UNICODE, &v);
        }
    }
    static constexpr bool hay = true;
    ListaFicheros_u* da() { return &v; }
};
template <>
struct valor<ListaFicheros_u**> : inmovil {
    ListaFicheros_u* v = nullptr;
    explicit valor(const llamada&) {}
    ~valor() {
        if (v != nullptr) {
            LLAMA_DLL(lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE,
                      valor<unsigned long*>::v, &v);
        }
    }
    static constexpr bool hay = true;
    ListaFicheros_u** da() { return &v; }
};
template <>
struct valor<const Fichsdir*> : inmovil {
    char nombre[7] = "nombre";
    wchar_t ruta[5] = L"ruta";
    Fichsdir v = {nombre, 1, 0, ruta};
    explicit valor(const llamada&) {}
    static constexpr bool hay = true;
    const Fichsdir* da() { return &v; }
};
template <>
struct valor<const ArrPunteroConTipo*> : inmovil {
    ArrPunteroConTipo* v;
    explicit valor(const llamada&) : v(arr_CreaPunteroConTipo(0)) {}
    // A record that was appended is still the test's own.
    ~valor() {
        arr_DestruyeEstructurasConTipo(&v, [](void**) {});
    }
    static constexpr bool hay = true;
    ArrPunteroConTipo* da() { return v; }
};
template <>
struct valor<ArrPunteroConTipo*> : valor<const ArrPunteroConTipo*> {
    using valor<const ArrPunteroConTipo*>::valor;
};
template <>
struct valor<ArrPunteroConTipo**> : inmovil {
    ArrPunteroConTipo* v = nullptr;
    llamada para_;
    explicit valor(const llamada& para) : para_(para) {
        if (para.toma_la_variable()) {
            v = arr_CreaPunteroConTipo(0);
        }
    }
    ~valor() { libera_registros(&v, para_); }
    static constexpr bool hay = true;
    ArrPunteroConTipo** da() { return &v; }
};

// Functions of the host.
template <class R, class... A>
struct valor<R (*)(A...)> : inmovil {
    explicit valor(const llamada&) {}
    static constexpr bool hay = true;
    R (*da())(A...) {
        return [](A...) { return R(); };
    }
};

// One value for each argument of a call, made in place: they do not move. Plain bases, for there is one set for each
// signature of each test, and a std::tuple of them takes the compiler several times as long.
template <std::size_t I, class V>
struct pieza {
    V v;
    explicit pieza(const llamada& para) : v(para) {}
};
template <template <class> class Valor, class Indices, class... A>
struct juego_de_valores;
template <template <class> class Valor, std::size_t... I, class... A>
struct juego_de_valores<Valor, std::index_sequence<I...>, A...> : pieza<I, Valor<A>>... {
    explicit juego_de_valores([[maybe_unused]] const llamada& para) : pieza<I, Valor<A>>(para)... {}
    // The answer of a function to these arguments.
    template <class F>
    auto da_a(F funcion) {
        return funcion(pieza<I, Valor<A>>::v.da()...);
    }
    // The same, where `toma` takes the argument of each number out of its value.
    template <class F, class T>
    auto da_a(F funcion, [[maybe_unused]] T toma) {
        return funcion(toma(I, pieza<I, Valor<A>>::v)...);
    }
};
template <template <class> class Valor, class... A>
using juego = juego_de_valores<Valor, std::index_sequence_for<A...>, A...>;

// Frees what a function gave, where it gave something new.
template <class R>
void libera_resultado(R resultado, const llamada& de) {
    constexpr bool es_puntero = std::is_pointer_v<R>;
    if constexpr (std::is_same_v<R, ArrPunteroConTipo*>) {
        libera_registros(&resultado, de);
    } else if constexpr (std::is_same_v<R, void*>) {
        if (de.es("lumospy_")) {
            libera(&resultado);
        }
    } else if constexpr (es_puntero && !std::is_const_v<std::remove_pointer_t<R>>) {
        libera(&resultado);
    }
}

}  // namespace dll
