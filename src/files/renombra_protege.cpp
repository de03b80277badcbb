// See renombra_protege.hpp.
#include "files/renombra_protege.hpp"

#include "cdir.h"
#include "companions/buclrein.hpp"
#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "frame/puente.hpp"
#include "lumodir.h"

namespace lumodir {
namespace {

bool i_nombres_dados(const wchar_t* viejo, const wchar_t* nuevo) noexcept {
    const bool hay_viejo = i_comprueba(viejo != nullptr, "(nombre_viejo) != NULL");
    const bool hay_nuevo = i_comprueba(nuevo != nullptr, "(nombre_nuevo) != NULL");
    return hay_viejo && hay_nuevo;
}

}  // namespace

unsigned short i_cambia_proteccion(objetivo& fichero, int modo, unsigned short informa) noexcept {
    i_comprueba_con(modo == modo_lectura || modo == modo_escritura, "mode == _S_IREAD || mode == _S_IWRITE",
                    a_vista(fichero.texto()));
    const auto intento = [&] { return fichero.protege(modo); };
    const auto al_fallar = [&](BuclRein* bucle) {
        const ConstructorMensaje motivo = modo == modo_lectura ? i_msg_53961_no_se_puede_proteger_fichero
                                                               : i_msg_53962_no_se_puede_desproteger_fichero;
        buclrein_set_mensaje_reintentar(
            bucle, [&] { return i_mensaje(motivo, {fichero.texto()}); }, 0);
    };
    return i_con_reintentos(CIERTO, informa, intento, al_fallar);
}

unsigned short i_cambia_proteccion(const ruta_fijada& nomfich, int modo, unsigned short informa) noexcept {
    if (!i_comprueba(nomfich.dada() != nullptr, "(nomfich) != NULL")) {
        return FALSO;
    }
    fichero_por_ruta fichero(nomfich);
    return i_cambia_proteccion(fichero, modo, informa);
}

void i_renombra_fichero(const ruta_fijada& viejo, const ruta_fijada& nuevo, DWORD negativa) {
    DWORD codigo = negativa;
    const auto intento = [&] {
        return negativa == ERROR_SUCCESS && lmlongpath_RenameFileW(viejo, nuevo, &codigo);
    };
    const auto al_fallar = [&](BuclRein* bucle) {
        buclrein_set_mensaje_reintentar(
            bucle,
            [&] {
                const cadena_w motivo = i_mensaje(i_msg_53951_no_se_puede_renombrar);
                return copiaforu_nousar_formatea(L"%s.\n- %s\n- %s", {motivo, viejo.dada(), nuevo.dada()});
            },
            codigo);
    };
    i_con_reintentos(CIERTO, CIERTO, intento, al_fallar);
}

}  // namespace lumodir

using namespace lumodir;

void cdir_renombra_fichero_UNICODE(const wchar_t* nombre_viejo, const wchar_t* nombre_nuevo) {
    if (!i_nombres_dados(nombre_viejo, nombre_nuevo)) {
        return;
    }
    i_renombra_fichero(nombre_viejo, nombre_nuevo);
}

void cdir_renombra_fichero(const char* nombre_viejo, const char* nombre_nuevo) {
    puente<cdir_renombra_fichero_UNICODE>(nombre_viejo, nombre_nuevo);
}

unsigned short cdir_renombra_fichero_si_es_posible_UNICODE(const wchar_t* nombre_viejo,
                                                           const wchar_t* nombre_nuevo) {
    if (!i_nombres_dados(nombre_viejo, nombre_nuevo)) {
        return FALSO;
    }
    // A single attempt with nothing to say: what a loop without retries comes to.
    return lmlongpath_RenameFileW(nombre_viejo, nombre_nuevo, nullptr) ? CIERTO : FALSO;
}

unsigned short cdir_mueve_fichero(const wchar_t* origen, const wchar_t* destino) {
    const bool hay_origen = i_comprueba(origen != nullptr, "(origen) != NULL");
    const bool hay_destino = i_comprueba(destino != nullptr, "(destino) != NULL");
    return hay_origen && hay_destino && lmlongpath_MoveFileW(origen, destino, 0) ? CIERTO : FALSO;
}

void lumodir_protege_fichero_UNICODE(const wchar_t* nomfich) {
    i_cambia_proteccion(nomfich, modo_lectura, CIERTO);
}

void lumodir_protege_fichero(const char* nomfich) {
    puente<lumodir_protege_fichero_UNICODE>(nomfich);
}

void lumodir_desprotege_fichero_UNICODE(const wchar_t* nomfich) {
    i_cambia_proteccion(nomfich, modo_escritura, CIERTO);
}

void lumodir_desprotege_fichero(const char* nomfich) {
    puente<lumodir_desprotege_fichero_UNICODE>(nomfich);
}

void lumodir_desprotege_fichero_si_existe_UNICODE(const wchar_t* nomfich) {
    if (!i_comprueba(nomfich != nullptr, "(nombre) != NULL")) {
        return;
    }
    const ruta_fijada fijada(nomfich);
    if (i_existencia(fijada).hay()) {
        i_cambia_proteccion(fijada, modo_escritura, CIERTO);
    }
}

void lumodir_desprotege_fichero_si_existe(const char* nomfich) {
    puente<lumodir_desprotege_fichero_si_existe_UNICODE>(nomfich);
}
