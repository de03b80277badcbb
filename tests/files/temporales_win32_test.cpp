// The temporary directory and plain temporary files: where they are made and what happens when the system refuses.
// Unique files: unicos_win32_test.cpp.
#include <set>

#include "temporales_de_prueba.hpp"

using namespace apoyo;
using namespace interno;

// ---- the temporary directory

TEST(temporales, el_directorio_temporal_es_el_del_sistema_en_su_forma_larga) {
    const directorio_temporal dir;
    const std::string ruta = dir.directorio("Long ñandú directory name");
    wchar_t corto[MAX_PATH];
    ASSERT_NE(::GetShortPathNameW(w(ruta).c_str(), corto, MAX_PATH), 0u);
    for (const std::string& cual : {ruta, u8(corto)}) {
        const con_temp temp(cual);
        EXPECT_EQ(directorio_temporal_de_la_biblioteca(), ruta + "\\");
    }
}

TEST(temporales, sin_directorio_temporal_queda_el_de_respaldo) {
    const directorio_temporal dir;
    const std::string larga = "C:\\" + std::string(256, 'x');
    wchar_t de_windows[MAX_PATH];
    ::GetWindowsDirectoryW(de_windows, MAX_PATH);
    const struct {
        std::string local_settings;
        std::string esperado;
    } filas[] = {
        {dir.ruta("ñ local"), dir.ruta("ñ local") + "\\temp"},
        {"C:\\", "C:\\\\temp"},  // appended as it is
        {"", u8(de_windows) + "\\temp"},
        {larga.substr(0, 254), larga.substr(0, 254) + "\\temp"},  // 259 units in all
        {larga.substr(0, 255), larga.substr(0, 255) + "\\tem"},
        {larga, larga},
        {larga + "yyyy", larga},
    };
    const con_temp temp(dir.ruta("missing"));
    for (const auto& fila : filas) {
        const con_local_settings carpeta(fila.local_settings);
        EXPECT_EQ(directorio_temporal_de_la_biblioteca(), fila.esperado) << fila.local_settings;
        EXPECT_EQ(con_local_settings::g_aperturas().front(),
                  "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders");
        EXPECT_EQ(con_local_settings::g_valores(),
                  fila.local_settings.empty() ? textos{} : textos{"Local Settings"});
    }
    {
        const con_local_settings vacia("", true);
        EXPECT_EQ(directorio_temporal_de_la_biblioteca(), "\\temp");
    }
    {
        const con_temp fichero(dir.fichero("a file"));
        const con_local_settings carpeta("C:\\local");
        EXPECT_EQ(directorio_temporal_de_la_biblioteca(), "C:\\local\\temp");
    }
    EXPECT_FALSE(dir.existe("ñ local"));  // neither checked nor created
}

namespace {

DWORD g_longitud_fingida = 0;
texto_w g_temporal;
DWORD WINAPI da_directorio(DWORD sitio, wchar_t* bufer) {
    EXPECT_EQ(sitio, 260u);
    std::copy(g_temporal.begin(), g_temporal.end(), bufer);
    return g_longitud_fingida;
}
UINT WINAPI da_windows(wchar_t* bufer, UINT sitio) {
    EXPECT_EQ(sitio, 260u);
    if (g_longitud_fingida > 3 && g_longitud_fingida < sitio) {
        std::fill_n(std::copy_n(L"C:\\", 3, bufer), g_longitud_fingida - 3, L'w');
    }
    return static_cast<UINT>(g_longitud_fingida);
}

}  // namespace

TEST(temporales, un_directorio_que_el_sistema_no_dice_o_que_no_cabe) {
    const directorio_temporal dir;
    const con_local_settings carpeta("C:\\local");
    const sustituye temporal(sistema.GetTempPathW, da_directorio);
    const struct {
        std::string texto;
        DWORD longitud;
        std::string esperado;
        textos informes;
    } filas[] = {
        {dir.ruta() + "\\", static_cast<DWORD>(dir.ruta().size() + 1), dir.ruta() + "\\", {}},
        {"", 0, "C:\\local\\temp", {}},
        {dir.ruta() + "\\", 0, "C:\\local\\temp", {}},  // what a failing system leaves behind is no directory
        {"", 260, "C:\\local\\temp", {"longitud < _MAX_PATH"}},
        {"", 5000, "C:\\local\\temp", {"longitud < _MAX_PATH"}},
        {"", 0xFFFFFFFF, "C:\\local\\temp", {"longitud < _MAX_PATH"}},  // no such room: nothing is read of it
        {"C:\\missing\\", 11, "C:\\local\\temp", {}},
        {".", 1, ".", {}},
        {std::string(259, 'x'), 259, "C:\\local\\temp", {}},  // all that fits, and no room for a name
    };
    for (const auto& fila : filas) {
        g_temporal = w(fila.texto);
        g_longitud_fingida = fila.longitud;
        EXPECT_EQ(directorio_temporal_de_la_biblioteca(), fila.esperado) << fila.longitud;
        EXPECT_EQ(toma_expresiones(), fila.informes) << fila.longitud;
    }
}

TEST(temporales, un_directorio_de_windows_que_el_sistema_no_dice_se_informa) {
    const directorio_temporal dir;
    const con_temp temp(dir.ruta("missing"));
    const con_local_settings carpeta("");
    const sustituye windows(sistema.GetWindowsDirectoryW, da_windows);
    g_longitud_fingida = 0;
    EXPECT_EQ(directorio_temporal_de_la_biblioteca(), "\\temp");
    ESPERA_INFORMES("ret != 0");
    for (const DWORD el_que_haria_falta : {260u, 300u}) {
        g_longitud_fingida = el_que_haria_falta;
        EXPECT_EQ(directorio_temporal_de_la_biblioteca(), "\\temp");
        ESPERA_INFORMES();
    }
    g_longitud_fingida = 259;
    EXPECT_EQ(directorio_temporal_de_la_biblioteca(), "C:\\" + std::string(256, 'w'));
}

// ---- plain temporary files

TEST(temporales, un_fichero_temporal_existe_y_esta_vacio) {
    const directorio_temporal dir;
    dir.directorio("Long ñandú name");
    const con_temp temp(dir.ruta("Long ñandú name"));
    std::set<std::string> nombres;
    for (int i = 0; i < 5; ++i) {
        const std::string ruta = toma(lumodir_creaFicheroTemporal());
        EXPECT_EQ(ruta, dir.ruta("Long ñandú name\\" + nombre_de(ruta)));
        EXPECT_TRUE(tiene_forma(nombre_de(ruta), "LUM", ".tmp")) << ruta;
        EXPECT_EQ(dir.contenido("Long ñandú name\\" + nombre_de(ruta)), "");
        nombres.insert(ruta);
    }
    EXPECT_EQ(nombres.size(), 5u);
    EXPECT_EQ(dir.arbol("Long ñandú name").size(), 5u);
}

TEST(temporales, se_insiste_21_veces_con_cada_prefijo) {
    const directorio_temporal dir;
    const con_temp temp(dir.ruta());
    const std::string directorio = dir.ruta() + "\\";
    for (const unsigned fallan : {0u, 1u, 20u, 21u, 22u, 41u, 42u, 100u}) {
        SCOPED_TRACE(fallan);
        const nombres_que_fallan falla(fallan, ERROR_ACCESS_DENIED);
        const std::string ruta = toma(lumodir_creaFicheroTemporal());
        textos esperadas(std::min(fallan + 1, 21u), directorio + "|LUMO");
        if (fallan >= 21) {
            esperadas.insert(esperadas.end(), std::min(fallan - 20, 21u), directorio + "|LMR");
        }
        EXPECT_EQ(g_peticiones, esperadas);
        EXPECT_EQ(toma_avisos(), fallan >= 21 ? textos{aviso(directorio, "ERROR_ACCESS_DENIED")} : textos{});
        if (fallan >= 42) {
            EXPECT_EQ(ruta, "");
            const informe dado = toma_el_informe();
            EXPECT_EQ(dado.detalle, detalle_de_temporal(directorio, "ERROR_ACCESS_DENIED"));
            EXPECT_EQ(dado.etiqueta, "lumodir (LUMODIR.DLL)");
        } else {
            EXPECT_TRUE(tiene_forma(nombre_de(ruta), fallan >= 21 ? "LMR" : "LUM", ".tmp")) << ruta;
            EXPECT_TRUE(dir.existe(nombre_de(ruta)));
        }
        dir.limpia();
    }
}

TEST(temporales, el_aviso_nombra_el_error_y_sale_tambien_en_modo_servicio) {
    const directorio_temporal dir;
    dir.directorio("ñ");
    const con_temp temp(dir.ruta("ñ"));
    const std::string directorio = dir.ruta("ñ") + "\\";
    const struct {
        DWORD codigo;
        std::string nombre;
    } filas[] = {
        {2, "ERROR_FILE_NOT_FOUND"},
        {3, "ERROR_PATH_NOT_FOUND"},
        {4, "ERROR_TOO_MANY_OPEN_FILES"},
        {5, "ERROR_ACCESS_DENIED"},
        {8, "ERROR_NOT_ENOUGH_MEMORY"},
        {15, "ERROR_INVALID_DRIVE"},
        {19, "ERROR_WRITE_PROTECT"},
        {20, "ERROR_BAD_UNIT"},
        {31, "ERROR_GEN_FAILURE"},
        {0, "0"},
        {1, "1"},
        {80, "80"},
        {1392, "1392"},
        {0xFFFFFFFF, "4294967295"},
    };
    lumodir_establece_modo_servicio_sin_reintentos();
    for (const auto& fila : filas) {
        const nombres_que_fallan falla(42, fila.codigo);
        EXPECT_EQ(toma(lumodir_creaFicheroTemporal()), "");
        EXPECT_EQ(toma_avisos(), textos{aviso(directorio, fila.nombre)});
        const informe dado = toma_el_informe();
        EXPECT_EQ(dado.detalle, detalle_de_temporal(directorio, fila.nombre));
    }
}

namespace {

UINT WINAPI falla_cada_vez_de_otra_manera(const wchar_t*, const wchar_t* prefijo, UINT, wchar_t*) {
    g_peticiones.push_back(u8(prefijo));
    ::SetLastError(1000 + static_cast<DWORD>(g_peticiones.size()));
    return 0;
}

}  // namespace

// Each text tells why the last attempt before it failed.
TEST(temporales, el_error_que_se_dice_es_el_ultimo) {
    const directorio_temporal dir;
    const con_temp temp(dir.ruta());
    const std::string directorio = dir.ruta() + "\\";
    const sustituye nombrar(sistema.GetTempFileNameW, falla_cada_vez_de_otra_manera);
    g_peticiones.clear();
    EXPECT_EQ(toma(lumodir_creaFicheroTemporal()), "");
    EXPECT_EQ(g_peticiones.size(), 42u);
    EXPECT_EQ(toma_avisos(), textos{aviso(directorio, "1021")});
    const informe dado = toma_el_informe();
    EXPECT_EQ(dado.detalle, detalle_de_temporal(directorio, "1042"));
}

TEST(temporales, un_directorio_que_no_se_puede_escribir_de_verdad) {
    const directorio_temporal dir;
    const con_temp temp(dir.ruta("missing"));
    const con_local_settings carpeta(dir.ruta("nor this"));
    EXPECT_EQ(toma(lumodir_creaFicheroTemporal()), "");
    const textos avisos = toma_avisos();
    ASSERT_EQ(avisos.size(), 1u);
    EXPECT_EQ(avisos[0].find(no_se_puede + dir.ruta("nor this") + "\\temp).\n" + codigo_devuelto), 0u)
        << avisos[0];
    EXPECT_EQ(toma_informes().size(), 1u);
    EXPECT_EQ(dir.arbol(), textos{});
}

TEST(temporales, sin_sitio_para_un_nombre_en_ninguno_se_dice_que_falta) {
    const directorio_temporal dir;
    const con_temp temp(dir.ruta("missing"));
    const std::string largo = "C:\\" + std::string(250, 'x');
    const con_local_settings carpeta(largo);
    EXPECT_EQ(toma(lumodir_creaFicheroTemporal()), "");
    EXPECT_EQ(toma_avisos(), textos{aviso(largo + "\\temp", "ERROR_PATH_NOT_FOUND")});
    EXPECT_EQ(toma_informes().size(), 1u);
}

TEST(temporales, un_directorio_sin_sitio_para_un_nombre_cuenta_como_que_falta) {
    const directorio_temporal dir;
    dir.directorio("r\\temp");
    const con_local_settings carpeta(dir.ruta("r"));
    const std::size_t base = dir.ruta().size() + 1;
    for (const std::size_t unidades : {246u, 247u, 248u, 251u, 256u}) {
        SCOPED_TRACE(unidades);
        const std::string largo = std::string(100, 'a') + "\\" + std::string(unidades - base - 101, 'b');
        const std::string ruta = dir.directorio(largo);
        const con_temp temp(ruta);
        const std::string elegido = unidades <= 246 ? ruta : dir.ruta("r\\temp");
        const std::string fichero = toma(lumodir_creaFicheroTemporal());
        EXPECT_EQ(fichero, elegido + "\\" + nombre_de(fichero));
        EXPECT_TRUE(tiene_forma(nombre_de(fichero), "LUM", ".tmp")) << fichero;
        const std::string con_extension = con_ext("dat");
        EXPECT_EQ(con_extension, elegido + "\\" + nombre_de(con_extension));
        EXPECT_TRUE(tiene_forma(nombre_de(con_extension), "LUA", ".dat")) << con_extension;
        EXPECT_EQ(dir.arbol(unidades <= 246 ? largo : "r\\temp").size(), 2u);
        EXPECT_EQ(dir.arbol(unidades > 246 ? largo : "r\\temp").size(), 0u);
        dir.limpia();
        dir.directorio("r\\temp");
    }
}

TEST(temporales, de_lo_que_escribe_el_sistema_se_lee_lo_que_cabe) {
    // A system that fills its room and ends nothing.
    const directorio_temporal dir;
    const con_temp temp(dir.ruta());
    const sustituye nombrar(sistema.GetTempFileNameW,
                            static_cast<decltype(sistema.GetTempFileNameW)>(
                                [](const wchar_t*, const wchar_t*, UINT, wchar_t* nombre) WINAPI {
                                    std::fill_n(nombre, MAX_PATH, L'x');
                                    std::copy_n(L"C:\\", 3, nombre);
                                    return UINT{1};
                                }));
    EXPECT_EQ(toma(lumodir_creaFicheroTemporal()), "C:\\" + std::string(MAX_PATH - 4, 'x'));
}
