// The shared warning routine, the start-up settings, and service mode, which silences both kinds of telling.
#include "frame/avisos.hpp"

#include "apoyo/apoyo.hpp"
#include "companions/buclrein.h"
#include "companions/buclrein.hpp"
#include "companions/msglocal.h"
#include "frame/catalogo.hpp"
#include "lumodir.h"

using namespace apoyo;
using namespace interno;

TEST(avisos, un_texto_se_muestra_como_es) {
    i_muestra_texto(L"100% ñ");
    ESPERA_AVISOS("100% ñ");
}

TEST(avisos, un_argumento_nunca_se_lee_como_formato) {
    i_muestra_mensaje(i_msg_53955_fichero_no_correcto, L"C:\\100%s%d%%\\ñ");
    ESPERA_AVISOS("The file 'C:\\100%s%d%%\\ñ' is not correct");
    i_muestra_mensaje(i_msg_53955_fichero_no_correcto, L"");
    ESPERA_AVISOS("The file '' is not correct");
}

TEST(avisos, el_mensaje_se_da_en_el_idioma_puesto) {
    struct fila {
        unsigned long ranura;
        const char* texto;
    };
    const fila filas[] = {
        {.ranura = 0, .texto = "El fichero 'x' no es correcto"},
        {.ranura = 6, .texto = "El archivo 'x' no es correcto"},
        {.ranura = 8, .texto = "The file 'x' is not correct"},
        {.ranura = 15, .texto = "El fichero 'x' no es correcto"},  // reserved, below 24: Spanish
        {.ranura = 34, .texto = "The file 'x' is not correct"},    // reserved, above: English
    };
    for (const fila& f : filas) {
        msglocal_establece_idioma(f.ranura);
        EXPECT_EQ(u8(i_mensaje(i_msg_53955_fichero_no_correcto, {L"x"}).c_str()), f.texto) << f.ranura;
    }
}

TEST(avisos, los_argumentos_van_en_su_orden_y_los_numeros_tambien) {
    EXPECT_EQ(u8(i_mensaje(i_msg_374376_path_demasiado_largo, {L"C:\\x", 10240L}).c_str()),
              "The length of path 'C:\\x' exceeds the maximum permitted length (10240).");
    EXPECT_EQ(u8(i_mensaje(i_msg_53960_sin_nombre_de_directorio).c_str()),
              "You have not specified any directory name");
}

TEST(avisos, en_modo_servicio_nada_se_muestra_ni_se_reintenta) {
    EXPECT_FALSE(i_modo_servicio());
    lumodir_establece_modo_servicio_sin_reintentos();
    EXPECT_TRUE(i_modo_servicio());
    lumodir_establece_modo_servicio_sin_reintentos();  // there is no way back
    EXPECT_TRUE(i_modo_servicio());
    i_muestra_mensaje(i_msg_53955_fichero_no_correcto, L"x");
    i_muestra_texto(L"x");
    const reservas_contadas reservas;
    i_muestra_mensaje(i_msg_53955_fichero_no_correcto, vista_a(std::string(1000, 'x')));
    EXPECT_EQ(reservas.toma(), 0u);  // nothing is put together that nobody sees
    ESPERA_AVISOS();
    int intentos = 0;
    i_con_reintentos(
        true, true,
        [&] {
            ++intentos;
            return false;
        },
        [](BuclRein& bucle) {
            buclrein_set_mensaje_reintentar(
                bucle, [] { return cadena_w(vista_w(L"x")); }, 5);
        });
    EXPECT_EQ(intentos, 1);
    EXPECT_TRUE(toma_esperas().empty());
    EXPECT_TRUE(toma_preguntas().empty());
}

TEST(avisos, la_funcion_de_fichero_abierto_se_pone_se_cambia_y_se_quita) {
    EXPECT_EQ(i_func_comprobar_fichero_no_esta_abierto(), nullptr);
    const LumodirFncComprobarFichero primera = [](const wchar_t*) -> unsigned short { return 1; };
    const LumodirFncComprobarFichero segunda = [](const wchar_t*) -> unsigned short { return 2; };
    lumodir_set_func_comprobar_fichero_no_esta_abierto(primera);
    EXPECT_EQ(i_func_comprobar_fichero_no_esta_abierto(), primera);
    lumodir_set_func_comprobar_fichero_no_esta_abierto(segunda);
    EXPECT_EQ(i_func_comprobar_fichero_no_esta_abierto(), segunda);
    lumodir_set_func_comprobar_fichero_no_esta_abierto(nullptr);
    EXPECT_EQ(i_func_comprobar_fichero_no_esta_abierto(), nullptr);
}
