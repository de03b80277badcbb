// lumodir from C++17: the same library with owners that free themselves and services that are objects.
//
// Everything happens in the folder "example.dir" below the current one, which is removed at the end.
#include <cstdio>
#include <fstream>
#include <lumodir.hpp>

// The functions of the C headers, by the same names: cdir_x_UNICODE() is lumodir::cdir::x().
namespace cdir = lumodir::cdir;
namespace fichsdir = lumodir::fichsdir;
namespace fs = std::filesystem;

// A view need not end with a terminator: precision and pointer instead of %ls alone.
static void say(const char* what, std::wstring_view text) {
    std::printf("    %s%.*ls\n", what, static_cast<int>(text.size()), text.data());
}

static void make_file(const fs::path& path) {
    cdir::crea_directorios_fichero(path);  // a std::filesystem::path goes in as it is
    std::ofstream(path) << "text";
}

int main() {
    const fs::path folder = "example.dir";

    // Services: how the library talks to this program. Each is in force as long as its object lives. A window would
    // be shown where this program prints.
    int internal_errors = 0;
    lumodir::receptor_errores errors([&](const lumodir::error_interno& error) {
        ++internal_errors;
        std::printf("    internal error: %s\n", error.expresion);
    });
    lumodir::receptor_avisos warnings([](std::wstring_view text) { say("warning: ", text); });
    lumodir::establece_politica(2, 10);  // 2 silent retries, 10 ms before each; then the question
    lumodir::establece_idioma(MSGLOCAL_INGLES);

    std::puts("A yes or no with its reason:");
    if (const lumodir::respuesta valid = cdir::es_path_valido(L"C:\\data\\con.txt"); !valid) {
        say("", valid.motivo);
    }

    std::puts("Texts free themselves; copies are asked for by name:");
    const cdir::piezas pieces = cdir::splitpath_con_comprobacion(L"C:\\a\\b.txt");
    say("extension: ", pieces.extension);                  // looked at
    const std::wstring name = pieces.nombre_base.texto();  // copied
    say("name: ", name);
    const std::wstring_view line = L"C:\\data\\report.txt;12";
    say("from a view: ", cdir::nombre_y_ext_fichero(line.substr(0, line.find(L';'))));

    std::puts("Lists are walked, or copied into a vector:");
    make_file(folder / L"b.txt");
    make_file(folder / L"a.txt");
    make_file(folder / L"sub" / L"c.dat");
    for (std::wstring_view file : cdir::lista_de_ficheros(folder, L"txt")) {
        say("", file);
    }
    const std::vector<fs::path> paths = cdir::lista_de_ficheros(folder).rutas();
    std::printf("    %u paths\n", static_cast<unsigned>(paths.size()));

    std::puts("What the user should know is shown, what the programmer should know is reported:");
    cdir::path_valido(L"9:\\data", true);
    cdir::existe_fichero(nullptr);

    std::puts("What may be missing is an optional:");
    std::printf("    %s\n", lumodir::get_tamanyo_fichero(folder / L"a.txt") == 4u ? "4 bytes" : "unexpected");
    std::printf("    %s\n", lumodir::get_tamanyo_fichero(folder / L"none") ? "unexpected" : "no such file");

    std::puts("A listing tells its progress and can be stopped:");
    int entries = 0;
    const auto listed = fichsdir::nombres_ficheros_prog("example.dir", [&] { return ++entries > 1; });
    std::printf("    stopped: %s\n", listed.interrumpido ? "yes" : "no");

    std::puts("A file in use: the question is asked, and the deletion goes on:");
    std::optional<std::ifstream> held;  // who holds the file: this program itself
    unsigned short go_on = CIERTO;      // the stop flag of a deletion
    bool try_again = true;              // how the user answers
    lumodir::receptor_preguntas questions([&](std::wstring_view /*message*/, unsigned long code) {
        std::printf("    try again after error %lu? %s\n", code, try_again ? "yes" : "no, stop it all");
        held.reset();
        go_on = try_again ? CIERTO : FALSO;
        return try_again;
    });
    held.emplace(folder / L"b.txt");
    std::printf("    deleted: %s\n", cdir::borra_fichero(folder / L"b.txt") ? "yes" : "no");

    std::puts("The same in a tree, and this time the user stops the whole deletion:");
    held.emplace(folder / L"sub" / L"c.dat");
    try_again = false;
    const bool deleted = cdir::borra_directorio_y_subdirectorios_parando(folder, go_on);
    std::printf("    deleted: %s\n", deleted ? "yes" : "no");

    std::puts("At the end:");
    std::printf("    deleted: %s\n", cdir::borra_directorio_y_subdirectorios(folder) ? "yes" : "no");
    std::printf("    internal errors: %d\n", internal_errors);
}
