// Text views and the pure text operations that the library is written with, for 8-bit and UTF-16 text alike.
//
// Promises: no allocation, no locale, no C-library wide function (their wchar_t is 32 bits wide on Linux, where
// this code is also built, for sanitizers and fuzzers); lengths count code units; every view may hold NULs. What is
// looked for in 8-bit text is found as a character only, never as the second byte of one (companions/caracteres.hpp).
// Cannot promise: anything about a NULL pointer: `a_vista` is the one place that turns it into an empty view.
// Checked by tests/companions/texto_test.cpp and caracteres_test.cpp.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

namespace interno {

static_assert(sizeof(wchar_t) == 2, "wide text is UTF-16: build with 16-bit wchar_t (-fshort-wchar)");

// The length of a terminated text, several units at a time. No unit behind the terminator matters, though some may be
// read: never beyond the page of memory that it stands in.
std::size_t i_longitud(const wchar_t* texto) noexcept;
std::size_t i_longitud(const char* texto) noexcept;

// Character traits of UTF-16 text. Whatever reaches the C library's wide functions in the standard ones is its own here.
struct rasgos_utf16 : std::char_traits<wchar_t> {
    using int_type = std::uint32_t;  // one more value than a unit has
    using std::char_traits<wchar_t>::assign;

    static constexpr int compare(const char_type* a, const char_type* b, std::size_t n) noexcept {
        for (std::size_t i = 0; i < n; ++i) {
            if (a[i] != b[i]) {
                return lt(a[i], b[i]) ? -1 : 1;
            }
        }
        return 0;
    }
    static constexpr std::size_t length(const char_type* s) noexcept {
        if (!std::is_constant_evaluated()) {
            return i_longitud(s);
        }
        // While a program is compiled nothing is counted. GCOVR_EXCL_START
        const char_type* p = s;
        while (*p != 0) {
            ++p;
        }
        return static_cast<std::size_t>(p - s);
        // GCOVR_EXCL_STOP
    }
    static constexpr const char_type* find(const char_type* s, std::size_t n, const char_type& c) noexcept {
        for (std::size_t i = 0; i < n; ++i) {
            if (s[i] == c) {
                return s + i;
            }
        }
        return nullptr;
    }
    static char_type* move(char_type* a, const char_type* b, std::size_t n) noexcept {
        return n == 0 ? a : static_cast<char_type*>(std::memmove(a, b, n * sizeof(char_type)));
    }
    static char_type* copy(char_type* a, const char_type* b, std::size_t n) noexcept {
        return n == 0 ? a : static_cast<char_type*>(std::memcpy(a, b, n * sizeof(char_type)));
    }
    static constexpr char_type* assign(char_type* s, std::size_t n, char_type c) noexcept {
        std::fill_n(s, n, c);
        return s;
    }
    static constexpr int_type not_eof(int_type c) noexcept { return c == eof() ? 0 : c; }
    static constexpr char_type to_char_type(int_type c) noexcept { return static_cast<char_type>(c); }
    static constexpr int_type to_int_type(char_type c) noexcept { return static_cast<std::uint16_t>(c); }
    static constexpr bool eq_int_type(int_type a, int_type b) noexcept { return a == b; }
    static constexpr int_type eof() noexcept { return 0xFFFFFFFFu; }
};

// The two flavours: whether a unit is the wide one, and what is one thing in this flavour and another in that.
template <class C>
inline constexpr bool es_ancho = std::is_same_v<C, wchar_t>;
template <class C, class Ancho, class Estrecho>
using segun_sabor = std::conditional_t<es_ancho<C>, Ancho, Estrecho>;

template <class C>
using rasgos = segun_sabor<C, rasgos_utf16, std::char_traits<C>>;

template <class C>
using vista = std::basic_string_view<C, rasgos<C>>;

using vista_a = vista<char>;     // 8-bit text in the active code page
using vista_w = vista<wchar_t>;  // UTF-16 text

// A unit as a number.
template <class C>
using sin_signo = segun_sabor<C, unsigned short, unsigned char>;

// Copies units between places that do not overlap. Most pieces of a path are shorter than what the C library's copying
// costs.
void i_copia_bytes(void* destino, const void* origen, std::size_t bytes) noexcept;
template <class C>
void copia_unidades(C* destino, const C* origen, std::size_t num) noexcept {
    i_copia_bytes(destino, origen, num * sizeof(C));
}

// Picks the literal of the flavour: LITERAL(C, "\\") is "\\" or L"\\" as a view, whose length is not counted at run time.
template <class C>
consteval vista<C> i_elige(vista_a a, vista_w w) noexcept {
    if constexpr (es_ancho<C>) {
        return w;
    } else {
        return a;
    }
}
#define LITERAL(C, texto) ::interno::i_elige<C>(texto, L##texto)

template <class C>
constexpr vista<C> a_vista(const C* texto) noexcept {
    if (texto == nullptr) {
        return vista<C>();
    }
    return std::is_constant_evaluated() ? vista<C>(texto) : vista<C>(texto, i_longitud(texto));
}

// The order of terminated texts, unit by unit; an object, so that a sort takes it in.
inline constexpr auto widestr_fun_compara = []<class C>(const C* a, const C* b) noexcept {
    return vista<C>(a).compare(vista<C>(b));
};

template <class C>
constexpr bool es_separador(C c) noexcept {
    return c == C('\\') || c == C('/');
}

template <class C>
constexpr bool es_barra(C c) noexcept {
    return c == C('\\');
}

template <class C>
constexpr bool es_punto(C c) noexcept {
    return c == C('.');
}

template <class C>
constexpr bool lmstdc_isalpha(C c) noexcept {
    // The two cases of a letter differ in one bit.
    return static_cast<unsigned>((c | 0x20) - 'a') <= static_cast<unsigned>('z' - 'a');
}

// The slow questions of the two functions below, for a byte above ASCII; see caracteres.hpp.
bool i_empieza_caracter(vista_a texto, std::size_t posicion) noexcept;
std::size_t i_bytes_de_caracter(vista_a texto) noexcept;

// Whether a character begins at `posicion`, where an ASCII one seems to stand. In 8-bit text the byte may be the second
// one of a character, but only behind a byte above ASCII.
template <class C>
constexpr bool empieza_caracter(vista<C> texto, std::size_t posicion) noexcept {
    if constexpr (!es_ancho<C>) {
        return posicion == 0 || static_cast<unsigned char>(texto[posicion - 1]) < 0x80 ||
               i_empieza_caracter(texto, posicion);
    } else {
        return true;
    }
}

// How many units the first character of a text takes that is not empty: one of UTF-16, all the bytes of an 8-bit one.
template <class C>
constexpr std::size_t unidades_del_primero(vista<C> texto) noexcept {
    if constexpr (!es_ancho<C>) {
        return static_cast<unsigned char>(texto.front()) < 0x80 ? 1 : i_bytes_de_caracter(texto);
    } else {
        return 1;
    }
}

// Where the text goes on behind its last character of a kind (of ASCII); 0 when there is none.
template <class C, class Es>
constexpr std::size_t tras_el_ultimo(vista<C> texto, Es es) noexcept {
    std::size_t i = texto.size();
    while (i > 0 && !(es(texto[i - 1]) && empieza_caracter(texto, i - 1))) {
        --i;
    }
    return i;
}

template <class C>
constexpr bool empieza_por(vista<C> texto, std::type_identity_t<vista<C>> principio) noexcept {
    return texto.substr(0, principio.size()) == principio;
}

// The ending is ASCII.
template <class C>
constexpr bool acaba_en(vista<C> texto, std::type_identity_t<vista<C>> final) noexcept {
    return texto.size() >= final.size() && texto.substr(texto.size() - final.size()) == final &&
           empieza_caracter(texto, texto.size() - final.size());
}

template <class C>
constexpr bool acaba_en_separador(vista<C> texto) noexcept {
    return !texto.empty() && es_separador(texto.back()) && empieza_caracter(texto, texto.size() - 1);
}

// Only the space character is trimmed: tabs and the Unicode blanks belong to the text. No code page has a blank as
// the second byte of a character.
template <class C>
constexpr vista<C> recorta_derecha(vista<C> texto) noexcept {
    while (!texto.empty() && texto.back() == C(' ')) {
        texto.remove_suffix(1);
    }
    return texto;
}

template <class C>
constexpr vista<C> recorta_izquierda(vista<C> texto) noexcept {
    while (!texto.empty() && texto.front() == C(' ')) {
        texto.remove_prefix(1);
    }
    return texto;
}

// As Windows reads a name: without the blanks and dots at its end.
constexpr vista_w sin_final_recortable(vista_w nombre) noexcept {
    return nombre.substr(0, nombre.find_last_not_of(L". ") + 1);
}

// "." and "..", which are no names of anything else.
constexpr bool i_es_punto_o_dos(vista_w nombre) noexcept {
    return nombre == L"." || nombre == L"..";
}

// Neither empty nor made of spaces only.
template <class C>
constexpr bool hay_texto(vista<C> texto) noexcept {
    return !recorta_derecha(texto).empty();
}

// "Ignoring case" folds A to Z and nothing else, as the C runtime does in its start-up locale.
template <class C>
constexpr C minuscula_ascii(C c) noexcept {
    return c >= C('A') && c <= C('Z') ? static_cast<C>(c + (C('a') - C('A'))) : c;
}

// Order ignoring case: negative, 0 or positive; a shorter prefix comes first.
template <class C>
constexpr int compara_sin_caja(vista<C> a, std::type_identity_t<vista<C>> b) noexcept {
    const std::size_t comun = a.size() < b.size() ? a.size() : b.size();
    for (std::size_t i = 0; i < comun; ++i) {
        const C x = minuscula_ascii(a[i]);
        const C y = minuscula_ascii(b[i]);
        if (x != y) {
            return static_cast<sin_signo<C>>(x) < static_cast<sin_signo<C>>(y) ? -1 : 1;
        }
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

template <class C>
constexpr bool iguales_sin_caja(vista<C> a, std::type_identity_t<vista<C>> b) noexcept {
    return a.size() == b.size() && compara_sin_caja(a, b) == 0;
}

template <class C>
constexpr bool empieza_por_sin_caja(vista<C> texto, std::type_identity_t<vista<C>> principio) noexcept {
    return compara_sin_caja(texto.substr(0, principio.size()), principio) == 0;
}

// Token number `numero` (from 1) of the text cut at any of the separators, which are ASCII; empty tokens do not
// count. An empty view answers "there is none".
template <class C>
constexpr vista<C> extrae_token(vista<C> texto, std::size_t numero,
                                std::type_identity_t<vista<C>> separadores) noexcept {
    const auto es_separador_en = [&](std::size_t i) {
        return separadores.find(texto[i]) != vista<C>::npos && empieza_caracter(texto, i);
    };
    std::size_t i = 0;
    for (;;) {
        while (i < texto.size() && es_separador_en(i)) {
            ++i;
        }
        if (i == texto.size()) {
            return {};
        }
        std::size_t fin = i;
        while (fin < texto.size() && !es_separador_en(fin)) {
            ++fin;
        }
        if (--numero == 0) {
            return texto.substr(i, fin - i);
        }
        i = fin;
    }
}

}  // namespace interno
