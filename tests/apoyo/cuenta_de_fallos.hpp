// How many calls were made to fail in a test executable, in whatever table: told at its end.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>

namespace apoyo {

inline std::atomic<unsigned long> fallos_inyectados{0};

class cuenta_de_fallos : public testing::Environment {
    void TearDown() override { std::printf("faults injected: %lu\n", fallos_inyectados.load()); }
};
inline const testing::Environment* const i_cuenta_de_fallos =
    testing::AddGlobalTestEnvironment(new cuenta_de_fallos);

}  // namespace apoyo
