// See arr.hpp.
#include "companions/arr.hpp"

#include "companions/unicode.hpp"

namespace interno {

objeto<ArrCADENA> utunicode_cadenas_UNICODE_a_ANSI_destruyendo(objeto<ArrCADENA_u> lista) {
    auto resultado = objeto<ArrCADENA>::crea();
    resultado->textos.reserva_sitio(lista->num());
    for (std::size_t i = 0; i < lista->num(); ++i) {
        resultado->anade(utunicode_UNICODE_a_ANSI(lista->ver(i)));
    }
    return resultado;
}

}  // namespace interno
