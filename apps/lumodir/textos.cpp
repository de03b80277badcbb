#include "textos.hpp"

#include <algorithm>
#include <cwchar>

#include "lumodir.hpp"
#include "sistema_windows.hpp"

namespace mando {

namespace {

struct tramo {
    char32_t desde, hasta;
};

// Combining marks, joiners and variation selectors: drawn over the character before them.
constexpr tramo sin_anchura[] = {{0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD},   {0x05BF, 0x05BF},
                                 {0x05C1, 0x05C2}, {0x05C4, 0x05C5}, {0x0610, 0x061A},   {0x064B, 0x065F},
                                 {0x0670, 0x0670}, {0x06D6, 0x06DC}, {0x06DF, 0x06E4},   {0x06E7, 0x06E8},
                                 {0x06EA, 0x06ED}, {0x093C, 0x093C}, {0x0941, 0x0948},   {0x094D, 0x094D},
                                 {0x0E31, 0x0E31}, {0x0E34, 0x0E3A}, {0x0E47, 0x0E4E},   {0x1AB0, 0x1AFF},
                                 {0x1DC0, 0x1DFF}, {0x200B, 0x200F}, {0x202A, 0x202E},   {0x2060, 0x2064},
                                 {0x20D0, 0x20F0}, {0x302A, 0x302D}, {0x3099, 0x309A},   {0xFE00, 0xFE0F},
                                 {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF}, {0x1F3FB, 0x1F3FF}, {0xE0100, 0xE01EF}};

// East Asian wide and full-width characters, and emoji.
constexpr tramo de_dos_columnas[] = {
    {0x1100, 0x115F},  {0x231A, 0x231B},   {0x23E9, 0x23EC},   {0x2614, 0x2615},   {0x2648, 0x2653},
    {0x26A1, 0x26A1},  {0x26BD, 0x26BE},   {0x2705, 0x2705},   {0x270A, 0x270B},   {0x2728, 0x2728},
    {0x274C, 0x274C},  {0x2753, 0x2755},   {0x2795, 0x2797},   {0x2B1B, 0x2B1C},   {0x2B50, 0x2B50},
    {0x2E80, 0x303E},  {0x3041, 0x33FF},   {0x3400, 0x4DBF},   {0x4E00, 0x9FFF},   {0xA000, 0xA4CF},
    {0xA960, 0xA97F},  {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},
    {0xFFE0, 0xFFE6},  {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF}, {0x1FA70, 0x1FAFF},
    {0x20000, 0x3FFFD}};

// What a terminal draws as something else than the text is, or not at all: directions, separators of lines and
// paragraphs, blanks without width, tags. The joiners that emoji and Persian need stay.
constexpr tramo enganyosos[] = {{0x0080, 0x009F},  {0x00AD, 0x00AD}, {0x034F, 0x034F}, {0x061C, 0x061C},
                                {0x115F, 0x1160},  {0x17B4, 0x17B5}, {0x180B, 0x180E}, {0x200B, 0x200B},
                                {0x200E, 0x200F},  {0x2028, 0x202E}, {0x2060, 0x206F}, {0x3164, 0x3164},
                                {0xD800, 0xDFFF},  {0xFEFF, 0xFEFF}, {0xFFA0, 0xFFA0}, {0xFFF0, 0xFFFB},
                                {0xE0000, 0xE007F}};

template <size_t n>
bool i_esta_en(const tramo (&tramos)[n], char32_t c) {
    const tramo* t =
        std::lower_bound(tramos, tramos + n, c, [](const tramo& x, char32_t y) { return x.hasta < y; });
    return t != tramos + n && c >= t->desde;
}

// The character at `i`, which moves past it; a lone surrogate comes as it is.
char32_t i_siguiente(std::wstring_view texto, size_t& i) {
    const char32_t alto = texto[i++];
    if (alto < 0xD800 || alto > 0xDBFF || i == texto.size()) {
        return alto;
    }
    const char32_t bajo = texto[i];
    if (bajo < 0xDC00 || bajo > 0xDFFF) {
        return alto;
    }
    ++i;
    return 0x10000 + ((alto - 0xD800) << 10) + (bajo - 0xDC00);
}

size_t i_columnas(char32_t c) {
    if (i_esta_en(sin_anchura, c)) {
        return 0;
    }
    return i_esta_en(de_dos_columnas, c) ? 2 : 1;
}

}  // namespace

std::string a_utf8(std::wstring_view texto) {
    if (texto.empty()) {
        return {};
    }
    const int unidades = static_cast<int>(texto.size());
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, texto.data(), unidades, nullptr, 0, nullptr, nullptr);
    std::string resultado(static_cast<size_t>(bytes), '\0');
    WideCharToMultiByte(CP_UTF8, 0, texto.data(), unidades, resultado.data(), bytes, nullptr, nullptr);
    return resultado;
}

namespace {

std::wstring i_de_pagina(unsigned pagina, std::string_view texto) {
    if (texto.empty()) {
        return {};
    }
    const int bytes = static_cast<int>(texto.size());
    const int unidades = MultiByteToWideChar(pagina, 0, texto.data(), bytes, nullptr, 0);
    std::wstring resultado(static_cast<size_t>(unidades), L'\0');
    MultiByteToWideChar(pagina, 0, texto.data(), bytes, resultado.data(), unidades);
    return resultado;
}

}  // namespace

std::wstring de_utf8(std::string_view texto) {
    return i_de_pagina(CP_UTF8, texto);
}

std::optional<std::wstring> de_pagina_estricta(unsigned pagina, std::string_view texto) {
    if (texto.empty()) {
        return std::wstring();
    }
    const int bytes = static_cast<int>(texto.size());
    const int unidades = MultiByteToWideChar(pagina, MB_ERR_INVALID_CHARS, texto.data(), bytes, nullptr, 0);
    if (unidades == 0) {
        return std::nullopt;
    }
    return i_de_pagina(pagina, texto);
}

std::wstring ancho_de(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

std::wstring de_pagina_activa(std::string_view texto) {
    return i_de_pagina(CP_ACP, texto);
}

namespace {

template <typename C>
std::wstring i_escrito(std::wstring_view texto, C&& se_escribe) {
    std::wstring resultado;
    for (size_t i = 0; i < texto.size();) {
        const size_t antes = i;
        const char32_t c = i_siguiente(texto, i);
        if (se_escribe(c)) {
            wchar_t signo[16];
            std::swprintf(signo, std::size(signo), L"<U+%04X>", static_cast<unsigned>(c));
            resultado += signo;
        } else {
            resultado.append(texto, antes, i - antes);
        }
    }
    return resultado;
}

}  // namespace

std::wstring sin_trampas(std::wstring_view texto) {
    return i_escrito(texto, [](char32_t c) { return i_esta_en(enganyosos, c); });
}

std::wstring a_la_vista(std::wstring_view nombre) {
    std::wstring texto = i_escrito(
        nombre, [](char32_t c) { return i_esta_en(enganyosos, c) || (c < 0x20 && c != L'\n') || c == 0x7F; });
    const auto es_blanco = [](wchar_t c) {
        return c == L' ' || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x202F ||
               c == 0x205F || c == 0x3000;
    };
    const bool con_comillas = !texto.empty() && (es_blanco(texto.front()) || es_blanco(texto.back()));
    return con_comillas ? L'"' + texto + L'"' : texto;
}

size_t columnas_de(std::wstring_view texto) {
    size_t columnas = 0;
    for (size_t i = 0; i < texto.size();) {
        columnas += i_columnas(i_siguiente(texto, i));
    }
    return columnas;
}

std::wstring a_la_izquierda(std::wstring_view texto, size_t columnas) {
    const size_t ocupadas = columnas_de(texto);
    return std::wstring(texto) + std::wstring(columnas > ocupadas ? columnas - ocupadas : 0, L' ');
}

std::wstring a_la_derecha(std::wstring_view texto, size_t columnas) {
    const size_t ocupadas = columnas_de(texto);
    return std::wstring(columnas > ocupadas ? columnas - ocupadas : 0, L' ') + std::wstring(texto);
}

std::wstring abreviado(std::wstring_view ruta, size_t columnas) {
    if (columnas_de(ruta) <= columnas) {
        return std::wstring(ruta);
    }
    const std::wstring entera(ruta);
    // The abbreviation counts UTF-16 units; wide characters take more columns than units.
    const size_t de_mas = columnas_de(ruta) > ruta.size() ? columnas_de(ruta) - ruta.size() : 0;
    const size_t maximo = columnas > de_mas ? columnas - de_mas : 0;
    std::wstring corta = entera;
    if (lumodir::cdir::es_path_valido(entera) && maximo <= 0xFFFF) {
        corta = lumodir::cdir::ruta_abreviada_con_logitud_maxima(entera, static_cast<unsigned short>(maximo));
    }
    return cortado(corta, columnas);
}

std::wstring cortado(std::wstring_view texto, size_t columnas) {
    if (columnas_de(texto) <= columnas) {
        return std::wstring(texto);
    }
    std::wstring cortada;
    size_t ocupadas = 0;
    for (size_t i = 0; i < texto.size();) {
        const size_t antes = i;
        ocupadas += i_columnas(i_siguiente(texto, i));
        if (ocupadas + 3 > columnas) {
            break;
        }
        cortada.append(texto, antes, i - antes);
    }
    return columnas < 3 ? cortada : cortada + L"...";
}

std::wstring con_miles(unsigned long long numero) {
    std::wstring cifras = std::to_wstring(numero);
    for (size_t i = cifras.size(); i > 3;) {
        i -= 3;
        cifras.insert(i, di(","));
    }
    return cifras;
}

std::wstring plural(unsigned long long numero, frase singular, frase plural) {
    return con_miles(numero) + L" " + di(numero == 1 ? singular : plural);
}

std::wstring tamanyo_legible(unsigned long long bytes) {
    static constexpr const wchar_t* unidades[] = {L"KB", L"MB", L"GB", L"TB", L"PB", L"EB"};
    if (bytes < 1024) {
        return plural(bytes, "byte", "bytes");
    }
    size_t unidad = 0;
    unsigned long long decimas = bytes / 1024 * 10 + bytes % 1024 * 10 / 1024;
    while (decimas >= 10240 && unidad + 1 < std::size(unidades)) {
        decimas /= 1024;
        ++unidad;
    }
    std::wstring texto = std::to_wstring(decimas / 10);
    if (decimas < 1000) {
        texto += di(".") + std::to_wstring(decimas % 10);
    }
    return texto + L" " + unidades[unidad];
}

std::wstring en_minusculas(std::wstring_view texto) {
    std::wstring resultado(texto);
    for (wchar_t& c : resultado) {
        if (c >= L'A' && c <= L'Z') {
            c = static_cast<wchar_t>(c - L'A' + L'a');
        }
    }
    return resultado;
}

std::wstring en_mayusculas(std::wstring_view texto) {
    std::wstring resultado(texto);
    CharUpperBuffW(resultado.data(), static_cast<unsigned long>(resultado.size()));
    return resultado;
}

bool iguales_sin_caja(std::wstring_view a, std::wstring_view b) {
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                                TRUE) == CSTR_EQUAL;
}

std::wstring sin_blancos(std::wstring_view texto) {
    const size_t primero = texto.find_first_not_of(L" \t");
    if (primero == texto.npos) {
        return {};
    }
    return std::wstring(texto.substr(primero, texto.find_last_not_of(L" \t") - primero + 1));
}

}  // namespace mando
