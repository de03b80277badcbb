// Sorted pointer arrays as the library itself fills them; the exported operations are in abi/apunorde.cpp.
#pragma once

#include "companions/acadorde.hpp"
#include "companions/anfitrion.hpp"
#include "companions/apunorde.h"

struct ApunOrde {
    interno::vector_interno<void*> registros;
    int (*compara)(const void*, const void*) = nullptr;
    void (*destruye)(void** registro) = nullptr;

    ~ApunOrde() {
        if (destruye != nullptr) {
            for (void*& registro : registros) {
                interno::llama_al_anfitrion(destruye, &registro);
            }
        }
    }
};
