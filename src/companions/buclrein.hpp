// Retry loops: how often an operation is tried again, how long is waited, when the user is asked.
//
// The loop: with retry 0, or in service mode, one attempt and silence. Otherwise each failed attempt, while
// silent retries remain, waits and is granted another; when they are used up, a loop that reports asks the
// question service (message, line break, the system's text for the code), whose answer decides, and an attempt
// so granted is made at once; a loop that does not report is over.
// Cannot promise: how long the host's question takes.
// Checked by tests/companions/buclrein_test.cpp.
#pragma once

#include "companions/buclrein.h"
#include "companions/cadena.hpp"

namespace interno {

// They hold for every loop that begins after the call.
void i_establece_politica(unsigned long reintentos_silenciosos, unsigned long espera_ms) noexcept;
void i_establece_receptor(BuclreinReceptor receptor, void* contexto) noexcept;

// A loop from its first attempt to its last.
struct BuclRein {
    bool reintenta;
    bool informa;
    unsigned long quedan;       // silent retries
    bool ha_fallado = false;    // a failed attempt has said why
    bool ha_insistido = false;  // an attempt beyond the first was granted, or the user asked for one
    cadena_w mensaje = {};
    unsigned long codigo_error = 0;

    bool va_a_reintentar() const noexcept;
    // Whether the failure of an attempt is asked about now: no silent retry is left.
    bool va_a_preguntar() const noexcept { return quedan == 0 && va_a_reintentar(); }
};

BuclRein buclrein_crea(bool reintentar, bool informar) noexcept;
// After a failed attempt: `haz_mensaje` makes the text that describes it, and is called only when the user is about to
// be asked.
template <class HazMensaje>
void buclrein_set_mensaje_reintentar(BuclRein& bucle, HazMensaje haz_mensaje, unsigned long codigo_error) {
    bucle.mensaje = bucle.va_a_preguntar() ? haz_mensaje() : cadena_w();
    bucle.codigo_error = codigo_error;
    bucle.ha_fallado = true;
}
// After every attempt: whether another one is made. Waits, or asks, before it says so.
bool buclrein_reintentar(BuclRein& bucle, bool ha_ido_bien);
bool buclrein_es_el_primer_reintento_antes_de_mostrar_aviso(const BuclRein& bucle) noexcept;

void buclrein_establece_modo_servicio_sin_reintentos() noexcept;
bool i_modo_servicio() noexcept;
// Tests only: service mode has no way back in the product.
void i_restablece_modo_servicio() noexcept;

// Runs `intento` (answers whether it went well) inside a loop; after each failed attempt `al_fallar(bucle)` sets the
// message. Returns the outcome of the last attempt.
template <class Intento, class AlFallar>
bool i_con_reintentos(bool reintentar, bool informar, Intento intento, AlFallar al_fallar) {
    BuclRein bucle = buclrein_crea(reintentar, informar);
    bool bien;
    do {
        bien = intento();
        if (!bien) {
            al_fallar(bucle);
        }
    } while (buclrein_reintentar(bucle, bien));
    return bien;
}

// The usual loop: an attempt tells how it ended (`hecho`, `codigo`); `haz_mensaje()` tells of one that failed.
template <class Intento, class HazMensaje>
bool i_insiste(bool informar, Intento intento, HazMensaje haz_mensaje) {
    decltype(intento()) ultimo = {};
    return i_con_reintentos(
        true, informar, [&] { return (ultimo = intento()).hecho; },
        [&](BuclRein& bucle) { buclrein_set_mensaje_reintentar(bucle, haz_mensaje, ultimo.codigo); });
}

}  // namespace interno
