// The notes that the rules on paths judge from, taken by both ways: sixteen units at a time and one by one.
#include "paths/notas.hpp"

#include <memory>
#include <random>

#include "apoyo/apoyo.hpp"
#include "apoyo/pagina_ultima.hpp"

using interno::i_notas;
using interno::i_notas_llanas;
using interno::notas_de_64;
using interno::vista;

namespace interno {
bool operator==(const notas_de_64& a, const notas_de_64& b) {
    return a.separador == b.separador && a.punto == b.punto && a.blanco == b.blanco && a.raro == b.raro;
}
}  // namespace interno

namespace {

// A text in a block of exactly its size: what is read outside is seen by the sanitizer.
template <class C>
class justo {
public:
    explicit justo(const std::vector<unsigned>& unidades)
        : unidades_(new C[unidades.size()]), num_(unidades.size()) {
        for (std::size_t i = 0; i < num_; ++i) {
            unidades_[i] = static_cast<C>(unidades[i]);
        }
    }
    vista<C> ver() const { return {unidades_.get(), num_}; }

private:
    std::unique_ptr<C[]> unidades_;
    std::size_t num_;
};

// A block at each place of a text, as who walks over it takes them.
template <class C>
void compara(const std::vector<unsigned>& unidades) {
    const justo<C> texto(unidades);
    for (std::size_t desde = 0; desde <= unidades.size(); desde += 7) {
        const vista<C> resto = texto.ver().substr(desde);
        ASSERT_TRUE(i_notas(resto) == i_notas_llanas(resto.substr(0, 64)))
            << testing::PrintToString(unidades) << desde;
    }
}

// What stands behind a text says nothing, wherever in a page of memory the text ends.
template <class C>
void compara_en_una_pagina(const std::vector<unsigned>& unidades) {
    const std::vector<C> texto(unidades.begin(), unidades.end());
    std::vector<C> memoria(2 * 4096 / sizeof(C));
    for (const unsigned detras : {unsigned{'\\'}, unsigned{'|'}, unsigned{' '}, 0xC4u}) {
        for (std::size_t fin = memoria.size() / 2; fin + 200 < memoria.size(); fin += 13) {
            std::fill(memoria.begin(), memoria.end(), static_cast<C>(detras));
            std::copy(texto.begin(), texto.end(), memoria.data() + fin - texto.size());
            const vista<C> ver(memoria.data() + fin - texto.size(), texto.size());
            ASSERT_TRUE(i_notas(ver) == i_notas_llanas(ver.substr(0, 64)))
                << testing::PrintToString(unidades) << fin;
        }
    }
}

// A text at every place before the end of the last page that there is.
template <class C>
void compara_ante_el_fin() {
    const apoyo::pagina_ultima pagina;
    C* const fin = pagina.fin<C>();
    std::fill(fin - apoyo::pagina_ultima::bytes / sizeof(C), fin, static_cast<C>('\\'));
    for (std::size_t sobran = 0; sobran < 3; ++sobran) {
        for (std::size_t num = 1; num < 200; ++num) {
            const vista<C> texto(fin - sobran - num, num);
            ASSERT_TRUE(i_notas(texto) == i_notas_llanas(texto.substr(0, 64))) << sobran << " " << num;
        }
    }
}

}  // namespace

TEST(notas, nada_se_lee_tras_la_ultima_pagina) {
    compara_ante_el_fin<wchar_t>();
    compara_ante_el_fin<char>();
}

// What a unit is noted as, told by a list written out.
TEST(notas, cada_unidad) {
    for (unsigned u = 0; u < 0x10000; ++u) {
        const wchar_t c = static_cast<wchar_t>(u);
        const notas_de_64 n = i_notas_llanas(vista<wchar_t>(&c, 1));
        const auto esta_en = [u](std::string_view lista) {
            return u < 0x80 && lista.find(static_cast<char>(u)) != std::string_view::npos;
        };
        ASSERT_EQ(n.separador, esta_en("\\/") ? 1u : 0u) << u;
        ASSERT_EQ(n.punto, esta_en(".") ? 1u : 0u) << u;
        ASSERT_EQ(n.blanco, esta_en(" ") ? 1u : 0u) << u;
        ASSERT_EQ(n.raro, u < 32 || esta_en(":*\"?<>|") ? 1u : 0u) << u;
        if (u < 0x100) {
            const char byte = static_cast<char>(u);
            const notas_de_64 de_byte = i_notas_llanas(vista<char>(&byte, 1));
            ASSERT_EQ(de_byte.raro | de_byte.separador | de_byte.punto | de_byte.blanco,
                      n.raro | n.separador | n.punto | n.blanco);
        }
    }
}

TEST(notas, cada_unidad_en_cada_sitio_de_un_bloque) {
    for (unsigned u = 0; u < 0x10000; u += u < 0x180 ? 1 : 0x3F) {
        for (const std::size_t longitud : {1u, 7u, 16u, 21u}) {
            for (std::size_t sitio = 0; sitio < longitud; ++sitio) {
                std::vector<unsigned> unidades(longitud, 'a');
                unidades[sitio] = u;
                compara<wchar_t>(unidades);
                if (u < 0x100) {
                    compara<char>(unidades);
                }
            }
        }
    }
}

TEST(notas, en_cada_sitio_de_una_pagina) {
    for (const std::size_t longitud : {1u, 40u, 63u, 64u, 65u}) {
        std::vector<unsigned> unidades(longitud, 'a');
        unidades[longitud / 2] = '/';
        unidades[longitud - 1] = '.';
        compara_en_una_pagina<wchar_t>(unidades);
        compara_en_una_pagina<char>(unidades);
    }
}

TEST(notas, textos_de_todos_los_largos) {
    std::mt19937 azar(64);
    for (std::size_t longitud = 0; longitud < 280; ++longitud) {
        for (int vez = 0; vez < 12; ++vez) {
            std::vector<unsigned> unidades;
            for (std::size_t i = 0; i < longitud; ++i) {
                const unsigned cual = azar() % 4;
                unidades.push_back(cual == 0 ? azar() % 0x10000
                                   : cual == 1
                                       ? azar() % 0x100
                                       : static_cast<unsigned>("\\/. :*\"?<>|aZ~\x1F\x21"[azar() % 17]));
            }
            compara<wchar_t>(unidades);
            compara<char>(unidades);
        }
    }
}
