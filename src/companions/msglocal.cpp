// See msglocal.hpp.
#include "companions/msglocal.hpp"

#include <atomic>

#include "companions/error_interno.hpp"
#include "companions/msglocal.h"
#include "companions/plataforma.hpp"

namespace lumodir {
namespace {

constexpr unsigned long ranura_sin_elegir = ~0ul;
std::atomic<unsigned long> i_ranura{ranura_sin_elegir};

struct idioma_windows {
    unsigned short primario;   // low ten bits of a LANGID
    unsigned short sublengua;  // upper six bits; 0 stands for all of them
    unsigned long ranura;
};

// More particular rows come first.
constexpr idioma_windows idiomas[] = {
    {0x0A, 0x02, 6},   // Spanish of Mexico
    {0x0A, 0x0B, 7},   // Spanish of Argentina
    {0x0A, 0x01, 0},   // Spanish, traditional sort
    {0x0A, 0x03, 0},   // Spanish of Spain, modern sort
    {0x0A, 0x00, 24},  // Spanish of anywhere else
    {0x0C, 0x00, 1},   // French
    {0x16, 0x01, 2},   // Portuguese of Brazil
    {0x16, 0x00, 3},   // Portuguese of Portugal
    {0x03, 0x00, 4},   // Catalan
    {0x10, 0x00, 5},   // Italian
    {0x09, 0x00, 8},   // English
    {0x56, 0x00, 9},   // Galician
    {0x02, 0x00, 10},  // Bulgarian
    {0x18, 0x00, 11},  // Romanian
    {0x04, 0x02, 12},  // Chinese of the People's Republic
    {0x04, 0x04, 12},  // Chinese of Singapore
    {0x04, 0x00, 8},   // Traditional Chinese: no texts, English is nearer than the other script
    {0x07, 0x00, 13},  // German
    {0x19, 0x00, 18},  // Russian
    {0x1E, 0x00, 25},  // Thai
    {0x05, 0x00, 26},  // Czech
    {0x1A, 0x01, 27},  // Croatian
    {0x1A, 0x04, 27},  // Croatian of Bosnia and Herzegovina
    {0x24, 0x00, 29},  // Slovenian
    {0x0E, 0x00, 30},  // Hungarian
    {0x15, 0x00, 31},  // Polish
    {0x1F, 0x00, 33},  // Turkish
    {0x11, 0x00, 39},  // Japanese
};

}  // namespace

unsigned long i_ranura_de_idioma(unsigned short langid) noexcept {
    const unsigned primario = langid & 0x3FFu;
    const unsigned sublengua = langid >> 10;
    for (const idioma_windows& fila : idiomas) {
        if (fila.primario == primario && (fila.sublengua == 0 || fila.sublengua == sublengua)) {
            return fila.ranura;
        }
    }
    return ranura_ingles;
}

const wchar_t* nousar_msglocal_original_u(ConstructorMensaje construye) noexcept {
    RegistroMensaje registro;
    construye(&registro);
    return registro.texto[msglocal_dame_idioma()] + registro.longitud_prefijo;
}

}  // namespace lumodir

using namespace lumodir;

void msglocal_establece_idioma(unsigned long slot) {
    if (i_comprueba(slot < num_ranuras_idioma, "slot < 41")) {
        i_ranura.store(slot, std::memory_order_relaxed);
    }
}

unsigned long msglocal_dame_idioma(void) {
    unsigned long ranura = i_ranura.load(std::memory_order_relaxed);
    if (ranura == ranura_sin_elegir) {
        ranura = i_ranura_de_idioma(plataforma::idioma_del_usuario());
        i_ranura.store(ranura, std::memory_order_relaxed);
    }
    return ranura;
}
