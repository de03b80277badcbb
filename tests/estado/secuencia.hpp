// Sequences of operations: made by chance from a number, run against the model, shortened when they fail, and kept as
// text (a line an operation; `/8` behind its name says 8-bit text, `-` is NULL).
#pragma once

#include "estado/filas.hpp"

namespace estado {

struct paso {
    const fila* f;
    bool ocho = false;  // in 8-bit text
    argumentos a = {};
};

struct desenlace {
    std::vector<paso> pasos;  // those that were run, the failing one last
    std::string fallo;        // "": library and model agree
};

std::string a_texto(const std::vector<paso>& pasos);
std::vector<paso> de_texto(const std::string& texto);

// A sequence is about the file system or about the registry.
enum class asunto { ficheros, registro };

desenlace corre_al_azar(campo& c, asunto de_que, std::uint64_t semilla);
desenlace corre(campo& c, const std::vector<paso>& pasos);
// The shortest sequence found that still fails.
desenlace acorta(campo& c, desenlace d);

}  // namespace estado
