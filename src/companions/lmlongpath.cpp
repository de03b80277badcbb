// See lmlongpath.hpp.
#include "companions/lmlongpath.hpp"

#include <algorithm>
#include <utility>

#include "companions/directorio_abierto.hpp"
#include "companions/error_interno.hpp"
#include "companions/sin_dialogos.hpp"

namespace interno {
namespace {

// From this length on Windows refuses directories (MAX_PATH less room for a short name).
constexpr std::size_t primera_longitud_larga = 248;

constexpr vista_w prefijo_largo = L"\\\\?\\";
constexpr vista_w prefijo_dispositivo = L"\\\\.\\";
constexpr vista_w prefijo_unc = L"\\\\?\\UNC\\";

// An absolute path never grows when it is made full, so a short one needs no question.
bool i_es_absoluta(vista_w ruta) noexcept {
    const bool con_unidad =
        ruta.size() >= 3 && lmstdc_isalpha(ruta[0]) && ruta[1] == L':' && es_separador(ruta[2]);
    const bool compartida = ruta.size() >= 2 && es_separador(ruta[0]) && es_separador(ruta[1]);
    return con_unidad || compartida;
}

// A share with several separators between its server and its name, which not every system takes for that share; with
// one only. A NULL string for any other path.
cadena_w i_recurso_sin_repeticiones(vista_w ruta, lugar donde) {
    if (ruta.size() < 2 || !es_separador(ruta[0]) || !es_separador(ruta[1]) || i_lleva_prefijo(ruta)) {
        return {};
    }
    constexpr vista_w separadores = L"\\/";
    const std::size_t fin_de_maquina = ruta.find_first_of(separadores, 2);
    const std::size_t recurso = ruta.find_first_not_of(separadores, fin_de_maquina);
    return recurso == vista_w::npos || fin_de_maquina == 2 || recurso == fin_de_maquina + 1
               ? cadena_w()
               : concatena<wchar_t>({ruta.substr(0, fin_de_maquina), L"\\", ruta.substr(recurso)}, donde);
}

bool i_cabe_tal_cual(vista_w ruta) noexcept {
    return (ruta.size() < primera_longitud_larga && i_es_absoluta(ruta)) || i_lleva_prefijo(ruta);
}

// Whether the system takes a full form as it is.
bool i_es_corta_o_prefijada(vista_w forma) noexcept {
    return forma.size() < primera_longitud_larga || i_lleva_prefijo(forma);
}

cadena_w i_prefija(vista_w forma, lugar donde) noexcept {
    return empieza_por(forma, L"\\\\") ? concatena<wchar_t>({prefijo_unc, forma.substr(2)}, donde)
                                       : concatena<wchar_t>({prefijo_largo, forma}, donde);
}

// The full form of a path that needs `necesario` units, terminator included: relative parts resolved, "/" turned into
// "\"; NULL when the system cannot tell.
cadena_w i_forma_completa(const wchar_t* ruta, DWORD necesario, lugar donde) noexcept {
    while (necesario != 0) {
        cadena_w completa = cadena_w::con_sitio(necesario, donde);
        const DWORD escrito = sistema.GetFullPathNameW(ruta, necesario + 1, completa.datos(), nullptr);
        if (escrito != 0 && escrito <= necesario) {
            completa.acorta(escrito);
            return completa;
        }
        necesario = escrito;  // the current directory changed meanwhile
    }
    return {};
}

// Making a path full cuts the points at its end. A search pattern must keep them: "*." asks for less than "*".
bool i_pierde_puntos_finales(vista_w nombre) noexcept {
    return acaba_en(nombre, L".") && nombre != L"." && nombre != L"..";
}

// The root of a drive or of a share stands in no directory.
bool i_es_raiz(vista_w ruta) noexcept {
    constexpr vista_w separadores = L"\\/";
    if (empieza_por_sin_caja(ruta, prefijo_unc)) {
        return extrae_token(ruta.substr(prefijo_unc.size()), 3, separadores).empty();
    }
    if (i_lleva_prefijo(ruta)) {
        return extrae_token(ruta.substr(prefijo_largo.size()), 2, separadores).empty();
    }
    const bool compartida = ruta.size() >= 2 && es_separador(ruta[0]) && es_separador(ruta[1]);
    return ruta.empty() || ruta.back() == L':' || (compartida && extrae_token(ruta, 3, separadores).empty());
}

// What the entry in the directory says of a name that cannot be asked itself, which failed with `codigo`.
existencia i_existencia_de_entrada(const ruta_fijada& ruta, DWORD codigo) noexcept {
    const sin_dialogos callado;
    const existencia ni_idea = {existencia::estado::no_se_sabe, codigo, INVALID_FILE_ATTRIBUTES};
    vista_w forma(ruta.c_str());
    const std::size_t entero = forma.size();
    while (acaba_en_separador(forma)) {
        forma.remove_suffix(1);
    }
    const vista_w nombres =
        forma.substr(std::min(forma.size(), i_lleva_prefijo(forma) ? prefijo_largo.size() : 0));
    if (i_es_raiz(forma) || nombres.find_first_of(L"*?<>\"") != vista_w::npos) {
        return ni_idea;
    }
    const cadena_w sin_separador = forma.size() < entero ? cadena_w(forma) : cadena_w();
    WIN32_FIND_DATAW datos;
    const manija_busqueda encontrada(
        sistema.FindFirstFileExW(sin_separador.es_nula() ? ruta.c_str() : sin_separador.c_str(),
                                 FindExInfoBasic, &datos, FindExSearchNameMatch, nullptr, 0));
    const DWORD codigo_de_busqueda = ::GetLastError();
    if (encontrada.valida()) {
        return {existencia::estado::hay, ERROR_SUCCESS, datos.dwFileAttributes};
    }
    return i_dice_que_falta(codigo_de_busqueda)
               ? existencia{existencia::estado::falta, codigo_de_busqueda, INVALID_FILE_ATTRIBUTES}
               : ni_idea;
}

// What follows the last separator of a path, or its drive.
vista_w i_ultimo_componente(vista_w ruta) noexcept {
    const std::size_t separador = ruta.find_last_of(L"\\/");
    if (separador != vista_w::npos) {
        return ruta.substr(separador + 1);
    }
    return ruta.substr(ruta.size() >= 2 && ruta[1] == L':' ? 2 : 0);
}

// Hands on the outcome of a call; the code is read in the very next statement.
BOOL i_con_codigo(BOOL bien, DWORD* error_out) noexcept {
    if (!bien && error_out != nullptr) {
        *error_out = ::GetLastError();
    }
    return bien;
}

// Whether the system would act on what the path names; where not, the thread's code says why.
bool i_alcanza_lo_nombrado(const ruta_fijada& ruta) noexcept {
    const DWORD codigo = i_codigo_si_lleva_a_otro_sitio(ruta);
    if (codigo != ERROR_SUCCESS) {
        ::SetLastError(codigo);
    }
    return codigo == ERROR_SUCCESS;
}

BOOL i_mueve(const ruta_fijada& origen, const ruta_fijada& destino, DWORD indicadores) noexcept {
    const sin_dialogos callado;
    return i_alcanza_lo_nombrado(origen) && sistema.MoveFileExW(origen.c_str(), destino.c_str(), indicadores);
}

}  // namespace

bool i_lleva_prefijo(vista_w ruta) noexcept {
    return empieza_por(ruta, prefijo_largo) || empieza_por(ruta, prefijo_dispositivo);
}

bool i_mismo_nombre(vista_w a, vista_w b) noexcept {
    return ::CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                                  TRUE) == CSTR_EQUAL;
}

ruta_fijada::ruta_fijada(const wchar_t* dada, uso para, lugar donde)
    : dada_(dada), texto_(dada == nullptr ? L"" : dada) {
    const vista_w original = a_vista(dada);
    cadena_w recurso = i_recurso_sin_repeticiones(original, donde);
    const vista_w texto = recurso.es_nula() ? original : recurso.ver();
    const wchar_t* de = recurso.es_nula() ? dada : recurso.c_str();
    if (texto.empty() || i_cabe_tal_cual(texto)) {
        texto_ = recurso.es_nula() ? texto_ : de;
        larga_ = std::move(recurso);
        return;
    }
    i_fija(de, donde);
    const vista_w nombre = i_ultimo_componente(original);
    if (para == uso::busqueda && i_pierde_puntos_finales(nombre)) {
        i_devuelve_nombre(nombre, donde);
    }
}

void ruta_fijada::i_fija(const wchar_t* de, lugar donde) {
    const DWORD largo = sistema.GetFullPathNameW(de, sitio_corto, corta_, nullptr);
    if (largo == 0) {
        return;  // the system cannot tell: it is given what the caller gave
    }
    vista_w forma(corta_, largo);
    if (largo >= sitio_corto) {
        larga_ = i_forma_completa(de, largo, donde);
        if (larga_.es_nula()) {
            return;
        }
        forma = larga_.ver();
    }
    if (!i_es_corta_o_prefijada(forma)) {
        larga_ = i_prefija(forma, donde);
    }
    texto_ = larga_.es_nula() ? corta_ : larga_.c_str();
}

void ruta_fijada::i_devuelve_nombre(vista_w nombre, lugar donde) {
    const vista_w forma = a_vista(texto_);
    larga_ = concatena<wchar_t>({forma.substr(0, forma.rfind(L'\\') + 1), nombre}, donde);
    texto_ = larga_.c_str();
}

const wchar_t* ruta_fijada::dada_si_cabe() const noexcept {
    const vista_w forma(texto_);
    return forma.size() >= primera_longitud_larga && i_lleva_prefijo(forma) ? texto_ : dada_;
}

DWORD lmlongpath_GetFileAttributesW(const ruta_fijada& ruta) noexcept {
    const sin_dialogos callado;
    return sistema.GetFileAttributesW(ruta.c_str());
}

bool i_dice_que_falta(DWORD codigo) noexcept {
    switch (codigo) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_BAD_NETPATH:   // no such server
        case ERROR_BAD_NET_NAME:  // no such share
        case ERROR_INVALID_NAME:  // no file can bear it
        case ERROR_BAD_PATHNAME:
            return true;
        default:
            return false;
    }
}

existencia i_existencia(const ruta_fijada& ruta) noexcept {
    const DWORD atributos = lmlongpath_GetFileAttributesW(ruta);
    if (atributos != INVALID_FILE_ATTRIBUTES) {
        return {existencia::estado::hay, ERROR_SUCCESS, atributos};
    }
    const DWORD codigo = ::GetLastError();
    if (codigo == ERROR_ACCESS_DENIED || codigo == ERROR_SHARING_VIOLATION) {
        return i_existencia_de_entrada(ruta, codigo);
    }
    return {i_dice_que_falta(codigo) ? existencia::estado::falta : existencia::estado::no_se_sabe, codigo,
            INVALID_FILE_ATTRIBUTES};
}

bool lmlongpath_waccess(const ruta_fijada& ruta, unsigned modo) noexcept {
    const existencia fichero = i_existencia(ruta);
    // As the C runtime answers: only the read-only mark of a file stands against writing.
    const bool escritura = (modo & acceso_escritura) != 0;
    return fichero.hay() && (!escritura || !fichero.es_de_solo_lectura() || fichero.es_directorio());
}

int lmlongpath_wchmod(const ruta_fijada& ruta, int modo) noexcept {
    const sin_dialogos callado;
    const DWORD atributos = sistema.GetFileAttributesW(ruta.c_str());
    if (atributos == INVALID_FILE_ATTRIBUTES) {
        return -1;
    }
    const DWORD nuevos = (modo & modo_escritura) != 0
                             ? atributos & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY)
                             : atributos | FILE_ATTRIBUTE_READONLY;
    // A set of no attributes must be said so: 0 would leave them unchanged.
    return i_alcanza_lo_nombrado(ruta) &&
                   sistema.SetFileAttributesW(ruta.c_str(), nuevos == 0 ? FILE_ATTRIBUTE_NORMAL : nuevos)
               ? 0
               : -1;
}

BOOL lmlongpath_GetFileAttributesExW(const ruta_fijada& ruta, WIN32_FILE_ATTRIBUTE_DATA* datos) noexcept {
    const sin_dialogos callado;
    return sistema.GetFileAttributesExW(ruta.c_str(), GetFileExInfoStandard, datos);
}

manija_fichero lmlongpath_CreateFileW(const ruta_fijada& ruta, DWORD acceso, DWORD compartir,
                                      SECURITY_ATTRIBUTES* seguridad, DWORD disposicion, DWORD indicadores,
                                      HANDLE plantilla, DWORD* error_out) noexcept {
    const sin_dialogos callado;
    manija_fichero abierto(
        sistema.CreateFileW(ruta.c_str(), acceso, compartir, seguridad, disposicion, indicadores, plantilla));
    i_con_codigo(abierto.valida(), error_out);
    return abierto;
}

BOOL lmlongpath_DeleteFileW(const ruta_fijada& ruta, DWORD* error_out) noexcept {
    const sin_dialogos callado;
    return i_con_codigo(i_alcanza_lo_nombrado(ruta) && sistema.DeleteFileW(ruta.c_str()), error_out);
}

BOOL lmlongpath_CreateDirectoryW(const ruta_fijada& ruta, SECURITY_ATTRIBUTES* seguridad,
                                 DWORD* error_out) noexcept {
    const sin_dialogos callado;
    return i_con_codigo(sistema.CreateDirectoryW(ruta.c_str(), seguridad), error_out);
}

BOOL lmlongpath_RemoveDirectoryW(const ruta_fijada& ruta, DWORD* error_out) noexcept {
    const sin_dialogos callado;
    return i_con_codigo(i_alcanza_lo_nombrado(ruta) && sistema.RemoveDirectoryW(ruta.c_str()), error_out);
}

BOOL lmlongpath_RenameFileW(const ruta_fijada& antigua, const ruta_fijada& nueva, DWORD* error_out) noexcept {
    return i_con_codigo(i_mueve(antigua, nueva, MOVEFILE_COPY_ALLOWED), error_out);
}

BOOL lmlongpath_MoveFileW(const ruta_fijada& origen, const ruta_fijada& destino, DWORD indicadores) noexcept {
    return i_mueve(origen, destino, indicadores);
}

manija_busqueda lmlongpath_FindFirstFileW(const ruta_fijada& patron, WIN32_FIND_DATAW* datos,
                                          bool solo_nombres) noexcept {
    const sin_dialogos callado;
    return manija_busqueda(sistema.FindFirstFileExW(
        patron.c_str(), solo_nombres ? FindExInfoBasic : FindExInfoStandard, datos, FindExSearchNameMatch,
        nullptr, solo_nombres ? FIND_FIRST_EX_LARGE_FETCH : 0));
}

DWORD lmlongpath_GetShortPathNameW(const wchar_t* ruta, wchar_t* destino, DWORD sitio) noexcept {
    const sin_dialogos callado;
    return sistema.GetShortPathNameW(ruta_fijada(ruta).dada_si_cabe(), destino, sitio);
}

DWORD lmlongpath_GetLongPathNameW(const wchar_t* ruta, wchar_t* destino, DWORD sitio) noexcept {
    const sin_dialogos callado;
    return sistema.GetLongPathNameW(ruta_fijada(ruta).dada_si_cabe(), destino, sitio);
}

cadena_w lmlongpath_forma_completa(const ruta_fijada& ruta, lugar donde) {
    // Asked for its full form, the system would cut the end of what it takes literally in every other call.
    if (empieza_por(vista_w(ruta.c_str()), prefijo_largo)) {
        return cadena_w(vista_w(ruta.c_str()), donde);
    }
    cadena_w completa = i_forma_completa(ruta.c_str(), MAX_PATH, donde);
    return completa.es_nula() ? cadena_w(vista_w(ruta.c_str()), donde) : std::move(completa);
}

cadena_w lmlongpath_forma_literal(const wchar_t* ruta, lugar donde) {
    const vista_w dada = a_vista(ruta);
    if (i_lleva_prefijo(dada)) {
        return cadena_w(dada, donde);
    }
    const cadena_w recurso = i_recurso_sin_repeticiones(dada, donde);
    cadena_w completa = i_forma_completa(recurso.es_nula() ? ruta : recurso.c_str(), MAX_PATH, donde);
    return completa.es_nula() || i_lleva_prefijo(completa.ver()) ? std::move(completa)
                                                                 : i_prefija(completa.ver(), donde);
}

cadena_w lmlongpath_desprepend_path(vista_w ruta, lugar donde) {
    if (empieza_por_sin_caja(ruta, prefijo_unc)) {
        return concatena<wchar_t>({L"\\\\", ruta.substr(prefijo_unc.size())}, donde);
    }
    // Other names of the system (of volumes, of devices) have no ordinary form.
    const vista_w resto = empieza_por(ruta, prefijo_largo) ? ruta.substr(prefijo_largo.size()) : vista_w();
    const bool con_unidad = resto.size() >= 2 && lmstdc_isalpha(resto[0]) && resto[1] == L':';
    return cadena_w(con_unidad ? resto : ruta, donde);
}

std::optional<unsigned long long> i_tamanyo(const ruta_fijada& ruta, DWORD* error_out) noexcept {
    WIN32_FILE_ATTRIBUTE_DATA datos;
    if (!i_con_codigo(lmlongpath_GetFileAttributesExW(ruta, &datos), error_out)) {
        return {};
    }
    return static_cast<unsigned long long>(datos.nFileSizeHigh) << 32 | datos.nFileSizeLow;
}

}  // namespace interno
