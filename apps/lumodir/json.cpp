#include "json.hpp"

namespace mando {

namespace {

constexpr wchar_t hexa[] = L"0123456789abcdef";

bool i_es_alto(wchar_t c) {
    return c >= 0xD800 && c <= 0xDBFF;
}
bool i_es_bajo(wchar_t c) {
    return c >= 0xDC00 && c <= 0xDFFF;
}

void i_escapa(std::wstring& destino, wchar_t c) {
    destino += L"\\u";
    for (int bits = 12; bits >= 0; bits -= 4) {
        destino += hexa[(c >> bits) & 0xF];
    }
}

}  // namespace

json::json(const std::vector<std::wstring>& textos) : clase_(clase::lista) {
    for (const std::wstring& texto : textos) {
        agrega(texto);
    }
}

std::wstring json::i_entrecomillado(std::wstring_view texto) {
    std::wstring resultado = L"\"";
    for (size_t i = 0; i < texto.size(); ++i) {
        const wchar_t c = texto[i];
        if (c == L'"' || c == L'\\') {
            resultado += L'\\';
            resultado += c;
        } else if (c == L'\n') {
            resultado += L"\\n";
        } else if (c == L'\t') {
            resultado += L"\\t";
        } else if (c < 0x20 || c == 0x7F) {
            i_escapa(resultado, c);
        } else if (i_es_alto(c) && i + 1 < texto.size() && i_es_bajo(texto[i + 1])) {
            resultado += c;
            resultado += texto[++i];
        } else if (i_es_alto(c) || i_es_bajo(c)) {
            i_escapa(resultado, c);
        } else {
            resultado += c;
        }
    }
    return resultado + L"\"";
}

json& json::agrega(json elemento) {
    hijos_.emplace_back(std::wstring(), std::move(elemento));
    return *this;
}

json& json::pon(std::string_view clave, json valor) & {
    hijos_.emplace_back(std::wstring(clave.begin(), clave.end()), std::move(valor));
    return *this;
}

json&& json::pon(std::string_view clave, json valor) && {
    pon(clave, std::move(valor));
    return std::move(*this);
}

void json::i_escribe(std::wstring& destino, size_t sangria) const {
    if (clase_ == clase::literal) {
        destino += literal_;
        return;
    }
    const bool es_lista = clase_ == clase::lista;
    destino += es_lista ? L'[' : L'{';
    bool primero = true;
    for (const auto& [clave, valor] : hijos_) {
        destino += primero ? L"\n" : L",\n";
        destino.append(sangria + 2, L' ');
        if (!es_lista) {
            destino += i_entrecomillado(clave) + L": ";
        }
        valor.i_escribe(destino, sangria + 2);
        primero = false;
    }
    if (!hijos_.empty()) {
        destino += L'\n';
        destino.append(sangria, L' ');
    }
    destino += es_lista ? L']' : L'}';
}

std::wstring json::texto() const {
    std::wstring resultado;
    i_escribe(resultado, 0);
    return resultado + L"\n";
}

}  // namespace mando
