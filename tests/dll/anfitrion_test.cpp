// The DLL from a host's side, through the import library: its C++ runtime is another than the host's.
#include <gtest/gtest.h>
#include <windows.h>

#include <stdexcept>
#include <string>

#include "cdir.h"
#include "companions/arr.h"
#include "companions/buclrein.h"
#include "companions/error_interno.h"
#include "companions/lmaviso.h"
#include "companions/lumospy.h"
#include "companions/msglocal.h"
#include "companions/widestr.h"
#include "lumodir.h"
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

// As another C++ compiler's runtime raises its own, which this program's `catch` does not see either.
TEST(anfitrion, una_excepcion_de_otro_compilador_no_cruza_la_dll_ni_se_lleva_nada) {
    static int llamadas;
    llamadas = 0;
    static constexpr auto lanza = [] {
        ++llamadas;
        const ULONG_PTR argumentos[] = {0x19930520, 0, 0, 0};
        ::RaiseException(0xE06D7363, EXCEPTION_NONCONTINUABLE, 4, argumentos);
    };
    wchar_t temporales[MAX_PATH];
    ASSERT_GT(::GetTempPathW(MAX_PATH, temporales), 0u);
    const std::wstring tenido =
        std::wstring(temporales) + L"lumo_tenido_" + std::to_wstring(::GetCurrentProcessId());
    const HANDLE nadie_mas = ::CreateFileW(tenido.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                           FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    ASSERT_NE(nadie_mas, INVALID_HANDLE_VALUE);
    const unsigned long long antes = lumospy_bloques_vivos();
    error_interno_establece_receptor(
        [](const char*, const char*, unsigned long, const wchar_t*, void*) { lanza(); }, nullptr);
    lmaviso_establece_receptor([](const wchar_t*, void*) { lanza(); }, nullptr);
    buclrein_establece_receptor(
        [](const wchar_t*, unsigned long, void*) -> unsigned short { return lanza(), 1; }, nullptr);
    buclrein_establece_politica(0, 0);
    for (int n = 1; n <= 5; ++n) {
        EXPECT_EQ(cdir_path_valido_UNICODE(L"name.", 1), 0);
        EXPECT_EQ(arr_NumElemsCADENA(nullptr), 0u);
        EXPECT_EQ(cdir_borra_fichero_UNICODE(tenido.c_str()), 0);  // asks
        EXPECT_GE(llamadas, 3 * n);
        ArrCADENA* lista = arr_CreaCADENA(0);
        arr_AppendCADENA(lista, "b");
        arr_AppendCADENA(lista, "a");
        arr_QSortCADENA(lista, [](const char*, const char*) -> int { return lanza(), 0; });
        EXPECT_EQ(arr_NumElemsCADENA(lista), 2u);
        arr_DestruyeCADENA(&lista);
        EXPECT_EQ(lumospy_bloques_vivos(), antes);
    }
    error_interno_establece_receptor(nullptr, nullptr);
    lmaviso_establece_receptor(nullptr, nullptr);
    buclrein_establece_receptor(nullptr, nullptr);
    buclrein_establece_politica(5, 100);
    ::CloseHandle(nadie_mas);
}

namespace {

// A variable of the process, put back at the end.
class variable {
public:
    explicit variable(const wchar_t* nombre) : nombre_(nombre) {
        antes_.resize(32'767);
        antes_.resize(::GetEnvironmentVariableW(nombre, antes_.data(), 32'767));
    }
    ~variable() { ::SetEnvironmentVariableW(nombre_, antes_.c_str()); }
    variable(const variable&) = delete;
    variable& operator=(const variable&) = delete;
    void pon(const std::wstring& valor) { ASSERT_TRUE(::SetEnvironmentVariableW(nombre_, valor.c_str())); }

private:
    const wchar_t* nombre_;
    std::wstring antes_;
};

}  // namespace

// As the process has them now: set by Windows' own call, and by a C runtime that is not the library's.
TEST(anfitrion, path_y_temp_son_los_del_proceso) {
    variable path(L"PATH");
    using putenv_ancho = int (*)(const wchar_t*);
    const HMODULE otro_runtime = ::LoadLibraryW(L"ucrtbase.dll");
    ASSERT_NE(otro_runtime, nullptr);
    const auto putenv_de_otro =
        reinterpret_cast<putenv_ancho>(reinterpret_cast<void*>(::GetProcAddress(otro_runtime, "_wputenv")));
    ASSERT_NE(putenv_de_otro, nullptr);
    path.pon(L"C:\\uno;C:\\\u65E5");
    EXPECT_EQ(lumodir::lista(lumodir_directorios_del_path()).vector(),
              (std::vector<std::wstring>{L"C:\\uno", L"C:\\\u65E5"}));
    ASSERT_EQ(putenv_de_otro(L"PATH=C:\\tres"), 0);
    EXPECT_EQ(lumodir::lista(lumodir_directorios_del_path()).vector(),
              std::vector<std::wstring>{L"C:\\tres"});
    ASSERT_TRUE(::SetEnvironmentVariableW(L"PATH", nullptr));
    EXPECT_TRUE(lumodir::lista(lumodir_directorios_del_path()).empty());

    variable temp(L"TEMP");
    variable tmp(L"TMP");
    wchar_t de_siempre[MAX_PATH];
    ASSERT_GT(::GetTempPathW(MAX_PATH, de_siempre), 0u);
    const std::wstring otro =
        std::wstring(de_siempre) + L"lumo_\u00F1_" + std::to_wstring(::GetCurrentProcessId());
    ASSERT_TRUE(::CreateDirectoryW(otro.c_str(), nullptr));
    temp.pon(otro);
    tmp.pon(otro);
    wchar_t* fichero = lumodir_creaFicheroTemporal();
    EXPECT_EQ(std::wstring(fichero).substr(0, otro.size() + 1), otro + L"\\");
    EXPECT_TRUE(::DeleteFileW(fichero));
    widestr_nousar_destruye(&fichero, "prueba", 1);
    EXPECT_TRUE(::RemoveDirectoryW(otro.c_str()));
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
