// What the tests of lumodir.hpp lean on: around each one the library speaks English, waits for nothing, tells its
// reports and warnings to a recorder, and afterwards has no more live blocks than before.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <fstream>
#include <lumodir.hpp>

namespace hpp {

namespace fs = std::filesystem;

// How often this program has allocated memory so far.
unsigned long reservas();
// Makes one allocation of this program fail: 1 is the next; 0 makes none fail.
void falla_la_reserva(unsigned long cual);

class prueba : public testing::Test {
protected:
    prueba() {
        lumodir::establece_idioma(MSGLOCAL_INGLES);
        lumodir::establece_politica(1, 0);
        lumodir::cdir::disco_de_programa();  // made at its first call, for good
        lumodir::wine::estamos_en_wine();
        vivos_ = lumodir::bloques_vivos();
    }
    ~prueba() override {
        EXPECT_EQ(lumodir::bloques_vivos(), vivos_) << "blocks of the library were left";
        EXPECT_EQ(informes_, std::vector<std::string>{});
        EXPECT_EQ(avisos_, std::vector<std::wstring>{});
    }
    // What was recorded since the last call.
    std::vector<std::string> toma_informes() { return std::exchange(informes_, {}); }
    std::vector<std::wstring> toma_avisos() { return std::exchange(avisos_, {}); }

private:
    unsigned long long vivos_;
    std::vector<std::string> informes_;
    std::vector<std::wstring> avisos_;
    lumodir::receptor_errores errores_{
        [this](const lumodir::error_interno& e) { informes_.push_back(e.expresion); }};
    lumodir::receptor_avisos muestra_{[this](std::wstring_view texto) { avisos_.emplace_back(texto); }};
};

// A test with a directory of its own.
class prueba_de_disco : public prueba {
protected:
    prueba_de_disco() {
        wchar_t temporal[MAX_PATH + 1];
        wchar_t largo[MAX_PATH + 1];
        ::GetTempPathW(MAX_PATH + 1, temporal);
        ::GetLongPathNameW(temporal, largo, MAX_PATH + 1);  // one spelling, to compare texts
        base = fs::path(largo) / (L"lumodir_hpp_" + std::to_wstring(::GetCurrentProcessId()));
        fs::remove_all(base);
        fs::create_directories(base);
    }
    ~prueba_de_disco() override {
        std::error_code error;
        fs::remove_all(base, error);
        EXPECT_FALSE(error) << error.message();
    }
    // Creates a file of three bytes with its directory.
    fs::path fichero(const fs::path& relativa) const {
        const fs::path path = base / relativa;
        fs::create_directories(path.parent_path());
        std::ofstream(path) << "abc";
        return path;
    }
    fs::path base;
};

// Elements of any list, copied.
template <class L>
auto todos(const L& lista) {
    using vista = std::decay_t<decltype(*lista.begin())>;
    return std::vector<std::basic_string<typename vista::value_type>>(lista.begin(), lista.end());
}

}  // namespace hpp
