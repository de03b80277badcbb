// What every fuzz target leans on: its input cut into texts and numbers, exact copies in which one unit too far is
// seen, a recorder of everything that the library tells its host, and checks that end the process.
//
// An input is a text file: each line is one argument. Inside a line the byte 0x0E and a byte n repeat the character
// before them n times more, 0x0F and n repeat it 41 n times more, so that short inputs reach the length limits; a line
// that is NULL stands for an argument that is not given. An input may begin with a byte 0x10 to 0x16, which chooses the
// code page of its 8-bit texts (apoyo/paginas.hpp); without one it is that of the machine, 1252. LUMODIR_PAGINA chooses
// one for the whole run; LUMODIR_CORTOS bounds every text of it to a little more than a component may have.
//
// A target defines `arnes::prueba`. After each input the census of blocks must be what it was, and no report or
// warning may be left that the target did not take.
#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "modelos/path.hpp"

namespace arnes {

using apoyo::texto_a;
using apoyo::texto_w;

class entrada {
public:
    entrada(const std::uint8_t* datos, std::size_t tamanyo);

    // The next argument; an input that has ended gives empty texts and 0.
    texto_a bytes(bool con_terminadores = false);
    texto_w unidades(bool con_terminadores = false);
    std::optional<texto_a> bytes_o_null();
    unsigned long numero();
    bool es_larga() const { return es_larga_; }
    unsigned pagina() const { return pagina_; }

    template <class T>
    T texto() {
        if constexpr (std::is_same_v<T, texto_w>) {
            return unidades();
        } else {
            return bytes();
        }
    }

private:
    std::string_view i_linea();
    texto_a i_expandida(std::string_view linea, bool con_terminadores) const;

    std::string_view resto_;
    bool es_larga_;
    unsigned pagina_ = 0;
};

// Out of the bytes of a line: UTF-8, and where it is none whatever comes of it, lone surrogates among them.
texto_w en_unidades(const texto_a& bytes);

// A copy in a block of exactly its size, with its terminator or without.
template <class C>
class justo {
public:
    template <class T>
    explicit justo(const T& texto, bool con_terminador = true)
        : unidades_(new C[texto.size() + (con_terminador ? 1 : 0)]), longitud_(texto.size()) {
        interno::rasgos<C>::copy(unidades_.get(), texto.data(), texto.size());
        if (con_terminador) {
            unidades_[longitud_] = C(0);
        }
    }
    C* datos() const { return unidades_.get(); }
    operator const C*() const { return unidades_.get(); }
    interno::vista<C> ver() const { return {unidades_.get(), longitud_}; }

private:
    std::unique_ptr<C[]> unidades_;
    std::size_t longitud_;
};
justo(const texto_w&)->justo<wchar_t>;
justo(const texto_a&)->justo<char>;
justo(const texto_w&, bool)->justo<wchar_t>;
justo(const texto_a&, bool)->justo<char>;

// An argument that may be NULL.
template <class C>
class quiza_justo {
public:
    template <class T>
    explicit quiza_justo(const std::optional<T>& texto) {
        if (texto) {
            texto_.emplace(*texto);
        }
    }
    operator const C*() const { return texto_ ? texto_->datos() : nullptr; }

private:
    std::optional<justo<C>> texto_;
};

// Takes a new text of the library's and frees it as a host does. NULL is a failure.
texto_w toma(wchar_t* texto);
texto_a toma(char* texto);

// What was told to the host since the last call: the expressions of the reports, the texts of the warnings.
std::vector<std::string> informes();
std::vector<std::string> avisos();

std::string como_se_ve(interno::vista_w texto);
std::string como_se_ve(interno::vista_a texto);
std::string como_se_ve(const std::vector<std::string>& textos);
std::string como_se_ve(const std::vector<texto_w>& textos);
inline std::string como_se_ve(const texto_w& texto) {
    return como_se_ve(interno::vista_w(texto));
}
inline std::string como_se_ve(const texto_a& texto) {
    return como_se_ve(interno::vista_a(texto));
}
template <std::integral N>
std::string como_se_ve(N numero) {
    return std::to_string(numero);
}
template <class T>
std::string como_se_ve(const modelos::piezas<T>& p) {
    return como_se_ve(p.unidad) + como_se_ve(p.directorio) + como_se_ve(p.nombre) + como_se_ve(p.extension);
}

[[noreturn]] void falla(const char* que, int linea, const std::string& dado, const std::string& esperado);

template <class A, class B>
void exige_igual(const A& dado, const B& esperado, const char* que, int linea) {
    bool iguales = false;
    if constexpr (std::integral<A> && std::integral<B>) {
        iguales = std::cmp_equal(dado, esperado);
    } else {
        iguales = dado == esperado;
    }
    if (!iguales) {
        falla(que, linea, como_se_ve(dado), como_se_ve(esperado));
    }
}

#define EXIGE_IGUAL(dado, esperado) ::arnes::exige_igual(dado, esperado, #dado, __LINE__)
#define EXIGE(condicion) ::arnes::exige_igual((condicion) ? 1 : 0, 1, #condicion, __LINE__)

// The target.
void prueba(entrada& e);

}  // namespace arnes
