#include "ficheros.hpp"

#include <atomic>
#include <chrono>
#include <cwchar>

#include "anfitrion.hpp"
#include "consola.hpp"
#include "lumodir.hpp"
#include "recorrido.hpp"
#include "respuesta.hpp"
#include "sistema_windows.hpp"
#include "textos.hpp"
#include "trabajo.hpp"

namespace mando {

namespace {

// The system is asked with the prefix that long paths need.
std::wstring i_para_el_sistema(const std::wstring& ruta) {
    return lumodir::lmlongpath_prepended_path_si_necesario(ruta_de_trabajo(ruta));
}

unsigned long i_atributos(const std::wstring& ruta) {
    const unsigned long atributos = GetFileAttributesW(i_para_el_sistema(ruta).c_str());
    return atributos == INVALID_FILE_ATTRIBUTES ? 0 : atributos;
}

std::wstring i_ruta_completa(const std::wstring& ruta) {
    const unsigned long unidades = GetFullPathNameW(ruta.c_str(), 0, nullptr, nullptr);
    std::wstring completa(unidades, L'\0');
    completa.resize(GetFullPathNameW(ruta.c_str(), unidades, completa.data(), nullptr));
    return completa;
}

// "nul", "con" and the like, unless they are files of a directory: to the system they exist everywhere.
bool i_es_aparato(const std::wstring& de_trabajo) {
    return !de_trabajo.starts_with(L"\\\\") && i_ruta_completa(de_trabajo).starts_with(L"\\\\.\\");
}

}  // namespace

clase_de_entrada que_hay_en(const std::wstring& ruta) {
    const std::wstring de_trabajo = ruta_de_trabajo(ruta);
    if (i_es_aparato(de_trabajo)) {
        return clase_de_entrada::ninguna;
    }
    if (!lumodir::cdir::existe_fichero(de_trabajo)) {
        return clase_de_entrada::ninguna;
    }
    return lumodir::cdir::es_directorio(de_trabajo) ? clase_de_entrada::directorio
                                                    : clase_de_entrada::fichero;
}

bool esta_protegido(const std::wstring& ruta) {
    return (i_atributos(ruta) & FILE_ATTRIBUTE_READONLY) != 0;
}

bool es_enlace(const std::wstring& ruta) {
    // The entry tells a link from what only looks like one (a placeholder of cloud storage), and is the link's own where a
    // separator at the end leads to what it points to.
    const std::optional<entrada> e = entrada_de(ruta);
    return e ? e->es_enlace : (i_atributos(ruta) & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

namespace {

// The usual codes have words of the command's own, in the language of the rest of the answer: the system may have
// its texts in one language only.
frase i_texto_propio(unsigned long codigo) {
    switch (codigo) {
        case ERROR_FILE_NOT_FOUND:
            return "File not found";
        case ERROR_PATH_NOT_FOUND:
            return "Path not found";
        case ERROR_ACCESS_DENIED:
            return "Access denied";
        case ERROR_WRITE_PROTECT:
            return "The medium is write-protected";
        case ERROR_NOT_READY:
            return "The drive is not ready";
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
            return "Another program is using it";
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
            return "The network path was not found";
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return "It exists already";
        case ERROR_HANDLE_DISK_FULL:
        case ERROR_DISK_FULL:
            return "The disk is full";
        case ERROR_INVALID_NAME:
            return "The name is not valid";
        case ERROR_DIR_NOT_EMPTY:
            return "The directory is not empty";
        case ERROR_FILENAME_EXCED_RANGE:
            return "The name or the path is too long";
        default:
            return "";
    }
}

}  // namespace

std::wstring texto_del_sistema(unsigned long codigo) {
    if (const frase propio = i_texto_propio(codigo); !propio.vacia()) {
        return di(propio);
    }
    // It stands in a sentence of the command's own, so it is asked for in that language, then in the system's.
    const unsigned long de_la_frase = en_espanyol() ? MAKELANGID(LANG_SPANISH, SUBLANG_SPANISH_MODERN)
                                                    : MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
    for (const unsigned long idioma : {de_la_frase, 0ul}) {
        wchar_t texto[1024];
        const unsigned long unidades =
            FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, codigo,
                           idioma, texto, static_cast<unsigned long>(std::size(texto)), nullptr);
        if (unidades > 0) {
            const std::wstring_view todo(texto, unidades);
            return std::wstring(todo.substr(0, todo.find_last_not_of(L"\r\n. ") + 1));
        }
    }
    return di("error %1", std::to_wstring(codigo));
}

void comprueba_existe(const std::wstring& ruta) {
    if (sin_blancos(ruta).empty()) {
        throw fallo{di("the path is empty")};
    }
    if (que_hay_en(ruta) == clase_de_entrada::ninguna) {
        throw fallo{di("'%1' does not exist", ruta)};
    }
}

namespace {

// What follows the drive, the share or the volume of a full path.
std::wstring_view i_tras_la_unidad(std::wstring_view ruta) {
    constexpr std::wstring_view separadores = L"\\/";
    const auto salta_componente = [&] {
        ruta.remove_prefix(std::min(ruta.find_first_not_of(separadores), ruta.size()));
        ruta.remove_prefix(std::min(ruta.find_first_of(separadores), ruta.size()));
    };
    if (ruta.starts_with(L"\\\\?\\") || ruta.starts_with(L"\\\\.\\")) {
        ruta.remove_prefix(4);
        if (iguales_sin_caja(ruta.substr(0, 4), L"unc\\")) {
            salta_componente();
            salta_componente();
        }
        salta_componente();
        return ruta;
    }
    if (ruta.starts_with(L"\\\\")) {
        salta_componente();
        salta_componente();
    } else if (ruta.size() >= 2 && ruta[1] == L':') {
        ruta.remove_prefix(2);
    }
    return ruta;
}

bool i_es_raiz(std::wstring_view completa) {
    return i_tras_la_unidad(completa).find_first_not_of(L"\\/. ") == completa.npos;
}

}  // namespace

void rechaza_raiz(const std::wstring& ruta) {
    const std::wstring limpia = sin_blancos(ruta);
    if (limpia.empty()) {
        throw fallo{di("the path is empty: refused, nothing is done")};
    }
    // A drive alone means its current directory to the system, and everything to a person.
    const bool unidad_sola = limpia.size() == 2 && limpia[1] == L':';
    const std::wstring exacta = ruta_exacta(limpia), usual = i_ruta_completa(limpia);
    // "con" and "aux.txt" are devices to the system unless they are files of a directory.
    const bool es_aparato = usual.starts_with(L"\\\\.\\") && !limpia.starts_with(L"\\\\.\\");
    const bool la_usual_es_raiz = !es_aparato && ruta_de_trabajo(ruta) == ruta && i_es_raiz(usual);
    if (unidad_sola || i_es_raiz(exacta) || la_usual_es_raiz) {
        throw fallo{di("'%1' is the root of a drive: refused, nothing is done", ruta)};
    }
}

void confirma(const peticion& p, const std::wstring& que) {
    if (!p.en_seco() && !p.si_a_todo && !pregunta(que)) {
        throw fallo{di("not confirmed, nothing is done")};
    }
}

// ---- Dates ----

std::optional<long long> fecha_de(const std::wstring& ruta) {
    return lumodir::timefich::obtener_fecha_fichero_UTC(ruta_de_trabajo(ruta));
}

std::optional<long long> creacion_de(const std::wstring& ruta) {
    // From 1601 in units of 100 ns to 1970 in seconds.
    constexpr long long segundos_hasta_1970 = 11644473600, por_segundo = 10000000;
    WIN32_FILE_ATTRIBUTE_DATA datos;
    if (!GetFileAttributesExW(i_para_el_sistema(ruta).c_str(), GetFileExInfoStandard, &datos)) {
        return std::nullopt;
    }
    const long long unidades =
        static_cast<long long>(static_cast<unsigned long long>(datos.ftCreationTime.dwHighDateTime) << 32 |
                               datos.ftCreationTime.dwLowDateTime);
    return unidades / por_segundo - segundos_hasta_1970;
}

std::wstring fecha_de_pared(long long segundos, wchar_t separador) {
    using namespace std::chrono;
    const sys_seconds instante{seconds{segundos}};
    const sys_days dia = floor<days>(instante);
    const year_month_day fecha{dia};
    const hh_mm_ss hora{instante - dia};
    wchar_t texto[40];
    std::swprintf(texto, std::size(texto), L"%04d-%02u-%02u%lc%02d:%02d:%02d", static_cast<int>(fecha.year()),
                  static_cast<unsigned>(fecha.month()), static_cast<unsigned>(fecha.day()), separador,
                  static_cast<int>(hora.hours().count()), static_cast<int>(hora.minutes().count()),
                  static_cast<int>(hora.seconds().count()));
    return texto;
}

std::wstring fecha_en_palabras(long long segundos, bool en_utc, wchar_t separador) {
    return fecha_de_pared(en_utc ? segundos : lumodir::timefich::convierte_timet_UTC_a_timet_local(segundos),
                          separador) +
           (en_utc && separador == L'T' ? L"Z" : L"");
}

namespace {

long long i_de_pared_a_utc(long long pared) {
    // The offset can be asked only of an instant in UTC: after a first guess the second one is right. In the hour that
    // a change to winter time repeats, both answers are.
    long long utc = pared;
    for (int intento = 0; intento < 2; ++intento) {
        utc = pared - (lumodir::timefich::convierte_timet_UTC_a_timet_local(utc) - utc);
    }
    return utc;
}

[[noreturn]] void i_fecha_mal(const std::wstring& texto) {
    throw uso_incorrecto{
        di("'%1' is not a date; use now, @SECONDS, 2024-05-01, or \"2024-05-01 12:30[:00][Z]\"", texto)};
}

}  // namespace

long long lee_fecha(const std::wstring& texto, bool en_utc) {
    using namespace std::chrono;
    const std::wstring limpia = sin_blancos(texto);
    if (en_minusculas(limpia) == L"now") {
        return duration_cast<seconds>(system_clock::now().time_since_epoch()).count();
    }
    long long unidades = 0;
    int leidas = 0;
    if (std::swscanf(limpia.c_str(), L"@%lld%n", &unidades, &leidas) == 1 &&
        limpia.size() == static_cast<size_t>(leidas)) {
        return unidades;
    }
    std::wstring resto = limpia;
    if (!resto.empty() && (resto.back() == L'Z' || resto.back() == L'z')) {
        resto.pop_back();
        en_utc = true;
    }
    int anyo = 0;
    unsigned mes = 0, dia = 0, hora = 0, minuto = 0, segundo = 0;
    wchar_t separador = L' ';
    if (std::swscanf(resto.c_str(), L"%4d-%2u-%2u%n", &anyo, &mes, &dia, &leidas) != 3) {
        i_fecha_mal(texto);
    }
    resto.erase(0, static_cast<size_t>(leidas));
    leidas = 0;
    if (!resto.empty()) {
        if (std::swscanf(resto.c_str(), L"%lc%2u:%2u%n", &separador, &hora, &minuto, &leidas) < 3 ||
            (separador != L' ' && separador != L'T')) {
            i_fecha_mal(texto);
        }
        resto.erase(0, static_cast<size_t>(leidas));
        leidas = 0;
        if (!resto.empty() && (std::swscanf(resto.c_str(), L":%2u%n", &segundo, &leidas) != 1 ||
                               resto.size() != static_cast<size_t>(leidas))) {
            i_fecha_mal(texto);
        }
    }
    const year_month_day fecha{year{anyo}, month{mes}, day{dia}};
    if (!fecha.ok() || hora > 23 || minuto > 59 || segundo > 59) {
        i_fecha_mal(texto);
    }
    const long long pared =
        sys_seconds{sys_days{fecha}}.time_since_epoch().count() + hora * 3600LL + minuto * 60LL + segundo;
    return en_utc ? pared : i_de_pared_a_utc(pared);
}

std::wstring con_ocupantes(const std::wstring& queja, const std::wstring& ruta) {
    const std::wstring quienes = quienes_tienen(ruta);
    return quienes.empty() ? queja : di("%1; it is held by %2", queja, quienes);
}

namespace {

void i_di_uno(const peticion& p, const acto& que, const std::wstring& ruta, const resultado& r) {
    const std::wstring nombre = a_la_vista(r.ruta.empty() ? ruta : r.ruta);
    if (!r.queja.empty()) {
        if (!r.ya_dicho) {
            di_queja(r.queja);
        }
        return;
    }
    const frase en_seco = r.se_crea ? frase("would create") : que.se_haria;
    const frase como = r.ya_estaba ? que.ya_estaba : p.en_seco() ? en_seco : que.hecho;
    salida().escribe(di(como), p.en_seco() ? estilo::aviso : estilo::bueno).escribe(" ").linea(nombre);
}

json i_json_de_uno(const peticion& p, const acto& que, const std::wstring& ruta, const resultado& r) {
    json fila = json::objeto().pon("path", ruta).pon("done", r.queja.empty() && !p.en_seco());
    if (!r.ruta.empty()) {
        fila.pon("created", r.ruta);
    }
    if (!que.ya_estaba.vacia() && r.queja.empty()) {
        fila.pon("existed", r.ya_estaba);
    }
    if (p.en_seco()) {
        fila.pon("dry_run", true);
    }
    if (!r.queja.empty()) {
        fila.pon("error", r.queja);
    }
    return fila;
}

}  // namespace

int en_cada_una(const peticion& p, const std::vector<std::wstring>& rutas, const acto& que,
                resultado (*accion)(const peticion&, const std::wstring&)) {
    respuesta_por_piezas lo_hecho(p);
    bool todas = true;
    std::atomic<size_t> vistas{0};
    const interruptor al_pulsar_control_c;
    con_progreso(
        [&] {
            for (const std::wstring& ruta : rutas) {
                resultado r;
                const ruta_en_curso en_curso(ruta);
                try {
                    toma_avisos();
                    r = interrumpido() ? resultado(di("stopped")) : accion(p, ruta);
                } catch (const fallo& otro) {
                    r.queja = otro.texto;
                }
                r.ya_dicho =
                    r.ya_dicho || interrumpido() || (hay_avisos() && !en_la_lengua_de_los_mensajes());
                todas = todas && r.queja.empty();
                lo_hecho.pieza(i_json_de_uno(p, que, ruta, r), [&] { i_di_uno(p, que, ruta, r); });
                vistas += interrumpido() ? 0 : 1;
            }
        },
        [&](unsigned segundos) { return por_donde_va(vistas, rutas, segundos); });
    return lo_hecho.acaba(todas, [&] {
        if (interrumpido()) {
            di_queja(di("stopped after %1 of %2", con_miles(vistas), con_miles(rutas.size())));
        }
    });
}

void con_cada_ruta(const std::vector<std::wstring>& rutas,
                   const std::function<void(const std::wstring&)>& funcion) {
    std::atomic<size_t> vistas{0};
    con_progreso(
        [&] {
            for (const std::wstring& ruta : rutas) {
                funcion(ruta);
                ++vistas;
            }
        },
        [&](unsigned segundos) { return por_donde_va(vistas, rutas, segundos); });
}

std::wstring por_donde_va(size_t vistas, const std::vector<std::wstring>& rutas, unsigned segundos) {
    if (rutas.size() == 1) {
        return di("%1, %2 s", rutas[0], std::to_wstring(segundos));
    }
    return di("%1 of %2, %3 s", con_miles(vistas), con_miles(rutas.size()), std::to_wstring(segundos)) +
           lo_que_falta(static_cast<double>(vistas) / static_cast<double>(rutas.size()), segundos);
}

}  // namespace mando
