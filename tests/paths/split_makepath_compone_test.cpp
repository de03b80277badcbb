// Composing paths, row by row in both flavours: network drives, what is added where it is missing, the repair of a
// base name and what is reported.
#include "apoyo/apoyo.hpp"
#include "cdir.h"
#include "paths/modelos.hpp"
#include "paths/sabores_split.hpp"

using namespace apoyo;
using namespace sabores;
using modelos::repite;

namespace {

const char* const ninguna =
    "drive_path != NULL || dir_path != NULL || fname_path != NULL || ext_path != NULL";
const char* const sin_nombre = "fname_path != NULL";
const char* const mal_w =
    "i_path_correcto_UNICODE( pathCompleto, puede_ser_vacio, FALSO, NULL, NULL) == CIERTO";
const char* const mal_a = "i_path_correcto( pathCompleto, puede_ser_vacio, FALSO, NULL) == CIERTO";
const char* const mal_comodines_w = "i_path_correcto_con_comodines_UNICODE(pathCompleto, NULL) == CIERTO";
const char* const mal_comodines_a = "i_path_correcto_con_comodines(pathCompleto, NULL) == CIERTO";

// Expects these reports; that of an incorrect path, and no other, tells the path.
void espera_informes_y_path(std::vector<std::string> esperados, const std::string& path) {
    for (std::string& expresion : esperados) {
        if (expresion.find("pathCompleto") != std::string::npos) {
            expresion += " [" + path + "]";
        }
    }
    espera_informes(esperados);
    ESPERA_AVISOS();
}

using lista = std::vector<std::string>;

struct composicion {
    const char* unidad;
    const char* directorio;
    const char* nombre;
    const char* extension;
    const char* path;     // composed, before any repair
    lista informes = {};  // about the pieces
    bool correcto = true;
    const char* reparado = path;  // what the UTF-16 flavour returns
    bool reparado_correcto = correcto;
};

const composicion composiciones[] = {
    {"C:", "\\dir\\", "file", ".txt", "C:\\dir\\file.txt"},
    {"C:", "\\dir", "file", "txt", "C:\\dir\\file.txt"},
    {"C", "dir/", "file", nullptr, "C:dir/file"},
    {"Cx:", nullptr, "file", "", "C:file"},  // of a plain drive only the letter counts
    {nullptr, "dir", "file", ".tar.gz", "dir\\file.tar.gz"},
    {nullptr, nullptr, "file", nullptr, "file"},
    {nullptr, nullptr, "", ".txt", ".txt"},
    {nullptr, nullptr, "\\file", nullptr, "\\file"},
    {"ñ", nullptr, nullptr, nullptr, "ñ:", {}, false},
    {"C:", "\\Año\\", "Ñandú €", "é", "C:\\Año\\Ñandú €.é"},
    {nullptr, nullptr, "  f ", "x", "  f .x"},  // correct as it is: nothing is trimmed
    // a place alone may be empty
    {"C:", "\\dir\\", nullptr, nullptr, "C:\\dir\\"},
    {"C:", nullptr, nullptr, nullptr, "C:"},
    {"", nullptr, nullptr, nullptr, ""},
    {nullptr, "", nullptr, nullptr, ""},
    {"", "", nullptr, nullptr, ""},
    {"", "", "", nullptr, "", {}, false},
    {nullptr, nullptr, "", "", "", {}, false},
    // what is reported about the pieces, again when they are composed again
    {nullptr, nullptr, nullptr, ".txt", ".txt", {sin_nombre}},
    {"C:", "\\dir", nullptr, "txt", "C:\\dir\\.txt", {sin_nombre}},
    {"C:", nullptr, nullptr, "", "C:", {sin_nombre}},
    {"", nullptr, nullptr, "", "", {sin_nombre}, false},
    {nullptr, nullptr, nullptr, "t?t", ".t?t", {sin_nombre}, false},
    {nullptr, nullptr, nullptr, nullptr, "", {ninguna}, false},
    // a share is a drive
    {"\\\\srv\\share", "\\dir", "\\file", ".txt", "\\\\srv\\share\\dir\\file.txt"},
    {"\\\\srv\\share", "dir\\", "file", "txt", "\\\\srv\\share\\dir\\file.txt"},
    {"\\\\srv\\share\\", "/dir/", "file", nullptr, "\\\\srv\\share\\dir/file"},
    {"\\\\srv\\share/", "\\", "file", nullptr, "\\\\srv\\share/file"},
    {"\\\\srv\\share", "\\\\dir", "file", nullptr, "\\\\srv\\share\\\\dir\\file"},  // one separator goes
    {"\\\\srv\\share", "", "file", nullptr, "\\\\srv\\share\\file"},
    {"\\\\srv\\share", nullptr, "\\\\file", nullptr, "\\\\srv\\share\\\\file"},
    {"\\\\srv\\share", nullptr, "/file", nullptr,
     "\\\\srv\\share\\/file"},  // only a backslash goes from a name
    {"\\\\srv\\share", nullptr, nullptr, nullptr, "\\\\srv\\share\\"},
    {"\\\\srv\\share", "\\a\\", nullptr, nullptr, "\\\\srv\\share\\a\\"},
    {"\\\\srv\\share", nullptr, "\\", ".txt", "\\\\srv\\share\\.txt"},
    {"\\\\srv\\share", nullptr, nullptr, ".txt", "\\\\srv\\share\\.txt", {sin_nombre}},
    {"\\\\ñ", "\\€\\", "é", nullptr, "\\\\ñ\\€\\é"},
    {"\\\\s", nullptr, nullptr, nullptr, "\\\\s\\", {}, false},  // a server without a share
    {"\\\\s", nullptr, "x", nullptr, "\\\\s\\x"},
    {"\\\\", "d", "x", nullptr, "\\:d\\x", {}, false},  // too short for a share: a plain drive
    {"//srv", "d", "x", nullptr, "/:d\\x", {}, false},
    {"\\/srv", "d", "x", nullptr, "\\:d\\x", {}, false},
    // the base name is repaired where that helps
    {"C:", "\\dir\\", "a|b", ".txt", "C:\\dir\\a|b.txt", {}, false, "C:\\dir\\a_b.txt", true},
    {"C:", "\\dir\\", "name.", nullptr, "C:\\dir\\name.", {}, false, "C:\\dir\\name", true},
    {"\\\\srv\\share",
     "\\",
     " \\ñ?€ ",
     "",
     "\\\\srv\\share\\ \\ñ?€ ",
     {},
     false,
     "\\\\srv\\share\\_ñ_€",
     true},
    {nullptr, nullptr, ". .", nullptr, ". .", {}, false, "", false},  // nothing is left of it
    {"C:", "\\dir\\", " .. ", nullptr, "C:\\dir\\ .. "},              // a component that needs no repair
    {"C:", "\\dir\\", "   ", nullptr, "C:\\dir\\   ", {}, false, "C:\\dir\\", true},
    {nullptr, nullptr, "con", ".txt", "con.txt", {}, false},  // reserved names stay
    {"C:", "\\d?r\\", "a*b", ".txt", "C:\\d?r\\a*b.txt", {}, false, "C:\\d?r\\a_b.txt", false},
    {"C:", "\\dir\\", "a*b", ".t?", "C:\\dir\\a*b.t?", {}, false, "C:\\dir\\a_b.t?", false},
    {"C:", "\\dir\\", "a\\b:c", nullptr, "C:\\dir\\a\\b:c", {}, false, "C:\\dir\\a_b_c", true},
    {"1:", nullptr, "f", nullptr, "1:f", {}, false},
};

TEST(split_makepath_compone, compone_comprueba_y_repara) {
    for (const composicion& f : composiciones) {
        SCOPED_TRACE(testing::Message() << "[" << f.path << "]");
        EXPECT_EQ(compone<wchar_t>(cdir_makepath_UNICODE, f.unidad, f.directorio, f.nombre, f.extension),
                  f.reparado);
        lista esperados = f.informes;
        if (!f.correcto) {  // composed twice
            esperados.insert(esperados.end(), f.informes.begin(), f.informes.end());
        }
        if (!f.reparado_correcto) {
            esperados.push_back(mal_w);
        }
        espera_informes_y_path(esperados, f.reparado);

        EXPECT_EQ(compone<char>(cdir_makepath, f.unidad, f.directorio, f.nombre, f.extension), f.path);
        esperados = f.informes;
        if (!f.correcto) {
            esperados.push_back(mal_a);
        }
        espera_informes_y_path(esperados, f.path);
    }
}

// The wildcard variant never repairs and never admits an empty path.
TEST(split_makepath_compone, con_comodines_no_repara) {
    for (const composicion& f : composiciones) {
        SCOPED_TRACE(testing::Message() << "[" << f.path << "]");
        const bool correcto = f.correcto && *f.path != '\0';
        lista esperados_w = f.informes;
        lista esperados_a = f.informes;
        if (!correcto) {
            esperados_w.push_back(mal_comodines_w);
            esperados_a.push_back(mal_comodines_a);
        }
        EXPECT_EQ(compone<wchar_t>(cdir_makepath_con_comodines_UNICODE, f.unidad, f.directorio, f.nombre,
                                   f.extension),
                  f.path);
        espera_informes_y_path(esperados_w, f.path);
        EXPECT_EQ(compone<char>(cdir_makepath_con_comodines, f.unidad, f.directorio, f.nombre, f.extension),
                  f.path);
        espera_informes_y_path(esperados_a, f.path);
    }
}

TEST(split_makepath_compone, comodines_enteros) {
    struct fila_comodin {
        const char* unidad;
        const char* directorio;
        const char* nombre;
        const char* extension;
        const char* path;
        bool correcto;
    };
    const fila_comodin filas_comodin[] = {
        {"C:", "\\dir\\", "*", ".*", "C:\\dir\\*.*", true},
        {"C:", "\\dir", "*", "txt", "C:\\dir\\*.txt", true},
        {"C:", "\\Año", "ñ", "*", "C:\\Año\\ñ.*", true},
        {"\\\\srv\\share", nullptr, "*", ".*", "\\\\srv\\share\\*.*", true},
        {nullptr, nullptr, "*", nullptr, "*", true},
        {nullptr, nullptr, "*", ".*", "*.*", false},
        {"C:", "\\dir\\", "a*", ".txt", "C:\\dir\\a*.txt", false},
        {"C:", "\\dir\\", "*", ".t?t", "C:\\dir\\*.t?t", false},
        {"C:", "\\d*r\\", "*", ".*", "C:\\d*r\\*.*", false},
    };
    for (const fila_comodin& f : filas_comodin) {
        SCOPED_TRACE(testing::Message() << "[" << f.path << "]");
        EXPECT_EQ(compone<wchar_t>(cdir_makepath_con_comodines_UNICODE, f.unidad, f.directorio, f.nombre,
                                   f.extension),
                  f.path);
        espera_informes_y_path(f.correcto ? lista{} : lista{mal_comodines_w}, f.path);
        EXPECT_EQ(compone<char>(cdir_makepath_con_comodines, f.unidad, f.directorio, f.nombre, f.extension),
                  f.path);
        espera_informes_y_path(f.correcto ? lista{} : lista{mal_comodines_a}, f.path);
    }
}

// However long the result, in both flavours.
TEST(split_makepath_compone, un_resultado_de_toda_longitud_se_compone_entero) {
    for (const std::size_t longitud : {1000u, 5118u, 5119u, 32767u, 100000u}) {
        const std::string directorio = "\\" + repite("d\\", longitud);
        const bool correcto = directorio.size() + 7 <= 10240;
        for (const char* unidad : {"C:", "\\\\srv\\share"}) {
            const std::string path = unidad + directorio + "f.txt";
            EXPECT_EQ(path.size() <= 10240, correcto);
            EXPECT_EQ(compone<wchar_t>(cdir_makepath_UNICODE, unidad, directorio.c_str(), "f", ".txt"), path);
            espera_informes_y_path(correcto ? lista{} : lista{mal_w}, path);
            EXPECT_EQ(compone<char>(cdir_makepath, unidad, directorio.c_str(), "f", ".txt"), path);
            espera_informes_y_path(correcto ? lista{} : lista{mal_a}, path);
            EXPECT_EQ(compone<char>(cdir_makepath_con_comodines, unidad, directorio.c_str(), "*", ".*"),
                      unidad + directorio + "*.*");
            toma_informes();
        }
    }
    // A name that is too long is repaired to the limit; its extension makes it too long again.
    EXPECT_EQ(compone<wchar_t>(cdir_makepath_UNICODE, "C:", "\\", repite("n", 100000).c_str(), nullptr),
              "C:\\" + repite("n", 255));
    espera_informes_y_path({}, "");
    const std::string sigue_largo = "C:\\" + repite("n", 255) + ".txt";
    EXPECT_EQ(compone<wchar_t>(cdir_makepath_UNICODE, "C:", "\\", repite("n", 256).c_str(), "txt"),
              sigue_largo);
    espera_informes_y_path({mal_w}, sigue_largo);
}

}  // namespace
