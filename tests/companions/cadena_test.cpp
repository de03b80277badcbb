// Owned strings, joining and formatting.
#include "companions/cadena.hpp"

#include <climits>

#include "apoyo/pagina_ultima.hpp"
#include "companions/lumospy.h"
#include "companions/sabores.hpp"

using namespace apoyo;
using namespace interno;

namespace {

template <class C>
cadena<C> de(std::string_view utf8) {
    const auto texto = txt<C>(utf8);
    return cadena<C>(vista<C>(texto));
}

}  // namespace

TEST(cadena, es_duena_de_su_bloque) {
    en_ambos_sabores([]<class C>() {
        const unsigned long long antes = lumospy_bloques_vivos();
        {
            const cadena<C> nula;
            EXPECT_TRUE(nula.es_nula());
            EXPECT_TRUE(nula.empty());
            EXPECT_EQ(nula.c_str(), nullptr);
            EXPECT_EQ(nula.ver().data(), nullptr);
            EXPECT_EQ(lumospy_bloques_vivos(), antes);

            const cadena<C> vacia{vista<C>()};
            EXPECT_FALSE(vacia.es_nula());
            EXPECT_TRUE(vacia.empty());
            EXPECT_EQ(lee(vacia.c_str()), "");

            const cadena<C> texto = de<C>("añb");
            EXPECT_FALSE(texto.empty());
            EXPECT_EQ(texto.size(), txt<C>("añb").size());
            EXPECT_EQ(lee(texto.c_str()), "añb");
            EXPECT_EQ(lumospy_bloques_vivos(), antes + 2);
        }
        EXPECT_EQ(lumospy_bloques_vivos(), antes);
    });
}

TEST(cadena, se_mueve_y_nunca_se_copia) {
    static_assert(!std::is_copy_constructible_v<cadena_w> && !std::is_copy_assignable_v<cadena_a>);
    en_ambos_sabores([]<class C>() {
        const unsigned long long antes = lumospy_bloques_vivos();
        cadena<C> a = de<C>("uno");
        const C* bloque = a.c_str();
        cadena<C> b = std::move(a);
        EXPECT_TRUE(a.es_nula());  // NOLINT: what is left behind is promised
        EXPECT_EQ(a.size(), 0u);
        EXPECT_EQ(b.c_str(), bloque);
        cadena<C> c = de<C>("dos");
        c = std::move(b);
        EXPECT_EQ(c.c_str(), bloque);
        EXPECT_EQ(c.size(), 3u);
        EXPECT_TRUE(b.es_nula());  // NOLINT: what is left behind is promised
        EXPECT_EQ(b.size(), 0u);
        EXPECT_EQ(lumospy_bloques_vivos(), antes + 1);  // "dos" is gone
        cadena<C>& misma = c;
        c = std::move(misma);
        EXPECT_EQ(lee(c.c_str()), "uno");
        c.vacia();
        EXPECT_TRUE(c.es_nula());
        EXPECT_EQ(lumospy_bloques_vivos(), antes);
    });
}

TEST(cadena, suelta_y_adopta_pasan_el_mismo_bloque) {
    en_ambos_sabores([]<class C>() {
        cadena<C> a = de<C>("ñu");
        C* suelto = a.suelta();
        EXPECT_TRUE(a.es_nula());
        EXPECT_EQ(a.size(), 0u);
        const cadena<C> b = cadena<C>::adopta(suelto);
        EXPECT_EQ(b.c_str(), suelto);
        EXPECT_EQ(b.size(), txt<C>("ñu").size());
        EXPECT_TRUE(cadena<C>::adopta(nullptr).es_nula());
        EXPECT_EQ(toma(de<C>("fuera").suelta()), "fuera");  // freed as a host frees it
    });
}

TEST(cadena, con_sitio_termina_y_acorta_solo_acorta) {
    en_ambos_sabores([]<class C>() {
        cadena<C> a = cadena<C>::con_sitio(4);
        EXPECT_EQ(a.c_str()[4], C(0));
        for (std::size_t i = 0; i < 4; ++i) {
            a.datos()[i] = static_cast<C>('a' + static_cast<int>(i));
        }
        EXPECT_EQ(lee(a.c_str()), "abcd");
        a.acorta(9);
        EXPECT_EQ(a.size(), 4u);
        a.acorta(2);
        EXPECT_EQ(lee(a.c_str()), "ab");
        EXPECT_EQ(a.size(), 2u);
        a.acorta(0);
        EXPECT_TRUE(a.empty());
        EXPECT_FALSE(a.es_nula());
        EXPECT_EQ(cadena<C>::con_sitio(0).c_str()[0], C(0));
        cadena<C> nula;
        nula.acorta(0);
        EXPECT_TRUE(nula.es_nula());
    });
}

TEST(cadena, pide_justo_lo_que_ocupa) {
    static std::vector<std::size_t> pedidos;
    static void* (*de_antes)(std::size_t) = nullptr;
    de_antes = memoria.reserva;
    const sustituye<decltype(memoria.reserva)> apunta(memoria.reserva, [](std::size_t bytes) {
        pedidos.push_back(bytes);
        return de_antes(bytes);
    });
    en_ambos_sabores([]<class C>() {
        pedidos.clear();
        const cadena<C> a(LITERAL(C, "tres"));
        const cadena<C> b = concatena<C>({LITERAL(C, "a"), LITERAL(C, "bc")});
        C* copia = nullptr;
        {
            entrega_de_copias entrega;
            entrega.copia(&copia, LITERAL(C, "x"));
            entrega.copia<C>(nullptr, LITERAL(C, "nobody wants it"));
        }
        EXPECT_EQ(pedidos, (std::vector<std::size_t>{5 * sizeof(C), 4 * sizeof(C), 2 * sizeof(C)}));
        EXPECT_EQ(toma(copia), "x");
    });
}

TEST(cadena, una_vista_con_ceros_se_copia_entera) {
    en_ambos_sabores([]<class C>() {
        const C datos[] = {C('a'), C(0), C('b')};
        const cadena<C> a(vista<C>(datos, 3));
        EXPECT_EQ(a.size(), 3u);
        EXPECT_EQ(a.c_str()[2], C('b'));
        EXPECT_EQ(a.c_str()[3], C(0));
    });
}

TEST(cadena, concatena_pone_los_trozos_en_su_orden) {
    en_ambos_sabores([]<class C>() {
        const auto enye = txt<C>("ñ");
        const unsigned long long antes = lumospy_bloques_vivos();
        const cadena<C> todo =
            concatena<C>({LITERAL(C, "C:"), vista<C>(), enye, LITERAL(C, ""), LITERAL(C, "\\x")});
        EXPECT_EQ(lumospy_bloques_vivos(), antes + 1);
        EXPECT_EQ(lee(todo.c_str()), "C:ñ\\x");
        EXPECT_EQ(todo.size(), 4u + enye.size());
        const cadena<C> nada = concatena<C>({});
        EXPECT_FALSE(nada.es_nula());
        EXPECT_TRUE(nada.empty());
    });
}

TEST(cadena, formatea_por_filas) {
    struct fila {
        const char* formato;
        std::vector<const char*> argumentos;
        const char* resultado;
    };
    const fila filas[] = {
        {.formato = "", .argumentos = {}, .resultado = ""},
        {.formato = "sin marcas", .argumentos = {"x"}, .resultado = "sin marcas"},
        {.formato = "'%s'", .argumentos = {"ñandú"}, .resultado = "'ñandú'"},
        {.formato = "%s", .argumentos = {""}, .resultado = ""},
        {.formato = "%s%s", .argumentos = {"a", "b"}, .resultado = "ab"},
        {.formato = "%s-%s", .argumentos = {"solo"}, .resultado = "solo-%s"},    // one argument too few
        {.formato = "%s", .argumentos = {"%s %d %%"}, .resultado = "%s %d %%"},  // an argument is no format
        {.formato = "100%", .argumentos = {"x"}, .resultado = "100%"},
        {.formato = "100%%", .argumentos = {"x"}, .resultado = "100%"},
        {.formato = "%%s", .argumentos = {"x"}, .resultado = "%s"},
        {.formato = "%%%s", .argumentos = {"x"}, .resultado = "%x"},
        {.formato = "%x %s", .argumentos = {"y"}, .resultado = "%x y"},
        {.formato = "%l", .argumentos = {"x"}, .resultado = "%l"},
        {.formato = "%ls", .argumentos = {"x"}, .resultado = "%ls"},
        {.formato = "%lx%ld", .argumentos = {"7"}, .resultado = "%lx7"},
        {.formato = "%d %u %ld %lu", .argumentos = {"1", "2", "3", "4"}, .resultado = "1 2 3 4"},
    };
    en_ambos_sabores([&]<class C>() {
        for (const fila& f : filas) {
            std::vector<std::basic_string<C, rasgos<C>>> textos;
            for (const char* argumento_utf8 : f.argumentos) {
                textos.push_back(txt<C>(argumento_utf8));
            }
            std::vector<argumento<C>> argumentos(textos.begin(), textos.end());
            const auto formato = txt<C>(f.formato);
            const cadena<C> resultado =
                i_formatea<C>(formato, argumentos.data(), argumentos.size(), lugar::aqui());
            EXPECT_EQ(lee(resultado.c_str()), f.resultado) << f.formato;
            EXPECT_EQ(resultado.size(), txt<C>(f.resultado).size()) << f.formato;
        }
    });
}

// A format ends where its view does, whatever stands behind; behind the last page that there is nothing does.
TEST(cadena, un_marcador_que_sigue_tras_el_final_no_lo_es) {
    en_ambos_sabores([]<class C>() {
        pagina_ultima pagina;
        const auto x = txt<C>("x");
        const argumento<C> argumentos[] = {argumento<C>(vista<C>(x))};
        for (const char* entero : {"100%d", "100%s", "100%%", "100%ld", "%ld", "%d", "%%"}) {
            const auto texto = txt<C>(entero);
            for (std::size_t num = 0; num < texto.size(); ++num) {
                const vista<C> formato = vista<C>(texto).substr(0, num);
                const cadena<C> resultado = i_formatea<C>(formato, argumentos, 1, lugar::aqui());
                EXPECT_EQ(resultado.ver(), formato) << entero << " " << num;
                EXPECT_EQ(i_formatea<C>(pagina.pon(formato), argumentos, 1, lugar::aqui()).ver(), formato);
            }
        }
    });
}

TEST(cadena, formatea_numeros_hasta_sus_limites) {
    EXPECT_EQ(u8(copiaforu_nousar_formatea(L"%d %d %ld", {0, -1, 10240L}).c_str()), "0 -1 10240");
    EXPECT_EQ(u8(copiaforu_nousar_formatea(L"%ld %lu", {LLONG_MIN, ULLONG_MAX}).c_str()),
              "-9223372036854775808 18446744073709551615");
    EXPECT_EQ(de_cp1252(nousar_formatea("%d %u", {INT_MIN, UINT_MAX}).c_str()), "-2147483648 4294967295");
    EXPECT_EQ(u8(copiaforu_nousar_formatea(L"%d", {static_cast<short>(-7)}).c_str()), "-7");
}

TEST(cadena, un_argumento_null_no_pone_nada) {
    const wchar_t* nulo = nullptr;
    EXPECT_EQ(u8(copiaforu_nousar_formatea(L"<%s>", {nulo}).c_str()), "<>");
    EXPECT_EQ(u8(copiaforu_nousar_formatea(L"<%s>", {cadena_w()}).c_str()), "<>");
    EXPECT_EQ(u8(copiaforu_nousar_formatea(L"<%s>", {cadena_w(vista_w(L"x"))}).c_str()), "<x>");
}
