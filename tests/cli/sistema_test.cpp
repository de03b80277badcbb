// The subcommands on the system: temporary files, searches, drives, processes.
#include <gtest/gtest.h>
#include <windows.h>

#include "json.hpp"
#include "orden.hpp"

using cli::fila;
using cli::lumodir;

namespace {

std::string i_linea(const std::string& texto) {
    return texto.substr(0, texto.find('\n'));
}

}  // namespace

TEST(tmp, un_fichero_nuevo) {
    const cli::directorio_de_prueba d;
    const cli::entorno con_temp{
        .entrada = {}, .variables = {{"TEMP", d.ruta()}, {"TMP", d.ruta()}}, .directorio = {}};
    for (const std::vector<std::string>& argumentos :
         std::vector<std::vector<std::string>>{{"tmp"},
                                               {"tmp", "--ext", "ñ"},
                                               {"tmp", "--ext", ".txt"},
                                               {"tmp", "--in", d.ruta()},
                                               {"tmp", "--in", d.ruta(), "--ext", "x"}}) {
        const cli::resultado uno = lumodir(argumentos, con_temp), otro = lumodir(argumentos, con_temp);
        EXPECT_EQ(uno.codigo, 0) << uno.errores;
        const std::string ruta = i_linea(uno.salida);
        EXPECT_TRUE(cli::existe(ruta)) << uno.salida;
        EXPECT_EQ(ruta.find(d.ruta()), 0u) << ruta;
        EXPECT_NE(i_linea(otro.salida), ruta);
        const std::string extension = ruta.substr(ruta.rfind('.') + 1);
        const std::string pedida = argumentos.back() == "tmp" || argumentos.back() == d.ruta() ? "tmp"
                                   : argumentos.back() == ".txt"                               ? "txt"
                                                                 : argumentos.back();
        EXPECT_TRUE(_stricmp(extension.c_str(), pedida.c_str()) == 0) << ruta;
    }
    const cli::resultado en_json = lumodir({"tmp", "--json"}, con_temp);
    EXPECT_EQ(cli::json_compacto(en_json.salida).find(R"({"path":")"), 0u) << en_json.salida;
    cli::comprueba({{"tmp", "--in", "$D\\no"}, 1, {}, "lumodir: Directory '$D\\no' does not exist.\n"}, d);
}

TEST(where, con_y_sin_extension_en_el_orden_de_path) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("uno\\prueba_ñ.exe");
    d.crea_fichero("dos\\prueba_ñ.exe");
    d.crea_directorio("dos\\directorio.exe");
    const cli::entorno con_path{
        .entrada = {},
        .variables = {{"PATH", d.bajo("uno") + ";" + d.bajo("dos")}, {"PATHEXT", ".COM;.EXE"}},
        .directorio = {}};
    const std::string ambos = d.bajo("uno\\prueba_ñ.exe") + "\n" + d.bajo("dos\\prueba_ñ.exe") + "\n";
    EXPECT_EQ(lumodir({"where", "prueba_ñ"}, con_path).salida, ambos);
    EXPECT_EQ(lumodir({"where", "prueba_ñ.exe"}, con_path).salida, ambos);
    const cli::resultado ninguno = lumodir({"where", "directorio"}, con_path);
    EXPECT_EQ(ninguno.codigo, 1);
    EXPECT_EQ(ninguno.errores, "lumodir: 'directorio' is in no directory of PATH\n");
    const cli::resultado en_json = lumodir({"where", "nada", "--json"}, con_path);
    EXPECT_EQ(en_json.codigo, 1);
    EXPECT_EQ(cli::json_compacto(en_json.salida), R"({"name":"nada","paths":[]})");
}

TEST(formas, corta_y_larga) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("un nombre bastante largo.txt");
    const std::string larga = d.bajo("un nombre bastante largo.txt");
    const cli::resultado corta = lumodir({"short", larga});
    EXPECT_EQ(corta.codigo, 0);
    EXPECT_TRUE(cli::existe(i_linea(corta.salida))) << corta.salida;
    const cli::resultado vuelta = lumodir({"long", i_linea(corta.salida)});
    EXPECT_EQ(i_linea(vuelta.salida), larga);
    cli::comprueba(
        {{"long", "$D\\no"}, 1, "$D\\no\n", "lumodir: '$D\\no' does not exist and stays as it is\n"}, d);
    cli::comprueba(
        {{"short", "$D\\no", "--json"}, 1, R"([{"path":"$D\\no","result":"$D\\no","exists":false}])"}, d);
}

TEST(whereami, programa_y_directorios) {
    const cli::directorio_de_prueba d;
    const cli::resultado r = lumodir(
        {"whereami"},
        {.entrada = {}, .variables = {{"TEMP", d.ruta()}, {"TMP", d.ruta()}}, .directorio = d.ruta()});
    EXPECT_EQ(r.codigo, 0);
    const size_t barra = r.salida.find("\nprogram drive        ");
    ASSERT_NE(barra, std::string::npos) << r.salida;
    EXPECT_EQ(r.salida.find("program              "), 0u) << r.salida;
    EXPECT_NE(r.salida.find("\\bin\\lumodir.exe\n"), std::string::npos) << r.salida;
    EXPECT_NE(r.salida.find("\ncurrent directory    " + d.ruta() + "\n"), std::string::npos) << r.salida;
    EXPECT_NE(r.salida.find("\ntemporary directory  " + d.ruta()), std::string::npos) << r.salida;
}

TEST(drives, la_del_sistema_esta) {
    const cli::resultado r = lumodir({"drives"});
    EXPECT_EQ(r.codigo, 0);
    EXPECT_EQ(r.salida.find("drive  type"), 0u) << r.salida;
    EXPECT_NE(r.salida.find("\nC:     fixed"), std::string::npos) << r.salida;
    const std::string en_json = cli::json_compacto(lumodir({"drives", "--json"}).salida);
    EXPECT_NE(en_json.find(R"({"drive":"C:","type":"fixed",)"), std::string::npos) << en_json;
}

TEST(about, version_sistema_e_idioma) {
    const std::string en_json = cli::json_compacto(lumodir({"about", "--json", "--lang", "de"}).salida);
    EXPECT_NE(en_json.find(R"("version":"1.)"), std::string::npos) << en_json;
    EXPECT_NE(en_json.find(R"("language":"german","language_slot":13)"), std::string::npos) << en_json;
    // By its manifest, whatever that of the machine is; Windows knows that since 10 1903, Wine since before 8.
    EXPECT_NE(en_json.find(R"("code_page":65001,)"), std::string::npos) << en_json;
    HKEY clave = nullptr;
    const bool en_wine =
        RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Wine", 0, KEY_READ, &clave) == ERROR_SUCCESS;
    if (clave) {
        RegCloseKey(clave);
    }
    EXPECT_NE(en_json.find(en_wine ? R"("system":"Wine )" : R"("system":"Windows )"), std::string::npos)
        << en_json;
}

TEST(ps, procesos_con_nombre_propio) {
    const cli::directorio_de_prueba d;
    const std::string nombre = "Prueba_" + std::to_string(GetCurrentProcessId()) + ".exe";
    const std::string programa = d.bajo(nombre);
    ASSERT_TRUE(CopyFileW(cli::w(cli::este_programa()).c_str(), cli::w(programa).c_str(), TRUE));
    cli::comprueba({{"ps", nombre},
                    1,
                    {},
                    "lumodir: no process has loaded '" + nombre + "' (the name is case-sensitive)\n"},
                   d);
    cli::comprueba({{"ps", nombre, "--json"}, 1, "[]"}, d);
    {
        cli::proceso uno(programa, {"--sleep", "60000"}), otro(programa, {"--sleep", "60000"});
        ASSERT_TRUE(cli::espera_a_que(5000, [&] {
            const std::string salida = lumodir({"ps", nombre}).salida;
            return salida.find(std::to_string(uno.pid())) != salida.npos &&
                   salida.find(std::to_string(otro.pid())) != salida.npos;
        }));
        EXPECT_NE(lumodir({"ps", nombre}).salida.find(programa), std::string::npos);
        // Asked, and no: both live on.
        const cli::resultado no =
            lumodir({"kill", nombre}, {.entrada = "n\n", .variables = {}, .directorio = {}});
        EXPECT_EQ(no.codigo, 1);
        EXPECT_EQ(no.errores.find("End 2 processes of '" + nombre + "' ("), 0u) << no.errores;
        EXPECT_EQ(lumodir({"ps", nombre}).codigo, 0);
        const cli::resultado si = lumodir({"kill", nombre, "--yes"});
        EXPECT_EQ(si.codigo, 0) << si.errores;
        EXPECT_NE(si.salida.find("ended " + std::to_string(uno.pid()) + " " + programa), std::string::npos)
            << si.salida;
        EXPECT_NE(si.salida.find("ended " + std::to_string(otro.pid()) + " " + programa), std::string::npos)
            << si.salida;
        EXPECT_EQ(uno.espera().codigo, 0);
        EXPECT_EQ(otro.espera().codigo, 0);
    }
    EXPECT_EQ(lumodir({"kill", nombre, "--yes"}).codigo, 1);
}

TEST(kill, ni_bibliotecas_ni_a_si_misma) {
    // Nobody confirms: what were not refused would end in a question.
    const cli::directorio_de_prueba d;
    const fila filas[] = {
        {{"kill", "ntdll.dll"},
         1,
         {},
         "lumodir: 'ntdll.dll' is not the name of an executable; --modules ends every process that has "
         "loaded it\n"},
        {{"kill", ""}, 1, {}, "lumodir: the name is empty: refused, nothing is done\n"},
        {{"kill", "lumodir.exe"},
         1,
         {},
         "lumodir: no other process has loaded 'lumodir.exe' (the name is case-sensitive)\n"},
        {{"kill"},
         2,
         {},
         "lumodir: an argument is missing\nUsage: lumodir kill NAME [OPTION...]\nTry 'lumodir kill "
         "--help'.\n"},
    };
    cli::comprueba(filas, d);
}
