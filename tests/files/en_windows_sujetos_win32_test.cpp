// What Windows does and Wine does not, to files that somebody else looks at or that may not be asked: behind the
// imitation of Windows.
#include "apoyo/como_windows.hpp"
#include "cdir.h"
#include "temporales_de_prueba.hpp"
#include "timefich.h"

using namespace apoyo;

namespace {

constexpr DWORD codigos_de_escaner[] = {ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION};

void el_tiempo_pasa(como_windows& windows) {
    al_dormir([&](unsigned long ms) { windows.pasa_ms(ms); });
}

decltype(interno::sistema.CreateDirectoryW) de_la_imitacion;

}  // namespace

// The next name would fare no better: it is a new file as well.
TEST(en_windows, un_fichero_unico_espera_a_quien_mira_los_ficheros_nuevos) {
    for (const DWORD codigo : codigos_de_escaner) {
        for (const unsigned long ms : {50ul, 120ul, 250ul}) {
            SCOPED_TRACE(std::to_string(codigo) + " " + std::to_string(ms));
            const directorio_temporal d;
            como_windows windows({.escaner_ms = ms, .codigo_de_escaner = codigo});
            el_tiempo_pasa(windows);
            const std::string ruta = unico(d.ruta(), "a\u00f1o");
            EXPECT_EQ(d.arbol(), textos{nombre_de(ruta)}) << "one file, and nothing beside it";
            EXPECT_TRUE(tiene_forma(nombre_de(ruta), "LUA", ".a\u00f1o"))
                << ruta << " is not of the first candidate";
            EXPECT_EQ(toma_esperas(), std::vector<unsigned long>((ms + 49) / 50, 50));
            EXPECT_EQ(windows.intervenciones(), 1u);
        }
    }
}

TEST(en_windows, un_fichero_temporal_con_extension_espera_igual) {
    const directorio_temporal d;
    d.directorio("temp \u00f1");
    const con_temp temp(d.ruta("temp \u00f1"));
    como_windows windows({.escaner_ms = 100});
    el_tiempo_pasa(windows);
    const std::string ruta = con_ext("txt");
    EXPECT_EQ(d.arbol(), (textos{"temp \u00f1\\", "temp \u00f1\\" + nombre_de(ruta)}));
    EXPECT_EQ(toma_esperas(), std::vector<unsigned long>(2, 50));
}

// A name that is taken is another matter: nobody lets go of it.
TEST(en_windows, un_nombre_ocupado_no_se_espera) {
    const directorio_temporal d;
    const como_windows windows({});
    static int cuantos;
    cuantos = 0;
    const sustituye mueve(interno::sistema.MoveFileExW,
                          [](const wchar_t* origen, const wchar_t* destino, DWORD) WINAPI {
                              if (cuantos++ < 3) {
                                  ::CopyFileW(origen, destino, TRUE);  // somebody was quicker
                              }
                              return ::MoveFileExW(origen, destino, 0);
                          });
    const std::string ruta = unico(d.ruta(), "txt");
    EXPECT_TRUE(tiene_forma(nombre_de(ruta), "LUD", ".txt")) << ruta;
    EXPECT_EQ(d.arbol().size(), 4u) << "three of somebody else's, and ours";
    EXPECT_TRUE(toma_esperas().empty());
}

// The probe goes by the handle that made it, before anybody can look at it.
TEST(en_windows, una_prueba_de_escritura_no_deja_sonda_a_quien_mira_los_ficheros_nuevos) {
    const directorio_temporal d;
    const como_windows windows({.escaner_ms = 1'000});
    for (int vez = 0; vez < 3; ++vez) {
        wchar_t* motivo = nullptr;
        EXPECT_EQ(cdir_se_puede_escribir_en_directorio(d.ruta_w().c_str(), &motivo), 1);
        EXPECT_EQ(motivo, nullptr);
        EXPECT_EQ(cdir_se_puede_escribir_UNICODE(d.ruta_w("a\u00f1o.txt").c_str()), 1);
        EXPECT_EQ(cdir_se_puede_escribir(d.ruta_a("a\u00f1o.txt").c_str()), 1);
        EXPECT_EQ(d.arbol(), textos{}) << vez;
    }
    EXPECT_EQ(windows.intervenciones(), 0u) << "there was nothing left to look at";
}

// A paging file, a file that is being exchanged, one in a folder that may not be looked at.
TEST(en_windows, lo_que_no_se_deja_preguntar_esta) {
    for (const DWORD codigo : {DWORD{ERROR_ACCESS_DENIED}, DWORD{ERROR_SHARING_VIOLATION}}) {
        SCOPED_TRACE(codigo);
        const directorio_temporal d;
        d.fichero("a\u00f1o.sys");
        d.directorio("d\\dentro");
        como_windows windows({});
        for (const char* cual : {"a\u00f1o.sys", "d", "no.sys"}) {
            windows.no_se_deja_preguntar(d.ruta(cual), codigo);
        }
        EXPECT_EQ(cdir_existe_fichero_UNICODE(d.ruta_w("a\u00f1o.sys").c_str()), 1);
        EXPECT_EQ(cdir_existe_fichero(d.ruta_a("a\u00f1o.sys").c_str()), 1);
        EXPECT_EQ(cdir_existe_directorio_UNICODE(d.ruta_w("d").c_str()), 1);
        EXPECT_EQ(cdir_es_directorio_u(d.ruta_w("d").c_str()), 1);
        EXPECT_EQ(cdir_es_directorio_u(d.ruta_w("a\u00f1o.sys").c_str()), 0);
        EXPECT_EQ(cdir_existe_fichero_UNICODE(d.ruta_w("no.sys").c_str()), 0) << "no entry";
        EXPECT_GT(windows.intervenciones(), 0u);
        // What is there is made no second time, and what lies in it can be.
        EXPECT_EQ(cdir_crea_directorios_del_path_UNICODE(d.ruta_w("d\\nuevo \u00f1").c_str()), 1);
        EXPECT_TRUE(d.es_directorio("d\\nuevo \u00f1"));
        // The write test neither makes nor takes away what is there.
        EXPECT_EQ(cdir_se_puede_escribir_UNICODE(d.ruta_w("a\u00f1o.sys").c_str()), 0);
        EXPECT_EQ(d.contenido("a\u00f1o.sys"), "contenido");
    }
}

// Strict deletion of it asks and retries; "it does not exist" would be a lie.
TEST(en_windows, de_lo_que_no_se_deja_preguntar_no_se_dice_que_falta) {
    const directorio_temporal d;
    d.fichero("a\u00f1o.sys");
    como_windows windows({});
    windows.no_se_deja_preguntar(d.ruta("a\u00f1o.sys"), ERROR_SHARING_VIOLATION);
    const HANDLE otro = d.abre("a\u00f1o.sys", GENERIC_READ, FILE_SHARE_READ);
    EXPECT_EQ(cdir_borra_fichero_UNICODE(d.ruta_w("a\u00f1o.sys").c_str()), 0);
    const std::vector<pregunta> preguntas = toma_preguntas();
    ASSERT_EQ(preguntas.size(), 1u);
    EXPECT_EQ(preguntas[0].codigo, DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(toma_esperas().size(), 5u);
    ESPERA_AVISOS();
    ESPERA_INFORMES();
    ::CloseHandle(otro);
    EXPECT_TRUE(d.existe("a\u00f1o.sys"));
}

// Six codes say missing, whatever else there may be; the others are failures.
TEST(en_windows, que_codigos_dicen_de_un_fichero_que_falta) {
    const struct {
        DWORD codigo;
        bool falta;
    } filas[] = {
        {ERROR_FILE_NOT_FOUND, true}, {ERROR_PATH_NOT_FOUND, true},   {ERROR_BAD_NETPATH, true},
        {ERROR_BAD_NET_NAME, true},   {ERROR_INVALID_NAME, true},     {ERROR_BAD_PATHNAME, true},
        {ERROR_NOT_READY, false},     {ERROR_NETNAME_DELETED, false}, {ERROR_NETWORK_UNREACHABLE, false}};
    for (const auto& fila : filas) {
        SCOPED_TRACE(fila.codigo);
        const directorio_temporal d;
        const std::string ruta = d.fichero("a\u00f1o.txt");
        como_windows windows({});
        windows.no_se_deja_preguntar(ruta, fila.codigo);
        const sustituye borra(interno::sistema.DeleteFileW, [](const wchar_t* cual) WINAPI {
            interno::sistema.GetFileAttributesW(cual);  // answers the same
            return BOOL{FALSE};
        });
        EXPECT_EQ(cdir_existe_fichero_UNICODE(w(ruta).c_str()), 0);
        EXPECT_EQ(cdir_borra_fichero_UNICODE(w(ruta).c_str()), 0);
        EXPECT_EQ(toma_expresiones(), fila.falta ? textos{"CR_existe"} : textos{});
        EXPECT_EQ(toma_avisos().size(), fila.falta ? 1u : 0u);
        EXPECT_EQ(toma_preguntas().size(), fila.falta ? 0u : 1u);
        toma_esperas();
    }
}

// Roots, shares and read-only media say of a directory that is there that access is denied, that they are protected
// against writing, or not ready.
TEST(en_windows, un_directorio_que_esta_vale_aunque_crearlo_conteste_otra_cosa) {
    for (const DWORD codigo : {DWORD{ERROR_ACCESS_DENIED}, DWORD{ERROR_WRITE_PROTECT}, DWORD{ERROR_NOT_READY},
                               DWORD{ERROR_ALREADY_EXISTS}}) {
        SCOPED_TRACE(codigo);
        const directorio_temporal d;
        const como_windows windows({.creacion_de_lo_que_hay = codigo});
        // Somebody else makes the level just before it is made here.
        const auto crea_antes = [](const wchar_t* ruta, SECURITY_ATTRIBUTES* seguridad) WINAPI {
            ::CreateDirectoryW(ruta, nullptr);
            return de_la_imitacion(ruta, seguridad);
        };
        de_la_imitacion = interno::sistema.CreateDirectoryW;
        const sustituye crea(interno::sistema.CreateDirectoryW, crea_antes);
        EXPECT_EQ(cdir_crea_directorios_del_path_UNICODE(d.ruta_w("a \u00f1\\b\\c").c_str()), 1);
        EXPECT_TRUE(d.es_directorio("a \u00f1\\b\\c"));
        EXPECT_TRUE(toma_esperas().empty());
        EXPECT_TRUE(toma_preguntas().empty());
    }
}
