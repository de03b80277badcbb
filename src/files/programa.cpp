// See programa.hpp.
#include "files/programa.hpp"

#include <algorithm>

#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"
#include "companions/respuesta_entera.hpp"
#include "companions/unicode.hpp"
#include "files/nombre_largo.hpp"
#include "paths/rutas.hpp"

namespace interno {
namespace {

constexpr DWORD LMLONGPATH_LUMO_MAX_PATH = lmlongpath_get_longitud_maxima_permitida_path();
constexpr int sitio_directorio_actual = 260;  // characters, terminator included

// NULL after the report.
const wchar_t* i_directorio_actual(wchar_t (&bufer)[sitio_directorio_actual]) noexcept {
    const wchar_t* getcwd_ret = sistema._wgetcwd(bufer, sitio_directorio_actual);
    i_comprueba(getcwd_ret != nullptr, "(getcwd_ret) != NULL");
    return getcwd_ret;
}

}  // namespace

cadena_w i_path_del_programa() noexcept {
    wchar_t bufer[LMLONGPATH_LUMO_MAX_PATH];
    const DWORD tam_path =
        sistema.GetModuleFileNameW(::GetModuleHandleW(nullptr), bufer, LMLONGPATH_LUMO_MAX_PATH);
    i_comprueba(tam_path > 0, "tam_path > 0");
    i_comprueba(tam_path < LMLONGPATH_LUMO_MAX_PATH, "tam_path < LMLONGPATH_LUMO_MAX_PATH");
    const vista_w path(bufer, std::min(tam_path, LMLONGPATH_LUMO_MAX_PATH - 1));
    return cadena_w(recorta_derecha(path));
}

// A path that does not exist, or that lies on a volume without such names, stays as it is.

cadena_w i_path_corto(const wchar_t* path) noexcept {
    cadena_w corto = lmlongpath_GetShortPathNameW(path);
    return corto.es_nula() ? cadena_w(a_vista(path)) : std::move(corto);
}

cadena_w i_path_largo(const wchar_t* path) noexcept {
    const cadena_w largo = lmlongpath_GetLongPathNameW(path);
    return lmlongpath_desprepend_path(largo.es_nula() ? a_vista(path) : largo.ver());
}

cadena_w i_path_actual() noexcept {
    wchar_t bufer[sitio_directorio_actual];
    const wchar_t* actual = i_directorio_actual(bufer);
    return actual == nullptr ? cadena_w(vista_w()) : i_path_largo(actual);
}

cadena_a i_path_actual_ansi() noexcept {
    wchar_t bufer[sitio_directorio_actual];
    const wchar_t* actual = i_directorio_actual(bufer);
    if (actual == nullptr) {
        return cadena_a(vista_a());
    }
    const cadena_w largo = i_respuesta_entera<wchar_t>(
        [&](wchar_t* destino, DWORD sitio) { return i_nombre_largo(actual, destino, sitio); });
    return utunicode_UNICODE_a_ANSI(largo.es_nula() ? a_vista(actual) : largo.ver());
}

objeto<ArrCADENA_u> i_busca_en_el_path(vista_w nombre, bool todos) noexcept {
    auto encontrados = objeto<ArrCADENA_u>::crea();
    const objeto<ArrCADENA_u> directorios = i_directorios_del_path();
    for (std::size_t i = 0; i < directorios->num() && (todos || encontrados->num() == 0); ++i) {
        cadena_w path = i_concatena_directorios<wchar_t>(directorios->ver(i), nombre);
        if (i_existencia(path.c_str()).hay()) {
            encontrados->anade(std::move(path));
        }
    }
    return encontrados;
}

}  // namespace interno
