// The finished DLL against its headers: it exports what they declare and nothing else, and stands on Windows alone.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <set>

#include "dll/cabeceras.hpp"
#include "dll/imagen_pe.hpp"

namespace {

using nombres = std::set<std::string>;

const dll::imagen_pe& imagen() {
    static const dll::imagen_pe una(dll::fichero_de_la_dll());
    return una;
}

nombres declaradas() {
    return {
#define EXPORTACION(nombre) #nombre,
#include "cabeceras/exportaciones.inc"
#undef EXPORTACION
    };
}

nombres exportadas() {
    nombres resultado;
    for (const dll::exportacion& e : imagen().exportaciones()) {
        resultado.insert(e.nombre);
    }
    return resultado;
}

std::string menos(const nombres& a, const nombres& b) {
    std::string resultado;
    for (const std::string& nombre : a) {
        if (b.count(nombre) == 0) {
            resultado += "\n    " + nombre;
        }
    }
    return resultado;
}

}  // namespace

TEST(exportaciones, toda_funcion_declarada_esta_en_la_dll) {
    const std::string faltan = menos(declaradas(), exportadas());
    EXPECT_TRUE(faltan.empty()) << std::count(faltan.begin(), faltan.end(), '\n')
                                << " declared functions are MISSING in lumodir.dll:" << faltan;
}

TEST(exportaciones, la_dll_no_exporta_nada_mas) {
    const std::string sobran = menos(exportadas(), declaradas());
    EXPECT_TRUE(sobran.empty()) << "exported, but in no header:" << sobran;
}

TEST(exportaciones, el_fichero_def_dice_lo_mismo) {
    // What MSVC makes its import library of.
    std::ifstream entrada{std::filesystem::path(L"" LUMODIR_DEF)};
    std::string linea;
    ASSERT_TRUE(std::getline(entrada, linea)) << LUMODIR_DEF;
    EXPECT_EQ(linea, "LIBRARY lumodir.dll");
    ASSERT_TRUE(std::getline(entrada, linea));
    EXPECT_EQ(linea, "EXPORTS");
    nombres definidas;
    for (std::string nombre; entrada >> nombre;) {
        EXPECT_TRUE(definidas.insert(nombre).second) << nombre << " twice";
    }
    EXPECT_EQ(definidas, exportadas());
}

TEST(exportaciones, las_cabeceras_se_leen_enteras_de_las_dos_maneras) {
    // The list made when the build is configured and the texts read now: a function that one of them overlooks
    // would go untested.
    nombres leidas;
    for (const auto& [nombre, declaracion] : dll::declaraciones()) {
        leidas.insert(nombre);
    }
    EXPECT_EQ(leidas, declaradas());
    EXPECT_GE(leidas.size(), 300u);
}

TEST(exportaciones, solo_funciones_en_c_con_nombre_y_ningun_reenvio) {
    for (const dll::exportacion& e : imagen().exportaciones()) {
        EXPECT_TRUE(e.es_codigo) << e.nombre << " is data";
        EXPECT_FALSE(e.es_reenvio) << e.nombre;
        EXPECT_TRUE(std::all_of(e.nombre.begin(), e.nombre.end(),
                                [](unsigned char c) { return std::isalnum(c) != 0 || c == '_'; }))
            << e.nombre << " is no name in C";
        EXPECT_NE(e.nombre.substr(0, 2), "_Z") << e.nombre << " is a name of C++";
    }
    EXPECT_EQ(imagen().num_funciones(), exportadas().size()) << "functions without a name";
}

TEST(exportaciones, se_llama_lumodir_y_es_de_64_bits) {
    EXPECT_EQ(imagen().nombre_propio(), "lumodir.dll");
    EXPECT_EQ(imagen().maquina(), IMAGE_FILE_MACHINE_AMD64);
}

TEST(exportaciones, solo_necesita_lo_que_todo_windows_tiene) {
    // Not the shell: whoever loads this library for its files, a service for example, would get it too.
    const nombres de_windows = {"kernel32.dll", "advapi32.dll", "mpr.dll", "ntdll.dll"};
    const std::vector<std::string> importadas = imagen().importadas();
    EXPECT_FALSE(importadas.empty());
    for (std::string nombre : importadas) {
        std::transform(nombre.begin(), nombre.end(), nombre.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        EXPECT_TRUE(de_windows.count(nombre) == 1 || dll::del_runtime_de_c(nombre))
            << nombre << " would have to be shipped";
    }
}

TEST(exportaciones, no_lleva_ningun_camino_de_la_maquina_que_la_construyo) {
    EXPECT_EQ(imagen().bytes().find(LUMODIR_RAIZ), std::string::npos);
}

TEST(exportaciones, se_carga_se_suelta_y_se_vuelve_a_cargar) {
    const std::filesystem::path fichero = dll::fichero_de_la_dll();
    // A copy under another name is a library of its own, with state of its own.
    const std::wstring copia = fichero.wstring() + L".copia.dll";
    ASSERT_TRUE(::CopyFileW(fichero.c_str(), copia.c_str(), FALSE));
    for (int vuelta = 0; vuelta < 3; ++vuelta) {
        HMODULE modulo = ::LoadLibraryW(copia.c_str());
        ASSERT_NE(modulo, nullptr);
        const auto vivos = reinterpret_cast<unsigned long long (*)()>(
            reinterpret_cast<void*>(::GetProcAddress(modulo, "lumospy_bloques_vivos")));
        const auto copia_texto = reinterpret_cast<wchar_t* (*)(const wchar_t*, const char*, unsigned long)>(
            reinterpret_cast<void*>(::GetProcAddress(modulo, "widestr_nousar_copia")));
        ASSERT_NE(vivos, nullptr);
        ASSERT_NE(copia_texto, nullptr);
        EXPECT_EQ(vivos(), 0u);
        copia_texto(L"x", "prueba", 1);  // left behind: it goes with the library's own count
        EXPECT_EQ(vivos(), 1u);
        EXPECT_TRUE(::FreeLibrary(modulo));
    }
    ::DeleteFileW(copia.c_str());
}
