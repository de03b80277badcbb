// See avisos.hpp. The start-up setting is a plain value, written once before any thread calls.
#include "frame/avisos.hpp"

#include "companions/lmaviso.hpp"
#include "companions/msglocal.hpp"
#include "companions/unicode.hpp"

namespace interno {
namespace {

LumodirFncComprobarFichero i_func_fichero_abierto = nullptr;

}  // namespace

cadena_w i_mensaje(ConstructorMensaje construye, std::initializer_list<argumento<wchar_t>> argumentos) {
    return copiaforu_nousar_formatea(nousar_msglocal_original_u(construye), argumentos);
}

void i_muestra_texto(const wchar_t* texto) noexcept {
    if (!i_modo_servicio()) {
        lmaviso_aviso_interno_como_error_u(texto);
    }
}

void i_muestra_mensaje(ConstructorMensaje construye, vista_w argumento) noexcept {
    if (!i_modo_servicio()) {
        const cadena_w texto = i_mensaje(construye, {argumento});
        lmaviso_aviso_interno_como_error_u(texto.c_str());
    }
}

void i_muestra_mensaje(ConstructorMensaje construye, vista_a argumento) noexcept {
    if (!i_modo_servicio()) {  // nothing is converted that nobody sees
        i_muestra_mensaje(construye, utf16_temporal(argumento).ver());
    }
}

void i_establece_func_comprobar_fichero_no_esta_abierto(LumodirFncComprobarFichero func) noexcept {
    i_func_fichero_abierto = func;
}

LumodirFncComprobarFichero i_func_comprobar_fichero_no_esta_abierto() noexcept {
    return i_func_fichero_abierto;
}

}  // namespace interno
