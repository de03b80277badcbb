// See existencia.hpp.
#include "files/existencia.hpp"

#include "companions/buclrein.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"

namespace interno {

bool es_fichero_de_solo_lectura(const ruta_fijada& path) noexcept {
    return i_existencia(path).es_de_solo_lectura();
}

bool i_se_puede_leer(const ruta_fijada& fichero) noexcept {
    const existencia que_hay = i_existencia(fichero);
    return que_hay.hay() && !que_hay.es_directorio() &&
           lmlongpath_CreateFileW(fichero, GENERIC_READ, FILE_SHARE_READ).valida();
}

bool i_espera_directorio(const ruta_fijada& directorio) noexcept {
    return i_insiste(
        false,
        [&] {
            return desenlace{i_existencia(directorio).hay(), ERROR_SUCCESS};
        },
        [&] { return i_mensaje(i_msg_53963_esperando_acceso_a_directorio, {directorio.dada()}); });
}

}  // namespace interno
