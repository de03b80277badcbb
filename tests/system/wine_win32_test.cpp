// The Wine question: what the registry says, asked once.
#include "system/wine.hpp"

#include "registro_de_pruebas.hpp"
#include "wine.h"

using namespace apoyo;

namespace {

class wine : public testing::Test {
protected:
    void SetUp() override { interno::i_olvida_si_estamos_en_wine(); }
    void TearDown() override { interno::i_olvida_si_estamos_en_wine(); }
};

std::vector<std::string> g_abiertas;

LSTATUS WINAPI abre_con_exito(HKEY raiz, const wchar_t* ruta, DWORD, REGSAM acceso, HKEY* clave) {
    EXPECT_EQ(raiz, HKEY_CURRENT_USER);
    EXPECT_EQ(acceso, static_cast<REGSAM>(KEY_QUERY_VALUE));
    g_abiertas.push_back(u8(ruta));
    *clave = HKEY_CURRENT_USER;  // closing it does nothing
    return ERROR_SUCCESS;
}
LSTATUS WINAPI no_abre(HKEY, const wchar_t* ruta, DWORD, REGSAM, HKEY*) {
    g_abiertas.push_back(u8(ruta));
    return ERROR_FILE_NOT_FOUND;
}

}  // namespace

TEST_F(wine, responde_lo_que_dice_la_clave_de_wine) {
    HKEY clave = nullptr;
    const bool existe =
        ::RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Wine", 0, KEY_QUERY_VALUE, &clave) == 0;
    ::RegCloseKey(clave);
    EXPECT_EQ(wine_estamos_en_wine(), existe ? 1 : 0);
    EXPECT_EQ(wine_estamos_en_wine(), existe ? 1 : 0);
}

TEST_F(wine, pregunta_al_registro_una_sola_vez) {
    sustituye abrir(interno::sistema.RegOpenKeyExW, abre_con_exito);
    g_abiertas.clear();
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(wine_estamos_en_wine(), 1);
    }
    EXPECT_EQ(g_abiertas, std::vector<std::string>{"Software\\Wine"});
}

TEST_F(wine, sin_la_clave_la_respuesta_es_no_y_tambien_se_guarda) {
    {
        sustituye abrir(interno::sistema.RegOpenKeyExW, no_abre);
        g_abiertas.clear();
        EXPECT_EQ(wine_estamos_en_wine(), 0);
        EXPECT_EQ(g_abiertas.size(), 3u);  // the plain access, then both views
    }
    sustituye abrir(interno::sistema.RegOpenKeyExW, abre_con_exito);
    g_abiertas.clear();
    EXPECT_EQ(wine_estamos_en_wine(), 0);
    EXPECT_EQ(g_abiertas.size(), 0u);
}
