// See borrado.hpp.
#include "files/borrado.hpp"

#include "cdir.h"
#include "companions/anfitrion.hpp"
#include "companions/buclrein.hpp"
#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"
#include "companions/msglocal.hpp"
#include "files/renombra_protege.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "frame/puente.hpp"
#include "lumodir.h"
#include "paths/rutas.hpp"

namespace lumodir {
namespace {

cadena_w i_mensaje_fichero(const wchar_t* fichero, const wchar_t* texto_extra) {
    const wchar_t* motivo = texto_extra != nullptr
                                ? texto_extra
                                : nousar_msglocal_original_u(i_msg_401224_fichero_en_uso_o_sin_permiso);
    return concatena<wchar_t>(
        {i_mensaje(i_msg_53951_no_se_puede_borrar_fichero, {fichero}), L"\n", a_vista(motivo)});
}

// The loop around a deletion whose first attempt has ended in `ultimo` already; `intenta()` makes another,
// `bien(ultimo)` says which ends count as success, `al_fallar(bucle, codigo)` hands over the message.
template <class Intenta, class Bien, class AlFallar>
unsigned short i_insiste(desenlace ultimo, unsigned short informar, Intenta intenta, Bien bien,
                         AlFallar al_fallar) {
    bool es_el_primero = true;
    return i_con_reintentos(
        CIERTO, informar,
        [&] {
            if (!es_el_primero) {
                ultimo = intenta();
            }
            es_el_primero = false;
            return bien(ultimo);
        },
        [&](BuclRein* bucle) { al_fallar(bucle, ultimo.codigo); });
}

// What follows a first attempt that failed.
unsigned short i_insiste_con_fichero(objetivo& fichero, const wchar_t* texto_extra, unsigned short informar,
                                     desenlace ultimo) {
    // The mark of what cannot be reached is that of something else.
    if (ultimo.codigo != ERROR_CANT_ACCESS_FILE && fichero.mira().es_de_solo_lectura()) {
        i_cambia_proteccion(fichero, modo_escritura, informar);
        ultimo = fichero.borra();
    }
    return i_insiste(
        ultimo, informar, [&] { return fichero.borra(); },
        [](desenlace d) { return d.hecho || d.ya_no_esta(); },
        [&](BuclRein* bucle, DWORD c) {
            buclrein_set_mensaje_reintentar(
                bucle, [&] { return i_mensaje_fichero(fichero.texto(), texto_extra); }, c);
            const auto avisa_al_anfitrion = i_func_comprobar_fichero_no_esta_abierto();
            if (buclrein_es_el_primer_reintento_antes_de_mostrar_aviso(bucle) == 1 &&
                avisa_al_anfitrion != nullptr) {
                llama_al_anfitrion(avisa_al_anfitrion, fichero.texto());
            }
        });
}

unsigned short i_insiste_con_directorio(objetivo& directorio, unsigned short informar, desenlace ultimo) {
    return i_insiste(
        ultimo, informar, [&] { return i_quita_directorio(directorio); }, [](desenlace d) { return d.hecho; },
        [&](BuclRein* bucle, DWORD c) {
            buclrein_set_mensaje_reintentar(
                bucle,
                [&] { return i_mensaje(i_msg_53954_no_se_puede_borrar_directorio, {directorio.texto()}); },
                c);
        });
}

// Removes a directory that may be missing: then the answer is 0 and nothing is said.
unsigned short i_borra_directorio_si_existe(const wchar_t* nombre, unsigned short informar) {
    if (!i_comprueba(nombre != nullptr, "(nombre_directorio) != NULL")) {
        return FALSO;
    }
    const ruta_fijada ruta(nombre);
    directorio_por_ruta directorio(ruta);
    const desenlace primero = i_quita_directorio(directorio);
    if (primero.hecho) {
        return CIERTO;
    }
    return directorio.mira().falta() ? FALSO : i_insiste_con_directorio(directorio, informar, primero);
}

void i_borra_avisando_en(const wchar_t* fichero, const wchar_t* texto_extra, unsigned short* hay_error) {
    const unsigned short borrado = i_borra_fichero(fichero, texto_extra, FALSO);
    if (i_comprueba(hay_error != nullptr, "(hay_error) != NULL")) {
        *hay_error = borrado == CIERTO ? FALSO : CIERTO;
    }
}

unsigned short i_borra_fichero_existente(const wchar_t* nombre, const wchar_t* texto_extra) {
    if (!i_comprueba(nombre != nullptr, "(nombre) != NULL")) {
        return FALSO;
    }
    const ruta_fijada ruta(nombre);
    fichero_por_ruta fichero(ruta);
    return lumodir::i_borra_fichero_existente(fichero, texto_extra);
}

}  // namespace

desenlace i_quita_directorio(objetivo& directorio) {
    const desenlace primero = directorio.borra();
    // The system keeps read-only directories, which are nothing unusual: each with an icon of its own is one.
    if (primero.hecho || primero.codigo != ERROR_ACCESS_DENIED || !directorio.mira().es_de_solo_lectura() ||
        !directorio.protege(modo_escritura)) {
        return primero;
    }
    const desenlace segundo = directorio.borra();
    if (!segundo.hecho) {
        directorio.protege(modo_lectura);
    }
    return segundo;
}

unsigned short i_borra_fichero(objetivo& fichero, const wchar_t* texto_extra, unsigned short informar) {
    const desenlace primero = fichero.borra();
    return primero.hecho || primero.ya_no_esta()
               ? CIERTO
               : i_insiste_con_fichero(fichero, texto_extra, informar, primero);
}

unsigned short i_borra_fichero(const ruta_fijada& ruta, const wchar_t* texto_extra, unsigned short informar) {
    if (!i_comprueba(ruta.dada() != nullptr, "(nombre) != NULL")) {
        return FALSO;
    }
    fichero_por_ruta fichero(ruta);
    return i_borra_fichero(fichero, texto_extra, informar);
}

unsigned short i_borra_fichero_existente(objetivo& fichero, const wchar_t* texto_extra, vista_w raiz) {
    const desenlace primero = fichero.borra();
    if (primero.hecho) {
        return CIERTO;
    }
    if (!fichero.mira().falta()) {
        return i_insiste_con_fichero(fichero, texto_extra, CIERTO, primero);
    }
    const wchar_t* nombre = fichero.texto();
    i_muestra_mensaje(i_msg_53950_no_se_puede_borrar_fichero_que_no_existe, a_vista(nombre));
    if (raiz.data() == nullptr) {
        error_interno_msg_u("CR_existe", nombre);
    } else {
        const vista_w bajo_raiz = i_sin_separador_inicial(vista_w(nombre).substr(raiz.size()));
        error_interno_msg_u("CR_existe",
                            copiaforu_nousar_formatea(L"%s\n%s\\%s", {nombre, raiz, bajo_raiz}).c_str());
    }
    return FALSO;
}

unsigned short i_borra_directorio_existente(objetivo& directorio) {
    const desenlace primero = i_quita_directorio(directorio);
    if (primero.hecho) {
        return CIERTO;
    }
    if (!directorio.mira().falta()) {
        return i_insiste_con_directorio(directorio, CIERTO, primero);
    }
    i_muestra_mensaje(i_msg_53953_no_se_puede_borrar_directorio_que_no_existe, a_vista(directorio.texto()));
    error_interno_msg_u("CR_existe", directorio.texto());
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
    if (!i_comprueba(directorio != nullptr, "(nombre_directorio) != NULL")) {
        return FALSO;
    }
    const ruta_fijada ruta(directorio);
    directorio_por_ruta existente(ruta);
    return i_borra_directorio_existente(existente);
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
