// Reports of internal errors: what the receiver gets, what happens without one, and receivers that throw.
#include "companions/error_interno.hpp"

#include <stdexcept>

#include "apoyo/apoyo.hpp"
#include "companions/anfitrion.hpp"
#include "companions/arr.h"
#include "companions/error_interno.h"
#include "companions/lumospy.h"
#include "companions/unicode.hpp"
#include "companions/widestr.h"
#ifndef _WIN32
#include "nativo/plataforma_nativa.hpp"
#endif

using namespace apoyo;
using namespace interno;

namespace {

// The default receiver while it lives; the recorder is put back by the next test's set-up.
std::string por_defecto(void (*accion)()) {
    error_interno_establece_receptor(nullptr, nullptr);
    testing::internal::CaptureStderr();
    accion();
    return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST(error_interno, cada_forma_de_informar_llega_entera) {
    const lugar donde = lugar::aqui("src/listings/dirwin.cpp", 12);
    error_interno("a != b", donde);
    EXPECT_EQ(toma_el_informe(), (informe{"a != b", "dirwin (LUMODIR.DLL)", 12, "(NULL)"}));
    error_interno_msg_u("a", L"ñ", donde);
    EXPECT_EQ(toma_el_informe(), (informe{"a", "dirwin (LUMODIR.DLL)", 12, "ñ"}));
    error_interno_msg_u("a", vista_w(L"abcdef", 3), donde);  // a piece of a text, terminated for the host
    EXPECT_EQ(toma_el_informe(), (informe{"a", "dirwin (LUMODIR.DLL)", 12, "abc"}));
    error_interno_msg("a", vista_a(cp1252("ñ€")), donde);  // 8-bit details arrive converted
    EXPECT_EQ(toma_el_informe(), (informe{"a", "dirwin (LUMODIR.DLL)", 12, "ñ€"}));
    error_interno_liberando_mensaje_u(cadena_w(vista_w(L"mensaje")), donde);
    EXPECT_EQ(toma_el_informe().detalle, "mensaje");
    error_interno_default_error(donde);
    EXPECT_EQ(toma_el_informe().linea, 12u);
}

TEST(error_interno, un_detalle_null_es_ningun_detalle) {
    error_interno_msg_u("a", static_cast<const wchar_t*>(nullptr));
    EXPECT_EQ(toma_el_informe().detalle, "(NULL)");
    error_interno_msg_u("a", vista_w());
    EXPECT_EQ(toma_el_informe().detalle, "(NULL)");
    error_interno_msg("a", vista_a());
    EXPECT_EQ(toma_el_informe().detalle, "(NULL)");
    error_interno_msg_u("a", vista_w(L""));
    EXPECT_EQ(toma_el_informe().detalle, "");
}

TEST(error_interno, comprobar_dice_si_se_cumple_e_informa_si_no) {
    EXPECT_TRUE(i_comprueba(true, "si"));
    EXPECT_TRUE(i_comprueba_con(true, "si", vista_w(L"x")));
    EXPECT_FALSE(i_comprueba(false, "no"));
    ESPERA_INFORMES("no");
    EXPECT_FALSE(i_comprueba_con(false, "no", vista_w(L"ñ")));
    EXPECT_EQ(toma_el_informe().detalle, "ñ");
    EXPECT_FALSE(i_comprueba_con(false, "no", vista_a(cp1252("ñ"))));
    EXPECT_EQ(toma_el_informe().detalle, "ñ");
    EXPECT_FALSE(i_comprueba_con(false, "no", L"ñ"));
    EXPECT_EQ(toma_el_informe().detalle, "ñ");
    EXPECT_FALSE(i_comprueba_con(false, "no", cp1252("ñ").c_str()));
    EXPECT_EQ(toma_el_informe().detalle, "ñ");
    EXPECT_FALSE(i_comprueba_con(false, "no", static_cast<const wchar_t*>(nullptr)));
    EXPECT_EQ(toma_el_informe().detalle, "(NULL)");
    EXPECT_FALSE(i_comprueba_con(false, "no", static_cast<const char*>(nullptr)));
    EXPECT_EQ(toma_el_informe().detalle, "(NULL)");
    const lugar aqui = lugar::aqui();
    i_comprueba(false, "no");  // the line of the assertion, not of the service
    EXPECT_EQ(toma_el_informe().linea, aqui.linea + 1);
}

TEST(error_interno, el_contexto_llega_como_se_dio) {
    static void* recibido;
    recibido = nullptr;
    int mio = 0;
    error_interno_establece_receptor(
        [](const char*, const char*, unsigned long, const wchar_t*, void* contexto) { recibido = contexto; },
        &mio);
    error_interno("x");
    EXPECT_EQ(recibido, &mio);
}

TEST(error_interno, un_receptor_que_lanza_no_detiene_a_quien_informa) {
    static int llamadas;
    llamadas = 0;
    error_interno_establece_receptor(
        [](const char*, const char*, unsigned long, const wchar_t*, void*) {
            ++llamadas;
            throw std::runtime_error("no");
        },
        nullptr);
    EXPECT_EQ(arr_NumElemsCADENA(nullptr), 0u);
    EXPECT_EQ(toma(widestr_nousar_copia(nullptr, "prueba", 1)), "");
    error_interno_msg("a", "detalle");  // and nothing leaks
    EXPECT_EQ(llamadas, 3);
}

TEST(error_interno, un_receptor_puede_llamar_a_la_biblioteca) {
    static int llamadas;
    llamadas = 0;
    error_interno_establece_receptor(
        [](const char*, const char*, unsigned long, const wchar_t*, void*) {
            if (++llamadas == 1) {
                arr_NumElemsCADENA(nullptr);  // reports inside a report
            }
        },
        nullptr);
    arr_NumElemsCADENA(nullptr);
    EXPECT_EQ(llamadas, 2);
}

TEST(error_interno, sin_receptor_va_una_linea_al_error_estandar) {
    EXPECT_EQ(por_defecto([] { error_interno("(x) != NULL", lugar::aqui("arr.cpp", 42)); }),
              "internal error: lumodir (LUMODIR.DLL), line 42: (x) != NULL\n");
    EXPECT_EQ(por_defecto([] { error_interno_msg_u("a", L"detalle", lugar::aqui("dirwin.cpp", 1)); }),
              "internal error: dirwin (LUMODIR.DLL), line 1: a [detalle]\n");
    EXPECT_EQ(por_defecto([] { error_interno_msg_u("a", L"dos\r\nlineas\n", lugar::aqui("arr.cpp", 1)); }),
              "internal error: lumodir (LUMODIR.DLL), line 1: a [dos  lineas ]\n");
    EXPECT_EQ(por_defecto([] { error_interno("x", lugar::del_anfitrion("programa.exe", 7)); }),
              "internal error: programa.exe, line 7: x\n");
}

#ifndef _WIN32
TEST(error_interno, sin_receptor_la_misma_linea_va_al_depurador) {
    static texto_w dicho;
    dicho.clear();
    const sustituye depurador(al_depurador, [](const wchar_t* linea) { dicho += linea; });
    const std::string oido = por_defecto([] {
        for (const std::size_t largo : {3000u, 5u}) {  // the short line lies where the long one has been
            error_interno(std::string(largo, 'x').c_str(), lugar::aqui("arr.cpp", 42));
        }
    });
    EXPECT_EQ(u8(dicho), oido);
}
#endif

TEST(error_interno, sin_receptor_un_detalle_enorme_se_corta_y_sigue_siendo_una_linea) {
    const std::string linea = por_defecto([] {
        const texto_w largo(50000, L'x');
        error_interno_msg_u("a", largo.c_str(), lugar::aqui("arr.cpp", 1));
    });
    EXPECT_EQ(linea.substr(0, 50), "internal error: lumodir (LUMODIR.DLL), line 1: a [");
    EXPECT_EQ(linea.size(), 2049u);
    EXPECT_EQ(linea.back(), '\n');
    const std::string de_etiqueta = por_defecto([] {
        const std::string largo(50000, 'y');
        error_interno(largo.c_str(), lugar::aqui("arr.cpp", 1));
    });
    EXPECT_EQ(de_etiqueta.size(), 2049u);
    EXPECT_EQ(de_etiqueta.substr(2046), "yy\n");
}

TEST(error_interno, sin_receptor_no_se_pide_memoria) {
    // Exhausted memory is reported through here.
    static unsigned peticiones;
    peticiones = 0;
    const sustituye reserva(memoria.reserva, [](std::size_t) -> void* {
        ++peticiones;
        return nullptr;
    });
    EXPECT_NE(por_defecto([] { error_interno("memoria disponible", lugar::aqui("lumospy.cpp", 1)); }), "");
    EXPECT_EQ(peticiones, 0u);
}

TEST(error_interno, una_consulta_contesta_por_quien_no_esta) {
    int veces = 0;
    const consulta<int> sin_nadie;
    EXPECT_EQ(sin_nadie.contesta(7), 7);
    const consulta<int> con_alguien{[](void* a_quien) { return ++*static_cast<int*>(a_quien) + 40; }, &veces};
    EXPECT_EQ(con_alguien.contesta(7), 41);
    EXPECT_EQ(con_alguien.contesta(7), 42);
    EXPECT_EQ(veces, 2);
}
