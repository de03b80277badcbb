// The headers read as text: each declared function with its parameters and with what its comment says about NULL.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace dll {

struct parametro {
    std::string tipo;
    std::string nombre;
    std::string comentario;  // of @param, in one line

    // A NULL that the comment allows: everything else must be reported.
    bool admite_null() const;
    // The expression that the report of NULL is promised to have; empty when the comment promises none.
    std::string expresion_de_null() const;
};

struct declaracion {
    std::string cabecera;
    std::vector<parametro> parametros;
};

// By name of function.
const std::map<std::string, declaracion>& declaraciones();

}  // namespace dll
