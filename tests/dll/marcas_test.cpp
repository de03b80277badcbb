// What the two files say of themselves: what they ask the loader for, their version, the manifest and icon of the command.
#include <gtest/gtest.h>
#include <windows.h>

#include "dll/imagen_pe.hpp"
#include "lumodir_base.h"

namespace {

// A file's resources, read without running anything of it.
class recursos {
public:
    explicit recursos(const std::filesystem::path& fichero)
        : modulo_(::LoadLibraryExW(fichero.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE)) {
        EXPECT_NE(modulo_, nullptr) << fichero << ": error " << ::GetLastError();
    }
    ~recursos() { ::FreeLibrary(modulo_); }
    recursos(const recursos&) = delete;
    recursos& operator=(const recursos&) = delete;

    std::string bytes(WORD numero, const char* tipo) const {
        const HRSRC donde = ::FindResourceA(modulo_, MAKEINTRESOURCEA(numero), tipo);
        if (donde == nullptr) {
            return {};
        }
        return std::string(static_cast<const char*>(::LockResource(::LoadResource(modulo_, donde))),
                           ::SizeofResource(modulo_, donde));
    }

private:
    HMODULE modulo_;
};

std::string tipo(unsigned numero) {
    return "#" + std::to_string(numero);
}

// The value of a name in a version resource: both are UTF-16 texts, the value from the next multiple of four on.
std::wstring valor(const std::string& version, const std::wstring& nombre) {
    std::wstring texto(version.size() / 2, 0);
    std::memcpy(texto.data(), version.data(), texto.size() * 2);
    const std::size_t donde = texto.find(nombre + L'\0');
    if (donde == texto.npos) {
        return {};
    }
    std::size_t principio = donde + nombre.size() + 1;
    principio += principio % 2;
    return texto.c_str() + principio;
}

}  // namespace

TEST(marcas, ni_direcciones_previsibles_ni_codigo_en_los_datos) {
    constexpr std::uint16_t pedidas = IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE |
                                      IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA |
                                      IMAGE_DLLCHARACTERISTICS_NX_COMPAT;
    const dll::imagen_pe biblioteca(dll::fichero_de_la_dll());
    const dll::imagen_pe orden(dll::fichero_de_la_dll().replace_filename("lumodir.exe"));
    EXPECT_EQ(biblioteca.caracteristicas() & pedidas, pedidas);
    EXPECT_EQ(orden.caracteristicas() & pedidas, pedidas);
    EXPECT_NE(orden.caracteristicas() & IMAGE_DLLCHARACTERISTICS_TERMINAL_SERVER_AWARE, 0);
#if defined(__clang__) || defined(_MSC_VER)
    // GNU's linker has no such mark.
    constexpr std::uint32_t pilas_de_sombra = 1;
    EXPECT_EQ(biblioteca.caracteristicas_ampliadas() & pilas_de_sombra, pilas_de_sombra);
    EXPECT_EQ(orden.caracteristicas_ampliadas() & pilas_de_sombra, pilas_de_sombra);
#endif
#if defined(LUMODIR_GUARDIA)
    EXPECT_NE(biblioteca.caracteristicas() & IMAGE_DLLCHARACTERISTICS_GUARD_CF, 0);
#endif
}

TEST(marcas, la_version_es_la_de_las_cabeceras) {
    const std::string cifras = LUMODIR_VERSION_STRING;
    const std::wstring version(cifras.begin(), cifras.end());
    for (const char* fichero : {"lumodir.dll", "lumodir.exe"}) {
        const std::string recurso =
            recursos(dll::fichero_de_la_dll().replace_filename(fichero)).bytes(1, tipo(16).c_str());
        const std::string nombre = fichero;
        EXPECT_EQ(valor(recurso, L"FileVersion"), version) << fichero;
        EXPECT_EQ(valor(recurso, L"ProductVersion"), version) << fichero;
        EXPECT_EQ(valor(recurso, L"OriginalFilename"), std::wstring(nombre.begin(), nombre.end()));
        for (const wchar_t* otro :
             {L"CompanyName", L"FileDescription", L"InternalName", L"LegalCopyright", L"ProductName"}) {
            EXPECT_FALSE(valor(recurso, otro).empty()) << fichero << ' ' << otro;
        }
        EXPECT_EQ(valor(recurso, L"NoSuchName"), L"");
    }
    EXPECT_EQ(cifras, std::to_string(LUMODIR_VERSION_MAJOR) + '.' + std::to_string(LUMODIR_VERSION_MINOR) +
                          '.' + std::to_string(LUMODIR_VERSION_PATCH));
    EXPECT_EQ(LUMODIR_VERSION_NUMBER,
              10000 * LUMODIR_VERSION_MAJOR + 100 * LUMODIR_VERSION_MINOR + LUMODIR_VERSION_PATCH);
}

TEST(marcas, la_orden_tiene_manifiesto_e_icono) {
    const recursos orden(dll::fichero_de_la_dll().replace_filename("lumodir.exe"));
    const std::string manifiesto = orden.bytes(1, tipo(24).c_str());
    for (const char* ajuste :
         {">true</longPathAware>", ">UTF-8</activeCodePage>", "asInvoker",
          "{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}", "{35138b9a-5d96-4fbd-8e2d-a2440225f93a}"}) {
        EXPECT_NE(manifiesto.find(ajuste), manifiesto.npos) << ajuste;
    }
    const std::string grupo = orden.bytes(1, tipo(14).c_str());
    ASSERT_GE(grupo.size(), 6u);
    const auto iconos = static_cast<unsigned char>(grupo[4]);
    EXPECT_EQ(iconos, 3);
    for (WORD i = 1; i <= iconos; ++i) {
        EXPECT_FALSE(orden.bytes(i, tipo(3).c_str()).empty()) << i;
    }
}
