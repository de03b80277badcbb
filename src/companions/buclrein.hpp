// Retry loops: how often an operation is tried again, how long is waited, when the user is asked.
//
// The loop: with retry 0, or in service mode, one attempt and silence. Otherwise each failed attempt, while
// silent retries remain, waits and is granted another; when they are used up, a loop that reports asks the
// question service (message, line break, the system's text for the code), whose answer decides, and an attempt
// so granted is made at once; a loop that does not report is over.
// Cannot promise: how long the host's question takes.
// Checked by tests/companions/buclrein_test.cpp.
#pragma once

#include "companions/cadena.hpp"

namespace lumodir {

struct BuclRein;

BuclRein* buclrein_crea(unsigned short reintentar, unsigned short informar, lugar donde = lugar::aqui());
// Takes the message over: it describes the failure of the last attempt.
void buclrein_set_mensaje_reintentar(BuclRein* bucle, cadena_w mensaje, unsigned long codigo_error) noexcept;
unsigned short buclrein_reintentar(BuclRein* bucle, unsigned short ha_ido_bien);
unsigned short buclrein_es_el_primer_reintento_antes_de_mostrar_aviso(const BuclRein* bucle) noexcept;
void buclrein_destruye(BuclRein** bucle) noexcept;
void buclrein_establece_modo_servicio_sin_reintentos() noexcept;
// Tests only: service mode has no way back in the product.
void i_buclrein_restablece_modo_servicio() noexcept;

// Runs `intento` (answers a truth value) inside a loop; after each failed attempt `al_fallar(bucle)` hands over
// the message. Returns the outcome of the last attempt.
template <class Intento, class AlFallar>
unsigned short i_con_reintentos(unsigned short reintentar, unsigned short informar, Intento intento,
                                AlFallar al_fallar, lugar donde = lugar::aqui()) {
    BuclRein* bucle = buclrein_crea(reintentar, informar, donde);
    unsigned short bien;
    do {
        bien = intento();
        if (bien != 1) {
            al_fallar(bucle);
        }
    } while (buclrein_reintentar(bucle, bien) == 1);
    buclrein_destruye(&bucle);
    return bien;
}

}  // namespace lumodir
