// What every subcommand has in common: help, usage errors, languages, JSON, the streams.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "orden.hpp"

using cli::fila;
using cli::lumodir;

namespace {

std::vector<std::string> i_palabras(const std::string& nombre) {
    const size_t blanco = nombre.find(' ');
    return blanco == nombre.npos
               ? std::vector<std::string>{nombre}
               : std::vector<std::string>{nombre.substr(0, blanco), nombre.substr(blanco + 1)};
}

}  // namespace

namespace {

std::string i_lee(const std::string& fichero) {
    std::ifstream entrada(LUMODIR_RAIZ "/" + fichero, std::ios::binary);
    std::ostringstream texto;
    texto << entrada.rdbuf();
    EXPECT_FALSE(texto.str().empty()) << fichero;
    return texto.str();
}

// The sections of the manual page that are about commands, by their names, without the escapes of its language.
std::map<std::string, std::string> i_secciones_del_manual() {
    std::map<std::string, std::string> secciones;
    std::istringstream lineas(i_lee("share/man/man1/lumodir.1"));
    std::string* seccion = nullptr;
    for (std::string linea; std::getline(lineas, linea);) {
        for (size_t i = 0; (i = linea.find('\\', i)) != linea.npos; ++i) {
            linea.replace(i, 2,
                          linea.compare(i, 2, "\\e") == 0   ? "\\"
                          : linea.compare(i, 2, "\\-") == 0 ? "-"
                                                            : "");
        }
        if (linea.rfind(".SS ", 0) == 0) {
            std::string nombre = linea.substr(4);
            std::erase(nombre, '"');
            EXPECT_FALSE(secciones.contains(nombre)) << nombre;
            seccion = &secciones[nombre];
        } else if (linea.rfind(".SH ", 0) == 0) {
            seccion = nullptr;
        } else if (seccion != nullptr) {
            *seccion += linea + "\n";
        }
    }
    return secciones;
}

// The options of a command's own: those before --json in its help.
std::vector<std::string> i_opciones(const std::string& ayuda) {
    std::vector<std::string> opciones;
    std::istringstream lineas(ayuda.substr(ayuda.find("\nOptions\n") + 9));
    for (std::string linea; std::getline(lineas, linea) && linea.rfind("  --json", 0) != 0;) {
        if (linea.rfind("  --", 0) == 0) {
            opciones.push_back(linea.substr(2, linea.find(' ', 4) - 2));
        }
    }
    return opciones;
}

}  // namespace

TEST(ayuda, la_general_nombra_todas_las_ordenes) {
    const std::vector<std::string> ordenes = cli::ordenes();
    const std::set<std::string> nombres(ordenes.begin(), ordenes.end());
    for (const char* nombre :
         {"check",  "split",   "join",    "name",      "relative",   "absolute", "shorten", "repair",
          "ls",     "tree",    "sets",    "exists",    "test",       "size",     "date",    "touch",
          "mkdir",  "mv",      "protect", "unprotect", "rename-ext", "rm",       "rmtree",  "tmp",
          "where",  "short",   "long",    "whereami",  "drives",     "ps",       "kill",    "about",
          "reg ls", "reg get", "reg set", "reg rm",    "completion"}) {
        EXPECT_TRUE(nombres.contains(nombre)) << nombre;
    }
    EXPECT_EQ(nombres.size(), ordenes.size());
}

TEST(ayuda, cada_orden_se_explica_con_ejemplos_que_caben) {
    std::map<std::string, std::string> manual = i_secciones_del_manual();
    for (const std::string& nombre : cli::ordenes()) {
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
        // The manual page says the same: the usage, and each option at the beginning of its paragraph.
        const std::string seccion = manual[nombre];
        manual.erase(nombre);
        const size_t uso = r.salida.find("\nUsage: ") + 8;
        EXPECT_NE(seccion.find(r.salida.substr(uso, r.salida.find('\n', uso) - uso) + "\n"), seccion.npos)
            << nombre;
        size_t en_el_manual = 0;
        for (size_t i = 0; (i = seccion.find("\n.TP\n", i)) != seccion.npos; ++i) {
            ++en_el_manual;
        }
        const std::vector<std::string> opciones = i_opciones(r.salida);
        EXPECT_EQ(en_el_manual, opciones.size()) << nombre;
        for (const std::string& opcion : opciones) {
            EXPECT_TRUE(seccion.find(".TP\n.B " + opcion + "\n") != seccion.npos ||
                        seccion.find(".TP\n.BI " + opcion + " \"") != seccion.npos)
                << nombre << " " << opcion;
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
    for (const auto& [nombre, seccion] : manual) {
        ADD_FAILURE() << "the manual page has a command that does not exist: " << nombre;
    }
}

TEST(completion, el_guion_de_share_es_el_de_esta_version_y_lo_tiene_todo) {
    const std::string guion = lumodir({"completion", "powershell"}).salida;
    EXPECT_EQ(i_lee("share/completions/lumodir.ps1"), guion);
    for (const std::string& nombre : cli::ordenes()) {
        EXPECT_NE(guion.find("\n        '" + nombre + "' = '"), guion.npos) << nombre;
    }
    // Against the help of a command with options and of one without.
    const size_t de_touch = guion.find("\n        'touch' = [ordered]@{");
    ASSERT_NE(de_touch, guion.npos);
    const std::string bloque = guion.substr(de_touch, guion.find("\n        }", de_touch) - de_touch);
    const std::vector<std::string> suyas = i_opciones(lumodir({"touch", "--help"}).salida);
    EXPECT_EQ(suyas.size(), 4u);
    for (const std::string& opcion : suyas) {
        EXPECT_NE(bloque.find("\n            '" + opcion + "' = '"), bloque.npos) << opcion;
    }
    EXPECT_EQ(guion.find("'size' = [ordered]@{"), guion.npos);
}

TEST(ayuda, en_la_lengua_que_se_pide) {
    const cli::resultado general = lumodir({"--help", "--lang", "es"});
    EXPECT_NE(general.salida.find("\nOpciones de todas las órdenes\n"), general.salida.npos)
        << general.salida;
    // Other languages of the catalogue that fall back on Spanish, and those that do not.
    EXPECT_EQ(lumodir({"--help", "--lang=gl"}).salida, general.salida);
    EXPECT_EQ(lumodir({"--help", "--lang", "de"}).salida, lumodir({"--help"}).salida);
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
        {.argumentos = {"reg", "sett", "HKCU\\a"},
         .codigo = 2,
         .salida = {},
         .errores =
             "lumodir: there is no command 'reg sett'; did you mean 'reg set'?\nTry 'lumodir --help'.\n",
         .entrada = {}},
        {.argumentos = {"reg", "nothing"},
         .codigo = 2,
         .salida = {},
         .errores = "lumodir: there is no command 'reg nothing'\nTry 'lumodir --help'.\n",
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
        {{"--lang", "en"}, "invalid  (empty): You have not specified any directory name"},
        {{"--lang", "English"}, "invalid  (empty): You have not specified any directory name"},
        {{"--lang=8"}, "invalid  (empty): You have not specified any directory name"},
        {{"--lang", "40"}, "invalid  (empty): You have not specified any directory name"},
        {{"--lang", "es"}, "no vale  (vacía): No ha especificado ningún nombre de directorio"},
        {{"--lang", "SPANISH"}, "no vale  (vacía): No ha especificado ningún nombre de directorio"},
        {{"--lang", "15"}, "no vale  (vacía): No ha especificado ningún nombre de directorio"},
    };
    for (const auto& [opciones, texto] : filas) {
        std::vector<std::string> argumentos = {"check", ""};
        argumentos.insert(argumentos.end(), opciones.begin(), opciones.end());
        cli::comprueba({argumentos, 1, texto + "\n", {}, {}}, d);
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
