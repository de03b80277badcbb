// Tells tools/mutantes which changes each test case meets, and how long it takes. Goes into every test program there.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstring>

namespace {

unsigned char alcanzados[LUMODIR_MUTANTES + 1];

class testigo : public ::testing::EmptyTestEventListener {
public:
    explicit testigo(std::FILE* donde) : donde_(donde) { mutantes::alcanzados = alcanzados; }

private:
    void OnTestStart(const ::testing::TestInfo&) override {
        std::memset(alcanzados, 0, sizeof alcanzados);
        desde_ = std::chrono::steady_clock::now();
    }
    void OnTestEnd(const ::testing::TestInfo& caso) override {
        const auto us =
            std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - desde_);
        std::fprintf(donde_, "%s.%s\t%d\t%lld\t", caso.test_suite_name(), caso.name(),
                     caso.result()->Passed() || caso.result()->Skipped() ? 1 : 0,
                     static_cast<long long>(us.count()));
        for (unsigned i = 1; i <= LUMODIR_MUTANTES; ++i) {
            if (alcanzados[i] != 0) {
                std::fprintf(donde_, "%u ", i);
            }
        }
        std::fputc('\n', donde_);
        std::fflush(donde_);
    }

    std::FILE* donde_;
    std::chrono::steady_clock::time_point desde_;
};

const bool puesto = [] {
    if (const char* const fichero = std::getenv("LUMODIR_ALCANZADOS")) {
        if (std::FILE* const donde = std::fopen(fichero, "a")) {  // a process that a case starts opens it too
            ::testing::UnitTest::GetInstance()->listeners().Append(new testigo(donde));
        }
    }
    return true;
}();

}  // namespace
