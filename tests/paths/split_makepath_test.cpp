// Cutting and composing paths, row by row in both flavours: the pieces, the message or report for an incorrect
// path, network drives, blanks in the extension, the repair of a base name.
#include "paths/split_makepath.hpp"

#include "apoyo/apoyo.hpp"
#include "cdir.h"
#include "companions/msglocal.h"
#include "companions/plataforma.hpp"
#include "lumodir.h"
#include "paths/modelos.hpp"
#include "paths/sabores_split.hpp"

using namespace apoyo;
using namespace sabores;
using modelos::incorrecto;
using modelos::repite;

namespace {

// ---- cutting

struct fila_corte {
    const char* path;
    trozos piezas;
    bool correcto = true;
    bool con_comodines = correcto;  // correct for the wildcard variant
    const char* recortado = path;   // as messages name it
};

const fila_corte filas_corte[] = {
    {"C:\\dir\\sub\\file.txt", {"C:", "\\dir\\sub\\", "file", ".txt"}},
    {"c:/dir/file.txt", {"c:", "/dir/", "file", ".txt"}},
    {"C:file", {"C:", "", "file", ""}},
    {"C:", {"C:", "", "", ""}},
    {"C:\\", {"C:", "\\", "", ""}},
    {"dir\\", {"", "dir\\", "", ""}},
    {"file", {"", "", "file", ""}},
    {"b.tar.gz", {"", "", "b.tar", ".gz"}},
    {"C:\\Año\\Ñandú €.ñ", {"C:", "\\Año\\", "Ñandú €", ".ñ"}},
    // an extension without a base name is the base name
    {".cfg", {"", "", ".cfg", ""}},
    {".profile", {"", "", ".profile", ""}},
    {"C:\\dir\\.cfg", {"C:", "\\dir\\", ".cfg", ""}},
    {"C:\\dir\\.", {"C:", "\\dir\\", ".", ""}},
    {"C:\\dir\\..", {"C:", "\\dir\\", ".", "."}},
    {"C:\\dir\\..cfg", {"C:", "\\dir\\", ".", ".cfg"}},
    {".my cfg", {"", "", ".my cfg", ""}},
    // an extension with a blank is no extension
    {"notes.my file", {"", "", "notes.my file", ""}},
    {"report.final version", {"", "", "report.final version", ""}},
    {"C:\\a\\b. c", {"C:", "\\a\\", "b. c", ""}},
    {"a b.txt", {"", "", "a b", ".txt"}},
    {"a.b c\\d.e", {"", "a.b c\\", "d", ".e"}},
    {"a.b\tc", {"", "", "a", ".b\tc"}, false},  // a tab is no blank
    // trailing blanks go first
    {"C:\\dir\\file.txt   ", {"C:", "\\dir\\", "file", ".txt"}, true, true, "C:\\dir\\file.txt"},
    {"  dir\\ file.txt", {"", "  dir\\", " file", ".txt"}},
    {"file.  ", {"", "", "file", "."}, false, false, "file."},
    {"   ", {"", "", "", ""}, false, false, ""},
    {"", {"", "", "", ""}, false},
    // network paths
    {"\\\\srv\\share\\a\\b.txt", {"\\\\srv\\share", "\\a\\", "b", ".txt"}},
    {"\\\\srv\\share\\b.txt", {"\\\\srv\\share", "\\", "b", ".txt"}},
    {"\\\\srv\\share\\", {"\\\\srv\\share", "\\", "", ""}},
    {"\\\\srv\\share/a\\b.my file", {"\\\\srv\\share", "/a\\", "b.my file", ""}},
    {"\\\\srv\\share\\.cfg", {"\\\\srv\\share", "\\", ".cfg", ""}},
    {"\\\\ñu\\año\\€\\b", {"\\\\ñu\\año", "\\€\\", "b", ""}},
    {"\\\\srv\\share\\x\\\\srv\\share\\b",
     {"\\\\srv\\share", "\\x\\\\srv\\share\\", "b", ""}},          // the first one
    {"\\\\\\srv\\share\\b", {"\\\\srv\\share", "\\\\", "b", ""}},  // it begins at the second separator
    // where the drive's text does not occur nothing is removed
    {"\\\\srv\\\\share\\b", {"\\\\srv\\share", "\\\\srv\\\\share\\", "b", ""}},
    {"\\\\srv/share\\b", {"\\\\srv/share\\share", "\\\\srv/share\\", "b", ""}},  // "/" does not end a server
    {"\\\\s/b\\b.x", {"\\\\s/b\\b", "\\\\s/b\\", "b", ".x"}},  // a drive that the directory does not hold
    {"C:\\\\srv\\share\\b", {"\\\\srv\\share", "\\", "b", ""}},
    {"//srv/share/b.txt", {"", "//srv/share/", "b", ".txt"}},  // no network path
    {"\\\\", {"", "\\\\", "", ""}},
    // incorrect ones are cut all the same
    {"1:\\dir\\a|b.txt", {"1:", "\\dir\\", "a|b", ".txt"}, false},
    {"ab:c\\d.e", {"", "ab:c\\", "d", ".e"}, false},
    {"C:\\con\\aux.txt", {"C:", "\\con\\", "aux", ".txt"}, false},
    {"100%s?.%ld", {"", "", "100%s?", ".%ld"}, false},
    {"\\\\a?b\\share\\c", {"\\\\a?b\\share", "\\", "c", ""}, false},  // a network path although incorrect
    {"\\\\srv\\share\\b.",
     {"", "\\\\srv\\share\\", "b", "."},
     false},  // no network path: an earlier rule failed
    // wildcards
    {"C:\\dir\\*.*", {"C:", "\\dir\\", "*", ".*"}, false, true},
    {"C:\\dir\\*.txt", {"C:", "\\dir\\", "*", ".txt"}, false, true},
    {"C:\\dir\\*", {"C:", "\\dir\\", "*", ""}, false, true},
    {"\\\\srv\\share\\*.*  ", {"\\\\srv\\share", "\\", "*", ".*"}, false, true, "\\\\srv\\share\\*.*"},
    {"*.*", {"", "", "*", ".*"}, false, false},
    {"C:\\dir\\a*.txt", {"C:", "\\dir\\", "a*", ".txt"}, false, false},
    {"C:\\d*\\*.txt", {"C:", "\\d*\\", "*", ".txt"}, false, false},
};

template <class C>
void comprueba_corte(const fila_corte& f) {
    EXPECT_EQ(corta<C>(sabor<C>::con_comprobacion, f.path), f.piezas);
    EXPECT_EQ(toma_avisos(), f.correcto ? std::vector<std::string>{} : std::vector{incorrecto(f.recortado)});
    espera_informes({});
    EXPECT_EQ(corta<C>(sabor<C>::con_comodines, f.path), f.piezas);
    ESPERA_AVISOS();
    espera_informes(f.con_comodines
                        ? std::vector<std::string>{}
                        : std::vector{"pathCorrecto == CIERTO [" + std::string(f.recortado) + "]"});
}

TEST(split_makepath, corta_en_cuatro_piezas) {
    for (const fila_corte& f : filas_corte) {
        SCOPED_TRACE(testing::Message() << "[" << f.path << "]");
        comprueba_corte<wchar_t>(f);
        comprueba_corte<char>(f);
    }
}

// Every combination of wanted outputs: a blank in the extension counts only where both halves are wanted.
template <class C>
void comprueba_deseadas(const fila_corte& f) {
    for (unsigned deseadas = 0; deseadas < 16; ++deseadas) {
        SCOPED_TRACE(deseadas);
        const trozos t = corta<C>(sabor<C>::con_comprobacion, f.path, deseadas);
        trozos esperados = f.piezas;
        const std::size_t punto = f.piezas.nombre.rfind('.');
        const bool junta =
            punto != std::string::npos && punto > 0 && f.piezas.nombre.find(' ', punto) != std::string::npos;
        if (junta && (deseadas & 12u) != 12) {
            esperados.extension = f.piezas.nombre.substr(punto);
            esperados.nombre = f.piezas.nombre.substr(0, punto);
        }
        EXPECT_EQ(t.unidad, deseadas & 1u ? esperados.unidad : "-");
        EXPECT_EQ(t.directorio, deseadas & 2u ? esperados.directorio : "-");
        EXPECT_EQ(t.nombre, deseadas & 4u ? esperados.nombre : "-");
        EXPECT_EQ(t.extension, deseadas & 8u ? esperados.extension : "-");
        EXPECT_EQ(corta<C>(sabor<C>::con_comodines, f.path, deseadas), t);
        EXPECT_EQ(toma_avisos().size(), f.correcto ? 0u : 1u);
        EXPECT_EQ(toma_informes().size(), f.con_comodines ? 0u : 1u);
    }
}

TEST(split_makepath, una_salida_null_no_se_desea) {
    for (const fila_corte& f : filas_corte) {
        SCOPED_TRACE(testing::Message() << "[" << f.path << "]");
        comprueba_deseadas<wchar_t>(f);
        comprueba_deseadas<char>(f);
    }
    EXPECT_EQ(corta<wchar_t>(sabor<wchar_t>::con_comprobacion, "notes.my file", 8).extension, ".my file");
    EXPECT_EQ(corta<char>(sabor<char>::con_comprobacion, "notes.my file", 8).extension, ".my file");
    EXPECT_EQ(corta<wchar_t>(sabor<wchar_t>::con_comprobacion, "notes.my file", 4).nombre, "notes");
    EXPECT_EQ(corta<char>(sabor<char>::con_comprobacion, "notes.my file", 4).nombre, "notes");
}

// Without its server or its share a network path is cut as far as it goes; the 8-bit flavour asks for both.
TEST(split_makepath, un_path_de_red_incompleto) {
    struct fila {
        const char* path;
        bool correcto;
        trozos anchas;
        std::vector<std::string> informes;
        trozos estrechas;
        std::vector<std::string> informes_8_bits;
    };
    const std::string sin_maquina = "(maquina) != NULL";
    const std::string sin_recurso = "(recurso) != NULL";
    const fila filas[] = {
        {"\\\\srv", false, {"\\\\srv", "", "", ""}, {}, {"\\\\srv\\", "", "", ""}, {sin_recurso}},
        {"\\\\srv.dom", false, {"\\\\srv.dom", "", "", ""}, {}, {"\\\\srv.dom\\", "", "", ""}, {sin_recurso}},
        {"\\\\.srv", false, {"\\\\.srv", "", "", ""}, {}, {"\\\\.srv\\", "", "", ""}, {sin_recurso}},
        {"\\\\s.d v", false, {"\\\\s.d v", "", "", ""}, {}, {"\\\\s.d v\\", "", "", ""}, {sin_recurso}},
        {"\\\\srv\\", false, {"\\\\srv", "\\", "", ""}, {}, {"\\\\srv\\", "", "", ""}, {sin_recurso}},
        {"\\\\srv\\share",
         true,
         {"\\\\srv", "\\", "share", ""},
         {},
         {"\\\\srv\\", "", "share", ""},
         {sin_recurso}},
        {"\\\\srv\\a.b", true, {"\\\\srv", "\\", "a", ".b"}, {}, {"\\\\srv\\", "", "a", ".b"}, {sin_recurso}},
        {"\\\\srv/share",
         true,
         {"\\\\srv/", "", "share", ""},
         {},
         {"\\\\srv/\\", "\\\\srv/", "share", ""},
         {sin_recurso}},
        {"\\\\\\",
         false,
         {"\\\\", "\\", "", ""},
         {"maquina!=NULL [\\\\\\]"},
         {"\\\\\\", "", "", ""},
         {sin_maquina, sin_recurso}},
        // A name behind separators is no server: it stays a name.
        {"\\\\\\name.txt",
         false,
         {"\\\\", "\\", "name", ".txt"},
         {"maquina!=NULL [\\\\\\]"},
         {"\\\\\\", "", "name", ".txt"},
         {sin_maquina, sin_recurso}},
        {"C:\\\\name.txt",
         true,
         {"\\\\", "", "name", ".txt"},
         {"maquina!=NULL [\\\\]"},
         {"\\\\\\", "\\\\", "name", ".txt"},
         {sin_maquina, sin_recurso}},
    };
    for (const fila& f : filas) {
        SCOPED_TRACE(testing::Message() << "[" << f.path << "]");
        const std::vector<std::string> avisos =
            f.correcto ? std::vector<std::string>{} : std::vector{incorrecto(f.path)};
        EXPECT_EQ(corta<wchar_t>(sabor<wchar_t>::con_comprobacion, f.path), f.anchas);
        EXPECT_EQ(toma_avisos(), avisos);
        espera_informes(f.informes);
        EXPECT_EQ(corta<char>(sabor<char>::con_comprobacion, f.path), f.estrechas);
        EXPECT_EQ(toma_avisos(), avisos);
        espera_informes(f.informes_8_bits);
        // The wildcard variant reports an incorrect path first.
        EXPECT_EQ(corta<wchar_t>(sabor<wchar_t>::con_comodines, f.path), f.anchas);
        EXPECT_EQ(toma_informes().size(), f.informes.size() + (f.correcto ? 0 : 1));
        EXPECT_EQ(corta<char>(sabor<char>::con_comodines, f.path), f.estrechas);
        EXPECT_EQ(toma_informes().size(), f.informes_8_bits.size() + (f.correcto ? 0 : 1));
    }
}

template <class C>
void comprueba_null() {
    for (const auto entrada : {sabor<C>::con_comprobacion, sabor<C>::con_comodines}) {
        for (unsigned deseadas = 0; deseadas < 16; ++deseadas) {
            const trozos t = corta<C>(entrada, nullptr, deseadas);
            EXPECT_EQ(t.unidad, deseadas & 1u ? "" : "-");
            EXPECT_EQ(t.directorio, deseadas & 2u ? "" : "-");
            EXPECT_EQ(t.nombre, deseadas & 4u ? "" : "-");
            EXPECT_EQ(t.extension, deseadas & 8u ? "" : "-");
            espera_informes({"(path) != NULL"});
            ESPERA_AVISOS();
        }
    }
}

TEST(split_makepath, un_path_null_se_denuncia_y_da_piezas_vacias) {
    comprueba_null<wchar_t>();
    comprueba_null<char>();
}

TEST(split_makepath, el_aviso_sale_en_el_idioma_del_usuario_y_calla_en_modo_servicio) {
    msglocal_establece_idioma(0);
    corta<wchar_t>(sabor<wchar_t>::con_comprobacion, "año%s?");
    corta<char>(sabor<char>::con_comprobacion, "año%s?");
    ESPERA_AVISOS("El fichero 'año%s?' no es correcto", "El fichero 'año%s?' no es correcto");
    lumodir_establece_modo_servicio_sin_reintentos();
    const trozos piezas = {"", "", "año%s?", ""};
    EXPECT_EQ(corta<wchar_t>(sabor<wchar_t>::con_comprobacion, "año%s?"), piezas);
    EXPECT_EQ(corta<char>(sabor<char>::con_comprobacion, "año%s?"), piezas);
    EXPECT_EQ(toma(cdir_split_make_path_UNICODE(L"a?", 15)), "a?");
    EXPECT_EQ(toma(cdir_split_make_path("a?", 15)), "a?");
    ESPERA_AVISOS();
}

// No piece of either flavour is cut, whatever its length.
TEST(split_makepath, las_piezas_salen_enteras_sean_como_sean_de_largas) {
    const std::string directorio = "\\" + repite("dddd\\", 204);  // 1021 bytes
    for (const std::size_t mas : {1u, 2u, 3u, 200u}) {
        const std::string largo = directorio + repite("e", mas) + "\\";
        const std::string path = "C:" + largo + "f.txt";
        const trozos enteros = {"C:", largo, "f", ".txt"};
        EXPECT_EQ(corta<wchar_t>(sabor<wchar_t>::con_comodines, path.c_str()), enteros);
        EXPECT_EQ(corta<char>(sabor<char>::con_comodines, path.c_str()), enteros);
        EXPECT_EQ(toma(cdir_split_make_path(path.c_str(), 15)), path);
        EXPECT_EQ(toma(cdir_nombre_fichero_con_ext(path.c_str(), "dat")), "C:" + largo + "f.dat");
        EXPECT_EQ(toma(cdir_ruta_y_nombre_fichero_sin_extension(path.c_str())), "C:" + largo + "f");
    }
    for (const std::size_t tamanyo : {1022u, 1023u, 1024u, 5000u}) {
        const std::string nombre = repite("n", tamanyo);
        const std::string extension = "." + repite("x", tamanyo - 1);
        const std::string path = "C:\\" + nombre + extension;
        const trozos enteros = {"C:", "\\", nombre, extension};
        EXPECT_EQ(corta<wchar_t>(sabor<wchar_t>::con_comodines, path.c_str()), enteros);
        EXPECT_EQ(corta<char>(sabor<char>::con_comodines, path.c_str()), enteros);
        espera_informes({"pathCorrecto == CIERTO [" + path + "]", "pathCorrecto == CIERTO [" + path + "]"});
    }
}

TEST(split_makepath, todo_byte_en_la_variante_de_8_bits) {
    for (int b = 1; b < 256; ++b) {
        if (b == '\\' || b == '/' || b == '.' || b == ' ') {
            continue;  // these cut or join, as shown above
        }
        // What begins pairs of the code page is tried as one of them; half of one may join with what follows.
        std::string x(1, static_cast<char>(b));
        bool iniciales[256] = {};
        interno::plataforma::bytes_iniciales(iniciales);
        for (int otro = 0xFF; iniciales[b] && otro > 0x7F; --otro) {
            if (interno::plataforma::es_caracter_doble(x[0], static_cast<char>(otro))) {
                x += static_cast<char>(otro);
                break;
            }
        }
        const std::string path = "C:\\d" + x + "\\f" + x + ".t" + x;
        char* piezas[4];
        cdir_splitpath_con_comprobacion(path.c_str(), &piezas[0], &piezas[1], &piezas[2], &piezas[3]);
        EXPECT_EQ(toma_avisos().size(), modelos::caracter_valido(static_cast<unsigned>(b)) ? 0u : 1u) << b;
        EXPECT_EQ(piezas[0], std::string("C:"));
        EXPECT_EQ(piezas[1], "\\d" + x + "\\");
        EXPECT_EQ(piezas[2], "f" + x);
        EXPECT_EQ(piezas[3], ".t" + x);
        char* const path_otra_vez = cdir_makepath(piezas[0], piezas[1], piezas[2], piezas[3]);
        EXPECT_EQ(path_otra_vez, path);
        EXPECT_EQ(toma_informes().size(), modelos::caracter_valido(static_cast<unsigned>(b)) ? 0u : 1u) << b;
        toma(path_otra_vez);
        for (char* pieza : piezas) {
            toma(pieza);
        }
    }
}

TEST(split_makepath, un_sustituto_suelto_viaja_con_su_pieza) {
    const fila_corte f = {"C:\\d\xED\xA0\x80\\\xED\xBF\xBF.\xED\xA0\x80",
                          {"C:", "\\d\xED\xA0\x80\\", "\xED\xBF\xBF", ".\xED\xA0\x80"}};
    comprueba_corte<wchar_t>(f);
    EXPECT_EQ(toma(cdir_split_make_path_UNICODE(w(f.path).c_str(), 15)), f.path);
}

// ---- keeping some pieces

TEST(split_makepath, se_queda_con_las_piezas_pedidas) {
    struct fila {
        const char* path;
        unsigned short mascara;
        const char* resultado;
        std::vector<std::string> informes = {};
        bool correcto = true;
        std::vector<std::string> informes_8_bits = informes;
    };
    const std::string ninguna =
        "drive_path != NULL || dir_path != NULL || fname_path != NULL || ext_path != NULL";
    const std::string sin_nombre = "fname_path != NULL";
    const std::string sin_recurso = "(recurso) != NULL";
    const char* const path = "C:\\dir\\file.txt";
    const char* const red = "\\\\srv\\share\\a\\b.txt";
    const fila filas[] = {
        {path, 0, "", {ninguna}},
        {path, 1, "C:"},
        {path, 2, "\\dir\\"},
        {path, 1 | 2, "C:\\dir\\"},
        {path, 4, "file"},
        {path, 1 | 4, "C:file"},
        {path, 2 | 4, "\\dir\\file"},
        {path, 1 | 2 | 4, "C:\\dir\\file"},
        {path, 8, ".txt", {sin_nombre}},
        {path, 1 | 8, "C:.txt", {sin_nombre}},
        {path, 2 | 8, "\\dir\\.txt", {sin_nombre}},
        {path, 1 | 2 | 8, "C:\\dir\\.txt", {sin_nombre}},
        {path, 4 | 8, "file.txt"},
        {path, 1 | 4 | 8, "C:file.txt"},
        {path, 2 | 4 | 8, "\\dir\\file.txt"},
        {path, 15, "C:\\dir\\file.txt"},
        {path, 0xFFF0, "", {ninguna}},  // other bits mean nothing
        {path, 0xFFFF, "C:\\dir\\file.txt"},
        {"C:\\dir\\file.txt  ", 15, "C:\\dir\\file.txt"},
        {"C:\\Año\\ñ.é", 15, "C:\\Año\\ñ.é"},
        {"C:\\Año\\ñ.é", 12, "ñ.é"},
        {"C:file", 15, "C:file"},
        {"file", 3, ""},  // an empty piece is a piece that was given
        {"file", 8, "", {sin_nombre}},
        {".cfg", 4, ".cfg"},
        {".cfg", 8, "", {sin_nombre}},
        {"notes.my file", 4, "notes.my file"},
        {"notes.my file", 8, "", {sin_nombre}},
        {red, 1, "\\\\srv\\share\\"},
        {red, 2, "\\a\\"},
        {red, 1 | 2, "\\\\srv\\share\\a\\"},
        {red, 1 | 4, "\\\\srv\\share\\b"},
        {red, 4 | 8, "b.txt"},
        {red, 15, "\\\\srv\\share\\a\\b.txt"},
        {"\\\\srv\\share", 15, "\\\\srv\\share", {}, true, {sin_recurso}},
        {"\\\\srv", 15, "\\\\srv\\", {}, false, {sin_recurso}},
        {"", 15, "", {}, false},
        {"C:\\a|b.txt", 15, "C:\\a|b.txt", {}, false},
        {"C:\\con.", 15, "C:\\con.", {}, false},  // the result is not checked, nor repaired
    };
    for (const fila& f : filas) {
        SCOPED_TRACE(testing::Message() << "[" << f.path << "] " << f.mascara);
        const std::vector<std::string> avisos =
            f.correcto ? std::vector<std::string>{} : std::vector{incorrecto(f.path)};
        EXPECT_EQ(toma(cdir_split_make_path_UNICODE(w(f.path).c_str(), f.mascara)), f.resultado);
        espera_informes(f.informes);
        EXPECT_EQ(toma_avisos(), avisos);
        EXPECT_EQ(toma(cdir_split_make_path(cp1252(f.path).c_str(), f.mascara)), f.resultado);
        espera_informes(f.informes_8_bits);
        EXPECT_EQ(toma_avisos(), avisos);
    }
    EXPECT_EQ(toma(cdir_split_make_path_UNICODE(nullptr, 15)), "");
    EXPECT_EQ(toma(cdir_split_make_path(nullptr, 15)), "");
    espera_informes({"(path) != NULL", "(path) != NULL"});
    EXPECT_EQ(toma(cdir_split_make_path_UNICODE(nullptr, 0)), "");
    EXPECT_EQ(toma(cdir_split_make_path(nullptr, 0)), "");
    espera_informes({"(path) != NULL", ninguna, "(path) != NULL", ninguna});
    ESPERA_AVISOS();
}

// A share's drive is a view into the path, too.
TEST(split_makepath, cortar_cuesta_un_bloque_por_pieza) {
    const reservas_contadas reservas;
    for (const wchar_t* path : {L"C:\\d\\f.x", L"\\\\srv\\share\\d\\f.x", L"\\\\srv\\share"}) {
        reservas.toma();
        wchar_t* piezas[4];
        cdir_splitpath_con_comprobacion_UNICODE(path, &piezas[0], &piezas[1], &piezas[2], &piezas[3]);
        EXPECT_EQ(reservas.toma(), 4u) << u8(path);
        for (wchar_t* pieza : piezas) {
            toma(pieza);
        }
    }
    for (const char* path : {"C:\\d\\f.x", "\\\\srv\\share\\d\\f.x"}) {
        reservas.toma();
        char* piezas[4];
        cdir_splitpath_con_comprobacion(path, &piezas[0], &piezas[1], &piezas[2], &piezas[3]);
        EXPECT_EQ(reservas.toma(), 4u) << path;
        for (char* pieza : piezas) {
            toma(pieza);
        }
    }
}

// Its text; nothing where nobody is shown it.
TEST(split_makepath, el_aviso_cuesta_un_bloque) {
    const reservas_contadas reservas;
    const auto bloques_de = [](auto corta, const auto* path) {
        reservas_contadas::toma();
        corta(path, nullptr, nullptr, nullptr, nullptr);
        return reservas_contadas::toma();
    };
    EXPECT_EQ(bloques_de(cdir_splitpath_con_comprobacion_UNICODE, L"C:\\d\\año?.x "), 1u);
    EXPECT_EQ(bloques_de(cdir_splitpath_con_comprobacion, cp1252("C:\\d\\año?.x ").c_str()), 1u);
    ESPERA_AVISOS("The file 'C:\\d\\año?.x' is not correct", "The file 'C:\\d\\año?.x' is not correct");
    lumodir_establece_modo_servicio_sin_reintentos();
    EXPECT_EQ(bloques_de(cdir_splitpath_con_comprobacion_UNICODE, L"C:\\d\\año?.x "), 0u);
    EXPECT_EQ(bloques_de(cdir_splitpath_con_comprobacion, cp1252("C:\\d\\año?.x ").c_str()), 0u);
    ESPERA_AVISOS();
}

}  // namespace
