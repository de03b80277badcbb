// The platform door on Linux, for sanitizers and fuzzers: a machine whose active code page is 1252 and whose user
// reads English. Tests may turn its code page into UTF-8, which has bytes that mean nothing, and characters of several
// bytes.
#include "companions/plataforma.hpp"

#include <cstdio>
#include <cstdlib>

namespace lumodir::plataforma {
namespace {

constexpr unsigned short alto_1252[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                          0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                          0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                          0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

wchar_t i_unidad(unsigned char byte) noexcept {
    return static_cast<wchar_t>(byte >= 0x80 && byte < 0xA0 ? alto_1252[byte - 0x80] : byte);
}

// -1 when the code page has no such character.
int i_byte(unsigned long c) noexcept {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
        return static_cast<int>(c);
    }
    for (int i = 0; i < 32; ++i) {
        if (alto_1252[i] == c) {
            return 0x80 + i;
        }
    }
    return -1;
}

// Hands out units or bytes where there is room, and counts them all.
template <class C>
class salida {
public:
    salida(C* destino, std::size_t sitio) noexcept : destino_(destino), sitio_(sitio) {}
    void operator<<(unsigned long c) noexcept {
        if (escritos_ < sitio_) {
            destino_[escritos_] = static_cast<C>(c);
        }
        ++escritos_;
    }
    std::size_t cuantos() const noexcept { return escritos_; }

private:
    C* destino_;
    std::size_t sitio_;
    std::size_t escritos_ = 0;
};

constexpr unsigned utf8 = 65001;
constexpr unsigned long sin_sentido = 0xFFFD;

// How many bytes a character that begins with this one has; 0 for one that begins nothing.
std::size_t i_largo_utf8(unsigned char c) noexcept {
    return c < 0x80 ? 1 : c < 0xC2 ? 0 : c < 0xE0 ? 2 : c < 0xF0 ? 3 : c < 0xF5 ? 4 : 0;
}

void i_de_utf8(vista_a texto, salida<wchar_t>& unidades) noexcept {
    constexpr unsigned long minimos[] = {0, 0, 0x80, 0x800, 0x10000};
    for (std::size_t i = 0; i < texto.size();) {
        const auto primero = static_cast<unsigned char>(texto[i]);
        const std::size_t largo = i_largo_utf8(primero);
        unsigned long c = largo < 2 ? primero : primero & (0xFFu >> (largo + 1));
        std::size_t k = 1;
        while (k < largo && i + k < texto.size() && (texto[i + k] & 0xC0) == 0x80) {
            c = c << 6 | (static_cast<unsigned char>(texto[i + k]) & 0x3Fu);
            ++k;
        }
        const bool entero =
            largo != 0 && k == largo && c >= minimos[largo] && c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
        if (!entero) {
            unidades << sin_sentido;
            ++i;
            continue;
        }
        i += largo;
        if (c >= 0x10000) {
            unidades << (0xD7C0 + (c >> 10));
            unidades << (0xDC00 + (c & 0x3FF));
        } else {
            unidades << c;
        }
    }
}

void i_a_utf8(vista_w texto, salida<char>& bytes) noexcept {
    for (std::size_t i = 0; i < texto.size(); ++i) {
        unsigned long c = static_cast<unsigned short>(texto[i]);
        if (c >= 0xD800 && c <= 0xDFFF) {
            const bool pareja = c < 0xDC00 && i + 1 < texto.size() && (texto[i + 1] & 0xFC00) == 0xDC00;
            c = pareja ? 0x10000 + ((c & 0x3FF) << 10) + (static_cast<unsigned long>(texto[++i]) & 0x3FF)
                       : sin_sentido;
        }
        if (c < 0x80) {
            bytes << c;
            continue;
        }
        constexpr unsigned primeros[] = {0, 0xC0, 0xE0, 0xF0};
        const int siguientes = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
        bytes << (primeros[siguientes] | c >> (6 * siguientes));
        for (int k = siguientes - 1; k >= 0; --k) {
            bytes << (0x80 | (c >> (6 * k) & 0x3F));
        }
    }
}

void i_duerme(unsigned long) noexcept {}

void i_termina() noexcept {
    std::abort();
}

// Letters of Latin-1 and of the code page's upper part, as Windows pairs them.
unsigned char i_minuscula(unsigned char c) noexcept {
    const bool latina = c >= 0xC0 && c <= 0xDE && c != 0xD7;
    switch (c) {
        case 0x8A:
        case 0x8C:
        case 0x8E:
            return static_cast<unsigned char>(c + 0x10);
        case 0x9F:
            return 0xFF;
        default:
            return static_cast<unsigned char>((c >= 'A' && c <= 'Z') || latina ? c + 0x20 : c);
    }
}

unsigned char i_mayuscula(unsigned char c) noexcept {
    for (unsigned m = 0; m < 256; ++m) {
        if (m != c && i_minuscula(static_cast<unsigned char>(m)) == c) {
            return static_cast<unsigned char>(m);
        }
    }
    return c;
}

}  // namespace

unsigned pagina_de_codigos = 0;
void (*duerme_ms)(unsigned long) = i_duerme;
void (*termina_proceso)() noexcept = i_termina;

std::size_t ansi_a_utf16(vista_a texto, wchar_t* destino, std::size_t sitio) noexcept {
    salida<wchar_t> unidades(destino, sitio);
    if (pagina_de_codigos == utf8) {
        i_de_utf8(texto, unidades);
    } else {
        for (const char c : texto) {
            unidades << i_unidad(static_cast<unsigned char>(c));
        }
    }
    return unidades.cuantos();
}

std::size_t utf16_a_ansi(vista_w texto, char* destino, std::size_t sitio) noexcept {
    salida<char> bytes(destino, sitio);
    if (pagina_de_codigos == utf8) {
        i_a_utf8(texto, bytes);
    } else {
        for (const wchar_t c : texto) {
            const int byte = i_byte(static_cast<unsigned short>(c));
            bytes << static_cast<unsigned long>(byte < 0 ? '?' : byte);
        }
    }
    return bytes.cuantos();
}

void minusculas_ansi(char* texto, std::size_t longitud) noexcept {
    for (std::size_t i = 0; i < longitud; ++i) {
        texto[i] = static_cast<char>(i_minuscula(static_cast<unsigned char>(texto[i])));
    }
}

void mayusculas_ansi(char* texto, std::size_t longitud) noexcept {
    for (std::size_t i = 0; i < longitud; ++i) {
        texto[i] = static_cast<char>(i_mayuscula(static_cast<unsigned char>(texto[i])));
    }
}

cadena_w variable_de_entorno(const wchar_t* nombre) {
    char nombre_a[64];
    std::size_t i = 0;
    for (; nombre[i] != 0 && i < sizeof nombre_a - 1; ++i) {
        nombre_a[i] = static_cast<char>(nombre[i]);
    }
    nombre_a[i] = '\0';
    const char* valor = std::getenv(nombre_a);
    if (valor == nullptr) {
        return {};
    }
    const vista_a bytes(valor);
    cadena_w resultado = cadena_w::con_sitio(bytes.size());
    ansi_a_utf16(bytes, resultado.datos(), bytes.size());
    return resultado;
}

void escribe_error_estandar(vista_w linea) noexcept {
    for (const wchar_t c : linea) {
        std::fputc(c < 0x80 ? c : '?', stderr);
    }
}

void escribe_depurador(const wchar_t*) noexcept {}

unsigned short idioma_del_usuario() noexcept {
    return 0x0409;
}

cadena_w texto_de_codigo_de_error(unsigned long codigo) {
    return copiaforu_nousar_formatea(L"error %lu", {codigo});
}

}  // namespace lumodir::plataforma
