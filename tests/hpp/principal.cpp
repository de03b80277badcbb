#include "hpp/apoyo.hpp"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    hpp::registra_ultimo();
    return RUN_ALL_TESTS();
}
