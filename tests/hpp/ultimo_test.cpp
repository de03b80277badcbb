// Service mode, which is for good: the last of the tests, whatever order the linker gave to the rest.
#include "hpp/apoyo.hpp"

namespace {

class ultimo : public hpp::prueba_de_disco {
    void TestBody() override;
};

void ultimo::TestBody() {
    int preguntas = 0;
    lumodir::receptor_preguntas pregunta([&](std::wstring_view, unsigned long) { return ++preguntas < 2; });
    const hpp::fs::path tomado = fichero(L"tomado");
    const HANDLE mio = ::CreateFileW(tomado.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_FALSE(lumodir::cdir::borra_fichero(tomado));
    EXPECT_EQ(preguntas, 2);
    lumodir::establece_modo_servicio_sin_reintentos();
    EXPECT_FALSE(lumodir::cdir::borra_fichero(tomado));
    EXPECT_EQ(preguntas, 2);
    EXPECT_FALSE(lumodir::cdir::path_valido(L"9:\\a", true));
    ::CloseHandle(mio);
}

}  // namespace

void hpp::registra_ultimo() {
    testing::RegisterTest("ultimo", "el_modo_servicio_no_pregunta_ni_avisa", nullptr, nullptr, __FILE__,
                          __LINE__, []() -> prueba_de_disco* { return new ultimo; });
}
