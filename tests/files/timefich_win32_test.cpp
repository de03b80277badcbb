// Dates of files: every export in both flavours, the arithmetic in chosen time zones (through the replaced table)
// and in real ones (a child process under another zone), retries with a file really held by another process, and
// each system call failing in turn.
#include "timefich.h"

#include "apoyo/apoyo.hpp"
#include "apoyo/fallos.hpp"
#include "apoyo/hijo.hpp"
#include "companions/msglocal.hpp"
#include "companions/plataforma.hpp"
#include "companions/reloj.hpp"
#include "files/timefich.hpp"
#include "lumodir.h"

using namespace apoyo;
using interno::i_filetime;
using interno::i_intervalos;
using interno::i_lee_fechas;
using interno::sistema;

namespace {

constexpr long long segundo = 10'000'000;
constexpr long long en_1970 = 116'444'736'000'000'000;
constexpr FILETIME intacta = {0x5A5A5A5A, 0x01234567};

// ---- A file of the test's own, looked at and dated without the library

texto_w nombre_temporal(const char* nombre) {
    wchar_t directorio[MAX_PATH + 1];
    return texto_w(directorio, ::GetTempPathW(MAX_PATH + 1, directorio)) +
           w("lumo_" + std::to_string(::GetCurrentProcessId()) + nombre);
}

class fichero_fechado {
public:
    explicit fichero_fechado(const char* nombre = "_fecha_\u00F1\u00E9.txt")
        : ruta_(nombre_temporal(nombre)) {
        ::CloseHandle(::CreateFileW(ruta_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
        pon(en_1970 + 500'000'000 * segundo, en_1970 + 600'000'000 * segundo,
            en_1970 + 700'000'000 * segundo);
    }
    ~fichero_fechado() {
        ::SetFileAttributesW(ruta_.c_str(), FILE_ATTRIBUTE_NORMAL);
        ::DeleteFileW(ruta_.c_str());
    }
    fichero_fechado(const fichero_fechado&) = delete;
    fichero_fechado& operator=(const fichero_fechado&) = delete;

    void pon(long long creacion, long long acceso, long long modificacion) const {
        const FILETIME fechas[] = {i_filetime(creacion), i_filetime(acceso), i_filetime(modificacion)};
        const HANDLE h = ::CreateFileW(ruta_.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        ASSERT_TRUE(::SetFileTime(h, &fechas[0], &fechas[1], &fechas[2]));
        ::CloseHandle(h);
    }
    WIN32_FILE_ATTRIBUTE_DATA datos() const {
        WIN32_FILE_ATTRIBUTE_DATA d = {};
        EXPECT_TRUE(::GetFileAttributesExW(ruta_.c_str(), GetFileExInfoStandard, &d));
        return d;
    }
    long long modificacion() const { return i_intervalos(datos().ftLastWriteTime); }
    long long segundos() const { return (modificacion() - en_1970) / segundo; }

    const wchar_t* ancha() const { return ruta_.c_str(); }
    texto_a ansi() const { return cp1252(u8(ruta_)); }
    std::string texto() const { return u8(ruta_); }

private:
    texto_w ruta_;
};

// ---- A time zone of the test's choice

long g_minutos_de_hoy;  // local less UTC, as of today
const TIME_ZONE_INFORMATION* g_reglas;

BOOL WINAPI a_local_fingido(const FILETIME* utc, FILETIME* local) {
    *local = i_filetime(i_intervalos(*utc) + g_minutos_de_hoy * 60 * segundo);
    return TRUE;
}
BOOL WINAPI a_utc_fingido(const FILETIME* local, FILETIME* utc) {
    *utc = i_filetime(i_intervalos(*local) - g_minutos_de_hoy * 60 * segundo);
    return TRUE;
}
BOOL WINAPI a_reloj_fingido(const TIME_ZONE_INFORMATION* zona, const SYSTEMTIME* utc, SYSTEMTIME* local) {
    EXPECT_EQ(zona, nullptr) << "the zone is that of the system";
    return ::SystemTimeToTzSpecificLocalTime(g_reglas, utc, local);
}

class zona_fingida {
public:
    explicit zona_fingida(long minutos_de_hoy, const TIME_ZONE_INFORMATION* reglas = nullptr) {
        g_minutos_de_hoy = minutos_de_hoy;
        g_reglas = reglas;
    }

private:
    sustituye<decltype(sistema.FileTimeToLocalFileTime)> local_{sistema.FileTimeToLocalFileTime,
                                                                a_local_fingido};
    sustituye<decltype(sistema.LocalFileTimeToFileTime)> utc_{sistema.LocalFileTimeToFileTime, a_utc_fingido};
    sustituye<decltype(sistema.SystemTimeToTzSpecificLocalTime)> reloj_{
        sistema.SystemTimeToTzSpecificLocalTime, a_reloj_fingido};
};

// Last Sunday of March and of October at 1:00 UTC, one hour; base one hour ahead of UTC.
TIME_ZONE_INFORMATION reglas_madrid() {
    TIME_ZONE_INFORMATION z = {};
    z.Bias = -60;
    z.DaylightBias = -60;
    z.DaylightDate.wMonth = 3;
    z.DaylightDate.wDay = 5;
    z.DaylightDate.wHour = 2;
    z.StandardDate.wMonth = 10;
    z.StandardDate.wDay = 5;
    z.StandardDate.wHour = 3;
    return z;
}

// ---- A file whose date is whatever the test says, also where no file system would keep it

long long g_fecha_fingida;
unsigned g_lecturas;
unsigned g_lecturas_fallidas;
DWORD g_codigo_fingido;

BOOL WINAPI atributos_fingidos(const wchar_t*, GET_FILEEX_INFO_LEVELS, void* datos) {
    if (g_lecturas++ < g_lecturas_fallidas) {
        ::SetLastError(g_codigo_fingido);
        return FALSE;
    }
    WIN32_FILE_ATTRIBUTE_DATA d = {};
    d.ftCreationTime = i_filetime(g_fecha_fingida - 7 * segundo);
    d.ftLastAccessTime = i_filetime(std::min(g_fecha_fingida, INT64_MAX - 7 * segundo) + 7 * segundo);
    d.ftLastWriteTime = i_filetime(g_fecha_fingida);
    *static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(datos) = d;
    return TRUE;
}

class fecha_fingida {
public:
    explicit fecha_fingida(long long intervalos, unsigned fallidas = 0,
                           DWORD codigo = ERROR_SHARING_VIOLATION) {
        g_fecha_fingida = intervalos;
        g_lecturas = 0;
        g_lecturas_fallidas = fallidas;
        g_codigo_fingido = codigo;
    }

private:
    sustituye<decltype(sistema.GetFileAttributesExW)> entrada_{sistema.GetFileAttributesExW,
                                                               atributos_fingidos};
};

std::string mensaje_158391(const std::string& ruta) {
    return "The '" + ruta + "' file cannot be opened to modify its date.";
}
std::string pregunta_158391(const std::string& ruta, DWORD codigo) {
    return mensaje_158391(ruta) + "\n" + u8(interno::strgetlasterror_texto_cod_error(codigo).ver());
}

const papel sujeta_fichero("sujeta_fichero", [] {
    const HANDLE h = ::CreateFileW(hijo_dato().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (h == INVALID_HANDLE_VALUE) {
        return 1;
    }
    hijo_listo();
    hijo_espera_fin();
    ::CloseHandle(h);
    return 0;
});

}  // namespace

// ---- Reading

TEST(timefich, el_valor_UTC_corta_la_fraccion_hacia_1970) {
    struct {
        const char* que;
        long long intervalos;
        long long valor;
    } const filas[] = {
        {"the epoch", en_1970, 0},
        {"a fraction after it", en_1970 + segundo - 1, 0},
        {"one second after", en_1970 + segundo, 1},
        {"a fraction before: cut towards 0, not down", en_1970 - segundo + 1, 0},
        {"half a second before", en_1970 - segundo / 2, 0},
        {"one second before, the same as the error result", en_1970 - segundo, -1},
        {"one second and a half before", en_1970 - segundo - segundo / 2, -1},
        {"two seconds before", en_1970 - 2 * segundo, -2},
        {"1960-01-01", en_1970 - 315'619'200 * segundo, -315'619'200},
        {"1601-01-01 and a second", segundo, -11'644'473'599},
        {"2001-09-09 01:46:40", en_1970 + 1'000'000'000 * segundo, 1'000'000'000},
        {"2038-01-19 03:14:08: beyond 32 bits", en_1970 + 2'147'483'648 * segundo, 2'147'483'648},
        {"2100-01-01", en_1970 + 4'102'444'800 * segundo, 4'102'444'800},
        {"the last FILETIME", INT64_MAX, 910'692'730'085},
    };
    for (const auto& f : filas) {
        SCOPED_TRACE(f.que);
        const fecha_fingida fecha(f.intervalos);
        unsigned int codigo = 77;
        EXPECT_EQ(timefich_obtener_fecha_fichero_UTC(L"C:\\x"), f.valor);
        EXPECT_EQ(timefich_obtener_fecha_fichero_ansi_UTC("C:\\x"), f.valor);
        EXPECT_EQ(timefich_obtener_fecha_fichero_existente_UTC(L"C:\\x"), f.valor);
        EXPECT_EQ(timefich_obtener_fecha_fichero_ansi_existente_UTC("C:\\x"), f.valor);
        EXPECT_EQ(timefich_obtener_fecha_fichero_ansi_y_codigo_error_UTC("C:\\x", &codigo), f.valor);
        EXPECT_EQ(codigo, 0u);
        EXPECT_EQ(timefich_obtener_fecha_fichero_ansi_y_codigo_error_UTC("C:\\x", nullptr), f.valor);
        EXPECT_EQ(g_lecturas, 6u) << "one call to the system a reading";
    }
}

TEST(timefich, el_valor_local_va_una_hora_por_detras_de_la_hora_local) {
    struct {
        const char* que;
        long minutos;
        long long intervalos;
        long long valor;
    } const filas[] = {
        {"UTC", 0, en_1970, -3600},
        {"UTC+1: the shift undoes the zone", 60, en_1970, 0},
        {"UTC+1, half a second", 60, en_1970 + segundo / 2, 0},
        {"UTC+2", 120, en_1970 + 1'000'000'000 * segundo, 1'000'003'600},
        {"UTC+5:30", 330, en_1970, 16'200},
        {"UTC-5", -300, en_1970, -21'600},
        {"UTC-5, before 1970: the fraction is cut before the hour goes", -300, en_1970 - segundo / 2,
         -21'600},
        {"UTC+14", 840, en_1970 - 315'619'200 * segundo, -315'572'400},
        {"UTC, one hour: the hour gives 0", 0, en_1970 + 3600 * segundo, 0},
    };
    for (const auto& f : filas) {
        SCOPED_TRACE(f.que);
        const fecha_fingida fecha(f.intervalos);
        const zona_fingida zona(f.minutos);
        EXPECT_EQ(timefich_obtener_fecha_fichero_u(L"C:\\x"), f.valor);
        EXPECT_EQ(timefich_obtener_fecha_fichero("C:\\x"), f.valor);
        EXPECT_EQ(timefich_obtener_fecha_fichero_existente_u(L"C:\\x"), f.valor);
        EXPECT_EQ(timefich_obtener_fecha_fichero_existente("C:\\x"), f.valor);
    }
}

TEST(timefich, se_lee_la_fecha_de_un_fichero_de_verdad) {
    const fichero_fechado fichero;
    EXPECT_EQ(timefich_obtener_fecha_fichero_UTC(fichero.ancha()), 700'000'000);
    EXPECT_EQ(timefich_obtener_fecha_fichero_ansi_UTC(fichero.ansi().c_str()), 700'000'000);
    fichero.pon(en_1970, en_1970, en_1970);
    EXPECT_EQ(timefich_obtener_fecha_fichero_UTC(fichero.ancha()), 0);
    EXPECT_EQ(timefich_obtener_fecha_fichero_ansi_UTC(fichero.ansi().c_str()), 0);
}

TEST(timefich, un_fichero_que_falta_da_menos_1_en_silencio) {
    const texto_w falta = nombre_temporal("_no_est\u00E1");
    const texto_a falta_a = cp1252(u8(falta));
    EXPECT_EQ(timefich_obtener_fecha_fichero_UTC(falta.c_str()), -1);
    EXPECT_EQ(timefich_obtener_fecha_fichero_ansi_UTC(falta_a.c_str()), -1);
    EXPECT_EQ(timefich_obtener_fecha_fichero_u(falta.c_str()), -1);
    EXPECT_EQ(timefich_obtener_fecha_fichero(falta_a.c_str()), -1);
    unsigned int codigo = 77;
    EXPECT_EQ(timefich_obtener_fecha_fichero_ansi_y_codigo_error_UTC(falta_a.c_str(), &codigo), -1);
    EXPECT_EQ(codigo, static_cast<unsigned>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(timefich_obtener_fecha_fichero_ansi_y_codigo_error_UTC((falta_a + "\\x").c_str(), &codigo), -1);
    EXPECT_EQ(codigo, static_cast<unsigned>(ERROR_PATH_NOT_FOUND));
    EXPECT_EQ(timefich_obtener_fecha_fichero_ansi_y_codigo_error_UTC(falta_a.c_str(), nullptr), -1);
    EXPECT_TRUE(toma_esperas().empty()) << "readers of time values do not insist";
}

TEST(timefich, un_fichero_existente_que_falta_se_informa_con_su_nombre) {
    const texto_w falta = nombre_temporal("_no_est\u00E1 %s");
    const texto_a falta_a = cp1252(u8(falta));
    EXPECT_EQ(timefich_obtener_fecha_fichero_existente_UTC(falta.c_str()), -1);
    EXPECT_EQ(timefich_obtener_fecha_fichero_ansi_existente_UTC(falta_a.c_str()), -1);
    EXPECT_EQ(timefich_obtener_fecha_fichero_existente_u(falta.c_str()), -1);
    EXPECT_EQ(timefich_obtener_fecha_fichero_existente(falta_a.c_str()), -1);
    const std::vector<informe> informes = toma_informes();
    EXPECT_EQ(informes.size(), 4u);
    for (const informe& i : informes) {
        EXPECT_EQ(i.detalle, "This file " + u8(falta) + " does not exist");
        EXPECT_EQ(i.etiqueta, "timefich (LUMODIR.DLL)");
    }
}

TEST(timefich, las_fechas_locales_se_leen_de_una_vez_o_tras_reintentos) {
    for (unsigned fallidas = 0; fallidas <= 6; ++fallidas) {
        for (const bool ancha : {true, false}) {
            SCOPED_TRACE(std::to_string(fallidas) + (ancha ? " wide" : " 8-bit"));
            const fecha_fingida fecha(en_1970 + 1000 * segundo, fallidas);
            const zona_fingida zona(120);
            FILETIME creacion = intacta;
            FILETIME modificacion = intacta;
            const bool bien = fallidas < 5;
            if (ancha) {
                EXPECT_EQ(timefich_obtener_fecha_u(L"C:\\x", &creacion, &modificacion), bien ? 1 : 0);
            } else {
                timefich_obtener_fecha("C:\\x", &creacion, &modificacion);
            }
            EXPECT_EQ(toma_esperas(), std::vector<unsigned long>(bien ? fallidas : 4, 100));
            EXPECT_EQ(g_lecturas, bien ? fallidas + 1 : 5);
            if (bien) {
                EXPECT_EQ(i_intervalos(creacion), en_1970 + (1000 - 7 + 7200) * segundo);
                EXPECT_EQ(i_intervalos(modificacion), en_1970 + (1000 + 7200) * segundo);
            } else {
                const informe dado = toma_el_informe();
                EXPECT_EQ(dado.expresion, "ok == CIERTO");
                EXPECT_EQ(dado.detalle, "C:\\x");
                EXPECT_EQ(dado.etiqueta, "timefich (LUMODIR.DLL)");
                EXPECT_EQ(i_intervalos(creacion), i_intervalos(intacta));
                EXPECT_EQ(i_intervalos(modificacion), i_intervalos(intacta));
            }
        }
    }
}

TEST(timefich, se_lee_solo_la_fecha_local_pedida) {
    const fecha_fingida fecha(en_1970);
    const zona_fingida zona(-60);
    FILETIME una = intacta;
    EXPECT_EQ(timefich_obtener_fecha_u(L"C:\\x", &una, nullptr), 1);
    EXPECT_EQ(i_intervalos(una), en_1970 - (7 + 3600) * segundo);
    EXPECT_EQ(timefich_obtener_fecha_u(L"C:\\x", nullptr, &una), 1);
    EXPECT_EQ(i_intervalos(una), en_1970 - 3600 * segundo);
    timefich_obtener_fecha("C:\\x", &una, nullptr);
    EXPECT_EQ(i_intervalos(una), en_1970 - (7 + 3600) * segundo);
    timefich_obtener_fecha("C:\\x", nullptr, &una);
    EXPECT_EQ(i_intervalos(una), en_1970 - 3600 * segundo);
    // What the other one is does not matter, though it be none.
    const zona_fingida al_este(60);
    static long long imposible;
    const sustituye conversion(
        sistema.FileTimeToLocalFileTime, [](const FILETIME* utc, FILETIME* local) WINAPI {
            return i_intervalos(*utc) == imposible ? FALSE : a_local_fingido(utc, local);
        });
    const fecha_fingida otra(3 * segundo);
    imposible = -4 * segundo;
    EXPECT_EQ(timefich_obtener_fecha_u(L"C:\\x", nullptr, &una), 1);
    EXPECT_EQ(i_intervalos(una), (3 + 3600) * segundo);
    imposible = 3 * segundo;
    EXPECT_EQ(timefich_obtener_fecha_u(L"C:\\x", &una, nullptr), 1);
    EXPECT_EQ(i_intervalos(una), (-4 + 3600) * segundo);
}

TEST(timefich, las_tres_fechas_se_leen_en_UTC) {
    const fecha_fingida fecha(en_1970);
    const interno::datos_de_fichero datos = i_lee_fechas(L"C:\\x");
    EXPECT_TRUE(datos.leidos());
    EXPECT_EQ(datos.codigo, 0u);
    EXPECT_EQ(i_intervalos(datos.ftCreationTime), en_1970 - 7 * segundo);
    EXPECT_EQ(i_intervalos(datos.ftLastAccessTime), en_1970 + 7 * segundo);
    EXPECT_EQ(i_intervalos(datos.ftLastWriteTime), en_1970);

    EXPECT_EQ(i_lee_fechas(nullptr).codigo, DWORD{ERROR_INVALID_PARAMETER});
    ESPERA_INFORMES("(fichero) != NULL");
}

TEST(timefich, NULL_se_informa_y_no_se_toca_nada) {
    FILETIME fecha = intacta;
    unsigned int codigo = 0;
    struct {
        const char* que;
        std::function<long long()> llama;
        long long respuesta;
        const char* informe;
    } const filas[] = {
        {"obtener_fecha_u", [&] { return timefich_obtener_fecha_u(nullptr, &fecha, &fecha); }, 0,
         "(fichero) != NULL"},
        {"obtener_fecha", [&] { return timefich_obtener_fecha(nullptr, &fecha, &fecha), 0; }, 0,
         "(fichero) != NULL"},
        {"obtener_fecha_u sin fechas",
         [] { return timefich_obtener_fecha_u(L"C:\\\u00F1", nullptr, nullptr); }, 0,
         "local_creacion != NULL || local_modificacion != NULL"},
        {"obtener_fecha sin fechas", [] { return timefich_obtener_fecha("C:\\\xF1", nullptr, nullptr), 0; },
         0, "local_creacion != NULL || local_modificacion != NULL"},
        {"obtener_fecha_u sin nada", [] { return timefich_obtener_fecha_u(nullptr, nullptr, nullptr); }, 0,
         "local_creacion != NULL || local_modificacion != NULL"},
        {"asignar_fecha_u", [&] { return timefich_asignar_fecha_u(nullptr, &fecha, &fecha); }, 0,
         "fichero_u != NULL"},
        {"asignar_fecha", [&] { return timefich_asignar_fecha(nullptr, &fecha, &fecha), 0; }, 0,
         "fichero_u != NULL"},
        {"asignar_fecha_u sin fechas",
         [] { return timefich_asignar_fecha_u(L"C:\\\u00F1", nullptr, nullptr); }, 0,
         "local_creacion != NULL || local_modificacion != NULL"},
        {"asignar_fecha sin fechas", [] { return timefich_asignar_fecha("C:\\\xF1", nullptr, nullptr), 0; },
         0, "local_creacion != NULL || local_modificacion != NULL"},
        {"asignar_fecha_u sin nada", [] { return timefich_asignar_fecha_u(nullptr, nullptr, nullptr); }, 0,
         "local_creacion != NULL || local_modificacion != NULL"},
        {"UTC", [] { return timefich_obtener_fecha_fichero_UTC(nullptr); }, -1, "(fichero) != NULL"},
        {"ansi_UTC", [] { return timefich_obtener_fecha_fichero_ansi_UTC(nullptr); }, -1,
         "(fichero) != NULL"},
        {"existente_UTC", [] { return timefich_obtener_fecha_fichero_existente_UTC(nullptr); }, -1,
         "(fichero) != NULL"},
        {"ansi_existente_UTC", [] { return timefich_obtener_fecha_fichero_ansi_existente_UTC(nullptr); }, -1,
         "(fichero) != NULL"},
        {"ansi_y_codigo",
         [&] { return timefich_obtener_fecha_fichero_ansi_y_codigo_error_UTC(nullptr, &codigo); }, -1,
         "(fichero) != NULL"},
        {"local", [] { return timefich_obtener_fecha_fichero_u(nullptr); }, -1, "(fichero) != NULL"},
        {"local 8-bit", [] { return timefich_obtener_fecha_fichero(nullptr); }, -1, "(fichero) != NULL"},
        {"existente", [] { return timefich_obtener_fecha_fichero_existente_u(nullptr); }, -1,
         "(fichero) != NULL"},
        {"existente 8-bit", [] { return timefich_obtener_fecha_fichero_existente(nullptr); }, -1,
         "(fichero) != NULL"},
        {"asignar UTC", [] { return timefich_asignar_fecha_fichero_UTC(nullptr, 5); }, 0,
         "fichero_u != NULL"},
        {"asignar ansi UTC", [] { return timefich_asignar_fecha_fichero_ansi_UTC(nullptr, 5); }, 0,
         "fichero_u != NULL"},
        {"asignar si es posible", [] { return timefich_asignar_fecha_fichero_UTC_si_es_posible(nullptr, 5); },
         0, "fichero_u != NULL"},
        {"asignar local", [] { return timefich_asignar_fecha_fichero_unicode(nullptr, 5); }, 0,
         "fichero_u != NULL"},
        {"asignar local 8-bit", [] { return timefich_asignar_fecha_fichero(nullptr, 5); }, 0,
         "fichero_u != NULL"},
        {"convertir", [] { return timefich_convertir_fecha(nullptr); }, 0, "(fecha) != NULL"},
    };
    for (const auto& f : filas) {
        SCOPED_TRACE(f.que);
        EXPECT_EQ(f.llama(), f.respuesta);
        const informe dado = toma_el_informe();
        EXPECT_EQ(dado.expresion, f.informe);
        EXPECT_EQ(dado.etiqueta, "timefich (LUMODIR.DLL)");
        const bool con_ruta = std::string(f.que).find("sin fechas") != std::string::npos;
        if (con_ruta) {
            EXPECT_EQ(dado.detalle, "C:\\\u00F1");
        }
        EXPECT_TRUE(toma_esperas().empty());
    }
    EXPECT_EQ(i_intervalos(fecha), i_intervalos(intacta));
    EXPECT_EQ(codigo, static_cast<unsigned>(ERROR_INVALID_PARAMETER));
}

// ---- Setting

const FILETIME* g_creacion_dada;
const FILETIME* g_modificacion_dada;
BOOL WINAPI pone_fechas_mirando(HANDLE h, const FILETIME* creacion, const FILETIME* acceso,
                                const FILETIME* mod) {
    EXPECT_EQ(acceso, nullptr) << "the last-access date is never changed";
    EXPECT_EQ(::GetLastError(), static_cast<DWORD>(ERROR_SUCCESS)) << "the error code is cleared before";
    g_creacion_dada = creacion;
    g_modificacion_dada = mod;
    return ::SetFileTime(h, creacion, acceso, mod);
}

TEST(timefich, se_asigna_la_modificacion_y_lo_demas_queda) {
    struct {
        const char* que;
        std::function<unsigned short(const fichero_fechado&, long long)> asigna;
        long long menos_utc;  // what the file's UTC date is ahead of the value, in UTC+2
    } const formas[] = {
        {"UTC", [](auto& f, long long v) { return timefich_asignar_fecha_fichero_UTC(f.ancha(), v); }, 0},
        {"ansi UTC",
         [](auto& f, long long v) { return timefich_asignar_fecha_fichero_ansi_UTC(f.ansi().c_str(), v); },
         0},
        {"si es posible",
         [](auto& f, long long v) { return timefich_asignar_fecha_fichero_UTC_si_es_posible(f.ancha(), v); },
         0},
        {"local", [](auto& f, long long v) { return timefich_asignar_fecha_fichero_unicode(f.ancha(), v); },
         -3600},
        {"local 8-bit",
         [](auto& f, long long v) { return timefich_asignar_fecha_fichero(f.ansi().c_str(), v); }, -3600},
    };
    const zona_fingida zona(120);
    const sustituye mira(sistema.SetFileTime, pone_fechas_mirando);
    const FILETIME otra = {};
    for (const auto& forma : formas) {
        const fichero_fechado fichero;
        const WIN32_FILE_ATTRIBUTE_DATA antes = fichero.datos();
        for (const long long valor :
             {1'000'000'000LL, 0LL, -86'400LL * 365, 1'720'000'000LL, 2'147'483'648LL}) {
            SCOPED_TRACE(forma.que + std::string(" ") + std::to_string(valor));
            g_creacion_dada = &otra;
            EXPECT_EQ(forma.asigna(fichero, valor), 1);
            // Unix file systems keep no creation date to look at: what is asked of the system counts.
            EXPECT_EQ(g_creacion_dada, nullptr);
            EXPECT_EQ(fichero.modificacion(), en_1970 + (valor + forma.menos_utc) * segundo);
            EXPECT_EQ(i_intervalos(fichero.datos().ftLastAccessTime), i_intervalos(antes.ftLastAccessTime));
            if (forma.menos_utc == 0) {
                EXPECT_EQ(timefich_obtener_fecha_fichero_UTC(fichero.ancha()), valor);
            } else {
                EXPECT_EQ(timefich_obtener_fecha_fichero_u(fichero.ancha()), valor);
                EXPECT_EQ(timefich_obtener_fecha_fichero(fichero.ansi().c_str()), valor);
            }
        }
    }
}

TEST(timefich, un_valor_local_se_relee_igual_en_la_zona_de_verdad) {
    const fichero_fechado fichero;
    for (const long long valor : {0LL, 1'704'067'200LL, 1'720'000'000LL, -1'000'000LL}) {
        EXPECT_EQ(timefich_asignar_fecha_fichero_unicode(fichero.ancha(), valor), 1);
        EXPECT_EQ(timefich_obtener_fecha_fichero_u(fichero.ancha()), valor);
    }
}

TEST(timefich, se_asignan_las_fechas_locales_dadas) {
    const sustituye mira(sistema.SetFileTime, pone_fechas_mirando);
    const zona_fingida zona(90);
    const FILETIME una = i_filetime(en_1970 + 11'000 * segundo + 1234560);
    const FILETIME otra = i_filetime(en_1970 + 22'000 * segundo + 7654320);
    struct {
        const FILETIME* creacion;
        const FILETIME* modificacion;
    } const filas[] = {{&una, &otra}, {&una, nullptr}, {nullptr, &otra}};
    for (const auto& f : filas) {
        for (const bool ancha : {true, false}) {
            const fichero_fechado fichero;
            const WIN32_FILE_ATTRIBUTE_DATA antes = fichero.datos();
            if (ancha) {
                EXPECT_EQ(timefich_asignar_fecha_u(fichero.ancha(), f.creacion, f.modificacion), 1);
            } else {
                timefich_asignar_fecha(fichero.ansi().c_str(), f.creacion, f.modificacion);
            }
            EXPECT_EQ(g_creacion_dada == nullptr, f.creacion == nullptr);
            EXPECT_EQ(g_modificacion_dada == nullptr, f.modificacion == nullptr);
            EXPECT_EQ(fichero.modificacion(), f.modificacion == nullptr
                                                  ? i_intervalos(antes.ftLastWriteTime)
                                                  : i_intervalos(otra) - 5400 * segundo);
            FILETIME c = intacta;
            FILETIME m = intacta;
            EXPECT_EQ(timefich_obtener_fecha_u(fichero.ancha(), &c, &m), 1);
            if (f.modificacion != nullptr) {
                EXPECT_EQ(i_intervalos(m), i_intervalos(otra));
            }
        }
    }
}

BOOL WINAPI pone_fechas_en_memoria(HANDLE, const FILETIME* creacion, const FILETIME*, const FILETIME* mod) {
    static FILETIME c;
    static FILETIME m;
    g_creacion_dada = creacion == nullptr ? nullptr : &(c = *creacion);
    g_modificacion_dada = mod == nullptr ? nullptr : &(m = *mod);
    return TRUE;
}

// Not every file system keeps creation dates: what is asked of the system is looked at.
TEST(timefich, la_fecha_de_creacion_llega_al_sistema_en_UTC) {
    const sustituye mira(sistema.SetFileTime, pone_fechas_en_memoria);
    const zona_fingida zona(-210);
    const fichero_fechado fichero;
    const FILETIME una = i_filetime(en_1970 + 11'000 * segundo + 3);
    EXPECT_EQ(timefich_asignar_fecha_u(fichero.ancha(), &una, nullptr), 1);
    ASSERT_NE(g_creacion_dada, nullptr);
    EXPECT_EQ(i_intervalos(*g_creacion_dada), i_intervalos(una) + 210 * 60 * segundo);
    EXPECT_EQ(g_modificacion_dada, nullptr);
}

HANDLE WINAPI abre_dejando_un_codigo(const wchar_t* ruta, DWORD acceso, DWORD compartir,
                                     SECURITY_ATTRIBUTES* seguridad, DWORD disposicion, DWORD indicadores,
                                     HANDLE plantilla) {
    const HANDLE abierto =
        ::CreateFileW(ruta, acceso, compartir, seguridad, disposicion, indicadores, plantilla);
    ::SetLastError(ERROR_ALREADY_EXISTS);
    return abierto;
}

unsigned g_aperturas;
HANDLE WINAPI abre_contando(const wchar_t* ruta, DWORD acceso, DWORD compartir,
                            SECURITY_ATTRIBUTES* seguridad, DWORD disposicion, DWORD indicadores,
                            HANDLE plantilla) {
    ++g_aperturas;
    EXPECT_EQ(acceso, static_cast<DWORD>(GENERIC_WRITE));
    EXPECT_EQ(compartir, 0u);
    EXPECT_EQ(disposicion, static_cast<DWORD>(OPEN_EXISTING));
    return ::CreateFileW(ruta, acceso, compartir, seguridad, disposicion, indicadores, plantilla);
}

TEST(timefich, un_valor_fuera_de_FILETIME_no_abre_nada) {
    const sustituye cuenta(sistema.CreateFileW, abre_contando);
    const sustituye mira(sistema.SetFileTime, pone_fechas_en_memoria);
    const fichero_fechado fichero;
    struct {
        const char* que;
        long minutos;
        long long valor;
        bool utc;
        bool local;
    } const filas[] = {
        {"the smallest number", 0, INT64_MIN, false, false},
        {"the largest number", 0, INT64_MAX, false, false},
        {"an hour less than the largest", 0, INT64_MAX - 3600, false, false},
        {"a second before 1601", 0, -11'644'473'601, false, true},
        {"1601 itself, which leaves dates as they are", 0, -11'644'473'600, false, true},
        {"the first second of 1601", 0, -11'644'473'599, true, true},
        {"an hour before 1601, whose local form is 1601", 0, -11'644'477'200, false, false},
        {"an hour before 1601 and a second", 0, -11'644'477'199, false, true},
        {"1601 in UTC+2: before 1601 in UTC", 120, -11'644'473'600, false, false},
        {"the last second", 0, 910'692'730'085, true, false},
        {"beyond the last second", 0, 910'692'730'086, false, false},
        {"an hour before the last second", 0, 910'692'730'085 - 3600, true, true},
        {"the largest that would not overflow in intervals", 0, INT64_MAX / segundo, false, false},
    };
    for (const auto& f : filas) {
        SCOPED_TRACE(f.que);
        const zona_fingida zona(f.minutos);
        g_aperturas = 0;
        EXPECT_EQ(timefich_asignar_fecha_fichero_UTC(fichero.ancha(), f.valor), f.utc ? 1 : 0);
        EXPECT_EQ(timefich_asignar_fecha_fichero_ansi_UTC(fichero.ansi().c_str(), f.valor), f.utc ? 1 : 0);
        EXPECT_EQ(timefich_asignar_fecha_fichero_UTC_si_es_posible(fichero.ancha(), f.valor), f.utc ? 1 : 0);
        EXPECT_EQ(g_aperturas, f.utc ? 3u : 0u);
        g_aperturas = 0;
        EXPECT_EQ(timefich_asignar_fecha_fichero_unicode(fichero.ancha(), f.valor), f.local ? 1 : 0);
        EXPECT_EQ(timefich_asignar_fecha_fichero(fichero.ansi().c_str(), f.valor), f.local ? 1 : 0);
        EXPECT_EQ(g_aperturas, f.local ? 2u : 0u);
        EXPECT_TRUE(toma_esperas().empty());
    }
}

// To the system such a date says "leave it as it is" (0), "and from now on too" (-1) or "no longer so" (-2): it would answer
// success and date nothing.
TEST(timefich, una_fecha_que_dice_dejarla_no_abre_ni_pregunta_nada) {
    const sustituye cuenta(sistema.CreateFileW, abre_contando);
    const fichero_fechado fichero;
    const long long antes = fichero.modificacion();
    for (const long minutos : {0l, 60l, -210l}) {
        const zona_fingida zona(minutos);
        for (const long long utc : {0ll, -1ll, -2ll, -3ll, INT64_MIN + 24 * 3600 * segundo}) {
            SCOPED_TRACE(testing::Message() << utc << " in the zone " << minutos);
            const FILETIME deja = i_filetime(utc + minutos * 60 * segundo);
            const FILETIME buena = i_filetime(en_1970);
            struct {
                const FILETIME* creacion;
                const FILETIME* modificacion;
            } const filas[] = {
                {&deja, nullptr}, {nullptr, &deja}, {&deja, &deja}, {&buena, &deja}, {&deja, &buena}};
            g_aperturas = 0;
            for (const auto& f : filas) {
                EXPECT_EQ(timefich_asignar_fecha_u(fichero.ancha(), f.creacion, f.modificacion), 0);
                timefich_asignar_fecha(fichero.ansi().c_str(), f.creacion, f.modificacion);
            }
            EXPECT_EQ(g_aperturas, 0u);
            EXPECT_TRUE(toma_preguntas().empty());
            EXPECT_TRUE(toma_esperas().empty());
            EXPECT_EQ(fichero.modificacion(), antes);
        }
        // The first date that is one.
        const sustituye mira(sistema.SetFileTime, pone_fechas_en_memoria);
        const FILETIME primera = i_filetime(1 + minutos * 60 * segundo);
        EXPECT_EQ(timefich_asignar_fecha_u(fichero.ancha(), nullptr, &primera), 1);
        ASSERT_NE(g_modificacion_dada, nullptr);
        EXPECT_EQ(i_intervalos(*g_modificacion_dada), 1);
    }
}

// ---- A file that another process holds

TEST(timefich, con_el_fichero_ocupado_se_reintenta_y_se_pregunta) {
    struct {
        const char* que;
        std::vector<unsigned short> respuestas;  // of the question, in order
        int soltar_en_espera;                    // the pause during which the other process lets go; 0: none
        bool soltar_en_pregunta;
        std::size_t esperas;
        unsigned short resultado;
    } const filas[] = {
        {"freed during the third pause", {}, 3, false, 3, 1},
        {"the user frees it and tries again", {1}, 0, true, 5, 1},
        {"the user gives up", {0}, 0, false, 5, 0},
        {"asked again after each attempt", {1, 1, 0}, 0, false, 5, 0},
        {"any answer but 1 gives up", {2}, 0, false, 5, 0},
    };
    for (const auto& f : filas) {
        SCOPED_TRACE(f.que);
        const fichero_fechado fichero;
        const proceso_hijo otro("sujeta_fichero", w(fichero.texto()));
        ASSERT_TRUE(otro.espera_listo());
        const auto suelta = [&] {
            otro.suelta();
            EXPECT_EQ(otro.espera_fin(), 0u);
        };
        int pausa = 0;
        al_dormir([&](unsigned long) {
            if (++pausa == f.soltar_en_espera) {
                suelta();
            }
        });
        std::size_t veces = 0;
        contesta([&](const pregunta&) {
            if (f.soltar_en_pregunta) {
                suelta();
            }
            return veces < f.respuestas.size() ? f.respuestas[veces++] : static_cast<unsigned short>(0);
        });
        EXPECT_EQ(timefich_asignar_fecha_fichero_UTC(fichero.ancha(), 1234), f.resultado);
        EXPECT_EQ(toma_esperas(), std::vector<unsigned long>(f.esperas, 100));
        const std::vector<pregunta> preguntas = toma_preguntas();
        EXPECT_EQ(preguntas.size(), f.respuestas.size());
        for (const pregunta& p : preguntas) {
            EXPECT_EQ(p.mensaje, pregunta_158391(fichero.texto(), ERROR_SHARING_VIOLATION));
            EXPECT_EQ(p.codigo, static_cast<unsigned long>(ERROR_SHARING_VIOLATION));
        }
        EXPECT_EQ(fichero.segundos(), f.resultado == 1 ? 1234 : 700'000'000);
    }
}

TEST(timefich, todos_los_que_asignan_preguntan_menos_el_que_no_insiste) {
    const fichero_fechado fichero;
    const proceso_hijo otro("sujeta_fichero", w(fichero.texto()));
    ASSERT_TRUE(otro.espera_listo());
    const FILETIME fecha = i_filetime(en_1970);
    struct {
        const char* que;
        std::function<unsigned short()> asigna;
        std::size_t preguntas;
    } const filas[] = {
        {"u", [&] { return timefich_asignar_fecha_u(fichero.ancha(), nullptr, &fecha); }, 1},
        {"8-bit", [&] { return timefich_asignar_fecha(fichero.ansi().c_str(), &fecha, nullptr), FALSO; }, 1},
        {"UTC", [&] { return timefich_asignar_fecha_fichero_UTC(fichero.ancha(), 5); }, 1},
        {"ansi UTC", [&] { return timefich_asignar_fecha_fichero_ansi_UTC(fichero.ansi().c_str(), 5); }, 1},
        {"si es posible",
         [&] { return timefich_asignar_fecha_fichero_UTC_si_es_posible(fichero.ancha(), 5); }, 0},
        {"local", [&] { return timefich_asignar_fecha_fichero_unicode(fichero.ancha(), 5); }, 1},
        {"local 8-bit", [&] { return timefich_asignar_fecha_fichero(fichero.ansi().c_str(), 5); }, 1},
    };
    for (const auto& f : filas) {
        SCOPED_TRACE(f.que);
        EXPECT_EQ(f.asigna(), 0);
        EXPECT_EQ(toma_esperas(), std::vector<unsigned long>(5, 100));
        const std::vector<pregunta> preguntas = toma_preguntas();
        ASSERT_EQ(preguntas.size(), f.preguntas);
        for (const pregunta& p : preguntas) {
            EXPECT_EQ(p.mensaje, pregunta_158391(fichero.texto(), ERROR_SHARING_VIOLATION));
        }
    }
    // A reading opens nothing: it is not disturbed.
    EXPECT_EQ(timefich_obtener_fecha_fichero_UTC(fichero.ancha()), 700'000'000);
    FILETIME leida = intacta;
    EXPECT_EQ(timefich_obtener_fecha_u(fichero.ancha(), nullptr, &leida), 1);
    EXPECT_TRUE(toma_esperas().empty());

    lumodir_establece_modo_servicio_sin_reintentos();
    for (const auto& f : filas) {
        SCOPED_TRACE(f.que);
        EXPECT_EQ(f.asigna(), 0);
        EXPECT_TRUE(toma_esperas().empty()) << "one attempt in service mode";
        EXPECT_TRUE(toma_preguntas().empty());
    }
}

// A superuser of Unix opens a read-only file for writing where Windows refuses it.
HANDLE WINAPI abre_como_windows(const wchar_t* r, DWORD a, DWORD c, SECURITY_ATTRIBUTES* s, DWORD d, DWORD i,
                                HANDLE p) {
    const DWORD atributos = ::GetFileAttributesW(r);
    if (atributos != INVALID_FILE_ATTRIBUTES && (atributos & FILE_ATTRIBUTE_READONLY) != 0) {
        ::SetLastError(ERROR_ACCESS_DENIED);
        return INVALID_HANDLE_VALUE;
    }
    return ::CreateFileW(r, a, c, s, d, i, p);
}

TEST(timefich, un_fichero_que_falta_o_protegido_no_se_fecha) {
    const sustituye windows(sistema.CreateFileW, abre_como_windows);
    const fichero_fechado fichero;
    ::SetFileAttributesW(fichero.ancha(), FILE_ATTRIBUTE_READONLY);
    const texto_w falta = nombre_temporal("_no_est\u00E1");
    EXPECT_EQ(timefich_asignar_fecha_fichero_UTC(fichero.ancha(), 5), 0);
    EXPECT_EQ(timefich_asignar_fecha_fichero_UTC(falta.c_str(), 5), 0);
    const std::vector<pregunta> preguntas = toma_preguntas();
    ASSERT_EQ(preguntas.size(), 2u);
    EXPECT_EQ(preguntas[0].codigo, static_cast<unsigned long>(ERROR_ACCESS_DENIED));
    EXPECT_EQ(preguntas[1].codigo, static_cast<unsigned long>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(preguntas[1].mensaje, pregunta_158391(u8(falta), ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(toma_esperas().size(), 10u);
    EXPECT_EQ(fichero.segundos(), 700'000'000);
    EXPECT_EQ(::GetFileAttributesW(falta.c_str()), INVALID_FILE_ATTRIBUTES) << "nothing is created";
}

// ---- Every system call failing in turn

TEST(timefich, cada_llamada_al_sistema_que_falla_al_asignar_se_nota) {
    // The calls of a setting: conversion, open, set, close.
    struct {
        const char* que;
        unsigned falla_en;
        bool siempre;
        unsigned short resultado;
        std::vector<std::string> informes;
        std::size_t esperas;
        std::size_t preguntas;
    } const filas[] = {
        {"nothing fails", 0, false, 1, {}, 0, 0},
        {"conversion", 1, false, 0, {"resp != FALSE"}, 0, 0},
        {"conversion, for ever", 1, true, 0, {"resp != FALSE"}, 0, 0},
        {"open once", 2, false, 1, {}, 1, 0},
        {"open for ever", 2, true, 0, {}, 5, 1},
        {"set once", 3, false, 1, {}, 1, 0},
        {"set, and everything after it", 3, true, 0, {}, 5, 1},
        {"close: the date is set", 4, false, 1, {"resp != FALSE"}, 0, 0},
        {"close, for ever", 4, true, 1, {"resp != FALSE"}, 0, 0},
        {"the fifth call does not come", 5, false, 1, {}, 0, 0},
    };
    for (const DWORD codigo : {DWORD{ERROR_NOT_READY}, DWORD{ERROR_SUCCESS}}) {
        for (const auto& f : filas) {
            SCOPED_TRACE(f.que);
            const fichero_fechado fichero;
            {
                fallos fallo;
                fallo.falla(f.falla_en, codigo, f.siempre);
                EXPECT_EQ(timefich_asignar_fecha_fichero_unicode(fichero.ancha(), 1000), f.resultado);
                EXPECT_EQ(fallo.manijas_abiertas(), 0u);
            }
            const std::vector<informe> informes = toma_informes();
            ASSERT_EQ(informes.size(), f.informes.size());
            for (const informe& i : informes) {
                EXPECT_EQ(i.expresion, "resp != FALSE");
                EXPECT_EQ(i.detalle, f.falla_en == 4 ? fichero.texto() : "(NULL)");
            }
            EXPECT_EQ(toma_esperas().size(), f.esperas);
            const std::vector<pregunta> preguntas = toma_preguntas();
            ASSERT_EQ(preguntas.size(), f.preguntas);
            for (const pregunta& p : preguntas) {
                EXPECT_EQ(p.codigo, codigo);
                EXPECT_EQ(p.mensaje, codigo == ERROR_SUCCESS ? mensaje_158391(fichero.texto())
                                                             : pregunta_158391(fichero.texto(), codigo));
            }
            EXPECT_EQ(fichero.segundos(), f.resultado == 1 ? 4600 : 700'000'000);
        }
    }
    // A system that fails without a code has none, whatever was the last one before.
    for (const DWORD codigo : {DWORD{ERROR_NOT_READY}, DWORD{ERROR_SUCCESS}}) {
        static DWORD el_que_da;
        el_que_da = codigo;
        const fichero_fechado fichero;
        const sustituye falla(sistema.SetFileTime,
                              [](HANDLE, const FILETIME*, const FILETIME*, const FILETIME*) WINAPI {
                                  if (el_que_da != ERROR_SUCCESS) {
                                      ::SetLastError(el_que_da);
                                  }
                                  return BOOL{FALSE};
                              });
        const sustituye abre(sistema.CreateFileW, abre_dejando_un_codigo);
        EXPECT_EQ(timefich_asignar_fecha_fichero_unicode(fichero.ancha(), 1000), 0);
        const std::vector<pregunta> preguntas = toma_preguntas();
        ASSERT_EQ(preguntas.size(), 1u);
        EXPECT_EQ(preguntas[0].codigo, codigo);
        toma_esperas();
    }
}

TEST(timefich, una_fecha_local_que_no_se_convierte_se_informa) {
    const fichero_fechado fichero;
    const FILETIME fecha = i_filetime(en_1970);
    for (unsigned falla_en = 1; falla_en <= 2; ++falla_en) {
        for (const bool ancha : {true, false}) {
            fallos fallo;
            fallo.falla(falla_en, ERROR_INVALID_PARAMETER);
            if (ancha) {
                EXPECT_EQ(timefich_asignar_fecha_u(fichero.ancha(), &fecha, &fecha), 0);
            } else {
                timefich_asignar_fecha(fichero.ansi().c_str(), &fecha, &fecha);
            }
            ESPERA_INFORMES("resp != FALSE");
            EXPECT_EQ(fallo.llamadas(), falla_en) << "nothing is opened";
        }
        for (const bool ancha : {true, false}) {
            fallos fallo;
            fallo.falla(falla_en + 1, ERROR_INVALID_PARAMETER);  // the first call reads
            FILETIME creacion = intacta;
            FILETIME modificacion = intacta;
            if (ancha) {
                EXPECT_EQ(timefich_obtener_fecha_u(fichero.ancha(), &creacion, &modificacion), 0);
            } else {
                timefich_obtener_fecha(fichero.ansi().c_str(), &creacion, &modificacion);
            }
            ESPERA_INFORMES("resp != FALSE");
            EXPECT_EQ(i_intervalos(creacion), i_intervalos(intacta));
            EXPECT_EQ(i_intervalos(modificacion), i_intervalos(intacta));
            EXPECT_TRUE(toma_esperas().empty()) << "a date that does not fit will not fit later";
        }
    }
    EXPECT_EQ(fichero.segundos(), 700'000'000);

    fallos fallo;
    fallo.falla_siempre("FileTimeToLocalFileTime", ERROR_INVALID_PARAMETER);
    EXPECT_EQ(timefich_obtener_fecha_fichero_u(fichero.ancha()), -1);
    EXPECT_EQ(timefich_obtener_fecha_fichero(fichero.ansi().c_str()), -1);
    EXPECT_EQ(timefich_obtener_fecha_fichero_existente_u(fichero.ancha()), -1);
    EXPECT_EQ(timefich_obtener_fecha_fichero_existente(fichero.ansi().c_str()), -1);
    // The file exists: only the conversion is reported.
    ESPERA_INFORMES("resp != FALSE", "resp != FALSE", "resp != FALSE", "resp != FALSE");
}

TEST(timefich, ningun_fallo_queda_callado_ni_deja_nada) {
    const fichero_fechado fichero;
    const FILETIME fecha = i_filetime(en_1970 + 90'000 * segundo);
    FILETIME leida = intacta;
    unsigned short resultado = 0;
    const auto se_supo = [&](const ronda& r) {
        const std::size_t noticias = toma_informes().size() + toma_preguntas().size();
        toma_esperas();
        if (r.limpia) {
            EXPECT_EQ(resultado, 1) << r;
        }
        EXPECT_TRUE(resultado == 1 || noticias == 1) << r;
    };
    con_cada_fallo([&] { leida = intacta; },
                   [&] { resultado = timefich_obtener_fecha_u(fichero.ancha(), &leida, &leida); },
                   [&](const ronda& r) {
                       EXPECT_EQ(resultado == 0, i_intervalos(leida) == i_intervalos(intacta)) << r;
                       se_supo(r);
                   });
    con_cada_fallo([&] { fichero.pon(en_1970, en_1970, en_1970); },
                   [&] { resultado = timefich_asignar_fecha_u(fichero.ancha(), &fecha, &fecha); },
                   [&](const ronda& r) {
                       EXPECT_EQ(resultado == 1, fichero.modificacion() != en_1970) << r;
                       se_supo(r);
                   });
}

// A failing conversion of the calendar leaves the date in UTC.
TEST(timefich, un_reloj_que_falla_da_la_hora_UTC) {
    const FILETIME fecha = i_filetime(en_1970 + 1'721'044'800 * segundo);
    for (unsigned falla_en = 1; falla_en <= 3; ++falla_en) {
        fallos fallo;
        fallo.falla(falla_en, ERROR_INVALID_PARAMETER);
        EXPECT_EQ(timefich_convertir_fecha(&fecha), 1'721'044'800);
        EXPECT_EQ(fallo.llamadas(), falla_en);
    }
}

// ---- The wall clock

TEST(timefich, el_reloj_de_pared_sigue_la_hora_de_verano_de_la_fecha) {
    const TIME_ZONE_INFORMATION madrid = reglas_madrid();
    TIME_ZONE_INFORMATION fija = {};
    fija.Bias = 210;
    struct {
        const char* que;
        const TIME_ZONE_INFORMATION* reglas;
        long long utc;
        long long reloj;
    } const filas[] = {
        {"winter", &madrid, 1'705'320'000, 1'705'323'600},
        {"summer", &madrid, 1'721'044'800, 1'721'052'000},
        {"the second before summer time: 2024-03-31 00:59:59", &madrid, 1'711'846'799, 1'711'850'399},
        {"summer time begins", &madrid, 1'711'846'800, 1'711'854'000},
        {"the second before it ends: 2024-10-27 00:59:59", &madrid, 1'729'990'799, 1'729'997'999},
        {"it ends", &madrid, 1'729'990'800, 1'729'994'400},
        {"the epoch: winter", &madrid, 0, 3600},
        {"before 1970, in winter", &madrid, -31'536'000, -31'532'400},
        {"a second before the epoch", &madrid, -1, 3599},
        {"a zone without summer time, 3:30 behind", &fija, 1'721'044'800, 1'721'044'800 - 12'600},
        {"2100", &fija, 4'102'444'800, 4'102'444'800 - 12'600},
        {"1601 and a day", &fija, -11'644'387'200, -11'644'387'200 - 12'600},
    };
    for (const auto& f : filas) {
        SCOPED_TRACE(f.que);
        const zona_fingida zona(600, f.reglas);  // today's offset plays no part
        const FILETIME fecha = i_filetime(en_1970 + f.utc * segundo);
        EXPECT_EQ(timefich_convertir_fecha(&fecha), f.reloj);
        EXPECT_EQ(timefich_convierte_timet_UTC_a_timet_local(f.utc), f.reloj);
    }
}

TEST(timefich, una_fecha_sin_calendario_queda_en_UTC) {
    const TIME_ZONE_INFORMATION madrid = reglas_madrid();
    const zona_fingida zona(0, &madrid);
    for (const long long valor :
         {INT64_MIN, INT64_MIN + 1, -11'644'473'601LL, 910'692'730'086LL, INT64_MAX}) {
        EXPECT_EQ(timefich_convierte_timet_UTC_a_timet_local(valor), valor);
    }
    const FILETIME negativa = {0xFFFFFFFFu, 0xFFFFFFFFu};
    EXPECT_EQ(timefich_convertir_fecha(&negativa), -11'644'473'600);
    const FILETIME la_menor = {0, 0x80000000u};  // the difference wraps; it must only not trap
    EXPECT_EQ(timefich_convertir_fecha(&la_menor), (INT64_MAX - (en_1970 - 1)) / segundo);
}

TEST(timefich, dos_fechas_son_iguales_sin_tolerancia) {
    struct {
        long long a;
        long long b;
        unsigned short iguales;
    } const filas[] = {
        {0, 0, 1},          {0, 1, 0},
        {1, 0, 0},          {-1, -1, 1},
        {-1, 1, 0},         {INT64_MAX, INT64_MAX, 1},
        {INT64_MAX, -1, 0}, {0, 1LL << 32, 0},
        {0, 1LL << 16, 0},  {INT64_MIN, INT64_MIN, 1},
    };
    for (const auto& f : filas) {
        EXPECT_EQ(timefich_fechas_iguales(f.a, f.b), f.iguales) << f.a << " " << f.b;
    }
}

// ---- Real time zones: the same executable in another one

namespace {

constexpr long long instantes[] = {0, 1'705'320'000, 1'721'044'800, 1'711'846'799, 1'711'846'800};
constexpr std::size_t num_instantes = sizeof instantes / sizeof *instantes;

// Writes down what it sees; the date of the data file is the epoch.
const papel mira_la_hora("mira_la_hora", [] {
    const texto_w fichero = hijo_dato();
    std::string lineas;
    for (const long long instante : instantes) {
        const FILETIME fecha = i_filetime(en_1970 + instante * segundo);
        lineas += std::to_string(timefich_convertir_fecha(&fecha)) + " " +
                  std::to_string(timefich_convierte_timet_UTC_a_timet_local(instante)) + "\n";
    }
    lineas += std::to_string(timefich_obtener_fecha_fichero_u(fichero.c_str())) + "\n";
    const HANDLE h =
        ::CreateFileW((fichero + w(".tmp")).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD escritos;
    ::WriteFile(h, lineas.data(), static_cast<DWORD>(lineas.size()), &escritos, nullptr);
    ::CloseHandle(h);
    // Whole or not at all: the parent waits for this name.
    return ::MoveFileW((fichero + w(".tmp")).c_str(), (fichero + w(".salida")).c_str()) ? 0 : 1;
});

// Waits for the child's file and removes it; "" when it does not come.
std::string lee_salida(const texto_w& ruta) {
    HANDLE h = INVALID_HANDLE_VALUE;
    for (int i = 0; i < 600 && h == INVALID_HANDLE_VALUE; ++i) {
        h = ::CreateFileW(ruta.c_str(), GENERIC_READ, FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                          FILE_FLAG_DELETE_ON_CLOSE, nullptr);
        if (h == INVALID_HANDLE_VALUE) {
            ::Sleep(50);
        }
    }
    char texto[2048];
    DWORD leidos = 0;
    if (h != INVALID_HANDLE_VALUE) {
        ::ReadFile(h, texto, sizeof texto, &leidos, nullptr);
        ::CloseHandle(h);
    }
    return std::string(texto, leidos);
}

}  // namespace

// The time zone of a process under Wine is that of the Unix variable TZ, which only a Unix program can set: `env`
// stands between.
TEST(timefich, en_zonas_horarias_de_verdad) {
    const wchar_t* const env = L"\\\\?\\unix\\usr\\bin\\env";
    if (::GetFileAttributesW(env) == INVALID_FILE_ATTRIBUTES) {
        GTEST_SKIP() << "no Unix under this Windows: real zones are covered by the replaced table only";
    }
    struct {
        const char* zona;
        long horas_x2[num_instantes];  // local less UTC, in half hours, at each instant
        bool con_verano;
    } const filas[] = {
        {"UTC", {0, 0, 0, 0, 0}, false},
        {"Africa/Algiers", {2, 2, 2, 2, 2}, false},
        {"Asia/Kolkata", {11, 11, 11, 11, 11}, false},
        {"Europe/Madrid", {2, 2, 4, 2, 4}, true},
        {"America/New_York", {-10, -10, -8, -8, -8}, true},
        {"Australia/Sydney", {22, 22, 20, 22, 22}, true},
    };
    for (const auto& f : filas) {
        SCOPED_TRACE(f.zona);
        const fichero_fechado fichero("_zona.txt");
        fichero.pon(en_1970, en_1970, en_1970);
        texto_w orden =
            w("env TZ=" + std::string(f.zona) + " LUMODIR_PAPEL=mira_la_hora \"LUMODIR_PAPEL_DATO=") +
            w(fichero.texto()) + w("\" wine \"") + ruta_del_ejecutable() + w("\"");
        STARTUPINFOW arranque = {};
        arranque.cb = sizeof arranque;
        PROCESS_INFORMATION proceso;
        ASSERT_TRUE(::CreateProcessW(env, orden.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                     &arranque, &proceso))
            << "no env: error " << ::GetLastError();
        const std::string salida = lee_salida(w(fichero.texto() + ".salida"));

        std::string relojes;
        for (std::size_t i = 0; i < num_instantes; ++i) {
            const std::string reloj = std::to_string(instantes[i] + f.horas_x2[i] * 1800);
            relojes += reloj + " " + reloj + "\n";
        }
        ASSERT_EQ(salida.substr(0, relojes.size()), relojes) << salida;
        // The local time value takes today's offset: in a zone with summer time it may be either.
        const long long local = std::stoll(salida.substr(relojes.size()));
        const long long de_invierno = f.horas_x2[1] * 1800 - 3600;
        const long long de_verano = f.horas_x2[2] * 1800 - 3600;
        EXPECT_TRUE(local == de_invierno || (f.con_verano && local == de_verano)) << local;
    }
}
