/**
 * @file base.hpp
 * What the C++ headers stand on: texts on their way in, and owners of the strings and lists that come out.
 *
 * An owner holds one pointer and nothing else; it moves, is never copied, and frees what it holds with the
 * library's own function, at once when another is moved into it. An empty one (moved from) behaves as an empty
 * text or list.
 *
 * An owner of a text converts by itself to what a program keeps: `std::wstring name = cdir::nombre_base_fichero(p)`,
 * `std::filesystem::path q = cdir::obtener_path_actual()`. It is printed, compared, ordered, hashed and added to
 * other texts like any string.
 */
#ifndef LUMODIR_CPP_BASE_HPP
#define LUMODIR_CPP_BASE_HPP

#include <cstddef>
#include <filesystem>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

// <windows.h>, without its macros min and max, which break std::min and std::max. What is defined for that here does
// not stay.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#define LUMODIR_SIN_LO_DEMAS
#endif
#ifndef NOMINMAX
#define NOMINMAX
#define LUMODIR_SIN_MIN_MAX
#endif
#include <windows.h>
#ifdef LUMODIR_SIN_LO_DEMAS
#undef WIN32_LEAN_AND_MEAN
#undef LUMODIR_SIN_LO_DEMAS
#endif
#ifdef LUMODIR_SIN_MIN_MAX
#undef NOMINMAX
#undef LUMODIR_SIN_MIN_MAX
#endif

#include "../companions/acadorde.h"
#include "../companions/arr.h"
#include "../companions/lumospy.h"
#include "../companions/lumostr.h"
#include "../companions/widestr.h"

namespace lumodir {

namespace detalle {

constexpr unsigned short corto(bool valor) noexcept {
    return valor ? CIERTO : FALSO;
}
constexpr bool si(unsigned short respuesta) noexcept {
    return respuesta == CIERTO;
}

/**
 * How something of the library is given back: `static void libera(T**)` for what stands behind a pointer,
 * `static void libera(T*)` for a record that the host holds by value.
 */
template <class T>
struct destruccion;

template <>
struct destruccion<wchar_t> {
    static void libera(wchar_t** texto) noexcept {
        widestr_nousar_destruye_opcional(texto, "lumodir.hpp", __LINE__);
    }
};
template <>
struct destruccion<char> {
    static void libera(char** texto) noexcept { lumostr_destruye_opcional(texto); }
};
template <>
struct destruccion<ArrCADENA> {
    static void libera(ArrCADENA** l) noexcept { arr_DestruyeCADENA(l); }
};
template <>
struct destruccion<ArrCADENA_u> {
    static void libera(ArrCADENA_u** l) noexcept { arr_DestruyeCADENA_u(l); }
};
template <>
struct destruccion<AcadOrde> {
    static void libera(AcadOrde** l) noexcept { acadorde_destruye(l); }
};
template <>
struct destruccion<AcadOrdeU> {
    static void libera(AcadOrdeU** l) noexcept { acadordeu_destruye(l); }
};

/** Owns one thing of the library, a pointer or a record; moved from, it holds an empty one. */
template <class V>
class dueno {
public:
    dueno() noexcept = default;
    explicit dueno(V nuevo) noexcept : suyo_(nuevo) {}
    dueno(dueno&& otro) noexcept : suyo_(std::exchange(otro.suyo_, V())) {}
    dueno& operator=(dueno&& otro) noexcept {
        dueno antes(std::move(otro));
        std::swap(suyo_, antes.suyo_);
        return *this;
    }
    ~dueno() {
        if constexpr (!std::is_pointer_v<V>) {
            destruccion<V>::libera(&suyo_);
        } else if (suyo_ != nullptr) {
            destruccion<std::remove_pointer_t<V>>::libera(&suyo_);
        }
    }

    const V& get() const noexcept { return suyo_; }
    V* direccion() noexcept { return &suyo_; }
    V suelta() noexcept { return std::exchange(suyo_, V()); }

private:
    V suyo_ = V();
};

template <class C>
std::basic_string_view<C> vista(const C* texto) noexcept {
    return texto == nullptr ? std::basic_string_view<C>() : std::basic_string_view<C>(texto);
}

template <class C>
std::basic_string<C> suma(std::basic_string_view<C> a, std::basic_string_view<C> b) {
    std::basic_string<C> todo;
    todo.reserve(a.size() + b.size());
    return todo.append(a).append(b);
}

inline std::filesystem::path ruta(const wchar_t* texto) {
    return texto;
}
// As the library converts: bytes that are not valid in the code page become U+FFFD. By default the system would put
// the code page's own default character there, which is one like any other.
inline std::filesystem::path ruta(const char* texto) {
    constexpr wchar_t sustituto = 0xFFFD;
    const bool utf8 = ::GetACP() == CP_UTF8;
    const std::string_view todo = texto;
    std::wstring ancho(todo.size(), L'\0');
    const int bytes = static_cast<int>(todo.size());
    const int unidades =
        bytes == 0 ? 0
                   : ::MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, texto, bytes, ancho.data(), bytes);
    ancho.resize(static_cast<std::size_t>(unidades));
    if (unidades > 0 || bytes == 0) {
        return ancho;
    }
    for (int i = 0; i < bytes;) {
        const auto primero = static_cast<BYTE>(todo[static_cast<std::size_t>(i)]);
        int caracter = 1;
        if (utf8) {
            caracter = primero >= 0xF0 ? 4 : primero >= 0xE0 ? 3 : primero >= 0xC0 ? 2 : 1;
        } else if (::IsDBCSLeadByteEx(CP_ACP, primero)) {
            caracter = 2;
        }
        caracter = caracter < bytes - i ? caracter : bytes - i;
        wchar_t unidad[2];
        const int largo = ::MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, texto + i, caracter, unidad, 2);
        if (largo > 0) {
            ancho.append(unidad, static_cast<std::size_t>(largo));
            i += caracter;
        } else {
            ancho += sustituto;  // the byte behind a bad first byte may be valid alone
            ++i;
        }
    }
    return ancho;
}

// The text of an owner, a new empty one where it had none: for the functions that change a text in place.
inline wchar_t** con_texto(wchar_t** texto) noexcept {
    if (*texto == nullptr) {
        *texto = widestr_nousar_copia(L"", "lumodir.hpp", __LINE__);
    }
    return texto;
}

// One set of names for the four kinds of string lists.
inline unsigned long cuenta(const ArrCADENA* l) noexcept {
    return arr_NumElemsCADENA(l);
}
inline unsigned long cuenta(const ArrCADENA_u* l) noexcept {
    return arr_NumElemsCADENA_u(l);
}
inline unsigned long cuenta(const AcadOrde* l) noexcept {
    return acadorde_num_elems(l);
}
inline unsigned long cuenta(const AcadOrdeU* l) noexcept {
    return acadordeu_num_elems(l);
}
inline const char* elemento(const ArrCADENA* l, unsigned long i) noexcept {
    return arr_GetCADENA(l, i);
}
inline const wchar_t* elemento(const ArrCADENA_u* l, unsigned long i) noexcept {
    return arr_GetCADENA_u(l, i);
}
inline const char* elemento(const AcadOrde* l, unsigned long i) noexcept {
    return acadorde_get(l, i);
}
inline const wchar_t* elemento(const AcadOrdeU* l, unsigned long i) noexcept {
    return acadordeu_get(l, i);
}
/**
 * Walks anything that has size() and operator[], in any order. Where the elements are made on demand, C++17 can call it
 * no more than an input iterator; C++20 sees that it is one of random access.
 *
 * @tparam De  What is kept of it: its address, or for a view, which may be gone first, the view itself.
 */
template <class L, class De = const L*>
class iterador {
public:
    using reference = decltype(std::declval<const L&>()[0]);
    using value_type = std::decay_t<reference>;
    using difference_type = std::ptrdiff_t;
    using iterator_category = std::conditional_t<std::is_reference_v<reference>,
                                                 std::random_access_iterator_tag, std::input_iterator_tag>;
    using iterator_concept = std::random_access_iterator_tag;

    /** What `->` gives: the element's address, or the element where it is made on demand. */
    class pointer {
    public:
        explicit pointer(reference elemento) : elemento_(std::forward<reference>(elemento)) {}
        const value_type* operator->() const noexcept { return &elemento_; }

    private:
        reference elemento_;
    };

    iterador() noexcept = default;
    iterador(De de, std::size_t i) noexcept : de_(de), i_(i) {}
    reference operator*() const { return lista(de_)[i_]; }
    pointer operator->() const { return pointer(**this); }
    iterador& operator++() noexcept {
        ++i_;
        return *this;
    }
    iterador operator++(int) noexcept {
        iterador antes = *this;
        ++i_;
        return antes;
    }
    iterador& operator--() noexcept {
        --i_;
        return *this;
    }
    iterador operator--(int) noexcept {
        iterador antes = *this;
        --i_;
        return antes;
    }
    iterador& operator+=(difference_type n) noexcept {
        i_ += static_cast<std::size_t>(n);
        return *this;
    }
    iterador& operator-=(difference_type n) noexcept {
        i_ -= static_cast<std::size_t>(n);
        return *this;
    }
    reference operator[](difference_type n) const { return *(*this + n); }
    friend iterador operator+(iterador a, difference_type n) noexcept { return a += n; }
    friend iterador operator+(difference_type n, iterador a) noexcept { return a += n; }
    friend iterador operator-(iterador a, difference_type n) noexcept { return a -= n; }
    friend difference_type operator-(const iterador& a, const iterador& b) noexcept {
        return static_cast<difference_type>(a.i_) - static_cast<difference_type>(b.i_);
    }
    friend bool operator==(const iterador& a, const iterador& b) noexcept { return a.i_ == b.i_; }
    friend bool operator!=(const iterador& a, const iterador& b) noexcept { return a.i_ != b.i_; }
    friend bool operator<(const iterador& a, const iterador& b) noexcept { return a.i_ < b.i_; }
    friend bool operator>(const iterador& a, const iterador& b) noexcept { return a.i_ > b.i_; }
    friend bool operator<=(const iterador& a, const iterador& b) noexcept { return a.i_ <= b.i_; }
    friend bool operator>=(const iterador& a, const iterador& b) noexcept { return a.i_ >= b.i_; }

private:
    static const L& lista(const L* direccion) noexcept { return *direccion; }
    static const L& lista(const L& vista) noexcept { return vista; }

    De de_ = {};
    std::size_t i_ = 0;
};

}  // namespace detalle

/**
 * A string of the library, owned. It is what the functions return: look at it as a view, or take a copy as a string of
 * the standard library or a path, by name (texto(), ruta()) or by initialising one with it. To assign to a path that
 * exists already, name the copy, `p = owner.ruta()`: a path takes texts too, and compilers differ on whether a bare
 * owner would be ambiguous there.
 */
template <class C>
class basic_cadena {
public:
    basic_cadena() noexcept = default;
    /** Takes over a new string of the library; NULL counts as empty. */
    explicit basic_cadena(C* nueva) noexcept : texto_(nueva) {}

    /** Terminated text, never NULL; valid as long as the owner holds it. */
    const C* c_str() const noexcept {
        static constexpr C nada = 0;
        return texto_.get() == nullptr ? &nada : texto_.get();
    }
    std::size_t size() const noexcept { return vista().size(); }
    bool empty() const noexcept { return *c_str() == 0; }
    std::basic_string_view<C> vista() const noexcept { return detalle::vista(c_str()); }
    operator std::basic_string_view<C>() const noexcept { return vista(); }
    /** A copy. Constant, so that a path initialised with an owner takes the conversion below, without ambiguity. */
    operator const std::basic_string<C>() const { return texto(); }  // NOLINT(readability-const-return-type)
    /** A copy. */
    operator std::filesystem::path() const { return ruta(); }
    /** A copy. */
    std::basic_string<C> texto() const { return std::basic_string<C>(vista()); }
    /**
     * A copy. 8-bit text is read in the active code page, whatever the locale of the program; bytes that are not
     * valid there become U+FFFD.
     */
    std::filesystem::path ruta() const { return detalle::ruta(c_str()); }

    /** For the C functions with an address of a string variable; what was held stays in it. */
    C** direccion() noexcept { return texto_.direccion(); }
    /** Gives up the string: the caller frees it, with the library's function. */
    C* suelta() noexcept { return texto_.suelta(); }

    // Code unit by code unit, as std::basic_string does. Each operator has all three forms: an owner also converts to a
    // view, and without them there would be no best choice.
    friend bool operator==(const basic_cadena& a, const basic_cadena& b) noexcept {
        return a.vista() == b.vista();
    }
    friend bool operator==(const basic_cadena& a, std::basic_string_view<C> b) noexcept {
        return a.vista() == b;
    }
    friend bool operator==(std::basic_string_view<C> a, const basic_cadena& b) noexcept {
        return a == b.vista();
    }
    friend bool operator!=(const basic_cadena& a, const basic_cadena& b) noexcept {
        return a.vista() != b.vista();
    }
    friend bool operator!=(const basic_cadena& a, std::basic_string_view<C> b) noexcept {
        return a.vista() != b;
    }
    friend bool operator!=(std::basic_string_view<C> a, const basic_cadena& b) noexcept {
        return a != b.vista();
    }
    friend bool operator<(const basic_cadena& a, const basic_cadena& b) noexcept {
        return a.vista() < b.vista();
    }
    friend bool operator<(const basic_cadena& a, std::basic_string_view<C> b) noexcept {
        return a.vista() < b;
    }
    friend bool operator<(std::basic_string_view<C> a, const basic_cadena& b) noexcept {
        return a < b.vista();
    }
    friend bool operator>(const basic_cadena& a, const basic_cadena& b) noexcept {
        return a.vista() > b.vista();
    }
    friend bool operator>(const basic_cadena& a, std::basic_string_view<C> b) noexcept {
        return a.vista() > b;
    }
    friend bool operator>(std::basic_string_view<C> a, const basic_cadena& b) noexcept {
        return a > b.vista();
    }
    friend bool operator<=(const basic_cadena& a, const basic_cadena& b) noexcept {
        return a.vista() <= b.vista();
    }
    friend bool operator<=(const basic_cadena& a, std::basic_string_view<C> b) noexcept {
        return a.vista() <= b;
    }
    friend bool operator<=(std::basic_string_view<C> a, const basic_cadena& b) noexcept {
        return a <= b.vista();
    }
    friend bool operator>=(const basic_cadena& a, const basic_cadena& b) noexcept {
        return a.vista() >= b.vista();
    }
    friend bool operator>=(const basic_cadena& a, std::basic_string_view<C> b) noexcept {
        return a.vista() >= b;
    }
    friend bool operator>=(std::basic_string_view<C> a, const basic_cadena& b) noexcept {
        return a >= b.vista();
    }
    friend std::basic_string<C> operator+(const basic_cadena& a, const basic_cadena& b) {
        return detalle::suma(a.vista(), b.vista());
    }
    friend std::basic_string<C> operator+(const basic_cadena& a, std::basic_string_view<C> b) {
        return detalle::suma(a.vista(), b);
    }
    friend std::basic_string<C> operator+(std::basic_string_view<C> a, const basic_cadena& b) {
        return detalle::suma(a, b.vista());
    }
    friend std::basic_ostream<C>& operator<<(std::basic_ostream<C>& salida, const basic_cadena& a) {
        return salida << a.vista();
    }

private:
    detalle::dueno<C*> texto_;
};

using cadena = basic_cadena<wchar_t>; /**< UTF-16 */
using cadena_a = basic_cadena<char>;  /**< 8-bit, in the active code page */

/**
 * A text on its way into the library, made where a function is called. Texts that have a terminator already go
 * in as they are; a view is copied, up to 259 units without an allocation. As in C, the text ends at its first
 * NUL. nullptr is NULL, which some functions take for "none".
 */
template <class C>
class basic_argumento {
public:
    basic_argumento(const C* texto) noexcept : texto_(texto) {}
    basic_argumento(const std::basic_string<C>& texto) noexcept : texto_(texto.c_str()) {}
    basic_argumento(const basic_cadena<C>& texto) noexcept : texto_(texto.c_str()) {}
    template <class P, std::enable_if_t<std::is_same_v<P, std::filesystem::path> &&
                                            std::is_same_v<C, std::filesystem::path::value_type>,
                                        int> = 0>
    basic_argumento(const P& ruta) noexcept : texto_(ruta.c_str()) {}
    /** What std::filesystem's own walks hand out. */
    template <class P, std::enable_if_t<std::is_same_v<P, std::filesystem::directory_entry> &&
                                            std::is_same_v<C, std::filesystem::path::value_type>,
                                        unsigned> = 0>
    basic_argumento(const P& entrada) noexcept : texto_(entrada.path().c_str()) {}
    basic_argumento(std::basic_string_view<C> texto) {
        C* copia = corto_;
        if (texto.size() >= sin_reserva) {
            largo_.reset(new C[texto.size() + 1]);
            copia = largo_.get();
        }
        std::char_traits<C>::copy(copia, texto.data(), texto.size());
        copia[texto.size()] = 0;
        texto_ = copia;
    }
    basic_argumento(const basic_argumento&) = delete;
    basic_argumento& operator=(const basic_argumento&) = delete;

    const C* c_str() const noexcept { return texto_; }

private:
    static constexpr std::size_t sin_reserva = 260;

    const C* texto_;
    std::unique_ptr<C[]> largo_;
    C corto_[sin_reserva];
};

using argumento = basic_argumento<wchar_t>; /**< UTF-16 */
using argumento_a = basic_argumento<char>;  /**< 8-bit, in the active code page */

/** A yes or no with its reason: the library's text for the user when the answer is no. */
struct respuesta {
    bool bien = false;
    cadena motivo;
    /** To bool alone: `bool valid = ...` compiles, and an answer never counts as a number. */
    template <class B, std::enable_if_t<std::is_same_v<B, bool>, int> = 0>
    operator B() const noexcept {
        return bien;
    }
};

/** A list of strings of the library, owned. Its elements are views, valid as long as the list. */
template <class L>
class basic_lista {
public:
    using value_type = decltype(detalle::vista(detalle::elemento(static_cast<const L*>(nullptr), 0)));
    using const_iterator = detalle::iterador<basic_lista>;

    basic_lista() noexcept = default;
    /** Takes over a new list of the library; NULL counts as empty. */
    explicit basic_lista(L* nueva) noexcept : lista_(nueva) {}

    std::size_t size() const noexcept { return get() == nullptr ? 0 : detalle::cuenta(get()); }
    bool empty() const noexcept { return size() == 0; }
    /** An element; an empty view, after a report, when there is none. */
    value_type operator[](std::size_t i) const noexcept {
        return detalle::vista(detalle::elemento(get(), static_cast<unsigned long>(i)));
    }
    /** The first and the last element of a list that has one. */
    value_type front() const noexcept { return (*this)[0]; }
    value_type back() const noexcept { return (*this)[size() - 1]; }
    const_iterator begin() const noexcept { return {this, 0}; }
    const_iterator end() const noexcept { return {this, size()}; }
    /** Copies of the elements. */
    auto vector() const {
        using texto = std::basic_string<typename value_type::value_type>;
        std::vector<texto> copia;
        copia.reserve(size());
        for (value_type elemento : *this) {
            copia.emplace_back(elemento);
        }
        return copia;
    }

    L* get() const noexcept { return lista_.get(); }
    L** direccion() noexcept { return lista_.direccion(); }
    L* suelta() noexcept { return lista_.suelta(); }

private:
    detalle::dueno<L*> lista_;
};

using lista = basic_lista<ArrCADENA_u>;   /**< UTF-16 */
using lista_a = basic_lista<ArrCADENA>;   /**< 8-bit */
using ordenada = basic_lista<AcadOrdeU>;  /**< UTF-16, sorted */
using ordenada_a = basic_lista<AcadOrde>; /**< 8-bit, sorted */

namespace detalle {
/** A list of records, with what frees each of them. */
template <class T>
struct lista_de {
    ArrPunteroConTipo* lista = nullptr;
};
template <class T>
struct destruccion<lista_de<T>> {
    static void libera(lista_de<T>* registros) noexcept {
        if (registros->lista != nullptr) {
            arr_DestruyeEstructurasConTipo(&registros->lista, quita);
        }
    }

private:
    static void quita(void** registro) {
        T* uno = static_cast<T*>(*registro);
        destruccion<T>::libera(&uno);
        *registro = uno;
    }
};
}  // namespace detalle

/**
 * A list of records of the library, owned. Its elements are references, valid as long as the list.
 *
 * @tparam T  Kind of the records.
 */
template <class T>
class registros {
public:
    using value_type = T;
    using const_iterator = detalle::iterador<registros>;

    registros() noexcept = default;
    /** Takes over a new list of the library; NULL counts as empty. */
    explicit registros(ArrPunteroConTipo* nueva) noexcept : registros_(detalle::lista_de<T>{nueva}) {}

    std::size_t size() const noexcept { return lista() == nullptr ? 0 : arr_NumElemsPuntero(lista()); }
    bool empty() const noexcept { return size() == 0; }
    /** An element that there is: `i` below size(). */
    const T& operator[](std::size_t i) const noexcept {
        return *static_cast<const T*>(arr_GetPunteroConTipo(lista(), static_cast<unsigned long>(i)));
    }
    /** The first and the last element of a list that has one. */
    const T& front() const noexcept { return (*this)[0]; }
    const T& back() const noexcept { return (*this)[size() - 1]; }
    const_iterator begin() const noexcept { return {this, 0}; }
    const_iterator end() const noexcept { return {this, size()}; }
    ArrPunteroConTipo** direccion() noexcept { return &registros_.direccion()->lista; }

private:
    ArrPunteroConTipo* lista() const noexcept { return registros_.get().lista; }

    detalle::dueno<detalle::lista_de<T>> registros_;
};

/** Blocks of the library that this program still owns (lumospy_bloques_vivos()). */
inline unsigned long long bloques_vivos() noexcept {
    return lumospy_bloques_vivos();
}

}  // namespace lumodir

/** For std::unordered_set and its like: the hash of the text. */
template <class C>
struct std::hash<lumodir::basic_cadena<C>> {
    std::size_t operator()(const lumodir::basic_cadena<C>& a) const noexcept {
        return std::hash<std::basic_string_view<C>>()(a.vista());
    }
};

#endif
