// See lmlongpath.hpp.
#include "companions/lmlongpath.hpp"

#include <utility>

#include "companions/error_interno.hpp"
#include "companions/lmlongpath.h"

namespace lumodir {
namespace {

// From this length on Windows refuses directories (MAX_PATH less room for a short name).
constexpr std::size_t primera_longitud_larga = 248;

constexpr vista_w prefijo_largo = L"\\\\?\\";
constexpr vista_w prefijo_dispositivo = L"\\\\.\\";
constexpr vista_w prefijo_unc = L"\\\\?\\UNC\\";

bool i_lleva_prefijo(vista_w ruta) noexcept {
    return empieza_por(ruta, prefijo_largo) || empieza_por(ruta, prefijo_dispositivo);
}

// An absolute path never grows when it is made full, so a short one needs no question.
bool i_es_absoluta(vista_w ruta) noexcept {
    const bool con_unidad = ruta.size() >= 3 && es_letra(ruta[0]) && ruta[1] == L':' && es_separador(ruta[2]);
    const bool compartida = ruta.size() >= 2 && es_separador(ruta[0]) && es_separador(ruta[1]);
    return con_unidad || compartida;
}

bool i_cabe_tal_cual(vista_w ruta) noexcept {
    return (ruta.size() < primera_longitud_larga && i_es_absoluta(ruta)) || i_lleva_prefijo(ruta);
}

// The full form: relative parts resolved, "/" turned into "\"; NULL when the system cannot tell.
cadena_w i_forma_completa(const wchar_t* ruta, lugar donde) noexcept {
    DWORD necesario = sistema.GetFullPathNameW(ruta, 0, nullptr, nullptr);
    while (necesario != 0) {
        cadena_w completa = cadena_w::con_sitio(necesario, donde);
        const DWORD escrito = sistema.GetFullPathNameW(ruta, necesario + 1, completa.datos(), nullptr);
        if (escrito == 0) {
            break;
        }
        if (escrito <= necesario) {
            completa.acorta(escrito);
            return completa;
        }
        necesario = escrito;  // the current directory changed meanwhile
    }
    return {};
}

// The path with its prefix; NULL where the system takes it as it is.
cadena_w i_con_prefijo(const wchar_t* ruta, lugar donde) noexcept {
    const vista_w original = a_vista(ruta);
    if (original.empty() || i_cabe_tal_cual(original)) {
        return {};
    }
    const cadena_w completa = i_forma_completa(ruta, donde);
    const vista_w forma = completa.ver();
    if (completa.es_nula() || forma.size() < primera_longitud_larga || i_lleva_prefijo(forma)) {
        return {};
    }
    return empieza_por(forma, L"\\\\") ? concatena<wchar_t>({prefijo_unc, forma.substr(2)}, donde)
                                       : concatena<wchar_t>({prefijo_largo, forma}, donde);
}

// Making a path full cuts the points at its end. A search pattern must keep them: "*." asks for less than "*".
cadena_w i_con_puntos_finales(cadena_w completa, vista_w patron, lugar donde) noexcept {
    const std::size_t barra = patron.find_last_of(L"\\/");
    const vista_w nombre = barra == vista_w::npos ? patron : patron.substr(barra + 1);
    if (!acaba_en(nombre, L".") || nombre == L"." || nombre == L"..") {
        return completa;
    }
    const vista_w directorio = completa.ver().substr(0, completa.ver().rfind(L'\\') + 1);
    return concatena<wchar_t>({directorio, nombre}, donde);
}

// Hands on the outcome of a call; the code is read in the very next statement.
BOOL i_con_codigo(BOOL bien, DWORD* error_out) noexcept {
    if (!bien && error_out != nullptr) {
        *error_out = ::GetLastError();
    }
    return bien;
}

BOOL i_mueve(const wchar_t* origen, const wchar_t* destino, DWORD indicadores) noexcept {
    return sistema.MoveFileExW(ruta_sistema(origen).c_str(), ruta_sistema(destino).c_str(), indicadores);
}

}  // namespace

ruta_sistema::ruta_sistema(const wchar_t* ruta, uso para, lugar donde) : propia_(i_con_prefijo(ruta, donde)) {
    if (para == uso::busqueda && !propia_.es_nula()) {
        propia_ = i_con_puntos_finales(std::move(propia_), a_vista(ruta), donde);
    }
    texto_ = propia_.es_nula() ? (ruta == nullptr ? L"" : ruta) : propia_.c_str();
}

DWORD lmlongpath_GetFileAttributesW(const wchar_t* ruta) noexcept {
    return sistema.GetFileAttributesW(ruta_sistema(ruta).c_str());
}

unsigned short lmlongpath_waccess(const wchar_t* ruta, unsigned modo) noexcept {
    const DWORD atributos = lmlongpath_GetFileAttributesW(ruta);
    if (atributos == INVALID_FILE_ATTRIBUTES) {
        return 0;
    }
    // As the C runtime answers: only the read-only mark of a file stands against writing.
    const bool escritura = (modo & acceso_escritura) != 0;
    const bool fichero_protegido =
        (atributos & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) == FILE_ATTRIBUTE_READONLY;
    return escritura && fichero_protegido ? 0 : 1;
}

int lmlongpath_wchmod(const wchar_t* ruta, int modo) noexcept {
    const ruta_sistema camino(ruta);
    const DWORD atributos = sistema.GetFileAttributesW(camino.c_str());
    if (atributos == INVALID_FILE_ATTRIBUTES) {
        return -1;
    }
    const DWORD nuevos = (modo & modo_escritura) != 0
                             ? atributos & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY)
                             : atributos | FILE_ATTRIBUTE_READONLY;
    // A set of no attributes must be said so: 0 would leave them unchanged.
    return sistema.SetFileAttributesW(camino.c_str(), nuevos == 0 ? FILE_ATTRIBUTE_NORMAL : nuevos) ? 0 : -1;
}

BOOL lmlongpath_GetFileAttributesExW(const wchar_t* ruta, WIN32_FILE_ATTRIBUTE_DATA* datos) noexcept {
    return sistema.GetFileAttributesExW(ruta_sistema(ruta).c_str(), GetFileExInfoStandard, datos);
}

manija_fichero lmlongpath_CreateFileW(const wchar_t* ruta, DWORD acceso, DWORD compartir,
                                      SECURITY_ATTRIBUTES* seguridad, DWORD disposicion, DWORD indicadores,
                                      HANDLE plantilla, DWORD* error_out) noexcept {
    manija_fichero abierto(sistema.CreateFileW(ruta_sistema(ruta).c_str(), acceso, compartir, seguridad,
                                               disposicion, indicadores, plantilla));
    i_con_codigo(abierto.valida(), error_out);
    return abierto;
}

BOOL lmlongpath_DeleteFileW(const wchar_t* ruta, DWORD* error_out) noexcept {
    return i_con_codigo(sistema.DeleteFileW(ruta_sistema(ruta).c_str()), error_out);
}

BOOL lmlongpath_CreateDirectoryW(const wchar_t* ruta, SECURITY_ATTRIBUTES* seguridad,
                                 DWORD* error_out) noexcept {
    return i_con_codigo(sistema.CreateDirectoryW(ruta_sistema(ruta).c_str(), seguridad), error_out);
}

BOOL lmlongpath_RemoveDirectoryW(const wchar_t* ruta, DWORD* error_out) noexcept {
    return i_con_codigo(sistema.RemoveDirectoryW(ruta_sistema(ruta).c_str()), error_out);
}

BOOL lmlongpath_RenameFileW(const wchar_t* antigua, const wchar_t* nueva, DWORD* error_out) noexcept {
    return i_con_codigo(i_mueve(antigua, nueva, MOVEFILE_COPY_ALLOWED), error_out);
}

BOOL lmlongpath_MoveFileW(const wchar_t* origen, const wchar_t* destino, DWORD indicadores) noexcept {
    return i_mueve(origen, destino, indicadores);
}

manija_busqueda lmlongpath_FindFirstFileW(const wchar_t* patron, WIN32_FIND_DATAW* datos,
                                          bool solo_nombres) noexcept {
    return manija_busqueda(sistema.FindFirstFileExW(ruta_sistema(patron, ruta_sistema::uso::busqueda).c_str(),
                                                    solo_nombres ? FindExInfoBasic : FindExInfoStandard,
                                                    datos, FindExSearchNameMatch, nullptr,
                                                    solo_nombres ? FIND_FIRST_EX_LARGE_FETCH : 0));
}

DWORD lmlongpath_GetShortPathNameW(const wchar_t* ruta, wchar_t* destino, DWORD sitio) noexcept {
    return sistema.GetShortPathNameW(ruta_sistema(ruta).c_str(), destino, sitio);
}

DWORD lmlongpath_GetLongPathNameW(const wchar_t* ruta, wchar_t* destino, DWORD sitio) noexcept {
    return sistema.GetLongPathNameW(ruta_sistema(ruta).c_str(), destino, sitio);
}

cadena_w lmlongpath_desprepend_path(vista_w ruta, lugar donde) {
    if (empieza_por_sin_caja(ruta, prefijo_unc)) {
        return concatena<wchar_t>({L"\\\\", ruta.substr(prefijo_unc.size())}, donde);
    }
    // Other names of the system (of volumes, of devices) have no ordinary form.
    const vista_w resto = empieza_por(ruta, prefijo_largo) ? ruta.substr(prefijo_largo.size()) : vista_w();
    const bool con_unidad = resto.size() >= 2 && es_letra(resto[0]) && resto[1] == L':';
    return cadena_w(con_unidad ? resto : ruta, donde);
}

}  // namespace lumodir

using namespace lumodir;

wchar_t* lmlongpath_prepended_path_si_necesario(const wchar_t* path) {
    if (!i_comprueba(path != nullptr, "(path) != NULL")) {
        return cadena_w(vista_w()).suelta();
    }
    cadena_w con_prefijo = i_con_prefijo(path, lugar::aqui());
    return con_prefijo.es_nula() ? cadena_w(a_vista(path)).suelta() : con_prefijo.suelta();
}

unsigned long long lmlongpath_GetFileSize(const wchar_t* path, unsigned long* error_out) {
    constexpr unsigned long long sin_tamanyo = ~0ull;
    if (!i_comprueba(path != nullptr, "(path) != NULL")) {
        return sin_tamanyo;
    }
    WIN32_FILE_ATTRIBUTE_DATA datos;
    if (!i_con_codigo(lmlongpath_GetFileAttributesExW(path, &datos), error_out)) {
        return sin_tamanyo;
    }
    return static_cast<unsigned long long>(datos.nFileSizeHigh) << 32 | datos.nFileSizeLow;
}
