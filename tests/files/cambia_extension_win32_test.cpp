// Giving the files of a directory another extension.
#include "apoyo/como_windows.hpp"
#include "apoyo/directorio.hpp"
#include "apoyo/fallos.hpp"
#include "apoyo/lado_unix.hpp"
#include "cdir.h"
#include "companions/buclrein.h"

using namespace apoyo;

namespace {

using lista = std::vector<std::string>;

struct cambio_de_extension {
    const char* antigua;
    const char* nueva;
    lista queda;
};

const lista como_estaba = {"a.bak",        "a.tmp", "b.TMP",     "c.txt",
                           "notas.mi tmp", "sin",   "sub.tmp\\", "sub.tmp\\d.tmp"};

const cambio_de_extension cambios_de_extension[] = {
    {.antigua = ".tmp",
     .nueva = "bak",
     .queda = {"a.bak", "b.bak", "c.txt", "notas.mi tmp", "sin", "sub.tmp\\", "sub.tmp\\d.tmp"}},
    {.antigua = "tmp",
     .nueva = ".\u00f1",
     .queda = {"a.bak", "a.\u00f1", "b.\u00f1", "c.txt", "notas.mi tmp", "sin", "sub.tmp\\",
               "sub.tmp\\d.tmp"}},
    {.antigua = "tmp", .nueva = "tmp", .queda = como_estaba},
    {.antigua = ".tmp", .nueva = "tmp", .queda = como_estaba},
    {.antigua = "zip", .nueva = "bak", .queda = como_estaba},
    {.antigua = "",  // the files without one
     .nueva = "log",
     .queda = {"a.bak", "a.tmp", "b.TMP", "c.txt", "notas.mi tmp", "sin.log", "sub.tmp\\", "sub.tmp\\d.tmp"}},
};

void siembra_extensiones(const directorio_temporal& d) {
    d.limpia();
    for (const char* nombre : {"a.tmp", "a.bak", "b.TMP", "c.txt", "notas.mi tmp", "sin", "sub.tmp\\d.tmp"}) {
        d.fichero(nombre, nombre);
    }
}

}  // namespace

TEST(cambia_extension, los_ficheros_del_directorio_cambian_de_extension) {
    const directorio_temporal d;
    for (const cambio_de_extension& caso : cambios_de_extension) {
        for (const char* final : {"", "\\"}) {
            siembra_extensiones(d);
            cdir_cambia_extension_ficheros_u((d.ruta_w() + w(final)).c_str(), w(caso.antigua).c_str(),
                                             w(caso.nueva).c_str());
            lista queda = caso.queda;
            std::sort(queda.begin(), queda.end());
            EXPECT_EQ(d.arbol(), queda) << caso.antigua << " to " << caso.nueva;
        }
    }
}

TEST(cambia_extension, el_que_estaba_en_su_sitio_se_sustituye) {
    const directorio_temporal d;
    d.fichero("a.tmp", "nuevo");
    d.fichero("a.bak", "viejo", FILE_ATTRIBUTE_READONLY);
    cdir_cambia_extension_ficheros_u(d.ruta_w().c_str(), L".tmp", L"bak");
    EXPECT_EQ(d.arbol(), lista{"a.bak"});
    EXPECT_EQ(d.contenido("a.bak"), "nuevo");
}

TEST(cambia_extension, otra_caja_de_letra_no_borra_el_fichero) {
    struct caja {
        const char* antigua;
        const char* nueva;
    };
    for (const caja& c :
         {caja{"tmp", "TMP"}, caja{"\u00f1\u0434", "\u00d1\u0414"}, caja{"\u00c0x", "\u00e0x"}}) {
        const directorio_temporal d;
        const std::string nombre = std::string("a.") + c.antigua;
        for (const unsigned sin_numero :
             {0u, ~0u}) {  // whether the system can tell one file from another or not
            d.limpia();
            d.fichero(nombre, "mio");
            fallos f;
            f.falla_siempre("GetFileInformationByHandle", ERROR_NOT_SUPPORTED, sin_numero);
            cdir_cambia_extension_ficheros_u(d.ruta_w().c_str(), w(c.antigua).c_str(), w(c.nueva).c_str());
            EXPECT_EQ(d.contenido(nombre), "mio") << nombre;
            EXPECT_EQ(d.arbol().size(), 1u) << nombre;
        }
    }
}

TEST(cambia_extension, sin_origen_no_se_borra_el_destino) {
    const directorio_temporal d;
    d.fichero("a.bak", "mio");
    buclrein_establece_politica(0, 0);
    // "*" lists every file, but no file bears it.
    cdir_cambia_extension_ficheros_u(d.ruta_w().c_str(), L"*", L"bak");
    EXPECT_EQ(d.contenido("a.bak"), "mio");
    EXPECT_EQ(toma_preguntas().size(), 1u);
}

TEST(cambia_extension, de_un_origen_que_falta_dice_el_sistema_al_renombrar) {
    // It may be back by then; who merely could not look at it has not renamed it.
    const directorio_temporal d;
    d.fichero("a.tmp", "mio");
    fallos f;
    f.falla_siempre("CreateFileW", ERROR_FILE_NOT_FOUND, 1);
    cdir_cambia_extension_ficheros_u(d.ruta_w().c_str(), L"tmp", L"bak");
    EXPECT_EQ(d.arbol(), lista{"a.bak"});
}

TEST(cambia_extension, un_directorio_vacio_o_en_blanco_se_informa_y_no_se_hace_nada) {
    const directorio_temporal d;
    d.fichero("a.tmp", "mio");
    d.fichero("a.bak", "mio");
    const en_directorio ahi(d.ruta_w());
    for (const wchar_t* base : {L"", L" ", L"   "}) {
        fallos f;
        cdir_cambia_extension_ficheros_u(base, L"tmp", L"bak");
        ESPERA_INFORMES("widestr_longitud(directorio) > 0");
        EXPECT_EQ(f.llamadas(), 0u);
    }
    EXPECT_EQ(d.arbol(), (lista{"a.bak", "a.tmp"}));
}

TEST(cambia_extension, sin_forma_completa_del_directorio_no_se_hace_nada) {
    const directorio_temporal d;
    d.fichero("a.tmp", "mio");
    d.fichero("d\\a.tmp", "mio");
    const en_directorio ahi(d.ruta_w());
    fallos f;
    f.falla_siempre("GetFullPathNameW", ERROR_ACCESS_DENIED);
    cdir_cambia_extension_ficheros_u(L"d", L"tmp", L"bak");
    EXPECT_EQ(f.cuenta("FindFirstFileExW"), 0u) << "no other directory is meant";
    EXPECT_EQ(d.arbol(), (lista{"a.tmp", "d\\", "d\\a.tmp"}));
}

TEST(cambia_extension, la_misma_extension_con_otra_ortografia_no_cambia_nada) {
    const directorio_temporal d;
    const struct {
        const char* antigua;
        const char* nueva;
        lista ficheros;
    } casos[] = {
        {"bak", "bak ", {"a.bak", "b.bak"}},
        {"bak", "bak.", {"a.bak", "b.bak"}},
        {"bak", "bak. . ", {"a.bak", "b.bak"}},
        {"", " ", {"a", "b"}},
        {"", "..", {"a", "b"}},
        {".", "..", {"a", "b"}},
        {"\u00f1", "\u00f1.", {"a.\u00f1"}},
        {"bak", ".bak", {"a.bak", "b.bak"}},  // the very same
    };
    for (const auto& c : casos) {
        SCOPED_TRACE(std::string(c.antigua) + "|" + c.nueva);
        d.limpia();
        for (const std::string& nombre : c.ficheros) {
            d.fichero(nombre, nombre);
        }
        fallos libro;
        cdir_cambia_extension_ficheros_u(d.ruta_w().c_str(), w(c.antigua).c_str(), w(c.nueva).c_str());
        EXPECT_EQ(libro.cuenta("MoveFileExW"), 0u);
        EXPECT_EQ(libro.cuenta("FindFirstFileExW"), std::string(c.nueva) == ".bak" ? 0u : 1u);
        EXPECT_EQ(d.arbol(), c.ficheros);
        for (const std::string& nombre : c.ficheros) {
            EXPECT_EQ(d.contenido(nombre), nombre);
        }
    }
}

TEST(cambia_extension, una_extension_que_acaba_en_blanco_no_quita_nada_a_otro) {
    // The system would read "a.txt " as a.txt, which is another name than the new one.
    const directorio_temporal d;
    buclrein_establece_politica(0, 0);
    for (const char* nueva : {"txt ", "txt.", "TXT .", "txt  "}) {
        d.limpia();
        d.fichero("a.bak", "origen");
        d.fichero("a.txt", "otro");
        d.fichero("b.bak", "b");
        cdir_cambia_extension_ficheros_u(d.ruta_w().c_str(), L"bak", w(nueva).c_str());
        EXPECT_EQ(d.contenido("a.bak"), "origen") << nueva;
        EXPECT_EQ(d.contenido("a.txt"), "otro") << nueva;
        EXPECT_EQ(d.contenido("b.txt"), "b") << nueva;
        EXPECT_EQ(d.arbol().size(), 3u) << nueva;
        EXPECT_EQ(toma_preguntas().size(), 1u) << nueva;
    }
}

TEST(cambia_extension, ninguna_extension_lleva_fuera_del_directorio) {
    const directorio_temporal d;
    buclrein_establece_politica(0, 0);
    for (const char* nueva : {"x\\..\\..\\victima.txt", "x/../../victima.txt", "\\..\\..\\victima.txt",
                              ".\\..\\victima.txt", "sub\\z", "..\\victima.txt", "x:flujo", "sub/", "\\"}) {
        SCOPED_TRACE(nueva);
        d.limpia();
        d.fichero("dentro\\a.bak", "origen");
        d.directorio("dentro\\a.sub");
        d.directorio("dentro\\a.x");
        d.directorio("dentro\\a");
        d.fichero("dentro\\victima.txt", "victima");
        d.fichero("victima.txt", "victima");
        const lista antes = d.arbol();
        cdir_cambia_extension_ficheros_u(d.ruta_w("dentro").c_str(), L"bak", w(nueva).c_str());
        EXPECT_EQ(d.arbol(), antes);
        EXPECT_EQ(d.contenido("dentro\\a.bak"), "origen");
        EXPECT_EQ(d.contenido("victima.txt"), "victima");
        EXPECT_EQ(d.contenido("dentro\\victima.txt"), "victima");
        const std::vector<pregunta> preguntas = toma_preguntas();
        ASSERT_EQ(preguntas.size(), 1u);
        EXPECT_EQ(preguntas[0].codigo, DWORD{ERROR_INVALID_NAME});
    }
}

TEST(cambia_extension, lo_que_es_todo_extension_no_se_queda_sin_nombre) {
    const directorio_temporal d;
    buclrein_establece_politica(0, 0);
    d.fichero(" .tmp", "mio");
    for (const wchar_t* nueva : {L"", L".", L". "}) {
        cdir_cambia_extension_ficheros_u(d.ruta_w().c_str(), L"tmp", nueva);
        const std::vector<pregunta> preguntas = toma_preguntas();
        ASSERT_EQ(preguntas.size(), 1u) << u8(nueva);
        EXPECT_EQ(preguntas[0].codigo, DWORD{ERROR_INVALID_NAME}) << u8(nueva);
        EXPECT_EQ(d.arbol(), lista{" .tmp"}) << u8(nueva);
    }
}

TEST(cambia_extension, una_extension_con_comodines_no_borra_lo_que_cumple) {
    const directorio_temporal d;
    buclrein_establece_politica(0, 0);
    for (const char* nueva : {"b?k", "*ak", "ba<", "b>k", "\"ak"}) {
        SCOPED_TRACE(nueva);
        siembra_extensiones(d);
        fallos libro;
        cdir_cambia_extension_ficheros_u(d.ruta_w().c_str(), L"tmp", w(nueva).c_str());
        for (const std::string& buscado : libro.rutas("FindFirstFileExW")) {
            EXPECT_FALSE(buscado.ends_with(nueva)) << buscado;
        }
        EXPECT_EQ(libro.cuenta("DeleteFileW"), 0u);
        EXPECT_EQ(d.arbol(), como_estaba);
        EXPECT_EQ(d.contenido("a.bak"), "a.bak");
        const std::vector<pregunta> preguntas = toma_preguntas();
        ASSERT_EQ(preguntas.size(), 2u);  // of the two files
        EXPECT_EQ(preguntas[0].codigo, DWORD{ERROR_INVALID_NAME});
    }
}

TEST(cambia_extension, el_nombre_corto_de_otro_fichero_no_es_un_destino) {
    const directorio_temporal d;
    buclrein_establece_politica(0, 0);
    d.fichero("abcdefghijk.htmx", "otro");
    wchar_t corto[MAX_PATH];
    ASSERT_NE(::GetShortPathNameW(d.ruta_w("abcdefghijk.htmx").c_str(), corto, MAX_PATH), 0u);
    const std::string alias = u8(corto).substr(u8(corto).rfind('\\') + 1);
    const std::size_t punto = alias.rfind('.');
    if (alias.find('~') == alias.npos || punto == alias.npos) {
        GTEST_SKIP() << "this system gives no short names";
    }
    d.fichero(alias.substr(0, punto) + ".tmp", "origen");
    cdir_cambia_extension_ficheros_u(d.ruta_w().c_str(), L"tmp", w(alias.substr(punto + 1)).c_str());
    EXPECT_EQ(d.contenido("abcdefghijk.htmx"), "otro");
    // The renaming may take the name away from the alias; nothing is lost either way.
    EXPECT_EQ(d.arbol().size(), 2u);
    toma_preguntas();
}

TEST(cambia_extension, otro_nombre_del_mismo_fichero_no_se_borra) {
    const directorio_temporal d;
    buclrein_establece_politica(0, 0);
    d.fichero("a.tmp", "mio");
    ASSERT_TRUE(::CreateHardLinkW(d.ruta_w("a.bak").c_str(), d.ruta_w("a.tmp").c_str(), nullptr));
    for (const bool otro_lo_tiene : {false, true}) {
        const HANDLE abierto =
            otro_lo_tiene ? d.abre("a.bak", GENERIC_READ | GENERIC_WRITE, 0) : INVALID_HANDLE_VALUE;
        fallos libro;
        cdir_cambia_extension_ficheros_u(d.ruta_w().c_str(), L"tmp", L"bak");
        EXPECT_EQ(libro.cuenta("DeleteFileW"), 0u) << otro_lo_tiene;
        EXPECT_EQ(libro.manijas_abiertas(), 0u);
        ::CloseHandle(abierto);
    }
    EXPECT_EQ(d.contenido("a.bak"), "mio");
    toma_preguntas();
}

// Two names are those of one file where volume and number say so, and the system tells a number.
TEST(cambia_extension, dos_ficheros_son_uno_si_lo_dice_su_numero) {
    struct datos {
        bool leidos;
        DWORD volumen;
        DWORD alto;
        DWORD bajo;
    };
    static std::vector<datos> dichos;
    const struct {
        std::vector<datos> dichos;  // of the source, of the target
        bool es_uno;
        unsigned no_se_abren = 0;
    } filas[] = {
        {{{true, 7, 0, 5}, {true, 7, 0, 5}}, true},
        {{{true, 7, 0, 1}, {true, 7, 0, 1}}, true},
        {{{true, 7, 1, 0}, {true, 7, 1, 0}}, true},
        {{{true, 7, 0, 0}, {true, 7, 0, 0}}, false},
        {{{true, 7, 0, 5}, {true, 8, 0, 5}}, false},
        {{{true, 7, 1, 5}, {true, 7, 2, 5}}, false},
        {{{true, 7, 1, 5}, {true, 7, 1, 6}}, false},
        {{{false, 7, 0, 5}, {true, 7, 0, 5}}, false},
        {{{true, 7, 0, 5}, {false, 7, 0, 5}}, false},
        {{{true, 7, 0, 5}, {true, 7, 0, 5}}, false, 1},  // one of them cannot be opened
    };
    const sustituye contesta(interno::sistema.GetFileInformationByHandle,
                             [](HANDLE, LPBY_HANDLE_FILE_INFORMATION que) WINAPI {
                                 const datos uno = dichos.empty() ? datos{} : dichos.front();
                                 dichos.erase(dichos.begin(), dichos.begin() + !dichos.empty());
                                 *que = {};
                                 que->dwVolumeSerialNumber = uno.volumen;
                                 que->nFileIndexHigh = uno.alto;
                                 que->nFileIndexLow = uno.bajo;
                                 return BOOL{uno.leidos};
                             });
    buclrein_establece_politica(0, 0);
    const como_windows windows({});  // where links are followed, others open files too
    static unsigned no_se_abren;
    const sustituye abre(interno::sistema.CreateFileW, [](LPCWSTR ruta, DWORD acceso, DWORD compartir,
                                                          LPSECURITY_ATTRIBUTES quien, DWORD como,
                                                          DWORD indicadores, HANDLE modelo) WINAPI {
        EXPECT_EQ(acceso, DWORD{FILE_READ_ATTRIBUTES});
        EXPECT_EQ(compartir, DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE});
        EXPECT_EQ(como, DWORD{OPEN_EXISTING});
        EXPECT_EQ(indicadores, DWORD{FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS})
            << "the entry itself, were it a directory by now";
        if (no_se_abren != 0) {
            --no_se_abren;
            ::SetLastError(ERROR_SHARING_VIOLATION);
            return INVALID_HANDLE_VALUE;
        }
        return ::CreateFileW(ruta, acceso, compartir, quien, como, indicadores, modelo);
    });
    for (const auto& fila : filas) {
        const directorio_temporal d;
        d.fichero("a.tmp", "nuevo");
        d.fichero("a.bak", "viejo");
        dichos = fila.dichos;
        no_se_abren = fila.no_se_abren;
        cdir_cambia_extension_ficheros_u(d.ruta_w().c_str(), L"tmp", L"bak");
        EXPECT_EQ(d.contenido("a.bak"), fila.es_uno ? "viejo" : "nuevo") << &fila - filas;
        EXPECT_EQ(toma_preguntas().size(), fila.es_uno ? 1u : 0u) << &fila - filas;
    }
}

TEST(cambia_extension, lo_que_se_pregunta_muestra_el_directorio_como_se_dio) {
    const directorio_temporal d;
    d.fichero("a.tmp");
    const en_directorio ahi(d.ruta_w());
    const std::string unidad = d.ruta().substr(0, 2);
    buclrein_establece_politica(0, 0);
    fallos f;
    f.falla_siempre("MoveFileExW", ERROR_ACCESS_DENIED);
    for (const auto& [dado, mostrado] : {std::pair(unidad, unidad),
                                         {d.ruta(), d.ruta() + "\\"},
                                         {d.ruta() + "\\", d.ruta() + "\\"},
                                         {std::string("."), std::string(".\\")},
                                         {std::string(".\\\\"), std::string(".\\")}}) {
        cdir_cambia_extension_ficheros_u(w(dado).c_str(), L"tmp", L"bak");
        const std::vector<pregunta> preguntas = toma_preguntas();
        ASSERT_EQ(preguntas.size(), 1u) << dado;
        EXPECT_NE(preguntas[0].mensaje.find("\n- " + mostrado + "a.tmp\n- " + mostrado + "a.bak\n"),
                  std::string::npos)
            << preguntas[0].mensaje;
    }
}

TEST(cambia_extension, la_raiz_es_la_raiz_y_no_el_directorio_actual) {
    const directorio_temporal d;
    const std::string unidad = d.ruta().substr(0, 2);
    const std::string nombre = "lumo_" + std::to_string(::GetCurrentProcessId());
    const auto escribe = [&](const std::string& ruta) {
        const HANDLE h = ::CreateFileW(w(ruta).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        ::CloseHandle(h);
        return h != INVALID_HANDLE_VALUE;
    };
    const auto esta_en_la_raiz = [&](const char* extension) {
        return ::GetFileAttributesW(w(unidad + "\\" + nombre + extension).c_str()) != INVALID_FILE_ATTRIBUTES;
    };
    const en_directorio ahi(d.ruta_w());
    for (const std::string& base : {std::string("\\"), std::string("/"), unidad + "\\", unidad + "/"}) {
        SCOPED_TRACE(base);
        if (completa(base) != unidad + "\\") {
            continue;  // Wine takes "/" for the root of the Unix side
        }
        if (!escribe(unidad + "\\" + nombre + ".lumo_1")) {
            GTEST_SKIP() << "the root of the drive is not ours to write in";
        }
        d.limpia();
        d.fichero(nombre + ".lumo_1", "mio");
        d.fichero(nombre + ".lumo_2", "mio");
        cdir_cambia_extension_ficheros_u(w(base).c_str(), L"lumo_1", L"lumo_2");
        EXPECT_FALSE(esta_en_la_raiz(".lumo_1"));
        EXPECT_TRUE(esta_en_la_raiz(".lumo_2"));
        EXPECT_EQ(d.arbol(), (lista{nombre + ".lumo_1", nombre + ".lumo_2"}));
        EXPECT_EQ(d.contenido(nombre + ".lumo_2"), "mio");
        ::DeleteFileW(w(unidad + "\\" + nombre + ".lumo_2").c_str());
    }
    // A bare drive is its current directory, as everywhere.
    d.limpia();
    d.fichero(nombre + ".lumo_1", "mio");
    EXPECT_TRUE(escribe(unidad + "\\" + nombre + ".lumo_1"));
    cdir_cambia_extension_ficheros_u(w(unidad).c_str(), L"lumo_1", L"lumo_2");
    EXPECT_EQ(d.arbol(), lista{nombre + ".lumo_2"});
    EXPECT_TRUE(esta_en_la_raiz(".lumo_1"));
    ::DeleteFileW(w(unidad + "\\" + nombre + ".lumo_1").c_str());
}

TEST(cambia_extension, la_pregunta_no_lleva_el_cambio_a_otro_directorio) {
    const directorio_temporal d;
    const std::string unidad = d.ruta().substr(0, 2);
    for (const std::string& base :
         {std::string("d"), unidad + "d", std::string(".\\d\\"), std::string("d/")}) {
        SCOPED_TRACE(base);
        d.limpia();
        for (const char* donde : {"uno", "otro"}) {
            for (const char* nombre : {"a.tmp", "b.tmp", "a.bak", "b.bak"}) {
                d.fichero(std::string(donde) + "\\d\\" + nombre, donde);
            }
        }
        const en_directorio ahi(d.ruta_w("uno"));
        fallos f;
        f.falla_siempre("DeleteFileW", ERROR_SHARING_VIOLATION, 6);
        contesta([&](const pregunta& p) -> unsigned short {
            EXPECT_EQ(p.mensaje.substr(0, p.mensaje.find('\n')).find(d.ruta()), std::string::npos)
                << p.mensaje;
            ::SetCurrentDirectoryW(d.ruta_w("otro").c_str());
            return 1;
        });
        cdir_cambia_extension_ficheros_u(w(base).c_str(), L"tmp", L"bak");
        EXPECT_EQ(toma_preguntas().size(), 1u);
        toma_esperas();
        EXPECT_EQ(d.arbol("uno"), (lista{"uno\\d\\", "uno\\d\\a.bak", "uno\\d\\b.bak"}));
        EXPECT_EQ(d.arbol("otro").size(), 5u);
        EXPECT_EQ(f.cuenta("GetFullPathNameW"), 1u);
    }
}

TEST(cambia_extension, los_nombres_de_dispositivos_son_nombres) {
    const directorio_temporal d;
    for (const char* nombre : {"con.tmp", "aux.tmp", "nul.tmp", "nul.bak"}) {
        d.fichero(nombre, nombre);
    }
    cdir_cambia_extension_ficheros_u(d.ruta_w().c_str(), L"tmp", L"bak");
    EXPECT_EQ(d.arbol(), (lista{"aux.bak", "con.bak", "nul.bak"}));
    EXPECT_EQ(d.contenido("nul.bak"), "nul.tmp");
}

TEST(cambia_extension, un_enlace_que_el_sistema_seguiria_se_queda_con_todo) {
    LADO_UNIX_QUE_SIGUE_ENLACES(u);
    buclrein_establece_politica(1, 0);
    struct fila {
        const char* que;
        std::string guion;
        lista preguntas;   // about whom
        lista se_va = {};  // of the tree, as it was
        lista viene = {};
    };
    const fila casos[] = {
        {"source", "ln -s ../fuera/v d/l.tmp", {"l"}},
        {"source in place of which a file would be deleted",
         "ln -s ../fuera/v d/l.tmp; echo 5 >d/l.bak",
         {"l"}},
        {"source, to a file beside it", "echo 5 >d/otro; ln -s otro d/l.tmp", {"l"}},
        {"source, read-only outside", "ln -s ../fuera/p d/l.tmp", {"l"}},
        {"target", "echo 5 >d/l.tmp; ln -s ../fuera/v d/l.bak", {"l"}},
        {"target, read-only outside", "echo 5 >d/l.tmp; ln -s ../fuera/p d/l.bak", {"l"}},
        {"target, to the source", "echo 5 >d/l.tmp; ln -s l.tmp d/l.bak", {"l"}},
        {"target, a directory", "echo 5 >d/l.tmp; ln -s ../fuera d/l.bak", {"l"}},
        {"one among others",
         "ln -s ../fuera/v d/l.tmp; echo 5 >d/a.tmp; echo 6 >'d/\xc3\xb1.tmp'; echo 7 >d/a.bak",
         {"l"},
         {"f a.bak", "f a.tmp", "f \xc3\xb1.tmp"},
         {"f a.bak", "f \xc3\xb1.bak"}},
        {"a link on the way", "mkdir e; echo 5 >e/a.tmp; rmdir d; ln -s e d", {}},
    };
    for (const fila& caso : casos) {
        for (const char* final : {"", "\\"}) {
            SCOPED_TRACE(std::string(caso.que) + " " + final);
            u.corre(
                "chmod -R u+rwx .; rm -rf *; mkdir fuera d; echo 1 >fuera/v; echo 2 >fuera/p; chmod 444 "
                "fuera/p");
            u.corre(caso.guion);
            const lista fuera = u.censo_exacto("fuera");
            lista queda = u.censo("d");
            for (const std::string& linea : caso.se_va) {
                EXPECT_EQ(std::erase(queda, linea), 1u) << linea;
            }
            queda.insert(queda.end(), caso.viene.begin(), caso.viene.end());
            std::sort(queda.begin(), queda.end());
            {
                fallos libro;
                cdir_cambia_extension_ficheros_u(u.d.ruta_w(std::string("d") + final).c_str(), L"tmp",
                                                 L"bak");
                EXPECT_EQ(libro.manijas_abiertas(), 0u);
            }
            const std::vector<pregunta> preguntas = toma_preguntas();
            ASSERT_EQ(preguntas.size(), caso.preguntas.size());
            for (std::size_t i = 0; i < preguntas.size(); ++i) {
                EXPECT_NE(preguntas[i].mensaje.find("d\\" + caso.preguntas[i] + ".tmp"), std::string::npos);
                EXPECT_EQ(preguntas[i].codigo, DWORD{ERROR_CANT_ACCESS_FILE});
            }
            toma_esperas();
            EXPECT_EQ(u.censo_exacto("fuera"), fuera);
            if (std::string_view(caso.que) == "a link on the way") {
                EXPECT_EQ(u.censo("e"), lista{"f a.bak"}) << "the directory that was named is behind it";
            } else {
                EXPECT_EQ(u.censo("d"), queda);
            }
        }
    }
    // Whatever call fails.
    u.corre("rm -rf d; mkdir d; ln -s ../fuera/v d/l.tmp; ln -s ../fuera/v d/m.bak; echo 5 >d/m.tmp");
    const lista antes = u.censo_exacto(".");
    con_cada_fallo([] {}, [&] { cdir_cambia_extension_ficheros_u(u.d.ruta_w("d").c_str(), L"tmp", L"bak"); },
                   [&](const ronda& r) {
                       EXPECT_EQ(u.d.contenido("fuera\\v"), "1\n") << r;
                       EXPECT_EQ(u.d.contenido("d\\l.tmp"), "1\n") << r;
                       EXPECT_EQ(u.d.contenido("d\\m.bak"), "1\n") << r;
                       olvida_todo();
                   });
    EXPECT_EQ(u.censo_exacto("."), antes);
}

TEST(cambia_extension, los_argumentos_nulos_se_informan) {
    cdir_cambia_extension_ficheros_u(nullptr, L"a", L"b");
    cdir_cambia_extension_ficheros_u(L"C:\\", nullptr, L"b");
    cdir_cambia_extension_ficheros_u(L"C:\\", L"a", nullptr);
    EXPECT_EQ(toma_expresiones(), lista(3, "dirBase!=NULL && oldExt!=NULL && newExt !=NULL"));
}

TEST(cambia_extension, falle_lo_que_falle_el_contenido_del_origen_no_se_pierde) {
    const directorio_temporal d;
    buclrein_establece_politica(1, 0);
    con_cada_fallo(
        [&] {
            d.limpia();
            d.fichero("a.tmp", "nuevo");
            d.fichero("a.bak", "viejo");
        },
        [&] { cdir_cambia_extension_ficheros_u(d.ruta_w().c_str(), L"tmp", L"bak"); },
        [&](const ronda& r) {
            EXPECT_TRUE(d.contenido("a.tmp") == "nuevo" || d.contenido("a.bak") == "nuevo") << r;
            olvida_todo();
        });
}
