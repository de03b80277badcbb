// Service mode, which is for good: in a process of its own, for no test may leave it to the others.
#include <process.h>

#include <cerrno>
#include <cstdlib>

#include "hpp/apoyo.hpp"

namespace {

class servicio : public hpp::prueba_de_disco {};

// Runs this very test once more, as a program by itself; false in that one.
bool va_aparte() {
    constexpr const wchar_t* ya = L"LUMODIR_PRUEBA_APARTE";
    if (::_wgetenv(ya) != nullptr) {
        return false;
    }
    wchar_t programa[MAX_PATH];
    ::GetModuleFileNameW(nullptr, programa, MAX_PATH);
    const testing::TestInfo& esta = *testing::UnitTest::GetInstance()->current_test_info();
    const std::string filtro = std::string("--gtest_filter=") + esta.test_suite_name() + "." + esta.name();
    const std::wstring ancho(filtro.begin(), filtro.end());
    ::_wputenv_s(ya, L"1");
    errno = 0;
    EXPECT_EQ(::_wspawnl(_P_WAIT, programa, L"test_hpp", ancho.c_str(), L"--gtest_output=", nullptr), 0)
        << "errno " << errno << ", error " << ::GetLastError();
    ::_wputenv_s(ya, L"");
    return true;
}

TEST_F(servicio, no_pregunta_ni_avisa) {
    if (va_aparte()) {
        return;
    }
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
