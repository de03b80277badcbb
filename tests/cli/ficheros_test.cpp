// The subcommands on files: what is there, and changing it without deleting.
#include <gtest/gtest.h>

#include "json.hpp"
#include "orden.hpp"

using cli::fila;
using cli::lumodir;

TEST(exists, ficheros_directorios_y_patrones) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("ñ.txt");
    d.crea_directorio("sub");
    const fila filas[] = {
        {{"exists", "$D\\ñ.txt", "$D\\sub"}, 0, "file       $D\\ñ.txt\ndirectory  $D\\sub\n"},
        {{"exists", "$D\\no"}, 1, "missing    $D\\no\n"},
        {{"exists", "$D\\sub", "--file"}, 1, "directory  $D\\sub\n"},
        {{"exists", "$D\\sub", "--dir"}, 0, "directory  $D\\sub\n"},
        {{"exists", "$D\\*.TXT"}, 0, "file       $D\\ñ.txt\n"},
        {{"exists", "$D\\*"}, 0, "directory  $D\\sub\nfile       $D\\ñ.txt\n"},
        {{"exists", "$D\\*", "--file"}, 0, "file       $D\\ñ.txt\n"},
        {{"exists", ""}, 1, "missing    (empty)\n"},
        {{"exists", "x\u2003"}, 1, "missing    \"x\u2003\"\n"},               // a blank as wide as an M
        {{"exists", "nul", "COM1"}, 1, "missing    nul\nmissing    COM1\n"},  // devices
        {{"exists", "$D\\*.zip"}, 1, "missing    $D\\*.zip\n"},
        {{"exists", "ñ.txt", "no", "--json"},
         1,
         R"([{"path":"ñ.txt","exists":true,"kind":"file"},{"path":"no","exists":false,"kind":"missing"}])"},
    };
    cli::comprueba(filas, d);
}

TEST(test, lectura_y_escritura) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("libre.txt");
    d.crea_fichero("protegido.txt");
    cli::pon_solo_lectura(d.bajo("protegido.txt"));
    const std::string no_escribible = "The file does not have write permission.";
    const fila filas[] = {
        {{"test", "$D\\libre.txt"}, 0, "kind       file\nreadable   yes\nwritable   yes\nprotected  no\n"},
        {{"test", "$D"}, 0, "kind       directory\nreadable   yes\nwritable   yes\nprotected  no\n"},
        {{"test", "$D\\protegido.txt"},
         1,
         "kind       file\nreadable   yes\nwritable   no: " + no_escribible + "\nprotected  yes\n"},
        {{"test", "$D\\protegido.txt", "--read", "--json"},
         0,
         R"([{"path":"$D\\protegido.txt","kind":"file","readable":true,"writable":false,"protected":true,)"
         R"("reason":")" +
             no_escribible + R"("}])"},
        {{"test", "$D\\no"}, 1, {}, "lumodir: '$D\\no' does not exist\n"},
        {{"test", "*.txt", "--read"},
         0,
         "libre.txt\nkind       file\nreadable   yes\nwritable   yes\nprotected  no\n"
         "protegido.txt\nkind       file\nreadable   yes\nwritable   no: " +
             no_escribible + "\nprotected  yes\n"},
    };
    cli::comprueba(filas, d);
    EXPECT_FALSE(cli::existe(d.bajo("no")));
    // A file that somebody else holds can be neither read nor written.
    const cli::proceso otro(cli::este_programa(), {"--hold", d.bajo("libre.txt"), "120000"});
    EXPECT_TRUE(cli::espera_a_que(30000, [&] { return !cli::se_puede_abrir(d.bajo("libre.txt")); }));
    EXPECT_EQ(lumodir({"test", d.bajo("libre.txt"), "--read"}).codigo, 1);
    otro.termina();
}

TEST(size, de_cada_fichero_y_total) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("a", std::string(1234, 'x'));
    d.crea_fichero("日", std::string(2 * 1024 * 1024, 'x'));
    const fila filas[] = {
        {{"size", "a"}, 0, "bytes    size  path\n1,234  1.2 KB  a\n"},
        {{"size", "a", "日"},
         0,
         "    bytes    size  path\n    1,234  1.2 KB  a\n2,097,152  2.0 MB  日\n2,098,386  2.0 MB  total\n"},
        {{"size", "a", "--json"}, 0, R"([{"path":"a","size":1234}])"},
        {{"size", "$D"}, 1, {}, "lumodir: '$D' is a directory; du counts what is in it\n"},
        {{"size", ""}, 1, {}, "lumodir: the path is empty\n"},
        {{"size", "*"},
         0,
         "    bytes    size  path\n    1,234  1.2 KB  a\n2,097,152  2.0 MB  日\n2,098,386  2.0 MB  total\n"},
        {{"size", "x*"}, 1, {}, "lumodir: no file matches 'x*'\n"},
        {{"size", "no", "--json"}, 1, R"([{"path":"no","size":null,"error":"'no': File not found"}])"},
    };
    cli::comprueba(filas, d);
}

TEST(touch, fechas_de_ida_y_vuelta) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("viejo.txt");
    const fila filas[] = {
        {{"touch", "viejo.txt", "--date", "2001-02-03 04:05:06Z"}, 0, "dated viejo.txt\n"},
        {{"touch", "nuevo ñ.txt", "--like", "viejo.txt"}, 0, "dated nuevo ñ.txt\n"},
        {{"touch", "no.txt", "--no-create"}, 1, {}, "lumodir: 'no.txt' does not exist\n"},
        {{"touch", "$D"}, 1, {}, "lumodir: '$D' is a directory\n"},
        {{"touch", "viejo.txt", "--date", "@981173106", "--json"},
         0,
         R"([{"path":"viejo.txt","done":true}])"},
        {{"touch", "*.txt", "--date", "2001-02-03 04:05:06Z", "--dry-run"},
         0,
         "would date nuevo ñ.txt\nwould date viejo.txt\n"},
        {{"touch", "otro.txt", "--dry-run"}, 0, "would create otro.txt\n"},
        {{"touch", "*.zip"}, 1, {}, "lumodir: no file matches '*.zip'\n"},
        {{"touch", "viejo.txt", "--date", "1600-01-01"},
         1,
         {},
         "lumodir: the date of 'viejo.txt' is not set: the dates of files begin in 1601\n"},
        {{"touch", "no\\hay.txt"}, 1, {}, "lumodir: cannot create 'no\\hay.txt': Path not found\n"},
    };
    cli::comprueba(filas, d);
    EXPECT_TRUE(cli::existe(d.bajo("nuevo ñ.txt")));
    EXPECT_FALSE(cli::existe(d.bajo("otro.txt")));
    EXPECT_FALSE(cli::existe(d.bajo("no.txt")));
    for (const char* nombre : {"viejo.txt", "nuevo ñ.txt"}) {
        const std::string fecha =
            cli::json_compacto(lumodir({"date", d.bajo(nombre), "--utc", "--json"}).salida);
        EXPECT_NE(fecha.find(R"("modified":"2001-02-03T04:05:06Z","modified_seconds":981173106,)"),
                  std::string::npos)
            << fecha;
    }
    // On the wall clock, summer and winter: what was set is what is shown.
    for (const char* fecha : {"2024-07-01 12:30:00", "2024-01-15 00:00:59", "1999-12-31 23:59:00"}) {
        EXPECT_EQ(lumodir({"touch", d.bajo("viejo.txt"), "--date", fecha}).codigo, 0);
        const cli::resultado r = lumodir({"date", d.bajo("viejo.txt")});
        EXPECT_NE(r.salida.find(std::string("\n") + fecha + "  "), std::string::npos) << r.salida;
    }
    EXPECT_EQ(lumodir({"touch", d.bajo("viejo.txt"), "--date", "2024-07-01"}).codigo, 0);
    EXPECT_NE(lumodir({"date", d.bajo("viejo.txt")}).salida.find("2024-07-01 00:00:00"), std::string::npos);
}

TEST(touch, fechas_que_no_lo_son) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("a");
    for (const char* fecha :
         {"", "ayer", "2024", "2024-13-01", "2023-02-29", "2024-01-01 24:00", "2024-01-01 12:60",
          "2024-01-01 12:30:61", "2024-01-01x12:30", "2024-01-01 12:30:00 y más", "@", "@12x"}) {
        const cli::resultado r = lumodir({"touch", d.bajo("a"), "--date", fecha});
        EXPECT_EQ(r.codigo, 2) << fecha;
        EXPECT_NE(r.errores.find("is not a date; use now, @SECONDS"), std::string::npos) << r.errores;
    }
    EXPECT_EQ(lumodir({"touch", d.bajo("a"), "--date", "now", "--like", "a"}).codigo, 2);
}

TEST(date, lo_que_no_esta) {
    const cli::directorio_de_prueba d;
    cli::comprueba({{"date", "no"}, 1, {}, "lumodir: 'no' does not exist\n"}, d);
    cli::comprueba(
        {{"date", "no", "--json"},
         1,
         R"([{"path":"no","modified":null,"modified_seconds":null,"created":null,"created_seconds":null,)"
         R"("error":"'no' does not exist"}])"},
        d);
}

TEST(mkdir, niveles_que_faltan) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("fichero");
    const fila filas[] = {
        {{"mkdir", "$D\\a\\ñ\\日"}, 0, "created $D\\a\\ñ\\日\n"},
        {{"mkdir", "$D\\a\\ñ\\日"}, 0, "exists already: $D\\a\\ñ\\日\n"},
        {{"mkdir", "$D\\a\\ñ\\日", "--json"}, 0, R"([{"path":"$D\\a\\ñ\\日","done":true,"existed":true}])"},
        {{"mkdir", "$D\\seco", "--dry-run"}, 0, "would create $D\\seco\n"},
        {{"mkdir", "--for-file", "$D\\b\\f.txt"}, 0, "created $D\\b\n"},
        {{"mkdir", "--for-file", "f.txt"}, 0, "exists already: .\n"},
        {{"mkdir", "--for-file", "$D\\c\\f.txt", "--json"},
         0,
         R"([{"path":"$D\\c\\f.txt","done":true,"created":"$D\\c","existed":false}])"},
        {{"mkdir", "a*"}, 1, {}, "lumodir: 'a*' is a pattern; one path is wanted here\n"},
        {{"mkdir", "$D\\fichero"}, 1, {}, "lumodir: '$D\\fichero' is a file\n"},
        {{"mkdir", "$D\\fichero\\x", "--if-possible"}, 1, {}, "lumodir: '$D\\fichero\\x' is not created\n"},
        {{"mkdir", ""}, 1, {}, "lumodir: the path is empty\n"},
    };
    cli::comprueba(filas, d);
    EXPECT_TRUE(cli::existe(d.bajo("a\\ñ\\日")));
    EXPECT_TRUE(cli::existe(d.bajo("b")));
    EXPECT_FALSE(cli::existe(d.bajo("b\\f.txt")));
    EXPECT_FALSE(cli::existe(d.bajo("seco")));
    std::string hondo;
    while (hondo.size() < 600) {
        hondo += "nivel_bastante_largo\\";
    }
    EXPECT_EQ(lumodir({"mkdir", d.bajo(hondo)}).codigo, 0);
    EXPECT_TRUE(cli::existe(d.bajo(hondo.substr(0, hondo.size() - 1))));
    // Without --if-possible the library says why.
    const cli::resultado r = lumodir({"mkdir", d.bajo("fichero\\x")});
    EXPECT_EQ(r.codigo, 1);
    EXPECT_NE(r.errores.find("Cannot create the directory '" + d.bajo("fichero\\x") + "'"), std::string::npos)
        << r.errores;
}

TEST(mkdir, nunca_dice_creado_de_lo_que_no_esta) {
    const cli::directorio_de_prueba d;
    for (const char* ruta : {"Q:\\", "Q:", "Q:\\a", "\\\\srv", "\\\\srv\\share\\a"}) {
        const cli::resultado r = lumodir({"mkdir", ruta, "--if-possible"});
        EXPECT_EQ(r.codigo, 1) << ruta;
        EXPECT_EQ(r.salida, "") << ruta;
        EXPECT_NE(r.errores, "") << ruta;
        const cli::resultado json = lumodir({"mkdir", ruta, "--json"});
        EXPECT_NE(cli::json_compacto(json.salida).find(R"("done":false,"error":)"), std::string::npos)
            << json.salida;
    }
}

TEST(mv, nunca_pisa_nada) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("a.txt", "aaa");
    d.crea_fichero("b.txt", "b");
    d.crea_directorio("sub");
    const fila filas[] = {
        {{"mv", "$D\\a.txt", "$D\\b.txt"},
         1,
         {},
         "lumodir: '$D\\b.txt' exists already and is never replaced\n"},
        {{"mv", "$D\\a.txt", "$D\\a.txt"}, 1, {}, "lumodir: '$D\\a.txt' bears that name already\n"},
        {{"mv", "*.txt", "x"},
         1,
         {},
         "lumodir: several files go into a directory, and 'x' is none: nothing is done\n"},
        {{"mv", "*.txt", "sub", "--dry-run"},
         0,
         "would move a.txt to sub\\a.txt\nwould move b.txt to sub\\b.txt\n"},
        {{"mv", "$D\\no", "$D\\x"}, 1, {}, "lumodir: '$D\\no' does not exist\n"},
        {{"mv", "", "$D\\x"}, 1, {}, "lumodir: the path is empty: refused, nothing is done\n"},
        {{"mv", "$D\\a.txt", "$D\\ñ.txt"}, 0, "moved $D\\a.txt to $D\\ñ.txt\n"},
        {{"mv", "$D\\ñ.txt", "$D\\sub"}, 0, "moved $D\\ñ.txt to $D\\sub\\ñ.txt\n"},
        {{"mv", "$D\\B.txt", "$D\\c.txt", "--if-possible", "--json"},
         0,
         R"([{"from":"$D\\B.txt","to":"$D\\c.txt","done":true}])"},
        {{"mv", "$D\\c.txt", "$D\\sub\\no\\c.txt", "--if-possible"},
         1,
         {},
         "lumodir: '$D\\c.txt' is not moved\n"},
    };
    cli::comprueba(filas, d);
    EXPECT_EQ(lumodir({"size", d.bajo("sub\\ñ.txt")}).salida.find("bytes     size"), 0u);
    EXPECT_TRUE(cli::existe(d.bajo("c.txt")));
    EXPECT_FALSE(cli::existe(d.bajo("a.txt")));
    const cli::resultado r = lumodir({"mv", d.bajo("c.txt"), d.bajo("sub\\no\\c.txt")});
    EXPECT_EQ(r.codigo, 1);
    EXPECT_NE(r.errores.find("lumodir: The file cannot be renamed"), std::string::npos) << r.errores;
}

TEST(mv, otras_mayusculas_del_mismo_nombre_se_ponen_o_se_dice_que_no) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("b.txt");
    const cli::resultado r = lumodir({"mv", d.bajo("b.txt"), d.bajo("B.txt")});
    const std::string nombre = lumodir({"ls", d.ruta()}).salida;
    if (nombre == "B.txt\n") {
        EXPECT_EQ(r.codigo, 0);
        EXPECT_EQ(r.salida, d.pon("moved $D\\b.txt to $D\\B.txt\n"));
    } else {  // Wine answers that it is done, and keeps the name
        EXPECT_EQ(nombre, "b.txt\n");
        EXPECT_EQ(r.codigo, 1);
        EXPECT_EQ(r.salida, "");
        EXPECT_EQ(r.errores,
                  d.pon("lumodir: '$D\\b.txt' is not moved: the system keeps the letter case of its name\n"));
    }
}

TEST(rutas_vacias, se_dicen_igual_en_todas_las_ordenes) {
    const cli::directorio_de_prueba d;
    for (const char* orden : {"size", "date", "touch", "mkdir", "test", "protect", "unprotect", "who"}) {
        cli::comprueba({{orden, ""}, 1, {}, "lumodir: the path is empty\n"}, d);
    }
}

TEST(protect, y_desproteger) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("ñ");
    cli::comprueba({{"protect", "$D\\ñ"}, 0, "protected $D\\ñ\n"}, d);
    EXPECT_TRUE(cli::es_solo_lectura(d.bajo("ñ")));
    cli::comprueba({{"unprotect", "*", "--dry-run"}, 0, "would unprotect ñ\n"}, d);
    EXPECT_TRUE(cli::es_solo_lectura(d.bajo("ñ")));
    cli::comprueba({{"unprotect", "*", "--json"}, 0, R"([{"path":"ñ","done":true}])"}, d);
    EXPECT_FALSE(cli::es_solo_lectura(d.bajo("ñ")));
    cli::comprueba({{"protect", "$D"}, 1, {}, "lumodir: '$D' is a directory\n"}, d);
    cli::comprueba({{"unprotect", "$D", "--dry-run"}, 1, {}, "lumodir: '$D' is a directory\n"}, d);
    cli::comprueba({{"protect", "no", "$D\\ñ"}, 1, "protected $D\\ñ\n", "lumodir: 'no' does not exist\n"}, d);
    EXPECT_TRUE(cli::es_solo_lectura(d.bajo("ñ")));
}

TEST(rename_ext, pregunta_y_cuenta_lo_que_pisa) {
    const cli::directorio_de_prueba d;
    for (const char* nombre : {"a.tmp", "ñ.TMP", "b.bak", "b.tmp", "c.dat"}) {
        d.crea_fichero(nombre);
    }
    const std::string pregunta =
        "  a.tmp to a.bak\n  b.tmp to b.bak, which is replaced\n  ñ.TMP to ñ.bak\n"
        "Rename 3 files in '$D' from '.tmp' to '.bak', replacing 1 file of the same name? [y/N] \n";
    const std::string uso =
        "Usage: lumodir rename-ext DIR OLD NEW [OPTION...]\nTry 'lumodir rename-ext --help'.\n";
    const fila filas[] = {
        {{"rename-ext", "$D", "tmp", "bak"},
         1,
         {},
         pregunta + "lumodir: not confirmed, nothing is done\n",
         "n\n"},
        {{"rename-ext", "$D", "zip", "bak"}, 1, {}, "lumodir: no file in '$D' has the extension 'zip'\n"},
        {{"rename-ext", "$D", "*", "bak"}, 2, {}, "lumodir: '*' is not an extension\n" + uso},
        {{"rename-ext", "$D", "tmp", ".tmp"},
         2,
         {},
         "lumodir: the files would keep their names: the extension is 'tmp' already\n" + uso},
        {{"rename-ext", "$D", "tmp", "a/b"}, 2, {}, "lumodir: 'a/b' is not an extension\n" + uso},
        {{"rename-ext", "C:\\", "tmp", "bak"},
         1,
         {},
         "lumodir: 'C:\\' is the root of a drive: refused, nothing is done\n"},
        {{"rename-ext", "", "tmp", "bak"}, 1, {}, "lumodir: the path is empty: refused, nothing is done\n"},
        {{"rename-ext", "$D", "tmp", "bak", "--dry-run"},
         0,
         "would rename a.tmp to a.bak\nwould rename b.tmp to b.bak, which is replaced\nwould rename ñ.TMP to "
         "ñ.bak\n"},
        {{"rename-ext", "$D", ".tmp", "bak"}, 0, "renamed 3 files\n", pregunta, "y\n"},
        {{"ls", "$D"}, 0, "a.bak\nb.bak\nc.dat\nñ.bak\n"},
        {{"rename-ext", "$D", "bak", "x", "--yes", "--json"},
         0,
         R"({"directory":"$D","renamed":3,"replaced":0,"left":0,"files":[{"from":"a.bak","to":"a.x","replaces":false},)"
         R"({"from":"b.bak","to":"b.x","replaces":false},{"from":"ñ.bak","to":"ñ.x","replaces":false}]})"},
    };
    cli::comprueba(filas, d);
}

TEST(sets, fechas_y_proteccion) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("b.txt");
    d.crea_fichero("a.txt");
    ASSERT_EQ(lumodir({"touch", d.bajo("a.txt"), "--date", "2001-02-03 04:05"}).codigo, 0);
    ASSERT_EQ(lumodir({"touch", d.bajo("b.txt"), "--date", "2011-02-03 04:05"}).codigo, 0);
    cli::pon_solo_lectura(d.bajo("b.txt"));
    const fila filas[] = {
        {{"sets", "$D"},
         0,
         "modified             protection  name\n2001-02-03 04:05:00              a.txt\n"
         "2011-02-03 04:05:00  protected   b.txt\n"},
        {{"sets", "$D", "--by-date"},
         0,
         "modified             protection  name\n2011-02-03 04:05:00  protected   b.txt\n"
         "2001-02-03 04:05:00              a.txt\n"},
        {{"sets", "$D", "--json"},
         0,
         R"({"directory":"$D","files":[{"name":"a.txt","modified":"2001-02-03T04:05:00","modified_seconds":981173100,)"
         R"("protected":false},{"name":"b.txt","modified":"2011-02-03T04:05:00","modified_seconds":1296705900,)"
         R"("protected":true}]})"},
        {{"ls", "$D", "--long"},
         0,
         "attributes  bytes  modified             name\n----a           0  2001-02-03 04:05:00  a.txt\n"
         "-r--a           0  2011-02-03 04:05:00  b.txt\n2 files, 0 bytes\n"},
        {{"sets", "$D\\no"}, 1, {}, "lumodir: Directory '$D\\no' does not exist.\n"},
    };
    cli::comprueba(filas, d);
}

// "d." beside "d", as programs of other systems make them: Windows takes one for the other.
TEST(directorio_que_acaba_en_punto, no_se_confunde_con_el_del_mismo_nombre_sin_el) {
    const cli::directorio_de_prueba d;
    for (const char* nombre : {"d\\suyo.txt", "d\\otro", "d.\\punto.txt", "f", "g", "h"}) {
        d.crea_fichero(nombre);
    }
    const fila filas[] = {
        {{"exists", "d.\\suyo.txt"}, 1, "missing    d.\\suyo.txt\n"},
        {{"rename-ext", "d.", "txt", "bak", "-y"}, 0, "renamed 1 file\n"},
        {{"mv", "f", "d."}, 0, "moved f to d.\\f\n"},
        {{"mv", "g", "d.\\otro"}, 0, "moved g to d.\\otro\n"},
        {{"mv", "h", "d./h2", "--if-possible"}, 0, "moved h to d./h2\n"},
        {{"touch", "d.\\suyo.txt"}, 0, "dated d.\\suyo.txt\n"},
        {{"mkdir", "d.\\n\\m"}, 0, "created d.\\n\\m\n"},
        {{"mkdir", "d.\\n2", "--if-possible"}, 0, "created d.\\n2\n"},
        {{"mkdir", "--for-file", "d.\\p\\q\\f"}, 0, "created d.\\p\\q\n"},
    };
    cli::comprueba(filas, d);
    for (const char* esta : {"punto.bak", "f", "otro", "h2", "suyo.txt", "n\\m", "n2", "p\\q"}) {
        EXPECT_TRUE(cli::existe(d.bajo("d.\\") + esta)) << esta;
    }
    const cli::entorno aqui{.entrada = {}, .variables = {}, .directorio = d.ruta()};
    const std::string conjunto = cli::json_compacto(lumodir({"sets", "d.", "--json"}, aqui).salida);
    EXPECT_EQ(conjunto.find(R"({"directory":"d.","files":[{"name":"f",)"), 0u) << conjunto;
    EXPECT_NE(conjunto.find(R"("name":"punto.bak")"), std::string::npos) << conjunto;
    EXPECT_EQ(lumodir({"tmp", "--in", "d."}, aqui).codigo, 0);
    EXPECT_EQ(lumodir({"test", "d.", "--write"}, aqui).codigo, 0);
    cli::comprueba({{"ls", "$D\\d", "--all"}, 0, "otro\nsuyo.txt\n"}, d);
}

TEST(test, directorios_de_nombres_raros) {
    const cli::directorio_de_prueba d;
    for (const char* nombre : {"punto.", "blanco ", "con", "llano"}) {
        d.crea_directorio(nombre);
        for (const std::string& ruta : {std::string(nombre), "\\\\?\\" + d.bajo(nombre)}) {
            cli::comprueba(
                {{"test", ruta}, 0, "kind       directory\nreadable   yes\nwritable   yes\nprotected  no\n"},
                d);
        }
        cli::comprueba({{"ls", nombre}, 0}, d);  // what was tried there is gone
    }
}

TEST(mv, a_un_directorio_lo_que_acaba_en_separador) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("v\\a.txt");
    d.crea_directorio("p");
    cli::comprueba({{"mv", "v\\", "p"}, 0, "moved v\\ to p\\v\n"}, d);
    EXPECT_TRUE(cli::existe(d.bajo("p\\v\\a.txt")));
    EXPECT_FALSE(cli::existe(d.bajo("v")));
}

TEST(mv, una_sola_lengua_en_cada_respuesta) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("f.txt");
    const cli::resultado r = lumodir({"mv", d.bajo("f.txt"), d.bajo("zz\\q"), "--lang", "es"});
    EXPECT_NE(r.errores.find("no se ha movido"), std::string::npos) << r.errores;
    const cli::resultado aleman = lumodir({"mv", d.bajo("f.txt"), d.bajo("zz\\q"), "--lang", "de"});
    EXPECT_EQ(aleman.codigo, 1);
    EXPECT_NE(aleman.errores.find("Die Datei"), std::string::npos) << aleman.errores;
    EXPECT_EQ(aleman.errores.find("is not moved"), std::string::npos) << aleman.errores;
}

TEST(exists, un_patron_dice_por_que_no_se_busca) {
    const cli::directorio_de_prueba d;
    cli::comprueba({{"exists", "q*\\x"},
                    1,
                    "missing    q*\\x\n",
                    "lumodir: 'q*\\x': only the last part of a path may be a pattern\n"},
                   d);
    cli::comprueba({{"exists", "nada\\*"}, 1, "missing    nada\\*\n"}, d);
}
