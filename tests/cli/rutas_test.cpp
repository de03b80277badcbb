// The subcommands on paths as text.
#include <gtest/gtest.h>

#include "json.hpp"
#include "orden.hpp"

using cli::fila;
using cli::lumodir;

TEST(check, dice_por_que_no) {
    const cli::directorio_de_prueba d;
    const fila filas[] = {
        {{"check", R"(C:\a\b.txt)"}, 0, "valid    C:\\a\\b.txt\n"},
        {{"check", R"(日本\Ω\ñ.txt)"}, 0, "valid    日本\\Ω\\ñ.txt\n"},
        {{"check", "a|b"}, 1, "invalid  a|b: There are invalid characters in the name 'a|b'\n"},
        {{"check", R"(9:\a)"}, 1, "invalid  9:\\a: The name of the disk drive must be a letter.\n"},
        {{"check", R"(\\srv)"}, 1, "invalid  \\\\srv: The name of the network drive is incomplete.\n"},
        {{"check", "a."}, 1, "invalid  a.: A point was found at beginning or end of the path: 'a.'\n"},
        {{"check", R"(C:\AUX.txt)"},
         1,
         "invalid  C:\\AUX.txt: There are invalid characters in the name 'AUX.txt'\n"},
        {{"check", "a|b", "--lang", "de"},
         1,
         "invalid  a|b: Der Name 'a|b' enthält ungültige Zeichen\n",
         "lumodir: the library speaks 'de'; the command's own words are in English\n"},
        {{"check", "a", "b"}, 0, "valid    a\nvalid    b\n2 paths: 2 valid, 0 invalid\n"},
        {{"check", "a", "b?", "--quiet"},
         1,
         "invalid  b?: There are invalid characters in the name 'b?'\n2 paths: 1 valid, 1 invalid\n"},
        // From standard input, with both kinds of line ends and without the last one.
        {{"check", "-"},
         1,
         "valid    ä\ninvalid  *: There are invalid characters in the name '*'\nvalid    c\n"
         "3 paths: 2 valid, 1 invalid\n",
         {},
         "ä\r\n*\nc"},
        {{"check", "--json", R"(C:\a)", "a", "b|"},
         1,
         R"([{"path":"C:\\a","valid":true,"absolute":true},{"path":"a","valid":true,"absolute":false},)"
         R"({"path":"b|","valid":false,"message":"There are invalid characters in the name 'b|'"}])"},
    };
    cli::comprueba(filas, d);
}

TEST(check, texto_raro) {
    const cli::directorio_de_prueba d;
    const fila filas[] = {
        // A lone surrogate: whole in JSON, written out in words. A pair is one character.
        {{"check", "a\xED\xA0\x80z", "--json"}, 0, R"([{"path":"a\ud800z","valid":true,"absolute":false}])"},
        {{"check", "a\xED\xA0\x80z"}, 0, "valid    a<U+D800>z\n"},
        {{"check", "\U0001F600", "--json"},
         0,
         "[{\"path\":\"\U0001F600\",\"valid\":true,\"absolute\":false}]"},
        // Control characters are escaped in JSON and come as they are to a pipe.
        {{"join", "a\tb", "\x7F\x01", "--json"}, 0, R"({"path":"a\tb\\\u007f\u0001"})"},
        {{"join", "a\tb", "c"}, 0, "a\tb\\c\n"},
    };
    cli::comprueba(filas, d);
}

TEST(check, rutas_largas_y_demasiado_largas) {
    std::string larga = "C:";
    while (larga.size() < 4000) {
        larga += "\\componente_ñ_" + std::to_string(larga.size());
    }
    EXPECT_EQ(lumodir({"check", larga}).salida, "valid    " + larga + "\n");
    const std::string sin_fin(10241, 'x');
    const cli::resultado r = lumodir({"check", sin_fin});
    EXPECT_EQ(r.codigo, 1);
    EXPECT_NE(r.salida.find("exceeds the maximum permitted length (10240)."), std::string::npos) << r.salida;
    // Longer than any command line.
    const cli::resultado enorme = lumodir(
        {"check", "-", "--json"}, {.entrada = std::string(100000, 'x'), .variables = {}, .directorio = {}});
    EXPECT_EQ(enorme.codigo, 1);
    EXPECT_EQ(cli::json_compacto(enorme.salida)
                  .find("[{\"path\":\"" + std::string(100000, 'x') + "\",\"valid\":false"),
              0u);
}

TEST(split, en_lista_en_tabla_y_en_json) {
    const cli::directorio_de_prueba d;
    const fila filas[] = {
        {{"split", R"(C:\windows\notepad.exe)"},
         0,
         "drive      C:\ndirectory  \\windows\\\nbase name  notepad\nextension  .exe\n"},
        {{"split", "x.tar.gz"}, 0, "drive      \ndirectory  \nbase name  x.tar\nextension  .gz\n"},
        // Wide characters take two columns, combining ones none.
        {{"split", R"(C:\a\b.c)", R"(\\srv\share\日本語\é.gz)"},
         0,
         "drive        directory  base name  extension\n"
         "C:           \\a\\        b          .c\n"
         "\\\\srv\\share  \\日本語\\   é          .gz\n"},
        {{"split", R"(C:\win?)"},
         1,
         "drive      C:\ndirectory  \\\nbase name  win?\nextension  \n",
         "lumodir: The file 'C:\\win?' is not correct\n"},
        {{"split", R"(C:\*.*)", "--wildcards"},
         0,
         "drive      C:\ndirectory  \\\nbase name  *\nextension  .*\n"},
        {{"split", R"(C:\a*b)", "--wildcards"},
         1,
         "drive      C:\ndirectory  \\\nbase name  a*b\nextension  \n"},
        {{"split", R"(C:\a\b.c)", "--json"},
         0,
         R"([{"path":"C:\\a\\b.c","drive":"C:","directory":"\\a\\","base":"b","extension":".c"}])"},
        {{"split", "-", "--json"},
         0,
         R"([{"path":"a.b","drive":"","directory":"","base":"a","extension":".b"}])",
         {},
         "a.b\n"},
    };
    cli::comprueba(filas, d);
}

TEST(join, partes_o_piezas) {
    const cli::directorio_de_prueba d;
    const std::string uso =
        "Usage: lumodir join PART PART... | --base B [--drive D] [--dir D] [--ext E]\nTry 'lumodir join "
        "--help'.\n";
    const fila filas[] = {
        {{"join", R"(C:\data)", "reports", "2024.txt"}, 0, "C:\\data\\reports\\2024.txt\n"},
        {{"join", R"(C:\data\)", R"(\reports)"}, 0, "C:\\data\\reports\n"},
        {{"join", "--drive", "C:", "--dir", R"(\data)", "--base", "ñ", "--ext", "txt"},
         0,
         "C:\\data\\ñ.txt\n"},
        {{"join", "--base", "a?b", "--ext", ".txt"}, 0, "a_b.txt\n"},  // repaired
        {{"join", "--drive", "1:", "--base", "a"}, 1, "1:a\n"},        // beyond repair
        {{"join", "--json", "a", "b"}, 0, R"({"path":"a\\b"})"},
        {{"join", "a"}, 2, {}, "lumodir: joining takes two parts or more\n" + uso},
        {{"join", "a", "--base", "b"},
         2,
         {},
         "lumodir: give either parts to join or pieces to compose, not both\n" + uso},
        {{"join", "--ext", "b"}, 2, {}, "lumodir: an extension needs a base name (--base)\n" + uso},
    };
    cli::comprueba(filas, d);
}

TEST(name, cada_pieza) {
    const cli::directorio_de_prueba d;
    const std::string ruta = R"(C:\datos\año.tar.gz)";
    const fila filas[] = {
        {{"name", ruta}, 0, "año.tar.gz\n"},
        {{"name", ruta, "--base"}, 0, "año.tar\n"},
        {{"name", ruta, "--ext"}, 0, "gz\n"},
        {{"name", ruta, "--dir"}, 0, "C:\\datos\\\n"},
        {{"name", ruta, "--stem"}, 0, "C:\\datos\\año.tar\n"},
        {{"name", ruta, "--with-ext", "bak"}, 0, "C:\\datos\\año.tar.bak\n"},
        {{"name", ruta, "--with-ext", ""}, 0, "C:\\datos\\año.tar\n"},
        {{"name", R"(C:\dir\)", "--ext"}, 0, "\n"},
        {{"name", "-", "--base"}, 0, "a\nb\n", {}, "a.x\nb.y\n"},
        {{"name", "a|b.c"},
         1,
         "a|b.c\n",
         "lumodir: a|b.c: There are invalid characters in the name 'a|b.c'\n"},
        {{"name", R"(C:\d\n.e)", "--json", "--with-ext", "f"},
         0,
         R"([{"path":"C:\\d\\n.e","name":"n.e","base":"n","extension":"e","directory":"C:\\d\\",)"
         R"("stem":"C:\\d\\n","with_extension":"C:\\d\\n.f"}])"},
        {{"name", "a", "--base", "--ext"},
         2,
         {},
         "lumodir: ask for one piece of the path at a time (or for all of them with --json)\n"
         "Usage: lumodir name PATH... [OPTION...]\nTry 'lumodir name --help'.\n"},
    };
    cli::comprueba(filas, d);
}

TEST(relative_absolute, sobre_una_base) {
    const cli::directorio_de_prueba d;
    const fila filas[] = {
        {{"relative", R"(C:\proj)", R"(C:\proj\src\a.c)"}, 0, "src\\a.c\n"},
        {{"relative", R"(C:\Proj)", R"(C:\proj\src\a.c)", R"(D:\x)"}, 0, "C:\\proj\\src\\a.c\nD:\\x\n"},
        {{"relative", R"(C:\proj)", R"(C:\proj\a?)"},
         1,
         "a?\n",
         "lumodir: The file 'C:\\proj\\a?' is not correct\n"},
        {{"absolute", R"(C:\proj)", R"(.\a.c)", R"(..\b.c)", R"(D:\c)"},
         0,
         "C:\\proj\\a.c\nC:\\proj\\..\\b.c\nD:\\c\n"},
        {{"absolute", R"(C:\ñ)", "-", "--json"}, 0, R"([{"path":"π","result":"C:\\ñ\\π"}])", {}, "π\n"},
    };
    cli::comprueba(filas, d);
}

TEST(shorten, hacia_un_numero_de_caracteres) {
    const cli::directorio_de_prueba d;
    const std::string ruta = R"(C:\Files\Customers\Site2024\Images\Ground\photo1.png)";
    const fila filas[] = {
        {{"shorten", ruta, "40"}, 0, "C:\\Files\\...\\Ground\\photo1.png\n"},
        {{"shorten", ruta, "20"}, 0, "C:\\...\\photo1.png\n"},
        {{"shorten", ruta, "60"}, 0, ruta + "\n"},
        {{"shorten", "abc.txt", "3"}, 0, "abc.txt\n"},
        // What is relative stays so.
        {{"shorten", "long\\aaaaaaaaaaaaaaaaaaaaaaaaaaa\\b\\c\\f.txt", "30"}, 0, "long\\...\\b\\c\\f.txt\n"},
        {{"shorten", "D:long\\aaaaaaaaaaaaaaaaaaaaaaaaaaa\\b\\f.txt", "20"}, 0, "D:long\\...\\b\\f.txt\n"},
        {{"shorten", ruta, "0", "--json"}, 0, R"({"path":"C:\\...\\photo1.png"})"},
    };
    cli::comprueba(filas, d);
}

TEST(repair, lo_que_se_puede) {
    const cli::directorio_de_prueba d;
    const fila filas[] = {
        {{"repair", "Sales: May/June?"}, 0, "Sales_ May_June_\n"},
        {{"repair", " ñ. "}, 0, "ñ\n"},
        {{"repair", "AUX"}, 1, "AUX\n", "lumodir: 'AUX' cannot be repaired: the system reserves it\n"},
        {{"repair", ". ."}, 1, "\n", "lumodir: nothing is left of '. .'\n"},
        {{"repair", "a*b", "NUL", "--json"},
         1,
         R"([{"name":"a*b","result":"a_b","valid":true},{"name":"NUL","result":"NUL","valid":false}])"},
    };
    cli::comprueba(filas, d);
}
