#include "ficheros.hpp"

#include <chrono>
#include <cwchar>

#include "anfitrion.hpp"
#include "cdir_ficheros.h"
#include "cdir_rutas.h"
#include "companions/lmlongpath.h"
#include "consola.hpp"
#include "sistema_windows.hpp"
#include "textos.hpp"
#include "timefich.h"

namespace mando {

namespace {

// The system is asked with the prefix that long paths need.
std::wstring i_para_el_sistema(const std::wstring& ruta) {
    return toma(lmlongpath_prepended_path_si_necesario(ruta.c_str()));
}

unsigned long i_atributos(const std::wstring& ruta) {
    const unsigned long atributos = GetFileAttributesW(i_para_el_sistema(ruta).c_str());
    return atributos == INVALID_FILE_ATTRIBUTES ? 0 : atributos;
}

}  // namespace

clase_de_entrada que_hay_en(const std::wstring& ruta) {
    if (cdir_existe_fichero_UNICODE(ruta.c_str()) != CIERTO) {
        return clase_de_entrada::ninguna;
    }
    return cdir_es_directorio_u(ruta.c_str()) == CIERTO ? clase_de_entrada::directorio
                                                        : clase_de_entrada::fichero;
}

bool esta_protegido(const std::wstring& ruta) {
    return (i_atributos(ruta) & FILE_ATTRIBUTE_READONLY) != 0;
}

bool es_enlace(const std::wstring& ruta) {
    return (i_atributos(ruta) & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

std::wstring texto_del_sistema(unsigned long codigo) {
    wchar_t* texto = nullptr;
    FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
        codigo, 0, reinterpret_cast<wchar_t*>(&texto), 0, nullptr);
    std::wstring resultado = texto ? texto : di("error %1", std::to_wstring(codigo));
    LocalFree(texto);
    resultado.erase(resultado.find_last_not_of(L"\r\n. ") + 1);
    return resultado;
}

void comprueba_existe(const std::wstring& ruta) {
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

std::wstring i_ruta_completa(const std::wstring& ruta) {
    const unsigned long unidades = GetFullPathNameW(ruta.c_str(), 0, nullptr, nullptr);
    std::wstring completa(unidades, L'\0');
    completa.resize(GetFullPathNameW(ruta.c_str(), unidades, completa.data(), nullptr));
    return completa;
}

}  // namespace

void rechaza_raiz(const std::wstring& ruta) {
    const std::wstring limpia = sin_blancos(ruta);
    if (limpia.empty()) {
        throw fallo{di("the path is empty: refused, nothing is done")};
    }
    // A drive alone means its current directory to the system, and everything to a person.
    const bool unidad_sola = limpia.size() == 2 && limpia[1] == L':';
    if (unidad_sola || i_es_raiz(i_ruta_completa(limpia))) {
        throw fallo{di("'%1' is the root of a drive: refused, nothing is done", ruta)};
    }
}

void confirma(const peticion& p, const std::wstring& que) {
    if (!p.si_a_todo && !pregunta(que)) {
        throw fallo{di("not confirmed, nothing is done")};
    }
}

// ---- Dates ----

std::optional<long long> fecha_de(const std::wstring& ruta) {
    const long long fecha = timefich_obtener_fecha_fichero_UTC(ruta.c_str());
    return fecha == -1 ? std::nullopt : std::optional(fecha);
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
    return fecha_de_pared(en_utc ? segundos : timefich_convierte_timet_UTC_a_timet_local(segundos),
                          separador) +
           (en_utc && separador == L'T' ? L"Z" : L"");
}

namespace {

long long i_de_pared_a_utc(long long pared) {
    // The offset is known for an instant in UTC only: from a first guess the second one is right, but for the
    // hour that a change to winter time repeats, where either answer is.
    long long utc = pared;
    for (int intento = 0; intento < 2; ++intento) {
        utc = pared - (timefich_convierte_timet_UTC_a_timet_local(utc) - utc);
    }
    return utc;
}

[[noreturn]] void i_fecha_mal(const std::wstring& texto) {
    throw uso_incorrecto{
        di("'%1' is no date; write now, @SECONDS, 2024-05-01, or \"2024-05-01 12:30[:00][Z]\"", texto)};
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

int en_cada_una(const peticion& p, const std::vector<std::wstring>& rutas, frase hecho_en_palabras,
                std::wstring (*accion)(const peticion&, const std::wstring&)) {
    json lista = json::lista();
    bool todas = true;
    for (const std::wstring& ruta : rutas) {
        std::wstring queja;
        try {
            queja = accion(p, ruta);
        } catch (const fallo& que) {
            queja = que.texto;
        }
        todas = todas && queja.empty();
        if (p.en_json) {
            json fila = json::objeto().pon("path", ruta).pon("done", queja.empty());
            if (!queja.empty()) {
                fila.pon("error", queja);
            }
            lista.agrega(std::move(fila));
        } else if (queja.empty()) {
            salida()
                .escribe(di(hecho_en_palabras), estilo::bueno)
                .escribe(" ")
                .linea(std::wstring_view(ruta));
        } else {
            errores().escribe("lumodir: ", estilo::malo).linea(std::wstring_view(queja));
        }
    }
    if (p.en_json) {
        escribe_json(lista);
    }
    return todas ? hecho : no;
}

}  // namespace mando
