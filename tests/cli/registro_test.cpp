// The subcommands on the registry, under a key of the tests' own.
#include <gtest/gtest.h>
#include <windows.h>

#include "orden.hpp"

using cli::fila;
using cli::lumodir;

namespace {

class clave_de_prueba {
public:
    clave_de_prueba() : nombre_("LumodirPruebas_" + std::to_string(GetCurrentProcessId())) { i_borra(); }
    ~clave_de_prueba() { i_borra(); }
    clave_de_prueba(const clave_de_prueba&) = delete;
    clave_de_prueba& operator=(const clave_de_prueba&) = delete;
    std::string ruta() const { return "HKCU\\Software\\" + nombre_; }

    // A value of any type.
    void pon(const char* nombre, DWORD tipo, const std::wstring& datos) const {
        HKEY clave = nullptr;
        RegCreateKeyExW(HKEY_CURRENT_USER, cli::w("Software\\" + nombre_).c_str(), 0, nullptr, 0,
                        KEY_ALL_ACCESS, nullptr, &clave, nullptr);
        EXPECT_EQ(RegSetValueExW(clave, cli::w(nombre).c_str(), 0, tipo,
                                 reinterpret_cast<const BYTE*>(datos.data()),
                                 static_cast<DWORD>(datos.size() * sizeof(wchar_t))),
                  ERROR_SUCCESS);
        RegCloseKey(clave);
    }

private:
    void i_borra() const { RegDeleteTreeW(HKEY_CURRENT_USER, cli::w("Software\\" + nombre_).c_str()); }
    std::string nombre_;
};

std::string i_doble(std::string texto) {
    for (size_t i = 0; (i = texto.find('\\', i)) != texto.npos; i += 2) {
        texto.insert(i, 1, '\\');
    }
    return texto;
}

}  // namespace

TEST(reg, ida_y_vuelta) {
    const cli::directorio_de_prueba d;
    const clave_de_prueba clave;
    const std::string k = clave.ruta();
    const std::string larga = "HKEY_CURRENT_USER" + k.substr(4);
    const std::string no_esta = "lumodir: the key '" + k + "' does not exist or may not be read\n";
    const fila filas[] = {
        {{"reg", "get", k, "n"}, 1, {}, no_esta},
        {{"reg", "ls", k}, 1, {}, no_esta},
        {{"reg", "rm", k, "--yes"}, 1, {}, no_esta},
        {{"reg", "set", k, "nombre ñ", "dato 日本"}, 0, "set " + k + " nombre ñ\n"},
        {{"reg", "get", k, "nombre ñ"}, 0, "dato 日本\n"},
        {{"reg", "get", larga, "nombre ñ", "--json"},
         0,
         "{\"key\":\"" + i_doble(k) + R"(","name":"nombre ñ","data":"dato 日本"})"},
        {{"reg", "get", k, "otro"}, 1, {}, "lumodir: the key '" + k + "' has no value 'otro'\n"},
        {{"reg", "set", k, "", "por omisión"}, 0, "set " + k + " \n"},
        {{"reg", "set", k, "e", "%PATH%", "--expand"}, 0, "set " + k + " e\n"},
        {{"reg", "get", k, "e"}, 0, "%PATH%\n"},
        {{"reg", "set", k, "n", "4294967295", "--dword"}, 0, "set " + k + " n\n"},
        {{"reg", "set", k + "\\sub\\honda"}, 0, "set " + k + "\\sub\\honda\n"},
        {{"reg", "ls", k}, 0, "sub\\\nvalue      data\n(default)  por omisión\nnombre ñ   dato 日本\n"},
        {{"reg", "ls", k + "\\sub\\", "--json"},
         0,
         "{\"key\":\"" + i_doble(k) + R"(\\sub","subkeys":["honda"],"values":[]})"},
    };
    cli::comprueba(filas, d);
    DWORD numero = 0, bytes = sizeof numero;
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, cli::w(k.substr(5)).c_str(), L"n", RRF_RT_REG_DWORD, nullptr,
                           &numero, &bytes),
              ERROR_SUCCESS);
    EXPECT_EQ(numero, 4294967295u);
    clave.pon("multi", REG_MULTI_SZ, std::wstring(L"a\0b\0\0", 5));
    EXPECT_NE(lumodir({"reg", "ls", k}).salida.find("multi      a | b\n"), std::string::npos);
}

TEST(reg, borrar_pregunta_y_llega_hasta_el_fondo) {
    const cli::directorio_de_prueba d;
    const clave_de_prueba clave;
    const std::string k = clave.ruta();
    for (const char* sub : {"\\k1\\a", "\\k2\\b\\c", "\\k3", "\\k4", "\\k5"}) {
        ASSERT_EQ(lumodir({"reg", "set", k + sub}).codigo, 0);
    }
    ASSERT_EQ(lumodir({"reg", "set", k, "v", "1"}).codigo, 0);
    const std::string nada = " [y/N] \nlumodir: not confirmed, nothing is done\n";
    const fila filas[] = {
        {{"reg", "rm", k, "v"}, 1, {}, "Delete the value 'v' of '" + k + "'?" + nada, "n\n"},
        {{"reg", "rm", k}, 1, {}, "Delete the key '" + k + "' with 8 subkeys?" + nada},
        {{"reg", "get", k, "v"}, 0, "1\n"},
        {{"reg", "rm", k, "v", "--yes"}, 0, "deleted " + k + " v\n"},
        {{"reg", "rm", k, "v", "--yes"}, 1, {}, "lumodir: the key '" + k + "' has no value 'v'\n"},
        {{"reg", "rm", k, "-y"}, 0, "deleted " + k + "\n"},
        {{"reg", "ls", k}, 1, {}, "lumodir: the key '" + k + "' does not exist or may not be read\n"},
    };
    cli::comprueba(filas, d);
}

TEST(reg, raices_y_mal_uso) {
    const cli::directorio_de_prueba d;
    // Nobody confirms: what were not refused would end in a question.
    for (const char* raiz : {"HKCU", "HKCU\\", "HKEY_LOCAL_MACHINE", "HKCU\\Software", "hklm\\Software\\"}) {
        const cli::resultado r = lumodir({"reg", "rm", raiz});
        EXPECT_EQ(r.codigo, 1) << raiz;
        EXPECT_NE(r.errores.find("is a root key or directly below one: refused, nothing is done\n"),
                  std::string::npos)
            << r.errores;
    }
    const std::string uso =
        "Usage: lumodir reg set KEY [NAME DATA] [OPTION...]\nTry 'lumodir reg set --help'.\n";
    const fila filas[] = {
        {{"reg", "ls", "HKXX\\a"},
         2,
         {},
         "lumodir: 'HKXX\\a' does not begin with HKCR, HKCC, HKCU, HKLM or HKU\n"
         "Usage: lumodir reg ls KEY [OPTION...]\nTry 'lumodir reg ls --help'.\n"},
        {{"reg", "ls", "HKCU", "--view", "16"},
         2,
         {},
         "lumodir: --view must be 32 or 64\nUsage: lumodir reg ls KEY [OPTION...]\nTry 'lumodir reg ls "
         "--help'.\n"},
        {{"reg", "set", "HKCU\\Software\\x", "n"},
         2,
         {},
         "lumodir: a value needs its data too; without a name the key alone is created\n" + uso},
        {{"reg", "set", "HKCU\\Software\\x", "n", "x", "--dword"},
         2,
         {},
         "lumodir: the value must be a number from 0 to 4294967295, not 'x'\n" + uso},
    };
    cli::comprueba(filas, d);
    const cli::resultado sola = lumodir({"reg"});
    EXPECT_EQ(sola.codigo, 2);
    EXPECT_NE(sola.errores.find("\n  reg ls "), std::string::npos) << sola.errores;
    EXPECT_EQ(lumodir({"reg", "--help"}).codigo, 0);
    EXPECT_NE(lumodir({"reg", "nada"}).codigo, 0);
}
