// See buclrein.hpp.
#include "companions/buclrein.hpp"

#include <new>
#include <utility>

#include "companions/anfitrion.hpp"
#include "companions/lmaviso.hpp"
#include "companions/plataforma.hpp"

namespace interno {

struct BuclRein {
    bool reintenta;
    bool informa;
    bool ha_fallado;       // a failed attempt handed its message over
    bool ha_reintentado;   // an attempt beyond the first was granted
    bool ha_avisado;       // the user was asked
    unsigned long quedan;  // silent retries left
    cadena_w mensaje;
    unsigned long codigo_error;
};

namespace {

constexpr unsigned long reintentos_por_defecto = 5;
constexpr unsigned long espera_por_defecto_ms = 100;

unsigned long i_reintentos_silenciosos = reintentos_por_defecto;
unsigned long i_espera_ms = espera_por_defecto_ms;
bool i_en_servicio = false;
BuclreinReceptor i_receptor = nullptr;
void* i_contexto = nullptr;

bool i_va_a_reintentar(const BuclRein& bucle) noexcept {
    return bucle.reintenta && !i_en_servicio && (bucle.quedan > 0 || bucle.informa);
}

// The program has no receiver: the user learns of it, nobody can be asked.
unsigned short i_pregunta_por_defecto(const wchar_t* mensaje) noexcept {
    lmaviso_aviso_interno_como_error_u(mensaje);
    return 0;
}

bool i_pregunta(const BuclRein& bucle) {
    cadena_w texto =
        bucle.codigo_error == 0
            ? concatena<wchar_t>({bucle.mensaje})
            : concatena<wchar_t>(
                  {bucle.mensaje, L"\n", plataforma::strgetlasterror_texto_cod_error(bucle.codigo_error)});
    const unsigned short respuesta =
        i_receptor == nullptr ? i_pregunta_por_defecto(texto.c_str())
                              : llama_al_anfitrion(i_receptor, texto.c_str(), bucle.codigo_error, i_contexto);
    return respuesta == 1;
}

}  // namespace

BuclRein* buclrein_crea(unsigned short reintentar, unsigned short informar, lugar donde) {
    return new (i_reserva(sizeof(BuclRein), donde))
        BuclRein{reintentar == 1, informar == 1, false, false, false, i_reintentos_silenciosos, {}, 0};
}

bool i_va_a_preguntar(const BuclRein* bucle) noexcept {
    return bucle->quedan == 0 && i_va_a_reintentar(*bucle);
}

void i_anota_fallo(BuclRein* bucle, cadena_w mensaje, unsigned long codigo_error) noexcept {
    bucle->mensaje = std::move(mensaje);
    bucle->codigo_error = codigo_error;
    bucle->ha_fallado = true;
}

unsigned short buclrein_reintentar(BuclRein* bucle, unsigned short ha_ido_bien) {
    if (ha_ido_bien == 1 || !i_va_a_reintentar(*bucle)) {
        return 0;
    }
    if (bucle->quedan > 0) {
        --bucle->quedan;
        bucle->ha_reintentado = true;
        plataforma::duerme_ms(i_espera_ms);
        return 1;
    }
    bucle->ha_avisado = true;
    return i_pregunta(*bucle) ? 1 : 0;
}

unsigned short buclrein_es_el_primer_reintento_antes_de_mostrar_aviso(const BuclRein* bucle) noexcept {
    return bucle->ha_fallado && !bucle->ha_reintentado && !bucle->ha_avisado && i_va_a_reintentar(*bucle) ? 1
                                                                                                          : 0;
}

void buclrein_destruye(BuclRein** bucle) noexcept {
    (*bucle)->~BuclRein();
    i_libera(*bucle);
    *bucle = nullptr;
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
    i_receptor = receptor;
    i_contexto = contexto;
}

}  // namespace interno
