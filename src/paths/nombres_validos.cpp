// See nombres_validos.hpp.
#include "paths/nombres_validos.hpp"

#include <algorithm>

#include "companions/error_interno.hpp"
#include "companions/limites.hpp"
#include "paths/path_correcto.hpp"

namespace interno {
namespace {

constexpr std::size_t longitud_maxima_convertible = 65535;  // the converters count in 16 bits

template <class C>
C i_convertido(C c) noexcept {
    return i_caracter_valido(c) ? c : C('_');
}

// From this length on, the dot included, the last character gives way to the "$".
constexpr std::size_t longitud_que_se_sustituye = 4;

}  // namespace

template <class C>
void i_convierte_a_nombre_base_valido(const C* nombre, std::span<C> resultado) noexcept {
    std::size_t i = 0;
    for (; i < resultado.size() && nombre[i] != C(0); ++i) {
        resultado[i] = i_convertido(nombre[i]);
    }
    std::fill(resultado.begin() + static_cast<std::ptrdiff_t>(i), resultado.end(), C(' '));
}

template void i_convierte_a_nombre_base_valido(const char*, std::span<char>) noexcept;
template void i_convierte_a_nombre_base_valido(const wchar_t*, std::span<wchar_t>) noexcept;

cadena_w i_nombre_base_reparado(vista_w nombre) {
    nombre = sin_final_recortable(recorta_izquierda(nombre.substr(0, longitud_maxima_convertible)));
    nombre = nombre.substr(0, lmlongpath_get_longitud_maxima_permitida_componente_incluido_extension());
    cadena_w reparado(nombre);
    std::transform(nombre.begin(), nombre.end(), reparado.datos(), i_convertido<wchar_t>);
    return reparado;
}

cadena_w i_extension_con_dolar(vista_w ext) noexcept {
    ext = recorta_derecha(ext);
    if (ext.empty()) {
        return cadena_w(L".$");
    }
    i_comprueba_con(ext.front() == L'.', "ext_sin_espacios[0] == L'.'", ext);
    if (ext.size() >= longitud_que_se_sustituye) {
        ext.remove_suffix(1);
    }
    return concatena<wchar_t>({ext, L"$"});
}

}  // namespace interno
