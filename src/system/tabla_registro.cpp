// See tabla_registro.hpp.
#include "system/tabla_registro.hpp"

#include "companions/machine.hpp"

namespace lumodir {

tabla_registro sistema_registro = {
    ::RegOpenKeyExA,    ::RegOpenKeyExW,    ::RegCreateKeyExW,  ::RegCloseKey,    ::RegQueryInfoKeyA,
    ::RegQueryInfoKeyW, ::RegQueryValueExA, ::RegQueryValueExW, ::RegSetValueExW, ::RegDeleteValueW,
    ::RegEnumKeyExA,    ::RegEnumKeyExW,    ::RegEnumValueW,    ::NtDeleteKey,    machine_es_imagen_de_64bits,
};

}  // namespace lumodir
