// See lmaviso.hpp.
#include "companions/lmaviso.hpp"

#include "companions/anfitrion.hpp"
#include "companions/plataforma.hpp"

namespace interno {
namespace {

LmavisoReceptor i_receptor_aviso = nullptr;
void* i_contexto_aviso = nullptr;

}  // namespace

void lmaviso_aviso_interno_como_error_u(const wchar_t* texto) noexcept {
    if (i_receptor_aviso != nullptr) {
        llama_al_anfitrion(i_receptor_aviso, texto, i_contexto_aviso);
        return;
    }
    plataforma::escribe_error_estandar(a_vista(texto));
    plataforma::escribe_error_estandar(L"\n");
}

void i_establece_receptor(LmavisoReceptor receptor, void* contexto) noexcept {
    i_receptor_aviso = receptor;
    i_contexto_aviso = contexto;
}

}  // namespace interno
