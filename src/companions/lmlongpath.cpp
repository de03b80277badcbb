// See lmlongpath.hpp.
#include "companions/lmlongpath.hpp"

#include "companions/directorio_abierto.hpp"
#include "companions/error_interno.hpp"
#include "companions/respuesta_entera.hpp"
#include "companions/sin_dialogos.hpp"

namespace interno {
namespace {

// What the entry in the directory says of a name that cannot be asked itself, which failed with `codigo`.
existencia i_existencia_de_entrada(const ruta_fijada& ruta, DWORD codigo) noexcept {
    const sin_dialogos callado;
    const existencia ni_idea = {existencia::estado::no_se_sabe, codigo, INVALID_FILE_ATTRIBUTES};
    const std::size_t entero = vista_w(ruta.c_str()).size();
    const vista_w forma = i_sin_separadores_finales(ruta.c_str());
    if (i_es_raiz(forma) || i_sin_prefijo(forma).find_first_of(L"*?<>\"") != vista_w::npos) {
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

// Right after the call.
desenlace i_desenlace(bool hecho) noexcept {
    return {hecho, hecho ? DWORD{ERROR_SUCCESS} : ::GetLastError()};
}

cadena_w i_forma_de(const wchar_t* ruta, decltype(sistema.GetLongPathNameW) pregunta) noexcept {
    const sin_dialogos callado;
    const ruta_fijada fijada(ruta);
    return i_respuesta_entera<wchar_t>(
        [&](wchar_t* destino, DWORD sitio) { return pregunta(fijada.dada_si_cabe(), destino, sitio); });
}

// Whether the system would act on what the path names; where not, the thread's code says why.
bool i_alcanza_lo_nombrado(const ruta_fijada& ruta) noexcept {
    const DWORD codigo = i_codigo_si_lleva_a_otro_sitio(ruta);
    if (codigo != ERROR_SUCCESS) {
        ::SetLastError(codigo);
    }
    return codigo == ERROR_SUCCESS;
}

}  // namespace

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

bool lmlongpath_wchmod(const ruta_fijada& ruta, int modo) noexcept {
    const sin_dialogos callado;
    const DWORD atributos = sistema.GetFileAttributesW(ruta.c_str());
    if (atributos == INVALID_FILE_ATTRIBUTES) {
        return false;
    }
    // A set of no attributes must be said so: 0 would leave them unchanged.
    const DWORD nuevos = i_con_proteccion(atributos, modo);
    return i_alcanza_lo_nombrado(ruta) &&
           sistema.SetFileAttributesW(ruta.c_str(), nuevos == 0 ? FILE_ATTRIBUTE_NORMAL : nuevos) != FALSE;
}

datos_de_fichero lmlongpath_GetFileAttributesExW(const ruta_fijada& ruta) noexcept {
    const sin_dialogos callado;
    datos_de_fichero datos = {};
    const bool leidos = sistema.GetFileAttributesExW(ruta.c_str(), GetFileExInfoStandard, &datos) != FALSE;
    datos.codigo = leidos ? DWORD{ERROR_SUCCESS} : i_ultimo_error();
    return datos;
}

fichero_abierto lmlongpath_CreateFileW(const ruta_fijada& ruta, DWORD acceso, DWORD compartir,
                                       DWORD disposicion, DWORD indicadores) noexcept {
    const sin_dialogos callado;
    return fichero_abierto(
        sistema.CreateFileW(ruta.c_str(), acceso, compartir, nullptr, disposicion, indicadores, nullptr));
}

desenlace lmlongpath_DeleteFileW(const ruta_fijada& ruta) noexcept {
    const sin_dialogos callado;
    return i_desenlace(i_alcanza_lo_nombrado(ruta) && sistema.DeleteFileW(ruta.c_str()));
}

desenlace lmlongpath_CreateDirectoryW(const ruta_fijada& ruta) noexcept {
    const sin_dialogos callado;
    return i_desenlace(sistema.CreateDirectoryW(ruta.c_str(), nullptr) != FALSE);
}

desenlace lmlongpath_RemoveDirectoryW(const ruta_fijada& ruta) noexcept {
    const sin_dialogos callado;
    return i_desenlace(i_alcanza_lo_nombrado(ruta) && sistema.RemoveDirectoryW(ruta.c_str()));
}

desenlace lmlongpath_RenameFileW(const ruta_fijada& antigua, const ruta_fijada& nueva) noexcept {
    return lmlongpath_MoveFileW(antigua, nueva, MOVEFILE_COPY_ALLOWED);
}

desenlace lmlongpath_MoveFileW(const ruta_fijada& origen, const ruta_fijada& destino,
                               DWORD indicadores) noexcept {
    const sin_dialogos callado;
    return i_desenlace(i_alcanza_lo_nombrado(origen) &&
                       sistema.MoveFileExW(origen.c_str(), destino.c_str(), indicadores));
}

manija_busqueda lmlongpath_FindFirstFileW(const ruta_fijada& patron, WIN32_FIND_DATAW& primera,
                                          detalle cuanto) noexcept {
    const sin_dialogos callado;
    const bool todo = cuanto == detalle::todo;
    return manija_busqueda(
        sistema.FindFirstFileExW(patron.c_str(), todo ? FindExInfoStandard : FindExInfoBasic, &primera,
                                 FindExSearchNameMatch, nullptr, todo ? 0 : FIND_FIRST_EX_LARGE_FETCH));
}

cadena_w lmlongpath_GetShortPathNameW(const wchar_t* ruta) noexcept {
    return i_forma_de(ruta, sistema.GetShortPathNameW);
}

cadena_w lmlongpath_GetLongPathNameW(const wchar_t* ruta) noexcept {
    return i_forma_de(ruta, sistema.GetLongPathNameW);
}

}  // namespace interno
