// Warnings to the user: through the host's receiver, or to standard error.
#include "companions/lmaviso.hpp"

#include <stdexcept>

#include "apoyo/apoyo.hpp"
#include "companions/lmaviso.h"

using namespace apoyo;
using namespace interno;

TEST(lmaviso, el_texto_y_el_contexto_llegan_al_receptor) {
    static std::vector<std::pair<std::string, void*>> recibidos;
    recibidos.clear();
    int mio = 0;
    lmaviso_establece_receptor(
        [](const wchar_t* texto, void* contexto) { recibidos.emplace_back(u8(texto), contexto); }, &mio);
    lmaviso_aviso_interno_como_error_u(L"uno\ndos");
    lmaviso_aviso_interno_como_error_u(L"");
    ASSERT_EQ(recibidos.size(), 2u);
    EXPECT_EQ(recibidos[0], (std::pair<std::string, void*>("uno\ndos", &mio)));
    EXPECT_EQ(recibidos[1].first, "");
}

TEST(lmaviso, sin_receptor_el_texto_va_al_error_estandar) {
    lmaviso_establece_receptor(nullptr, nullptr);
    testing::internal::CaptureStderr();
    lmaviso_aviso_interno_como_error_u(L"un aviso\nde dos lineas");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "un aviso\nde dos lineas\n");
}

TEST(lmaviso, un_receptor_que_lanza_no_detiene_a_quien_avisa) {
    static int llamadas;
    llamadas = 0;
    lmaviso_establece_receptor(
        [](const wchar_t*, void*) {
            ++llamadas;
            throw std::runtime_error("no");
        },
        nullptr);
    lmaviso_aviso_interno_como_error_u(L"x");
    EXPECT_EQ(llamadas, 1);
}
