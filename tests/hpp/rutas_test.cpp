// Paths as text: each function once, with what the C function answers.
#include "hpp/apoyo.hpp"

namespace {

using namespace lumodir;
class rutas : public hpp::prueba {};
class rutas_en_disco : public hpp::prueba_de_disco {};

TEST_F(rutas, validez) {
    EXPECT_TRUE(cdir::path_valido(L"C:\\a\\b.txt"));
    EXPECT_FALSE(cdir::path_valido(L"C:\\con"));
    const respuesta mala = cdir::es_path_valido(L"C:\\con");
    EXPECT_FALSE(mala);
    EXPECT_EQ(mala.motivo, L"There are invalid characters in the name 'con'");
    const respuesta buena = cdir::es_path_valido(std::wstring_view(L"C:\\a").substr(0, 4));
    EXPECT_TRUE(buena);
    EXPECT_TRUE(buena.motivo.empty());
    std::wstring nombre = L"nombre  ";
    EXPECT_TRUE(cdir::nombre_base_valido(nombre));
    EXPECT_EQ(nombre, L"nombre");
    nombre = L"a.txt ";
    EXPECT_TRUE(cdir::nombre_fichero_valido(nombre));
    EXPECT_EQ(nombre, L"a.txt");
    nombre = L"a.";
    EXPECT_FALSE(cdir::nombre_fichero_valido(nombre));
    EXPECT_TRUE(cdir::extension_valida(L"txt"));
    EXPECT_FALSE(cdir::extension_valida(L"t?t"));
}

TEST_F(rutas, piezas) {
    const cdir::piezas p = cdir::splitpath_con_comprobacion(L"\\\\srv\\share\\a\\b.txt");
    EXPECT_EQ(p.unidad, L"\\\\srv\\share");
    EXPECT_EQ(p.directorio, L"\\a\\");
    EXPECT_EQ(p.nombre_base, L"b");
    EXPECT_EQ(p.extension, L".txt");
    const cdir::piezas c = cdir::splitpath_con_comodines(L"C:\\a\\*.*");
    EXPECT_EQ(c.nombre_base, L"*");
    EXPECT_EQ(c.extension, L".*");
    EXPECT_EQ(cdir::split_make_path(L"C:\\dir\\f.txt", CDIR_PIEZA_UNIDAD | CDIR_PIEZA_DIRECTORIO),
              L"C:\\dir\\");
    EXPECT_EQ(cdir::makepath(L"C:", L"\\a", L"b", L"txt"), L"C:\\a\\b.txt");
    EXPECT_EQ(cdir::makepath(nullptr, nullptr, L"b", nullptr), L"b");
    EXPECT_EQ(cdir::makepath_con_comodines(L"C:", L"\\a", L"*", L"*"), L"C:\\a\\*.*");
    EXPECT_EQ(cdir::nombre_base_fichero(L"C:\\a\\b.txt"), L"b");
    EXPECT_EQ(cdir::extension_fichero(L"C:\\a\\b.tar.gz"), L"gz");
    EXPECT_EQ(cdir::nombre_y_ext_fichero(L"C:\\a\\b.txt"), L"b.txt");
    EXPECT_EQ(cdir::nombre_de_fichero_suprimiendo_path(L"a/b\\c/d"), L"c/d");
    EXPECT_EQ(cdir::ruta_acceso_directorio_fichero(L"C:\\a\\b.txt"), L"C:\\a\\");
    EXPECT_EQ(cdir::ruta_y_nombre_fichero_sin_extension(L"C:\\a\\b.txt"), L"C:\\a\\b");
    const directorio_y_nombre d = lumodir::directorio_y_nombre_base_fichero(L"C:\\a\\b.txt", true);
    EXPECT_EQ(d.directorio, L"C:\\a\\");
    EXPECT_EQ(d.nombre, L"b.txt");
    EXPECT_EQ(lumodir::directorio_y_nombre_base_fichero(L"C:\\a\\b.txt", false).nombre, L"b");
}

TEST_F(rutas, nombres_y_extensiones) {
    EXPECT_EQ(cdir::convierte_a_nombre_base_valido(L"a?b", 5), L"a_b  ");
    EXPECT_EQ(cdir::dame_nombre_base_valido(L" a/b. "), L"a_b");
    EXPECT_EQ(cdir::extension_con_dolar(L".txt"), L".tx$");
    EXPECT_EQ(cdir::nombre_fichero_con_ext(L"C:\\a\\b.txt", L"dat"), L"C:\\a\\b.dat");
    EXPECT_EQ(cdir::nombre_fichero_con_ext(L"C:\\a\\b.txt", nullptr), L"C:\\a\\b");
    cadena path = cdir::concatena_directorios(L"C:\\a", L"b.txt");
    EXPECT_EQ(path, L"C:\\a\\b.txt");
    cdir::cambia_extension_nombre_fichero(path, L"dat");
    EXPECT_EQ(path, L"C:\\a\\b.dat");
    EXPECT_EQ(cdir::construye_path(L"C:\\a", L"b", L"f.txt"), L"C:\\a\\b\\f.txt");
    cadena directorio = cdir::concatena_directorios(L"C:\\a", L"b\\");
    lumodir::suprime_barra_final_si_hay(directorio);
    EXPECT_EQ(directorio, L"C:\\a\\b");
}

TEST_F(rutas, abreviadas_relativas_absolutas) {
    EXPECT_EQ(cdir::nombre_fichero_abreviado(L"C:\\a\\b\\f.txt"), L"C:\\...\\f.txt");
    const wchar_t* larga = L"C:\\Ficheros\\Clientes\\Obra2024\\Imagenes\\foto1.png";
    EXPECT_LT(cdir::ruta_abreviada_con_logitud_maxima(larga, 32).size(), std::wstring_view(larga).size());
    EXPECT_EQ(cdir::ruta_abreviada_con_logitud_maxima(larga, 100), larga);
    EXPECT_TRUE(lumodir::ruta_es_absoluta(L"C:\\a"));
    EXPECT_FALSE(lumodir::ruta_es_absoluta(L"a\\b"));
    EXPECT_EQ(lumodir::ruta_absoluta_a_relativa(L"C:\\a", L"C:\\a\\b\\c"), L"b\\c");
    EXPECT_EQ(lumodir::ruta_relativa_a_absoluta(L"C:\\a", L".\\b"), L"C:\\a\\b");
    const cadena larguisima =
        lumodir::lmlongpath_prepended_path_si_necesario(L"C:\\" + std::wstring(300, L'x'));
    EXPECT_EQ(larguisima.vista().substr(0, 7), L"\\\\?\\C:\\");
}

TEST_F(rutas_en_disco, del_proceso) {
    EXPECT_EQ(cdir::obtener_path_actual().ruta(), hpp::fs::current_path());
    EXPECT_EQ(cdir::disco_de_programa().size(), 2u);
    EXPECT_EQ(lumodir::dame_path_completo_del_programa().ruta().filename(), L"test_hpp.exe");
    const hpp::fs::path larga = fichero(L"un nombre largo.texto");
    const cadena corta = lumodir::dame_path_corto(larga);
    EXPECT_TRUE(hpp::fs::exists(corta.ruta()));
    EXPECT_EQ(lumodir::dame_path_largo(corta), larga.wstring());
    ::SetEnvironmentVariableW(L"PATH", (L"C:\\nada;;" + base.wstring()).c_str());
    EXPECT_EQ(lumodir::directorios_del_path().vector(),
              (std::vector<std::wstring>{L"C:\\nada", base.wstring()}));
    EXPECT_EQ(lumodir::busca_ejecutable_del_path(larga.filename()).value(), larga.wstring());
    EXPECT_FALSE(lumodir::busca_ejecutable_del_path(L"falta.exe"));
    EXPECT_EQ(lumodir::busca_ejecutables_del_path(larga.filename()).vector(),
              std::vector<std::wstring>{larga.wstring()});
    EXPECT_TRUE(lumodir::busca_ejecutables_del_path(L"falta.exe").empty());
}

}  // namespace
