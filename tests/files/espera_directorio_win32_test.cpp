// Waiting for a directory: at once, after some pauses, never; and in service mode.
#include "apoyo/apoyo.hpp"
#include "apoyo/directorio.hpp"
#include "apoyo/fallos.hpp"
#include "companions/buclrein.h"
#include "lumodir.h"

using namespace apoyo;

TEST(espera_directorio, uno_que_existe_es_un_intento) {
    const directorio_temporal dir;
    dir.directorio("\u00f1 \u20ac");
    fallos f;
    EXPECT_EQ(lumodir_espera_acceso_a_recursos_en_directorio(dir.ruta_a("\u00f1 \u20ac").c_str()), 1);
    EXPECT_EQ(f.llamadas(), 1u);
    EXPECT_EQ(f.cuenta("GetFileAttributesW"), 1u);  // nothing is opened
    EXPECT_TRUE(toma_esperas().empty());
}

TEST(espera_directorio, uno_que_vuelve_se_espera) {
    const directorio_temporal dir;
    unsigned pausas = 0;
    al_dormir([&](unsigned long) {
        if (++pausas == 4) {
            dir.directorio("vuelve \u00f1");
        }
    });
    EXPECT_EQ(lumodir_espera_acceso_a_recursos_en_directorio(dir.ruta_a("vuelve \u00f1").c_str()), 1);
    EXPECT_EQ(toma_esperas(), std::vector<unsigned long>(4, 100));
}

TEST(espera_directorio, uno_que_no_vuelve_se_abandona_sin_preguntar) {
    const directorio_temporal dir;
    fallos f;
    EXPECT_EQ(lumodir_espera_acceso_a_recursos_en_directorio(dir.ruta_a("no").c_str()), 0);
    EXPECT_EQ(f.rutas("GetFileAttributesW"), std::vector<std::string>(6, dir.ruta("no")));
    EXPECT_EQ(toma_esperas(), std::vector<unsigned long>(5, 100));
    buclrein_establece_politica(2, 7);
    EXPECT_EQ(lumodir_espera_acceso_a_recursos_en_directorio("\\\\lumodir-no-hay\\recurso"), 0);
    EXPECT_EQ(toma_esperas(), (std::vector<unsigned long>{7, 7}));
}

TEST(espera_directorio, en_modo_servicio_un_intento) {
    const directorio_temporal dir;
    lumodir_establece_modo_servicio_sin_reintentos();
    EXPECT_EQ(lumodir_espera_acceso_a_recursos_en_directorio(dir.ruta_a("no").c_str()), 0);
    EXPECT_EQ(lumodir_espera_acceso_a_recursos_en_directorio(dir.ruta_a().c_str()), 1);
    EXPECT_TRUE(toma_esperas().empty());
}

TEST(espera_directorio, null_se_informa_una_vez) {
    EXPECT_EQ(lumodir_espera_acceso_a_recursos_en_directorio(nullptr), 0);
    ESPERA_INFORMES("(directorio) != NULL");
    EXPECT_TRUE(toma_esperas().empty());
}

TEST(espera_directorio, un_fallo_se_reintenta_y_uno_que_dura_es_que_no) {
    const directorio_temporal dir;
    unsigned short respuesta = 0;
    con_cada_fallo(
        [] {}, [&] { respuesta = lumodir_espera_acceso_a_recursos_en_directorio(dir.ruta_a().c_str()); },
        [&](const ronda& r) {
            EXPECT_EQ(respuesta, r.limpia || !r.para_siempre ? 1 : 0) << r;
            // Its entry shows at once that what may not be asked is there.
            const bool se_ve = r.codigo == ERROR_ACCESS_DENIED || r.codigo == ERROR_SHARING_VIOLATION;
            EXPECT_EQ(toma_esperas().size(), r.limpia ? 0u : r.para_siempre ? 5u : se_ve ? 0u : 1u) << r;
        });
}

TEST(espera_directorio, se_espera_siempre_el_mismo) {
    const directorio_temporal dir;
    dir.directorio("uno");
    dir.directorio("otro\\\u00f1");
    const en_directorio ahi(dir.ruta_w("uno"));
    al_dormir([&](unsigned long) { ::SetCurrentDirectoryW(dir.ruta_w("otro").c_str()); });
    fallos f;
    EXPECT_EQ(lumodir_espera_acceso_a_recursos_en_directorio(cp1252("\u00f1").c_str()), 0);
    EXPECT_EQ(f.rutas("GetFileAttributesW"), std::vector<std::string>(6, dir.ruta("uno\\\u00f1")));
    EXPECT_EQ(f.cuenta("GetFullPathNameW"), 1u);
    EXPECT_EQ(toma_esperas().size(), 5u);
}
