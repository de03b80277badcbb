#include "anfitrion.hpp"

#include <atomic>
#include <mutex>
#include <set>
#include <utility>

#include "consola.hpp"
#include "frases.hpp"
#include "ocupantes.hpp"
#include "recorrido.hpp"
#include "respuesta.hpp"
#include "textos.hpp"
#include "trabajo.hpp"

namespace mando {

namespace {

using lumodir::idioma;

struct nombre_de_lengua {
    idioma cual;
    std::string_view codigo;  // "pt-br"
    std::string_view ingles;  // "portuguese-brazil"
};
constexpr nombre_de_lengua idiomas[] = {
    {.cual = idioma::espanyol, .codigo = "es", .ingles = "spanish"},
    {.cual = idioma::frances, .codigo = "fr", .ingles = "french"},
    {.cual = idioma::portugues_brasil, .codigo = "pt-br", .ingles = "portuguese-brazil"},
    {.cual = idioma::portugues_portugal, .codigo = "pt", .ingles = "portuguese"},
    {.cual = idioma::catalan, .codigo = "ca", .ingles = "catalan"},
    {.cual = idioma::italiano, .codigo = "it", .ingles = "italian"},
    {.cual = idioma::espanyol_mexico, .codigo = "es-mx", .ingles = "spanish-mexico"},
    {.cual = idioma::espanyol_argentina, .codigo = "es-ar", .ingles = "spanish-argentina"},
    {.cual = idioma::ingles, .codigo = "en", .ingles = "english"},
    {.cual = idioma::gallego, .codigo = "gl", .ingles = "galician"},
    {.cual = idioma::bulgaro, .codigo = "bg", .ingles = "bulgarian"},
    {.cual = idioma::rumano, .codigo = "ro", .ingles = "romanian"},
    {.cual = idioma::chino_simplificado, .codigo = "zh", .ingles = "chinese"},
    {.cual = idioma::aleman, .codigo = "de", .ingles = "german"},
    {.cual = idioma::ruso, .codigo = "ru", .ingles = "russian"},
    {.cual = idioma::espanyol_america, .codigo = "es-419", .ingles = "spanish-america"},
    {.cual = idioma::tailandes, .codigo = "th", .ingles = "thai"},
    {.cual = idioma::checo, .codigo = "cs", .ingles = "czech"},
    {.cual = idioma::croata, .codigo = "hr", .ingles = "croatian"},
    {.cual = idioma::esloveno, .codigo = "sl", .ingles = "slovenian"},
    {.cual = idioma::hungaro, .codigo = "hu", .ingles = "hungarian"},
    {.cual = idioma::polaco, .codigo = "pl", .ingles = "polish"},
    {.cual = idioma::turco, .codigo = "tr", .ingles = "turkish"},
    {.cual = idioma::japones, .codigo = "ja", .ingles = "japanese"},
};

constexpr unsigned long ultima_ranura = 40;

// The names that speakers of a language give it.
struct nombre_propio {
    std::wstring_view nombre;
    idioma cual;
};
constexpr nombre_propio nombres_propios[] = {
    {.nombre = L"espa\u00f1ol", .cual = idioma::espanyol},
    {.nombre = L"espanol", .cual = idioma::espanyol},
    {.nombre = L"castellano", .cual = idioma::espanyol},
    {.nombre = L"fran\u00e7ais", .cual = idioma::frances},
    {.nombre = L"portugu\u00eas", .cual = idioma::portugues_portugal},
    {.nombre = L"catal\u00e0", .cual = idioma::catalan},
    {.nombre = L"italiano", .cual = idioma::italiano},
    {.nombre = L"galego", .cual = idioma::gallego},
    {.nombre = L"rom\u00e2n\u0103", .cual = idioma::rumano},
    {.nombre = L"\u4e2d\u6587", .cual = idioma::chino_simplificado},
    {.nombre = L"deutsch", .cual = idioma::aleman},
    {.nombre = L"\u0440\u0443\u0441\u0441\u043a\u0438\u0439", .cual = idioma::ruso},
    {.nombre = L"polski", .cual = idioma::polaco},
    {.nombre = L"t\u00fcrk\u00e7e", .cual = idioma::turco},
    {.nombre = L"\u65e5\u672c\u8a9e", .cual = idioma::japones},
};

// What the library has said, on whichever thread it works.
std::mutex guarda_de_avisos;
std::vector<std::wstring> avisos;
std::atomic<bool> quejas{false};

// Whether the text is new: a deletion in passes may say the same in each of them.
bool i_apunta(std::wstring_view texto) {
    static std::set<std::wstring> dichos;
    quejas = true;
    const std::lock_guard guarda(guarda_de_avisos);
    avisos.emplace_back(texto);
    return dichos.emplace(texto).second;
}

void i_recibe_aviso(std::wstring_view texto) {
    if (i_apunta(texto)) {
        const std::lock_guard turno(turno_de_consola());
        di_queja(texto, estilo::aviso);
    }
}

void i_recibe_error(const lumodir::error_interno& error, bool verboso) {
    quejas = true;
    if (!verboso) {
        return;
    }
    const std::lock_guard turno(turno_de_consola());
    std::wstring que = de_pagina_activa(error.expresion);
    if (!error.detalle.empty()) {
        que += L" [" + std::wstring(error.detalle) + L"]";
    }
    errores().linea(di("internal error: %1 in %2, line %3", que, de_pagina_activa(error.etiqueta),
                       std::to_wstring(error.linea)),
                    estilo::tenue);
}

std::wstring ruta_de_ahora;

bool i_recibe_pregunta(std::wstring_view mensaje, unsigned long codigo) {
    if (interrumpido()) {
        return false;
    }
    std::wstring quienes;
    if (codigo == ERROR_SHARING_VIOLATION || codigo == ERROR_LOCK_VIOLATION ||
        codigo == ERROR_ACCESS_DENIED) {
        std::wstring ruta;
        {
            const std::lock_guard guarda(guarda_de_avisos);
            ruta = ruta_de_ahora;
        }
        quienes = ruta.empty() ? ruta : quienes_tienen(ruta);
    }
    const std::lock_guard turno(turno_de_consola());
    di_queja(mensaje, estilo::aviso);
    if (!quienes.empty()) {
        errores().linea(di("It is held by %1.", quienes));
    }
    if (hay_quien_conteste() && pregunta(di("Try again?"))) {
        return true;
    }
    i_apunta(mensaje);
    return false;
}

}  // namespace

anfitrion::anfitrion(bool verboso)
    : errores_([verboso](const lumodir::error_interno& error) { i_recibe_error(error, verboso); }),
      avisos_(i_recibe_aviso),
      preguntas_(i_recibe_pregunta) {}

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
    ruta_de_ahora = ruta;
}

ruta_en_curso::~ruta_en_curso() {
    const std::lock_guard guarda(guarda_de_avisos);
    ruta_de_ahora.clear();
}

std::wstring quienes_tienen(const std::wstring& ruta) {
    std::wstring completa = ruta_exacta(ruta);
    // The Restart Manager wants no prefix on a path that does not need one.
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

std::optional<idioma> busca_idioma(std::wstring_view nombre) {
    const std::wstring buscado = en_minusculas(nombre);
    for (const nombre_de_lengua& n : idiomas) {
        if (buscado == ancho_de(n.codigo) || buscado == ancho_de(n.ingles)) {
            return n.cual;
        }
    }
    for (const nombre_propio& n : nombres_propios) {
        if (iguales_sin_caja(buscado, n.nombre)) {
            return n.cual;
        }
    }
    // As Windows and the web name languages with their countries: "es-ES", "zh-Hans-CN".
    if (const std::optional<idioma> cual = lumodir::idioma_de_etiqueta(a_utf8(buscado))) {
        return cual;
    }
    if (!buscado.empty() && buscado.size() <= 2 && buscado.find_first_not_of(L"0123456789") == buscado.npos) {
        const unsigned long ranura = std::stoul(buscado);
        if (ranura <= ultima_ranura) {
            return static_cast<idioma>(ranura);
        }
    }
    return std::nullopt;
}

idioma idioma_de_los_textos(idioma cual) {
    if (lumodir::tiene_textos(cual)) {
        return cual;
    }
    // The reserved slots that msglocal.h gives to Spanish.
    const auto ranura = static_cast<unsigned long>(cual);
    const bool en_castellano =
        cual == idioma::gallego || (ranura >= 14 && ranura <= 17) || (ranura >= 19 && ranura <= 23);
    return en_castellano ? idioma::espanyol : idioma::ingles;
}

std::wstring nombres_de_idiomas() {
    std::wstring todos;
    for (const nombre_de_lengua& n : idiomas) {
        todos += (todos.empty() ? L"" : L" ") + ancho_de(n.codigo);
    }
    return todos;
}

std::wstring nombre_de_idioma(idioma cual) {
    for (const nombre_de_lengua& n : idiomas) {
        if (n.cual == cual) {
            return ancho_de(n.ingles);
        }
    }
    return L"reserved";
}

}  // namespace mando
