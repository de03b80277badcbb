#include "linea_de_ordenes.hpp"

#include <algorithm>

#include "consola.hpp"
#include "textos.hpp"

namespace mando {

namespace {

constexpr opcion generales[] = {
    {"json", "", "answer in JSON, for scripts"},
    {"lang", "L", "language of the library's messages: a name, a code or a number"},
    {"verbose", "", "also show the library's internal errors, on standard error"},
    {"yes", "", "do not ask before changing or deleting (-y)"},
    {"help", "", "this text (-h, /?)"},
    {"version", "", "the version of this command"},
};

const opcion* i_busca(std::span<const opcion> opciones, std::wstring_view nombre) {
    const auto fila = std::find_if(opciones.begin(), opciones.end(),
                                   [&](const opcion& o) { return ancho_de(o.nombre) == nombre; });
    return fila == opciones.end() ? nullptr : &*fila;
}

// The usual number of edits between two words, for "did you mean".
size_t i_distancia(std::wstring_view a, std::wstring_view b) {
    std::vector<size_t> fila(b.size() + 1);
    for (size_t j = 0; j <= b.size(); ++j) {
        fila[j] = j;
    }
    for (size_t i = 1; i <= a.size(); ++i) {
        size_t diagonal = std::exchange(fila[0], i);
        for (size_t j = 1; j <= b.size(); ++j) {
            const size_t cambiando = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = fila[j];
            fila[j] = std::min({cambiando, fila[j] + 1, fila[j - 1] + 1});
        }
    }
    return fila[b.size()];
}

[[noreturn]] void i_orden_desconocida(std::wstring_view palabra) {
    std::wstring mejor;
    size_t distancia = 3;
    for (const grupo& g : grupos()) {
        for (const orden& o : g.ordenes) {
            const std::wstring nombre = ancho_de(o.nombre);
            const size_t d = i_distancia(en_minusculas(palabra), nombre);
            if (d < distancia && d < nombre.size()) {
                distancia = d;
                mejor = nombre;
            }
        }
    }
    throw uso_incorrecto{mejor.empty() ? di("there is no command '%1'", palabra)
                                       : di("there is no command '%1'; did you mean '%2'?", palabra, mejor)};
}

class lector {
public:
    lector(const std::vector<std::wstring>& palabras, invocacion& leida)
        : palabras_(palabras), leida_(leida) {}

    void lee() {
        // Options may stand before the command; which are the command's own is known only with it.
        i_halla_orden();
        for (size_t i = 0; i < palabras_.size(); ++i) {
            if (std::find(de_la_orden_.begin(), de_la_orden_.end(), i) == de_la_orden_.end()) {
                i_palabra(i);
            }
        }
    }

private:
    static std::wstring i_nombre_de_opcion(std::wstring_view palabra) {
        if (palabra == L"-h" || palabra == L"/?") {
            return L"help";
        }
        if (palabra == L"-y") {
            return L"yes";
        }
        if (palabra.size() > 2 && palabra.starts_with(L"--")) {
            return std::wstring(palabra.substr(2, palabra.find(L'=') - 2));
        }
        return {};
    }

    // The command is the first word that is neither an option nor the value of a general one.
    void i_halla_orden() {
        size_t i = 0;
        for (; i < palabras_.size(); ++i) {
            const std::wstring nombre = i_nombre_de_opcion(palabras_[i]);
            if (nombre.empty()) {
                break;
            }
            const opcion* general = i_busca(generales, nombre);
            i += general && !general->valor.empty() && palabras_[i].find(L'=') == std::wstring::npos ? 1 : 0;
        }
        if (i >= palabras_.size()) {
            return;
        }
        if (palabras_[i] == L"help") {
            leida_.ayuda = true;
            de_la_orden_.push_back(i++);
            if (i >= palabras_.size() || !i_nombre_de_opcion(palabras_[i]).empty()) {
                return;
            }
        }
        i_toma_orden(i);
    }

    void i_toma_orden(size_t i) {
        const std::wstring& palabra = palabras_[i];
        leida_.que.cual = busca_orden(palabra);
        de_la_orden_.push_back(i);
        if (leida_.que.cual) {
            return;
        }
        if (i + 1 < palabras_.size()) {
            leida_.que.cual = busca_orden(palabra + L" " + palabras_[i + 1]);
            if (leida_.que.cual) {
                de_la_orden_.push_back(i + 1);
                return;
            }
        }
        for (const grupo& g : grupos()) {
            for (const orden& o : g.ordenes) {
                if (ancho_de(o.nombre).starts_with(palabra + L" ")) {
                    if (i + 1 < palabras_.size() && i_nombre_de_opcion(palabras_[i + 1]).empty()) {
                        i_orden_desconocida(palabra + L" " + palabras_[i + 1]);
                    }
                    leida_.grupo_a_medias = palabra;
                    return;
                }
            }
        }
        i_orden_desconocida(palabra);
    }

    void i_palabra(size_t& i) {
        const std::wstring& palabra = palabras_[i];
        if (solo_argumentos_) {
            leida_.que.argumentos.push_back(palabra);
            return;
        }
        if (palabra == L"--") {
            solo_argumentos_ = true;
            return;
        }
        const std::wstring nombre = i_nombre_de_opcion(palabra);
        if (nombre.empty()) {
            if (palabra.size() > 1 && palabra[0] == L'-') {
                throw uso_incorrecto{
                    di("unknown option '%1' (a path that begins with '-' goes after '--')", palabra)};
            }
            leida_.que.argumentos.push_back(palabra);
            return;
        }
        i_opcion(nombre, i);
    }

    void i_opcion(const std::wstring& nombre, size_t& i) {
        const opcion* fila = leida_.que.cual ? i_busca(leida_.que.cual->opciones, nombre) : nullptr;
        fila = fila ? fila : i_busca(generales, nombre);
        if (!fila) {
            throw uso_incorrecto{di("unknown option '--%1'", nombre)};
        }
        const size_t igual = palabras_[i].find(L'=');
        std::wstring valor;
        if (fila->valor.empty()) {
            if (igual != std::wstring::npos) {
                throw uso_incorrecto{di("option '--%1' takes no value", nombre)};
            }
        } else if (igual != std::wstring::npos) {
            valor = palabras_[i].substr(igual + 1);
        } else if (++i < palabras_.size()) {
            valor = palabras_[i];
        } else {
            throw uso_incorrecto{di("option '--%1' needs a value (%2)", nombre, ancho_de(fila->valor))};
        }
        i_guarda(*fila, std::move(valor));
    }

    void i_guarda(const opcion& fila, std::wstring valor) {
        if (fila.nombre == "help") {
            leida_.ayuda = true;
        } else if (fila.nombre == "version") {
            leida_.version = true;
        } else if (fila.nombre == "json") {
            leida_.que.en_json = true;
        } else if (fila.nombre == "verbose") {
            leida_.verboso = true;
        } else if (fila.nombre == "yes") {
            leida_.que.si_a_todo = true;
        } else if (fila.nombre == "lang") {
            leida_.idioma = std::move(valor);
        } else {
            leida_.que.opciones[fila.nombre] = std::move(valor);
        }
    }

    const std::vector<std::wstring>& palabras_;
    invocacion& leida_;
    std::vector<size_t> de_la_orden_;
    bool solo_argumentos_ = false;
};

}  // namespace

const std::span<const opcion> opciones_generales = generales;

void lee_linea_de_ordenes(const std::vector<std::wstring>& palabras, invocacion& leida) {
    lector(palabras, leida).lee();
}

const orden* busca_orden(std::wstring_view nombre) {
    for (const grupo& g : grupos()) {
        for (const orden& o : g.ordenes) {
            if (ancho_de(o.nombre) == nombre) {
                return &o;
            }
        }
    }
    return nullptr;
}

const wchar_t* peticion::valor(std::string_view nombre) const {
    const auto fila = opciones.find(nombre);
    return fila == opciones.end() ? nullptr : fila->second.c_str();
}

unsigned long a_numero(std::wstring_view texto, std::wstring_view que_es, unsigned long maximo) {
    unsigned long long numero = 0;
    bool bien = !texto.empty() && texto.size() <= 10;
    for (const wchar_t c : texto) {
        bien = bien && c >= L'0' && c <= L'9';
        numero = bien ? numero * 10 + static_cast<unsigned>(c - L'0') : 0;
    }
    if (!bien || numero > maximo) {
        throw uso_incorrecto{
            di("%1 must be a number from 0 to %2, not '%3'", que_es, std::to_wstring(maximo), texto)};
    }
    return static_cast<unsigned long>(numero);
}

unsigned long peticion::numero(std::string_view nombre, unsigned long si_falta, unsigned long maximo) const {
    const wchar_t* texto = valor(nombre);
    return texto ? a_numero(texto, L"--" + ancho_de(nombre), maximo) : si_falta;
}

std::vector<std::wstring> peticion::argumentos_o_entrada() const {
    return argumentos.size() == 1 && argumentos[0] == L"-" ? lee_lineas() : argumentos;
}

void escribe_json(const json& valor) {
    salida().escribe(valor.texto());
}

}  // namespace mando
