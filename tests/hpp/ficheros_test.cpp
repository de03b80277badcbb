// Files and directories on disk: each function once, its effect looked at with the standard library.
#include "hpp/apoyo.hpp"

namespace {

using namespace lumodir;
using hpp::fs::exists;
class ficheros : public hpp::prueba_de_disco {};

TEST_F(ficheros, existencia_y_acceso) {
    const hpp::fs::path f = fichero(L"año\\f.txt");
    EXPECT_TRUE(cdir::existe_fichero(f));
    EXPECT_FALSE(cdir::existe_fichero(base / L"falta"));
    EXPECT_TRUE(cdir::existe_directorio(base));
    EXPECT_TRUE(cdir::existe_directorio_con_mensaje_opc(base));
    const respuesta falta = cdir::existe_directorio_con_mensaje_opc(base / L"falta");
    EXPECT_FALSE(falta);
    EXPECT_EQ(falta.motivo, L"Directory '" + (base / L"falta").wstring() + L"' does not exist.");
    EXPECT_TRUE(cdir::comprueba_existe_fichero(f));
    EXPECT_FALSE(cdir::comprueba_existe_fichero(base / L"falta"));
    EXPECT_EQ(toma_informes().size(), 1u);
    EXPECT_EQ(toma_avisos().size(), 1u);
    EXPECT_TRUE(cdir::es_directorio(base));
    EXPECT_FALSE(cdir::es_directorio(f));
    EXPECT_TRUE(cdir::existe_fichero_filtro(base / L"año\\*.txt"));
    EXPECT_FALSE(cdir::existe_fichero_filtro(base / L"*.txt"));
    EXPECT_EQ(cdir::existe_directorio_filtro(base / L"a*").value(), L"año");
    EXPECT_FALSE(cdir::existe_directorio_filtro(base / L"z*"));
    EXPECT_TRUE(cdir::se_puede_leer(f));
    EXPECT_FALSE(cdir::se_puede_leer(base));
    EXPECT_TRUE(cdir::se_puede_escribir(f));
    EXPECT_TRUE(cdir::se_puede_escribir_en_directorio(base / L"nuevo"));
    EXPECT_TRUE(exists(base / L"nuevo"));
    EXPECT_EQ(cdir::se_puede_escribir_en_directorio(L"").motivo,
              L"You have not specified any directory name");
    EXPECT_TRUE(cdir::se_puede_escribir_fichero_en_directorio(base / L"otro\\f.txt"));
    EXPECT_TRUE(lumodir::tiene_permiso_escritura_fichero(f));
    EXPECT_TRUE(lumodir::se_puede_escribir_ex(f));
    lumodir::protege_fichero(f);
    const respuesta protegido = lumodir::se_puede_escribir_ex(f);
    EXPECT_FALSE(protegido);
    EXPECT_EQ(protegido.motivo, L"The file does not have write permission.");
    lumodir::desprotege_fichero(f);
    EXPECT_TRUE(lumodir::se_puede_escribir_ex(f));
    lumodir::desprotege_fichero_si_existe(base / L"falta");
    EXPECT_TRUE(lumodir::espera_acceso_a_recursos_en_directorio("C:\\windows"));
    EXPECT_EQ(lumodir::get_tamanyo_fichero(f), 3u);
    unsigned long codigo = 0;
    EXPECT_FALSE(lumodir::get_tamanyo_fichero(base / L"falta", &codigo));
    EXPECT_EQ(codigo, static_cast<unsigned long>(ERROR_FILE_NOT_FOUND));
}

TEST_F(ficheros, crear_y_renombrar) {
    EXPECT_TRUE(cdir::crea_directorios(base / L"a\\b\\f.txt", false));
    EXPECT_TRUE(exists(base / L"a\\b"));
    EXPECT_FALSE(exists(base / L"a\\b\\f.txt"));
    EXPECT_TRUE(cdir::crea_directorios_del_path(base / L"c\\d"));
    EXPECT_TRUE(exists(base / L"c\\d"));
    EXPECT_TRUE(cdir::crea_directorios_fichero(base / L"e\\f.txt"));
    EXPECT_TRUE(exists(base / L"e"));
    const hpp::fs::path f = fichero(L"f.txt");
    EXPECT_FALSE(cdir::crea_directorios_si_es_posible(f / L"dentro"));
    EXPECT_TRUE(cdir::crea_directorios_fichero_si_es_posible(base / L"g\\f.txt"));
    cdir::renombra_fichero(f, base / L"g.txt");
    EXPECT_TRUE(exists(base / L"g.txt"));
    EXPECT_TRUE(cdir::renombra_fichero_si_es_posible(base / L"g.txt", base / L"h.txt"));
    EXPECT_FALSE(cdir::renombra_fichero_si_es_posible(base / L"g.txt", base / L"h.txt"));
    EXPECT_TRUE(cdir::mueve_fichero(base / L"h.txt", base / L"e\\h.txt"));
    cdir::cambia_extension_ficheros(base / L"e", L"txt", L"dat");
    EXPECT_TRUE(exists(base / L"e\\h.dat"));
}

TEST_F(ficheros, borrar_ficheros) {
    EXPECT_TRUE(cdir::borra_fichero(fichero(L"1")));
    EXPECT_TRUE(cdir::borra_fichero_con_mensaje_extra(fichero(L"2"), L"extra"));
    EXPECT_TRUE(cdir::borra_fichero_si_existe(fichero(L"3")));
    EXPECT_TRUE(cdir::borra_fichero_si_existe(base / L"3"));
    EXPECT_TRUE(cdir::borra_fichero_con_comprobacion(fichero(L"4")));
    EXPECT_FALSE(cdir::borra_fichero_con_comprobacion(base / L"4"));
    EXPECT_TRUE(lumodir::borra_fichero_si_existe_sin_mensaje(fichero(L"5")));
    EXPECT_TRUE(lumodir::borra_fichero_con_mensaje_extra_si_existe(fichero(L"6"), nullptr));
    const hpp::fs::path tomado = fichero(L"tomado");
    const HANDLE mio = ::CreateFileW(tomado.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_FALSE(lumodir::borra_fichero_si_existe_sin_mensaje(tomado));
    ::CloseHandle(mio);
    fichero(L"7.tmp");
    cdir::delete_ficheros(base / L"*.*");
    EXPECT_TRUE(hpp::fs::is_empty(base));
}

TEST_F(ficheros, borrar_directorios) {
    const hpp::fs::path d = base / L"d";
    const auto de_nuevo = [&] {
        hpp::fs::create_directory(d);
        return d;
    };
    EXPECT_TRUE(cdir::borra_directorio(de_nuevo()));
    EXPECT_TRUE(cdir::borra_directorio_si_existe(de_nuevo()));
    EXPECT_FALSE(cdir::borra_directorio_si_existe(d));
    EXPECT_TRUE(cdir::se_borra_directorio(de_nuevo()));
    EXPECT_FALSE(exists(d));
    hpp::fs::create_directories(d / L"e\\f");
    lumodir::borra_directorios_de_path_si_estan_vacios(d / L"e\\f", base);
    EXPECT_FALSE(exists(d));
    EXPECT_TRUE(exists(base));

    fichero(L"d\\e\\f");
    cdir::borra_contenido_directorio(d);
    EXPECT_TRUE(hpp::fs::is_empty(d));
    fichero(L"d\\e\\f");
    EXPECT_TRUE(cdir::borra_directorio_y_subdirectorios(d));
    EXPECT_FALSE(exists(d));
    fichero(L"d\\e\\f");
    unsigned short continuar = 0;
    EXPECT_FALSE(cdir::borra_directorio_y_subdirectorios_parando(d, continuar));
    EXPECT_TRUE(exists(d / L"e\\f"));
    continuar = 1;
    EXPECT_TRUE(cdir::borra_directorio_y_subdirectorios_parando(d, continuar));
    EXPECT_FALSE(exists(d));
    fichero(L"d\\f");
    fichero(L"d\\e\\f");
    cdir::borra_contenido_directorio_reintentando(d);
    EXPECT_FALSE(exists(d / L"f"));
    EXPECT_TRUE(exists(d / L"e\\f"));
    EXPECT_TRUE(cdir::borra_contenido_directorio_si_es_posible_reintentando(d));
    EXPECT_FALSE(exists(d));
    fichero(L"d\\e\\f");
    cdir::borra_directorio_y_subdirectorios_reintentando(d);
    EXPECT_FALSE(exists(d));
    const hpp::fs::path tomado = fichero(L"d\\e\\tomado");
    const HANDLE mio = ::CreateFileW(tomado.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    const cdir::borrado a_medias = cdir::borra_directorio_y_subdirectorios_si_se_puede(d);
    EXPECT_FALSE(a_medias);
    EXPECT_EQ(a_medias.fallos.vector(), std::vector<std::wstring>{tomado.wstring()});
    ::CloseHandle(mio);
    EXPECT_TRUE(cdir::borra_directorio_y_subdirectorios_si_se_puede(d));
}

TEST_F(ficheros, temporales) {
    EXPECT_TRUE(exists(lumodir::dameDirectorioTemporal().ruta()));
    for (const cadena& path : {lumodir::creaFicheroTemporal(), lumodir::creaFicheroTemporalConExt(L"dat"),
                               lumodir::creaFicheroUnicoEnDirectorio(base, L"txt")}) {
        EXPECT_TRUE(exists(path.ruta())) << path.ruta();
        EXPECT_TRUE(hpp::fs::remove(path.ruta()));
    }
    const auto dentro = lumodir::creaFicheroTemporalEnDirectorio(base / L"t", L"f.txt");
    EXPECT_EQ(dentro.value(), (base / L"t\\f.txt").wstring());
    EXPECT_TRUE(exists(base / L"t"));
    EXPECT_FALSE(lumodir::creaFicheroTemporalEnDirectorio(base, L""));
}

TEST_F(ficheros, fechas) {
    const hpp::fs::path f = fichero(L"f.txt");
    EXPECT_TRUE(timefich::asignar_fecha_fichero_UTC(f, 1700000000));
    EXPECT_EQ(timefich::obtener_fecha_fichero_UTC(f), 1700000000);
    EXPECT_EQ(timefich::obtener_fecha_fichero_existente_UTC(f), 1700000000);
    EXPECT_FALSE(timefich::obtener_fecha_fichero_UTC(base / L"falta"));
    EXPECT_TRUE(timefich::asignar_fecha_fichero_UTC_si_es_posible(f, 1600000000));
    const auto local = timefich::obtener_fecha_fichero(f);
    ASSERT_TRUE(local);
    EXPECT_EQ(timefich::obtener_fecha_fichero_existente(f), local);
    EXPECT_TRUE(timefich::asignar_fecha_fichero(f, *local + 60));
    EXPECT_EQ(timefich::obtener_fecha_fichero_UTC(f), 1600000060);
    const auto fechas = timefich::obtener_fecha(f);
    ASSERT_TRUE(fechas);
    FILETIME otra = fechas->modificacion;
    otra.dwLowDateTime ^= 0x10000000;
    EXPECT_TRUE(timefich::asignar_fecha(f, nullptr, &otra));
    EXPECT_EQ(timefich::obtener_fecha(f)->modificacion.dwLowDateTime, otra.dwLowDateTime);
    EXPECT_FALSE(timefich::obtener_fecha(base / L"falta"));
    EXPECT_EQ(toma_informes(), std::vector<std::string>{"ok == CIERTO"});
    const FILETIME de_1970 = {0xD53E8000, 0x019DB1DE};
    EXPECT_EQ(timefich::convertir_fecha(de_1970), timefich::convierte_timet_UTC_a_timet_local(0));
    EXPECT_TRUE(timefich::fechas_iguales(5, 5));
    EXPECT_FALSE(timefich::fechas_iguales(5, 6));
}

}  // namespace
