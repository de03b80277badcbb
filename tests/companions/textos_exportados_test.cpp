// Copying and freeing texts as a host does it.
#include "abi/exportacion.hpp"
#include "apoyo/apoyo.hpp"
#include "companions/cadena.hpp"
#include "companions/lumospy.h"
#include "companions/lumostr.h"
#include "companions/widestr.h"

using namespace apoyo;
using namespace interno;

TEST(textos_exportados, una_copia_es_nueva) {
    const unsigned long long antes = lumospy_bloques_vivos();
    for (const char* texto : {"", "x", "ñandú \u4E2D \U0001F600"}) {
        const texto_w original = w(texto);
        wchar_t* copia = widestr_nousar_copia(original.c_str(), "prueba", 1);
        EXPECT_NE(copia, original.c_str());
        EXPECT_EQ(u8(copia), texto);
        EXPECT_EQ(lumospy_bloques_vivos(), antes + 1);
        widestr_nousar_destruye(&copia, "prueba", 1);
        EXPECT_EQ(copia, nullptr);
        EXPECT_EQ(lumospy_bloques_vivos(), antes);
    }
}

TEST(textos_exportados, copiar_null_se_informa_y_da_un_texto_vacio) {
    wchar_t* copia = widestr_nousar_copia(nullptr, "prueba", 5);
    EXPECT_EQ(toma_el_informe(), (informe{"(cadena) != NULL", "prueba", 5, "(NULL)"}));
    EXPECT_EQ(toma(copia), "");
}

TEST(textos_exportados, se_entrega_a_quien_lo_quiere) {
    wchar_t* sitio = nullptr;
    entrega(&sitio, vista_w(L"ñ"));
    EXPECT_EQ(toma(sitio), "ñ");
    cadena_w texto(vista_w(L"u"));
    const wchar_t* const bloque = texto.c_str();
    entrega(&sitio, std::move(texto));
    EXPECT_EQ(sitio, bloque);  // no copy
    EXPECT_EQ(toma(sitio), "u");
    entrega<wchar_t>(nullptr, vista_w(L"x"));
    entrega<wchar_t>(nullptr, cadena_w(vista_w(L"x")));
}

TEST(textos_exportados, destruir_limpia_la_variable) {
    char* estrecho = cadena_a(vista_a("x")).suelta();
    lumostr_destruye(&estrecho);
    EXPECT_EQ(estrecho, nullptr);
    estrecho = cadena_a(vista_a("x")).suelta();
    lumostr_destruye_opcional(&estrecho);
    EXPECT_EQ(estrecho, nullptr);
    wchar_t* ancho = cadena_w(vista_w(L"x")).suelta();
    widestr_nousar_destruye_opcional(&ancho, "prueba", 1);
    EXPECT_EQ(ancho, nullptr);
}

TEST(textos_exportados, una_variable_null_solo_vale_en_las_opcionales) {
    char* estrecho = nullptr;
    wchar_t* ancho = nullptr;
    lumostr_destruye_opcional(&estrecho);
    widestr_nousar_destruye_opcional(&ancho, "prueba", 1);
    ESPERA_INFORMES();
    lumostr_destruye(&estrecho);
    EXPECT_EQ(toma_el_informe().expresion, "(*cadena) != NULL");
    widestr_nousar_destruye(&ancho, "prueba", 8);
    EXPECT_EQ(toma_el_informe(), (informe{"(*cadena) != NULL", "prueba", 8, "(NULL)"}));
}

TEST(textos_exportados, un_puntero_null_se_informa_siempre) {
    lumostr_destruye(nullptr);
    EXPECT_EQ(toma_el_informe().etiqueta, "lumodir (LUMODIR.DLL)");
    lumostr_destruye_opcional(nullptr);
    EXPECT_EQ(toma_el_informe().expresion, "(cadena) != NULL");
    widestr_nousar_destruye(nullptr, "prueba", 1);
    EXPECT_EQ(toma_el_informe(), (informe{"(cadena) != NULL", "prueba", 1, "(NULL)"}));
    widestr_nousar_destruye_opcional(nullptr, nullptr, 2);  // a NULL tag is an empty one
    EXPECT_EQ(toma_el_informe(), (informe{"(cadena) != NULL", "", 2, "(NULL)"}));
}
