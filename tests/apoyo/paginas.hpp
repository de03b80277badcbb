// The code pages that 8-bit text is tested in, one at a time.
#pragma once

#include "companions/plataforma.hpp"

namespace apoyo {

// That of most machines, the four double-byte ones, UTF-8, and another of one byte a character.
inline constexpr unsigned paginas[] = {1252, 932, 936, 949, 950, 65001, 874};
inline constexpr unsigned paginas_dobles[] = {932, 936, 949, 950};

// 8-bit text is in this code page for the life of the object.
class en_pagina {
public:
    explicit en_pagina(unsigned pagina) : antes_(interno::plataforma::pagina_de_codigos) {
        interno::plataforma::pagina_de_codigos = pagina;
    }
    ~en_pagina() { interno::plataforma::pagina_de_codigos = antes_; }
    en_pagina(const en_pagina&) = delete;
    en_pagina& operator=(const en_pagina&) = delete;

private:
    unsigned antes_;
};

}  // namespace apoyo
