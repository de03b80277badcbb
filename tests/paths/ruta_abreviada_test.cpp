// Abbreviated paths: the known results row by row, and every small directory with every maximum against a
// model that follows the rules step by step with signed numbers and lists of texts.
#include "apoyo/apoyo.hpp"
#include "cdir.h"
#include "companions/cadena.hpp"
#include "modelos/abreviada.hpp"
#include "paths/modelos.hpp"

using modelos::incorrecto;
using namespace apoyo;
using interno::vista_w;

namespace {

std::string abrevia(const std::string& ruta, unsigned short maximo) {
    return toma(cdir_ruta_abreviada_con_logitud_maxima_u(w(ruta).c_str(), maximo));
}

}  // namespace

TEST(ruta_abreviada, acorta_hacia_el_maximo) {
    const char* fotos = "C:\\Files\\Customers\\Site2024\\Images\\Ground\\photo1.png";  // 52
    const char* un_largo = "C:\\a\\b\\MuyLargoNombreDeDirectorio\\c\\f.txt";           // 41
    struct caso {
        const char* ruta;
        unsigned short maximo;
        const char* resultado;
    };
    const caso casos[] = {
        {.ruta = fotos, .maximo = 60, .resultado = fotos},
        {.ruta = fotos, .maximo = 52, .resultado = fotos},
        {.ruta = fotos, .maximo = 65535, .resultado = fotos},
        {.ruta = fotos, .maximo = 40, .resultado = "C:\\Files\\...\\Ground\\photo1.png"},  // 30
        {.ruta = fotos, .maximo = 30, .resultado = "C:\\Files\\...\\Ground\\photo1.png"},
        {.ruta = fotos, .maximo = 20, .resultado = "C:\\...\\photo1.png"},
        {.ruta = fotos, .maximo = 18, .resultado = "C:\\...\\photo1.png"},
        {.ruta = fotos, .maximo = 17, .resultado = "C:\\...\\photo1.png"},
        {.ruta = fotos, .maximo = 0, .resultado = "C:\\...\\photo1.png"},
        {.ruta = un_largo, .maximo = 30, .resultado = "C:\\a\\b\\...\\c\\f.txt"},  // one saves it all
        {.ruta = "C:\\ab\\f_largo_nombre.txt",
         .maximo = 10,
         .resultado = "C:\\...\\f_largo_nombre.txt"},  // longer than the maximum and than the path
        {.ruta = "f.txt", .maximo = 0, .resultado = "\\...\\f.txt"},
        {.ruta = "f.txt", .maximo = 4, .resultado = "\\...\\f.txt"},
        {.ruta = "f.txt", .maximo = 5, .resultado = "f.txt"},
        {.ruta = "", .maximo = 0, .resultado = ""},
        {.ruta = "C:\\abc\\f   ", .maximo = 9, .resultado = "C:\\abc\\f   "},  // a directory of 5 stays
        {.ruta = "C:\\abc\\f   ", .maximo = 8, .resultado = "C:\\...\\f"},
        {.ruta = "\\\\srv\\share\\uno\\dos\\tres\\f.txt",
         .maximo = 28,
         .resultado = "\\\\srv\\share\\...\\f.txt"},
        {.ruta = "\\\\srv\\share\\uno\\dos\\tres\\f.txt",
         .maximo = 29,
         .resultado = "\\\\srv\\share\\uno\\dos\\...\\f.txt"},
        // One component saves it all, though another one had been left out before.
        {.ruta = "C:/uno/dos/tres/cuatro/f.txt",
         .maximo = 27,
         .resultado = "C:\\uno\\dos\\...\\cuatro\\f.txt"},
        {.ruta = "C:\\Añadidos\\Señales\\€€€\\número.ñ",
         .maximo = 29,
         .resultado = "C:\\...\\Señales\\€€€\\número.ñ"},
        {.ruta = "C:\\a\\\\perdido\\b\\f.txt", .maximo = 19, .resultado = "C:\\a\\...\\f.txt"},
    };
    for (const caso& c : casos) {
        EXPECT_EQ(abrevia(c.ruta, c.maximo), c.resultado) << c.ruta << " to " << c.maximo;
    }
}

TEST(ruta_abreviada, una_ruta_incorrecta_avisa_solo_si_se_acorta) {
    EXPECT_EQ(abrevia("C:\\dir?\\otro\\mas\\f.txt", 22), "C:\\dir?\\otro\\mas\\f.txt");
    ESPERA_AVISOS();
    EXPECT_EQ(abrevia("C:\\dir?\\otro\\mas\\f.txt  ", 0), "C:\\...\\f.txt");
    ESPERA_AVISOS(incorrecto("C:\\dir?\\otro\\mas\\f.txt"));
    EXPECT_EQ(abrevia("  ", 0), "\\...\\");
    ESPERA_AVISOS(incorrecto(""));
}

TEST(ruta_abreviada, invariantes_rotos_se_comunican_y_se_sigue) {
    // Trailing blanks count in the path and in no piece: they eat up the directory's share.
    EXPECT_EQ(abrevia("C:\\uno\\dos\\f       ", 15), "C:\\...\\f");
    ESPERA_INFORMES("tam_dir_abreviado > 5");
    for (unsigned short maximo = 11; maximo < 15; ++maximo) {
        EXPECT_EQ(abrevia("C:\\uno\\dos\\f       ", maximo), "C:\\...\\f");
        ESPERA_INFORMES("tam_dir_abreviado > 5", "widestr_longitud(dir_abreviado) <= tam_dir_abreviado");
    }
    EXPECT_EQ(abrevia("C:\\uno\\dos\\f       ", 10), "C:\\...\\f");  // nothing is left: the fixed form
    EXPECT_EQ(toma(cdir_ruta_abreviada_con_logitud_maxima_u(nullptr, 10)), "");
    const informe dado = toma_el_informe();
    EXPECT_EQ(dado.expresion, "(ruta) != NULL");
    EXPECT_EQ(dado.etiqueta, "lumodir (LUMODIR.DLL)");
}

TEST(ruta_abreviada, forma_fija_de_un_nombre) {
    struct caso {
        const char* ruta;
        const char* resultado;
        std::vector<std::string> avisos;
        std::vector<std::string> detalles;
    };
    const caso casos[] = {
        {"C:\\a\\b\\c\\f.txt", "C:\\...\\f.txt", {}, {}},
        {"C:\\x\\f.txt", "C:\\...\\f.txt", {}, {}},  // longer than the path
        {"f.txt", "\\...\\f.txt", {}, {}},
        {"f.txt  ", "\\...\\f.txt", {}, {}},
        {"C:f", "C:\\...\\f", {}, {}},
        {"C:\\a\\", "C:\\...\\", {}, {}},
        {"C:\\a\\.profile", "C:\\...\\.profile", {}, {}},
        {"C:\\a\\n.b c", "C:\\...\\n.b c", {}, {}},
        {"\\\\srv\\share\\a\\f.txt", "\\\\srv\\share\\...\\f.txt", {}, {}},
        {"C:/á/é/ñ.€", "C:\\...\\ñ.€", {}, {}},
        {"", "\\...\\", {"You have not specified any directory name"}, {""}},
        {"1:\\a\\f", "1:\\...\\f", {"The name of the disk drive must be a letter."}, {"1:\\a\\f"}},
        {"C:\\a|b\\f ", "C:\\...\\f", {}, {"C:\\a|b\\f"}},  // this rule has a message that is never shown
        {"a\\f.", "\\...\\f.", {"A point was found at beginning or end of the path: 'a\\f.'"}, {"a\\f."}},
    };
    for (const caso& c : casos) {
        EXPECT_EQ(toma(cdir_nombre_fichero_abreviado_UNICODE(w(c.ruta).c_str())), c.resultado) << c.ruta;
        EXPECT_EQ(toma_avisos(), c.avisos) << c.ruta;
        std::vector<std::string> detalles;
        for (const informe& i : toma_informes()) {
            EXPECT_EQ(i.expresion, "pathCorrecto == CIERTO");
            detalles.push_back(i.detalle);
        }
        EXPECT_EQ(detalles, c.detalles) << c.ruta;
    }
    EXPECT_EQ(toma(cdir_nombre_fichero_abreviado_UNICODE(nullptr)), "");
    ESPERA_INFORMES("(nombre) != NULL");
}

TEST(ruta_abreviada, textos_largos_y_sustitutos_sueltos) {
    const texto_w largo(100000, L'd');
    const texto_w ruta_larga = L"C:\\a\\" + largo + L"\\b\\f.txt";
    EXPECT_EQ(toma(cdir_ruta_abreviada_con_logitud_maxima_u(ruta_larga.c_str(), 40)), "C:\\a\\...\\b\\f.txt");
    EXPECT_EQ(toma(cdir_nombre_fichero_abreviado_UNICODE((L"C:\\a\\" + largo).c_str())),
              "C:\\...\\" + std::string(100000, 'd'));
    EXPECT_EQ(toma_avisos().size(), 2u);
    ESPERA_INFORMES("pathCorrecto == CIERTO");
    texto_w muchos = L"C:";
    for (int i = 0; i < 50000; ++i) {
        muchos += L"/d";
    }
    const texto_w corta = muchos + L"/f";
    const std::string abreviada = toma(cdir_ruta_abreviada_con_logitud_maxima_u(corta.c_str(), 65535));
    EXPECT_LE(abreviada.size(), 65535u);
    EXPECT_GT(abreviada.size(), 65520u);  // components of two units fill head and tail
    EXPECT_EQ(toma_avisos().size(), 1u);
    const wchar_t sueltos[] = {0xDC00, L'\\', 0xD800, 0xD800, 0xD800, 0xD800, L'\\', L'b', L'\\', 0xDBFF, 0};
    const wchar_t esperado[] = {L'\\', L'.', L'.', L'.', L'\\', 0xDBFF, 0};
    EXPECT_EQ(interno::cadena_w::adopta(cdir_ruta_abreviada_con_logitud_maxima_u(sueltos, 5)).ver(),
              vista_w(esperado));
}

namespace {

struct ruta_en_piezas {
    std::string unidad, directorio, nombre, ext;
    std::string blancos;  // after everything
    std::string entera() const { return unidad + directorio + nombre + ext + blancos; }
};

// A path with every maximum from 0 to one beyond its length.
void compara_abreviada(const ruta_en_piezas& r) {
    const std::string ruta = r.entera();
    const texto_w ancha = w(ruta);
    const modelos::piezas<texto_w> piezas = {w(r.unidad), w(r.directorio), w(r.nombre), w(r.ext)};
    for (std::size_t maximo = 0; maximo <= ruta.size() + 1; ++maximo) {
        const std::string dada = abrevia(ruta, static_cast<unsigned short>(maximo));
        std::vector<std::string> informes;
        const texto_w esperada = modelos::abreviada(
            ancha, static_cast<long>(maximo), [&] { return piezas; }, informes);
        ASSERT_EQ(dada, u8(vista_w(esperada))) << "'" << ruta << "' to " << maximo;
        ASSERT_EQ(toma_expresiones(), informes) << "'" << ruta << "' to " << maximo;
    }
}

// Directories of up to `componentes` components of these lengths, each between separators of these kinds. The
// first separator is a single one: two backslashes would begin a share.
void con_cada_directorio(std::size_t componentes, const std::vector<std::size_t>& longitudes,
                         const std::vector<std::string>& separadores, const std::string& directorio,
                         const std::function<void(const std::string&)>& accion) {
    for (const std::string& separador : separadores) {
        if (directorio.empty() && separador.size() > 1) {
            continue;
        }
        accion(directorio + separador);
        if (componentes > 0) {
            for (const std::size_t longitud : longitudes) {
                const char letra = static_cast<char>('a' + componentes);
                con_cada_directorio(componentes - 1, longitudes, separadores,
                                    directorio + separador + std::string(longitud, letra), accion);
            }
        }
    }
}

}  // namespace

TEST(ruta_abreviada, cada_directorio_pequenyo_con_cada_maximo_como_el_modelo) {
    unsigned directorios = 0;
    con_cada_directorio(4, {1, 2, 3, 5, 8, 13}, {"\\"}, "", [&](const std::string& directorio) {
        ++directorios;
        compara_abreviada({"C:", directorio, "f", ".txt", ""});
    });
    con_cada_directorio(3, {1, 4, 9}, {"\\", "/", "\\\\", "/\\"}, "", [&](const std::string& directorio) {
        ++directorios;
        compara_abreviada({"C:", directorio, "nombre", ".x", ""});
        compara_abreviada({"C:", directorio, "f", "", "    "});
    });
    con_cada_directorio(3, {1, 2, 7}, {"\\"}, "", [&](const std::string& directorio) {
        ++directorios;
        compara_abreviada({"\\\\srv\\share", directorio, "f", ".txt", ""});
        compara_abreviada({"", directorio.substr(directorio.size() > 1 ? 1 : 0), "f", ".txt", " "});
    });
    EXPECT_GT(directorios, 3000u);
}

TEST(ruta_abreviada, cada_texto_corto_con_cada_maximo_como_el_modelo) {
    modelos::para_cada_texto(
        modelos::alfabeto, modelos::longitud_exhaustiva - 1, [](const std::string& ruta) {
            SCOPED_TRACE("'" + ruta + "'");
            const texto_w ancha = w(ruta);
            modelos::dicho de_cortar;
            const modelos::piezas<texto_w> piezas = modelos::corta_comprobado(ancha, de_cortar);
            for (std::size_t maximo = 0; maximo <= ruta.size(); ++maximo) {
                std::vector<std::string> informes;
                const texto_w esperada = modelos::abreviada(
                    ancha, static_cast<long>(maximo), [&] { return piezas; }, informes);
                EXPECT_EQ(abrevia(ruta, static_cast<unsigned short>(maximo)), u8(vista_w(esperada)))
                    << maximo;
                const bool se_corta = maximo < ruta.size();
                informes.insert(informes.begin(), de_cortar.informes.begin(),
                                se_corta ? de_cortar.informes.end() : de_cortar.informes.begin());
                EXPECT_EQ(toma_expresiones(), informes) << maximo;
                EXPECT_EQ(toma_avisos(), se_corta ? de_cortar.avisos : std::vector<std::string>()) << maximo;
            }
            EXPECT_EQ(toma(cdir_nombre_fichero_abreviado_UNICODE(ancha.c_str())),
                      u8(vista_w(modelos::forma_fija(piezas))));
            std::vector<std::string> informes = de_cortar.informes;
            if (!de_cortar.avisos.empty()) {
                informes.insert(informes.begin(), "pathCorrecto == CIERTO");
            }
            EXPECT_EQ(toma_expresiones(), informes);
            const modelos::juicio j = modelos::juzga(modelos::recortado(ancha));
            const bool se_muestra = j.motivo != 0 && j.motivo != 53949;
            EXPECT_EQ(toma_avisos(),
                      se_muestra ? std::vector{modelos::texto_en_ingles(j.motivo, u8(vista_w(j.argumento)))}
                                 : std::vector<std::string>());
        });
}
