// Texts that tell code pages apart.
#pragma once

#include <random>
#include <string>
#include <vector>

#include "apoyo/textos.hpp"

namespace modelos {

using apoyo::texto_a;

// Characters of each code page whose second byte is 0x5C or 0x7C, where it has some.
inline std::vector<texto_a> caracteres_de(unsigned pagina) {
    switch (pagina) {
        case 932:
            return {"\x95\\", "\x83\\", "\x83|", "\x8E\x96", "\xB1", "\x83"};
        case 936:
            return {"\x81\\", "\x8B|", "\xD6\xD0", "\x81", "\xFE"};
        case 949:
            return {"\xB0\xA1", "\x81Z", "\xB0", "\xC8\xFE"};
        case 950:
            return {"\xA5\\", "\xAE|", "\xA4\xA4", "\xA5", "\xF9"};
        case 65001:
            return {"\xC3\xB1", "\xE8\xA1\xA8", "\xF0\x9F\x98\x80", "\xE8", "\xA1"};
        default:
            return {"\xA1", "\xE1"};
    }
}

// Random texts of them and of what the rules look at.
class azar_de_pagina {
public:
    explicit azar_de_pagina(unsigned pagina) : azar_(pagina), altos_(caracteres_de(pagina)) {}

    std::size_t numero(std::size_t menor_que) { return azar_() % menor_que; }
    texto_a texto() {
        static const texto_a bajos[] = {"\\",   "\\",   "/", ".", ":",   " ", "a",
                                        "C:\\", "\\\\", "|", "*", "con", ".x"};
        texto_a t;
        for (std::size_t n = numero(10); n > 0; --n) {
            t += numero(2) == 0 ? altos_[numero(altos_.size())] : bajos[numero(std::size(bajos))];
        }
        return t;
    }

private:
    std::mt19937 azar_;
    std::vector<texto_a> altos_;
};

}  // namespace modelos
