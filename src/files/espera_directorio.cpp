// Waiting for a directory on a network or removable drive to come back. Nothing in the directory is opened, and the
// user is not asked: how long it waits is the retry policy of the program.
// Checked by tests/files/espera_directorio_win32_test.cpp.
#include "companions/buclrein.hpp"
#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"
#include "companions/unicode.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "lumodir.h"

using namespace lumodir;

unsigned short lumodir_espera_acceso_a_recursos_en_directorio(const char* directorio) {
    if (!i_comprueba(directorio != nullptr, "(directorio) != NULL")) {
        return FALSO;
    }
    const utf16_temporal ancho(directorio);
    const ruta_fijada fijada(ancho.c_str());
    const auto intento = [&] { return i_existencia(fijada).hay(); };
    const auto al_fallar = [&](BuclRein* bucle) {
        buclrein_set_mensaje_reintentar(
            bucle, [&] { return i_mensaje(i_msg_53963_esperando_acceso_a_directorio, {ancho.ver()}); }, 0);
    };
    return i_con_reintentos(CIERTO, FALSO, intento, al_fallar);
}
