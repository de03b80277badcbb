// File-name records: how they are built, checked, compared and ordered, row by row and against naive models
// over every short name.
#include "paths/nomsfich.hpp"

#include <algorithm>

#include "apoyo/apoyo.hpp"
#include "apoyo/paginas.hpp"
#include "modelos/nomsfich.hpp"
#include "paths/modelos.hpp"

using namespace apoyo;
using modelos::caracter_malo;
using modelos::partes;
using modelos::prohibidos;
using modelos::signo;
using modelos::sin_cadena;
using modelos::sin_nombre;
using modelos::textos_cortos;

namespace {

// The parts in UTF-8; the record is destroyed as a host does.
partes toma_partes(Nomsfich* registro) {
    const partes p = {de_cp1252(nomsfich_nombre_base_fichero(registro)),
                      de_cp1252(nomsfich_extension_fichero(registro))};
    nomsfich_destruye(&registro);
    EXPECT_EQ(registro, nullptr);
    return p;
}

Nomsfich* crea(const std::string& nombre) {
    return nomsfich_crea(cp1252(nombre).c_str());
}

std::vector<std::string> copias(std::size_t cuantas, const std::string& texto) {
    return std::vector<std::string>(cuantas, texto);
}

}  // namespace

TEST(nomsfich, corta_el_nombre_por_su_ultimo_punto) {
    struct caso {
        const char* nombre;
        partes esperado;
        std::vector<std::string> informes;
    };
    const caso casos[] = {
        {"Informe.Final.DOC", {"informe.final", "doc"}, {}},
        {"Leeme", {"leeme", ""}, {}},
        {"datos.", {"datos", ""}, {}},
        {"datos..", {"datos.", ""}, {}},
        {"A.TXT", {"a", "txt"}, {}},
        {"a b .T X  ", {"a b ", "t x"}, {}},  // trailing blanks go from the extension only
        {"Leeme  ", {"leeme  ", ""}, {}},
        {"a.  ", {"a", ""}, {}},
        {"..x", {".", "x"}, {}},
        {"ÁÉÑ€.ŽÜ", {"áéñ€", "žü"}, {}},  // by the code page, not by A to Z alone
        {".config", {"", "config"}, {sin_nombre}},
        {".", {"", ""}, {sin_nombre}},
        {"", {"", ""}, {sin_nombre}},
        {"a?b.txt", {"a?b", "txt"}, {caracter_malo}},
        {"a\tb.txt", {"a\tb", "txt"}, {}},  // a control character alone passes
        {"a\tb?.t\nt", {"a\tb?", "t\nt"}, {caracter_malo, caracter_malo}},  // beside a "?" it does not
        {"C:\\a/b.x", {"c:\\a/b", "x"}, copias(3, caracter_malo)},
        {"a.t*|", {"a", "t*|"}, copias(2, caracter_malo)},
        {".\\", {"", "\\"}, {sin_nombre, caracter_malo}},  // the base name is checked first
        {"a.b\\c", {"a", "b\\c"}, {caracter_malo}},        // the last point, wherever it stands
    };
    const en_pagina p(1252);
    for (const caso& c : casos) {
        EXPECT_EQ(toma_partes(crea(c.nombre)), c.esperado) << c.nombre;
        EXPECT_EQ(toma_expresiones(), c.informes) << c.nombre;
    }
}

TEST(nomsfich, el_informe_lleva_el_texto_y_la_etiqueta_del_modulo) {
    const en_pagina p(1252);
    toma_partes(crea("A?Ñ.txt"));
    const informe dado = toma_el_informe();
    EXPECT_EQ(dado.etiqueta, "nomsfich (LUMODIR.DLL)");
    EXPECT_EQ(dado.expresion, caracter_malo);
    EXPECT_EQ(dado.detalle, "a?ñ");  // as the record holds it
    EXPECT_GT(dado.linea, 0u);
    toma_partes(crea(".x"));
    EXPECT_EQ(toma_informes()[0].detalle, "(NULL)");
}

TEST(nomsfich, se_crea_de_sus_partes) {
    struct caso {
        const char* base;
        const char* extension;
        partes esperado;
        std::vector<std::string> informes;
    };
    const caso casos[] = {
        {"a", "txt", {"a", "txt"}, {}},
        {"Photo  ", "PNG ", {"photo", "png"}, {}},  // both are trimmed
        {" a", " b", {" a", " b"}, {}},
        {"a.B", ".C", {"a.b", ".c"}, {}},  // points are text here
        {"ÑÚ", "É", {"ñú", "é"}, {}},
        {"a", "", {"a", ""}, {}},
        {"", "x", {"", "x"}, {sin_nombre}},
        {"   ", "x", {"", "x"}, {sin_nombre}},
        {"a<", "b>c\r", {"a<", "b>c\r"}, copias(3, caracter_malo)},
        {nullptr, "X", {"", "x"}, {sin_cadena}},
        {"A", nullptr, {"a", ""}, {sin_cadena}},
        {nullptr, nullptr, {"", ""}, {sin_cadena, sin_cadena}},
        {nullptr, "?", {"", "?"}, {sin_cadena, caracter_malo}},
    };
    const en_pagina p(1252);
    for (const caso& c : casos) {
        const texto_a base = cp1252(c.base == nullptr ? "" : c.base);
        const texto_a extension = cp1252(c.extension == nullptr ? "" : c.extension);
        EXPECT_EQ(toma_partes(nomsfich_crea_por_nombre_base_y_extension(
                      c.base == nullptr ? nullptr : base.c_str(),
                      c.extension == nullptr ? nullptr : extension.c_str())),
                  c.esperado);
        EXPECT_EQ(toma_expresiones(), c.informes) << base << " " << extension;
    }
}

TEST(nomsfich, se_copia_y_cambia_de_extension) {
    const en_pagina p(1252);
    Nomsfich* foto = crea("photo.png");
    Nomsfich* copia = nomsfich_copia(foto);
    EXPECT_NE(copia, foto);
    EXPECT_NE(nomsfich_nombre_base_fichero(copia), nomsfich_nombre_base_fichero(foto));
    EXPECT_NE(nomsfich_extension_fichero(copia), nomsfich_extension_fichero(foto));
    EXPECT_EQ(toma_partes(copia), (partes{"photo", "png"}));
    EXPECT_EQ(toma_partes(nomsfich_cambia_extension(foto, "BAK ")), (partes{"photo", "bak"}));
    EXPECT_EQ(toma_partes(nomsfich_cambia_extension(foto, "")), (partes{"photo", ""}));
    EXPECT_EQ(toma_partes(nomsfich_cambia_extension(foto, cp1252("Ñ").c_str())), (partes{"photo", "ñ"}));
    EXPECT_EQ(toma_partes(nomsfich_cambia_extension(foto, "a/b")), (partes{"photo", "a/b"}));
    EXPECT_EQ(toma_partes(nomsfich_cambia_extension(foto, nullptr)), (partes{"photo", ""}));
    ESPERA_INFORMES(caracter_malo, sin_cadena);
    EXPECT_EQ(toma_partes(foto), (partes{"photo", "png"}));  // untouched by all that

    Nomsfich* malo = crea("a*b.|");
    ESPERA_INFORMES(caracter_malo, caracter_malo);
    EXPECT_EQ(toma_partes(nomsfich_copia(malo)), (partes{"a*b", "|"}));
    ESPERA_INFORMES(caracter_malo, caracter_malo);  // the parts are checked again
    EXPECT_EQ(toma_partes(nomsfich_cambia_extension(malo, "x")), (partes{"a*b", "x"}));
    ESPERA_INFORMES(caracter_malo);
    nomsfich_destruye(&malo);
}

TEST(nomsfich, da_el_nombre_entero) {
    for (const char* nombre : {"leeme", "a.txt", "informe.final.doc", "ñ.€", " a.b"}) {
        Nomsfich* registro = crea(nombre);
        EXPECT_EQ(toma(nomsfich_nombre_fichero(registro)), nombre);
        nomsfich_destruye(&registro);
    }
    Nomsfich* sin_extension = crea("leeme.");
    EXPECT_EQ(toma(nomsfich_nombre_fichero(sin_extension)), "leeme");
    nomsfich_destruye(&sin_extension);
}

TEST(nomsfich, iguales_son_los_de_las_mismas_partes) {
    Nomsfich* uno = crea("a.txt");
    for (const auto& [nombre, iguales] :
         {std::pair("A.TXT", 1), std::pair("b.txt", 0), std::pair("a.doc", 0), std::pair("a", 0)}) {
        Nomsfich* otro = crea(nombre);
        EXPECT_EQ(nomsfich_iguales(uno, otro), iguales) << nombre;
        nomsfich_destruye(&otro);
    }
    nomsfich_destruye(&uno);
}

TEST(nomsfich, null_se_comunica_en_cada_funcion) {
    const std::string registro_nulo = "(nomsfich) != NULL";
    EXPECT_EQ(toma_partes(nomsfich_crea(nullptr)), (partes{"", ""}));
    ESPERA_INFORMES(sin_cadena);
    EXPECT_EQ(toma_partes(nomsfich_copia(nullptr)), (partes{"", ""}));
    EXPECT_EQ(toma_partes(nomsfich_cambia_extension(nullptr, "x")), (partes{"", ""}));
    EXPECT_EQ(nomsfich_nombre_base_fichero(nullptr), nullptr);
    EXPECT_EQ(nomsfich_extension_fichero(nullptr), nullptr);
    EXPECT_EQ(toma(nomsfich_nombre_fichero(nullptr)), "");
    nomsfich_destruye(nullptr);
    EXPECT_EQ(toma_expresiones(), copias(6, registro_nulo));
    Nomsfich* nulo = nullptr;
    nomsfich_destruye(&nulo);
    ESPERA_INFORMES("(*nomsfich) != NULL");

    Nomsfich* uno = crea("a");
    EXPECT_EQ(nomsfich_iguales(nullptr, uno), 0);
    EXPECT_EQ(nomsfich_compara(nullptr, uno), 0);
    ESPERA_INFORMES("(nomsfich1) != NULL", "(nomsfich1) != NULL");
    EXPECT_EQ(nomsfich_iguales(uno, nullptr), 0);
    EXPECT_EQ(nomsfich_compara(uno, nullptr), 0);
    ESPERA_INFORMES("(nomsfich2) != NULL", "(nomsfich2) != NULL");
    EXPECT_EQ(nomsfich_iguales(nullptr, nullptr), 0);
    EXPECT_EQ(nomsfich_compara(nullptr, nullptr), 0);
    ESPERA_INFORMES("(nomsfich1) != NULL", "(nomsfich2) != NULL", "(nomsfich1) != NULL",
                    "(nomsfich2) != NULL");
    nomsfich_destruye(&uno);

    EXPECT_EQ(nomsfich_misma_extension(nullptr, "x"), 0);
    EXPECT_EQ(nomsfich_misma_extension("", nullptr), 0);
    EXPECT_EQ(nomsfich_mismo_nombre_base(nullptr, "x"), 0);
    EXPECT_EQ(nomsfich_mismo_nombre_base("x", nullptr), 0);
    EXPECT_EQ(toma_expresiones(), copias(4, sin_cadena));
    EXPECT_EQ(nomsfich_misma_extension(nullptr, nullptr), 0);
    EXPECT_EQ(nomsfich_mismo_nombre_base(nullptr, nullptr), 0);
    EXPECT_EQ(toma_expresiones(), copias(4, sin_cadena));
    EXPECT_EQ(toma(nomsfich_nombre_base_path_completo(nullptr)), "");
    ESPERA_INFORMES("(path_completo) != NULL");
}

TEST(nomsfich, copia_tambien_un_registro_sin_textos) {
    const Nomsfich sin_textos{};
    const interno::registro_nomsfich copia = interno::i_copia_nomsfich(sin_textos);
    EXPECT_EQ(toma_expresiones(), std::vector<std::string>(2, sin_cadena));
    EXPECT_EQ(de_cp1252(copia->nombre_base), "");
    EXPECT_EQ(de_cp1252(copia->extension), "");
}

TEST(nomsfich, compara_textos_sueltos) {
    struct caso {
        const char* uno;
        const char* otro;
        unsigned short iguales;
        std::size_t malos;   // offending characters
        std::size_t vacios;  // as base names
    };
    const caso casos[] = {
        {.uno = "txt", .otro = "txt", .iguales = 1, .malos = 0, .vacios = 0},
        {.uno = "txt", .otro = "TXT", .iguales = 0, .malos = 0, .vacios = 0},  // exactly
        {.uno = "txt", .otro = "txt ", .iguales = 0, .malos = 0, .vacios = 0},
        {.uno = "", .otro = "", .iguales = 1, .malos = 0, .vacios = 2},
        {.uno = "", .otro = "a", .iguales = 0, .malos = 0, .vacios = 1},
        {.uno = "a?", .otro = "a?", .iguales = 1, .malos = 2, .vacios = 0},
        {.uno = "a*\x01", .otro = "b\x01", .iguales = 0, .malos = 2, .vacios = 0},
        {.uno = "ñ", .otro = "ñ", .iguales = 1, .malos = 0, .vacios = 0},
        {.uno = "ñ", .otro = "Ñ", .iguales = 0, .malos = 0, .vacios = 0},
    };
    for (const caso& c : casos) {
        const texto_a uno = cp1252(c.uno);
        const texto_a otro = cp1252(c.otro);
        SCOPED_TRACE(std::string("'") + c.uno + "' and '" + c.otro + "'");
        EXPECT_EQ(nomsfich_misma_extension(uno.c_str(), otro.c_str()), c.iguales);
        EXPECT_EQ(toma_expresiones(), copias(c.malos, caracter_malo));
        EXPECT_EQ(nomsfich_mismo_nombre_base(uno.c_str(), otro.c_str()), c.iguales);
        std::vector<std::string> esperados = copias(c.vacios, sin_nombre);
        for (const std::string& malo : copias(c.malos, caracter_malo)) {
            esperados.push_back(malo);
        }
        EXPECT_EQ(toma_expresiones(), esperados);
    }
    EXPECT_EQ(nomsfich_mismo_nombre_base("?", ""), 0);
    ESPERA_INFORMES(caracter_malo, sin_nombre);  // one after the other
    for (const auto& [uno, otro] :
         {std::pair<const char*, const char*>{nullptr, ""}, {"", nullptr}, {nullptr, nullptr}}) {
        EXPECT_EQ(nomsfich_misma_extension(uno, otro), 0);  // NULL is no text, not even an empty one
        EXPECT_EQ(nomsfich_mismo_nombre_base(uno, otro), 0);
        EXPECT_FALSE(toma_expresiones().empty());
    }
    // The second byte of a character is none of those that are forbidden.
    const en_pagina p(932);
    EXPECT_EQ(nomsfich_misma_extension("\x83\\\x01", "\x83\\\x01"), 1);
    ESPERA_INFORMES();
    EXPECT_EQ(nomsfich_misma_extension("\x83\\\x01?", "\x83\\\x01?"), 1);
    ESPERA_INFORMES(caracter_malo, caracter_malo, caracter_malo, caracter_malo);
}

TEST(nomsfich, da_el_nombre_base_de_un_path) {
    struct caso {
        const char* path;
        const char* base;
        std::vector<std::string> detalles;  // one an offending character
    };
    const caso casos[] = {
        {"C:\\Dir\\Photo.PNG", "photo", {}},
        {"C:/Dir/Photo.tar.GZ", "photo.tar", {}},
        {"Photo", "photo", {}},
        {"C:Photo", "photo", {}},
        {"C:\\Dir\\", "", {}},
        {"C:\\Dir\\.Config", "", {}},  // cut as the C runtime does: all extension
        {"", "", {}},
        {"C:\\Ñ\\ÁÉ €.Ü", "áé €", {}},
        {"C:\\A B \\C D .e", "c d ", {}},
        {"C:\\d?\\A.t", "a", {}},                      // only the name is checked
        {"C:\\d\\A?B|.t*", "a?b|", {"A?B|", "A?B|"}},  // before its case is changed
        {"C:\\d\\a:b", "a:b", {"a:b"}},
    };
    const en_pagina p(1252);
    for (const caso& c : casos) {
        EXPECT_EQ(toma(nomsfich_nombre_base_path_completo(cp1252(c.path).c_str())), c.base) << c.path;
        std::vector<std::string> detalles;
        for (const informe& i : toma_informes()) {
            EXPECT_EQ(i.expresion, caracter_malo);
            detalles.push_back(i.detalle);
        }
        EXPECT_EQ(detalles, c.detalles) << c.path;
    }
}

TEST(nomsfich, cada_byte_de_un_nombre) {
    for (int b = 1; b < 256; ++b) {
        const auto c = static_cast<char>(b);
        if (c == '.') {
            continue;
        }
        // Beside a "?" every character is looked at; bytes from 128 on are no control characters.
        const texto_a nombre = {'A', c, '?'};
        Nomsfich* registro = nomsfich_crea(nombre.c_str());
        const bool malo = b < 32 || prohibidos.find(c) != std::string::npos;
        EXPECT_EQ(toma_expresiones(), copias(malo ? 2 : 1, caracter_malo)) << b;
        EXPECT_EQ(nomsfich_nombre_base_fichero(registro)[0], 'a');
        if (b < 128) {
            const char esperada = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
            EXPECT_EQ(nomsfich_nombre_base_fichero(registro)[1], esperada) << b;
        }
        nomsfich_destruye(&registro);
        const texto_a solo = {'a', c};
        registro = nomsfich_crea(solo.c_str());
        const bool prohibido = prohibidos.find(c) != std::string::npos;
        EXPECT_EQ(toma_expresiones(), copias(prohibido ? 1 : 0, caracter_malo)) << b;
        nomsfich_destruye(&registro);
    }
}

TEST(nomsfich, textos_largos) {
    for (const std::size_t largo : {std::size_t{1}, std::size_t{32767}, std::size_t{100000}}) {
        const texto_a base(largo, 'B');
        const texto_a extension(largo, 'X');
        EXPECT_EQ(toma_partes(nomsfich_crea((base + "." + extension).c_str())),
                  (partes{texto_a(largo, 'b'), texto_a(largo, 'x')}));
        EXPECT_EQ(toma(nomsfich_nombre_base_path_completo(("C:\\" + base + "\\" + base + ".x").c_str())),
                  texto_a(largo, 'b'));
    }
}

TEST(nomsfich, cada_nombre_corto_como_el_modelo) {
    std::vector<std::string> nombres = textos_cortos("aB.\\/:? *", modelos::longitud_de_nombres);
    const std::vector<std::string> con_control = textos_cortos("aB. ?\t", modelos::longitud_de_nombres);
    nombres.insert(nombres.end(), con_control.begin(), con_control.end());
    for (const std::string& nombre : nombres) {
        Nomsfich* registro = nomsfich_crea(nombre.c_str());
        const partes esperadas = modelos::crea_nomsfich(nombre);
        ASSERT_EQ(toma_expresiones(), modelos::informes_de(esperadas)) << "'" << nombre << "'";
        // The whole name gives the same record again.
        char* entero = nomsfich_nombre_fichero(registro);
        ASSERT_EQ(std::string(entero),
                  esperadas.base + (esperadas.extension.empty() ? "" : "." + esperadas.extension));
        toma(entero);
        ASSERT_EQ(toma_partes(registro), esperadas) << "'" << nombre << "'";
    }
}

TEST(nomsfich, orden_e_igualdad_como_el_modelo) {
    std::vector<Nomsfich*> registros;
    for (const char* base : {"a", "A", "b", "aa", "a.", "ab", "\xE9", "a\x7F", "a\x80", "-", " a"}) {
        for (const char* extension : {"", "a", "A", "b", "aa", "\xFF", "a.b", " "}) {
            registros.push_back(nomsfich_crea_por_nombre_base_y_extension(base, extension));
        }
    }
    for (const Nomsfich* x : registros) {
        for (const Nomsfich* y : registros) {
            const std::string nombres = std::string(x->nombre_base) + "." + x->extension + " and " +
                                        y->nombre_base + "." + y->extension;
            const int orden = modelos::orden({x->nombre_base, x->extension}, {y->nombre_base, y->extension});
            ASSERT_EQ(signo(nomsfich_compara(x, y)), orden) << nombres;
            ASSERT_EQ(signo(nomsfich_compara(y, x)), -orden) << nombres;
            ASSERT_EQ(nomsfich_iguales(x, y), orden == 0 ? 1 : 0) << nombres;
        }
    }
    // A sort by it leaves every pair in order: the order is total.
    std::sort(registros.begin(), registros.end(),
              [](const Nomsfich* x, const Nomsfich* y) { return nomsfich_compara(x, y) < 0; });
    for (std::size_t i = 0; i < registros.size(); ++i) {
        for (std::size_t j = i; j < registros.size(); ++j) {
            ASSERT_LE(nomsfich_compara(registros[i], registros[j]), 0);
        }
    }
    for (Nomsfich*& registro : registros) {
        nomsfich_destruye(&registro);
    }
}

TEST(nomsfich, nombres_iguales_en_otra_caja_lo_son) {
    Nomsfich* uno = crea("A.TXT");
    Nomsfich* otro = nomsfich_crea_por_nombre_base_y_extension("a", "txt");
    EXPECT_EQ(nomsfich_iguales(uno, otro), 1);
    EXPECT_EQ(nomsfich_compara(uno, otro), 0);
    nomsfich_destruye(&uno);
    nomsfich_destruye(&otro);
    EXPECT_EQ(otro, nullptr);
}

TEST(nomsfich, el_duenyo_interno_destruye_o_suelta) {
    interno::registro_nomsfich propio = interno::i_crea_nomsfich("Uno.DOS");
    EXPECT_STREQ(nomsfich_nombre_base_fichero(propio.get()), "uno");
    EXPECT_STREQ(nomsfich_extension_fichero(propio.get()), "dos");
    interno::registro_nomsfich movido(std::move(propio));
    EXPECT_EQ(propio.get(), nullptr);
    EXPECT_EQ(toma_partes(movido.suelta()), (partes{"uno", "dos"}));
    const interno::registro_nomsfich destruido = interno::i_crea_nomsfich("x");
    EXPECT_NE(destruido.get(), nullptr);
}
