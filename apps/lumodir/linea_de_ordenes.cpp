#include "linea_de_ordenes.hpp"

#include <algorithm>

#include "consola.hpp"
#include "textos.hpp"

namespace mando {

namespace {

constexpr opcion generales[] = {
    {.nombre = "json", .ayuda = "answer in JSON, for scripts"},
    {.nombre = "lang",
     .valor = "L",
     .ayuda = "language of messages: a name, a code or a number (help and the command's own words are in "
              "English or Spanish)"},
    {.nombre = "verbose", .ayuda = "also show the library's internal errors, on standard error"},
    {.nombre = "yes", .ayuda = "do not ask before changing or deleting (-y)"},
    {.nombre = "help", .ayuda = "this text (-h, -?, /?)"},
    {.nombre = "version", .ayuda = "the version of this command"},
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

// What people call things elsewhere, and where they are here.
struct otro_nombre {
    std::wstring_view nombre, aqui;
};
constexpr otro_nombre otros_nombres[] = {
    {L"dir", L"ls"},       {L"list", L"ls"},        {L"del", L"rm"},         {L"erase", L"rm"},
    {L"delete", L"rm"},    {L"remove", L"rm"},      {L"unlink", L"rm"},      {L"rd", L"rmtree"},
    {L"rmdir", L"rmtree"}, {L"deltree", L"rmtree"}, {L"md", L"mkdir"},       {L"ren", L"mv"},
    {L"rename", L"mv"},    {L"move", L"mv"},        {L"attrib", L"protect"}, {L"which", L"where"},
    {L"tasklist", L"ps"},  {L"taskkill", L"kill"},  {L"pwd", L"whereami"},   {L"search", L"find"},
    {L"fd", L"find"},      {L"mktemp", L"tmp"},     {L"ver", L"--version"},  {L"version", L"--version"},
    {L"subst", L"drives"}, {L"handle", L"who"},
};
constexpr std::wstring_view de_copia[] = {L"cp", L"copy", L"xcopy", L"robocopy", L"rsync", L"mirror"};

// Of some words the nearest, when it is near enough: one slip in a short word, two in a longer one.
class mas_parecida {
public:
    explicit mas_parecida(std::wstring_view escrita) : escrita_(en_minusculas(escrita)) {
        constexpr size_t corta = 4;
        mejor_ = escrita_.size() <= corta ? 2 : 3;
    }
    void prueba(std::wstring_view palabra, std::wstring_view propuesta) {
        const size_t d = i_distancia(escrita_, palabra);
        if (d < mejor_ && d < palabra.size() && d < escrita_.size()) {
            mejor_ = d;
            propuesta_ = propuesta;
        }
    }
    const std::wstring& propuesta() const { return propuesta_; }

private:
    std::wstring escrita_, propuesta_;
    size_t mejor_;
};

[[noreturn]] void i_orden_desconocida(std::wstring_view palabra) {
    if (std::find(std::begin(de_copia), std::end(de_copia), en_minusculas(palabra)) != std::end(de_copia)) {
        throw uso_incorrecto{
            di("nothing is copied here, and no tree moved to another drive: copy, xcopy and robocopy of "
               "Windows do that")};
    }
    mas_parecida cual(palabra);
    for (const grupo& g : grupos()) {
        for (const orden& o : g.ordenes) {
            cual.prueba(ancho_de(o.nombre), ancho_de(o.nombre));
        }
    }
    for (const otro_nombre& o : otros_nombres) {
        cual.prueba(o.nombre, o.aqui);
    }
    throw uso_incorrecto{cual.propuesta().empty()
                             ? di("there is no command '%1'", palabra)
                             : di("there is no command '%1'; did you mean '%2'?", palabra, cual.propuesta())};
}

[[noreturn]] void i_opcion_desconocida(const std::wstring& nombre, const orden* cual) {
    mas_parecida opcion_parecida(nombre);
    for (const auto& opciones :
         {cual ? cual->opciones : std::span<const opcion>(), std::span<const opcion>(generales)}) {
        for (const opcion& o : opciones) {
            opcion_parecida.prueba(ancho_de(o.nombre), ancho_de(o.nombre));
        }
    }
    throw uso_incorrecto{
        opcion_parecida.propuesta().empty()
            ? di("unknown option '--%1'", nombre)
            : di("unknown option '--%1'; did you mean '--%2'?", nombre, opcion_parecida.propuesta())};
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
        const std::wstring minuscula = en_minusculas(palabra);
        for (const wchar_t* ayuda : {L"-?", L"/?", L"/h", L"-help", L"/help"}) {
            if (minuscula == ayuda) {
                return L"help";
            }
        }
        // Letters are told apart by their case: -H is an option of a command's own.
        if (palabra == L"-h" || palabra == L"-y") {
            return palabra == L"-h" ? L"help" : L"yes";
        }
        if (palabra.size() > 2 && palabra.starts_with(L"--")) {
            return minuscula.substr(2, minuscula.find(L'=') - 2);
        }
        return {};
    }

    // The command is the first word that is neither an option nor the value of a general one.
    void i_halla_orden() {
        size_t i = 0;
        for (; i < palabras_.size(); ++i) {
            std::wstring nombre = i_nombre_de_opcion(palabras_[i]);
            if (nombre.empty() && en_minusculas(palabras_[i]) == L"-v") {
                de_la_orden_.push_back(i);
                leida_.version = true;  // without a command there is nothing else that it could mean
                continue;
            }
            if (nombre.empty()) {
                break;
            }
            const opcion* general = i_busca(generales, nombre);
            i += general && !general->valor.empty() && palabras_[i].find(L'=') == std::wstring::npos ? 1 : 0;
        }
        if (i >= palabras_.size()) {
            return;
        }
        if (palabras_[i].size() > 1 && palabras_[i][0] == L'-') {
            throw uso_incorrecto{di("unknown option '%1'", palabras_[i])};
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
            if (const opcion* corta = i_busca_corta(palabra)) {
                i_opcion(*corta, i);
                return;
            }
            if (palabra.size() > 1 && palabra[0] == L'-') {
                throw uso_incorrecto{
                    di("unknown option '%1' (a path that begins with '-' goes after '--')", palabra)};
            }
            leida_.que.argumentos.push_back(palabra);
            return;
        }
        const opcion* fila = leida_.que.cual ? i_busca(leida_.que.cual->opciones, nombre) : nullptr;
        fila = fila ? fila : i_busca(generales, nombre);
        if (!fila) {
            i_opcion_desconocida(nombre, leida_.que.cual);
        }
        i_opcion(*fila, i);
    }

    const opcion* i_busca_corta(std::wstring_view palabra) const {
        if (!leida_.que.cual || palabra.size() != 2 || palabra[0] != L'-') {
            return nullptr;
        }
        for (const opcion& o : leida_.que.cual->opciones) {
            if (o.letra != '\0' && static_cast<wchar_t>(o.letra) == palabra[1]) {
                return &o;
            }
        }
        return nullptr;
    }

    void i_opcion(const opcion& fila, size_t& i) {
        const std::wstring nombre = ancho_de(fila.nombre);
        const size_t igual = palabras_[i].find(L'=');
        std::wstring valor;
        if (fila.valor.empty()) {
            if (igual != std::wstring::npos) {
                throw uso_incorrecto{di("option '--%1' takes no value", nombre)};
            }
        } else if (igual != std::wstring::npos) {
            valor = palabras_[i].substr(igual + 1);
        } else if (i + 1 < palabras_.size() && !palabras_[i + 1].starts_with(L"--")) {
            valor = palabras_[++i];
        } else {
            // What begins with two dashes is the next option; a value that does goes behind a "=".
            throw uso_incorrecto{di("option '--%1' needs a value (%2)", nombre, ancho_de(fila.valor))};
        }
        i_guarda(fila, std::move(valor));
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
            std::wstring& guardado = leida_.que.opciones[fila.nombre];
            guardado = fila.varias && !guardado.empty() ? guardado + L'|' + valor : std::move(valor);
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

}  // namespace mando
