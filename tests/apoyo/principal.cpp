#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <optional>

#include "apoyo/memoria_guardada.hpp"
#include "apoyo/textos.hpp"
#include "companions/plataforma.hpp"
#ifdef _WIN32
#include "apoyo/como_windows.hpp"
#include "apoyo/hijo.hpp"
#include "apoyo/temporal.hpp"
#endif

namespace apoyo {
testing::TestEventListener* crea_alrededor();
}

// LUMODIR_PAGINA: the code page of 8-bit text in this run. LUMODIR_ACP: that which the machine must have, or the run
// shows nothing of it.
int main(int argc, char** argv) {
#ifdef _WIN32
    apoyo::va_al_temporal_pedido();
    apoyo::papel::representa_si_se_pide();
#endif
    if (const char* esperada = std::getenv("LUMODIR_ACP")) {
        std::printf("code page of the machine: %u\n", apoyo::pagina());
        if (apoyo::pagina() != static_cast<unsigned>(std::atoi(esperada))) {
            return 1;
        }
    }
    if (const char* pagina = std::getenv("LUMODIR_PAGINA")) {
        interno::plataforma::pagina_de_codigos = static_cast<unsigned>(std::atoi(pagina));
    }
    apoyo::guarda_la_memoria_si_se_pide();
    testing::InitGoogleTest(&argc, argv);
    // Ahead of the printer: what it finds after a test still belongs to that test.
    auto& oyentes = testing::UnitTest::GetInstance()->listeners();
    testing::TestEventListener* impresora = oyentes.Release(oyentes.default_result_printer());
    oyentes.Append(impresora);
    oyentes.Append(apoyo::crea_alrededor());
#ifdef _WIN32
    // For the whole run Wine answers as Windows does.
    std::optional<apoyo::como_windows> toda_la_vez;
    if (apoyo::se_pide_como_windows()) {
        toda_la_vez.emplace(apoyo::escenario_windows());
    }
#endif
    return RUN_ALL_TESTS();
}
