// The program's path, the current directory, short and long forms, and the search of PATH.
#include "files/programa.hpp"

#include <direct.h>

#include "apoyo/apoyo.hpp"
#include "apoyo/directorio.hpp"
#include "apoyo/fallos.hpp"
#include "apoyo/hijo.hpp"
#include "cdir.h"
#include "companions/lmlongpath.h"
#include "companions/sistema.hpp"
#include "companions/widestr.h"
#include "lumodir.h"

using namespace apoyo;
using namespace interno;

namespace {

// The children of these tests tell the outcome by their exit code.
const papel i_dice_su_path("programa_dice_su_path", [] {
    wchar_t* path = lumodir_dame_path_completo_del_programa_UNICODE();
    char* path_8 = lumodir_dame_path_completo_del_programa();
    return (u8(path) == u8(hijo_dato().c_str()) ? 1 : 0) +
           (de_cp1252(path_8) == u8(hijo_dato().c_str()) ? 2 : 0);
});

texto_w g_modulo;
DWORD g_respuesta = 0;
DWORD WINAPI modulo_w(HMODULE modulo, wchar_t* bufer, DWORD sitio) {
    EXPECT_EQ(modulo, ::GetModuleHandleW(nullptr));
    EXPECT_EQ(sitio, 10240u);
    std::copy(g_modulo.begin(), g_modulo.end(), bufer);
    return g_respuesta;
}
std::string corto_de(const std::string& ruta) {
    wchar_t corto[2048];
    return u8(vista_w(corto, ::GetShortPathNameW(w(ruta).c_str(), corto, 2048)));
}

std::string larga_del_sistema(const std::string& ruta) {
    wchar_t larga[2048];
    return u8(vista_w(larga, ::GetLongPathNameW(w(ruta).c_str(), larga, 2048)));
}

std::string path_largo(const std::string& ruta) {
    return toma(lumodir_dame_path_largo_UNICODE(w(ruta).c_str()));
}
std::string path_corto(const std::string& ruta) {
    return toma(lumodir_dame_path_corto_UNICODE(w(ruta).c_str()));
}

const std::string fuera_de_limite =
    std::string(100, 'a') + "\\" + std::string(100, 'b') + "\\" + std::string(100, 'c');

}  // namespace

// ---- the program's path

TEST(programa, el_path_del_programa_es_el_del_ejecutable) {
    EXPECT_EQ(toma(lumodir_dame_path_completo_del_programa_UNICODE()), u8(ruta_del_ejecutable().c_str()));
    EXPECT_EQ(toma(lumodir_dame_path_completo_del_programa()), u8(ruta_del_ejecutable().c_str()));
}

TEST(programa, el_path_de_un_programa_con_nombre_no_ascii) {
    const directorio_temporal dir;
    dir.directorio("año");
    const std::string copia = dir.ruta("año\\ñandú €.exe");
    ASSERT_TRUE(::CopyFileW(ruta_del_ejecutable().c_str(), w(copia).c_str(), TRUE));
    EXPECT_EQ(proceso_hijo("programa_dice_su_path", w(copia), w(copia)).espera_fin(), 3u);
}

TEST(programa, al_path_del_programa_se_le_cortan_los_blancos_finales) {
    const sustituye w_(sistema.GetModuleFileNameW, modulo_w);
    const struct {
        std::string texto;
        DWORD respuesta;
        std::string esperado;
        std::vector<std::string> informes;
    } filas[] = {
        {"C:\\año.exe", 10, "C:\\año.exe", {}},
        {" C:\\a b.exe  ", 13, " C:\\a b.exe", {}},
        {"C:\\a.exe\t ", 10, "C:\\a.exe\t", {}},
        {"", 0, "", {"tam_path > 0"}},
        {"x", 1, "x", {}},
        {std::string(10239, 'x'), 10239, std::string(10239, 'x'), {}},
        {std::string(10240, 'x'), 10240, std::string(10239, 'x'), {"tam_path < LMLONGPATH_LUMO_MAX_PATH"}},
    };
    for (const auto& fila : filas) {
        g_modulo = w(fila.texto);
        g_respuesta = fila.respuesta;
        EXPECT_EQ(toma(lumodir_dame_path_completo_del_programa_UNICODE()), fila.esperado) << fila.texto;
        EXPECT_EQ(toma_expresiones(), fila.informes) << fila.texto;
        EXPECT_EQ(toma(lumodir_dame_path_completo_del_programa()), fila.esperado) << fila.texto;
        EXPECT_EQ(toma_expresiones(), fila.informes) << fila.texto;
    }
}

// What the code page lacks is its default character, and no look-alike that would name another program.
TEST(programa, el_path_de_8_bits_es_el_ancho_convertido) {
    const sustituye w_(sistema.GetModuleFileNameW, modulo_w);
    g_modulo = w("C:\\\uFF41\u0131\u65E5\u00F1.exe ");
    g_respuesta = static_cast<DWORD>(g_modulo.size());
    EXPECT_EQ(toma(lumodir_dame_path_completo_del_programa()), "C:\\???\u00F1.exe");
    EXPECT_EQ(toma(lumodir_dame_path_completo_del_programa_UNICODE()), "C:\\\uFF41\u0131\u65E5\u00F1.exe");
    const std::string larga(10239, 'x');
    g_modulo = w("\u65E5" + larga.substr(1));
    g_respuesta = 10239;
    EXPECT_EQ(toma(lumodir_dame_path_completo_del_programa()), "?" + larga.substr(1));
    g_respuesta = 10240;
    EXPECT_EQ(toma(lumodir_dame_path_completo_del_programa()), "?" + larga.substr(1));
    ESPERA_INFORMES("tam_path < LMLONGPATH_LUMO_MAX_PATH");
}

TEST(programa, la_imagen_es_de_64_bits_cuando_el_ejecutable_lo_es) {
    const auto* base = reinterpret_cast<const char*>(::GetModuleHandleW(nullptr));
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    EXPECT_EQ(sistema.machine_es_imagen_de_64bits(),
              nt->OptionalHeader.Magic == IMAGE_NT_OPTIONAL_HDR64_MAGIC);
}

// ---- short and long forms

TEST(programa, la_forma_larga_y_la_corta_se_corresponden) {
    const directorio_temporal dir;
    const std::string prefijo = "\\\\?\\";
    const std::string fichero = dir.fichero("Long directory name\\ñandú long file name.text");
    const std::string corto = corto_de(fichero);
    ASSERT_NE(corto, fichero) << "this disk has no short names";
    const std::string larga = dir.directorio(fuera_de_limite);
    const std::string larga_fichero = dir.fichero(fuera_de_limite + "\\a long ñ name.text");
    const struct {
        std::string ruta;
        std::string larga;
        std::string corta;
    } filas[] = {
        {fichero, fichero, corto},
        {corto, fichero, corto},
        {prefijo + fichero, fichero, prefijo + corto},  // only the long form loses the prefix
        {dir.ruta("missing name.text"), dir.ruta("missing name.text"), dir.ruta("missing name.text")},
        {prefijo + dir.ruta("missing name.text"), dir.ruta("missing name.text"),
         prefijo + dir.ruta("missing name.text")},
        {"//?/" + dir.ruta("missing name.text"), dir.ruta("missing name.text"),
         "//?/" + dir.ruta("missing name.text")},
        {prefijo + "Volume{1-2}\\x", prefijo + "Volume{1-2}\\x", prefijo + "Volume{1-2}\\x"},
        {"\\\\?\\UNC\\no-server\\share\\x", "\\\\no-server\\share\\x", "\\\\?\\UNC\\no-server\\share\\x"},
        {"", "", ""},
        {"*?|", "*?|", "*?|"},
        {larga, larga, corto_de(prefijo + larga)},
        {larga_fichero, larga_fichero, corto_de(prefijo + larga_fichero)},
        {larga + "\\missing", larga + "\\missing", larga + "\\missing"},
    };
    for (const auto& fila : filas) {
        EXPECT_EQ(path_largo(fila.ruta), fila.larga) << fila.ruta;
        EXPECT_EQ(path_corto(fila.ruta), fila.corta) << fila.ruta;
        EXPECT_EQ(path_largo(path_largo(fila.ruta)), fila.larga) << fila.ruta;
    }
}

TEST(programa, una_forma_corta_con_prefijo_da_la_larga_sin_el) {
    const directorio_temporal dir;
    const std::string fichero = dir.fichero("Long directory name\\ñandú long file name.text");
    const std::string corto = "\\\\?\\" + corto_de(fichero);
    if (larga_del_sistema(corto) == corto) {
        EXPECT_EQ(path_largo(corto), corto.substr(4));
        GTEST_SKIP() << "this system leaves every path with the prefix as it is";
    }
    EXPECT_EQ(path_largo(corto), fichero);
}

TEST(programa, sin_path_no_hay_forma) {
    EXPECT_EQ(toma(lumodir_dame_path_largo_UNICODE(nullptr)), "");
    ESPERA_INFORMES("(path) != NULL");
    EXPECT_EQ(toma(lumodir_dame_path_corto_UNICODE(nullptr)), "");
    ESPERA_INFORMES("(path) != NULL");
    EXPECT_EQ(toma(lumodir_lmlongpath_prepended_path_si_necesario(nullptr)), "");
    ESPERA_INFORMES("(path) != NULL");
}

namespace {

// A name that grows between the question for its size and the answer, twice.
int g_preguntas = 0;
DWORD WINAPI crece(const wchar_t*, wchar_t* bufer, DWORD sitio) {
    const DWORD longitudes[] = {600, 900, 5000, 5000};
    const DWORD longitud = longitudes[std::min(g_preguntas++, 3)];
    if (sitio <= longitud) {
        return longitud + 1;
    }
    std::fill(bufer, bufer + longitud, L'\u00F1');
    bufer[longitud] = L'\0';
    return longitud;
}
// It goes away after the question for its size.
DWORD WINAPI desaparece(const wchar_t*, wchar_t*, DWORD) {
    return g_preguntas++ == 0 ? 600 : 0;
}
// Exactly as long as the room that needs no block.
DWORD g_longitud = 0;
DWORD WINAPI de_longitud(const wchar_t*, wchar_t* bufer, DWORD sitio) {
    if (sitio <= g_longitud) {
        return g_longitud + 1;
    }
    std::fill(bufer, bufer + g_longitud, L'x');
    bufer[g_longitud] = L'\0';
    return g_longitud;
}

using forma = decltype(sistema.GetLongPathNameW);

}  // namespace

TEST(programa, una_forma_se_pregunta_hasta_que_cabe) {
    for (const forma funcion : {static_cast<forma>(crece), static_cast<forma>(desaparece)}) {
        const sustituye largo(sistema.GetLongPathNameW, funcion);
        const sustituye corto(sistema.GetShortPathNameW, funcion);
        const std::string esperado = funcion == crece ? u8(texto_w(5000, L'\u00F1').c_str()) : "C:\\x";
        g_preguntas = 0;
        EXPECT_EQ(path_largo("C:\\x"), esperado);
        g_preguntas = 0;
        EXPECT_EQ(path_corto("C:\\x"), esperado);
    }
    const sustituye largo(sistema.GetLongPathNameW, de_longitud);
    const sustituye corto(sistema.GetShortPathNameW, de_longitud);
    for (const DWORD longitud : {1u, 510u, 511u, 512u, 513u, 10240u, 32766u}) {
        g_longitud = longitud;
        EXPECT_EQ(path_largo("C:\\x"), std::string(longitud, 'x')) << longitud;
        EXPECT_EQ(path_corto("C:\\x"), std::string(longitud, 'x')) << longitud;
    }
}

TEST(programa, el_prefijo_se_pone_como_lo_pone_la_biblioteca_de_paths_largos) {
    const std::string larga = "C:\\" + std::string(100, 'a') + "\\" + std::string(200, 'b');
    for (const std::string& ruta : {std::string("C:\\año\\x"), std::string(), larga, "\\\\?\\" + larga,
                                    "\\\\srv\\share\\" + std::string(250, 'x')}) {
        EXPECT_EQ(toma(lumodir_lmlongpath_prepended_path_si_necesario(w(ruta).c_str())),
                  toma(lmlongpath_prepended_path_si_necesario(w(ruta).c_str())))
            << ruta;
    }
    EXPECT_EQ(toma(lumodir_lmlongpath_prepended_path_si_necesario(w(larga).c_str())), "\\\\?\\" + larga);
}

TEST(programa, formas_con_cada_llamada_fallando) {
    const directorio_temporal dir;
    const std::string ruta = dir.fichero("Long directory name\\long file name.text");
    const std::string larga = dir.fichero(fuera_de_limite + "\\a long ñ name.text");
    for (const std::string& path : {ruta, larga}) {
        std::string forma_larga;
        std::string forma_corta;
        con_cada_fallo([] {},
                       [&] {
                           forma_larga = path_largo(path);
                           forma_corta = path_corto(path);
                       },
                       [&](const ronda& r) {
                           EXPECT_EQ(forma_larga, path) << r;  // what fails leaves the path as it is
                           if (r.limpia) {
                               EXPECT_NE(forma_corta, path) << r;
                           } else {
                               EXPECT_FALSE(forma_corta.empty()) << r;
                           }
                       });
    }
}

// ---- the current directory

namespace {

wchar_t* sin_directorio(wchar_t*, int sitio) {
    EXPECT_EQ(sitio, 260);
    return nullptr;
}

}  // namespace

TEST(programa, el_directorio_actual_viene_en_su_forma_larga) {
    const directorio_temporal dir;
    const std::string ruta = dir.directorio("Long ñandú directory name\\sub");
    const directorio_actual_restaurado restaura;
    for (const std::string& cual : {ruta, corto_de(ruta)}) {
        ASSERT_TRUE(::SetCurrentDirectoryW(w(cual).c_str())) << cual;
        EXPECT_EQ(toma(cdir_obtener_path_actual_UNICODE()), ruta) << cual;
        EXPECT_EQ(toma(cdir_obtener_path_actual()), ruta) << cual;
    }
    ASSERT_TRUE(::SetCurrentDirectoryW(L"C:\\"));
    EXPECT_EQ(toma(cdir_obtener_path_actual_UNICODE()), "C:\\");
    EXPECT_EQ(toma(cdir_obtener_path_actual()), "C:\\");
}

TEST(programa, el_directorio_actual_que_no_cabe_se_informa) {
    const sustituye w_(sistema._wgetcwd, sin_directorio);
    EXPECT_EQ(toma(cdir_obtener_path_actual_UNICODE()), "");
    ESPERA_INFORMES("(getcwd_ret) != NULL");
    EXPECT_EQ(toma(cdir_obtener_path_actual()), "");
    ESPERA_INFORMES("(getcwd_ret) != NULL");
}

TEST(programa, el_directorio_actual_de_8_bits_es_el_ancho_convertido) {
    const sustituye actual(
        sistema._wgetcwd, +[](wchar_t* bufer, int) -> wchar_t* {
            const texto_w texto = w("C:\\no such \uFF41\u65E5\u00F1");
            texto.copy(bufer, texto.size());
            bufer[texto.size()] = L'\0';
            return bufer;
        });
    EXPECT_EQ(toma(cdir_obtener_path_actual_UNICODE()), "C:\\no such \uFF41\u65E5\u00F1");
    EXPECT_EQ(toma(cdir_obtener_path_actual()), "C:\\no such ??\u00F1");
}

TEST(programa, un_directorio_actual_que_la_pagina_de_codigos_no_tiene) {
    const directorio_temporal dir;
    const std::string ruta = dir.directorio("dir \uFF41\u65E5");
    const directorio_actual_restaurado restaura;
    ASSERT_TRUE(::SetCurrentDirectoryW(w(ruta).c_str()));
    EXPECT_EQ(toma(cdir_obtener_path_actual_UNICODE()), ruta);
    EXPECT_EQ(toma(cdir_obtener_path_actual()), dir.ruta("dir ??"));
}

// ---- the search

namespace {

// PATH as the C runtime holds it, for the life of this object.
class con_path {
public:
    explicit con_path(const std::string& valor) : antes_(::_wgetenv(L"PATH")) {
        ::_wputenv((w("PATH=") + w(valor)).c_str());
    }
    ~con_path() { ::_wputenv((w("PATH=") + antes_).c_str()); }
    con_path(const con_path&) = delete;
    con_path& operator=(const con_path&) = delete;

private:
    texto_w antes_;
};

// Every path found, by the three ways of asking; they must agree.
std::vector<std::string> busca(const std::string& nombre) {
    ArrCADENA_u* lista = nullptr;
    const unsigned short con_lista = lumodir_busca_ejecutables_del_path(w(nombre).c_str(), &lista);
    std::vector<std::string> encontrados;
    for (unsigned long i = 0; i < arr_NumElemsCADENA_u(lista); ++i) {
        encontrados.push_back(u8(arr_GetCADENA_u(lista, i)));
    }
    arr_DestruyeCADENA_u(&lista);
    EXPECT_EQ(con_lista, encontrados.empty() ? 0 : 1) << nombre;
    EXPECT_EQ(lumodir_busca_ejecutables_del_path(w(nombre).c_str(), nullptr), con_lista) << nombre;
    wchar_t centinela[] = L"?";
    wchar_t* primero = centinela;
    EXPECT_EQ(lumodir_busca_ejecutable_del_path(w(nombre).c_str(), &primero), con_lista) << nombre;
    EXPECT_EQ(toma(primero), encontrados.empty() ? "(NULL)" : encontrados.front()) << nombre;
    EXPECT_EQ(lumodir_busca_ejecutable_del_path(w(nombre).c_str(), nullptr), con_lista) << nombre;
    return encontrados;
}

using textos = std::vector<std::string>;

}  // namespace

TEST(programa, se_busca_en_los_directorios_del_path_por_su_orden) {
    const directorio_temporal dir;
    dir.fichero("uno\\tool.exe");
    dir.fichero("dos\\tool.exe");
    dir.fichero("dos\\ñandú 日本.exe");
    dir.fichero("tres\\only.txt");
    dir.directorio("tres\\folder.exe");
    dir.fichero("tres\\bin\\deep.exe");
    const std::string uno = dir.ruta("uno");
    const std::string dos = dir.ruta("dos");
    const std::string tres = dir.ruta("tres");
    const struct {
        std::string path;
        std::string nombre;
        textos encontrados;
    } filas[] = {
        {uno + ";" + dos, "tool.exe", {uno + "\\tool.exe", dos + "\\tool.exe"}},
        {dos + ";" + uno, "tool.exe", {dos + "\\tool.exe", uno + "\\tool.exe"}},
        {uno + ";" + dos, "TOOL.EXE", {uno + "\\TOOL.EXE", dos + "\\TOOL.EXE"}},
        {uno + ";" + uno, "tool.exe", {uno + "\\tool.exe", uno + "\\tool.exe"}},  // repeats stay
        {uno + "\\;" + dos + "/", "tool.exe", {uno + "\\tool.exe", dos + "/tool.exe"}},
        {" " + uno + " ;;" + dos, "tool.exe", {uno + "\\tool.exe", dos + "\\tool.exe"}},
        {uno + ";" + dos, "tool", {}},  // no extension is added
        {uno + ";" + dos, "ñandú 日本.exe", {dos + "\\ñandú 日本.exe"}},
        {tres, "folder.exe", {tres + "\\folder.exe"}},  // nothing checks what it is
        {tres, "only.txt", {tres + "\\only.txt"}},
        {tres, "bin\\deep.exe", {tres + "\\bin\\deep.exe"}},
        {tres, "\\only.txt", {tres + "\\only.txt"}},
        {"\"" + uno + "\"", "tool.exe", {}},  // quotes stay
        {";" + uno + ";;", "tool.exe", {uno + "\\tool.exe"}},
        {uno + "\\\\", "tool.exe", {uno + "\\\\tool.exe"}},
        {uno + ";" + dos, "", {uno + "\\", dos + "\\"}},  // what is asked for is the directory itself
        {uno, std::string(20'000, 'x'), {}},
        {uno + ";" + dos, "missing.exe", {}},
        {dir.ruta("missing"), "tool.exe", {}},
        {" ", "lumodir no such file.exe", {}},
    };
    for (const auto& fila : filas) {
        const con_path path(fila.path);
        EXPECT_EQ(busca(fila.nombre), fila.encontrados) << fila.path << ", " << fila.nombre;
    }
}

// A host that was built with another C runtime, or with none, changes the process's PATH and no copy of it.
TEST(programa, el_path_es_el_del_proceso_en_este_momento) {
    const directorio_temporal dir;
    dir.fichero("uno\\tool.exe");
    dir.fichero("\u03A9\u65E5\\tool.exe");
    const con_path de_la_biblioteca_de_c(dir.ruta("uno"));
    const std::string otra = dir.ruta("\u03A9\u65E5");
    ASSERT_EQ(busca("tool.exe"), textos{dir.ruta("uno\\tool.exe")});
    ASSERT_TRUE(::SetEnvironmentVariableW(L"PATH", w(otra).c_str()));
    EXPECT_EQ(busca("tool.exe"), textos{otra + "\\tool.exe"});
    // As long as the system lets it be.
    const std::string relleno(32'000, 'x');
    ASSERT_TRUE(::SetEnvironmentVariableW(L"PATH", w(relleno + ";" + otra).c_str()));
    EXPECT_EQ(busca("tool.exe"), textos{otra + "\\tool.exe"});
    ASSERT_TRUE(::SetEnvironmentVariableW(L"PATH", nullptr));
    EXPECT_EQ(busca("tool.exe"), textos{});
}

TEST(programa, sin_path_no_se_encuentra_nada) {
    const con_path path("");  // as the C runtime has it, this takes the variable away
    EXPECT_EQ(::_wgetenv(L"PATH"), nullptr);
    EXPECT_EQ(busca("kernel32.dll"), textos{});
}

TEST(programa, sin_nombre_no_se_busca) {
    ArrCADENA_u* lista = nullptr;
    EXPECT_EQ(lumodir_busca_ejecutables_del_path(nullptr, &lista), 0);
    ESPERA_INFORMES("(nombre) != NULL");
    ASSERT_NE(lista, nullptr);
    EXPECT_EQ(arr_NumElemsCADENA_u(lista), 0u);
    arr_DestruyeCADENA_u(&lista);
    EXPECT_EQ(lumodir_busca_ejecutables_del_path(nullptr, nullptr), 0);
    ESPERA_INFORMES("(nombre) != NULL");
    wchar_t centinela[] = L"?";
    wchar_t* path = centinela;
    EXPECT_EQ(lumodir_busca_ejecutable_del_path(nullptr, &path), 0);
    EXPECT_EQ(path, nullptr);
    ESPERA_INFORMES("(nombre) != NULL");
    EXPECT_EQ(lumodir_busca_ejecutable_del_path(nullptr, nullptr), 0);
    ESPERA_INFORMES("(nombre) != NULL");
}

TEST(programa, sin_lista_la_busqueda_para_en_el_primero) {
    const directorio_temporal dir;
    dir.fichero("uno\\tool.exe");
    dir.fichero("dos\\tool.exe");
    const con_path path(dir.ruta("uno") + ";" + dir.ruta("dos"));
    fallos f;
    EXPECT_EQ(lumodir_busca_ejecutables_del_path(L"tool.exe", nullptr), 1);
    EXPECT_EQ(f.rutas("GetFileAttributesW"), textos{dir.ruta("uno\\tool.exe")});
    f.falla(0, 0);
    wchar_t* primero = nullptr;
    EXPECT_EQ(lumodir_busca_ejecutable_del_path(L"tool.exe", &primero), 1);
    EXPECT_EQ(toma(primero), dir.ruta("uno\\tool.exe"));
    f.falla(0, 0);
    ArrCADENA_u* lista = nullptr;
    EXPECT_EQ(lumodir_busca_ejecutables_del_path(L"tool.exe", &lista), 1);
    EXPECT_EQ(f.rutas("GetFileAttributesW"), (textos{dir.ruta("uno\\tool.exe"), dir.ruta("dos\\tool.exe")}));
    arr_DestruyeCADENA_u(&lista);
}

TEST(programa, un_directorio_que_no_contesta_no_para_la_busqueda) {
    const directorio_temporal dir;
    dir.fichero("uno\\tool.exe");
    dir.fichero("dos\\tool.exe");
    const con_path path(dir.ruta("uno") + ";" + dir.ruta("dos"));
    fallos f;
    f.falla_siempre("GetFileAttributesW", ERROR_BAD_NETPATH, 1);
    wchar_t* encontrado = nullptr;
    EXPECT_EQ(lumodir_busca_ejecutable_del_path(L"tool.exe", &encontrado), 1);
    EXPECT_EQ(toma(encontrado), dir.ruta("dos\\tool.exe"));
    f.falla_siempre("GetFileAttributesW", ERROR_BAD_NETPATH);
    EXPECT_EQ(busca("tool.exe"), textos{});
}
