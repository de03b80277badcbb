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
    unsigned short sublengua;  // upper six bits
    unsigned long ranura;
};

constexpr unsigned short neutra = 0;         // the language, without a country
constexpr unsigned short cualquiera = 0xFF;  // more than six bits hold

// More particular rows come first.
constexpr idioma_windows idiomas[] = {
    {0x0A, 0x02, 6},         // Spanish of Mexico
    {0x0A, 0x0B, 7},         // Spanish of Argentina
    {0x0A, 0x01, 0},         // Spanish, traditional sort
    {0x0A, 0x03, 0},         // Spanish of Spain, modern sort
    {0x0A, cualquiera, 24},  // Spanish of anywhere else
    {0x0C, cualquiera, 1},   // French
    {0x16, 0x01, 2},         // Portuguese of Brazil
    {0x16, cualquiera, 3},   // Portuguese of Portugal
    {0x03, cualquiera, 4},   // Catalan
    {0x10, cualquiera, 5},   // Italian
    {0x09, cualquiera, 8},   // English
    {0x56, cualquiera, 9},   // Galician
    {0x02, cualquiera, 10},  // Bulgarian
    {0x18, cualquiera, 11},  // Romanian
    {0x04, 0x02, 12},        // Chinese of the People's Republic
    {0x04, 0x04, 12},        // Chinese of Singapore
    {0x04, neutra, 12},      // simplified Chinese of no country
    {0x04, cualquiera, 8},   // Traditional Chinese: no texts, English is nearer than the other script
    {0x07, cualquiera, 13},  // German
    {0x19, cualquiera, 18},  // Russian
    {0x1E, cualquiera, 25},  // Thai
    {0x05, cualquiera, 26},  // Czech
    {0x1A, neutra, 27},      // Croatian of no country
    {0x1A, 0x01, 27},        // Croatian
    {0x1A, 0x04, 27},        // Croatian of Bosnia and Herzegovina
    {0x24, cualquiera, 29},  // Slovenian
    {0x0E, cualquiera, 30},  // Hungarian
    {0x15, cualquiera, 31},  // Polish
    {0x1F, cualquiera, 33},  // Turkish
    {0x11, cualquiera, 39},  // Japanese
};

constexpr unsigned short castellano = 0x0C0A;
constexpr unsigned short de_mexico = 0x080A;
constexpr unsigned short de_portugal = 0x0816;
constexpr unsigned short de_brasil = 0x0416;

struct textos_del_sistema {
    unsigned long ranura;
    idiomas_de_ranura idiomas;
};

// Windows is delivered in these; a slot of a variant that it lacks names the two that come nearest.
constexpr textos_del_sistema idiomas_del_sistema[] = {
    {ranura_espanol, {castellano, de_mexico}},
    {ranura_frances, {0x040C, 0}},
    {ranura_portugues_brasil, {de_brasil, de_portugal}},
    {ranura_portugues_portugal, {de_portugal, de_brasil}},
    {ranura_catalan, {0x0403, castellano}},
    {ranura_italiano, {0x0410, 0}},
    {ranura_espanol_regional_1, {de_mexico, castellano}},
    {ranura_espanol_regional_2, {de_mexico, castellano}},
    {ranura_ingles, {0x0409, 0}},
    {ranura_gallego, {0x0456, castellano}},
    {ranura_bulgaro, {0x0402, 0}},
    {ranura_rumano, {0x0418, 0}},
    {ranura_chino_simplificado, {0x0804, 0}},
    {ranura_aleman, {0x0407, 0}},
    {ranura_ruso, {0x0419, 0}},
    {ranura_espanol_regional_3, {de_mexico, castellano}},
    {ranura_tailandes, {0x041E, 0}},
    {ranura_checo, {0x0405, 0}},
    {ranura_croata, {0x041A, 0}},
    {ranura_esloveno, {0x0424, 0}},
    {ranura_hungaro, {0x040E, 0}},
    {ranura_polaco, {0x0415, 0}},
    {ranura_turco, {0x041F, 0}},
    {ranura_japones, {0x0411, 0}},
};

}  // namespace

unsigned long i_ranura_de_idioma(unsigned short langid) noexcept {
    const unsigned primario = langid & 0x3FFu;
    const unsigned sublengua = langid >> 10;
    for (const idioma_windows& fila : idiomas) {
        if (fila.primario == primario && (fila.sublengua == cualquiera || fila.sublengua == sublengua)) {
            return fila.ranura;
        }
    }
    return ranura_ingles;
}

idiomas_de_ranura i_idiomas_de_ranura(unsigned long ranura) noexcept {
    for (const textos_del_sistema& fila : idiomas_del_sistema) {
        if (fila.ranura == ranura) {
            return fila.idiomas;
        }
    }
    return i_idiomas_de_ranura(ranura_de_respaldo(static_cast<std::uint32_t>(ranura)));
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
