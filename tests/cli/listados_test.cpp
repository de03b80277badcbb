// The listings, on real directories.
#include <gtest/gtest.h>

#include "orden.hpp"

using cli::fila;
using cli::lumodir;

namespace {

// A small tree with names in several scripts.
void i_puebla(const cli::directorio_de_prueba& d) {
    for (const char* nombre : {"b.txt", "A.TXT", "c.dat", "Makefile", "日本語.txt", "sub\\x.txt",
                               "sub\\mas\\y.txt", "sub\\mas\\z.dat", ".git\\config", "Ωmega\\w.txt"}) {
        d.crea_fichero(nombre);
    }
    d.crea_directorio("vacio");
}

}  // namespace

TEST(ls, ficheros_y_directorios) {
    const cli::directorio_de_prueba d;
    i_puebla(d);
    const std::string no_esta = "Directory '" + d.bajo("nada") + "' does not exist.";
    const fila filas[] = {
        {{"ls", "$D"}, 0, "A.TXT\nb.txt\nc.dat\nMakefile\n日本語.txt\n", {}, {}},
        {{"ls"}, 0, "A.TXT\nb.txt\nc.dat\nMakefile\n日本語.txt\n", {}, {}},  // the current directory
        {{"ls", "$D\\"}, 0, "A.TXT\nb.txt\nc.dat\nMakefile\n日本語.txt\n", {}, {}},
        {{"ls", "$D", "--ext", "txt"}, 0, "A.TXT\nb.txt\n日本語.txt\n", {}, {}},
        {{"ls", "$D", "--ext", ".TXT"}, 0, "A.TXT\nb.txt\n日本語.txt\n", {}, {}},
        {{"ls", "$D", "--ext", "d?t"}, 0, "c.dat\n", {}, {}},
        {{"ls", "$D", "--ext", ""}, 0, "Makefile\n", {}, {}},
        {{"ls", "$D", "--ext", "zip"}, 1, {}, {}, {}},
        {{"ls", "$D", "--filter", "日*"}, 0, "日本語.txt\n", {}, {}},
        {{"ls", "$D", "--filter", "?.txt"}, 0, "A.TXT\nb.txt\n", {}, {}},
        {{"ls", "$D", "--filter", "b*", "--ext", "txt"}, 0, "b.txt\n", {}, {}},
        {{"ls", "$D", "--dirs"}, 0, "sub\nvacio\nΩmega\n", {}, {}},
        {{"ls", "$D", "--dirs", "--filter", "s*"}, 0, "sub\n", {}, {}},
        {{"ls", "$D\\vacio"}, 0, {}, {}, {}},
        {{"ls", "$D\\sub", "--json"}, 0, R"({"directory":"$D\\sub","files":["x.txt"]})", {}, {}},
        {{"ls", "$D", "--dirs", "--json"},
         0,
         R"({"directory":"$D","directories":["sub","vacio","Ωmega"]})",
         {},
         {}},
        {{"ls", "$D\\nada"}, 1, {}, "lumodir: " + no_esta + "\n", {}},
        {{"ls", "$D\\nada", "--json"}, 1, R"({"error":"Directory '$D\\nada' does not exist."})", {}, {}},
        {{"ls", "$D\\b.txt"}, 1, {}, "lumodir: '$D\\b.txt' is a file, not a directory\n", {}},
        {{"ls", ""},
         2,
         {},
         "lumodir: the directory is empty; the current one is \".\"\n"
         "Usage: lumodir ls [DIR] [--ext E] [--filter P] [--dirs | --long]\nTry 'lumodir ls --help'.\n",
         {}},
        {{"ls", "$D", "--dirs", "--ext", "x"},
         2,
         {},
         "lumodir: --ext is for files, --dirs for directories; use --filter\n"
         "Usage: lumodir ls [DIR] [--ext E] [--filter P] [--dirs | --long]\nTry 'lumodir ls --help'.\n",
         {}},
    };
    for (const fila& f : filas) {
        cli::comprueba(f, d);
    }
}

TEST(tree, cuentas_y_totales) {
    const cli::directorio_de_prueba d;
    i_puebla(d);
    const std::string uso = "Usage: lumodir tree [DIR] [--ext E]\nTry 'lumodir tree --help'.\n";
    const fila filas[] = {
        {{"tree", "$D"},
         0,
         "files  directory\n    5  .\n    1  sub\n    2  sub\\mas\n    1  Ωmega\n9 files in 4 of 5 "
         "directories\n",
         {},
         {}},
        {{"tree", "$D/", "--ext", "dat", "--all"},
         0,
         "files  directory\n    1  .\n    0  sub\n    1  sub\\mas\n    0  vacio\n    0  Ωmega\n"
         "2 files in 2 of 5 directories\n",
         {},
         {}},
        {{"tree", "$D", "--depth", "1"},
         0,
         "files  directories  directory\n    5            1  .\n    3            2  sub\n    1            1  "
         "Ωmega\n"
         "9 files in 4 of 5 directories\n",
         {},
         {}},
        {{"tree", "$D", "--depth", "0"},
         0,
         "files  directories  directory\n    9            5  .\n9 files in 4 of 5 directories\n",
         {},
         {}},
        {{"tree", "$D", "--top", "2"},
         0,
         "files  directory\n    5  .\n    2  sub\\mas\n9 files in 4 of 5 directories\n",
         {},
         {}},
        {{"tree", "$D", "--ext", "zip"}, 1, "0 files in 0 of 5 directories\n", {}, {}},
        {{"tree", "$D\\sub", "--files"},
         0,
         "$D\\sub\\x.txt\n$D\\sub\\mas\\y.txt\n$D\\sub\\mas\\z.dat\n",
         {},
         {}},
        {{"tree", "$D\\sub", "--json"},
         0,
         R"({"directory":"$D\\sub","files":3,"directories":2,"tree":[{"directory":".","files":1},)"
         R"({"directory":"mas","files":2}]})",
         {},
         {}},
        {{"tree", "$D\\sub", "--json", "--files"},
         0,
         R"({"directory":"$D\\sub","files":3,"directories":2,"tree":[{"directory":".","files":1,"names":["x.txt"]},)"
         R"({"directory":"mas","files":2,"names":["y.txt","z.dat"]}]})",
         {},
         {}},
        {{"tree", "$D\\nada"}, 1, {}, "lumodir: Directory '$D\\nada' does not exist.\n", {}},
        {{"tree", "$D", "--files", "--top", "1"},
         2,
         {},
         "lumodir: --files shows paths, --depth and --top are for counts\n" + uso,
         {}},
        {{"tree", "$D", "--top", "x"},
         2,
         {},
         "lumodir: --top must be a number from 0 to 1000000, not 'x'\n" + uso,
         {}},
    };
    for (const fila& f : filas) {
        cli::comprueba(f, d);
    }
}

TEST(tree, rutas_de_mas_de_260_caracteres) {
    const cli::directorio_de_prueba d;
    std::string relativa;
    for (int nivel = 0; nivel < 12; ++nivel) {
        relativa += "directorio_bastante_largo_ñ_" + std::to_string(nivel) + "\\";
    }
    d.crea_fichero(relativa + "fin.txt");
    ASSERT_GT(d.bajo(relativa).size(), 300u);
    cli::comprueba({{"tree", "$D", "--files"}, 0, "$D\\" + relativa + "fin.txt\n", {}, {}}, d);
    cli::comprueba({{"ls", "$D\\" + relativa}, 0, "fin.txt\n", {}, {}}, d);
    cli::comprueba({{"ls", "$D\\" + relativa + "fin.txt"},
                    1,
                    {},
                    "lumodir: '$D\\" + relativa + "fin.txt' is a file, not a directory\n",
                    {}},
                   d);
}

TEST(tree, lo_listado_es_valido_para_check) {
    const cli::directorio_de_prueba d;
    i_puebla(d);
    const cli::resultado r = lumodir({"tree", d.ruta(), "--files"});
    const cli::resultado juicio =
        lumodir({"check", "-", "--quiet"}, {.entrada = r.salida, .variables = {}, .directorio = {}});
    EXPECT_EQ(juicio.codigo, 0);
    EXPECT_EQ(juicio.salida, "9 paths: 9 valid, 0 invalid\n");
}
