// The pieces of a path, row by row in both flavours, and against a naive model of the split over every short
// string.
#include <algorithm>

#include "apoyo/apoyo.hpp"
#include "cdir.h"
#include "companions/cadena.hpp"
#include "lumodir.h"
#include "modelos/componentes.hpp"
#include "paths/componentes.hpp"
#include "paths/modelos.hpp"

using namespace apoyo;
using interno::cadena_w;
using interno::es_unidad_sola;
using interno::vista_w;

namespace {

// Both flavours of a function of one path.
struct funcion {
    const char* nombre;
    wchar_t* (*ancha)(const wchar_t*);
    char* (*estrecha)(const char*);
};
constexpr funcion nombre_base = {"base name", cdir_nombre_base_fichero_UNICODE, cdir_nombre_base_fichero};
constexpr funcion extension = {"extension", cdir_extension_fichero_UNICODE, cdir_extension_fichero};
constexpr funcion nombre_y_ext = {"name and extension", cdir_nombre_y_ext_fichero_UNICODE,
                                  cdir_nombre_y_ext_fichero};
constexpr funcion tras_barra = {"after the last backslash", cdir_nombre_de_fichero_suprimiendo_path_UNICODE,
                                cdir_nombre_de_fichero_suprimiendo_path};
constexpr funcion directorio = {"directory", cdir_ruta_acceso_directorio_fichero_UNICODE,
                                cdir_ruta_acceso_directorio_fichero};
constexpr funcion sin_extension = {"without extension", cdir_ruta_y_nombre_fichero_sin_extension_UNICODE,
                                   cdir_ruta_y_nombre_fichero_sin_extension};
constexpr funcion con_dat = {
    "with .dat", [](const wchar_t* ruta) { return cdir_nombre_fichero_con_ext_UNICODE(ruta, L"dat"); },
    [](const char* ruta) { return cdir_nombre_fichero_con_ext(ruta, "dat"); }};

std::vector<informe> sin_lineas(std::vector<informe> informes) {
    for (informe& i : informes) {
        EXPECT_EQ(i.etiqueta, "lumodir (LUMODIR.DLL)");
        EXPECT_GT(i.linea, 0u);
        i.etiqueta.clear();
        i.linea = 0;
    }
    return informes;
}

informe dicho(const char* expresion, const std::string& detalle = "(NULL)") {
    return {expresion, "", 0, detalle};
}

void espera(const funcion& f, const std::string& ruta, const std::string& resultado,
            const std::vector<informe>& informes_anchos, const std::vector<informe>& informes_estrechos) {
    SCOPED_TRACE(std::string(f.nombre) + " of '" + ruta + "'");
    EXPECT_EQ(toma(f.ancha(w(ruta).c_str())), resultado) << "wide";
    EXPECT_TRUE(sin_lineas(toma_informes()) == informes_anchos) << "reports, wide";
    EXPECT_EQ(toma(f.estrecha(cp1252(ruta).c_str())), resultado) << "8-bit";
    EXPECT_TRUE(sin_lineas(toma_informes()) == informes_estrechos) << "reports, 8-bit";
}

void espera(const funcion& f, const std::string& ruta, const std::string& resultado,
            const std::vector<informe>& informes = {}) {
    espera(f, ruta, resultado, informes, informes);
}

}  // namespace

namespace {
struct caso_correcto {
    const char* ruta;
    const char* base;
    const char* ext;
    const char* tras_barra;  // after the last backslash
    const char* directorio;
    const char* sin_ext;
};
}  // namespace

TEST(componentes, da_cada_pieza_de_una_ruta_correcta) {
    const caso_correcto casos[] = {
        {"C:\\a\\b.txt", "b", "txt", "b.txt", "C:\\a\\", "C:\\a\\b"},
        {"C:\\dir\\file.tar.gz", "file.tar", "gz", "file.tar.gz", "C:\\dir\\", "C:\\dir\\file.tar"},
        {"C:\\dir\\.profile", ".profile", "", ".profile", "C:\\dir\\", "C:\\dir\\.profile"},  // all base name
        {".profile", ".profile", "", ".profile", "", ".profile"},
        {"C:/dir/file.txt", "file", "txt", "C:/dir/file.txt", "C:/dir/",
         "C:/dir/file"},  // "/" is no separator for the name after the backslash
        {"a/b\\c/d", "d", "", "c/d", "a/b\\c/", "a/b\\c/d"},
        {"file.txt", "file", "txt", "file.txt", "", "file"},
        {"C:file.txt", "file", "txt", "C:file.txt", "", "C:file"},  // not 'C:'
        {"\\\\srv\\share\\dir\\f.txt", "f", "txt", "f.txt", "\\\\srv\\share\\dir\\",
         "\\\\srv\\share\\dir\\f"},
        {"\\\\srv\\share\\f", "f", "", "f", "\\\\srv\\share\\", "\\\\srv\\share\\f"},
        {"C:\\a\\b", "b", "", "b", "C:\\a\\", "C:\\a\\b"},
        {"C:\\a\\b .txt", "b ", "txt", "b .txt", "C:\\a\\", "C:\\a\\b"},  // the inner blank goes
        {"C:\\d\\a.b c", "a", "b c", "a.b c", "C:\\d\\", "C:\\d\\a"},     // inner blank
        {"C:\\x.y\\file", "file", "", "file", "C:\\x.y\\", "C:\\x.y\\file"},
        {"C:\\dir\\*", "*", "", "*", "C:\\dir\\", "C:\\dir\\*"},  // wildcards
        {"C:\\dir\\*.*", "*", "*", "*.*", "C:\\dir\\", "C:\\dir\\*"},
        {"C:\\dir\\*.txt", "*", "txt", "*.txt", "C:\\dir\\", "C:\\dir\\*"},
        {"C:\\año\\señal número.niño", "señal número", "niño", "señal número.niño", "C:\\año\\",
         "C:\\año\\señal número"},
        {"..\\x\\€.tž", "€", "tž", "€.tž", "..\\x\\", "..\\x\\€"},
    };
    for (const caso_correcto& c : casos) {
        espera(nombre_base, c.ruta, c.base);
        espera(extension, c.ruta, c.ext);
        espera(nombre_y_ext, c.ruta, c.base + std::string(*c.ext == 0 ? "" : ".") + c.ext);
        espera(tras_barra, c.ruta, c.tras_barra);
        espera(directorio, c.ruta, c.directorio);
        espera(sin_extension, c.ruta, c.sin_ext);
        espera(con_dat, c.ruta, c.sin_ext + std::string(".dat"));
    }
}

TEST(componentes, ignora_los_blancos_finales_donde_comprueba) {
    const std::string ruta = "file.txt   ";
    espera(nombre_base, ruta, "file");
    espera(extension, ruta, "txt");
    espera(nombre_y_ext, ruta, "file.txt");
    espera(sin_extension, ruta, "file");
    espera(con_dat, ruta, "file.dat");
    // These two neither trim nor check.
    espera(tras_barra, "C:\\a\\file.txt   ", "file.txt   ");
    espera(directorio, "C:\\a\\   ", "C:\\a\\");
    espera(directorio, "C:\\a|b\\c?d", "C:\\a|b\\");
    espera(tras_barra, "C:\\a|b\\c?d", "c?d");
    espera(tras_barra, "", "");
    espera(tras_barra, "C:\\a\\", "");
    espera(directorio, "C:\\a\\b\\", "C:\\a\\b\\");
    espera(directorio, "C:\\a\\b/", "C:\\a\\b/");
    espera(directorio, "\\", "\\");
    espera(directorio, "\\a", "\\");
}

TEST(componentes, una_ruta_incorrecta_se_comunica_y_da_sus_piezas) {
    const char* correcto = "pathCorrecto == CIERTO";
    struct caso {
        const char* ruta;
        const char* recortada;
        const char* base;
        const char* ext;
        const char* nombre;
        const char* sin_ext;
    };
    const caso casos[] = {
        {"C:\\d\\name.", "C:\\d\\name.", "name", "", "name.", "C:\\d\\name"},
        {"C:\\d\\a|b.t?t  ", "C:\\d\\a|b.t?t", "a|b", "t?t", "a|b.t?t", "C:\\d\\a|b"},
        {"C:\\d\\a*.txt", "C:\\d\\a*.txt", "a*", "txt", "a*.txt", "C:\\d\\a*"},
        {"1:\\ñ.txt", "1:\\ñ.txt", "ñ", "txt", "ñ.txt", "1:\\ñ"},
        {"C:\\con\\aux", "C:\\con\\aux", "aux", "", "aux", "C:\\con\\aux"},
        {"..", "..", ".", "", "..", "."},
        {"*.*", "*.*", "*", "*", "*.*", "*"},  // without its wildcards it is empty
    };
    for (const caso& c : casos) {
        const std::vector<informe> informes = {dicho(correcto, c.recortada)};
        espera(nombre_base, c.ruta, c.base, informes);
        espera(extension, c.ruta, c.ext, informes);
        espera(nombre_y_ext, c.ruta, c.nombre, informes);
        espera(sin_extension, c.ruta, c.sin_ext, informes);
        espera(con_dat, c.ruta, c.sin_ext + std::string(".dat"), informes);
    }
    ESPERA_AVISOS();
}

TEST(componentes, una_ruta_vacia_o_un_directorio_no_tienen_nombre) {
    const informe incorrecta = dicho("pathCorrecto == CIERTO", "");
    for (const char* ruta : {"", "   "}) {
        espera(nombre_base, ruta, "", {incorrecta});
        espera(extension, ruta, "", {dicho("num_caracteres > 0"), incorrecta});
        espera(nombre_y_ext, ruta, "", {incorrecta});
        espera(sin_extension, ruta, "", {incorrecta});
        espera(con_dat, ruta, ".dat", {incorrecta});
    }
    espera(directorio, "", "", {dicho("num_caracteres > 0", "")});
    espera(directorio, "   ", "");  // blanks are not trimmed here

    espera(nombre_base, "C:\\dir\\", "");
    espera(nombre_y_ext, "C:\\dir\\", "");
    espera(sin_extension, "C:\\dir\\", "C:\\dir\\");
    espera(con_dat, "C:\\dir\\", "C:\\dir\\.dat");
    espera(extension, "C:\\dir\\  ", "", {dicho(R"(path_sin_espacios[num_caracteres - 1] != L'\\')")},
           {dicho(R"(path_sin_espacios[num_caracteres - 1] != '\\')", "C:\\dir\\")});
    espera(extension, "C:\\dir/", "");  // a final "/" is not refused
    // Both reports, in this order.
    espera(extension, "C:\\d|\\", "",
           {dicho(R"(path_sin_espacios[num_caracteres - 1] != L'\\')"),
            dicho("pathCorrecto == CIERTO", "C:\\d|\\")},
           {dicho(R"(path_sin_espacios[num_caracteres - 1] != '\\')", "C:\\d|\\"),
            dicho("pathCorrecto == CIERTO", "C:\\d|\\")});
}

TEST(componentes, un_servidor_sin_recurso) {
    const informe incorrecta = dicho("pathCorrecto == CIERTO", "\\\\srv");
    const informe sin_recurso = dicho("(recurso) != NULL");
    espera(nombre_base, "\\\\srv", "", {incorrecta}, {incorrecta, sin_recurso});
    espera(nombre_y_ext, "\\\\srv", "", {incorrecta}, {incorrecta, sin_recurso});
    espera(extension, "\\\\srv", "", {incorrecta}, {incorrecta, sin_recurso});
    EXPECT_EQ(toma(cdir_ruta_y_nombre_fichero_sin_extension_UNICODE(L"\\\\srv")), "\\\\srv\\");
    EXPECT_EQ(toma(cdir_ruta_y_nombre_fichero_sin_extension("\\\\srv")), "\\\\srv\\");
    ESPERA_INFORMES("pathCorrecto == CIERTO", "pathCorrecto == CIERTO", "(recurso) != NULL");
}

TEST(componentes, null_se_comunica_y_da_texto_vacio) {
    struct caso {
        funcion f;
        const char* informe;
    };
    const caso casos[] = {{nombre_base, "(ruta_completa) != NULL"},  {extension, "ruta_completa != NULL"},
                          {nombre_y_ext, "(nombre) != NULL"},        {tras_barra, "(nombre) != NULL"},
                          {directorio, "ruta_completa != NULL"},     {con_dat, "(nombre) != NULL"},
                          {sin_extension, "(ruta_completa) != NULL"}};
    for (const caso& c : casos) {
        SCOPED_TRACE(c.f.nombre);
        EXPECT_EQ(toma(c.f.ancha(nullptr)), "");
        EXPECT_EQ(toma(c.f.estrecha(nullptr)), "");
        ESPERA_INFORMES(c.informe, c.informe);
    }
}

TEST(componentes, cambia_la_extension) {
    struct caso {
        const char* ruta;
        const char* ext;  // NULL: none
        const char* resultado;
    };
    const caso casos[] = {
        {.ruta = "C:\\a\\b", .ext = ".dat", .resultado = "C:\\a\\b.dat"},
        {.ruta = "C:\\a\\b", .ext = "dat", .resultado = "C:\\a\\b.dat"},
        {.ruta = "C:\\a\\b.txt", .ext = "", .resultado = "C:\\a\\b"},
        {.ruta = "C:\\a\\b.txt", .ext = nullptr, .resultado = "C:\\a\\b"},
        {.ruta = "C:\\a\\b.txt", .ext = ".", .resultado = "C:\\a\\b."},
        {.ruta = "C:\\a\\b.txt", .ext = "..x", .resultado = "C:\\a\\b..x"},
        {.ruta = "C:\\a\\b.txt", .ext = "d t ", .resultado = "C:\\a\\b.d t "},  // taken as it is
        {.ruta = "C:\\a\\b.txt", .ext = "a|?", .resultado = "C:\\a\\b.a|?"},
        {.ruta = "b  .x  ", .ext = "niño", .resultado = "b.niño"},
        {.ruta = "\\\\srv\\r\\b", .ext = "é", .resultado = "\\\\srv\\r\\b.é"},
    };
    for (const caso& c : casos) {
        SCOPED_TRACE(std::string(c.ruta) + " with " + (c.ext == nullptr ? "NULL" : c.ext));
        const texto_w ext_w = w(c.ext == nullptr ? "" : c.ext);
        const texto_a ext_a = cp1252(c.ext == nullptr ? "" : c.ext);
        const wchar_t* ext_u = c.ext == nullptr ? nullptr : ext_w.c_str();
        EXPECT_EQ(toma(cdir_nombre_fichero_con_ext_UNICODE(w(c.ruta).c_str(), ext_u)), c.resultado);
        EXPECT_EQ(toma(cdir_nombre_fichero_con_ext(cp1252(c.ruta).c_str(),
                                                   c.ext == nullptr ? nullptr : ext_a.c_str())),
                  c.resultado);
        wchar_t* variable = cadena_w(w(c.ruta)).suelta();
        cdir_cambia_extension_nombre_fichero_u(&variable, ext_u);
        EXPECT_EQ(toma(variable), c.resultado);
    }
}

TEST(componentes, cambia_la_extension_de_una_variable) {
    cdir_cambia_extension_nombre_fichero_u(nullptr, L"dat");
    ESPERA_INFORMES("(nombre) != NULL");
    wchar_t* variable = nullptr;
    cdir_cambia_extension_nombre_fichero_u(&variable, L"dat");
    EXPECT_EQ(toma(variable), "");  // a string of the caller's, as for any other name
    ESPERA_INFORMES("(nombre) != NULL");

    variable = cadena_w(L"C:\\a\\b.txt").suelta();
    cdir_cambia_extension_nombre_fichero_u(&variable, variable + 6);  // a part of the string that is replaced
    EXPECT_EQ(toma(variable), "C:\\a\\b.txt");
    variable = cadena_w(L"a|b").suelta();
    cdir_cambia_extension_nombre_fichero_u(&variable, L"x");
    EXPECT_EQ(toma(variable), "a|b.x");
    ESPERA_INFORMES("pathCorrecto == CIERTO");
}

namespace {
struct caso_directorio_y_nombre {
    const char* ruta;
    unsigned short con_extension;
    const char* directorio;
    const char* nombre;
    std::vector<std::string> informes;
};

template <class C, class Funcion>
void comprueba_directorio_y_nombre(const caso_directorio_y_nombre& c, Funcion f,
                                   const std::basic_string<C, interno::rasgos<C>>& ruta) {
    SCOPED_TRACE(std::string(c.ruta) + " " + std::to_string(c.con_extension));
    C* dir = nullptr;
    C* nombre = nullptr;
    f(ruta.c_str(), c.con_extension, &dir, &nombre);
    EXPECT_EQ(toma(dir), c.directorio);
    EXPECT_EQ(toma(nombre), c.nombre);
    EXPECT_EQ(toma_expresiones(), c.informes);
    // Each output alone, and none.
    dir = nombre = nullptr;
    f(ruta.c_str(), c.con_extension, &dir, nullptr);
    EXPECT_EQ(toma(dir), c.directorio);
    f(ruta.c_str(), c.con_extension, nullptr, &nombre);
    EXPECT_EQ(toma(nombre), c.nombre);
    EXPECT_EQ(toma_expresiones(), c.informes);
    f(ruta.c_str(), c.con_extension, nullptr, nullptr);
    ESPERA_INFORMES();
}
}  // namespace

TEST(componentes, directorio_y_nombre_juntos) {
    const caso_directorio_y_nombre casos[] = {
        {"C:\\a\\b.txt", 1, "C:\\a\\", "b.txt", {}},
        {"C:\\a\\b.txt", 0, "C:\\a\\", "b", {}},
        {"C:\\a\\b.txt", 2, "C:\\a\\", "b", {}},      // only 1 keeps the extension
        {"C:\\a/b.txt", 1, "C:\\a/", "a/b.txt", {}},  // cut at "\" alone
        {"C:\\a/b.txt", 0, "C:\\a/", "b", {}},
        {"C:\\a\\b.txt  ", 1, "C:\\a\\", "b.txt  ", {}},  // not trimmed
        {"C:\\a\\b.txt  ", 0, "C:\\a\\", "b", {}},
        {"a|b.txt", 1, "", "a|b.txt", {}},
        {"a|b.txt", 0, "", "a|b", {"pathCorrecto == CIERTO"}},
        {"", 1, "", "", {"num_caracteres > 0"}},
        {"", 0, "", "", {"num_caracteres > 0", "pathCorrecto == CIERTO"}},
        {"C:\\añó\\b€.ñ", 1, "C:\\añó\\", "b€.ñ", {}},
    };
    for (const caso_directorio_y_nombre& c : casos) {
        comprueba_directorio_y_nombre<wchar_t>(c, lumodir_directorio_y_nombre_base_fichero_UNICODE,
                                               w(c.ruta));
        comprueba_directorio_y_nombre<char>(c, lumodir_directorio_y_nombre_base_fichero, cp1252(c.ruta));
    }
}

TEST(componentes, una_unidad_sola) {
    for (const wchar_t* ruta : {L"C:", L"z:"}) {
        EXPECT_TRUE(es_unidad_sola(ruta)) << u8(ruta);
    }
    for (const wchar_t* ruta :
         {L"", L"C", L":", L"::", L"1:", L"C;", L"C:\\", L"C:a", L"CC:", L"\x00F1:", L"@:"}) {
        EXPECT_FALSE(es_unidad_sola(ruta)) << u8(ruta);
    }
    EXPECT_FALSE(es_unidad_sola(vista_w(L"C:", 1)));
}

TEST(componentes, directorio_y_nombre_de_null) {
    for (unsigned short con_extension = 0; con_extension < 2; ++con_extension) {
        wchar_t* dir = nullptr;
        wchar_t* nombre = nullptr;
        lumodir_directorio_y_nombre_base_fichero_UNICODE(nullptr, con_extension, &dir, &nombre);
        EXPECT_EQ(toma(dir), "");
        EXPECT_EQ(toma(nombre), "");
        char* dir_a = nullptr;
        char* nombre_a = nullptr;
        lumodir_directorio_y_nombre_base_fichero(nullptr, con_extension, &dir_a, &nombre_a);
        EXPECT_EQ(toma(dir_a), "");
        EXPECT_EQ(toma(nombre_a), "");
        lumodir_directorio_y_nombre_base_fichero_UNICODE(nullptr, con_extension, nullptr, nullptr);
        lumodir_directorio_y_nombre_base_fichero(nullptr, con_extension, nullptr, nullptr);
        EXPECT_EQ(toma_expresiones(), std::vector<std::string>(4, "(ruta_completa) != NULL"));
    }
}

TEST(componentes, suprime_una_barra_final) {
    struct caso {
        const char* texto;
        const char* resultado;
    };
    for (const caso& c : {caso{"C:\\dir\\", "C:\\dir"}, caso{"C:\\dir/", "C:\\dir/"}, caso{"C:\\\\", "C:\\"},
                          caso{"\\", ""}, caso{"", ""}, caso{"ñ", "ñ"}, caso{"a\\ ", "a\\ "}}) {
        wchar_t* variable = cadena_w(w(c.texto)).suelta();
        const wchar_t* antes = variable;
        lumodir_suprime_barra_final_si_hay(&variable);
        EXPECT_EQ(variable, antes) << "in place";
        EXPECT_EQ(toma(variable), c.resultado) << c.texto;
        cadena_w propia(w(c.texto));
        interno::i_suprime_barra_final_si_hay(propia);
        EXPECT_EQ(u8(propia.ver()), c.resultado) << c.texto;
        EXPECT_EQ(u8(propia.c_str()), c.resultado) << c.texto;
    }
    lumodir_suprime_barra_final_si_hay(nullptr);
    wchar_t* nula = nullptr;
    lumodir_suprime_barra_final_si_hay(&nula);
    EXPECT_EQ(nula, nullptr);
    ESPERA_INFORMES("(directorio) != NULL", "(directorio) != NULL");
}

TEST(componentes, textos_largos_y_sustitutos_sueltos) {
    for (const std::size_t largo : {std::size_t{1}, std::size_t{32767}, std::size_t{100000}}) {
        const texto_w nombre(largo, L'n');
        const texto_w ruta = L"C:\\" + texto_w(largo, L'd') + L"\\" + nombre + L".txt";
        EXPECT_EQ(toma(cdir_nombre_base_fichero_UNICODE(ruta.c_str())), u8(vista_w(nombre)));
        EXPECT_EQ(toma(cdir_extension_fichero_UNICODE(ruta.c_str())), "txt");
        EXPECT_EQ(toma(cdir_ruta_y_nombre_fichero_sin_extension_UNICODE(ruta.c_str())),
                  u8(vista_w(ruta).substr(0, ruta.size() - 4)));
        EXPECT_EQ(toma(cdir_nombre_de_fichero_suprimiendo_path_UNICODE(ruta.c_str())), u8(nombre + L".txt"));
        EXPECT_EQ(toma(cdir_ruta_acceso_directorio_fichero_UNICODE(ruta.c_str())),
                  u8(vista_w(ruta).substr(0, largo + 4)));
        const texto_a ruta_a = "C:\\d\\" + texto_a(largo, 'n') + ".txt";
        EXPECT_EQ(toma(cdir_nombre_base_fichero(ruta_a.c_str())), texto_a(largo, 'n'));
        EXPECT_EQ(toma(cdir_nombre_y_ext_fichero(ruta_a.c_str())), texto_a(largo, 'n') + ".txt");
        EXPECT_EQ(toma(cdir_nombre_de_fichero_suprimiendo_path(ruta_a.c_str())),
                  texto_a(largo, 'n') + ".txt");
        const std::vector<std::string> informes = toma_expresiones();
        EXPECT_EQ(informes, std::vector<std::string>(largo == 1 ? 0 : 5, "pathCorrecto == CIERTO"));
    }
    const wchar_t sueltos[] = {0xD800, L'\\', 0xDC00, L'.', 0xDBFF, L'x', 0};
    EXPECT_EQ(cadena_w::adopta(cdir_nombre_base_fichero_UNICODE(sueltos)).ver(), vista_w(sueltos + 2, 1));
    EXPECT_EQ(cadena_w::adopta(cdir_extension_fichero_UNICODE(sueltos)).ver(), vista_w(sueltos + 4, 2));
}

TEST(componentes, cada_byte_pasa_por_la_forma_de_8_bits) {
    for (int b = 1; b < 256; ++b) {
        const auto c = static_cast<char>(b);
        const texto_a nombre = {'a', c, 'b'};
        const texto_a ruta = "C:\\" + nombre + ".t" + c;
        const bool separador = c == '\\' || c == '/';
        interno::cadena_a base = interno::cadena_a::adopta(cdir_nombre_y_ext_fichero(ruta.c_str()));
        const texto_a entero = nombre + ".t" + c;
        EXPECT_EQ(texto_a(base.ver()), separador ? "" : c == ' ' ? "a b.t" : entero) << b;
        toma_informes();
    }
}

// Every short text, against a model that follows the rules word by word.
namespace {

// Every function of one flavour against the model.
template <class C>
void compara_funciones(const std::string& ruta) {
    using T = modelos::texto<C>;
    constexpr bool ancha = sizeof(C) > 1;
    T texto;
    if constexpr (ancha) {
        texto = w(ruta);
    } else {
        texto = ruta;
    }
    const modelos::corte<T> c = modelos::corta_con_comodines(texto);
    const auto espera_de = [&](const funcion& f, const T& resultado,
                               const std::vector<std::string>& informes) {
        T dado;
        if constexpr (ancha) {
            dado = cadena_w::adopta(f.ancha(texto.c_str())).ver();
        } else {
            dado = interno::cadena_a::adopta(f.estrecha(texto.c_str())).ver();
        }
        const std::vector<std::string> comunicado = toma_expresiones();
        if (dado != resultado || comunicado != informes) {
            ADD_FAILURE() << (ancha ? "wide " : "8-bit ") << f.nombre << " of '" << ruta << "'; reports "
                          << testing::PrintToString(comunicado) << ", not "
                          << testing::PrintToString(informes);
        }
    };
    toma_informes();
    espera_de(nombre_base, c.p.nombre, c.informes);
    espera_de(nombre_y_ext, c.p.nombre + c.p.extension, c.informes);
    espera_de(sin_extension, modelos::con_extension(c.p, T()), c.informes);
    espera_de(con_dat, modelos::con_extension(c.p, modelos::literal<T>("dat")), c.informes);
    espera_de(extension, modelos::extension_sin_punto(c.p),
              modelos::informes_de_extension(texto, c.informes));
    espera_de(directorio, modelos::directorio_de(texto),
              std::vector<std::string>(ruta.empty() ? 1 : 0, "num_caracteres > 0"));
    espera_de(tras_barra, modelos::tras_ultima_barra(texto), {});
}

}  // namespace

TEST(componentes, cada_texto_corto_como_el_modelo) {
    const std::size_t longitud = modelos::longitud_exhaustiva - 1;
    modelos::para_cada_texto(modelos::alfabeto, longitud, [](const std::string& ruta) {
        compara_funciones<wchar_t>(ruta);
        compara_funciones<char>(ruta);
    });
    // Shares need more room than that.
    modelos::para_cada_texto("a.\\/", modelos::longitud_exhaustiva, [](const std::string& resto) {
        compara_funciones<wchar_t>("\\\\s" + resto);
        compara_funciones<char>("\\\\s" + resto);
    });
}
