// The long-name question of the 8-bit current directory: the choice made once, and the shell's answer against that of KERNEL32.
#include "files/nombre_largo.hpp"

#include <shlobj.h>

#include "apoyo/apoyo.hpp"
#include "apoyo/directorio.hpp"
#include "cdir.h"
#include "files/programa.hpp"

using namespace apoyo;
using namespace interno;

namespace {

class nombre_largo : public testing::Test {
protected:
    void SetUp() override { i_olvida_nombre_largo(); }
    void TearDown() override { i_olvida_nombre_largo(); }
};

int g_busquedas = 0;
int g_llamadas = 0;
DWORD g_codigo_de_nombre = 0;

DWORD WINAPI contesta_con_codigo(const wchar_t*, wchar_t*, DWORD) {
    ++g_llamadas;
    ::SetLastError(g_codigo_de_nombre);
    return 0;
}
DWORD WINAPI contesta_siempre(const wchar_t*, wchar_t* largo, DWORD sitio) {
    ++g_llamadas;
    constexpr vista_w texto = L"X:\\a\u00F1o";
    if (sitio <= texto.size()) {
        return static_cast<DWORD>(texto.size() + 1);
    }
    std::copy(texto.begin(), texto.end(), largo);
    largo[texto.size()] = L'\0';
    ::SetLastError(ERROR_CALL_NOT_IMPLEMENTED);  // of some call before: a success says nothing
    return static_cast<DWORD>(texto.size());
}
funcion_nombre_largo no_la_hay() {
    ++g_busquedas;
    return nullptr;
}
funcion_nombre_largo falla_con_codigo() {
    ++g_busquedas;
    return contesta_con_codigo;
}
funcion_nombre_largo la_hay() {
    ++g_busquedas;
    return contesta_siempre;
}

std::string nombre_corto_de(const std::string& ruta) {
    wchar_t corto[1024];
    const DWORD largo = ::GetShortPathNameW(w(ruta).c_str(), corto, 1024);
    return u8(vista_w(corto, largo));
}

// "0" on failure, else the text.
std::string largo_de(const std::string& ruta) {
    wchar_t largo[1024];
    return i_nombre_largo(w(ruta).c_str(), largo, 1024) == 0 ? "0" : u8(largo);
}

}  // namespace

TEST_F(nombre_largo, kernel32_contesta_por_omision) {
    const directorio_temporal dir;
    const std::string ruta = dir.fichero("Long directory name\\ñandú long file name.text");
    EXPECT_EQ(largo_de(ruta), ruta);
    EXPECT_EQ(largo_de(nombre_corto_de(ruta)), ruta);
    EXPECT_EQ(largo_de(dir.ruta("missing")), "0");
    EXPECT_EQ(sistema.busca_nombre_largo(),
              reinterpret_cast<funcion_nombre_largo>(reinterpret_cast<void (*)()>(
                  ::GetProcAddress(::GetModuleHandleA("KERNEL32"), "GetLongPathNameW"))));
}

TEST_F(nombre_largo, se_elige_una_sola_vez) {
    const directorio_temporal dir;
    const std::string ruta = dir.fichero("Long directory name\\long file name.text");
    const struct {
        const char* que;
        funcion_nombre_largo (*busca)();
        DWORD codigo;
        int llamadas;  // of the one found, after three questions
        std::string respuesta;
    } filas[] = {
        {"missing", no_la_hay, 0, 0, ruta},
        {"not implemented", falla_con_codigo, ERROR_CALL_NOT_IMPLEMENTED, 1, ruta},
        {"another failure", falla_con_codigo, ERROR_FILE_NOT_FOUND, 3, "0"},
        {"works", la_hay, 0, 3, "X:\\año"},
    };
    for (const auto& fila : filas) {
        SCOPED_TRACE(fila.que);
        const sustituye buscar(sistema.busca_nombre_largo, fila.busca);
        i_olvida_nombre_largo();
        g_busquedas = g_llamadas = 0;
        g_codigo_de_nombre = fila.codigo;
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(largo_de(nombre_corto_de(ruta)), fila.respuesta);
        }
        EXPECT_EQ(g_busquedas, 1);
        EXPECT_EQ(g_llamadas, fila.llamadas);
    }
}

TEST_F(nombre_largo, el_escritorio_contesta_de_lo_que_existe_y_no_es_demasiado_largo) {
    const directorio_temporal dir;
    const std::string ruta = dir.fichero("Long directory name\\ñandú long file name.text");
    std::string larga(100, 'a');
    larga.append("\\").append(100, 'b').append("\\").append(60, 'c');
    dir.directorio(larga);
    const struct {
        const char* que;
        std::string ruta;
        std::string respuesta;
    } filas[] = {
        {"short form", nombre_corto_de(ruta), ruta},
        {"long form", ruta, ruta},
        {"parts to resolve",
         dir.ruta("Long directory name\\..\\Long directory name\\ñandú long file name.text"), ruta},
        {"a directory", nombre_corto_de(dir.ruta("Long directory name")), dir.ruta("Long directory name")},
        {"missing", dir.ruta("missing"), "0"},
        {"empty", "", "0"},
        {"too long", dir.ruta(larga), "0"},
    };
    const sustituye buscar(sistema.busca_nombre_largo, no_la_hay);
    i_olvida_nombre_largo();
    for (const auto& fila : filas) {
        EXPECT_EQ(largo_de(fila.ruta), fila.respuesta) << fila.que;
    }
    wchar_t largo[MAX_PATH];
    EXPECT_EQ(i_nombre_largo_del_escritorio(nullptr, largo, MAX_PATH), 0u);
    EXPECT_EQ(::GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}

TEST_F(nombre_largo, el_escritorio_dice_el_sitio_que_falta_y_no_escribe) {
    const directorio_temporal dir;
    const std::string ruta = dir.fichero("a long name.text");
    const auto longitud = static_cast<DWORD>(ruta.size());
    const texto_w corto = w(ruta);
    EXPECT_EQ(i_nombre_largo_del_escritorio(corto.c_str(), nullptr, 0), longitud + 1);
    texto_w bufer(longitud + 2, L'?');
    EXPECT_EQ(i_nombre_largo_del_escritorio(corto.c_str(), bufer.data(), longitud), longitud + 1);
    EXPECT_EQ(bufer, texto_w(longitud + 2, L'?'));
    EXPECT_EQ(i_nombre_largo_del_escritorio(corto.c_str(), bufer.data(), longitud + 1), longitud);
    EXPECT_EQ(bufer, corto + L'\0' + L'?');
}

TEST_F(nombre_largo, el_escritorio_dice_por_que_no_contesta) {
    const directorio_temporal dir;
    dir.fichero("a long name.text");
    const texto_w ruta = dir.ruta_w("a long name.text");
    wchar_t largo[MAX_PATH];
    ::SetLastError(0);
    EXPECT_EQ(i_nombre_largo_del_escritorio(dir.ruta_w("missing").c_str(), largo, MAX_PATH), 0u);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
    // How long the full form is, or would be; none means that the system cannot tell.
    static DWORD longitud;
    const sustituye forma(sistema.GetFullPathNameW,
                          [](LPCWSTR dada, DWORD sitio, LPWSTR completa, LPWSTR* nombre) WINAPI {
                              EXPECT_EQ(sitio, DWORD{MAX_PATH});
                              ::GetFullPathNameW(dada, sitio, completa, nombre);
                              return longitud;
                          });
    for (const auto& [larga, cabe] : {std::pair(0u, false), {1u, true}, {259u, true}, {260u, false}}) {
        longitud = larga;
        ::SetLastError(0);
        EXPECT_EQ(i_nombre_largo_del_escritorio(ruta.c_str(), largo, MAX_PATH), cabe ? ruta.size() : 0u)
            << larga;
        EXPECT_TRUE(cabe || ::GetLastError() == ERROR_BUFFER_OVERFLOW) << larga;
    }
}

// Beyond the code page too: the shell is asked in wide text.
TEST_F(nombre_largo, el_escritorio_dice_tambien_lo_que_la_pagina_de_codigos_no_tiene) {
    const directorio_temporal dir;
    const std::string ruta = dir.fichero("a long \uFF41\u65E5 name.text");
    const sustituye buscar(sistema.busca_nombre_largo, no_la_hay);
    i_olvida_nombre_largo();
    EXPECT_EQ(largo_de(nombre_corto_de(ruta)), ruta);
}

// Both look at the drive, as any call on a path does.
TEST_F(nombre_largo, ninguno_de_los_dos_saca_un_dialogo) {
    const directorio_temporal dir;
    const std::string ruta = dir.fichero("a long name.text");
    static DWORD modo;
    const sustituye mira(
        sistema.SHGetPathFromIDListW, +[](PCIDLIST_ABSOLUTE lista, LPWSTR texto) -> BOOL {
            modo = ::GetThreadErrorMode();
            return ::SHGetPathFromIDListW(lista, texto);
        });
    const funcion_nombre_largo de_kernel32 = [](const wchar_t* corto, wchar_t* largo, DWORD sitio) WINAPI {
        modo = ::GetThreadErrorMode();
        return ::GetLongPathNameW(corto, largo, sitio);
    };
    static funcion_nombre_largo propia;
    const sustituye buscar(sistema.busca_nombre_largo, [] { return propia; });
    const DWORD antes = ::GetThreadErrorMode();
    for (const funcion_nombre_largo cual : {funcion_nombre_largo(nullptr), de_kernel32}) {
        propia = cual;
        i_olvida_nombre_largo();
        // The first question chooses, the second one only asks.
        for (int vez = 0; vez < 2; ++vez) {
            modo = 0;
            EXPECT_EQ(largo_de(ruta), ruta);
            EXPECT_NE(modo & SEM_FAILCRITICALERRORS, 0u) << (cual == nullptr ? "shell" : "KERNEL32");
            EXPECT_EQ(::GetThreadErrorMode(), antes);
        }
    }
}

TEST_F(nombre_largo, lo_que_el_escritorio_no_encuentra_falla) {
    const directorio_temporal dir;
    // Gone between the question whether it is there and the shell's own look.
    const sustituye dice_que_esta(sistema.GetFileAttributesW,
                                  [](LPCWSTR) -> DWORD { return FILE_ATTRIBUTE_NORMAL; });
    wchar_t largo[MAX_PATH] = L"as it was";
    EXPECT_EQ(i_nombre_largo_del_escritorio(dir.ruta_w("gone").c_str(), largo, MAX_PATH), 0u);
    EXPECT_EQ(::GetLastError(), static_cast<DWORD>(ERROR_PATH_NOT_FOUND));
    EXPECT_EQ(u8(largo), "as it was");
}

// The process's own allocator of the shell, which counts what it frees and who has let go of it.
struct asignador final : IMalloc {
    int usuarios = 0;
    int liberados = 0;
    IMalloc* de_verdad = nullptr;
    HRESULT WINAPI QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG WINAPI AddRef() override { return static_cast<ULONG>(++usuarios); }
    ULONG WINAPI Release() override { return static_cast<ULONG>(--usuarios); }
    void* WINAPI Alloc(SIZE_T bytes) override { return de_verdad->Alloc(bytes); }
    void* WINAPI Realloc(void* bloque, SIZE_T bytes) override { return de_verdad->Realloc(bloque, bytes); }
    void WINAPI Free(void* bloque) override {
        ++liberados;
        de_verdad->Free(bloque);
    }
    SIZE_T WINAPI GetSize(void* bloque) override { return de_verdad->GetSize(bloque); }
    int WINAPI DidAlloc(void* bloque) override { return de_verdad->DidAlloc(bloque); }
    void WINAPI HeapMinimize() override {}
};
asignador g_asignador;

// The desktop, which counts who has let go of it; it cuts names and nothing else.
struct carpeta final : IShellFolder {
    int usuarios = 0;
    bool sin_lista = false;
    IShellFolder* de_verdad = nullptr;
    HRESULT WINAPI QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG WINAPI AddRef() override { return static_cast<ULONG>(++usuarios); }
    ULONG WINAPI Release() override { return static_cast<ULONG>(--usuarios); }
    HRESULT WINAPI ParseDisplayName(HWND ventana, IBindCtx* contexto, LPWSTR nombre, ULONG* tomados,
                                    PIDLIST_RELATIVE* lista, ULONG* atributos) override {
        return sin_lista ? E_FAIL
                         : de_verdad->ParseDisplayName(ventana, contexto, nombre, tomados, lista, atributos);
    }
    HRESULT WINAPI EnumObjects(HWND, SHCONTF, IEnumIDList**) override { return E_NOTIMPL; }
    HRESULT WINAPI BindToObject(PCUIDLIST_RELATIVE, IBindCtx*, REFIID, void**) override { return E_NOTIMPL; }
    HRESULT WINAPI BindToStorage(PCUIDLIST_RELATIVE, IBindCtx*, REFIID, void**) override { return E_NOTIMPL; }
    HRESULT WINAPI CompareIDs(LPARAM, PCUIDLIST_RELATIVE, PCUIDLIST_RELATIVE) override { return E_NOTIMPL; }
    HRESULT WINAPI CreateViewObject(HWND, REFIID, void**) override { return E_NOTIMPL; }
    HRESULT WINAPI GetAttributesOf(UINT, PCUITEMID_CHILD_ARRAY, SFGAOF*) override { return E_NOTIMPL; }
    HRESULT WINAPI GetUIObjectOf(HWND, UINT, PCUITEMID_CHILD_ARRAY, REFIID, UINT*, void**) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI GetDisplayNameOf(PCUITEMID_CHILD, SHGDNF, STRRET*) override { return E_NOTIMPL; }
    HRESULT WINAPI SetNameOf(HWND, PCUITEMID_CHILD, LPCWSTR, SHGDNF, PITEMID_CHILD*) override {
        return E_NOTIMPL;
    }
};
carpeta g_carpeta;

TEST_F(nombre_largo, cada_pregunta_al_escritorio_que_falla_es_un_fallo_y_no_deja_nada) {
    const directorio_temporal dir;
    const std::string ruta = dir.fichero("a long name.text");
    const texto_w corto = w(nombre_corto_de(ruta));
    ASSERT_EQ(::SHGetMalloc(&g_asignador.de_verdad), S_OK);
    ASSERT_EQ(::SHGetDesktopFolder(&g_carpeta.de_verdad), S_OK);
    const auto da_el_que_cuenta = [](IMalloc** sitio) -> HRESULT {
        g_asignador.AddRef();
        *sitio = &g_asignador;
        return S_OK;
    };
    const auto da_la_que_cuenta = [](IShellFolder** sitio) -> HRESULT {
        g_carpeta.AddRef();
        *sitio = &g_carpeta;
        return S_OK;
    };
    tabla_sistema buena = sistema;
    buena.SHGetMalloc = da_el_que_cuenta;
    buena.SHGetDesktopFolder = da_la_que_cuenta;
    tabla_sistema sin_asignador = buena;
    sin_asignador.SHGetMalloc = [](IMalloc** sitio) -> HRESULT {
        g_asignador.AddRef();
        *sitio = &g_asignador;  // what a failure leaves there is let go, and no answer
        return E_OUTOFMEMORY;
    };
    tabla_sistema sin_carpeta = buena;
    sin_carpeta.SHGetDesktopFolder = [](IShellFolder**) -> HRESULT { return E_FAIL; };
    tabla_sistema sin_ruta = buena;
    sin_ruta.SHGetPathFromIDListW = [](PCIDLIST_ABSOLUTE, LPWSTR) -> BOOL { return FALSE; };
    tabla_sistema sin_lista = buena;
    sin_lista.SHGetPathFromIDListW = [](PCIDLIST_ABSOLUTE, LPWSTR) -> BOOL {
        ADD_FAILURE() << "of nothing there is no path";
        return FALSE;
    };
    const struct {
        const char* que;
        tabla_sistema tabla;
        std::string respuesta;
        int liberados;
        bool hay_lista = true;
    } filas[] = {
        {"all answer", buena, ruta, 1},       {"no allocator", sin_asignador, "", 0},
        {"no desktop", sin_carpeta, "", 0},   {"no path", sin_ruta, "", 1},
        {"no list", sin_lista, "", 0, false},
    };
    for (const auto& fila : filas) {
        const sustituye cambio(sistema, fila.tabla);
        g_asignador.liberados = 0;
        g_carpeta.sin_lista = !fila.hay_lista;
        wchar_t largo[MAX_PATH] = L"as it was";
        ::SetLastError(0);
        const DWORD longitud = i_nombre_largo_del_escritorio(corto.c_str(), largo, MAX_PATH);
        if (fila.respuesta.empty()) {
            EXPECT_EQ(longitud, 0u) << fila.que;
            EXPECT_EQ(::GetLastError(), static_cast<DWORD>(ERROR_PATH_NOT_FOUND)) << fila.que;
            EXPECT_EQ(u8(largo), "as it was") << fila.que;
        } else {
            EXPECT_EQ(u8(vista_w(largo, longitud)), fila.respuesta) << fila.que;
        }
        EXPECT_EQ(g_asignador.liberados, fila.liberados) << fila.que;
        EXPECT_EQ(g_asignador.usuarios, 0) << fila.que;
        EXPECT_EQ(g_carpeta.usuarios, 0) << fila.que;
    }
    g_carpeta.de_verdad->Release();
    g_asignador.de_verdad->Release();
}

// What the current directory makes of it.
TEST_F(nombre_largo, el_directorio_actual_de_8_bits_pregunta_por_aqui) {
    const directorio_temporal dir;
    const std::string ruta = dir.directorio("Long ñandú name");
    wchar_t antes[1024];
    ::GetCurrentDirectoryW(1024, antes);
    ASSERT_TRUE(::SetCurrentDirectoryW(w(nombre_corto_de(ruta)).c_str()));
    {
        const sustituye buscar(sistema.busca_nombre_largo, no_la_hay);
        i_olvida_nombre_largo();
        EXPECT_EQ(toma(cdir_obtener_path_actual()), ruta);
    }
    {
        const sustituye buscar(sistema.busca_nombre_largo, la_hay);
        i_olvida_nombre_largo();
        EXPECT_EQ(toma(cdir_obtener_path_actual()), "X:\\año");
    }
    {
        const sustituye buscar(sistema.busca_nombre_largo, falla_con_codigo);
        g_codigo_de_nombre = ERROR_ACCESS_DENIED;
        i_olvida_nombre_largo();
        wchar_t actual[1024];
        ASSERT_NE(sistema._wgetcwd(actual, 1024), nullptr);
        EXPECT_EQ(toma(cdir_obtener_path_actual()), u8(actual));  // as the C runtime gave it
    }
    EXPECT_TRUE(::SetCurrentDirectoryW(antes));
}
