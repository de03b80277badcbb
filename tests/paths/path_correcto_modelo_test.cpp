// The path checker against a naive model, over every short text and many long ones, in both flavours: the answer,
// the reason, the component that the message names, and whether the path is a network path.
#include <map>

#include "apoyo/apoyo.hpp"
#include "cdir.h"
#include "companions/lumospy.h"
#include "paths/modelos.hpp"
#include "paths/path_correcto.hpp"

using namespace apoyo;
using interno::i_path_correcto;
using interno::i_path_correcto_con_comodines;
using interno::i_path_correcto_con_comodines_UNICODE;
using interno::i_path_correcto_UNICODE;
using modelos::prueba_en_bufer;

namespace {

// What the check notes for who cuts the path.
template <class C>
bool corta_como_el_crt(interno::vista<C> path) {
    const interno::trozos_de_ruta<C> esperados = interno::crt_splitpath(path);
    for (const interno::trozos_de_ruta<C>& trozos :
         {interno::i_juzga(path).trozos(), interno::i_juzga_con_comodines(path).trozos()}) {
        if (trozos.unidad != esperados.unidad || trozos.directorio != esperados.directorio ||
            trozos.nombre != esperados.nombre || trozos.extension != esperados.extension) {
            return false;
        }
    }
    return true;
}

interno::vista_w ver(const texto_w& texto) {
    return interno::vista_w(texto);
}

// The reasons that were met, so that a text generator gone lame is seen.
using recuento = std::map<int, std::size_t>;

void compara_con_el_modelo(const std::string& texto, recuento& motivos) {
    SCOPED_TRACE("[" + texto + "]");
    const unsigned long long vivos = lumospy_bloques_vivos();
    const texto_w path = w(texto);
    const texto_w copia = path;
    const modelos::juicio entero = modelos::juzga(path);
    const interno::veredicto juicio = i_path_correcto_UNICODE(ver(path));
    EXPECT_EQ(juicio.correcto, entero.motivo == 0);
    EXPECT_EQ(juicio.es_unc, entero.es_unc);
    EXPECT_EQ(juicio.motivo == nullptr, juicio.correcto);
    if (juicio.motivo != nullptr) {
        EXPECT_EQ(u8(interno::i_texto_del_fallo(juicio, ver(path)).ver()),
                  modelos::texto_en_ingles(entero.motivo, u8(ver(entero.argumento))));
    }
    EXPECT_EQ(i_path_correcto_UNICODE(ver(path), true).correcto, entero.motivo == 0 || path.empty());

    EXPECT_TRUE(corta_como_el_crt(ver(path)));

    const modelos::juicio recortado = modelos::juzga(modelos::recortado(path));
    wchar_t* mensaje = nullptr;
    EXPECT_EQ(cdir_path_valido_UNICODE(path.c_str(), 0), recortado.motivo == 0);
    EXPECT_EQ(cdir_es_path_valido_UNICODE(path.c_str(), &mensaje), recortado.motivo == 0);
    EXPECT_EQ(toma(mensaje), recortado.motivo == 0
                                 ? "(NULL)"
                                 : modelos::texto_en_ingles(recortado.motivo, u8(ver(recortado.argumento))));
    EXPECT_EQ(path, copia);

    const texto_w probado = modelos::sin_comodines(path);
    const modelos::juicio con_comodines = modelos::juzga(probado);
    const interno::veredicto comodines = i_path_correcto_con_comodines_UNICODE(ver(path));
    EXPECT_EQ(comodines.correcto, con_comodines.motivo == 0);
    EXPECT_EQ(comodines.es_unc, con_comodines.es_unc);

    const bool nombre = path == L"." || path == L".." || modelos::nombre_valido(path);
    EXPECT_EQ(prueba_en_bufer(cdir_nombre_base_valido_UNICODE, path).valido, nombre);
    EXPECT_EQ(prueba_en_bufer(cdir_nombre_fichero_valido, path).valido,
              modelos::nombre_valido(path) && path.back() != L'.');
    EXPECT_EQ(lumospy_bloques_vivos(), vivos);
    ++motivos[entero.motivo];
}

// Texts that the code page holds, so that both flavours must answer alike.
void compara_las_dos_variantes(const std::string& texto) {
    SCOPED_TRACE("[" + texto + "]");
    const unsigned long long vivos = lumospy_bloques_vivos();
    const texto_w path = w(texto);
    const texto_a path_a = cp1252(texto);
    const texto_a copia = path_a;
    const modelos::juicio entero = modelos::juzga(path);
    const interno::veredicto juicio = i_path_correcto(path_a);
    EXPECT_EQ(juicio.correcto, entero.motivo == 0);
    EXPECT_EQ(juicio.es_unc, entero.es_unc);
    EXPECT_TRUE(corta_como_el_crt(interno::vista_a(path_a)));
    EXPECT_EQ(cdir_path_valido(path_a.c_str(), 0), modelos::juzga(modelos::recortado(path)).motivo == 0);
    const modelos::juicio con_comodines = modelos::juzga(modelos::sin_comodines(path));
    const interno::veredicto comodines = i_path_correcto_con_comodines(path_a);
    EXPECT_EQ(comodines.correcto, con_comodines.motivo == 0);
    EXPECT_EQ(comodines.es_unc, con_comodines.es_unc);
    EXPECT_EQ(cdir_nombre_base_valido(path_a.c_str()),
              path == L"." || path == L".." || modelos::nombre_valido(path));
    EXPECT_EQ(path_a, copia);
    EXPECT_EQ(lumospy_bloques_vivos(), vivos);
}

TEST(path_correcto_modelo, igual_que_el_modelo_en_todo_texto_corto) {
    recuento motivos;
    const std::size_t vistos = modelos::para_cada_texto(modelos::alfabeto, modelos::longitud_exhaustiva,
                                                        [&](const std::string& texto) {
                                                            compara_con_el_modelo(texto, motivos);
                                                            compara_las_dos_variantes(texto);
                                                        });
    EXPECT_EQ(vistos, modelos::cuantos_textos(modelos::alfabeto.size(), modelos::longitud_exhaustiva));
    for (const int motivo : {0, 53949, 53957, 53958, 53959, 53960}) {
        EXPECT_GT(motivos[motivo], 0u) << motivo;
    }
}

TEST(path_correcto_modelo, igual_que_el_modelo_en_textos_al_azar) {
    modelos::fabrica fabrica(20240517);
    recuento motivos;
    for (int i = 0; i < 10000 && !HasFailure(); ++i) {
        compara_con_el_modelo(fabrica.texto(), motivos);
        compara_las_dos_variantes(fabrica.texto(true));
    }
    for (const int motivo : {0, 53949, 53957, 53958, 53959, 53960, 374376}) {
        EXPECT_GT(motivos[motivo], 0u) << motivo;
    }
}

TEST(path_correcto_modelo, igual_que_el_modelo_alrededor_de_los_limites) {
    recuento motivos;
    for (const std::size_t longitud : {254u, 255u, 256u, 257u}) {
        for (const std::string cola : {"", " ", "   ", ".", ".txt", "\\", "ñ", "😀"}) {
            for (const std::string cabeza : {"", "C:\\", "\\\\srv\\share\\", "con.", " "}) {
                compara_con_el_modelo(cabeza + std::string(longitud, 'x') + cola, motivos);
            }
        }
    }
    for (std::size_t longitud = 10237; longitud <= 10243; ++longitud) {
        for (const std::string cola : {"", " ", "   ", ".", "..", "\\.", ":", "|", "\xED\xA0\x80", "😀"}) {
            compara_con_el_modelo("C:" + std::string(longitud - 2, '\\') + cola, motivos);
            compara_con_el_modelo(std::string(longitud, '/') + cola, motivos);
        }
    }
    for (const int motivo : {0, 53949, 53957, 53958, 53959, 374376}) {
        EXPECT_GT(motivos[motivo], 0u) << motivo;
    }
}

// The path is read in stretches: what decides may stand in one and what it decides on in another.
TEST(path_correcto_modelo, igual_que_el_modelo_en_cada_sitio) {
    recuento motivos;
    for (std::size_t delante = 0; delante < 140; ++delante) {
        std::string cabeza = delante % 3 == 0 ? "" : delante % 3 == 1 ? "C:" : "\\\\";
        while (cabeza.size() < delante) {
            cabeza += cabeza.size() % 11 == 10 ? '\\' : 'a';
        }
        for (const char* nombre :
             {"\\con", "xcon", "/lumodev", "\\$mmxxxx0", "/setverxxy", "\\b ", "a.b", "|", "\\ "}) {
            for (const char* cola : {"", "\\b", ".c", " \\b", "bb/cc.d/ee"}) {
                compara_con_el_modelo(cabeza + nombre + cola, motivos);
                compara_las_dos_variantes(cabeza + nombre + cola);
            }
        }
    }
    for (const int motivo : {0, 53949}) {
        EXPECT_GT(motivos[motivo], 0u) << motivo;
    }
}

TEST(path_correcto_modelo, textos_de_todo_tamanyo) {
    recuento motivos;
    for (const std::size_t longitud : {0u, 1u, 32767u, 100000u}) {
        for (const char* letra : {"a", " ", ".", "\\", "ñ", "\x02", "\xED\xBF\xBF"}) {
            const std::string texto = modelos::repite(letra, longitud);
            compara_con_el_modelo(texto, motivos);
            if (letra[0] != '\xED') {
                compara_las_dos_variantes(texto);
            }
        }
    }
}

}  // namespace
