// Registry keys: creation, listing of subkeys, deletion, the write probe, and every call failing.
#include <functional>

#include "lumoreg.h"
#include "registro_de_pruebas.hpp"

using namespace apoyo;
using namespace interno;

namespace {

using claves_lumoreg = con_registro;

std::vector<std::string> lista_u(const texto_w& ruta, unsigned short esperado) {
    ArrCADENA_u* lista = arr_CreaCADENA_u(0);
    arr_AppendCADENA_u(lista, L"before");
    EXPECT_EQ(lumoreg_dame_subclaves_u(raiz_de_pruebas, ruta.c_str(), lista), esperado);
    std::vector<std::string> nombres;
    for (unsigned long i = 0; i < arr_NumElemsCADENA_u(lista); ++i) {
        nombres.push_back(u8(arr_GetCADENA_u(lista, i)));
    }
    arr_DestruyeCADENA_u(&lista);
    return nombres;
}

std::vector<std::string> lista_ex(unsigned long vista, const texto_w& ruta, unsigned short esperado) {
    ArrCADENA_u* lista = arr_CreaCADENA_u(0);
    arr_AppendCADENA_u(lista, L"before");
    EXPECT_EQ(lumoreg_dame_subclaves_ex_u(vista, raiz_de_pruebas, ruta.c_str(), lista), esperado);
    std::vector<std::string> nombres;
    for (unsigned long i = 0; i < arr_NumElemsCADENA_u(lista); ++i) {
        nombres.push_back(u8(arr_GetCADENA_u(lista, i)));
    }
    arr_DestruyeCADENA_u(&lista);
    return nombres;
}

std::vector<std::string> lista_8(const texto_a& ruta, unsigned short esperado) {
    ArrCADENA* lista = arr_CreaCADENA(0);
    arr_AppendCADENA(lista, "before");
    EXPECT_EQ(lumoreg_dame_subclaves(raiz_de_pruebas, ruta.c_str(), lista), esperado);
    std::vector<std::string> nombres;
    for (unsigned long i = 0; i < arr_NumElemsCADENA(lista); ++i) {
        nombres.push_back(de_cp1252(arr_GetCADENA(lista, i)));
    }
    arr_DestruyeCADENA(&lista);
    return nombres;
}

using textos = std::vector<std::string>;

}  // namespace

TEST_F(claves_lumoreg, se_crea_con_los_padres_que_faltan) {
    for (const std::string_view ruta : {"a", "b\\c\\d", "ñ\\日本", "a"}) {
        EXPECT_EQ(lumoreg_crea_clave_u(raiz_de_pruebas, bajo(ruta).c_str()), 1) << ruta;
        EXPECT_TRUE(existe(bajo(ruta))) << ruta;
    }
    for (const unsigned long vista : {0ul, 1ul, 2ul}) {
        const texto_w ruta = bajo("view\\" + std::to_string(vista));
        EXPECT_EQ(lumoreg_crea_clave_en_vista_u(vista, raiz_de_pruebas, ruta.c_str()), 1) << vista;
        EXPECT_EQ(lumoreg_existe_clave_en_vista_u(vista, raiz_de_pruebas, ruta.c_str()), 1) << vista;
    }
    EXPECT_EQ(lumoreg_crea_clave_u(raiz_de_pruebas, bajo(std::string(300, 'x')).c_str()), 0);  // 255 at most
}

namespace {

REGSAM g_acceso = 0;
LSTATUS g_respuesta = ERROR_SUCCESS;
LSTATUS WINAPI crea_anotando(HKEY raiz, const wchar_t* ruta, DWORD reservado, wchar_t* clase, DWORD opciones,
                             REGSAM acceso, SECURITY_ATTRIBUTES* const seguridad, HKEY* clave, DWORD*) {
    EXPECT_EQ(raiz, HKEY_LOCAL_MACHINE);
    EXPECT_EQ(u8(ruta), "x\\y");
    EXPECT_EQ(reservado, 0u);
    EXPECT_EQ(u8(clase), "");
    EXPECT_EQ(opciones, 0u);
    EXPECT_EQ(seguridad, nullptr);
    g_acceso = acceso;
    *clave = HKEY_CURRENT_USER;
    return g_respuesta;
}

}  // namespace

TEST_F(claves_lumoreg, se_crea_con_todo_acceso_y_la_seguridad_por_omision) {
    const sustituye crear(sistema.RegCreateKeyExW, crea_anotando);
    const REGSAM esperados[] = {KEY_ALL_ACCESS, KEY_ALL_ACCESS | KEY_WOW64_64KEY,
                                KEY_ALL_ACCESS | KEY_WOW64_32KEY};
    for (const LSTATUS respuesta : {ERROR_SUCCESS, ERROR_ACCESS_DENIED}) {
        g_respuesta = respuesta;
        for (unsigned long vista = 0; vista < 3; ++vista) {
            EXPECT_EQ(lumoreg_crea_clave_en_vista_u(vista, 3, L"x\\y"), respuesta == ERROR_SUCCESS ? 1 : 0);
            EXPECT_EQ(g_acceso, esperados[vista]);
        }
        EXPECT_EQ(lumoreg_crea_clave_u(3, L"x\\y"), respuesta == ERROR_SUCCESS ? 1 : 0);
        EXPECT_EQ(g_acceso, esperados[0]);
    }
}

TEST_F(claves_lumoreg, sin_subclaves_la_lista_no_se_toca) {
    crea(bajo("empty"));
    EXPECT_EQ(lista_u(bajo("empty"), 0), textos{"before"});
    EXPECT_EQ(lista_8(bajo_a("empty"), 0), textos{"before"});
    EXPECT_EQ(lista_u(bajo("missing"), 0), textos{"before"});
    EXPECT_EQ(lista_8(bajo_a("missing"), 0), textos{"before"});
}

TEST_F(claves_lumoreg, las_subclaves_se_anaden_en_el_orden_del_sistema) {
    const std::string larga(255, 'z');
    for (const std::string& nombre : {std::string("a"), std::string("Señal"), std::string("b c"), larga}) {
        crea(bajo("k\\" + nombre + "\\deeper"));
    }
    textos esperadas = subclaves(bajo("k"));
    ASSERT_EQ(esperadas.size(), 4u);
    esperadas.insert(esperadas.begin(), "before");
    EXPECT_EQ(lista_u(bajo("k"), 1), esperadas);
    EXPECT_EQ(lista_8(bajo_a("k"), 1), esperadas);
    for (const unsigned long vista : {0ul, 1ul, 2ul}) {
        EXPECT_EQ(lista_ex(vista, bajo("k"), 1), esperadas) << vista;
    }
}

TEST_F(claves_lumoreg, lo_que_la_pagina_de_codigos_no_tiene_viene_como_lo_da_el_sistema) {
    crea(bajo("k\\日本"));
    EXPECT_EQ(lista_u(bajo("k"), 1), (textos{"before", "日本"}));
    EXPECT_EQ(lista_8(bajo_a("k"), 1), (textos{"before", "??"}));
}

TEST_F(claves_lumoreg, muchas_subclaves_se_listan_todas) {
    for (int i = 0; i < 1000; ++i) {
        crea(bajo("k\\s" + std::to_string(i)));
    }
    textos esperadas = subclaves(bajo("k"));
    ASSERT_EQ(esperadas.size(), 1000u);
    esperadas.insert(esperadas.begin(), "before");
    EXPECT_EQ(lista_u(bajo("k"), 1), esperadas);
    EXPECT_EQ(lista_8(bajo_a("k"), 1), esperadas);
}

namespace {

LSTATUS g_error_de_enumeracion = ERROR_SUCCESS;
DWORD g_indice_que_falla = 0;
tabla_sistema g_registro_de_claves;
LSTATUS WINAPI enumera_w(HKEY clave, DWORD indice, wchar_t* nombre, DWORD* longitud, DWORD* r, wchar_t* c,
                         DWORD* lc, FILETIME* f) {
    return indice == g_indice_que_falla
               ? g_error_de_enumeracion
               : g_registro_de_claves.RegEnumKeyExW(clave, indice, nombre, longitud, r, c, lc, f);
}
LSTATUS WINAPI enumera_a(HKEY clave, DWORD indice, char* nombre, DWORD* longitud, DWORD* r, char* c,
                         DWORD* lc, FILETIME* f) {
    return indice == g_indice_que_falla
               ? g_error_de_enumeracion
               : g_registro_de_claves.RegEnumKeyExA(clave, indice, nombre, longitud, r, c, lc, f);
}
LSTATUS WINAPI no_cuenta_w(HKEY, wchar_t*, DWORD*, DWORD*, DWORD*, DWORD*, DWORD*, DWORD*, DWORD*, DWORD*,
                           DWORD*, FILETIME*) {
    return ERROR_ACCESS_DENIED;
}
LSTATUS WINAPI no_cuenta_a(HKEY, char*, DWORD*, DWORD*, DWORD*, DWORD*, DWORD*, DWORD*, DWORD*, DWORD*,
                           DWORD*, FILETIME*) {
    return ERROR_ACCESS_DENIED;
}

}  // namespace

TEST_F(claves_lumoreg, un_paso_que_falla_se_informa_y_cuenta_como_elemento) {
    for (const std::string_view nombre : {"año\\a", "año\\b", "año\\c"}) {
        crea(bajo(nombre));
    }
    g_registro_de_claves = sistema;
    const sustituye w(sistema.RegEnumKeyExW, enumera_w);
    const sustituye a(sistema.RegEnumKeyExA, enumera_a);
    const std::string informe =
        "error == ERROR_SUCCESS || error == ERROR_MORE_DATA [Software\\lumodir-pruebas\\año]";
    const struct {
        LSTATUS error;
        DWORD indice;
        textos nombres;
        textos informes;
    } filas[] = {
        {.error = ERROR_ACCESS_DENIED,
         .indice = 1,
         .nombres = {"before", "a", "a", "c"},
         .informes = {informe}},
        {.error = ERROR_NO_MORE_ITEMS,
         .indice = 2,
         .nombres = {"before", "a", "b", "b"},
         .informes = {informe}},
        {.error = ERROR_INVALID_HANDLE,
         .indice = 0,
         .nombres = {"before", "", "b", "c"},
         .informes = {informe}},
        {.error = ERROR_MORE_DATA, .indice = 1, .nombres = {"before", "a", "a", "c"}, .informes = {}},
    };
    for (const auto& fila : filas) {
        g_error_de_enumeracion = fila.error;
        g_indice_que_falla = fila.indice;
        EXPECT_EQ(lista_u(bajo("año"), 1), fila.nombres) << fila.error;
        EXPECT_EQ(toma_informes_con_detalle(), fila.informes) << fila.error;
        EXPECT_EQ(lista_8(bajo_a("año"), 1), fila.nombres) << fila.error;
        EXPECT_EQ(toma_informes_con_detalle(), fila.informes) << fila.error;
    }
}

namespace {

// Somebody creates a subkey with a longer name between the counting and the listing.
LSTATUS crea_otra(LSTATUS contadas) {
    ::RegDeleteKeyW(HKEY_CURRENT_USER, bajo("k\\a").c_str());
    crea(bajo("k\\" + std::string(255, 'z')));
    return contadas;
}
LSTATUS WINAPI cuenta_y_crea_w(HKEY clave, wchar_t* c, DWORD* lc, DWORD* r, DWORD* s, DWORD* ms, DWORD* mc,
                               DWORD* v, DWORD* mv, DWORD* md, DWORD* ls, FILETIME* f) {
    return crea_otra(g_registro_de_claves.RegQueryInfoKeyW(clave, c, lc, r, s, ms, mc, v, mv, md, ls, f));
}
LSTATUS WINAPI cuenta_y_crea_a(HKEY clave, char* c, DWORD* lc, DWORD* r, DWORD* s, DWORD* ms, DWORD* mc,
                               DWORD* v, DWORD* mv, DWORD* md, DWORD* ls, FILETIME* f) {
    return crea_otra(g_registro_de_claves.RegQueryInfoKeyA(clave, c, lc, r, s, ms, mc, v, mv, md, ls, f));
}
// The longest name there can be, in a code page that takes three bytes a unit.
LSTATUS WINAPI enumera_de_tres_bytes(HKEY, DWORD, char* nombre, DWORD* longitud, DWORD*, char*, DWORD*,
                                     FILETIME*) {
    constexpr DWORD bytes = 3 * 255;
    if (*longitud <= bytes) {
        return ERROR_MORE_DATA;
    }
    std::fill(nombre, nombre + bytes, 'x');
    nombre[bytes] = '\0';
    *longitud = bytes;
    return ERROR_SUCCESS;
}

}  // namespace

TEST_F(claves_lumoreg, un_nombre_mas_largo_que_los_contados_cabe) {
    g_registro_de_claves = sistema;
    const sustituye w(sistema.RegQueryInfoKeyW, cuenta_y_crea_w);
    const sustituye a(sistema.RegQueryInfoKeyA, cuenta_y_crea_a);
    const textos esperadas = {"before", std::string(255, 'z')};
    for (const bool ancha : {true, false}) {
        ::RegDeleteTreeW(HKEY_CURRENT_USER, bajo("k").c_str());
        crea(bajo("k\\a"));
        EXPECT_EQ(ancha ? lista_u(bajo("k"), 1) : lista_8(bajo_a("k"), 1), esperadas) << ancha;
    }
    const sustituye e(sistema.RegEnumKeyExA, enumera_de_tres_bytes);
    EXPECT_EQ(lista_8(bajo_a("k"), 1), (textos{"before", std::string(765, 'x')}));
}

TEST_F(claves_lumoreg, una_clave_que_no_se_deja_contar_se_informa) {
    crea(bajo("k\\a"));
    const sustituye w(sistema.RegQueryInfoKeyW, no_cuenta_w);
    const sustituye a(sistema.RegQueryInfoKeyA, no_cuenta_a);
    EXPECT_EQ(lista_u(bajo("k"), 0), textos{"before"});
    ESPERA_DETALLES("error == ERROR_SUCCESS [Software\\lumodir-pruebas\\k]");
    EXPECT_EQ(lista_8(bajo_a("k"), 0), textos{"before"});
    ESPERA_DETALLES("error == ERROR_SUCCESS [Software\\lumodir-pruebas\\k]");
}

// ---- deletion

namespace {

void borra_clave(bool ancha, std::string_view padre, std::string_view nombre) {
    if (ancha) {
        lumoreg_borra_clave_u(raiz_de_pruebas, bajo(padre).c_str(), w(nombre).c_str());
    } else {
        lumoreg_borra_clave(raiz_de_pruebas, bajo_a(padre).c_str(), cp1252(nombre).c_str());
    }
}

}  // namespace

TEST_F(claves_lumoreg, una_clave_sin_subclaves_se_borra) {
    for (const bool ancha : {true, false}) {
        crea(bajo("p\\año"));
        pon(bajo("p\\año"), L"v", REG_SZ, texto_w(L"t"));
        borra_clave(ancha, "p", "año");
        EXPECT_FALSE(existe(bajo("p\\año"))) << ancha;
        EXPECT_TRUE(existe(bajo("p"))) << ancha;
    }
}

TEST_F(claves_lumoreg, de_cada_nivel_queda_una_subclave_de_cada_dos) {
    for (const bool ancha : {true, false}) {
        for (int cuantas = 0; cuantas <= 9; ++cuantas) {
            SCOPED_TRACE(testing::Message() << cuantas << (ancha ? " wide" : " 8-bit"));
            crea(bajo("p\\k"));
            textos quedan;
            for (int i = 1; i <= cuantas; ++i) {
                crea(bajo("p\\k\\k" + std::to_string(i)));
                if (i % 2 == 0) {
                    quedan.push_back("k" + std::to_string(i));
                }
            }
            borra_clave(ancha, "p", "k");
            EXPECT_EQ(subclaves(bajo("p\\k")), quedan);
            EXPECT_EQ(existe(bajo("p\\k")), !quedan.empty());
            EXPECT_EQ(toma_informes_con_detalle(),
                      quedan.empty() ? textos{} : textos{"resultado == ERROR_SUCCESS [k]"});
            ::RegDeleteTreeW(HKEY_CURRENT_USER, bajo("p").c_str());
        }
    }
}

TEST_F(claves_lumoreg, los_niveles_de_abajo_se_borran_antes) {
    for (const bool ancha : {true, false}) {
        crea(bajo("p\\k\\a\\b\\c\\d"));
        borra_clave(ancha, "p", "k");
        EXPECT_EQ(subclaves(bajo("p")), textos{});
    }
    // Where one of two stays below, everything above it stays too, each with its report.
    crea(bajo("p\\k\\a\\1"));
    crea(bajo("p\\k\\a\\2"));
    borra_clave(true, "p", "k");
    ESPERA_DETALLES("resultado == ERROR_SUCCESS [a]", "resultado == ERROR_SUCCESS [k]");
    EXPECT_EQ(subclaves(bajo("p\\k\\a")), textos{"2"});
}

TEST_F(claves_lumoreg, un_nombre_de_mas_de_99_se_salta) {
    const std::string de_99(99, 'a');
    const std::string de_100(100, 'a');
    for (const bool ancha : {true, false}) {
        crea(bajo("p\\k\\" + de_99));
        borra_clave(ancha, "p", "k");
        EXPECT_FALSE(existe(bajo("p\\k")));
        crea(bajo("p\\k\\" + de_100));
        borra_clave(ancha, "p", "k");
        ESPERA_DETALLES("resultado == ERROR_SUCCESS [k]");
        EXPECT_EQ(subclaves(bajo("p\\k")), textos{de_100});
        ::RegDeleteTreeW(HKEY_CURRENT_USER, bajo("p").c_str());
    }
    // One that is passed over does not stop the pass.
    crea(bajo("p\\k\\" + de_100));
    crea(bajo("p\\k\\b"));
    borra_clave(true, "p", "k");
    ESPERA_DETALLES("resultado == ERROR_SUCCESS [k]");
    EXPECT_EQ(subclaves(bajo("p\\k")), textos{de_100});
}

TEST_F(claves_lumoreg, lo_que_no_esta_se_informa_o_no_segun_donde_falte) {
    for (const bool ancha : {true, false}) {
        borra_clave(ancha, "no parent", "k");
        ESPERA_DETALLES();
        borra_clave(ancha, "", "missing");  // the parent path ends in a separator, and opens
        ESPERA_DETALLES("clave_abierta == CIERTO [Software\\lumodir-pruebas\\\\missing]",
                        "resultado == ERROR_SUCCESS [missing]");
        crea(bajo("p"));
        borra_clave(ancha, "p", "año");
        ESPERA_DETALLES("clave_abierta == CIERTO [Software\\lumodir-pruebas\\p\\año]",
                        "resultado == ERROR_SUCCESS [año]");
    }
}

TEST_F(claves_lumoreg, una_raiz_entera_no_se_borra) {
    std::size_t llamadas = 0;
    {
        const registro_vigilado vigilando;
        lumoreg_borra_clave_u(raiz_de_pruebas, L"", L"");
        llamadas = vigilado.llamadas;
    }
    EXPECT_EQ(llamadas, 2u);  // opened and closed
    ESPERA_DETALLES("widestr_longitud(clave) > 0 || widestr_longitud(nombre) > 0");
    EXPECT_TRUE(existe(clave_de_pruebas));
}

namespace {

std::string g_prohibida;
LSTATUS WINAPI abre_salvo_una(HKEY raiz, const wchar_t* ruta, DWORD opciones, REGSAM acceso, HKEY* clave) {
    return u8(ruta) == g_prohibida ? ERROR_ACCESS_DENIED
                                   : g_registro_de_claves.RegOpenKeyExW(raiz, ruta, opciones, acceso, clave);
}

}  // namespace

TEST_F(claves_lumoreg, una_subclave_sin_derechos_se_informa_y_se_intenta_borrar) {
    crea(bajo("p\\k\\a"));
    crea(bajo("p\\k\\a\\deep"));
    g_registro_de_claves = sistema;
    g_prohibida = "a";
    const sustituye abrir(sistema.RegOpenKeyExW, abre_salvo_una);
    borra_clave(true, "p", "k");
    ESPERA_DETALLES("clave_abierta == CIERTO [" + u8(bajo("p\\k\\a")) + "]", "resultado == ERROR_SUCCESS [a]",
                    "resultado == ERROR_SUCCESS [k]");
    EXPECT_TRUE(existe(bajo("p\\k\\a\\deep")));
}

TEST_F(claves_lumoreg, una_enumeracion_que_falla_acaba_el_nivel) {
    for (const std::string_view nombre : {"p\\k\\a", "p\\k\\b", "p\\k\\c"}) {
        crea(bajo(nombre));
    }
    g_registro_de_claves = sistema;
    g_indice_que_falla = 1;
    g_error_de_enumeracion = ERROR_INVALID_HANDLE;
    const sustituye enumerar(sistema.RegEnumKeyExW, enumera_w);
    borra_clave(true, "p", "k");
    ESPERA_DETALLES("resultado == ERROR_SUCCESS [k]");
    EXPECT_EQ(subclaves(bajo("p\\k")), (textos{"b", "c"}));
}

// ---- the write probe

namespace {

bool esta_la_clave_de_la_sonda() {
    HKEY clave = nullptr;
    ::RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\LUMO", 0, KEY_QUERY_VALUE, &clave);
    ::RegCloseKey(clave);
    return clave != nullptr;
}

// A run that was interrupted may have left the probe's key: the very value of the probe and nothing else in it.
void quita_restos_de_la_sonda() {
    HKEY clave = nullptr;
    if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\LUMO", 0, KEY_READ, &clave) != ERROR_SUCCESS) {
        return;
    }
    DWORD num_valores = 0;
    DWORD num_subclaves = 0;
    ::RegQueryInfoKeyW(clave, nullptr, nullptr, nullptr, &num_subclaves, nullptr, nullptr, &num_valores,
                       nullptr, nullptr, nullptr, nullptr);
    const bool la_sonda =
        num_valores == 0 || ::RegQueryValueExW(clave, L"Prueba", nullptr, nullptr, nullptr, nullptr) == 0;
    ::RegCloseKey(clave);
    if (num_subclaves == 0 && num_valores <= 1 && la_sonda) {
        ::RegDeleteKeyW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\LUMO");
    }
}
LSTATUS WINAPI no_crea(HKEY, const wchar_t*, DWORD, wchar_t*, DWORD, REGSAM, SECURITY_ATTRIBUTES* const,
                       HKEY*, DWORD*) {
    return ERROR_ACCESS_DENIED;
}
LSTATUS WINAPI no_escribe(HKEY, const wchar_t*, DWORD, DWORD, const BYTE*, DWORD) {
    return ERROR_ACCESS_DENIED;
}

}  // namespace

TEST_F(claves_lumoreg, la_sonda_escribe_y_no_deja_nada) {
    quita_restos_de_la_sonda();
    if (esta_la_clave_de_la_sonda()) {
        GTEST_SKIP() << "this machine has a key SOFTWARE\\LUMO of its own";
    }
    HKEY clave = nullptr;
    const bool se_puede = ::RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE", 0, KEY_ALL_ACCESS, &clave) == 0;
    ::RegCloseKey(clave);
    {
        const registro_vigilado vigilando;
        EXPECT_EQ(lumoreg_tiene_permisos_escribir_en_registro(), se_puede ? 1 : 0);
        EXPECT_EQ(lumoreg_tiene_permisos_escribir_en_registro(), se_puede ? 1 : 0);
    }
    ESPERA_DETALLES();
    EXPECT_FALSE(esta_la_clave_de_la_sonda());
}

namespace {

// A registry of the probe's key alone, which writes down what is done to it.
textos g_sonda;
bool g_hay_clave = false;
bool g_desaparece = false;    // once written to
std::size_t g_aperturas = 0;  // how many times it opens

LSTATUS WINAPI abre_sonda(HKEY raiz, const wchar_t* ruta, DWORD opciones, REGSAM acceso, HKEY* clave) {
    EXPECT_EQ(raiz, HKEY_LOCAL_MACHINE);
    if (!g_hay_clave || g_aperturas == 0) {
        return ERROR_FILE_NOT_FOUND;
    }
    --g_aperturas;
    g_sonda.push_back("open " + u8(ruta) + (acceso == KEY_ALL_ACCESS ? ", all" : "") +
                      (opciones == REG_OPTION_OPEN_LINK ? ", itself" : ""));
    *clave = HKEY_LOCAL_MACHINE;  // closing it does nothing
    return ERROR_SUCCESS;
}
LSTATUS WINAPI crea_sonda(HKEY raiz, const wchar_t* ruta, DWORD, wchar_t*, DWORD, REGSAM acceso,
                          SECURITY_ATTRIBUTES* const, HKEY* clave, DWORD*) {
    EXPECT_EQ(raiz, HKEY_LOCAL_MACHINE);
    EXPECT_EQ(acceso, REGSAM{KEY_ALL_ACCESS});
    g_sonda.push_back("create " + u8(ruta));
    g_hay_clave = true;
    *clave = HKEY_LOCAL_MACHINE;
    return ERROR_SUCCESS;
}
LSTATUS WINAPI escribe_sonda(HKEY, const wchar_t* nombre, DWORD, DWORD tipo, const BYTE* datos, DWORD bytes) {
    EXPECT_EQ(tipo, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(bytes, 14u);
    g_sonda.push_back("set " + u8(nombre) + "=" + u8(reinterpret_cast<const wchar_t*>(datos)));
    g_hay_clave = !g_desaparece;
    return ERROR_SUCCESS;
}
LSTATUS WINAPI enumera_sonda(HKEY, DWORD, wchar_t*, DWORD*, DWORD*, wchar_t*, DWORD*, FILETIME*) {
    return ERROR_NO_MORE_ITEMS;
}
LONG NTAPI borra_sonda(HANDLE clave) {
    EXPECT_EQ(clave, HKEY_LOCAL_MACHINE);  // what the opening gave
    g_sonda.push_back("delete");
    return 0;
}

}  // namespace

TEST_F(claves_lumoreg, la_sonda_paso_a_paso) {
    tabla_sistema& t = sistema;
    const sustituye abrir(t.RegOpenKeyExW, abre_sonda);
    const sustituye crear(t.RegCreateKeyExW, crea_sonda);
    const sustituye escribir(t.RegSetValueExW, escribe_sonda);
    const sustituye enumerar(t.RegEnumKeyExW, enumera_sonda);
    const sustituye borrar(t.NtDeleteKey, borra_sonda);
    const std::string existe_ = "open SOFTWARE\\LUMO";
    const std::string abre_ = "open SOFTWARE\\LUMO, all";
    const std::string para_borrar_ = abre_ + ", itself";
    const std::string crea_ = "create SOFTWARE\\LUMO";
    const std::string escribe_ = "set Prueba=prueba";
    const struct {
        const char* que;
        bool existe;
        bool desaparece;
        std::size_t aperturas;
        textos pasos;
        int respuesta;
    } filas[] = {
        {"there", true, false, 9, {existe_, abre_, escribe_, existe_, para_borrar_, "delete"}, 1},
        {"missing", false, false, 9, {crea_, abre_, escribe_, existe_, para_borrar_, "delete"}, 1},
        {"gone once written", true, true, 9, {existe_, abre_, escribe_}, 1},
        {"gone before it is written to", true, false, 1, {existe_}, 0},
        {"gone before it is deleted", true, false, 3, {existe_, abre_, escribe_, existe_}, 1},
    };
    for (const auto& fila : filas) {
        g_sonda.clear();
        g_hay_clave = fila.existe;
        g_desaparece = fila.desaparece;
        g_aperturas = fila.aperturas;
        EXPECT_EQ(lumoreg_tiene_permisos_escribir_en_registro(), fila.respuesta) << fila.que;
        EXPECT_EQ(g_sonda, fila.pasos) << fila.que;
    }
}

TEST_F(claves_lumoreg, la_sonda_dice_que_no_sin_derecho_a_crear_o_a_escribir) {
    quita_restos_de_la_sonda();
    if (esta_la_clave_de_la_sonda()) {
        GTEST_SKIP() << "this machine has a key SOFTWARE\\LUMO of its own";
    }
    {
        const sustituye crear(sistema.RegCreateKeyExW, no_crea);
        EXPECT_EQ(lumoreg_tiene_permisos_escribir_en_registro(), 0);
    }
    {
        const sustituye escribir(sistema.RegSetValueExW, no_escribe);
        EXPECT_EQ(lumoreg_tiene_permisos_escribir_en_registro(), 0);
    }
    ::RegDeleteKeyW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\LUMO");  // created before the writing failed
    EXPECT_FALSE(esta_la_clave_de_la_sonda());
}
