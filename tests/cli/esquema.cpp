#include "esquema.hpp"

#include <algorithm>
#include <set>
#include <stdexcept>

#include "json.hpp"
#include "orden.hpp"

namespace cli {

namespace {

using valor = valor_json;

const valor& i_esquema() {
    static const valor unico = [] {
        const std::string texto = lee_fichero(LUMODIR_RAIZ "/share/schema/lumodir.schema.json");
        return lee_json(texto);
    }();
    return unico;
}

const valor& i_definiciones() {
    return *i_esquema().campo("$defs");
}

const char* i_tipo(valor::clase que) {
    switch (que) {
        case valor::clase::nulo:
            return "null";
        case valor::clase::logico:
            return "boolean";
        case valor::clase::entero:
            return "integer";
        case valor::clase::texto:
            return "string";
        case valor::clase::lista:
            return "array";
        case valor::clase::objeto:
            break;
    }
    return "object";
}

bool i_es_de_tipo(const valor& v, const valor& tipo) {
    if (tipo.que == valor::clase::texto) {
        return tipo.texto == i_tipo(v.que);
    }
    return std::any_of(tipo.elementos.begin(), tipo.elementos.end(),
                       [&](const valor& t) { return i_es_de_tipo(v, t); });
}

std::string i_comprueba(const valor& v, const valor& esquema, const std::string& sitio) {
    static const std::set<std::string> conocidas = {"type",        "enum",       "const",
                                                    "items",       "minimum",    "required",
                                                    "description", "properties", "additionalProperties"};
    for (const auto& [palabra, que] : esquema.campos) {
        if (!conocidas.contains(palabra)) {
            return sitio + ": the schema says '" + palabra + "', which is not understood here";
        }
    }
    const valor* tipo = esquema.campo("type");
    if (tipo && !i_es_de_tipo(v, *tipo)) {
        return sitio + ": " + i_tipo(v.que) + " instead of " +
               (tipo->texto.empty() ? "one of several" : tipo->texto);
    }
    const valor* minimo = esquema.campo("minimum");
    if (minimo && v.que == valor::clase::entero && std::stoll(v.texto) < std::stoll(minimo->texto)) {
        return sitio + ": " + v.texto + " is too small";
    }
    const valor* constante = esquema.campo("const");
    if (constante && (constante->que != v.que || constante->texto != v.texto)) {
        return sitio + ": not " + constante->texto;
    }
    const valor* uno_de = esquema.campo("enum");
    if (uno_de && std::none_of(uno_de->elementos.begin(), uno_de->elementos.end(),
                               [&](const valor& x) { return x.que == v.que && x.texto == v.texto; })) {
        return sitio + ": '" + v.texto + "' is none of those that the schema names";
    }
    if (const valor* elemento = esquema.campo("items")) {
        for (size_t i = 0; i < v.elementos.size(); ++i) {
            const std::string mal =
                i_comprueba(v.elementos[i], *elemento, sitio + "[" + std::to_string(i) + "]");
            if (!mal.empty()) {
                return mal;
            }
        }
    }
    const valor* propiedades = esquema.campo("properties");
    std::set<std::string> vistas;
    for (const auto& [clave, suyo] : v.campos) {
        if (!vistas.insert(clave).second) {
            return sitio + ": '" + clave + "' twice";
        }
        const valor* como = propiedades ? propiedades->campo(clave) : nullptr;
        if (como == nullptr) {
            return sitio + ": the schema does not know '" + clave + "'";
        }
        const std::string mal = i_comprueba(suyo, *como, sitio + "." + clave);
        if (!mal.empty()) {
            return mal;
        }
    }
    if (const valor* exigidas = esquema.campo("required")) {
        for (const valor& clave : exigidas->elementos) {
            if (!vistas.contains(clave.texto)) {
                return sitio + ": '" + clave.texto + "' is missing";
            }
        }
    }
    return {};
}

void i_junta_claves(const valor& esquema, std::vector<std::string>& claves) {
    if (const valor* elemento = esquema.campo("items")) {
        i_junta_claves(*elemento, claves);
    }
    if (const valor* propiedades = esquema.campo("properties")) {
        for (const auto& [clave, suyo] : propiedades->campos) {
            claves.push_back(clave);
            i_junta_claves(suyo, claves);
        }
    }
}

}  // namespace

std::string contra_el_esquema(const std::string& orden, const std::string& json) {
    try {
        const valor v = lee_json(json);
        const std::string como_rechazo = i_comprueba(v, *i_definiciones().campo("refusal"), "answer");
        if (como_rechazo.empty()) {
            return {};
        }
        const valor* suyo = i_definiciones().campo(orden);
        return suyo ? i_comprueba(v, *suyo, "answer")
                    : "the schema has no '" + orden + "'; as a refusal, " + como_rechazo;
    } catch (const std::exception& mal) {
        return mal.what();
    }
}

std::string orden_de(const std::vector<std::string>& argumentos) {
    for (size_t i = 0; i < argumentos.size(); ++i) {
        const std::string& a = argumentos[i];
        if (a == "--version") {
            return "version";
        }
        if (a == "--lang") {
            ++i;
        } else if (a.rfind("-", 0) != 0) {
            return a == "reg" && i + 1 < argumentos.size() ? a + " " + argumentos[i + 1] : a;
        }
    }
    return {};
}

std::vector<std::string> ordenes_del_esquema() {
    std::vector<std::string> ordenes;
    for (const auto& [orden, esquema] : i_definiciones().campos) {
        if (orden != "refusal" && orden != "version") {
            ordenes.push_back(orden);
        }
    }
    return ordenes;
}

std::vector<std::string> claves_del_esquema(const std::string& orden) {
    std::vector<std::string> claves;
    if (const valor* suyo = i_definiciones().campo(orden)) {
        i_junta_claves(*suyo, claves);
    }
    return claves;
}

}  // namespace cli
