// Removing a directory and its ancestors while they are empty.
#include "apoyo/borrados_vistos.hpp"
#include "apoyo/directorio.hpp"
#include "apoyo/fallos.hpp"
#include "apoyo/formas_de_borrar.hpp"
#include "apoyo/volumen_falso.hpp"
#include "lumodir.h"

using namespace apoyo;

namespace {

using lista = std::vector<std::string>;

const std::string mas_corto = "widestr_longitud(dir) > widestr_longitud(path_base)";

void sube(bool ancha, const std::string& directorio, const std::string* base) {
    const std::string texto = base == nullptr ? "(NULL)" : *base;
    if (ancha) {
        llama(lumodir_borra_directorios_de_path_si_estan_vacios_UNICODE, directorio, texto);
    } else {
        llama(lumodir_borra_directorios_de_path_si_estan_vacios, directorio, texto);
    }
}

struct limpieza {
    const char* nombre;
    std::string directorio;  // below the temporary directory
    std::string base;
    lista queda;
};

const limpieza limpiezas[] = {
    {.nombre = "up to the base", .directorio = "a\\b\\c", .base = "a", .queda = {"a\\", "z"}},
    {.nombre = "final separators do not matter",
     .directorio = "a\\b\\c\\",
     .base = "a\\",
     .queda = {"a\\", "z"}},
    {.nombre = "nor only on one of the two", .directorio = "a\\b\\c", .base = "a\\", .queda = {"a\\", "z"}},
    {.nombre = "nor does letter case", .directorio = "a\\b\\c", .base = "A", .queda = {"a\\", "z"}},
    {.nombre = "nor does that of the levels", .directorio = "A\\B\\c", .base = "a", .queda = {"a\\", "z"}},
    {.nombre = "the base itself stays",
     .directorio = "a",
     .base = "a\\",
     .queda = {"a\\", "a\\b\\", "a\\b\\c\\", "z"}},
    {.nombre = "a missing level is passed over",
     .directorio = "a\\b\\c\\no\\tampoco",
     .base = "a",
     .queda = {"a\\", "z"}},
    {.nombre = "a slash before the last levels", .directorio = "a/b\\c", .base = "a", .queda = {"a\\", "z"}},
    {.nombre = "a doubled separator", .directorio = "a\\\\b\\c", .base = "a", .queda = {"a\\", "z"}},
    {.nombre = "a base with a slash", .directorio = "a/b\\c", .base = "a/", .queda = {"a\\", "z"}},
    {.nombre = "a point is no level", .directorio = "a\\.\\b\\c", .base = "a", .queda = {"a\\", "z"}},
    {.nombre = "nor is it between levels", .directorio = "a\\b\\.\\c", .base = "a", .queda = {"a\\", "z"}},
    {.nombre = "two points end the climb",
     .directorio = "a\\b\\..\\b\\c",
     .base = "a",
     .queda = {"a\\", "z"}},
    {.nombre = "so does a name that Windows cuts to nothing",
     .directorio = "a\\...\\b",
     .base = "a",
     .queda = {"a\\", "a\\b\\", "a\\b\\c\\", "z"}},
};

}  // namespace

TEST(directorios_vacios, se_sube_hasta_la_base) {
    for (const limpieza& caso : limpiezas) {
        for (const bool ancha : {true, false}) {
            const directorio_temporal d;
            const en_directorio aqui(d.ruta_w());
            const std::string unidad = d.ruta().substr(0, 2);
            for (const std::string& desde :
                 {d.ruta("") + "\\", std::string(), unidad, d.ruta().substr(2) + "\\"}) {
                d.directorio("a\\b\\c");
                d.fichero("z");
                const std::string base = desde + caso.base;
                sube(ancha, desde + caso.directorio, &base);
                EXPECT_EQ(d.arbol(), caso.queda) << caso.nombre << " from " << desde;
            }
        }
    }
}

TEST(directorios_vacios, otra_escritura_de_la_base_no_la_borra) {
    for (const char* directorio : {"a/", "a\\\\", "a\\.", "a\\.\\", "a\\...", "a\\ ", "a\\ \\", "a\\x\\.."}) {
        const directorio_temporal d;
        d.directorio("a");
        const std::string base = d.ruta("a");
        const borrados_vistos vistos;
        fallos libro;
        sube(true, d.ruta(directorio), &base);
        EXPECT_EQ(libro.cuenta("CreateFileW"), 0u) << directorio;
        EXPECT_EQ(vistos.rutas, lista{}) << directorio;
        EXPECT_TRUE(d.existe("a")) << directorio;
    }
}

TEST(directorios_vacios, lo_que_tiene_algo_dentro_detiene_la_subida) {
    for (const char* algo : {"a\\b\\f.txt", "a\\b\\.oculto.txt", "a\\b\\otro\\"}) {
        const directorio_temporal d;
        d.directorio("a\\b\\c");
        const std::string texto = algo;
        if (texto.back() == '\\') {
            d.directorio(texto.substr(0, texto.size() - 1));
        } else {
            d.fichero(texto);
        }
        const std::string base = d.ruta("a");
        const borrados_vistos vistos;
        sube(true, d.ruta("a\\b\\c"), &base);
        EXPECT_EQ(vistos.rutas, lista{d.ruta("a\\b\\c")}) << algo;
        EXPECT_TRUE(d.existe("a\\b")) << algo;
    }
}

TEST(directorios_vacios, un_directorio_con_punto_no_cuenta_pero_detiene_el_borrado) {
    const directorio_temporal d;
    d.directorio("a\\b\\.git");
    const std::string base = d.ruta("a");
    const borrados_vistos vistos;
    sube(true, d.ruta("a\\b"), &base);
    EXPECT_EQ(vistos.rutas, lista{d.ruta("a\\b")}) << "tried, refused by the system, given up";
    EXPECT_TRUE(d.existe("a\\b\\.git"));
    EXPECT_EQ(toma_esperas().size(), 0u);
}

TEST(directorios_vacios, sin_base_se_para_en_la_unidad) {
    const directorio_temporal d;
    d.directorio("a\\b");
    d.directorio("otro");
    const en_directorio otro(d.ruta_w("otro"));
    sube(true, d.ruta("a\\b"), nullptr);
    EXPECT_EQ(d.arbol(), lista{"otro\\"}) << "up to the drive, whose current directory is another one";
    // What is no correct path is said to be none.
    sube(true, "Q:\\no\\a?", nullptr);
    ESPERA_AVISOS("The file 'Q:\\no\\a?' is not correct");
    // Nothing exists on the way up to the drive: nothing is removed and nothing said.
    const borrados_vistos vistos;
    fallos libro;
    sube(true, "Q:\\no\\hay\\nada", nullptr);
    sube(false, "Q:", nullptr);
    EXPECT_EQ(vistos.rutas, lista{});
    EXPECT_EQ(libro.cuenta("RemoveDirectoryW"), 0u);
    EXPECT_EQ(libro.manijas_abiertas(), 0u);
    // Of a share no more than the share is the end.
    sube(true, "\\\\s\\r\\a\\b", nullptr);
    const lista abiertos = libro.rutas("CreateFileW");
    ASSERT_FALSE(abiertos.empty());
    EXPECT_TRUE(abiertos.back().starts_with("\\\\s\\r")) << abiertos.back();
}

TEST(directorios_vacios, una_base_que_no_es_principio_se_informa_y_no_se_quita_nada) {
    for (const char* otra : {"z", "a\\c", "a\\b\\c\\..", " ", ""}) {
        for (const bool ancha : {true, false}) {
            const directorio_temporal d;
            d.directorio("a\\b\\c");
            d.directorio("z");
            const borrados_vistos vistos;
            const std::string base = std::string(otra) <= " " ? otra : d.ruta(otra);
            sube(ancha, d.ruta("a\\b\\c"), &base);
            const lista informes = toma_expresiones();
            ASSERT_FALSE(informes.empty()) << otra;
            EXPECT_EQ(informes[0], no_es_principio) << otra;
            EXPECT_EQ(vistos.rutas, lista{}) << otra;
            EXPECT_EQ(d.arbol(), (lista{"a\\", "a\\b\\", "a\\b\\c\\", "z\\"})) << otra;
        }
    }
}

TEST(directorios_vacios, una_base_mas_larga_se_informa_y_no_se_sube) {
    const directorio_temporal d;
    d.directorio("a\\b");
    for (const char* otra : {"a\\b\\c", "a\\c"}) {  // or as long
        const std::string base = d.ruta(otra);
        sube(true, d.ruta("a\\b"), &base);
        ESPERA_INFORMES(no_es_principio, mas_corto);
        EXPECT_TRUE(d.existe("a\\b"));
    }
}

// A base may end within a name: what is longer goes, and where going up has come past the base that is told.
TEST(directorios_vacios, una_base_que_acaba_dentro_de_un_nombre) {
    const struct {
        const char* nombre;
        lista hay;
        const char* directorio;
        const char* base;
        lista queda;
        bool llega;
    } casos[] = {
        {"it goes", {"bx", "b"}, "bx", "b", {"b\\"}, true},
        {"with what lies below", {"bx\\c\\d"}, "bx\\c\\d", "b", {}, true},
        {"as far as it is there", {"bx"}, "bx\\c\\d", "b", {}, true},
        {"or not at all", {"b\\c"}, "bx\\c", "b", {"b\\", "b\\c\\"}, true},
        {"nor what it would lie in", {"b"}, "no\\bx", "no\\b", {"b\\"}, true},
        {"in another letter case", {"bx"}, "bx", "B", {}, true},
        {"with an extension", {"a\\b.bak"}, "a\\b.bak", "a\\b", {"a\\"}, true},
        {"not empty", {"bx\\c", "bx\\d"}, "bx\\c", "b", {"bx\\", "bx\\d\\"}, false},
        {"not empty from the beginning", {"bx\\c"}, "bx", "b", {"bx\\", "bx\\c\\"}, false},
        {"nor for one of its own name in it",
         {"bx\\c\\c"},
         "bx\\c",
         "b",
         {"bx\\", "bx\\c\\", "bx\\c\\c\\"},
         false},
        {"the system refuses", {"bx\\.git"}, "bx", "b", {"bx\\", "bx\\.git\\"}, false},
        {"the way comes back", {"bx"}, "bx\\..\\..\\@\\bx", "b", {}, false},
        {"a point at the end is the base itself", {"b"}, "b.", "b", {"b\\"}, false},
    };
    for (const auto& caso : casos) {
        for (const bool ancha : {true, false}) {
            const directorio_temporal d;
            for (const std::string& uno : caso.hay) {
                d.directorio(uno.c_str());
            }
            fallos libro;
            const std::string base = d.ruta(caso.base);
            std::string directorio = d.ruta(caso.directorio);
            // "@" stands for the directory in which all of this lies.
            if (const std::size_t yo = directorio.find('@'); yo != directorio.npos) {
                directorio.replace(yo, 1, d.ruta().substr(d.ruta().rfind('\\') + 1));
            }
            sube(ancha, directorio, &base);
            EXPECT_EQ(toma_expresiones(), caso.llega ? lista{mas_corto} : lista{}) << caso.nombre;
            EXPECT_EQ(d.arbol(), caso.queda) << caso.nombre;
            EXPECT_EQ(libro.manijas_abiertas(), 0u) << caso.nombre;
        }
    }
}

TEST(directorios_vacios, una_base_dentro_de_un_nombre_solo_se_informa_si_se_ha_subido) {
    for (const DWORD codigo : {DWORD{ERROR_ACCESS_DENIED}, DWORD{ERROR_PATH_NOT_FOUND}}) {
        const directorio_temporal d;
        d.directorio("bx\\c");
        fallos f;
        f.falla_siempre("CreateFileW", codigo);
        const std::string base = d.ruta("b");
        sube(true, d.ruta("bx\\c"), &base);
        EXPECT_EQ(toma_expresiones(), codigo == ERROR_PATH_NOT_FOUND ? lista{mas_corto} : lista{});
        EXPECT_EQ(d.arbol(), (lista{"bx\\", "bx\\c\\"}));
    }
}

// What is relative has no drive: it ends with its first name.
TEST(directorios_vacios, sin_base_ni_unidad_no_se_informa) {
    const directorio_temporal d;
    const en_directorio aqui(d.ruta_w(""));
    for (const char* directorio : {"bx\\c", "bx", ".git", "h\\b.bak"}) {
        for (const bool ancha : {true, false}) {
            d.directorio("bx\\c");
            sube(ancha, directorio, nullptr);
            EXPECT_EQ(toma_expresiones(), lista{}) << directorio;
            EXPECT_EQ(d.existe("bx"), std::string(directorio) != "bx\\c") << directorio;
        }
    }
}

TEST(directorios_vacios, nulo_o_en_blanco_no_borra_nada) {
    fallos libro;
    lumodir_borra_directorios_de_path_si_estan_vacios_UNICODE(nullptr, nullptr);
    lumodir_borra_directorios_de_path_si_estan_vacios(nullptr, nullptr);
    ESPERA_INFORMES("(directorio) != NULL", "(directorio) != NULL");
    for (const char* blanco : {"", "  "}) {
        sube(true, blanco, nullptr);
        ESPERA_INFORMES("widestr_longitud(directorio) > 0");
    }
    EXPECT_EQ(libro.llamadas(), 0u);
}

TEST(directorios_vacios, barras_hacia_delante_no_dan_vueltas_sin_fin) {
    const directorio_temporal d;
    d.directorio("a\\b");
    std::string ruta = d.ruta("a/b/");
    for (char& c : ruta) {
        c = c == '\\' ? '/' : c;
    }
    const std::string base = ruta.substr(0, ruta.size() - 4);
    sube(true, ruta, &base);
    EXPECT_EQ(d.arbol(), lista{"a\\"}) << "from a name with a slash behind it there is no going up";
    toma_informes();
}

// However base and directory are spelled: the base stays, and what lies above it.
TEST(directorios_vacios, la_base_se_queda_se_escriba_como_se_escriba) {
    const directorio_temporal d;
    const en_directorio ahi(d.ruta_w());
    const std::string raiz = d.ruta();
    const std::string sin_unidad = raiz.substr(2);
    struct manera {
        std::string directorio;
        std::string base;
    };
    const manera maneras[] = {
        {raiz + "\\\\base\\a\\b", raiz + "\\base"},
        {raiz + "\\x\\..\\base\\a\\b", raiz + "\\base"},
        {"\\\\?\\" + raiz + "\\base\\a\\b", raiz + "\\base"},
        {"\\\\.\\" + raiz + "\\base\\a\\b", raiz + "\\base"},
        {raiz + "\\base\\a\\b", sin_unidad + "\\base"},
        {raiz + "\\base\\a\\b", "base"},
        {raiz + "\\base\\a\\b", " "},
        {raiz + "\\base\\a\\b", ""},
        {raiz + "\\base", raiz + "\\base\\"},
        {"base\\a\\b", "base"},
        {"base/a/b", "base"},
        {sin_unidad + "\\base\\a\\b", sin_unidad + "\\base"},
        {raiz + "\\base\\a\\b\\..", raiz + "\\base"},
        {raiz + "\\base\\a\\b\\..\\..", raiz + "\\base"},
        {raiz + "\\base\\a\\..\\..\\base\\a", raiz + "\\base"},
        {raiz + "\\base\\aa\\..\\..\\base\\aa", raiz + "\\base"},
        {raiz + "\\base\\a", raiz + "\\bas"},
        {raiz + "\\base\\..\\x", raiz + "\\base"},
        {raiz + "\\base\\..\\x\\longer", raiz + "\\base"},
        {raiz.substr(0, 2), raiz.substr(0, 1)},
    };
    for (const manera& caso : maneras) {
        for (const bool ancha : {true, false}) {
            d.directorio("base\\a\\b");
            d.directorio("x\\longer");
            if (caso.directorio.ends_with("aa")) {
                d.borra("base\\a");
                d.directorio("base\\aa");
            }
            sube(ancha, caso.directorio, &caso.base);
            EXPECT_TRUE(d.existe("x\\longer")) << caso.directorio << " " << caso.base;
            // The beginning of another name is no base, but no directory above it is at risk either.
            EXPECT_TRUE(d.existe("base") || caso.base == raiz + "\\bas")
                << caso.directorio << " " << caso.base;
            EXPECT_TRUE(d.existe("")) << caso.directorio << " " << caso.base;
            if (!toma_informes().empty()) {
                EXPECT_TRUE(d.existe("base\\a\\b")) << "removed after a report: " << caso.directorio;
            }
        }
    }
}

// With the prefix a name counts as it is written.
TEST(directorios_vacios, con_el_prefijo_el_final_de_un_nombre_no_se_recorta) {
    for (const char* nombre : {"b.", "b ", "b.."}) {
        const directorio_temporal d;
        d.directorio("a\\b");
        d.directorio(std::string("a\\") + nombre);
        ASSERT_EQ(d.arbol().size(), 3u);
        const std::string base = "\\\\?\\" + d.ruta("a");
        sube(true, base + "\\" + nombre, &base);
        EXPECT_EQ(d.arbol(), (lista{"a\\", "a\\b\\"})) << "'" << nombre << "'";
        d.directorio(std::string(nombre) + "\\c");
        d.directorio("b\\c");
        const std::string en_la_base = "\\\\?\\" + d.ruta(nombre);
        sube(true, en_la_base + "\\c", &en_la_base);
        EXPECT_FALSE(d.existe(std::string(nombre) + "\\c")) << "'" << nombre << "'";
        EXPECT_TRUE(d.existe(nombre) && d.existe("b\\c")) << "'" << nombre << "'";
    }
}

// Where links are not followed, a name that no listing shows is opened all the same: it may be a short one.
TEST(directorios_vacios, un_nivel_que_falta_se_pasa_tambien_donde_puede_ser_un_nombre_corto) {
    volumen_falso v;
    v.pon("C:\\a\\b", {});
    const std::string base = "C:\\a";
    sube(true, "C:\\a\\b\\no\\tampoco", &base);
    EXPECT_EQ(v.arbol("C:\\a"), lista{});
    EXPECT_EQ(v.borrados, lista{"b"});
}

// A directory that cannot be listed shows none; where links are followed, one that is not shown counts as missing.
TEST(directorios_vacios, un_nombre_que_ninguna_lista_muestra_se_abre_donde_no_se_siguen_enlaces) {
    for (const bool se_siguen : {false, true}) {
        volumen_falso v;
        v.pon("C:\\a\\b", {});
        v.sigue_enlaces = se_siguen;
        v["C:\\a"].codigo_al_listar = ERROR_ACCESS_DENIED;
        const std::string base = "C:\\a";
        sube(true, "C:\\a\\b", &base);
        v["C:\\a"].codigo_al_listar = ERROR_SUCCESS;
        EXPECT_EQ(v.arbol("C:\\a"), se_siguen ? lista{"b\\"} : lista{});
    }
    // Nothing is known of its marks: none is taken off when it can be opened no more.
    volumen_falso v;
    v.pon("C:\\a\\b", {});
    v["C:\\a"].codigo_al_listar = ERROR_ACCESS_DENIED;
    int veces = 0;
    v.al_abrir = [&](const std::string& nombre) {
        v["C:\\a\\b"].codigo_al_abrir = nombre == "b" && ++veces > 1 ? ERROR_ACCESS_DENIED : ERROR_SUCCESS;
    };
    const std::string base = "C:\\a";
    sube(true, "C:\\a\\b", &base);
    EXPECT_GT(veces, 2);
    for (const volumen_falso::apertura& una : v.aperturas) {
        EXPECT_EQ(una.acceso & FILE_WRITE_ATTRIBUTES, 0u) << una;
    }
}

TEST(directorios_vacios, lo_que_no_se_deja_abrir_o_listar_detiene_la_subida) {
    for (const int que : {0, 1, 2}) {
        volumen_falso v;
        v.pon("C:\\a\\b\\.c", {});
        nodo_falso& nodo = v["C:\\a\\b\\.c"];
        (que == 0   ? nodo.codigo_al_abrir
         : que == 1 ? nodo.codigo_al_listar
                    : nodo.codigo_al_final) = ERROR_ACCESS_DENIED;
        const std::string base = "C:\\a";
        sube(true, "C:\\a\\b\\.c", &base);
        EXPECT_EQ(v.clases_de_borrado, std::vector<int>{}) << "not even tried: " << que;
        EXPECT_EQ(v.arbol("C:\\a"), (lista{"b\\", "b\\.c\\"})) << que;
    }
}

TEST(directorios_vacios, de_nombres_que_difieren_en_la_caja_el_exacto_y_si_no_el_primero) {
    const struct {
        const char* pedido;
        lista queda;
        std::size_t lecturas;  // of the base alone: not beyond the very name
    } casos[] = {{"C:\\a\\Ab", {"aB\\", "z\\"}, 4}, {"C:\\a\\AB", {"Ab\\", "z\\"}, 6}};
    for (const auto& caso : casos) {
        volumen_falso v;
        for (const char* uno : {"aB", "Ab", "z"}) {
            v.pon(std::string("C:\\a\\") + uno, {});
        }
        v.registros_por_lectura = 1;
        std::size_t lecturas = 0;
        v.al_listar = [&] { lecturas += v.abiertas() == 1 ? 1 : 0; };
        const std::string base = "C:\\a";
        sube(true, caso.pedido, &base);
        EXPECT_EQ(v.arbol("C:\\a"), caso.queda) << caso.pedido;
        EXPECT_EQ(lecturas, caso.lecturas) << caso.pedido;
    }
}

// It is closed before it is deleted; who puts another one there in between keeps it.
TEST(directorios_vacios, solo_se_quita_el_que_se_ha_mirado) {
    for (const DWORD sin_numeros_en_la_lista : {DWORD{0}, DWORD{ERROR_INVALID_PARAMETER}}) {
        for (const bool cambia : {false, true}) {
            volumen_falso v;
            v.pon("C:\\a\\b\\c", {});
            v.rechaza_con_numeros = sin_numeros_en_la_lista;
            int veces = 0;
            v.al_abrir = [&](const std::string& nombre) {
                if (nombre == "c" && ++veces == 2) {
                    EXPECT_EQ(v.abiertas(), 2u) << "the base and b";
                    EXPECT_TRUE(!cambia || v.cambia("C:\\a\\b\\c", {"", FILE_ATTRIBUTE_DIRECTORY}));
                }
            };
            const std::string base = "C:\\a";
            sube(true, "C:\\a\\b\\c", &base);
            EXPECT_GE(veces, 2);
            EXPECT_EQ(v.arbol("C:\\a"), cambia ? (lista{"b\\", "b\\c\\"}) : lista{});
        }
    }
}

TEST(directorios_vacios, un_enlace_detiene_la_subida_y_lo_de_detras_se_queda) {
    volumen_falso v;
    v.pon("C:\\fuera\\c", {});
    v.pon("C:\\a", {{"b", enlace_dir, IO_REPARSE_TAG_MOUNT_POINT, "C:\\fuera"}});
    const std::string base = "C:\\a";
    sube(true, "C:\\a\\b\\c", &base);
    sube(true, "C:\\a\\b", &base);
    EXPECT_EQ(v.arbol("C:"), (lista{"fuera\\", "fuera\\c\\", "a\\", "a\\b\\"}));
    EXPECT_EQ(v.borrados, lista{});
}

TEST(directorios_vacios, un_cambio_en_cualquier_momento_no_lleva_fuera) {
    for (const DWORD rechazo : {DWORD{0}, DWORD{ERROR_NOT_SUPPORTED}}) {
        for (const char* victima : {"C:\\a", "C:\\a\\b", "C:\\a\\b\\c"}) {
            unsigned van = 0;
            for (unsigned n = 1; n <= van + 1; ++n) {
                ASSERT_LT(n, 200u);
                volumen_falso v;
                v.pon("C:\\a\\b\\c", {});
                v.pon("C:\\fuera\\b\\c", {});
                v.pon("C:\\fuera\\c", {});
                v.rechaza_relativo = rechazo;
                van = 0;
                v.al_abrir = [&](const std::string&) {
                    if (++van == n && v.hay(victima)) {
                        v.cambia(victima, {"", enlace_dir, IO_REPARSE_TAG_SYMLINK, "C:\\fuera"});
                    }
                };
                const std::string base = "C:\\a";
                sube(true, "C:\\a\\b\\c", &base);
                EXPECT_EQ(v.arbol("C:\\fuera"), (lista{"b\\", "b\\c\\", "c\\"})) << victima << " at " << n;
                EXPECT_TRUE(v.hay("C:\\a")) << victima << " at " << n;
                EXPECT_EQ(v.abiertas(), 0u);
            }
        }
    }
}

TEST(directorios_vacios, un_directorio_de_solo_lectura_se_quita_tambien) {
    for (const bool se_queda : {false, true}) {
        constexpr DWORD marcado = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
        volumen_falso v;
        v.pon("C:\\a\\b\\c", {});
        v["C:\\a\\b\\c"].atributos = marcado;
        v["C:\\a\\b\\c"].codigo_al_borrar = se_queda ? ERROR_ACCESS_DENIED : 0;
        const std::string base = "C:\\a";
        sube(true, "C:\\a\\b\\c", &base);
        EXPECT_EQ(v.arbol("C:\\a"), se_queda ? (lista{"b\\", "b\\c\\"}) : lista{});
        EXPECT_TRUE(!se_queda || v["C:\\a\\b\\c"].atributos == marcado);
    }
}

TEST(directorios_vacios, la_base_no_se_borra_nunca_falle_lo_que_falle) {
    const directorio_temporal d;
    const std::string base = d.ruta("a");
    con_cada_fallo(
        [&] {
            d.directorio("a\\b\\c");
            d.pon_atributos("a\\b\\c", FILE_ATTRIBUTE_READONLY);
            d.directorio("otro");
        },
        [&] { sube(true, d.ruta("a\\b\\c"), &base); },
        [&](const ronda& r) {
            EXPECT_TRUE(d.existe("a")) << r;
            EXPECT_TRUE(d.existe("otro")) << r;
            EXPECT_TRUE(!r.limpia || !d.existe("a\\b"));
            toma_informes();
            EXPECT_EQ(toma_avisos(), lista{});
        });
}

TEST(directorios_vacios, por_un_path_largo_se_sube_como_por_otro) {
    const directorio_temporal d;
    const std::string largo = "a\\" + std::string(240, 'm');
    for (const bool ancha : {true, false}) {
        for (const std::string& base : {std::string("a"), largo}) {
            const std::string entera = d.ruta(base);
            d.directorio(largo + "\\b\\c");
            sube(ancha, d.ruta(largo + "\\b\\c"), &entera);
            EXPECT_EQ(d.arbol(), base == "a" ? lista{"a\\"} : (lista{"a\\", largo + "\\"})) << base.size();
        }
    }
}

// What both are relative to, once: the current directory may be another one a moment later.
TEST(directorios_vacios, de_que_depende_un_path_se_pregunta_una_vez) {
    const directorio_temporal d;
    const en_directorio aqui(d.ruta_w());
    const std::string unidad = d.ruta().substr(0, 2);
    for (const auto& [delante, preguntado] : {std::pair(std::string(), std::string(".")),
                                              {unidad, unidad + "."},
                                              {d.ruta().substr(2) + "\\", "\\"},
                                              {d.ruta() + "\\", d.ruta("a\\b")}}) {
        d.directorio("a\\b");
        const std::string base = delante + "a";
        fallos libro;
        sube(true, delante + "a\\b", &base);
        EXPECT_EQ(libro.rutas("GetFullPathNameW").front(), preguntado);
        EXPECT_EQ(libro.rutas("CreateFileW").front(), d.ruta("a"));
        EXPECT_EQ(d.arbol(), lista{"a\\"}) << delante;
    }
    // Another drive, and the roots of drives.
    for (const char* base : {"Q:\\a", "Q:", "Q:\\"}) {
        volumen_falso v;
        v.pon("Q:\\a\\b\\c", {});
        const std::string entera = base;
        sube(true, "Q:\\a\\b\\c", &entera);
        EXPECT_EQ(v.arbol("Q:"), entera.back() == 'a' ? lista{"a\\"} : lista{}) << base;
    }
    d.directorio("a\\b");
    sube(true, unidad + "a\\b", &unidad);
    EXPECT_EQ(d.arbol(), lista{}) << "up to the current directory of the drive";
}

TEST(directorios_vacios, sin_forma_completa_la_base_se_queda) {
    const directorio_temporal d;
    const std::string base = d.ruta("base");
    for (const auto& [cual, y_las_demas] : {std::pair(1u, false), {2u, false}, {1u, true}, {2u, true}}) {
        d.directorio("base");
        fallos f;
        f.falla(cual, ERROR_ACCESS_DENIED, y_las_demas);
        sube(true, base + "\\..\\base", &base);
        EXPECT_EQ(f.historia()[cual - 1].nombre, "GetFullPathNameW");
        EXPECT_EQ(d.arbol(), lista{"base\\"}) << cual;
    }
    for (const unsigned veces : {1u, 2u, ~0u}) {
        d.directorio("base");
        fallos f;
        f.falla_siempre("GetFullPathNameW", ERROR_ACCESS_DENIED, veces);
        sube(true, base + "\\..\\base", &base);
        EXPECT_EQ(d.arbol(), lista{"base\\"}) << veces;
    }
}
