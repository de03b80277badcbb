// See filtro_extension.hpp.
#include "listings/filtro_extension.hpp"

#include <algorithm>

#include "companions/error_interno.hpp"
#include "companions/unicode.hpp"
#include "paths/split_makepath.hpp"

namespace interno {

bool filtro_extension::i_admite_extension(vista_w nombre) const {
    const vista_w con_punto = division<wchar_t>(recorta_derecha(nombre), false).extension;
    if (con_punto.empty()) {
        return extension_.empty();
    }
    i_comprueba(con_punto.size() > 1, "widestr_longitud(extFich) > 1");
    const vista_w extension = con_punto.substr(1);
    return std::equal(extension.begin(), extension.end(), extension_.begin(), extension_.end(),
                      [](wchar_t suya, wchar_t pedida) {
                          return pedida == L'?' || minuscula_ascii(suya) == minuscula_ascii(pedida);
                      });
}

bool filtro_extension::admite(vista_w nombre) const {
    return admite_todos_ || i_admite_extension(nombre);
}

bool filtro_extension::admite(vista_a nombre) const {
    return admite_todos_ || i_admite_extension(utf16_temporal(nombre).ver());
}

bool i_tiene_extension_de_la_lista(vista_w nombre, const ArrCADENA_u& extensiones) noexcept {
    const std::size_t punto = nombre.rfind(L'.');
    if (punto == vista_w::npos) {
        return false;
    }
    for (std::size_t i = 0; i < extensiones.num(); ++i) {
        if (iguales_sin_caja(nombre.substr(punto + 1), extensiones.ver(i))) {
            return true;
        }
    }
    return false;
}

}  // namespace interno
