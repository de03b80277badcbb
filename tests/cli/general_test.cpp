// What every subcommand has in common: help, usage errors, languages, JSON, the streams.
#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "orden.hpp"

using cli::fila;
using cli::lumodir;

namespace {

// The names of the subcommands, as the general help lists them: two blanks, the name, more blanks.
std::vector<std::string> i_ordenes() {
    std::istringstream ayuda(lumodir({"--help"}).salida);
    std::vector<std::string> nombres;
    for (std::string linea; std::getline(ayuda, linea) && linea != "Options of every command";) {
        if (linea.size() > 14 && linea.substr(0, 2) == "  " && linea[2] != ' ' && linea[2] != '0') {
            nombres.push_back(linea.substr(2, linea.find("  ", 3) - 2));
        }
    }
    return nombres;
}

std::vector<std::string> i_palabras(const std::string& nombre) {
    const size_t blanco = nombre.find(' ');
    return blanco == nombre.npos
               ? std::vector<std::string>{nombre}
               : std::vector<std::string>{nombre.substr(0, blanco), nombre.substr(blanco + 1)};
}

}  // namespace

TEST(ayuda, la_general_nombra_todas_las_ordenes) {
    const std::vector<std::string> ordenes = i_ordenes();
    const std::set<std::string> nombres(ordenes.begin(), ordenes.end());
    for (const char* nombre :
         {"check",  "split",   "join",    "name",      "relative",   "absolute", "shorten", "repair",
          "ls",     "tree",    "sets",    "exists",    "test",       "size",     "date",    "touch",
          "mkdir",  "mv",      "protect", "unprotect", "rename-ext", "rm",       "rmtree",  "tmp",
          "where",  "short",   "long",    "whereami",  "drives",     "ps",       "kill",    "about",
          "reg ls", "reg get", "reg set", "reg rm"}) {
        EXPECT_TRUE(nombres.contains(nombre)) << nombre;
    }
    EXPECT_EQ(nombres.size(), ordenes.size());
}

TEST(ayuda, cada_orden_se_explica_con_ejemplos_que_caben) {
    for (const std::string& nombre : i_ordenes()) {
        std::vector<std::string> argumentos = i_palabras(nombre);
        argumentos.push_back("--help");
        const cli::resultado r = lumodir(argumentos);
        EXPECT_EQ(r.codigo, 0) << nombre;
        EXPECT_EQ(r.errores, "") << nombre;
        EXPECT_EQ(r.salida.rfind("lumodir " + nombre + " - ", 0), 0u) << r.salida;
        EXPECT_NE(r.salida.find("\nUsage: lumodir " + nombre), std::string::npos) << r.salida;
        EXPECT_NE(r.salida.find("\nExamples\n  lumodir "), std::string::npos) << r.salida;
        std::istringstream lineas(r.salida);
        for (std::string linea; std::getline(lineas, linea);) {
            EXPECT_LE(linea.size(), 100u) << nombre << ": " << linea;
        }
        if (nombre != "check" && nombre != "reg get") {
            continue;  // a process start under Wine is not cheap
        }
        // The same through "help", "-h" and the sign that people on Windows know.
        std::vector<std::string> otra = i_palabras(nombre);
        otra.insert(otra.begin(), "help");
        EXPECT_EQ(lumodir(otra).salida, r.salida);
        argumentos.back() = "/?";
        EXPECT_EQ(lumodir(argumentos).salida, r.salida);
    }
}

TEST(ayuda, sin_orden_va_a_los_errores_y_es_mal_uso) {
    const cli::resultado r = lumodir({});
    EXPECT_EQ(r.codigo, 2);
    EXPECT_EQ(r.salida, "");
    EXPECT_EQ(r.errores, lumodir({"--help"}).salida);
    EXPECT_EQ(lumodir({"help"}).salida, lumodir({"-h"}).salida);
}

TEST(uso, lo_que_no_se_entiende_acaba_en_2_y_no_escribe_nada_en_la_salida) {
    const cli::directorio_de_prueba d;
    const fila filas[] = {
        {.argumentos = {"chek", "a"},
         .codigo = 2,
         .salida = {},
         .errores = "lumodir: there is no command 'chek'; did you mean 'check'?\nTry 'lumodir --help'.\n",
         .entrada = {}},
        {.argumentos = {"xyzzy"},
         .codigo = 2,
         .salida = {},
         .errores = "lumodir: there is no command 'xyzzy'\nTry 'lumodir --help'.\n",
         .entrada = {}},
        {.argumentos = {"check"},
         .codigo = 2,
         .salida = {},
         .errores =
             "lumodir: an argument is missing\nUsage: lumodir check PATH...\nTry 'lumodir check --help'.\n",
         .entrada = {}},
        {.argumentos = {"shorten", "a"},
         .codigo = 2,
         .salida = {},
         .errores =
             "lumodir: arguments are missing\nUsage: lumodir shorten PATH N\nTry 'lumodir shorten --help'.\n",
         .entrada = {}},
        {.argumentos = {"shorten", "a", "3", "ñandú"},
         .codigo = 2,
         .salida = {},
         .errores = "lumodir: one argument too many: 'ñandú'\nUsage: lumodir shorten PATH N\n"
                    "Try 'lumodir shorten --help'.\n",
         .entrada = {}},
        {.argumentos = {"check", "--wrong", "a"},
         .codigo = 2,
         .salida = {},
         .errores =
             "lumodir: unknown option '--wrong'\nUsage: lumodir check PATH...\nTry 'lumodir check --help'.\n",
         .entrada = {}},
        {.argumentos = {"check", "-x"},
         .codigo = 2,
         .salida = {},
         .errores = "lumodir: unknown option '-x' (a path that begins with '-' goes after '--')\n"
                    "Usage: lumodir check PATH...\nTry 'lumodir check --help'.\n",
         .entrada = {}},
        {.argumentos = {"check", "a", "--lang"},
         .codigo = 2,
         .salida = {},
         .errores = "lumodir: option '--lang' needs a value (L)\nUsage: lumodir check PATH...\n"
                    "Try 'lumodir check --help'.\n",
         .entrada = {}},
        {.argumentos = {"check", "a", "--json=1"},
         .codigo = 2,
         .salida = {},
         .errores = "lumodir: option '--json' takes no value\nUsage: lumodir check PATH...\n"
                    "Try 'lumodir check --help'.\n",
         .entrada = {}},
        {.argumentos = {"shorten", "a", "65536"},
         .codigo = 2,
         .salida = {},
         .errores =
             "lumodir: N must be a number from 0 to 65535, not '65536'\nUsage: lumodir shorten PATH N\n"
             "Try 'lumodir shorten --help'.\n",
         .entrada = {}},
        {.argumentos = {"--json", "check"},  // usage errors are words, also for scripts
         .codigo = 2,
         .salida = {},
         .errores =
             "lumodir: an argument is missing\nUsage: lumodir check PATH...\nTry 'lumodir check --help'.\n",
         .entrada = {}},
    };
    for (const fila& f : filas) {
        cli::comprueba(f, d);
    }
}

TEST(idioma, por_codigo_nombre_o_numero) {
    const cli::directorio_de_prueba d;
    const std::pair<std::vector<std::string>, std::string> filas[] = {
        {{"--lang", "en"}, "You have not specified any directory name"},
        {{"--lang", "English"}, "You have not specified any directory name"},
        {{"--lang=8"}, "You have not specified any directory name"},
        {{"--lang", "40"}, "You have not specified any directory name"},
        {{"--lang", "es"}, "No ha especificado ningún nombre de directorio"},
        {{"--lang", "SPANISH"}, "No ha especificado ningún nombre de directorio"},
        {{"--lang", "15"}, "No ha especificado ningún nombre de directorio"},
    };
    for (const auto& [opciones, texto] : filas) {
        std::vector<std::string> argumentos = {"check", ""};
        argumentos.insert(argumentos.end(), opciones.begin(), opciones.end());
        cli::comprueba({argumentos, 1, "invalid  (empty): " + texto + "\n", {}, {}}, d);
    }
    for (const char* malo : {"41", "klingon", "", "-1", "8x"}) {
        const cli::resultado r = lumodir({"check", "a", "--lang", malo});
        EXPECT_EQ(r.codigo, 2) << malo;
        EXPECT_EQ(r.salida, "") << malo;
    }
}

TEST(opciones, antes_o_despues_de_la_orden_y_guiones_dobles) {
    const cli::directorio_de_prueba d;
    cli::comprueba({{"--json", "join", "a", "b"}, 0, R"({"path":"a\\b"})", {}, {}}, d);
    cli::comprueba({{"join", "a", "--json", "b"}, 0, R"({"path":"a\\b"})", {}, {}}, d);
    cli::comprueba({{"join", "--", "-a", "--json"}, 0, "-a\\--json\n", {}, {}}, d);
    const cli::resultado version = lumodir({"--version"});
    EXPECT_EQ(version.codigo, 0);
    EXPECT_EQ(version.salida.rfind("lumodir 1.", 0), 0u) << version.salida;
}

TEST(errores_internos, solo_se_muestran_si_se_piden) {
    // A path of points and blanks has no extension to give: the library reports it.
    const cli::resultado callada = lumodir({"name", " ", "--stem"});
    const cli::resultado locuaz = lumodir({"name", " ", "--stem", "--verbose"});
    EXPECT_EQ(callada.errores.find("internal error"), std::string::npos) << callada.errores;
    EXPECT_NE(locuaz.errores.find("internal error: pathCorrecto == CIERTO"), std::string::npos)
        << locuaz.errores;
    EXPECT_NE(locuaz.errores.find("LUMODIR.DLL), line "), std::string::npos) << locuaz.errores;
    EXPECT_EQ(callada.salida, locuaz.salida);
}
