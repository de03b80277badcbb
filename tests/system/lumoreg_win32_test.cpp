// Registry keys: which key is meant, opening and closing, existence, creation, listing, arguments.
#include "lumoreg.h"

#include <functional>

#include "registro_de_pruebas.hpp"

using namespace apoyo;
using namespace interno;

namespace {

using clave_lumoreg = con_registro;

struct apertura_vista {
    HKEY raiz;
    std::string ruta;
    REGSAM acceso;
    bool ancha;
    friend bool operator==(const apertura_vista&, const apertura_vista&) = default;
};
std::vector<apertura_vista> g_aperturas;
std::size_t g_abre_la_numero = 0;  // which opening succeeds, from 1; 0 for none

LSTATUS anota(const apertura_vista& vista, HKEY* clave) {
    g_aperturas.push_back(vista);
    *clave = g_aperturas.size() == g_abre_la_numero ? HKEY_CURRENT_USER : nullptr;
    return *clave != nullptr ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}
LSTATUS WINAPI anota_w(HKEY raiz, const wchar_t* ruta, DWORD, REGSAM acceso, HKEY* clave) {
    return anota({raiz, u8(ruta), acceso, true}, clave);
}
LSTATUS WINAPI anota_a(HKEY raiz, const char* ruta, DWORD, REGSAM acceso, HKEY* clave) {
    return anota({raiz, de_cp1252(ruta), acceso, false}, clave);
}
bool imagen_de_32bits() noexcept {
    return false;
}

class aperturas_anotadas {
public:
    explicit aperturas_anotadas(std::size_t abre_la_numero) {
        g_aperturas.clear();
        g_abre_la_numero = abre_la_numero;
    }

private:
    sustituye<decltype(sistema.RegOpenKeyExW)> w_{sistema.RegOpenKeyExW, anota_w};
    sustituye<decltype(sistema.RegOpenKeyExA)> a_{sistema.RegOpenKeyExA, anota_a};
};

std::vector<REGSAM> accesos() {
    std::vector<REGSAM> resultado;
    for (const apertura_vista& vista : g_aperturas) {
        resultado.push_back(vista.acceso);
    }
    return resultado;
}

constexpr REGSAM de_64 = KEY_WOW64_64KEY;
constexpr REGSAM de_32 = KEY_WOW64_32KEY;

}  // namespace

TEST_F(clave_lumoreg, existe_la_que_se_abre) {
    crea(bajo("ñandú\\日本"));
    crea(bajo("plain"));
    const struct {
        std::string_view ruta;
        unsigned short ancha;
        unsigned short de_8bits;
    } filas[] = {
        {.ruta = "plain", .ancha = 1, .de_8bits = 1},
        {.ruta = "PLAIN", .ancha = 1, .de_8bits = 1},
        {.ruta = "plai", .ancha = 0, .de_8bits = 0},
        {.ruta = "plain\\sub", .ancha = 0, .de_8bits = 0},
        {.ruta = "ñandú", .ancha = 1, .de_8bits = 1},
        {.ruta = "ñandú\\日本", .ancha = 1, .de_8bits = 0},  // the code page lacks it
    };
    for (const auto& fila : filas) {
        EXPECT_EQ(lumoreg_existe_clave_u(raiz_de_pruebas, bajo(fila.ruta).c_str()), fila.ancha) << fila.ruta;
        EXPECT_EQ(lumoreg_existe_clave(raiz_de_pruebas, bajo_a(fila.ruta).c_str()), fila.de_8bits)
            << fila.ruta;
        for (const unsigned long vista : {0ul, 1ul, 2ul}) {
            EXPECT_EQ(lumoreg_existe_clave_en_vista_u(vista, raiz_de_pruebas, bajo(fila.ruta).c_str()),
                      fila.ancha)
                << fila.ruta << " in view " << vista;
        }
    }
}

TEST_F(clave_lumoreg, el_path_vacio_es_la_raiz_y_uno_imposible_no_existe) {
    for (unsigned long raiz = 0; raiz < 5; ++raiz) {
        EXPECT_EQ(lumoreg_existe_clave_u(raiz, L""), 1) << raiz;
        EXPECT_EQ(lumoreg_existe_clave(raiz, ""), 1) << raiz;
    }
    for (const std::size_t unidades : {256u, 10'000u, 70'000u}) {
        const std::string ruta(unidades, 'x');
        EXPECT_EQ(lumoreg_existe_clave_u(raiz_de_pruebas, w(ruta).c_str()), 0) << unidades;
        EXPECT_EQ(lumoreg_existe_clave(raiz_de_pruebas, ruta.c_str()), 0) << unidades;
        EXPECT_EQ(lumoreg_existe_clave_u(raiz_de_pruebas, bajo(ruta).c_str()), 0) << unidades;
    }
}

// Half of the machine's software stands twice in the registry.
TEST_F(clave_lumoreg, una_clave_que_solo_esta_en_una_vista_se_encuentra_sin_nombrarla) {
    constexpr unsigned long maquina = 3;
    const texto_w nombre = w("SOFTWARE\\lumodir-pruebas-" + std::to_string(::GetCurrentProcessId()));
    for (const unsigned long vista : {1ul, 2ul}) {
        if (lumoreg_crea_clave_en_vista_u(vista, maquina, nombre.c_str()) != 1) {
            GTEST_SKIP() << "no right to write under HKEY_LOCAL_MACHINE";
        }
        const unsigned long otra = 3 - vista;
        EXPECT_EQ(lumoreg_existe_clave_en_vista_u(vista, maquina, nombre.c_str()), 1) << vista;
        EXPECT_EQ(lumoreg_existe_clave_en_vista_u(otra, maquina, nombre.c_str()), 0) << vista;
        EXPECT_EQ(lumoreg_existe_clave_u(maquina, nombre.c_str()), 1) << vista;
        EXPECT_EQ(lumoreg_establece_cadena_u(maquina, nombre.c_str(), L"v", L"año"), 1) << vista;
        wchar_t* texto = nullptr;
        EXPECT_EQ(lumoreg_lee_cadena_ex_u(vista, maquina, nombre.c_str(), L"v", &texto), 1) << vista;
        EXPECT_EQ(toma(texto), "año") << vista;
        const REGSAM acceso = vista == 1 ? KEY_WOW64_64KEY : KEY_WOW64_32KEY;
        EXPECT_EQ(::RegDeleteKeyExW(HKEY_LOCAL_MACHINE, nombre.c_str(), acceso, 0), 0) << vista;
        EXPECT_EQ(lumoreg_existe_clave_u(maquina, nombre.c_str()), 0) << vista;
    }
}

TEST_F(clave_lumoreg, cada_indice_es_su_clave_raiz) {
    const HKEY raices[] = {HKEY_CLASSES_ROOT, HKEY_CURRENT_CONFIG, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE,
                           HKEY_USERS};
    for (unsigned long i = 0; i < std::size(raices); ++i) {
        const aperturas_anotadas anotadas(1);
        EXPECT_EQ(lumoreg_existe_clave_u(i, L"x"), 1);
        ASSERT_EQ(g_aperturas.size(), 1u);
        EXPECT_EQ(g_aperturas[0], (apertura_vista{raices[i], "x", KEY_QUERY_VALUE, true})) << i;
    }
}

TEST_F(clave_lumoreg, sin_vista_se_prueba_la_de_siempre_y_luego_las_dos) {
    constexpr REGSAM q = KEY_QUERY_VALUE;
    const struct {
        std::size_t abre_la_numero;
        bool de_64bits;
        unsigned short resultado;
        std::vector<REGSAM> accesos;
    } filas[] = {
        {.abre_la_numero = 1, .de_64bits = true, .resultado = 1, .accesos = {q}},
        {.abre_la_numero = 2, .de_64bits = true, .resultado = 1, .accesos = {q, q | de_64}},
        {.abre_la_numero = 3, .de_64bits = true, .resultado = 1, .accesos = {q, q | de_64, q | de_32}},
        {.abre_la_numero = 0, .de_64bits = true, .resultado = 0, .accesos = {q, q | de_64, q | de_32}},
        {.abre_la_numero = 0, .de_64bits = false, .resultado = 0, .accesos = {q, q | de_64}},
        {.abre_la_numero = 2, .de_64bits = false, .resultado = 1, .accesos = {q, q | de_64}},
    };
    for (const auto& fila : filas) {
        SCOPED_TRACE(testing::Message() << fila.abre_la_numero << ", 64 bits: " << fila.de_64bits);
        auto imagen = sistema.machine_es_imagen_de_64bits;
        const sustituye imagen_fija(sistema.machine_es_imagen_de_64bits,
                                    fila.de_64bits ? imagen : imagen_de_32bits);
        {
            const aperturas_anotadas anotadas(fila.abre_la_numero);
            EXPECT_EQ(lumoreg_existe_clave_u(2, L"x"), fila.resultado);
            EXPECT_EQ(accesos(), fila.accesos);
        }
        {
            const aperturas_anotadas anotadas(fila.abre_la_numero);
            EXPECT_EQ(lumoreg_existe_clave(2, "x"), fila.resultado);
            EXPECT_EQ(accesos(), fila.accesos);
        }
    }
}

TEST_F(clave_lumoreg, con_vista_se_prueba_una_vez) {
    constexpr REGSAM todo = KEY_ALL_ACCESS;
    for (const unsigned long vista : {0ul, 1ul, 2ul}) {
        SCOPED_TRACE(vista);
        const REGSAM mas = vista == 0 ? 0 : vista == 1 ? de_64 : de_32;
        const aperturas_anotadas anotadas(0);
        wchar_t* texto = nullptr;
        ArrCADENA_u* lista = arr_CreaCADENA_u(0);
        ArrCADENA_u* nombres = nullptr;
        ArrPunteroConTipo* datos = nullptr;
        EXPECT_EQ(lumoreg_existe_clave_en_vista_u(vista, 2, L"x"), 0);
        EXPECT_EQ(lumoreg_lee_cadena_ex_u(vista, 2, L"x", L"v", &texto), 0);
        EXPECT_EQ(lumoreg_dame_subclaves_ex_u(vista, 2, L"x", lista), 0);
        EXPECT_EQ(lumoreg_establece_cadena_en_vista_u(vista, 2, L"x", L"v", L"t"), 0);
        EXPECT_EQ(lumoreg_lee_valores_cadena_clave_ex_u(vista, 2, L"x", &nombres, &datos), 0);
        EXPECT_EQ(accesos(), (std::vector<REGSAM>{KEY_QUERY_VALUE | mas, KEY_QUERY_VALUE | mas,
                                                  KEY_READ | mas, todo | mas, KEY_QUERY_VALUE | mas}));
        arr_DestruyeCADENA_u(&lista);
    }
}

namespace {

LSTATUS WINAPI abre_sin_clave(HKEY, const wchar_t*, DWORD, REGSAM, HKEY* clave) {
    *clave = nullptr;
    return ERROR_SUCCESS;
}

}  // namespace

TEST_F(clave_lumoreg, un_exito_sin_clave_se_informa_y_no_cuenta) {
    const sustituye abrir(sistema.RegOpenKeyExW, abre_sin_clave);
    EXPECT_EQ(lumoreg_existe_clave_en_vista_u(1, 2, L"x"), 0);
    ESPERA_DETALLES("(hKey) != NULL");
    lumoreg_borra_valor_clave_u(2, L"x", L"v");
    ESPERA_DETALLES("(hKey) != NULL", "(hKey) != NULL", "(hKey) != NULL");
}

// What each function asks for, and in which flavour it asks.
TEST_F(clave_lumoreg, cada_operacion_pide_su_acceso_en_su_sabor) {
    const aperturas_anotadas anotadas(0);
    wchar_t* texto = nullptr;
    char* texto_8 = nullptr;
    ArrCADENA_u* lista = arr_CreaCADENA_u(0);
    ArrCADENA* lista_8 = arr_CreaCADENA(0);
    const auto primera = [](auto operacion, std::size_t cuantas = 3) {
        g_aperturas.clear();
        operacion();
        EXPECT_EQ(g_aperturas.size(), cuantas);
        return g_aperturas.front();
    };
    const auto espera = [](REGSAM acceso, bool ancha) {
        return apertura_vista{HKEY_LOCAL_MACHINE, "año", acceso, ancha};
    };
    EXPECT_EQ(primera([] { lumoreg_existe_clave_u(3, L"año"); }), espera(KEY_QUERY_VALUE, true));
    EXPECT_EQ(primera([] { lumoreg_existe_clave(3, "a\xF1o"); }), espera(KEY_QUERY_VALUE, true));
    EXPECT_EQ(primera([&] { lumoreg_lee_cadena_u(3, L"año", L"v", &texto); }), espera(KEY_QUERY_VALUE, true));
    EXPECT_EQ(primera([&] { lumoreg_lee_cadena(3, "a\xF1o", "v", &texto_8); }),
              espera(KEY_QUERY_VALUE, false));
    EXPECT_EQ(primera([&] { lumoreg_dame_subclaves_u(3, L"año", lista); }), espera(KEY_READ, true));
    EXPECT_EQ(primera([&] { lumoreg_dame_subclaves(3, "a\xF1o", lista_8); }), espera(KEY_READ, false));
    EXPECT_EQ(primera([] { lumoreg_establece_cadena_u(3, L"año", L"v", L"t"); }),
              espera(KEY_ALL_ACCESS, true));
    EXPECT_EQ(primera([] { lumoreg_establece_cadena_expand_u(3, L"año", L"v", L"t"); }),
              espera(KEY_ALL_ACCESS, true));
    EXPECT_EQ(primera([] { lumoreg_establece_ulong_u(3, L"año", L"v", 1); }), espera(KEY_ALL_ACCESS, true));
    EXPECT_EQ(primera([] { lumoreg_establece_ulong(3, "a\xF1o", "v", 1); }), espera(KEY_ALL_ACCESS, true));
    EXPECT_EQ(primera([] { lumoreg_borra_valor_clave_u(3, L"año", L"v"); }), espera(KEY_ALL_ACCESS, true));
    // Without the right to it: another view is not what was meant.
    EXPECT_EQ(primera([] { lumoreg_borra_clave_u(3, L"año", L"v"); }, 1), espera(KEY_ALL_ACCESS, true));
    EXPECT_EQ(primera([] { lumoreg_borra_clave(3, "a\xF1o", "v"); }, 1), espera(KEY_ALL_ACCESS, true));
    arr_DestruyeCADENA_u(&lista);
    arr_DestruyeCADENA(&lista_8);
}

TEST_F(clave_lumoreg, una_raiz_o_una_vista_que_no_hay_se_informa) {
    const auto niega = [](unsigned short respuesta) {
        EXPECT_EQ(respuesta, 0);
        ESPERA_INFORMES("default");
    };
    wchar_t* texto = nullptr;
    char* texto_8 = nullptr;
    ArrCADENA_u* lista = arr_CreaCADENA_u(0);
    ArrCADENA* lista_8 = arr_CreaCADENA(0);
    ArrCADENA_u* nombres = lista;
    ArrPunteroConTipo* datos = nullptr;
    const registro_vigilado vigilando;
    for (const unsigned long raiz : {5ul, 0xFFFFFFFFul}) {
        niega(lumoreg_existe_clave_u(raiz, L"x"));
        niega(lumoreg_existe_clave(raiz, "x"));
        niega(lumoreg_existe_clave_en_vista_u(0, raiz, L"x"));
        niega(lumoreg_crea_clave_u(raiz, L"x"));
        niega(lumoreg_crea_clave_en_vista_u(1, raiz, L"x"));
        lumoreg_borra_clave_u(raiz, L"x", L"y");
        ESPERA_INFORMES("default");
        lumoreg_borra_clave(raiz, "x", "y");
        ESPERA_INFORMES("default");
        lumoreg_borra_valor_clave_u(raiz, L"x", L"y");
        ESPERA_INFORMES("default");
        niega(lumoreg_establece_cadena_u(raiz, L"x", L"y", L"z"));
        niega(lumoreg_establece_cadena_expand_u(raiz, L"x", L"y", L"z"));
        niega(lumoreg_establece_ulong_u(raiz, L"x", L"y", 1));
        niega(lumoreg_establece_ulong(raiz, "x", "y", 1));
        niega(lumoreg_lee_cadena_u(raiz, L"x", L"y", &texto));
        niega(lumoreg_lee_cadena(raiz, "x", "y", &texto_8));
        niega(lumoreg_dame_subclaves_u(raiz, L"x", lista));
        niega(lumoreg_dame_subclaves(raiz, "x", lista_8));
    }
    for (const unsigned long vista : {3ul, 0x100ul, 0xFFFFFFFFul}) {
        niega(lumoreg_existe_clave_en_vista_u(vista, 2, clave_de_pruebas));
        niega(lumoreg_crea_clave_en_vista_u(vista, 2, bajo("x").c_str()));
        niega(lumoreg_establece_cadena_en_vista_u(vista, 2, clave_de_pruebas, L"y", L"z"));
        niega(lumoreg_lee_cadena_ex_u(vista, 2, clave_de_pruebas, L"y", &texto));
        niega(lumoreg_dame_subclaves_ex_u(vista, 2, clave_de_pruebas, lista));
        niega(lumoreg_lee_valores_cadena_clave_ex_u(vista, 2, clave_de_pruebas, &nombres, &datos));
        EXPECT_EQ(nombres, nullptr);
    }
    EXPECT_EQ(vigilado.pedidas, std::vector<std::string>{});
    EXPECT_FALSE(existe(bajo("x")));
    EXPECT_EQ(texto, nullptr);
    EXPECT_EQ(texto_8, nullptr);
    EXPECT_EQ(arr_NumElemsCADENA_u(lista), 0u);
    arr_DestruyeCADENA_u(&lista);
    arr_DestruyeCADENA(&lista_8);
}

TEST_F(clave_lumoreg, un_puntero_nulo_se_informa_y_no_se_hace_nada) {
    crea(bajo("k\\sub"));
    pon(bajo("k"), L"v", REG_SZ, texto_w(L"t"));
    pon(bajo("k"), nullptr, REG_SZ, texto_w(L"what the system takes no name for"));
    const texto_w ruta = bajo("k");
    const texto_a ruta_8 = bajo_a("k");
    wchar_t* texto = nullptr;
    char* texto_8 = nullptr;
    ArrCADENA_u* lista = arr_CreaCADENA_u(0);
    ArrCADENA* lista_8 = arr_CreaCADENA(0);
    ArrCADENA_u* nombres = nullptr;
    ArrPunteroConTipo* datos = nullptr;
    const struct {
        const char* que;
        std::function<unsigned short()> llama;  // functions without a result answer 0 here
        std::vector<std::string> informes;
    } filas[] = {
        {"existe_u", [&] { return lumoreg_existe_clave_u(2, nullptr); }, {"(clave) != NULL"}},
        {"existe", [&] { return lumoreg_existe_clave(2, nullptr); }, {"(clave) != NULL"}},
        {"existe_en_vista",
         [&] { return lumoreg_existe_clave_en_vista_u(1, 2, nullptr); },
         {"(clave) != NULL"}},
        {"crea", [&] { return lumoreg_crea_clave_u(2, nullptr); }, {"(clave) != NULL"}},
        {"crea_en_vista", [&] { return lumoreg_crea_clave_en_vista_u(2, 2, nullptr); }, {"(clave) != NULL"}},
        {"borra_u", [&] { return lumoreg_borra_clave_u(2, nullptr, L"sub"), FALSO; }, {"(clave) != NULL"}},
        {"borra", [&] { return lumoreg_borra_clave(2, nullptr, "sub"), FALSO; }, {"(clave) != NULL"}},
        {"borra_u nombre",
         [&] { return lumoreg_borra_clave_u(2, ruta.c_str(), nullptr), FALSO; },
         {"(nombre) != NULL"}},
        {"borra nombre",
         [&] { return lumoreg_borra_clave(2, ruta_8.c_str(), nullptr), FALSO; },
         {"(nombre) != NULL"}},
        {"borra_valor",
         [&] { return lumoreg_borra_valor_clave_u(2, nullptr, L"v"), FALSO; },
         {"(clave) != NULL"}},
        {"borra_valor nombre",
         [&] { return lumoreg_borra_valor_clave_u(2, ruta.c_str(), nullptr), FALSO; },
         {"(nombre_valor) != NULL"}},
        {"cadena", [&] { return lumoreg_establece_cadena_u(2, nullptr, L"v", L"x"); }, {"(clave) != NULL"}},
        {"cadena nombre",
         [&] { return lumoreg_establece_cadena_u(2, ruta.c_str(), nullptr, L"x"); },
         {"(nombre_valor) != NULL"}},
        {"cadena dato",
         [&] { return lumoreg_establece_cadena_u(2, ruta.c_str(), L"v", nullptr); },
         {"(dato) != NULL"}},
        {"cadena todo",
         [&] { return lumoreg_establece_cadena_u(2, nullptr, nullptr, nullptr); },
         {"(nombre_valor) != NULL", "(dato) != NULL", "(clave) != NULL"}},
        {"expand",
         [&] { return lumoreg_establece_cadena_expand_u(2, nullptr, L"v", L"x"); },
         {"(clave) != NULL"}},
        {"expand nombre",
         [&] { return lumoreg_establece_cadena_expand_u(2, ruta.c_str(), nullptr, L"x"); },
         {"(nombre_valor) != NULL"}},
        {"expand dato",
         [&] { return lumoreg_establece_cadena_expand_u(2, ruta.c_str(), L"v", nullptr); },
         {"(dato) != NULL"}},
        {"en_vista",
         [&] { return lumoreg_establece_cadena_en_vista_u(1, 2, nullptr, L"v", L"x"); },
         {"(clave) != NULL"}},
        {"en_vista nombre",
         [&] { return lumoreg_establece_cadena_en_vista_u(1, 2, ruta.c_str(), nullptr, L"x"); },
         {"(nombre_valor) != NULL"}},
        {"en_vista dato",
         [&] { return lumoreg_establece_cadena_en_vista_u(1, 2, ruta.c_str(), L"v", nullptr); },
         {"(dato) != NULL"}},
        {"ulong_u", [&] { return lumoreg_establece_ulong_u(2, nullptr, L"v", 1); }, {"(clave) != NULL"}},
        {"ulong", [&] { return lumoreg_establece_ulong(2, nullptr, "v", 1); }, {"(clave) != NULL"}},
        {"ulong_u nombre",
         [&] { return lumoreg_establece_ulong_u(2, ruta.c_str(), nullptr, 1); },
         {"(nombre_valor) != NULL"}},
        {"ulong nombre",
         [&] { return lumoreg_establece_ulong(2, ruta_8.c_str(), nullptr, 1); },
         {"(nombre_valor) != NULL"}},
        {"lee_u", [&] { return lumoreg_lee_cadena_u(2, nullptr, L"v", &texto); }, {"(clave) != NULL"}},
        {"lee", [&] { return lumoreg_lee_cadena(2, nullptr, "v", &texto_8); }, {"(clave) != NULL"}},
        {"lee_ex", [&] { return lumoreg_lee_cadena_ex_u(1, 2, nullptr, L"v", &texto); }, {"(clave) != NULL"}},
        {"lee_u nombre",
         [&] { return lumoreg_lee_cadena_u(2, ruta.c_str(), nullptr, &texto); },
         {"(nombre_valor) != NULL"}},
        {"lee nombre",
         [&] { return lumoreg_lee_cadena(2, ruta_8.c_str(), nullptr, &texto_8); },
         {"(nombre_valor) != NULL"}},
        {"lee_ex nombre",
         [&] { return lumoreg_lee_cadena_ex_u(1, 2, ruta.c_str(), nullptr, &texto); },
         {"(nombre_valor) != NULL"}},
        {"lee_u contenido",
         [&] { return lumoreg_lee_cadena_u(2, ruta.c_str(), L"v", nullptr); },
         {"(contenido) != NULL"}},
        {"lee contenido",
         [&] { return lumoreg_lee_cadena(2, ruta_8.c_str(), "v", nullptr); },
         {"(contenido) != NULL"}},
        {"lee_ex contenido",
         [&] { return lumoreg_lee_cadena_ex_u(1, 2, ruta.c_str(), L"v", nullptr); },
         {"(contenido) != NULL"}},
        {"subclaves_u", [&] { return lumoreg_dame_subclaves_u(2, nullptr, lista); }, {"(clave) != NULL"}},
        {"subclaves", [&] { return lumoreg_dame_subclaves(2, nullptr, lista_8); }, {"(clave) != NULL"}},
        {"subclaves_ex",
         [&] { return lumoreg_dame_subclaves_ex_u(2, 2, nullptr, lista); },
         {"(clave) != NULL"}},
        {"subclaves_u lista",
         [&] { return lumoreg_dame_subclaves_u(2, ruta.c_str(), nullptr); },
         {"(subclaves) != NULL"}},
        {"subclaves lista",
         [&] { return lumoreg_dame_subclaves(2, ruta_8.c_str(), nullptr); },
         {"(subclaves) != NULL"}},
        {"subclaves_ex lista",
         [&] { return lumoreg_dame_subclaves_ex_u(2, 2, ruta.c_str(), nullptr); },
         {"(subclaves) != NULL"}},
        {"valores",
         [&] { return lumoreg_lee_valores_cadena_clave_ex_u(0, 2, nullptr, &nombres, &datos); },
         {"(clave) != NULL"}},
        {"valores valores",
         [&] { return lumoreg_lee_valores_cadena_clave_ex_u(0, 2, ruta.c_str(), nullptr, &datos); },
         {"(valores) != NULL"}},
        {"valores datos",
         [&] { return lumoreg_lee_valores_cadena_clave_ex_u(0, 2, ruta.c_str(), &nombres, nullptr); },
         {"(datos_valores) != NULL"}},
    };
    for (const auto& fila : filas) {
        const registro_vigilado vigilando;
        EXPECT_EQ(fila.llama(), 0) << fila.que;
        EXPECT_EQ(toma_informes_con_detalle(), fila.informes) << fila.que;
        for (const std::string& pedida : vigilado.pedidas) {
            EXPECT_TRUE(pedida.starts_with("RegOpenKeyEx") || pedida.starts_with("RegCloseKey"))
                << fila.que << ": " << pedida;
        }
    }
    EXPECT_EQ(texto, nullptr);
    EXPECT_EQ(texto_8, nullptr);
    EXPECT_EQ(nombres, nullptr);
    EXPECT_EQ(datos, nullptr);
    EXPECT_EQ(arr_NumElemsCADENA_u(lista), 0u);
    EXPECT_EQ(arr_NumElemsCADENA(lista_8), 0u);
    arr_DestruyeCADENA_u(&lista);
    arr_DestruyeCADENA(&lista_8);
    EXPECT_EQ(subclaves(bajo("k")), std::vector<std::string>{"sub"});
    EXPECT_TRUE(lee(bajo("k"), L"v").existe);
}
