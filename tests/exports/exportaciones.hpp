// Every export with sane arguments, whatever its signature: what the tests that go through all of them lean on. The
// list is made from the headers, so that a new export cannot be forgotten. Windows only.
//
// The values of each signature are put together in one source alone (exportaciones.cpp): they take the compiler long.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "apoyo/en_curso.hpp"
#include "exports/valores_salvajes.hpp"

namespace exports {

using apoyo::en_curso;
using apoyo::pon_en_curso;

// One call with its arguments made; they go with it.
class preparada : inmovil {
public:
    virtual ~preparada() = default;
    // Calls, appends the answer as text where somebody wants it, and frees it.
    virtual void llama(std::string* respuesta = nullptr) = 0;
};

struct exportacion {
    llamada como;
    void (*funcion)();
    std::unique_ptr<preparada> (*fabrica)(const exportacion&);

    std::unique_ptr<preparada> prepara() const { return fabrica(*this); }
};

const std::vector<exportacion>& exportaciones();

std::string como_texto(const wchar_t* texto);
std::string como_texto(const char* texto);

}  // namespace exports
