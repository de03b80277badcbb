// Directories that are open: what they refuse to enter, and each way round a file system that does not know a call.
#include "companions/directorio_abierto.hpp"

#include "apoyo/fallos.hpp"
#include "apoyo/volumen_falso.hpp"

using namespace apoyo;
using interno::directorio_abierto;
using interno::entrada_leida;
using interno::lector_de_directorio;
using interno::ruta_fijada;
using interno::trato_con_volumen;
using lectura = interno::trato_con_volumen::lectura;

namespace {

using lista = std::vector<std::string>;
constexpr DWORD dir = FILE_ATTRIBUTE_DIRECTORY;
constexpr DWORD sin_seguir = 0x1000;  // OBJ_DONT_REPARSE

// How things are opened: rights, what others may do meanwhile, options.
constexpr DWORD mirada = FILE_READ_ATTRIBUTES | SYNCHRONIZE;
constexpr DWORD listado = FILE_LIST_DIRECTORY | mirada;
constexpr DWORD de_todos = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD retiene = FILE_SHARE_READ | FILE_SHARE_WRITE;
constexpr DWORD de_directorio = FILE_DIRECTORY_FILE | FILE_OPEN_FOR_BACKUP_INTENT |
                                FILE_SYNCHRONOUS_IO_NONALERT | FILE_OPEN_REPARSE_POINT;
constexpr DWORD de_fichero = FILE_NON_DIRECTORY_FILE | FILE_SYNCHRONOUS_IO_NONALERT | FILE_OPEN_REPARSE_POINT;
constexpr DWORD por_ruta = FILE_FLAG_BACKUP_SEMANTICS;
constexpr DWORD por_ruta_sin_seguir = FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT;
using aperturas = std::vector<volumen_falso::apertura>;

// An open root with what it needs to live.
struct raiz_abierta {
    explicit raiz_abierta(const wchar_t* cual) : ruta(cual), codigo(directorio.abre(ruta, trato)) {}
    const ruta_fijada ruta;
    trato_con_volumen trato;
    directorio_abierto directorio;
    const DWORD codigo;
};

entrada_leida entrada(volumen_falso& v, const std::string& ruta, const wchar_t* nombre) {
    const nodo_falso& n = v[ruta];
    return {nombre, n.atributos, n.etiqueta, n.numero(), {}};
}

// What has been opened since this was asked last.
aperturas toma_aperturas(volumen_falso& v) {
    return std::exchange(v.aperturas, {});
}

// The names that a directory holds, without "." and "..".
lista lee_entera(directorio_abierto& directorio, DWORD* codigo = nullptr) {
    lista nombres;
    lector_de_directorio lector(directorio);
    while (const entrada_leida* e = lector.siguiente()) {
        if (!e->es_relativa()) {
            nombres.push_back(u8(e->nombre));
        }
    }
    if (codigo != nullptr) {
        *codigo = lector.codigo();
    }
    return nombres;
}

const DWORD rechazos_de_relativo[] = {
    ERROR_INVALID_FUNCTION,     ERROR_NOT_SUPPORTED, ERROR_INVALID_PARAMETER,
    ERROR_CALL_NOT_IMPLEMENTED, ERROR_INVALID_LEVEL, ERROR_INVALID_HANDLE,
    ERROR_INVALID_NAME,         ERROR_BAD_PATHNAME,  ERROR_GEN_FAILURE};
const DWORD llamadas_desconocidas[] = {ERROR_INVALID_FUNCTION, ERROR_NOT_SUPPORTED, ERROR_INVALID_PARAMETER,
                                       ERROR_CALL_NOT_IMPLEMENTED, ERROR_INVALID_LEVEL};

}  // namespace

// With exactly the rights that are needed: more would be refused by some files, and less would not do.
TEST(directorio_abierto, con_que_derechos_se_abre_cada_cosa) {
    volumen_falso v;
    v.pon("C:\\d\\s", {{"g"}});
    v.pon("C:\\d", {{"f"}});
    raiz_abierta raiz(L"C:\\d");
    EXPECT_EQ(toma_aperturas(v), (aperturas{{"C:\\d", false, listado, de_todos, por_ruta_sin_seguir, 0}}));
    const entrada_leida f = entrada(v, "C:\\d\\f", L"f");
    const entrada_leida g = entrada(v, "C:\\d\\s\\g", L"g");
    const entrada_leida s_leida = entrada(v, "C:\\d\\s", L"s");
    directorio_abierto s;
    EXPECT_EQ(s.abre(raiz.directorio, s_leida), 0u);
    raiz.directorio.mira(f);
    raiz.directorio.pon_atributos(f, FILE_ATTRIBUTE_HIDDEN);
    raiz.directorio.borra(f);
    s.borra(g);
    s.cierra();
    raiz.directorio.mira(s_leida);
    raiz.directorio.borra(s_leida);
    EXPECT_EQ(toma_aperturas(v),
              (aperturas{{"s", true, listado, de_todos, de_directorio, sin_seguir},
                         {"f", true, mirada, de_todos, de_fichero, sin_seguir},
                         {"f", true, FILE_WRITE_ATTRIBUTES | SYNCHRONIZE, de_todos, de_fichero, sin_seguir},
                         {"f", true, DELETE | SYNCHRONIZE, de_todos, de_fichero, sin_seguir},
                         {"g", true, DELETE | SYNCHRONIZE, de_todos, de_fichero, sin_seguir},
                         {"s", true, mirada, de_todos, de_directorio, sin_seguir},
                         {"s", true, DELETE | SYNCHRONIZE, de_todos, de_directorio, sin_seguir}}));
    EXPECT_TRUE(raiz.directorio.esta_en(raiz.ruta));
    EXPECT_EQ(raiz.directorio.protege_raiz(raiz.ruta, interno::modo_lectura), 0u);
    EXPECT_EQ(raiz.directorio.protege_raiz(raiz.ruta, interno::modo_escritura), 0u);
    EXPECT_EQ(raiz.directorio.borra_raiz(raiz.ruta), 0u);
    EXPECT_EQ(toma_aperturas(v),
              (aperturas{{"C:\\d", false, mirada, de_todos, por_ruta, 0},
                         {"C:\\d", false, FILE_WRITE_ATTRIBUTES | mirada, de_todos, por_ruta_sin_seguir, 0},
                         {"C:\\d", false, FILE_WRITE_ATTRIBUTES | mirada, de_todos, por_ruta_sin_seguir, 0},
                         {"C:\\d", false, DELETE | mirada, de_todos, por_ruta_sin_seguir, 0}}));
    // What is there now is another one, and then nothing at all, whether there are numbers or not.
    for (const bool hay_otra : {true, false}) {
        if (hay_otra) {
            v.pon("C:\\d", {});
        } else {
            v.dice_numeros = false;
        }
        raiz_abierta falta(hay_otra ? L"C:\\d" : L"C:\\no");
        EXPECT_EQ(raiz.directorio.esta_en(falta.ruta), false);
        EXPECT_EQ(raiz.directorio.borra_raiz(falta.ruta),
                  hay_otra ? DWORD{ERROR_CANT_ACCESS_FILE} : DWORD{ERROR_FILE_NOT_FOUND});
    }
    EXPECT_EQ(raiz.directorio.protege_raiz(ruta_fijada(L"C:\\no"), interno::modo_lectura),
              DWORD{ERROR_FILE_NOT_FOUND});
}

// By their paths: each directory is held once, from the root on, and only then the path is used.
TEST(directorio_abierto, con_que_derechos_se_abre_por_la_ruta_completa) {
    constexpr DWORD sin_caja = OBJ_CASE_INSENSITIVE;
    volumen_falso v;
    v.rechaza_relativo = ERROR_NOT_SUPPORTED;
    v.pon("C:\\s\\u", {{"g"}, {"h"}});
    raiz_abierta raiz(L"C:\\");
    toma_aperturas(v);
    directorio_abierto s;
    directorio_abierto u;
    EXPECT_EQ(s.abre(raiz.directorio, entrada(v, "C:\\s", L"s")), 0u);
    EXPECT_EQ(u.abre(s, entrada(v, "C:\\s\\u", L"u")), 0u);
    EXPECT_EQ(u.borra(entrada(v, "C:\\s\\u\\g", L"g")), 0u);
    EXPECT_EQ(u.borra(entrada(v, "C:\\s\\u\\h", L"h")), 0u);
    u.cierra();
    EXPECT_EQ(s.borra(entrada(v, "C:\\s\\u", L"u")), 0u);
    EXPECT_EQ(
        toma_aperturas(v),
        (aperturas{{"s", true, listado, de_todos, de_directorio, sin_seguir},
                   {"\\??\\C:\\", false, listado, retiene, de_directorio, sin_caja},
                   {"\\??\\C:\\s", false, listado, de_todos, de_directorio, sin_caja},
                   {"\\??\\C:\\s", false, listado, retiene, de_directorio, sin_caja},
                   {"\\??\\C:\\s\\u", false, listado, de_todos, de_directorio, sin_caja},
                   {"\\??\\C:\\s\\u", false, listado, retiene, de_directorio, sin_caja},
                   {"\\??\\C:\\s\\u\\g", false, DELETE | SYNCHRONIZE, de_todos, de_fichero, sin_caja},
                   {"\\??\\C:\\s\\u\\h", false, DELETE | SYNCHRONIZE, de_todos, de_fichero, sin_caja},
                   {"\\??\\C:\\s\\u", false, DELETE | SYNCHRONIZE, de_todos, de_directorio, sin_caja}}));
    // What was below one directory is the root of a walk of its own: nothing above it counts any more.
    v.pon("C:\\otra", {{"g"}});
    const ruta_fijada otra(L"C:\\otra");
    trato_con_volumen trato;
    trato.relativo = false;
    s.cierra();
    directorio_abierto de_nuevo;
    EXPECT_EQ(de_nuevo.abre(raiz.directorio, entrada(v, "C:\\s", L"s")), 0u);
    EXPECT_EQ(de_nuevo.abre(otra, trato), 0u);
    EXPECT_EQ(de_nuevo.borra(entrada(v, "C:\\otra\\g", L"g")), 0u);
    EXPECT_EQ(toma_aperturas(v).back().nombre, "\\??\\C:\\otra\\g");
}

// Why a directory could not be held is why what lies in it was not reached.
TEST(directorio_abierto, lo_que_no_se_puede_retener_no_se_alcanza) {
    const struct {
        const char* que;
        std::function<void(volumen_falso&)> antes_de_retener;
        DWORD codigo;
    } filas[] = {
        {"in use", [](volumen_falso& v) { v["C:\\d"].codigo_al_abrir = ERROR_SHARING_VIOLATION; },
         ERROR_SHARING_VIOLATION},
        {"gone", [](volumen_falso& v) { v["C:\\d"].nombre = "otro"; }, ERROR_FILE_NOT_FOUND},
        {"another",
         [](volumen_falso& v) {
             v.cambia("C:\\d", {"", dir});
         },
         ERROR_CANT_ACCESS_FILE},
        {"a link with its number",
         [](volumen_falso& v) {
             const unsigned long long numero = v["C:\\d"].numero();
             v.cambia("C:\\d", {"", enlace_dir, IO_REPARSE_TAG_SYMLINK, "C:\\fuera"});
             v["C:\\d"].numero_listado = numero;
         },
         ERROR_CANT_ACCESS_FILE},
    };
    for (const auto& fila : filas) {
        for (const bool al_listar : {true, false}) {
            volumen_falso v;
            v.pon("C:\\d\\s", {});
            v.pon("C:\\fuera\\s", {});
            v.rechaza_relativo = ERROR_NOT_SUPPORTED;
            v.rechaza_con_numeros = v.rechaza_sin_numeros = ERROR_NOT_SUPPORTED;
            raiz_abierta raiz(L"C:\\d");
            const entrada_leida leida = entrada(v, "C:\\d\\s", L"s");
            fila.antes_de_retener(v);
            DWORD codigo = 0;
            if (al_listar) {
                EXPECT_EQ(lee_entera(raiz.directorio, &codigo), lista{}) << fila.que;
            } else {
                directorio_abierto s;
                codigo = s.abre(raiz.directorio, leida);
            }
            EXPECT_EQ(codigo, fila.codigo) << fila.que;
            EXPECT_EQ(v.busquedas_hechas, lista{}) << fila.que;
            EXPECT_TRUE(v.hay("C:\\fuera\\s"));
        }
    }
}

TEST(directorio_abierto, lo_corriente_va_por_nombres_relativos) {
    volumen_falso v;
    v.pon("C:\\d", {{"f"}, {"s", dir}});
    v.pon("C:\\d\\s", {{"g"}});
    raiz_abierta raiz(L"C:\\d");
    ASSERT_EQ(raiz.codigo, 0u);
    EXPECT_EQ(lee_entera(raiz.directorio), (lista{"f", "s"}));
    directorio_abierto hijo;
    ASSERT_EQ(hijo.abre(raiz.directorio, entrada(v, "C:\\d\\s", L"s")), 0u);
    DWORD codigo = 0;
    EXPECT_EQ(lee_entera(hijo, &codigo), lista{"g"});
    EXPECT_EQ(codigo, DWORD{ERROR_NO_MORE_FILES});
    EXPECT_EQ(hijo.borra(entrada(v, "C:\\d\\s\\g", L"g")), 0u);
    hijo.cierra();
    EXPECT_EQ(raiz.directorio.borra(entrada(v, "C:\\d\\s", L"s")), 0u);
    EXPECT_EQ(raiz.directorio.borra_raiz(raiz.ruta), DWORD{ERROR_DIR_NOT_EMPTY});
    EXPECT_EQ(v.arbol("C:\\d"), lista{"f"});
    for (const volumen_falso::apertura& a : v.aperturas) {
        EXPECT_EQ(a.relativa, a.nombre != "C:\\d") << a.nombre;
        EXPECT_EQ(a.atributos, a.relativa ? sin_seguir : 0) << a.nombre;
        EXPECT_EQ(a.compartir, DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE})
            << "blocks nobody";
    }
    EXPECT_EQ(v.clases, (std::vector<FILE_INFO_BY_HANDLE_CLASS>{
                            FileIdBothDirectoryRestartInfo, FileIdBothDirectoryInfo,
                            FileIdBothDirectoryRestartInfo, FileIdBothDirectoryInfo}));
}

TEST(directorio_abierto, sin_aperturas_relativas_se_retiene_todo_lo_de_arriba) {
    for (const DWORD codigo : rechazos_de_relativo) {
        volumen_falso v;
        v.pon("C:\\d\\s\\u", {{"g"}});
        v.pon("C:\\fuera", {{"u", dir}});
        v.rechaza_relativo = codigo;
        raiz_abierta raiz(L"C:\\d");
        ASSERT_EQ(raiz.codigo, 0u);
        directorio_abierto s;
        ASSERT_EQ(s.abre(raiz.directorio, entrada(v, "C:\\d\\s", L"s")), 0u) << codigo;
        EXPECT_FALSE(raiz.trato.relativo);
        EXPECT_FALSE(v.cambia("C:\\d", {"", enlace_dir, IO_REPARSE_TAG_SYMLINK, "C:\\fuera"})) << "held";
        directorio_abierto u;
        ASSERT_EQ(u.abre(s, entrada(v, "C:\\d\\s\\u", L"u")), 0u) << codigo;
        EXPECT_FALSE(v.cambia("C:\\d\\s", {"", enlace_dir, IO_REPARSE_TAG_SYMLINK, "C:\\fuera"})) << "held";
        EXPECT_EQ(lee_entera(u), lista{"g"});
        EXPECT_EQ(u.borra(entrada(v, "C:\\d\\s\\u\\g", L"g")), 0u);
        EXPECT_EQ(v.aperturas.back().nombre, "\\??\\C:\\d\\s\\u\\g");
        u.cierra();
        EXPECT_EQ(s.borra(entrada(v, "C:\\d\\s\\u", L"u")), 0u);
        s.cierra();
        EXPECT_EQ(raiz.directorio.borra(entrada(v, "C:\\d\\s", L"s")), 0u);
        raiz.directorio.cierra();
        EXPECT_EQ(raiz.directorio.borra_raiz(raiz.ruta), 0u);
        EXPECT_FALSE(v.hay("C:\\d"));
        EXPECT_EQ(v.arbol("C:\\fuera"), lista{"u\\"});
        std::size_t relativas = 0;
        for (const volumen_falso::apertura& a : v.aperturas) {
            relativas += a.relativa ? 1 : 0;
        }
        EXPECT_EQ(relativas, codigo == ERROR_INVALID_PARAMETER ? 2u : 1u)
            << "asked once, learned for the walk";
    }
}

TEST(directorio_abierto, la_ruta_completa_conserva_lo_que_la_raiz_era) {
    struct fila {
        const wchar_t* raiz;
        const char* nativa;
    };
    const fila filas[] = {
        {.raiz = L"C:\\", .nativa = "\\??\\C:\\f"},
        {.raiz = L"C:/d", .nativa = "\\??\\C:\\d\\f"},
        {.raiz = L"\\\\?\\C:\\d\\\\", .nativa = "\\??\\C:\\d\\f"},  // as a search names what it looks into
        {.raiz = L"\\\\.\\C:\\d", .nativa = "\\??\\C:\\d\\f"},
        {.raiz = L"\\\\?\\C:\\d.", .nativa = "\\??\\C:\\d.\\f"},
        {.raiz = L"\\\\srv\\r", .nativa = "\\??\\UNC\\srv\\r\\f"},
        {.raiz = L"\\\\?\\UNC\\srv\\r", .nativa = "\\??\\UNC\\srv\\r\\f"},
    };
    for (const fila& caso : filas) {
        volumen_falso v;
        v.pon(u8(caso.raiz), {{"f"}});
        v.rechaza_relativo = ERROR_NOT_SUPPORTED;
        raiz_abierta raiz(caso.raiz);
        ASSERT_EQ(raiz.codigo, 0u) << caso.nativa;
        EXPECT_EQ(raiz.directorio.borra({L"f", FILE_ATTRIBUTE_NORMAL, 0, 0, {}}), 0u) << caso.nativa;
        EXPECT_EQ(v.aperturas.back().nombre, caso.nativa);
        EXPECT_EQ(v.arbol(u8(caso.raiz)), lista{});
    }
}

// Whoever swaps a directory at any moment at all gains nothing, however the volume counts: what lies outside stays.
TEST(directorio_abierto, un_cambio_en_cualquier_momento_no_lleva_fuera) {
    struct volumen {
        bool relativo;
        unsigned long long desfase_de_manijas;
        unsigned long long desfase_de_punto;
        const char* victima;
        bool por_enlace;
    };
    std::vector<volumen> volumenes;
    for (const char* victima : {"C:\\d", "C:\\d\\s", "C:\\d\\s\\u"}) {
        for (const bool por_enlace : {true, false}) {
            for (const bool relativo : {true, false}) {
                for (const unsigned long long manijas : {0u, 1u, 2u}) {
                    for (const unsigned long long punto : {0u, 1u}) {
                        volumenes.push_back({relativo, manijas, punto, victima, por_enlace});
                    }
                }
            }
        }
    }
    for (const volumen& caso : volumenes) {
        bool ha_tocado = true;
        for (unsigned n = 1; ha_tocado; ++n) {
            ASSERT_LT(n, 100u);
            volumen_falso v;
            v.pon("C:\\d\\s\\u", {{"g"}});
            for (const char* otro : {"C:\\fuera", "C:\\fuera\\s", "C:\\fuera\\s\\u", "C:\\fuera\\u"}) {
                v.pon(otro, {{"g"}});
            }
            const lista fuera = v.arbol("C:\\fuera");
            v.rechaza_relativo = caso.relativo ? 0 : ERROR_NOT_SUPPORTED;
            v.desfase_de_manijas = caso.desfase_de_manijas;
            v.desfase_de_punto = caso.desfase_de_punto;
            entrada_leida s_leida = entrada(v, "C:\\d\\s", L"s");
            entrada_leida u_leida = entrada(v, "C:\\d\\s\\u", L"u");
            const entrada_leida g_leida = entrada(v, "C:\\d\\s\\u\\g", L"g");
            unsigned van = 0;
            bool cambiado = false;
            ha_tocado = false;
            v.al_abrir = [&](const std::string&) {
                if (++van == n) {
                    ha_tocado = true;
                    cambiado =
                        caso.por_enlace
                            ? v.cambia(caso.victima, {"", enlace_dir, IO_REPARSE_TAG_SYMLINK, "C:\\fuera"})
                            : v.cambia(caso.victima, {"", dir}, {{"g"}, {"u", dir}});
                }
            };
            {
                raiz_abierta raiz(L"C:\\d");
                directorio_abierto s;
                directorio_abierto u;
                if (raiz.codigo == 0 && s.abre(raiz.directorio, s_leida) == 0 && u.abre(s, u_leida) == 0) {
                    s_leida.numero_abierto = s.numero();
                    u_leida.numero_abierto = u.numero();
                    u.borra(g_leida);
                    u.cierra();
                    s.borra(u_leida);
                    s.cierra();
                    raiz.directorio.borra(s_leida);
                    raiz.directorio.cierra();
                    raiz.directorio.borra_raiz(raiz.ruta);
                }
            }
            SCOPED_TRACE(std::string(caso.victima) + " at " + std::to_string(n) +
                         (caso.por_enlace ? " a link" : " a directory") + (caso.relativo ? "" : ", by path") +
                         ", handles " + std::to_string(caso.desfase_de_manijas) + ", point " +
                         std::to_string(caso.desfase_de_punto));
            EXPECT_EQ(v.arbol("C:\\fuera"), fuera);
            // What was put in a directory's place holds a file that was never named.
            if (cambiado && !caso.por_enlace && v.hay(caso.victima) && n > 1) {
                EXPECT_TRUE(v.hay(std::string(caso.victima) + "\\g"));
            }
            // Left alone, all of it goes, unless a directory and its handle both say that it is not the entry's.
            if (!ha_tocado) {
                const bool es_otro =
                    caso.desfase_de_manijas != 0 && caso.desfase_de_manijas == caso.desfase_de_punto;
                EXPECT_EQ(v.hay("C:\\d"), es_otro);
            }
            EXPECT_EQ(v.abiertas(), 0u);
        }
    }
}

// One directory that counts otherwise opens no door to another that has been swapped.
TEST(directorio_abierto, cada_directorio_se_juzga_por_si_mismo) {
    for (const unsigned long long propio : {7u, 8u}) {
        volumen_falso v;
        v.pon("C:\\d\\s", {{"g"}});
        v.pon("C:\\d\\u", {{"g"}});
        v["C:\\d\\s"].numero_listado = 7;
        v["C:\\d\\s"].numero_abierto = 9;
        v["C:\\d\\s"].numero_propio = propio;
        const entrada_leida u_leida = entrada(v, "C:\\d\\u", L"u");
        raiz_abierta raiz(L"C:\\d");
        directorio_abierto s;
        EXPECT_EQ(s.abre(raiz.directorio, entrada(v, "C:\\d\\s", L"s")), 0u);
        ASSERT_TRUE(v.cambia("C:\\d\\u", {"", dir}));
        directorio_abierto u;
        EXPECT_EQ(u.abre(raiz.directorio, u_leida), DWORD{ERROR_CANT_ACCESS_FILE});
        EXPECT_EQ(raiz.directorio.borra(u_leida), DWORD{ERROR_CANT_ACCESS_FILE});
        EXPECT_TRUE(v.hay("C:\\d\\u"));
    }
}

// Where links are followed all the same, nobody is kept from renaming what is held.
TEST(directorio_abierto, donde_se_siguen_los_enlaces_lo_que_no_se_sabe_no_se_toca) {
    volumen_falso v;
    v.sigue_enlaces = true;
    v.pon("C:\\d\\s", {});
    v.desfase_de_manijas = 2;
    v.desfase_de_punto = 1;
    raiz_abierta raiz(L"C:\\d");
    const entrada_leida leida = entrada(v, "C:\\d\\s", L"s");
    directorio_abierto s;
    EXPECT_EQ(s.abre(raiz.directorio, leida), DWORD{ERROR_CANT_ACCESS_FILE});
    EXPECT_EQ(raiz.directorio.borra(leida), DWORD{ERROR_CANT_ACCESS_FILE});
    EXPECT_TRUE(v.hay("C:\\d\\s"));
    EXPECT_EQ(v.abiertas(), 1u);
}

// There a file is opened by its path, so that what bears its name is what goes; a directory as elsewhere, as what it is.
// To change a mark any right will do: the proper one would be refused for what is read-only.
TEST(directorio_abierto, donde_se_siguen_los_enlaces_un_fichero_se_abre_por_su_ruta) {
    constexpr DWORD sin_caja = OBJ_CASE_INSENSITIVE;
    volumen_falso v;
    v.sigue_enlaces = true;
    v.pon("C:\\d\\s", {});
    v.pon("C:\\d", {{"f"}});
    v["C:\\d"].etiqueta = 0;
    raiz_abierta raiz(L"C:\\d");
    ASSERT_EQ(raiz.codigo, 0u);
    EXPECT_EQ(toma_aperturas(v), (aperturas{{"C:\\d", false, listado, de_todos, por_ruta_sin_seguir, 0},
                                            {"C:\\", false, mirada, de_todos, por_ruta, 0},
                                            {"C:\\d", false, mirada, de_todos, por_ruta_sin_seguir, 0},
                                            {"C:\\", false, mirada, de_todos, por_ruta, 0}}))
        << "where it lies is asked twice";
    EXPECT_EQ(v.busquedas_hechas, (lista{"C:\\d", "C:\\d"}));
    EXPECT_EQ(v.indicadores_de_busqueda, std::vector<DWORD>(2, FIND_FIRST_EX_LARGE_FETCH));
    const entrada_leida f = entrada(v, "C:\\d\\f", L"f");
    const entrada_leida s_leida = entrada(v, "C:\\d\\s", L"s");
    EXPECT_EQ(raiz.directorio.pon_atributos(f, FILE_ATTRIBUTE_READONLY), 0u);
    EXPECT_EQ(raiz.directorio.pon_atributos(s_leida, dir | FILE_ATTRIBUTE_READONLY), 0u);
    EXPECT_EQ(v["C:\\d\\s"].atributos, dir | FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(raiz.directorio.pon_atributos(f, 0), 0u);
    EXPECT_EQ(raiz.directorio.borra(f), 0u);
    EXPECT_EQ(raiz.directorio.protege_raiz(raiz.ruta, interno::modo_lectura), 0u);
    EXPECT_EQ(toma_aperturas(v),
              (aperturas{{"\\??\\C:\\d\\f", false, SYNCHRONIZE, de_todos, de_fichero, sin_caja},
                         {"s", true, SYNCHRONIZE, de_todos, de_directorio, sin_seguir},
                         {"\\??\\C:\\d\\f", false, SYNCHRONIZE, de_todos, de_fichero, sin_caja},
                         {"\\??\\C:\\d\\f", false, DELETE | SYNCHRONIZE, de_todos, de_fichero, sin_caja},
                         {"C:\\d", false, mirada, de_todos, por_ruta_sin_seguir, 0}}));
    EXPECT_EQ(v.arbol("C:\\d"), lista{"s\\"});
}

// That system tells names without the blanks and dots at their end, and directories without one dot.
TEST(directorio_abierto, donde_se_siguen_los_enlaces_los_nombres_cuentan_como_estan) {
    for (const char* raiz_es : {"\\\\?\\C:\\d", "\\\\?\\C:\\d.", "\\\\?\\C:\\d. ", "\\\\?\\C:\\d..",
                                "\\\\?\\C:\\p.\\d .", "C:\\p\\d"}) {
        for (const bool sigue : {false, true}) {
            volumen_falso v;
            v.sigue_enlaces = true;
            const std::string s_es = std::string(raiz_es) + "\\s. .";
            v.pon(s_es, {{"f"}, {"g."}, {"h "}, {"i. ."}});
            const texto_w texto = w(raiz_es);
            const ruta_fijada ruta(texto.c_str());
            trato_con_volumen trato;
            directorio_abierto raiz;
            ASSERT_EQ(raiz.abre(ruta, trato,
                                sigue ? interno::enlace_raiz::se_sigue : interno::enlace_raiz::se_deja),
                      0u)
                << raiz_es;
            directorio_abierto s;
            ASSERT_EQ(s.abre(raiz, entrada(v, s_es, L"s. .")), 0u) << raiz_es;
            for (const wchar_t* nombre : {L"f", L"g.", L"h ", L"i. ."}) {
                EXPECT_EQ(s.borra(entrada(v, s_es + "\\" + u8(nombre), nombre)), 0u)
                    << raiz_es << " " << u8(nombre);
            }
            EXPECT_EQ(v.arbol(s_es), lista{});
        }
    }
}

// What is opened by a name may lie elsewhere; whether it does, only the name that the system tells of it says.
TEST(directorio_abierto, donde_se_siguen_los_enlaces_lo_que_esta_en_otro_sitio_se_deja) {
    const struct {
        const char* dicho;   // of the file
        const char* raiz;    // of its directory, where it is told otherwise
        const char* detras;  // in the room, behind the name
    } filas[] = {
        {"\\??\\C:\\e\\f", nullptr, ""},
        {"\\??\\C:\\d\\g", nullptr, ""},
        {"\\??\\C:\\dxf", nullptr, ""},
        {"\\??\\C:\\d", nullptr, "\\f"},
        {"\\??\\C:", nullptr, ""},
        {"", nullptr, ""},
        {"\\f", "", ""},
    };
    for (const auto& fila : filas) {
        volumen_falso v;
        v.sigue_enlaces = true;
        v.pon("C:\\d", {{"f"}});
        v["C:\\d\\f"].nombre_verdadero = fila.dicho;
        v["C:\\d\\f"].tras_el_nombre = fila.detras;
        const ruta_fijada ruta(L"C:\\d");
        trato_con_volumen trato;
        directorio_abierto raiz;
        if (fila.raiz != nullptr) {
            v["C:\\d"].nombre_verdadero = fila.raiz;
        }
        ASSERT_EQ(raiz.abre(ruta, trato, interno::enlace_raiz::se_sigue), 0u);
        const entrada_leida f = entrada(v, "C:\\d\\f", L"f");
        EXPECT_EQ(raiz.mira(f).codigo, DWORD{ERROR_CANT_ACCESS_FILE}) << fila.dicho;
        EXPECT_EQ(raiz.pon_atributos(f, FILE_ATTRIBUTE_READONLY), DWORD{ERROR_CANT_ACCESS_FILE})
            << fila.dicho;
        EXPECT_EQ(raiz.borra(f), DWORD{ERROR_CANT_ACCESS_FILE}) << fila.dicho;
        EXPECT_EQ(v["C:\\d\\f"].atributos, DWORD{FILE_ATTRIBUTE_NORMAL});
    }
    volumen_falso v;
    v.sigue_enlaces = true;
    v.pon("C:\\fuera", {{"g"}});
    v.pon("C:\\d", {{"f"}, {"e", FILE_ATTRIBUTE_REPARSE_POINT, IO_REPARSE_TAG_SYMLINK, "C:\\fuera\\g"}});
    raiz_abierta raiz(L"C:\\d");
    // A link is known by its entry.
    toma_aperturas(v);
    EXPECT_EQ(raiz.directorio.borra(entrada(v, "C:\\d\\e", L"e")), DWORD{ERROR_CANT_ACCESS_FILE});
    EXPECT_EQ(v.aperturas.size(), 0u);
    // A file in the place of another has another number; a name that is none is not asked for.
    entrada_leida f = entrada(v, "C:\\d\\f", L"f");
    f.numero ^= 1;
    EXPECT_EQ(raiz.directorio.borra(f), DWORD{ERROR_CANT_ACCESS_FILE});
    EXPECT_EQ(toma_aperturas(v).size(), 1u);
    EXPECT_EQ(
        raiz.directorio.borra({L"..\\fuera\\g", FILE_ATTRIBUTE_NORMAL, 0, v["C:\\fuera\\g"].numero(), {}}),
        DWORD{ERROR_CANT_ACCESS_FILE});
    EXPECT_EQ(v.aperturas.size(), 0u);
    // Where the root lies was asked when it was opened: its path leads there still.
    v["C:\\d"].nombre_verdadero = "\\??\\C:\\otro";
    EXPECT_EQ(raiz.directorio.borra(entrada(v, "C:\\d\\f", L"f")), 0u);
    EXPECT_EQ(v.arbol("C:\\fuera"), lista{"g"});
}

// A root, and what else is named by a path, must be what bears its last name, each time that this is asked.
TEST(directorio_abierto, donde_se_siguen_los_enlaces_una_ruta_lleva_a_lo_que_nombra) {
    const struct {
        const char* que;
        const wchar_t* ruta;
        std::function<void(volumen_falso&)> pasa;
        unsigned cuando;  // before which opening
        DWORD codigo;     // of a root
        DWORD de_un_fin;  // of what is to be deleted, renamed or marked
    } filas[] = {
        {"as it is", L"C:\\p\\d", [](volumen_falso&) {}, 1, 0, 0},
        {"the root of a drive", L"C:\\", [](volumen_falso&) {}, 1, 0, 0},
        {"missing", L"C:\\p\\no", [](volumen_falso&) {}, 1, ERROR_FILE_NOT_FOUND, ERROR_FILE_NOT_FOUND},
        {"a link", L"C:\\p\\e", [](volumen_falso&) {}, 1, ERROR_CANT_ACCESS_FILE, ERROR_CANT_ACCESS_FILE},
        {"a link that the name does not tell", L"C:\\p\\e",
         [](volumen_falso& v) { v["C:\\fuera"].nombre_verdadero = "\\??\\C:\\p\\e"; }, 1,
         ERROR_CANT_ACCESS_FILE, ERROR_CANT_ACCESS_FILE},
        {"elsewhere", L"C:\\p\\d",
         [](volumen_falso& v) { v["C:\\p\\d"].nombre_verdadero = "\\??\\C:\\q\\d"; }, 1,
         ERROR_CANT_ACCESS_FILE, ERROR_CANT_ACCESS_FILE},
        {"elsewhere at first", L"C:\\p\\d",
         [](volumen_falso& v) {
             v["C:\\p\\d"].nombre_verdadero =
                 v.aperturas.size() < 2 ? std::optional<std::string>("\\??\\C:\\q\\d") : std::nullopt;
         },
         0, ERROR_CANT_ACCESS_FILE, ERROR_CANT_ACCESS_FILE},
        {"elsewhere the second time", L"C:\\p\\d",
         [](volumen_falso& v) { v["C:\\p\\d"].nombre_verdadero = "\\??\\C:\\q\\d"; }, 3,
         ERROR_CANT_ACCESS_FILE, 0},
        {"closed the second time", L"C:\\p\\d",
         [](volumen_falso& v) { v["C:\\p\\d"].codigo_al_abrir = ERROR_SHARING_VIOLATION; }, 3,
         ERROR_CANT_ACCESS_FILE, 0},
        {"above it closed", L"C:\\p\\d",
         [](volumen_falso& v) { v["C:\\p"].codigo_al_abrir = ERROR_ACCESS_DENIED; }, 1,
         ERROR_CANT_ACCESS_FILE, ERROR_CANT_ACCESS_FILE},
        {"above it listed by nobody else", L"C:\\p\\d",
         [](volumen_falso& v) { v["C:\\p"].codigo_al_listar = ERROR_SHARING_VIOLATION; }, 1, 0, 0},
        {"likewise, with a name that is told cut short", L"\\\\?\\C:\\p\\d.",
         [](volumen_falso& v) { v["C:\\p"].codigo_al_listar = ERROR_SHARING_VIOLATION; }, 1,
         ERROR_CANT_ACCESS_FILE, ERROR_CANT_ACCESS_FILE},
        {"above it not listed", L"C:\\p\\d",
         [](volumen_falso& v) { v["C:\\p"].codigo_al_listar = ERROR_ACCESS_DENIED; }, 1,
         ERROR_CANT_ACCESS_FILE, ERROR_CANT_ACCESS_FILE},
    };
    for (const auto& fila : filas) {
        for (const bool es_raiz : {true, false}) {
            volumen_falso v;
            v.sigue_enlaces = true;
            v.pon("C:\\fuera", {{"g"}});
            v.pon("C:\\p", {{"d", dir}, {"d.", dir}, {"e", enlace_dir, IO_REPARSE_TAG_SYMLINK, "C:\\fuera"}});
            v.al_abrir = [&](const std::string&) {
                if (fila.cuando == 0 || v.aperturas.size() + 1 == fila.cuando) {
                    fila.pasa(v);
                }
            };
            const ruta_fijada ruta(fila.ruta);
            if (es_raiz) {
                EXPECT_EQ(raiz_abierta(fila.ruta).codigo, fila.codigo) << fila.que;
            } else {
                EXPECT_EQ(interno::i_codigo_si_lleva_a_otro_sitio(ruta), fila.de_un_fin) << fila.que;
                ASSERT_FALSE(v.aperturas.empty());
                EXPECT_EQ(v.aperturas[0], (volumen_falso::apertura{u8(fila.ruta), false, mirada, de_todos,
                                                                   por_ruta_sin_seguir, 0}));
            }
            EXPECT_EQ(v.abiertas(), 0u) << fila.que;
        }
    }
    volumen_falso v;
    v.pon("C:\\fuera", {{"g"}});
    v.pon("C:\\d", {{"e", enlace_dir, IO_REPARSE_TAG_SYMLINK, "C:\\fuera"}});
    const ruta_fijada enlace(L"C:\\d\\e");
    EXPECT_EQ(interno::i_codigo_si_lleva_a_otro_sitio(enlace), 0u);
    EXPECT_EQ(v.aperturas.size(), 0u) << "where links are not followed nothing is asked";
    // A root that is to be followed is not asked where it lies.
    v.sigue_enlaces = true;
    trato_con_volumen trato;
    directorio_abierto detras;
    EXPECT_EQ(detras.abre(enlace, trato, interno::enlace_raiz::se_sigue), 0u);
    EXPECT_EQ(v.aperturas, (aperturas{{"C:\\d\\e", false, listado, de_todos, por_ruta, 0}}));
    EXPECT_EQ(lee_entera(detras), lista{"g"});
}

// On such a volume a link goes too, and a file that only its path leads to.
TEST(directorio_abierto, donde_las_manijas_cuentan_de_otro_modo_tambien_se_borra) {
    for (const bool relativo : {true, false}) {
        for (const unsigned long long punto : {0u, 1u}) {
            volumen_falso v;
            v.pon("C:\\fuera", {{"g"}});
            v.pon("C:\\d", {{"f"}, {"h"}, {"e", enlace_dir, IO_REPARSE_TAG_MOUNT_POINT, "C:\\fuera"}});
            v.desfase_de_manijas = 2;
            v.desfase_de_punto = punto;
            v.rechaza_relativo = relativo ? 0 : ERROR_NOT_SUPPORTED;
            raiz_abierta raiz(L"C:\\d");
            for (const wchar_t* cual : {L"f", L"e", L"h"}) {
                EXPECT_EQ(raiz.directorio.borra(entrada(v, "C:\\d\\" + u8(cual), cual)), 0u) << u8(cual);
            }
            EXPECT_EQ(v.arbol("C:\\d"), lista{});
            EXPECT_EQ(v.arbol("C:\\fuera"), lista{"g"});
        }
    }
}

// Marks that cannot be read are not written either: the others beside it would be lost.
TEST(directorio_abierto, una_raiz_sin_marcas_que_leer_se_queda_como_esta) {
    volumen_falso v;
    v.pon("C:\\d", {});
    v["C:\\d"].atributos = dir | FILE_ATTRIBUTE_READONLY;
    raiz_abierta raiz(L"C:\\d");
    static decltype(interno::sistema.GetFileInformationByHandleEx) debajo;
    debajo = interno::sistema.GetFileInformationByHandleEx;
    static unsigned lecturas;
    lecturas = 0;  // the first one tells that it is a directory
    const sustituye lee(interno::sistema.GetFileInformationByHandleEx,
                        [](HANDLE h, FILE_INFO_BY_HANDLE_CLASS clase, LPVOID datos, DWORD bytes)
                            WINAPI -> BOOL {
                                const bool se_lee = clase != FileBasicInfo || ++lecturas == 1;
                                return se_lee ? debajo(h, clase, datos, bytes) : FALSE;
                            });
    const sustituye lee_de_otro_modo(interno::sistema.GetFileInformationByHandle,
                                     [](HANDLE, BY_HANDLE_FILE_INFORMATION*) WINAPI -> BOOL {
                                         ::SetLastError(ERROR_NOT_SUPPORTED);
                                         return FALSE;
                                     });
    EXPECT_EQ(raiz.directorio.protege_raiz(raiz.ruta, interno::modo_escritura), DWORD{ERROR_NOT_SUPPORTED});
    EXPECT_EQ(v["C:\\d"].atributos, dir | FILE_ATTRIBUTE_READONLY);
}

// The mark of a root is that of the very directory that was opened.
TEST(directorio_abierto, la_marca_de_la_raiz_no_la_recibe_otro) {
    volumen_falso v;
    v.pon("C:\\fuera", {});
    v.pon("C:\\d", {});
    v["C:\\d"].atributos = dir | FILE_ATTRIBUTE_READONLY;
    raiz_abierta raiz(L"C:\\d");
    EXPECT_EQ(raiz.directorio.protege_raiz(raiz.ruta, interno::modo_escritura), 0u);
    EXPECT_EQ(v["C:\\d"].atributos, dir);
    EXPECT_EQ(raiz.directorio.protege_raiz(raiz.ruta, interno::modo_lectura), 0u);
    EXPECT_EQ(v["C:\\d"].atributos, dir | FILE_ATTRIBUTE_READONLY);
    for (const DWORD otro : {DWORD{dir}, DWORD{enlace_dir}}) {
        ASSERT_TRUE(v.cambia("C:\\d", {"", otro, otro == dir ? 0 : IO_REPARSE_TAG_SYMLINK}));
        EXPECT_EQ(raiz.directorio.protege_raiz(raiz.ruta, interno::modo_lectura),
                  DWORD{ERROR_CANT_ACCESS_FILE});
        EXPECT_EQ(v["C:\\d"].atributos, otro);
    }
    EXPECT_EQ(v["C:\\fuera"].atributos, dir);
}

// Whatever took the place of a root, without numbers too: only a directory goes that is no link.
TEST(directorio_abierto, sin_numeros_no_se_borra_en_el_lugar_de_la_raiz_mas_que_un_directorio) {
    const volumen_falso::entrada otros[] = {{"", FILE_ATTRIBUTE_NORMAL},
                                            {"", enlace_dir, IO_REPARSE_TAG_SYMLINK, "C:\\fuera"},
                                            {"", enlace_dir, 0}};
    for (const volumen_falso::entrada& otro : otros) {
        volumen_falso v;
        v.pon("C:\\fuera", {});
        v.pon("C:\\d", {});
        v.dice_numeros = false;
        raiz_abierta raiz(L"C:\\d");
        raiz.directorio.cierra();
        ASSERT_TRUE(v.cambia("C:\\d", otro));
        EXPECT_EQ(raiz.directorio.borra_raiz(raiz.ruta), DWORD{ERROR_CANT_ACCESS_FILE});
        EXPECT_TRUE(v.hay("C:\\d"));
        EXPECT_TRUE(v.hay("C:\\fuera"));
    }
}

// A link of a distributed file system is no name surrogate: a directory like another, unless what answers to its name
// is a directory of the server that it leads to.
TEST(directorio_abierto, una_carpeta_de_un_espacio_de_nombres_distribuido) {
    constexpr DWORD de_espacio_de_nombres = 0x8000000A;
    for (const bool lleva_a_otro_servidor : {false, true}) {
        volumen_falso v;
        v.pon("C:\\d", {{"n", enlace_dir, de_espacio_de_nombres}});
        v.pon("C:\\d\\n", {{"g"}});
        if (lleva_a_otro_servidor) {
            nodo_falso& n = v["C:\\d\\n"];
            n.atributos_abierto = dir;
            n.numero_abierto = n.numero_propio = 9;
        }
        const entrada_leida leida = entrada(v, "C:\\d\\n", L"n");
        raiz_abierta raiz(L"C:\\d");
        directorio_abierto n;
        EXPECT_EQ(n.abre(raiz.directorio, leida), lleva_a_otro_servidor ? ERROR_CANT_ACCESS_FILE : 0u);
        n.cierra();
        v["C:\\d\\n"].hijos.clear();
        if (lleva_a_otro_servidor) {
            continue;
        }
        EXPECT_EQ(raiz.directorio.borra(leida), 0u);
        EXPECT_EQ(v.arbol("C:\\d"), lista{});
    }
}

TEST(directorio_abierto, registros_alineados_a_cuatro_se_leen_enteros) {
    for (const bool con_numeros : {true, false}) {
        volumen_falso v;
        v.alineacion = 4;
        v.rechaza_con_numeros = con_numeros ? 0 : ERROR_NOT_SUPPORTED;
        v.pon("C:\\d", {{"a"}, {"bc"}, {"def"}, {"g"}, {"hi"}});
        raiz_abierta raiz(L"C:\\d");
        DWORD codigo = 0;
        EXPECT_EQ(lee_entera(raiz.directorio, &codigo), (lista{"a", "bc", "def", "g", "hi"}));
        EXPECT_EQ(codigo, DWORD{ERROR_NO_MORE_FILES});
    }
}

TEST(directorio_abierto, el_ultimo_registro_puede_acabar_donde_acaba_el_sitio) {
    for (const std::string ultimo : {"b", "bc", "bcd"}) {
        volumen_falso v;
        v.alineacion = 4;
        v.pon("C:\\d", {{"a"}, {ultimo}});
        v.estropea = [&](unsigned char* bufer) {
            unsigned char* a = bufer;
            const auto paso = [](unsigned char* r) {
                ULONG p;
                std::memcpy(&p, r, sizeof p);
                return p;
            };
            a += paso(a);
            a += paso(a);
            const std::size_t largo =
                offsetof(FILE_ID_BOTH_DIR_INFO, FileName) + ultimo.size() * sizeof(wchar_t);
            const std::size_t desde = (0x10000 - largo) / 4 * 4;
            std::memmove(bufer + desde, a + paso(a), largo);
            const auto nuevo = static_cast<ULONG>(bufer + desde - a);
            std::memcpy(a, &nuevo, sizeof nuevo);
        };
        raiz_abierta raiz(L"C:\\d");
        DWORD codigo = 0;
        EXPECT_EQ(lee_entera(raiz.directorio, &codigo), (lista{"a", ultimo}));
        EXPECT_EQ(codigo, DWORD{ERROR_NO_MORE_FILES});
    }
}

namespace {

// The room of a walk, in the place of the allocator's: it ends where memory that can be touched ends.
class sitio_al_borde {
public:
    static constexpr std::size_t bytes = 0x10000;

    sitio_al_borde() {
        void* region = ::VirtualAlloc(nullptr, bytes + 4096, MEM_RESERVE, PAGE_NOACCESS);
        i_sitio() = ::VirtualAlloc(region, bytes, MEM_COMMIT, PAGE_READWRITE);
        i_antes() = interno::memoria;
        interno::memoria.reserva = [](std::size_t cuantos) {
            return cuantos == bytes ? i_sitio() : i_antes().reserva(cuantos);
        };
        interno::memoria.libera = [](void* bloque) {
            if (bloque != i_sitio()) {
                i_antes().libera(bloque);
            }
        };
    }
    ~sitio_al_borde() {
        interno::memoria = i_antes();
        ::VirtualFree(i_sitio(), 0, MEM_RELEASE);
    }
    sitio_al_borde(const sitio_al_borde&) = delete;
    sitio_al_borde& operator=(const sitio_al_borde&) = delete;

    static bool es(const void* aqui) { return aqui == i_sitio(); }

private:
    static void*& i_sitio() {
        static void* sitio = nullptr;
        return sitio;
    }
    static interno::tabla_memoria& i_antes() {
        static interno::tabla_memoria antes;
        return antes;
    }
};

}  // namespace

// What lies behind the room is neither read nor taken for a part of a record.
TEST(directorio_abierto, un_registro_al_final_del_sitio_cabe_o_no) {
    for (const bool con_numeros : {true, false}) {
        const std::size_t minimo = con_numeros ? offsetof(FILE_ID_BOTH_DIR_INFO, FileName) : 68;
        for (const std::size_t quedan : {minimo, minimo - 4, std::size_t{4}}) {
            const sitio_al_borde sitio;
            volumen_falso v;
            v.rechaza_con_numeros = con_numeros ? 0 : ERROR_NOT_SUPPORTED;
            v.pon("C:\\d", {{"a"}});
            v["C:\\d"].con_relativas = false;
            v.estropea = [&](unsigned char* bufer) {
                EXPECT_TRUE(sitio_al_borde::es(bufer)) << "64 KiB for the whole walk";
                const auto paso = static_cast<ULONG>(sitio_al_borde::bytes - quedan);
                std::memcpy(bufer, &paso, sizeof paso);
                std::memset(bufer + paso, 0, quedan);
            };
            raiz_abierta raiz(L"C:\\d");
            DWORD codigo = 0;
            const bool cabe = quedan == minimo;
            EXPECT_EQ(lee_entera(raiz.directorio, &codigo), cabe ? (lista{"a", ""}) : lista{"a"}) << quedan;
            EXPECT_EQ(codigo, cabe ? DWORD{ERROR_NO_MORE_FILES} : DWORD{ERROR_INVALID_DATA}) << quedan;
        }
    }
}

// Of names as long as other systems make them too.
TEST(directorio_abierto, el_ultimo_nombre_que_vino) {
    for (const std::size_t largo : {1u, 259u, 260u, 261u, 300u}) {
        volumen_falso v;
        v.pon("C:\\d", {{"a"}, {std::string(largo, 'x')}});
        raiz_abierta raiz(L"C:\\d");
        lector_de_directorio lector(raiz.directorio);
        std::size_t vienen = 0;
        while (const entrada_leida* e = lector.siguiente()) {
            ++vienen;
            EXPECT_EQ(u8(lector.ultimo_nombre()), u8(e->nombre).substr(0, MAX_PATH));
        }
        EXPECT_EQ(vienen, 4u);
        EXPECT_EQ(u8(lector.ultimo_nombre()), std::string(std::min<std::size_t>(largo, MAX_PATH), 'x'));
    }
}

TEST(directorio_abierto, otros_codigos_no_son_un_rechazo) {
    for (const DWORD codigo : std::initializer_list<DWORD>{ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION,
                                                           ERROR_FILE_NOT_FOUND, ERROR_DELETE_PENDING}) {
        volumen_falso v;
        v.pon("C:\\d\\s", {{"g"}});
        v["C:\\d\\s"].codigo_al_abrir = codigo;
        raiz_abierta raiz(L"C:\\d");
        directorio_abierto s;
        EXPECT_EQ(s.abre(raiz.directorio, entrada(v, "C:\\d\\s", L"s")), codigo);
        EXPECT_TRUE(raiz.trato.relativo);
        EXPECT_EQ(v.aperturas.size(), 2u) << "the root and one attempt";
    }
    // One that is disliked is asked for in each way once.
    for (const bool conoce : {true, false}) {
        volumen_falso v;
        v.pon("C:\\d", {{"f"}, {"malo"}});
        v["C:\\d\\malo"].codigo_al_abrir = ERROR_INVALID_PARAMETER;
        v.conoce_sin_seguir = conoce;
        raiz_abierta raiz(L"C:\\d");
        raiz.directorio.mira(entrada(v, "C:\\d\\f", L"f"));
        toma_aperturas(v);
        raiz.directorio.mira(entrada(v, "C:\\d\\malo", L"malo"));
        EXPECT_EQ(v.aperturas.size(), conoce ? 4u : 3u) << "the root is held, too";
    }
    // The name itself is what the system dislikes, by its path too: that says nothing about relative opens.
    volumen_falso v;
    v.pon("C:\\d\\s", {});
    v["C:\\d\\s"].codigo_al_abrir = ERROR_INVALID_NAME;
    raiz_abierta raiz(L"C:\\d");
    directorio_abierto s;
    EXPECT_EQ(s.abre(raiz.directorio, entrada(v, "C:\\d\\s", L"s")), DWORD{ERROR_INVALID_NAME});
    EXPECT_TRUE(raiz.trato.relativo);
}

TEST(directorio_abierto, un_sistema_sin_OBJ_DONT_REPARSE) {
    volumen_falso v;
    v.pon("C:\\d\\s", {{"g"}});
    v.conoce_sin_seguir = false;
    raiz_abierta raiz(L"C:\\d");
    directorio_abierto s;
    ASSERT_EQ(s.abre(raiz.directorio, entrada(v, "C:\\d\\s", L"s")), 0u);
    EXPECT_EQ(s.borra(entrada(v, "C:\\d\\s\\g", L"g")), 0u);
    EXPECT_TRUE(raiz.trato.relativo);
    std::vector<DWORD> atributos;
    for (const volumen_falso::apertura& a : v.aperturas) {
        atributos.push_back(a.atributos);
    }
    EXPECT_EQ(atributos, (std::vector<DWORD>{0, sin_seguir, 0, 0})) << "tried once in a walk";
}

TEST(directorio_abierto, cada_manera_de_leer_rechazada_lleva_a_la_siguiente) {
    for (const DWORD codigo :
         {DWORD{1}, DWORD{5}, DWORD{6}, DWORD{31}, DWORD{50}, DWORD{87}, DWORD{124}, DWORD{1359}}) {
        for (const bool tampoco_completa : {false, true}) {
            volumen_falso v;
            v.pon(
                "C:\\d",
                {{"f"}, {"e", enlace_dir, IO_REPARSE_TAG_SYMLINK}, {"s", dir | FILE_ATTRIBUTE_READONLY, 77}});
            v["C:\\d\\f"].fecha = {0x12345678, 0x01D00000};
            v.pon("C:\\d\\s", {{"g"}});
            v.rechaza_con_numeros = codigo;
            v.rechaza_sin_numeros = tampoco_completa ? codigo : 0;
            raiz_abierta raiz(L"C:\\d");
            lista leidas;
            unsigned long long fecha = 0;
            {
                lector_de_directorio lector(raiz.directorio);
                while (const entrada_leida* e = lector.siguiente()) {
                    leidas.push_back(u8(e->nombre) + " " + std::to_string(e->atributos) + " " +
                                     std::to_string(e->reanalisis) + " " + std::to_string(e->numero));
                    fecha |= e->modificado.dwLowDateTime | (1ull << 32) * e->modificado.dwHighDateTime;
                }
                EXPECT_EQ(lector.codigo(), DWORD{ERROR_NO_MORE_FILES});
            }
            EXPECT_EQ(leidas, (lista{". 16 0 0", ".. 16 0 0", "f 128 0 0",
                                     "e 1040 " + std::to_string(IO_REPARSE_TAG_SYMLINK) + " 0", "s 17 0 0"}))
                << codigo;
            EXPECT_EQ(fecha, 0x01D0000012345678u) << codigo;
            // Whatever was tried before, each way of reading begins at the first entry.
            using clases = std::vector<FILE_INFO_BY_HANDLE_CLASS>;
            constexpr auto completa = static_cast<FILE_INFO_BY_HANDLE_CLASS>(14);
            constexpr auto completa_desde_el_principio = static_cast<FILE_INFO_BY_HANDLE_CLASS>(15);
            EXPECT_EQ(v.clases,
                      tampoco_completa
                          ? (clases{FileIdBothDirectoryRestartInfo, completa_desde_el_principio})
                          : (clases{FileIdBothDirectoryRestartInfo, completa_desde_el_principio, completa}));
            EXPECT_EQ(v.indicadores_de_busqueda, std::vector<DWORD>(tampoco_completa ? 1 : 0, 0));
            EXPECT_EQ(raiz.trato.como_se_lee,
                      tampoco_completa ? lectura::por_busqueda : lectura::sin_numeros);
            EXPECT_EQ(v.busquedas_hechas, tampoco_completa ? lista{"\\\\?\\C:\\d\\*"} : lista{});
            if (tampoco_completa) {
                EXPECT_FALSE(v.cambia("C:\\d", {"", dir})) << "held while a path is used";
            }
            // The next directory begins with what was learned.
            v.clases.clear();
            directorio_abierto s;
            ASSERT_EQ(s.abre(raiz.directorio, {L"s", dir, 0, 0, {}}), 0u);
            EXPECT_EQ(lee_entera(s), lista{"g"});
            EXPECT_EQ(v.clases.size(), tampoco_completa ? 0u : 2u);
        }
    }
}

TEST(directorio_abierto, ninguna_manera_de_leer) {
    volumen_falso v;
    v.pon("C:\\d", {{"f"}});
    v["C:\\d"].codigo_al_listar = ERROR_ACCESS_DENIED;
    raiz_abierta raiz(L"C:\\d");
    DWORD codigo = 0;
    EXPECT_EQ(lee_entera(raiz.directorio, &codigo), lista{});
    EXPECT_EQ(codigo, DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(raiz.trato.como_se_lee, lectura::con_numeros) << "nothing was learned";
    EXPECT_EQ(lector_de_directorio(raiz.directorio).ultimo_nombre().size(), 0u) << "none has come";
    v["C:\\d"].codigo_al_listar = 0;
    EXPECT_EQ(lee_entera(raiz.directorio), lista{"f"});
}

TEST(directorio_abierto, una_raiz_vacia_sin_punto_ni_dos_puntos) {
    for (const bool por_busqueda : {false, true}) {
        volumen_falso v;
        v.pon("C:", {});
        v["C:"].con_relativas = false;
        v.rechaza_con_numeros = v.rechaza_sin_numeros = por_busqueda ? ERROR_NOT_SUPPORTED : 0;
        raiz_abierta raiz(L"C:\\");
        DWORD codigo = 0;
        EXPECT_EQ(lee_entera(raiz.directorio, &codigo), lista{});
        EXPECT_EQ(codigo, DWORD{ERROR_NO_MORE_FILES});
        EXPECT_EQ(v.clases.size(), por_busqueda ? 2u : 1u) << "a directory without entries is no refusal";
        EXPECT_EQ(v.busquedas_hechas.size(), por_busqueda ? 1u : 0u);
    }
}

TEST(directorio_abierto, una_lectura_que_se_rompe_a_medias) {
    for (const auto como : {lectura::con_numeros, lectura::sin_numeros, lectura::por_busqueda}) {
        volumen_falso v;
        v.pon("C:\\d", {{"a"}, {"b"}, {"c"}});
        v["C:\\d"].codigo_al_final = ERROR_NETNAME_DELETED;
        v.registros_por_lectura = 2;
        v.rechaza_con_numeros = como == lectura::con_numeros ? 0 : ERROR_NOT_SUPPORTED;
        v.rechaza_sin_numeros = como == lectura::por_busqueda ? ERROR_NOT_SUPPORTED : 0;
        raiz_abierta raiz(L"C:\\d");
        lector_de_directorio lector(raiz.directorio);
        lista nombres;
        while (const entrada_leida* e = lector.siguiente()) {
            nombres.push_back(u8(e->nombre));
        }
        EXPECT_EQ(nombres, (lista{".", "..", "a", "b", "c"}));
        EXPECT_EQ(lector.codigo(), DWORD{ERROR_NETNAME_DELETED});
        EXPECT_EQ(u8(lector.ultimo_nombre()), "c");
        v["C:\\d"].codigo_al_final = ERROR_NO_MORE_FILES;
        v.pon("C:\\d", {{"nuevo"}});
        EXPECT_EQ(lector.siguiente(), nullptr) << "an end stays one";
    }
}

TEST(directorio_abierto, los_numeros_deciden_si_es_el_que_se_leyo) {
    using ull = unsigned long long;
    constexpr ull todos = ~0ull;
    struct fila {
        ull leido;
        ull abierto;
        ull propio;  // under "."; `sin_punto`: there is none
        bool se_entra;
        bool coherentes;
        bool retenido = false;  // nobody else may rename it meanwhile
    };
    constexpr ull sin_punto = 12345;
    const fila filas[] = {
        {.leido = 7, .abierto = 7, .propio = 7, .se_entra = true, .coherentes = true},
        {.leido = 0, .abierto = 9, .propio = 9, .se_entra = true, .coherentes = true},      // not told
        {.leido = todos, .abierto = 9, .propio = 9, .se_entra = true, .coherentes = true},  // not told either
        {.leido = 7, .abierto = 9, .propio = 9, .se_entra = false, .coherentes = true},  // another directory
        {.leido = 7,
         .abierto = 9,
         .propio = 7,
         .se_entra = true,
         .coherentes = false},  // handles count otherwise
        {.leido = 7,
         .abierto = 9,
         .propio = 8,
         .se_entra = true,
         .coherentes = false,
         .retenido = true},  // each counts otherwise: its entry says so still
        // Not told by the directory itself: its entry still says so while it is held.
        {.leido = 7, .abierto = 9, .propio = 0, .se_entra = true, .coherentes = false, .retenido = true},
        {.leido = 7, .abierto = 9, .propio = todos, .se_entra = true, .coherentes = false, .retenido = true},
        {.leido = 7,
         .abierto = 9,
         .propio = sin_punto,
         .se_entra = true,
         .coherentes = false,
         .retenido = true},
        {.leido = 1,
         .abierto = 9,
         .propio = sin_punto,
         .se_entra = true,
         .coherentes = false,
         .retenido = true},
        {.leido = 7, .abierto = 0, .propio = 7, .se_entra = true, .coherentes = false},
        {.leido = 7, .abierto = 0, .propio = 0, .se_entra = true, .coherentes = false, .retenido = true},
    };
    for (const fila& caso : filas) {
        volumen_falso v;
        v.pon("C:\\d\\s", {{"g"}});
        nodo_falso& s = v["C:\\d\\s"];
        s.numero_listado = caso.leido;
        s.numero_abierto = caso.abierto;
        s.numero_propio = caso.propio;
        s.con_relativas = caso.propio != sin_punto;
        raiz_abierta raiz(L"C:\\d");
        directorio_abierto hijo;
        EXPECT_EQ(hijo.abre(raiz.directorio, entrada(v, "C:\\d\\s", L"s")),
                  caso.se_entra ? 0u : ERROR_CANT_ACCESS_FILE)
            << caso.leido << " " << caso.abierto << " " << caso.propio;
        EXPECT_EQ(raiz.trato.numeros_coherentes, caso.coherentes)
            << caso.leido << " " << caso.abierto << " " << caso.propio;
        EXPECT_EQ(v.abiertas(), caso.se_entra ? 2u : 1u);
        EXPECT_EQ(v.aperturas.back(),
                  (volumen_falso::apertura{"s", true, listado, caso.retenido ? retiene : de_todos,
                                           de_directorio, sin_seguir}))
            << caso.leido << " " << caso.abierto << " " << caso.propio;
        if (caso.se_entra) {
            EXPECT_EQ(lee_entera(hijo), lista{"g"}) << "from its beginning, whatever was looked at before";
        }
    }
    // A system that has no numbers at all is walked by names.
    volumen_falso v;
    v.pon("C:\\d\\s", {{"g"}});
    v.dice_numeros = false;
    raiz_abierta raiz(L"C:\\d");
    directorio_abierto hijo;
    EXPECT_EQ(hijo.abre(raiz.directorio, {L"s", dir, 0, 0, {}}), 0u);
    EXPECT_EQ(hijo.numero(), 0u);
    EXPECT_EQ(hijo.borra({L"g", FILE_ATTRIBUTE_NORMAL, 0, 0, {}}), 0u);
    hijo.cierra();
    EXPECT_EQ(raiz.directorio.borra({L"s", dir, 0, 0, {}}), 0u);
    EXPECT_EQ(raiz.directorio.borra_raiz(raiz.ruta), 0u);
}

// What cannot be judged by its number is opened once more, held: what happened in between is seen then.
TEST(directorio_abierto, entre_abrir_y_retener) {
    using ull = unsigned long long;
    const struct {
        const char* que;
        std::function<void(volumen_falso&)> antes_de_retener;
        DWORD codigo;
        ull numero;
        bool coherentes;
    } filas[] = {
        {"nothing", [](volumen_falso&) {}, 0, 9, false},
        {"in use", [](volumen_falso& v) { v["C:\\d\\s"].codigo_al_abrir = ERROR_SHARING_VIOLATION; },
         ERROR_SHARING_VIOLATION, 9, true},
        {"another with its number",
         [](volumen_falso& v) {
             v.cambia("C:\\d\\s", {"", dir});
             v["C:\\d\\s"].numero_listado = 7;
             v["C:\\d\\s"].numero_abierto = 11;
         },
         0, 11, false},
        {"a link with its number",
         [](volumen_falso& v) {
             v.cambia("C:\\d\\s", {"", enlace_dir, IO_REPARSE_TAG_SYMLINK, "C:\\fuera"});
             v["C:\\d\\s"].numero_listado = 7;
         },
         ERROR_CANT_ACCESS_FILE, 0, false},
        {"another number", [](volumen_falso& v) { v["C:\\d\\s"].numero_listado = 8; }, ERROR_CANT_ACCESS_FILE,
         9, true},
    };
    for (const auto& fila : filas) {
        volumen_falso v;
        v.pon("C:\\fuera", {});
        v.pon("C:\\d\\s", {});
        v["C:\\d\\s"].numero_listado = 7;
        v["C:\\d\\s"].numero_abierto = 9;
        v["C:\\d\\s"].numero_propio = 8;
        raiz_abierta raiz(L"C:\\d");
        const entrada_leida leida = entrada(v, "C:\\d\\s", L"s");
        unsigned van = 0;
        v.al_abrir = [&](const std::string&) {
            if (++van == 2) {
                fila.antes_de_retener(v);
            }
        };
        directorio_abierto s;
        EXPECT_EQ(s.abre(raiz.directorio, leida), fila.codigo) << fila.que;
        EXPECT_EQ(raiz.trato.numeros_coherentes, fila.coherentes) << fila.que;
        if (fila.codigo == 0) {
            EXPECT_EQ(s.numero(), fila.numero) << fila.que;
        }
        EXPECT_EQ(v.abiertas(), fila.codigo == 0 ? 2u : 1u) << fila.que;
    }
}

// A file is what bears its name in the open directory. Reached by a path it has to be the one whose entry was read.
TEST(directorio_abierto, por_su_nombre_o_por_su_numero) {
    const struct {
        bool relativo;
        bool coherentes;
        bool cambiado;
        DWORD codigo;
        std::vector<DWORD> compartir;  // one for each opening of it
    } filas[] = {
        {true, true, true, 0, {de_todos}},   {true, true, false, 0, {de_todos}},
        {false, true, false, 0, {de_todos}}, {false, true, true, ERROR_CANT_ACCESS_FILE, {de_todos, retiene}},
        {false, false, true, 0, {de_todos}}, {false, false, false, 0, {de_todos}},
    };
    for (const auto& fila : filas) {
        volumen_falso v;
        v.pon("C:\\d", {{"f"}});
        raiz_abierta raiz(L"C:\\d");
        const entrada_leida leida = entrada(v, "C:\\d\\f", L"f");
        raiz.trato.relativo = fila.relativo;
        raiz.trato.numeros_coherentes = fila.coherentes;
        if (fila.cambiado) {
            v.cambia("C:\\d\\f", {""});
        }
        toma_aperturas(v);
        EXPECT_EQ(raiz.directorio.borra(leida), fila.codigo);
        EXPECT_EQ(v.hay("C:\\d\\f"), fila.codigo != 0);
        std::vector<DWORD> compartir;
        for (const volumen_falso::apertura& a : v.aperturas) {
            if (a.nombre.ends_with("f")) {
                compartir.push_back(a.compartir);
            }
        }
        EXPECT_EQ(compartir, fila.compartir) << fila.relativo << fila.coherentes << fila.cambiado;
    }
    // A directory that was entered is known by what its handle told then, whatever listings say of another.
    volumen_falso v;
    v.pon("C:\\d\\s", {});
    v["C:\\d\\s"].numero_listado = 7;
    v["C:\\d\\s"].numero_abierto = 9;
    v["C:\\d\\s"].numero_propio = 7;
    raiz_abierta raiz(L"C:\\d");
    entrada_leida leida = entrada(v, "C:\\d\\s", L"s");
    leida.numero_abierto = 9;
    toma_aperturas(v);
    EXPECT_TRUE(raiz.directorio.mira(leida).hay());
    v["C:\\d\\s"].numero_abierto = 7;
    EXPECT_EQ(raiz.directorio.borra(leida), DWORD{ERROR_CANT_ACCESS_FILE});
    EXPECT_TRUE(v.hay("C:\\d\\s"));
    EXPECT_EQ(toma_aperturas(v),
              (aperturas{{"s", true, mirada, de_todos, de_directorio, sin_seguir},
                         {"s", true, DELETE | SYNCHRONIZE, de_todos, de_directorio, sin_seguir}}));
}

TEST(directorio_abierto, borrar_sin_POSIX) {
    constexpr int ampliado = 21;
    constexpr int sencillo = FileDispositionInfo;
    for (const DWORD codigo : llamadas_desconocidas) {
        volumen_falso v;
        v.pon("C:\\d", {{"a"}, {"b"}});
        v.rechaza_posix = codigo;
        raiz_abierta raiz(L"C:\\d");
        EXPECT_EQ(raiz.directorio.borra(entrada(v, "C:\\d\\a", L"a")), 0u);
        EXPECT_EQ(raiz.directorio.borra(entrada(v, "C:\\d\\b", L"b")), 0u);
        EXPECT_EQ(v.clases_de_borrado, (std::vector<int>{ampliado, sencillo, sencillo}))
            << "learned for the walk";
        EXPECT_EQ(v.borrados, (lista{"a", "b"}));
    }
    volumen_falso v;
    v.pon("C:\\d", {{"a"}});
    v["C:\\d\\a"].codigo_al_borrar = ERROR_SHARING_VIOLATION;
    raiz_abierta raiz(L"C:\\d");
    EXPECT_EQ(raiz.directorio.borra(entrada(v, "C:\\d\\a", L"a")), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(v.clases_de_borrado, std::vector<int>{ampliado}) << "an answer is no refusal";
    EXPECT_TRUE(raiz.trato.posix);
}

TEST(directorio_abierto, registros_que_no_caben_donde_dicen) {
    struct fila {
        const char* que;
        std::function<void(FILE_ID_BOTH_DIR_INFO*)> estropea;  // the third record, "a"
        DWORD codigo;
        lista nombres;
    };
    const fila filas[] = {
        {"whole", [](FILE_ID_BOTH_DIR_INFO*) {}, ERROR_NO_MORE_FILES, {"a", "b"}},
        {"an offset beyond the room", [](auto* r) { r->NextEntryOffset = 0x10000; }, ERROR_INVALID_DATA, {}},
        {"a negative one", [](auto* r) { r->NextEntryOffset = 0xFFFFFFF8; }, ERROR_INVALID_DATA, {}},
        {"a crooked one", [](auto* r) { r->NextEntryOffset -= 2; }, ERROR_INVALID_DATA, {}},
        {"one to the last bytes", [](auto* r) { r->NextEntryOffset = 0xFE00; }, ERROR_INVALID_DATA, {"a"}},
        {"a name longer than the room", [](auto* r) { r->FileNameLength = 0x20000; }, ERROR_INVALID_DATA, {}},
        {"the longest length", [](auto* r) { r->FileNameLength = 0xFFFFFFFF; }, ERROR_INVALID_DATA, {}},
        {"a name one byte longer than the room",
         [](auto* r) { r->FileNameLength = static_cast<ULONG>(0x10000 - 0xE0 - 0x68 + 1); },
         ERROR_INVALID_DATA,
         {}},
        {"the next one behind the room",
         [](auto* r) { r->NextEntryOffset = 0x10000 - 0xE0; },
         ERROR_INVALID_DATA,
         {}},
        {"half a unit", [](auto* r) { r->FileNameLength = 3; }, ERROR_NO_MORE_FILES, {"a", "b"}},
        {"no name", [](auto* r) { r->FileNameLength = 0; }, ERROR_NO_MORE_FILES, {"", "b"}},
    };
    for (const fila& caso : filas) {
        volumen_falso v;
        v.pon("C:\\d", {{"a"}, {"b"}});
        v.estropea = [&](unsigned char* bufer) {
            auto* r = reinterpret_cast<FILE_ID_BOTH_DIR_INFO*>(bufer);
            for (int i = 0; i < 2; ++i) {  // "." and ".."
                r = reinterpret_cast<FILE_ID_BOTH_DIR_INFO*>(reinterpret_cast<unsigned char*>(r) +
                                                             r->NextEntryOffset);
            }
            caso.estropea(r);
            // What is left of the room holds no record that could be taken for one.
            std::memset(bufer + 0xF000, 0xFF, 0x1000);
        };
        raiz_abierta raiz(L"C:\\d");
        DWORD codigo = 0;
        EXPECT_EQ(lee_entera(raiz.directorio, &codigo), caso.nombres) << caso.que;
        EXPECT_EQ(codigo, caso.codigo) << caso.que;
    }
    // Records that overlap come to an end.
    volumen_falso v;
    v.pon("C:\\d", {{"a"}});
    v.estropea = [](unsigned char* bufer) {
        for (std::size_t i = 0; i + 8 <= 0x10000; i += 8) {
            const unsigned long long paso = 8;
            std::memcpy(bufer + i, &paso, sizeof paso);
        }
    };
    raiz_abierta raiz(L"C:\\d");
    DWORD codigo = 0;
    lee_entera(raiz.directorio, &codigo);
    EXPECT_EQ(codigo, DWORD{ERROR_INVALID_DATA});
}

TEST(directorio_abierto, lo_que_es_un_enlace_no_se_abre_y_se_borra_el_mismo) {
    volumen_falso v;
    v.pon("C:\\fuera", {{"g"}});
    v.pon("C:\\d", {{"e", enlace_dir, IO_REPARSE_TAG_MOUNT_POINT, "C:\\fuera"},
                    {"f", FILE_ATTRIBUTE_REPARSE_POINT, IO_REPARSE_TAG_SYMLINK, "C:\\fuera\\g"},
                    {"nube", enlace_dir, 0x9000601A}});
    {
        raiz_abierta raiz(L"C:\\d\\e");
        EXPECT_EQ(raiz.codigo, DWORD{ERROR_CANT_ACCESS_FILE}) << "a root that is a link";
        const ruta_fijada seguida(L"C:\\d\\e");
        trato_con_volumen trato;
        directorio_abierto detras;
        EXPECT_EQ(detras.abre(seguida, trato, interno::enlace_raiz::se_sigue), 0u);
        EXPECT_EQ(lee_entera(detras), lista{"g"});
    }
    raiz_abierta raiz(L"C:\\d");
    directorio_abierto hijo;
    v.aperturas.clear();
    EXPECT_EQ(hijo.abre(raiz.directorio, entrada(v, "C:\\d\\e", L"e")), DWORD{ERROR_CANT_ACCESS_FILE});
    EXPECT_EQ(v.aperturas.size(), 0u) << "its entry said enough";
    // The entry says a directory; what is opened is a link.
    EXPECT_EQ(hijo.abre(raiz.directorio, {L"e", dir, 0, v["C:\\d\\e"].numero(), {}}),
              DWORD{ERROR_CANT_ACCESS_FILE});
    EXPECT_EQ(v.abiertas(), 1u);
    EXPECT_EQ(hijo.abre(raiz.directorio, entrada(v, "C:\\d\\nube", L"nube")), 0u) << "an ordinary directory";
    hijo.cierra();
    for (const wchar_t* cual : {L"e", L"f", L"nube"}) {
        EXPECT_EQ(raiz.directorio.borra(entrada(v, "C:\\d\\" + u8(cual), cual)), 0u);
    }
    EXPECT_EQ(v.arbol("C:\\d"), lista{});
    EXPECT_EQ(v.arbol("C:\\fuera"), lista{"g"});
}

TEST(directorio_abierto, lo_que_no_dice_que_es_no_se_abre) {
    for (const DWORD atributos :
         {DWORD{FILE_ATTRIBUTE_NORMAL}, DWORD{FILE_ATTRIBUTE_READONLY}, DWORD{enlace_dir}}) {
        volumen_falso v;
        v.pon("C:\\d\\s", {{"g"}});
        v["C:\\d\\s"].atributos_abierto = atributos;
        raiz_abierta raiz(L"C:\\d");
        directorio_abierto hijo;
        EXPECT_EQ(hijo.abre(raiz.directorio, entrada(v, "C:\\d\\s", L"s")), DWORD{ERROR_CANT_ACCESS_FILE});
        EXPECT_EQ(v.abiertas(), 1u);
        raiz_abierta como_raiz(L"C:\\d\\s");
        EXPECT_EQ(como_raiz.codigo, DWORD{ERROR_CANT_ACCESS_FILE});
        EXPECT_EQ(v.abiertas(), 1u);
    }
    // The tag is asked for where there is one: not every file system knows that question.
    for (const DWORD atributos : {dir, dir | FILE_ATTRIBUTE_READONLY, enlace_dir}) {
        volumen_falso v;
        v.pon("C:\\d", {{"s", atributos, 0x9000601A}});
        v.rechaza_etiqueta = ERROR_INVALID_PARAMETER;
        raiz_abierta raiz(L"C:\\d");
        directorio_abierto hijo;
        EXPECT_EQ(hijo.abre(raiz.directorio, entrada(v, "C:\\d\\s", L"s")),
                  atributos == enlace_dir ? ERROR_CANT_ACCESS_FILE : 0u)
            << atributos;
    }
    volumen_falso v;
    v.pon("C:\\d\\s", {});
    fallos libro;
    libro.falla_siempre("GetFileInformationByHandle", ERROR_INVALID_FUNCTION);
    const sustituye callado(interno::sistema.GetFileInformationByHandleEx,
                            [](HANDLE, FILE_INFO_BY_HANDLE_CLASS, LPVOID, DWORD) -> BOOL { return FALSE; });
    raiz_abierta raiz(L"C:\\d");
    EXPECT_EQ(raiz.codigo, DWORD{ERROR_CANT_ACCESS_FILE});
    EXPECT_EQ(libro.manijas_abiertas(), 0u);
}

TEST(directorio_abierto, un_directorio_cambiado_no_se_borra) {
    volumen_falso v;
    v.pon("C:\\d\\s", {});
    raiz_abierta raiz(L"C:\\d");
    const entrada_leida leida = entrada(v, "C:\\d\\s", L"s");
    ASSERT_TRUE(v.cambia("C:\\d\\s", {"", dir}));
    EXPECT_EQ(raiz.directorio.borra(leida), DWORD{ERROR_CANT_ACCESS_FILE});
    EXPECT_TRUE(v.hay("C:\\d\\s"));
    ASSERT_TRUE(v.cambia("C:\\d", {"", dir}));
    raiz.directorio.cierra();
    EXPECT_EQ(raiz.directorio.borra_raiz(raiz.ruta), DWORD{ERROR_CANT_ACCESS_FILE});
    EXPECT_TRUE(v.hay("C:\\d"));
}

TEST(directorio_abierto, los_nombres_cuentan_como_estan) {
    for (const char* nombre :
         {"f ", "f.", " f", "...", ". .", "con", "aux.txt", "COM1", "a:b", "~", "\xC3\xB1\xE2\x80\xAE"}) {
        volumen_falso v;
        v.pon("C:\\d", {{nombre}, {"f"}});
        raiz_abierta raiz(L"C:\\d");
        const texto_w unidades = w(nombre);
        const entrada_leida leida = entrada(v, std::string("C:\\d\\") + nombre, unidades.c_str());
        EXPECT_TRUE(raiz.directorio.mira(leida).hay()) << nombre;
        EXPECT_EQ(raiz.directorio.borra(leida), 0u) << nombre;
        EXPECT_EQ(v.arbol("C:\\d"), lista{"f"}) << nombre;
    }
    const texto_w largo(255, L'x');
    volumen_falso v;
    v.pon("C:\\d", {{std::string(255, 'x')}});
    raiz_abierta raiz(L"C:\\d");
    EXPECT_EQ(lee_entera(raiz.directorio), lista{std::string(255, 'x')});
    EXPECT_EQ(raiz.directorio.borra({interno::vista_w(largo), FILE_ATTRIBUTE_NORMAL, 0, 0, {}}), 0u);
}

TEST(directorio_abierto, un_nombre_que_no_es_uno_no_se_toca_nunca) {
    using interno::vista_w;
    volumen_falso v;
    v.pon("C:\\d\\s", {{"g"}});
    v.pon("C:\\fuera", {{"g"}});
    const vista_w nombres[] = {
        L"", L"s\\g", L"s/g", L"..\\fuera", L"\\", L"/", vista_w(L"s\0x", 3), vista_w(L"\0", 1)};
    for (const bool relativo : {true, false}) {
        v.rechaza_relativo = relativo ? 0 : ERROR_NOT_SUPPORTED;
        raiz_abierta raiz(L"C:\\d");
        v.aperturas.clear();
        for (const vista_w nombre : nombres) {
            for (const DWORD atributos : {DWORD{dir}, DWORD{FILE_ATTRIBUTE_NORMAL}}) {
                const entrada_leida leida = {nombre, atributos, 0, 0, {}};
                directorio_abierto hijo;
                EXPECT_EQ(hijo.abre(raiz.directorio, leida), DWORD{ERROR_CANT_ACCESS_FILE});
                EXPECT_EQ(raiz.directorio.borra(leida), DWORD{ERROR_CANT_ACCESS_FILE});
                const interno::existencia que_hay = raiz.directorio.mira(leida);
                EXPECT_EQ(que_hay.cual, interno::existencia::estado::no_se_sabe);
                EXPECT_EQ(que_hay.codigo, DWORD{ERROR_CANT_ACCESS_FILE});
                EXPECT_EQ(raiz.directorio.pon_atributos(leida, 1), DWORD{ERROR_CANT_ACCESS_FILE});
            }
        }
        EXPECT_EQ(v.aperturas.size(), 0u);
    }
    EXPECT_EQ(v.arbol("C:\\d"), (lista{"s\\", "s\\g"}));
}

TEST(directorio_abierto, los_atributos_de_una_entrada) {
    volumen_falso v;
    v.pon("C:\\d", {{"f", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN}});
    raiz_abierta raiz(L"C:\\d");
    const entrada_leida leida = entrada(v, "C:\\d\\f", L"f");
    EXPECT_EQ(raiz.directorio.mira(leida).atributos, DWORD{FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN});
    EXPECT_EQ(raiz.directorio.mira(leida).codigo, DWORD{ERROR_SUCCESS});
    EXPECT_EQ(raiz.directorio.pon_atributos(leida, FILE_ATTRIBUTE_HIDDEN), 0u);
    EXPECT_EQ(v["C:\\d\\f"].atributos, DWORD{FILE_ATTRIBUTE_HIDDEN});
    EXPECT_EQ(raiz.directorio.pon_atributos(leida, 0), 0u);
    EXPECT_EQ(v["C:\\d\\f"].atributos, DWORD{FILE_ATTRIBUTE_NORMAL}) << "0 would change nothing";
    const entrada_leida falta = {L"no", FILE_ATTRIBUTE_NORMAL, 0, 0, {}};
    EXPECT_EQ(raiz.directorio.mira(falta).codigo, DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(raiz.directorio.mira(falta).atributos, DWORD{INVALID_FILE_ATTRIBUTES});
    EXPECT_EQ(raiz.directorio.pon_atributos(falta, 1), DWORD{ERROR_FILE_NOT_FOUND});
    // What cannot be opened, or not be asked once it is open.
    const struct {
        DWORD al_abrir;
        DWORD al_leer;
        interno::existencia espera;
    } filas[] = {
        {ERROR_ACCESS_DENIED, 0, {interno::existencia::estado::hay, 0, leida.atributos}},
        {ERROR_SHARING_VIOLATION, 0, {interno::existencia::estado::hay, 0, leida.atributos}},
        {0, ERROR_ACCESS_DENIED, {interno::existencia::estado::hay, 0, leida.atributos}},
        {0, ERROR_NETNAME_DELETED, {interno::existencia::estado::no_se_sabe, ERROR_NETNAME_DELETED, ~0ul}},
        {ERROR_NETNAME_DELETED, 0, {interno::existencia::estado::no_se_sabe, ERROR_NETNAME_DELETED, ~0ul}},
    };
    for (const auto& fila : filas) {
        v["C:\\d\\f"].codigo_al_abrir = fila.al_abrir;
        v["C:\\d\\f"].codigo_al_leer_marcas = fila.al_leer;
        const interno::existencia que_hay = raiz.directorio.mira(leida);
        EXPECT_EQ(que_hay.cual, fila.espera.cual) << fila.al_abrir << " " << fila.al_leer;
        EXPECT_EQ(que_hay.codigo, fila.espera.codigo) << fila.al_abrir << " " << fila.al_leer;
        EXPECT_EQ(que_hay.atributos, fila.espera.atributos) << fila.al_abrir << " " << fila.al_leer;
    }
    v["C:\\d\\f"].codigo_al_abrir = 0;
    v["C:\\d\\f"].codigo_al_marcar = ERROR_WRITE_PROTECT;
    EXPECT_EQ(raiz.directorio.pon_atributos(leida, 1), DWORD{ERROR_WRITE_PROTECT});
}

TEST(directorio_abierto, una_raiz_que_falta_o_no_es_un_directorio) {
    volumen_falso v;
    v.pon("C:\\d", {{"f"}});
    EXPECT_EQ(raiz_abierta(L"C:\\no").codigo, DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(raiz_abierta(L"C:\\d\\f").codigo, DWORD{ERROR_CANT_ACCESS_FILE});
    v["C:\\d"].codigo_al_abrir = ERROR_SHARING_VIOLATION;
    EXPECT_EQ(raiz_abierta(L"C:\\d").codigo, DWORD{ERROR_SHARING_VIOLATION});
}
