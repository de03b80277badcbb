#include "json.hpp"

#include <algorithm>
#include <stdexcept>

namespace cli {

namespace {

class lector {
public:
    explicit lector(const std::string& t) : t_(t) {}

    valor_json todo() {
        valor_json v = i_valor();
        i_blancos();
        if (i_ != t_.size()) {
            throw std::runtime_error("something after the value");
        }
        return v;
    }

private:
    using clase = valor_json::clase;

    void i_blancos() {
        while (i_ < t_.size() && (t_[i_] == ' ' || t_[i_] == '\n')) {
            ++i_;
        }
    }
    char i_mira() {
        i_blancos();
        if (i_ == t_.size()) {
            throw std::runtime_error("it ends early");
        }
        return t_[i_];
    }
    void i_exige(char c) {
        if (i_mira() != c) {
            throw std::runtime_error(std::string("no ") + c + " at " + std::to_string(i_));
        }
        ++i_;
    }

    std::string i_texto() {
        i_exige('"');
        std::string texto;
        for (;;) {
            if (i_ == t_.size()) {
                throw std::runtime_error("a text without an end");
            }
            const char c = t_[i_++];
            if (c == '"') {
                return texto;
            }
            if (static_cast<unsigned char>(c) < 0x20) {
                throw std::runtime_error("a control character in a text");
            }
            texto += c;
            if (c == '\\') {
                const char escape = i_ < t_.size() ? t_[i_++] : '\0';
                if (std::string("\"\\/bfnrtu").find(escape) == std::string::npos) {
                    throw std::runtime_error("an unknown escape");
                }
                texto += escape;
            }
        }
    }

    valor_json i_literal() {
        const size_t desde = i_;
        while (i_ < t_.size() &&
               std::string("-+.0123456789abcdefghijklmnopqrstuvwxyzE").find(t_[i_]) != std::string::npos) {
            ++i_;
        }
        valor_json v;
        v.texto = t_.substr(desde, i_ - desde);
        if (v.texto == "true" || v.texto == "false") {
            v.que = clase::logico;
        } else if (!v.texto.empty() && v.texto.find_first_not_of("-0123456789") == std::string::npos) {
            v.que = clase::entero;
        } else if (v.texto != "null") {
            throw std::runtime_error("no value at " + std::to_string(desde));
        }
        return v;
    }

    // What stands between two brackets, each piece read by `uno`.
    template <class Uno>
    void i_serie(char abre, char cierra, Uno uno) {
        i_exige(abre);
        for (bool primero = true; i_mira() != cierra; primero = false) {
            if (!primero) {
                i_exige(',');
            }
            uno();
        }
        i_exige(cierra);
    }

    valor_json i_valor() {
        valor_json v;
        switch (i_mira()) {
            case '"':
                v.que = clase::texto;
                v.texto = i_texto();
                return v;
            case '[':
                v.que = clase::lista;
                i_serie('[', ']', [&] { v.elementos.push_back(i_valor()); });
                return v;
            case '{':
                v.que = clase::objeto;
                i_serie('{', '}', [&] {
                    std::string clave = i_texto();
                    i_exige(':');
                    v.campos.push_back({std::move(clave), i_valor()});
                });
                return v;
            default:
                return i_literal();
        }
    }

    const std::string& t_;
    size_t i_ = 0;
};

std::string i_compacto(const valor_json& v) {
    std::string dentro;
    switch (v.que) {
        case valor_json::clase::texto:
            return '"' + v.texto + '"';
        case valor_json::clase::lista:
            for (const valor_json& elemento : v.elementos) {
                dentro += (dentro.empty() ? "" : ",") + i_compacto(elemento);
            }
            return '[' + dentro + ']';
        case valor_json::clase::objeto:
            for (const auto& [nombre, contenido] : v.campos) {
                dentro += (dentro.empty() ? "\"" : ",\"") + nombre + "\":" + i_compacto(contenido);
            }
            return '{' + dentro + '}';
        default:
            return v.texto;
    }
}

}  // namespace

const valor_json* valor_json::campo(const std::string& nombre) const {
    const auto i =
        std::find_if(campos.begin(), campos.end(), [&](const auto& c) { return c.nombre == nombre; });
    return i == campos.end() ? nullptr : &i->contenido;
}

valor_json lee_json(const std::string& texto) {
    return lector(texto).todo();
}

std::string json_compacto(const std::string& texto) {
    try {
        return i_compacto(lee_json(texto));
    } catch (const std::runtime_error& mal) {
        return std::string("not JSON: ") + mal.what() + "\n" + texto;
    }
}

}  // namespace cli
