// The long-path library: which paths get the prefix, and every call on a path that the system would refuse as it is.
#include "companions/lmlongpath.hpp"

#include "apoyo/apoyo.hpp"
#include "apoyo/directorio.hpp"
#include "apoyo/fallos.hpp"
#include "apoyo/pagina_ultima.hpp"
#include "companions/lmlongpath.h"

using namespace apoyo;
using namespace interno;

namespace {

// `principio` followed by as many letters, in components of at most 50, as make `largo` units in all.
std::string hasta_largo(std::string principio, std::size_t largo, char separador = '\\') {
    while (principio.size() < largo) {
        const std::size_t quedan = largo - principio.size();
        const std::size_t trozo = quedan <= 50 ? quedan : quedan == 51 ? 40 : 50;
        principio.append(trozo, 'x');
        if (principio.size() < largo) {
            principio.push_back(separador);
        }
    }
    return principio;
}

std::string con_prefijo(const std::string& ruta) {
    const std::string por_el_export = toma(lmlongpath_prepended_path_si_necesario(w(ruta).c_str()));
    // Once prefixed, always the same.
    EXPECT_EQ(toma(lmlongpath_prepended_path_si_necesario(w(por_el_export).c_str())), por_el_export);
    return por_el_export;
}

std::string con_barras(std::string ruta) {
    std::replace(ruta.begin(), ruta.end(), '\\', '/');
    return ruta;
}

}  // namespace

TEST(lmlongpath, el_prefijo_empieza_en_248_unidades) {
    struct fila {
        std::string ruta;
        std::string espera;
    };
    const std::string c247 = hasta_largo("C:\\", 247), c248 = hasta_largo("C:\\", 248);
    const std::string u247 = hasta_largo("\\\\srv\\recurso\\", 247),
                      u248 = hasta_largo("\\\\srv\\recurso\\", 248);
    const std::string c9000 = hasta_largo("C:\\", 9000), c10240 = hasta_largo("C:\\", 10240);
    const fila filas[] = {
        {"", ""},
        {"C:\\x", "C:\\x"},
        {"x", "x"},
        {c247, c247},
        {c248, "\\\\?\\" + c248},
        {con_barras(c247), con_barras(c247)},
        {con_barras(c248), "\\\\?\\" + c248},
        {c9000, "\\\\?\\" + c9000},
        {c10240, "\\\\?\\" + c10240},
        {u247, u247},
        {u248, "\\\\?\\UNC\\" + u248.substr(2)},
        {con_barras(u248), "\\\\?\\UNC\\" + u248.substr(2)},
        {"\\\\?\\" + c9000, "\\\\?\\" + c9000},
        {"\\\\?\\UNC\\" + u248.substr(2), "\\\\?\\UNC\\" + u248.substr(2)},
        {"\\\\.\\" + c9000, "\\\\.\\" + c9000},
        {"\\\\.\\COM1", "\\\\.\\COM1"},
        {"\\\\?\\C:\\a/b\\..", "\\\\?\\C:\\a/b\\.."},  // nothing in a prefixed path is touched
        // The prefix with "/" in it is one of a path like others, which the system makes full.
        {"//?/" + con_barras(c248), "\\\\?\\" + c248},
        {"\\\\?/" + c248, "\\\\?\\" + c248},
        {"//?\\" + c248, "\\\\?\\" + c248},
        {"/\\?\\" + c248, "\\\\?\\" + c248},
        {"\\/?/" + c9000 + "/../f", "\\\\?\\" + c9000.substr(0, c9000.rfind('\\')) + "\\f"},
        {"//?/UNC/" + con_barras(u248.substr(2)), "\\\\?\\UNC\\" + u248.substr(2)},
        {"//./" + con_barras(c248), "\\\\.\\" + c248},
        {"\\\\./" + c248, "\\\\.\\" + c248},
        {"//?/C:/x", "//?/C:/x"},    // short: as the system takes it
        {"\\\\srv\\", "\\\\srv\\"},  // no share
        {"\\\\srv\\\\", "\\\\srv\\\\"},
        {"\\\\\\srv\\x", "\\\\\\srv\\x"},  // no server
        {"//./COM1", "//./COM1"},
        {c9000 + "\\..\\f", "\\\\?\\" + c9000.substr(0, c9000.rfind('\\')) + "\\f"},
        {c248 + "\\..\\..\\..\\..\\f", c248 + "\\..\\..\\..\\..\\f"},  // made full, it is short
        {c248 + "\\.\\f", "\\\\?\\" + c248 + "\\f"},
        {c248 + "\\\\f", "\\\\?\\" + c248 + "\\f"},
        {c248 + "\\", "\\\\?\\" + c248 + "\\"},
        {c248 + "\\\u00f1\u4e2d\U0001F600", "\\\\?\\" + c248 + "\\\u00f1\u4e2d\U0001F600"},
    };
    for (const fila& f : filas) {
        EXPECT_EQ(con_prefijo(f.ruta), f.espera) << f.ruta.size() << " units: " << f.ruta.substr(0, 300);
    }
}

TEST(lmlongpath, de_una_ruta_relativa_cuenta_su_forma_completa) {
    const directorio_temporal dir;
    dir.directorio("sub");
    const en_directorio aqui(dir.ruta_w("sub"));
    const std::string base = dir.ruta("sub") + "\\";
    const std::string completa247 = hasta_largo(base, 247), completa248 = hasta_largo(base, 248);
    EXPECT_EQ(con_prefijo(completa247.substr(base.size())), completa247.substr(base.size()));
    EXPECT_EQ(con_prefijo(completa248.substr(base.size())), "\\\\?\\" + completa248);
    EXPECT_EQ(con_prefijo(con_barras(completa248.substr(base.size()))), "\\\\?\\" + completa248);
    EXPECT_EQ(con_prefijo(".\\" + completa248.substr(base.size())), "\\\\?\\" + completa248);
    const std::string arriba = hasta_largo(dir.ruta() + "\\", 248);
    EXPECT_EQ(con_prefijo("..\\" + arriba.substr(dir.ruta().size() + 1)), "\\\\?\\" + arriba);
    const std::string unidad = dir.ruta().substr(0, 2);
    EXPECT_EQ(con_prefijo(unidad + completa248.substr(base.size())), "\\\\?\\" + completa248);  // "C:x"
    const std::string raiz = hasta_largo(unidad + "\\", 248);
    EXPECT_EQ(con_prefijo(raiz.substr(2)), "\\\\?\\" + raiz);  // "\x"
    EXPECT_EQ(con_prefijo(raiz.substr(2, 245)), raiz.substr(2, 245));
}

TEST(lmlongpath, null_se_informa_y_da_una_cadena_vacia) {
    EXPECT_EQ(toma(lmlongpath_prepended_path_si_necesario(nullptr)), "");
    ESPERA_INFORMES("(path) != NULL");
    unsigned long codigo = 77;
    EXPECT_EQ(lmlongpath_GetFileSize(nullptr, &codigo), ~0ull);
    EXPECT_EQ(codigo, 77u);
    ESPERA_INFORMES("(path) != NULL");
}

TEST(lmlongpath, sin_forma_completa_la_ruta_va_como_es) {
    fallos f;
    f.falla_siempre("GetFullPathNameW", ERROR_ACCESS_DENIED);
    const std::string larga = hasta_largo("C:\\", 300);
    EXPECT_EQ(con_prefijo(larga), larga);
}

TEST(lmlongpath, si_la_forma_completa_crece_se_pregunta_de_nuevo) {
    // As when another thread changes the current directory between the two questions.
    static int llamadas;
    llamadas = 0;
    const sustituye crece(sistema.GetFullPathNameW,
                          [](const wchar_t*, DWORD sitio, wchar_t* destino, wchar_t**) WINAPI -> DWORD {
                              ++llamadas;
                              const DWORD largo = llamadas == 1 ? 300 : 400;
                              if (sitio <= largo) {
                                  return largo + 1;
                              }
                              for (DWORD i = 0; i < largo; ++i) {
                                  destino[i] = i == 0 ? L'C' : i == 1 ? L':' : i == 2 ? L'\\' : L'y';
                              }
                              destino[largo] = 0;
                              return largo;
                          });
    EXPECT_EQ(toma(lmlongpath_prepended_path_si_necesario(L"relativa")),
              "\\\\?\\C:\\" + std::string(397, 'y'));
    EXPECT_EQ(llamadas, 3);
}

TEST(lmlongpath, una_ruta_corta_no_cuesta_ninguna_llamada_mas) {
    fallos f;
    lmlongpath_GetFileAttributesW(L"C:\\no-hay-tal");
    lmlongpath_GetFileAttributesW(L"C:/no-hay-tal");
    lmlongpath_GetFileAttributesW(L"\\\\?\\C:\\no-hay-tal");
    EXPECT_EQ(f.llamadas(), 3u);
    EXPECT_EQ(f.cuenta("GetFileAttributesW"), 3u);
}

TEST(lmlongpath, que_rutas_se_completan) {
    static unsigned preguntas;
    const sustituye completa(sistema.GetFullPathNameW,
                             [](const wchar_t*, DWORD, wchar_t*, wchar_t**) WINAPI -> DWORD {
                                 ++preguntas;
                                 return 0;
                             });
    const texto_w de_247 = L"C:\\" + texto_w(244, L'y'), de_248 = de_247 + L"y";
    const texto_w literal = L"\\\\?\\" + de_248;
    const struct {
        const wchar_t* ruta;
        unsigned preguntas;
    } filas[] = {
        {de_247.c_str(), 0}, {de_248.c_str(), 1}, {literal.c_str(), 0}, {L"", 0},         {L"C:\\x", 0},
        {L"c:/", 0},         {L"\\\\", 0},        {L"//", 0},           {L"\\\\s\\r", 0}, {L"\\\\?\\C:x", 0},
        {L"\\\\.\\x", 0},    {L"x", 1},           {L"\\", 1},           {L"\\x", 1},      {L"C:", 1},
        {L"C:x", 1},         {L"1:\\x", 1},       {L"ab\\x", 1},        {L"C\\\\", 1},    {L"//?/C:/x", 0},
    };
    for (const auto& fila : filas) {
        preguntas = 0;
        EXPECT_STREQ(ruta_fijada(fila.ruta).c_str(), fila.ruta)
            << "what the system cannot tell goes as it is";
        EXPECT_EQ(preguntas, fila.preguntas) << u8(fila.ruta);
    }
    // Of a share written with separators to spare its own length counts.
    preguntas = 0;
    const texto_w recurso = L"\\\\s\\r\\" + texto_w(240, L'y'),
                  con_de_sobra = L"\\\\s\\\\\\r\\" + texto_w(240, L'y');
    EXPECT_EQ(u8(ruta_fijada(con_de_sobra.c_str()).c_str()), u8(recurso));
    EXPECT_EQ(preguntas, 0u);
    // Of what the system cannot tell there is no full form but what was given, and no literal one at all.
    EXPECT_EQ(u8(lmlongpath_forma_completa(L"x").ver()), "x");
    EXPECT_TRUE(lmlongpath_forma_completa_si_se_sabe(L"x").es_nula());
    EXPECT_TRUE(lmlongpath_forma_literal(L"x").es_nula());
}

// What fits in the room of a path is asked for once; an answer that leaves no unit for its end has not fitted.
TEST(lmlongpath, la_forma_completa_cabe_o_se_pregunta_de_nuevo) {
    static std::vector<DWORD> sitios;
    static DWORD largo;
    static bool dice_el_sitio;
    const sustituye completa(sistema.GetFullPathNameW,
                             [](const wchar_t*, DWORD sitio, wchar_t* destino, wchar_t**) WINAPI -> DWORD {
                                 sitios.push_back(sitio);
                                 if (dice_el_sitio && sitios.size() == 1) {
                                     std::fill_n(destino, sitio, L'z');
                                     return sitio;
                                 }
                                 if (sitio <= largo) {
                                     return largo + 1;
                                 }
                                 std::fill_n(destino, largo, L'y');
                                 std::copy_n(L"C:\\", 3, destino);
                                 destino[largo] = 0;
                                 return largo;
                             });
    for (const DWORD este : {3u, 247u, 248u, 258u, 259u, 260u, 261u}) {
        for (const bool dice : {false, true}) {
            sitios.clear();
            largo = este;
            dice_el_sitio = dice;
            const std::string forma = "C:\\" + std::string(este - 3, 'y');
            EXPECT_EQ(u8(ruta_fijada(L"x").c_str()), (este < 248 ? "" : "\\\\?\\") + forma) << este;
            ASSERT_FALSE(sitios.empty());
            EXPECT_EQ(sitios[0], DWORD{MAX_PATH});
            EXPECT_EQ(sitios.size() > 1, dice || este >= MAX_PATH) << este;
        }
    }
}

TEST(lmlongpath, la_raiz_de_una_ruta) {
    const struct {
        const wchar_t* ruta;
        std::size_t raiz;
    } filas[] = {
        {L"", 0},
        {L"x", 0},
        {L"C", 0},
        {L"C:", 2},
        {L"C:\\x", 2},
        {L"C:x", 2},
        {L"x:\\", 2},
        {L"\\", 0},
        {L"\\x", 0},
        {L"\\\\s\\r", 5},
        {L"\\\\s\\r\\x", 5},
        {L"//s//r/x", 6},
        {L"\\\\s", 3},
        {L"\\\\", 2},
        {L"\\\\?\\C:", 6},
        {L"\\\\?\\C:\\x\\y", 6},
        {L"\\\\?\\Volume{1}\\x", 13},
        {L"\\\\.\\C:\\x", 6},
        {L"\\\\?\\UNC\\s\\r\\x", 11},
        {L"\\\\?\\unc\\s\\r", 11},
        {L"\\\\?\\UNCs\\r", 8},
    };
    pagina_ultima pagina;
    for (const auto& fila : filas) {
        EXPECT_EQ(i_largo_de_raiz(pagina.pon(vista_w(fila.ruta))), fila.raiz) << u8(fila.ruta);
        EXPECT_EQ(i_es_raiz(vista_w(fila.ruta)), vista_w(fila.ruta).size() <= fila.raiz) << u8(fila.ruta);
    }
    // What stands behind a text is none of it.
    EXPECT_EQ(i_largo_de_raiz(vista_w(L"\\\\s", 1)), 0u);
    EXPECT_EQ(i_largo_de_raiz(vista_w(L"C:", 1)), 0u);
}

TEST(lmlongpath, quitar_el_prefijo) {
    const auto sin = [](const char* ruta) { return u8(lmlongpath_desprepend_path(w(ruta)).ver()); };
    EXPECT_EQ(sin("\\\\?\\C:\\x"), "C:\\x");
    EXPECT_EQ(sin("\\\\?\\UNC\\srv\\x"), "\\\\srv\\x");
    EXPECT_EQ(sin("\\\\?\\unc\\srv\\x"), "\\\\srv\\x");
    EXPECT_EQ(sin("\\\\.\\COM1"), "\\\\.\\COM1");
    EXPECT_EQ(sin("C:\\x"), "C:\\x");
    EXPECT_EQ(sin("\\\\srv\\x"), "\\\\srv\\x");
    EXPECT_EQ(sin(""), "");
    EXPECT_EQ(sin("\\\\?\\c:"), "c:");
    EXPECT_EQ(sin("\\\\?\\UNC\\"), "\\\\");
    EXPECT_EQ(sin("\\\\.\\C:\\"), "C:\\");
    EXPECT_EQ(u8(i_sin_prefijo(L"\\\\?\\C:\\x")), "C:\\x");
    EXPECT_EQ(u8(i_sin_prefijo(L"\\\\.\\x")), "x");
    EXPECT_EQ(u8(i_sin_prefijo(L"\\\\s\\r")), "\\\\s\\r");
    // The system takes each of these for the prefix.
    EXPECT_EQ(sin("//?/C:/x"), "C:/x");
    EXPECT_EQ(sin("\\\\?/C:\\x"), "C:\\x");
    EXPECT_EQ(sin("/\\?\\C:/x"), "C:/x");
    EXPECT_EQ(sin("//?/unc/srv/x"), "\\\\srv/x");
    EXPECT_EQ(sin("//./C:/x"), "C:/x");
    EXPECT_EQ(sin("\\\\.\\C:\\x"), "C:\\x");
    {
        pagina_ultima pagina;
        for (const char* ruta :
             {"", "\\", "\\\\", "\\\\?", "\\\\?\\", "\\\\?\\C", "\\\\?\\UNC", "\\\\.\\C:"}) {
            EXPECT_EQ(u8(lmlongpath_desprepend_path(pagina.pon(vista_w(w(ruta)))).ver()), ruta)
                << "read to its end alone";
        }
    }
    // Names that only the system knows have no other form: without the prefix they would be relative paths.
    for (const char* ruta : {"\\\\?\\Volume{26a21bda-a627-11d7-9931-806e6f6e6963}\\x",
                             "\\\\?\\GLOBALROOT\\Device\\HarddiskVolume1\\x",
                             "\\\\?\\x",
                             "\\\\?\\abc\\x",
                             "\\\\?\\\\x",
                             "\\\\?\\1:\\x",
                             "\\\\?\\ñ:\\x",
                             "/",
                             "\\\\",
                             "\\\\?",
                             "x\\?\\C:\\x",
                             "\\x?\\C:\\x",
                             "\\\\??C:\\x",
                             "//x/C:",
                             "\\\\x\\C:\\y",
                             "\\\\?\\",
                             "//?/x",
                             "//./COM1",
                             "//./pipe/x",
                             "//./C:",
                             "//?",
                             "//x/C:/y",
                             "/?/C:/x",
                             "//./C:x",
                             "//?/UNC",
                             "//?/UNCx/y",
                             "//?x/C:/y",
                             "//.C:/x"}) {
        EXPECT_EQ(sin(ruta), ruta);
    }
}

TEST(lmlongpath, los_limites_son_los_de_la_familia) {
    EXPECT_EQ(lmlongpath_get_longitud_maxima_permitida_path(), 10240u);
    EXPECT_EQ(lmlongpath_get_longitud_maxima_permitida_componente_incluido_extension(), 255u);
}

// ---- Every call on a path of more than 260 units, absolute and relative ----

TEST(lmlongpath, cada_llamada_llega_mas_alla_del_limite_clasico) {
    const directorio_temporal dir;
    const std::string relativa = hasta_largo("", 270) + "\\d";
    dir.directorio(relativa);
    const en_directorio aqui(dir.ruta_w());
    for (const bool absoluta : {true, false}) {
        SCOPED_TRACE(absoluta ? "absolute" : "relative");
        const auto ruta = [&](const std::string& nombre) {
            const std::string cual = relativa + (nombre.empty() ? "" : "\\" + nombre);
            return w(absoluta ? dir.ruta(cual) : con_barras(cual));
        };
        const auto hay = [&](const std::string& nombre) { return dir.existe(relativa + "\\" + nombre); };
        EXPECT_TRUE(lmlongpath_CreateDirectoryW(ruta("sub").c_str()).hecho);
        EXPECT_TRUE(hay("sub"));
        {
            const fichero_abierto h =
                lmlongpath_CreateFileW(ruta("f \u00f1.txt").c_str(), GENERIC_WRITE, 0, CREATE_NEW);
            EXPECT_TRUE(h.valida());
            EXPECT_EQ(h.codigo, 0u);
        }
        dir.fichero(relativa + "\\f \u00f1.txt", "12345");
        EXPECT_EQ(lmlongpath_waccess(ruta("f \u00f1.txt").c_str(), acceso_existencia), 1);
        EXPECT_EQ(lmlongpath_waccess(ruta("f \u00f1.txt").c_str(), acceso_lectura), 1);
        EXPECT_EQ(lmlongpath_waccess(ruta("f \u00f1.txt").c_str(), acceso_escritura), 1);
        EXPECT_TRUE(lmlongpath_wchmod(ruta("f \u00f1.txt").c_str(), modo_lectura));
        EXPECT_TRUE(dir.es_de_solo_lectura(relativa + "\\f \u00f1.txt"));
        EXPECT_EQ(lmlongpath_waccess(ruta("f \u00f1.txt").c_str(), acceso_escritura), 0);
        EXPECT_EQ(lmlongpath_waccess(ruta("f \u00f1.txt").c_str(), acceso_lectura), 1);
        EXPECT_TRUE(lmlongpath_wchmod(ruta("f \u00f1.txt").c_str(), modo_escritura));
        EXPECT_FALSE(dir.es_de_solo_lectura(relativa + "\\f \u00f1.txt"));
        EXPECT_EQ(lmlongpath_GetFileAttributesW(ruta("sub").c_str()) & FILE_ATTRIBUTE_DIRECTORY,
                  DWORD{FILE_ATTRIBUTE_DIRECTORY});
        EXPECT_EQ(lmlongpath_GetFileAttributesExW(ruta("f \u00f1.txt").c_str()).nFileSizeLow, 5u);
        unsigned long codigo_tamanyo = 77;
        EXPECT_EQ(lmlongpath_GetFileSize(ruta("f \u00f1.txt").c_str(), &codigo_tamanyo), 5u);
        EXPECT_EQ(codigo_tamanyo, 77u);
        EXPECT_TRUE(lmlongpath_RenameFileW(ruta("f \u00f1.txt").c_str(), ruta("g.txt").c_str()).hecho);
        EXPECT_TRUE(hay("g.txt"));
        EXPECT_TRUE(lmlongpath_MoveFileW(ruta("g.txt").c_str(), ruta("sub\\h.txt").c_str(), 0).hecho);
        EXPECT_TRUE(hay("sub\\h.txt"));
        WIN32_FIND_DATAW encontrado;
        {
            const manija_busqueda b =
                lmlongpath_FindFirstFileW(ruta("sub\\h*").c_str(), encontrado, detalle::todo);
            EXPECT_TRUE(b.valida());
            EXPECT_EQ(u8(encontrado.cFileName), "h.txt");
        }
        {
            const manija_busqueda b =
                lmlongpath_FindFirstFileW(ruta("sub\\h*").c_str(), encontrado, detalle::sin_nombre_corto);
            EXPECT_TRUE(b.valida());
            EXPECT_EQ(u8(encontrado.cFileName), "h.txt");
        }
        // Wine gives a prefixed path back as it is, so the letters are not looked at.
        EXPECT_TRUE(iguales_sin_caja(lmlongpath_GetLongPathNameW(ruta("sub\\H.TXT").c_str()).ver(),
                                     w("\\\\?\\" + dir.ruta(relativa + "\\sub\\h.txt"))));
        EXPECT_FALSE(lmlongpath_GetShortPathNameW(ruta("sub\\h.txt").c_str()).empty());
        EXPECT_TRUE(lmlongpath_DeleteFileW(ruta("sub\\h.txt").c_str()).hecho);
        EXPECT_FALSE(hay("sub\\h.txt"));
        EXPECT_TRUE(lmlongpath_RemoveDirectoryW(ruta("sub").c_str()).hecho);
        EXPECT_FALSE(hay("sub"));
    }
}

TEST(lmlongpath, el_codigo_de_un_fallo_se_entrega_y_queda_como_ultimo_error) {
    const directorio_temporal dir;
    for (const std::string& donde : {std::string("corta"), hasta_largo("", 300)}) {
        SCOPED_TRACE(donde.size());
        dir.limpia();
        dir.fichero(donde + "\\f.txt");
        dir.fichero(donde + "\\lleno\\f.txt");
        const texto_w falta = dir.ruta_w(donde + "\\no.txt");
        const texto_w esta = dir.ruta_w(donde + "\\f.txt");
        const texto_w lleno = dir.ruta_w(donde + "\\lleno");
        struct fila {
            const char* nombre;
            std::function<desenlace()> falla;
            DWORD codigo;
        };
        const fila filas[] = {
            {"create file",
             [&] {
                 const fichero_abierto h = lmlongpath_CreateFileW(falta.c_str(), GENERIC_READ, 0);
                 return desenlace{h.valida(), h.codigo};
             },
             ERROR_FILE_NOT_FOUND},
            {"delete", [&] { return lmlongpath_DeleteFileW(falta.c_str()); }, ERROR_FILE_NOT_FOUND},
            {"create directory", [&] { return lmlongpath_CreateDirectoryW(lleno.c_str()); },
             ERROR_ALREADY_EXISTS},
            {"remove directory", [&] { return lmlongpath_RemoveDirectoryW(lleno.c_str()); },
             ERROR_DIR_NOT_EMPTY},
            {"rename onto an existing one",
             [&] { return lmlongpath_RenameFileW(esta.c_str(), lleno.c_str()); }, ERROR_ALREADY_EXISTS},
            {"rename a missing one", [&] { return lmlongpath_RenameFileW(falta.c_str(), esta.c_str()); },
             ERROR_FILE_NOT_FOUND},
            {"size",
             [&] {
                 unsigned long codigo = 77;
                 const bool bien = lmlongpath_GetFileSize(falta.c_str(), &codigo) != ~0ull;
                 return desenlace{bien, codigo};
             },
             ERROR_FILE_NOT_FOUND},
        };
        for (const fila& f : filas) {
            SCOPED_TRACE(f.nombre);
            ::SetLastError(0);
            const desenlace fin = f.falla();
            const DWORD ultimo = ::GetLastError();
            EXPECT_FALSE(fin.hecho);
            EXPECT_EQ(fin.codigo, f.codigo);
            EXPECT_EQ(ultimo, f.codigo);
        }
        ::SetLastError(0);
        EXPECT_EQ(lmlongpath_GetFileSize(falta.c_str(), nullptr), ~0ull);
        EXPECT_EQ(::GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
        // Wine gives a prefixed path back without looking for it.
        const sustituye no_hay(sistema.GetLongPathNameW, [](const wchar_t*, wchar_t*, DWORD) WINAPI -> DWORD {
            ::SetLastError(ERROR_FILE_NOT_FOUND);
            return 0;
        });
        // Those that answer without a code leave it in place as well.
        WIN32_FIND_DATAW encontrado;
        const std::function<void()> sin_out[] = {
            [&] { lmlongpath_GetFileAttributesW(falta.c_str()); },
            [&] { lmlongpath_GetFileAttributesExW(falta.c_str()); },
            [&] { lmlongpath_waccess(falta.c_str(), acceso_existencia); },
            [&] { lmlongpath_wchmod(falta.c_str(), modo_lectura); },
            [&] { lmlongpath_MoveFileW(falta.c_str(), esta.c_str(), 0); },
            [&] { lmlongpath_FindFirstFileW(falta.c_str(), encontrado, detalle::todo); },
            [&] { EXPECT_TRUE(lmlongpath_GetLongPathNameW(falta.c_str()).es_nula()); },
            [&] { EXPECT_TRUE(lmlongpath_GetShortPathNameW(falta.c_str()).es_nula()); },
        };
        for (std::size_t i = 0; i < std::size(sin_out); ++i) {
            ::SetLastError(0);
            sin_out[i]();
            const DWORD ultimo = ::GetLastError();
            EXPECT_EQ(ultimo, DWORD{ERROR_FILE_NOT_FOUND}) << "call " << i;
        }
        EXPECT_TRUE(dir.existe(donde + "\\f.txt"));
        EXPECT_EQ(dir.contenido(donde + "\\lleno\\f.txt"), "contenido");
    }
}

// What the system leaves behind after a success is no code of it.
TEST(lmlongpath, lo_hecho_no_tiene_codigo) {
    const sustituye borra(sistema.DeleteFileW, [](const wchar_t*) WINAPI {
        ::SetLastError(ERROR_BUSY);
        return BOOL{TRUE};
    });
    const sustituye sin_enlaces(sistema.sigue_enlaces, []() WINAPI { return BOOL{FALSE}; });
    const desenlace fin = lmlongpath_DeleteFileW(L"C:\\x");
    EXPECT_TRUE(fin.hecho);
    EXPECT_EQ(fin.codigo, DWORD{ERROR_SUCCESS});
}

// A name that cannot be asked itself is looked for in its directory, as names are compared there, without what stands behind
// it; a pattern, and a root, are no names in a directory.
TEST(lmlongpath, lo_que_no_se_deja_preguntar_se_busca_en_su_directorio) {
    static std::vector<std::string> buscados;
    const sustituye pregunta(sistema.GetFileAttributesW, [](const wchar_t*) WINAPI -> DWORD {
        ::SetLastError(ERROR_SHARING_VIOLATION);
        return INVALID_FILE_ATTRIBUTES;
    });
    const sustituye busca(sistema.FindFirstFileExW,
                          [](const wchar_t* patron, FINDEX_INFO_LEVELS nivel, void*, FINDEX_SEARCH_OPS que,
                             void* nada, DWORD indicadores) WINAPI -> HANDLE {
                              EXPECT_EQ(nivel, FindExInfoBasic);
                              EXPECT_EQ(que, FindExSearchNameMatch);
                              EXPECT_EQ(nada, nullptr);
                              EXPECT_EQ(indicadores, 0u);
                              buscados.push_back(u8(patron));
                              ::SetLastError(ERROR_FILE_NOT_FOUND);
                              return INVALID_HANDLE_VALUE;
                          });
    const struct {
        const wchar_t* ruta;
        std::vector<std::string> buscados;
    } filas[] = {{L"C:\\d\\x", {"C:\\d\\x"}},
                 {L"C:\\d\\x\\", {"C:\\d\\x"}},
                 {L"C:/d/x//", {"C:/d/x"}},
                 {L"C:\\", {}},
                 {L"\\\\s\\r\\", {}},
                 {L"C:\\d\\x*", {}},
                 {L"C:\\d\\?", {}}};
    for (const auto& fila : filas) {
        buscados.clear();
        const existencia que_hay = i_existencia(fila.ruta);
        EXPECT_EQ(buscados, fila.buscados) << u8(fila.ruta);
        EXPECT_EQ(que_hay.falta(), !fila.buscados.empty()) << u8(fila.ruta);
        EXPECT_EQ(que_hay.codigo,
                  fila.buscados.empty() ? DWORD{ERROR_SHARING_VIOLATION} : DWORD{ERROR_FILE_NOT_FOUND});
        EXPECT_EQ(que_hay.atributos, INVALID_FILE_ATTRIBUTES);
    }
}

TEST(lmlongpath, un_patron_de_busqueda_conserva_sus_puntos_finales) {
    fallos f;
    WIN32_FIND_DATAW datos;
    const std::string base = hasta_largo("C:\\", 300);
    struct fila {
        const char* patron;
        const char* espera;
    };
    const fila filas[] = {
        {"\\*", "\\*"},     {"\\*.", "\\*."},  {"/x*.", "\\x*."}, {"\\a\\..\\*.", "\\*."},
        {"\\*.*", "\\*.*"}, {"\\*.. ", "\\*"},  // blanks at the end go, as the system has it
        {"\\.", ""},        {"\\d\\..", ""},
    };
    for (const fila& fila : filas) {
        lmlongpath_FindFirstFileW({w(base + fila.patron).c_str(), ruta_fijada::uso::busqueda}, datos,
                                  detalle::todo);
        EXPECT_EQ(f.historia().back().nombre, "FindFirstFileExW");
        EXPECT_EQ(f.historia().back().ruta, "\\\\?\\" + base + fila.espera) << fila.patron;
    }
    lmlongpath_FindFirstFileW({L"C:\\no-hay\\*.", ruta_fijada::uso::busqueda}, datos, detalle::todo);
    EXPECT_EQ(f.historia().back().ruta, "C:\\no-hay\\*.");
    // In the current directory, by no name or by its drive.
    const directorio_temporal dir;
    const en_directorio aqui(w(dir.ruta()));
    wchar_t actual[MAX_PATH];
    ASSERT_NE(::GetCurrentDirectoryW(MAX_PATH, actual), 0u);
    const std::string unidad = u8(actual).substr(0, 2);
    for (const char* patron : {"*.", "xy*.", "x.", "*..", "*", "x*.*"}) {
        for (const std::string& delante : {std::string(), unidad, std::string("d\\..\\")}) {
            const texto_w dado = w(delante + patron);
            EXPECT_EQ(u8(ruta_fijada(dado.c_str(), ruta_fijada::uso::busqueda).c_str()),
                      u8(actual) + "\\" + patron)
                << delante;
        }
    }
    // A name is no pattern: the system cuts its dots.
    EXPECT_EQ(u8(ruta_fijada(L"xy.").c_str()), u8(actual) + "\\xy");
    EXPECT_EQ(u8(ruta_fijada(L"..\\xy", ruta_fijada::uso::busqueda).c_str()),
              u8(actual).substr(0, u8(actual).rfind('\\') + 1) + "xy");
}

TEST(lmlongpath, los_atributos_vacios_se_dicen_normales) {
    // Zero would leave them as they are, the protection included.
    static DWORD puestos;
    puestos = 77;
    const sustituye lee(sistema.GetFileAttributesW,
                        [](const wchar_t*) WINAPI -> DWORD { return FILE_ATTRIBUTE_READONLY; });
    const sustituye pone(sistema.SetFileAttributesW, [](const wchar_t*, DWORD a) WINAPI -> BOOL {
        puestos = a;
        return TRUE;
    });
    const sustituye sin_enlaces(sistema.sigue_enlaces, []() WINAPI { return BOOL{FALSE}; });
    EXPECT_TRUE(lmlongpath_wchmod(L"C:\\x", modo_escritura));
    EXPECT_EQ(puestos, DWORD{FILE_ATTRIBUTE_NORMAL});
    EXPECT_TRUE(lmlongpath_wchmod(L"C:\\x", modo_lectura));
    EXPECT_EQ(puestos, DWORD{FILE_ATTRIBUTE_READONLY});
}

TEST(lmlongpath, la_marca_de_un_directorio_no_impide_escribir_en_el) {
    const directorio_temporal dir;
    dir.directorio("d");
    const sustituye lee(sistema.GetFileAttributesW, [](const wchar_t*) WINAPI -> DWORD {
        return FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY;
    });
    EXPECT_EQ(lmlongpath_waccess(dir.ruta_w("d").c_str(), acceso_escritura), 1);
}

TEST(lmlongpath, los_indicadores_de_renombrar_mover_y_buscar) {
    static DWORD indicadores;
    static FINDEX_INFO_LEVELS nivel;
    const sustituye mueve(sistema.MoveFileExW, [](const wchar_t*, const wchar_t*, DWORD i) WINAPI -> BOOL {
        indicadores = i;
        return TRUE;
    });
    const sustituye busca(sistema.FindFirstFileExW,
                          [](const wchar_t*, FINDEX_INFO_LEVELS n, void*, FINDEX_SEARCH_OPS, void*, DWORD i)
                              WINAPI -> HANDLE {
                                  nivel = n;
                                  indicadores = i;
                                  return INVALID_HANDLE_VALUE;
                              });
    const sustituye sin_enlaces(sistema.sigue_enlaces, []() WINAPI { return BOOL{FALSE}; });
    EXPECT_TRUE(lmlongpath_RenameFileW(L"C:\\a", L"C:\\b").hecho);
    EXPECT_EQ(indicadores, DWORD{MOVEFILE_COPY_ALLOWED});  // to another volume too, never over another file
    EXPECT_TRUE(lmlongpath_MoveFileW(L"C:\\a", L"C:\\b", 0).hecho);
    EXPECT_EQ(indicadores, 0u);
    EXPECT_TRUE(lmlongpath_MoveFileW(L"C:\\a", L"C:\\b", MOVEFILE_REPLACE_EXISTING).hecho);
    EXPECT_EQ(indicadores, DWORD{MOVEFILE_REPLACE_EXISTING});
    WIN32_FIND_DATAW datos;
    EXPECT_FALSE(lmlongpath_FindFirstFileW(L"C:\\*", datos, detalle::todo).valida());
    EXPECT_EQ(nivel, FindExInfoStandard);
    EXPECT_EQ(indicadores, 0u);
    EXPECT_FALSE(lmlongpath_FindFirstFileW(L"C:\\*", datos, detalle::sin_nombre_corto).valida());
    EXPECT_EQ(nivel, FindExInfoBasic);
    EXPECT_EQ(indicadores, DWORD{FIND_FIRST_EX_LARGE_FETCH});
}

TEST(lmlongpath, la_forma_literal_lleva_siempre_prefijo) {
    struct fila {
        const wchar_t* ruta;
        std::string espera;
    };
    const fila filas[] = {
        {L"C:\\a\\..\\b", "\\\\?\\C:\\b"},
        {L"\\\\srv\\\\rec\\d", "\\\\?\\UNC\\srv\\rec\\d"},
        {L"\\\\?\\C:\\a.", "\\\\?\\C:\\a."},
        {L"//?/C:/a", "\\\\?\\C:\\a"},  // made full, it bears the prefix
    };
    for (const fila& f : filas) {
        EXPECT_EQ(u8(interno::lmlongpath_forma_literal(f.ruta).c_str()), f.espera);
    }
}

TEST(lmlongpath, un_recurso_con_varios_separadores_es_ese_recurso) {
    static std::vector<std::string> pedidos;
    const sustituye espia(sistema.GetFileAttributesW, [](const wchar_t* ruta) WINAPI -> DWORD {
        pedidos.push_back(u8(ruta));
        return INVALID_FILE_ATTRIBUTES;
    });
    const struct {
        std::string dada;
        std::string pedida;
    } filas[] = {
        {"\\\\s\\r\\x", "\\\\s\\r\\x"},
        {"//s/r/x", "//s/r/x"},
        {"\\\\s\\\\r\\x", "\\\\s\\r\\x"},
        {"//s//r/x", "//s\\r/x"},
        {"\\\\s/\\/r\\\\x", "\\\\s\\r\\x"},
        {"\\\\s\\r\\\\x\\\\y", "\\\\s\\r\\x\\\\y"},
        {"//s/r//", "//s\\r/"},
        {"\\\\s\\\\r", "\\\\s\\r"},
        {"\\\\s\\r", "\\\\s\\r"},
        {"\\\\s\\\\", "\\\\s\\\\"},
        {"\\\\\\s\\\\r\\x", "\\\\\\s\\\\r\\x"},  // no machine
        {"\\\\s", "\\\\s"},
        {"\\\\?\\\\C:\\x", "\\\\?\\\\C:\\x"},
    };
    for (const auto& fila : filas) {
        const texto_w dada = w(fila.dada);
        const ruta_fijada ruta(dada.c_str());
        pedidos.clear();
        lmlongpath_GetFileAttributesW(ruta);
        EXPECT_EQ(pedidos, std::vector<std::string>{fila.pedida}) << fila.dada;
        EXPECT_EQ(u8(ruta.dada()), fila.dada);
    }
    const std::string larga(300, 'x');
    for (const char* recurso : {"\\\\s\\\\r\\", "\\\\s\\r\\\\"}) {
        const texto_w dada = w(recurso + larga);
        EXPECT_EQ(u8(ruta_fijada(dada.c_str()).c_str()), "\\\\?\\UNC\\s\\r\\" + larga);
    }
}
