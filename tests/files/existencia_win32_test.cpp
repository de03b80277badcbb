// Existence, kind, readability and size of names on a real disk, in both flavours; and the same under faults.
#include "apoyo/apoyo.hpp"
#include "apoyo/directorio.hpp"
#include "apoyo/exportada.hpp"
#include "apoyo/fallos.hpp"
#include "apoyo/otro_proceso.hpp"
#include "cdir.h"
#include "companions/lmlongpath.hpp"
#include "files/existencia.hpp"
#include "lumodir.h"

using namespace apoyo;

namespace {

// A disk with one of each kind.
struct disco {
    directorio_temporal dir;
    std::string larga = std::string(100, 'a') + "\\" + std::string(100, 'b') + "\\" + std::string(100, 'c');
    disco() {
        dir.fichero("f.txt", "12345");
        dir.fichero("protegido.txt", "x", FILE_ATTRIBUTE_READONLY);
        dir.fichero("oculto.txt", "", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
        dir.fichero("sub\\dentro.txt");
        dir.fichero("\u00f1and\u00fa \u20ac.txt", "123");
        dir.fichero(larga + "\\f.txt", "1234567");
        dir.directorio("vacio");
    }
};

struct pregunta_de_existencia {
    std::string ruta;  // relative to the disk
    bool existe;
    bool es_directorio = false;
    bool solo_lectura = false;
    bool se_lee = false;
    unsigned long long tamanyo = ~0ull;
};

std::vector<pregunta_de_existencia> preguntas_de_existencia(const disco& d) {
    return {
        {.ruta = "f.txt", .existe = true, .se_lee = true, .tamanyo = 5},
        {.ruta = "F.TXT", .existe = true, .se_lee = true, .tamanyo = 5},
        {.ruta = "protegido.txt", .existe = true, .solo_lectura = true, .se_lee = true, .tamanyo = 1},
        {.ruta = "oculto.txt", .existe = true, .se_lee = true, .tamanyo = 0},
        {.ruta = "\u00f1and\u00fa \u20ac.txt", .existe = true, .se_lee = true, .tamanyo = 3},
        {.ruta = "sub", .existe = true, .es_directorio = true, .tamanyo = 0},
        {.ruta = "sub\\", .existe = true, .es_directorio = true, .tamanyo = 0},
        {.ruta = "vacio", .existe = true, .es_directorio = true, .tamanyo = 0},
        {.ruta = "sub\\dentro.txt", .existe = true, .se_lee = true, .tamanyo = 9},
        {.ruta = "sub/dentro.txt", .existe = true, .se_lee = true, .tamanyo = 9},
        {.ruta = "sub\\..\\f.txt", .existe = true, .se_lee = true, .tamanyo = 5},
        {.ruta = d.larga + "\\f.txt",
         .existe = true,
         .se_lee = true,
         .tamanyo = 7},  // beyond the classic limit
        {.ruta = d.larga, .existe = true, .es_directorio = true, .tamanyo = 0},
        {.ruta = d.larga + "\\no.txt", .existe = false},
        {.ruta = "no.txt", .existe = false},
        {.ruta = "no\\no.txt", .existe = false},
        {.ruta = "f.txt\\no.txt", .existe = false},  // a file is not a directory
        {.ruta = "*.txt", .existe = false},          // wildcards mean nothing here
        {.ruta = "\u4e2d.txt", .existe = false},     // outside the 8-bit code page
    };
}

unsigned short logico(bool b) {
    return b ? 1 : 0;
}

}  // namespace

TEST(existencia, cada_pregunta_en_ambos_sabores) {
    const disco d;
    for (const pregunta_de_existencia& f : preguntas_de_existencia(d)) {
        SCOPED_TRACE(f.ruta);
        const texto_w ancha = d.dir.ruta_w(f.ruta);
        const texto_a ocho = d.dir.ruta_a(f.ruta);
        EXPECT_EQ(cdir_existe_fichero_UNICODE(ancha.c_str()), logico(f.existe));
        EXPECT_EQ(cdir_existe_fichero(ocho.c_str()), logico(f.existe));
        EXPECT_EQ(cdir_existe_directorio_UNICODE(ancha.c_str()), logico(f.existe));
        EXPECT_EQ(cdir_existe_directorio(ocho.c_str()), logico(f.existe));
        EXPECT_EQ(cdir_es_directorio_u(ancha.c_str()), logico(f.es_directorio));
        EXPECT_EQ(interno::es_fichero_de_solo_lectura(ancha.c_str()), logico(f.solo_lectura));
        EXPECT_EQ(cdir_se_puede_leer_UNICODE(ancha.c_str()), logico(f.se_lee));
        EXPECT_EQ(cdir_se_puede_leer(ocho.c_str()), logico(f.se_lee));
        if (!f.es_directorio) {  // the size of a directory is the file system's own business
            EXPECT_EQ(lumodir_get_tamanyo_fichero(ancha.c_str(), nullptr), f.tamanyo);
        }
        // Asking changes nothing, and asking again gives the same answer.
        EXPECT_EQ(cdir_existe_fichero_UNICODE(ancha.c_str()), logico(f.existe));
    }
}

TEST(existencia, una_ruta_relativa_cuenta_desde_el_directorio_actual) {
    const disco d;
    const en_directorio ahi(d.dir.ruta_w());
    EXPECT_EQ(cdir_existe_fichero_UNICODE(L"f.txt"), 1);
    EXPECT_EQ(cdir_existe_fichero(".\\sub\\dentro.txt"), 1);
    EXPECT_EQ(cdir_es_directorio_u(L"sub"), 1);
    EXPECT_EQ(cdir_es_directorio_u(L"."), 1);
    EXPECT_EQ(cdir_se_puede_leer_UNICODE(L"sub/../f.txt"), 1);
    EXPECT_EQ(cdir_existe_fichero_UNICODE(w(d.larga + "\\f.txt").c_str()), 1);  // long only when made full
    EXPECT_EQ(cdir_existe_fichero_UNICODE(L"dentro.txt"), 0);
}

TEST(existencia, un_texto_vacio_no_existe) {
    EXPECT_EQ(cdir_existe_fichero_UNICODE(L""), 0);
    EXPECT_EQ(cdir_existe_fichero(""), 0);
    EXPECT_EQ(cdir_existe_directorio_UNICODE(L""), 0);
    EXPECT_EQ(cdir_existe_directorio(""), 0);
    EXPECT_EQ(cdir_es_directorio_u(L""), 0);
    EXPECT_EQ(cdir_se_puede_leer_UNICODE(L""), 0);
    EXPECT_EQ(lumodir_get_tamanyo_fichero(L"", nullptr), ~0ull);
}

TEST(existencia, un_recurso_que_no_esta_no_existe) {
    EXPECT_EQ(cdir_existe_fichero_UNICODE(L"\\\\lumodir-no-hay\\recurso\\f.txt"), 0);
    EXPECT_EQ(cdir_existe_directorio("\\\\lumodir-no-hay\\recurso"), 0);
    EXPECT_EQ(cdir_es_directorio_u(L"\\\\lumodir-no-hay\\recurso\\d"), 0);
}

TEST(existencia, null_se_informa_y_se_contesta_que_no) {
    se_niega(cdir_existe_fichero_UNICODE(nullptr), {"(nombre) != NULL"});
    se_niega(cdir_existe_fichero(nullptr), {"(nombre) != NULL"});
    se_niega(cdir_existe_directorio_UNICODE(nullptr), {"(nombre_directorio) != NULL"});
    se_niega(cdir_existe_directorio(nullptr), {"(nombre_directorio) != NULL"});
    se_niega(cdir_es_directorio_u(nullptr), {"(path) != NULL"});
    se_niega(cdir_se_puede_leer_UNICODE(nullptr), {"(fichero) != NULL"});
    se_niega(cdir_se_puede_leer(nullptr), {"(fichero) != NULL"});
    unsigned long codigo = 77;
    EXPECT_EQ(lumodir_get_tamanyo_fichero(nullptr, &codigo), ~0ull);
    EXPECT_EQ(codigo, 77u);
    ESPERA_INFORMES("(path) != NULL");
}

TEST(existencia, los_informes_llevan_la_etiqueta_del_modulo) {
    EXPECT_EQ(cdir_existe_fichero_UNICODE(nullptr), 0);
    const informe dado = toma_el_informe();
    EXPECT_EQ(dado.etiqueta, "lumodir (LUMODIR.DLL)");
    EXPECT_GT(dado.linea, 0u);
}

TEST(existencia, el_mensaje_opcional_se_entrega_siempre) {
    const disco d;
    const std::string falta = d.dir.ruta("no hay \u00f1");
    wchar_t basura[] = L"basura";
    wchar_t* mensaje = basura;
    EXPECT_EQ(cdir_existe_directorio_UNICODE_con_mensaje_opc(w(falta).c_str(), &mensaje), 0);
    EXPECT_EQ(toma(mensaje), "Directory '" + falta + "' does not exist.");
    mensaje = basura;
    EXPECT_EQ(cdir_existe_directorio_UNICODE_con_mensaje_opc(d.dir.ruta_w("sub").c_str(), &mensaje), 1);
    EXPECT_EQ(mensaje, nullptr);
    mensaje = basura;
    EXPECT_EQ(cdir_existe_directorio_UNICODE_con_mensaje_opc(d.dir.ruta_w("f.txt").c_str(), &mensaje), 1);
    EXPECT_EQ(mensaje, nullptr);  // a file counts
    EXPECT_EQ(cdir_existe_directorio_UNICODE_con_mensaje_opc(w(falta).c_str(), nullptr), 0);
    EXPECT_EQ(cdir_existe_directorio_UNICODE_con_mensaje_opc(d.dir.ruta_w("sub").c_str(), nullptr), 1);
    mensaje = basura;
    EXPECT_EQ(cdir_existe_directorio_UNICODE_con_mensaje_opc(nullptr, &mensaje), 0);
    EXPECT_EQ(toma(mensaje), "Directory '' does not exist.");
    ESPERA_INFORMES("(nombre_directorio) != NULL");
    // The format sees the name as text only.
    EXPECT_EQ(cdir_existe_directorio_UNICODE_con_mensaje_opc(L"no%s%n", &mensaje), 0);
    EXPECT_EQ(toma(mensaje), "Directory 'no%s%n' does not exist.");
}

TEST(existencia, comprobar_avisa_e_informa_solo_si_falta) {
    const disco d;
    EXPECT_EQ(cdir_comprueba_existe_fichero(d.dir.ruta_w("f.txt").c_str()), 1);
    EXPECT_EQ(cdir_comprueba_existe_fichero(d.dir.ruta_w("sub").c_str()), 1);
    const std::string falta = d.dir.ruta("no \u20ac.txt");
    EXPECT_EQ(cdir_comprueba_existe_fichero(w(falta).c_str()), 0);
    ESPERA_AVISOS("This file '" + falta + "' does not exist");
    ESPERA_INFORMES("");
    lumodir_establece_modo_servicio_sin_reintentos();
    EXPECT_EQ(cdir_comprueba_existe_fichero(w(falta).c_str()), 0);
    ESPERA_AVISOS();
    ESPERA_INFORMES("");
}

TEST(existencia, comprobar_null_informa_y_contesta_que_no) {
    EXPECT_EQ(cdir_comprueba_existe_fichero(nullptr), 0);
    ESPERA_AVISOS("This file '' does not exist");
    ESPERA_INFORMES("(nombre) != NULL", "");
}

TEST(existencia, un_fichero_sujeto_por_otro_programa_sin_compartir_no_se_lee) {
    const disco d;
    const texto_w ruta = d.dir.ruta_w("f.txt");
    {
        otro_proceso sujeta(d.dir.ruta("f.txt"), GENERIC_READ, 0);
        EXPECT_EQ(cdir_se_puede_leer_UNICODE(ruta.c_str()), 0);
        EXPECT_EQ(cdir_se_puede_leer(d.dir.ruta_a("f.txt").c_str()), 0);
        EXPECT_EQ(cdir_existe_fichero_UNICODE(ruta.c_str()), 1);
        EXPECT_EQ(lumodir_get_tamanyo_fichero(ruta.c_str(), nullptr), 5u);  // nothing is opened for the size
    }
    {
        otro_proceso sujeta(d.dir.ruta("f.txt"), GENERIC_READ, FILE_SHARE_READ);
        EXPECT_EQ(cdir_se_puede_leer_UNICODE(ruta.c_str()), 1);
    }
    {
        // Written elsewhere: the test does not share writing, so it cannot read.
        otro_proceso sujeta(d.dir.ruta("f.txt"), GENERIC_WRITE, FILE_SHARE_READ);
        EXPECT_EQ(cdir_se_puede_leer_UNICODE(ruta.c_str()), 0);
    }
    EXPECT_EQ(cdir_se_puede_leer_UNICODE(ruta.c_str()), 1);
}

TEST(existencia, el_tamanyo_pasa_de_cuatro_gigas_y_entrega_el_codigo_del_fallo) {
    const disco d;
    const HANDLE h = d.dir.abre("f.txt", GENERIC_WRITE, FILE_SHARE_READ);
    ASSERT_NE(h, INVALID_HANDLE_VALUE);
    LARGE_INTEGER fin;
    fin.QuadPart = 5'000'000'000ll;
    ASSERT_TRUE(::SetFilePointerEx(h, fin, nullptr, FILE_BEGIN));
    ASSERT_TRUE(::SetEndOfFile(h));
    unsigned long codigo = 77;
    EXPECT_EQ(lumodir_get_tamanyo_fichero(d.dir.ruta_w("f.txt").c_str(), &codigo), 5'000'000'000ull);
    EXPECT_EQ(codigo, 77u);  // untouched by a success
    ::CloseHandle(h);
    EXPECT_EQ(lumodir_get_tamanyo_fichero(d.dir.ruta_w("no.txt").c_str(), &codigo), ~0ull);
    EXPECT_EQ(codigo, static_cast<unsigned long>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(lumodir_get_tamanyo_fichero(d.dir.ruta_w("no\\no.txt").c_str(), &codigo), ~0ull);
    EXPECT_EQ(codigo, static_cast<unsigned long>(ERROR_PATH_NOT_FOUND));
}

TEST(existencia, una_pregunta_de_existencia_es_una_llamada_sobre_la_ruta_tal_cual) {
    const disco d;
    fallos f;
    EXPECT_EQ(cdir_existe_fichero_UNICODE(d.dir.ruta_w("f.txt").c_str()), 1);
    EXPECT_EQ(f.rutas("GetFileAttributesW"), std::vector<std::string>{d.dir.ruta("f.txt")});
    EXPECT_EQ(f.llamadas(), 1u);
    EXPECT_EQ(cdir_existe_fichero_UNICODE(d.dir.ruta_w(d.larga + "\\f.txt").c_str()), 1);
    EXPECT_EQ(f.historia().back().ruta, "\\\\?\\" + d.dir.ruta(d.larga + "\\f.txt"));
}

TEST(existencia, el_filtro_encuentra_ficheros_o_directorios) {
    const disco d;
    d.dir.directorio("solo_dirs\\d1.ext");
    d.dir.directorio("solo_dirs\\\u00f1.ext");
    struct fila_filtro {
        std::string patron;
        bool fichero;
        std::string directorio;  // the name found, "" when there is none
        bool hay_directorio;     // by any name
    };
    const fila_filtro filas_filtro[] = {
        {"*.txt", true, "", false},
        {"*.TXT", true, "", false},
        {"f.txt", true, "", false},
        {"f.*", true, "", false},
        {"oculto.*", true, "", false},
        {"\u00f1and\u00fa*.txt", true, "", false},
        {"s*b", false, "sub", true},
        {"sub", false, "sub", true},
        {"*", true, "", true},  // "." and ".." are directories too, so the first is any
        {"sub\\*.txt", true, "", false},
        {"solo_dirs\\*.ext", false, "", true},
        {"solo_dirs\\\u00f1.*", false, "\u00f1.ext", true},
        {"vacio\\*.txt", false, "", false},
        {"no\\*.*", false, "", false},
        {d.larga + "\\*.txt", true, "", false},
    };
    for (const fila_filtro& f : filas_filtro) {
        SCOPED_TRACE(f.patron);
        EXPECT_EQ(cdir_existe_fichero_filtro_UNICODE(d.dir.ruta_w(f.patron).c_str()), logico(f.fichero));
        EXPECT_EQ(cdir_existe_fichero_filtro(d.dir.ruta_a(f.patron).c_str()), logico(f.fichero));
        EXPECT_EQ(cdir_existe_directorio_filtro(d.dir.ruta_w(f.patron).c_str(), nullptr),
                  logico(f.hay_directorio));
        wchar_t basura[] = L"basura";
        wchar_t* nombre = basura;
        EXPECT_EQ(cdir_existe_directorio_filtro(d.dir.ruta_w(f.patron).c_str(), &nombre),
                  logico(f.hay_directorio));
        if (!f.hay_directorio) {
            EXPECT_EQ(nombre, basura);  // untouched
        } else {
            const std::string encontrado = toma(nombre);
            EXPECT_EQ(encontrado.find('\\'), encontrado.npos);
            EXPECT_TRUE(f.directorio.empty() || encontrado == f.directorio) << encontrado;
        }
    }
}

TEST(existencia, un_filtro_null_se_informa) {
    EXPECT_EQ(cdir_existe_fichero_filtro_UNICODE(nullptr), 0);
    ESPERA_INFORMES("(path_filtro_generico) != NULL");
    EXPECT_EQ(cdir_existe_fichero_filtro(nullptr), 0);
    ESPERA_INFORMES("(path_filtro_generico) != NULL");
    wchar_t* nombre = nullptr;
    EXPECT_EQ(cdir_existe_directorio_filtro(nullptr, &nombre), 0);
    EXPECT_EQ(nombre, nullptr);
    ESPERA_INFORMES("(path_filtro_generico) != NULL");
}

TEST(existencia, el_filtro_bajo_fallos_cierra_lo_que_abre) {
    const disco d;
    unsigned short respuesta = 0;
    wchar_t* nombre = nullptr;
    const auto comprueba = [&](const ronda& r) {
        EXPECT_EQ(respuesta == 1, nombre != nullptr) << r;
        EXPECT_TRUE(respuesta == 1 || !r.limpia) << r;
        EXPECT_TRUE(respuesta == 1 || r.fallada != "FindClose") << r;
        toma(nombre);
        nombre = nullptr;
        toma_informes();  // an unexpected end of the walk is the enumerator's to report
    };
    con_cada_fallo([] {},
                   [&] { respuesta = cdir_existe_directorio_filtro(d.dir.ruta_w("s*").c_str(), &nombre); },
                   comprueba);
}

TEST(existencia, leer_abre_como_se_dice_y_cierra) {
    const disco d;
    static DWORD acceso, compartir, disposicion, indicadores;
    const sustituye espia(interno::sistema.CreateFileW,
                          [](const wchar_t* ruta, DWORD a, DWORD c, SECURITY_ATTRIBUTES* s, DWORD d2, DWORD i,
                             HANDLE p) WINAPI {
                              acceso = a, compartir = c, disposicion = d2, indicadores = i;
                              return ::CreateFileW(ruta, a, c, s, d2, i, p);
                          });
    fallos f;
    EXPECT_EQ(cdir_se_puede_leer_UNICODE(d.dir.ruta_w("f.txt").c_str()), 1);
    EXPECT_EQ(acceso, DWORD{GENERIC_READ});
    EXPECT_EQ(compartir, DWORD{FILE_SHARE_READ});
    EXPECT_EQ(disposicion, DWORD{OPEN_EXISTING});
    EXPECT_EQ(indicadores, 0u);
    EXPECT_EQ(f.cuenta("CreateFileW"), 1u);
    EXPECT_EQ(f.cuenta("CloseHandle"), 1u);
    EXPECT_EQ(f.manijas_abiertas(), 0u);
    EXPECT_EQ(cdir_se_puede_leer_UNICODE(d.dir.ruta_w("sub").c_str()), 0);
    EXPECT_EQ(f.cuenta("CreateFileW"), 1u);  // a directory is not even tried
    EXPECT_EQ(cdir_se_puede_leer_UNICODE(d.dir.ruta_w("no.txt").c_str()), 0);
    EXPECT_EQ(f.cuenta("CreateFileW"), 1u);
}

TEST(existencia, bajo_fallos_se_contesta_que_no_y_nada_queda_abierto) {
    const disco d;
    const texto_w ruta = d.dir.ruta_w("protegido.txt");
    const auto sin_preparar = [] {};
    unsigned short respuesta = 0;
    const auto comprueba = [&](const ronda& r) {
        const bool no_cerro = r.fallada == "CloseHandle";
        // What cannot be asked itself is there all the same: its entry says so.
        const bool por_su_entrada = r.fallada == "GetFileAttributesW" && !r.para_siempre &&
                                    (r.codigo == ERROR_ACCESS_DENIED || r.codigo == ERROR_SHARING_VIOLATION);
        EXPECT_EQ(respuesta, logico(r.limpia || no_cerro || por_su_entrada)) << r;
        EXPECT_TRUE(d.dir.es_de_solo_lectura("protegido.txt"));
    };
    con_cada_fallo(
        sin_preparar, [&] { respuesta = cdir_existe_fichero_UNICODE(ruta.c_str()); }, comprueba);
    con_cada_fallo(
        sin_preparar, [&] { respuesta = cdir_existe_directorio_UNICODE(ruta.c_str()); }, comprueba);
    con_cada_fallo(
        sin_preparar, [&] { respuesta = cdir_se_puede_leer_UNICODE(ruta.c_str()); }, comprueba);
    con_cada_fallo(
        sin_preparar, [&] { respuesta = interno::es_fichero_de_solo_lectura(ruta.c_str()); }, comprueba);
    con_cada_fallo(
        sin_preparar, [&] { respuesta = cdir_es_directorio_u(d.dir.ruta_w("sub").c_str()); }, comprueba);
    unsigned long codigo = 0;
    con_cada_fallo([&] { codigo = 0; },
                   [&] { respuesta = logico(lumodir_get_tamanyo_fichero(ruta.c_str(), &codigo) == 1); },
                   [&](const ronda& r) {
                       comprueba(r);
                       EXPECT_EQ(codigo, r.limpia ? 0 : r.codigo) << r;
                   });
}

namespace {

const char* nombre_de_existencia(interno::existencia::estado estado) {
    return estado == interno::existencia::estado::hay     ? "there"
           : estado == interno::existencia::estado::falta ? "missing"
                                                          : "not known";
}

}  // namespace

TEST(existencia, que_codigos_dicen_que_falta) {
    struct pregunta_de_existencia {
        DWORD codigo;
        DWORD de_la_busqueda;  // 0: the entry is found
        const char* espera;
        DWORD codigo_final;
    };
    const pregunta_de_existencia preguntas_de_existencia[] = {
        {2, 0, "missing", 2},       {3, 0, "missing", 3},     {53, 0, "missing", 53},
        {67, 0, "missing", 67},     {123, 0, "missing", 123}, {161, 0, "missing", 161},
        {21, 0, "not known", 21},   {64, 0, "not known", 64}, {1231, 0, "not known", 1231},
        {362, 0, "not known", 362}, {5, 0, "there", 0},       {32, 0, "there", 0},
        {5, 2, "missing", 2},       {32, 3, "missing", 3},    {5, 5, "not known", 5},
        {32, 64, "not known", 32},
    };
    const directorio_temporal dir;
    dir.fichero("\u00f1.txt", "x", FILE_ATTRIBUTE_READONLY);
    for (const pregunta_de_existencia& c : preguntas_de_existencia) {
        SCOPED_TRACE(std::to_string(c.codigo) + " " + std::to_string(c.de_la_busqueda));
        static DWORD codigo;
        static DWORD de_la_busqueda;
        codigo = c.codigo;
        de_la_busqueda = c.de_la_busqueda;
        const sustituye atributos(interno::sistema.GetFileAttributesW, [](LPCWSTR) WINAPI {
            ::SetLastError(codigo);
            return DWORD{INVALID_FILE_ATTRIBUTES};
        });
        fallos f;
        if (de_la_busqueda != 0) {
            f.falla_siempre("FindFirstFileExW", de_la_busqueda);
        }
        const interno::existencia que_hay = interno::i_existencia(dir.ruta_w("\u00f1.txt").c_str());
        EXPECT_STREQ(nombre_de_existencia(que_hay.cual), c.espera);
        EXPECT_EQ(que_hay.codigo, c.codigo_final);
        EXPECT_EQ(que_hay.es_de_solo_lectura(), que_hay.hay());
        EXPECT_EQ(que_hay.atributos == INVALID_FILE_ATTRIBUTES, !que_hay.hay());
        EXPECT_EQ(f.cuenta("FindFirstFileExW"), c.codigo == 5 || c.codigo == 32 ? 1u : 0u);
        EXPECT_EQ(f.manijas_abiertas(), 0u);
        // The exported tests say yes only of what is there.
        const unsigned short hay = que_hay.hay() ? 1 : 0;
        EXPECT_EQ(cdir_existe_fichero_UNICODE(dir.ruta_w("\u00f1.txt").c_str()), hay);
        EXPECT_EQ(cdir_existe_fichero(dir.ruta_a("\u00f1.txt").c_str()), hay);
        EXPECT_EQ(cdir_existe_directorio(dir.ruta_a("\u00f1.txt").c_str()), hay);
        EXPECT_EQ(interno::es_fichero_de_solo_lectura(dir.ruta_w("\u00f1.txt").c_str()), hay);
        EXPECT_EQ(cdir_es_directorio_u(dir.ruta_w("\u00f1.txt").c_str()), 0);
    }
    EXPECT_EQ(interno::i_existencia(dir.ruta_w("\u00f1.txt").c_str()).codigo, DWORD{ERROR_SUCCESS});
}

TEST(existencia, lo_que_no_tiene_entrada_no_se_busca) {
    // Roots stand in no directory, and a pattern would find others.
    fallos f;
    f.falla_siempre("GetFileAttributesW", ERROR_ACCESS_DENIED);
    for (const char* ruta : {"C:\\", "C:", "\\\\s\\r", "\\\\s\\r\\", "//s/r", "\\\\?\\C:\\",
                             "\\\\?\\UNC\\s\\r\\", "\\\\.\\C:", "C:\\d\\*", "C:\\d\\a?", ""}) {
        const interno::existencia que_hay = interno::i_existencia(w(ruta).c_str());
        EXPECT_STREQ(nombre_de_existencia(que_hay.cual), "not known") << ruta;
        EXPECT_EQ(que_hay.codigo, DWORD{ERROR_ACCESS_DENIED}) << ruta;
        EXPECT_EQ(que_hay.atributos, DWORD{INVALID_FILE_ATTRIBUTES}) << ruta;
    }
    EXPECT_EQ(f.cuenta("FindFirstFileExW"), 0u);
    // A final separator is no part of the name.
    const directorio_temporal dir;
    EXPECT_TRUE(interno::i_existencia((dir.ruta_w() + L"\\/").c_str()).es_directorio());
    EXPECT_EQ(f.rutas("FindFirstFileExW"), std::vector<std::string>{dir.ruta()});
}

TEST(existencia, la_prueba_de_lectura_mira_y_abre_el_mismo_fichero) {
    const directorio_temporal dir;
    dir.fichero("uno\\f.txt");
    dir.directorio("otro\\f.txt");
    static texto_w otro;
    otro = dir.ruta_w("otro");
    const sustituye cambia(interno::sistema.GetFileAttributesW, [](LPCWSTR ruta) WINAPI {
        const DWORD atributos = ::GetFileAttributesW(ruta);
        ::SetCurrentDirectoryW(otro.c_str());
        return atributos;
    });
    const en_directorio ahi(dir.ruta_w("uno"));
    fallos f;
    EXPECT_EQ(cdir_se_puede_leer_UNICODE(L"f.txt"), 1);
    EXPECT_EQ(f.cuenta("GetFullPathNameW"), 1u);
    ::SetCurrentDirectoryW(dir.ruta_w("uno").c_str());
    EXPECT_EQ(cdir_se_puede_leer("f.txt"), 1);
}
