// The listings, on real directories.
#include <gtest/gtest.h>
#include <windows.h>

#include "json.hpp"
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
    const std::string todo = "sub\\\nvacio\\\nΩmega\\\nA.TXT\nb.txt\nc.dat\nMakefile\n日本語.txt\n";
    const std::string uso =
        "Usage: lumodir ls [DIR | FILE | PATTERN] [OPTION...]\nTry 'lumodir ls --help'.\n";
    const fila filas[] = {
        {{"ls", "$D"}, 0, todo},
        {{"ls"}, 0, todo},  // the current directory
        {{"ls", "$D\\"}, 0, todo},
        {{"ls", "--all"}, 0, ".git\\\n" + todo},
        {{"ls", "--files"}, 0, "A.TXT\nb.txt\nc.dat\nMakefile\n日本語.txt\n"},
        {{"ls", "$D", "--ext", "txt"}, 0, "A.TXT\nb.txt\n日本語.txt\n"},
        {{"ls", "$D", "--ext", ".TXT"}, 0, "A.TXT\nb.txt\n日本語.txt\n"},
        {{"ls", "$D", "--ext", "d?t"}, 0, "c.dat\n"},
        {{"ls", "$D", "--ext", ""}, 0, "Makefile\n"},
        {{"ls", "$D", "--ext", "zip"}, 1},
        {{"ls", "$D", "--filter", "日*"}, 0, "日本語.txt\n"},
        {{"ls", "$D", "--filter", "?.txt"}, 0, "A.TXT\nb.txt\n"},
        {{"ls", "$D", "--filter", "b*", "--ext", "txt"}, 0, "b.txt\n"},
        {{"ls", "*.txt"}, 0, "A.TXT\nb.txt\n日本語.txt\n"},
        {{"ls", "$D\\s*"}, 0, "sub\\\n"},
        {{"ls", ".*"}, 0, ".git\\\n"},  // asked for by its dot
        {{"ls", "*.zip"}, 1},
        {{"ls", "*\\x.txt"}, 1, {}, "lumodir: '*\\x.txt': only the last part of a path may be a pattern\n"},
        {{"ls", "$D", "--dirs"}, 0, "sub\\\nvacio\\\nΩmega\\\n"},
        {{"ls", "$D", "--dirs", "--filter", "s*"}, 0, "sub\\\n"},
        {{"ls", "$D", "--reverse"},
         0,
         "Ωmega\\\nvacio\\\nsub\\\n日本語.txt\nMakefile\nc.dat\nb.txt\nA.TXT\n"},
        {{"ls", "$D\\vacio"}, 0},
        {{"ls", "$D\\b.txt"}, 0, "b.txt\n"},
        {{"ls", "$D\\nada"}, 1, {}, "lumodir: " + no_esta + "\n"},
        {{"ls", "$D\\nada", "--json"}, 1, R"({"error":"Directory '$D\\nada' does not exist."})"},
        {{"ls", ""}, 1, {}, "lumodir: the directory is empty; the current one is \".\"\n"},
        {{"ls", "$D", "--dirs", "--ext", "x"},
         2,
         {},
         "lumodir: --ext is for files, --dirs for directories; use --filter\n" + uso},
        {{"ls", "--sort", "colour"},
         2,
         {},
         "lumodir: --sort must be name, size, date or ext, not 'colour'\n" + uso},
    };
    cli::comprueba(filas, d);
    const std::string json = cli::json_compacto(lumodir({"ls", d.bajo("sub"), "--json"}).salida);
    EXPECT_NE(json.find(R"("entries":[{"name":"mas","kind":"directory","size":null,"modified":")"), json.npos)
        << json;
    EXPECT_NE(json.find(R"({"name":"x.txt","kind":"file","size":0,"modified":")"), json.npos) << json;
    EXPECT_NE(json.find(R"("attributes":["archive"]}],"not_shown":0})"), json.npos) << json;
}

TEST(ls, por_tamanyo_y_fecha) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("medio.b", std::string(2000, 'x'));
    d.crea_fichero("grande.a", std::string(3000000, 'x'));
    d.crea_fichero("chico.c", "x");
    ASSERT_EQ(lumodir({"touch", d.bajo("medio.b"), "--date", "2001-02-03 04:05"}).codigo, 0);
    ASSERT_EQ(lumodir({"touch", d.bajo("grande.a"), "--date", "2002-02-03 04:05"}).codigo, 0);
    ASSERT_EQ(lumodir({"touch", d.bajo("chico.c"), "--date", "2003-02-03 04:05"}).codigo, 0);
    const fila filas[] = {
        {{"ls", "--sort", "size"}, 0, "grande.a\nmedio.b\nchico.c\n"},
        {{"ls", "--sort", "size", "-r"}, 0, "chico.c\nmedio.b\ngrande.a\n"},
        {{"ls", "--sort", "date"}, 0, "chico.c\ngrande.a\nmedio.b\n"},
        {{"ls", "--sort", "ext"}, 0, "grande.a\nmedio.b\nchico.c\n"},
        {{"ls", "-l", "--human", "--sort", "date"},
         0,
         "attributes    size  modified             name\n----a       1 byte  2003-02-03 04:05:00  chico.c\n"
         "----a       2.8 MB  2002-02-03 04:05:00  grande.a\n----a       1.9 KB  2001-02-03 04:05:00  "
         "medio.b\n"
         "3 files, 2.8 MB\n"},
    };
    cli::comprueba(filas, d);
}

TEST(tree, dibujo_cuentas_y_totales) {
    const cli::directorio_de_prueba d;
    i_puebla(d);
    const std::string uso = "Usage: lumodir tree [DIR] [OPTION...]\nTry 'lumodir tree --help'.\n";
    const std::string falta = "1 directory whose name begins with a dot is not shown (--all)\n";
    const fila filas[] = {
        {{"tree"},
         0,
         ".  5 files\n├── sub  1 file\n│   └── mas  2 files\n├── vacio\n└── Ωmega  1 file\n"
         "9 files in 5 directories, 0 bytes\n" +
             falta},
        {{"tree", "sub", "--with-files"},
         0,
         "sub  1 file\n├── x.txt\n└── mas  2 files\n    ├── y.txt\n    └── z.dat\n3 files in 2 directories, "
         "0 bytes\n"},
        {{"tree", "--all", "--depth", "1"},
         0,
         ".  5 files\n├── .git  1 file\n├── sub  3 files in 2 directories\n├── vacio\n└── Ωmega  1 file\n"
         "10 files in 6 directories, 0 bytes\n"},
        {{"tree", "--ext", "dat"},
         0,
         ".  1 file\n└── sub\n    └── mas  1 file\n2 files in 5 directories, 0 bytes\n" + falta},
        {{"tree", "$D", "--counts"},
         0,
         "files  directory\n    5  .\n    1  sub\n    2  sub\\mas\n    1  Ωmega\n9 files in 5 directories, 0 "
         "bytes\n" +
             falta},
        {{"tree", "$D/", "--counts", "--ext", "dat", "--empty"},
         0,
         "files  directory\n    1  .\n    0  sub\n    1  sub\\mas\n    0  vacio\n    0  Ωmega\n"
         "2 files in 5 directories, 0 bytes\n" +
             falta},
        {{"tree", "$D", "--counts", "--depth", "1"},
         0,
         "files  directories  directory\n    5            1  .\n    3            2  sub\n    1            1  "
         "Ωmega\n9 files in 5 directories, 0 bytes\n" +
             falta},
        {{"tree", "$D", "--top", "2"},
         0,
         "files  directory\n    5  .\n    2  sub\\mas\n9 files in 5 directories, 0 bytes\n" + falta},
        {{"tree", "$D\\sub", "--ext", "zip"}, 1, "$D\\sub\n0 files in 2 directories, 0 bytes\n"},
        {{"tree", "$D\\sub", "--files"}, 0, "$D\\sub\\x.txt\n$D\\sub\\mas\\y.txt\n$D\\sub\\mas\\z.dat\n"},
        {{"tree", "$D\\sub", "--json"},
         0,
         R"({"directory":"$D\\sub","files":3,"directories":2,"bytes":0,"not_shown":0,"unreadable":[],)"
         R"("tree":[{"directory":".","files":1},{"directory":"mas","files":2}]})"},
        {{"tree", "$D\\sub", "--json", "--files"},
         0,
         R"({"directory":"$D\\sub","files":3,"directories":2,"bytes":0,"not_shown":0,"unreadable":[],)"
         R"("tree":[{"directory":".","files":1,"names":["x.txt"]},{"directory":"mas","files":2,"names":["y.txt","z.dat"]}]})"},
        {{"tree", "$D\\nada"}, 1, {}, "lumodir: Directory '$D\\nada' does not exist.\n"},
        {{"tree", "$D", "--files", "--top", "1"},
         2,
         {},
         "lumodir: --files shows paths and goes with --ext, --all and --empty only\n" + uso},
        {{"tree", "$D", "--top", "x"},
         2,
         {},
         "lumodir: --top must be a number from 0 to 1000000, not 'x'\n" + uso},
    };
    cli::comprueba(filas, d);
}

TEST(find, por_nombre_clase_tamanyo_y_fecha) {
    const cli::directorio_de_prueba d;
    i_puebla(d);
    d.crea_fichero("sub\\grande.bin", std::string(5000, 'x'));
    ASSERT_EQ(lumodir({"touch", d.bajo("sub\\grande.bin"), "--date", "2001-02-03"}).codigo, 0);
    const std::string uso =
        "Usage: lumodir find [PATTERN] [DIR...] [OPTION...]\nTry 'lumodir find --help'.\n";
    const fila filas[] = {
        {{"find", "MAS"}, 0, "sub\\mas\\\n"},  // a part of the name, whatever its letters' case
        {{"find", "mas", "--case-sensitive"}, 0, "sub\\mas\\\n"},
        {{"find", "MAS", "-s"}, 1},
        {{"find", "*.dat"}, 0, "c.dat\nsub\\mas\\z.dat\n"},
        {{"find", "?.dat", "$D\\sub"}, 0, "$D\\sub\\mas\\z.dat\n"},
        {{"find", "sub"}, 0, "sub\\grande.bin\nsub\\mas\\\nsub\\x.txt\nsub\\mas\\y.txt\nsub\\mas\\z.dat\n"},
        {{"find", "ub", "--type", "d"}, 0, "sub\\\n"},
        {{"find", "-t", "f", "-e", "dat", "-e", "bin"}, 0, "c.dat\nsub\\grande.bin\nsub\\mas\\z.dat\n"},
        {{"find", "--type", "empty", "-d", "1"}, 0, "A.TXT\nb.txt\nc.dat\nMakefile\nvacio\\\n日本語.txt\n"},
        {{"find", "-S", "+4k"}, 0, "sub\\grande.bin\n"},
        {{"find", "--size", "+4.9ki"},
         2,
         {},
         "lumodir: '+4.9ki' is not a size; write +10k (at least), -1mi (at most) or 300b\n" + uso},
        {{"find", "--size=-5000b", "-t", "f", "grande"}, 0, "sub\\grande.bin\n"},
        {{"find", "--size", "-4999b", "grande"}, 1},
        {{"find", "--changed-before", "1year"}, 0, "sub\\grande.bin\n"},
        {{"find", "--changed-before", "2001-02-03"}, 1},
        {{"find", "*.txt", "--changed-within", "1h", "--max-depth", "1"}, 0, "A.TXT\nb.txt\n日本語.txt\n"},
        {{"find", "config"}, 1},
        {{"find", "config", "--hidden"}, 0, ".git\\config\n"},
        {{"find", "*.txt", "--exclude", "sub", "-E", "b*"}, 0, "A.TXT\n日本語.txt\nΩmega\\w.txt\n"},
        {{"find", "sub\\mas", "--full-path", "-t", "f"}, 0, "sub\\mas\\y.txt\nsub\\mas\\z.dat\n"},
        {{"find", "c.dat", "-a"}, 0, "$D\\c.dat\n"},
        {{"find", "c.dat", ".", "sub"}, 0, "c.dat\n"},
        {{"find", "*.txt", "--max-results", "2"}, 0, "A.TXT\nb.txt\n"},
        {{"find", "*.dat", "--print0"}, 0, std::string("c.dat\0sub\\mas\\z.dat\0", 20)},
        {{"find", "x", "--type", "z"},
         2,
         {},
         "lumodir: --type must be file, directory, link or empty, not 'z'\n" + uso},
        {{"find", "x", "$D\\nada"}, 1, {}, "lumodir: Directory '$D\\nada' does not exist.\n"},
        {{"find", "nothing", "--json"}, 1, R"({"found":[],"not_shown":1,"unreadable":[]})"},
    };
    cli::comprueba(filas, d);
    // What it finds another command takes.
    const cli::resultado hallados = lumodir({"find", "*.dat", d.ruta()});
    EXPECT_EQ(
        lumodir({"exists", "-"}, {.entrada = hallados.salida, .variables = {}, .directorio = {}}).codigo, 0);
}

TEST(du, lo_que_contienen_los_directorios) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("a", std::string(10, 'x'));
    d.crea_fichero(".git\\obj\\1", std::string(3000, 'x'));
    d.crea_fichero("sub\\b", std::string(500, 'x'));
    d.crea_directorio("vacio");
    const fila filas[] = {
        {{"du", "$D"},
         0,
         "bytes       size  files  path\n3,000     2.9 KB      1  $D\\.git\n  500  500 bytes      1  "
         "$D\\sub\n"
         "    0    0 bytes      0  $D\\vacio\n3,510     3.4 KB      3  $D\n"},
        {{"du", "--depth", "0"}, 0, "bytes    size  files  path\n3,510  3.4 KB      3  .\n"},
        {{"du", "*", "--sort", "name"},
         0,
         "bytes       size  files  path\n3,000     2.9 KB      1  .git\n   10   10 bytes      1  a\n"
         "  500  500 bytes      1  sub\n    0    0 bytes      0  vacio\n"},
        {{"du", "--top", "1", "--json"},
         0,
         R"([{"path":".","bytes":3510,"files":3,"directories":5,"links":0,"unreadable":[],)"
         R"("tree":[{"directory":".git","bytes":3000,"files":1,"directories":2,"links":0}]}])"},
        {{"du", "no"}, 1, {}, "lumodir: 'no' does not exist\n"},
    };
    cli::comprueba(filas, d);
}

TEST(listados, lo_que_no_se_puede_leer_se_dice) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("t\\a.txt", "12");
    d.crea_fichero("t\\cerrado\\b.txt");
    // Somebody holds the directory and shares nothing: it cannot be opened to be listed.
    const cli::proceso otro(cli::este_programa(), {"--hold", d.bajo("t\\cerrado"), "120000"});
    const std::string queja =
        "lumodir: the directory '$D\\t\\cerrado' cannot be read: Another program is using it\n";
    const std::string queja_con_barra =
        "lumodir: the directory '$D\\t\\cerrado\\' cannot be read: Another program is using it\n";
    if (!cli::espera_a_que(30000, [&] { return lumodir({"ls", d.bajo("t\\cerrado")}).codigo == 1; })) {
        otro.termina();
        GTEST_SKIP() << "a directory that is held can be read here";
    }
    const fila filas[] = {
        {{"ls", "$D\\t\\cerrado"}, 1, {}, queja},
        {{"tree", "$D\\t"},
         1,
         "$D\\t  1 file\n└── cerrado  cannot be read\n1 file in 2 directories, 2 bytes\n",
         queja},
        {{"find", "*.txt", "$D\\t"}, 1, "$D\\t\\a.txt\n", queja},
        {{"du", "$D\\t", "--depth", "0"},
         1,
         "bytes     size  files  path\n    2  2 bytes      1  $D\\t\n",
         queja},
        {{"exists", "$D\\t\\cerrado\\*"}, 1, "missing    $D\\t\\cerrado\\*\n", queja_con_barra},
        {{"rmtree", "$D\\t", "--dry-run"}, 1, "would delete $D\\t: 1 file in 2 directories\n", queja},
        {{"tree", "$D\\t", "--json"},
         1,
         R"({"directory":"$D\\t","files":1,"directories":2,"bytes":2,"not_shown":0,"unreadable":["$D\\t\\cerrado"],)"
         R"("tree":[{"directory":".","files":1}]})",
         queja},
        // Said once, although it is met before and after.
        {{"rmtree", "$D\\t", "-y", "--if-possible"},
         1,
         {},
         queja + "lumodir: not deleted; left in '$D\\t': 0 files in 2 directories\n"},
    };
    cli::comprueba(filas, d);
    otro.termina();
}

TEST(tree, control_c_acaba_en_el_acto_y_lo_dice) {
    // The whole Unix side, a hundred times, each in other words: a small system's is counted in less time than this test
    // waits, and what is said twice is counted once.
    std::vector<std::string> palabras{"du"};
    for (std::string otra_vez = "Z:\\"; palabras.size() <= 100; otra_vez += ".\\") {
        palabras.push_back(otra_vez);
    }
    palabras.insert(palabras.end(), {"--lang", "en"});
    cli::proceso recorrido(cli::ruta_de_lumodir(), palabras,
                           {.entrada = {}, .variables = {}, .directorio = {}, .con_consola = true});
    Sleep(1500);
    const ULONGLONG antes = GetTickCount64();
    EXPECT_TRUE(recorrido.pulsa_control_c());
    const cli::resultado r = recorrido.espera();
    EXPECT_LT(GetTickCount64() - antes, 5000u);
    EXPECT_EQ(r.codigo, static_cast<int>(0xC000013A)) << r.errores;
    EXPECT_EQ(r.salida, "");
    EXPECT_NE(r.errores.find("\nlumodir: stopped after "), std::string::npos) << r.errores;
    EXPECT_NE(r.errores.find(" names; nothing was changed\n"), std::string::npos) << r.errores;
}

TEST(tree, rutas_de_mas_de_260_caracteres) {
    const cli::directorio_de_prueba d;
    std::string relativa;
    for (int nivel = 0; nivel < 12; ++nivel) {
        relativa += "directorio_bastante_largo_ñ_" + std::to_string(nivel) + "\\";
    }
    d.crea_fichero(relativa + "fin.txt");
    ASSERT_GT(d.bajo(relativa).size(), 300u);
    cli::comprueba({{"tree", "$D", "--files"}, 0, "$D\\" + relativa + "fin.txt\n"}, d);
    cli::comprueba({{"ls", "$D\\" + relativa}, 0, "fin.txt\n"}, d);
    cli::comprueba({{"ls", "$D\\" + relativa + "fin.txt"}, 0, "fin.txt\n"}, d);
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
