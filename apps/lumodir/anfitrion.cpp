#include "anfitrion.hpp"

#include <atomic>
#include <mutex>
#include <utility>

#include "companions/buclrein.h"
#include "companions/error_interno.h"
#include "companions/lmaviso.h"
#include "consola.hpp"
#include "frases.hpp"
#include "textos.hpp"

namespace mando {

namespace {

constexpr idioma idiomas[] = {{0, "es", "spanish"},
                              {1, "fr", "french"},
                              {2, "pt-br", "portuguese-brazil"},
                              {3, "pt", "portuguese"},
                              {4, "ca", "catalan"},
                              {5, "it", "italian"},
                              {6, "es-mx", "spanish-mexico"},
                              {7, "es-ar", "spanish-argentina"},
                              {8, "en", "english"},
                              {9, "gl", "galician"},
                              {10, "bg", "bulgarian"},
                              {11, "ro", "romanian"},
                              {12, "zh", "chinese"},
                              {13, "de", "german"},
                              {18, "ru", "russian"},
                              {24, "es-419", "spanish-america"},
                              {25, "th", "thai"},
                              {26, "cs", "czech"},
                              {27, "hr", "croatian"},
                              {29, "sl", "slovenian"},
                              {30, "hu", "hungarian"},
                              {31, "pl", "polish"},
                              {33, "tr", "turkish"},
                              {39, "ja", "japanese"}};

constexpr unsigned long ultima_ranura = 40;

// Texts of the library, from whatever thread it works on.
std::mutex guarda_de_avisos;
std::vector<std::wstring> avisos;
std::atomic<bool> quejas{false};

void i_apunta(const wchar_t* texto) {
    quejas = true;
    const std::lock_guard guarda(guarda_de_avisos);
    avisos.emplace_back(texto);
}

void i_muestra(const wchar_t* texto) {
    errores().escribe("lumodir: ", estilo::aviso).linea(std::wstring_view(texto));
}

void i_recibe_aviso(const wchar_t* texto, void*) {
    i_apunta(texto);
    const std::lock_guard turno(turno_de_consola());
    i_muestra(texto);
}

void i_recibe_error(const char* expresion, const char* modulo, unsigned long linea, const wchar_t* detalle,
                    void* verboso) {
    quejas = true;
    if (verboso == nullptr) {
        return;
    }
    const std::lock_guard turno(turno_de_consola());
    errores().escribe("internal error: ", estilo::tenue).escribe(de_pagina_activa(expresion));
    if (detalle != nullptr) {
        errores().escribe(" [").escribe(std::wstring_view(detalle)).escribe("]");
    }
    errores().escribe(" in ").escribe(de_pagina_activa(modulo)).linea(L", line " + std::to_wstring(linea));
}

unsigned short i_recibe_pregunta(const wchar_t* mensaje, unsigned long, void*) {
    const std::lock_guard turno(turno_de_consola());
    i_muestra(mensaje);
    if (hay_quien_conteste() && pregunta(di("Try again?"))) {
        return CIERTO;
    }
    i_apunta(mensaje);
    return FALSO;
}

}  // namespace

void instala_anfitrion(bool verboso) {
    static int marca;
    error_interno_establece_receptor(i_recibe_error, verboso ? &marca : nullptr);
    lmaviso_establece_receptor(i_recibe_aviso, nullptr);
    buclrein_establece_receptor(i_recibe_pregunta, nullptr);
}

std::vector<std::wstring> toma_avisos() {
    const std::lock_guard guarda(guarda_de_avisos);
    return std::exchange(avisos, {});
}

bool hubo_quejas() {
    return quejas.exchange(false);
}

std::optional<unsigned long> busca_idioma(std::wstring_view nombre) {
    const std::wstring buscado = en_minusculas(nombre);
    for (const idioma& i : idiomas) {
        if (buscado == ancho_de(i.codigo) || buscado == ancho_de(i.ingles)) {
            return i.ranura;
        }
    }
    if (!buscado.empty() && buscado.size() <= 2 && buscado.find_first_not_of(L"0123456789") == buscado.npos) {
        const unsigned long ranura = std::stoul(buscado);
        if (ranura <= ultima_ranura) {
            return ranura;
        }
    }
    return std::nullopt;
}

std::wstring nombres_de_idiomas() {
    std::wstring todos;
    for (const idioma& i : idiomas) {
        todos += (todos.empty() ? L"" : L" ") + ancho_de(i.codigo);
    }
    return todos;
}

std::wstring nombre_de_idioma(unsigned long ranura) {
    for (const idioma& i : idiomas) {
        if (i.ranura == ranura) {
            return ancho_de(i.ingles);
        }
    }
    return L"reserved";
}

}  // namespace mando
