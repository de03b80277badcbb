// Nothing goes round the table of system calls, which is what lets tests make any call fail and keeps wild arguments
// from real files: every function of Windows that the finished DLL imports is called through the table, but for those
// named below with the one source that may call them.
#include <gtest/gtest.h>
#include <windows.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include "dll/imagen_pe.hpp"

namespace {

// Sources that take the addresses which fill the table; they may call nothing by its name either.
const std::set<std::string> con_tabla = {"llamadas.hpp", "sistema.hpp", "sistema.cpp"};

// Errors, texts, time and the process itself: none of these touches a file, a key or another process, but the
// standard streams.
const std::map<std::string, std::set<std::string>> sin_tabla = {
    {"GetLastError", {}},  // anywhere
    {"SetLastError", {}},
    {"CompareStringOrdinal", {}},
    {"FormatMessageW", {"llamadas.hpp", "sistema.cpp"}},
    {"GetACP", {"plataforma_win32.cpp"}},
    {"GetCPInfo", {"plataforma_win32.cpp"}},
    {"GetCurrentProcess", {"sistema.cpp"}},
    {"GetCurrentProcessId", {"sistema.cpp", "permisos_escritura.cpp"}},
    {"GetModuleHandleA", {"sistema.cpp"}},
    {"GetModuleHandleW", {"programa.cpp", "sistema.cpp"}},
    {"GetProcAddress", {"sistema.cpp"}},
    {"GetStdHandle", {"plataforma_win32.cpp"}},
    {"GetUserDefaultUILanguage", {"plataforma_win32.cpp"}},
    {"IsDBCSLeadByteEx", {"plataforma_win32.cpp"}},
    {"LCMapStringEx", {"plataforma_win32.cpp"}},
    {"LoadLibraryW", {"sistema.cpp"}},
    {"MultiByteToWideChar", {"plataforma_win32.cpp"}},
    // Each inside the one entry of the table that is made of it.
    {"NtOpenFile", {"sistema.cpp"}},
    {"NtQueryInformationFile", {"sistema.cpp"}},
    {"NtQueryObject", {"sistema.cpp"}},
    {"OutputDebugStringW", {"plataforma_win32.cpp"}},
    {"QueryPerformanceCounter", {"sistema.cpp"}},
    {"RtlNtStatusToDosError", {"sistema.cpp"}},
    {"RtlUnwindEx", {"anfitrion_win32.cpp"}},
    {"Sleep", {"sistema.cpp"}},
    {"TerminateProcess", {"sistema.cpp"}},
    {"WideCharToMultiByte", {"plataforma_win32.cpp"}},
    {"WriteFile", {"plataforma_win32.cpp"}},
};

bool de_nombre(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

// The text of a source without its comments.
std::string sin_comentarios(const std::filesystem::path& fichero) {
    std::ifstream entrada(fichero);
    std::string resultado;
    for (std::string linea; std::getline(entrada, linea);) {
        resultado += linea.substr(0, linea.find("//")) + "\n";
    }
    return resultado;
}

// What the DLL imports that could reach outside the process: all of Windows' own, and of the C runtime what is not C.
std::set<std::string> importadas() {
    std::set<std::string> resultado;
    for (const auto& [biblioteca, nombre] : dll::imagen_pe(dll::fichero_de_la_dll()).funciones_importadas()) {
        if (!dll::del_runtime_de_c(biblioteca) || nombre[0] == '_' || nombre.find("open") != nombre.npos ||
            nombre == "remove" || nombre == "rename" || nombre == "system") {
            resultado.insert(nombre);
        }
    }
    return resultado;
}

struct mencion {
    bool llamada;       // a bracket follows
    std::string tabla;  // of which it is an entry: the object before it
};

std::vector<mencion> menciones(const std::string& texto, const std::string& nombre) {
    std::vector<mencion> resultado;
    for (std::size_t i = texto.find(nombre); i != texto.npos; i = texto.find(nombre, i + 1)) {
        const std::size_t fin = i + nombre.size();
        if ((i == 0 || !de_nombre(texto[i - 1])) && (fin == texto.size() || !de_nombre(texto[fin]))) {
            std::string objeto;
            constexpr std::string_view puntero_a_miembro = "&tabla_sistema::";
            if (std::string_view(texto).substr(0, i).ends_with(puntero_a_miembro)) {
                objeto = "sistema";  // whoever has it calls it in the table
            }
            for (std::size_t k = i; i > 0 && texto[i - 1] == '.' && --k > 0 && de_nombre(texto[k - 1]);) {
                objeto.insert(0, 1, texto[k - 1]);
            }
            resultado.push_back({texto[fin] == '(', objeto});
        }
    }
    return resultado;
}

}  // namespace

TEST(tablas, ninguna_llamada_al_sistema_las_rodea) {
    const std::set<std::string> nombres = importadas();
    ASSERT_EQ(nombres.count("CreateFileW"), 1u);
    ASSERT_GT(nombres.size(), 80u);
    std::size_t por_tabla = 0;
    for (const auto& entrada : std::filesystem::recursive_directory_iterator(L"" LUMODIR_RAIZ "/src")) {
        const std::filesystem::path& ruta = entrada.path();
        if (ruta.extension() != ".cpp" && ruta.extension() != ".hpp") {
            continue;
        }
        const std::string fichero = ruta.filename().string();
        const std::string texto = sin_comentarios(ruta);
        for (const std::string& nombre : nombres) {
            const auto permiso = sin_tabla.find(nombre);
            for (const mencion& m : menciones(texto, nombre)) {
                const bool por_la_suya = m.tabla == "sistema";
                por_tabla += por_la_suya ? 1 : 0;
                const bool permitida = permiso != sin_tabla.end() &&
                                       (permiso->second.empty() || permiso->second.count(fichero) != 0);
                const bool en_tabla = !m.llamada && con_tabla.count(fichero) != 0;
                EXPECT_TRUE(por_la_suya || permitida || en_tabla)
                    << fichero << " uses " << nombre << " past the table"
                    << (m.tabla.empty() ? "" : ", in another object: ") << m.tabla;
            }
        }
    }
    EXPECT_GT(por_tabla, 50u) << "the sources were not understood";
}
