// Registry, drives, processes.
#include "hpp/apoyo.hpp"

namespace {

using namespace lumodir;
using textos = std::vector<std::wstring>;
class sistema : public hpp::prueba {};

constexpr auto usuario = lumoreg::raiz::current_user;
constexpr auto proceso = lumoreg::vista::proceso;

class registro : public hpp::prueba {
protected:
    registro() { ::RegDeleteTreeW(HKEY_CURRENT_USER, clave.c_str()); }
    ~registro() override { ::RegDeleteTreeW(HKEY_CURRENT_USER, clave.c_str()); }
    const std::wstring clave = L"Software\\lumodir_hpp";
};

TEST_F(registro, claves_y_valores) {
    EXPECT_FALSE(lumoreg::existe_clave(usuario, clave));
    EXPECT_TRUE(lumoreg::crea_clave(usuario, clave + L"\\k1"));
    EXPECT_TRUE(lumoreg::crea_clave_en_vista(proceso, usuario, clave + L"\\k2"));
    EXPECT_TRUE(lumoreg::existe_clave(usuario, clave));
    EXPECT_TRUE(lumoreg::existe_clave_en_vista(lumoreg::vista::de_64_bits, usuario, clave));
    EXPECT_EQ(lumoreg::dame_subclaves(usuario, clave).vector(), (textos{L"k1", L"k2"}));
    EXPECT_EQ(lumoreg::dame_subclaves_ex(proceso, usuario, clave).size(), 2u);
    EXPECT_TRUE(lumoreg::dame_subclaves(usuario, clave + L"\\falta").empty());

    EXPECT_TRUE(lumoreg::establece_cadena(usuario, clave, L"a", L"ñandú"));
    EXPECT_EQ(lumoreg::lee_cadena(usuario, clave, L"a").value(), L"ñandú");
    EXPECT_FALSE(lumoreg::lee_cadena(usuario, clave + L"\\falta", L"a"));
    EXPECT_TRUE(lumoreg::establece_cadena_en_vista(proceso, usuario, clave, L"b", L"dos"));
    EXPECT_EQ(lumoreg::lee_cadena_ex(proceso, usuario, clave, L"b").value(), L"dos");
    const wchar_t multi[] = L"x\0y\0";
    ::RegSetKeyValueW(HKEY_CURRENT_USER, clave.c_str(), L"m", REG_MULTI_SZ, multi, sizeof multi);
    EXPECT_TRUE(lumoreg::establece_ulong(usuario, clave, L"n", 7));
    EXPECT_TRUE(lumoreg::establece_cadena_expand(usuario, clave, L"e", L"%PATH%"));
    const auto valores = lumoreg::lee_valores_cadena_clave_ex(proceso, usuario, clave);
    ASSERT_TRUE(valores);
    ASSERT_EQ(valores->size(), 3u);
    EXPECT_EQ((*valores)[0].nombre, L"a");
    EXPECT_EQ((*valores)[0].textos, textos{L"ñandú"});
    EXPECT_EQ((*valores)[2].nombre, L"m");
    EXPECT_EQ((*valores)[2].textos, (textos{L"x", L"y"}));
    EXPECT_FALSE(lumoreg::lee_valores_cadena_clave_ex(proceso, usuario, clave + L"\\falta"));

    EXPECT_EQ(lumoreg::lee_ulong(usuario, clave, L"n"), 7u);
    EXPECT_TRUE(lumoreg::establece_ulong(usuario, clave, L"grande", 0xFFFFFFFF));
    EXPECT_EQ(lumoreg::lee_ulong_ex(lumoreg::vista::de_64_bits, usuario, clave, L"grande"), 0xFFFFFFFFu);
    EXPECT_FALSE(lumoreg::lee_ulong(usuario, clave, L"a"));  // a text
    EXPECT_FALSE(lumoreg::lee_ulong(usuario, clave, L"falta"));
    EXPECT_FALSE(lumoreg::lee_ulong(usuario, clave + L"\\falta", L"n"));
    EXPECT_FALSE(lumoreg::lee_ulong_ex(proceso, usuario, nullptr, L"n"));
    EXPECT_FALSE(lumoreg::lee_ulong(usuario, clave, nullptr));
    lumoreg::borra_valor_clave(usuario, clave, L"grande");

    lumoreg::borra_valor_clave(usuario, clave, L"a");
    DWORD numero = 0;
    DWORD bytes = sizeof numero;
    EXPECT_EQ(
        ::RegGetValueW(HKEY_CURRENT_USER, clave.c_str(), L"n", RRF_RT_REG_DWORD, nullptr, &numero, &bytes),
        0);
    EXPECT_EQ(numero, 7u);
    EXPECT_EQ(
        ::RegGetValueW(HKEY_CURRENT_USER, clave.c_str(), L"a", RRF_RT_REG_SZ, nullptr, nullptr, nullptr),
        ERROR_FILE_NOT_FOUND);
    lumoreg::borra_clave(usuario, clave, L"k2");
    EXPECT_EQ(lumoreg::dame_subclaves(usuario, clave).vector(), textos{L"k1"});
}

TEST_F(registro, el_permiso_es_el_de_windows) {
    HKEY abierta = nullptr;
    const bool hay = ::RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\lumodir_hpp", 0, nullptr, 0, KEY_WRITE,
                                       nullptr, &abierta, nullptr) == ERROR_SUCCESS;
    ::RegCloseKey(abierta);
    ::RegDeleteKeyW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\lumodir_hpp");
    EXPECT_EQ(lumoreg::tiene_permisos_escribir_en_registro(), hay);
}

TEST_F(sistema, unidades) {
    info::tabla tabla;
    ASSERT_FALSE(tabla.empty());
    const InfoDisco* c = tabla.BuscaDiscoId(2);
    ASSERT_NE(c, nullptr);
    EXPECT_EQ(info::GetTxtDrive(*c), "C:");
    unsigned long hay = ::GetLogicalDrives();
    for (const InfoDisco& disco : tabla) {
        EXPECT_NE(hay & (1ul << disco.disco), 0u);
    }
    const info::tabla movida = std::move(tabla);
    EXPECT_EQ(tabla.size(), 0u);  // NOLINT
    EXPECT_GT(movida.size(), 0u);
    EXPECT_EQ(info::GetActualDirectorio_compatible_chdir(0).value().ruta(), hpp::fs::current_path());
    EXPECT_EQ(info::GetActualDirectorio_compatible_chdir(1).has_value(), (hay & 1u) != 0);
    EXPECT_TRUE(discos::es_unidad_local(L'C'));
    EXPECT_FALSE(discos::es_unidad_subst(L'C'));
    wchar_t volumen[MAX_PATH + 1] = {};
    ::GetVolumeInformationW(L"C:\\", volumen, MAX_PATH, nullptr, nullptr, nullptr, nullptr, 0);
    EXPECT_EQ(discos::nombre_volumen(2), volumen);
    const auto todas = lumodir::UnidadesDelSistema();
    ASSERT_EQ(todas.size(), movida.size());
    for (std::size_t i = 0; i < todas.size(); ++i) {
        const unsigned long tipo = movida[i].tipo;  // no reference to a field of a packed record
        EXPECT_EQ(lumodir::tipoDrive_UnidadSistema(todas[i]), tipo);
        EXPECT_EQ(lumodir::nombreCompleto_UnidadSistema(todas[i]).vista()[1], L':');
    }
    EXPECT_EQ(lumodir::UnidadesDelSistemaConNombre().size(), todas.size());
    toma_informes();  // of drives without a medium
}

TEST_F(sistema, procesos) {
    EXPECT_TRUE(taskproc::hay_proceso_abierto(L"test_hpp.exe"));
    const auto yo = taskproc::busca_proceso_abierto(L"test_hpp.exe");
    ASSERT_FALSE(yo.empty());
    EXPECT_EQ(yo[0].pid, ::GetCurrentProcessId());
    EXPECT_EQ(hpp::fs::path(taskproc::ruta_proceso(yo[0])).filename(), L"test_hpp.exe");
    EXPECT_TRUE(taskproc::busca_proceso_abierto(L"falta.exe").empty());
    EXPECT_FALSE(taskproc::mata_procesos_nombre_dado(L"falta.exe"));
    Taskproc de_nadie = {nullptr, 0xFFFFFFF0ul, nullptr};
    EXPECT_FALSE(taskproc::mata_proceso(de_nadie));
    EXPECT_EQ(wine::estamos_en_wine(), lumoreg::existe_clave(usuario, L"Software\\Wine"));
}

}  // namespace
