// What every subcommand has in common: help, usage errors, languages, JSON, the streams.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>

#include "esquema.hpp"
#include "json.hpp"
#include "orden.hpp"

using cli::fila;
using cli::lumodir;

namespace {

// The sections of the manual page that are about commands, by their names, without the escapes of its language.
std::map<std::string, std::string> i_secciones_del_manual() {
    std::map<std::string, std::string> secciones;
    std::istringstream lineas(cli::lee_fichero(LUMODIR_RAIZ "/share/man/man1/lumodir.1"));
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

// A console has 80 columns, and breaks what is longer in the middle of words.
void i_caben_en_80_columnas(const std::string& nombre, const std::string& ayuda) {
    std::istringstream lineas(ayuda);
    for (std::string linea; std::getline(lineas, linea);) {
        const auto continuan =
            std::count_if(linea.begin(), linea.end(), [](char c) { return (c & 0xC0) == 0x80; });
        EXPECT_LE(linea.size() - static_cast<size_t>(continuan), 79u) << nombre << ": " << linea;
    }
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
         {"check", "split",  "join",  "name",   "relative", "absolute", "shorten",   "repair",
          "ls",    "tree",   "sets",  "find",   "du",       "who",      "exists",    "test",
          "size",  "date",   "touch", "mkdir",  "mv",       "protect",  "unprotect", "rename-ext",
          "rm",    "rmtree", "tmp",   "where",  "short",    "long",     "whereami",  "drives",
          "ps",    "kill",   "about", "reg ls", "reg get",  "reg set",  "reg rm",    "completion"}) {
        EXPECT_TRUE(nombres.contains(nombre)) << nombre;
    }
    EXPECT_EQ(nombres.size(), ordenes.size());
}

TEST(ayuda, cada_orden_se_explica_con_ejemplos_que_caben) {
    std::map<std::string, std::string> manual = i_secciones_del_manual();
    for (const std::string& nombre : cli::ordenes()) {
        std::vector<std::string> argumentos = cli::palabras(nombre);
        argumentos.push_back("--help");
        const cli::resultado r = lumodir(argumentos);
        EXPECT_EQ(r.codigo, 0) << nombre;
        EXPECT_EQ(r.errores, "") << nombre;
        EXPECT_EQ(r.salida.rfind("lumodir " + nombre + " - ", 0), 0u) << r.salida;
        EXPECT_NE(r.salida.find("\nUsage: lumodir " + nombre), std::string::npos) << r.salida;
        EXPECT_NE(r.salida.find("\nExamples\n  lumodir "), std::string::npos) << r.salida;
        i_caben_en_80_columnas(nombre, r.salida);
        // The manual page says the same: the usage, and each option at the beginning of its paragraph.
        const std::string seccion = manual[nombre];
        manual.erase(nombre);
        const size_t uso = r.salida.find("\nUsage: ") + 8;
        std::string linea_de_uso = r.salida.substr(uso, r.salida.find("\n\n", uso) - uso);
        for (size_t i = 0; (i = linea_de_uso.find("\n       ", i)) != linea_de_uso.npos;) {
            linea_de_uso.replace(i, 8, " ");
        }
        EXPECT_NE(seccion.find(linea_de_uso + "\n"), seccion.npos) << nombre;
        // Each key of its answers in JSON.
        const std::vector<std::string> claves = cli::claves_del_esquema(nombre);
        EXPECT_FALSE(claves.empty()) << nombre;
        const size_t de_json = seccion.find("With --json: ");
        ASSERT_NE(de_json, seccion.npos) << nombre;
        for (const std::string& clave : claves) {
            EXPECT_NE(seccion.find(clave, de_json), seccion.npos) << nombre << " " << clave;
        }
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
        std::vector<std::string> otra = cli::palabras(nombre);
        otra.insert(otra.begin(), "help");
        EXPECT_EQ(lumodir(otra).salida, r.salida);
        for (const char* ayuda : {"/?", "-?", "/h", "/HELP", "-help", "--Help"}) {
            argumentos.back() = ayuda;
            EXPECT_EQ(lumodir(argumentos).salida, r.salida) << ayuda;
        }
    }
    for (const auto& [nombre, seccion] : manual) {
        ADD_FAILURE() << "the manual page has a command that does not exist: " << nombre;
    }
}

TEST(esquema, tiene_todas_las_ordenes_y_ninguna_mas) {
    const std::vector<std::string> ordenes = cli::ordenes(), descritas = cli::ordenes_del_esquema();
    EXPECT_EQ(std::set<std::string>(ordenes.begin(), ordenes.end()),
              std::set<std::string>(descritas.begin(), descritas.end()));
    // It can be told what does not keep to it.
    EXPECT_EQ(cli::contra_el_esquema("join", R"({"path":"a"})"), "");
    EXPECT_NE(cli::contra_el_esquema("join", R"({"path":1})"), "");
    EXPECT_NE(cli::contra_el_esquema("join", R"({"path":"a","more":1})"), "");
    EXPECT_NE(cli::contra_el_esquema("join", R"({})"), "");
    EXPECT_NE(cli::contra_el_esquema("size", R"([{"path":"a","size":-1}])"), "");
    EXPECT_NE(cli::contra_el_esquema("exists", R"([{"path":"a","exists":true,"kind":"other"}])"), "");
    EXPECT_NE(cli::contra_el_esquema("size", ""), "");
}

TEST(completion, el_guion_de_share_es_el_de_esta_version_y_lo_tiene_todo) {
    const std::string guion = lumodir({"completion", "powershell"}).salida;
    EXPECT_EQ(cli::lee_fichero(LUMODIR_RAIZ "/share/completions/lumodir.ps1"), guion);
    for (const std::string& nombre : cli::ordenes()) {
        EXPECT_NE(guion.find("\n        '" + nombre + "' = '"), guion.npos) << nombre;
    }
    // Against the help of a command with options and of one without.
    const size_t de_touch = guion.find("\n        'touch' = [ordered]@{");
    ASSERT_NE(de_touch, guion.npos);
    const std::string bloque = guion.substr(de_touch, guion.find("\n        }", de_touch) - de_touch);
    const std::vector<std::string> suyas = i_opciones(lumodir({"touch", "--help"}).salida);
    EXPECT_EQ(suyas.size(), 5u);
    for (const std::string& opcion : suyas) {
        EXPECT_NE(bloque.find("\n            '" + opcion + "' = '"), bloque.npos) << opcion;
    }
    EXPECT_EQ(guion.find("'size' = [ordered]@{"), guion.npos);
}

TEST(ayuda, en_la_lengua_que_se_pide) {
    const cli::resultado general = lumodir({"--help", "--lang", "es"});
    i_caben_en_80_columnas("--help", general.salida);
    for (const char* nombre :
         {"ls", "find", "rm", "rmtree", "touch", "mkdir", "repair", "relative", "rename-ext"}) {
        i_caben_en_80_columnas(nombre, lumodir({nombre, "--help", "--lang", "es-ES"}).salida);
    }
    EXPECT_NE(general.salida.find("\nOpciones de todos los comandos\n"), general.salida.npos)
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
         .errores = "lumodir: there is no command 'chek'; did you mean 'check'?\nTry 'lumodir --help'.\n"},
        {.argumentos = {"xyzzy"},
         .codigo = 2,
         .errores = "lumodir: there is no command 'xyzzy'\nTry 'lumodir --help'.\n"},
        {.argumentos = {"reg", "sett", "HKCU\\a"},
         .codigo = 2,
         .errores =
             "lumodir: there is no command 'reg sett'; did you mean 'reg set'?\nTry 'lumodir --help'.\n"},
        {.argumentos = {"reg", "nothing"},
         .codigo = 2,
         .errores = "lumodir: there is no command 'reg nothing'\nTry 'lumodir --help'.\n"},
        {.argumentos = {"check"},
         .codigo = 2,
         .errores = "lumodir: an argument is missing\nUsage: lumodir check PATH... [OPTION...]\nTry 'lumodir "
                    "check --help'.\n"},
        {.argumentos = {"shorten", "a"},
         .codigo = 2,
         .errores = "lumodir: an argument is missing\nUsage: lumodir shorten PATH N\nTry 'lumodir shorten "
                    "--help'.\n"},
        {.argumentos = {"shorten"},
         .codigo = 2,
         .errores = "lumodir: arguments are missing\nUsage: lumodir shorten PATH N\nTry 'lumodir shorten "
                    "--help'.\n"},
        {.argumentos = {"cp", "a", "b"},
         .codigo = 2,
         .errores =
             "lumodir: nothing is copied here, and no tree moved to another drive: copy, xcopy and robocopy "
             "of Windows do that\nTry 'lumodir --help'.\n"},
        {.argumentos = {"nope"},  // too short to look like 'name'
         .codigo = 2,
         .errores = "lumodir: there is no command 'nope'\nTry 'lumodir --help'.\n"},
        {.argumentos = {"dir"},
         .codigo = 2,
         .errores = "lumodir: there is no command 'dir'; did you mean 'ls'?\nTry 'lumodir --help'.\n"},
        {.argumentos = {"remov", "a"},
         .codigo = 2,
         .errores = "lumodir: there is no command 'remov'; did you mean 'rm'?\nTry 'lumodir --help'.\n"},
        {.argumentos = {"-x", "ls"},
         .codigo = 2,
         .errores = "lumodir: unknown option '-x'\nTry 'lumodir --help'.\n"},
        {.argumentos = {"tmp", "--ext", "--json"},  // what begins with two dashes is no value
         .codigo = 2,
         .salida =
             R"j({"error":"option '--ext' needs a value (E)","usage":"lumodir tmp [--ext E] [--in DIR] [OPTION...]"})j",
         .errores = "lumodir: option '--ext' needs a value (E)\n"
                    "Usage: lumodir tmp [--ext E] [--in DIR] [OPTION...]\nTry 'lumodir tmp --help'.\n"},
        {.argumentos = {"check", "a", "--quite"},
         .codigo = 2,
         .errores = "lumodir: unknown option '--quite'; did you mean '--quiet'?\n"
                    "Usage: lumodir check PATH... [OPTION...]\nTry 'lumodir check --help'.\n"},
        {.argumentos = {"shorten", "a", "3", "ñandú"},
         .codigo = 2,
         .errores = "lumodir: unexpected argument: 'ñandú'\nUsage: lumodir shorten PATH N\n"
                    "Try 'lumodir shorten --help'.\n"},
        {.argumentos = {"check", "--wrong", "a"},
         .codigo = 2,
         .errores = "lumodir: unknown option '--wrong'\nUsage: lumodir check PATH... [OPTION...]\nTry "
                    "'lumodir check --help'.\n"},
        {.argumentos = {"check", "-x"},
         .codigo = 2,
         .errores = "lumodir: unknown option '-x' (a path that begins with '-' goes after '--')\n"
                    "Usage: lumodir check PATH... [OPTION...]\nTry 'lumodir check --help'.\n"},
        {.argumentos = {"check", "a", "--lang"},
         .codigo = 2,
         .errores = "lumodir: option '--lang' needs a value (L)\nUsage: lumodir check PATH... [OPTION...]\n"
                    "Try 'lumodir check --help'.\n"},
        {.argumentos = {"check", "a", "--quiet=1"},
         .codigo = 2,
         .errores = "lumodir: option '--quiet' takes no value\nUsage: lumodir check PATH... [OPTION...]\n"
                    "Try 'lumodir check --help'.\n"},
        {.argumentos = {"shorten", "a", "65536"},
         .codigo = 2,
         .errores =
             "lumodir: N must be a number from 0 to 65535, not '65536'\nUsage: lumodir shorten PATH N\n"
             "Try 'lumodir shorten --help'.\n"},
        {.argumentos = {"--json", "check"},  // for a script both
         .codigo = 2,
         .salida = R"({"error":"an argument is missing","usage":"lumodir check PATH... [OPTION...]"})",
         .errores = "lumodir: an argument is missing\nUsage: lumodir check PATH... [OPTION...]\nTry 'lumodir "
                    "check --help'.\n"},
    };
    cli::comprueba(filas, d);
}

namespace {

// Languages without texts of their own say which ones they show.
std::string i_aviso_de_idioma(const std::string& opcion) {
    return opcion == "40"   ? "lumodir: there are no texts in '40'; those in english are used\n"
           : opcion == "15" ? "lumodir: no hay textos en '15'; se usan los de spanish\n"
                            : "";
}

}  // namespace

TEST(idioma, por_codigo_nombre_o_numero) {
    const cli::directorio_de_prueba d;
    const std::pair<std::vector<std::string>, std::string> filas[] = {
        {{"--lang", "en"}, "invalid  (empty): You have not specified any directory name"},
        {{"--lang", "English"}, "invalid  (empty): You have not specified any directory name"},
        {{"--lang=8"}, "invalid  (empty): You have not specified any directory name"},
        {{"--lang", "40"}, "invalid  (empty): You have not specified any directory name"},
        {{"--lang", "es"}, "no válida  (vacía): No ha especificado ningún nombre de directorio"},
        {{"--lang", "SPANISH"}, "no válida  (vacía): No ha especificado ningún nombre de directorio"},
        {{"--lang", "es-ES"}, "no válida  (vacía): No ha especificado ningún nombre de directorio"},
        {{"--lang", "español"}, "no válida  (vacía): No ha especificado ningún nombre de directorio"},
        {{"--lang", "en-GB"}, "invalid  (empty): You have not specified any directory name"},
        {{"--lang", "15"}, "no válida  (vacía): No ha especificado ningún nombre de directorio"},
    };
    for (const auto& [opciones, texto] : filas) {
        std::vector<std::string> argumentos = {"check", ""};
        argumentos.insert(argumentos.end(), opciones.begin(), opciones.end());
        cli::comprueba({argumentos, 1, texto + "\n", i_aviso_de_idioma(opciones.back())}, d);
    }
    // Other languages with their countries: the library's texts tell.
    for (const auto& [uno, otro] :
         {std::pair("zh-CN", "zh"), std::pair("zh-Hans", "12"), std::pair("de-DE", "de"),
          std::pair("pt-PT", "pt"), std::pair("pt-BR", "2"), std::pair("es-CO", "es-419")}) {
        EXPECT_EQ(lumodir({"check", "", "--lang", uno}).salida, lumodir({"check", "", "--lang", otro}).salida)
            << uno;
    }
    EXPECT_EQ(lumodir({"check", "a", "--lang", "bg"}).errores,
              "lumodir: there are no texts in 'bg'; those in english are used\n");
    // The command has no words of its own in others: in words it says once which ones it takes.
    for (const auto& [lengua, dicho] :
         {std::pair("de", "lumodir: the library speaks 'de'; the command's own words are in English\n"),
          std::pair("ca",
                    "lumodir: la biblioteca habla 'ca'; las palabras de la propia orden están en español\n"),
          std::pair("es-MX", ""),
          std::pair("gl", "lumodir: no hay textos en 'gl'; se usan los de spanish\n")}) {
        EXPECT_EQ(lumodir({"check", "a", "b", "--lang", lengua}).errores, dicho) << lengua;
    }
    EXPECT_EQ(lumodir({"check", "a", "--json", "--lang", "de"}).errores, "");
    EXPECT_EQ(lumodir({"--help", "--lang", "de"}).errores, "");
    for (const char* malo : {"41", "klingon", "", "-1", "8x", "zh-TW", "xx-ES"}) {
        const cli::resultado r = lumodir({"check", "a", "--lang", malo});
        EXPECT_EQ(r.codigo, 2) << malo;
        EXPECT_EQ(r.salida, "") << malo;
    }
}

TEST(opciones, antes_o_despues_de_la_orden_y_guiones_dobles) {
    const cli::directorio_de_prueba d;
    cli::comprueba({{"--json", "join", "a", "b"}, 0, R"({"path":"a\\b"})"}, d);
    cli::comprueba({{"join", "a", "--json", "b"}, 0, R"({"path":"a\\b"})"}, d);
    cli::comprueba({{"join", "--", "-a", "--json"}, 0, "-a\\--json\n"}, d);
    for (const char* corta : {"-v", "-V"}) {
        EXPECT_EQ(lumodir({corta}).salida, lumodir({"--version"}).salida);
    }
    EXPECT_EQ(cli::json_compacto(lumodir({"--version", "--json"}).salida).rfind(R"({"version":"1.)", 0), 0u);
    const cli::resultado version = lumodir({"--version"});
    EXPECT_EQ(version.codigo, 0);
    EXPECT_EQ(version.salida.rfind("lumodir 1.", 0), 0u) << version.salida;
}

TEST(avisos, lo_mismo_se_dice_una_vez) {
    const cli::resultado uno = lumodir({"split", "a?b"}), dos = lumodir({"split", "a?b", "a?b", "a?b"});
    EXPECT_NE(uno.errores, "");
    EXPECT_EQ(uno.errores, dos.errores);
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

namespace {

struct entrada_de_bytes {
    const char* bytes;
    const char* ruta;  // as the command understands it, in UTF-8
};

}  // namespace

TEST(entrada, marcas_y_bytes_que_no_son_utf8) {
    // Without a console of its own the command reads other bytes than UTF-8 in the OEM code page: 0xA4 is the
    // same letter in those of Western Europe and of the United States.
    const entrada_de_bytes filas[] = {
        {"\xEF\xBB\xBF"
         "bom.txt\n",
         "bom.txt"},
        {"\xEF\xBB\xBF"
         "a\xC3\xB1o.txt\r\n",
         "año.txt"},
        {"a\xA4o.txt\n", "año.txt"},
        {"a\xC3\xB1o.txt", "año.txt"},
    };
    for (const entrada_de_bytes& f : filas) {
        const cli::directorio_de_prueba d;
        const cli::resultado r =
            lumodir({"touch", "-"}, {.entrada = f.bytes, .variables = {}, .directorio = d.ruta()});
        EXPECT_EQ(r.codigo, 0) << r.errores;
        EXPECT_EQ(r.salida, "dated " + std::string(f.ruta) + "\n");
        EXPECT_TRUE(cli::existe(d.bajo(f.ruta))) << f.ruta;
    }
    const cli::directorio_de_prueba d;
    // As PowerShell writes to a file, and as find --print0 writes.
    const std::string utf16(
        "\xFF\xFE"
        "u\0\xF1\0\n\0v\0",
        10),
        con_ceros("x\0y\0", 4);
    EXPECT_EQ(lumodir({"touch", "-"}, {.entrada = utf16, .variables = {}, .directorio = d.ruta()}).salida,
              "dated uñ\ndated v\n");
    EXPECT_EQ(lumodir({"touch", "-"}, {.entrada = con_ceros, .variables = {}, .directorio = d.ruta()}).salida,
              "dated x\ndated y\n");
}

namespace {

struct salida_que_falta {
    cli::destino donde;
    std::vector<std::string> argumentos;
    int codigo;
    const char* errores;
};

}  // namespace

TEST(salida, lo_que_no_se_puede_escribir_no_es_un_exito) {
    using cli::destino;
    const char* const queja = "lumodir: cannot write standard output: Access denied\n";
    const salida_que_falta filas[] = {
        {destino::no_se_puede_escribir, {"join", "a", "b"}, 1, queja},
        {destino::no_se_puede_escribir, {"join", "a", "b", "--json"}, 1, queja},
        {destino::no_se_puede_escribir, {"--help"}, 1, queja},
        // Nothing was to be written.
        {destino::no_se_puede_escribir, {"nothing-like-this"}, 2, nullptr},
        // Who stops reading has what he wants, and knows: as a pipe to a program that shows the first lines only.
        {destino::ya_no_se_lee, {"join", "a", "b"}, 1, ""},
        // Who starts a program without any standard output wants none.
        {destino::no_hay, {"join", "a", "b"}, 0, ""},
    };
    for (const salida_que_falta& f : filas) {
        cli::entorno entorno;
        entorno.salida = f.donde;
        std::vector<std::string> argumentos = {"--lang", "en"};
        argumentos.insert(argumentos.end(), f.argumentos.begin(), f.argumentos.end());
        const cli::resultado r = cli::proceso(cli::ruta_de_lumodir(), argumentos, entorno).espera();
        EXPECT_EQ(r.codigo, f.codigo) << f.argumentos[0];
        EXPECT_EQ(r.salida, "");
        if (f.errores != nullptr) {
            EXPECT_EQ(r.errores, f.errores) << f.argumentos[0];
        }
    }
}

TEST(nombres, lo_que_enganya_a_una_terminal_se_escribe) {
    const cli::directorio_de_prueba d;
    const std::string al_reves = "rtl\xE2\x80\xAEgnp.exe", linea =
                                                               "a\xE2\x80\xA8"
                                                               "b";
    d.crea_fichero(al_reves);
    d.crea_fichero(linea);
    d.crea_fichero(" delante");
    const fila filas[] = {
        // A list for other programs has the names as they are.
        {{"ls"}, 0, " delante\n" + linea + "\n" + al_reves + "\n"},
        {{"size", al_reves, linea, " delante"},
         0,
         "bytes     size  path\n    0  0 bytes  rtl<U+202E>gnp.exe\n    0  0 bytes  a<U+2028>b\n"
         "    0  0 bytes  \" delante\"\n    0  0 bytes  total\n"},
        {{"size", al_reves, "--json"}, 0, R"([{"path":")" + al_reves + R"(","size":0}])"},
        {{"mkdir", al_reves}, 1, {}, "lumodir: 'rtl<U+202E>gnp.exe' is a file\n"},
        {{"rm", al_reves},
         0,
         "deleted rtl<U+202E>gnp.exe\n",
         "Delete the file 'rtl<U+202E>gnp.exe'? [y/N] \n",
         "y"},
    };
    cli::comprueba(filas, d);
    EXPECT_FALSE(cli::existe(d.bajo(al_reves)));
}

// What the answers of all commands are read with.
TEST(json, se_lee_con_rigor) {
    EXPECT_EQ(cli::json_compacto(R"({ "a": [1, -2, true, null, "x\"y"], "b": {} })"),
              R"({"a":[1,-2,true,null,"x\"y"],"b":{}})");
    for (const char* mal : {"", "[1,]", "[1 2]", R"({"a":1,})", R"({"a"})", R"({a:1})", R"(["\x"])",
                            "[\"\t\"]", R"(["a)", "1.5", "nul", "[1] 2"}) {
        EXPECT_EQ(cli::json_compacto(mal).rfind("not JSON: ", 0), 0u) << mal;
    }
}
