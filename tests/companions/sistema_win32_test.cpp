// The calls of the system's own library, each as one that answers with a code: what they refuse.
#include "companions/sistema.hpp"

#include "apoyo/apoyo.hpp"

using namespace interno;

TEST(sistema, un_nombre_que_no_cabe_en_su_cuenta_no_se_abre) {
    // A text is counted in 16 bits of bytes: these names would be opened as shorter ones.
    for (const std::size_t largo : {0x7FFFu, 0x8000u, 0x10001u}) {
        const std::wstring nombre(largo, L'a');
        ::SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(propias::abre_entrada(nombre.c_str(), nullptr, FILE_READ_ATTRIBUTES, FILE_SHARE_READ, 0, 0),
                  INVALID_HANDLE_VALUE)
            << largo;
        EXPECT_EQ(::GetLastError(), DWORD{ERROR_FILENAME_EXCED_RANGE}) << largo;
    }
}

TEST(sistema, el_nombre_de_lo_que_no_esta_abierto_no_se_dice) {
    const wchar_t* nombre = L"as it was";
    const wchar_t* const antes = nombre;
    DWORD unidades = 7;
    alignas(8) char bufer[256];
    ::SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(propias::nombre_de_fichero(nullptr, bufer, sizeof bufer, &nombre, &unidades));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(nombre, antes);
    EXPECT_EQ(unidades, 7u);
}

TEST(sistema, lo_que_se_pregunta_de_un_fichero_abierto) {
    wchar_t ruta[MAX_PATH];
    ASSERT_NE(::GetModuleFileNameW(nullptr, ruta, MAX_PATH), 0u);
    const fichero_abierto este(
        ::CreateFileW(ruta, FILE_READ_ATTRIBUTES, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(este.valida());
    EXPECT_EQ(este.codigo_de_fallo(), DWORD{ERROR_SUCCESS});
    BY_HANDLE_FILE_INFORMATION datos;
    ASSERT_TRUE(::GetFileInformationByHandle(este.get(), &datos));
    unsigned long long numero = 0;
    EXPECT_EQ(propias::numero_de_fichero(este.get(), &numero), TRUE);
    EXPECT_EQ(numero, static_cast<unsigned long long>(datos.nFileIndexHigh) << 32 | datos.nFileIndexLow);
    const wchar_t* nombre = nullptr;
    DWORD unidades = 0;
    alignas(8) char bufer[2048];
    EXPECT_EQ(propias::nombre_de_fichero(este.get(), bufer, sizeof bufer, &nombre, &unidades), TRUE);
    const std::wstring_view dicho(nombre, unidades), pedido(ruta);
    EXPECT_EQ(dicho.substr(dicho.find_last_of(L'\\')), pedido.substr(pedido.find_last_of(L'\\')));
}

TEST(sistema, sigue_enlaces_el_que_no_es_de_windows) {
    const bool es_de_otro = ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    EXPECT_EQ(propias::sigue_enlaces(), es_de_otro ? TRUE : FALSE);
}

namespace {

int g_cierres = 0;
BOOL WINAPI cierra_contando(HANDLE) {
    ++g_cierres;
    ::SetLastError(ERROR_INVALID_HANDLE);
    return g_cierres % 2;
}

}  // namespace

TEST(sistema, una_manija_se_cierra_una_vez) {
    const apoyo::sustituye cerrar(sistema.CloseHandle, cierra_contando);
    const auto una = reinterpret_cast<HANDLE>(0x44), otra = reinterpret_cast<HANDLE>(0x48);
    g_cierres = 0;
    {
        manija_comun m(una);
        manija_comun& la_misma = m;
        m = std::move(la_misma);
        EXPECT_EQ(m.get(), una);
        EXPECT_EQ(g_cierres, 0);
        m = manija_comun(otra);
        EXPECT_EQ(g_cierres, 1);
        ::SetLastError(ERROR_BUSY);
        EXPECT_FALSE(m.cierra()) << "as the system answers";
        EXPECT_EQ(::GetLastError(), DWORD{ERROR_BUSY});
        EXPECT_EQ(m.get(), INVALID_HANDLE_VALUE);
        EXPECT_TRUE(m.cierra()) << "nothing was left to close";
        EXPECT_EQ(g_cierres, 2);
        EXPECT_EQ(manija_comun(una).suelta(), una);
        EXPECT_TRUE(manija_comun(nullptr).cierra());
    }
    EXPECT_EQ(g_cierres, 2);
}

// A failure is one even where the system has no code for it.
TEST(sistema, lo_que_no_se_abre_tiene_un_codigo) {
    EXPECT_EQ(fichero_abierto().codigo_de_fallo(), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(fichero_abierto::ninguno(ERROR_BUSY).codigo_de_fallo(), DWORD{ERROR_BUSY});
    EXPECT_EQ(fichero_abierto::ninguno(ERROR_SUCCESS).codigo_de_fallo(), DWORD{ERROR_GEN_FAILURE});
    const struct {
        DWORD ultimo, codigo;
    } filas[] = {{ERROR_SUCCESS, ERROR_GEN_FAILURE}, {1, 1}, {ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED}};
    for (const auto& fila : filas) {
        ::SetLastError(fila.ultimo);
        EXPECT_EQ(i_ultimo_error(), fila.codigo);
        const fichero_abierto nada(INVALID_HANDLE_VALUE);
        EXPECT_EQ(nada.codigo_de_fallo(), fila.codigo);
    }
}
