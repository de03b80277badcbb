// Joins, relative and absolute paths and the directories of PATH: row by row, and against naive models over
// every pair of short strings.
#include "paths/rutas.hpp"

#include <cstdlib>

#include "apoyo/apoyo.hpp"
#include "cdir.h"
#include "companions/lumospy.h"
#include "lumodir.h"
#include "modelos/rutas.hpp"
#include "paths/modelos.hpp"
#include "paths/path_correcto.hpp"
#include "paths/split_makepath.hpp"

using modelos::incorrecto;
using modelos::textos_cortos;
using namespace apoyo;
using interno::cadena_a;
using interno::cadena_w;
using interno::vista_w;

namespace {

std::string une_w(const std::string& a, const std::string& b) {
    return toma(cdir_concatena_directorios_UNICODE(w(a).c_str(), w(b).c_str()));
}
std::string une_a(const std::string& a, const std::string& b) {
    return toma(cdir_concatena_directorios(cp1252(a).c_str(), cp1252(b).c_str()));
}
std::string construye_w(const std::string& a, const std::string& b, const std::string& nombre) {
    return toma(cdir_construye_path_UNICODE(w(a).c_str(), w(b).c_str(), w(nombre).c_str()));
}
std::string construye_a(const std::string& a, const std::string& b, const std::string& nombre) {
    return toma(cdir_construye_path(cp1252(a).c_str(), cp1252(b).c_str(), cp1252(nombre).c_str()));
}
unsigned short absoluta(const std::string& ruta) {
    return lumodir_ruta_es_absoluta(w(ruta).c_str());
}
std::string a_relativa(const std::string& base, const std::string& ruta) {
    return toma(lumodir_ruta_absoluta_a_relativa(w(base).c_str(), w(ruta).c_str()));
}
std::string a_absoluta(const std::string& base, const std::string& ruta) {
    return toma(lumodir_ruta_relativa_a_absoluta(w(base).c_str(), w(ruta).c_str()));
}

}  // namespace

TEST(rutas, concatena_con_un_separador) {
    struct caso {
        const char* a;
        const char* b;
        const char* resultado;
    };
    const caso casos[] = {
        {.a = "C:\\a", .b = "b", .resultado = "C:\\a\\b"},
        {.a = "C:\\a\\", .b = "b", .resultado = "C:\\a\\b"},
        {.a = "C:\\a", .b = "\\b", .resultado = "C:\\a\\b"},
        {.a = "C:\\a", .b = "/b", .resultado = "C:\\a\\b"},
        {.a = "C:\\a/", .b = "b", .resultado = "C:\\a/b"},
        {.a = "C:\\a/", .b = "\\b", .resultado = "C:\\a/b"},
        {.a = "C:\\a", .b = "//b", .resultado = "C:\\a\\/b"},       // only one goes
        {.a = "C:\\a\\", .b = "\\\\b", .resultado = "C:\\a\\\\b"},  // only one goes
        {.a = "C:\\a\\\\", .b = "b", .resultado = "C:\\a\\\\b"},    // none is taken from the first
        {.a = "", .b = "b", .resultado = "\\b"},
        {.a = "", .b = "", .resultado = "\\"},
        {.a = "", .b = "\\", .resultado = "\\"},
        {.a = "a", .b = "", .resultado = "a\\"},
        {.a = "a", .b = "b\\", .resultado = "a\\b\\"},      // a trailing separator stays
        {.a = " a ", .b = " b ", .resultado = " a \\ b "},  // blanks stay
        {.a = "C:", .b = "x", .resultado = "C:\\x"},
        {.a = "a\\\\b", .b = "c//d", .resultado = "a\\\\b\\c//d"},
        {.a = "a|?", .b = "*<%s%d>", .resultado = "a|?\\*<%s%d>"},  // nothing is checked or formatted
        {.a = "C:\\Áéñ€", .b = "ž.ÿ", .resultado = "C:\\Áéñ€\\ž.ÿ"},
    };
    for (const caso& c : casos) {
        SCOPED_TRACE(std::string("'") + c.a + "' and '" + c.b + "'");
        EXPECT_EQ(une_w(c.a, c.b), c.resultado);
        EXPECT_EQ(une_a(c.a, c.b), c.resultado);
    }
    // Beyond the code page, and half a pair.
    EXPECT_EQ(une_w("C:\\日本", "文\xED\xA0\x80"), "C:\\日本\\文\xED\xA0\x80");
}

TEST(rutas, construye_un_path) {
    struct caso {
        const char* a;
        const char* b;
        const char* nombre;
        const char* ancho;
        const char* estrecho;
    };
    const caso casos[] = {
        {.a = "C:\\a", .b = "b", .nombre = "f.t", .ancho = "C:\\a\\b\\f.t", .estrecho = "C:\\a\\b\\f.t"},
        // The flavours differ in the leading separator of the name.
        {.a = "C:\\a",
         .b = "b",
         .nombre = "\\f.txt",
         .ancho = "C:\\a\\b\\f.txt",
         .estrecho = "C:\\a\\b\\\\f.txt"},
        {.a = "C:\\a", .b = "b", .nombre = "/f", .ancho = "C:\\a\\b\\f", .estrecho = "C:\\a\\b\\/f"},
        {.a = "C:\\a", .b = "b", .nombre = "\\\\f", .ancho = "C:\\a\\b\\\\f", .estrecho = "C:\\a\\b\\\\\\f"},
        {.a = "C:\\a\\", .b = "\\b\\", .nombre = "f", .ancho = "C:\\a\\b\\f", .estrecho = "C:\\a\\b\\f"},
        {.a = "C:/a/", .b = "/b/", .nombre = "f", .ancho = "C:/a/b/f", .estrecho = "C:/a/b/f"},
        {.a = "", .b = "", .nombre = "", .ancho = "\\", .estrecho = "\\"},
        {.a = "", .b = "", .nombre = "f", .ancho = "\\f", .estrecho = "\\f"},
        {.a = "a", .b = "", .nombre = "f", .ancho = "a\\f", .estrecho = "a\\f"},
        {.a = "a", .b = "\\", .nombre = "f", .ancho = "a\\f", .estrecho = "a\\f"},
        {.a = "ñ", .b = "é", .nombre = "€.ú", .ancho = "ñ\\é\\€.ú", .estrecho = "ñ\\é\\€.ú"},
    };
    for (const caso& c : casos) {
        SCOPED_TRACE(std::string("'") + c.a + "', '" + c.b + "' and '" + c.nombre + "'");
        EXPECT_EQ(construye_w(c.a, c.b, c.nombre), c.ancho);
        EXPECT_EQ(construye_a(c.a, c.b, c.nombre), c.estrecho);
    }
}

TEST(rutas, une_como_el_modelo_con_cada_par_de_textos_cortos) {
    const std::vector<std::string> textos = textos_cortos("a\\/ ", 3);
    for (const std::string& a : textos) {
        for (const std::string& b : textos) {
            ASSERT_EQ(une_w(a, b), modelos::une(a, b)) << "'" << a << "' and '" << b << "'";
            ASSERT_EQ(une_a(a, b), modelos::une(a, b)) << "'" << a << "' and '" << b << "'";
        }
    }
    const std::vector<std::string> muy_cortos = textos_cortos("a\\/", 2);
    for (const std::string& a : muy_cortos) {
        for (const std::string& b : muy_cortos) {
            for (const std::string& nombre : muy_cortos) {
                SCOPED_TRACE("'" + a + "', '" + b + "' and '" + nombre + "'");
                ASSERT_EQ(construye_w(a, b, nombre), modelos::une(modelos::une(a, b), nombre));
                ASSERT_EQ(construye_a(a, b, nombre), modelos::construye(a, b, nombre));
            }
        }
    }
}

TEST(rutas, unir_cuesta_un_solo_bloque) {
    const reservas_contadas reservas;
    const cadena_w dos = interno::i_concatena_directorios<wchar_t>(L"C:\\a", L"b");
    EXPECT_EQ(reservas.toma(), 1u);
    const cadena_a tres = interno::i_construye_path<char>("C:\\a", "b", "c");
    EXPECT_EQ(reservas.toma(), 1u);
    EXPECT_EQ(u8(dos.ver()), "C:\\a\\b");
    EXPECT_EQ(texto_a(tres.ver()), "C:\\a\\b\\c");
    // A view without data counts as empty inside the library.
    EXPECT_EQ(u8(interno::i_concatena_directorios<wchar_t>(vista_w(), vista_w()).ver()), "\\");
}

TEST(rutas, une_textos_de_cualquier_longitud_y_cada_byte) {
    const std::size_t longitudes[] = {0, 1, 32767, 100000};
    for (const std::size_t largo : longitudes) {
        const texto_w a(largo, L'ñ');
        const texto_w b(largo, wchar_t{0xDC00});
        EXPECT_EQ(toma(cdir_concatena_directorios_UNICODE(a.c_str(), b.c_str())), u8(a + L"\\" + b));
        const texto_a a8(largo, '\xF1');
        const cadena_a tres = cadena_a::adopta(cdir_construye_path(a8.c_str(), a8.c_str(), a8.c_str()));
        EXPECT_EQ(texto_a(tres.ver()), a8 + "\\" + a8 + (largo == 0 ? "" : "\\") + a8);
    }
    for (int byte = 1; byte < 256; ++byte) {
        const texto_a texto = {'x', static_cast<char>(byte), 'x'};
        const cadena_a dos = cadena_a::adopta(cdir_concatena_directorios(texto.c_str(), texto.c_str()));
        EXPECT_EQ(texto_a(dos.ver()), texto + "\\" + texto);
    }
}

TEST(rutas, unir_null_se_comunica_y_da_texto_vacio) {
    const char* directorio = "(directorio) != NULL";
    EXPECT_EQ(toma(cdir_concatena_directorios_UNICODE(nullptr, L"b")), "");
    EXPECT_EQ(toma(cdir_concatena_directorios_UNICODE(L"a", nullptr)), "");
    EXPECT_EQ(toma(cdir_concatena_directorios(nullptr, "b")), "");
    EXPECT_EQ(toma(cdir_concatena_directorios("a", nullptr)), "");
    ESPERA_INFORMES(directorio, directorio, directorio, directorio);
    EXPECT_EQ(toma(cdir_concatena_directorios_UNICODE(nullptr, nullptr)), "");
    ESPERA_INFORMES(directorio, directorio);
    EXPECT_EQ(toma(cdir_construye_path_UNICODE(nullptr, L"b", L"c")), "");
    EXPECT_EQ(toma(cdir_construye_path_UNICODE(L"a", nullptr, L"c")), "");
    EXPECT_EQ(toma(cdir_construye_path_UNICODE(L"a", L"b", nullptr)), "");
    ESPERA_INFORMES(directorio, directorio, "(nombre) != NULL");
    EXPECT_EQ(toma(cdir_construye_path(nullptr, "b", "c")), "");
    EXPECT_EQ(toma(cdir_construye_path("a", nullptr, "c")), "");
    EXPECT_EQ(toma(cdir_construye_path("a", "b", nullptr)), "");
    const std::vector<informe> informes = toma_informes();
    ASSERT_EQ(informes.size(), 3u);
    EXPECT_EQ(informes[2].expresion, "(nombre) != NULL");
    EXPECT_EQ(informes[2].etiqueta, "lumodir (LUMODIR.DLL)");
}

TEST(rutas, dice_si_una_ruta_es_absoluta) {
    struct caso {
        const char* ruta;
        unsigned short es;
        bool avisa;
    };
    const caso casos[] = {
        {.ruta = "C:\\x", .es = 1, .avisa = false},
        {.ruta = "C:x", .es = 1, .avisa = false},
        {.ruta = "C:", .es = 1, .avisa = false},
        {.ruta = "\\x", .es = 1, .avisa = false},
        {.ruta = "\\", .es = 1, .avisa = false},
        {.ruta = "\\\\srv\\share\\x", .es = 1, .avisa = false},
        {.ruta = "\\\\srv", .es = 1, .avisa = true},
        {.ruta = "x\\y", .es = 0, .avisa = false},
        {.ruta = "/x", .es = 0, .avisa = false},
        {.ruta = "//srv/x", .es = 0, .avisa = false},
        {.ruta = "..\\x", .es = 0, .avisa = false},
        {.ruta = "", .es = 0, .avisa = true},
        {.ruta = "ñ?", .es = 0, .avisa = true},
        {.ruta = "1:\\x", .es = 1, .avisa = true},  // the pieces of a wrong path decide all the same
        {.ruta = " :x", .es = 1, .avisa = true},
        {.ruta = "a:b:c", .es = 1, .avisa = true},
        {.ruta = " \\x", .es = 0, .avisa = true},  // leading blanks count
    };
    for (const caso& c : casos) {
        EXPECT_EQ(absoluta(c.ruta), c.es) << c.ruta;
        EXPECT_EQ(toma_avisos(), std::vector<std::string>(c.avisa ? 1 : 0, incorrecto(c.ruta))) << c.ruta;
    }
    EXPECT_EQ(absoluta("x?  "), 0);
    ESPERA_AVISOS(incorrecto("x?"));  // shown without its trailing blanks
    EXPECT_EQ(lumodir_ruta_es_absoluta(nullptr), 0);
    ESPERA_INFORMES("(ruta) != NULL");
    EXPECT_EQ(absoluta("\\\\\\"), 1);
    ESPERA_INFORMES("maquina!=NULL");  // reported where the path is split
    ESPERA_AVISOS(incorrecto("\\\\\\"));
}

TEST(rutas, hace_relativa_una_ruta) {
    struct caso {
        const char* base;
        const char* ruta;
        const char* resultado;
        std::vector<std::string> avisos;
    };
    const caso casos[] = {
        {"C:\\proj", "C:\\proj\\src\\a.c", "src\\a.c", {}},
        {"C:\\Proj", "C:\\proj\\src\\a.c", "C:\\proj\\src\\a.c", {}},  // letter case counts
        {"D:\\proj", "C:\\proj\\src\\a.c", "C:\\proj\\src\\a.c", {}},
        {"", "C:\\proj\\src\\a.c", "C:\\proj\\src\\a.c", {}},
        {"  ", "C:\\x?", "C:\\x?", {}},  // answered before the path is looked at
        {"C:\\x?", "", "", {}},
        {"C:\\x?", "  ", "  ", {}},
        {"C:\\proj\\", "C:\\proj\\a", "a", {}},
        {"C:\\proj", "C:\\proj\\\\a", "\\a", {}},  // one leading "\" goes
        {"C:\\proj", "C:\\proj/a", "/a", {}},      // and no "/"
        {"C:\\proj", "C:\\proj", "", {}},
        {"C:\\dir", "C:\\directory\\f.txt", "ectory\\f.txt", {}},  // plain text, on purpose
        {"C:\\proj", "\\proj\\src\\a.c", "src\\a.c", {}},  // a path without a drive: the base loses its own
        {"C:proj", "proj\\a", "a", {}},
        {"C:", "\\x\\y", "x\\y", {}},
        {"C:", "x", "x", {}},
        {"C:", "C:\\x", "x", {}},
        {"\\proj", "C:\\proj\\a", "C:\\proj\\a", {}},
        {"\\\\srv\\r\\proj", "\\\\srv\\r\\proj\\a", "a", {}},
        {"\\\\srv\\r\\proj", "\\proj\\a", "a", {}},  // the drive of a share goes too
        {"C:\\a\\..", "C:\\a\\..\\b", "b", {}},
        {"C:\\proj ", "C:\\proj\\a", "C:\\proj\\a", {}},  // blanks of the base are part of the prefix
        {"C:\\proj", "C:\\proj\\a.", "a.", {}},           // the final point is left out of the check only
        {"C:\\proj", "C:\\proj\\a..", "a..", {incorrecto("C:\\proj\\a.")}},
        {"C:\\proj", ".", ".", {incorrecto("")}},
        {"C:\\p?", "C:\\p?\\x", "x", {incorrecto("C:\\p?"), incorrecto("C:\\p?\\x")}},  // base first
        {"1:\\p", "\\p\\x", "x", {incorrecto("1:\\p")}},
        {"C:\\año", "C:\\año\\niño €", "niño €", {}},
    };
    for (const caso& c : casos) {
        SCOPED_TRACE(std::string("base '") + c.base + "', path '" + c.ruta + "'");
        EXPECT_EQ(a_relativa(c.base, c.ruta), c.resultado);
        EXPECT_EQ(toma_avisos(), c.avisos);
    }
}

TEST(rutas, hace_absoluta_una_ruta) {
    struct caso {
        const char* base;
        const char* ruta;
        const char* resultado;
        std::vector<std::string> avisos;
    };
    const caso casos[] = {
        {"C:\\a\\b", "..\\c", "C:\\a\\b\\..\\c", {}},
        {"C:\\a\\b", ".\\c", "C:\\a\\b\\c", {}},
        {"C:\\a\\b", ".\\.\\c", "C:\\a\\b\\.\\c", {}},
        {"C:\\a\\b", "./c", "C:\\a\\b\\./c", {}},
        {"C:\\a\\b", "c", "C:\\a\\b\\c", {}},
        {"C:\\a\\b\\", "c", "C:\\a\\b\\c", {}},
        {"C:\\a/", "c", "C:\\a/\\c", {}},  // a final "/" does not count
        {"C:\\proj", "D:\\x", "D:\\x", {}},
        {"C:\\proj", "D:x", "D:x", {}},
        {"C:\\proj", "\\x", "\\x", {}},
        {"C:\\proj", "\\\\srv\\r\\x", "\\\\srv\\r\\x", {}},
        {"C:\\proj", "/x", "C:\\proj\\/x", {}},
        {"C:\\proj", "", "", {}},
        {"C:\\proj", "   ", "   ", {}},
        {"", "x?", "x?", {}},  // a blank base is answered first
        {"  ", "x", "x", {}},
        {"rel", "x", "rel\\x", {}},
        {"C:\\p?", "x", "C:\\p?\\x", {}},  // the base is not checked
        {"C:\\p", "x?  ", "C:\\p\\x?  ", {incorrecto("x?")}},
        {"C:\\p ", " x", "C:\\p \\ x", {}},
        {"C:\\p", ".", "C:\\p\\.", {incorrecto(".")}},
        {"C:\\p", ".\\", "C:\\p\\", {}},
        {"C:\\año", "niño €", "C:\\año\\niño €", {}},
    };
    for (const caso& c : casos) {
        SCOPED_TRACE(std::string("base '") + c.base + "', path '" + c.ruta + "'");
        EXPECT_EQ(a_absoluta(c.base, c.ruta), c.resultado);
        EXPECT_EQ(toma_avisos(), c.avisos);
    }
}

TEST(rutas, convierte_como_el_modelo_con_cada_par_de_textos_cortos) {
    std::vector<std::string> textos = textos_cortos("aA.\\/: ", 3);
    for (const char* mas :
         {"C:\\a", "C:\\a\\", "C:\\a\\a", "C:a", "\\\\s\\r", "\\\\s\\r\\a", "\\\\s\\r\\a\\a", "\\\\s/r\\a",
          "\\\\s", "\\\\\\", "C:\\a.", "C:\\a\\.", "\\a\\a", "a\\a\\", ".\\a\\a"}) {
        textos.push_back(mas);
    }
    // What is told to the host counts as a part of the answer.
    std::vector<texto_w> anchos;
    for (const std::string& texto : textos) {
        anchos.push_back(w(texto));
    }
    const auto espera = [](const std::string& resultado, const texto_w& esperado, const modelos::dicho& d) {
        EXPECT_EQ(resultado, u8(vista_w(esperado)));
        EXPECT_EQ(toma_avisos(), d.avisos);
        EXPECT_EQ(toma_expresiones(), d.informes);
    };
    for (std::size_t b = 0; b < textos.size(); ++b) {
        for (std::size_t r = 0; r < textos.size(); ++r) {
            modelos::dicho d;
            const texto_w relativa = modelos::relativa(anchos[b], anchos[r], d);
            espera(a_relativa(textos[b], textos[r]), relativa, d);
            d = {};
            const texto_w puesta = modelos::absoluta(anchos[b], anchos[r], d);
            espera(a_absoluta(textos[b], textos[r]), puesta, d);
            ASSERT_FALSE(HasFailure()) << "base '" << textos[b] << "', path '" << textos[r] << "'";
        }
    }
}

TEST(rutas, cada_texto_corto_solo_y_bajo_cada_base_como_el_modelo) {
    const auto con_lo_dicho = [](const modelos::dicho& d) {
        EXPECT_EQ(toma_avisos(), d.avisos);
        EXPECT_EQ(toma_expresiones(), d.informes);
    };
    modelos::para_cada_texto(modelos::alfabeto, modelos::longitud_exhaustiva - 1,
                             [&](const std::string& ruta) {
                                 SCOPED_TRACE("'" + ruta + "'");
                                 modelos::dicho d;
                                 EXPECT_EQ(absoluta(ruta), modelos::es_absoluta(w(ruta), d) ? 1 : 0);
                                 con_lo_dicho(d);
                             });
    for (const std::string base : {"C:\\a", "C:", "\\\\s\\r", "a/"}) {
        modelos::para_cada_texto(modelos::alfabeto, modelos::longitud_exhaustiva - 2,
                                 [&](const std::string& texto) {
                                     for (const std::string& ruta : {texto, base + texto}) {
                                         SCOPED_TRACE("'" + base + "', '" + ruta + "'");
                                         modelos::dicho d;
                                         const texto_w relativa = modelos::relativa(w(base), w(ruta), d);
                                         EXPECT_EQ(a_relativa(base, ruta), u8(vista_w(relativa)));
                                         con_lo_dicho(d);
                                         d = {};
                                         const texto_w puesta = modelos::absoluta(w(base), w(ruta), d);
                                         EXPECT_EQ(a_absoluta(base, ruta), u8(vista_w(puesta)));
                                         con_lo_dicho(d);
                                     }
                                 });
    }
}

TEST(rutas, ida_y_vuelta_de_una_ruta_bajo_su_base) {
    for (const char* base : {"C:\\a", "C:\\a\\", "\\\\srv\\r\\d", "C:\\ñ\\€"}) {
        for (const char* dentro : {"x", "x\\y.z", "..\\x", "ñ\\€"}) {
            EXPECT_EQ(a_relativa(base, a_absoluta(base, dentro)), dentro) << base << " " << dentro;
        }
    }
}

TEST(rutas, conversiones_de_null_y_de_textos_largos) {
    EXPECT_EQ(toma(lumodir_ruta_absoluta_a_relativa(nullptr, L"a")), "");
    EXPECT_EQ(toma(lumodir_ruta_absoluta_a_relativa(L"a", nullptr)), "");
    EXPECT_EQ(toma(lumodir_ruta_relativa_a_absoluta(nullptr, L"a")), "");
    EXPECT_EQ(toma(lumodir_ruta_relativa_a_absoluta(L"a", nullptr)), "");
    ESPERA_INFORMES("(base) != NULL", "(ruta) != NULL", "(base) != NULL", "(ruta) != NULL");

    for (const std::size_t largo : {std::size_t{32767}, std::size_t{100000}}) {
        const texto_w base = L"C:\\" + texto_w(largo, wchar_t{0xD800});
        const texto_w ruta = base + L"\\" + texto_w(largo, L'x');
        EXPECT_EQ(toma(lumodir_ruta_absoluta_a_relativa(base.c_str(), ruta.c_str())),
                  std::string(largo, 'x'));
        EXPECT_EQ(toma_avisos().size(), 2u);
        EXPECT_EQ(toma(lumodir_ruta_relativa_a_absoluta(base.c_str(), texto_w(largo, L'x').c_str())),
                  u8(vista_w(ruta)));
        EXPECT_EQ(toma_avisos().size(), 1u);
    }
}

namespace {

// PATH for the time of one test; NULL takes it away.
class path_del_entorno {
public:
    path_del_entorno() {
        const char* valor = std::getenv("PATH");
        habia_ = valor != nullptr;
        antes_ = habia_ ? valor : "";
    }
    ~path_del_entorno() { pon(habia_ ? antes_.c_str() : nullptr); }
    void pon(const char* valor) {
#ifdef _WIN32
        _putenv_s("PATH", valor == nullptr ? "" : valor);
#else
        if (valor == nullptr) {
            unsetenv("PATH");
        } else {
            setenv("PATH", valor, 1);
        }
#endif
    }

private:
    bool habia_;
    std::string antes_;
};

std::vector<std::string> directorios_del_path() {
    ArrCADENA_u* lista = lumodir_directorios_del_path();
    std::vector<std::string> textos;
    for (unsigned long i = 0; i < arr_NumElemsCADENA_u(lista); ++i) {
        textos.push_back(u8(arr_GetCADENA_u(lista, i)));
    }
    arr_DestruyeCADENA_u(&lista);
    return textos;
}

}  // namespace

TEST(rutas, da_los_directorios_del_path) {
    path_del_entorno path;
    struct caso {
        const char* valor;
        std::vector<std::string> directorios;
    };
    const caso casos[] = {
        {nullptr, {}},
        {"a;;b", {"a", "b"}},
        {" a ;b", {"a", "b"}},
        {"C:\\a; ;C:\\b", {"C:\\a", "", "C:\\b"}},  // a blank piece is not an empty one
        {";", {}},
        {";;a;", {"a"}},
        {"a", {"a"}},
        {" ", {""}},
        {"b;a;b;A", {"b", "a", "b", "A"}},                      // order and repeats stay
        {"\"C:\\x y\"; C:\\ñ é ", {"\"C:\\x y\"", "C:\\ñ é"}},  // quotes stay
        {"\ta\t;b", {"\ta\t", "b"}},                            // only the space is a blank
    };
    for (const caso& c : casos) {
        SCOPED_TRACE(c.valor == nullptr ? "(unset)" : c.valor);
        path.pon(c.valor == nullptr ? nullptr : cp1252(c.valor).c_str());
        EXPECT_EQ(directorios_del_path(), c.directorios);
    }
}

TEST(rutas, el_path_como_el_modelo_con_cada_texto_corto) {
    path_del_entorno path;
    for (const std::string& valor : textos_cortos("a; ", 6)) {
        path.pon(valor.empty() ? nullptr : valor.c_str());
        const std::vector<std::string> esperados = modelos::directorios_del_path(valor);
        ASSERT_EQ(directorios_del_path(), esperados) << "'" << valor << "'";
    }
}
