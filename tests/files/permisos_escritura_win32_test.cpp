// Whether files and directories can be written, on a real disk, with files held by another process, and under faults.
#include "files/permisos_escritura.hpp"

#include <array>

#include "apoyo/apoyo.hpp"
#include "apoyo/como_windows.hpp"
#include "apoyo/directorio.hpp"
#include "apoyo/exportada.hpp"
#include "apoyo/fallos.hpp"
#include "apoyo/otro_proceso.hpp"
#include "cdir.h"
#include "companions/plataforma.hpp"
#include "lumodir.h"

using namespace apoyo;

namespace {

using lista = std::vector<std::string>;

constexpr const char* sin_permiso = "The file does not have write permission.";

std::string no_se_crea(const std::string& directorio) {
    return "Cannot create the directory '" + directorio + "'";
}
std::string no_se_escribe(const std::string& directorio) {
    return "Unable to write to the directory '" + directorio +
           "' because you do not have write permission. If you are trying to access a network drive, please "
           "check "
           "that you have write permission.";
}

// An answer with its reason; the reason is stored on every outcome, so the rubbish before it never shows.
struct veredicto {
    unsigned short bien;
    std::string motivo;
    friend bool operator==(const veredicto& a, const veredicto& b) = default;
    friend std::ostream& operator<<(std::ostream& salida, const veredicto& r) {
        return salida << r.bien << " [" << r.motivo << "]";
    }
};
const veredicto si = {1, "(NULL)"};

using funcion_con_motivo = unsigned short (*)(const wchar_t*, wchar_t**);
veredicto pregunta_con_motivo(funcion_con_motivo funcion, const std::string& ruta) {
    wchar_t basura[] = L"basura";
    wchar_t* motivo = basura;
    const unsigned short bien = funcion(w(ruta).c_str(), &motivo);
    const bool guardado = motivo != basura;
    EXPECT_TRUE(guardado) << ruta;
    // The answer without a place for the reason is the same.
    EXPECT_EQ(funcion(w(ruta).c_str(), nullptr), bien) << ruta;
    return {bien, guardado ? toma(motivo) : "basura"};
}
veredicto escribir(const std::string& ruta) {
    return pregunta_con_motivo(lumodir_se_puede_escribir_UNICODE_ex, ruta);
}
veredicto escribir_en(const std::string& ruta) {
    return pregunta_con_motivo(cdir_se_puede_escribir_en_directorio, ruta);
}
veredicto escribir_fichero_en(const std::string& ruta) {
    return pregunta_con_motivo(cdir_se_puede_escribir_fichero_en_directorio, ruta);
}

const std::string larga = std::string(100, 'a') + "\\" + std::string(100, 'b') + "\\" + std::string(100, 'c');

std::string nombre_de_sonda() {
    return "~lumo~~_" + std::to_string(::GetCurrentProcessId()) + ".tmp";
}

}  // namespace

TEST(permisos_escritura, escribir_un_fichero_fila_a_fila) {
    const directorio_temporal dir;
    struct fila {
        std::string ruta;
        veredicto espera;
        bool permiso;  // by its attributes alone
    };
    const fila filas[] = {
        {"f.txt", si, true},
        {"protegido.txt", {0, sin_permiso}, false},
        {"\u00f1 \u20ac.txt", si, true},
        {"sub\\f.txt", si, true},
        {"sub/f.txt", si, true},
        {larga + "\\f.txt", si, true},
        {"nuevo.txt", si, false},
        {"sub\\nuevo \u00fc.txt", si, false},
        {larga + "\\nuevo.txt", si, false},
        {"no\\nuevo.txt", {0, texto_de_codigo(ERROR_PATH_NOT_FOUND)}, false},
        {"sub", {0, texto_de_codigo(ERROR_ACCESS_DENIED)}, true},  // a directory is not opened so
    };
    dir.fichero("f.txt", "intacto");
    dir.fichero("protegido.txt", "x", FILE_ATTRIBUTE_READONLY);
    dir.fichero("\u00f1 \u20ac.txt");
    dir.fichero("sub\\f.txt");
    dir.fichero(larga + "\\f.txt");
    const lista antes = dir.arbol();
    for (const fila& f : filas) {
        SCOPED_TRACE(f.ruta);
        EXPECT_EQ(escribir(dir.ruta(f.ruta)), f.espera);
        EXPECT_EQ(cdir_se_puede_escribir_UNICODE(dir.ruta_w(f.ruta).c_str()), f.espera.bien);
        EXPECT_EQ(cdir_se_puede_escribir(dir.ruta_a(f.ruta).c_str()), f.espera.bien);
        EXPECT_EQ(lumodir_tiene_permiso_escritura_fichero_UNICODE(dir.ruta_w(f.ruta).c_str()),
                  f.permiso ? 1 : 0);
        EXPECT_EQ(cdir_tiene_permiso_escritura_fichero(dir.ruta_a(f.ruta).c_str()), f.permiso ? 1 : 0);
        EXPECT_EQ(dir.arbol(), antes);  // nothing stays, nothing goes
    }
    EXPECT_EQ(dir.contenido("f.txt"), "intacto");
    EXPECT_TRUE(dir.es_de_solo_lectura("protegido.txt"));
}

TEST(permisos_escritura, el_motivo_de_un_fichero_protegido_no_es_un_formato_y_no_se_abre_nada) {
    const directorio_temporal dir;
    dir.fichero("f.txt", "x", FILE_ATTRIBUTE_READONLY);
    fallos f;
    EXPECT_EQ(cdir_se_puede_escribir_UNICODE(dir.ruta_w("f.txt").c_str()), 0);
    EXPECT_EQ(f.llamadas(), 1u);
    EXPECT_EQ(f.cuenta("GetFileAttributesW"), 1u);
}

TEST(permisos_escritura, se_abre_a_solas_y_se_cierra) {
    const directorio_temporal dir;
    dir.fichero("f.txt");
    static DWORD acceso, compartir, disposicion, indicadores;
    const sustituye espia(
        interno::sistema.CreateFileW,
        [](const wchar_t* ruta, DWORD a, DWORD c, SECURITY_ATTRIBUTES* s, DWORD d, DWORD i, HANDLE p) WINAPI {
            acceso = a, compartir = c, disposicion = d, indicadores = i;
            return ::CreateFileW(ruta, a, c, s, d, i, p);
        });
    fallos f;
    EXPECT_EQ(cdir_se_puede_escribir_UNICODE(dir.ruta_w("f.txt").c_str()), 1);
    EXPECT_EQ(acceso, DWORD{GENERIC_READ | GENERIC_WRITE});
    EXPECT_EQ(compartir, 0u);
    EXPECT_EQ(disposicion, DWORD{OPEN_EXISTING});
    EXPECT_EQ(indicadores, 0u);
    EXPECT_EQ(f.cuenta("CloseHandle"), 1u);
    EXPECT_EQ(f.cuenta("DeleteFileW"), 0u);
    EXPECT_EQ(cdir_se_puede_escribir_UNICODE(dir.ruta_w("nuevo.txt").c_str()), 1);
    EXPECT_EQ(compartir, 0u);
    EXPECT_EQ(disposicion, DWORD{CREATE_NEW});
    EXPECT_EQ(acceso, DWORD{GENERIC_READ | GENERIC_WRITE | DELETE});
    EXPECT_EQ(f.cuenta("SetFileInformationByHandle"), 1u);
    EXPECT_EQ(f.cuenta("DeleteFileW"), 0u);  // by the handle that made it
    EXPECT_FALSE(dir.existe("nuevo.txt"));
    EXPECT_EQ(f.manijas_abiertas(), 0u);
}

TEST(permisos_escritura, un_fichero_abierto_en_otro_programa_no_se_puede_escribir) {
    const directorio_temporal dir;
    dir.fichero("f.txt", "intacto");
    for (const DWORD compartir : {DWORD{0}, DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE}}) {
        otro_proceso sujeta(dir.ruta("f.txt"), GENERIC_READ, compartir);
        EXPECT_EQ(escribir(dir.ruta("f.txt")), (veredicto{0, texto_de_codigo(ERROR_SHARING_VIOLATION)}));
        EXPECT_EQ(cdir_se_puede_escribir(dir.ruta_a("f.txt").c_str()), 0);
        EXPECT_EQ(lumodir_tiene_permiso_escritura_fichero_UNICODE(dir.ruta_w("f.txt").c_str()), 1);
        EXPECT_EQ(cdir_tiene_permiso_escritura_fichero(dir.ruta_a("f.txt").c_str()), 1);
    }
    EXPECT_EQ(escribir(dir.ruta("f.txt")), si);
    EXPECT_EQ(dir.contenido("f.txt"), "intacto");
    EXPECT_TRUE(toma_esperas().empty());  // nothing is retried here
}

TEST(permisos_escritura, lo_que_no_se_sabe_si_falta_no_se_crea_ni_se_borra) {
    const directorio_temporal dir;
    dir.fichero("f.txt", "intacto");
    for (const DWORD codigo : {5u, 21u, 32u, 64u, 1231u}) {
        fallos f;
        f.falla_siempre("GetFileAttributesW", codigo, 2);
        EXPECT_EQ(escribir(dir.ruta("f.txt")), si) << codigo;  // it can be opened: that is what was asked
        f.falla_siempre("GetFileAttributesW", codigo, 2);
        const DWORD sin_entrada = codigo == 5 || codigo == 32 ? ERROR_ACCESS_DENIED : ERROR_FILE_NOT_FOUND;
        EXPECT_EQ(escribir(dir.ruta("no.txt")).bien, sin_entrada == ERROR_ACCESS_DENIED ? 1 : 0) << codigo;
        EXPECT_EQ(f.cuenta("DeleteFileW"), 0u);
    }
    EXPECT_EQ(dir.contenido("f.txt"), "intacto");
    EXPECT_EQ(dir.arbol(), lista{"f.txt"});
}

TEST(permisos_escritura, un_fichero_que_estaba_no_se_borra_falle_lo_que_falle) {
    // The question says that it is missing, the creation fails with whatever code.
    const directorio_temporal dir;
    dir.fichero("f.txt", "intacto");
    for (const DWORD codigo : {2u, 5u, 32u, 53u, 64u, 80u, 183u}) {
        for (const bool ocho : {false, true}) {
            fallos f;
            f.falla_siempre("CreateFileW", codigo);
            const sustituye atributos(interno::sistema.GetFileAttributesW, [](LPCWSTR) WINAPI {
                ::SetLastError(ERROR_FILE_NOT_FOUND);
                return DWORD{INVALID_FILE_ATTRIBUTES};
            });
            EXPECT_EQ(ocho ? cdir_se_puede_escribir(dir.ruta_a("f.txt").c_str())
                           : cdir_se_puede_escribir_UNICODE(dir.ruta_w("f.txt").c_str()),
                      0);
            EXPECT_EQ(f.cuenta("DeleteFileW") + f.cuenta("SetFileInformationByHandle"), 0u);
            EXPECT_EQ(dir.contenido("f.txt"), "intacto") << codigo;
        }
    }
}

TEST(permisos_escritura, donde_se_niega_el_derecho_a_borrar_se_crea_sin_el) {
    const directorio_temporal dir;
    const como_windows windows({});  // where links are followed, it is asked first whether this is one
    static texto_w ruta;
    static DWORD de_otro;
    static std::vector<std::array<DWORD, 4>> aperturas;  // access, share mode, disposition, flags
    ruta = dir.ruta_w("no.txt");
    for (const DWORD codigo : {5u, 50u, 87u}) {
        fallos f;
        f.falla_siempre("CreateFileW", codigo, 1);
        aperturas.clear();
        static decltype(interno::sistema.CreateFileW) debajo;
        debajo = interno::sistema.CreateFileW;
        const sustituye espia(interno::sistema.CreateFileW,
                              [](LPCWSTR cual, DWORD acceso, DWORD compartir, LPSECURITY_ATTRIBUTES quien,
                                 DWORD como, DWORD indicadores, HANDLE modelo) WINAPI {
                                  aperturas.push_back({acceso, compartir, como, indicadores});
                                  return debajo(cual, acceso, compartir, quien, como, indicadores, modelo);
                              });
        // Without the right to delete there is no such mark; and nobody else comes to the file meanwhile.
        const sustituye marca(interno::sistema.SetFileInformationByHandle,
                              [](HANDLE, FILE_INFO_BY_HANDLE_CLASS, LPVOID que, DWORD) WINAPI {
                                  EXPECT_EQ(static_cast<FILE_DISPOSITION_INFO*>(que)->DeleteFile, TRUE);
                                  const HANDLE otra = ::CreateFileW(ruta.c_str(), GENERIC_READ, 7, nullptr,
                                                                    OPEN_EXISTING, 0, nullptr);
                                  de_otro = otra == INVALID_HANDLE_VALUE ? ::GetLastError() : 0;
                                  ::CloseHandle(otra);
                                  ::SetLastError(ERROR_ACCESS_DENIED);
                                  return BOOL{FALSE};
                              });
        EXPECT_EQ(cdir_se_puede_escribir_UNICODE(ruta.c_str()), 1) << codigo;
        EXPECT_EQ(de_otro, DWORD{ERROR_SHARING_VIOLATION}) << codigo;
        ASSERT_EQ(aperturas.size(), 3u);
        EXPECT_EQ(aperturas[1], (std::array<DWORD, 4>{GENERIC_READ | GENERIC_WRITE, 0, CREATE_NEW, 0}));
        // The last one looks whether the name still means that file, itself and in nobody's way.
        constexpr DWORD todo = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        EXPECT_EQ(aperturas[2], (std::array<DWORD, 4>{FILE_READ_ATTRIBUTES, todo, OPEN_EXISTING,
                                                      FILE_FLAG_OPEN_REPARSE_POINT}));
        EXPECT_EQ(dir.arbol(), lista{}) << codigo;
    }
    for (const DWORD codigo : {1u, 5u, 50u, 87u}) {
        fallos f;
        f.falla_siempre("SetFileInformationByHandle", codigo);
        EXPECT_EQ(cdir_se_puede_escribir(dir.ruta_a("no.txt").c_str()), 1) << codigo;
        EXPECT_EQ(f.rutas("DeleteFileW"), lista{dir.ruta("no.txt")});
        EXPECT_EQ(dir.arbol(), lista{}) << codigo;
    }
}

TEST(permisos_escritura, por_su_nombre_solo_se_borra_lo_que_se_creo) {
    // Between the end of the probe and its deletion by name somebody else's file has come, or nobody can tell.
    static unsigned long long cuantas;
    static unsigned aperturas;
    for (const bool se_sabe : {true, false}) {
        const directorio_temporal dir;
        fallos f;
        f.falla_siempre("SetFileInformationByHandle", ERROR_ACCESS_DENIED);
        cuantas = se_sabe ? 1 : 0;
        const sustituye numeros(interno::sistema.numero_de_fichero,
                                [](HANDLE, unsigned long long* numero) WINAPI {
                                    *numero = cuantas == 0 ? 0 : cuantas++;
                                    return TRUE;
                                });
        EXPECT_EQ(cdir_se_puede_escribir_UNICODE(dir.ruta_w("no.txt").c_str()), 1);
        EXPECT_EQ(f.cuenta("DeleteFileW"), 0u) << se_sabe;
        EXPECT_TRUE(dir.existe("no.txt")) << se_sabe;
        EXPECT_EQ(f.manijas_abiertas(), 0u);
    }
    // Or what is there by then lets nobody open it.
    const directorio_temporal dir;
    const como_windows windows({});
    fallos f;
    f.falla_siempre("SetFileInformationByHandle", ERROR_ACCESS_DENIED);
    const sustituye numero(interno::sistema.numero_de_fichero, [](HANDLE, unsigned long long* cual) WINAPI {
        *cual = 1;  // also of what is no handle
        return TRUE;
    });
    aperturas = 0;
    static decltype(interno::sistema.CreateFileW) debajo;
    debajo = interno::sistema.CreateFileW;
    const sustituye abre(interno::sistema.CreateFileW,
                         [](LPCWSTR ruta, DWORD acceso, DWORD compartir, LPSECURITY_ATTRIBUTES quien,
                            DWORD como, DWORD indicadores, HANDLE modelo) WINAPI {
                             if (++aperturas == 2) {
                                 ::SetLastError(ERROR_SHARING_VIOLATION);
                                 return INVALID_HANDLE_VALUE;
                             }
                             return debajo(ruta, acceso, compartir, quien, como, indicadores, modelo);
                         });
    EXPECT_EQ(cdir_se_puede_escribir_UNICODE(dir.ruta_w("no.txt").c_str()), 1);
    EXPECT_EQ(aperturas, 2u);
    EXPECT_EQ(f.cuenta("DeleteFileW"), 0u);
    EXPECT_TRUE(dir.existe("no.txt"));
    EXPECT_EQ(f.manijas_abiertas(), 0u);
}

TEST(permisos_escritura, la_prueba_mira_crea_y_borra_en_el_mismo_sitio) {
    const directorio_temporal dir;
    const como_windows windows({});  // where links are followed, it is asked first whether this is one
    dir.directorio("uno");
    dir.fichero("otro\\f.txt", "intacto");
    static texto_w otro;
    otro = dir.ruta_w("otro");
    const sustituye cambia(interno::sistema.GetFileAttributesW, [](LPCWSTR ruta) WINAPI {
        const DWORD atributos = ::GetFileAttributesW(ruta);
        const DWORD codigo = ::GetLastError();
        ::SetCurrentDirectoryW(otro.c_str());
        ::SetLastError(codigo);
        return atributos;
    });
    const std::string unidad = dir.ruta().substr(0, 2);
    for (const std::string& ruta : {std::string("f.txt"), std::string("..\\uno\\f.txt"), unidad + "f.txt",
                                    dir.ruta("uno\\f.txt").substr(2)}) {
        SCOPED_TRACE(ruta);
        const en_directorio ahi(dir.ruta_w("uno"));
        fallos f;
        f.falla_siempre("SetFileInformationByHandle", ERROR_INVALID_FUNCTION);  // so that a name deletes it
        EXPECT_EQ(cdir_se_puede_escribir_UNICODE(w(ruta).c_str()), 1);
        EXPECT_EQ(f.cuenta("GetFullPathNameW"), 1u);
        EXPECT_EQ(dir.contenido("otro\\f.txt"), "intacto");
        EXPECT_EQ(dir.arbol("uno"), lista{});
    }
    // The directory is made, and the probe put, where the path was when the test began.
    for (const std::string& ruta : {std::string("d\\x"), unidad + "d\\x"}) {
        for (const bool de_fichero : {false, true}) {
            SCOPED_TRACE(ruta);
            const en_directorio ahi(dir.ruta_w("uno"));
            fallos f;
            EXPECT_EQ(de_fichero
                          ? cdir_se_puede_escribir_fichero_en_directorio(w(ruta + "\\f.txt").c_str(), nullptr)
                          : cdir_se_puede_escribir_en_directorio(w(ruta).c_str(), nullptr),
                      1);
            EXPECT_EQ(f.rutas("CreateFileW"), lista{dir.ruta("uno\\d\\x\\" + nombre_de_sonda())});
            EXPECT_EQ(dir.arbol(), (lista{"otro\\", "otro\\f.txt", "uno\\", "uno\\d\\", "uno\\d\\x\\"}));
            dir.borra("uno\\d");
        }
    }
}

TEST(permisos_escritura, sin_forma_completa_no_se_crea_lo_que_la_ruta_deja_atras) {
    const directorio_temporal dir;
    const texto_w ruta = dir.ruta_w("atras/../dñ");
    fallos f;
    f.falla_siempre("GetFullPathNameW", ERROR_ACCESS_DENIED);
    for (const bool de_fichero : {false, true}) {
        wchar_t* motivo = nullptr;
        EXPECT_EQ(de_fichero
                      ? cdir_se_puede_escribir_fichero_en_directorio((ruta + L"/f.txt").c_str(), &motivo)
                      : cdir_se_puede_escribir_en_directorio(ruta.c_str(), &motivo),
                  0);
        EXPECT_EQ(toma(motivo), no_se_crea(u8(ruta) + (de_fichero ? "/" : "")));
        EXPECT_EQ(dir.arbol(), lista{});
    }
    EXPECT_EQ(f.cuenta("CreateDirectoryW") + f.cuenta("CreateFileW"), 0u);
}

TEST(permisos_escritura, un_fichero_de_la_raiz_se_prueba_en_la_raiz) {
    const directorio_temporal dir;
    const std::string unidad = dir.ruta().substr(0, 2);
    const en_directorio ahi(dir.ruta_w());
    const std::string en_raiz = unidad + "\\" + nombre_de_sonda();
    const std::string aqui = dir.ruta(nombre_de_sonda());
    struct fila {
        std::string ruta;
        std::string sonda;
        std::string mostrado;
    };
    const fila filas[] = {
        {unidad + "\\x.txt", en_raiz, unidad},
        {unidad + "/x.txt", unidad + "/" + nombre_de_sonda(), unidad + "/"},
        {"\\x.txt", en_raiz, ""},
        {unidad + "x.txt", aqui, ""},
        {"x.txt", aqui, ""},
    };
    for (const fila& f : filas) {
        SCOPED_TRACE(f.ruta);
        {
            // Whoever asks about the root need not be able to write there.
            fallos libro;
            libro.falla_siempre("CreateFileW", ERROR_WRITE_PROTECT);
            wchar_t* motivo = nullptr;
            EXPECT_EQ(cdir_se_puede_escribir_fichero_en_directorio(w(f.ruta).c_str(), &motivo), 0);
            EXPECT_EQ(toma(motivo), no_se_escribe(f.mostrado));
            EXPECT_EQ(libro.rutas("CreateFileW"), lista{f.sonda});
            EXPECT_EQ(libro.cuenta("CreateDirectoryW"), 0u);
        }
        EXPECT_EQ(dir.arbol(), lista{});
    }
}

TEST(permisos_escritura, un_fichero_de_otra_unidad_se_prueba_en_el_directorio_de_esa_unidad) {
    const directorio_temporal dir;
    const std::string unidad = dir.ruta().substr(0, 2);
    const std::string otra = unidad == "Z:" || unidad == "z:" ? "C:" : "Z:";
    if (::GetFileAttributesW(w(otra + "\\").c_str()) == INVALID_FILE_ATTRIBUTES) {
        GTEST_SKIP() << "one drive only";
    }
    // Each drive has a current directory of its own, which the C runtime keeps in such a variable.
    const texto_w variable = w("=" + unidad);
    wchar_t antes[MAX_PATH] = {};
    const bool habia = ::GetEnvironmentVariableW(variable.c_str(), antes, MAX_PATH) != 0;
    ASSERT_TRUE(::SetEnvironmentVariableW(variable.c_str(), dir.ruta_w().c_str()));
    const en_directorio ahi(w(otra + "\\"));
    for (const std::string& ruta : {unidad, unidad + "x.txt", unidad + "..\\x.txt"}) {
        const bool es_de_arriba = ruta.size() > 7;
        const std::string donde = es_de_arriba ? dir.ruta().substr(0, dir.ruta().rfind('\\')) : dir.ruta();
        fallos libro;  // nobody wants a probe in the root of the other one
        libro.falla_siempre("CreateFileW", ERROR_WRITE_PROTECT);
        wchar_t* motivo = nullptr;
        EXPECT_EQ(cdir_se_puede_escribir_fichero_en_directorio(w(ruta).c_str(), &motivo), 0);
        EXPECT_EQ(toma(motivo), no_se_escribe(es_de_arriba ? unidad + ".." : ""));
        EXPECT_EQ(libro.rutas("CreateFileW"), lista{donde + "\\" + nombre_de_sonda()}) << ruta;
        EXPECT_EQ(libro.cuenta("CreateDirectoryW"), 0u);
        libro.no_falla();
        EXPECT_EQ(cdir_se_puede_escribir_fichero_en_directorio(w(unidad + "x.txt").c_str(), nullptr), 1);
        EXPECT_EQ(libro.rutas("CreateFileW").back(), dir.ruta(nombre_de_sonda()));
        EXPECT_EQ(libro.manijas_abiertas(), 0u);
    }
    EXPECT_EQ(dir.arbol(), lista{});
    ::SetEnvironmentVariableW(variable.c_str(), habia ? antes : nullptr);
    // A drive that is not there has no directory, and none is made for it.
    char ninguna = 'Q';
    while ((::GetLogicalDrives() >> (ninguna - 'A') & 1) != 0) {
        ++ninguna;
    }
    EXPECT_EQ(escribir_fichero_en(std::string(1, ninguna) + ":x.txt"), (veredicto{0, no_se_escribe("")}));
    EXPECT_TRUE(toma_esperas().empty());
}

TEST(permisos_escritura, no_nace_un_directorio_del_que_solo_se_sale) {
    const directorio_temporal dir;
    dir.directorio("a");
    struct fila {
        std::string directorio;
        lista arbol;
    };
    const fila filas[] = {
        {"a\\nada\\..\\", {"a\\"}},
        {"a\\nada\\..", {"a\\"}},
        {"a\\nada\\..\\b", {"a\\", "a\\b\\"}},
        {"a/nada/../b", {"a\\", "a\\b\\"}},
        {"a/nada/..", {"a\\"}},
        {"nada\\otra\\..\\..\\a\\\u00f1", {"a\\", "a\\\u00f1\\"}},
        {"a..b\\..\\a", {"a\\"}},
        {"a..b", {"a..b\\", "a\\"}},
    };
    const en_directorio ahi(dir.ruta_w());
    for (const fila& f : filas) {
        for (const std::string& delante : {dir.ruta() + "\\", std::string(), dir.ruta().substr(0, 2)}) {
            SCOPED_TRACE(delante + f.directorio);
            fallos libro;
            EXPECT_EQ(escribir_en(delante + f.directorio), si);
            EXPECT_EQ(escribir_fichero_en(delante + f.directorio + (f.directorio.back() == '\\' ? "" : "\\") +
                                          "x.txt"),
                      si);
            EXPECT_EQ(dir.arbol(), f.arbol);
            EXPECT_EQ(libro.manijas_abiertas(), 0u);
            dir.limpia();
            dir.directorio("a");
        }
    }
    // The directory of what is called so is one further up.
    const en_directorio en_a(dir.ruta_w("a"));
    for (const std::string& ruta :
         {dir.ruta("a\\nada\\.."), std::string("nada/.."), dir.ruta().substr(0, 2) + "nada\\.."}) {
        fallos libro;
        EXPECT_EQ(escribir_fichero_en(ruta), si) << ruta;
        EXPECT_EQ(libro.rutas("CreateFileW"), lista(2, dir.ruta(nombre_de_sonda()))) << ruta;
        EXPECT_EQ(dir.arbol(), lista{"a\\"}) << ruta;
    }
}

TEST(permisos_escritura, escribir_en_un_directorio_lo_crea_y_no_deja_sonda) {
    const directorio_temporal dir;
    struct fila {
        std::string directorio;
        lista arbol;
    };
    const fila filas[] = {
        {"a", {"a\\"}},
        {"a\\b\\c", {"a\\", "a\\b\\", "a\\b\\c\\"}},
        {"a\\b\\", {"a\\", "a\\b\\"}},
        {"a/b", {"a\\", "a\\b\\"}},
        {"\u00f1 \u20ac\\\u4e2d", {"\u00f1 \u20ac\\", "\u00f1 \u20ac\\\u4e2d\\"}},
        {"", {}},
    };
    for (const fila& f : filas) {
        SCOPED_TRACE(f.directorio);
        const std::string ruta = dir.ruta(f.directorio);
        EXPECT_EQ(escribir_en(ruta), si);
        EXPECT_EQ(dir.arbol(), f.arbol);
        EXPECT_EQ(escribir_en(ruta), si);  // and again, now that it exists
        EXPECT_EQ(dir.arbol(), f.arbol);
        dir.limpia();
        const bool acaba_en_barra = ruta.back() == '\\';
        EXPECT_EQ(escribir_fichero_en(ruta + (acaba_en_barra ? "f.txt" : "\\f.txt")), si);
        EXPECT_EQ(dir.arbol(), f.arbol);  // the file itself is not made
        dir.limpia();
    }
    EXPECT_EQ(escribir_en(dir.ruta(larga)), si);
    EXPECT_TRUE(dir.es_directorio(larga));
    EXPECT_EQ(dir.arbol().size(), 3u);
}

TEST(permisos_escritura, la_sonda_lleva_el_numero_del_proceso) {
    const directorio_temporal dir;
    dir.directorio("a");
    const std::string sonda = dir.ruta("a\\" + nombre_de_sonda());
    fallos f;
    EXPECT_EQ(cdir_se_puede_escribir_en_directorio(dir.ruta_w("a").c_str(), nullptr), 1);
    EXPECT_EQ(f.rutas("CreateFileW"), lista{sonda});
    EXPECT_EQ(f.cuenta("CreateDirectoryW"), 0u);
    EXPECT_EQ(cdir_se_puede_escribir_fichero_en_directorio(dir.ruta_w("a\\x.txt").c_str(), nullptr), 1);
    EXPECT_EQ(f.rutas("CreateFileW"), (lista{sonda, sonda}));
    EXPECT_EQ(interno::prueba_escritura_en_directorio(dir.ruta_w("a").c_str()), 1);
    EXPECT_EQ(f.rutas("CreateFileW"), (lista{sonda, sonda, sonda}));
    EXPECT_EQ(f.cuenta("SetFileInformationByHandle"), 3u);
    EXPECT_EQ(dir.arbol(), lista{"a\\"});
}

TEST(permisos_escritura, una_sonda_que_quedo_de_antes_sirve_y_se_queda) {
    const directorio_temporal dir;
    dir.fichero("a\\" + nombre_de_sonda(), "de antes");
    EXPECT_EQ(escribir_en(dir.ruta("a")), si);
    EXPECT_EQ(dir.contenido("a\\" + nombre_de_sonda()), "de antes");
    otro_proceso sujeta(dir.ruta("a\\" + nombre_de_sonda()), GENERIC_READ, FILE_SHARE_READ);
    EXPECT_EQ(escribir_en(dir.ruta("a")), (veredicto{0, no_se_escribe(dir.ruta("a"))}));
}

TEST(permisos_escritura, si_el_directorio_no_se_puede_crear_se_dice_cual) {
    const directorio_temporal dir;
    dir.fichero("f");
    const std::string ruta = dir.ruta("f\\\u00f1\\c");
    EXPECT_EQ(escribir_en(ruta),
              (veredicto{0, no_se_crea(ruta)}));  // the whole one, not the level that failed
    EXPECT_EQ(escribir_fichero_en(ruta + "\\x.txt"), (veredicto{0, no_se_crea(ruta)}));
    EXPECT_EQ(toma_esperas().size(), 4u * 5);  // creation retries, in silence
    EXPECT_EQ(dir.arbol(), lista{"f"});
    // A file of the name is no directory.
    EXPECT_EQ(escribir_en(dir.ruta("f")), (veredicto{0, no_se_crea(dir.ruta("f"))}));
    EXPECT_EQ(escribir_fichero_en(dir.ruta("f\\x.txt")), (veredicto{0, no_se_crea(dir.ruta("f"))}));
    EXPECT_EQ(toma_esperas().size(), 4u * 5);
}

TEST(permisos_escritura, si_la_sonda_falla_falta_permiso_y_el_directorio_se_queda) {
    const directorio_temporal dir;
    fallos f;
    f.falla_siempre("CreateFileW", ERROR_ACCESS_DENIED);
    EXPECT_EQ(escribir_en(dir.ruta("a\\\u00f1")), (veredicto{0, no_se_escribe(dir.ruta("a\\\u00f1"))}));
    EXPECT_EQ(dir.arbol(), (lista{"a\\", "a\\\u00f1\\"}));
    EXPECT_EQ(escribir_fichero_en(dir.ruta("a\\x.txt")), (veredicto{0, no_se_escribe(dir.ruta("a"))}));
}

TEST(permisos_escritura, el_directorio_de_un_fichero_pierde_una_sola_barra) {
    const directorio_temporal dir;
    fallos f;
    f.falla_siempre("CreateFileW", ERROR_ACCESS_DENIED);
    EXPECT_EQ(escribir_fichero_en(dir.ruta("a/x.txt")), (veredicto{0, no_se_escribe(dir.ruta("a/"))}));
    EXPECT_EQ(escribir_fichero_en(dir.ruta("a\\")), (veredicto{0, no_se_escribe(dir.ruta("a"))}));
    EXPECT_EQ(escribir_en(dir.ruta("a\\")), (veredicto{0, no_se_escribe(dir.ruta("a\\"))}));
}

TEST(permisos_escritura, un_path_incorrecto_da_su_motivo_y_no_crea_nada) {
    const directorio_temporal dir;
    fallos f;
    struct fila {
        std::string ruta;
        std::string motivo;
    };
    const fila filas[] = {
        {"", "You have not specified any directory name"},
        {"   ", "You have not specified any directory name"},
        {dir.ruta("a?b"), "There are invalid characters in the name 'a?b'"},
        {dir.ruta("a."), "A point was found at beginning or end of the path: '" + dir.ruta("a.") + "'"},
        {"1:\\a", "The name of the disk drive must be a letter."},
    };
    for (const fila& f2 : filas) {
        SCOPED_TRACE(f2.ruta);
        EXPECT_EQ(escribir_en(f2.ruta), (veredicto{0, f2.motivo}));
        EXPECT_EQ(escribir_fichero_en(f2.ruta), (veredicto{0, f2.motivo}));
    }
    EXPECT_EQ(f.llamadas(), 0u);
    EXPECT_EQ(dir.arbol(), lista{});
}

TEST(permisos_escritura, un_fichero_sin_directorio_no_crea_ni_avisa) {
    fallos f;
    f.falla_siempre("CreateFileW", ERROR_DISK_FULL);
    for (const char* nombre : {"x.txt", "x"}) {
        EXPECT_EQ(escribir_fichero_en(nombre), (veredicto{0, no_se_escribe("")}));
    }
    EXPECT_EQ(f.rutas("CreateFileW"), (lista(4, completa(nombre_de_sonda()))));
    EXPECT_EQ(f.cuenta("CreateDirectoryW"), 0u);
}

TEST(permisos_escritura, sin_directorio_la_sonda_va_al_actual_y_nunca_a_la_raiz) {
    const directorio_temporal dir;
    const en_directorio ahi(dir.ruta_w());
    const std::string unidad = dir.ruta().substr(0, 2);
    fallos f;
    EXPECT_EQ(escribir_fichero_en("x.txt"), si);
    EXPECT_EQ(escribir_en(unidad), si);
    EXPECT_EQ(f.rutas("CreateFileW"), lista(4, dir.ruta(nombre_de_sonda())));
    EXPECT_EQ(interno::prueba_escritura_en_directorio(L""), 1);
    EXPECT_EQ(interno::prueba_escritura_en_directorio(w(unidad).c_str()), 1);
    EXPECT_EQ(f.rutas("CreateFileW"), lista(6, dir.ruta(nombre_de_sonda())));
    // Where the system cannot tell which directory that is, least of all.
    f.falla_siempre("GetFullPathNameW", ERROR_ACCESS_DENIED);
    EXPECT_EQ(interno::prueba_escritura_en_directorio(w(unidad).c_str()), 1);
    EXPECT_EQ(f.rutas("CreateFileW").back(), unidad + ".\\" + nombre_de_sonda());
    f.no_falla();
    EXPECT_EQ(dir.arbol(), lista{});
}

TEST(permisos_escritura, null_se_informa_y_el_motivo_se_pone_a_null) {
    wchar_t basura[] = L"basura";
    wchar_t* motivo = basura;
    EXPECT_EQ(lumodir_se_puede_escribir_UNICODE_ex(nullptr, &motivo), 0);
    EXPECT_EQ(motivo, nullptr);
    ESPERA_INFORMES("(fichero) != NULL");
    se_niega(lumodir_se_puede_escribir_UNICODE_ex(nullptr, nullptr), {"(fichero) != NULL"});
    se_niega(cdir_se_puede_escribir_UNICODE(nullptr), {"(fichero) != NULL"});
    se_niega(cdir_se_puede_escribir(nullptr), {"(fichero) != NULL"});
    se_niega(lumodir_tiene_permiso_escritura_fichero_UNICODE(nullptr), {"(fichero) != NULL"});
    se_niega(cdir_tiene_permiso_escritura_fichero(nullptr), {"(fichero) != NULL"});
    motivo = basura;
    EXPECT_EQ(cdir_se_puede_escribir_en_directorio(nullptr, &motivo), 0);
    EXPECT_EQ(motivo, nullptr);
    ESPERA_INFORMES("(path_sin_espacios) != NULL");
    motivo = basura;
    EXPECT_EQ(cdir_se_puede_escribir_fichero_en_directorio(nullptr, &motivo), 0);
    EXPECT_EQ(motivo, nullptr);
    ESPERA_INFORMES("(path_sin_espacios) != NULL");
    se_niega(cdir_se_puede_escribir_en_directorio(nullptr, nullptr), {"(path_sin_espacios) != NULL"});
}

TEST(permisos_escritura, bajo_fallos_nada_queda_abierto_y_nada_ajeno_cambia) {
    const directorio_temporal dir;
    const auto prepara = [&] {
        dir.limpia();
        dir.fichero("f.txt", "intacto");
        dir.fichero("protegido.txt", "intacto", FILE_ATTRIBUTE_READONLY);
    };
    for (const char* nombre : {"f.txt", "protegido.txt", "nuevo.txt"}) {
        SCOPED_TRACE(nombre);
        const texto_w ruta = dir.ruta_w(nombre);
        unsigned short bien = 0;
        wchar_t* motivo = nullptr;
        con_cada_fallo(
            prepara, [&] { bien = lumodir_se_puede_escribir_UNICODE_ex(ruta.c_str(), &motivo); },
            [&](const ronda& r) {
                const std::string texto = toma(motivo);
                motivo = nullptr;
                EXPECT_EQ(texto == "(NULL)", bien == 1) << r;
                EXPECT_EQ(dir.contenido("f.txt"), "intacto") << r;
                EXPECT_TRUE(dir.es_de_solo_lectura("protegido.txt")) << r;
                EXPECT_EQ(dir.contenido("protegido.txt"), "intacto") << r;
                // Without the right to delete a missing file is created all the same.
                const bool sin_derecho = r.codigo == ERROR_ACCESS_DENIED && !r.para_siempre &&
                                         std::string_view(nombre) == "nuevo.txt";
                if (r.fallada == "CreateFileW" && !sin_derecho) {
                    EXPECT_EQ(bien, 0) << r;
                    EXPECT_EQ(texto, texto_de_codigo(r.codigo)) << r;
                }
                // What was created goes, unless the deletion is what failed.
                const bool borrado_roto = r.fallada == "DeleteFileW" || r.para_siempre;
                EXPECT_TRUE(!dir.existe("nuevo.txt") || borrado_roto) << r;
            });
    }
    unsigned short bien = 0;
    wchar_t* motivo = nullptr;
    con_cada_fallo(
        prepara, [&] { bien = cdir_se_puede_escribir_en_directorio(dir.ruta_w("a\\b").c_str(), &motivo); },
        [&](const ronda& r) {
            EXPECT_EQ(toma(motivo) == "(NULL)", bien == 1) << r;
            motivo = nullptr;
            EXPECT_TRUE(bien == 0 || dir.es_directorio("a\\b")) << r;
            EXPECT_TRUE(bien == 1 || !r.limpia) << r;
            toma_esperas();
        });
}
