// The texts that are run against the models of tests/modelos: every short text over a small alphabet, and long
// random ones.
#pragma once

#include <cstdlib>
#include <random>

#include "apoyo/apoyo.hpp"
#include "modelos/path.hpp"

namespace modelos {

// Every text of up to so many characters, or one or two fewer where a text is tried in many ways; more by
// LUMODIR_LONGITUD (tools/largo exhaustive).
inline const std::size_t longitud_exhaustiva = [] {
    const char* pedida = std::getenv("LUMODIR_LONGITUD");
    return pedida == nullptr ? std::size_t{5} : static_cast<std::size_t>(std::atoi(pedida));
}();
// For what takes each text by itself in many ways.
inline const std::size_t longitud_de_nombres = longitud_exhaustiva > 5 ? longitud_exhaustiva - 1 : 5;
constexpr std::string_view alfabeto = "a.\\/:? *";

// The same as a list, over letters of any kind.
inline std::vector<std::string> textos_cortos(const std::string& letras, std::size_t longitud) {
    std::vector<std::string> textos = {""};
    for (std::size_t i = 0; i < textos.size() && textos[i].size() < longitud; ++i) {
        const std::string principio = textos[i];
        for (const char c : letras) {
            textos.push_back(principio + c);
        }
    }
    return textos;
}

// What is told of a path that is none.
inline std::string incorrecto(const std::string& path) {
    return "The file '" + path + "' is not correct";
}

inline interno::vista_w ver(const apoyo::texto_w& texto) {
    return interno::vista_w(texto);
}

// Calls `f` with every text of up to `longitud_maxima` characters of the alphabet, the empty one included, until
// a check fails; answers how many there were.
template <class F>
std::size_t para_cada_texto(std::string_view letras, std::size_t longitud_maxima, F f) {
    std::size_t cuantos = 0;
    for (std::size_t longitud = 0; longitud <= longitud_maxima; ++longitud) {
        std::vector<std::size_t> cifras(longitud, 0);
        for (;;) {
            std::string texto;
            for (const std::size_t cifra : cifras) {
                texto.push_back(letras[cifra]);
            }
            f(texto);
            ++cuantos;
            if (testing::Test::HasFailure()) {
                return cuantos;
            }
            std::size_t k = 0;
            while (k < longitud && ++cifras[k] == letras.size()) {
                cifras[k++] = 0;
            }
            if (k == longitud) {
                break;
            }
        }
    }
    return cuantos;
}

inline std::size_t cuantos_textos(std::size_t letras, std::size_t longitud_maxima) {
    std::size_t suma = 0;
    for (std::size_t longitud = 0, potencia = 1; longitud <= longitud_maxima;
         ++longitud, potencia *= letras) {
        suma += potencia;
    }
    return suma;
}

inline std::string repite(std::string_view letra, std::size_t veces) {
    std::string texto;
    for (std::size_t i = 0; i < veces; ++i) {
        texto += letra;
    }
    return texto;
}

// ---- entries that write to the name they are given

struct en_bufer {
    unsigned short valido;
    std::string queda;  // the caller's buffer afterwards
};
inline en_bufer prueba_en_bufer(unsigned short (*entrada)(wchar_t*), const texto_w& nombre) {
    std::vector<wchar_t> bufer(nombre.c_str(), nombre.c_str() + nombre.size() + 1);
    const unsigned short valido = entrada(bufer.data());
    return {valido, apoyo::u8(bufer.data())};
}

// ---- random texts

class fabrica {
public:
    explicit fabrica(unsigned semilla) : azar_(semilla) {}

    std::size_t numero(std::size_t menor_que) { return azar_() % menor_que; }

    // A text of the pieces that the rules look at; in UTF-8, lone surrogates as WTF-8 where they are wanted.
    std::string texto(bool solo_ascii = false) {
        static const std::vector<std::string> trozos = {"\\",
                                                        "\\",
                                                        "\\",
                                                        "/",
                                                        ".",
                                                        "..",
                                                        " ",
                                                        "   ",
                                                        ":",
                                                        "C:",
                                                        "c:\\",
                                                        "\\\\",
                                                        "\\\\srv\\share\\",
                                                        "a",
                                                        "name",
                                                        ".txt",
                                                        ".tar.gz",
                                                        "X",
                                                        "%s",
                                                        "$",
                                                        "&",
                                                        "*",
                                                        "?",
                                                        "\x01",
                                                        "\x1F",
                                                        "\t",
                                                        "|",
                                                        "\x7F"};
        static const std::vector<std::string> altos = {
            "ñ", "É", "€", "日本", "😀", "\xED\xA0\x80", "\xED\xBF\xBF", "\xC2\xA0"};
        std::string texto;
        for (std::size_t n = numero(9); n > 0; --n) {
            switch (numero(8)) {
                case 0:
                    texto += reservado_cualquiera();
                    break;
                case 1:
                    texto += std::string(252 + numero(6), 'x');
                    break;
                case 2:
                    texto += solo_ascii ? "b" : altos[numero(altos.size())];
                    break;
                default:
                    texto += trozos[numero(trozos.size())];
            }
        }
        if (numero(16) == 0) {
            rellena(texto, 10236 + numero(9));
        }
        return apoyo::u8(interno::vista_w(apoyo::w(texto)));  // two lone surrogates may have become a pair
    }

private:
    std::string reservado_cualquiera() {
        std::string nombre(reservados[numero(reservados.size())]);
        for (char& c : nombre) {
            c = static_cast<char>(c >= 'a' && c <= 'z' && numero(2) == 0 ? c - 32 : c);
        }
        return nombre;
    }
    // Valid components in front of the text, up to a length in bytes.
    static void rellena(std::string& texto, std::size_t longitud) {
        std::string delante;
        while (delante.size() + texto.size() < longitud) {
            delante.push_back(delante.size() % 200 == 199 ? '\\' : 'y');
        }
        texto = delante + texto;
    }

    std::mt19937 azar_;
};

}  // namespace modelos
