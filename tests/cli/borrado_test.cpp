// Deletion by the command: asked before, refused at roots, patient with files that others hold.
#include <gtest/gtest.h>
#include <windows.h>

#include "apoyo/enlace.hpp"
#include "apoyo/niveles.hpp"
#include "json.hpp"
#include "orden.hpp"

using cli::fila;
using cli::lumodir;

TEST(rm, pregunta_antes) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("ñ.txt", "ñ");
    d.crea_fichero("b.txt", "bbb");
    d.crea_directorio("sub");
    const std::string pregunta = "Delete the file '$D\\ñ.txt'? [y/N] \n";
    const std::string nada = "lumodir: not confirmed, nothing is done\n";
    const std::string dos = "  $D\\ñ.txt\n  $D\\b.txt\nDelete 2 files (5 bytes)? [y/N] \n";
    const fila no_borran[] = {
        {{"rm", "$D\\ñ.txt"}, 1, {}, pregunta + nada},  // the end of the input is a no
        {{"rm", "$D\\ñ.txt"}, 1, {}, pregunta + nada, "no\n"},
        {{"rm", "$D\\ñ.txt"}, 1, {}, pregunta + nada, "\n"},
        {{"rm", "$D\\ñ.txt", "$D\\b.txt"}, 1, {}, dos + nada, "n"},
        {{"rm", "$D\\ñ.txt", "$D\\no", "--yes"}, 1, {}, "lumodir: '$D\\no' does not exist\n"},
        {{"rm", "$D\\ñ.txt", "$D\\sub", "--yes"},
         1,
         {},
         "lumodir: '$D\\sub' is a directory; rmtree deletes trees\n"},
        {{"rm", "$D\\*.zip", "--yes"}, 1, {}, "lumodir: no file matches '$D\\*.zip'\n"},
        {{"rm", "$D\\s*", "--yes"}, 1, {}, "lumodir: no file matches '$D\\s*'\n"},  // a directory is no file
        {{"rm", "$D\\*\\a.txt", "--yes"},
         1,
         {},
         "lumodir: '$D\\*\\a.txt': only the last part of a path may be a pattern\n"},
        {{"rm", "$D\\*.txt"},
         1,
         {},
         "  $D\\b.txt\n  $D\\ñ.txt\nDelete 2 files (5 bytes)? [y/N] \n" + nada,
         "n"},
        {{"rm", "$D\\*.txt", "--dry-run"}, 0, "would delete $D\\b.txt\nwould delete $D\\ñ.txt\n"},
        {{"rm", "$D\\B.*", "--dry-run", "--json"},
         0,
         R"([{"path":"$D\\b.txt","done":false,"dry_run":true}])"},
        {{"rm", "", "--yes"}, 1, {}, "lumodir: the path is empty: refused, nothing is done\n"},
        {{"rm", "$D\\no", "--json", "--yes"}, 1, R"({"error":"'$D\\no' does not exist"})"},
    };
    for (const fila& f : no_borran) {
        cli::comprueba(f, d);
    }
    EXPECT_TRUE(cli::existe(d.bajo("ñ.txt")));
    cli::pon_solo_lectura(d.bajo("b.txt"));
    d.crea_fichero("z.txt");
    const fila borran[] = {
        {{"rm", "$D\\ñ.txt"}, 0, "deleted $D\\ñ.txt\n", pregunta, "Yes\n"},
        {{"rm", "$D\\b.txt", "$D\\no", "-y", "--if-exists"}, 0, "deleted $D\\b.txt\n"},
        {{"rm", "$D\\no", "--if-exists", "--json"}, 0, "[]"},
        {{"rm", "z.txt", "./Z.txt", "$D\\z.txt", "-y"}, 0, "deleted z.txt\n"},
    };
    for (const fila& f : borran) {
        cli::comprueba(f, d);
    }
    EXPECT_FALSE(cli::existe(d.bajo("ñ.txt")));
    EXPECT_FALSE(cli::existe(d.bajo("b.txt")));
}

TEST(rm, espera_a_que_otro_suelte_el_fichero) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("a.txt");
    const cli::otro_programa otro(d.bajo("a.txt"));
    cli::proceso borrado(cli::ruta_de_lumodir(),
                         {"rm", d.bajo("a.txt"), "--yes", "--retries", "1000", "--wait", "50"});
    otro.espera_un_intento();
    otro.suelta();
    const cli::resultado r = borrado.espera();
    EXPECT_EQ(r.codigo, 0);
    EXPECT_EQ(r.salida, "deleted " + d.bajo("a.txt") + "\n");
    EXPECT_EQ(r.errores, "");
    EXPECT_FALSE(cli::existe(d.bajo("a.txt")));
}

TEST(rm, se_rinde_y_dice_por_que) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("a.txt");
    const cli::otro_programa otro(d.bajo("a.txt"));
    const cli::resultado r = lumodir({"rm", d.bajo("a.txt"), "--yes", "--retries", "1", "--wait", "10"});
    EXPECT_EQ(r.codigo, 1);
    EXPECT_EQ(r.salida, "");
    EXPECT_EQ(r.errores.find("lumodir: Cannot delete the file '" + d.bajo("a.txt") +
                             "'\nIt may be that it is being used by another application"),
              0u)
        << r.errores;
    EXPECT_NE(r.errores.find("\nlumodir: '" + d.bajo("a.txt") + "' is not deleted\n"), std::string::npos)
        << r.errores;
    // One language in an answer: what the library has said in German the command does not say again in English.
    const cli::resultado aleman =
        lumodir({"rm", d.bajo("a.txt"), "--yes", "--retries", "1", "--wait", "10", "--lang", "de"});
    EXPECT_EQ(aleman.codigo, 1);
    EXPECT_NE(aleman.errores.find("lumodir: Die Datei '" + d.bajo("a.txt") + "' kann nicht gelöscht werden"),
              std::string::npos)
        << aleman.errores;
    EXPECT_EQ(aleman.errores.find("is not deleted"), std::string::npos) << aleman.errores;
    // Without a word of the library, and for a script.
    const cli::resultado callado = lumodir(
        {"rm", d.bajo("a.txt"), "--yes", "--retries", "1", "--wait", "10", "--if-possible", "--json"});
    EXPECT_EQ(callado.codigo, 1);
    EXPECT_EQ(callado.errores, "");
    EXPECT_NE(cli::json_compacto(callado.salida).find(R"("done":false)"), std::string::npos)
        << callado.salida;
    EXPECT_TRUE(cli::existe(d.bajo("a.txt")));
}

TEST(rmtree, raices_y_rutas_vacias_se_rechazan) {
    // Nobody confirms here: a root that were not refused would end in a question, not in a deletion.
    const cli::directorio_de_prueba d;
    for (const char* raiz : {"C:\\", "C:", "c:/", "C:\\.", "C:\\nothing\\..", "\\", "/", "\\\\server\\share",
                             "\\\\server\\share\\", "\\\\?\\C:\\", "\\\\?\\UNC\\server\\share\\", "Z:\\",
                             "C:\\windows\\system32\\..\\..", "C:\\ "}) {
        const cli::resultado r = lumodir({"rmtree", raiz});
        EXPECT_EQ(r.codigo, 1) << raiz;
        EXPECT_EQ(r.salida, "") << raiz;
        EXPECT_EQ(r.errores,
                  "lumodir: '" + std::string(raiz) + "' is the root of a drive: refused, nothing is done\n");
    }
    for (const char* vacia : {"", " ", "   "}) {
        const cli::resultado r = lumodir({"rmtree", vacia});
        EXPECT_EQ(r.codigo, 1);
        EXPECT_EQ(r.errores, "lumodir: the path is empty: refused, nothing is done\n");
    }
    const cli::resultado aqui =
        lumodir({"rmtree", "."}, {.entrada = {}, .variables = {}, .directorio = "C:\\"});
    EXPECT_EQ(aqui.errores, "lumodir: '.' is the root of a drive: refused, nothing is done\n");
}

namespace {

void i_puebla_arbol(const cli::directorio_de_prueba& d) {
    for (const char* nombre : {"t\\a.txt", "t\\sub\\b.txt", "t\\sub\\日\\c.txt", "t\\sub\\日\\d.txt"}) {
        d.crea_fichero(nombre);
    }
    cli::pon_solo_lectura(d.bajo("t\\sub\\b.txt"));
}

}  // namespace

TEST(rmtree, cuenta_pregunta_y_borra) {
    const std::string pregunta = "Delete '$D\\t' with 4 files in 3 directories? [y/N] \n";
    const cli::directorio_de_prueba d;
    i_puebla_arbol(d);
    const fila no_borran[] = {
        {{"rmtree", "$D\\t"}, 1, {}, pregunta + "lumodir: not confirmed, nothing is done\n", "n\n"},
        {{"rmtree", "$D\\no"}, 1, {}, "lumodir: '$D\\no' does not exist\n"},
        {{"rmtree", "$D\\t\\a.txt", "--yes"}, 1, {}, "lumodir: '$D\\t\\a.txt' is a file; rm deletes files\n"},
        {{"rmtree", "$D\\t", "--yes", "--retry", "--if-possible"},
         2,
         {},
         "lumodir: give either --if-possible or --retry\nUsage: lumodir rmtree DIR [--if-possible | "
         "--retry] [OPTION...]\n"
         "Try 'lumodir rmtree --help'.\n"},
    };
    for (const fila& f : no_borran) {
        cli::comprueba(f, d);
    }
    EXPECT_TRUE(cli::existe(d.bajo("t\\sub\\日\\d.txt")));
    cli::comprueba({{"rmtree", "$D\\t"}, 0, "deleted $D\\t: 4 files in 3 directories\n", pregunta, "y\n"}, d);
    EXPECT_FALSE(cli::existe(d.bajo("t")));
    EXPECT_TRUE(cli::existe(d.ruta()));
    for (const char* manera : {"--if-possible", "--retry"}) {
        i_puebla_arbol(d);
        cli::comprueba(
            {{"rmtree", "$D\\t\\", "-y", manera}, 0, "deleted $D\\t\\: 4 files in 3 directories\n"}, d);
        EXPECT_FALSE(cli::existe(d.bajo("t"))) << manera;
    }
    i_puebla_arbol(d);
    cli::comprueba(
        {{"rmtree", "$D\\t", "-y", "--json"},
         0,
         R"({"path":"$D\\t","done":true,"link":false,"stopped":false,"files_before":4,"directories_before":3,"links_before":0,)"
         R"("bytes_before":0,"unreadable_before":[],"files_left":0,"directories_left":0,"links_left":0})"},
        d);
}

TEST(rmtree, los_directorios_con_punto_se_cuentan_y_se_borran) {
    for (const char* manera : {"", "--if-possible", "--retry"}) {
        const cli::directorio_de_prueba d;
        for (const char* nombre :
             {"t\\.git\\obj\\1", "t\\.git\\obj\\2", "t\\.git\\config", "t\\src\\a.c", "t\\.oculto"}) {
            d.crea_fichero(nombre);
        }
        const std::string pregunta = "Delete '$D\\t' with 5 files in 4 directories? [y/N] \n";
        std::vector<std::string> argumentos = {"rmtree", "$D\\t"};
        if (*manera != '\0') {
            argumentos.emplace_back(manera);
        }
        cli::comprueba({argumentos, 1, {}, pregunta + "lumodir: not confirmed, nothing is done\n"}, d);
        EXPECT_TRUE(cli::existe(d.bajo("t\\.git\\obj\\2")));
        cli::comprueba({argumentos, 0, "deleted $D\\t: 5 files in 4 directories\n", pregunta, "y\n"}, d);
        EXPECT_FALSE(cli::existe(d.bajo("t"))) << manera;
    }
}

TEST(rmtree, en_seco_solo_cuenta) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("t\\.git\\config", "123");
    d.crea_fichero("t\\a.txt", "4567");
    cli::comprueba({{"rmtree", "$D\\t", "--dry-run"}, 0, "would delete $D\\t: 2 files in 2 directories\n"},
                   d);
    cli::comprueba(
        {{"rmtree", "$D\\t", "--dry-run", "--json"},
         0,
         R"({"path":"$D\\t","done":false,"link":false,"stopped":false,"files_before":2,"directories_before":2,"links_before":0,)"
         R"("bytes_before":7,"unreadable_before":[],"files_left":2,"directories_left":2,"links_left":0,"dry_run":true})"},
        d);
    EXPECT_TRUE(cli::existe(d.bajo("t\\a.txt")));
}

TEST(rmtree, lo_que_queda_se_cuenta_de_verdad) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("t\\.git\\obj\\tomado");
    d.crea_fichero("t\\.git\\obj\\libre");
    d.crea_fichero("t\\a.txt");
    const std::string tomado = d.bajo("t\\.git\\obj\\tomado");
    const cli::otro_programa otro(tomado);
    const cli::resultado r = lumodir({"rmtree", d.bajo("t"), "--yes", "--if-possible"});
    EXPECT_EQ(r.codigo, 1);
    EXPECT_EQ(r.salida, "");
    EXPECT_EQ(r.errores, "lumodir: not deleted; left in '" + d.bajo("t") + "': 1 file in 3 directories\n  " +
                             tomado + "\n");
}

TEST(rmtree, con_un_fichero_que_otro_tiene) {
    const cli::directorio_de_prueba d;
    i_puebla_arbol(d);
    const std::string tomado = d.bajo("t\\sub\\b.txt");
    const cli::otro_programa otro(tomado);
    const cli::resultado r = lumodir({"rmtree", d.bajo("t"), "--yes", "--if-possible"});
    EXPECT_EQ(r.codigo, 1);
    EXPECT_EQ(r.errores, "lumodir: not deleted; left in '" + d.bajo("t") + "': 1 file in 2 directories\n  " +
                             tomado + "\n");
    const cli::resultado json = lumodir({"rmtree", d.bajo("t"), "--yes", "--if-possible", "--json"});
    std::string doble = tomado;
    for (size_t i = 0; (i = doble.find('\\', i)) != doble.npos; i += 2) {
        doble.insert(i, 1, '\\');
    }
    EXPECT_NE(cli::json_compacto(json.salida).find("\"failed\":[\"" + doble + "\"]"), std::string::npos)
        << json.salida;
    // Passes with pauses outlast who holds it for a moment.
    cli::pon_solo_lectura(tomado);
    cli::proceso en_pasadas(cli::ruta_de_lumodir(), {"rmtree", d.bajo("t"), "--yes", "--retry"});
    otro.espera_un_intento();
    otro.suelta();
    EXPECT_EQ(en_pasadas.espera().codigo, 0);
    EXPECT_FALSE(cli::existe(d.bajo("t")));
}

TEST(rmtree, arbol_hondo) {
    const cli::directorio_de_prueba d;
    d.crea_directorio("t");
    ASSERT_TRUE(apoyo::crea_niveles(cli::w(d.bajo("t")).c_str(), 500, L"nivel", L"fin.txt"));
    const cli::resultado r = lumodir({"rmtree", d.bajo("t"), "--yes"});
    EXPECT_EQ(r.codigo, 0) << r.errores;
    EXPECT_FALSE(cli::existe(d.bajo("t")));
}

TEST(rmtree, control_c_para_ante_la_siguiente_entrada_y_dice_que_queda) {
    const cli::directorio_de_prueba d;
    // The files of a directory go before its subdirectories: the deletion stands at the one that is held.
    d.crea_fichero("t\\tomado.txt");
    d.crea_fichero("t\\sub\\a.txt");
    d.crea_fichero("t\\sub\\b.txt");
    const std::string tomado = d.bajo("t\\tomado.txt");
    const cli::otro_programa otro(tomado);
    cli::proceso borrado(cli::ruta_de_lumodir(),
                         {"rmtree", d.bajo("t"), "--yes", "--json", "--retries", "1000", "--wait", "50"},
                         {.entrada = {}, .variables = {}, .directorio = {}, .con_consola = true});
    otro.espera_un_intento();
    EXPECT_TRUE(borrado.pulsa_control_c());
    Sleep(200);  // the event arrives on a thread of its own
    otro.suelta();
    const cli::resultado r = borrado.espera();
    EXPECT_EQ(r.codigo, static_cast<int>(0xC000013A));
    EXPECT_NE(r.errores.find("stopping after the entry at hand; Ctrl-C again ends at once\n"),
              std::string::npos)
        << r.errores;
    const std::string json = cli::json_compacto(r.salida);
    EXPECT_NE(
        json.find(
            R"("done":false,"link":false,"stopped":true,"files_before":3,"directories_before":2,)"
            R"("links_before":0,"bytes_before":0,"unreadable_before":[],"files_left":2,"directories_left":2)"),
        std::string::npos)
        << r.salida << r.errores;
    EXPECT_FALSE(cli::existe(tomado));
    EXPECT_TRUE(cli::existe(d.bajo("t\\sub\\a.txt")));
}

TEST(rmtree, un_enlace_se_borra_y_lo_que_senyala_queda) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("valioso\\a.txt");
    apoyo::enlace enlace(d.ruta(), "enlace", "valioso");
    if (!enlace.hecho()) {
        GTEST_SKIP() << enlace.motivo();
    }
    cli::comprueba({{"rmtree", "$D\\enlace"},
                    1,
                    {},
                    "Delete the link '$D\\enlace'? What it points to stays. [y/N] \n"
                    "lumodir: not confirmed, nothing is done\n"},
                   d);
    for (const char* manera : {"--json", "--if-possible", "--retry"}) {
        const cli::resultado r =
            lumodir({"rmtree", d.bajo("enlace"), "--yes", manera, "--retries", "0", "--wait", "0"});
        EXPECT_TRUE(cli::existe(d.bajo("valioso\\a.txt"))) << manera;
        // Wine may keep the link itself: then it is said.
        EXPECT_EQ(r.codigo, enlace.hecho() ? 1 : 0) << manera << r.salida << r.errores;
        ASSERT_TRUE(enlace.hazlo());
    }
    // With a separator at its end too: what it points to is not what is left of it.
    cli::comprueba({{"rmtree", "$D\\enlace\\", "--dry-run"}, 0, "would delete $D\\enlace\\ (the link)\n"}, d);
}

TEST(rmtree, un_patron_se_rechaza) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("t\\a.txt");
    cli::comprueba(
        {{"rmtree", "$D\\t*", "--yes"}, 1, {}, "lumodir: '$D\\t*' is a pattern; one path is wanted here\n"},
        d);
    EXPECT_TRUE(cli::existe(d.bajo("t\\a.txt")));
}

TEST(rm, nombres_que_windows_recorta_y_nombres_de_aparatos) {
    const cli::directorio_de_prueba d;
    for (const char* nombre : {"punto.", "blanco ", "aux.txt", "con"}) {
        d.crea_fichero(nombre);
        cli::comprueba(
            {{"size", nombre, "--json"}, 0, R"([{"path":")" + std::string(nombre) + R"(","size":0}])"}, d);
        const std::string dicho = nombre == std::string("blanco ") ? "\"blanco \"" : nombre;
        cli::comprueba({{"rm", nombre, "--yes"}, 0, "deleted " + dicho + "\n"}, d);
        EXPECT_FALSE(cli::existe(d.bajo(nombre))) << nombre;
    }
    cli::comprueba({{"rm", "NUL", "--yes"}, 1, {}, "lumodir: 'NUL' does not exist\n"}, d);
    // A file that a shorter name would reach stays.
    d.crea_fichero("a");
    d.crea_fichero("a.");
    cli::comprueba({{"rm", "a.", "--yes"}, 0, "deleted a.\n"}, d);
    EXPECT_TRUE(cli::existe(d.bajo("a")));
}

TEST(rmtree, no_toma_por_lo_que_queda_el_directorio_de_al_lado) {
    for (const char* manera : {"--yes", "--retry", "--if-possible"}) {
        const cli::directorio_de_prueba d;
        d.crea_fichero("d\\suyo.txt");
        d.crea_fichero("d.\\otro.txt");
        cli::comprueba({{"rmtree", "d.", "-y", manera}, 0, "deleted d.: 1 file in 1 directory\n"}, d);
        EXPECT_TRUE(cli::existe(d.bajo("d\\suyo.txt"))) << manera;
        EXPECT_FALSE(cli::existe(d.bajo("d."))) << manera;
    }
}

TEST(rmtree, cuenta_lo_que_borra_donde_windows_recorta_un_nombre) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("a\\b\\uno.txt");
    cli::comprueba(
        {{"du", "a.\\b", "--json"},
         0,
         R"([{"path":"a.\\b","bytes":0,"files":1,"directories":1,"links":0,"unreadable":[],"tree":[]}])"},
        d);
    cli::comprueba({{"rmtree", "a.\\b", "-y"}, 0, "deleted a.\\b: 1 file in 1 directory\n"}, d);
    EXPECT_TRUE(cli::existe(d.bajo("a")));
    EXPECT_FALSE(cli::existe(d.bajo("a\\b")));
}

TEST(rmtree, lo_que_no_se_llama_asi_no_se_borra) {
    for (const char* manera : {"--yes", "--retry", "--if-possible", "--dry-run"}) {
        const cli::directorio_de_prueba d;
        d.crea_fichero("d\\suyo.txt");
        for (const char* otro : {"d.", "d ", "d.\\", "$D\\d."}) {
            cli::comprueba({{"rmtree", otro, "-y", manera},
                            1,
                            {},
                            "lumodir: '" + std::string(otro) + "' does not exist\n"},
                           d);
        }
        EXPECT_TRUE(cli::existe(d.bajo("d\\suyo.txt"))) << manera;
    }
}
