// What Windows does and Wine does not, to deletions and questions about files: behind the imitation of Windows.
#include "apoyo/como_windows.hpp"
#include "apoyo/enlace.hpp"
#include "apoyo/formas_de_borrar.hpp"
#include "companions/buclrein.h"
#include "lumodir.h"
#include "timefich.h"

using namespace apoyo;

namespace {

// A file open elsewhere in the way a scanner opens it: everything is allowed to others.
class fichero_mirado {
public:
    fichero_mirado(const directorio_temporal& d, const char* cual)
        : h_(d.abre(cual, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE)) {
        EXPECT_NE(h_, INVALID_HANDLE_VALUE) << cual;
    }
    ~fichero_mirado() { suelta(); }
    void suelta() {
        if (h_ != INVALID_HANDLE_VALUE) {
            ::CloseHandle(h_);
        }
        h_ = INVALID_HANDLE_VALUE;
    }
    fichero_mirado(const fichero_mirado&) = delete;
    fichero_mirado& operator=(const fichero_mirado&) = delete;

private:
    HANDLE h_;
};

void siembra_de_solo_lectura(const directorio_temporal& d) {
    d.fichero("t\\a.txt");
    d.fichero("t\\icono \u00f1\\desktop.ini", "x", FILE_ATTRIBUTE_READONLY);
    d.fichero("t\\icono \u00f1\\hondo\\b.txt");
    d.fichero("fuera\\se queda.txt");
}

const std::vector<std::string> solo_lo_de_fuera = {"fuera\\", "fuera\\se queda.txt"};

}  // namespace

// Each directory with an icon of its own bears the mark.
TEST(en_windows, un_directorio_de_solo_lectura_se_borra_de_todas_las_formas) {
    for (const forma_de_borrar& f : formas_de_borrar) {
        SCOPED_TRACE(f.nombre);
        if (!f.recursiva) {
            continue;
        }
        const directorio_temporal d;
        como_windows windows({});
        siembra_de_solo_lectura(d);
        windows.marca(d.ruta("t\\icono \u00f1"));
        windows.marca(d.ruta("t\\icono \u00f1\\hondo"));
        ASSERT_FALSE(interno::sistema.RemoveDirectoryW(d.ruta_w("t\\icono \u00f1\\hondo").c_str()));
        ASSERT_EQ(::GetLastError(), DWORD{ERROR_ACCESS_DENIED}) << "as long as it bears the mark";
        windows.marca(d.ruta("t"));
        const unsigned short respuesta = f.borra(d.ruta("t"));
        EXPECT_EQ(respuesta, f.da_respuesta() ? 1 : no_contesta);
        if (f.quita_raiz) {
            EXPECT_EQ(d.arbol(), solo_lo_de_fuera);
        } else {
            EXPECT_EQ(d.arbol("t"), std::vector<std::string>{});
            EXPECT_TRUE(windows.esta_marcado(d.ruta("t"))) << "nobody asked for its removal";
        }
        EXPECT_TRUE(toma_esperas().empty());
        EXPECT_GT(windows.intervenciones(), 2u);
    }
}

TEST(en_windows, un_directorio_de_solo_lectura_solo_y_al_subir) {
    const directorio_temporal d;
    como_windows windows({});
    for (const bool exige : {true, false}) {
        windows.marca(d.directorio("uno \u00f1"));
        EXPECT_EQ(exige ? cdir_borra_directorio_UNICODE(d.ruta_w("uno \u00f1").c_str())
                        : cdir_se_borra_directorio(d.ruta_w("uno \u00f1").c_str()),
                  1);
        EXPECT_FALSE(d.existe("uno \u00f1"));
    }
    d.directorio("base\\a\\b");
    windows.marca(d.ruta("base\\a\\b"));
    windows.marca(d.ruta("base\\a"));
    windows.marca(d.ruta("base"));
    lumodir_borra_directorios_de_path_si_estan_vacios_UNICODE(d.ruta_w("base\\a\\b").c_str(),
                                                              d.ruta_w("base").c_str());
    EXPECT_EQ(d.arbol(), std::vector<std::string>{"base\\"});
    EXPECT_TRUE(windows.esta_marcado(d.ruta("base")));
}

TEST(en_windows, el_que_no_se_puede_borrar_conserva_su_marca) {
    const directorio_temporal d;
    como_windows windows({});
    d.fichero("t\\dentro.txt");
    windows.marca(d.ruta("t"));
    buclrein_establece_politica(0, 0);
    EXPECT_EQ(cdir_se_borra_directorio(d.ruta_w("t").c_str()), 0);
    EXPECT_TRUE(windows.esta_marcado(d.ruta("t")));
    EXPECT_EQ(d.arbol("t"), std::vector<std::string>{"t\\dentro.txt"});
}

// SMB 1 says of everything that it is an ordinary file.
TEST(en_windows, una_marca_sin_sentido_no_impide_entrar) {
    for (const forma_de_borrar& f : formas_de_borrar) {
        SCOPED_TRACE(f.nombre);
        if (!f.recursiva) {
            continue;
        }
        const directorio_temporal d;
        const como_windows windows({.borrado_posix = false, .marcas_sin_sentido = true});
        siembra_de_solo_lectura(d);
        EXPECT_EQ(f.borra(d.ruta("t")), f.da_respuesta() ? 1 : no_contesta);
        EXPECT_EQ(d.arbol("t"), std::vector<std::string>{});
        EXPECT_EQ(d.existe("t"), !f.quita_raiz);
        EXPECT_EQ(d.arbol("fuera"), std::vector<std::string>{"fuera\\se queda.txt"});
    }
}

// FAT and exFAT, SMB 1, a router, a foreign driver, shared folders: each refuses in its own way.
TEST(en_windows, un_listado_por_manija_que_se_niega_cede_al_siguiente) {
    constexpr DWORD codigos[] = {ERROR_INVALID_FUNCTION,  ERROR_GEN_FAILURE,   ERROR_NOT_SUPPORTED,
                                 ERROR_INVALID_PARAMETER, ERROR_INVALID_LEVEL, ERROR_INTERNAL_ERROR};
    for (const DWORD codigo : codigos) {
        for (const DWORD sin_numeros : {DWORD{0}, codigo}) {
            SCOPED_TRACE(std::to_string(codigo) + (sin_numeros == 0 ? " at first" : " both"));
            const directorio_temporal d;
            const como_windows windows(
                {.borrado_posix = false, .listado_con_numeros = codigo, .listado_sin_numeros = sin_numeros});
            siembra_de_solo_lectura(d);
            EXPECT_EQ(cdir_borra_directorio_y_subdirectorios_UNICODE(d.ruta_w("t").c_str()), 1);
            EXPECT_EQ(d.arbol(), solo_lo_de_fuera);
            siembra_de_solo_lectura(d);
            EXPECT_EQ(cdir_borra_contenido_directorio_si_es_posible_reintentando_u(d.ruta_w("t").c_str()), 1);
            EXPECT_EQ(d.arbol(), solo_lo_de_fuera);
            EXPECT_GT(windows.intervenciones(), 0u);
        }
    }
}

// The file is deleted, its name stays as long as somebody looks at it, and its directory with it (145).
TEST(en_windows, un_nombre_que_aun_no_se_ha_ido_pide_otra_pasada) {
    for (const forma_de_borrar& f : formas_de_borrar) {
        SCOPED_TRACE(f.nombre);
        if (!f.por_pasadas || !f.recursiva || f.contesta == respuesta::se_fue_el_directorio) {
            continue;
        }
        const directorio_temporal d;
        const como_windows windows({.borrado_posix = false});
        siembra_de_solo_lectura(d);
        fichero_mirado mirado(d, "t\\icono \u00f1\\hondo\\b.txt");
        al_dormir([&](unsigned long) { mirado.suelta(); });
        EXPECT_EQ(f.borra(d.ruta("t")), f.da_respuesta() ? 1 : no_contesta);
        EXPECT_EQ(d.arbol(), solo_lo_de_fuera);
        EXPECT_FALSE(toma_esperas().empty()) << "the tree went although a name in it was held";
    }
}

TEST(en_windows, el_borrado_estricto_espera_al_nombre_que_no_se_ha_ido) {
    const directorio_temporal d;
    const como_windows windows({.borrado_posix = false});
    siembra_de_solo_lectura(d);
    fichero_mirado mirado(d, "t\\icono \u00f1\\hondo\\b.txt");
    al_dormir([&](unsigned long) { mirado.suelta(); });
    EXPECT_EQ(cdir_borra_directorio_y_subdirectorios_UNICODE(d.ruta_w("t").c_str()), 1);
    EXPECT_EQ(d.arbol(), solo_lo_de_fuera);
    EXPECT_EQ(toma_esperas(), std::vector<unsigned long>{100});
}

TEST(en_windows, con_nombres_que_se_van_al_momento_nadie_espera) {
    for (const forma_de_borrar& f : formas_de_borrar) {
        SCOPED_TRACE(f.nombre);
        if (!f.recursiva) {
            continue;
        }
        const directorio_temporal d;
        const como_windows windows({});
        siembra_de_solo_lectura(d);
        const fichero_mirado mirado(d, "t\\icono \u00f1\\hondo\\b.txt");
        EXPECT_EQ(f.borra(d.ruta("t")), f.da_respuesta() ? 1 : no_contesta);
        EXPECT_EQ(d.existe("t"), !f.quita_raiz);
        EXPECT_EQ(d.arbol("fuera"), std::vector<std::string>{"fuera\\se queda.txt"});
        EXPECT_TRUE(toma_esperas().empty());
    }
}

// There the link itself is opened: it goes, what it points to stays, and the tree is gone.
TEST(en_windows, un_enlace_se_va_el_mismo) {
    for (const forma_de_borrar& f : formas_de_borrar) {
        SCOPED_TRACE(f.nombre);
        if (!f.recursiva || !f.quita_raiz) {
            continue;
        }
        const directorio_temporal d;
        siembra_de_solo_lectura(d);
        const enlace suyo(d.ruta("t"), "enlace", "..\\fuera");
        if (!suyo.hecho()) {
            GTEST_SKIP() << suyo.motivo();
        }
        const como_windows windows({});
        EXPECT_EQ(f.borra(d.ruta("t")), f.da_respuesta() ? 1 : no_contesta);
        EXPECT_EQ(d.arbol(), solo_lo_de_fuera);
        // As the root that the caller names it goes like any other.
        const enlace raiz(d.ruta(), "raiz", "fuera");
        EXPECT_EQ(f.borra(d.ruta("raiz")), f.da_respuesta() ? 1 : no_contesta);
        EXPECT_EQ(d.arbol(), solo_lo_de_fuera);
    }
}

// The client of a share answers five seconds from memory: the retries of the usual policy never see it come back.
TEST(en_windows, un_recurso_que_vuelve_lo_ve_quien_espera_mas_de_cinco_segundos) {
    const struct {
        unsigned long veces;
        unsigned long ms;
        unsigned short respuesta;
    } filas[] = {{5, 100, 0}, {12, 1'000, 1}};
    for (const auto& fila : filas) {
        SCOPED_TRACE(fila.veces);
        const directorio_temporal d;
        como_windows windows({.recuerda_lo_que_falta = true});
        buclrein_establece_politica(fila.veces, fila.ms);
        al_dormir([&](unsigned long ms) {
            windows.pasa_ms(ms);
            d.directorio("vuelve \u00f1");
        });
        EXPECT_EQ(lumodir_espera_acceso_a_recursos_en_directorio(d.ruta_a("vuelve \u00f1").c_str()),
                  fila.respuesta);
        EXPECT_EQ(toma_esperas().size(), 5u) << "of the long policy, too: five seconds";
    }
}

TEST(en_windows, ninguna_llamada_deja_salir_un_dialogo) {
    const directorio_temporal d;
    const como_windows windows({});
    siembra_de_solo_lectura(d);
    DWORD modo_de_antes = 0;
    ASSERT_TRUE(::SetThreadErrorMode(SEM_NOGPFAULTERRORBOX, &modo_de_antes));
    const struct {
        const char* que;
        std::function<void()> hace;
    } filas[] = {
        {"existence", [&] { cdir_existe_fichero_UNICODE(d.ruta_w("t\\no").c_str()); }},
        {"write test", [&] { cdir_se_puede_escribir_UNICODE(d.ruta_w("t\\sonda").c_str()); }},
        {"write test of a directory",
         [&] { cdir_se_puede_escribir_en_directorio(d.ruta_w("t").c_str(), nullptr); }},
        {"dates", [&] { timefich_asignar_fecha_fichero_UTC(d.ruta_w("t\\a.txt").c_str(), 1'000'000'000); }},
        {"change of extension",
         [&] {
             d.fichero("otros\\a.uno");
             d.fichero("otros\\a.dos");
             cdir_cambia_extension_ficheros_u(d.ruta_w("otros").c_str(), L"uno", L"dos");
         }},
        {"deletion by pattern", [&] { cdir_delete_ficheros_UNICODE(d.ruta_w("otros\\*.dos").c_str()); }},
        {"climb",
         [&] {
             lumodir_borra_directorios_de_path_si_estan_vacios_UNICODE(d.ruta_w("otros").c_str(),
                                                                       d.ruta_w().c_str());
         }},
        {"recursive listing",
         [&] {
             unsigned long num = 0;
             ListaFicheros_u* listas = nullptr;
             lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE(d.ruta_w().c_str(), nullptr, &num,
                                                                            &listas);
             lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(num, &listas);
         }},
        {"deletion of a file", [&] { cdir_borra_fichero_si_existe_UNICODE(d.ruta_w("t\\a.txt").c_str()); }},
        {"deletion of a directory", [&] { cdir_se_borra_directorio(d.ruta_w("t").c_str()); }},
        {"waiting", [&] { lumodir_espera_acceso_a_recursos_en_directorio(d.ruta_a("t").c_str()); }},
        {"deletion of a tree",
         [&] { cdir_borra_directorio_y_subdirectorios_UNICODE(d.ruta_w("t").c_str()); }},
    };
    for (const auto& fila : filas) {
        fila.hace();
        EXPECT_EQ(windows.dialogos(), 0u) << fila.que;
        EXPECT_EQ(::GetThreadErrorMode(), DWORD{SEM_NOGPFAULTERRORBOX}) << fila.que;
        toma_preguntas();
    }
    EXPECT_FALSE(d.existe("otros"));
    interno::sistema.GetFileAttributesW(d.ruta_w().c_str());
    EXPECT_EQ(windows.dialogos(), 1u) << "one that does not take care is counted";
    ::SetThreadErrorMode(modo_de_antes, nullptr);
}
