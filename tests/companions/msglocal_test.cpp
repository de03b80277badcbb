// The language of the messages, and the text taken out of a record.
#include "companions/msglocal.hpp"

#include <optional>
#include <string>

#include "apoyo/apoyo.hpp"
#include "companions/msglocal.h"
#include "companions/plataforma.hpp"
#ifndef _WIN32
#include "nativo/plataforma_nativa.hpp"
#endif

using namespace apoyo;
using namespace interno;

namespace {

// Each slot tells its own number.
texto_w g_textos[num_ranuras_idioma];

void construye_con_prefijo(RegistroMensaje* registro, const char* prefijo) {
    *registro = {};
    registro->longitud_prefijo = static_cast<std::uint32_t>(std::string(prefijo).size());
    for (std::uint32_t i = 0; i < num_ranuras_idioma; ++i) {
        g_textos[i] = w(prefijo + std::to_string(i));
        registro->texto[i] = g_textos[i].c_str();
    }
}
void prefijo_de_7(RegistroMensaje* registro) {
    construye_con_prefijo(registro, "<53958>");
}
void prefijo_de_8(RegistroMensaje* registro) {
    construye_con_prefijo(registro, "<374376>");
}

struct fila_idioma {
    const char* nombre;
    unsigned langid;
    unsigned long ranura;
};

const fila_idioma idiomas[] = {
    {.nombre = "es-ES traditional", .langid = 0x040A, .ranura = 0},
    {.nombre = "es-ES modern", .langid = 0x0C0A, .ranura = 0},
    {.nombre = "es-MX", .langid = 0x080A, .ranura = 6},
    {.nombre = "es-AR", .langid = 0x2C0A, .ranura = 7},
    {.nombre = "es", .langid = 0x000A, .ranura = 24},
    {.nombre = "es-CL", .langid = 0x340A, .ranura = 24},
    {.nombre = "es-US", .langid = 0x540A, .ranura = 24},
    {.nombre = "fr-FR", .langid = 0x040C, .ranura = 1},
    {.nombre = "fr-CA", .langid = 0x0C0C, .ranura = 1},
    {.nombre = "pt-BR", .langid = 0x0416, .ranura = 2},
    {.nombre = "pt-PT", .langid = 0x0816, .ranura = 3},
    {.nombre = "ca-ES", .langid = 0x0403, .ranura = 4},
    {.nombre = "ca-valencia", .langid = 0x0803, .ranura = 4},
    {.nombre = "it-IT", .langid = 0x0410, .ranura = 5},
    {.nombre = "it-CH", .langid = 0x0810, .ranura = 5},
    {.nombre = "en-US", .langid = 0x0409, .ranura = 8},
    {.nombre = "en-GB", .langid = 0x0809, .ranura = 8},
    {.nombre = "gl-ES", .langid = 0x0456, .ranura = 9},
    {.nombre = "bg-BG", .langid = 0x0402, .ranura = 10},
    {.nombre = "ro-RO", .langid = 0x0418, .ranura = 11},
    {.nombre = "zh-CN", .langid = 0x0804, .ranura = 12},
    {.nombre = "zh-SG", .langid = 0x1004, .ranura = 12},
    {.nombre = "zh-Hans", .langid = 0x0004, .ranura = 12},
    {.nombre = "zh-Hant", .langid = 0x7C04, .ranura = 8},
    {.nombre = "zh-TW", .langid = 0x0404, .ranura = 8},  // traditional script: no text of its own
    {.nombre = "zh-HK", .langid = 0x0C04, .ranura = 8},
    {.nombre = "de-DE", .langid = 0x0407, .ranura = 13},
    {.nombre = "de-AT", .langid = 0x0C07, .ranura = 13},
    {.nombre = "ru-RU", .langid = 0x0419, .ranura = 18},
    {.nombre = "th-TH", .langid = 0x041E, .ranura = 25},
    {.nombre = "cs-CZ", .langid = 0x0405, .ranura = 26},
    {.nombre = "hr-HR", .langid = 0x041A, .ranura = 27},
    {.nombre = "hr", .langid = 0x001A, .ranura = 27},
    {.nombre = "hr-BA", .langid = 0x101A, .ranura = 27},
    {.nombre = "sr-Latn-RS", .langid = 0x241A, .ranura = 8},  // the same primary language as Croatian
    {.nombre = "bs-Latn-BA", .langid = 0x141A, .ranura = 8},
    {.nombre = "sl-SI", .langid = 0x0424, .ranura = 29},
    {.nombre = "hu-HU", .langid = 0x040E, .ranura = 30},
    {.nombre = "pl-PL", .langid = 0x0415, .ranura = 31},
    {.nombre = "tr-TR", .langid = 0x041F, .ranura = 33},
    {.nombre = "ja-JP", .langid = 0x0411, .ranura = 39},
    {.nombre = "sv-SE: not in the catalogue", .langid = 0x041D, .ranura = 8},
    {.nombre = "eu-ES: not in the catalogue", .langid = 0x042D, .ranura = 8},
    {.nombre = "neutral", .langid = 0x0000, .ranura = 8},
    {.nombre = "unknown", .langid = 0xFFFF, .ranura = 8},
};

}  // namespace

TEST(msglocal, cada_idioma_de_windows_tiene_su_ranura) {
    for (const fila_idioma& fila : idiomas) {
        EXPECT_EQ(i_ranura_de_idioma(static_cast<std::uint16_t>(fila.langid)), fila.ranura) << fila.nombre;
    }
}

TEST(msglocal, ningun_idioma_cae_en_una_ranura_reservada) {
    for (unsigned langid = 0; langid <= 0xFFFF; ++langid) {
        const unsigned long r = i_ranura_de_idioma(static_cast<std::uint16_t>(langid));
        const bool reservada = (r >= 14 && r <= 17) || (r >= 19 && r <= 23) || r == 28 || r == 32 ||
                               (r >= 34 && r <= 38) || r >= 40;
        ASSERT_FALSE(reservada) << langid;
    }
}

// What a process begins with, before a test has set a language.
namespace {

std::optional<unsigned long> g_ranura_del_principio;

class mira_el_idioma_del_principio : public testing::Environment {
    void SetUp() override {
        if (!g_ranura_del_principio) {
            g_ranura_del_principio = msglocal_dame_idioma();
        }
    }
};
const testing::Environment* const g_mira_el_idioma =
    testing::AddGlobalTestEnvironment(new mira_el_idioma_del_principio);

}  // namespace

TEST(msglocal, un_proceso_empieza_en_el_idioma_del_usuario) {
    EXPECT_EQ(g_ranura_del_principio, i_ranura_de_idioma(plataforma::idioma_del_usuario()));
}

#ifndef _WIN32
// Asked once: who changes his language later on finds it at the next start.
TEST(msglocal, el_idioma_del_usuario_se_pregunta_una_vez) {
    const sustituye frances(apoyo::idioma_del_usuario, 0x040C);
    i_establece_idioma(~0ul);  // none chosen, as at the start
    EXPECT_EQ(i_idioma(), static_cast<unsigned long>(ranura_frances));
    apoyo::idioma_del_usuario = 0x0407;
    EXPECT_EQ(i_idioma(), static_cast<unsigned long>(ranura_frances));
}

// The system's own text: in the language of the messages, in the one nearest to it, in the system's, or the number.
TEST(msglocal, el_texto_de_un_codigo_en_el_idioma_mas_cercano) {
    struct fila {
        unsigned long ranura;
        unsigned long codigo;
        const char* texto;
    };
    for (
        const fila& f :
        {fila{ranura_espanol, 5, "error 5 in 0c0a"}, fila{ranura_espanol_regional_1, 5, "error 5 in 080a"},
         fila{ranura_catalan, 5, "error 5 in 0403"}, fila{ranura_ingles, 5, "error 5 in 0409"},
         fila{ranura_japones, 5, "error 5 in 0411"},
         fila{15, 5, "error 5 in 0c0a"},  // reserved: as the slot that stands in
         fila{34, 5, "error 5 in 0409"},
         // A slot with a name and no texts too: a Thai sentence behind an English one is two languages at once.
         fila{ranura_gallego, 5, "error 5 in 0c0a"}, fila{ranura_bulgaro, 5, "error 5 in 0409"},
         fila{ranura_tailandes, 5, "error 5 in 0409"}, fila{ranura_checo, 5, "error 5 in 0409"},
         fila{ranura_croata, 5, "error 5 in 0409"}, fila{ranura_esloveno, 5, "error 5 in 0409"},
         fila{ranura_hungaro, 5, "error 5 in 0409"}, fila{ranura_catalan, sin_catalan, "error 10001 in 0c0a"},
         fila{ranura_espanol, sin_catalan, "error 10001 in 0c0a"},
         fila{ranura_catalan, solo_del_sistema, "error 10002 in 0000"},
         fila{ranura_frances, solo_del_sistema, "error 10002 in 0000"},
         fila{ranura_frances, sin_texto, "10003"}}) {
        i_establece_idioma(f.ranura);
        EXPECT_EQ(u8(strgetlasterror_texto_cod_error(f.codigo).c_str()), f.texto) << f.ranura;
    }
}
#endif

TEST(msglocal, se_pone_cualquier_ranura_hasta_la_40) {
    for (unsigned long ranura = 0; ranura <= 40; ++ranura) {
        msglocal_establece_idioma(ranura);
        EXPECT_EQ(msglocal_dame_idioma(), ranura);
    }
    for (const unsigned long ranura : {41ul, 100ul, 0xFFFFFFFFul}) {
        msglocal_establece_idioma(ranura);
        EXPECT_EQ(toma_expresiones().size(), 1u) << ranura;
        EXPECT_EQ(msglocal_dame_idioma(), 40u) << ranura;  // nothing changed
    }
}

TEST(msglocal, se_da_el_texto_del_idioma_sin_su_prefijo) {
    for (unsigned long ranura = 0; ranura <= 40; ++ranura) {
        msglocal_establece_idioma(ranura);
        EXPECT_EQ(u8(nousar_msglocal_original_u(prefijo_de_7)), std::to_string(ranura));
        EXPECT_EQ(u8(nousar_msglocal_original_u(prefijo_de_8)), std::to_string(ranura));
        EXPECT_EQ(u8(nousar_original_u(prefijo_de_8)), std::to_string(ranura));
    }
}
