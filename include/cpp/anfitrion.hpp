/**
 * @file anfitrion.hpp
 * How a program plugs itself into the library: who receives internal errors, who shows warnings, who is asked
 * whether to try again, who is told of a file that is held open.
 *
 * Each is an object: its constructor installs it, and its destructor puts back the one before it, or at the end the
 * library's default. What was set through the C functions is not put back.
 * Make them at start-up, before any thread uses the library, and destroy them in the same thread after the
 * others have ended. The function runs in the thread whose call it belongs to, in several at once if need
 * be. An exception that it throws ends there, and a question is then answered with no.
 */
#ifndef LUMODIR_CPP_ANFITRION_HPP
#define LUMODIR_CPP_ANFITRION_HPP

#include <functional>

#include "../companions/buclrein.h"
#include "../companions/error_interno.h"
#include "../companions/lmaviso.h"
#include "../companions/msglocal.h"
#include "../lumodir.h"
#include "base.hpp"

namespace lumodir {

/** An internal error, as a receiver gets it; valid only during the call. */
struct error_interno {
    const char* expresion;     /**< condition that failed, as source text */
    const char* etiqueta;      /**< source module */
    unsigned long linea;       /**< source line */
    std::wstring_view detalle; /**< text about it, empty when there is none */
};

namespace detalle {

/** The chain of the live receivers of one kind; the newest is the one that is called. */
template <class Hijo, class Funcion>
class receptor {
public:
    explicit receptor(Funcion funcion) : funcion_(std::move(funcion)), anterior_(ultimo_) {
        ultimo_ = this;
        Hijo::instala(this);
    }
    ~receptor() {
        if (ultimo_ == this) {
            ultimo_ = anterior_;
            Hijo::instala(anterior_);
            return;
        }
        for (receptor* otro = ultimo_; otro != nullptr; otro = otro->anterior_) {
            if (otro->anterior_ == this) {
                otro->anterior_ = anterior_;
                return;
            }
        }
    }
    receptor(const receptor&) = delete;
    receptor& operator=(const receptor&) = delete;

protected:
    // After an exception the answer is R().
    template <class... A>
    static auto llama(void* contexto, A&&... argumentos) noexcept {
        const Funcion& funcion = static_cast<receptor*>(contexto)->funcion_;
        using R = decltype(funcion(std::forward<A>(argumentos)...));
        try {
            return funcion(std::forward<A>(argumentos)...);
        } catch (...) {
            return R();
        }
    }
    static receptor* ultimo() noexcept { return ultimo_; }

private:
    Funcion funcion_;
    receptor* anterior_;
    inline static receptor* ultimo_ = nullptr;
};

}  // namespace detalle

/** Receives internal errors: `receptor_errores r([](const lumodir::error_interno& e) { ... });` */
class receptor_errores
    : public detalle::receptor<receptor_errores, std::function<void(const error_interno&)>> {
public:
    using receptor::receptor;

private:
    friend receptor;
    static void recibe(const char* expresion, const char* etiqueta, unsigned long linea, const wchar_t* texto,
                       void* contexto) noexcept {
        llama(contexto, error_interno{expresion, etiqueta, linea, detalle::vista(texto)});
    }
    static void instala(receptor* este) noexcept {
        error_interno_establece_receptor(este == nullptr ? nullptr : recibe, este);
    }
};

/** Shows warnings: `receptor_avisos r([](std::wstring_view text) { ... });` The text is terminated. */
class receptor_avisos : public detalle::receptor<receptor_avisos, std::function<void(std::wstring_view)>> {
public:
    using receptor::receptor;

private:
    friend receptor;
    static void muestra(const wchar_t* texto, void* contexto) noexcept {
        llama(contexto, detalle::vista(texto));
    }
    static void instala(receptor* este) noexcept {
        lmaviso_establece_receptor(este == nullptr ? nullptr : muestra, este);
    }
};

/** Answers whether to try again: `receptor_preguntas r([](std::wstring_view text, unsigned long code) {...});` */
class receptor_preguntas
    : public detalle::receptor<receptor_preguntas, std::function<bool(std::wstring_view, unsigned long)>> {
public:
    using receptor::receptor;

private:
    friend receptor;
    static unsigned short pregunta(const wchar_t* mensaje, unsigned long codigo, void* contexto) noexcept {
        return detalle::corto(llama(contexto, detalle::vista(mensaje), codigo));
    }
    static void instala(receptor* este) noexcept {
        buclrein_establece_receptor(este == nullptr ? nullptr : pregunta, este);
    }
};

/** Told the path of a file whose deletion has failed once (lumodir_set_func_comprobar_fichero_no_esta_abierto()). */
class receptor_ficheros_abiertos
    : public detalle::receptor<receptor_ficheros_abiertos, std::function<void(std::wstring_view)>> {
public:
    using receptor::receptor;

private:
    friend receptor;
    static unsigned short avisa(const wchar_t* fichero) noexcept {
        llama(ultimo(), detalle::vista(fichero));
        return CIERTO;
    }
    static void instala(receptor* este) noexcept {
        lumodir_set_func_comprobar_fichero_no_esta_abierto(este == nullptr ? nullptr : avisa);
    }
};

/** How often and how slowly a failed operation is retried in silence (buclrein_establece_politica()). */
inline void establece_politica(unsigned long reintentos, unsigned long espera_ms) noexcept {
    buclrein_establece_politica(reintentos, espera_ms);
}

/* ---- Languages ---- */

/** The languages that have a slot. Not all of them have texts: idiomas_con_textos(). */
enum class idioma : unsigned long {
    espanyol = MSGLOCAL_ESPANYOL,
    frances = MSGLOCAL_FRANCES,
    portugues_brasil = MSGLOCAL_PORTUGUES_BRASIL,
    portugues_portugal = MSGLOCAL_PORTUGUES_PORTUGAL,
    catalan = MSGLOCAL_CATALAN,
    italiano = MSGLOCAL_ITALIANO,
    espanyol_mexico = MSGLOCAL_ESPANYOL_MEXICO,
    espanyol_argentina = MSGLOCAL_ESPANYOL_ARGENTINA,
    ingles = MSGLOCAL_INGLES,
    gallego = MSGLOCAL_GALLEGO,
    bulgaro = MSGLOCAL_BULGARO,
    rumano = MSGLOCAL_RUMANO,
    chino_simplificado = MSGLOCAL_CHINO_SIMPLIFICADO,
    aleman = MSGLOCAL_ALEMAN,
    ruso = MSGLOCAL_RUSO,
    espanyol_america = MSGLOCAL_ESPANYOL_AMERICA,
    tailandes = MSGLOCAL_TAILANDES,
    checo = MSGLOCAL_CHECO,
    croata = MSGLOCAL_CROATA,
    esloveno = MSGLOCAL_ESLOVENO,
    hungaro = MSGLOCAL_HUNGARO,
    polaco = MSGLOCAL_POLACO,
    turco = MSGLOCAL_TURCO,
    japones = MSGLOCAL_JAPONES
};

namespace detalle {

/** A language as people and other programs write it. */
struct fila_de_idioma {
    idioma cual;
    const char* etiqueta; /**< BCP 47 */
    bool con_textos;
};

inline constexpr fila_de_idioma idiomas[] = {
    {idioma::espanyol, "es", true},
    {idioma::frances, "fr", true},
    {idioma::portugues_brasil, "pt-BR", true},
    {idioma::portugues_portugal, "pt", true},
    {idioma::catalan, "ca", true},
    {idioma::italiano, "it", true},
    {idioma::espanyol_mexico, "es-MX", true},
    {idioma::espanyol_argentina, "es-AR", true},
    {idioma::ingles, "en", true},
    {idioma::gallego, "gl", false},
    {idioma::bulgaro, "bg", false},
    {idioma::rumano, "ro", true},
    {idioma::chino_simplificado, "zh-Hans", true},
    {idioma::aleman, "de", true},
    {idioma::ruso, "ru", true},
    {idioma::espanyol_america, "es-419", true},
    {idioma::tailandes, "th", false},
    {idioma::checo, "cs", false},
    {idioma::croata, "hr", false},
    {idioma::esloveno, "sl", false},
    {idioma::hungaro, "hu", false},
    {idioma::polaco, "pl", true},
    {idioma::turco, "tr", true},
    {idioma::japones, "ja", true},
};

constexpr bool misma_letra(char a, char b) noexcept {
    const auto minuscula = [](char c) {
        return c == '_' ? '-' : c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    };
    return minuscula(a) == minuscula(b);
}
constexpr bool misma_etiqueta(std::string_view a, std::string_view b) noexcept {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!misma_letra(a[i], b[i])) {
            return false;
        }
    }
    return true;
}

}  // namespace detalle

/** Whether the messages have texts in a language; otherwise Galician gives the Spanish ones, the rest English. */
constexpr bool tiene_textos(idioma cual) noexcept {
    for (const detalle::fila_de_idioma& fila : detalle::idiomas) {
        if (fila.cual == cual) {
            return fila.con_textos;
        }
    }
    return false;
}
/** The languages that the messages have texts in. */
inline std::vector<idioma> idiomas_con_textos() {
    std::vector<idioma> todos;
    for (const detalle::fila_de_idioma& fila : detalle::idiomas) {
        if (fila.con_textos) {
            todos.push_back(fila.cual);
        }
    }
    return todos;
}
/** The BCP 47 tag of a language ("pt-BR"); nothing for a slot that is none. */
constexpr std::string_view etiqueta(idioma cual) noexcept {
    for (const detalle::fila_de_idioma& fila : detalle::idiomas) {
        if (fila.cual == cual) {
            return fila.etiqueta;
        }
    }
    return {};
}
/**
 * The language of a BCP 47 tag, letter case aside: "pt-br", "de", "de-CH" (German), "es-CO" (Spanish of America).
 * Traditional Chinese has no slot, and gives nothing like every other language without one.
 */
inline std::optional<idioma> idioma_de_etiqueta(std::string_view texto) noexcept {
    for (const detalle::fila_de_idioma& fila : detalle::idiomas) {
        if (detalle::misma_etiqueta(texto, fila.etiqueta)) {
            return fila.cual;
        }
    }
    const std::string_view lengua = texto.substr(0, texto.find_first_of("-_"));
    const std::string_view resto = texto.substr(lengua.size());
    if (detalle::misma_etiqueta(lengua, "zh")) {
        const bool simplificado = resto.empty() || detalle::misma_etiqueta(resto, "-CN") ||
                                  detalle::misma_etiqueta(resto, "-SG") ||
                                  (resto.size() > 5 && detalle::misma_etiqueta(resto.substr(0, 6), "-Hans-"));
        return simplificado ? std::optional<idioma>(idioma::chino_simplificado) : std::nullopt;
    }
    if (detalle::misma_etiqueta(lengua, "es")) {
        return detalle::misma_etiqueta(resto, "-ES") ? idioma::espanyol : idioma::espanyol_america;
    }
    for (const detalle::fila_de_idioma& fila : detalle::idiomas) {
        if (detalle::misma_etiqueta(lengua, fila.etiqueta)) {
            return fila.cual;
        }
    }
    return std::nullopt;
}

/** The language of the messages (msglocal_establece_idioma()). */
inline void establece_idioma(idioma cual) noexcept {
    msglocal_establece_idioma(static_cast<unsigned long>(cual));
}
/** The same by its slot, 0 to 40. */
inline void establece_idioma(unsigned long ranura) noexcept {
    msglocal_establece_idioma(ranura);
}
/** The language of the messages (msglocal_dame_idioma()). */
inline idioma dame_idioma() noexcept {
    return static_cast<idioma>(msglocal_dame_idioma());
}
/** Service mode, for good: one attempt, nothing shown (lumodir_establece_modo_servicio_sin_reintentos()). */
inline void establece_modo_servicio_sin_reintentos() noexcept {
    lumodir_establece_modo_servicio_sin_reintentos();
}

}  // namespace lumodir

#endif
