// See como_windows.hpp.
#ifdef _WIN32
#include "apoyo/como_windows.hpp"

#include <gtest/gtest.h>

#include <winternl.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <set>

#include "apoyo/hijo.hpp"
#include "companions/sistema.hpp"

namespace apoyo {

struct como_windows::estado {
    escenario_windows escenario;
    estado* antes = nullptr;
    std::set<texto_w> marcados;          // directories that bear the read-only mark
    std::set<texto_w> pendientes;        // deleted names that somebody else's handle keeps
    std::map<HANDLE, texto_w> a_cerrar;  // marked for deletion
    struct enlace_abierto {
        texto_w ruta;
        bool se_borra = false;
    };
    std::map<HANDLE, enlace_abierto> enlaces;
    std::map<HANDLE, texto_w> busquedas;  // the directory that is searched
    std::map<texto_w, unsigned long long> faltaban;
    std::map<texto_w, DWORD> preguntados;                        // what may not be asked, and what it answers
    std::map<HANDLE, texto_w> recientes;                         // new files, still open
    std::vector<std::pair<HANDLE, unsigned long long>> mirados;  // by somebody else, until then
    unsigned long long ahora_ms = 0;
    struct instantanea {
        DWORD pid;
        DWORD que;
        bool repite = false;
        MODULEENTRY32W primero = {};
    };
    std::map<HANDLE, instantanea> instantaneas;
    std::set<DWORD> de_32_bits;
    std::set<texto_w> claves_negadas;
    unsigned dialogos = 0;
    unsigned hilos_ajenos = 0;
    unsigned intervenciones = 0;
    std::optional<reglas_por_anyo> reglas;
};

namespace {

using interno::tabla_sistema;

como_windows::estado* actual = nullptr;
tabla_sistema debajo;

constexpr unsigned long long memoria_de_ausentes_ms = 5'000;
constexpr auto clase_borrado_ampliado = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);
constexpr auto clase_completa = static_cast<FILE_INFO_BY_HANDLE_CLASS>(14);
constexpr auto clase_completa_desde_el_principio = static_cast<FILE_INFO_BY_HANDLE_CLASS>(15);

BOOL niega(DWORD codigo) {
    ++actual->intervenciones;
    ::SetLastError(codigo);
    return FALSE;
}
HANDLE niega_manija(DWORD codigo) {
    niega(codigo);
    return INVALID_HANDLE_VALUE;
}

// One spelling for a name: full, lower case, without a prefix or separators at its end.
texto_w clave(texto_w ruta) {
    for (const char* prefijo : {"\\\\?\\", "\\??\\"}) {
        if (ruta.compare(0, 4, w(prefijo)) == 0) {
            ruta.erase(0, 4);
        }
    }
    while (!ruta.empty() && (ruta.back() == L'\\' || ruta.back() == L'/')) {
        ruta.pop_back();
    }
    ::CharLowerBuffW(ruta.data(), static_cast<DWORD>(ruta.size()));
    return ruta;
}
texto_w clave_de_ruta(const wchar_t* ruta) {
    const interno::conserva_ultimo_error conserva;
    const auto completa = std::make_unique_for_overwrite<wchar_t[]>(0x8000);
    const DWORD largo = ::GetFullPathNameW(ruta, 0x8000, completa.get(), nullptr);
    return clave(largo == 0 || largo >= 0x8000 ? texto_w(ruta) : texto_w(completa.get(), largo));
}
// Of any length, which the call that is meant for it does not tell under Wine.
texto_w ruta_de_manija(HANDLE h) {
    const interno::conserva_ultimo_error conserva;
    constexpr DWORD bytes = 0x10000;
    const auto bufer =
        std::make_unique_for_overwrite<unsigned long long[]>(bytes / sizeof(unsigned long long));
    const wchar_t* nombre = nullptr;
    DWORD unidades = 0;
    if (!debajo.nombre_de_fichero(h, bufer.get(), bytes, &nombre, &unidades)) {
        return {};
    }
    texto_w ruta(nombre, unidades);
    if (ruta.compare(0, 4, L"\\??\\") == 0) {
        ruta[1] = L'\\';
    }
    return ruta;
}
texto_w ruta_de_entrada(const wchar_t* nombre, HANDLE directorio) {
    return directorio == nullptr ? texto_w(L"\\\\?\\") + (nombre + 4)
                                 : ruta_de_manija(directorio) + L"\\" + nombre;
}

bool es_marcado(const texto_w& ruta) {
    return actual->marcados.count(clave(ruta)) != 0;
}
bool hay_marcados() {
    return !actual->marcados.empty();
}

// A name that is deleted, and stays until the last handle is closed.
bool esta_pendiente(const texto_w& suya) {
    if (actual->pendientes.count(suya) == 0) {
        return false;
    }
    const interno::conserva_ultimo_error conserva;
    if (::GetFileAttributesW((texto_w(L"\\\\?\\") + suya).c_str()) != INVALID_FILE_ATTRIBUTES) {
        return true;
    }
    actual->pendientes.erase(suya);
    return false;
}
bool ruta_pendiente(const wchar_t* ruta) {
    return !actual->pendientes.empty() && ruta != nullptr && esta_pendiente(clave_de_ruta(ruta));
}

void mira_el_modo() {
    actual->dialogos += (::GetThreadErrorMode() & SEM_FAILCRITICALERRORS) == 0 ? 1 : 0;
}

// What the client of a share remembers.
bool se_recuerda_que_falta(const wchar_t* ruta) {
    if (!actual->escenario.recuerda_lo_que_falta || ruta == nullptr) {
        return false;
    }
    const auto i = actual->faltaban.find(clave_de_ruta(ruta));
    return i != actual->faltaban.end() && actual->ahora_ms < i->second + memoria_de_ausentes_ms;
}
void recuerda(const wchar_t* ruta, bool ha_fallado) {
    if (actual->escenario.recuerda_lo_que_falta && ruta != nullptr) {
        const DWORD codigo = ::GetLastError();
        if (ha_fallado && (codigo == ERROR_FILE_NOT_FOUND || codigo == ERROR_PATH_NOT_FOUND)) {
            actual->faltaban[clave_de_ruta(ruta)] = actual->ahora_ms;
        }
        ::SetLastError(codigo);
    }
}
void ya_no_falta(const wchar_t* ruta) {
    if (actual->escenario.recuerda_lo_que_falta && ruta != nullptr) {
        const interno::conserva_ultimo_error conserva;
        actual->faltaban.erase(clave_de_ruta(ruta));
    }
}

bool no_se_deja_preguntar(const wchar_t* ruta) {
    if (actual->preguntados.empty() || ruta == nullptr) {
        return false;
    }
    const auto i = actual->preguntados.find(clave_de_ruta(ruta));
    if (i == actual->preguntados.end()) {
        return false;
    }
    niega(i->second);
    return true;
}

// Somebody opens a new file, and does not share its deletion.
void mira_fichero_nuevo(const texto_w& ruta) {
    const interno::conserva_ultimo_error conserva;
    const HANDLE h = ::CreateFileW(ruta.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                   OPEN_EXISTING, 0, nullptr);
    if (h != INVALID_HANDLE_VALUE) {
        ++actual->intervenciones;
        actual->mirados.emplace_back(h, actual->ahora_ms + actual->escenario.escaner_ms);
    }
}
void deja_de_mirar(como_windows::estado& suyo) {
    std::erase_if(suyo.mirados, [&](const auto& mirado) {
        return suyo.ahora_ms >= mirado.second && ::CloseHandle(mirado.first);
    });
}

// ---- Links, which Wine opens and removes only as what they point to

// Wine tells names now with, now without the blanks and points at their ends.
texto_w sin_recortables(const texto_w& ruta) {
    texto_w resultado;
    for (const wchar_t c : ruta) {
        if (c == L'\\') {
            while (!resultado.empty() && (resultado.back() == L' ' || resultado.back() == L'.')) {
                resultado.pop_back();
            }
        }
        resultado += c;
    }
    while (!resultado.empty() && (resultado.back() == L' ' || resultado.back() == L'.')) {
        resultado.pop_back();
    }
    return resultado;
}

bool es_enlace_a_directorio(const wchar_t* ruta) {
    const interno::conserva_ultimo_error conserva;
    const DWORD atributos = ::GetFileAttributesW(ruta);
    return atributos != INVALID_FILE_ATTRIBUTES && (atributos & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}
// By the Unix side: no Windows call removes one there.
bool quita_enlace(const texto_w& ruta) {
    using a_unix = char*(CDECL*)(const WCHAR*);
    const auto traduce = reinterpret_cast<a_unix>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name")));
    if (traduce == nullptr) {
        return false;
    }
    char* nombre = traduce(ruta.c_str());
    texto_w linea = w("/bin/rm -f \"" + std::string(nombre == nullptr ? "" : nombre) + "\"");
    ::HeapFree(::GetProcessHeap(), 0, nombre);
    STARTUPINFOW arranque = {};
    arranque.cb = sizeof arranque;
    PROCESS_INFORMATION proceso = {};  // of a Unix program it holds nothing, in Wine 10 not even zeros
    if (!::CreateProcessW(L"\\\\?\\unix\\bin\\rm", linea.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                          &arranque, &proceso)) {
        ADD_FAILURE() << "no rm: error " << ::GetLastError();
        return false;
    }
    for (int i = 0; i < 2'000; ++i) {
        if (::GetFileAttributesW(ruta.c_str()) == INVALID_FILE_ATTRIBUTES) {
            return true;
        }
        ::Sleep(5);  // a Unix process has no handle to wait for
    }
    return false;
}
bool es_enlace(HANDLE h) {
    return !actual->enlaces.empty() && actual->enlaces.count(h) != 0;
}

// ---- The calls

DWORD WINAPI atributos(const wchar_t* ruta) {
    mira_el_modo();
    if (ruta_pendiente(ruta)) {
        niega(ERROR_ACCESS_DENIED);
        return INVALID_FILE_ATTRIBUTES;
    }
    if (se_recuerda_que_falta(ruta)) {
        niega(ERROR_FILE_NOT_FOUND);
        return INVALID_FILE_ATTRIBUTES;
    }
    if (no_se_deja_preguntar(ruta)) {
        return INVALID_FILE_ATTRIBUTES;
    }
    DWORD resultado = debajo.GetFileAttributesW(ruta);
    recuerda(ruta, resultado == INVALID_FILE_ATTRIBUTES);
    if (resultado != INVALID_FILE_ATTRIBUTES && hay_marcados() &&
        actual->marcados.count(clave_de_ruta(ruta)) != 0) {
        resultado |= FILE_ATTRIBUTE_READONLY;
    }
    return resultado;
}

BOOL WINAPI atributos_ex(const wchar_t* ruta, GET_FILEEX_INFO_LEVELS nivel, void* datos) {
    mira_el_modo();
    if (no_se_deja_preguntar(ruta)) {
        return FALSE;
    }
    const BOOL bien = debajo.GetFileAttributesExW(ruta, nivel, datos);
    if (bien && hay_marcados() && actual->marcados.count(clave_de_ruta(ruta)) != 0) {
        static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(datos)->dwFileAttributes |= FILE_ATTRIBUTE_READONLY;
    }
    return bien;
}

void apunta_marca(const texto_w& ruta, DWORD nuevos) {
    if (actual->escenario.directorios_de_solo_lectura) {
        if ((nuevos & FILE_ATTRIBUTE_READONLY) != 0) {
            actual->marcados.insert(clave(ruta));
        } else {
            actual->marcados.erase(clave(ruta));
        }
    }
}

BOOL WINAPI pon_atributos(const wchar_t* ruta, DWORD nuevos) {
    mira_el_modo();
    const BOOL bien = debajo.SetFileAttributesW(ruta, nuevos);
    if (bien && (hay_marcados() || (nuevos & FILE_ATTRIBUTE_READONLY) != 0)) {
        const DWORD ahora = ::GetFileAttributesW(ruta);
        if (ahora != INVALID_FILE_ATTRIBUTES && (ahora & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            apunta_marca(clave_de_ruta(ruta), nuevos);
        }
    }
    return bien;
}

// The right to change marks is one of its own on Windows; below it is that to write, which a read-only file refuses.
DWORD como_se_abre_debajo(DWORD acceso) {
    constexpr DWORD marcas = FILE_WRITE_ATTRIBUTES;
    return debajo.sigue_enlaces() && (acceso & marcas) != 0 ? (acceso & ~marcas) | FILE_READ_ATTRIBUTES
                                                            : acceso;
}

HANDLE WINAPI crea(const wchar_t* ruta, DWORD acceso, DWORD compartir, SECURITY_ATTRIBUTES* seguridad,
                   DWORD disposicion, DWORD indicadores, HANDLE plantilla) {
    mira_el_modo();
    if (ruta_pendiente(ruta)) {
        return niega_manija(ERROR_ACCESS_DENIED);
    }
    if (disposicion == OPEN_EXISTING && se_recuerda_que_falta(ruta)) {
        return niega_manija(ERROR_FILE_NOT_FOUND);
    }
    if (no_se_deja_preguntar(ruta)) {
        return INVALID_HANDLE_VALUE;
    }
    const HANDLE h = debajo.CreateFileW(ruta, como_se_abre_debajo(acceso), compartir, seguridad, disposicion,
                                        indicadores, plantilla);
    recuerda(ruta, h == INVALID_HANDLE_VALUE);
    if (h != INVALID_HANDLE_VALUE) {
        ya_no_falta(ruta);
        if (disposicion == CREATE_NEW && actual->escenario.escaner_ms != 0) {
            actual->recientes[h] = ruta;
        }
        if (actual->escenario.enlaces_por_si_mismos && (indicadores & FILE_FLAG_OPEN_REPARSE_POINT) != 0 &&
            es_enlace_a_directorio(ruta)) {
            actual->enlaces[h] = {ruta};
        }
    }
    return h;
}

HANDLE WINAPI abre_entrada(const wchar_t* nombre, HANDLE directorio, DWORD acceso, DWORD compartir,
                           DWORD opciones, DWORD atributos_de_nombre) {
    mira_el_modo();
    if (!actual->pendientes.empty() && esta_pendiente(clave(ruta_de_entrada(nombre, directorio)))) {
        return niega_manija(ERROR_ACCESS_DENIED);
    }
    const HANDLE h = debajo.abre_entrada(nombre, directorio, como_se_abre_debajo(acceso), compartir, opciones,
                                         atributos_de_nombre);
    if (h == INVALID_HANDLE_VALUE || !actual->escenario.enlaces_por_si_mismos) {
        return h;
    }
    // Only a link leads elsewhere than its name says.
    const interno::conserva_ultimo_error conserva;
    const texto_w suya = ruta_de_entrada(nombre, directorio);
    const texto_w verdadera = ruta_de_manija(h);
    if (!verdadera.empty() && sin_recortables(clave(verdadera)) != sin_recortables(clave(suya)) &&
        ((opciones & FILE_NON_DIRECTORY_FILE) != 0 || es_enlace_a_directorio(suya.c_str()))) {
        actual->enlaces[h] = {suya};
    }
    return h;
}

BOOL WINAPI cierra(HANDLE h) {
    actual->instantaneas.erase(h);
    texto_w enlace;
    texto_w borrado;
    if (const auto i = actual->enlaces.find(h); i != actual->enlaces.end()) {
        enlace = i->second.se_borra ? i->second.ruta : texto_w();
        actual->enlaces.erase(i);
    }
    if (const auto i = actual->a_cerrar.find(h); i != actual->a_cerrar.end()) {
        borrado = i->second;
        actual->a_cerrar.erase(i);
    }
    const BOOL bien = debajo.CloseHandle(h);
    const interno::conserva_ultimo_error conserva;
    if (const auto i = actual->recientes.find(h); i != actual->recientes.end()) {
        mira_fichero_nuevo(i->second);
        actual->recientes.erase(i);
    }
    if (!enlace.empty()) {
        EXPECT_TRUE(quita_enlace(enlace)) << u8(enlace);
    }
    if (!borrado.empty() && ::GetFileAttributesW(borrado.c_str()) != INVALID_FILE_ATTRIBUTES) {
        actual->pendientes.insert(clave(borrado));
    }
    return bien;
}

constexpr DWORD atributos_de_enlace(bool es_directorio) {
    return FILE_ATTRIBUTE_REPARSE_POINT | (es_directorio ? FILE_ATTRIBUTE_DIRECTORY : 0);
}
bool es_directorio(HANDLE h) {
    FILE_STANDARD_INFO datos = {};
    return debajo.GetFileInformationByHandleEx(h, FileStandardInfo, &datos, sizeof datos) && datos.Directory;
}

BOOL WINAPI informacion(HANDLE h, BY_HANDLE_FILE_INFORMATION* datos) {
    mira_el_modo();
    const BOOL bien = debajo.GetFileInformationByHandle(h, datos);
    if (bien && es_enlace(h)) {
        datos->dwFileAttributes |= FILE_ATTRIBUTE_REPARSE_POINT;
    }
    if (bien && hay_marcados() && es_marcado(ruta_de_manija(h))) {
        datos->dwFileAttributes |= FILE_ATTRIBUTE_READONLY;
    }
    return bien;
}

// The mark in a listing: both kinds of records begin alike and bear their names in different places.
void marca_registros(HANDLE h, unsigned char* datos, std::size_t donde_nombre) {
    struct principio {
        ULONG siguiente;
        ULONG indice;
        LARGE_INTEGER fechas_y_tamanyos[6];
        ULONG atributos;
        ULONG bytes_del_nombre;
    };
    const texto_w directorio = ruta_de_manija(h) + L"\\";
    for (;;) {
        auto* registro = reinterpret_cast<principio*>(datos);
        const texto_w nombre(reinterpret_cast<const wchar_t*>(datos + donde_nombre),
                             registro->bytes_del_nombre / sizeof(wchar_t));
        if (es_marcado(directorio + nombre)) {
            registro->atributos |= FILE_ATTRIBUTE_READONLY;
        }
        if (registro->siguiente == 0) {
            return;
        }
        datos += registro->siguiente;
    }
}

BOOL WINAPI informacion_ex(HANDLE h, FILE_INFO_BY_HANDLE_CLASS clase, void* datos, DWORD bytes) {
    mira_el_modo();
    const bool con_numeros = clase == FileIdBothDirectoryInfo || clase == FileIdBothDirectoryRestartInfo;
    const bool sin_numeros = clase == clase_completa || clase == clase_completa_desde_el_principio;
    if (con_numeros && actual->escenario.listado_con_numeros != 0) {
        return niega(actual->escenario.listado_con_numeros);
    }
    if (sin_numeros && actual->escenario.listado_sin_numeros != 0) {
        return niega(actual->escenario.listado_sin_numeros);
    }
    if (clase == FileAttributeTagInfo && actual->escenario.marcas_sin_sentido) {
        ++actual->intervenciones;
        *static_cast<FILE_ATTRIBUTE_TAG_INFO*>(datos) = {FILE_ATTRIBUTE_NORMAL, 0};
        return TRUE;
    }
    if (clase == FileAttributeTagInfo && es_enlace(h)) {
        *static_cast<FILE_ATTRIBUTE_TAG_INFO*>(datos) = {atributos_de_enlace(es_directorio(h)),
                                                         IO_REPARSE_TAG_SYMLINK};
        return TRUE;
    }
    const BOOL bien = debajo.GetFileInformationByHandleEx(h, clase, datos, bytes);
    if (!bien) {
        return bien;
    }
    if (clase == FileBasicInfo && es_enlace(h)) {
        static_cast<FILE_BASIC_INFO*>(datos)->FileAttributes |= FILE_ATTRIBUTE_REPARSE_POINT;
    }
    if (hay_marcados()) {
        if (clase == FileBasicInfo && es_marcado(ruta_de_manija(h))) {
            static_cast<FILE_BASIC_INFO*>(datos)->FileAttributes |= FILE_ATTRIBUTE_READONLY;
        } else if (con_numeros) {
            marca_registros(h, static_cast<unsigned char*>(datos), offsetof(FILE_ID_BOTH_DIR_INFO, FileName));
        } else if (sin_numeros) {
            constexpr std::size_t tras_los_atributos_extendidos = 68;
            marca_registros(h, static_cast<unsigned char*>(datos), tras_los_atributos_extendidos);
        }
    }
    return bien;
}

// The name goes at once: the file is moved out of sight before it is marked.
void quita_el_nombre(HANDLE h) {
    static unsigned numero = 0;
    wchar_t temporal[MAX_PATH + 1];
    const texto_w destino =
        texto_w(temporal, ::GetTempPathW(MAX_PATH + 1, temporal)) +
        w("lumo_borrado_" + std::to_string(::GetCurrentProcessId()) + "_" + std::to_string(++numero));
    std::vector<unsigned char> bytes(sizeof(FILE_RENAME_INFO) + destino.size() * sizeof(wchar_t));
    auto* datos = reinterpret_cast<FILE_RENAME_INFO*>(bytes.data());
    datos->FileNameLength = static_cast<DWORD>(destino.size() * sizeof(wchar_t));
    std::memcpy(datos->FileName, destino.c_str(), datos->FileNameLength);
    // Where this fails, the name goes when nobody holds it, which is all that most tests see.
    debajo.SetFileInformationByHandle(h, FileRenameInfo, datos, static_cast<DWORD>(bytes.size()));
}

BOOL marca_para_borrar(HANDLE h, bool con_posix) {
    if (const auto i = actual->enlaces.find(h); i != actual->enlaces.end()) {
        ++actual->intervenciones;
        i->second.se_borra = true;
        return TRUE;
    }
    const bool de_directorio = es_directorio(h);
    const texto_w ruta = con_posix && !hay_marcados() ? texto_w() : ruta_de_manija(h);
    if (hay_marcados() && de_directorio && es_marcado(ruta)) {
        return niega(ERROR_ACCESS_DENIED);
    }
    if (con_posix && !de_directorio) {
        FILE_BASIC_INFO datos = {};
        debajo.GetFileInformationByHandleEx(h, FileBasicInfo, &datos, sizeof datos);
        if ((datos.FileAttributes & FILE_ATTRIBUTE_READONLY) != 0) {
            return niega(ERROR_ACCESS_DENIED);
        }
        quita_el_nombre(h);
    }
    FILE_DISPOSITION_INFO marca = {TRUE};
    const BOOL bien = debajo.SetFileInformationByHandle(h, FileDispositionInfo, &marca, sizeof marca);
    if (bien && !con_posix) {
        actual->a_cerrar[h] = ruta;
    }
    return bien;
}

BOOL WINAPI pon_fechas(HANDLE h, const FILETIME* creacion, const FILETIME* acceso,
                       const FILETIME* modificacion) {
    mira_el_modo();
    return debajo.SetFileTime(h, creacion, acceso, modificacion);
}

BOOL WINAPI numero_de_fichero(HANDLE h, unsigned long long* numero) {
    mira_el_modo();
    return debajo.numero_de_fichero(h, numero);
}

BOOL WINAPI pon_informacion(HANDLE h, FILE_INFO_BY_HANDLE_CLASS clase, void* datos, DWORD bytes) {
    mira_el_modo();
    if (clase == clase_borrado_ampliado) {
        return actual->escenario.borrado_posix ? marca_para_borrar(h, true) : niega(ERROR_INVALID_PARAMETER);
    }
    if (clase == FileDispositionInfo && static_cast<FILE_DISPOSITION_INFO*>(datos)->DeleteFile) {
        return marca_para_borrar(h, false);
    }
    const BOOL bien = debajo.SetFileInformationByHandle(h, clase, datos, bytes);
    if (bien && clase == FileBasicInfo) {
        const DWORD nuevos = static_cast<FILE_BASIC_INFO*>(datos)->FileAttributes;
        if (nuevos != 0 && (hay_marcados() || (nuevos & FILE_ATTRIBUTE_READONLY) != 0) && es_directorio(h)) {
            apunta_marca(ruta_de_manija(h), nuevos);
        }
    }
    return bien;
}

BOOL WINAPI borra_fichero(const wchar_t* ruta) {
    mira_el_modo();
    return ruta_pendiente(ruta) ? niega(ERROR_ACCESS_DENIED) : debajo.DeleteFileW(ruta);
}

BOOL WINAPI crea_directorio(const wchar_t* ruta, SECURITY_ATTRIBUTES* seguridad) {
    mira_el_modo();
    const BOOL bien = debajo.CreateDirectoryW(ruta, seguridad);
    if (!bien && ::GetLastError() == ERROR_ALREADY_EXISTS) {
        ::SetLastError(actual->escenario.creacion_de_lo_que_hay);
    }
    if (bien) {
        ya_no_falta(ruta);
        if (hay_marcados()) {
            actual->marcados.erase(clave_de_ruta(ruta));  // one of before, taken away behind this layer
        }
    }
    return bien;
}

BOOL WINAPI quita_directorio(const wchar_t* ruta) {
    mira_el_modo();
    if (ruta != nullptr && hay_marcados() && actual->marcados.count(clave_de_ruta(ruta)) != 0) {
        return niega(ERROR_ACCESS_DENIED);
    }
    texto_w limpia = ruta == nullptr ? texto_w() : ruta;
    while (!limpia.empty() && (limpia.back() == L'\\' || limpia.back() == L'/')) {
        limpia.pop_back();
    }
    if (actual->escenario.enlaces_por_si_mismos && !limpia.empty() &&
        es_enlace_a_directorio(limpia.c_str())) {
        return quita_enlace(limpia) ? TRUE : niega(ERROR_ACCESS_DENIED);
    }
    return debajo.RemoveDirectoryW(ruta);
}

BOOL WINAPI mueve(const wchar_t* origen, const wchar_t* destino, DWORD indicadores) {
    mira_el_modo();
    const BOOL bien = debajo.MoveFileExW(origen, destino, indicadores);
    if (bien) {
        ya_no_falta(destino);
    } else if (!actual->mirados.empty() && ::GetLastError() == ERROR_SHARING_VIOLATION) {
        ::SetLastError(actual->escenario.codigo_de_escaner);
    }
    return bien;
}

UINT WINAPI nombra_temporal(const wchar_t* directorio, const wchar_t* prefijo, UINT numero, wchar_t* nombre) {
    const UINT hecho = debajo.GetTempFileNameW(directorio, prefijo, numero, nombre);
    if (hecho != 0 && actual->escenario.escaner_ms != 0) {
        mira_fichero_nuevo(nombre);
    }
    return hecho;
}

void marca_encontrado(const texto_w& directorio, void* datos) {
    auto* entrada = static_cast<WIN32_FIND_DATAW*>(datos);
    if (es_marcado(directorio + L"\\" + entrada->cFileName)) {
        entrada->dwFileAttributes |= FILE_ATTRIBUTE_READONLY;
    }
}

HANDLE WINAPI busca(const wchar_t* patron, FINDEX_INFO_LEVELS nivel, void* datos, FINDEX_SEARCH_OPS busqueda,
                    void* filtro, DWORD indicadores) {
    mira_el_modo();
    if (se_recuerda_que_falta(patron)) {
        return niega_manija(ERROR_FILE_NOT_FOUND);
    }
    const HANDLE h = debajo.FindFirstFileExW(patron, nivel, datos, busqueda, filtro, indicadores);
    recuerda(patron, h == INVALID_HANDLE_VALUE);
    if (h != INVALID_HANDLE_VALUE && hay_marcados()) {
        const texto_w completo = clave_de_ruta(patron);
        const texto_w directorio = completo.substr(0, completo.rfind(L'\\'));
        actual->busquedas[h] = directorio;
        marca_encontrado(directorio, datos);
    }
    return h;
}
BOOL WINAPI busca_otro(HANDLE h, WIN32_FIND_DATAW* datos) {
    mira_el_modo();
    const BOOL hay = debajo.FindNextFileW(h, datos);
    if (const auto i = actual->busquedas.find(h); hay && i != actual->busquedas.end()) {
        marca_encontrado(i->second, datos);
    }
    return hay;
}
BOOL WINAPI acaba_busqueda(HANDLE h) {
    actual->busquedas.erase(h);
    return debajo.FindClose(h);
}

BOOL WINAPI no_sigue_enlaces() {
    return actual->escenario.enlaces_por_si_mismos ? FALSE : debajo.sigue_enlaces();
}

// ---- Registry

texto_w nombre_de_clave_en_minusculas(HKEY clave) {
    texto_w nombre = nombre_de_clave(clave);
    ::CharLowerBuffW(nombre.data(), static_cast<DWORD>(nombre.size()));
    return nombre;
}

LSTATUS WINAPI abre_clave(HKEY padre, const wchar_t* ruta, DWORD opciones, REGSAM acceso, HKEY* clave) {
    const LSTATUS error = debajo.RegOpenKeyExW(padre, ruta, opciones, acceso, clave);
    if (error != ERROR_SUCCESS || actual->claves_negadas.empty() ||
        actual->claves_negadas.count(nombre_de_clave_en_minusculas(*clave)) == 0) {
        return error;
    }
    ++actual->intervenciones;
    debajo.RegCloseKey(*clave);
    *clave = nullptr;
    return ERROR_ACCESS_DENIED;
}

// ---- Processes

HANDLE WINAPI toma_instantanea(DWORD que, DWORD pid) {
    // The heaps of another process are told by a thread that is started in it; the threads are those of the machine.
    constexpr DWORD cara = TH32CS_SNAPHEAPLIST;
    actual->hilos_ajenos += (que & cara) != 0 && pid != ::GetCurrentProcessId() ? 1 : 0;
    const HANDLE h = debajo.CreateToolhelp32Snapshot(que, pid);
    if (h != INVALID_HANDLE_VALUE && actual->de_32_bits.count(pid) != 0) {
        actual->instantaneas[h] = {pid, que};
    }
    return h;
}
// Of a 32-bit process its executable and what carries it stand on the 64-bit side.
bool es_del_lado_de_64(const MODULEENTRY32W& modulo) {
    texto_w nombre = modulo.szModule;
    ::CharLowerBuffW(nombre.data(), static_cast<DWORD>(nombre.size()));
    return nombre == L"ntdll.dll" || nombre.compare(0, 5, L"wow64") == 0 ||
           (nombre.size() > 4 && nombre.compare(nombre.size() - 4, 4, L".exe") == 0);
}
BOOL sigue_hasta_visible(HANDLE h, MODULEENTRY32W* modulo, BOOL hay) {
    const auto i = actual->instantaneas.find(h);
    if (i == actual->instantaneas.end() || (i->second.que & TH32CS_SNAPMODULE32) != 0) {
        return hay;
    }
    while (hay && !es_del_lado_de_64(*modulo)) {
        ++actual->intervenciones;
        hay = debajo.Module32NextW(h, modulo);
    }
    return hay;
}
BOOL WINAPI primer_modulo(HANDLE h, MODULEENTRY32W* modulo) {
    const BOOL hay = sigue_hasta_visible(h, modulo, debajo.Module32FirstW(h, modulo));
    if (const auto i = actual->instantaneas.find(h); hay && i != actual->instantaneas.end()) {
        i->second.repite = (i->second.que & TH32CS_SNAPMODULE32) != 0;
        i->second.primero = *modulo;
    }
    return hay;
}
// The executable stands twice in such a list, once for each width, and not always in the same case.
BOOL WINAPI otro_modulo(HANDLE h, MODULEENTRY32W* modulo) {
    if (const auto i = actual->instantaneas.find(h); i != actual->instantaneas.end() && i->second.repite) {
        ++actual->intervenciones;
        i->second.repite = false;
        *modulo = i->second.primero;
        ::CharUpperW(modulo->szExePath);
        return TRUE;
    }
    return sigue_hasta_visible(h, modulo, debajo.Module32NextW(h, modulo));
}
// The tests of many threads run here, too.
class cerrojo {
public:
    cerrojo() { ::EnterCriticalSection(i_seccion()); }
    ~cerrojo() { ::LeaveCriticalSection(i_seccion()); }
    cerrojo(const cerrojo&) = delete;
    cerrojo& operator=(const cerrojo&) = delete;

private:
    static CRITICAL_SECTION* i_seccion() {
        static CRITICAL_SECTION* const seccion = [] {
            static CRITICAL_SECTION s;
            ::InitializeCriticalSection(&s);
            return &s;
        }();
        return seccion;
    }
};
template <auto Funcion>
struct a_solas;
template <class R, class... A, R(WINAPI* Funcion)(A...)>
struct a_solas<Funcion> {
    static R WINAPI llama(A... a) {
        const cerrojo uno_tras_otro;
        return Funcion(a...);
    }
};

void desvia() {
    debajo = interno::sistema;
    tabla_sistema& t = interno::sistema;
    t.GetFileAttributesW = a_solas<atributos>::llama;
    t.GetFileAttributesExW = a_solas<atributos_ex>::llama;
    t.SetFileAttributesW = a_solas<pon_atributos>::llama;
    t.CreateFileW = a_solas<crea>::llama;
    t.CloseHandle = a_solas<cierra>::llama;
    t.GetFileInformationByHandle = a_solas<informacion>::llama;
    t.GetFileInformationByHandleEx = a_solas<informacion_ex>::llama;
    t.SetFileInformationByHandle = a_solas<pon_informacion>::llama;
    t.SetFileTime = a_solas<pon_fechas>::llama;
    t.numero_de_fichero = a_solas<numero_de_fichero>::llama;
    t.DeleteFileW = a_solas<borra_fichero>::llama;
    t.CreateDirectoryW = a_solas<crea_directorio>::llama;
    t.RemoveDirectoryW = a_solas<quita_directorio>::llama;
    t.MoveFileExW = a_solas<mueve>::llama;
    t.GetTempFileNameW = a_solas<nombra_temporal>::llama;
    t.FindFirstFileExW = a_solas<busca>::llama;
    t.FindNextFileW = a_solas<busca_otro>::llama;
    t.FindClose = a_solas<acaba_busqueda>::llama;
    t.abre_entrada = a_solas<abre_entrada>::llama;
    t.sigue_enlaces = a_solas<no_sigue_enlaces>::llama;
    t.RegOpenKeyExW = a_solas<abre_clave>::llama;
    t.CreateToolhelp32Snapshot = a_solas<toma_instantanea>::llama;
    t.Module32FirstW = a_solas<primer_modulo>::llama;
    t.Module32NextW = a_solas<otro_modulo>::llama;
}

}  // namespace

como_windows::como_windows(const escenario_windows& escenario) : estado_(new estado) {
    estado_->escenario = escenario;
    estado_->antes = actual;
    actual = estado_.get();
    if (estado_->antes == nullptr) {
        desvia();
    }
    if (escenario.zona != nullptr) {
        estado_->reglas.emplace(*escenario.zona);
    }
}

como_windows::~como_windows() {
    estado_->reglas.reset();
    pasa_ms(estado_->escenario.escaner_ms);
    if (estado_->antes == nullptr) {
        interno::sistema = debajo;
    }
    actual = estado_->antes;
}

void como_windows::marca(const std::string& directorio) {
    EXPECT_TRUE(pon_atributos(w(directorio).c_str(), FILE_ATTRIBUTE_READONLY)) << directorio;
}
bool como_windows::esta_marcado(const std::string& directorio) const {
    return (atributos(w(directorio).c_str()) & FILE_ATTRIBUTE_READONLY) != 0;
}
void como_windows::no_se_deja_preguntar(const std::string& ruta, DWORD codigo) {
    estado_->preguntados[clave_de_ruta(w(ruta).c_str())] = codigo;
}
void como_windows::no_se_deja_abrir(HKEY clave) {
    estado_->claves_negadas.insert(nombre_de_clave_en_minusculas(clave));
}
void como_windows::pasa_ms(unsigned long milisegundos) {
    estado_->ahora_ms += milisegundos;
    deja_de_mirar(*estado_);
}
void como_windows::es_de_32_bits(DWORD pid) {
    estado_->de_32_bits.insert(pid);
}
unsigned como_windows::dialogos() const {
    return estado_->dialogos;
}
unsigned como_windows::hilos_ajenos() const {
    return estado_->hilos_ajenos;
}
unsigned como_windows::intervenciones() const {
    return estado_->intervenciones;
}

texto_w nombre_de_clave(HKEY clave) {
    using pregunta_nativa = LONG(NTAPI*)(HANDLE, int, void*, ULONG, ULONG*);
    const auto NtQueryKey = reinterpret_cast<pregunta_nativa>(
        reinterpret_cast<void (*)()>(::GetProcAddress(::GetModuleHandleA("ntdll"), "NtQueryKey")));
    constexpr int solo_nombre = 3;  // KeyNameInformation: the count of bytes, and the name
    char datos[2048];
    ULONG bytes = 0;
    if (NtQueryKey(clave, solo_nombre, datos, sizeof datos, &bytes) != 0) {
        return {};
    }
    ULONG largo = 0;
    std::memcpy(&largo, datos, sizeof largo);
    texto_w nombre(largo / sizeof(wchar_t), L'\0');
    std::memcpy(nombre.data(), datos + sizeof largo, largo);
    return nombre;
}

bool se_pide_como_windows() {
    return !variable(L"LUMODIR_COMO_WINDOWS").empty();
}

}  // namespace apoyo
#endif
