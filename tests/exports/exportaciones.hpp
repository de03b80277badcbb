// Every export with sane arguments, whatever its signature: what the tests that go through all of them lean on. The
// list is made from the headers, so that a new export cannot be forgotten. Windows only.
//
// The values of each signature are put together in one source alone (exportaciones.cpp): they take the compiler long.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "exports/valores_salvajes.hpp"

namespace exports {

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

// What this thread is calling, which a crash tells before it ends the process. Kept up to 199 characters.
void pon_en_curso(const std::string& llamada);
const char* en_curso();

std::string como_texto(const wchar_t* texto);
std::string como_texto(const char* texto);

}  // namespace exports
