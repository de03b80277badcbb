// A path tied to its place, and the text of such paths: roots, prefixes, full forms. One that Windows would refuse for its
// length is made full and given the extended-length prefix.
//
// Promises: a path that depends on the current directory is made full once, where its `ruta_fijada` is made: whoever
// changes the current directory meanwhile (a question, a callback, another thread) redirects nothing.
// Checked by tests/companions/lmlongpath_win32_test.cpp.
#pragma once

#include <utility>

#include "companions/cadena.hpp"
#include "companions/sistema.hpp"

namespace interno {

// A path tied to its place: the text as the caller gave it, for messages, reports and results, and its full form, for
// the system. An operation of several calls makes one and hands it to each; a call alone makes its own. The given
// text must outlive it.
class ruta_fijada {
public:
    enum class uso { acceso, busqueda };  // a search keeps the dots at the end of its pattern

    // NOLINTNEXTLINE(google-explicit-constructor): a text is a path for the time of one call
    ruta_fijada(const wchar_t* dada, uso para = uso::acceso) noexcept;
    // For a form that was made elsewhere: of a name in a directory that is fixed already.
    ruta_fijada(const wchar_t* dada, cadena_w forma) noexcept
        : dada_(dada), texto_(forma.c_str()), larga_(std::move(forma)) {}
    ruta_fijada(const ruta_fijada&) = delete;
    ruta_fijada& operator=(const ruta_fijada&) = delete;
    // It may end between a call and the reading of its error code.
    ~ruta_fijada() {
        if (!larga_.es_nula()) {
            const conserva_ultimo_error conserva;
            larga_.vacia();
        }
    }

    const wchar_t* dada() const noexcept { return dada_; }
    // What the system is given.
    const wchar_t* c_str() const noexcept { return texto_; }
    // For an answer that shows the path: as it was given, unless the system would refuse it so.
    const wchar_t* dada_si_cabe() const noexcept;

private:
    static constexpr std::size_t sitio_corto = MAX_PATH;

    void i_fija(const wchar_t* de);
    void i_devuelve_nombre(vista_w nombre);

    const wchar_t* dada_;
    const wchar_t* texto_;
    cadena_w larga_;
    wchar_t corta_[sitio_corto];  // a full form that needs no block
};

// Whether something bears a name. What the system cannot tell is neither there nor missing.
struct existencia {
    enum class estado { hay, falta, no_se_sabe };

    estado cual;
    DWORD codigo;     // why it is not known to be there; 0 when it is
    DWORD atributos;  // INVALID_FILE_ATTRIBUTES unless it is there

    bool hay() const noexcept { return cual == estado::hay; }
    bool falta() const noexcept { return cual == estado::falta; }
    bool es_directorio() const noexcept { return hay() && (atributos & FILE_ATTRIBUTE_DIRECTORY) != 0; }
    bool es_de_solo_lectura() const noexcept { return hay() && (atributos & FILE_ATTRIBUTE_READONLY) != 0; }
};

// Permission modes of lmlongpath_wchmod (_S_IREAD, _S_IWRITE), and what attributes become with one.
inline constexpr int modo_lectura = 0x100;
inline constexpr int modo_escritura = 0x80;
constexpr DWORD i_con_proteccion(DWORD atributos, int modo) noexcept {
    constexpr DWORD marca = FILE_ATTRIBUTE_READONLY;
    return (modo & modo_escritura) != 0 ? atributos & ~marca : atributos | marca;
}

// With a prefix of the system's, long (`\\?\`) or of devices (`\\.\`), a path is taken as it is.
bool i_lleva_prefijo(vista_w ruta) noexcept;
inline vista_w i_sin_prefijo(vista_w ruta) noexcept {
    constexpr std::size_t largo = 4;  // of either
    return ruta.substr(i_lleva_prefijo(ruta) ? largo : 0);
}

inline vista_w i_sin_separadores_finales(vista_w ruta) noexcept {
    return ruta.substr(0, ruta.find_last_not_of(L"\\/") + 1);
}

// How much of a path is its root: drive, share (with whatever separators), or either behind a prefix of the system's.
std::size_t i_largo_de_raiz(vista_w ruta) noexcept;
// Of a full path without separators at its end: it names no entry of a directory.
inline bool i_es_raiz(vista_w ruta) noexcept {
    return ruta.size() <= i_largo_de_raiz(ruta);
}

// The path of the last of some names, each of which lies in the one before it, the first in `directorio`.
template <class Nombre>
cadena_w i_ruta_bajo(vista_w directorio, std::size_t nombres, Nombre nombre) {
    std::size_t largo = directorio.size() + nombres;
    for (std::size_t i = 0; i < nombres; ++i) {
        largo += nombre(i).size();
    }
    cadena_w ruta = cadena_w::con_sitio(largo);
    wchar_t* fin = ruta.datos();
    const auto escribe = [&fin](vista_w texto) {
        rasgos_utf16::copy(fin, texto.data(), texto.size());
        fin += texto.size();
    };
    escribe(directorio);
    for (std::size_t i = 0; i < nombres; ++i) {
        escribe(i == 0 && (directorio.empty() || acaba_en_separador(directorio)) ? vista_w()
                                                                                 : vista_w(L"\\"));
        escribe(nombre(i));
    }
    ruta.acorta(static_cast<std::size_t>(fin - ruta.datos()));
    return ruta;
}

// Letter case of any alphabet aside, as file systems compare.
bool i_mismo_nombre(vista_w a, vista_w b) noexcept;

// Relative parts resolved, "/" turned into "\"; the path as it is when the system takes it literally (`\\?\`). When the
// system cannot tell, the first answers with a NULL string, the other one with the path.
cadena_w lmlongpath_forma_completa_si_se_sabe(const ruta_fijada& ruta);
cadena_w lmlongpath_forma_completa(const ruta_fijada& ruta);
// The full form with the extended-length prefix, whatever its length: names put behind it are taken to the letter,
// final blanks and dots and names of devices included. A NULL string when the system cannot tell.
cadena_w lmlongpath_forma_literal(const wchar_t* ruta);

// The path without an extended-length prefix, in any of its spellings (`\\?\C:\x` and `//./C:\x` are `C:\x`,
// `\\?\UNC\srv\x` is `\\srv\x`); any other path, that of a volume without a letter (`\\?\Volume{...}\x`) included, as
// it is.
cadena_w lmlongpath_desprepend_path(vista_w ruta);

}  // namespace interno
