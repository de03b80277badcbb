#include <gtest/gtest.h>

namespace dll {
void registra_nulos();
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    dll::registra_nulos();
    return RUN_ALL_TESTS();
}
