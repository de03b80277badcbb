// JSON as the command writes it, read just strictly enough to catch what scripts would choke on.
#pragma once

#include <string>
#include <vector>

namespace cli {

struct campo_json;

struct valor_json {
    enum class clase { nulo, logico, entero, texto, lista, objeto } que = clase::nulo;
    std::string texto;  // of texts with their escapes, of literals as they stand
    std::vector<valor_json> elementos;
    std::vector<campo_json> campos;

    // NULL when it has none of that name.
    const valor_json* campo(const std::string& nombre) const;
};

struct campo_json {
    std::string nombre;
    valor_json contenido;
};

// Throws std::runtime_error, which says what is wrong. No other numbers than whole ones are read.
valor_json lee_json(const std::string& texto);

// JSON text without blanks; what is not JSON comes back as "not JSON: ...".
std::string json_compacto(const std::string& texto);

}  // namespace cli
