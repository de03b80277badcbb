// See buclrein.hpp.
#include "companions/buclrein.hpp"

#include "companions/anfitrion.hpp"
#include "companions/lmaviso.hpp"
#include "companions/msglocal.hpp"
#include "companions/plataforma.hpp"

namespace interno {
namespace {

constexpr unsigned long reintentos_por_defecto = 5;
constexpr unsigned long espera_por_defecto_ms = 100;

unsigned long i_reintentos_silenciosos = reintentos_por_defecto;
unsigned long i_espera_ms = espera_por_defecto_ms;
bool i_en_servicio = false;
BuclreinReceptor i_receptor_pregunta = nullptr;
void* i_contexto_pregunta = nullptr;

// Without a receiver of the program's the user learns of it, and nobody can be asked.
bool i_pregunta(const BuclRein& bucle) {
    const cadena_w texto =
        bucle.codigo_error == 0
            ? concatena<wchar_t>({bucle.mensaje})
            : concatena<wchar_t>({bucle.mensaje, L"\n", strgetlasterror_texto_cod_error(bucle.codigo_error)});
    if (i_receptor_pregunta == nullptr) {
        lmaviso_aviso_interno_como_error_u(texto.c_str());
        return false;
    }
    return llama_al_anfitrion(i_receptor_pregunta, texto.c_str(), bucle.codigo_error, i_contexto_pregunta) ==
           1;
}

}  // namespace

bool BuclRein::va_a_reintentar() const noexcept {
    return reintenta && !i_en_servicio && (quedan > 0 || informa);
}

BuclRein buclrein_crea(bool reintentar, bool informar) noexcept {
    return {.reintenta = reintentar, .informa = informar, .quedan = i_reintentos_silenciosos};
}

bool buclrein_reintentar(BuclRein& bucle, bool ha_ido_bien) {
    if (ha_ido_bien || !bucle.va_a_reintentar()) {
        return false;
    }
    bucle.ha_insistido = true;
    if (bucle.quedan == 0) {
        return i_pregunta(bucle);
    }
    --bucle.quedan;
    plataforma::duerme_ms(i_espera_ms);
    return true;
}

bool buclrein_es_el_primer_reintento_antes_de_mostrar_aviso(const BuclRein& bucle) noexcept {
    return bucle.ha_fallado && !bucle.ha_insistido && bucle.va_a_reintentar();
}

void buclrein_establece_modo_servicio_sin_reintentos() noexcept {
    i_en_servicio = true;
}

bool i_modo_servicio() noexcept {
    return i_en_servicio;
}

void i_restablece_modo_servicio() noexcept {
    i_en_servicio = false;
}

void i_establece_politica(unsigned long reintentos_silenciosos, unsigned long espera_ms) noexcept {
    i_reintentos_silenciosos = reintentos_silenciosos;
    i_espera_ms = espera_ms;
}

void i_establece_receptor(BuclreinReceptor receptor, void* contexto) noexcept {
    i_receptor_pregunta = receptor;
    i_contexto_pregunta = contexto;
}

}  // namespace interno
