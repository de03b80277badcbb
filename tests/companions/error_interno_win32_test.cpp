// A report without a receiver also reaches a debugger: Windows hands it over as an exception of its own.
#include "apoyo/apoyo.hpp"
#include "companions/error_interno.h"
#include "companions/error_interno.hpp"
#include "companions/sistema.hpp"

using namespace apoyo;
using namespace interno;

namespace {

std::vector<std::string> g_depurador;

LONG CALLBACK escucha(EXCEPTION_POINTERS* excepcion) {
    constexpr DWORD texto_ancho = 0x4001000A;  // DBG_PRINTEXCEPTION_WIDE_C
    constexpr DWORD texto_8_bits =
        0x40010006;  // DBG_PRINTEXCEPTION_C: what follows when nobody took the other
    const EXCEPTION_RECORD& registro = *excepcion->ExceptionRecord;
    if (registro.ExceptionCode == texto_ancho) {
        g_depurador.push_back(u8(reinterpret_cast<const wchar_t*>(registro.ExceptionInformation[1])));
        return EXCEPTION_CONTINUE_EXECUTION;
    }
    if (registro.ExceptionCode == texto_8_bits) {
        g_depurador.push_back(de_cp1252(reinterpret_cast<const char*>(registro.ExceptionInformation[1])));
        return EXCEPTION_CONTINUE_EXECUTION;
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

TEST(error_interno, sin_receptor_la_linea_llega_al_depurador) {
    void* oyente = ::AddVectoredExceptionHandler(1, escucha);
    g_depurador.clear();
    error_interno_establece_receptor(nullptr, nullptr);
    testing::internal::CaptureStderr();
    error_interno_msg_u("a != b", L"detalle", lugar::aqui("timefich.cpp", 9));
    const std::string error_estandar = testing::internal::GetCapturedStderr();
    ::RemoveVectoredExceptionHandler(oyente);
    ASSERT_FALSE(g_depurador.empty());
    EXPECT_EQ(g_depurador.front(), "internal error: timefich (LUMODIR.DLL), line 9: a != b [detalle]\n");
    EXPECT_EQ(error_estandar, g_depurador.front());
}

TEST(error_interno, sin_receptor_se_conserva_el_ultimo_error) {
    error_interno_establece_receptor(nullptr, nullptr);
    testing::internal::CaptureStderr();
    ::SetLastError(1234);
    error_interno_msg_u("x", L"ñ\u4E2D", lugar::aqui("arr.cpp", 1));
    const DWORD codigo = ::GetLastError();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "internal error: lumodir (LUMODIR.DLL), line 1: x [ñ\u4E2D]\n");  // UTF-8
    EXPECT_EQ(codigo, 1234u);
}

// A line has room for 2,048 units: a pair that does not fit whole is left out whole.
TEST(error_interno, sin_receptor_una_linea_larga_no_acaba_en_medio_par) {
    error_interno_establece_receptor(nullptr, nullptr);
    for (std::size_t delante = 1990; delante < 1992; ++delante) {
        texto_w detalle(delante, L'a');
        for (int i = 0; i < 30; ++i) {
            detalle += L"\xD83D\xDE00";
        }
        testing::internal::CaptureStderr();
        error_interno_msg_u("x", detalle.c_str(), lugar::aqui("arr.cpp", 1));
        const std::string linea = testing::internal::GetCapturedStderr();
        EXPECT_EQ(linea.substr(linea.size() - 5), "\U0001F600\n") << delante;
    }
}
