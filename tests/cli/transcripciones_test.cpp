// Whole sessions: what each subcommand writes in a prepared directory, for a person and for a script, against
// the text files of tests/cli/transcripts, one for each subcommand; those of its folder "es" with --lang es.
//
// A transcript is a line "> lumodir ..." for each run (with " < answer" for what is typed), then standard
// output, then standard error with "! " before each line, then "(exit code N)" unless it is 0. "$D" is the
// directory, which is also the current one; "$*" stands for any text in a line and a line "$**" for any number of
// lines, where the machine decides.
// With LUMODIR_TRANSCRIPTS=write in the environment the files are written again, to be read before they are
// believed: what the machine decides has to be masked anew.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "json.hpp"
#include "orden.hpp"

namespace {

const std::string carpeta = LUMODIR_RAIZ "/tests/cli/transcripts/";

void i_pon_fecha(const std::string& ruta, WORD anyo, WORD mes, WORD dia, WORD hora, WORD minuto,
                 WORD segundo) {
    const SYSTEMTIME de_pared{anyo, mes, 0, dia, hora, minuto, segundo, 0};
    SYSTEMTIME utc;
    FILETIME fecha;
    ASSERT_TRUE(TzSpecificLocalTimeToSystemTime(nullptr, &de_pared, &utc) &&
                SystemTimeToFileTime(&utc, &fecha));
    HANDLE asa =
        CreateFileW(cli::w(ruta).c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(asa, INVALID_HANDLE_VALUE) << ruta;
    EXPECT_TRUE(SetFileTime(asa, nullptr, nullptr, &fecha));
    CloseHandle(asa);
}

void i_prepara(const cli::directorio_de_prueba& d) {
    d.crea_fichero("informe.txt", "hello, world");
    d.crea_fichero("notas.md", "12345");
    d.crea_fichero("報告.txt", std::string(2048, 'x'));
    d.crea_fichero("sub\\a.txt", "a");
    d.crea_fichero("sub\\b.tmp");
    d.crea_fichero("sub\\hondo\\c.txt", "ccc");
    d.crea_fichero(".oculto\\x.txt");
    d.crea_fichero("bin\\herramienta.exe");
    i_pon_fecha(d.bajo("informe.txt"), 2024, 5, 1, 12, 30, 0);
    i_pon_fecha(d.bajo("notas.md"), 2023, 12, 31, 23, 59, 58);
    i_pon_fecha(d.bajo("報告.txt"), 2024, 2, 29, 0, 0, 0);
    cli::pon_solo_lectura(d.bajo("notas.md"));
    // Not hidden for its name alone, but for Wine before version 10.
    EXPECT_TRUE(SetFileAttributesW(cli::w(d.bajo(".oculto")).c_str(), FILE_ATTRIBUTE_HIDDEN));
}

struct pase {
    std::string linea;     // "> lumodir ..."
    std::string esperado;  // up to the next one
};

std::vector<pase> i_pases(const std::string& texto) {
    std::vector<pase> pases;
    std::istringstream lineas(texto);
    for (std::string linea; std::getline(lineas, linea);) {
        if (linea.rfind("> lumodir ", 0) == 0) {
            pases.push_back({linea, {}});
        } else if (!pases.empty()) {
            pases.back().esperado += linea + "\n";
        }
    }
    return pases;
}

std::string i_cambia(std::string texto, const std::string& que, const std::string& por) {
    for (size_t i = 0; (i = texto.find(que, i)) != texto.npos; i += por.size()) {
        texto.replace(i, que.size(), por);
    }
    return texto;
}

// The directory, as text and as JSON writes it, gives way to its sign.
std::string i_sin_directorio(const std::string& texto, const std::string& directorio) {
    return i_cambia(i_cambia(texto, i_cambia(directorio, "\\", "\\\\"), "$D"), directorio, "$D");
}

std::string i_ejecuta(const pase& p, const cli::directorio_de_prueba& d, bool en_espanyol) {
    const std::string orden = p.linea.substr(10);
    const size_t flecha = orden.find(" < ");
    std::vector<std::string> argumentos = cli::palabras(d.pon(orden.substr(0, flecha)));
    if (en_espanyol) {
        argumentos.insert(argumentos.begin(), {"--lang", "es"});
    }
    const std::string entrada = flecha == orden.npos ? "" : orden.substr(flecha + 3) + "\n";
    const cli::resultado r = cli::lumodir(
        argumentos, {.entrada = entrada, .variables = {{"PATH", d.bajo("bin")}}, .directorio = d.ruta()});
    std::string todo = r.salida;
    std::istringstream errores(r.errores);
    for (std::string linea; std::getline(errores, linea);) {
        todo += "! " + linea + "\n";
    }
    if (r.codigo != 0) {
        todo += "(exit code " + std::to_string(r.codigo) + ")\n";
    }
    return i_sin_directorio(todo, d.ruta());
}

// "$*" takes any text of one line, "$**\n" any lines.
bool i_cumple(std::string_view patron, std::string_view texto) {
    constexpr std::string_view lineas = "$**\n", trozo = "$*";
    while (!patron.empty()) {
        if (patron.starts_with(lineas)) {
            for (size_t i = 0; i <= texto.size(); i = std::min(texto.find('\n', i), texto.size()) + 1) {
                if (i_cumple(patron.substr(lineas.size()), texto.substr(i))) {
                    return true;
                }
            }
            return false;
        }
        if (patron.starts_with(trozo)) {
            for (size_t i = 0; i <= texto.size(); ++i) {
                if (i_cumple(patron.substr(trozo.size()), texto.substr(i))) {
                    return true;
                }
                if (i < texto.size() && texto[i] == '\n') {
                    return false;
                }
            }
            return false;
        }
        if (texto.empty() || texto[0] != patron[0]) {
            return false;
        }
        patron.remove_prefix(1);
        texto.remove_prefix(1);
    }
    return texto.empty();
}

bool i_escribir() {
    const char* modo = std::getenv("LUMODIR_TRANSCRIPTS");
    return modo != nullptr && std::string(modo) == "write";
}

const std::string espanyolas = "es/";

std::vector<std::string> i_transcripciones() {
    std::vector<std::string> nombres;
    for (const std::string& donde : {std::string(), espanyolas}) {
        WIN32_FIND_DATAW e;
        HANDLE busca = FindFirstFileW(cli::w(carpeta + donde + "*.txt").c_str(), &e);
        for (BOOL hay = busca != INVALID_HANDLE_VALUE; hay; hay = FindNextFileW(busca, &e)) {
            const std::string nombre = cli::u8(e.cFileName);
            nombres.push_back(donde + nombre.substr(0, nombre.size() - 4));
        }
        FindClose(busca);
    }
    return nombres;
}

class transcripcion : public testing::TestWithParam<std::string> {};

}  // namespace

TEST_P(transcripcion, se_escribe_lo_que_dice) {
    const std::string fichero = carpeta + GetParam() + ".txt";
    const cli::directorio_de_prueba d;
    i_prepara(d);
    std::string de_nuevo;
    const std::vector<pase> pases = i_pases(cli::lee_fichero(fichero));
    EXPECT_FALSE(pases.empty()) << fichero;
    for (const pase& p : pases) {
        const std::string escrito = i_ejecuta(p, d, GetParam().rfind(espanyolas, 0) == 0);
        de_nuevo += p.linea + "\n" + escrito;
        if (!i_escribir()) {
            EXPECT_TRUE(i_cumple(p.esperado, escrito)) << GetParam() << ".txt\n"
                                                       << p.linea << "\nexpected:\n"
                                                       << p.esperado << "written:\n"
                                                       << escrito;
        }
        const std::vector<std::string> palabras = cli::palabras(p.linea);
        const bool en_json = std::find(palabras.begin(), palabras.end(), "--json") != palabras.end();
        if (en_json && escrito.find("(exit code 2)") == escrito.npos) {
            const std::string salida =
                escrito.substr(0, std::min(escrito.find("! "), escrito.find("(exit code")));
            EXPECT_EQ(cli::json_compacto(salida).rfind("not JSON", 0), std::string::npos) << escrito;
        }
    }
    if (i_escribir()) {
        std::ofstream(std::filesystem::path(cli::w(fichero)), std::ios::binary) << de_nuevo;
    }
}

TEST(transcripciones, un_fichero_pierde_los_retornos_que_acaban_lineas_y_ningun_otro) {
    const cli::directorio_de_prueba d;
    d.crea_fichero("texto.txt", "a\rb\r\n\r\n\r\rc\r\r\nd\r");
    EXPECT_EQ(cli::lee_fichero(d.bajo("texto.txt")), "a\rb\n\n\r\rc\r\nd");
}

INSTANTIATE_TEST_SUITE_P(todas, transcripcion, testing::ValuesIn(i_transcripciones()),
                         [](const testing::TestParamInfo<std::string>& cual) {
                             return i_cambia(i_cambia(cual.param, "-", "_"), "/", "_");
                         });

TEST(transcripciones, hay_una_de_cada_orden_para_personas_y_para_guiones) {
    const std::vector<std::string> ordenes = cli::ordenes();
    const std::vector<std::string> ficheros = i_transcripciones();
    const std::set<std::string> hay(ficheros.begin(), ficheros.end());
    EXPECT_GT(ordenes.size(), 30u);
    for (const std::string& orden : ordenes) {
        const std::string nombre = i_cambia(orden, " ", "_");
        ASSERT_TRUE(hay.contains(nombre)) << nombre << ".txt is missing";
        ASSERT_TRUE(hay.contains(espanyolas + nombre)) << nombre << ".txt is missing in Spanish";
        bool en_json = false, en_palabras = false;
        for (const pase& p : i_pases(cli::lee_fichero(carpeta + nombre + ".txt"))) {
            const bool suya = p.linea.rfind("> lumodir " + orden, 0) == 0;
            const bool json = p.linea.find(" --json") != p.linea.npos;
            en_json = en_json || (suya && json);
            en_palabras = en_palabras || (suya && !json);
        }
        EXPECT_TRUE(en_json && en_palabras) << nombre << ".txt lacks one of the forms";
        const std::vector<pase> en_espanyol =
            i_pases(cli::lee_fichero(carpeta + espanyolas + nombre + ".txt"));
        EXPECT_TRUE(std::any_of(en_espanyol.begin(), en_espanyol.end(), [&](const pase& p) {
            return p.linea.rfind("> lumodir " + orden, 0) == 0 && !p.esperado.empty();
        })) << nombre;
    }
}
