// The machine's own code page, whichever it is: under Wine that of the locale (tools/codepages).
#include <random>

#include "apoyo/apoyo.hpp"
#include "apoyo/paginas.hpp"
#include "cdir.h"
#include "companions/caracteres.hpp"
#include "companions/sistema.hpp"
#include "companions/unicode.hpp"
#include "listings/filtro.hpp"
#include "nomsfich.h"

using namespace apoyo;
using interno::cadena_a;
using interno::vista_a;

namespace {

struct pagina_de_codigos {
    unsigned pagina;
    const char* caracter;  // one whose second byte is a separator, or one like any other where there is none
    const char* otro;
};
const pagina_de_codigos filas[] = {
    {932, "\x95\\", "\x83|"},           {936, "\x81\\", "\x8B|"}, {949, "\xB0\xA1", "\xC7\xD1"},
    {950, "\xA5\\", "\xAE|"},           {874, "\xA1", "\xE1"},    {1252, "\xF1", "\x80"},
    {65001, "\xE8\xA1\xA8", "\xC3\xB1"}};

const pagina_de_codigos* fila_de_la_maquina() {
    for (const pagina_de_codigos& f : filas) {
        if (f.pagina == ::GetACP()) {
            return &f;
        }
    }
    return nullptr;
}

}  // namespace

TEST(paginas_de_la_maquina, se_escribe_como_dice_el_sistema) {
    const en_pagina p(0);
    CPINFO info;
    ASSERT_TRUE(::GetCPInfo(CP_ACP, &info));
    const auto como = interno::i_escritura();
    EXPECT_EQ(como == interno::escritura::utf8, ::GetACP() == CP_UTF8);
    EXPECT_EQ(como == interno::escritura::de_un_byte, info.MaxCharSize == 1);
}

// Read in characters and converted whole by the system.
TEST(paginas_de_la_maquina, se_lee_como_convierte_el_sistema) {
    const en_pagina p(0);
    std::mt19937 azar(7);
    for (int n = 0; n < 3000; ++n) {
        texto_a t;
        for (std::size_t i = azar() % 10; i > 0; --i) {
            t.push_back(azar() % 3 == 0 ? "\\|/.aZ"[azar() % 6] : static_cast<char>(0x80 + azar() % 128));
        }
        texto_w de_uno_en_uno;
        interno::por_caracteres(
            t, [&](vista_a c) { de_uno_en_uno += interno::utunicode_ANSI_a_UNICODE(c).ver(); });
        // Of ill-formed UTF-8 the system makes one U+FFFD or several, as it likes.
        if (interno::i_escritura() != interno::escritura::utf8 ||
            de_uno_en_uno.find(0xFFFD) == texto_w::npos) {
            ASSERT_EQ(de_uno_en_uno, texto_w(interno::utunicode_ANSI_a_UNICODE(vista_a(t)).ver()))
                << testing::PrintToString(t);
        }
    }
}

TEST(paginas_de_la_maquina, rutas_y_nombres) {
    const pagina_de_codigos* f = fila_de_la_maquina();
    if (f == nullptr) {
        GTEST_SKIP() << "the machine's code page is " << ::GetACP();
    }
    const en_pagina p(0);
    const texto_a x = f->caracter;
    const texto_a y = f->otro;
    const texto_a ruta = "C:\\" + x + "\\" + y + x + ".txt";
    EXPECT_EQ(cdir_path_valido(ruta.c_str(), 1), 1);
    EXPECT_EQ(toma_bytes(cdir_nombre_base_fichero(ruta.c_str())), y + x);
    EXPECT_EQ(toma_bytes(cdir_ruta_acceso_directorio_fichero(ruta.c_str())), "C:\\" + x + "\\");
    EXPECT_EQ(toma_bytes(cdir_nombre_fichero_con_ext(ruta.c_str(), "dat")),
              "C:\\" + x + "\\" + y + x + ".dat");
    EXPECT_EQ(toma_bytes(cdir_concatena_directorios(("C:\\" + x).c_str(), y.c_str())), "C:\\" + x + "\\" + y);
    EXPECT_EQ(toma_bytes(cdir_split_make_path(("\\\\" + x + "\\" + y + "\\" + x + ".a").c_str(), 15)),
              "\\\\" + x + "\\" + y + "\\" + x + ".a");
    Nomsfich* registro = nomsfich_crea((x + "." + y).c_str());
    EXPECT_EQ(texto_a(nomsfich_nombre_base_fichero(registro)), x);
    EXPECT_EQ(texto_a(nomsfich_extension_fichero(registro)), y);
    nomsfich_destruye(&registro);
    EXPECT_TRUE(interno::i_cumple_filtro<char>(x + y + ".txt", "?" + y + ".*"));
    EXPECT_FALSE(interno::i_cumple_filtro<char>(x + y + ".txt", "??" + y + ".*"));
}
