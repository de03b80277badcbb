// The operations that sequences are made of: a row each, with what its calls are about, the call, and what the model
// says of it.
#pragma once

#include "estado/campo.hpp"
#include "estado/generador.hpp"

namespace estado {

struct fila {
    const char* nombre;
    unsigned peso;  // how often, against the others
    argumentos (*genera)(generador&);
    // The call in wide and in 8-bit text; NULL where there is none. The answer as text, "(void)" when it has none.
    std::string (*ancha)(const argumentos&);
    std::string (*estrecha)(const argumentos&);
    // What is to be answered; what was answered is at hand for what the rules leave open.
    std::string (*modela)(reglas&, const argumentos&, const std::string& real);
    // Whether the model has anything to say of it now; NULL: always.
    bool (*aplicable)(reglas&, const argumentos&);
};

const std::vector<fila>& filas();
const std::vector<fila>& filas_del_registro();

// The part of the registry that those are about: made empty, taken away, held against the model.
void empieza_el_registro(reglas& r);
void acaba_el_registro();
std::string diferencia_en_el_registro(reglas& r);

// A row has the two flavours; what differs in the model asks which one is running.
void en_8_bits(bool si);
bool modela_en_8_bits();

}  // namespace estado
