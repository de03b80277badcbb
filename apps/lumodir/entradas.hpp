// One entry of a directory, as the listings and the searches tell it.
#pragma once

#include <string>
#include <string_view>

#include "json.hpp"
#include "recorrido.hpp"

namespace mando {

// The extension without its dot. A name whose only dot comes first has none, and what holds a blank is no extension.
std::wstring extension_de(const std::wstring& nombre);
// The name as it is shown: that of a directory ends with a separator.
std::wstring nombre_de(const entrada& e);
// "dr---": d directory, l link, r read-only, h hidden, s system, a archive.
std::wstring letras_de_atributos(const entrada& e);
std::string_view clase_de(const entrada& e);
json json_de(const entrada& e, const std::wstring& nombre, std::string_view clave);

}  // namespace mando
