// Tree listings over real and false trees: order, links, depth.
#include "apoyo/directorio.hpp"
#include "apoyo/enlace.hpp"
#include "apoyo/fallos.hpp"
#include "apoyo/volumen_falso.hpp"
#include "companions/lumospy.h"
#include "listings/listas_ficheros.hpp"
#include "lumodir.h"

using namespace apoyo;

namespace {

using nombres = std::vector<std::string>;

// Each record as "path: name name".
nombres toma_arbol(unsigned long num, ListaFicheros_u* listas) {
    nombres resultado;
    EXPECT_EQ(num == 0, listas == nullptr);
    for (unsigned long i = 0; i < num; ++i) {
        EXPECT_EQ(listas[i].num == 0, listas[i].lista == nullptr);
        std::string registro = u8(listas[i].path) + ":";
        for (unsigned long k = 0; k < listas[i].num; ++k) {
            registro += " " + u8(listas[i].lista[k]);
        }
        resultado.push_back(registro);
    }
    lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(num, &listas);
    EXPECT_EQ(listas, nullptr);
    return resultado;
}

nombres con_ficheros(const std::string& base, const wchar_t* extension = nullptr) {
    unsigned long num = 77;
    ListaFicheros_u basura;
    ListaFicheros_u* listas = &basura;
    lumodir_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(w(base).c_str(), extension, &num,
                                                                     &listas);
    return toma_arbol(num, listas);
}

nombres todos(const std::string& base, const wchar_t* extension = nullptr) {
    unsigned long num = 77;
    ListaFicheros_u basura;
    ListaFicheros_u* listas = &basura;
    lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE(w(base).c_str(), extension, &num, &listas);
    return toma_arbol(num, listas);
}

}  // namespace

TEST(listas_arbol, la_base_primero_y_entre_hermanos_el_ultimo) {
    directorio_temporal d;
    d.fichero("R\\r");
    d.fichero("R\\a\\1");
    d.fichero("R\\b\\2");
    const std::string r = d.ruta("R");
    const nombres esperado{r + ": r", r + "\\b: 2", r + "\\a: 1"};
    EXPECT_EQ(todos(r), esperado);
    EXPECT_EQ(todos(r + "\\"), esperado) << "one final separator goes";
    EXPECT_EQ(con_ficheros(r), esperado);
}

TEST(listas_arbol, en_profundidad_y_con_filtro) {
    directorio_temporal d;
    d.fichero("a\\x\\1.txt");
    d.fichero("a\\y\\2.dat");
    d.fichero("B\\3.TXT");
    d.fichero("B\\0.txt");
    d.directorio("c");
    d.fichero(".git\\4.txt");
    const std::string r = d.ruta();
    EXPECT_EQ(todos(r, L"txt"), (nombres{r + ":", r + "\\c:", r + "\\B: 0.txt 3.TXT",
                                         r + "\\a:", r + "\\a\\y:", r + "\\a\\x: 1.txt"}));
    EXPECT_EQ(con_ficheros(r, L"txt"), (nombres{r + "\\B: 0.txt 3.TXT", r + "\\a\\x: 1.txt"}));
    EXPECT_EQ(con_ficheros(r, L"png"), nombres{}) << "no record: count 0 and no array";
    EXPECT_EQ(con_ficheros(r, L"d?t"), nombres{r + "\\a\\y: 2.dat"});
}

TEST(listas_arbol, una_base_que_no_se_puede_leer) {
    directorio_temporal d;
    d.fichero("f");
    EXPECT_EQ(con_ficheros(d.ruta("no")), nombres{});
    EXPECT_EQ(todos(d.ruta("no")), nombres{d.ruta("no") + ":"})
        << "every directory has a record, the base too";
    EXPECT_EQ(con_ficheros(d.ruta("f")), nombres{}) << "a file";
}

TEST(listas_arbol, como_se_componen_los_paths) {
    struct fila {
        std::string base;
        std::string raiz;  // as the system is given it
        nombres registros;
    };
    wchar_t actual[MAX_PATH];
    ::GetCurrentDirectoryW(MAX_PATH, actual);
    const std::string aqui = u8(actual);
    const std::string unidad = aqui.substr(0, 2);
    const fila filas[] = {
        {.base = "C:\\", .raiz = "C:\\", .registros = {"C:: f", "C:\\s: g"}},
        {.base = "C:", .raiz = "C:\\", .registros = {"C:: f", "C:\\s: g"}},
        {.base = "\\\\?\\C:\\", .raiz = "\\\\?\\C:\\", .registros = {"\\\\?\\C:: f", "\\\\?\\C:\\s: g"}},
        {.base = "\\\\?\\Volume{1}\\",
         .raiz = "\\\\?\\Volume{1}\\",
         .registros = {"\\\\?\\Volume{1}: f", "\\\\?\\Volume{1}\\s: g"}},
        {.base = "C:/d/", .raiz = "C:/d", .registros = {"C:\\d: f", "C:\\d\\s: g"}},
        {.base = "C:\\d\\\\", .raiz = "C:\\d", .registros = {"C:\\d: f", "C:\\d\\s: g"}},
        {.base = "\\\\srv\\r", .raiz = "\\\\srv\\r", .registros = {"\\\\srv\\r: f", "\\\\srv\\r\\s: g"}},
        {.base = "rel", .raiz = aqui + "\\rel", .registros = {"rel: f", "rel\\s: g"}},
        {.base = "\\", .raiz = unidad + "\\", .registros = {": f", "\\s: g"}},
        {.base = "", .raiz = aqui, .registros = {": f", "s: g"}},
    };
    for (const fila& f : filas) {
        volumen_falso falso;
        falso.pon(f.raiz, {{"f"}, {"s", atributo_dir}});
        falso.pon(f.raiz + "\\s", {{"g"}});
        EXPECT_EQ(todos(f.base), f.registros) << f.base;
        ASSERT_EQ(falso.aperturas.size(), 2u) << f.base;
        EXPECT_EQ(falso.aperturas[0].nombre, f.raiz) << f.base;
        EXPECT_EQ(falso.aperturas[1].nombre, "s") << f.base;
        EXPECT_TRUE(falso.aperturas[1].relativa) << f.base;
    }
}

TEST(listas_arbol, no_entra_en_los_enlaces) {
    struct fila {
        const char* que;
        DWORD atributos;
        DWORD etiqueta;
        bool entra;
    };
    constexpr DWORD reparse = atributo_dir | FILE_ATTRIBUTE_REPARSE_POINT;
    const fila filas[] = {
        {.que = "symbolic link", .atributos = reparse, .etiqueta = IO_REPARSE_TAG_SYMLINK, .entra = false},
        {.que = "junction", .atributos = reparse, .etiqueta = IO_REPARSE_TAG_MOUNT_POINT, .entra = false},
        {.que = "unknown tag", .atributos = reparse, .etiqueta = 0, .entra = false},
        {.que = "cloud placeholder", .atributos = reparse, .etiqueta = 0x9000601A, .entra = true},
        {.que = "plain", .atributos = atributo_dir, .etiqueta = 0, .entra = true},
        {.que = "stale tag", .atributos = atributo_dir, .etiqueta = IO_REPARSE_TAG_SYMLINK, .entra = true},
    };
    for (const fila& f : filas) {
        for (const bool solo_abierto : {false, true}) {  // the entry says so too, or only what was opened
            volumen_falso falso;
            falso.pon("C:\\d", {{"uno"}, {"s", solo_abierto ? atributo_dir : f.atributos, f.etiqueta}});
            falso.pon("C:\\d\\s", {{"dos"}});
            falso["C:\\d\\s"].atributos_abierto = f.atributos;
            const nombres sin{"C:\\d: uno"};
            const nombres con{"C:\\d: uno", "C:\\d\\s: dos"};
            EXPECT_EQ(todos("C:\\d"), f.entra ? con : sin) << f.que;
            EXPECT_EQ(con_ficheros("C:\\d"), f.entra ? con : sin) << f.que;
        }
    }
}

TEST(listas_arbol, un_enlace_a_fichero_es_un_fichero) {
    volumen_falso falso;
    falso.pon("C:\\d", {{"enlace", FILE_ATTRIBUTE_REPARSE_POINT, IO_REPARSE_TAG_SYMLINK}});
    EXPECT_EQ(con_ficheros("C:\\d"), nombres{"C:\\d: enlace"});
}

TEST(listas_arbol, quinientos_niveles_y_cinco_mil_unidades) {
    volumen_falso falso;
    nombres esperado;
    std::string actual = "C:\\d";
    for (int i = 0; i <= 500; ++i) {
        falso.pon(actual, {{"f" + std::to_string(i)}});
        esperado.push_back(actual + ": f" + std::to_string(i));
        actual += "\\nivel0123456";
    }
    EXPECT_GT(actual.size(), 5000u);
    EXPECT_EQ(con_ficheros("C:\\d"), esperado);
    EXPECT_EQ(todos("C:\\d"), esperado);
}

TEST(listas_arbol, un_arbol_hondo_de_verdad) {
    directorio_temporal d;
    std::string relativa = std::string(60, 'x');
    nombres esperado{d.ruta() + ":"};
    for (int i = 0; i < 40; ++i) {
        d.directorio(relativa);
        esperado.push_back(d.ruta(relativa) + ":");
        relativa += "\\" + std::string(60, 'x');
    }
    EXPECT_GT(relativa.size(), 2400u);
    EXPECT_EQ(todos(d.ruta()), esperado);
}

TEST(listas_arbol, un_enlace_de_verdad_a_su_propio_padre) {
    directorio_temporal d;
    d.fichero("a\\1");
    const enlace arriba(d.ruta("a"), "arriba", "..");
    if (!arriba.hecho()) {
        GTEST_SKIP() << arriba.motivo() << "; false directories cover them";
    }
    ASSERT_TRUE(d.es_directorio("a\\arriba"));
    EXPECT_EQ(todos(d.ruta()), (nombres{d.ruta() + ":", d.ruta("a") + ": 1"}));
    EXPECT_EQ(con_ficheros(d.ruta()), nombres{d.ruta("a") + ": 1"});
    // Asked for by its own name it is a root that is not entered.
    EXPECT_EQ(todos(d.ruta("a\\arriba")), nombres{d.ruta("a\\arriba") + ":"});
    EXPECT_EQ(con_ficheros(d.ruta("a\\arriba")), nombres{});
    ListaFicheros_u lista;
    cdir_lista_de_directorios_UNICODE(d.ruta_w("a").c_str(), L"*", &lista);
    ASSERT_EQ(lista.num, 1u);
    EXPECT_EQ(u8(lista.lista[0]), "arriba");
    cdir_libera_lista_de_ficheros_UNICODE(&lista);
}

TEST(listas_arbol, lo_que_desaparece_o_falla_a_mitad_no_para_el_recorrido) {
    volumen_falso falso;
    // "b" is gone, or denied, by the time that it is opened.
    falso.pon("C:\\d", {{"a", atributo_dir}, {"b", atributo_dir}, {"c", atributo_dir}});
    falso.pon("C:\\d\\a", {{"1"}});
    falso.pon("C:\\d\\c", {{"3"}});
    for (const DWORD codigo : {2u, 3u, 5u, 53u}) {
        falso["C:\\d\\b"].codigo_al_abrir = codigo;
        EXPECT_EQ(todos("C:\\d"), (nombres{"C:\\d:", "C:\\d\\c: 3", "C:\\d\\b:", "C:\\d\\a: 1"})) << codigo;
        EXPECT_EQ(con_ficheros("C:\\d"), (nombres{"C:\\d\\c: 3", "C:\\d\\a: 1"})) << codigo;
    }
    ESPERA_INFORMES();
    // A walk that breaks off keeps what it had, and is reported once for each directory.
    for (const char* cual : {"C:\\d", "C:\\d\\a", "C:\\d\\c"}) {
        falso[cual].codigo_al_final = ERROR_NETNAME_DELETED;
    }
    EXPECT_EQ(con_ficheros("C:\\d"), (nombres{"C:\\d\\c: 3", "C:\\d\\a: 1"}));
    nombres detalles;
    for (const informe& i : toma_informes()) {
        detalles.push_back(i.detalle);
    }
    EXPECT_EQ(detalles,
              (nombres{"GetLastError() = 64 [c]", "GetLastError() = 64 [3]", "GetLastError() = 64 [1]"}));
}

TEST(listas_arbol, los_argumentos_nulos_se_informan) {
    unsigned long num = 77;
    ListaFicheros_u basura;
    for (auto* lista : {lumodir_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE,
                        lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE}) {
        ListaFicheros_u* listas = &basura;
        num = 77;
        lista(nullptr, L"*", &num, &listas);
        ESPERA_INFORMES("(dirBase) != NULL");
        EXPECT_EQ(num, 0u);
        EXPECT_EQ(listas, nullptr);
        listas = &basura;
        lista(L"C:\\d", L"*", nullptr, &listas);
        ESPERA_INFORMES("(numDir) != NULL");
        EXPECT_EQ(listas, nullptr);
        num = 77;
        lista(L"C:\\d", L"*", &num, nullptr);
        ESPERA_INFORMES("(ficheros) != NULL");
        EXPECT_EQ(num, 0u);
        lista(nullptr, nullptr, nullptr, nullptr);
        ESPERA_INFORMES("(dirBase) != NULL", "(numDir) != NULL", "(ficheros) != NULL");
    }
}

TEST(listas_arbol, liberar_informa_de_lo_que_no_cuadra) {
    lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(0, nullptr);
    ESPERA_INFORMES("(ficheros) != NULL");
    ListaFicheros_u* listas = nullptr;
    lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(0, &listas);
    ESPERA_INFORMES();
    lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(2, &listas);
    ESPERA_INFORMES("(*ficheros) != NULL");
    ListaFicheros_u registro = {};
    listas = &registro;
    lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(0, &listas);
    ESPERA_INFORMES("*ficheros == NULL");
    EXPECT_EQ(listas, &registro) << "left alone";
}

TEST(listas_arbol, el_censo_cuenta_matriz_registros_y_nombres) {
    volumen_falso falso;
    falso.pon("C:\\d", {{"uno"}, {"dos"}, {"s", atributo_dir}, {"vacio", atributo_dir}});
    falso.pon("C:\\d\\s", {{"tres"}});
    const auto vivos = lumospy_bloques_vivos();
    unsigned long num;
    ListaFicheros_u* listas;
    lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE(L"C:\\d", L"*", &num, &listas);
    // The array; three paths; two arrays of names; three names.
    EXPECT_EQ(lumospy_bloques_vivos() - vivos, 1u + 3 + 2 + 3);
    EXPECT_EQ(toma_arbol(num, listas).size(), 3u);
}

TEST(listas_arbol, ningun_fallo_del_sistema_deja_nada_abierto) {
    directorio_temporal d;
    d.fichero("a\\1");
    d.fichero("b\\2");
    unsigned long num = 0;
    ListaFicheros_u* listas = nullptr;
    con_cada_fallo([] {},
                   [&] {
                       lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE(d.ruta_w().c_str(),
                                                                                      nullptr, &num, &listas);
                   },
                   [&](const ronda& r) {
                       const nombres registros = toma_arbol(num, listas);
                       EXPECT_GE(registros.size(), 1u) << r;
                       if (r.limpia || r.fallada == "FindClose") {
                           EXPECT_EQ(registros.size(), r.para_siempre && !r.limpia ? registros.size() : 3u)
                               << r;
                       }
                       toma_informes();
                       EXPECT_EQ(d.arbol(), (nombres{"a\\", "a\\1", "b\\", "b\\2"})) << r;
                   });
}
