/**
 * @file anfitrion.hpp
 * How a program plugs itself into the library: who receives internal errors, who shows warnings, who is asked
 * whether to try again, who is told of a file that is held open.
 *
 * Each is an object: it takes over where it is made, and gives back to the one before it where it goes out
 * of scope, to the library's default at the end; they do not know what was set through the C functions.
 * Make them at start-up, before any thread uses the library, and destroy them in the same thread after the
 * others have ended. The function runs in the thread whose call it belongs to, in several at once if need
 * be. One that throws ends there: the exception goes no further, and a question is then answered with no.
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
    // What an exception leaves is R().
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
/** The language of the messages (msglocal_establece_idioma()). */
inline void establece_idioma(unsigned long ranura) noexcept {
    msglocal_establece_idioma(ranura);
}
/** The language of the messages (msglocal_dame_idioma()). */
inline unsigned long dame_idioma() noexcept {
    return msglocal_dame_idioma();
}
/** Service mode, for good: one attempt, nothing shown (lumodir_establece_modo_servicio_sin_reintentos()). */
inline void establece_modo_servicio_sin_reintentos() noexcept {
    lumodir_establece_modo_servicio_sin_reintentos();
}

}  // namespace lumodir

#endif
