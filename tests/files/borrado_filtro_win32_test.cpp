// Deleting what a search pattern finds.
#include "apoyo/borrados_vistos.hpp"
#include "apoyo/directorio.hpp"
#include "apoyo/fallos.hpp"
#include "apoyo/volumen_falso.hpp"
#include "cdir.h"

using namespace apoyo;

namespace {

using lista = std::vector<std::string>;

struct fila {
    std::string filtro;  // below the directory
    lista queda;
    bool se_informa = false;
};

const fila filas[] = {
    {.filtro = "*.tmp", .queda = {"b.txt", "protegido.tmp", "sub.tmp\\", "sub.tmp\\c.tmp", "\u00f1 f.txt"}},
    {.filtro = "*.*", .queda = {"protegido.tmp", "sub.tmp\\", "sub.tmp\\c.tmp"}},
    {.filtro = "*", .queda = {"protegido.tmp", "sub.tmp\\", "sub.tmp\\c.tmp"}},
    {.filtro = "a.*", .queda = {"b.txt", "protegido.tmp", "sub.tmp\\", "sub.tmp\\c.tmp", "\u00f1 f.txt"}},
    {.filtro = "b.txt", .queda = {"a.tmp", "protegido.tmp", "sub.tmp\\", "sub.tmp\\c.tmp", "\u00f1 f.txt"}},
    {.filtro = "\u00f1 f.txt", .queda = {"a.tmp", "b.txt", "protegido.tmp", "sub.tmp\\", "sub.tmp\\c.tmp"}},
    // Other wildcards are reported and carried out all the same.
    {.filtro = "b*.txt",
     .queda = {"a.tmp", "protegido.tmp", "sub.tmp\\", "sub.tmp\\c.tmp", "\u00f1 f.txt"},
     .se_informa = true},
    {.filtro = "?.t?p",
     .queda = {"b.txt", "protegido.tmp", "sub.tmp\\", "sub.tmp\\c.tmp", "\u00f1 f.txt"},
     .se_informa = true},
    // Nothing matches for the system; the enumerator's looser rules must not delete in its place.
    {.filtro = "*~",
     .queda = {"a.tmp", "b.txt", "protegido.tmp", "sub.tmp\\", "sub.tmp\\c.tmp", "\u00f1 f.txt"},
     .se_informa = true},
    {.filtro = "b",
     .queda = {"a.tmp", "b.txt", "protegido.tmp", "sub.tmp\\", "sub.tmp\\c.tmp", "\u00f1 f.txt"}},
    {.filtro = "*.zip",
     .queda = {"a.tmp", "b.txt", "protegido.tmp", "sub.tmp\\", "sub.tmp\\c.tmp", "\u00f1 f.txt"}},
    {.filtro = "no\\*.*",
     .queda = {"a.tmp", "b.txt", "protegido.tmp", "sub.tmp\\", "sub.tmp\\c.tmp", "\u00f1 f.txt"}},
};

}  // namespace

TEST(borrado_filtro, solo_se_borra_lo_que_encuentra_el_sistema) {
    for (const fila& caso : filas) {
        for (const bool ancha : {true, false}) {
            const directorio_temporal d;
            d.fichero("a.tmp");
            d.fichero("b.txt");
            d.fichero("\u00f1 f.txt");
            d.fichero("protegido.tmp", "x", FILE_ATTRIBUTE_READONLY);
            d.fichero("sub.tmp\\c.tmp");
            const std::string filtro = d.ruta(caso.filtro);
            if (ancha) {
                cdir_delete_ficheros_UNICODE(w(filtro).c_str());
            } else {
                cdir_delete_ficheros(cp1252(filtro).c_str());
            }
            EXPECT_EQ(d.arbol(), caso.queda) << caso.filtro << (ancha ? " wide" : " 8-bit");
            const auto informes = toma_informes();
            ASSERT_EQ(informes.size(), caso.se_informa ? 1u : 0u) << caso.filtro;
            if (caso.se_informa) {
                EXPECT_EQ(informes[0].expresion, "path_correcto == CIERTO");
                EXPECT_EQ(informes[0].detalle, filtro);
            }
        }
    }
}

TEST(borrado_filtro, cada_fichero_tiene_un_intento_y_los_fallos_se_callan) {
    const directorio_temporal d;
    d.fichero("a.tmp");
    d.fichero("b.tmp");
    borrados_vistos vistos;
    vistos.falla = [](const std::string& ruta, bool) {
        return ruta.ends_with("\\a.tmp") ? DWORD{ERROR_SHARING_VIOLATION} : 0;
    };
    cdir_delete_ficheros_UNICODE(d.ruta_w("*.tmp").c_str());
    std::sort(vistos.rutas.begin(), vistos.rutas.end());
    EXPECT_EQ(vistos.rutas, (lista{d.ruta("a.tmp"), d.ruta("b.tmp")}));
    EXPECT_EQ(d.arbol(), lista{"a.tmp"});
    EXPECT_EQ(toma_esperas().size(), 0u);
}

TEST(borrado_filtro, un_filtro_nulo_vacio_o_en_blanco_se_informa_y_no_borra_nada) {
    fallos libro;
    cdir_delete_ficheros_UNICODE(nullptr);
    cdir_delete_ficheros(nullptr);
    EXPECT_EQ(toma_expresiones(), lista(2, "(path_filtro) != NULL"));
    EXPECT_EQ(libro.llamadas(), 0u);
    for (const char* blanco : {"", " "}) {
        cdir_delete_ficheros_UNICODE(w(blanco).c_str());
        cdir_delete_ficheros(blanco);
        const lista expresiones = toma_expresiones();
        EXPECT_EQ(expresiones, (lista{"path_correcto == CIERTO", "(path_filtro_generico) != NULL",
                                      "path_correcto == CIERTO", "(path_filtro_generico) != NULL"}))
            << "'" << blanco << "'";
    }
    EXPECT_EQ(libro.cuenta("DeleteFileW"), 0u);
    EXPECT_EQ(libro.cuenta("abre_entrada"), 0u);
    EXPECT_EQ(libro.cuenta("SetFileInformationByHandle"), 0u);
}

TEST(borrado_filtro, rutas_largas) {
    const directorio_temporal d;
    const std::string larga = std::string(130, 'a') + "\\" + std::string(130, 'b');
    d.fichero(larga + "\\x.tmp");
    d.fichero(larga + "\\x.txt");
    cdir_delete_ficheros_UNICODE(d.ruta_w(larga + "\\*.tmp").c_str());
    EXPECT_FALSE(d.existe(larga + "\\x.tmp"));
    EXPECT_TRUE(d.existe(larga + "\\x.txt"));
}

// What the system finds under a pattern may be a name whose end it would cut from a path: then that of another file.
TEST(borrado_filtro, se_borra_el_nombre_que_se_encontro_y_no_el_recortado) {
    for (const char* filtro : {"f.txt?", "g?", "h??", "*.txt*"}) {
        const directorio_temporal d;
        for (const char* nombre : {"f.txt", "f.txt ", "g", "g.", "h", "h  "}) {
            d.fichero(nombre);
        }
        lista queda = d.arbol();
        ASSERT_EQ(queda.size(), 6u);
        WIN32_FIND_DATAW datos;
        const HANDLE h = ::FindFirstFileW(d.ruta_w(filtro).c_str(), &datos);
        ASSERT_NE(h, INVALID_HANDLE_VALUE) << filtro;
        do {
            std::erase(queda, u8(datos.cFileName));
        } while (::FindNextFileW(h, &datos));
        ::FindClose(h);
        cdir_delete_ficheros_UNICODE(d.ruta_w(filtro).c_str());
        toma_informes();
        EXPECT_EQ(d.arbol(), queda) << filtro;
    }
}

TEST(borrado_filtro, los_nombres_no_son_caminos_y_el_directorio_es_el_que_se_busco) {
    for (const DWORD rechazo : {DWORD{0}, DWORD{ERROR_INVALID_FUNCTION}}) {
        volumen_falso v;
        v.pon("C:\\fuera", {{"a"}, {"v"}});
        v.pon("C:\\d", {{"f "}, {"..\\v"}, {"../fuera/a"}, {"con"}, {"sub", FILE_ATTRIBUTE_DIRECTORY}});
        v.pon("C:", {{"v"}});
        v.rechaza_relativo = rechazo;
        v.rechaza_posix = rechazo;
        cdir_delete_ficheros_UNICODE(L"C:\\d\\*");
        EXPECT_EQ(v.arbol("C:\\d"), (lista{"..\\v", "../fuera/a", "sub\\"}));
        EXPECT_TRUE(v.hay("C:\\v"));
        EXPECT_EQ(v.arbol("C:\\fuera"), (lista{"a", "v"}));
        EXPECT_EQ(v.abiertas(), 0u);
    }
    // A directory that is swapped once its files have been found.
    for (unsigned n = 1; n <= 6; ++n) {
        volumen_falso v;
        v.pon("C:\\fuera", {{"a"}, {"b"}});
        v.pon("C:\\d", {{"a"}, {"b"}, {"c"}});
        unsigned van = 0;
        v.al_abrir = [&](const std::string&) {
            if (++van == n + 1) {
                v.cambia("C:\\d", {"", enlace_dir, IO_REPARSE_TAG_SYMLINK, "C:\\fuera"});
            }
        };
        cdir_delete_ficheros_UNICODE(L"C:\\d\\*");
        EXPECT_EQ(v.arbol("C:\\fuera"), (lista{"a", "b"})) << n;
    }
}

// The directory that was opened and the one that was searched must be one: another may stand there for a moment.
TEST(borrado_filtro, lo_que_se_encuentra_en_otro_directorio_no_se_borra_en_ninguno) {
    const volumen_falso::entrada otros[] = {{"", FILE_ATTRIBUTE_DIRECTORY},
                                            {"", enlace_dir, IO_REPARSE_TAG_SYMLINK, "C:\\fuera"}};
    for (const volumen_falso::entrada& otro : otros) {
        for (const bool ancha : {true, false}) {
            volumen_falso v;
            v.pon("C:\\fuera", {{"a"}});
            v.pon("C:\\d", {{"a"}, {"b"}});
            v.al_buscar = [&] {
                ASSERT_TRUE(v.cambia("C:\\d", otro, {{"a"}, {"c"}}));
                v.al_buscar = nullptr;
            };
            ancha ? cdir_delete_ficheros_UNICODE(L"C:\\d\\*") : cdir_delete_ficheros("C:\\d\\*");
            EXPECT_EQ(v.borrados, lista{});
            EXPECT_EQ(v.arbol("C:\\fuera"), lista{"a"});
            EXPECT_EQ(v.busquedas_hechas.size(), 1u);
            EXPECT_EQ(v.abiertas(), 0u);
        }
    }
    volumen_falso v;
    v.pon("C:\\d", {{"a"}, {"b"}});
    v.dice_numeros = false;
    cdir_delete_ficheros_UNICODE(L"C:\\d\\*");
    EXPECT_EQ(v.borrados, (lista{"a", "b"})) << "where no numbers are told, by the names";
}

TEST(borrado_filtro, con_cualquier_llamada_fallando_no_se_borra_de_mas) {
    const directorio_temporal d;
    con_cada_fallo(
        [&] {
            d.fichero("a.tmp");
            d.fichero("b.txt");
            d.fichero("protegido.tmp", "x", FILE_ATTRIBUTE_READONLY);
            d.fichero("sub.tmp\\c.tmp");
        },
        [&] { cdir_delete_ficheros_UNICODE(d.ruta_w("*.tmp").c_str()); },
        [&](const ronda& r) {
            EXPECT_TRUE(d.existe("b.txt")) << r;
            EXPECT_TRUE(!r.limpia || !d.existe("a.tmp"));
            EXPECT_TRUE(d.es_de_solo_lectura("protegido.tmp")) << r;
            EXPECT_TRUE(d.existe("sub.tmp\\c.tmp")) << r;
            d.limpia();
            toma_informes();
        });
}

// "." and ".." at the end of the directory lose nothing of a name.
TEST(borrado_filtro, un_directorio_que_acaba_en_retroceso_es_el_de_arriba) {
    const directorio_temporal d;
    d.directorio("a\\b");
    for (const char* directorio : {"a\\b\\..", "a\\.", "a\\b\\.\\.."}) {
        d.fichero("a\\x.tmp");
        d.fichero("a\\x.txt");
        d.fichero("x.tmp");
        cdir_delete_ficheros_UNICODE(d.ruta_w(std::string(directorio) + "\\*.tmp").c_str());
        EXPECT_FALSE(d.existe("a\\x.tmp")) << directorio;
        EXPECT_TRUE(d.existe("a\\x.txt")) << directorio;
        EXPECT_TRUE(d.existe("x.tmp")) << directorio;
    }
}
