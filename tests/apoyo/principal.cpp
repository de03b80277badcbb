#include <gtest/gtest.h>

#include <cstdlib>

#include "apoyo/memoria_guardada.hpp"
#include "companions/plataforma.hpp"

namespace apoyo {
testing::TestEventListener* crea_alrededor();
}

// LUMODIR_PAGINA: the code page of 8-bit text in this run.
int main(int argc, char** argv) {
    if (const char* pagina = std::getenv("LUMODIR_PAGINA")) {
        lumodir::plataforma::pagina_de_codigos = static_cast<unsigned>(std::atoi(pagina));
    }
    apoyo::guarda_la_memoria_si_se_pide();
    testing::InitGoogleTest(&argc, argv);
    // Ahead of the printer: what it finds after a test still belongs to that test.
    auto& oyentes = testing::UnitTest::GetInstance()->listeners();
    testing::TestEventListener* impresora = oyentes.Release(oyentes.default_result_printer());
    oyentes.Append(impresora);
    oyentes.Append(apoyo::crea_alrededor());
    return RUN_ALL_TESTS();
}
