// See nombres_validos.hpp.
#include "paths/nombres_validos.hpp"

#include <algorithm>

#include "cdir.h"
#include "companions/error_interno.hpp"
#include "companions/limites.hpp"
#include "frame/puente.hpp"
#include "paths/path_correcto.hpp"

namespace lumodir {
namespace {

constexpr std::size_t longitud_maxima_convertible = 65535;  // the converters count in 16 bits

template <class C>
C i_convertido(C c) noexcept {
    return i_caracter_valido(c) ? c : C('_');
}

// Exactly `longitud` characters: those of the name, then blanks.
template <class C>
unsigned short i_convierte(const C* nombre, C* resultado, unsigned short longitud, lugar donde) noexcept {
    const bool hay_nombre = i_comprueba(nombre != nullptr, "(nombre) != NULL", donde);
    if (!i_comprueba(resultado != nullptr, "(result) != NULL", donde) || !hay_nombre) {
        return 0;
    }
    std::size_t i = 0;
    for (; i < longitud && nombre[i] != C(0); ++i) {
        resultado[i] = i_convertido(nombre[i]);
    }
    std::fill(resultado + i, resultado + longitud, C(' '));
    resultado[longitud] = C(0);
    return longitud;
}

// From this length on, the point included, the last character gives way to the "$".
constexpr std::size_t longitud_que_se_sustituye = 4;

}  // namespace

cadena_w i_nombre_base_reparado(vista_w nombre, lugar donde) {
    nombre = nombre.substr(0, longitud_maxima_convertible);
    nombre = recorta_izquierda(nombre);
    while (!nombre.empty() && (nombre.back() == L'.' || nombre.back() == L' ')) {
        nombre.remove_suffix(1);
    }
    nombre = nombre.substr(0, lmlongpath_get_longitud_maxima_permitida_componente_incluido_extension());
    cadena_w reparado(nombre, donde);
    std::transform(nombre.begin(), nombre.end(), reparado.datos(), i_convertido<wchar_t>);
    return reparado;
}

}  // namespace lumodir

using namespace lumodir;

unsigned short cdir_convierte_a_nombre_base_valido_UNICODE(const wchar_t* nombre, wchar_t* result,
                                                           unsigned short longitud) {
    return i_convierte(nombre, result, longitud, lugar::aqui());
}

unsigned short cdir_convierte_a_nombre_base_valido(const char* nombre, char* result,
                                                   unsigned short longitud) {
    return i_convierte(nombre, result, longitud, lugar::aqui());
}

wchar_t* cdir_dame_nombre_base_valido_UNICODE(const wchar_t* nombre) {
    i_comprueba(nombre != nullptr, "(nombre) != NULL");
    return i_nombre_base_reparado(a_vista(nombre)).suelta();
}

unsigned short cdir_extension_valida_UNICODE(const wchar_t* ext) {
    if (!i_comprueba(ext != nullptr, "ext != NULL")) {
        return FALSO;
    }
    const vista_w texto(ext);
    return std::all_of(texto.begin(), texto.end(), [](wchar_t c) { return i_caracter_valido(c); }) ? CIERTO
                                                                                                   : FALSO;
}

unsigned short cdir_extension_valida(const char* ext) {
    return puente<cdir_extension_valida_UNICODE>(ext);
}

wchar_t* cdir_extension_con_dolar_UNICODE(const wchar_t* ext) {
    if (!i_comprueba(ext != nullptr, "(ext) != NULL")) {
        return cadena_w(vista_w()).suelta();
    }
    vista_w recortada = recorta_derecha(vista_w(ext));
    if (recortada.empty()) {
        return cadena_w(L".$").suelta();
    }
    i_comprueba_con(recortada.front() == L'.', "ext_sin_espacios[0] == L'.'", recortada);
    if (recortada.size() >= longitud_que_se_sustituye) {
        recortada.remove_suffix(1);
    }
    return concatena<wchar_t>({recortada, L"$"}).suelta();
}
