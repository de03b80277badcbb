// The DLL from a host's side, through the import library: its C++ runtime is another than the host's.
#include <gtest/gtest.h>
#include <windows.h>

#include <stdexcept>
#include <string>

#include "companions/arr.h"
#include "companions/error_interno.h"
#include "companions/lumospy.h"
#include "companions/msglocal.h"
#include "companions/widestr.h"
#include "lumodir.hpp"

namespace {

struct fila_idioma {
    unsigned langid;
    unsigned long ranura;
};

}  // namespace

TEST(anfitrion, una_excepcion_del_anfitrion_no_cruza_la_dll) {
    static int llamadas;
    llamadas = 0;
    error_interno_establece_receptor(
        [](const char*, const char*, unsigned long, const wchar_t*, void*) {
            ++llamadas;
            throw std::runtime_error("no");
        },
        nullptr);
    EXPECT_EQ(arr_NumElemsCADENA(nullptr), 0u);
    ArrCADENA* lista = arr_CreaCADENA(0);
    for (const char* texto : {"b", "a", "c"}) {
        arr_AppendCADENA(lista, texto);
    }
    arr_QSortCADENA(lista, [](const char*, const char*) -> int { throw std::runtime_error("no"); });
    EXPECT_EQ(arr_NumElemsCADENA(lista), 3u);
    arr_DestruyeCADENA(&lista);
    EXPECT_EQ(llamadas, 1);
    error_interno_establece_receptor(nullptr, nullptr);
}

TEST(anfitrion, lo_que_da_la_dll_lo_libera_la_dll) {
    const unsigned long long antes = lumospy_bloques_vivos();
    wchar_t* texto = widestr_nousar_copia(L"ñandú", "prueba", 1);
    EXPECT_EQ(lumospy_bloques_vivos(), antes + 1);
    widestr_nousar_destruye(&texto, "prueba", 1);
    EXPECT_EQ(texto, nullptr);
    EXPECT_EQ(lumospy_bloques_vivos(), antes);
}

TEST(anfitrion, el_idioma_de_partida_es_el_de_windows) {
    // Nobody has set one in this process. The languages that a machine for tests may speak:
    const fila_idioma idiomas[] = {{0x0409, 8}, {0x0809, 8}, {0x0C0A, 0},
                                   {0x040A, 0}, {0x040C, 1}, {0x0407, 13}};
    const unsigned de_windows = ::GetUserDefaultUILanguage();
    for (const fila_idioma& fila : idiomas) {
        if (fila.langid == de_windows) {
            EXPECT_EQ(msglocal_dame_idioma(), fila.ranura);
            return;
        }
    }
    GTEST_SKIP() << "no row for the display language " << de_windows;
}

TEST(anfitrion, la_cara_de_cpp_vale_tambien_en_cpp20) {
    // Where a comparison is also tried the other way round. The rest of it is tested in C++17 (tests/hpp).
    static_assert(__cplusplus > 201703L);
    const lumodir::cadena a = lumodir::cdir::nombre_base_fichero(L"C:\\a\\b.txt");
    const lumodir::cadena b = lumodir::cdir::nombre_base_fichero(L"b.dat");
    EXPECT_TRUE(a == b);
    EXPECT_TRUE(a != lumodir::cdir::extension_fichero(L"b.dat"));
    EXPECT_TRUE(a == L"b");
    EXPECT_TRUE(a != std::wstring(L"c"));
    EXPECT_TRUE(lumodir::nomsfich::registro("A.b") == lumodir::nomsfich::registro("a", "B"));
}
