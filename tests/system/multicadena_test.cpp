// The text of a registry value against a naive model, over every short text of a small alphabet.
#include "system/multicadena.hpp"

#include "apoyo/apoyo.hpp"
#include "apoyo/pagina_ultima.hpp"
#include "modelos/multicadena.hpp"

using namespace apoyo;
using namespace interno;

namespace {

std::vector<texto_w> trozos(vista_w texto) {
    std::vector<texto_w> resultado;
    i_para_cada_trozo(texto, [&](vista_w trozo) { resultado.emplace_back(trozo); });
    return resultado;
}

struct fila_trozos {
    std::string_view texto;  // with "0" for a terminator
    std::vector<std::string> trozos;
};

texto_w con_terminadores(std::string_view texto) {
    texto_w resultado = w(texto);
    for (wchar_t& c : resultado) {
        c = c == L'0' ? L'\0' : c;
    }
    return resultado;
}

}  // namespace

TEST(multicadena, se_corta_por_terminadores_hasta_el_primer_trozo_vacio) {
    const fila_trozos filas[] = {
        {.texto = "", .trozos = {}},
        {.texto = "0", .trozos = {}},
        {.texto = "00", .trozos = {}},
        {.texto = "a00", .trozos = {"a"}},
        {.texto = "a0b00", .trozos = {"a", "b"}},
        {.texto = "a00b00", .trozos = {"a"}},       // what follows the double terminator is not read
        {.texto = "0a0b00", .trozos = {"a", "b"}},  // one at the very start is passed over
        {.texto = "00a00", .trozos = {}},           // two are the end
        {.texto = "a0b0", .trozos = {"a", "b"}},    // the final one is missing
        {.texto = "a0b", .trozos = {"a", "b"}},     // both are
        {.texto = "ñu0日本0😀0", .trozos = {"ñu", "日本", "😀"}},
    };
    for (const fila_trozos& fila : filas) {
        std::vector<texto_w> esperados;
        for (const std::string& trozo : fila.trozos) {
            esperados.push_back(w(trozo));
        }
        EXPECT_EQ(trozos(con_terminadores(fila.texto)), esperados) << fila.texto;
        EXPECT_EQ(modelos::trozos_de_multicadena(con_terminadores(fila.texto)), esperados) << fila.texto;
    }
}

TEST(multicadena, hace_lo_que_el_modelo_con_todo_texto_corto) {
    constexpr wchar_t alfabeto[] = {L'\0', L'a', L'\u00F1'};
    pagina_ultima pagina;
    for (std::size_t longitud = 0; longitud <= 9; ++longitud) {
        std::size_t cuantos = 1;
        for (std::size_t i = 0; i < longitud; ++i) {
            cuantos *= std::size(alfabeto);
        }
        for (std::size_t n = 0; n < cuantos; ++n) {
            texto_w texto;
            for (std::size_t resto = n; texto.size() < longitud; resto /= std::size(alfabeto)) {
                texto.push_back(alfabeto[resto % std::size(alfabeto)]);
            }
            ASSERT_EQ(trozos(texto), modelos::trozos_de_multicadena(texto)) << longitud << ", " << n;
            ASSERT_EQ(trozos(pagina.pon(vista_w(texto))), trozos(texto)) << longitud << ", " << n;
            texto_a bytes;
            for (const wchar_t c : texto) {
                bytes.push_back(static_cast<char>(c));
            }
            std::vector<texto_a> dados;
            i_para_cada_trozo(vista_a(bytes), [&](vista_a trozo) { dados.emplace_back(trozo); });
            ASSERT_EQ(dados, modelos::trozos_de_multicadena(bytes)) << longitud << ", " << n << ", 8-bit";
        }
    }
}

TEST(multicadena, un_texto_acaba_en_su_terminador_o_donde_acaba) {
    EXPECT_EQ(i_hasta_terminador(vista_w()), vista_w());
    EXPECT_EQ(i_hasta_terminador(vista_w(L"ab", 3)), vista_w(L"ab"));
    EXPECT_EQ(i_hasta_terminador(vista_w(L"ab\0c", 4)), vista_w(L"ab"));
    EXPECT_EQ(i_hasta_terminador(vista_w(L"abcd", 3)), vista_w(L"abc"));
    EXPECT_EQ(i_hasta_terminador(vista_w(L"\0ab", 3)), vista_w());
    EXPECT_EQ(i_hasta_terminador(vista_a("\xE9\xFF\0x", 4)), vista_a("\xE9\xFF"));
}
