#include "frases.hpp"

#include "anfitrion.hpp"
#include "textos.hpp"

namespace mando {

namespace {

// Which values a phrase takes, as a set of bits: %1 is the lowest.
constexpr unsigned i_valores(auto texto) {
    unsigned valores = 0;
    for (size_t i = 0; i + 1 < texto.size(); ++i) {
        if (texto[i] == '%' && texto[i + 1] >= '1' && texto[i + 1] <= '9') {
            valores |= 1u << (texto[i + 1] - '1');
        }
    }
    return valores;
}

constexpr bool i_todas_toman_lo_mismo() {
    for (const fila_de_frases& f : catalogo_de_frases) {
        if (!f.espanyol.empty() && i_valores(f.ingles) != i_valores(f.espanyol)) {
            return false;
        }
    }
    return true;
}
static_assert(i_todas_toman_lo_mismo(), "a translation lacks a value, or has one too many");
static_assert(catalogo_de_frases[0].ingles.empty());

bool i_es_castellano(lumodir::idioma cual) {
    using lumodir::idioma;
    return cual == idioma::espanyol || cual == idioma::espanyol_mexico ||
           cual == idioma::espanyol_argentina || cual == idioma::espanyol_america;
}

}  // namespace

bool en_espanyol() {
    const lumodir::idioma cual = idioma_de_los_textos(lumodir::dame_idioma());
    return i_es_castellano(cual) || cual == lumodir::idioma::catalan;
}

bool en_la_lengua_de_los_mensajes() {
    const lumodir::idioma cual = idioma_de_los_textos(lumodir::dame_idioma());
    return i_es_castellano(cual) || cual == lumodir::idioma::ingles;
}

std::wstring frase::texto() const {
    const fila_de_frases& fila = catalogo_de_frases[fila_];
    return en_espanyol() && !fila.espanyol.empty() ? std::wstring(fila.espanyol) : ancho_de(fila.ingles);
}

std::wstring i_di(frase que, std::initializer_list<std::wstring_view> valores) {
    const std::wstring texto = que.texto();
    std::wstring resultado;
    for (size_t i = 0; i < texto.size(); ++i) {
        const size_t cual = i + 1 < texto.size() ? static_cast<size_t>(texto[i + 1] - L'1') : valores.size();
        if (texto[i] == L'%' && cual < valores.size()) {
            resultado += valores.begin()[cual];
            ++i;
        } else {
            resultado += texto[i];
        }
    }
    return resultado;
}

}  // namespace mando
