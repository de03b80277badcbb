// Lists of one directory, in both flavours, over real directories and false ones.
#include "listings/listas_ficheros.hpp"

#include <algorithm>

#include "apoyo/busqueda_falsa.hpp"
#include "apoyo/directorio.hpp"
#include "apoyo/exportada.hpp"
#include "apoyo/fallos.hpp"
#include "apoyo/paginas.hpp"
#include "companions/acadorde.h"
#include "companions/arr.h"
#include "companions/lumospy.h"
#include "companions/plataforma.hpp"
#include "lumodir.h"
#include "modelos/caracteres.hpp"
#include "modelos/path.hpp"
#include "modelos/textos_de_pagina.hpp"

using namespace apoyo;

namespace {

using nombres = std::vector<std::string>;

// What a record held; taking it checks the record's own promises and releases it.
struct contenido {
    std::string path;
    nombres lista;
    friend bool operator==(const contenido&, const contenido&) = default;
};
std::ostream& operator<<(std::ostream& salida, const contenido& c) {
    return salida << c.path << ' ' << testing::PrintToString(c.lista);
}

std::string texto(const char* t) {
    return t == nullptr ? "(NULL)" : de_cp1252(t);
}
std::string texto(const wchar_t* t) {
    return u8(t);
}
void libera(ListaFicheros* lista) {
    cdir_libera_lista_de_ficheros(lista);
}
void libera(ListaFicheros_u* lista) {
    cdir_libera_lista_de_ficheros_UNICODE(lista);
}

template <class L>
contenido toma_contenido(L& lista) {
    EXPECT_EQ(lista.num == 0, lista.lista == nullptr);
    contenido c{texto(lista.path), {}};
    for (unsigned long i = 0; i < lista.num; ++i) {
        c.lista.push_back(texto(lista.lista[i]));
    }
    libera(&lista);
    EXPECT_EQ(lista.path, nullptr);
    EXPECT_EQ(lista.num, 0u);
    EXPECT_TRUE(lista.lista == nullptr);  // packed: nothing may refer to the field
    return c;
}

// Runs a listing in both flavours into dirty records, and expects one outcome.
template <class Corta, class Ancha>
contenido en_los_dos(Corta corta, Ancha ancha) {
    static char basura_a[] = "basura";
    static wchar_t basura_w[] = L"basura";
    char* lista_a[] = {basura_a};
    wchar_t* lista_w[] = {basura_w};
    ListaFicheros_u l_w = {basura_w, 7, lista_w};
    ancha(&l_w);
    const contenido c = toma_contenido(l_w);
    const nombres informes = toma_expresiones();
    ListaFicheros l_a = {basura_a, 7, lista_a};
    corta(&l_a);
    EXPECT_EQ(toma_contenido(l_a), c) << "the flavours differ";
    EXPECT_EQ(toma_expresiones(), informes) << "the flavours report differently";
    EXPECT_EQ(informes, nombres{});
    return c;
}

contenido ficheros(const std::string& directorio, const std::string& extension) {
    return en_los_dos(
        [&](ListaFicheros* l) { llama(cdir_lista_de_ficheros, directorio, extension, l); },
        [&](ListaFicheros_u* l) { llama(cdir_lista_de_ficheros_UNICODE, directorio, extension, l); });
}
contenido con_patron(const std::string& directorio, const std::string& extension, const std::string& patron) {
    return en_los_dos(
        [&](ListaFicheros* l) { llama(cdir_lista_de_ficherosFiltro, directorio, extension, patron, l); },
        [&](ListaFicheros_u* l) {
            llama(cdir_lista_de_ficherosFiltro_UNICODE, directorio, extension, patron, l);
        });
}
contenido en_path_filtro(const std::string& path_filtro) {
    return en_los_dos(
        [&](ListaFicheros* l) { llama(cdir_lista_de_ficheros_en_path_filtro, path_filtro, l); },
        [&](ListaFicheros_u* l) { llama(cdir_lista_de_ficheros_en_path_filtro_UNICODE, path_filtro, l); });
}
contenido directorios(const std::string& directorio, const std::string& patron) {
    return en_los_dos(
        [&](ListaFicheros* l) { llama(cdir_lista_de_directorios, directorio, patron, l); },
        [&](ListaFicheros_u* l) { llama(cdir_lista_de_directorios_UNICODE, directorio, patron, l); });
}

nombres toma_ordenado(AcadOrdeU* array) {
    nombres n;
    for (unsigned long i = 0; i < acadordeu_num_elems(array); ++i) {
        n.push_back(u8(acadordeu_get(array, i)));
    }
    if (!n.empty()) {  // a repeat that is added to it stays as well
        acadordeu_inserta(array, w(n.front()).c_str());
        EXPECT_EQ(acadordeu_num_elems(array), n.size() + 1);
    }
    acadordeu_destruye(&array);
    return n;
}

}  // namespace

TEST(listas_ficheros, ordena_sin_distinguir_mayusculas) {
    directorio_temporal d;
    for (const char* nombre : {"b.txt", "A.txt", "c.TXT", "a.dat", "sin", "sub\\x.txt"}) {
        d.fichero(nombre);
    }
    EXPECT_EQ(ficheros(d.ruta(), "txt"), (contenido{d.ruta(), {"A.txt", "b.txt", "c.TXT"}}));
    EXPECT_EQ(ficheros(d.ruta(), "*"), (contenido{d.ruta(), {"a.dat", "A.txt", "b.txt", "c.TXT", "sin"}}));
    EXPECT_EQ(ficheros(d.ruta(), "(NULL)"), ficheros(d.ruta(), "*"));
    EXPECT_EQ(ficheros(d.ruta(), ""), (contenido{d.ruta(), {"sin"}}));
}

TEST(listas_ficheros, el_orden_es_el_de_las_minusculas_unidad_a_unidad) {
    const en_pagina p(1252);
    busqueda_falsa falsa;
    // "_" stands between the upper and the lower letters; accented letters are not folded; prefixes come first.
    falsa.patrones["C:\\d\\*"] = {{"\xC3\x91u"},
                                  {"b"},
                                  {"_"},
                                  {"\xC3\xB1"
                                   "a"},
                                  {"B1"},
                                  {"Z"},
                                  {"ab"},
                                  {"\xC3\xBF"},
                                  {"a"},
                                  {"AB"}};
    EXPECT_EQ(ficheros("C:\\d", "*").lista, (nombres{"_", "a", "ab", "AB", "b", "B1", "Z", "\xC3\x91u",
                                                     "\xC3\xB1"
                                                     "a",
                                                     "\xC3\xBF"}))
        << "equal names as the system gave them";
}

// A second byte that looks like a letter is none. The model folds characters.
TEST(listas_ficheros, el_orden_de_8_bits_lee_caracteres) {
    for (const unsigned pagina : paginas_dobles) {
        const en_pagina p(pagina);
        const auto plegado = [](const texto_a& nombre) {
            modelos::texto_c caracteres = modelos::en_caracteres(nombre);
            for (char32_t& c : caracteres) {
                c += c >= U'A' && c <= U'Z' ? 32 : 0;
            }
            return modelos::en_bytes(caracteres);
        };
        // Every pair of one lead byte whose second one is a letter, and letters beside them.
        std::vector<texto_a> nombres_a;
        const char inicial = pagina == 949 ? '\x81' : pagina == 936 ? '\xB0' : '\x83';
        for (unsigned segundo = 'A'; segundo <= 'z'; ++segundo) {
            if (interno::plataforma::es_caracter_doble(inicial, static_cast<char>(segundo))) {
                for (const char* resto : {"b", "A"}) {
                    nombres_a.push_back(texto_a{inicial, static_cast<char>(segundo)} + resto);
                    nombres_a.push_back(resto + texto_a{inicial, static_cast<char>(segundo)});
                }
            }
        }
        ASSERT_GT(nombres_a.size(), 100u) << pagina;
        busqueda_falsa falsa;
        std::vector<entrada_falsa>& entradas = falsa.patrones["C:\\d\\*"];
        for (const texto_a& nombre : nombres_a) {
            wchar_t unidades[8] = {};
            ASSERT_LT(interno::plataforma::ansi_a_utf16(nombre, unidades, 7), 7u);
            entradas.push_back({u8(unidades)});
        }
        std::stable_sort(nombres_a.begin(), nombres_a.end(),
                         [&](const texto_a& a, const texto_a& b) { return plegado(a) < plegado(b); });
        ListaFicheros lista = {};
        cdir_lista_de_ficheros("C:\\d", "*", &lista);
        EXPECT_EQ(std::vector<texto_a>(lista.lista, lista.lista + lista.num), nombres_a) << pagina;
        libera(&lista);
    }
}

TEST(listas_ficheros, muchos_nombres_en_cualquier_orden) {
    busqueda_falsa falsa;
    std::vector<entrada_falsa>& entradas = falsa.patrones["C:\\d\\*"];
    for (unsigned i = 0; i < 5000; ++i) {
        char nombre[32];
        std::snprintf(nombre, sizeof nombre, i % 2 == 0 ? "f%04u.txt" : "F%04u.TXT", i * 2477 % 5000);
        entradas.push_back({nombre});
    }
    const contenido c = ficheros("C:\\d", "*");
    ASSERT_EQ(c.lista.size(), 5000u);
    for (unsigned i = 0; i < 5000; ++i) {
        ASSERT_EQ(std::stoul(c.lista[i].substr(1, 4)), i);
    }
}

TEST(listas_ficheros, el_filtro_de_extension) {
    struct fila {
        std::string nombre;
        std::string filtro;
        bool admite;
    };
    const fila filas[] = {
        {.nombre = "a.PNG", .filtro = "png", .admite = true},
        {.nombre = "a.png", .filtro = "PNG", .admite = true},
        {.nombre = "a.pxg", .filtro = "p?g", .admite = true},
        {.nombre = "a.PXG", .filtro = "p?g", .admite = true},
        {.nombre = "a.png", .filtro = "pn", .admite = false},
        {.nombre = "a.png", .filtro = "pngx", .admite = false},
        {.nombre = "a.png", .filtro = "???", .admite = true},
        {.nombre = "a.png", .filtro = "????", .admite = false},
        {.nombre = "a.png", .filtro = "*", .admite = true},
        {.nombre = "a.png", .filtro = "*zz", .admite = true},  // a * in front accepts all
        {.nombre = "a.png", .filtro = "p*", .admite = false},  // later it is an ordinary character
        {.nombre = "a.png", .filtro = "p*g", .admite = false},
        {.nombre = "a.png", .filtro = "(NULL)", .admite = true},
        {.nombre = "a.png", .filtro = "", .admite = false},
        {.nombre = "Makefile", .filtro = "", .admite = true},
        {.nombre = "Makefile", .filtro = "*", .admite = true},
        {.nombre = "Makefile", .filtro = "?", .admite = false},
        {.nombre = ".profile", .filtro = "", .admite = true},  // all base name
        {.nombre = ".profile", .filtro = "profile", .admite = false},
        {.nombre = "a.tar.gz", .filtro = "gz", .admite = true},
        {.nombre = "a.tar.gz", .filtro = "tar.gz", .admite = false},
        {.nombre = "a.b c", .filtro = "b c", .admite = true},  // a blank in it: still the extension
        {.nombre = "a.b c", .filtro = "", .admite = false},
        {.nombre = "a.png  ", .filtro = "png", .admite = true},  // trailing blanks are cut, as from any path
        {.nombre = "a.png ", .filtro = "png ", .admite = false},
        {.nombre = "a.png ", .filtro = "p?g", .admite = true},
        {.nombre = "a ", .filtro = "", .admite = true},
        {.nombre = " .png", .filtro = "png", .admite = true},  // a blank in front is a base name
        {.nombre = "a.\xC3\xB1", .filtro = "\xC3\xB1", .admite = true},
        {.nombre = "a.\xC3\xB1", .filtro = "\xC3\x91", .admite = false},  // A to Z alone are folded
        {.nombre = "a.\xC3\xB1", .filtro = "?", .admite = true},
        {.nombre = "a.txt", .filtro = ".txt", .admite = false},
    };
    for (const fila& f : filas) {
        busqueda_falsa falsa;
        falsa.patrones["C:\\d\\*"] = {{f.nombre}, {"directorio.png", FILE_ATTRIBUTE_DIRECTORY}};
        EXPECT_EQ(ficheros("C:\\d", f.filtro).lista, f.admite ? nombres{f.nombre} : nombres{})
            << f.nombre << " by " << f.filtro;
    }
}

TEST(listas_ficheros, un_nombre_acabado_en_punto_se_informa) {
    busqueda_falsa falsa;
    falsa.patrones["C:\\d\\*"] = {{"raro."}};
    for (const wchar_t* filtro : {L"", L"txt"}) {
        ListaFicheros_u ancha;
        cdir_lista_de_ficheros_UNICODE(L"C:\\d", filtro, &ancha);
        ESPERA_INFORMES("widestr_longitud(extFich) > 1");
        EXPECT_EQ(toma_contenido(ancha).lista, *filtro == 0 ? nombres{"raro."} : nombres{});
    }
    ListaFicheros corta;
    cdir_lista_de_ficheros("C:\\d", "txt", &corta);
    ESPERA_INFORMES("widestr_longitud(extFich) > 1");
    EXPECT_EQ(toma_contenido(corta).lista, nombres{});
    // Blanks after the point change nothing; a filter that accepts all does not look.
    falsa.patrones["C:\\d\\*"] = {{"raro.  "}};
    cdir_lista_de_ficheros("C:\\d", "", &corta);
    ESPERA_INFORMES("widestr_longitud(extFich) > 1");
    EXPECT_EQ(toma_contenido(corta).lista, nombres{"raro.  "});
    EXPECT_EQ(ficheros("C:\\d", "*").lista, nombres{"raro.  "});
}

TEST(listas_ficheros, sin_resultados_valen_las_reglas_sueltas_del_enumerador) {
    busqueda_falsa falsa;
    falsa.patrones["C:\\d\\*"] = {
        {"foto1.png"}, {"foto2.PNG"}, {"otra.png"}, {"sub.png", FILE_ATTRIBUTE_DIRECTORY}};
    struct fila {
        const char* patron;
        nombres corta;
        nombres ancha;
    };
    const fila filas[] = {
        {.patron = "foto*", .corta = {"foto1.png", "foto2.PNG"}, .ancha = {"foto1.png"}},  // letter case
        {.patron = "*x", .corta = {}, .ancha = {"foto1.png", "otra.png"}},  // the unit after the * is skipped
        {.patron = "FOTO?", .corta = {"foto1.png", "foto2.PNG"}, .ancha = {}},
        {.patron = "foto", .corta = {}, .ancha = {}},
    };
    for (const fila& f : filas) {
        ListaFicheros corta;
        cdir_lista_de_ficherosFiltro("C:\\d", "png", f.patron, &corta);
        EXPECT_EQ(toma_contenido(corta).lista, f.corta) << f.patron;
        ListaFicheros_u ancha;
        cdir_lista_de_ficherosFiltro_UNICODE(L"C:\\d", L"png", w(f.patron).c_str(), &ancha);
        EXPECT_EQ(toma_contenido(ancha).lista, f.ancha) << f.patron;
    }
}

TEST(listas_ficheros, el_path_del_registro) {
    struct fila {
        std::string directorio;
        std::string path;
        std::string patron;
    };
    const fila filas[] = {
        {.directorio = "C:\\data", .path = "C:\\data", .patron = "C:\\data\\*"},
        {.directorio = "C:\\data\\", .path = "C:\\data", .patron = "C:\\data\\*"},
        {.directorio = "C:/data/", .path = "C:\\data", .patron = "C:/data/*"},
        {.directorio = "C:/a/b", .path = "C:\\a\\b", .patron = "C:/a/b\\*"},
        {.directorio = "C:\\data\\\\", .path = "C:\\data\\", .patron = "C:\\data\\\\*"},
        {.directorio = "C:\\", .path = "C:", .patron = "C:\\*"},
        {.directorio = "C:", .path = "C:", .patron = "C:\\*"},
        {.directorio = "\\\\srv\\r\\d", .path = "\\\\srv\\r\\d", .patron = "\\\\srv\\r\\d\\*"},
        {.directorio = "rel", .path = "rel", .patron = completa("rel\\*")},
        {.directorio = "", .path = "", .patron = completa("*")},
        {.directorio = "C:\\a\xC3\xB1o", .path = "C:\\a\xC3\xB1o", .patron = "C:\\a\xC3\xB1o\\*"},
    };
    for (const fila& f : filas) {
        busqueda_falsa falsa;
        falsa.patrones[f.patron] = {{"uno"}};
        EXPECT_EQ(ficheros(f.directorio, "*"), (contenido{f.path, {"uno"}})) << f.directorio;
        EXPECT_EQ(falsa.abiertos, (nombres{f.patron, f.patron})) << f.directorio;
    }
}

// A directory in every code page: joined, and its separator cut, at characters only.
TEST(listas_ficheros, el_path_del_registro_en_cada_pagina) {
    for (const unsigned pagina : paginas) {
        const en_pagina p(pagina);
        modelos::azar_de_pagina azar(pagina);
        for (int n = 0; n < 300 && !HasFailure(); ++n) {
            const texto_a directorio = "C:\\" + azar.texto();
            SCOPED_TRACE(std::to_string(pagina) + testing::PrintToString(directorio));
            const modelos::texto_c leido = modelos::lee(directorio);
            const modelos::texto_c todo(U"*");
            busqueda_falsa falsa;
            ListaFicheros lista = {};
            cdir_lista_de_ficheros(directorio.c_str(), "*", &lista);
            toma_informes();
            const texto_w patron = modelos::a_w(modelos::compone_como_el_crt({}, leido, todo, {}));
            ASSERT_FALSE(falsa.abiertos.empty());
            EXPECT_EQ(w(falsa.abiertos[0]), patron);
            modelos::texto_c path = modelos::compone_como_el_crt({}, leido, {}, {});
            std::replace(path.begin(), path.end(), U'/', U'\\');
            path = modelos::releido(path);  // behind half a character what is put there is its other half
            if (path.back() == U'\\') {
                path.pop_back();
            }
            EXPECT_EQ(lista.path, modelos::escribe(path));
            cdir_libera_lista_de_ficheros(&lista);
        }
    }
}

TEST(listas_ficheros, con_patron_de_nombre) {
    directorio_temporal d;
    for (const char* nombre :
         {"img01.png", "img02.PNG", "img2.png", "otra.png", "img03.txt", "img04", "img05.pxg"}) {
        d.fichero(nombre);
    }
    EXPECT_EQ(con_patron(d.ruta(), "png", "img0?"), (contenido{d.ruta(), {"img01.png", "img02.PNG"}}));
    // Whether question marks before a point may stand for nothing is the system's affair: Windows and Wine 10 say
    // yes, Wine 8 says no.
    nombres del_sistema = {"img01.png", "img02.PNG"};
    WIN32_FIND_DATAW entrada;
    const HANDLE busca = ::FindFirstFileW(w(d.ruta() + "\\img??.png").c_str(), &entrada);
    ASSERT_NE(busca, INVALID_HANDLE_VALUE);
    do {
        if (u8(entrada.cFileName) == "img2.png") {
            del_sistema.push_back("img2.png");
        }
    } while (::FindNextFileW(busca, &entrada));
    ::FindClose(busca);
    EXPECT_EQ(con_patron(d.ruta(), "png", "img??"), (contenido{d.ruta(), del_sistema}));
    EXPECT_EQ(con_patron(d.ruta(), "*", "img0*"),
              (contenido{d.ruta(), {"img01.png", "img02.PNG", "img03.txt", "img04", "img05.pxg"}}));
    EXPECT_EQ(con_patron(d.ruta(), "p?g", "img*"),
              (contenido{d.ruta(), {"img01.png", "img02.PNG", "img05.pxg", "img2.png"}}));
    EXPECT_EQ(con_patron(d.ruta(), "", "img04"), (contenido{d.ruta(), {"img04"}}));
    EXPECT_EQ(con_patron(d.ruta(), "zip", "*"), (contenido{d.ruta(), {}}));
}

TEST(listas_ficheros, los_patrones_se_componen_de_sus_partes_sin_comprobar) {
    struct fila {
        std::string directorio;
        std::string extension;
        std::string patron;
        std::string buscado;
    };
    const fila filas[] = {
        {.directorio = "C:\\d", .extension = "txt", .patron = "a*", .buscado = "C:\\d\\a*.txt"},
        {.directorio = "C:\\d\\", .extension = ".txt", .patron = "*", .buscado = "C:\\d\\*.txt"},
        {.directorio = "C:\\d", .extension = "", .patron = "b", .buscado = "C:\\d\\b"},
        {.directorio = "C:\\d", .extension = "(NULL)", .patron = "b?", .buscado = "C:\\d\\b?"},
        {.directorio = "C:\\d", .extension = "*", .patron = "", .buscado = "C:\\d\\.*"},
        {.directorio = "C:/d", .extension = "p?g", .patron = "a|b", .buscado = "C:/d\\a|b.p?g"},
    };
    for (const fila& f : filas) {
        busqueda_falsa falsa;
        EXPECT_EQ(con_patron(f.directorio, f.extension, f.patron).lista, nombres{});
        ASSERT_FALSE(falsa.abiertos.empty());
        EXPECT_EQ(falsa.abiertos[0], f.buscado);
    }
}

TEST(listas_ficheros, con_la_unidad_aparte) {
    struct fila {
        std::string unidad;
        std::string directorio;
        std::string buscado;
        std::string path;
    };
    const fila filas[] = {
        {.unidad = "C:", .directorio = "\\d", .buscado = "C:\\d\\a*.txt", .path = "C:\\d"},
        {.unidad = "C:", .directorio = "\\d/e/", .buscado = "C:\\d/e/a*.txt", .path = "C:\\d\\e"},
        {.unidad = "C:", .directorio = "\\", .buscado = "C:\\a*.txt", .path = "C:"},
        {.unidad = "\\\\srv\\r",
         .directorio = "\\d",
         .buscado = "\\\\srv\\r\\d\\a*.txt",
         .path = "\\\\srv\\r\\d"},
        {.unidad = "\\\\srv\\r",
         .directorio = "d\\",
         .buscado = "\\\\srv\\r\\d\\a*.txt",
         .path = "\\\\srv\\r\\d"},
        {.unidad = "(NULL)", .directorio = "C:\\d", .buscado = "C:\\d\\a*.txt", .path = "C:\\d"},
        {.unidad = "", .directorio = "C:\\d", .buscado = "C:\\d\\a*.txt", .path = "C:\\d"},
    };
    for (const fila& f : filas) {
        busqueda_falsa falsa;
        falsa.patrones[f.buscado] = {{"a2.txt"}, {"a1.TXT"}, {"a3.dat"}};
        ListaFicheros_u lista;
        llama(cdir_lista_de_ficherosFiltro_en_unidad, f.unidad, f.directorio, "txt", "a*", &lista);
        EXPECT_EQ(toma_contenido(lista), (contenido{f.path, {"a1.TXT", "a2.txt"}}))
            << f.unidad << f.directorio;
    }
    directorio_temporal d;
    d.fichero("real.txt");
    ListaFicheros_u lista;
    const texto_w completa = d.ruta_w();
    cdir_lista_de_ficherosFiltro_en_unidad(completa.substr(0, 2).c_str(), completa.substr(2).c_str(), L"*",
                                           L"*", &lista);
    EXPECT_EQ(toma_contenido(lista), (contenido{d.ruta(), {"real.txt"}}));
}

TEST(listas_ficheros, con_patron_completo_el_path_queda_nulo) {
    directorio_temporal d;
    d.fichero("b1.txt");
    d.fichero("B2.dat");
    d.directorio("b3");
    EXPECT_EQ(en_path_filtro(d.ruta("b*")), (contenido{"(NULL)", {"b1.txt", "B2.dat"}}));
    EXPECT_EQ(en_path_filtro(d.ruta("b1.txt")), (contenido{"(NULL)", {"b1.txt"}}));
    EXPECT_EQ(en_path_filtro(d.ruta("x*")), (contenido{"(NULL)", {}}));
}

TEST(listas_ficheros, subdirectorios_sin_los_que_empiezan_por_punto) {
    directorio_temporal d;
    for (const char* nombre : {"b", "A", "c.old", ".git"}) {
        d.directorio(nombre);
    }
    d.directorio("oculto");
    d.pon_atributos("oculto", FILE_ATTRIBUTE_HIDDEN);
    d.fichero("fichero");
    EXPECT_EQ(directorios(d.ruta(), "*"), (contenido{d.ruta(), {"A", "b", "c.old", "oculto"}}));
    EXPECT_EQ(directorios(d.ruta() + "\\", "\\*"), (contenido{d.ruta(), {"A", "b", "c.old", "oculto"}}));
    EXPECT_EQ(directorios(d.ruta(), "*.old"), (contenido{d.ruta(), {"c.old"}}));
    EXPECT_EQ(directorios(d.ruta("no_existe"), "*"), (contenido{d.ruta("no_existe"), {}}));
}

TEST(listas_ficheros, un_enlace_es_un_directorio_mas) {
    busqueda_falsa falsa;
    falsa.patrones["C:\\d\\*"] = {
        {"enlace", FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT, IO_REPARSE_TAG_SYMLINK}};
    EXPECT_EQ(directorios("C:\\d", "*").lista, nombres{"enlace"});
    EXPECT_EQ(lumodir_existenSubdirectorios("C:\\d"), 1);
    EXPECT_EQ(lumodir_existenFicheros("C:\\d"), 0);
}

TEST(listas_ficheros, lo_que_no_es_un_directorio_da_listas_vacias) {
    directorio_temporal d;
    d.fichero("fichero");
    for (const char* nombre : {"no_existe", "fichero", "no\\existe"}) {
        EXPECT_EQ(ficheros(d.ruta(nombre), "*"), (contenido{d.ruta(nombre), {}})) << nombre;
        EXPECT_EQ(con_patron(d.ruta(nombre), "txt", "a*"), (contenido{d.ruta(nombre), {}})) << nombre;
        EXPECT_EQ(directorios(d.ruta(nombre), "*"), (contenido{d.ruta(nombre), {}})) << nombre;
        EXPECT_EQ(en_path_filtro(d.ruta(nombre) + "\\*"), (contenido{"(NULL)", {}})) << nombre;
    }
}

TEST(listas_ficheros, nombres_en_cualquier_escritura) {
    directorio_temporal d;
    const nombres todos{"\xCE\x91\xCE\xB2.txt", "\xD0\x96.txt", "\xE6\x97\xA5\xE6\x9C\xAC.txt",
                        "\xF0\x9F\x98\x80.txt"};
    for (const std::string& nombre : todos) {
        d.fichero(nombre);
    }
    ListaFicheros_u lista;
    cdir_lista_de_ficheros_UNICODE(d.ruta_w().c_str(), L"TXT", &lista);
    EXPECT_EQ(toma_contenido(lista), (contenido{d.ruta(), todos}));
    busqueda_falsa falsa;
    falsa.patrones["C:\\d\\*"] = {{"\xED\xB8\x80.txt"}, {"\xED\xA0\xBD"}};  // lone surrogates
    cdir_lista_de_ficheros_UNICODE(L"C:\\d", L"*", &lista);
    EXPECT_EQ(toma_contenido(lista).lista, (nombres{"\xED\xA0\xBD", "\xED\xB8\x80.txt"}));
}

TEST(listas_ficheros, rutas_y_nombres_hasta_su_limite) {
    directorio_temporal d;
    const std::string hondo = std::string(200, 'a') + "\\" + std::string(200, 'b');
    const std::string nombre = std::string(251, 'n') + ".txt";
    d.fichero(hondo + "\\" + nombre);
    d.fichero(nombre);
    d.directorio(hondo + "\\sub");
    EXPECT_EQ(ficheros(d.ruta(), "TXT"), (contenido{d.ruta(), {nombre}})) << "255 units, in both flavours";
    ListaFicheros_u lista;
    cdir_lista_de_ficheros_UNICODE(d.ruta_w(hondo).c_str(), L"txt", &lista);
    EXPECT_EQ(toma_contenido(lista), (contenido{d.ruta(hondo), {nombre}}));
    cdir_lista_de_directorios_UNICODE(d.ruta_w(hondo).c_str(), L"*", &lista);
    EXPECT_EQ(toma_contenido(lista), (contenido{d.ruta(hondo), {"sub"}}));
    EXPECT_EQ(lumodir_existenFicheros(d.ruta_a(hondo).c_str()), 1)
        << "the 8-bit question asks the wide search";
    EXPECT_EQ(lumodir_existenSubdirectorios(d.ruta_a(hondo).c_str()), 1);
    ListaFicheros corta;
    cdir_lista_de_ficheros(d.ruta_a(hondo).c_str(), "txt", &corta);
    EXPECT_EQ(toma_contenido(corta), (contenido{d.ruta(hondo), {nombre}}));
    cdir_lista_de_directorios(d.ruta_a(hondo).c_str(), "*", &corta);
    EXPECT_EQ(toma_contenido(corta), (contenido{d.ruta(hondo), {"sub"}}));
}

TEST(listas_ficheros, una_lista_de_ocho_bits_no_confunde_ficheros_ni_corta_nombres) {
    const en_pagina p(1252);
    directorio_temporal d;
    d.fichero("a.txt");
    d.fichero("\uff41.txt");
    d.fichero("\u0131.txt");
    d.directorio("\uff44ir");
    ListaFicheros lista;
    cdir_lista_de_ficheros(d.ruta_a().c_str(), "txt", &lista);
    EXPECT_EQ(toma_contenido(lista), (contenido{d.ruta(), {"?.txt", "?.txt", "a.txt"}}));
    cdir_lista_de_directorios(d.ruta_a().c_str(), "*", &lista);
    EXPECT_EQ(toma_contenido(lista), (contenido{d.ruta(), {"?ir"}}));
    // Names of three bytes a character, far beyond what a record of the system's 8-bit search holds.
    std::string largo;
    for (int i = 0; i < 250; ++i) {
        largo += "\u4e2d";
    }
    busqueda_falsa falsa;
    falsa.patrones["C:\\d\\*"] = {{largo}, {largo + "d", FILE_ATTRIBUTE_DIRECTORY}};
    const sustituye utf8(interno::plataforma::pagina_de_codigos, CP_UTF8);
    cdir_lista_de_ficheros("C:\\d", "*", &lista);
    ASSERT_EQ(lista.num, 1u);
    EXPECT_EQ(std::string(lista.lista[0]), largo);
    cdir_libera_lista_de_ficheros(&lista);
    cdir_lista_de_directorios("C:\\d", "*", &lista);
    ASSERT_EQ(lista.num, 1u);
    EXPECT_EQ(std::string(lista.lista[0]), largo + "d");
    cdir_libera_lista_de_ficheros(&lista);
}

TEST(listas_ficheros, el_censo_cuenta_nombres_matriz_y_path) {
    for (const unsigned num : {0u, 1u, 15u, 16u, 17u, 33u}) {
        busqueda_falsa falsa;
        falsa.patrones["C:\\d\\*"] = {{"."}};
        falsa.patrones["C:\\d\\*"][0].atributos = FILE_ATTRIBUTE_DIRECTORY;
        for (unsigned i = 0; i < num; ++i) {
            falsa.patrones["C:\\d\\*"].push_back({std::to_string(i)});
        }
        const auto vivos = lumospy_bloques_vivos();
        ListaFicheros_u lista;
        cdir_lista_de_ficheros_UNICODE(L"C:\\d", L"*", &lista);
        EXPECT_EQ(lumospy_bloques_vivos() - vivos, num + 1 + (num > 0 ? 1 : 0));
        EXPECT_EQ(toma_contenido(lista).lista.size(), num);
        EXPECT_EQ(lumospy_bloques_vivos(), vivos);
    }
}

TEST(listas_ficheros, los_argumentos_nulos_se_informan_y_dan_listas_vacias) {
    const nombres dir{"(directorio) != NULL"};
    const nombres pat{"(path_filtro_generico) != NULL"};
    const nombres lis{"(lista) != NULL"};
    const nombres todo{"(directorio) != NULL", "(path_filtro_generico) != NULL", "(lista) != NULL"};
    busqueda_falsa falsa;
    ListaFicheros_u u = {};
    ListaFicheros a = {};
    const auto espera = [&](const nombres& informes) {
        EXPECT_EQ(toma_expresiones(), informes);
        EXPECT_EQ(toma_contenido(u), (contenido{"(NULL)", {}}));
        EXPECT_EQ(toma_contenido(a), (contenido{"(NULL)", {}}));
        EXPECT_EQ(falsa.abiertos, nombres{});
    };
    cdir_lista_de_ficheros_UNICODE(nullptr, L"*", &u), espera(dir);
    cdir_lista_de_ficheros_UNICODE(L"C:\\d", L"*", nullptr), espera(lis);
    cdir_lista_de_ficheros(nullptr, "*", &a), espera(dir);
    cdir_lista_de_ficheros("C:\\d", "*", nullptr), espera(lis);
    cdir_lista_de_ficherosFiltro_UNICODE(nullptr, L"*", L"*", &u), espera(dir);
    cdir_lista_de_ficherosFiltro_UNICODE(L"C:\\d", L"*", nullptr, &u), espera(pat);
    cdir_lista_de_ficherosFiltro_UNICODE(nullptr, L"*", nullptr, nullptr), espera(todo);
    cdir_lista_de_ficherosFiltro(nullptr, "*", "*", &a), espera(dir);
    cdir_lista_de_ficherosFiltro("C:\\d", "*", nullptr, &a), espera(pat);
    cdir_lista_de_ficherosFiltro(nullptr, "*", nullptr, nullptr), espera(todo);
    cdir_lista_de_ficherosFiltro_en_unidad(L"C:", nullptr, L"*", L"*", &u), espera(dir);
    cdir_lista_de_ficherosFiltro_en_unidad(L"C:", L"\\d", L"*", nullptr, &u), espera(pat);
    cdir_lista_de_ficherosFiltro_en_unidad(L"C:", L"\\d", L"*", L"*", nullptr), espera(lis);
    cdir_lista_de_ficheros_en_path_filtro_UNICODE(nullptr, &u), espera(pat);
    cdir_lista_de_ficheros_en_path_filtro_UNICODE(L"C:\\d\\*", nullptr), espera(lis);
    cdir_lista_de_ficheros_en_path_filtro(nullptr, &a), espera(pat);
    cdir_lista_de_ficheros_en_path_filtro("C:\\d\\*", nullptr), espera(lis);
    cdir_lista_de_directorios_UNICODE(nullptr, L"*", &u), espera(dir);
    cdir_lista_de_directorios_UNICODE(L"C:\\d", nullptr, &u), espera(pat);
    cdir_lista_de_directorios_UNICODE(nullptr, nullptr, nullptr), espera(todo);
    cdir_lista_de_directorios(nullptr, "*", &a), espera(dir);
    cdir_lista_de_directorios("C:\\d", nullptr, &a), espera(pat);
    cdir_lista_de_directorios(nullptr, nullptr, nullptr), espera(todo);
}

TEST(listas_ficheros, liberar_informa_de_registros_rotos) {
    cdir_libera_lista_de_ficheros(nullptr);
    ESPERA_INFORMES("(lista) != NULL");
    cdir_libera_lista_de_ficheros_UNICODE(nullptr);
    ESPERA_INFORMES("(lista) != NULL");
    ListaFicheros_u ancha = {nullptr, 3, nullptr};
    cdir_libera_lista_de_ficheros_UNICODE(&ancha);
    ESPERA_INFORMES("(lista->lista) != NULL");
    EXPECT_EQ(ancha.num, 0u);
    wchar_t* nombres_w[1] = {};
    ancha = {nullptr, 0, nombres_w};
    cdir_libera_lista_de_ficheros_UNICODE(&ancha);
    ESPERA_INFORMES("lista->lista == NULL");
    EXPECT_TRUE(ancha.lista == nombres_w) << "not its own: left alone";
    ListaFicheros corta = {nullptr, 3, nullptr};
    cdir_libera_lista_de_ficheros(&corta);
    ESPERA_INFORMES("(lista->lista) != NULL");
    char* nombres_a[1] = {};
    corta = {nullptr, 0, nombres_a};
    cdir_libera_lista_de_ficheros(&corta);
    ESPERA_INFORMES("lista->lista == NULL");
    // Empty but for its path.
    ListaFicheros solo_path;
    cdir_lista_de_ficheros("C:\\no\\existe", "*", &solo_path);
    EXPECT_EQ(toma_contenido(solo_path), (contenido{"C:\\no\\existe", {}}));
}

TEST(listas_ficheros, si_hay_ficheros_y_si_hay_subdirectorios) {
    struct fila {
        const char* que;
        std::vector<entrada_falsa> entradas;
        unsigned short ficheros;
        unsigned short subdirectorios;
    };
    constexpr DWORD dir = FILE_ATTRIBUTE_DIRECTORY;
    const fila filas[] = {
        {.que = "nothing", .entradas = {}, .ficheros = 0, .subdirectorios = 0},
        {.que = "empty", .entradas = {{".", dir}, {"..", dir}}, .ficheros = 0, .subdirectorios = 0},
        {.que = "dotted", .entradas = {{".", dir}, {".git", dir}}, .ficheros = 0, .subdirectorios = 0},
        {.que = "dotted file", .entradas = {{".", dir}, {".f"}}, .ficheros = 1, .subdirectorios = 0},
        {.que = "directory", .entradas = {{".", dir}, {"d", dir}}, .ficheros = 0, .subdirectorios = 1},
        {.que = "hidden",
         .entradas = {{"f", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM}},
         .ficheros = 1,
         .subdirectorios = 0},
        {.que = "hidden directory",
         .entradas = {{"d", dir | FILE_ATTRIBUTE_HIDDEN}},
         .ficheros = 0,
         .subdirectorios = 1},
    };
    for (const fila& f : filas) {
        busqueda_falsa falsa;
        falsa.patrones["C:\\d\\*"] = f.entradas;
        EXPECT_EQ(lumodir_existenFicheros("C:\\d"), f.ficheros) << f.que;
        EXPECT_EQ(lumodir_existenFicheros_UNICODE(L"C:\\d"), f.ficheros) << f.que;
        EXPECT_EQ(lumodir_existenSubdirectorios("C:\\d"), f.subdirectorios) << f.que;
        EXPECT_EQ(lumodir_existenSubdirectorios_UNICODE(L"C:\\d"), f.subdirectorios) << f.que;
    }
    busqueda_falsa falsa;
    falsa.patrones["C:\\d\\\\*"] = {{"uno"}, {"dos"}, {"tres"}};
    EXPECT_EQ(lumodir_existenFicheros_UNICODE(L"C:\\d\\"), 1) << "the pattern is the directory and \\*";
    EXPECT_EQ(falsa.pasos, 0) << "the first entry decides";
    // One separator is the root; two would be the beginning of a share.
    const std::string raiz = completa("\\");
    falsa.patrones[raiz + "*"] = {{"\u00f1", dir}, {"f"}};
    for (auto* prueba : {lumodir_existenFicheros_UNICODE, lumodir_existenSubdirectorios_UNICODE}) {
        EXPECT_EQ(prueba(L"\\"), 1);
    }
    for (auto* prueba : {lumodir_existenFicheros, lumodir_existenSubdirectorios}) {
        EXPECT_EQ(prueba("\\"), 1);
    }
    for (const std::string& patron : falsa.abiertos) {
        EXPECT_NE(patron.substr(0, 3), "\\\\*");
    }
    for (const char* dado : {"x", "\\d", "/d"}) {
        falsa.patrones[completa(dado) + "\\*"] = {{"f"}};
        EXPECT_EQ(lumodir_existenFicheros_UNICODE(w(dado).c_str()), 1) << dado;
    }
}

TEST(listas_ficheros, si_hay_entradas_en_directorios_reales) {
    directorio_temporal d;
    d.directorio("con_\xC3\xB1\\sub");
    d.fichero("con_fichero\\f");
    EXPECT_EQ(lumodir_existenFicheros(d.ruta_a("con_\xC3\xB1").c_str()), 0);
    EXPECT_EQ(lumodir_existenSubdirectorios(d.ruta_a("con_\xC3\xB1").c_str()), 1);
    EXPECT_EQ(lumodir_existenFicheros(d.ruta_a("con_fichero").c_str()), 1);
    EXPECT_EQ(lumodir_existenSubdirectorios_UNICODE(d.ruta_w("con_fichero").c_str()), 0);
    EXPECT_EQ(lumodir_existenFicheros_UNICODE(d.ruta_w("con_fichero\\f").c_str()), 0) << "a file";
    EXPECT_EQ(lumodir_existenFicheros_UNICODE(d.ruta_w("no").c_str()), 0);
    EXPECT_EQ(lumodir_existenSubdirectorios_UNICODE(d.ruta_w("no").c_str()), 0);
    for (auto* prueba : {lumodir_existenFicheros_UNICODE, lumodir_existenSubdirectorios_UNICODE}) {
        EXPECT_EQ(prueba(nullptr), 0);
        ESPERA_INFORMES("(path) != NULL");
    }
    for (auto* prueba : {lumodir_existenFicheros, lumodir_existenSubdirectorios}) {
        EXPECT_EQ(prueba(nullptr), 0);
        ESPERA_INFORMES("(path) != NULL");
    }
}

TEST(listas_ficheros, lista_de_fichero_por_extensiones) {
    busqueda_falsa falsa;
    falsa.patrones["C:\\d\\*"] = {
        {"."},        {"b.txt"}, {"B.TXT"},  {"a.dat"},   {"sin"},
        {"x.tar.gz"}, {"b.txt"}, {"punto."}, {".config"}, {"sub.txt", FILE_ATTRIBUTE_DIRECTORY}};
    falsa.patrones["C:\\d\\*"][0].atributos = FILE_ATTRIBUTE_DIRECTORY;
    const auto lista = [](const std::vector<const wchar_t*>& extensiones) {
        ArrCADENA_u* arr = arr_CreaCADENA_u(0);
        for (const wchar_t* extension : extensiones) {
            arr_AppendCADENA_u(arr, extension);
        }
        const nombres resultado = toma_ordenado(lumodir_lista_de_fichero(L"C:\\d\\*", arr));
        arr_DestruyeCADENA_u(&arr);
        return resultado;
    };
    EXPECT_EQ(toma_ordenado(lumodir_lista_de_fichero(L"C:\\d\\*", nullptr)),
              (nombres{".config", "B.TXT", "a.dat", "b.txt", "b.txt", "punto.", "sin", "x.tar.gz"}));
    EXPECT_EQ(lista({L"txt"}), (nombres{"B.TXT", "b.txt", "b.txt"})) << "repeats stay, sorted by code unit";
    EXPECT_EQ(lista({L"DAT", L"gz"}), (nombres{"a.dat", "x.tar.gz"}));
    EXPECT_EQ(lista({L"tar.gz", L".txt", L"*"}), nombres{});
    EXPECT_EQ(lista({L"config"}), nombres{".config"})
        << "what follows the last point, whatever stands before";
    EXPECT_EQ(lista({L""}), nombres{"punto."});
    EXPECT_EQ(lista({}), nombres{});
    EXPECT_EQ(toma_ordenado(lumodir_lista_de_fichero(L"C:\\no\\*", nullptr)), nombres{});
    EXPECT_EQ(toma_ordenado(lumodir_lista_de_fichero(nullptr, nullptr)), nombres{});
    ESPERA_INFORMES("(path_filtro_generico) != NULL");
}

TEST(listas_ficheros, un_error_a_mitad_deja_lo_que_habia_y_se_informa) {
    busqueda_falsa falsa;
    falsa.patrones["C:\\d\\*"] = {{"b"}, {"a"}};
    falsa.codigo_al_final = ERROR_NETNAME_DELETED;
    ListaFicheros_u lista;
    cdir_lista_de_ficheros_UNICODE(L"C:\\d", L"*", &lista);
    EXPECT_EQ(toma_contenido(lista).lista, (nombres{"a", "b"}));
    const informe dado = toma_el_informe();
    EXPECT_EQ(dado.detalle, "GetLastError() = 64 [a]");
    EXPECT_EQ(dado.etiqueta, "dirwin (LUMODIR.DLL)");
}

TEST(listas_ficheros, ningun_fallo_del_sistema_deja_nada_abierto) {
    directorio_temporal d;
    d.fichero("a.txt");
    d.fichero("b.txt");
    ListaFicheros_u ancha = {};
    ListaFicheros corta = {};
    con_cada_fallo([] {},
                   [&] {
                       cdir_lista_de_ficherosFiltro_UNICODE(d.ruta_w().c_str(), L"txt", L"*", &ancha);
                       cdir_lista_de_ficheros(d.ruta_a().c_str(), "txt", &corta);
                       lumodir_existenSubdirectorios_UNICODE(d.ruta_w().c_str());
                   },
                   [&](const ronda& r) {
                       // A first search that fails is made good by the one of the whole directory.
                       if (r.limpia || (r.fallada == "FindClose" && !r.para_siempre)) {
                           EXPECT_EQ(ancha.num, 2u) << r;
                           EXPECT_EQ(corta.num, 2u) << r;
                       }
                       libera(&ancha);
                       libera(&corta);
                       const bool a_mitad = r.fallada == "FindNextFileW";
                       const std::size_t informes = toma_informes().size();
                       EXPECT_TRUE(a_mitad ? informes >= 1 : r.para_siempre || informes == 0) << r;
                   });
}
