// The enumerator over real directories, and over false ones for what no file system here can show.
#include "listings/dirwin.hpp"

#include <algorithm>

#include "apoyo/busqueda_falsa.hpp"
#include "apoyo/directorio.hpp"
#include "apoyo/fallos.hpp"
#include "apoyo/paginas.hpp"
#include "companions/directorio_abierto.hpp"
#include "companions/lumospy.h"
#include "companions/plataforma.hpp"
#include "modelos/filtro.hpp"
#include "modelos/nomsfich.hpp"
#include "modelos/textos_de_pagina.hpp"

using namespace apoyo;

namespace {

// The two flavours of the exported functions under one name.
Dirwin* crea(const texto_a& patron) {
    return dirwin_crea(patron.c_str());
}
Dirwin_u* crea(const texto_w& patron) {
    return dirwin_crea_UNICODE(patron.c_str());
}
unsigned short siguiente(Dirwin* d, WIN32_FIND_DATAA* e) {
    return dirwin_findnextfile(d, e);
}
unsigned short siguiente(Dirwin_u* d, WIN32_FIND_DATAW* e) {
    return dirwin_findnextfile_UNICODE(d, e);
}
void destruye(Dirwin** d) {
    dirwin_destruye(d);
}
void destruye(Dirwin_u** d) {
    dirwin_destruye_UNICODE(d);
}
std::string nombre_de(const WIN32_FIND_DATAA& e) {
    return de_cp1252(e.cFileName);
}
std::string nombre_de(const WIN32_FIND_DATAW& e) {
    return u8(e.cFileName);
}

using nombres = std::vector<std::string>;

nombres ordenados(nombres n) {
    std::sort(n.begin(), n.end());
    return n;
}

// All entries of a pattern, in their order, through the exported functions of a flavour.
template <class C>
nombres recorre_por_fuera(const std::basic_string<C, interno::rasgos<C>>& patron) {
    const auto vivos = lumospy_bloques_vivos();
    auto* d = crea(patron);
    EXPECT_NE(d, nullptr);
    EXPECT_EQ(d->num_entradas, 0u);
    EXPECT_EQ(lumospy_bloques_vivos() - vivos, d->con_filtro_propio == 1 ? 2u : 1u)
        << "record and own filter";
    nombres todos;
    interno::entrada<C> e = {};
    while (siguiente(d, &e) == 1) {
        todos.push_back(nombre_de(e));
    }
    EXPECT_EQ(siguiente(d, &e), 0) << "asked again after the end";
    destruye(&d);
    EXPECT_EQ(d, nullptr);
    return todos;
}

// The same through the walker that the library itself uses.
template <class C>
nombres recorre_por_dentro(const std::basic_string<C, interno::rasgos<C>>& patron, interno::detalle cuanto) {
    nombres todos;
    interno::enumerador<C> entradas(patron.c_str(), cuanto);
    while (const WIN32_FIND_DATAW* e = entradas.siguiente()) {
        todos.push_back(nombre_de(*e));
    }
    EXPECT_EQ(entradas.siguiente(), nullptr);
    return todos;
}

// Names that a pattern gives in both flavours, and inside the library.
nombres entradas(const texto_w& patron) {
    const nombres anchas = recorre_por_fuera<wchar_t>(patron);
    EXPECT_EQ(recorre_por_fuera<char>(cp1252(u8(interno::vista_w(patron)))), anchas) << "the flavours differ";
    EXPECT_EQ(recorre_por_dentro<wchar_t>(patron, interno::detalle::todo), anchas);
    EXPECT_EQ(recorre_por_dentro<wchar_t>(patron, interno::detalle::sin_nombre_corto), anchas);
    EXPECT_EQ(recorre_por_dentro<char>(cp1252(u8(interno::vista_w(patron))), interno::detalle::todo), anchas);
    return ordenados(anchas);
}

}  // namespace

TEST(dirwin, da_todas_las_entradas_con_puntos_ocultas_y_de_sistema) {
    directorio_temporal d;
    d.fichero("a.txt");
    d.fichero("oculto", "", FILE_ATTRIBUTE_HIDDEN);
    d.fichero("sistema.sys", "", FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY);
    d.fichero(".punto");
    d.directorio("sub");
    d.directorio(".git");
    d.pon_atributos(".git", FILE_ATTRIBUTE_HIDDEN);
    d.fichero("\xC3\xB1u.txt");
    const nombres todas{".",      "..",          ".git", ".punto",       "a.txt",
                        "oculto", "sistema.sys", "sub",  "\xC3\xB1u.txt"};
    EXPECT_EQ(entradas(d.ruta_w("*")), todas);
    EXPECT_EQ(entradas(d.ruta_w("*.*")), todas);
    EXPECT_EQ(entradas(d.ruta_w() + L"/*"), todas);
    EXPECT_EQ(entradas(d.ruta_w("*.txt")), (nombres{"a.txt", "\xC3\xB1u.txt"}));
    EXPECT_EQ(entradas(d.ruta_w("\xC3\xB1*")), (nombres{"\xC3\xB1u.txt"}));
    EXPECT_EQ(entradas(d.ruta_w("a.txt")), (nombres{"a.txt"}));
}

TEST(dirwin, lo_que_no_se_puede_abrir_no_da_nada_y_no_se_informa) {
    directorio_temporal d;
    d.fichero("fichero");
    for (const char* patron : {"no_existe\\*", "no_existe\\a.txt", "fichero\\*", "no_existe\\x\\y*"}) {
        EXPECT_EQ(entradas(d.ruta_w(patron)), nombres{}) << patron;
    }
    Dirwin_u* ancha = dirwin_crea_UNICODE(d.ruta_w("no_existe\\*").c_str());
    EXPECT_EQ(ancha->busqueda, INVALID_HANDLE_VALUE);
    EXPECT_EQ(ancha->con_filtro_propio, 0);
    EXPECT_TRUE(ancha->filtro_propio == nullptr);  // packed: nothing may refer to the field
    dirwin_destruye_UNICODE(&ancha);
    Dirwin* corta = dirwin_crea(d.ruta_a("no_existe\\*").c_str());
    EXPECT_EQ(corta->busqueda, INVALID_HANDLE_VALUE);
    EXPECT_EQ(corta->con_filtro_propio, 0);
    EXPECT_TRUE(corta->filtro_propio == nullptr);
    dirwin_destruye(&corta);
}

TEST(dirwin, sin_resultados_recorre_el_directorio_con_su_filtro) {
    directorio_temporal d;
    d.fichero("abc.dat");
    d.fichero("leeme.txt");
    // The system finds none: neither does the own filter, for such names.
    EXPECT_EQ(entradas(d.ruta_w("*.png")), nombres{});
    // The own filter is looser than the system's: no point in the filter, the extension does not count.
    EXPECT_EQ(entradas(d.ruta_w("leeme")), nombres{"leeme.txt"});

    Dirwin_u* ancha = dirwin_crea_UNICODE(d.ruta_w("*.png").c_str());
    EXPECT_NE(ancha->busqueda, INVALID_HANDLE_VALUE);
    EXPECT_EQ(ancha->con_filtro_propio, 1);
    EXPECT_EQ(u8(ancha->filtro_propio), "*.png");
    WIN32_FIND_DATAW e;
    EXPECT_EQ(dirwin_findnextfile_UNICODE(ancha, &e), 0);
    EXPECT_EQ(ancha->num_entradas, 5u) << ". .. abc.dat leeme.txt and the end";
    EXPECT_EQ(dirwin_findnextfile_UNICODE(ancha, &e), 0);
    EXPECT_EQ(ancha->num_entradas, 6u) << "the counter goes on";
    dirwin_destruye_UNICODE(&ancha);

    Dirwin* corta = dirwin_crea(d.ruta_a("*.PNG").c_str());
    EXPECT_EQ(corta->con_filtro_propio, 1);
    EXPECT_STREQ(corta->filtro_propio, "*.PNG");
    dirwin_destruye(&corta);

    interno::enumerador<wchar_t> con(d.ruta_w("*.png").c_str());
    EXPECT_TRUE(con.con_filtro_propio());
    interno::enumerador<wchar_t> sin(d.ruta_w("*.dat").c_str());
    EXPECT_FALSE(sin.con_filtro_propio());
}

TEST(dirwin, solo_el_filtro_ancho_distingue_mayusculas) {
    const en_pagina p(1252);
    busqueda_falsa falsa;
    falsa.patrones["C:\\d\\*"] = {{"."}, {".."}, {"abc.txt"}, {"ABC.TXT"}, {"A\xC3\x91O.TXT"}, {"x"}};
    EXPECT_EQ(recorre_por_fuera<char>("C:\\d\\A*.TXT"), (nombres{"abc.txt", "ABC.TXT", "A\xC3\x91O.TXT"}));
    EXPECT_EQ(recorre_por_fuera<wchar_t>(L"C:\\d\\A*.TXT"), (nombres{"ABC.TXT", "A\xC3\x91O.TXT"}));
    EXPECT_EQ(recorre_por_fuera<char>(cp1252("C:\\d\\a\xC3\xB1*")), (nombres{"A\xC3\x91O.TXT"}));
    EXPECT_EQ(recorre_por_fuera<wchar_t>(w("C:\\d\\a\xC3\xB1*")), nombres{});
    // The search for the pattern comes first, then the one for the whole directory.
    EXPECT_EQ(falsa.abiertos[0], "C:\\d\\A*.TXT");
    EXPECT_EQ(falsa.abiertos[1], "C:\\d\\*");
}

TEST(dirwin, cualquier_codigo_al_abrir_lleva_al_filtro_propio) {
    for (const DWORD codigo : {2u, 5u, 32u, 123u, 161u, 267u}) {
        busqueda_falsa falsa;
        falsa.patrones["C:\\d\\*"] = {{"."}, {"a<b"}, {"\xED\xA0\xBD"}};
        falsa.codigo_al_abrir["C:\\d\\a<b"] = codigo;
        EXPECT_EQ(recorre_por_fuera<wchar_t>(L"C:\\d\\a<b"), nombres{"a<b"}) << codigo;
        EXPECT_EQ(recorre_por_fuera<char>("C:\\d\\a<b"), nombres{"a<b"}) << codigo;
        EXPECT_EQ(recorre_por_fuera<wchar_t>(L"C:\\d\\?"), nombres{"\xED\xA0\xBD"}) << "a lone surrogate";
    }
}

TEST(dirwin, lo_que_esta_fuera_de_alcance_no_se_busca_dos_veces) {
    // The directory is missing, its drive is empty or its share away: another time-out would not find more.
    for (const DWORD codigo : {3u, 21u, 53u, 64u, 67u, 1231u}) {
        for (const char* patron : {"C:\\d\\a*.txt", "C:\\d\\"}) {
            busqueda_falsa falsa;
            falsa.patrones["C:\\d\\*"] = {{"abc.txt"}, {".x"}};
            falsa.codigo_al_abrir[patron] = codigo;
            EXPECT_EQ(recorre_por_fuera<wchar_t>(w(patron)), nombres{}) << codigo;
            EXPECT_EQ(recorre_por_fuera<char>(patron), nombres{}) << codigo;
            EXPECT_EQ(falsa.abiertos, nombres(2, patron)) << codigo;
            // What is said about the pattern is said all the same.
            const nombres informes(std::string_view(patron).ends_with('\\') ? 2 : 0, "i+1 < len");
            EXPECT_EQ(toma_expresiones(), informes) << codigo;
        }
    }
}

namespace {

// A search that finds nothing, after which somebody changes the current directory.
texto_w g_otro_directorio;
HANDLE WINAPI busca_y_cambia_de_directorio(LPCWSTR patron, FINDEX_INFO_LEVELS nivel, LPVOID datos,
                                           FINDEX_SEARCH_OPS como, LPVOID nada, DWORD indicadores) {
    const HANDLE h = ::FindFirstFileExW(patron, nivel, datos, como, nada, indicadores);
    const DWORD codigo = ::GetLastError();
    ::SetCurrentDirectoryW(g_otro_directorio.c_str());
    ::SetLastError(codigo);
    return h;
}

}  // namespace

TEST(dirwin, las_dos_busquedas_miran_en_el_mismo_directorio) {
    directorio_temporal d;
    d.fichero("uno\\leeme.txt");
    d.fichero("uno\\sub\\leeme.txt");
    d.fichero("otro\\leeme.doc");
    d.fichero("otro\\sub\\leeme.doc");
    g_otro_directorio = d.ruta_w("otro");
    const std::string unidad = d.ruta().substr(0, 2);
    const std::string sin_unidad = d.ruta("uno").substr(2);
    const sustituye cambia(interno::sistema.FindFirstFileExW, busca_y_cambia_de_directorio);
    for (const std::string& patron :
         {std::string(".\\leeme"), std::string("sub/leeme"), std::string("sub\\..\\leeme"),
          unidad + "sub\\leeme", sin_unidad + "\\leeme", unidad + ".\\leeme"}) {
        {
            const en_directorio ahi(d.ruta_w("uno"));
            EXPECT_EQ(recorre_por_fuera<wchar_t>(w(patron)), nombres{"leeme.txt"}) << patron;
        }
        const en_directorio ahi(d.ruta_w("uno"));
        EXPECT_EQ(recorre_por_fuera<char>(patron), nombres{"leeme.txt"}) << patron;
    }
}

TEST(dirwin, un_patron_relativo_cuesta_una_sola_pregunta_mas) {
    directorio_temporal d;
    d.fichero("sub\\leeme.txt");
    const en_directorio ahi(d.ruta_w());
    apoyo::fallos f;
    EXPECT_EQ(recorre_por_fuera<wchar_t>(L"sub\\leeme"), nombres{"leeme.txt"});
    EXPECT_EQ(f.cuenta("GetFullPathNameW"), 1u);
    EXPECT_EQ(f.rutas("FindFirstFileExW"), (nombres{d.ruta("sub\\leeme"), d.ruta("sub\\*")}));
}

TEST(dirwin, un_componente_que_la_forma_completa_pierde_no_cambia_de_directorio) {
    directorio_temporal d;
    d.fichero("sub\\x.txt");
    const en_directorio ahi(d.ruta_w());
    busqueda_falsa falsa;
    falsa.patrones[d.ruta("sub\\*")] = {{"con.x"}, {".."}, {"a "}};
    EXPECT_EQ(recorre_por_fuera<wchar_t>(L"sub\\con"), nombres{"con.x"});
    EXPECT_EQ(recorre_por_fuera<wchar_t>(L"sub\\.."), nombres{".."});
    EXPECT_EQ(recorre_por_fuera<wchar_t>(L"sub\\a "), nombres{"a "});
    for (std::size_t i = 1; i < falsa.abiertos.size(); i += 2) {
        EXPECT_EQ(falsa.abiertos[i], d.ruta("sub\\*"));
    }
}

TEST(dirwin, un_nombre_de_ocho_bits_nunca_es_el_de_otro_fichero) {
    const en_pagina p(1252);
    directorio_temporal d;
    const nombres parecidos{"\uff41.txt", "\u0131.txt", "\u03c3", "a\u0304"};
    for (const std::string& nombre : parecidos) {
        d.fichero(nombre);
    }
    d.fichero("a.txt");
    // What the code page lacks becomes its default character.
    EXPECT_EQ(ordenados(recorre_por_fuera<char>(d.ruta_a("*"))),
              (nombres{".", "..", "?", "?.txt", "?.txt", "a.txt", "a?"}));
    EXPECT_EQ(recorre_por_fuera<char>(d.ruta_a("a.txt")), nombres{"a.txt"});
}

// What means nothing in the code page is a character like others, and no wildcard.
TEST(dirwin, un_patron_de_ocho_bits_sin_sentido_no_encuentra_otros_nombres) {
    struct fila {
        unsigned pagina;
        const char* patron;
        nombres encontrados;
    };
    for (const fila& f :
         {fila{932, "C:\\d\\\x83", {}}, fila{874, "C:\\d\\a\xDB", {}}, fila{932, "C:\\d\\\x83*", {}},
          fila{932, "C:\\d\\?b", {"ab"}},
          fila{932, "C:\\d\\\x87\x90", {"\u2252.txt"}},  // one of two pairs that mean the same
          fila{65001, "C:\\d\\\xFF", {}}}) {
        const en_pagina p(f.pagina);
        busqueda_falsa falsa;
        falsa.patrones["C:\\d\\*"] = {{"a"}, {"ab"}, {"\u2252.txt"}};
        nombres anchos;
        interno::enumerador<char> entradas(f.patron, interno::detalle::todo);
        while (const WIN32_FIND_DATAW* e = entradas.siguiente()) {
            anchos.push_back(nombre_de(*e));
        }
        EXPECT_EQ(anchos, f.encontrados) << f.pagina << testing::PrintToString(f.patron);
        Dirwin* d = dirwin_crea(f.patron);
        ASSERT_EQ(d->con_filtro_propio, 1);
        std::size_t num = 0;
        WIN32_FIND_DATAA e;
        while (siguiente(d, &e) == 1) {
            ++num;
        }
        EXPECT_EQ(num, f.encontrados.size()) << f.pagina << testing::PrintToString(f.patron);
        destruye(&d);
    }
}

TEST(dirwin, un_nombre_que_no_cabe_en_ocho_bits_sale_por_su_nombre_corto_o_no_sale) {
    const sustituye utf8(interno::plataforma::pagina_de_codigos, CP_UTF8);
    static std::string largo;
    static bool con_corto;
    const sustituye abre(interno::sistema.FindFirstFileExW, [](LPCWSTR, FINDEX_INFO_LEVELS, LPVOID datos,
                                                               FINDEX_SEARCH_OPS, LPVOID, DWORD) WINAPI {
        auto* e = static_cast<WIN32_FIND_DATAW*>(datos);
        *e = {};
        lstrcpyW(e->cFileName, w(largo).c_str());
        lstrcpyW(e->cAlternateFileName, con_corto ? L"ABCD~1.TXT" : L"");
        return reinterpret_cast<HANDLE>(1);
    });
    static int pasos;
    const sustituye sigue(interno::sistema.FindNextFileW, [](HANDLE, LPWIN32_FIND_DATAW e) WINAPI {
        *e = {};
        lstrcpyW(e->cFileName, ++pasos == 1 ? L"b" : w(largo).c_str());
        ::SetLastError(ERROR_NO_MORE_FILES);
        return BOOL{pasos <= 2};
    });
    const sustituye cierra(interno::sistema.FindClose, [](HANDLE) WINAPI { return BOOL{TRUE}; });
    // By one byte, which is that of its end; by two; by far.
    for (const std::size_t bytes : {260u, 261u, 600u}) {
        largo = std::string(bytes % 3, 'a');
        while (largo.size() < bytes) {
            largo += "\u4e2d";  // three bytes each
        }
        for (const bool hay : {true, false}) {
            SCOPED_TRACE(bytes);
            con_corto = hay;
            pasos = 0;
            nombres todos;
            WIN32_FIND_DATAA e;
            Dirwin* d = dirwin_crea("C:\\d\\*");
            while (dirwin_findnextfile(d, &e) == 1) {
                todos.push_back(e.cFileName);
                EXPECT_STREQ(e.cAlternateFileName, todos.back() == "b" ? "" : "ABCD~1.TXT");
            }
            EXPECT_EQ(d->num_entradas, 4u);
            dirwin_destruye(&d);
            EXPECT_EQ(todos, hay ? (nombres{"ABCD~1.TXT", "b"}) : nombres{"b"});
        }
    }
}

TEST(dirwin, un_patron_sin_separador_que_falla_se_informa) {
    struct fila {
        const char* patron;
        std::vector<std::string> informes;
        std::vector<std::string> abiertos;
    };
    const std::string generico = "(path_filtro_generico) != NULL";
    const fila filas[] = {
        {.patron = "*.png", .informes = {generico}, .abiertos = {completa("*.png")}},
        {.patron = "", .informes = {generico}, .abiertos = {""}},
        {.patron = "C:*.png", .informes = {generico}, .abiertos = {completa("C:*.png")}},
        {.patron = "C:\\d\\", .informes = {"i+1 < len"}, .abiertos = {"C:\\d\\", "C:\\d\\*"}},
        {.patron = "C:/d/", .informes = {"i+1 < len"}, .abiertos = {"C:/d/", "C:/d/*"}},
        {.patron = "\\", .informes = {"i+1 < len"}, .abiertos = {completa("\\"), completa("\\*")}},
        {.patron = "C:\\d/x", .informes = {}, .abiertos = {"C:\\d/x", "C:\\d/*"}},
        {.patron = "C:/d\\x", .informes = {}, .abiertos = {"C:/d\\x", "C:/d\\*"}},
    };
    for (const fila& f : filas) {
        busqueda_falsa falsa;
        EXPECT_EQ(recorre_por_fuera<wchar_t>(w(f.patron)), nombres{}) << f.patron;
        EXPECT_EQ(falsa.abiertos, f.abiertos) << f.patron;
        EXPECT_EQ(toma_expresiones(), f.informes) << f.patron;
        falsa.abiertos.clear();
        EXPECT_EQ(recorre_por_fuera<char>(f.patron), nombres{}) << f.patron;
        EXPECT_EQ(falsa.abiertos, f.abiertos) << f.patron;
        EXPECT_EQ(toma_expresiones(), f.informes) << f.patron;
    }
}

TEST(dirwin, un_patron_acabado_en_separador_tiene_el_filtro_vacio) {
    directorio_temporal d;
    d.fichero("a.txt");
    d.fichero(".perfil");
    // Empty base and extension not compared: only what begins with its one point.
    EXPECT_EQ(ordenados(recorre_por_fuera<wchar_t>(d.ruta_w() + L"\\")), (nombres{".", ".perfil"}));
    ESPERA_INFORMES("i+1 < len");
    EXPECT_EQ(ordenados(recorre_por_fuera<char>(d.ruta_a() + "\\")), (nombres{".", ".perfil"}));
    ESPERA_INFORMES("i+1 < len");
}

TEST(dirwin, un_patron_nulo_se_informa_y_no_da_nada) {
    busqueda_falsa falsa;
    WIN32_FIND_DATAA e_a;
    WIN32_FIND_DATAW e_w;
    Dirwin* corta = dirwin_crea(nullptr);
    ESPERA_INFORMES("(path_filtro_generico) != NULL");
    EXPECT_EQ(dirwin_findnextfile(corta, &e_a), 0);
    dirwin_destruye(&corta);
    Dirwin_u* ancha = dirwin_crea_UNICODE(nullptr);
    ESPERA_INFORMES("(path_filtro_generico) != NULL");
    EXPECT_EQ(dirwin_findnextfile_UNICODE(ancha, &e_w), 0);
    dirwin_destruye_UNICODE(&ancha);
    EXPECT_EQ(falsa.abiertos, nombres{}) << "the system is not asked";
}

TEST(dirwin, los_informes_llevan_la_etiqueta_del_modulo) {
    Dirwin_u* d = nullptr;
    dirwin_destruye_UNICODE(&d);
    const informe dado = toma_el_informe();
    EXPECT_EQ(dado.expresion, "(*dirwinW) != NULL");
    EXPECT_EQ(dado.etiqueta, "dirwin (LUMODIR.DLL)");
}

TEST(dirwin, los_argumentos_nulos_se_informan) {
    directorio_temporal d;
    d.fichero("a");
    WIN32_FIND_DATAA e_a;
    WIN32_FIND_DATAW e_w;
    EXPECT_EQ(dirwin_findnextfile(nullptr, &e_a), 0);
    ESPERA_INFORMES("(dirwin) != NULL");
    EXPECT_EQ(dirwin_findnextfile(nullptr, nullptr), 0);
    ESPERA_INFORMES("(dirwin) != NULL", "(find_data) != NULL");
    EXPECT_EQ(dirwin_findnextfile_UNICODE(nullptr, &e_w), 0);
    ESPERA_INFORMES("(dirwinW) != NULL");
    EXPECT_EQ(dirwin_findnextfile_UNICODE(nullptr, nullptr), 0);
    ESPERA_INFORMES("(dirwinW) != NULL", "(find_data) != NULL");

    Dirwin* corta = dirwin_crea(d.ruta_a("a").c_str());
    EXPECT_EQ(dirwin_findnextfile(corta, nullptr), 0);
    ESPERA_INFORMES("(find_data) != NULL");
    EXPECT_EQ(dirwin_findnextfile(corta, &e_a), 1) << "no step was taken";
    dirwin_destruye(&corta);
    Dirwin_u* ancha = dirwin_crea_UNICODE(d.ruta_w("a").c_str());
    EXPECT_EQ(dirwin_findnextfile_UNICODE(ancha, nullptr), 0);
    ESPERA_INFORMES("(find_data) != NULL");
    EXPECT_EQ(dirwin_findnextfile_UNICODE(ancha, &e_w), 1) << "no step was taken";
    dirwin_destruye_UNICODE(&ancha);

    dirwin_destruye(nullptr);
    ESPERA_INFORMES("(dirwin) != NULL");
    dirwin_destruye(&corta);
    ESPERA_INFORMES("(*dirwin) != NULL");
    dirwin_destruye_UNICODE(nullptr);
    ESPERA_INFORMES("(dirwinW) != NULL");
    dirwin_destruye_UNICODE(&ancha);
    ESPERA_INFORMES("(*dirwinW) != NULL");

    EXPECT_EQ(dirwin_es_directorio(nullptr), 0);
    EXPECT_EQ(dirwin_es_directorio_UNICODE(nullptr), 0);
    EXPECT_EQ(dirwin_es_solo_lectura_UNICODE(nullptr), 0);
    ESPERA_INFORMES("(findData) != NULL", "(findData) != NULL", "(findData) != NULL");

    EXPECT_EQ(dirwin_cumple_filtro(nullptr, "*"), 0);
    ESPERA_INFORMES("(nombre_y_extension) != NULL");
    EXPECT_EQ(dirwin_cumple_filtro("a", nullptr), 0);
    ESPERA_INFORMES("(filtro_nombre_y_extension) != NULL");
    EXPECT_EQ(dirwin_cumple_filtro(nullptr, nullptr), 0);
    ESPERA_INFORMES("(nombre_y_extension) != NULL", "(filtro_nombre_y_extension) != NULL");
}

TEST(dirwin, sin_busqueda_abierta_no_se_toca_el_bufer) {
    busqueda_falsa falsa;
    Dirwin_u* d = dirwin_crea_UNICODE(L"C:\\no\\*");
    WIN32_FIND_DATAW e;
    std::memset(&e, 0x5A, sizeof(e));
    EXPECT_EQ(dirwin_findnextfile_UNICODE(d, &e), 0);
    EXPECT_EQ(d->num_entradas, 0u);
    WIN32_FIND_DATAW igual;
    std::memset(&igual, 0x5A, sizeof(igual));
    EXPECT_EQ(std::memcmp(&e, &igual, sizeof(e)), 0);
    dirwin_destruye_UNICODE(&d);
}

// The room of a record is one byte longer than the longest name in it.
TEST(dirwin, un_nombre_que_cabe_justo_en_ocho_bits_sale_entero) {
    std::string de_tres;
    for (int i = 0; i < 86; ++i) {
        de_tres += "\u4e2d";
    }
    const struct {
        unsigned pagina;
        std::string nombre;
        bool sale;
    } filas[] = {{1252, std::string(258, 'a'), true},
                 {1252, std::string(259, 'a'), true},
                 {CP_UTF8, de_tres, true},
                 {CP_UTF8, de_tres + "b", true},
                 {CP_UTF8, de_tres + "bc", false}};
    for (const auto& f : filas) {
        const en_pagina p(f.pagina);
        busqueda_falsa falsa;
        falsa.patrones["C:\\d\\*"] = {{"first"}, {f.nombre, FILE_ATTRIBUTE_READONLY}};
        Dirwin* d = dirwin_crea("C:\\d\\*");
        WIN32_FIND_DATAA e;
        EXPECT_EQ(dirwin_findnextfile(d, &e), 1);
        EXPECT_EQ(dirwin_findnextfile(d, &e), f.sale ? 1 : 0);
        if (f.sale) {
            EXPECT_EQ(std::string(e.cFileName), f.nombre);
            EXPECT_EQ(e.dwFileAttributes, DWORD{FILE_ATTRIBUTE_READONLY});
            EXPECT_STREQ(e.cAlternateFileName, "");
        }
        dirwin_destruye(&d);
    }
}

TEST(dirwin, la_primera_entrada_se_guarda_y_los_pasos_se_cuentan) {
    busqueda_falsa falsa;
    falsa.patrones["C:\\d\\*"] = {{"uno", FILE_ATTRIBUTE_READONLY}, {"dos"}};
    Dirwin_u* d = dirwin_crea_UNICODE(L"C:\\d\\*");
    EXPECT_EQ(falsa.pasos, 0);
    WIN32_FIND_DATAW e;
    EXPECT_EQ(dirwin_findnextfile_UNICODE(d, &e), 1);
    EXPECT_EQ(u8(e.cFileName), "uno");
    EXPECT_EQ(e.dwFileAttributes, static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(d->num_entradas, 1u);
    EXPECT_EQ(falsa.pasos, 0) << "the first entry came with the search";
    EXPECT_EQ(dirwin_findnextfile_UNICODE(d, &e), 1);
    EXPECT_EQ(u8(e.cFileName), "dos");
    EXPECT_EQ(d->num_entradas, 2u);
    EXPECT_EQ(falsa.pasos, 1);
    EXPECT_EQ(dirwin_findnextfile_UNICODE(d, &e), 0);
    EXPECT_EQ(dirwin_findnextfile_UNICODE(d, &e), 0);
    EXPECT_EQ(d->num_entradas, 4u);
    EXPECT_EQ(falsa.pasos, 3) << "the system is asked again after the end";
    EXPECT_EQ(falsa.abiertas, 1) << "open until it is destroyed";
    dirwin_destruye_UNICODE(&d);
    EXPECT_EQ(falsa.abiertas, 0);
}

TEST(dirwin, un_final_que_no_es_el_del_directorio_se_informa_con_su_codigo) {
    for (const DWORD codigo : {5u, 38u, 59u, 2147483648u}) {
        busqueda_falsa falsa;
        falsa.patrones["C:\\d\\*"] = {{"uno"}, {"\xC3\xBAltimo"}};
        falsa.codigo_al_final = codigo;
        WIN32_FIND_DATAW e_w;
        Dirwin_u* ancha = dirwin_crea_UNICODE(L"C:\\d\\*");
        EXPECT_EQ(dirwin_findnextfile_UNICODE(ancha, &e_w), 1);
        EXPECT_EQ(dirwin_findnextfile_UNICODE(ancha, &e_w), 1);
        EXPECT_EQ(dirwin_findnextfile_UNICODE(ancha, &e_w), 0);
        std::vector<informe> informes = toma_informes();
        ASSERT_EQ(informes.size(), 1u) << codigo;
        EXPECT_EQ(informes[0].detalle, "GetLastError() = " + std::to_string(codigo) + " [\xC3\xBAltimo]");
        EXPECT_EQ(informes[0].etiqueta, "dirwin (LUMODIR.DLL)");
        dirwin_destruye_UNICODE(&ancha);

        WIN32_FIND_DATAA e_a;
        Dirwin* corta = dirwin_crea("C:\\d\\*");
        EXPECT_EQ(dirwin_findnextfile(corta, &e_a), 1);
        EXPECT_EQ(dirwin_findnextfile(corta, &e_a), 1);
        EXPECT_EQ(dirwin_findnextfile(corta, &e_a), 0);
        informes = toma_informes();
        ASSERT_EQ(informes.size(), 1u) << codigo;
        EXPECT_EQ(informes[0].expresion, "last_error == ERROR_NO_MORE_FILES");
        EXPECT_EQ(informes[0].detalle, "GetLastError() = " + std::to_string(static_cast<int>(codigo)));
        dirwin_destruye(&corta);
    }
}

TEST(dirwin, el_nombre_del_informe_no_pasa_del_bufer) {
    busqueda_falsa falsa;
    falsa.patrones["C:\\d\\*"] = {{"uno"}};
    falsa.codigo_al_final = 5;
    Dirwin_u* d = dirwin_crea_UNICODE(L"C:\\d\\*");
    WIN32_FIND_DATAW e;
    EXPECT_EQ(dirwin_findnextfile_UNICODE(d, &e), 1);
    for (wchar_t& c : e.cFileName) {
        c = L'x';  // another buffer than the one before, never written and without an end
    }
    EXPECT_EQ(dirwin_findnextfile_UNICODE(d, &e), 0);
    const informe dado = toma_el_informe();
    EXPECT_EQ(dado.detalle, "GetLastError() = 5 [" + std::string(MAX_PATH, 'x') + "]");
    dirwin_destruye_UNICODE(&d);
}

TEST(dirwin, un_fallo_durante_el_filtro_propio_se_informa_una_vez) {
    busqueda_falsa falsa;
    falsa.patrones["C:\\d\\*"] = {{"uno"}, {"dos"}};
    falsa.codigo_al_final = 59;
    EXPECT_EQ(recorre_por_dentro<wchar_t>(L"C:\\d\\*.png", interno::detalle::todo), nombres{});
    std::vector<informe> informes = toma_informes();
    ASSERT_EQ(informes.size(), 2u) << "the end, and the end asked for again";
    EXPECT_EQ(informes[0].detalle, "GetLastError() = 59 [dos]");
}

TEST(dirwin, las_preguntas_miran_un_solo_bit) {
    struct fila {
        DWORD atributos;
        unsigned short directorio;
        unsigned short solo_lectura;
    };
    const fila filas[] = {
        {.atributos = 0, .directorio = 0, .solo_lectura = 0},
        {.atributos = FILE_ATTRIBUTE_DIRECTORY, .directorio = 1, .solo_lectura = 0},
        {.atributos = FILE_ATTRIBUTE_READONLY, .directorio = 0, .solo_lectura = 1},
        {.atributos = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY, .directorio = 1, .solo_lectura = 1},
        {.atributos = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN,
         .directorio = 1,
         .solo_lectura = 1},
        {.atributos = ~static_cast<DWORD>(FILE_ATTRIBUTE_DIRECTORY), .directorio = 0, .solo_lectura = 1},
        {.atributos = ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY), .directorio = 1, .solo_lectura = 0},
    };
    for (const fila& f : filas) {
        WIN32_FIND_DATAA e_a = {};
        WIN32_FIND_DATAW e_w = {};
        e_a.dwFileAttributes = e_w.dwFileAttributes = f.atributos;
        EXPECT_EQ(dirwin_es_directorio(&e_a), f.directorio) << f.atributos;
        EXPECT_EQ(dirwin_es_directorio_UNICODE(&e_w), f.directorio) << f.atributos;
        EXPECT_EQ(dirwin_es_solo_lectura_UNICODE(&e_w), f.solo_lectura) << f.atributos;
        e_w.cFileName[0] = L'd';
        EXPECT_EQ(interno::i_es_directorio_a_la_vista(e_w),
                  f.directorio == 1 && (f.atributos & FILE_ATTRIBUTE_HIDDEN) == 0)
            << f.atributos;
    }
}

TEST(dirwin, que_es_una_marca_de_enlace) {
    struct fila {
        DWORD atributos;
        DWORD etiqueta;
        bool enlace;
    };
    constexpr DWORD directorio_reparse = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    const fila filas[] = {
        {.atributos = directorio_reparse, .etiqueta = IO_REPARSE_TAG_SYMLINK, .enlace = true},
        {.atributos = directorio_reparse, .etiqueta = IO_REPARSE_TAG_MOUNT_POINT, .enlace = true},
        {.atributos = directorio_reparse, .etiqueta = 0, .enlace = true},  // the system does not tell
        {.atributos = directorio_reparse, .etiqueta = 0x9000001A, .enlace = false},  // cloud storage
        {.atributos = directorio_reparse, .etiqueta = 0x80000013, .enlace = false},  // deduplication
        {.atributos = FILE_ATTRIBUTE_DIRECTORY, .etiqueta = IO_REPARSE_TAG_SYMLINK, .enlace = false},
        {.atributos = FILE_ATTRIBUTE_REPARSE_POINT, .etiqueta = IO_REPARSE_TAG_SYMLINK, .enlace = true},
    };
    for (const fila& f : filas) {
        EXPECT_EQ(interno::i_es_de_enlace(f.atributos, f.etiqueta), f.enlace)
            << f.atributos << ' ' << f.etiqueta;
    }
}

// Character by character in every code page, each in the case that the code page knows.
TEST(dirwin, cumple_filtro_en_cada_pagina) {
    for (const unsigned pagina : paginas) {
        const en_pagina p(pagina);
        modelos::azar_de_pagina azar(pagina);
        for (int n = 0; n < 2000 && !HasFailure(); ++n) {
            const texto_a nombre = azar.texto();
            texto_a filtro = azar.numero(4) == 0 ? azar.texto() : nombre;
            if (!filtro.empty() && azar.numero(2) == 0) {
                modelos::texto_c caracteres = modelos::lee(filtro);
                caracteres[azar.numero(caracteres.size())] = U"*?Z"[azar.numero(3)];
                filtro = modelos::escribe(caracteres);
            }
            const bool esperado = modelos::cumple_filtro(modelos::lee(modelos::minusculas(nombre)),
                                                         modelos::lee(modelos::minusculas(filtro)), false);
            ASSERT_EQ(dirwin_cumple_filtro(nombre.c_str(), filtro.c_str()), esperado ? 1 : 0)
                << pagina << testing::PrintToString(nombre) << testing::PrintToString(filtro);
        }
    }
}

TEST(dirwin, cumple_filtro_no_distingue_mayusculas) {
    const en_pagina p(1252);
    struct fila {
        std::string nombre;
        std::string filtro;
        unsigned short cumple;
    };
    const std::string larga(1000, 'A');
    const fila filas[] = {
        {.nombre = "abc.txt", .filtro = "A*.TXT", .cumple = 1},
        {.nombre = "ABC.TXT", .filtro = "a*.txt", .cumple = 1},
        {.nombre = "a\xC3\xB1o.txt", .filtro = "A\xC3\x91O.TXT", .cumple = 1},  // by the code page
        {.nombre = "readme.txt", .filtro = "readme", .cumple = 1},
        {.nombre = "readme.txt", .filtro = "readme.", .cumple = 1},
        {.nombre = "ab", .filtro = "ab?", .cumple = 0},
        {.nombre = "abc", .filtro = "a*c", .cumple = 1},
        {.nombre = "ac", .filtro = "a*c", .cumple = 1},
        {.nombre = "ab", .filtro = "a*c", .cumple = 0},
        {.nombre = "xyz", .filtro = "*y", .cumple = 0},
        {.nombre = "", .filtro = "", .cumple = 1},
        {.nombre = larga, .filtro = std::string(1000, 'a'), .cumple = 1},
        {.nombre = larga, .filtro = std::string(999, 'a') + "b", .cumple = 0},
    };
    for (const fila& f : filas) {
        EXPECT_EQ(dirwin_cumple_filtro(cp1252(f.nombre).c_str(), cp1252(f.filtro).c_str()), f.cumple)
            << f.nombre << " by " << f.filtro;
    }
}

TEST(dirwin, rutas_mas_largas_que_el_limite_clasico) {
    directorio_temporal d;
    std::string relativa;
    for (int i = 0; i < 22; ++i) {  // under Wine the limit is that of the system underneath, 4096 bytes
        relativa += (i == 0 ? "" : "\\") + std::string(150, 'd');
        d.directorio(relativa);
    }
    d.fichero(relativa + "\\hondo.txt");
    const texto_w patron = d.ruta_w(relativa + "\\*");
    EXPECT_GT(patron.size(), 3300u);
    EXPECT_EQ(ordenados(recorre_por_fuera<wchar_t>(patron)), (nombres{".", "..", "hondo.txt"}));
    EXPECT_EQ(ordenados(recorre_por_fuera<wchar_t>(d.ruta_w(relativa + "\\*.txt"))), nombres{"hondo.txt"});
    EXPECT_EQ(ordenados(recorre_por_fuera<wchar_t>(d.ruta_w(relativa + "\\*.png"))), nombres{});
    EXPECT_EQ(ordenados(recorre_por_fuera<char>(cp1252(u8(interno::vista_w(patron))))),
              (nombres{".", "..", "hondo.txt"}));
}

TEST(dirwin, los_listados_internos_no_piden_nombres_cortos) {
    busqueda_falsa falsa;
    falsa.patrones["C:\\d\\*"] = {{"uno"}};
    recorre_por_dentro<wchar_t>(L"C:\\d\\*", interno::detalle::sin_nombre_corto);
    EXPECT_EQ(falsa.ultimo_nivel, FindExInfoBasic);
    recorre_por_fuera<wchar_t>(L"C:\\d\\*");
    EXPECT_EQ(falsa.ultimo_nivel, FindExInfoStandard) << "exported entries have their short names";
}
