// The guard against dialogs of the system: the thread's mode while it lives and afterwards, and what it costs.
#include "companions/sin_dialogos.hpp"

#include "apoyo/apoyo.hpp"

using namespace apoyo;
using namespace interno;

namespace {

unsigned g_miradas;
unsigned g_cambios;
DWORD WINAPI mira() {
    ++g_miradas;
    return ::GetThreadErrorMode();
}
BOOL WINAPI cambia(DWORD modo, DWORD* antes) {
    ++g_cambios;
    const BOOL bien = ::SetThreadErrorMode(modo, antes);
    ::SetLastError(ERROR_INVALID_PARAMETER);  // nobody promises that it leaves the code alone
    return bien;
}
BOOL WINAPI no_cambia(DWORD, DWORD*) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
}

class modo_del_hilo {
public:
    explicit modo_del_hilo(DWORD modo) { ::SetThreadErrorMode(modo, &antes_); }
    ~modo_del_hilo() { ::SetThreadErrorMode(antes_, nullptr); }
    modo_del_hilo(const modo_del_hilo&) = delete;
    modo_del_hilo& operator=(const modo_del_hilo&) = delete;

private:
    DWORD antes_ = 0;
};

}  // namespace

TEST(sin_dialogos, el_modo_cambia_mientras_vive_y_vuelve) {
    const sustituye m(sistema.GetThreadErrorMode, mira);
    const sustituye c(sistema.SetThreadErrorMode, cambia);
    constexpr DWORD callado = SEM_FAILCRITICALERRORS;
    const struct {
        DWORD modo;
        DWORD dentro;
        unsigned cambios;
    } filas[] = {
        {.modo = 0, .dentro = callado, .cambios = 2},
        {.modo = SEM_NOGPFAULTERRORBOX, .dentro = SEM_NOGPFAULTERRORBOX | callado, .cambios = 2},
        {.modo = SEM_NOOPENFILEERRORBOX, .dentro = SEM_NOOPENFILEERRORBOX | callado, .cambios = 2},
        {.modo = callado, .dentro = callado, .cambios = 0},  // the host's own: a look is all it costs
        {.modo = callado | SEM_NOGPFAULTERRORBOX, .dentro = callado | SEM_NOGPFAULTERRORBOX, .cambios = 0},
    };
    for (const auto& f : filas) {
        SCOPED_TRACE(f.modo);
        const modo_del_hilo modo(f.modo);
        g_miradas = g_cambios = 0;
        {
            const sin_dialogos uno;
            EXPECT_EQ(::GetThreadErrorMode(), f.dentro);
            {
                const sin_dialogos otro;  // one around another
                EXPECT_EQ(::GetThreadErrorMode(), f.dentro);
            }
            EXPECT_EQ(::GetThreadErrorMode(), f.dentro);
            ::SetLastError(ERROR_NOT_READY);
        }
        EXPECT_EQ(::GetLastError(), static_cast<DWORD>(ERROR_NOT_READY)) << "the code of the call is lost";
        EXPECT_EQ(::GetThreadErrorMode(), f.modo);
        EXPECT_EQ(g_miradas, 2u);
        EXPECT_EQ(g_cambios, f.cambios);
    }
}

TEST(sin_dialogos, un_sistema_que_no_lo_cambia_no_estorba) {
    const sustituye c(sistema.SetThreadErrorMode, no_cambia);
    const modo_del_hilo modo(0);
    {
        const sin_dialogos callado;
        ::SetLastError(ERROR_NOT_READY);
    }
    EXPECT_EQ(::GetLastError(), static_cast<DWORD>(ERROR_NOT_READY));
    EXPECT_EQ(::GetThreadErrorMode(), 0u);
}
