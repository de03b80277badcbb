// lumodir from C++17: the same library with owners that free themselves and services that are objects.
//
// Everything happens in the folder "example.dir" below the current one, which is removed at the end.
#include <fcntl.h>
#include <io.h>
#include <cstdio>
#include <fstream>
#include <lumodir.hpp>

// The functions of the C headers, by the same names: cdir_x_UNICODE() is lumodir::cdir::x().
namespace cdir = lumodir::cdir;
namespace fichsdir = lumodir::fichsdir;
namespace fs = std::filesystem;

// A view need not end with a terminator: precision and pointer instead of %ls alone.
static void say(const char* what, std::wstring_view text) {
    std::wprintf(L"    %hs%.*ls\n", what, static_cast<int>(text.size()), text.data());
}

static void make_file(const fs::path& path) {
    cdir::crea_directorios_fichero(path);  // a std::filesystem::path goes in as it is
    std::ofstream(path) << "text";
}

int main() {
    // A console shows every script, and a file gets UTF-8: without this a name in Cyrillic or Chinese would end its line.
    _setmode(_fileno(stdout), _O_U8TEXT);
    const fs::path folder = "example.dir";

    // Services: how the library talks to this program. Each is in force as long as its object lives. A window would
    // be shown where this program prints.
    int internal_errors = 0;
    lumodir::receptor_errores errors([&](const lumodir::error_interno& error) {
        ++internal_errors;
        std::wprintf(L"    internal error: %hs\n", error.expresion);
    });
    lumodir::receptor_avisos warnings([](std::wstring_view text) { say("warning: ", text); });
    lumodir::establece_politica(2, 10);  // 2 silent retries, 10 ms before each; then the question
    lumodir::establece_idioma(lumodir::idioma::ingles);

    std::wprintf(L"A yes or no with its reason:\n");
    if (const lumodir::respuesta valid = cdir::es_path_valido(L"C:\\data\\con.txt"); !valid) {
        say("", valid.motivo);
    }
    std::wprintf(L"The same for a user who reads Chinese:\n");
    lumodir::establece_idioma(lumodir::idioma::chino_simplificado);
    say("", cdir::es_path_valido(L"C:\\data\\con.txt").motivo);
    lumodir::establece_idioma(lumodir::idioma::ingles);

    std::wprintf(L"Texts free themselves; copies are asked for by name:\n");
    const cdir::piezas pieces = cdir::splitpath_con_comprobacion(L"C:\\a\\b.txt");
    say("extension: ", pieces.extension);                  // looked at
    const std::wstring name = pieces.nombre_base.texto();  // copied
    say("name: ", name);
    const std::wstring_view line = L"C:\\data\\report.txt;12";
    say("from a view: ", cdir::nombre_y_ext_fichero(line.substr(0, line.find(L';'))));

    std::wprintf(L"Lists are walked, or copied into a vector:\n");
    make_file(folder / L"b.txt");
    make_file(folder / L"a.txt");
    make_file(folder / L"\u043e\u0442\u0447\u0451\u0442.txt");  // a name in Cyrillic
    make_file(folder / L"\u5831\u544a.txt");                    // one in Chinese
    make_file(folder / L"sub" / L"c.dat");
    for (std::wstring_view file : cdir::lista_de_ficheros(folder, L"txt")) {
        say("", file);
    }
    const std::vector<fs::path> paths = cdir::lista_de_ficheros(folder).rutas();
    std::wprintf(L"    %u paths\n", static_cast<unsigned>(paths.size()));

    std::wprintf(L"What the user should know is shown, what the programmer should know is reported:\n");
    cdir::path_valido(L"9:\\data", true);
    cdir::existe_fichero(nullptr);

    std::wprintf(L"What may be missing is an optional:\n");
    std::wprintf(L"    %hs\n",
                 lumodir::get_tamanyo_fichero(folder / L"a.txt") == 4u ? "4 bytes" : "unexpected");
    std::wprintf(L"    %hs\n",
                 lumodir::get_tamanyo_fichero(folder / L"none") ? "unexpected" : "no such file");

    std::wprintf(L"A listing tells its progress and can be stopped:\n");
    int entries = 0;
    const auto listed = fichsdir::nombres_ficheros_prog("example.dir", [&] { return ++entries > 1; });
    std::wprintf(L"    stopped: %hs\n", listed.interrumpido ? "yes" : "no");

    std::wprintf(L"A file in use: the question is asked, and the deletion goes on:\n");
    std::optional<std::ifstream> held;  // who holds the file: this program itself
    unsigned short go_on = CIERTO;      // the stop flag of a deletion
    bool try_again = true;              // how the user answers
    lumodir::receptor_preguntas questions([&](std::wstring_view /*message*/, unsigned long code) {
        std::wprintf(L"    try again after error %lu? %hs\n", code, try_again ? "yes" : "no, stop it all");
        held.reset();
        go_on = try_again ? CIERTO : FALSO;
        return try_again;
    });
    held.emplace(folder / L"b.txt");
    std::wprintf(L"    deleted: %hs\n", cdir::borra_fichero(folder / L"b.txt") ? "yes" : "no");

    std::wprintf(L"The same in a tree, and this time the user stops the whole deletion:\n");
    held.emplace(folder / L"sub" / L"c.dat");
    try_again = false;
    const bool deleted = cdir::borra_directorio_y_subdirectorios_parando(folder, go_on);
    std::wprintf(L"    deleted: %hs\n", deleted ? "yes" : "no");

    std::wprintf(L"At the end:\n");
    std::wprintf(L"    deleted: %hs\n", cdir::borra_directorio_y_subdirectorios(folder) ? "yes" : "no");
    std::wprintf(L"    internal errors: %d\n", internal_errors);
}
