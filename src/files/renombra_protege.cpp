// See renombra_protege.hpp.
#include "files/renombra_protege.hpp"

#include "companions/buclrein.hpp"
#include "companions/error_interno.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"

namespace interno {

bool i_cambia_proteccion(objetivo& fichero, int modo, bool informa) noexcept {
    i_comprueba_con(modo == modo_lectura || modo == modo_escritura, "mode == _S_IREAD || mode == _S_IWRITE",
                    a_vista(fichero.texto()));
    const ConstructorMensaje mensaje = modo == modo_lectura ? i_msg_53961_no_se_puede_proteger_fichero
                                                            : i_msg_53962_no_se_puede_desproteger_fichero;
    return i_insiste(
        informa,
        [&] {
            return desenlace{fichero.protege(modo), ERROR_SUCCESS};
        },
        [&] { return i_mensaje(mensaje, {fichero.texto()}); });
}

bool i_cambia_proteccion(const ruta_fijada& ruta, int modo, bool informa) noexcept {
    objetivo_por_ruta fichero(ruta, lmlongpath_DeleteFileW);
    return i_cambia_proteccion(fichero, modo, informa);
}

void i_desprotege_si_existe(const ruta_fijada& fichero) noexcept {
    if (i_existencia(fichero).hay()) {
        i_cambia_proteccion(fichero, modo_escritura, true);
    }
}

void i_renombra_fichero(const ruta_fijada& viejo, const ruta_fijada& nuevo, DWORD negativa) {
    i_insiste(
        true,
        [&] {
            return negativa == ERROR_SUCCESS ? lmlongpath_RenameFileW(viejo, nuevo)
                                             : desenlace{false, negativa};
        },
        [&] {
            const cadena_w mensaje = i_mensaje(i_msg_53951_no_se_puede_renombrar);
            return copiaforu_nousar_formatea(L"%s.\n- %s\n- %s", {mensaje, viejo.dada(), nuevo.dada()});
        });
}

}  // namespace interno
