// The record through which a localized text travels from a catalogue to the message library, and the
// numbering of its language slots.
//
// Promises: the layout is fixed (checked below), because other modules fill and read the same record; a
// record owns nothing, every text in it is a constant that outlives the record.
// Cannot promise: that the slots are filled. That is the duty of the message builder, which must leave
// none of the 41 empty, so that the message library may pick any slot without a test.
//
// Checked by tests/frame/catalogo_test.cpp.

#pragma once

#include <cstddef>
#include <cstdint>

namespace interno {

constexpr std::uint32_t num_ranuras_idioma = 41;

// Slots without a name here are reserved: 14-17, 19-23, 28, 32, 34-38 and 40.
enum ranura_idioma : std::uint32_t {
    ranura_espanol = 0,
    ranura_frances = 1,
    ranura_portugues_brasil = 2,
    ranura_portugues_portugal = 3,
    ranura_catalan = 4,
    ranura_italiano = 5,
    ranura_espanol_regional_1 = 6,
    ranura_espanol_regional_2 = 7,
    ranura_ingles = 8,
    ranura_gallego = 9,
    ranura_bulgaro = 10,
    ranura_rumano = 11,
    ranura_chino_simplificado = 12,
    ranura_aleman = 13,
    ranura_ruso = 18,
    ranura_espanol_regional_3 = 24,
    ranura_tailandes = 25,
    ranura_checo = 26,
    ranura_croata = 27,
    ranura_esloveno = 29,
    ranura_hungaro = 30,
    ranura_polaco = 31,
    ranura_turco = 33,
    ranura_japones = 39,
};

// The slot whose text stands in for a message that has none in `ranura`. Whoever has set the language to
// Galician or to a regional Spanish reads Spanish without effort; the readers of Bulgarian, Thai, Czech,
// Croatian, Slovenian and Hungarian are better served by English. The reserved slots follow their
// neighbours: Spanish below the last regional Spanish (24), English above it.
// For a slot that always has a text of its own the answer is never used.
constexpr std::uint32_t ranura_de_respaldo(std::uint32_t ranura) {
    const bool lee_ingles = ranura == ranura_bulgaro || ranura > ranura_espanol_regional_3;
    return lee_ingles ? ranura_ingles : ranura_espanol;
}

struct RegistroMensaje {
    const char* fichero_mensajes;    // name of the message file that the text belongs to
    std::uint32_t linea;             // line of the message in that file
    std::uint32_t longitud_prefijo;  // characters of the "<id>" that opens every text
    const wchar_t* texto[num_ranuras_idioma];
    const void* fin;  // always NULL: tells where the slots end
};

static_assert(sizeof(wchar_t) == 2, "the texts are UTF-16");
static_assert(offsetof(RegistroMensaje, texto) == 16 && offsetof(RegistroMensaje, fin) == 16 + 41 * 8 &&
                  sizeof(RegistroMensaje) == 16 + 42 * 8,
              "the record is shared with modules that are compiled elsewhere");

using ConstructorMensaje = void (*)(RegistroMensaje*);

}  // namespace interno
