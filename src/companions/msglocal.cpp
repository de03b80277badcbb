// See msglocal.hpp.
#include "companions/msglocal.hpp"

#include <atomic>
#include <utility>

#include "companions/plataforma.hpp"

namespace interno {
namespace {

constexpr unsigned long ranura_sin_elegir = ~0ul;
std::atomic<unsigned long> i_ranura{ranura_sin_elegir};

constexpr std::uint16_t castellano = 0x0C0A;
constexpr std::uint16_t de_mexico = 0x080A;
constexpr std::uint16_t de_portugal = 0x0816;
constexpr std::uint16_t de_brasil = 0x0416;
constexpr std::uint16_t ingles = 0x0409;
constexpr std::uint16_t chino = 0x0804;

// The display languages (LANGID) in which the system is asked for a text of its own that goes with messages of a slot:
// that of the slot's texts, and its nearest relative or 0. Where English stands in for a language, it does for both parts
// of a message.
struct idiomas_de_ranura {
    std::uint16_t primero;
    std::uint16_t segundo;
};

struct idioma_windows {
    std::uint16_t primario;   // low ten bits of a LANGID
    std::uint16_t sublengua;  // upper six bits
    ranura_idioma ranura;
    // In which Windows is delivered: of a variant that it lacks, the two that come nearest. The same in all rows of a slot.
    idiomas_de_ranura del_sistema;
};

constexpr std::uint16_t neutra = 0;         // the language, without a country
constexpr std::uint16_t cualquiera = 0xFF;  // more than six bits hold

// More particular rows come first.
constexpr idioma_windows idiomas[] = {
    {0x0A, 0x02, ranura_espanol_regional_1, {de_mexico, castellano}},
    {0x0A, 0x0B, ranura_espanol_regional_2, {de_mexico, castellano}},  // Argentina
    {0x0A, 0x01, ranura_espanol, {castellano, de_mexico}},             // of Spain, traditional sort
    {0x0A, 0x03, ranura_espanol, {castellano, de_mexico}},
    {0x0A, cualquiera, ranura_espanol_regional_3, {de_mexico, castellano}},  // of anywhere else
    {0x0C, cualquiera, ranura_frances, {0x040C, 0}},
    {0x16, 0x01, ranura_portugues_brasil, {de_brasil, de_portugal}},
    {0x16, cualquiera, ranura_portugues_portugal, {de_portugal, de_brasil}},
    {0x03, cualquiera, ranura_catalan, {0x0403, castellano}},
    {0x10, cualquiera, ranura_italiano, {0x0410, 0}},
    {0x09, cualquiera, ranura_ingles, {ingles, 0}},
    {0x56, cualquiera, ranura_gallego, {castellano, de_mexico}},
    {0x02, cualquiera, ranura_bulgaro, {ingles, 0}},
    {0x18, cualquiera, ranura_rumano, {0x0418, 0}},
    {0x04, 0x02, ranura_chino_simplificado, {chino, 0}},
    {0x04, 0x04, ranura_chino_simplificado, {chino, 0}},  // of Singapore
    {0x04, neutra, ranura_chino_simplificado, {chino, 0}},
    // Traditional Chinese: no texts, English is nearer than the other script.
    {0x04, cualquiera, ranura_ingles, {ingles, 0}},
    {0x07, cualquiera, ranura_aleman, {0x0407, 0}},
    {0x19, cualquiera, ranura_ruso, {0x0419, 0}},
    {0x1E, cualquiera, ranura_tailandes, {ingles, 0}},
    {0x05, cualquiera, ranura_checo, {ingles, 0}},
    {0x1A, neutra, ranura_croata, {ingles, 0}},
    {0x1A, 0x01, ranura_croata, {ingles, 0}},
    {0x1A, 0x04, ranura_croata, {ingles, 0}},  // of Bosnia and Herzegovina
    {0x24, cualquiera, ranura_esloveno, {ingles, 0}},
    {0x0E, cualquiera, ranura_hungaro, {ingles, 0}},
    {0x15, cualquiera, ranura_polaco, {0x0415, 0}},
    {0x1F, cualquiera, ranura_turco, {0x041F, 0}},
    {0x11, cualquiera, ranura_japones, {0x0411, 0}},
};

// A slot that has no language speaks that of its fallback.
idiomas_de_ranura i_idiomas_de_ranura(unsigned long ranura) noexcept {
    for (const idioma_windows& fila : idiomas) {
        if (fila.ranura == ranura) {
            return fila.del_sistema;
        }
    }
    return i_idiomas_de_ranura(ranura_de_respaldo(static_cast<std::uint32_t>(ranura)));
}

}  // namespace

unsigned long i_ranura_de_idioma(std::uint16_t langid) noexcept {
    const unsigned primario = langid & 0x3FFu;
    const unsigned sublengua = langid >> 10;
    for (const idioma_windows& fila : idiomas) {
        if (fila.primario == primario && (fila.sublengua == cualquiera || fila.sublengua == sublengua)) {
            return fila.ranura;
        }
    }
    return ranura_ingles;
}

const wchar_t* nousar_msglocal_original_u(ConstructorMensaje construye) noexcept {
    RegistroMensaje registro;
    construye(&registro);
    return registro.texto[i_idioma()] + registro.longitud_prefijo;
}

void i_establece_idioma(unsigned long ranura) noexcept {
    i_ranura.store(ranura, std::memory_order_relaxed);
}

unsigned long i_idioma() noexcept {
    unsigned long ranura = i_ranura.load(std::memory_order_relaxed);
    if (ranura == ranura_sin_elegir) {
        ranura = i_ranura_de_idioma(plataforma::idioma_del_usuario());
        i_establece_idioma(ranura);
    }
    return ranura;
}

cadena_w strgetlasterror_texto_cod_error(unsigned long codigo) {
    constexpr std::uint16_t del_sistema = 0;  // what the system itself would take, English at the last
    const idiomas_de_ranura propios = i_idiomas_de_ranura(i_idioma());
    for (const std::uint16_t idioma : {propios.primero, propios.segundo}) {
        cadena_w texto = idioma == 0 ? cadena_w() : plataforma::texto_de_codigo(codigo, idioma);
        if (!texto.es_nula()) {
            return texto;
        }
    }
    cadena_w texto = plataforma::texto_de_codigo(codigo, del_sistema);
    return texto.es_nula() ? copiaforu_nousar_formatea(L"%lu", {codigo}) : std::move(texto);
}

}  // namespace interno
