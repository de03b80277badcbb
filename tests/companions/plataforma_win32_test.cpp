// The platform door on Windows: the active code page, letter case of 8-bit text, texts of error codes.
#include "companions/plataforma.hpp"

#include "apoyo/apoyo.hpp"
#include "apoyo/paginas.hpp"
#include "companions/lumospy.h"
#include "companions/msglocal.h"
#include "companions/msglocal.hpp"
#include "companions/sistema.hpp"

using namespace apoyo;
using namespace interno;

// Taken before the fixture puts its recorder in that place.
static void (*const duerme_de_veras)(unsigned long) = propias::duerme_ms;

namespace {

texto_w ancho(const texto_a& texto) {
    const std::size_t largo = plataforma::ansi_a_utf16(texto, nullptr, 0);
    texto_w resultado(largo, L'#');
    EXPECT_EQ(plataforma::ansi_a_utf16(texto, resultado.data(), largo), largo);
    return resultado;
}

texto_a estrecho(const texto_w& texto) {
    const std::size_t largo = plataforma::utf16_a_ansi(texto, nullptr, 0);
    texto_a resultado(largo, '#');
    EXPECT_EQ(plataforma::utf16_a_ansi(texto, resultado.data(), largo), largo);
    return resultado;
}

}  // namespace

TEST(plataforma, cada_byte_de_1252_va_y_vuelve) {
    const en_pagina p(1252);
    for (unsigned b = 0; b < 256; ++b) {
        const texto_a byte(1, static_cast<char>(b));
        const texto_w unidad = ancho(byte);
        ASSERT_EQ(unidad.size(), 1u) << b;
        EXPECT_EQ(u8(unidad), de_cp1252(byte))
            << b;  // the five that it leaves undefined are control characters
        EXPECT_EQ(estrecho(unidad), byte) << b;
    }
}

TEST(plataforma, lo_que_la_pagina_no_tiene_es_su_caracter_por_defecto) {
    const en_pagina p(1252);
    struct fila {
        const char* texto;
        const char* bytes;
    };
    const fila filas[] = {
        {"abc", "abc"},
        {"\u00f1\u20ac\u0153", "\xF1\x80\x9C"},
        {"\u4e2d", "?"},
        {"\U0001F600", "??"},           // a pair is two units
        {"a\u0101b", "a?b"},            // a with macron: never "a"
        {"\u2032", "?"},                // prime: never an apostrophe
        {"\uFF21\uFF0F\uFF3C", "???"},  // full-width A, slash and backslash: above all never a separator
        {"\u2215\u2044\u29F5", "???"},  // other slashes
        {"\u03b1\u03a9", "??"},         // Greek letters: never "a"
        {"\u2260\u221e", "??"},         // never "=" nor "8"
        {"\u00a0", "\xA0"},             // the blanks stay what they are
        {"\u2003", "?"},
    };
    for (const fila& f : filas) {
        EXPECT_EQ(estrecho(w(f.texto)), f.bytes) << f.texto;
    }
    EXPECT_EQ(estrecho(texto_w(1, static_cast<wchar_t>(0xD800))), "?");  // half a pair
}

namespace {

struct fila_invalida {
    unsigned pagina;
    const char* bytes;
    const char* texto;
};

// Code page 932 (Japanese): two-byte characters, lead bytes from 0x81 on. Every byte of 1252 is valid.
const fila_invalida filas_invalidas[] = {
    {.pagina = 932, .bytes = "\x83\x65\x83\x58\x83\x67", .texto = "\u30C6\u30B9\u30C8"},
    {.pagina = 932, .bytes = "\x83", .texto = "\uFFFD"},
    {.pagina = 932, .bytes = "a\x83", .texto = "a\uFFFD"},
    {.pagina = 932,
     .bytes = "\x83\\dir",
     .texto = "\u30BD"
              "dir"},  // 0x5C is the second half of a character here
    {.pagina = 932,
     .bytes = "\x83\x20z\x83\x65",
     .texto = "\uFFFD z\u30C6"},  // what follows a bad lead byte stays
    {.pagina = CP_UTF8, .bytes = "\xC3\xB1", .texto = "\u00F1"},
    {.pagina = CP_UTF8, .bytes = "a\xC3", .texto = "a\uFFFD"},
    {.pagina = CP_UTF8,
     .bytes = "\xF0"
              "C:",
     .texto = "\uFFFD"
              "C:"},  // what is cut short takes nothing with it
    {.pagina = CP_UTF8, .bytes = "\xE8\xA1\\", .texto = "\uFFFD\uFFFD\\"},
    {.pagina = CP_UTF8, .bytes = "\xF0\x9F\x98\x80", .texto = "\U0001F600"},
};

}  // namespace

TEST(plataforma, bytes_que_no_valen_dan_el_caracter_de_sustitucion) {
    for (const fila_invalida& caso : filas_invalidas) {
        const sustituye pagina(plataforma::pagina_de_codigos, caso.pagina);
        EXPECT_EQ(u8(ancho(caso.bytes)), caso.texto) << caso.pagina;
    }
}

TEST(plataforma, solo_se_escribe_lo_que_cabe) {
    const en_pagina p(1252);
    wchar_t unidades[8] = {L'#', L'#', L'#', L'#', L'#', L'#', L'#', L'#'};
    EXPECT_EQ(plataforma::ansi_a_utf16("abc", unidades, 3), 3u);
    EXPECT_EQ(unidades[2], L'c');
    EXPECT_EQ(unidades[3], L'#');
    char bytes[8] = {'#', '#', '#', '#', '#', '#', '#', '#'};
    EXPECT_EQ(plataforma::utf16_a_ansi(L"abc", bytes, 3), 3u);
    EXPECT_EQ(bytes[3], '#');
    // Too little room: the length it takes, and nothing past the room.
    EXPECT_EQ(plataforma::ansi_a_utf16("abcdef", unidades, 4), 6u);
    EXPECT_EQ(unidades[4], L'#');
    EXPECT_EQ(plataforma::utf16_a_ansi(L"abcdef", bytes, 4), 6u);
    EXPECT_EQ(bytes[4], '#');
    EXPECT_EQ(plataforma::ansi_a_utf16("", unidades, 8), 0u);
    EXPECT_EQ(plataforma::utf16_a_ansi(L"", bytes, 8), 0u);
    EXPECT_EQ(plataforma::ansi_a_utf16(vista_a("a\0b", 3), unidades, 8), 3u);  // a NUL is a character
    EXPECT_EQ(unidades[2], L'b');
}

TEST(plataforma, la_caja_de_cada_byte_es_la_de_la_pagina) {
    const en_pagina p(1252);
    unsigned cambian = 0;
    for (unsigned b = 0; b < 256; ++b) {
        const char original = static_cast<char>(b);
        char menor = original;
        char mayor = original;
        plataforma::minusculas_ansi(&menor, 1);
        plataforma::mayusculas_ansi(&mayor, 1);
        // The system's own answer on the wide character, where the code page holds it.
        wchar_t unidad = ancho(texto_a(1, original))[0];
        wchar_t menor_u = unidad, mayor_u = unidad;
        ::LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, &unidad, 1, &menor_u, 1, nullptr, nullptr, 0);
        ::LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, &unidad, 1, &mayor_u, 1, nullptr, nullptr, 0);
        const texto_a menor_a = estrecho(texto_w(1, menor_u));
        const texto_a mayor_a = estrecho(texto_w(1, mayor_u));
        EXPECT_EQ(menor, menor_a == "?" && b != '?' ? original : menor_a[0]) << b;
        EXPECT_EQ(mayor, mayor_a == "?" && b != '?' ? original : mayor_a[0]) << b;
        cambian += menor != mayor ? 1 : 0;
    }
    // 26 ASCII, 30 Latin-1 (no multiplication sign) and 4 of the upper part, each in two cases.
    EXPECT_EQ(cambian, 2u * (26 + 30 + 4));
}

namespace {

// A character in another case, as the system tells it of the wide one: where the code page holds that in as many bytes.
texto_a en_otra_caja(const texto_a& caracter, DWORD caja) {
    texto_w unidades = ancho(caracter), otras = unidades;
    const int num = static_cast<int>(unidades.size());
    ::LCMapStringEx(LOCALE_NAME_INVARIANT, caja, unidades.data(), num, otras.data(), num, nullptr, nullptr,
                    0);
    const texto_a bytes = estrecho(otras);
    return bytes.size() == caracter.size() && ancho(bytes) == otras ? bytes : caracter;
}

}  // namespace

TEST(plataforma, la_caja_de_cada_caracter_de_cada_pagina) {
    for (const unsigned pagina :
         {874u, 932u, 936u, 949u, 950u, 1250u, 1251u, 1253u, 1254u, 1255u, 1256u, 1257u, 1258u}) {
        const sustituye p(plataforma::pagina_de_codigos, pagina);
        bool iniciales[256] = {};
        plataforma::bytes_iniciales(iniciales);
        for (unsigned b = 1; b < 256; ++b) {
            for (unsigned segundo = iniciales[b] ? 0x40 : 0; segundo <= (iniciales[b] ? 0xFEu : 0u);
                 ++segundo) {
                texto_a caracter(1, static_cast<char>(b));
                if (iniciales[b]) {
                    caracter += static_cast<char>(segundo);
                    if (!plataforma::es_caracter_doble(caracter[0], caracter[1])) {
                        continue;
                    }
                }
                texto_a menor = caracter, mayor = caracter;
                plataforma::minusculas_ansi(menor.data(), menor.size());
                plataforma::mayusculas_ansi(mayor.data(), mayor.size());
                ASSERT_EQ(menor, en_otra_caja(caracter, LCMAP_LOWERCASE))
                    << pagina << " " << b << " " << segundo;
                ASSERT_EQ(mayor, en_otra_caja(caracter, LCMAP_UPPERCASE))
                    << pagina << " " << b << " " << segundo;
            }
        }
    }
}

TEST(plataforma, los_bytes_iniciales_de_cada_pagina) {
    struct tramo {
        unsigned desde, hasta;
    };
    const struct {
        unsigned pagina;
        std::vector<tramo> tramos;
    } filas[] = {{932, {{0x81, 0x9F}, {0xE0, 0xFC}}},
                 {936, {{0x81, 0xFE}}},
                 {949, {{0x81, 0xFE}}},
                 {950, {{0x81, 0xFE}}},
                 {1252, {}},
                 {CP_UTF8, {}}};
    for (const auto& f : filas) {
        const sustituye p(plataforma::pagina_de_codigos, f.pagina);
        bool iniciales[256] = {};
        EXPECT_EQ(plataforma::bytes_iniciales(iniciales), !f.tramos.empty()) << f.pagina;
        for (unsigned b = 0; b < 256; ++b) {
            const bool lo_es = std::any_of(f.tramos.begin(), f.tramos.end(),
                                           [&](const tramo& t) { return b >= t.desde && b <= t.hasta; });
            EXPECT_EQ(iniciales[b], lo_es) << f.pagina << " " << b;
        }
    }
}

// What lies behind the text is not its own, even where it would complete a character.
TEST(plataforma, un_texto_acaba_donde_se_dice) {
    const struct {
        unsigned pagina;
        const char* texto;
        std::size_t longitud;
    } filas[] = {{1252, "AB", 1},           {CP_UTF8, "AB", 1},   {CP_UTF8, "\xC3\x91", 1},
                 {CP_UTF8, "Q\xC3\x91", 2}, {932, "\x82\x60", 1}, {932, "Q\x82\x60", 2}};
    for (const auto& f : filas) {
        SCOPED_TRACE(testing::Message() << f.pagina << " " << f.texto);
        const sustituye p(plataforma::pagina_de_codigos, f.pagina);
        for (const auto cambia : {plataforma::minusculas_ansi, plataforma::mayusculas_ansi}) {
            texto_a texto = f.texto;
            cambia(texto.data(), f.longitud);
            EXPECT_EQ(texto.substr(f.longitud), texto_a(f.texto).substr(f.longitud));
            EXPECT_EQ(texto.size(), texto_a(f.texto).size());
        }
        const std::size_t dobles = static_cast<unsigned char>(f.texto[f.longitud - 1]) < 0x80 ? 0 : 1;
        const texto_w unidades = ancho(texto_a(f.texto, f.longitud));
        EXPECT_EQ(unidades.size(), f.longitud);
        EXPECT_EQ(std::count(unidades.begin(), unidades.end(), L'\uFFFD'),
                  static_cast<std::ptrdiff_t>(dobles));
    }
}

TEST(plataforma, la_caja_de_un_texto_entero) {
    const en_pagina p(1252);
    const texto_a original =
        cp1252("AbZz09_[`{\u00c1\u00f1\u00d1\u00ff\u0178\u0152\u0160\u00b5\u00df\u00d7\u00f7");
    texto_a menor = original;
    plataforma::minusculas_ansi(menor.data(), menor.size());
    EXPECT_EQ(de_cp1252(menor),
              "abzz09_[`{\u00e1\u00f1\u00f1\u00ff\u00ff\u0153\u0161\u00b5\u00df\u00d7\u00f7");
    texto_a mayor = original;
    plataforma::mayusculas_ansi(mayor.data(), mayor.size());
    // The micro sign and the sharp s have no upper case in the code page, and stay.
    EXPECT_EQ(de_cp1252(mayor),
              "ABZZ09_[`{\u00c1\u00d1\u00d1\u0178\u0178\u0152\u0160\u00b5\u00df\u00d7\u00f7");
    char nada = '#';
    plataforma::minusculas_ansi(&nada, 0);
    EXPECT_EQ(nada, '#');
}

namespace {

struct fila_caja {
    unsigned pagina;
    const char* original;
    const char* menor;
    const char* mayor;
};

const fila_caja filas_caja[] = {
    {.pagina = CP_UTF8, .original = "A\u00d1\u00f1z", .menor = "a\u00f1\u00f1z", .mayor = "A\u00d1\u00d1Z"},
    {.pagina = CP_UTF8,
     .original = "\u0416\u0436\u4e2dB",
     .menor = "\u0436\u0436\u4e2db",
     .mayor = "\u0416\u0416\u4e2dB"},
    {.pagina = CP_UTF8, .original = "\uff21\uff41", .menor = "\uff41\uff41", .mayor = "\uff21\uff21"},
    {.pagina = CP_UTF8, .original = "\u023a", .menor = "\u023a", .mayor = "\u023a"},  // 3 bytes lower
    {.pagina = CP_UTF8, .original = "\U0001F600Q", .menor = "\U0001F600q", .mayor = "\U0001F600Q"},
    {.pagina = CP_UTF8, .original = "\xC3Q\xF1q", .menor = "\xC3q\xF1q", .mayor = "\xC3Q\xF1Q"},  // not valid
    {.pagina = CP_UTF8, .original = "Q\xC3", .menor = "q\xC3", .mayor = "Q\xC3"},                 // cut short
    // Code page 932: the full-width A, and a character whose second byte is a plain "A".
    {.pagina = 932, .original = "\x82\x60\x82\x81", .menor = "\x82\x81\x82\x81", .mayor = "\x82\x60\x82\x60"},
    {.pagina = 932,
     .original = "\x83\x41"
                 "A",
     .menor = "\x83\x41"
              "a",
     .mayor = "\x83\x41"
              "A"},
    {.pagina = 932, .original = "Q\x83", .menor = "q\x83", .mayor = "Q\x83"},
};

}  // namespace

TEST(plataforma, la_caja_de_caracteres_de_varios_bytes) {
    for (const fila_caja& f : filas_caja) {
        const sustituye pagina(plataforma::pagina_de_codigos, f.pagina);
        texto_a menor = f.original;
        plataforma::minusculas_ansi(menor.data(), menor.size());
        EXPECT_EQ(menor, f.menor) << f.pagina << " " << f.original;
        texto_a mayor = f.original;
        plataforma::mayusculas_ansi(mayor.data(), mayor.size());
        EXPECT_EQ(mayor, f.mayor) << f.pagina << " " << f.original;
    }
}

TEST(plataforma, el_texto_de_un_codigo_es_una_linea_sin_su_final) {
    for (const DWORD codigo :
         {DWORD{ERROR_FILE_NOT_FOUND}, DWORD{ERROR_PATH_NOT_FOUND}, DWORD{ERROR_ACCESS_DENIED},
          DWORD{ERROR_SHARING_VIOLATION}, DWORD{ERROR_DISK_FULL}}) {
        const std::string texto = u8(strgetlasterror_texto_cod_error(codigo).ver());
        EXPECT_GT(texto.size(), 5u) << codigo;
        EXPECT_NE(texto, std::to_string(codigo));
        EXPECT_EQ(texto.find_last_not_of(" \r\n"), texto.size() - 1) << codigo;
        // The very text of the system, less its end.
        wchar_t sistema_dice[512];
        constexpr DWORD ingles = 0x0409;  // the messages of the tests
        constexpr DWORD como = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
        DWORD largo = ::FormatMessageW(como, nullptr, codigo, ingles, sistema_dice, 512, nullptr);
        if (largo == 0) {
            largo = ::FormatMessageW(como, nullptr, codigo, 0, sistema_dice, 512, nullptr);
        }
        EXPECT_EQ(u8(vista_w(sistema_dice, largo)).rfind(texto, 0), 0u) << codigo;
    }
    EXPECT_NE(u8(strgetlasterror_texto_cod_error(ERROR_FILE_NOT_FOUND).ver()),
              u8(strgetlasterror_texto_cod_error(ERROR_ACCESS_DENIED).ver()));
}

TEST(plataforma, un_codigo_sin_texto_es_su_numero) {
    EXPECT_EQ(u8(strgetlasterror_texto_cod_error(0xDEADBEEF).ver()), "3735928559");
    EXPECT_EQ(u8(strgetlasterror_texto_cod_error(0x20000001).ver()), "536870913");
}

namespace {

// A system that has its texts in some languages, and writes down in which it was asked.
std::vector<DWORD> g_pedidos;
DWORD g_idioma_que_hay;
texto_w g_texto;
DWORD WINAPI texto_fingido(DWORD como, LPCVOID fuente, DWORD codigo, DWORD idioma, LPWSTR destino,
                           DWORD sitio, char** argumentos) {
    EXPECT_EQ(como, static_cast<DWORD>(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS));
    EXPECT_EQ(fuente, nullptr);
    EXPECT_EQ(codigo, 5u);
    EXPECT_EQ(argumentos, nullptr);
    EXPECT_TRUE(sitio == 512 || sitio == 32'767) << sitio;  // with more the call fails
    g_pedidos.push_back(idioma);
    if (idioma != g_idioma_que_hay) {
        ::SetLastError(ERROR_RESOURCE_LANG_NOT_FOUND);
        return 0;
    }
    if (g_texto.size() >= sitio) {
        ::SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    g_texto.copy(destino, g_texto.size());
    destino[g_texto.size()] = L'\0';
    return static_cast<DWORD>(g_texto.size());
}

}  // namespace

TEST(plataforma, los_textos_del_sistema_van_en_la_lengua_de_los_mensajes) {
    const sustituye textos(sistema.FormatMessageW, texto_fingido);
    const unsigned long de_antes = msglocal_dame_idioma();
    constexpr DWORD ninguna = 1;  // the system has no text at all
    const struct {
        unsigned long ranura;
        DWORD hay;
        std::vector<DWORD> pedidos;
    } filas[] = {
        {0, 0x0C0A, {0x0C0A}},
        {0, 0x080A, {0x0C0A, 0x080A}},
        {0, 0, {0x0C0A, 0x080A, 0}},
        {6, 0x080A, {0x080A}},
        {24, 0x0C0A, {0x080A, 0x0C0A}},
        {8, 0x0409, {0x0409}},
        {8, 0, {0x0409, 0}},
        {2, 0x0416, {0x0416}},
        {3, 0x0416, {0x0816, 0x0416}},
        {13, 0x0407, {0x0407}},
        {39, ninguna, {0x0411, 0}},
        {14, 0x0C0A, {0x0C0A}},  // a slot without a name speaks Spanish below the last regional Spanish
        {40, 0x0409, {0x0409}},
    };
    for (const auto& f : filas) {
        for (const std::size_t largo : {5u, 511u, 512u, 600u, 32'766u}) {
            SCOPED_TRACE(testing::Message() << "slot " << f.ranura << ", " << f.hay << ", " << largo);
            msglocal_establece_idioma(f.ranura);
            g_idioma_que_hay = f.hay;
            g_texto = texto_w(largo - 3, L'\u00F1') + L".\r\n";
            g_pedidos.clear();
            EXPECT_EQ(u8(strgetlasterror_texto_cod_error(5).ver()),
                      f.hay == ninguna ? "5" : u8(texto_w(largo - 3, L'\u00F1') + L"."));
            std::vector<DWORD> pedidos = f.pedidos;
            if (largo >= 512 && f.hay != ninguna) {
                pedidos.push_back(f.hay);  // once more with room
            }
            EXPECT_EQ(g_pedidos, pedidos);
        }
    }
    msglocal_establece_idioma(de_antes);
}

TEST(plataforma, una_variable_de_entorno_y_su_falta) {
    ::_wputenv(L"LUMODIR_PRUEBA=\u00f1 \u4e2d");
    EXPECT_EQ(u8(plataforma::variable_de_entorno(L"LUMODIR_PRUEBA").ver()), "\u00f1 \u4e2d");
    ::_wputenv(L"LUMODIR_PRUEBA=");
    ::SetLastError(77);
    EXPECT_TRUE(plataforma::variable_de_entorno(L"LUMODIR_PRUEBA").es_nula());
    EXPECT_EQ(::GetLastError(), 77u);
    // The process's own, of which the C runtime's copy knows nothing.
    ASSERT_TRUE(::SetEnvironmentVariableW(L"LUMODIR_PRUEBA", L"\u65E5"));
    EXPECT_EQ(u8(plataforma::variable_de_entorno(L"LUMODIR_PRUEBA").ver()), "\u65E5");
    ASSERT_TRUE(::SetEnvironmentVariableW(L"LUMODIR_PRUEBA", L""));
    const cadena_w vacia = plataforma::variable_de_entorno(L"LUMODIR_PRUEBA");
    EXPECT_FALSE(vacia.es_nula());
    EXPECT_TRUE(vacia.empty());
    for (const std::size_t largo : {1u, 510u, 511u, 512u, 513u, 32'766u}) {
        const texto_w valor(largo, L'\u00F1');
        ASSERT_TRUE(::SetEnvironmentVariableW(L"LUMODIR_PRUEBA", valor.c_str()));
        EXPECT_EQ(u8(plataforma::variable_de_entorno(L"LUMODIR_PRUEBA").ver()), u8(valor)) << largo;
    }
    ASSERT_TRUE(::SetEnvironmentVariableW(L"LUMODIR_PRUEBA", nullptr));
    EXPECT_TRUE(plataforma::variable_de_entorno(L"LUMODIR_PRUEBA").es_nula());
}

namespace {

// Another thread sets a longer value between the question for its size and the next one.
unsigned g_veces;
DWORD WINAPI valor_que_crece(LPCWSTR nombre, LPWSTR destino, DWORD sitio) {
    EXPECT_EQ(u8(nombre), "CRECE");
    constexpr DWORD largos[] = {600, 900, 5000, 5000};
    const DWORD largo = largos[g_veces < 3 ? g_veces++ : 3];
    if (sitio <= largo) {
        return largo + 1;
    }
    std::fill(destino, destino + largo, L'x');
    destino[largo] = L'\0';
    return largo;
}

}  // namespace

TEST(plataforma, una_variable_que_crece_se_pregunta_hasta_que_cabe) {
    const sustituye crece(sistema.GetEnvironmentVariableW, valor_que_crece);
    g_veces = 0;
    EXPECT_EQ(u8(plataforma::variable_de_entorno(L"CRECE").ver()), std::string(5000, 'x'));
}

namespace {

// A console that refuses what is too long, as older systems do, and keeps what it was given.
std::vector<texto_w> g_consola;
BOOL WINAPI es_consola(HANDLE, DWORD* modo) {
    *modo = 0;
    return TRUE;
}
BOOL WINAPI escribe_consola(HANDLE, const void* texto, DWORD unidades, DWORD* escritas, void*) {
    if (unidades * sizeof(wchar_t) > 26'000) {
        ::SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return FALSE;
    }
    g_consola.emplace_back(static_cast<const wchar_t*>(texto), unidades);
    *escritas = unidades;
    return TRUE;
}

}  // namespace

TEST(plataforma, un_texto_largo_va_a_la_consola_en_trozos_que_no_parten_pares) {
    const sustituye modo(sistema.GetConsoleMode, es_consola);
    const sustituye escribe(sistema.WriteConsoleW, escribe_consola);
    const texto_w par = w("\U0001F600");
    const texto_w media(1, static_cast<wchar_t>(0xD83D));
    std::vector<texto_w> textos = {{}, L"x", par, media, texto_w(8192, L'a'), texto_w(8193, L'a')};
    for (const std::size_t antes : {8189u, 8190u, 8191u, 8192u, 8193u, 16'382u, 16'383u, 20'480u}) {
        textos.push_back(texto_w(antes, L'a') + par + texto_w(9000, L'z'));
        textos.push_back(texto_w(antes, L'a') + media + texto_w(9000, L'z'));  // half a pair goes as it is
    }
    texto_w pares;
    for (int i = 0; i < 20'000; ++i) {
        pares += par;
    }
    textos.push_back(pares);
    textos.push_back(L"a" + pares);
    for (const texto_w& texto : textos) {
        SCOPED_TRACE(texto.size());
        g_consola.clear();
        plataforma::escribe_error_estandar(texto);
        texto_w todo;
        for (const texto_w& trozo : g_consola) {
            ASSERT_FALSE(trozo.empty());
            const bool parte = (trozo.back() & 0xFC00) == 0xD800 &&
                               todo.size() + trozo.size() < texto.size() &&
                               (texto[todo.size() + trozo.size()] & 0xFC00) == 0xDC00;
            EXPECT_FALSE(parte) << "a pair is cut in two after " << todo.size() + trozo.size();
            todo += trozo;
        }
        EXPECT_TRUE(todo == texto);
        // One more than the fewest at most, for pairs that lie across a border.
        EXPECT_LE(g_consola.size(), (texto.size() + 8191) / 8192 + (texto.find(par) != texto.npos ? 1 : 0));
        EXPECT_TRUE(texto.size() <= 8192 || g_consola.front().size() >= 8191);
        EXPECT_TRUE(g_consola.empty() || g_consola.front().size() <= 8192);
    }
}

TEST(plataforma, el_error_estandar_no_parte_un_par) {
    // Text goes out in stretches of 128 units: the pair would lie across the first border.
    const std::string par = "\xF0\x9F\x98\x80";
    std::string largas;  // of three bytes each
    for (int i = 0; i < 127; ++i) {
        largas += "\u4e2d";
    }
    for (const std::string& texto :
         {std::string(127, 'a') + par + std::string(130, 'z'), largas + par + largas + largas,
          largas + largas + "\u4e2d\u4e2d\u4e2d"}) {
        testing::internal::CaptureStderr();
        plataforma::escribe_error_estandar(w(texto));
        EXPECT_EQ(testing::internal::GetCapturedStderr(), texto);
    }
}

TEST(plataforma, el_idioma_del_usuario_es_el_de_sus_ventanas) {
    EXPECT_EQ(plataforma::idioma_del_usuario(), ::GetUserDefaultUILanguage());
}

namespace {

BOOL WINAPI no_se_pregunta(HANDLE, DWORD*) {
    ADD_FAILURE() << "a stream that is none is asked whether it is a console";
    return FALSE;
}

}  // namespace

// A program with windows alone has no such stream, or one that never opened.
TEST(plataforma, sin_error_estandar_no_se_escribe_ni_se_pierde_el_ultimo_error) {
    HANDLE de_antes = ::GetStdHandle(STD_ERROR_HANDLE);
    const unsigned long long vivos = lumospy_bloques_vivos();
    const sustituye modo(sistema.GetConsoleMode, no_se_pregunta);
    HANDLE const ningunas[] = {nullptr, INVALID_HANDLE_VALUE};
    for (HANDLE ninguna : ningunas) {
        ASSERT_TRUE(::SetStdHandle(STD_ERROR_HANDLE, ninguna));
        ::SetLastError(4711);
        plataforma::escribe_error_estandar(L"ñ Ω\n");
        const DWORD codigo = ::GetLastError();
        ASSERT_TRUE(::SetStdHandle(STD_ERROR_HANDLE, de_antes));
        EXPECT_EQ(codigo, 4711u) << ninguna;
    }
    EXPECT_EQ(lumospy_bloques_vivos(), vivos);
}

TEST(plataforma, tras_faltar_el_error_estandar_se_escribe_otra_vez) {
    HANDLE de_antes = ::GetStdHandle(STD_ERROR_HANDLE);
    ASSERT_TRUE(::SetStdHandle(STD_ERROR_HANDLE, nullptr));
    plataforma::escribe_error_estandar(L"lost");
    ASSERT_TRUE(::SetStdHandle(STD_ERROR_HANDLE, de_antes));
    testing::internal::CaptureStderr();
    plataforma::escribe_error_estandar(L"x");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "x");
}

TEST(plataforma, dormir_tarda_lo_que_se_pide) {
    const ULONGLONG antes = ::GetTickCount64();
    duerme_de_veras(100);
    EXPECT_GE(::GetTickCount64() - antes, 80u) << "the clock advances in steps of up to 16 ms";
    EXPECT_TRUE(toma_esperas().empty()) << "the recorder was asked instead";
}
