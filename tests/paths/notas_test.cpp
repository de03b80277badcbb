// The notes that the rules on paths judge from, taken by both ways: sixteen units at a time and one by one.
#include "paths/notas.hpp"

#include <memory>
#include <random>

#include "apoyo/apoyo.hpp"

using interno::bits;
using interno::i_notas_llanas;
using interno::notas_de_64;
using interno::notas_de_vista;
using interno::vista;

namespace interno {
bool operator==(const notas_de_64& a, const notas_de_64& b) {
    return a.separador == b.separador && a.punto == b.punto && a.blanco == b.blanco && a.raro == b.raro &&
           a.alto == b.alto;
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

template <class C>
void compara(const std::vector<unsigned>& unidades) {
    const justo<C> texto(unidades);
    for (std::size_t desde = 0; desde < unidades.size() + 65; desde += 64) {
        notas_de_64 esperadas{};
        if (desde < unidades.size()) {
            esperadas = i_notas_llanas(texto.ver().substr(desde, 64));
        }
        const std::size_t quedan = desde < unidades.size() ? unidades.size() - desde : 0;
        if (quedan < 64) {
            esperadas.separador |= ~bits{0} << quedan;
        }
        ASSERT_TRUE(notas_de_vista<C>(texto.ver())(desde) == esperadas)
            << testing::PrintToString(unidades) << desde;
    }
}

}  // namespace

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
        ASSERT_EQ(n.alto, 0u);
        if (u < 0x100) {
            const char byte = static_cast<char>(u);
            const notas_de_64 de_byte = i_notas_llanas(vista<char>(&byte, 1));
            ASSERT_EQ(de_byte.raro | de_byte.separador | de_byte.punto | de_byte.blanco,
                      n.raro | n.separador | n.punto | n.blanco);
            ASSERT_EQ(de_byte.alto, u >= 0x80 ? 1u : 0u);
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
