// See permisos_escritura.hpp.
#include "files/permisos_escritura.hpp"

#include "cdir.h"
#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"
#include "companions/plataforma.hpp"
#include "files/crea_directorios.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "frame/puente.hpp"
#include "lumodir.h"
#include "paths/componentes.hpp"
#include "paths/rutas.hpp"

namespace lumodir {
namespace {

// What a test found: no reason means that writing works.
using motivo = cadena_w;

unsigned short i_entrega(motivo por_que, wchar_t** motivo_out) noexcept {
    const unsigned short bien = por_que.es_nula() ? CIERTO : FALSO;
    if (motivo_out != nullptr) {
        *motivo_out = por_que.suelta();
    }
    return bien;
}

motivo i_prueba_escritura(const wchar_t* fichero) {
    const DWORD atributos = lmlongpath_GetFileAttributesW(fichero);
    const bool existe = atributos != INVALID_FILE_ATTRIBUTES;
    if (existe && (atributos & FILE_ATTRIBUTE_READONLY) != 0) {
        return i_mensaje(i_msg_404523_fichero_sin_permiso_de_escritura);
    }
    DWORD codigo = 0;
    // Alone: a file that is open in another program counts as not writable.
    manija_fichero abierto = lmlongpath_CreateFileW(fichero, GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                                    existe ? OPEN_EXISTING : CREATE_NEW, 0, nullptr, &codigo);
    const bool bien = abierto.valida();
    abierto.cierra();
    // Also after a failure: something may have been created and then denied to us. But a file that stands in the way
    // of the creation is somebody else's, made since, or one that hides its attributes.
    if (!existe && (bien || codigo != ERROR_FILE_EXISTS)) {
        lmlongpath_DeleteFileW(fichero, nullptr);
    }
    return bien ? motivo() : plataforma::texto_de_codigo_de_error(codigo);
}

motivo i_prueba_en_directorio(const wchar_t* directorio) {
    // No directory at all needs no creation.
    if (*directorio != L'\0' && i_crea_directorios(directorio, CIERTO, FALSO) != CIERTO) {
        return i_mensaje(i_msg_53948_no_se_puede_crear_directorio, {directorio});
    }
    if (i_prueba_escritura_en_directorio(directorio) != CIERTO) {
        return i_mensaje(i_msg_404522_sin_permiso_en_directorio, {directorio});
    }
    return {};
}

// Whether the path is one to go on with; if not, the reason is delivered.
bool i_path_valido(const wchar_t* path, wchar_t** motivo_out) noexcept {
    if (motivo_out != nullptr) {
        *motivo_out = nullptr;
    }
    return cdir_es_path_valido_UNICODE(path, motivo_out) == CIERTO;
}

}  // namespace

unsigned short i_prueba_escritura_en_directorio(const wchar_t* directorio) noexcept {
    const cadena_w principio = i_concatena_directorios(a_vista(directorio), L"~lumo~~_");
    const cadena_w sonda = copiaforu_nousar_formatea(L"%s%lu.tmp", {principio, ::GetCurrentProcessId()});
    return i_prueba_escritura(sonda.c_str()).es_nula() ? CIERTO : FALSO;
}

}  // namespace lumodir

using namespace lumodir;

unsigned short lumodir_se_puede_escribir_UNICODE_ex(const wchar_t* fichero, wchar_t** motivo_out) {
    if (!i_comprueba(fichero != nullptr, "(fichero) != NULL")) {
        if (motivo_out != nullptr) {
            *motivo_out = nullptr;
        }
        return FALSO;
    }
    return i_entrega(i_prueba_escritura(fichero), motivo_out);
}

unsigned short cdir_se_puede_escribir_UNICODE(const wchar_t* fichero) {
    return lumodir_se_puede_escribir_UNICODE_ex(fichero, nullptr);
}

unsigned short cdir_se_puede_escribir(const char* fichero) {
    return puente<cdir_se_puede_escribir_UNICODE>(fichero);
}

unsigned short cdir_se_puede_escribir_en_directorio(const wchar_t* directorio, wchar_t** motivo_out) {
    if (!i_path_valido(directorio, motivo_out)) {
        return FALSO;
    }
    return i_entrega(i_prueba_en_directorio(directorio), motivo_out);
}

unsigned short cdir_se_puede_escribir_fichero_en_directorio(const wchar_t* fichero, wchar_t** motivo_out) {
    if (!i_path_valido(fichero, motivo_out)) {
        return FALSO;
    }
    cadena_w directorio(i_directorio_de_fichero(a_vista(fichero)));
    i_suprime_barra_final_si_hay(directorio);
    return i_entrega(i_prueba_en_directorio(directorio.c_str()), motivo_out);
}

unsigned short lumodir_tiene_permiso_escritura_fichero_UNICODE(const wchar_t* fichero) {
    if (!i_comprueba(fichero != nullptr, "(fichero) != NULL")) {
        return FALSO;
    }
    return lmlongpath_waccess(fichero, acceso_escritura);
}

unsigned short cdir_tiene_permiso_escritura_fichero(const char* fichero) {
    return puente<lumodir_tiene_permiso_escritura_fichero_UNICODE>(fichero);
}
