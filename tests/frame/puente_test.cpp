// The bridge from an 8-bit twin to its wide function.
#include "frame/puente.hpp"

#include "apoyo/apoyo.hpp"
#include "companions/lumospy.h"

using namespace apoyo;
using namespace interno;

namespace {

std::string g_recibido;

unsigned short pregunta_ancha(const wchar_t* a, unsigned short b, const wchar_t* c) {
    g_recibido = u8(a) + "|" + std::to_string(b) + "|" + u8(c);
    return 7;
}
wchar_t* texto_ancho(const wchar_t* a) {
    return a == nullptr ? nullptr : cadena_w(a_vista(a)).suelta();
}
void nada_ancha(const wchar_t* a) {
    g_recibido = u8(a);
}
void* puntero_ancho(const wchar_t* a, void* b) {
    g_recibido = u8(a);
    return b;
}

}  // namespace

TEST(puente, convierte_los_textos_y_deja_pasar_lo_demas) {
    EXPECT_EQ(
        puente<pregunta_ancha>(cp1252("C:\\ñ").c_str(), static_cast<unsigned short>(3), cp1252("€").c_str()),
        7);
    EXPECT_EQ(g_recibido, "C:\\ñ|3|€");
    int x = 0;
    EXPECT_EQ(puente<puntero_ancho>(static_cast<const char*>("a"), static_cast<void*>(&x)), &x);
    EXPECT_EQ(g_recibido, "a");
}

TEST(puente, null_llega_como_null) {
    const char* nulo = nullptr;
    puente<pregunta_ancha>(nulo, static_cast<unsigned short>(0), static_cast<const char*>(""));
    EXPECT_EQ(g_recibido, "(NULL)|0|");
    EXPECT_EQ(puente<texto_ancho>(nulo), nullptr);
}

TEST(puente, un_texto_vuelve_nuevo_en_8_bits_y_el_ancho_se_libera) {
    const unsigned long long antes = lumospy_bloques_vivos();
    for (const texto_a& texto : {texto_a(), texto_a("x"), cp1252("ñ y €")}) {
        char* resultado = puente<texto_ancho>(texto.c_str());
        EXPECT_EQ(lumospy_bloques_vivos(), antes + 1);
        EXPECT_EQ(resultado, texto);
        toma(resultado);
    }
    texto_a largo;
    for (int i = 0; i < 5000; ++i) {
        largo += cp1252("ñ");
    }
    char* resultado = puente<texto_ancho>(largo.c_str());
    EXPECT_EQ(resultado, largo);
    toma(resultado);
}

TEST(puente, sirve_a_funciones_sin_resultado) {
    puente<nada_ancha>(cp1252("ñ").c_str());
    EXPECT_EQ(g_recibido, "ñ");
    puente<nada_ancha>(static_cast<const char*>("z"));
    EXPECT_EQ(g_recibido, "z");
}
