// See borrado.hpp.
#include "files/borrado.hpp"

#include <utility>

#include "companions/anfitrion.hpp"
#include "companions/buclrein.hpp"
#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"
#include "companions/msglocal.hpp"
#include "files/renombra_protege.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "paths/rutas.hpp"

namespace interno {
namespace {

cadena_w i_mensaje_fichero(const wchar_t* fichero, const wchar_t* texto_extra) {
    const wchar_t* motivo = texto_extra != nullptr
                                ? texto_extra
                                : nousar_msglocal_original_u(i_msg_401224_fichero_en_uso_o_sin_permiso);
    return concatena<wchar_t>(
        {i_mensaje(i_msg_53951_no_se_puede_borrar_fichero, {fichero}), L"\n", a_vista(motivo)});
}

// The attempts of a loop, the first of which has ended already.
template <class Intenta>
auto i_tras_el_primero(desenlace primero, Intenta intenta) {
    return [primero, intenta, es_el_primero = true]() mutable {
        return std::exchange(es_el_primero, false) ? primero : intenta();
    };
}

// What follows a first attempt that failed.
bool i_insiste_con_fichero(objetivo& fichero, const wchar_t* texto_extra, bool informar, desenlace ultimo) {
    // What cannot be reached under its own name has no mark to take off: that of what a link leads to stays.
    if (ultimo.codigo != ERROR_CANT_ACCESS_FILE && fichero.mira().es_de_solo_lectura()) {
        i_cambia_proteccion(fichero, modo_escritura, informar);
        ultimo = fichero.borra();
    }
    auto intenta = i_tras_el_primero(ultimo, [&] { return fichero.borra(); });
    return i_con_reintentos(
        true, informar,
        [&] {
            ultimo = intenta();
            return ultimo.hecho || ultimo.ya_no_esta();
        },
        [&](BuclRein& bucle) {
            buclrein_set_mensaje_reintentar(
                bucle, [&] { return i_mensaje_fichero(fichero.texto(), texto_extra); }, ultimo.codigo);
            const auto avisa_al_anfitrion = i_func_comprobar_fichero_no_esta_abierto();
            if (buclrein_es_el_primer_reintento_antes_de_mostrar_aviso(bucle) &&
                avisa_al_anfitrion != nullptr) {
                llama_al_anfitrion(avisa_al_anfitrion, fichero.texto());
            }
        });
}

bool i_insiste_con_directorio(objetivo& directorio, bool informar, desenlace primero) {
    return i_insiste(
        informar, i_tras_el_primero(primero, [&] { return i_quita_directorio(directorio); }),
        [&] { return i_mensaje(i_msg_53954_no_se_puede_borrar_directorio, {directorio.texto()}); });
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

bool i_borra_fichero(objetivo& fichero, const wchar_t* texto_extra, bool informar) noexcept {
    const desenlace primero = fichero.borra();
    return primero.hecho || primero.ya_no_esta() ||
           i_insiste_con_fichero(fichero, texto_extra, informar, primero);
}

bool i_borra_fichero_existente(objetivo& fichero, const wchar_t* texto_extra, vista_w raiz) noexcept {
    const desenlace primero = fichero.borra();
    if (primero.hecho) {
        return true;
    }
    if (!fichero.mira().falta()) {
        return i_insiste_con_fichero(fichero, texto_extra, true, primero);
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
    return false;
}

bool i_borra_directorio_existente(objetivo& directorio) noexcept {
    const desenlace primero = i_quita_directorio(directorio);
    if (primero.hecho) {
        return true;
    }
    if (!directorio.mira().falta()) {
        return i_insiste_con_directorio(directorio, true, primero);
    }
    i_muestra_mensaje(i_msg_53953_no_se_puede_borrar_directorio_que_no_existe, a_vista(directorio.texto()));
    error_interno_msg_u("CR_existe", directorio.texto());
    return false;
}

bool i_borra_fichero(const ruta_fijada& ruta, const wchar_t* texto_extra, bool informar) noexcept {
    objetivo_por_ruta fichero(ruta, lmlongpath_DeleteFileW);
    return i_borra_fichero(fichero, texto_extra, informar);
}

bool i_borra_fichero_existente(const ruta_fijada& ruta, const wchar_t* texto_extra) noexcept {
    objetivo_por_ruta fichero(ruta, lmlongpath_DeleteFileW);
    return i_borra_fichero_existente(fichero, texto_extra);
}

bool i_borra_directorio_existente(const ruta_fijada& ruta) noexcept {
    objetivo_por_ruta directorio(ruta, lmlongpath_RemoveDirectoryW);
    return i_borra_directorio_existente(directorio);
}

bool i_borra_directorio_si_existe(const ruta_fijada& ruta, bool informar) noexcept {
    objetivo_por_ruta directorio(ruta, lmlongpath_RemoveDirectoryW);
    const desenlace primero = i_quita_directorio(directorio);
    return primero.hecho ||
           (!directorio.mira().falta() && i_insiste_con_directorio(directorio, informar, primero));
}

}  // namespace interno
