// What only a terminal shows: the progress line over long work, and the window that is closed.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <optional>
#include <regex>

#include "orden.hpp"

namespace {

// In the test's directory, so that short names leave the progress line room on a screen of 80 columns.
cli::entorno i_en_pantalla(const cli::directorio_de_prueba& d) {
    return {
        .entrada = {}, .variables = {}, .directorio = d.ruta(), .con_consola = false, .con_pantalla = true};
}

// Waits until the screen shows what matches; the match, or nothing.
std::smatch i_espera(const cli::pantalla& p, const std::string& patron, std::string& texto) {
    std::smatch hallado;
    const std::regex busca(patron);
    cli::espera_a_que(60000, [&] {
        texto = p.texto();
        return std::regex_search(texto, hallado, busca);
    });
    EXPECT_FALSE(hallado.empty()) << "not seen: " << patron << "\n" << texto;
    return hallado;
}

// Each case in a process of its own: under Wine one that joins console after console stands still in the end.
bool i_va_aparte() {
    constexpr const char* ya = "LUMODIR_PRUEBA_APARTE";
    if (std::getenv(ya) != nullptr) {
        return false;
    }
    const testing::TestInfo& este = *testing::UnitTest::GetInstance()->current_test_info();
    const cli::resultado r =
        cli::proceso(
            cli::este_programa(),
            {std::string("--gtest_filter=") + este.test_suite_name() + "." + este.name(), "--gtest_output="},
            {.entrada = {}, .variables = {{ya, "1"}}, .directorio = {}})
            .espera();
    EXPECT_EQ(r.codigo, 0) << r.salida;
    EXPECT_NE(r.salida.find("[  PASSED  ] 1 test."), std::string::npos) << r.salida;
    return true;
}

void i_llena_de_directorios(const cli::directorio_de_prueba& d) {
    constexpr int directorios = 600;
    for (int i = 0; i < directorios; ++i) {
        d.crea_directorio("t\\" + std::to_string(i % 20) + "\\" + std::to_string(i));
    }
}
constexpr int directorios_del_arbol = 1 + 20 + 600;

}  // namespace

TEST(progreso, contar_y_borrar_un_arbol_dicen_por_donde_van_y_cuanto_falta) {
    if (i_va_aparte()) {
        return;
    }
    const cli::directorio_de_prueba d;
    i_llena_de_directorios(d);
    for (int i = 0; i < 600; ++i) {
        d.crea_fichero("t\\0\\f" + std::to_string(i));
    }
    cli::proceso borrado(cli::ruta_de_lumodir(), {"--lang", "en", "rmtree", "t", "--yes"}, i_en_pantalla(d));
    // From its beginning: in memory a tree goes in no time.
    std::optional<cli::maquina_lenta> lenta(std::in_place, borrado);
    const cli::pantalla pantalla(borrado);
    std::string texto;
    const std::smatch contando =
        i_espera(pantalla, "([0-9,]+) names, ([0-9]+) s, about ([0-9]+) s left", texto);
    ASSERT_FALSE(contando.empty());
    EXPECT_GE(std::stoi(contando[2]), 2) << texto;
    const std::string antes = contando[1];
    // It goes on from there.
    EXPECT_TRUE(cli::espera_a_que(60000, [&] {
        texto = pantalla.texto();
        return texto.find(" names, ") != texto.npos && texto.find(antes + " names, ") == texto.npos;
    })) << texto;
    const std::smatch borrando = i_espera(
        pantalla,
        "deleting: ([0-9,]+) of 621 directories gone, with [0-9]+ files?, [0-9]+ s, about [0-9]+ s left",
        texto);
    EXPECT_FALSE(borrando.empty());
    lenta.reset();
    EXPECT_EQ(borrado.espera().codigo, 0);
    texto = pantalla.texto();
    EXPECT_EQ(texto.find("deleted t: 600 files in " + std::to_string(directorios_del_arbol)), 0u) << texto;
    // The line is wiped.
    EXPECT_EQ(texto.find("deleting"), texto.npos) << texto;
    EXPECT_EQ(texto.find("names"), texto.npos) << texto;
}

TEST(progreso, varios_ficheros_dicen_cuantos_van) {
    if (i_va_aparte()) {
        return;
    }
    const cli::directorio_de_prueba d;
    for (const char* nombre : {"a.txt", "b.txt", "c.txt", "tomado.txt"}) {
        d.crea_fichero(nombre);
    }
    const cli::otro_programa otro(d.bajo("tomado.txt"));
    cli::proceso borrado(cli::ruta_de_lumodir(),
                         {"--lang", "en", "rm", "*.txt", "--yes", "--retries", "1000", "--wait", "50"},
                         i_en_pantalla(d));
    const cli::pantalla pantalla(borrado);
    std::string texto;
    i_espera(pantalla, "3 of 4, [2-9] s, about [1-9] s left", texto);
    otro.suelta();
    EXPECT_EQ(borrado.espera().codigo, 0);
    EXPECT_FALSE(cli::existe(d.bajo("tomado.txt")));
    EXPECT_EQ(pantalla.texto().find("3 of 4"), std::string::npos) << pantalla.texto();
}

TEST(ventana, al_cerrarla_se_acaba_la_entrada_en_curso_y_ninguna_mas) {
    if (i_va_aparte()) {
        return;
    }
    const cli::directorio_de_prueba d;
    // The files of a directory go before its subdirectories: the deletion stands at the one that is held.
    d.crea_fichero("t\\tomado.txt");
    d.crea_fichero("t\\sub\\a.txt");
    const std::string tomado = d.bajo("t\\tomado.txt");
    const cli::otro_programa otro(tomado);
    cli::proceso borrado(cli::ruta_de_lumodir(),
                         {"rmtree", "t", "--yes", "--retries", "1000", "--wait", "50"}, i_en_pantalla(d));
    const cli::pantalla pantalla(borrado);
    otro.espera_un_intento();
    HANDLE cierre = borrado.cierra_la_ventana();
    ASSERT_NE(cierre, nullptr) << "error " << GetLastError();
    EXPECT_EQ(WaitForSingleObject(cierre, 700), static_cast<DWORD>(WAIT_TIMEOUT))
        << "the entry is still at work";
    EXPECT_TRUE(cli::existe(tomado));
    otro.suelta();
    EXPECT_EQ(WaitForSingleObject(cierre, 30000), static_cast<DWORD>(WAIT_OBJECT_0));
    borrado.termina();  // as the system does once the routine has returned
    borrado.espera();
    CloseHandle(cierre);
    EXPECT_FALSE(cli::existe(tomado));
    EXPECT_TRUE(cli::existe(d.bajo("t\\sub\\a.txt")));
}

TEST(pantalla, las_rutas_de_un_arbol_dejan_ver_los_blancos_de_sus_extremos) {
    if (i_va_aparte()) {
        return;
    }
    const cli::directorio_de_prueba d;
    d.crea_fichero("t\\blanco ");
    d.crea_fichero("t\\llano");
    cli::proceso arbol(cli::ruta_de_lumodir(), {"tree", "t", "--files"}, i_en_pantalla(d));
    const cli::pantalla pantalla(arbol);
    EXPECT_EQ(arbol.espera().codigo, 0);
    EXPECT_EQ(pantalla.texto().find("\"t\\blanco \"\nt\\llano\n"), 0u) << pantalla.texto();
}
