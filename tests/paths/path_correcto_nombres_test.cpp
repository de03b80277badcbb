// The rule for one name: the base-name and file-name entries, what they leave in the caller's buffer, the reserved
// names in all their forms, and every character and byte there is.
#include "apoyo/apoyo.hpp"
#include "cdir.h"
#include "paths/modelos.hpp"
#include "paths/path_correcto.hpp"

using namespace apoyo;
using interno::i_path_correcto;
using modelos::en_bufer;
using modelos::prueba_en_bufer;
using modelos::ver;

namespace {

struct fila_nombre {
    std::string_view nombre;
    bool base;                     // valid as a base name
    bool fichero;                  // valid as a file name
    std::string_view queda = "=";  // in the caller's buffer afterwards; "=": the name as it was
};

void comprueba_nombre(const fila_nombre& f) {
    const std::string nombre(f.nombre);
    SCOPED_TRACE("[" + nombre + "]");
    const std::string queda(f.queda == "=" ? f.nombre : f.queda);
    const en_bufer base = prueba_en_bufer(cdir_nombre_base_valido_UNICODE, w(nombre));
    EXPECT_EQ(base.valido, f.base);
    EXPECT_EQ(base.queda, queda);
    const en_bufer fichero = prueba_en_bufer(cdir_nombre_fichero_valido, w(nombre));
    EXPECT_EQ(fichero.valido, f.fichero);
    EXPECT_EQ(fichero.queda, nombre.ends_with('.') ? nombre : queda);
    const texto_a nombre_a = cp1252(nombre);
    EXPECT_EQ(cdir_nombre_base_valido(nombre_a.c_str()), f.base);
    EXPECT_EQ(nombre_a, cp1252(nombre)) << "the 8-bit flavour works on a copy";
    EXPECT_EQ(interno::i_nombre_base_correcto_UNICODE(ver(w(nombre))), f.base);
    ESPERA_AVISOS();
}

TEST(path_correcto_nombres, nombre_base_y_nombre_de_fichero) {
    const fila_nombre filas_nombre[] = {
        {.nombre = "abc", .base = true, .fichero = true},
        {.nombre = "abc   ", .base = true, .fichero = true, .queda = "abc"},
        {.nombre = "  abc", .base = true, .fichero = true},
        {.nombre = "a b.c d ", .base = true, .fichero = true, .queda = "a b.c d"},
        {.nombre = "", .base = false, .fichero = false},
        {.nombre = "   ", .base = false, .fichero = false, .queda = ""},
        {.nombre = ".", .base = true, .fichero = false},
        {.nombre = "..", .base = true, .fichero = false},
        {.nombre = "...", .base = true, .fichero = false},
        {.nombre = ". ", .base = true, .fichero = true, .queda = "."},
        {.nombre = ".. ", .base = true, .fichero = true, .queda = ".."},
        {.nombre = "abc.", .base = true, .fichero = false},
        {.nombre = "abc. ", .base = true, .fichero = true, .queda = "abc."},  // the point is looked at first
        {.nombre = ".profile", .base = true, .fichero = true},
        {.nombre = "a|b  ", .base = false, .fichero = false, .queda = "a|b"},
        {.nombre = "a|b.", .base = false, .fichero = false},
        {.nombre = "abc\t", .base = false, .fichero = false},
        {.nombre = "con", .base = false, .fichero = false},
        {.nombre = "con  ", .base = false, .fichero = false, .queda = "con"},
        {.nombre = "con.", .base = false, .fichero = false},
        {.nombre = "con.  ", .base = false, .fichero = false, .queda = "con."},
        {.nombre = "Ñandú €", .base = true, .fichero = true},
    };
    for (const fila_nombre& f : filas_nombre) {
        comprueba_nombre(f);
    }
}

TEST(path_correcto_nombres, la_longitud_se_mide_sin_blancos_finales) {
    const std::string justo = modelos::repite("x", 255);
    const std::string con_blancos = justo + "   ";
    const std::string con_extension = modelos::repite("x", 251) + ".txt";
    const std::string de_mas = modelos::repite("ñ", 256);
    comprueba_nombre({.nombre = justo, .base = true, .fichero = true});
    comprueba_nombre({.nombre = con_blancos, .base = true, .fichero = true, .queda = justo});
    comprueba_nombre({.nombre = con_extension, .base = true, .fichero = true});
    comprueba_nombre({.nombre = de_mas, .base = false, .fichero = false});
}

// A host may pass a constant that has nothing to trim.
TEST(path_correcto_nombres, un_nombre_sin_blancos_finales_no_se_escribe) {
    static const wchar_t constante[] = L"name.txt";
    EXPECT_EQ(cdir_nombre_base_valido_UNICODE(const_cast<wchar_t*>(constante)), 1);
    EXPECT_EQ(cdir_nombre_fichero_valido(const_cast<wchar_t*>(constante)), 1);
}

TEST(path_correcto_nombres, un_nombre_null_se_denuncia) {
    EXPECT_EQ(cdir_nombre_base_valido_UNICODE(nullptr), 0);
    EXPECT_EQ(cdir_nombre_base_valido(nullptr), 0);
    EXPECT_EQ(cdir_nombre_fichero_valido(nullptr), 0);
    const std::vector<informe> informes = toma_informes();
    EXPECT_EQ(informes.size(), 3u);
    for (const informe& i : informes) {
        EXPECT_EQ(i.expresion, "nombre != NULL");
        EXPECT_EQ(i.etiqueta, "lumodir (LUMODIR.DLL)");
    }
}

std::string mayusculas(std::string texto) {
    for (char& c : texto) {
        c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
    }
    return texto;
}

TEST(path_correcto_nombres, los_nombres_reservados_en_todas_sus_formas) {
    EXPECT_EQ(modelos::reservados.size(), 20u);
    for (const std::string_view reservado : modelos::reservados) {
        const std::string bajo(reservado);
        const std::string alto = mayusculas(bajo);
        const std::string mezcla = alto.substr(0, 1) + bajo.substr(1);
        for (const std::string& nombre : {bajo, alto, mezcla}) {
            SCOPED_TRACE(nombre);
            struct forma {
                std::string texto;
                bool valida;
            };
            const forma formas[] = {{nombre, false},          {nombre + "  ", false},
                                    {nombre + ".", false},    {nombre + ".txt", false},
                                    {nombre + "..", false},   {nombre + ". x", false},
                                    {nombre + "x", true},     {nombre + "x.txt", true},
                                    {nombre + " .txt", true}, {" " + nombre, true},
                                    {"x" + nombre, true},     {"x." + nombre, true},
                                    {nombre + "ñ", true},     {nombre.substr(1), true},
                                    {nombre + "_", true},     {nombre.substr(0, nombre.size() - 1), true}};
            for (const forma& f : formas) {
                SCOPED_TRACE("[" + f.texto + "]");
                EXPECT_EQ(prueba_en_bufer(cdir_nombre_base_valido_UNICODE, w(f.texto)).valido, f.valida);
                EXPECT_EQ(prueba_en_bufer(cdir_nombre_fichero_valido, w(f.texto)).valido,
                          f.valida && f.texto.back() != '.');
                EXPECT_EQ(cdir_nombre_base_valido(cp1252(f.texto).c_str()), f.valida);
                EXPECT_EQ(cdir_path_valido_UNICODE(w("C:\\" + f.texto + "\\a").c_str(), 0), f.valida);
                EXPECT_EQ(cdir_path_valido(cp1252("C:\\" + f.texto + "\\a").c_str(), 0), f.valida);
            }
        }
    }
    for (const char* libre : {"CONFIG", "COM5", "COM0", "COM", "LPT4", "LPT9", "AUXILIAR", "CONX.txt",
                              "CLOCK", "CONIN$", "LUMO", "MMXXXX0"}) {
        EXPECT_EQ(cdir_nombre_base_valido(libre), 1) << libre;
    }
}

// Case folds from A to Z only: letters that some locale takes for others reserve nothing.
TEST(path_correcto_nombres, las_letras_de_otros_alfabetos_no_reservan_nada) {
    for (const char* nombre :
         {"KORAX", "\u212AORAX", "PR\u0418", "ﬁ", "IFS$HLP$\u0130", "ıFS$HLP$", "CＯN"}) {
        const bool es_korax = std::string_view(nombre) == "KORAX";
        EXPECT_EQ(prueba_en_bufer(cdir_nombre_base_valido_UNICODE, w(nombre)).valido, es_korax ? 0 : 1)
            << nombre;
    }
}

TEST(path_correcto_nombres, la_regla_de_caracteres_sobre_toda_unidad) {
    for (unsigned c = 1; c <= 0xFFFF; ++c) {
        const bool valido = modelos::caracter_valido(c);
        const texto_w nombre = {L'a', static_cast<wchar_t>(c), L'b'};
        const texto_w copia = nombre;
        ASSERT_EQ(interno::i_caracter_valido(static_cast<wchar_t>(c)), valido) << c;
        ASSERT_EQ(interno::i_nombre_base_correcto_UNICODE(ver(nombre)), valido) << c;
        ASSERT_EQ(prueba_en_bufer(cdir_nombre_fichero_valido, nombre).valido, valido) << c;
        const modelos::juicio modelo = modelos::juzga(nombre);
        ASSERT_EQ(cdir_path_valido_UNICODE(nombre.c_str(), 0), modelo.motivo == 0) << c;
        ASSERT_EQ(nombre, copia) << c;
    }
}

TEST(path_correcto_nombres, todo_byte_en_la_variante_de_8_bits) {
    for (int b = 1; b < 256; ++b) {
        SCOPED_TRACE(b);
        const bool valido = modelos::caracter_valido(static_cast<unsigned>(b));
        const std::string nombre = {'a', 'a', static_cast<char>(b), 'b'};
        EXPECT_EQ(interno::i_caracter_valido(static_cast<char>(b)), valido);
        EXPECT_EQ(cdir_nombre_base_valido(nombre.c_str()), valido);
        EXPECT_EQ(cdir_path_valido(nombre.c_str(), 0), valido || b == '\\' || b == '/');
        EXPECT_EQ(i_path_correcto(nombre).correcto, valido || b == '\\' || b == '/');
    }
}

}  // namespace
