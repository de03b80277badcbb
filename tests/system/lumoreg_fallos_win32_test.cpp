// Every registry call of every operation failing in its turn, once and for ever: nothing leaks, nothing stays
// open, no out string is touched, and each failure of closing is reported with the path of its key.
#include <functional>
#include <map>

#include "companions/lumostr.h"
#include "companions/widestr.h"
#include "lumoreg.h"
#include "registro_de_pruebas.hpp"

using namespace apoyo;
using namespace interno;

namespace {

using textos = std::vector<std::string>;
using fallos_lumoreg = con_registro;

void libera_valores(ArrCADENA_u** nombres, ArrPunteroConTipo** datos) {
    if (*nombres != nullptr) {
        arr_DestruyeCADENA_u(nombres);
        arr_DestruyeEstructurasConTipo(
            datos, [](void** registro) { arr_DestruyeCADENA_u(reinterpret_cast<ArrCADENA_u**>(registro)); });
    }
}

struct operacion {
    const char* nombre;
    std::function<unsigned short()> llama;
    bool con_resultado = true;
};

const texto_w& ruta() {
    static const texto_w texto = bajo("k");
    return texto;
}
const texto_a& ruta_8() {
    static const texto_a texto = bajo_a("k");
    return texto;
}

std::vector<operacion> operaciones() {
    constexpr unsigned long r = raiz_de_pruebas;
    return {
        {"existe_u", [] { return lumoreg_existe_clave_u(r, ruta().c_str()); }},
        {"existe", [] { return lumoreg_existe_clave(r, ruta_8().c_str()); }},
        {"existe_en_vista", [] { return lumoreg_existe_clave_en_vista_u(1, r, ruta().c_str()); }},
        {"crea", [] { return lumoreg_crea_clave_u(r, bajo("k\\new").c_str()); }},
        {"crea_en_vista", [] { return lumoreg_crea_clave_en_vista_u(2, r, bajo("k\\new").c_str()); }},
        {"cadena", [] { return lumoreg_establece_cadena_u(r, ruta().c_str(), L"w", L"t"); }},
        {"expand", [] { return lumoreg_establece_cadena_expand_u(r, ruta().c_str(), L"w", L"t"); }},
        {"en_vista", [] { return lumoreg_establece_cadena_en_vista_u(1, r, ruta().c_str(), L"w", L"t"); }},
        {"ulong_u", [] { return lumoreg_establece_ulong_u(r, ruta().c_str(), L"n", 1); }},
        {"ulong", [] { return lumoreg_establece_ulong(r, ruta_8().c_str(), "n", 1); }},
        {"lee_u",
         [] {
             wchar_t* texto = nullptr;
             const unsigned short leido = lumoreg_lee_cadena_u(r, ruta().c_str(), L"v", &texto);
             EXPECT_EQ(texto != nullptr, leido == 1);
             widestr_nousar_destruye_opcional(&texto, "test", 1);
             return leido;
         }},
        {"lee",
         [] {
             char* texto = nullptr;
             const unsigned short leido = lumoreg_lee_cadena(r, ruta_8().c_str(), "v", &texto);
             EXPECT_EQ(texto != nullptr, leido == 1);
             lumostr_destruye_opcional(&texto);
             return leido;
         }},
        {"subclaves_u",
         [] {
             ArrCADENA_u* lista = arr_CreaCADENA_u(0);
             const unsigned short dadas = lumoreg_dame_subclaves_u(r, ruta().c_str(), lista);
             arr_DestruyeCADENA_u(&lista);
             return dadas;
         }},
        {"subclaves",
         [] {
             ArrCADENA* lista = arr_CreaCADENA(0);
             const unsigned short dadas = lumoreg_dame_subclaves(r, ruta_8().c_str(), lista);
             arr_DestruyeCADENA(&lista);
             return dadas;
         }},
        {"valores",
         [] {
             ArrCADENA_u* nombres = nullptr;
             ArrPunteroConTipo* datos = nullptr;
             const unsigned short leidos =
                 lumoreg_lee_valores_cadena_clave_ex_u(0, r, ruta().c_str(), &nombres, &datos);
             EXPECT_EQ(nombres != nullptr, leidos == 1);
             EXPECT_EQ(datos != nullptr, leidos == 1);
             libera_valores(&nombres, &datos);
             return leidos;
         }},
        {"borra_valor", [] { return lumoreg_borra_valor_clave_u(r, ruta().c_str(), L"v"), CIERTO; }, false},
        {"borra_u", [] { return lumoreg_borra_clave_u(r, clave_de_pruebas, L"k"), CIERTO; }, false},
        {"borra", [] { return lumoreg_borra_clave(r, "Software\\lumodir-pruebas", "k"), CIERTO; }, false},
    };
}

void prepara() {
    ::RegDeleteTreeW(HKEY_CURRENT_USER, ruta().c_str());
    crea(bajo("k\\a"));
    crea(bajo("k\\b"));
    pon(ruta(), L"v", REG_SZ, texto_w(L"text"));
    pon(ruta(), L"m", REG_MULTI_SZ, texto_w(L"multi"));
}

}  // namespace

TEST_F(fallos_lumoreg, ninguna_llamada_que_falla_deja_nada_abierto) {
    for (const operacion& op : operaciones()) {
        for (const bool para_siempre : {false, true}) {
            unsigned long n = 1;
            for (bool limpia = false; !limpia; ++n) {
                SCOPED_TRACE(testing::Message()
                             << op.nombre << ", call " << n << (para_siempre ? " on" : ""));
                ASSERT_LT(n, 100u);
                prepara();
                unsigned short resultado;
                {
                    const registro_vigilado vigilando(n, para_siempre);
                    resultado = op.llama();
                    limpia = vigilado.llamadas < n;
                }
                for (const std::string& informe : toma_informes_con_detalle()) {
                    EXPECT_NE(informe.find(" [" /* each with its detail */), std::string::npos) << informe;
                }
                if (limpia) {
                    EXPECT_EQ(resultado, 1);
                } else if (para_siempre && n == 1 && op.con_resultado) {
                    EXPECT_EQ(resultado, 0);
                }
            }
            EXPECT_GE(n, 3u) << op.nombre;  // opening and closing at least
        }
    }
}

namespace {

// The calls of an operation, the closing of keys left out, with "$" for the tests' own key.
std::vector<std::string> lo_pedido(const operacion& op) {
    const registro_vigilado vigilando;
    op.llama();
    std::vector<std::string> pedido;
    for (std::string llamada : vigilado.pedidas) {
        const std::string clave = u8(clave_de_pruebas);
        if (const std::size_t donde = llamada.find(clave); donde != llamada.npos) {
            llamada.replace(donde, clave.size(), "$");
        }
        if (llamada != "RegCloseKey(key)") {
            pedido.push_back(llamada);
        }
    }
    return pedido;
}

// The bytes of the longest value, as the system counts them (Wine counts a terminator that is not there).
DWORD mayor_dato() {
    DWORD bytes = 0;
    const HKEY clave = abre(ruta().c_str());
    ::RegQueryInfoKeyW(clave, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &bytes,
                       nullptr, nullptr);
    ::RegCloseKey(clave);
    return bytes;
}

}  // namespace

// Rights, options and rooms: no more than an operation needs, and no less.
TEST_F(fallos_lumoreg, a_el_sistema_se_le_pide_lo_justo) {
    prepara();
    pon(ruta(), L"odd", REG_BINARY, std::string_view("thirteen long"));
    const DWORD dato = mayor_dato();
    ASSERT_EQ(dato % 2, 1u);
    const std::string consulta = "RegOpenKeyExW(HKCU, '$\\k', 0, 1, &)",
                      todo = "RegOpenKeyExW(HKCU, '$\\k', 0, F003F, &)",
                      que_tiene = "(key, -, -, -, &0, &0, -, &0, &0, &0, -, -)",
                      valor = ", &, &4, -, &0, &, &" + en_texto(dato + 1) + ")",
                      subclave = ", &, &64, -, -, -, -)";
    const textos borrado = {"RegOpenKeyExW(HKCU, '$', 0, F003F, &)", "RegOpenKeyExW(key, 'k', 8, F003F, &)",
                            "RegEnumKeyExW(key, 0" + subclave,       "RegOpenKeyExW(key, 'a', 8, F003F, &)",
                            "RegEnumKeyExW(key, 0" + subclave,       "NtDeleteKey(&)",
                            "RegEnumKeyExW(key, 1" + subclave,       "NtDeleteKey(&)"};
    const std::map<std::string, textos> esperado = {
        {"existe_u", {consulta}},
        {"existe", {consulta}},
        {"existe_en_vista", {"RegOpenKeyExW(HKCU, '$\\k', 0, 101, &)"}},
        {"crea", {"RegCreateKeyExW(HKCU, '$\\k\\new', 0, &, 0, F003F, -, &, -)"}},
        {"crea_en_vista", {"RegCreateKeyExW(HKCU, '$\\k\\new', 0, &, 0, F023F, -, &, -)"}},
        {"cadena", {todo, "RegSetValueExW(key, 'w', 0, 1, &, 4)"}},
        {"expand", {todo, "RegSetValueExW(key, 'w', 0, 2, &, 4)"}},
        {"en_vista", {"RegOpenKeyExW(HKCU, '$\\k', 0, F013F, &)", "RegSetValueExW(key, 'w', 0, 1, &, 4)"}},
        {"ulong_u", {todo, "RegSetValueExW(key, 'n', 0, 4, &, 4)"}},
        {"ulong", {todo, "RegSetValueExW(key, 'n', 0, 4, &, 4)"}},
        {"lee_u",
         {consulta, "RegQueryInfoKeyW" + que_tiene,
          "RegQueryValueExW(key, 'v', -, -, &, &" + en_texto(dato + 1) + ")"}},
        {"lee",
         {"RegOpenKeyExA(HKCU, '$\\k', 0, 1, &)", "RegQueryInfoKeyA" + que_tiene,
          "RegQueryValueExA(key, 'v', -, -, &, &" + en_texto(dato) + ")"}},
        {"subclaves_u",
         {"RegOpenKeyExW(HKCU, '$\\k', 0, 20019, &)", "RegQueryInfoKeyW" + que_tiene,
          "RegEnumKeyExW(key, 0, &, &100, -, -, -, -)", "RegEnumKeyExW(key, 1, &, &100, -, -, -, -)"}},
        {"subclaves",
         {"RegOpenKeyExA(HKCU, '$\\k', 0, 20019, &)", "RegQueryInfoKeyA" + que_tiene,
          "RegEnumKeyExA(key, 0, &, &2FE, -, -, -, -)", "RegEnumKeyExA(key, 1, &, &2FE, -, -, -, -)"}},
        {"valores",
         {consulta, "RegQueryInfoKeyW" + que_tiene, "RegEnumValueW(key, 0" + valor,
          "RegEnumValueW(key, 1" + valor, "RegEnumValueW(key, 2" + valor}},
        {"borra_valor", {todo, "RegDeleteValueW(key, 'v')"}},
        {"borra_u", borrado},
        {"borra", borrado},
    };
    for (const operacion& op : operaciones()) {
        prepara();
        pon(ruta(), L"odd", REG_BINARY, std::string_view("thirteen long"));
        EXPECT_EQ(lo_pedido(op), esperado.at(op.nombre)) << op.nombre;
        // Of two subkeys the second stays, and what holds it.
        EXPECT_EQ(toma_informes_con_detalle(),
                  esperado.at(op.nombre) == borrado ? textos{"resultado == ERROR_SUCCESS [k]"} : textos{})
            << op.nombre;
    }
}

namespace {

tabla_sistema g_registro_que_falla;
LSTATUS WINAPI cierra_con_queja(HKEY clave) {
    g_registro_que_falla.RegCloseKey(clave);
    return ERROR_INVALID_HANDLE;
}

}  // namespace

TEST_F(fallos_lumoreg, un_cierre_que_falla_se_informa_con_el_path_y_el_resultado_vale) {
    g_registro_que_falla = sistema;
    const sustituye cerrar(sistema.RegCloseKey, cierra_con_queja);
    for (const operacion& op : operaciones()) {
        prepara();
        EXPECT_EQ(op.llama(), 1) << op.nombre;
        const std::vector<std::string> informes = toma_informes_con_detalle();
        const std::string clave = std::string(op.nombre).find("crea") == 0 ? "\\k\\new]" : "\\k]";
        EXPECT_TRUE(std::find(informes.begin(), informes.end(),
                              "error == ERROR_SUCCESS [Software\\lumodir-pruebas" + clave) != informes.end())
            << op.nombre;
        if (op.con_resultado) {
            EXPECT_EQ(informes.size(), 1u) << op.nombre;
        }
    }
}
