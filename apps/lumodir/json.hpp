// A JSON value: built up, then written for the scripts that read the command's answers.
//
// Promises: the fields keep their order; a lone surrogate is written as its \u escape, so that every file name
// comes through whole.
// Checked by tests/cli, which parse every answer.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mando {

class json {
public:
    json() = default;  // null
    json(bool valor) : literal_(valor ? L"true" : L"false") {}
    json(int valor) : literal_(std::to_wstring(valor)) {}
    json(long long valor) : literal_(std::to_wstring(valor)) {}
    json(unsigned long valor) : literal_(std::to_wstring(valor)) {}
    json(unsigned long long valor) : literal_(std::to_wstring(valor)) {}
    json(std::wstring_view texto) : literal_(i_entrecomillado(texto)) {}
    json(const std::wstring& texto) : json(std::wstring_view(texto)) {}
    json(const wchar_t* texto) : json(std::wstring_view(texto)) {}
    json(std::string_view ascii) : json(std::wstring(ascii.begin(), ascii.end())) {}
    json(const char* ascii) : json(std::string_view(ascii)) {}
    json(const std::vector<std::wstring>& textos);

    static json lista() { return json(clase::lista); }
    static json objeto() { return json(clase::objeto); }

    json& agrega(json elemento);                      // to a list
    json& pon(std::string_view clave, json valor) &;  // to an object
    json&& pon(std::string_view clave, json valor) &&;

    // The whole text, a field or an element a line, with a final line break.
    std::wstring texto() const;

private:
    enum class clase { literal, lista, objeto };
    explicit json(clase que) : clase_(que) {}
    static std::wstring i_entrecomillado(std::wstring_view texto);
    void i_escribe(std::wstring& destino, size_t sangria) const;

    clase clase_ = clase::literal;
    std::wstring literal_ = L"null";
    std::vector<std::pair<std::wstring, json>> hijos_;  // keys are empty in a list
};

}  // namespace mando
