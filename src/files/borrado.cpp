// See borrado.hpp.
#include "files/borrado.hpp"

#include "cdir.h"
#include "companions/anfitrion.hpp"
#include "companions/buclrein.hpp"
#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"
#include "companions/msglocal.hpp"
#include "files/existencia.hpp"
#include "files/renombra_protege.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "frame/puente.hpp"
#include "lumodir.h"

namespace lumodir {
namespace {

using intento_borrado = BOOL (*)(const ruta_fijada& path, DWORD* error_out) noexcept;

// How one attempt ended. A failure stays one even when the system has no code for it.
struct desenlace {
    bool hecho;
    DWORD codigo;

    bool ya_no_esta() const noexcept {
        return !hecho && (codigo == ERROR_FILE_NOT_FOUND || codigo == ERROR_PATH_NOT_FOUND);
    }
};

desenlace i_intenta(intento_borrado borra, const ruta_fijada& path) noexcept {
    DWORD codigo = ERROR_SUCCESS;
    const bool hecho = borra(path, &codigo) != FALSE;
    return {hecho, codigo};
}

cadena_w i_mensaje_fichero(const wchar_t* fichero, const wchar_t* texto_extra) {
    const wchar_t* motivo = texto_extra != nullptr
                                ? texto_extra
                                : nousar_msglocal_original_u(i_msg_401224_fichero_en_uso_o_sin_permiso);
    return concatena<wchar_t>(
        {i_mensaje(i_msg_53951_no_se_puede_borrar_fichero, {fichero}), L"\n", a_vista(motivo)});
}

// The loop around a deletion whose first attempt has ended in `ultimo` already; `bien(ultimo)` says which ends count
// as success, `al_fallar(bucle, codigo)` hands over the message.
template <class Bien, class AlFallar>
unsigned short i_insiste(intento_borrado borra, const ruta_fijada& path, desenlace ultimo,
                         unsigned short informar, Bien bien, AlFallar al_fallar) {
    bool es_el_primero = true;
    return i_con_reintentos(
        CIERTO, informar,
        [&]() -> unsigned short {
            if (!es_el_primero) {
                ultimo = i_intenta(borra, path);
            }
            es_el_primero = false;
            return bien(ultimo) ? CIERTO : FALSO;
        },
        [&](BuclRein* bucle) { al_fallar(bucle, ultimo.codigo); });
}

// What follows a first attempt that failed.
unsigned short i_insiste_con_fichero(const ruta_fijada& fichero, const wchar_t* texto_extra,
                                     unsigned short informar, desenlace ultimo) {
    if (es_fichero_de_solo_lectura(fichero) == CIERTO) {
        i_cambia_proteccion(fichero, modo_escritura, informar);
        ultimo = i_intenta(lmlongpath_DeleteFileW, fichero);
    }
    return i_insiste(
        lmlongpath_DeleteFileW, fichero, ultimo, informar,
        [](desenlace d) { return d.hecho || d.ya_no_esta(); },
        [&](BuclRein* bucle, DWORD c) {
            buclrein_set_mensaje_reintentar(bucle, i_mensaje_fichero(fichero.dada(), texto_extra), c);
            const auto avisa_al_anfitrion = i_func_comprobar_fichero_no_esta_abierto();
            if (buclrein_es_el_primer_reintento_antes_de_mostrar_aviso(bucle) == 1 &&
                avisa_al_anfitrion != nullptr) {
                llama_al_anfitrion(avisa_al_anfitrion, fichero.dada());
            }
        });
}

unsigned short i_insiste_con_directorio(const ruta_fijada& directorio, unsigned short informar,
                                        desenlace ultimo) {
    return i_insiste(
        lmlongpath_RemoveDirectoryW, directorio, ultimo, informar, [](desenlace d) { return d.hecho; },
        [&](BuclRein* bucle, DWORD c) {
            buclrein_set_mensaje_reintentar(
                bucle, i_mensaje(i_msg_53954_no_se_puede_borrar_directorio, {directorio.dada()}), c);
        });
}

// Removes a directory that may be missing: then the answer is 0 and nothing is said.
unsigned short i_borra_directorio_si_existe(const wchar_t* directorio, unsigned short informar) {
    if (!i_comprueba(directorio != nullptr, "(nombre_directorio) != NULL")) {
        return FALSO;
    }
    const ruta_fijada fijada(directorio);
    const desenlace primero = i_intenta(lmlongpath_RemoveDirectoryW, fijada);
    if (primero.hecho) {
        return CIERTO;
    }
    return lmlongpath_waccess(fijada, acceso_existencia) == CIERTO
               ? i_insiste_con_directorio(fijada, informar, primero)
               : FALSO;
}

void i_borra_avisando_en(const wchar_t* fichero, const wchar_t* texto_extra, unsigned short* hay_error) {
    const unsigned short borrado = i_borra_fichero(fichero, texto_extra, FALSO);
    if (i_comprueba(hay_error != nullptr, "(hay_error) != NULL")) {
        *hay_error = borrado == CIERTO ? FALSO : CIERTO;
    }
}

}  // namespace

unsigned short i_borra_fichero(const ruta_fijada& fichero, const wchar_t* texto_extra,
                               unsigned short informar) {
    if (!i_comprueba(fichero.dada() != nullptr, "(nombre) != NULL")) {
        return FALSO;
    }
    const desenlace primero = i_intenta(lmlongpath_DeleteFileW, fichero);
    return primero.hecho || primero.ya_no_esta()
               ? CIERTO
               : i_insiste_con_fichero(fichero, texto_extra, informar, primero);
}

unsigned short i_borra_fichero_existente(const wchar_t* fichero, const wchar_t* texto_extra,
                                         contexto_borrado contexto) {
    if (!i_comprueba(fichero != nullptr, "(nombre) != NULL")) {
        return FALSO;
    }
    const ruta_fijada fijada(fichero);
    const desenlace primero = i_intenta(lmlongpath_DeleteFileW, fijada);
    if (primero.hecho) {
        return CIERTO;
    }
    if (lmlongpath_waccess(fijada, acceso_existencia) == CIERTO) {
        return i_insiste_con_fichero(fijada, texto_extra, CIERTO, primero);
    }
    i_muestra_mensaje(i_msg_53950_no_se_puede_borrar_fichero_que_no_existe, a_vista(fichero));
    if (contexto.raiz.data() == nullptr) {
        error_interno_msg_u("CR_existe", fichero);
    } else {
        error_interno_msg_u(
            "CR_existe",
            copiaforu_nousar_formatea(L"%s\n%s\\%s", {fichero, contexto.raiz, contexto.resto}).c_str());
    }
    return FALSO;
}

unsigned short i_borra_directorio_existente(const wchar_t* directorio) {
    if (!i_comprueba(directorio != nullptr, "(nombre_directorio) != NULL")) {
        return FALSO;
    }
    const ruta_fijada fijada(directorio);
    const desenlace primero = i_intenta(lmlongpath_RemoveDirectoryW, fijada);
    if (primero.hecho) {
        return CIERTO;
    }
    if (lmlongpath_waccess(fijada, acceso_existencia) == CIERTO) {
        return i_insiste_con_directorio(fijada, CIERTO, primero);
    }
    i_muestra_mensaje(i_msg_53953_no_se_puede_borrar_directorio_que_no_existe, a_vista(directorio));
    error_interno_msg_u("CR_existe", directorio);
    return FALSO;
}

}  // namespace lumodir

using namespace lumodir;

unsigned short cdir_borra_fichero_UNICODE(const wchar_t* nombre) {
    return i_borra_fichero_existente(nombre, nullptr);
}
void cdir_borra_fichero(const char* nombre) {
    puente_sin_resultado<cdir_borra_fichero_UNICODE>(nombre);
}

unsigned short cdir_borra_fichero_con_mensaje_extra_UNICODE(const wchar_t* nombre,
                                                            const wchar_t* texto_extra) {
    return i_borra_fichero_existente(nombre, texto_extra);
}
void cdir_borra_fichero_con_mensaje_extra(const char* nombre, const char* texto_extra) {
    puente_sin_resultado<cdir_borra_fichero_con_mensaje_extra_UNICODE>(nombre, texto_extra);
}

unsigned short cdir_borra_fichero_si_existe_UNICODE(const wchar_t* nombre) {
    return i_borra_fichero(nombre, nullptr, CIERTO);
}
void cdir_borra_fichero_si_existe(const char* nombre) {
    puente_sin_resultado<cdir_borra_fichero_si_existe_UNICODE>(nombre);
}

void lumodir_borra_fichero_si_existe_UNICODE(const wchar_t* nombre, unsigned short* hay_error) {
    i_borra_avisando_en(nombre, nullptr, hay_error);
}
void lumodir_borra_fichero_con_mensaje_extra_si_existe_UNICODE(const wchar_t* nombre,
                                                               const wchar_t* texto_extra,
                                                               unsigned short* hay_error) {
    i_borra_avisando_en(nombre, texto_extra, hay_error);
}

unsigned short cdir_borra_fichero_con_comprobacion_UNICODE(const wchar_t* nombre) {
    return i_comprueba(nombre != nullptr, "(nombre) != NULL") && lmlongpath_DeleteFileW(nombre, nullptr)
               ? CIERTO
               : FALSO;
}
unsigned short cdir_borra_fichero_con_comprobacion(const char* nombre) {
    return puente<cdir_borra_fichero_con_comprobacion_UNICODE>(nombre);
}

unsigned short cdir_borra_directorio_UNICODE(const wchar_t* directorio) {
    return i_borra_directorio_existente(directorio);
}
void cdir_borra_directorio(const char* directorio) {
    puente_sin_resultado<cdir_borra_directorio_UNICODE>(directorio);
}

unsigned short cdir_borra_directorio_si_existe_UNICODE(const wchar_t* directorio) {
    return i_borra_directorio_si_existe(directorio, CIERTO);
}
void cdir_borra_directorio_si_existe(const char* directorio) {
    puente_sin_resultado<cdir_borra_directorio_si_existe_UNICODE>(directorio);
}

unsigned short cdir_se_borra_directorio(const wchar_t* directorio) {
    return i_borra_directorio_si_existe(directorio, FALSO);
}
