// See programa.hpp.
#include "files/programa.hpp"

#include <algorithm>

#include "cdir.h"
#include "companions/error_interno.hpp"
#include "companions/lmlongpath.h"
#include "companions/lmlongpath.hpp"
#include "companions/respuesta_entera.hpp"
#include "files/nombre_largo.hpp"
#include "frame/puente.hpp"
#include "lumodir.h"
#include "paths/rutas.hpp"

namespace lumodir {
namespace {

constexpr DWORD LMLONGPATH_LUMO_MAX_PATH = lmlongpath_get_longitud_maxima_permitida_path();
constexpr int sitio_directorio_actual = 260;  // characters, terminator included

cadena_w i_path_del_programa() noexcept {
    wchar_t bufer[LMLONGPATH_LUMO_MAX_PATH];
    const DWORD tam_path =
        sistema.GetModuleFileNameW(::GetModuleHandleW(nullptr), bufer, LMLONGPATH_LUMO_MAX_PATH);
    i_comprueba(tam_path > 0, "tam_path > 0");
    i_comprueba(tam_path < LMLONGPATH_LUMO_MAX_PATH, "tam_path < LMLONGPATH_LUMO_MAX_PATH");
    const vista_w path(bufer, std::min(tam_path, LMLONGPATH_LUMO_MAX_PATH - 1));
    return cadena_w(recorta_derecha(path));
}

using pregunta_de_forma = DWORD (*)(const wchar_t*, wchar_t*, DWORD) noexcept;

// A path that does not exist, or a volume without such names: the path stays as it is.
cadena_w i_forma(pregunta_de_forma pregunta, const wchar_t* path) noexcept {
    cadena_w forma = i_respuesta_entera<wchar_t>(
        [&](wchar_t* bufer, DWORD sitio) { return pregunta(path, bufer, sitio); });
    return forma.es_nula() ? cadena_w(a_vista(path)) : std::move(forma);
}

// Each path of PATH where the name exists; `recibe` says whether the search goes on.
template <class Recibe>
void i_busca_en_el_path(const wchar_t* nombre, Recibe recibe) noexcept {
    const objeto<ArrCADENA_u> directorios = i_directorios_del_path();
    for (std::size_t i = 0; i < directorios->num(); ++i) {
        cadena_w path = i_concatena_directorios<wchar_t>(directorios->ver(i), a_vista(nombre));
        if (cdir_existe_fichero_UNICODE(path.c_str()) == CIERTO && !recibe(std::move(path))) {
            return;
        }
    }
}

// NULL after the report.
const wchar_t* i_directorio_actual(wchar_t (&bufer)[sitio_directorio_actual]) noexcept {
    const wchar_t* getcwd_ret = sistema._wgetcwd(bufer, sitio_directorio_actual);
    i_comprueba(getcwd_ret != nullptr, "(getcwd_ret) != NULL");
    return getcwd_ret;
}

}  // namespace

cadena_w i_path_largo(const wchar_t* path) noexcept {
    cadena_w forma = i_forma(lmlongpath_GetLongPathNameW, path);
    return empieza_por(forma.ver(), L"\\\\?\\") ? lmlongpath_desprepend_path(forma) : std::move(forma);
}

}  // namespace lumodir

using namespace lumodir;

wchar_t* lumodir_dame_path_completo_del_programa_UNICODE(void) {
    return i_path_del_programa().suelta();
}

char* lumodir_dame_path_completo_del_programa(void) {
    return puente<lumodir_dame_path_completo_del_programa_UNICODE>();
}

wchar_t* lumodir_dame_path_corto_UNICODE(const wchar_t* path) {
    if (!i_comprueba(path != nullptr, "(path) != NULL")) {
        return cadena_w(vista_w()).suelta();
    }
    return i_forma(lmlongpath_GetShortPathNameW, path).suelta();
}

wchar_t* lumodir_dame_path_largo_UNICODE(const wchar_t* path) {
    if (!i_comprueba(path != nullptr, "(path) != NULL")) {
        return cadena_w(vista_w()).suelta();
    }
    return i_path_largo(path).suelta();
}

wchar_t* lumodir_lmlongpath_prepended_path_si_necesario(const wchar_t* path) {
    return lmlongpath_prepended_path_si_necesario(path);
}

unsigned short lumodir_busca_ejecutables_del_path(const wchar_t* nombre, ArrCADENA_u** path_exes) {
    objeto<ArrCADENA_u> encontrados = objeto<ArrCADENA_u>::crea();
    bool alguno = false;
    if (i_comprueba(nombre != nullptr, "(nombre) != NULL")) {
        i_busca_en_el_path(nombre, [&](cadena_w path) {
            alguno = true;
            encontrados->anade(std::move(path));
            return path_exes != nullptr;
        });
    }
    if (path_exes != nullptr) {
        *path_exes = encontrados.suelta();
    }
    return alguno ? CIERTO : FALSO;
}

unsigned short lumodir_busca_ejecutable_del_path(const wchar_t* nombre, wchar_t** path_exe) {
    cadena_w encontrado;
    if (i_comprueba(nombre != nullptr, "(nombre) != NULL")) {
        i_busca_en_el_path(nombre, [&](cadena_w path) {
            encontrado = std::move(path);
            return false;
        });
    }
    const unsigned short alguno = encontrado.es_nula() ? FALSO : CIERTO;
    if (path_exe != nullptr) {
        *path_exe = encontrado.suelta();
    }
    return alguno;
}

wchar_t* cdir_obtener_path_actual_UNICODE(void) {
    wchar_t bufer[sitio_directorio_actual];
    const wchar_t* getcwd_ret = i_directorio_actual(bufer);
    return getcwd_ret == nullptr ? cadena_w(vista_w()).suelta() : i_path_largo(getcwd_ret).suelta();
}

char* cdir_obtener_path_actual(void) {
    wchar_t bufer[sitio_directorio_actual];
    const wchar_t* getcwd_ret = i_directorio_actual(bufer);
    if (getcwd_ret == nullptr) {
        return cadena_a(vista_a()).suelta();
    }
    const cadena_w largo = i_respuesta_entera<wchar_t>(
        [&](wchar_t* destino, DWORD sitio) { return i_nombre_largo(getcwd_ret, destino, sitio); });
    return utunicode_UNICODE_a_ANSI(largo.es_nula() ? a_vista(getcwd_ret) : largo.ver()).suelta();
}
