// Owned strings: the move-only owner of every string from its first line until `suelta()` hands it to the
// caller, and the ways of making one (copy, join, format).
//
// Promises: one allocation a string, of exactly its length; a string that leaves with `suelta()` is freed with
// widestr_nousar_destruye (UTF-16) or lumostr_destruye (8-bit).
// Cannot promise: that a NULL owner and an empty text differ in `ver()`: ask `es_nula()`.
// Checked by tests/companions/cadena_test.cpp.
#pragma once

#include <concepts>
#include <initializer_list>
#include <utility>

#include "companions/lumospy.hpp"
#include "companions/texto.hpp"

namespace interno {

template <class C>
class cadena {
public:
    using caracter = C;

    cadena() noexcept = default;
    explicit cadena(vista<C> texto, lugar donde = lugar::aqui()) noexcept
        : cadena(con_sitio(texto.size(), donde)) {
        copia_unidades(texto_, texto.data(), texto.size());
    }
    cadena(cadena&& otra) noexcept
        : texto_(std::exchange(otra.texto_, nullptr)), longitud_(std::exchange(otra.longitud_, 0)) {}
    cadena& operator=(cadena&& otra) noexcept {
        if (this != &otra) {
            i_libera(texto_);
            texto_ = std::exchange(otra.texto_, nullptr);
            longitud_ = std::exchange(otra.longitud_, 0);
        }
        return *this;
    }
    ~cadena() { i_libera(texto_); }

    // A string of `longitud` units, terminated, whose units the caller fills in.
    static cadena con_sitio(std::size_t longitud, lugar donde = lugar::aqui()) noexcept {
        cadena nueva;
        nueva.texto_ = static_cast<C*>(i_reserva((longitud + 1) * sizeof(C), donde));
        nueva.texto_[longitud] = C(0);
        nueva.longitud_ = longitud;
        return nueva;
    }
    // Takes over a string that already belongs to the library; NULL stays NULL.
    static cadena adopta(C* texto) noexcept {
        cadena nueva;
        nueva.texto_ = texto;
        nueva.longitud_ = a_vista<C>(texto).size();
        return nueva;
    }

    bool es_nula() const noexcept { return texto_ == nullptr; }
    std::size_t size() const noexcept { return longitud_; }
    bool empty() const noexcept { return longitud_ == 0; }
    vista<C> ver() const noexcept { return vista<C>(texto_, longitud_); }
    operator vista<C>() const noexcept { return ver(); }
    const C* c_str() const noexcept { return texto_; }
    C* datos() noexcept { return texto_; }

    // Keeps the first `longitud` units.
    void acorta(std::size_t longitud) noexcept {
        if (longitud < longitud_) {
            longitud_ = longitud;
            texto_[longitud] = C(0);
        }
    }
    // Gives up ownership: only where a result leaves the library or enters a list.
    C* suelta() noexcept {
        longitud_ = 0;
        return std::exchange(texto_, nullptr);
    }
    void vacia() noexcept { *this = cadena(); }

private:
    C* texto_ = nullptr;
    std::size_t longitud_ = 0;
};

using cadena_a = cadena<char>;
using cadena_w = cadena<wchar_t>;

// One new string with the pieces in their order.
template <class C>
cadena<C> concatena(std::initializer_list<std::type_identity_t<vista<C>>> trozos,
                    lugar donde = lugar::aqui()) noexcept {
    std::size_t longitud = 0;
    for (const vista<C>& trozo : trozos) {
        longitud += trozo.size();
    }
    cadena<C> nueva = cadena<C>::con_sitio(longitud, donde);
    C* p = nueva.datos();
    for (const vista<C>& trozo : trozos) {
        copia_unidades(p, trozo.data(), trozo.size());
        p += trozo.size();
    }
    return nueva;
}

// New strings for a caller, as many of them as it asked for, which the census counts all at once at the end.
class entrega_de_copias {
public:
    entrega_de_copias() noexcept = default;
    entrega_de_copias(const entrega_de_copias&) = delete;
    entrega_de_copias& operator=(const entrega_de_copias&) = delete;
    ~entrega_de_copias() { i_cuenta_bloques(num_); }

    // `sitio` is NULL where the string is not wanted.
    template <class C>
    void copia(C** sitio, vista<C> texto, lugar donde = lugar::aqui()) {
        if (sitio != nullptr) {
            const std::size_t longitud = texto.size();
            C* const nueva = static_cast<C*>(i_reserva_sin_contar((longitud + 1) * sizeof(C), num_, donde));
            copia_unidades(nueva, texto.data(), longitud);
            nueva[longitud] = C(0);
            *sitio = nueva;
            ++num_;
        }
    }

private:
    unsigned num_ = 0;
};

// An argument of a format: text for %s, a number for %d, %u, %ld and %lu.
template <class C>
class argumento {
public:
    argumento(vista<C> texto) noexcept : texto_(texto) {}
    argumento(const C* texto) noexcept : texto_(a_vista(texto)) {}
    argumento(const cadena<C>& texto) noexcept : texto_(texto.ver()) {}
    template <std::integral N>
    argumento(N numero) noexcept : es_numero_(true) {
        bool negativo = false;
        if constexpr (std::is_signed_v<N>) {
            negativo = numero < 0;
        }
        auto valor = static_cast<unsigned long long>(numero);
        if (negativo) {
            valor = 0 - valor;
        }
        C* p = cifras_ + max_cifras;
        do {
            *--p = static_cast<C>(C('0') + static_cast<C>(valor % 10));
            valor /= 10;
        } while (valor != 0);
        if (negativo) {
            *--p = C('-');
        }
        primera_ = static_cast<std::size_t>(p - cifras_);
    }
    vista<C> ver() const noexcept {
        return es_numero_ ? vista<C>(cifras_ + primera_, max_cifras - primera_) : texto_;
    }

private:
    static constexpr std::size_t max_cifras = 20;  // a 64-bit number with its sign
    vista<C> texto_;
    C cifras_[max_cifras] = {};
    std::size_t primera_ = 0;
    bool es_numero_ = false;
};

// Formats into a new string. Each placeholder (%s %d %u %ld %lu) takes the next argument; %% is a percent sign;
// any other % stands for itself, and a placeholder without argument stays as it is. Arguments are never read as
// formats.
template <class C>
cadena<C> i_formatea(vista<C> formato, const argumento<C>* argumentos, std::size_t num, lugar donde);

extern template cadena<char> i_formatea(vista<char>, const argumento<char>*, std::size_t, lugar);
extern template cadena<wchar_t> i_formatea(vista<wchar_t>, const argumento<wchar_t>*, std::size_t, lugar);

inline cadena_w copiaforu_nousar_formatea(vista_w formato,
                                          std::initializer_list<argumento<wchar_t>> argumentos,
                                          lugar donde = lugar::aqui()) {
    return i_formatea<wchar_t>(formato, argumentos.begin(), argumentos.size(), donde);
}
inline cadena_a nousar_formatea(vista_a formato, std::initializer_list<argumento<char>> argumentos,
                                lugar donde = lugar::aqui()) {
    return i_formatea<char>(formato, argumentos.begin(), argumentos.size(), donde);
}

}  // namespace interno
