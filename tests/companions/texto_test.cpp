// Text views: rows in both flavours, and slow, obvious models over small alphabets.
#include "companions/texto.hpp"

#include <algorithm>

#include "apoyo/pagina_ultima.hpp"
#include "apoyo/paginas.hpp"
#include "companions/sabores.hpp"

using namespace apoyo;
using namespace interno;

namespace {

int signo(int valor) {
    return valor < 0 ? -1 : valor > 0 ? 1 : 0;
}

// A-Z to a-z in a list written out, everything else as it is.
template <class C>
std::vector<unsigned> plegado(vista<C> texto) {
    const std::string altas = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    const std::string bajas = "abcdefghijklmnopqrstuvwxyz";
    std::vector<unsigned> resultado;
    for (const C c : texto) {
        unsigned valor = sizeof(C) == 1 ? static_cast<unsigned char>(c) : static_cast<unsigned short>(c);
        for (std::size_t i = 0; i < altas.size(); ++i) {
            if (valor == static_cast<unsigned>(altas[i])) {
                valor = static_cast<unsigned>(bajas[i]);
            }
        }
        resultado.push_back(valor);
    }
    return resultado;
}

template <class C>
std::vector<std::string> tokens_de(vista<C> texto, vista<C> separadores) {
    std::vector<std::string> tokens;
    std::basic_string<C, rasgos<C>> actual;
    const auto cierra = [&] {
        if (!actual.empty()) {
            tokens.push_back(lee(vista<C>(actual)));
        }
        actual.clear();
    };
    for (const C c : texto) {
        if (separadores.find(c) != vista<C>::npos) {
            cierra();
        } else {
            actual.push_back(c);
        }
    }
    cierra();
    return tokens;
}

}  // namespace

TEST(texto, las_unidades_se_ordenan_sin_signo) {
    EXPECT_LT(vista_w(L"\x7FFF").compare(L"\x8000"), 0);
    EXPECT_LT(vista_w(L"\xD800").compare(L"\xFFFF"), 0);
    EXPECT_LT(vista_a("\x7F").compare("\x80"), 0);
    EXPECT_LT(vista_a("z").compare("\xFF"), 0);
    EXPECT_LT(vista_w(L"ab").compare(L"abc"), 0);  // a shorter beginning comes first
    EXPECT_EQ(vista_w(L"ab").compare(L"ab"), 0);
    EXPECT_TRUE(rasgos_utf16::lt(L'\x7FFF', L'\x8000'));
}

TEST(texto, los_rasgos_buscan_mueven_y_rellenan) {
    wchar_t datos[6] = {L'a', L'b', L'c', L'd', L'e', 0};
    EXPECT_EQ(rasgos_utf16::length(datos), 5u);
    EXPECT_EQ(rasgos_utf16::find(datos, 5, L'c'), datos + 2);
    EXPECT_EQ(rasgos_utf16::find(datos, 2, L'c'), nullptr);
    rasgos_utf16::move(datos + 1, datos, 4);  // overlapping
    EXPECT_EQ(u8(datos), "aabcd");
    rasgos_utf16::move(datos + 4, datos + 2, 1);
    EXPECT_EQ(u8(datos), "aabcb");
    rasgos_utf16::assign(datos, 2, L'\x00E9');
    EXPECT_EQ(u8(datos), "éébcb");
    EXPECT_EQ(rasgos_utf16::move(nullptr, nullptr, 0), nullptr);
    EXPECT_EQ(rasgos_utf16::copy(nullptr, nullptr, 0), nullptr);
    EXPECT_NE(rasgos_utf16::to_int_type(L'\xFFFF'), rasgos_utf16::eof());
    EXPECT_NE(rasgos_utf16::not_eof(rasgos_utf16::eof()), rasgos_utf16::eof());
    EXPECT_EQ(rasgos_utf16::not_eof(5), 5u);
    EXPECT_TRUE(rasgos_utf16::eq_int_type(5, 5));
    EXPECT_FALSE(rasgos_utf16::eq_int_type(5, rasgos_utf16::eof()));
}

TEST(texto, una_vista_de_null_esta_vacia_y_lo_recuerda) {
    EXPECT_EQ(a_vista<wchar_t>(nullptr).data(), nullptr);
    EXPECT_EQ(a_vista<char>(nullptr).size(), 0u);
    EXPECT_NE(a_vista(L"").data(), nullptr);
    EXPECT_EQ(a_vista("abc").size(), 3u);
    EXPECT_EQ(u8(LITERAL(wchar_t, "a\\")), "a\\");
    EXPECT_EQ(de_cp1252(LITERAL(char, "a\\")), "a\\");
}

TEST(texto, letras_y_separadores_son_los_de_ascii_y_ninguno_mas) {
    const std::string letras = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    for (unsigned c = 0; c <= 0xFFFF; ++c) {
        const bool letra = c < 0x80 && c != 0 && letras.find(static_cast<char>(c)) != std::string::npos;
        const bool separador = c == 0x5C || c == 0x2F;
        EXPECT_EQ(lmstdc_isalpha(static_cast<wchar_t>(c)), letra) << c;
        EXPECT_EQ(es_separador(static_cast<wchar_t>(c)), separador) << c;
        if (c <= 0xFF) {
            EXPECT_EQ(lmstdc_isalpha(static_cast<char>(c)), letra) << c;
            EXPECT_EQ(es_separador(static_cast<char>(c)), separador) << c;
        }
    }
}

TEST(texto, principios_y_finales) {
    struct fila {
        const char* texto;
        const char* parte;
        bool empieza;
        bool acaba;
        bool empieza_sin_caja;
    };
    const fila filas[] = {
        {.texto = "", .parte = "", .empieza = true, .acaba = true, .empieza_sin_caja = true},
        {.texto = "abc", .parte = "", .empieza = true, .acaba = true, .empieza_sin_caja = true},
        {.texto = "", .parte = "a", .empieza = false, .acaba = false, .empieza_sin_caja = false},
        {.texto = "abab", .parte = "ab", .empieza = true, .acaba = true, .empieza_sin_caja = true},
        {.texto = "abc", .parte = "bc", .empieza = false, .acaba = true, .empieza_sin_caja = false},
        {.texto = "abc", .parte = "abcd", .empieza = false, .acaba = false, .empieza_sin_caja = false},
        {.texto = "ABc", .parte = "aB", .empieza = false, .acaba = false, .empieza_sin_caja = true},
        {.texto = "É1", .parte = "é", .empieza = false, .acaba = false, .empieza_sin_caja = false},
        {.texto = "ñandú", .parte = "ÑA", .empieza = false, .acaba = false, .empieza_sin_caja = false},
        {.texto = "ñAndú", .parte = "ña", .empieza = false, .acaba = false, .empieza_sin_caja = true},
    };
    en_ambos_sabores([&]<class C>() {
        for (const fila& f : filas) {
            const auto texto = txt<C>(f.texto);
            const auto parte = txt<C>(f.parte);
            const vista<C> t = texto;
            EXPECT_EQ(empieza_por(t, parte), f.empieza) << f.texto << " / " << f.parte;
            EXPECT_EQ(acaba_en(t, parte), f.acaba) << f.texto << " / " << f.parte;
            EXPECT_EQ(empieza_por_sin_caja(t, parte), f.empieza_sin_caja) << f.texto << " / " << f.parte;
        }
        EXPECT_TRUE(acaba_en_separador(LITERAL(C, "a\\")));
        EXPECT_TRUE(acaba_en_separador(LITERAL(C, "/")));
        EXPECT_FALSE(acaba_en_separador(LITERAL(C, "\\a")));
        EXPECT_FALSE(acaba_en_separador(vista<C>()));
    });
}

TEST(texto, solo_se_recorta_el_espacio) {
    struct fila {
        const char* texto;
        const char* sin_derecha;
        const char* sin_izquierda;
        bool hay;
    };
    const fila filas[] = {
        {.texto = "", .sin_derecha = "", .sin_izquierda = "", .hay = false},
        {.texto = "   ", .sin_derecha = "", .sin_izquierda = "", .hay = false},
        {.texto = "  a b  ", .sin_derecha = "  a b", .sin_izquierda = "a b  ", .hay = true},
        {.texto = "\ta\t", .sin_derecha = "\ta\t", .sin_izquierda = "\ta\t", .hay = true},
        {.texto = " \t ", .sin_derecha = " \t", .sin_izquierda = "\t ", .hay = true},
        {.texto = "\u00A0",
         .sin_derecha = "\u00A0",
         .sin_izquierda = "\u00A0",
         .hay = true},  // no-break space
        {.texto = "a\n ", .sin_derecha = "a\n", .sin_izquierda = "a\n ", .hay = true},
    };
    en_ambos_sabores([&]<class C>() {
        for (const fila& f : filas) {
            const auto texto = txt<C>(f.texto);
            const vista<C> t = texto;
            EXPECT_EQ(lee(recorta_derecha(t)), f.sin_derecha) << "'" << f.texto << "'";
            EXPECT_EQ(lee(recorta_izquierda(t)), f.sin_izquierda) << "'" << f.texto << "'";
            EXPECT_EQ(hay_texto(t), f.hay) << "'" << f.texto << "'";
        }
    });
}

TEST(texto, sin_caja_pliega_de_la_A_a_la_Z_y_nada_mas) {
    en_ambos_sabores([]<class C>() {
        const unsigned ultimo = sizeof(C) == 1 ? 0xFF : 0xFFFF;
        for (unsigned c = 0; c <= ultimo; ++c) {
            const C unidad = static_cast<C>(c);
            const C esperada = static_cast<C>(c >= 'A' && c <= 'Z' ? c + 32 : c);
            EXPECT_EQ(minuscula_ascii(unidad), esperada) << c;
        }
    });
}

TEST(texto, el_orden_sin_caja_es_el_del_modelo) {
    en_ambos_sabores([]<class C>() {
        std::vector<std::basic_string<C, rasgos<C>>> textos;
        // Both cases of a letter, its neighbours between the cases, and accents that must not fold.
        para_cada_texto<C>("aAz[_éÉ", 2, [&](vista<C> texto) { textos.emplace_back(texto); });
        for (const auto& a : textos) {
            for (const auto& b : textos) {
                const vista<C> va = a;
                const auto pa = plegado<C>(va);
                const auto pb = plegado<C>(vista<C>(b));
                const int esperado = pa == pb ? 0 : (pa < pb ? -1 : 1);
                ASSERT_EQ(signo(compara_sin_caja(va, b)), esperado) << lee(va) << " / " << lee(vista<C>(b));
                ASSERT_EQ(iguales_sin_caja(va, b), esperado == 0) << lee(va) << " / " << lee(vista<C>(b));
                const bool empieza = pa.size() >= pb.size() && std::equal(pb.begin(), pb.end(), pa.begin());
                ASSERT_EQ(empieza_por_sin_caja(va, b), empieza) << lee(va) << " / " << lee(vista<C>(b));
            }
        }
    });
}

TEST(texto, los_tokens_son_los_del_modelo) {
    en_ambos_sabores([]<class C>() {
        const vista<C> separadores = LITERAL(C, ",;");
        para_cada_texto<C>("ab,;", 6, [&](vista<C> texto) {
            const std::vector<std::string> tokens = tokens_de<C>(texto, separadores);
            for (std::size_t n = 1; n <= tokens.size(); ++n) {
                ASSERT_EQ(lee(extrae_token(texto, n, separadores)), tokens[n - 1]) << lee(texto) << " " << n;
            }
            ASSERT_EQ(extrae_token(texto, tokens.size() + 1, separadores).size(), 0u) << lee(texto);
        });
        EXPECT_EQ(extrae_token(LITERAL(C, "a,b"), 0, separadores).size(), 0u);  // tokens count from 1
        EXPECT_EQ(lee(extrae_token(LITERAL(C, "a,b"), 1, vista<C>())), "a,b");
    });
}

// A view ends before its memory does.
TEST(texto, lo_que_sigue_a_una_vista_no_cuenta) {
    en_ambos_sabores([]<class C>() {
        const auto a = txt<C>("abc");
        const auto b = txt<C>("abx");
        const vista<C> corta = vista<C>(b).substr(0, 2);
        EXPECT_GT(compara_sin_caja(vista<C>(a), corta), 0);
        EXPECT_LT(compara_sin_caja(corta, vista<C>(a)), 0);
        EXPECT_EQ(compara_sin_caja(vista<C>(a).substr(0, 2), corta), 0);
        EXPECT_FALSE(empieza_por(corta, vista<C>(b)));
        EXPECT_FALSE(empieza_por_sin_caja(corta, vista<C>(b)));
        EXPECT_FALSE(acaba_en(corta, vista<C>(b)));
        const auto tokens = txt<C>(";a;;b;");
        for (std::size_t num = 0; num < tokens.size(); ++num) {
            const vista<C> parte = vista<C>(tokens).substr(0, num);
            const decltype(txt<C>("")) copia(parte);
            for (std::size_t numero = 1; numero < 4; ++numero) {
                EXPECT_EQ(extrae_token(parte, numero, LITERAL(C, ";")),
                          extrae_token(vista<C>(copia), numero, LITERAL(C, ";")))
                    << num << " " << numero;
            }
        }
    });
    const en_pagina p(932);
    EXPECT_EQ(extrae_token(vista_a("\x83|x|y"), 1, vista_a("|")), vista_a("\x83|x"));
    EXPECT_EQ(extrae_token(vista_a("\x83|x|y"), 2, vista_a("|")), vista_a("y"));
    EXPECT_FALSE(acaba_en(vista_a("\x83\\"), vista_a("\\")));
    EXPECT_TRUE(acaba_en(vista_a("x\\"), vista_a("\\")));
    pagina_ultima pagina;
    EXPECT_TRUE(empieza_caracter(pagina.pon_al_principio(vista_a("\\")), 0));  // before it there is nothing
}

TEST(texto, punto_y_dos_puntos_no_son_nombres) {
    for (const wchar_t* nombre : {L".", L".."}) {
        EXPECT_TRUE(i_es_punto_o_dos(nombre));
    }
    for (const wchar_t* nombre : {L"", L"...", L"a", L". ", L".a"}) {
        EXPECT_FALSE(i_es_punto_o_dos(nombre)) << u8(nombre);
    }
}

// Wherever a text begins within a block of sixteen bytes, and whatever stands before it and behind.
TEST(texto, longitudes_en_todas_las_posiciones) {
    for (std::size_t delante = 0; delante < 33; ++delante) {
        for (std::size_t longitud = 0; longitud < 100; ++longitud) {
            std::vector<wchar_t> unidades(delante + longitud + 20, L'\0');
            std::vector<char> bytes(delante + longitud + 20, '\0');
            for (std::size_t i = 0; i < longitud; ++i) {
                // Units with a byte of zeros, either of them.
                unidades[delante + i] = i % 2 == 0 ? wchar_t(0x0100) : wchar_t(0x00FF);
                bytes[delante + i] = static_cast<char>(i % 255 + 1);
            }
            unidades[delante + longitud + 1] = L'x';
            ASSERT_EQ(i_longitud(unidades.data() + delante), longitud);
            ASSERT_EQ(i_longitud(bytes.data() + delante), longitud);
            ASSERT_EQ(a_vista<wchar_t>(unidades.data() + delante).size(), longitud);
        }
    }
}

// Behind the page in which a text ends there may be none.
TEST(texto, longitudes_ante_el_fin_de_la_memoria) {
    en_ambos_sabores([]<class C>() {
        pagina_ultima pagina;
        for (std::size_t detras = 0; detras < 3; ++detras) {
            for (std::size_t longitud = 0; longitud < 300; ++longitud) {
                std::vector<C> unidades(longitud + 1, C('x'));
                unidades.back() = C(0);
                const vista<C> texto = pagina.pon(vista<C>(unidades.data(), unidades.size()), detras);
                ASSERT_EQ(i_longitud(texto.data()), longitud) << detras;
            }
        }
    });
}

// What is copied, and not a byte more on either side.
TEST(texto, copias_de_todos_los_largos) {
    for (std::size_t num = 0; num < 140; ++num) {
        std::vector<char> origen(num);
        std::vector<char> destino(num + 2, '#');
        std::vector<wchar_t> origen_w(num);
        std::vector<wchar_t> destino_w(num + 2, L'#');
        for (std::size_t i = 0; i < num; ++i) {
            origen[i] = static_cast<char>(i + 1);
            origen_w[i] = static_cast<wchar_t>(0x100 * i + 7);
        }
        copia_unidades(destino.data() + 1, origen.data(), num);
        copia_unidades(destino_w.data() + 1, origen_w.data(), num);
        ASSERT_TRUE(std::equal(origen.begin(), origen.end(), destino.begin() + 1)) << num;
        ASSERT_TRUE(std::equal(origen_w.begin(), origen_w.end(), destino_w.begin() + 1)) << num;
        ASSERT_EQ(destino.front(), '#');
        ASSERT_EQ(destino.back(), '#');
        ASSERT_EQ(destino_w.front(), L'#');
        ASSERT_EQ(destino_w.back(), L'#');
    }
}
