// Valid names out of any text, extensions and their dollar form: row by row, and against naive models over every
// short text and many long ones.
#include "paths/nombres_validos.hpp"

#include "apoyo/apoyo.hpp"
#include "apoyo/paginas.hpp"
#include "cdir.h"
#include "companions/lumospy.h"
#include "paths/modelos.hpp"

using namespace apoyo;
using modelos::convertido;
using modelos::reparado;

namespace {

constexpr wchar_t marca_w = L'\x2603';  // what a buffer holds before the call
constexpr char marca_a = '\x7E';

// ---- converters: exactly so many characters

// The whole buffer after the call: the text, its terminator, and what must not have been touched.
texto_w convierte_w(const texto_w& nombre, unsigned short longitud) {
    texto_w bufer(longitud + 2u, marca_w);
    EXPECT_EQ(cdir_convierte_a_nombre_base_valido_UNICODE(nombre.c_str(), bufer.data(), longitud), longitud);
    return bufer;
}
texto_a convierte_a(const texto_a& nombre, unsigned short longitud) {
    texto_a bufer(longitud + 2u, marca_a);
    EXPECT_EQ(cdir_convierte_a_nombre_base_valido(nombre.c_str(), bufer.data(), longitud), longitud);
    return bufer;
}

TEST(nombres_validos, convierte_exactamente_tantos_caracteres) {
    struct fila {
        const char* nombre;
        unsigned short longitud;
        const char* resultado;
    };
    const std::vector<fila> filas = {
        {.nombre = "a|b?", .longitud = 6, .resultado = "a_b_  "},
        {.nombre = "a|b?", .longitud = 4, .resultado = "a_b_"},
        {.nombre = "a|b?", .longitud = 2, .resultado = "a_"},
        {.nombre = "a|b?", .longitud = 0, .resultado = ""},
        {.nombre = "", .longitud = 3, .resultado = "   "},
        {.nombre = "", .longitud = 0, .resultado = ""},
        {.nombre = "\\/:*\"?<>|", .longitud = 9, .resultado = "_________"},
        {.nombre = "\x01\x1F\t\n\x7F ", .longitud = 6, .resultado = "____\x7F "},
        {.nombre = " a. ", .longitud = 5, .resultado = " a.  "},
        {.nombre = "con", .longitud = 3, .resultado = "con"},  // reserved names stay
        {.nombre = "Año€:ñ", .longitud = 7, .resultado = "Año€_ñ "},
    };
    const en_pagina p(1252);
    for (const fila& f : filas) {
        SCOPED_TRACE(testing::Message() << "[" << f.nombre << "] " << f.longitud);
        const texto_w resultado_w = w(f.resultado);
        EXPECT_EQ(convierte_w(w(f.nombre), f.longitud), resultado_w + L'\0' + marca_w);
        EXPECT_EQ(convierte_a(cp1252(f.nombre), f.longitud), cp1252(f.resultado) + '\0' + marca_a);
    }
}

// In 8 bits the rule is on bytes, whatever characters they are part of.
TEST(nombres_validos, convierte_bytes_en_toda_pagina) {
    for (const unsigned pagina : paginas) {
        const en_pagina p(pagina);
        EXPECT_EQ(convierte_a("\x95\\\x83|:\xC3\xB1", 8), texto_a("\x95_\x83__\xC3\xB1 ") + '\0' + marca_a);
    }
}

TEST(nombres_validos, convierte_en_su_sitio) {
    wchar_t nombre_w[] = L"a:b\0zz";
    EXPECT_EQ(cdir_convierte_a_nombre_base_valido_UNICODE(nombre_w, nombre_w, 5), 5);
    EXPECT_EQ(u8(nombre_w), "a_b  ");
    char nombre_a[] = "a:b\0zz";
    EXPECT_EQ(cdir_convierte_a_nombre_base_valido(nombre_a, nombre_a, 5), 5);
    EXPECT_STREQ(nombre_a, "a_b  ");
}

TEST(nombres_validos, convertir_null_se_denuncia_y_no_escribe) {
    wchar_t bufer_w[] = {marca_w, marca_w};
    char bufer_a[] = {marca_a, marca_a};
    EXPECT_EQ(cdir_convierte_a_nombre_base_valido_UNICODE(nullptr, bufer_w, 1), 0);
    EXPECT_EQ(cdir_convierte_a_nombre_base_valido(nullptr, bufer_a, 1), 0);
    ESPERA_INFORMES("(nombre) != NULL", "(nombre) != NULL");
    EXPECT_EQ(cdir_convierte_a_nombre_base_valido_UNICODE(L"a", nullptr, 1), 0);
    EXPECT_EQ(cdir_convierte_a_nombre_base_valido("a", nullptr, 1), 0);
    ESPERA_INFORMES("(result) != NULL", "(result) != NULL");
    EXPECT_EQ(cdir_convierte_a_nombre_base_valido_UNICODE(nullptr, nullptr, 1), 0);
    EXPECT_EQ(cdir_convierte_a_nombre_base_valido(nullptr, nullptr, 1), 0);
    const std::vector<informe> informes = toma_informes();
    ASSERT_EQ(informes.size(), 4u);
    for (std::size_t i = 0; i < informes.size(); ++i) {
        EXPECT_EQ(informes[i].expresion, i % 2 == 0 ? "(nombre) != NULL" : "(result) != NULL");
        EXPECT_EQ(informes[i].etiqueta, "lumodir (LUMODIR.DLL)");
    }
    EXPECT_EQ(bufer_w[0], marca_w);
    EXPECT_EQ(bufer_a[0], marca_a);
}

TEST(nombres_validos, convierte_toda_unidad_y_todo_byte) {
    for (unsigned c = 1; c <= 0xFFFF; ++c) {
        const texto_w nombre(1, static_cast<wchar_t>(c));
        const wchar_t esperado = modelos::caracter_valido(c) ? static_cast<wchar_t>(c) : L'_';
        ASSERT_EQ(convierte_w(nombre, 1)[0], esperado) << c;
    }
    for (unsigned b = 1; b < 256; ++b) {
        const char byte = static_cast<char>(b);
        ASSERT_EQ(convierte_a(texto_a(1, byte), 1)[0], modelos::caracter_valido(b) ? byte : '_') << b;
    }
}

TEST(nombres_validos, convierte_textos_de_todo_tamanyo) {
    for (const std::size_t tamanyo : {0u, 1u, 32767u, 65535u, 100000u}) {
        const texto_w nombre_w(tamanyo, L'?');
        const texto_a nombre_a(tamanyo, '?');
        for (const unsigned short longitud : std::initializer_list<unsigned short>{0, 1, 32767, 65535}) {
            EXPECT_EQ(convierte_w(nombre_w, longitud), convertido(nombre_w, longitud) + L'\0' + marca_w);
            EXPECT_EQ(convierte_a(nombre_a, longitud), convertido(nombre_a, longitud) + '\0' + marca_a);
        }
    }
}

// ---- repair

std::string repara(const std::string& nombre) {
    return toma(cdir_dame_nombre_base_valido_UNICODE(w(nombre).c_str()));
}

TEST(nombres_validos, repara_caracteres_extremos_y_longitud) {
    struct fila {
        std::string nombre;
        std::string reparado;
    };
    const std::vector<fila> filas = {
        {.nombre = "  my:file. . ", .reparado = "my_file"},
        {.nombre = "", .reparado = ""},
        {.nombre = " . .. . ", .reparado = ""},
        {.nombre = "...", .reparado = ""},
        {.nombre = "   ", .reparado = ""},
        {.nombre = ".profile.", .reparado = ".profile"},
        {.nombre = ". a", .reparado = ". a"},
        {.nombre = "a b", .reparado = "a b"},
        {.nombre = "con", .reparado = "con"},
        {.nombre = "con.", .reparado = "con"},
        {.nombre = "\ta\t", .reparado = "_a_"},
        {.nombre = "?. ?", .reparado = "_. _"},
        {.nombre = "Ñandú/€*", .reparado = "Ñandú_€_"},
        {.nombre = "😀\xED\xA0\x80|", .reparado = "😀\xED\xA0\x80_"},
        {.nombre = std::string(300, 'x'), .reparado = std::string(255, 'x')},
        {.nombre = std::string(255, 'x'), .reparado = std::string(255, 'x')},
        {.nombre = "  " + std::string(255, 'x') + " .", .reparado = std::string(255, 'x')},
        // the cut comes last, and nothing is trimmed after it
        {.nombre = std::string(254, 'x') + ". y", .reparado = std::string(254, 'x') + "."},
        {.nombre = std::string(253, 'x') + " .y", .reparado = std::string(253, 'x') + " ."},
        // units beyond 65,535 are never seen
        {.nombre = std::string(65535, ' ') + "abc", .reparado = ""},
        {.nombre = std::string(65534, ' ') + "abc", .reparado = "a"},
    };
    for (const fila& f : filas) {
        SCOPED_TRACE("[" + f.nombre + "]");
        EXPECT_EQ(repara(f.nombre), f.reparado);
        EXPECT_EQ(u8(interno::vista_w(reparado(w(f.nombre)))), f.reparado) << "the model itself";
    }
}

TEST(nombres_validos, reparar_null_se_denuncia_y_da_vacio) {
    EXPECT_EQ(toma(cdir_dame_nombre_base_valido_UNICODE(nullptr)), "");
    ESPERA_INFORMES("(nombre) != NULL");
    EXPECT_EQ(toma(interno::i_nombre_base_reparado({}).suelta()), "");
}

void compara_reparacion(const std::string& texto) {
    SCOPED_TRACE("[" + texto + "]");
    const unsigned long long vivos = lumospy_bloques_vivos();
    const std::string resultado = repara(texto);
    EXPECT_EQ(resultado, u8(interno::vista_w(reparado(w(texto)))));
    const texto_w unidades = w(resultado);
    // What comes out is a valid name, unless it is empty or reserved; and repairing it changes nothing, unless the
    // cut left a point or a blank at its end.
    std::vector<wchar_t> bufer(unidades.c_str(), unidades.c_str() + unidades.size() + 1);
    EXPECT_EQ(cdir_nombre_base_valido_UNICODE(bufer.data()), modelos::nombre_valido(unidades));
    const bool cortado = unidades.size() == 255;
    if (!cortado) {
        EXPECT_EQ(repara(resultado), resultado);
        EXPECT_FALSE(resultado.ends_with('.') || resultado.ends_with(' ') || resultado.starts_with(' '));
    }
    EXPECT_EQ(lumospy_bloques_vivos(), vivos);
}

TEST(nombres_validos, repara_como_el_modelo_todo_texto_corto) {
    const std::size_t vistos = modelos::para_cada_texto(
        modelos::alfabeto, modelos::longitud_exhaustiva, [](const std::string& texto) {
            compara_reparacion(texto);
            const auto longitud = static_cast<unsigned short>(texto.size() / 2 + 2);
            EXPECT_EQ(convierte_a(texto, longitud), convertido(texto, longitud) + '\0' + marca_a);
            EXPECT_EQ(convierte_w(w(texto), longitud), convertido(w(texto), longitud) + L'\0' + marca_w);
        });
    EXPECT_EQ(vistos, modelos::cuantos_textos(modelos::alfabeto.size(), modelos::longitud_exhaustiva));
}

TEST(nombres_validos, repara_como_el_modelo_textos_al_azar_y_largos) {
    modelos::fabrica fabrica(4711);
    for (int i = 0; i < 5000 && !HasFailure(); ++i) {
        compara_reparacion(fabrica.texto());
    }
    for (const std::size_t longitud : {0u, 1u, 32767u, 65535u, 65536u, 100000u}) {
        for (const char* letra : {"a", " ", ".", "|", "ñ", "\xED\xA0\x80"}) {
            const std::string texto = modelos::repite(letra, longitud);
            compara_reparacion(texto);
            compara_reparacion(texto + "b");
        }
    }
}

// ---- extensions

TEST(nombres_validos, una_extension_vale_si_valen_sus_caracteres) {
    struct fila {
        std::string extension;
        bool valida;
    };
    const std::vector<fila> filas = {
        {.extension = "", .valida = true},
        {.extension = ".", .valida = true},
        {.extension = ".txt", .valida = true},
        {.extension = "txt", .valida = true},
        {.extension = ".t*t", .valida = false},
        {.extension = ".t?t", .valida = false},
        {.extension = ".a\\b", .valida = false},
        {.extension = ".a/b", .valida = false},
        {.extension = ".a:b", .valida = false},
        {.extension = ".\"", .valida = false},
        {.extension = "<", .valida = false},
        {.extension = ".a>", .valida = false},
        {.extension = "|a", .valida = false},
        {.extension = ".a\t", .valida = false},
        {.extension = ".a b ", .valida = true},
        {.extension = "   ", .valida = true},
        {.extension = "con", .valida = true},
        {.extension = ".nul.", .valida = true},
        {.extension = ".ñ€É", .valida = true},
        {.extension = "." + std::string(300, 'x'), .valida = true},
        {.extension = std::string(32767, 'x'), .valida = true},
        {.extension = std::string(100000, 'x'), .valida = true},
        {.extension = std::string(100000, 'x') + "?", .valida = false},
        {.extension = std::string(400, 'x') + "ñ?", .valida = false},
    };
    for (const fila& f : filas) {
        SCOPED_TRACE("[" + f.extension + "]");
        EXPECT_EQ(cdir_extension_valida_UNICODE(w(f.extension).c_str()), f.valida);
        EXPECT_EQ(cdir_extension_valida(cp1252(f.extension).c_str()), f.valida);
    }
    for (unsigned c = 1; c <= 0xFFFF; ++c) {
        const wchar_t extension[] = {L'.', static_cast<wchar_t>(c), 0};
        ASSERT_EQ(cdir_extension_valida_UNICODE(extension), modelos::caracter_valido(c)) << c;
    }
    for (unsigned b = 1; b < 256; ++b) {
        const char extension[] = {'.', static_cast<char>(b), 0};
        ASSERT_EQ(cdir_extension_valida(extension), modelos::caracter_valido(b)) << b;
    }
}

TEST(nombres_validos, una_extension_null_se_denuncia) {
    EXPECT_EQ(cdir_extension_valida_UNICODE(nullptr), 0);
    EXPECT_EQ(cdir_extension_valida(nullptr), 0);
    ESPERA_INFORMES("ext != NULL", "ext != NULL");
    EXPECT_EQ(toma(cdir_extension_con_dolar_UNICODE(nullptr)), "");
    ESPERA_INFORMES("(ext) != NULL");
}

struct dolar {
    std::string resultado;
    bool se_denuncia;
};
dolar con_dolar(const std::string& extension) {
    const texto_w recortada = modelos::recortado(w(extension));
    if (recortada.empty()) {
        return {".$", false};
    }
    texto_w resultado = recortada;
    if (recortada.size() >= 4) {
        resultado.pop_back();
    }
    return {u8(interno::vista_w(resultado + L"$")), recortada[0] != L'.'};
}

void compara_dolar(const std::string& extension) {
    SCOPED_TRACE("[" + extension + "]");
    const dolar esperado = con_dolar(extension);
    EXPECT_EQ(toma(cdir_extension_con_dolar_UNICODE(w(extension).c_str())), esperado.resultado);
    const std::vector<informe> informes = toma_informes();
    ASSERT_EQ(informes.size(), esperado.se_denuncia ? 1u : 0u);
    if (esperado.se_denuncia) {
        EXPECT_EQ(informes[0].expresion, "ext_sin_espacios[0] == L'.'");
        EXPECT_EQ(informes[0].detalle, modelos::recortado(extension));
        EXPECT_EQ(informes[0].etiqueta, "lumodir (LUMODIR.DLL)");
    }
}

TEST(nombres_validos, extension_con_dolar) {
    struct fila {
        const char* extension;
        const char* resultado;
        bool se_denuncia = false;
    };
    const std::vector<fila> filas = {
        {.extension = ".txt", .resultado = ".tx$"},
        {.extension = ".html", .resultado = ".htm$"},
        {.extension = ".c", .resultado = ".c$"},
        {.extension = ".cc", .resultado = ".cc$"},
        {.extension = ".", .resultado = ".$"},
        {.extension = "", .resultado = ".$"},
        {.extension = "   ", .resultado = ".$"},
        {.extension = ".txt   ", .resultado = ".tx$"},
        {.extension = ".c  ", .resultado = ".c$"},  // four characters only with its blanks
        {.extension = ".a b", .resultado = ".a $"},
        {.extension = ".tx$", .resultado = ".tx$"},
        {.extension = ".ñé", .resultado = ".ñé$"},
        {.extension = ".ñé€", .resultado = ".ñé$"},
        {.extension = "txt", .resultado = "txt$", .se_denuncia = true},
        {.extension = "html", .resultado = "htm$", .se_denuncia = true},
        {.extension = " .c", .resultado = " .c$", .se_denuncia = true},
    };
    for (const fila& f : filas) {
        SCOPED_TRACE(testing::Message() << "[" << f.extension << "]");
        EXPECT_EQ(con_dolar(f.extension).resultado, f.resultado) << "the model itself";
        EXPECT_EQ(con_dolar(f.extension).se_denuncia, f.se_denuncia) << "the model itself";
        compara_dolar(f.extension);
    }
}

TEST(nombres_validos, extension_con_dolar_como_el_modelo) {
    modelos::para_cada_texto(".a $|", modelos::longitud_exhaustiva, compara_dolar);
    modelos::fabrica fabrica(99);
    for (int i = 0; i < 2000 && !HasFailure(); ++i) {
        compara_dolar("." + fabrica.texto());
    }
    for (const std::size_t longitud : {32767u, 100000u}) {
        compara_dolar("." + std::string(longitud, 'x'));
        compara_dolar(std::string(longitud, ' '));
    }
}

}  // namespace
