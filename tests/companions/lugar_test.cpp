// The families of source files and their module tags, and who is named in a report.
#include "companions/lugar.hpp"

#include <set>

#include "apoyo/apoyo.hpp"
#include "companions/arr.h"
#include "companions/error_interno.hpp"
#include "companions/widestr.h"

using namespace apoyo;
using namespace interno;

namespace {

struct fila_etiqueta {
    const char* fichero;
    const char* etiqueta;
};

const fila_etiqueta filas[] = {
    {.fichero = "arr", .etiqueta = "lumodir (LUMODIR.DLL)"},
    {.fichero = "arr.cpp", .etiqueta = "lumodir (LUMODIR.DLL)"},
    {.fichero = "src/companions/arr.hpp", .etiqueta = "lumodir (LUMODIR.DLL)"},
    {.fichero = "src\\companions\\arr.cpp", .etiqueta = "lumodir (LUMODIR.DLL)"},
    {.fichero = "/otro/sitio/lumoreg.cpp", .etiqueta = "lumoreg (LUMODIR.DLL)"},
    {.fichero = "dirwin.cpp", .etiqueta = "dirwin (LUMODIR.DLL)"},
    {.fichero = "discos.cpp", .etiqueta = "discos (LUMODIR.DLL)"},
    {.fichero = "info.cpp", .etiqueta = "discos (LUMODIR.DLL)"},
    {.fichero = "fichsdir.cpp", .etiqueta = "fichsdir (LUMODIR.DLL)"},
    {.fichero = "nomsfich.cpp", .etiqueta = "nomsfich (LUMODIR.DLL)"},
    {.fichero = "taskproc.cpp", .etiqueta = "taskproc (LUMODIR.DLL)"},
    {.fichero = "timefich.cpp", .etiqueta = "timefich (LUMODIR.DLL)"},
    {.fichero = "wine.cpp", .etiqueta = "lumodir (LUMODIR.DLL)"},
    {.fichero = "lumoreg_claves.cpp", .etiqueta = "lumoreg (LUMODIR.DLL)"},
    {.fichero = "src/listings/fichsdir.hpp", .etiqueta = "fichsdir (LUMODIR.DLL)"},
    {.fichero = "src/frame/puente.hpp", .etiqueta = "lumodir (LUMODIR.DLL)"},
    {.fichero = "dirwi.cpp", .etiqueta = "lumodir (LUMODIR.DLL)"},    // the beginning of a name
    {.fichero = "informe.cpp", .etiqueta = "lumodir (LUMODIR.DLL)"},  // longer than a name
    {.fichero = "discos/otro.cpp",
     .etiqueta = "lumodir (LUMODIR.DLL)"},  // a folder with the name of a family
    {.fichero = "crea_dirwin.cpp", .etiqueta = "lumodir (LUMODIR.DLL)"},  // not where a name begins
    {.fichero = "DISCOS.cpp", .etiqueta = "lumodir (LUMODIR.DLL)"},
    {.fichero = "", .etiqueta = "lumodir (LUMODIR.DLL)"},
};

}  // namespace

TEST(lugar, cada_fichero_tiene_su_etiqueta) {
    for (const fila_etiqueta& fila : filas) {
        EXPECT_STREQ(etiqueta_de_fichero(fila.fichero), fila.etiqueta) << fila.fichero;
    }
}

TEST(lugar, hay_solo_las_ocho_etiquetas_y_ninguna_familia_repetida) {
    const std::set<std::string> ocho = {"lumodir (LUMODIR.DLL)",  "lumoreg (LUMODIR.DLL)",
                                        "dirwin (LUMODIR.DLL)",   "discos (LUMODIR.DLL)",
                                        "fichsdir (LUMODIR.DLL)", "nomsfich (LUMODIR.DLL)",
                                        "taskproc (LUMODIR.DLL)", "timefich (LUMODIR.DLL)"};
    std::set<std::string> vistas = {etiqueta_de_las_demas};
    std::set<std::string_view> nombres;
    for (const familia& fila : familias) {
        EXPECT_TRUE(nombres.insert(fila.nombre).second) << fila.nombre;
        vistas.insert(fila.etiqueta);
    }
    EXPECT_EQ(vistas, ocho);
}

TEST(lugar, aqui_es_el_lugar_de_quien_llama) {
    const lugar aqui = lugar::aqui();
    const unsigned long linea = __LINE__ - 1;
    EXPECT_EQ(aqui.linea, linea);
    EXPECT_STREQ(lugar::aqui("src/system/discos.cpp", 3).etiqueta(), "discos (LUMODIR.DLL)");
}

TEST(lugar, la_etiqueta_de_un_anfitrion_se_da_tal_cual) {
    for (const char* etiqueta :
         {"programa.exe", "arr", "discos.cpp", "C:\\x\\info.c", "lumoreg (LUMODIR.DLL)"}) {
        EXPECT_STREQ(lugar::del_anfitrion(etiqueta, 7).etiqueta(), etiqueta);
    }
    EXPECT_STREQ(lugar::del_anfitrion(nullptr, 7).etiqueta(), "");
}

TEST(lugar, un_informe_dice_el_modulo_y_la_linea) {
    arr_AppendCADENA(nullptr, "x");
    arr_AppendCADENA_u(nullptr, L"x");
    wchar_t* nula = nullptr;
    widestr_nousar_destruye(&nula, "programa.exe", 77);
    const std::vector<informe> informes = toma_informes();
    ASSERT_EQ(informes.size(), 3u);
    EXPECT_EQ(informes[0].etiqueta, "lumodir (LUMODIR.DLL)");
    EXPECT_EQ(informes[1].etiqueta, "lumodir (LUMODIR.DLL)");
    EXPECT_NE(informes[0].linea, 0u);
    EXPECT_NE(informes[0].linea, informes[1].linea);  // each export is a place of its own
    EXPECT_EQ(informes[2].etiqueta, "programa.exe");
    EXPECT_EQ(informes[2].linea, 77u);
}
