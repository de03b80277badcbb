#include "anfitrion.hpp"

#include <atomic>
#include <mutex>
#include <set>
#include <utility>

#include "companions/buclrein.h"
#include "companions/error_interno.h"
#include "companions/lmaviso.h"
#include "companions/msglocal.h"
#include "consola.hpp"
#include "frases.hpp"
#include "ocupantes.hpp"
#include "recorrido.hpp"
#include "textos.hpp"
#include "trabajo.hpp"

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
constexpr unsigned long ranura_es = 0, ranura_en = 8, ranura_es_419 = 24;

// The names that speakers of a language give it.
struct nombre_propio {
    std::wstring_view nombre;
    unsigned long ranura;
};
constexpr nombre_propio nombres_propios[] = {
    {L"espa\u00f1ol", 0},
    {L"espanol", 0},
    {L"castellano", 0},
    {L"fran\u00e7ais", 1},
    {L"portugu\u00eas", 3},
    {L"catal\u00e0", 4},
    {L"italiano", 5},
    {L"galego", 9},
    {L"rom\u00e2n\u0103", 11},
    {L"\u4e2d\u6587", 12},
    {L"deutsch", 13},
    {L"\u0440\u0443\u0441\u0441\u043a\u0438\u0439", 18},
    {L"polski", 31},
    {L"t\u00fcrk\u00e7e", 33},
    {L"\u65e5\u672c\u8a9e", 39},
};

// Texts of the library, from whatever thread it works on.
std::mutex guarda_de_avisos;
std::vector<std::wstring> avisos;
std::atomic<bool> quejas{false};

// Answers whether it is new: a deletion in passes may say the same in each of them.
bool i_apunta(const wchar_t* texto) {
    static std::set<std::wstring> dichos;
    quejas = true;
    const std::lock_guard guarda(guarda_de_avisos);
    avisos.emplace_back(texto);
    return dichos.insert(texto).second;
}

void i_muestra(const wchar_t* texto) {
    errores().escribe("lumodir: ", estilo::aviso).linea(std::wstring_view(texto));
}

void i_recibe_aviso(const wchar_t* texto, void*) {
    if (i_apunta(texto)) {
        const std::lock_guard turno(turno_de_consola());
        i_muestra(texto);
    }
}

void i_recibe_error(const char* expresion, const char* modulo, unsigned long linea, const wchar_t* detalle,
                    void* verboso) {
    quejas = true;
    if (verboso == nullptr) {
        return;
    }
    const std::lock_guard turno(turno_de_consola());
    std::wstring que = de_pagina_activa(expresion);
    if (detalle != nullptr) {
        que += L" [" + std::wstring(detalle) + L"]";
    }
    errores().linea(
        di("internal error: %1 in %2, line %3", que, de_pagina_activa(modulo), std::to_wstring(linea)),
        estilo::tenue);
}

std::wstring en_curso;

unsigned short i_recibe_pregunta(const wchar_t* mensaje, unsigned long codigo, void*) {
    if (interrumpido()) {
        return FALSO;
    }
    std::wstring quienes;
    if (codigo == ERROR_SHARING_VIOLATION || codigo == ERROR_LOCK_VIOLATION ||
        codigo == ERROR_ACCESS_DENIED) {
        std::wstring ruta;
        {
            const std::lock_guard guarda(guarda_de_avisos);
            ruta = en_curso;
        }
        quienes = ruta.empty() ? ruta : quienes_tienen(ruta);
    }
    const std::lock_guard turno(turno_de_consola());
    i_muestra(mensaje);
    if (!quienes.empty()) {
        errores().linea(di("It is held by %1.", quienes));
    }
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

bool hay_avisos() {
    const std::lock_guard guarda(guarda_de_avisos);
    return !avisos.empty();
}

bool hubo_quejas() {
    return quejas.exchange(false);
}

ruta_en_curso::ruta_en_curso(const std::wstring& ruta) {
    const std::lock_guard guarda(guarda_de_avisos);
    en_curso = ruta;
}

ruta_en_curso::~ruta_en_curso() {
    const std::lock_guard guarda(guarda_de_avisos);
    en_curso.clear();
}

std::wstring quienes_tienen(const std::wstring& ruta) {
    std::wstring completa = ruta_exacta(ruta);
    // The Restart Manager wants paths without the prefix where they can do without.
    constexpr size_t prefijo = 4;
    if (completa.size() < MAX_PATH && !completa.starts_with(L"\\\\?\\UNC\\")) {
        completa.erase(0, prefijo);
    }
    std::wstring quienes;
    for (const ocupante& o : quien_tiene(completa)) {
        quienes +=
            (quienes.empty() ? L"" : L", ") + a_la_vista(o.nombre) + L" (" + std::to_wstring(o.pid) + L")";
    }
    return quienes;
}

namespace {

std::optional<unsigned long> i_busca_entero(const std::wstring& buscado) {
    for (const idioma& i : idiomas) {
        if (buscado == ancho_de(i.codigo) || buscado == ancho_de(i.ingles)) {
            return i.ranura;
        }
    }
    for (const nombre_propio& n : nombres_propios) {
        if (iguales_sin_caja(buscado, n.nombre)) {
            return n.ranura;
        }
    }
    return std::nullopt;
}

// As Windows and the web name languages with their countries: "es-ES", "zh-Hans-CN".
std::optional<unsigned long> i_busca_con_pais(const std::wstring& buscado) {
    const size_t guion = buscado.find_first_of(L"-_");
    if (guion == buscado.npos) {
        return std::nullopt;
    }
    const std::wstring lengua = buscado.substr(0, guion), pais = buscado.substr(guion + 1);
    const std::optional<unsigned long> entero = i_busca_entero(lengua + L"-" + pais);
    if (entero) {
        return entero;
    }
    if (lengua == L"es" && pais != L"es") {
        return ranura_es_419;
    }
    if (lengua == L"zh" && pais != L"cn" && pais != L"sg" && !pais.starts_with(L"hans")) {
        return std::nullopt;  // the texts are in simplified characters
    }
    // A code of two letters, not one of the names.
    return lengua.size() == 2 ? i_busca_entero(lengua) : std::nullopt;
}

}  // namespace

std::optional<unsigned long> busca_idioma(std::wstring_view nombre) {
    const std::wstring buscado = en_minusculas(nombre);
    if (const auto ranura = i_busca_entero(buscado)) {
        return ranura;
    }
    if (const auto ranura = i_busca_con_pais(buscado)) {
        return ranura;
    }
    if (!buscado.empty() && buscado.size() <= 2 && buscado.find_first_not_of(L"0123456789") == buscado.npos) {
        const unsigned long ranura = std::stoul(buscado);
        if (ranura <= ultima_ranura) {
            return ranura;
        }
    }
    return std::nullopt;
}

unsigned long ranura_de_los_textos(unsigned long ranura) {
    const bool en_castellano =
        ranura == 9 || (ranura >= 14 && ranura <= 17) || (ranura >= 19 && ranura <= 23);
    const bool en_ingles = ranura == 10 || (ranura >= 25 && ranura <= 30) || ranura == 32 ||
                           (ranura >= 34 && ranura <= 38) || ranura >= 40;
    return en_castellano ? ranura_es : en_ingles ? ranura_en : ranura;
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
