// The platform door on Linux, for sanitizers and fuzzers: a machine whose active code page is 1252 and whose user
// reads English. Tests may give it another code page: UTF-8, which has bytes that mean nothing and characters of
// several bytes; 874; or one of the double-byte ones, whose tables are those of the C library's own conversions.
#include "companions/plataforma.hpp"

#include <iconv.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "nativo/plataforma_nativa.hpp"

namespace interno::plataforma {
namespace {

constexpr unsigned short alto_1252[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                          0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                          0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                          0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

constexpr unsigned utf8 = 65001;
constexpr unsigned short ninguno = 0xFFFF;

// A code page of characters of one byte, and of two, whose number has the first in its upper half.
class tabla {
public:
    explicit tabla(unsigned pagina) : unidades_(0x10000, ninguno), numeros_(0x10000, ninguno) {
        for (unsigned byte = 0; byte < 0x80; ++byte) {
            i_tiene(byte, byte);
        }
        switch (pagina) {
            case 1252:
                for (unsigned byte = 0x80; byte < 0x100; ++byte) {
                    i_tiene(byte, byte < 0xA0 ? alto_1252[byte - 0x80] : byte);
                }
                break;
            case 874:
                i_es_tailandesa();
                break;
            default:
                i_lee(pagina);
        }
    }
    // What is not known has no character above ASCII.
    static const tabla& actual() {
        switch (pagina_de_codigos) {
            case 0:
            case 1252:
                return i_de<1252>();
            case 874:
                return i_de<874>();
            case 932:
                return i_de<932>();
            case 936:
                return i_de<936>();
            case 949:
                return i_de<949>();
            case 950:
                return i_de<950>();
            default:
                return solo_ascii();
        }
    }
    static const tabla& solo_ascii() { return i_de<20127>(); }

    bool es_inicial(unsigned char byte) const { return iniciales_[byte]; }
    bool hay_iniciales() const { return iniciales_[0x81]; }
    bool es_doble(char primero, char segundo) const {
        const auto inicial = static_cast<unsigned char>(primero);
        return es_inicial(inicial) &&
               unidad(static_cast<unsigned>(inicial) << 8 | static_cast<unsigned char>(segundo)) != ninguno;
    }
    unsigned short unidad(unsigned numero) const { return unidades_[numero]; }
    unsigned short numero(wchar_t unidad) const { return numeros_[static_cast<unsigned short>(unidad)]; }

private:
    template <unsigned Pagina>
    static const tabla& i_de() {
        static const tabla una(Pagina);
        return una;
    }
    void i_tiene(unsigned numero, unsigned unidad) {
        unidades_[numero] = static_cast<unsigned short>(unidad);
        // Of several that mean the same, the first is written.
        if (numeros_[unidad] == ninguno) {
            numeros_[unidad] = static_cast<unsigned short>(numero);
        }
    }
    void i_es_tailandesa() {
        constexpr unsigned sueltos[][2] = {{0x80, 0x20AC}, {0x85, 0x2026}, {0x91, 0x2018}, {0x92, 0x2019},
                                           {0x93, 0x201C}, {0x94, 0x201D}, {0x95, 0x2022}, {0x96, 0x2013},
                                           {0x97, 0x2014}, {0xA0, 0x00A0}};
        for (const auto& [byte, unidad] : sueltos) {
            i_tiene(byte, unidad);
        }
        for (unsigned byte = 0xA1; byte < 0xFC; ++byte) {
            if (byte < 0xDB || byte > 0xDE) {
                i_tiene(byte, byte - 0xA0 + 0x0E00);
            }
        }
    }
    void i_lee(unsigned pagina) {
        const char* nombre = pagina == 932   ? "CP932"
                             : pagina == 936 ? "GBK"
                             : pagina == 949 ? "UHC"
                             : pagina == 950 ? "BIG5"
                                             : nullptr;
        const iconv_t conversor = nombre == nullptr ? iconv_t(-1) : iconv_open("UTF-16LE", nombre);
        if (conversor == iconv_t(-1)) {
            return;
        }
        const auto lee = [&](unsigned numero, std::size_t bytes) {
            char texto[] = {static_cast<char>(bytes == 2 ? numero >> 8 : numero), static_cast<char>(numero)};
            unsigned short unidades[2];
            char* de = texto;
            char* a = reinterpret_cast<char*>(unidades);
            std::size_t quedan = bytes;
            std::size_t sitio = sizeof unidades;
            iconv(conversor, nullptr, nullptr, nullptr, nullptr);
            if (iconv(conversor, &de, &quedan, &a, &sitio) == 0 && quedan == 0 && sitio == 2) {
                i_tiene(numero, unidades[0]);
            }
        };
        for (unsigned byte = 0x80; byte < 0x100; ++byte) {
            iniciales_[byte] = pagina == 932 ? (byte > 0x80 && byte < 0xA0) || (byte > 0xDF && byte < 0xFD)
                                             : byte > 0x80 && byte < 0xFF;
            if (!iniciales_[byte]) {
                lee(byte, 1);
            }
        }
        for (unsigned numero = 0x8100; numero < 0x10000; ++numero) {
            if (iniciales_[numero >> 8] && (numero & 0xFF) >= 0x40) {
                lee(numero, 2);
            }
        }
        iconv_close(conversor);
    }

    bool iniciales_[256] = {};
    std::vector<unsigned short> unidades_;  // by the character's number
    std::vector<unsigned short> numeros_;   // the other way
};

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

// Letters of Latin-1, those of Latin Extended-A in code pages 1252 and 949, Greek, Cyrillic, Roman numbers and of full
// width, as Windows pairs them.
wchar_t i_minuscula(wchar_t c) noexcept {
    const auto entre = [c](wchar_t primera, wchar_t ultima) { return c >= primera && c <= ultima; };
    if (entre('A', 'Z') || (entre(0xC0, 0xDE) && c != 0xD7) || (entre(0x391, 0x3A9) && c != 0x3A2) ||
        entre(0x410, 0x42F) || entre(0xFF21, 0xFF3A)) {
        return static_cast<wchar_t>(c + 0x20);
    }
    if (entre(0x2160, 0x2169)) {
        return static_cast<wchar_t>(c + 0x10);
    }
    switch (c) {
        case 0x126:
        case 0x132:
        case 0x13F:
        case 0x141:
        case 0x14A:
        case 0x152:
        case 0x160:
        case 0x166:
        case 0x17D:
            return static_cast<wchar_t>(c + 1);
        case 0x178:
            return 0xFF;
        case 0x401:
            return 0x451;
        default:
            return c;
    }
}

wchar_t i_mayuscula(wchar_t c) noexcept {
    if (c < 0x80) {
        return static_cast<wchar_t>(c >= 'a' && c <= 'z' ? c - 0x20 : c);
    }
    for (unsigned m = 0; m < 0x10000; ++m) {
        if (m != c && i_minuscula(static_cast<wchar_t>(m)) == c) {
            return static_cast<wchar_t>(m);
        }
    }
    return c;
}

// The number of the character that a text begins with, and of how many bytes it is; one that the code page does not
// hold is a byte by itself.
struct leido {
    unsigned numero;
    std::size_t bytes;
};
leido i_lee_caracter(const tabla& t, vista_a texto) {
    const auto primero = static_cast<unsigned char>(texto[0]);
    if (texto.size() > 1 && t.es_doble(texto[0], texto[1])) {
        return {static_cast<unsigned>(primero << 8 | static_cast<unsigned char>(texto[1])), 2};
    }
    return {primero, 1};
}

// Letter by letter; one whose counterpart takes another number of bytes stays.
template <class Caja>
void i_convierte_caja_utf8(vista_a texto, char* destino, Caja caja) noexcept {
    for (std::size_t i = 0; i < texto.size();) {
        const std::size_t bytes =
            std::max<std::size_t>(i_largo_utf8(static_cast<unsigned char>(texto[i])), 1);
        wchar_t unidades[4] = {};
        salida<wchar_t> leidas(unidades, 4);
        i_de_utf8(texto.substr(i, bytes), leidas);
        if (leidas.cuantos() == 1 && unidades[0] != sin_sentido) {
            const wchar_t otra = caja(unidades[0]);
            char escritos[4];
            salida<char> otros(escritos, 4);
            i_a_utf8(vista_w(&otra, 1), otros);
            if (otros.cuantos() == bytes) {
                std::copy(escritos, escritos + bytes, destino + i);
            }
        }
        i += unidades[0] == sin_sentido ? 1 : bytes;
    }
}

template <class Caja>
void i_convierte_caja(char* texto, std::size_t longitud, Caja caja) noexcept {
    if (es_utf8()) {
        return i_convierte_caja_utf8(vista_a(texto, longitud), texto, caja);
    }
    const tabla& t = tabla::actual();
    for (std::size_t i = 0; i < longitud;) {
        const leido c = i_lee_caracter(t, vista_a(texto + i, longitud - i));
        const unsigned short otra = t.unidad(c.numero) == ninguno
                                        ? ninguno
                                        : t.numero(caja(static_cast<wchar_t>(t.unidad(c.numero))));
        if (otra != ninguno && (otra > 0xFF ? 2u : 1u) == c.bytes) {
            texto[i] = static_cast<char>(c.bytes == 2 ? otra >> 8 : otra);
            texto[i + c.bytes - 1] = static_cast<char>(otra);
        }
        i += c.bytes;
    }
}

}  // namespace

unsigned pagina_de_codigos = 0;
namespace {
void (*duerme_de_aqui)(unsigned long) = i_duerme;
void (*termina_de_aqui)() = i_termina;
}  // namespace
void (*&duerme_ms)(unsigned long) = duerme_de_aqui;
void (*&termina_proceso)() = termina_de_aqui;

bool es_utf8() noexcept {
    return pagina_de_codigos == utf8;
}

bool bytes_iniciales(bool (&iniciales)[256]) noexcept {
    const tabla& t = tabla::actual();
    if (es_utf8() || !t.hay_iniciales()) {
        return false;
    }
    for (unsigned byte = 0; byte < 256; ++byte) {
        iniciales[byte] = t.es_inicial(static_cast<unsigned char>(byte));
    }
    return true;
}

// Behind any other byte than an initial one Windows converts two characters, and says yes as well.
bool es_caracter_doble(char primero, char segundo) noexcept {
    const tabla& t = tabla::actual();
    return !t.es_inicial(static_cast<unsigned char>(primero)) || t.es_doble(primero, segundo);
}

std::size_t ansi_a_utf16(vista_a texto, wchar_t* destino, std::size_t sitio) noexcept {
    salida<wchar_t> unidades(destino, sitio);
    if (es_utf8()) {
        i_de_utf8(texto, unidades);
        return unidades.cuantos();
    }
    const tabla& t = tabla::actual();
    while (!texto.empty()) {
        const leido c = i_lee_caracter(t, texto);
        const unsigned short unidad = t.unidad(c.numero);
        unidades << (unidad == ninguno ? sin_sentido : unidad);
        texto.remove_prefix(c.bytes);
    }
    return unidades.cuantos();
}

std::size_t utf16_a_ansi(vista_w texto, char* destino, std::size_t sitio) noexcept {
    salida<char> bytes(destino, sitio);
    if (es_utf8()) {
        i_a_utf8(texto, bytes);
        return bytes.cuantos();
    }
    const tabla& t = tabla::actual();
    for (const wchar_t c : texto) {
        const unsigned numero = t.numero(c);
        if (numero == ninguno) {
            bytes << '?';
            continue;
        }
        if (numero > 0xFF) {
            bytes << (numero >> 8);
        }
        bytes << (numero & 0xFF);
    }
    return bytes.cuantos();
}

void minusculas_ansi(char* texto, std::size_t longitud) noexcept {
    i_convierte_caja(texto, longitud, i_minuscula);
}

void mayusculas_ansi(char* texto, std::size_t longitud) noexcept {
    i_convierte_caja(texto, longitud, i_mayuscula);
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
    resultado.acorta(ansi_a_utf16(bytes, resultado.datos(), bytes.size()));
    return resultado;
}

void llama_tras_barrera(void (*funcion)(void*), void* argumento) {
    funcion(argumento);
}

void escribe_error_estandar(vista_w linea) noexcept {
    for (const wchar_t c : linea) {
        std::fputc(c < 0x80 ? c : '?', stderr);
    }
}

void escribe_depurador(const wchar_t* linea) noexcept {
    apoyo::al_depurador(linea);
}

std::uint16_t idioma_del_usuario() noexcept {
    return apoyo::idioma_del_usuario;
}

cadena_w texto_de_codigo(unsigned long codigo, std::uint16_t idioma) {
    if (codigo == apoyo::sin_texto || (codigo == apoyo::solo_del_sistema && idioma != 0) ||
        (codigo == apoyo::sin_catalan && idioma == 0x0403)) {
        return cadena_w();
    }
    wchar_t en_hexadecimal[5] = {};
    for (unsigned i = 0; i < 4; ++i) {
        en_hexadecimal[i] = L"0123456789abcdef"[idioma >> (12 - 4 * i) & 0xF];
    }
    return copiaforu_nousar_formatea(L"error %lu in %s", {codigo, en_hexadecimal});
}

}  // namespace interno::plataforma
