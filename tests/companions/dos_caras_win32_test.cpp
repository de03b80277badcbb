// The face for hosts (lumodir.hpp) and the inside in one source: the same names, two namespaces.
#include "apoyo/apoyo.hpp"
#include "companions/arr.hpp"
#include "companions/error_interno.hpp"
#include "lumodir.hpp"

using namespace apoyo;

namespace {

TEST(dos_caras, los_mismos_nombres_dicen_cosas_distintas_en_una_fuente) {
    const unsigned long long vivos = interno::i_bloques_vivos();
    {
        const lumodir::cadena de_fuera = lumodir::cdir::nombre_base_fichero(L"C:\\año\\nombre.txt");
        const interno::cadena_w de_dentro{interno::vista_w(de_fuera.c_str())};
        EXPECT_EQ(u8(de_dentro.ver()), "nombre");
        EXPECT_EQ(interno::i_bloques_vivos(), vivos + 2);
    }
    EXPECT_EQ(interno::i_bloques_vivos(), vivos);
}

}  // namespace
