#include <gtest/gtest.h>

#include "apoyo/memoria_guardada.hpp"

namespace apoyo {
testing::TestEventListener* crea_alrededor();
}

int main(int argc, char** argv) {
    apoyo::guarda_la_memoria_si_se_pide();
    testing::InitGoogleTest(&argc, argv);
    // Ahead of the printer: what it finds after a test still belongs to that test.
    auto& oyentes = testing::UnitTest::GetInstance()->listeners();
    testing::TestEventListener* impresora = oyentes.Release(oyentes.default_result_printer());
    oyentes.Append(impresora);
    oyentes.Append(apoyo::crea_alrededor());
    return RUN_ALL_TESTS();
}
