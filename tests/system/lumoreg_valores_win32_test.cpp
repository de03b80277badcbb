// Registry values: writing, reading as text in both flavours, listing, deleting, and every call failing.
#include <functional>

#include "companions/lumostr.h"
#include "companions/widestr.h"
#include "lumoreg.h"
#include "registro_de_pruebas.hpp"

using namespace apoyo;
using namespace interno;

namespace {

using valores_lumoreg = con_registro;
using textos = std::vector<std::string>;

std::string en_bytes(const texto_w& texto) {
    return {reinterpret_cast<const char*>(texto.data()), texto.size() * sizeof(wchar_t)};
}

// "0:" failed and the out string was not touched; "1:" and the text otherwise.
template <class C>
std::string con_su_texto(const std::function<unsigned short(C**)>& lee) {
    C intacta[] = {C('?'), C(0)};
    C* texto = intacta;
    const unsigned short leido = lee(&texto);
    EXPECT_LE(leido, 1);
    return leido == 1 ? "1:" + toma(texto) : texto == intacta ? "0:" : "0: touched";
}
std::string lee_u(const texto_w& ruta, const wchar_t* nombre) {
    return con_su_texto<wchar_t>(
        [&](wchar_t** texto) { return lumoreg_lee_cadena_u(raiz_de_pruebas, ruta.c_str(), nombre, texto); });
}
std::string lee_ex(unsigned long vista, const texto_w& ruta, const wchar_t* nombre) {
    return con_su_texto<wchar_t>([&](wchar_t** texto) {
        return lumoreg_lee_cadena_ex_u(vista, raiz_de_pruebas, ruta.c_str(), nombre, texto);
    });
}
std::string lee_8(const texto_a& ruta, const char* nombre) {
    return con_su_texto<char>(
        [&](char** texto) { return lumoreg_lee_cadena(raiz_de_pruebas, ruta.c_str(), nombre, texto); });
}

}  // namespace

TEST_F(valores_lumoreg, se_escribe_una_cadena_con_su_terminador) {
    crea(bajo("ñ"));
    const texto_w ruta = bajo("ñ");
    for (const std::string& texto :
         {std::string(), std::string("plain"), std::string("año 日本 😀"), std::string(40'000, 'x')}) {
        const texto_w dato = w(texto);
        const std::string bytes = en_bytes(dato) + std::string(2, '\0');
        EXPECT_EQ(lumoreg_establece_cadena_u(raiz_de_pruebas, ruta.c_str(), L"útil", dato.c_str()), 1);
        EXPECT_EQ(lee(ruta, L"útil").tipo, static_cast<DWORD>(REG_SZ));
        EXPECT_EQ(lee(ruta, L"útil").bytes, bytes);
        EXPECT_EQ(lumoreg_establece_cadena_expand_u(raiz_de_pruebas, ruta.c_str(), L"útil", dato.c_str()), 1);
        EXPECT_EQ(lee(ruta, L"útil").tipo, static_cast<DWORD>(REG_EXPAND_SZ));
        EXPECT_EQ(lee(ruta, L"útil").bytes, bytes);
        for (const unsigned long vista : {0ul, 1ul, 2ul}) {
            const std::wstring_view nombres[] = {L"0", L"1", L"2"};
            const wchar_t* nombre = nombres[vista].data();
            EXPECT_EQ(lumoreg_establece_cadena_en_vista_u(vista, raiz_de_pruebas, ruta.c_str(), nombre,
                                                          dato.c_str()),
                      1);
            EXPECT_EQ(lee(ruta, nombre).tipo, static_cast<DWORD>(REG_SZ));
            EXPECT_EQ(lee(ruta, nombre).bytes, bytes);
            EXPECT_EQ(lee_ex(vista, ruta, nombre), "1:" + texto);
        }
    }
    EXPECT_EQ(lumoreg_establece_cadena_u(raiz_de_pruebas, ruta.c_str(), L"", L"default"), 1);
    EXPECT_EQ(lee_u(ruta, L""), "1:default");
    EXPECT_EQ(lee_8(bajo_a("ñ"), ""), "1:default");
}

TEST_F(valores_lumoreg, se_escribe_un_numero_de_32_bits) {
    crea(bajo("ñ"));
    for (const unsigned long numero : {0ul, 1ul, 0x00420041ul, 0x80000000ul, 0xFFFFFFFFul}) {
        std::string bytes;
        for (int i = 0; i < 4; ++i) {
            bytes.push_back(static_cast<char>(numero >> 8 * i & 0xFF));
        }
        EXPECT_EQ(lumoreg_establece_ulong_u(raiz_de_pruebas, bajo("ñ").c_str(), L"año", numero), 1);
        EXPECT_EQ(lee(bajo("ñ"), L"año").tipo, static_cast<DWORD>(REG_DWORD));
        EXPECT_EQ(lee(bajo("ñ"), L"año").bytes, bytes);
        EXPECT_EQ(lumoreg_establece_ulong(raiz_de_pruebas, bajo_a("ñ").c_str(), "\xFA", numero), 1);
        EXPECT_EQ(lee(bajo("ñ"), L"ú").tipo, static_cast<DWORD>(REG_DWORD));
        EXPECT_EQ(lee(bajo("ñ"), L"ú").bytes, bytes);
    }
}

TEST_F(valores_lumoreg, escribir_no_crea_la_clave) {
    const texto_w ruta = bajo("missing");
    EXPECT_EQ(lumoreg_establece_cadena_u(raiz_de_pruebas, ruta.c_str(), L"v", L"t"), 0);
    EXPECT_EQ(lumoreg_establece_cadena_expand_u(raiz_de_pruebas, ruta.c_str(), L"v", L"t"), 0);
    EXPECT_EQ(lumoreg_establece_cadena_en_vista_u(1, raiz_de_pruebas, ruta.c_str(), L"v", L"t"), 0);
    EXPECT_EQ(lumoreg_establece_ulong_u(raiz_de_pruebas, ruta.c_str(), L"v", 1), 0);
    EXPECT_EQ(lumoreg_establece_ulong(raiz_de_pruebas, bajo_a("missing").c_str(), "v", 1), 0);
    EXPECT_FALSE(existe(ruta));
}

TEST_F(valores_lumoreg, un_valor_se_borra_y_el_que_falta_se_informa) {
    crea(bajo("año"));
    pon(bajo("año"), L"ñ", REG_SZ, texto_w(L"t"));
    lumoreg_borra_valor_clave_u(raiz_de_pruebas, bajo("año").c_str(), L"ñ");
    EXPECT_FALSE(lee(bajo("año"), L"ñ").existe);
    ESPERA_DETALLES();
    lumoreg_borra_valor_clave_u(raiz_de_pruebas, bajo("año").c_str(), L"ñ");
    ESPERA_DETALLES("error == ERROR_SUCCESS [Software\\lumodir-pruebas\\año]");
    lumoreg_borra_valor_clave_u(raiz_de_pruebas, bajo("missing").c_str(), L"ñ");
    ESPERA_DETALLES();
}

// Whatever the type, the bytes are taken for text: UTF-16 in one flavour, the active code page in the other.
TEST_F(valores_lumoreg, todo_valor_se_lee_como_texto) {
    using namespace std::string_literals;
    crea(bajo("k"));
    const struct {
        const char* que;
        DWORD tipo;
        std::string bytes;
        std::string ancha;
        std::string de_8bits;  // the system converts the three string types for this flavour, no other
    } filas[] = {
        {"string", REG_SZ, en_bytes(w("año")) + "\0\0"s, "año", "año"},
        {"no terminator", REG_SZ, en_bytes(w("año")), "año", "año"},
        {"empty string", REG_SZ, "\0\0"s, "", ""},
        {"no bytes", REG_SZ, "", "", ""},
        {"no bytes, binary", REG_BINARY, "", "", ""},
        {"text after the terminator", REG_SZ, en_bytes(w("a")) + "\0\0"s + en_bytes(w("b")), "a", "a"},
        {"expandable", REG_EXPAND_SZ, en_bytes(w("%TEMP%")) + "\0\0"s, "%TEMP%", "%TEMP%"},
        {"multi", REG_MULTI_SZ, en_bytes(w("a")) + "\0\0"s + en_bytes(w("b")) + "\0\0\0\0"s, "a", "a"},
        {"dword", REG_DWORD, "A\0B\0"s, "AB", "A"},
        {"dword of bytes", REG_DWORD, "\x41\x42\x43\x44", "\u4241\u4443", "ABCD"},
        {"big endian", REG_DWORD_BIG_ENDIAN, "\0A\0B"s, "\u4100\u4200", ""},
        {"qword", REG_QWORD, "A\0B\0C\0D\0"s, "ABCD", "A"},
        {"binary", REG_BINARY, "\xF1\0"s, "ñ", "ñ"},
        {"binary bytes", REG_BINARY, "\xF1\xE9\x80\x41", "\uE9F1\u4180", "ñé€A"},
        {"odd bytes", REG_BINARY, "A\0B"s, "AB", "A"},
        {"one byte", REG_BINARY, "\xF1", "ñ", "ñ"},
        {"no type", REG_NONE, "A\0B\0"s, "AB", "A"},
        {"a type of someone's own", 0x12345, "A\0B\0"s, "AB", "A"},
    };
    for (const auto& fila : filas) {
        SCOPED_TRACE(fila.que);
        pon(bajo("k"), L"año", fila.tipo, fila.bytes);
        EXPECT_EQ(lee_u(bajo("k"), L"año"), "1:" + fila.ancha);
        EXPECT_EQ(lee_8(bajo_a("k"), "a\xF1o"), "1:" + fila.de_8bits);
        for (const unsigned long vista : {0ul, 1ul, 2ul}) {
            EXPECT_EQ(lee_ex(vista, bajo("k"), L"año"), "1:" + fila.ancha);
        }
    }
}

TEST_F(valores_lumoreg, los_bytes_de_8_bits_vienen_como_son) {
    crea(bajo("k"));
    std::string bytes;
    for (int b = 1; b < 256; ++b) {
        bytes.push_back(static_cast<char>(b));
    }
    pon(bajo("k"), L"v", REG_BINARY, bytes);
    char* texto = nullptr;
    ASSERT_EQ(lumoreg_lee_cadena(raiz_de_pruebas, bajo_a("k").c_str(), "v", &texto), 1);
    EXPECT_EQ(std::string(texto), bytes);
    lumostr_destruye(&texto);
}

TEST_F(valores_lumoreg, un_valor_enorme_se_lee_entero) {
    crea(bajo("k"));
    for (const std::size_t unidades : {511u, 512u, 513u, 1023u, 1024u, 500'000u}) {
        const texto_w enorme(unidades, L'\u00F1');
        pon(bajo("k"), L"v", REG_SZ, enorme);  // without terminator
        pon(bajo("k"), L"small", REG_SZ, texto_w(L"s"));
        EXPECT_EQ(lee_u(bajo("k"), L"v"), "1:" + u8(enorme.c_str())) << unidades;
        EXPECT_EQ(lee_8(bajo_a("k"), "v"), "1:" + u8(enorme.c_str())) << unidades;
        EXPECT_EQ(lee_u(bajo("k"), L"small"), "1:s");
        EXPECT_EQ(lee_8(bajo_a("k"), "small"), "1:s");
    }
}

TEST_F(valores_lumoreg, lo_que_falta_da_0_y_no_toca_la_salida) {
    crea(bajo("empty"));
    crea(bajo("k"));
    pon(bajo("k"), L"v", REG_SZ, texto_w(L"t"));
    for (const std::string_view ruta : {"missing", "empty", "k"}) {
        EXPECT_EQ(lee_u(bajo(ruta), L"absent"), "0:") << ruta;
        EXPECT_EQ(lee_8(bajo_a(ruta), "absent"), "0:") << ruta;
        EXPECT_EQ(lee_ex(1, bajo(ruta), L"absent"), "0:") << ruta;
    }
}

namespace {

tabla_sistema g_registro_de_valores;
unsigned g_lecturas = 0;
DWORD g_bytes_con_basura = 0;

// Answers a few bytes and leaves garbage in the rest of the room.
LSTATUS WINAPI lee_con_basura_w(HKEY, const wchar_t*, DWORD*, DWORD*, BYTE* datos, DWORD* bytes) {
    ++g_lecturas;
    std::fill(datos, datos + *bytes, BYTE('X'));
    *bytes = g_bytes_con_basura;
    return ERROR_SUCCESS;
}
LSTATUS WINAPI lee_con_basura_a(HKEY, const char*, DWORD*, DWORD*, BYTE* datos, DWORD* bytes) {
    return lee_con_basura_w(nullptr, nullptr, nullptr, nullptr, datos, bytes);
}
LSTATUS WINAPI enumera_con_basura(HKEY, DWORD indice, wchar_t* nombre, DWORD* longitud, DWORD*, DWORD* tipo,
                                  BYTE* datos, DWORD* bytes) {
    std::fill(nombre, nombre + *longitud, L'N');
    std::fill(datos, datos + *bytes, BYTE('X'));
    *longitud = 2;
    *bytes = g_bytes_con_basura;
    *tipo = indice == 0 ? REG_SZ : REG_MULTI_SZ;
    return ERROR_SUCCESS;
}

}  // namespace

TEST_F(valores_lumoreg, nunca_se_lee_mas_alla_de_los_bytes_del_valor) {
    crea(bajo("k"));
    pon(bajo("k"), L"aaaa", REG_SZ, texto_w(50, L'a'));
    pon(bajo("k"), L"bbbb", REG_MULTI_SZ, texto_w(50, L'b'));
    const sustituye w(sistema.RegQueryValueExW, lee_con_basura_w);
    const sustituye a(sistema.RegQueryValueExA, lee_con_basura_a);
    const sustituye e(sistema.RegEnumValueW, enumera_con_basura);
    const struct {
        DWORD bytes;
        std::string ancha;
        std::string de_8bits;
    } filas[] = {
        {0, "", ""}, {1, "X", "X"}, {2, "\u5858", "XX"}, {3, "\u5858X", "XXX"}, {4, "\u5858\u5858", "XXXX"}};
    for (const auto& fila : filas) {
        SCOPED_TRACE(fila.bytes);
        g_bytes_con_basura = fila.bytes;
        EXPECT_EQ(lee_u(bajo("k"), L"aaaa"), "1:" + fila.ancha);
        EXPECT_EQ(lee_8(bajo_a("k"), "aaaa"), "1:" + fila.de_8bits);
        ArrCADENA_u* nombres = nullptr;
        ArrPunteroConTipo* datos = nullptr;
        ASSERT_EQ(
            lumoreg_lee_valores_cadena_clave_ex_u(0, raiz_de_pruebas, bajo("k").c_str(), &nombres, &datos),
            1);
        for (unsigned long i = 0; i < 2; ++i) {
            EXPECT_EQ(u8(arr_GetCADENA_u(nombres, i)), "NN");
            auto* piezas = static_cast<ArrCADENA_u*>(arr_GetPunteroConTipo(datos, i));
            ASSERT_EQ(arr_NumElemsCADENA_u(piezas), i == 1 && fila.bytes == 0 ? 0u : 1u);
            if (arr_NumElemsCADENA_u(piezas) == 1) {
                EXPECT_EQ(u8(arr_GetCADENA_u(piezas, 0)), fila.ancha);
            }
            arr_DestruyeCADENA_u(&piezas);
        }
        arr_DestruyeCADENA_u(&nombres);
        arr_DestruyeEstructurasConTipo(&datos, [](void**) {});
    }
}

TEST_F(valores_lumoreg, una_clave_sin_valores_no_se_lee) {
    crea(bajo("k"));
    g_lecturas = 0;
    const sustituye w(sistema.RegQueryValueExW, lee_con_basura_w);
    const sustituye a(sistema.RegQueryValueExA, lee_con_basura_a);
    EXPECT_EQ(lee_u(bajo("k"), L"v"), "0:");
    EXPECT_EQ(lee_8(bajo_a("k"), "v"), "0:");
    EXPECT_EQ(lee_ex(2, bajo("k"), L"v"), "0:");
    EXPECT_EQ(g_lecturas, 0u);
}

namespace {

// Somebody writes a longer value between the counting and the reading.
LSTATUS WINAPI cuenta_antes_de_crecer(HKEY clave, wchar_t* c, DWORD* lc, DWORD* r, DWORD* s, DWORD* ms,
                                      DWORD* mc, DWORD* v, DWORD* mv, DWORD* md, DWORD* ls, FILETIME* f) {
    const LSTATUS resultado =
        g_registro_de_valores.RegQueryInfoKeyW(clave, c, lc, r, s, ms, mc, v, mv, md, ls, f);
    pon(bajo("k"), L"v", REG_SZ, texto_w(5000, L'\u00F1'));
    return resultado;
}
LSTATUS WINAPI cuenta_de_menos(HKEY, char*, DWORD*, DWORD*, DWORD*, DWORD*, DWORD*, DWORD* v, DWORD*,
                               DWORD* md, DWORD*, FILETIME*) {
    *v = 1;
    *md = 1;
    return ERROR_SUCCESS;
}

}  // namespace

TEST_F(valores_lumoreg, un_valor_que_crece_mientras_tanto_se_lee_entero) {
    crea(bajo("k"));
    pon(bajo("k"), L"v", REG_SZ, texto_w(L"t"));
    g_registro_de_valores = sistema;
    const sustituye w(sistema.RegQueryInfoKeyW, cuenta_antes_de_crecer);
    const sustituye a(sistema.RegQueryInfoKeyA, cuenta_de_menos);
    const texto_w esperado(5000, L'\u00F1');
    EXPECT_EQ(lee_u(bajo("k"), L"v"), "1:" + u8(esperado.c_str()));
    EXPECT_EQ(lee_8(bajo_a("k"), "v"), "1:" + u8(esperado.c_str()));
}

namespace {

struct respuesta_rara {
    const char* que;
    LSTATUS error;
    DWORD bytes;  // that it says; 0: as many as there is room
};
const respuesta_rara* g_rara = nullptr;

LSTATUS WINAPI lee_rara_w(HKEY, const wchar_t*, DWORD*, DWORD*, BYTE*, DWORD* bytes) {
    ++g_lecturas;
    *bytes = g_rara->bytes == 0 ? *bytes : g_rara->bytes;
    return g_rara->error;
}
LSTATUS WINAPI lee_rara_a(HKEY, const char*, DWORD*, DWORD*, BYTE*, DWORD* bytes) {
    return lee_rara_w(nullptr, nullptr, nullptr, nullptr, nullptr, bytes);
}

}  // namespace

// Only who says how much more room it takes is asked again.
TEST_F(valores_lumoreg, una_lectura_que_falla_no_se_repite) {
    crea(bajo("k"));
    pon(bajo("k"), L"v", REG_SZ, texto_w(L"t"));
    const sustituye w(sistema.RegQueryValueExW, lee_rara_w);
    const sustituye a(sistema.RegQueryValueExA, lee_rara_a);
    const respuesta_rara filas[] = {{"more, but no longer", ERROR_MORE_DATA, 0},
                                    {"more, but shorter", ERROR_MORE_DATA, 1},
                                    {"gone, longer", ERROR_FILE_NOT_FOUND, 100'000},
                                    {"gone", ERROR_FILE_NOT_FOUND, 0}};
    for (const respuesta_rara& fila : filas) {
        g_rara = &fila;
        g_lecturas = 0;
        EXPECT_EQ(lee_u(bajo("k"), L"v"), "0:") << fila.que;
        EXPECT_EQ(lee_8(bajo_a("k"), "v"), "0:") << fila.que;
        EXPECT_EQ(g_lecturas, 2u) << fila.que;
    }
}

// ---- listing

namespace {

// Each value as "name=piece|piece".
textos lista(unsigned long vista, const texto_w& ruta) {
    ArrCADENA_u* nombres = nullptr;
    ArrPunteroConTipo* datos = nullptr;
    EXPECT_EQ(lumoreg_lee_valores_cadena_clave_ex_u(vista, raiz_de_pruebas, ruta.c_str(), &nombres, &datos),
              1);
    EXPECT_EQ(arr_NumElemsCADENA_u(nombres), arr_NumElemsPuntero(datos));
    textos resultado;
    for (unsigned long i = 0; i < arr_NumElemsCADENA_u(nombres); ++i) {
        auto* piezas = static_cast<ArrCADENA_u*>(arr_GetPunteroConTipo(datos, i));
        std::string linea = u8(arr_GetCADENA_u(nombres, i)) + "=";
        for (unsigned long k = 0; k < arr_NumElemsCADENA_u(piezas); ++k) {
            linea += (k == 0 ? "" : "|") + u8(arr_GetCADENA_u(piezas, k));
        }
        resultado.push_back(linea);
    }
    arr_DestruyeCADENA_u(&nombres);
    arr_DestruyeEstructurasConTipo(
        &datos, [](void** registro) { arr_DestruyeCADENA_u(reinterpret_cast<ArrCADENA_u**>(registro)); });
    EXPECT_EQ(nombres, nullptr);
    EXPECT_EQ(datos, nullptr);
    return resultado;
}

}  // namespace

TEST_F(valores_lumoreg, un_valor_de_cualquier_largo_se_lee_entero) {
    for (std::size_t unidades = 500; unidades <= 520; ++unidades) {
        crea(bajo("k"));
        const texto_w texto = texto_w(unidades - 1, L'x') + L'y';
        pon(bajo("k"), L"v", REG_SZ, texto);
        EXPECT_EQ(lee_u(bajo("k"), L"v"), "1:" + u8(texto.c_str())) << unidades;
        EXPECT_EQ(lee_8(bajo_a("k"), "v"), "1:" + u8(texto.c_str())) << unidades;
        EXPECT_EQ(lista(0, bajo("k")), textos{"v=" + u8(texto.c_str())}) << unidades;
    }
}

TEST_F(valores_lumoreg, se_listan_las_cadenas_y_las_multicadenas) {
    using namespace std::string_literals;
    crea(bajo("k"));
    EXPECT_EQ(lista(0, bajo("k")), textos{});
    const auto multi = [](std::string_view con_ceros) {
        texto_w texto = w(con_ceros);
        std::replace(texto.begin(), texto.end(), L'0', L'\0');
        return texto;
    };
    const std::string larguisimo(2000, 'n');
    pon(bajo("k"), L"a", REG_SZ, multi("año0"));
    pon(bajo("k"), L"b", REG_DWORD, "A\0B\0"s);
    pon(bajo("k"), L"c ñ", REG_MULTI_SZ, multi("uno0日本0tres00"));
    pon(bajo("k"), L"d", REG_EXPAND_SZ, multi("x0"));
    pon(bajo("k"), L"e", REG_MULTI_SZ, multi("a00b00"));
    pon(bajo("k"), L"f", REG_MULTI_SZ, multi("0a0b"));
    pon(bajo("k"), L"g", REG_BINARY, "x"s);
    pon(bajo("k"), L"h", REG_MULTI_SZ, multi("00"));
    pon(bajo("k"), L"i", REG_SZ, multi(""));
    pon(bajo("k"), L"j", REG_SZ, multi("no end"));
    pon(bajo("k"), w(larguisimo).c_str(), REG_SZ, multi("long name0"));
    pon(bajo("k"), L"", REG_SZ, multi("default0"));
    textos esperados = {"=default", "a=año",    "c ñ=uno|日本|tres",      "e=a", "f=a|b", "h=",
                        "i=",       "j=no end", larguisimo + "=long name"};
    for (const unsigned long vista : {0ul, 1ul, 2ul}) {
        textos obtenidos = lista(vista, bajo("k"));
        std::sort(obtenidos.begin(), obtenidos.end());  // the order of values is the system's
        EXPECT_EQ(obtenidos, esperados) << vista;
    }
}

TEST_F(valores_lumoreg, de_una_clave_que_no_se_abre_las_listas_quedan_nulas) {
    ArrCADENA_u* nombres = arr_CreaCADENA_u(0);
    ArrPunteroConTipo* datos = arr_CreaPunteroConTipo(0);
    ArrCADENA_u* otros_nombres = nombres;
    ArrPunteroConTipo* otros_datos = datos;
    EXPECT_EQ(lumoreg_lee_valores_cadena_clave_ex_u(0, raiz_de_pruebas, bajo("missing").c_str(),
                                                    &otros_nombres, &otros_datos),
              0);
    EXPECT_EQ(otros_nombres, nullptr);
    EXPECT_EQ(otros_datos, nullptr);
    arr_DestruyeCADENA_u(&nombres);
    arr_DestruyeEstructurasConTipo(&datos, [](void**) {});
}

namespace {

LSTATUS WINAPI enumera_salvo_uno(HKEY clave, DWORD indice, wchar_t* nombre, DWORD* ln, DWORD* r, DWORD* tipo,
                                 BYTE* datos, DWORD* ld) {
    return indice == 1 ? ERROR_MORE_DATA
                       : g_registro_de_valores.RegEnumValueW(clave, indice, nombre, ln, r, tipo, datos, ld);
}
LSTATUS WINAPI no_cuenta(HKEY, wchar_t*, DWORD*, DWORD*, DWORD*, DWORD*, DWORD*, DWORD*, DWORD*, DWORD*,
                         DWORD*, FILETIME*) {
    return ERROR_ACCESS_DENIED;
}

}  // namespace

TEST_F(valores_lumoreg, un_valor_que_no_se_deja_leer_se_informa_y_se_salta) {
    crea(bajo("año"));
    for (const wchar_t* nombre : {L"a", L"b", L"c"}) {
        pon(bajo("año"), nombre, REG_SZ, texto_w(L"t"));
    }
    g_registro_de_valores = sistema;
    {
        const sustituye e(sistema.RegEnumValueW, enumera_salvo_uno);
        EXPECT_EQ(lista(0, bajo("año")).size(), 2u);
        ESPERA_DETALLES("status == 0 [Software\\lumodir-pruebas\\año]");
    }
    const sustituye q(sistema.RegQueryInfoKeyW, no_cuenta);
    EXPECT_EQ(lista(0, bajo("año")), textos{});
    ESPERA_DETALLES("error == ERROR_SUCCESS [Software\\lumodir-pruebas\\año]");
    EXPECT_EQ(lee_u(bajo("año"), L"a"), "0:");
    ESPERA_DETALLES("error == ERROR_SUCCESS [Software\\lumodir-pruebas\\año]");
}
