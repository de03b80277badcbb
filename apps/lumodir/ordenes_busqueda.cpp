// Searches and sizes: find, du. Both see directories as they are; those whose names begin with a dot are included on
// demand (find) or always (du).
#include <algorithm>
#include <chrono>
#include <cwchar>
#include <optional>

#include "comodines.hpp"
#include "consola.hpp"
#include "directorios.hpp"
#include "entradas.hpp"
#include "ficheros.hpp"
#include "lumodir.hpp"
#include "ordenes.hpp"
#include "respuesta.hpp"
#include "tabla.hpp"
#include "textos.hpp"

namespace mando {

namespace {

std::vector<std::wstring> i_partes(const std::wstring& texto, wchar_t separador) {
    std::vector<std::wstring> partes;
    for (size_t desde = 0; desde <= texto.size();) {
        const size_t fin = std::min(texto.find(separador, desde), texto.size());
        partes.push_back(texto.substr(desde, fin - desde));
        desde = fin + 1;
    }
    return partes;
}

// ---- What find looks for ----

struct medida {
    int sentido = 0;  // at least, at most, or exactly
    unsigned long long bytes = 0;
    bool cumple(unsigned long long otros) const {
        return sentido > 0 ? otros >= bytes : sentido < 0 ? otros <= bytes : otros == bytes;
    }
};

// "+10k", "-1mi", "300b", as fd writes them: k, m, g and t by 1000, ki, mi, gi and ti by 1024.
medida i_medida(const std::wstring& texto) {
    struct unidad {
        std::wstring_view nombre;
        unsigned long long bytes;
    };
    static constexpr unidad unidades[] = {{L"", 1},
                                          {L"b", 1},
                                          {L"k", 1000},
                                          {L"kb", 1000},
                                          {L"m", 1000000},
                                          {L"mb", 1000000},
                                          {L"g", 1000000000},
                                          {L"gb", 1000000000},
                                          {L"t", 1000000000000},
                                          {L"tb", 1000000000000},
                                          {L"ki", 1ull << 10},
                                          {L"kib", 1ull << 10},
                                          {L"mi", 1ull << 20},
                                          {L"mib", 1ull << 20},
                                          {L"gi", 1ull << 30},
                                          {L"gib", 1ull << 30},
                                          {L"ti", 1ull << 40},
                                          {L"tib", 1ull << 40}};
    std::wstring resto = en_minusculas(sin_blancos(texto));
    medida m;
    if (!resto.empty() && (resto[0] == L'+' || resto[0] == L'-')) {
        m.sentido = resto[0] == L'+' ? 1 : -1;
        resto.erase(0, 1);
    }
    const size_t cifras = std::min(resto.find_first_not_of(L"0123456789"), resto.size());
    constexpr size_t caben = 12;
    for (const unidad& u : unidades) {
        if (cifras > 0 && cifras <= caben && resto.substr(cifras) == u.nombre) {
            m.bytes = std::stoull(resto.substr(0, cifras)) * u.bytes;
            return m;
        }
    }
    throw uso_incorrecto{di("'%1' is not a size; write +10k (at least), -1mi (at most) or 300b", texto)};
}

// How long ago ("2d", "3weeks", "10min"), or a date as touch takes it; the answer is in seconds since 1970, UTC.
long long i_momento(const std::wstring& texto) {
    struct unidad {
        std::wstring_view nombre;
        long long segundos;
    };
    static constexpr unidad unidades[] = {
        {L"s", 1},           {L"sec", 1},         {L"min", 60},        {L"h", 3600},         {L"hour", 3600},
        {L"hours", 3600},    {L"d", 86400},       {L"day", 86400},     {L"days", 86400},     {L"w", 604800},
        {L"week", 604800},   {L"weeks", 604800},  {L"month", 2629800}, {L"months", 2629800}, {L"y", 31557600},
        {L"year", 31557600}, {L"years", 31557600}};
    const std::wstring limpio = en_minusculas(sin_blancos(texto));
    const size_t cifras = std::min(limpio.find_first_not_of(L"0123456789"), limpio.size());
    constexpr size_t caben = 9;
    for (const unidad& u : unidades) {
        if (cifras > 0 && cifras <= caben && sin_blancos(limpio.substr(cifras)) == u.nombre) {
            return lee_fecha(L"now", false) - std::stoll(limpio.substr(0, cifras)) * u.segundos;
        }
    }
    try {
        return lee_fecha(texto, false);
    } catch (const uso_incorrecto&) {
        throw uso_incorrecto{
            di("'%1' is no time; use 10min, 2h, 3d or 1week ago, or a date: 2024-05-01", texto)};
    }
}

class criterio {
public:
    explicit criterio(const peticion& p, const std::wstring& patron)
        : patron_(patron),
          entero_(es_patron(patron) || p.tiene("glob")),
          con_caja_(p.tiene("case-sensitive")),
          ruta_entera_(p.tiene("full-path")) {
        if (p.tiene("type")) {
            for (const std::wstring& tipo : i_partes(en_minusculas(p.valor("type")), L'|')) {
                tipos_ += i_tipo(tipo);
            }
        }
        if (p.tiene("extension")) {
            for (std::wstring& e : i_partes(p.valor("extension"), L'|')) {
                extensiones_.push_back(e.starts_with(L'.') ? e.substr(1) : e);
            }
        }
        if (p.tiene("exclude")) {
            excluidos_ = i_partes(p.valor("exclude"), L'|');
        }
        if (p.tiene("size")) {
            medida_ = i_medida(p.valor("size"));
        }
        if (p.tiene("changed-within")) {
            desde_ = i_momento(p.valor("changed-within"));
        }
        if (p.tiene("changed-before")) {
            hasta_ = i_momento(p.valor("changed-before"));
        }
    }

    bool excluye(const entrada& e) const {
        return std::any_of(excluidos_.begin(), excluidos_.end(),
                           [&](const std::wstring& x) { return cumple_patron(e.nombre, x); });
    }

    bool cumple(const entrada& e, const std::wstring& ruta) const {
        return i_por_tipo(e, ruta) && i_por_nombre(ruta_entera_ ? ruta : e.nombre) && i_por_extension(e) &&
               (!medida_ || (!e.es_directorio && medida_->cumple(e.bytes))) &&
               (!desde_ || e.modificada >= *desde_) && (!hasta_ || e.modificada < *hasta_);
    }

private:
    static wchar_t i_tipo(const std::wstring& tipo) {
        for (const std::wstring_view conocido : {L"file", L"directory", L"link", L"empty"}) {
            if (tipo == conocido || tipo == conocido.substr(0, 1)) {
                return conocido[0];
            }
        }
        if (tipo == L"dir" || tipo == L"symlink") {
            return tipo == L"dir" ? L'd' : L'l';
        }
        throw uso_incorrecto{di("--type must be file, directory, link or empty, not '%1'", tipo)};
    }

    static bool i_esta_vacia(const entrada& e, const std::wstring& ruta) {
        if (e.es_carpeta()) {
            const carpeta c = lee_carpeta(ruta);
            return c.leida && c.entradas.empty();
        }
        return !e.es_enlace && e.bytes == 0;
    }

    // "empty" is no kind: it is asked for beside the kinds.
    bool i_por_tipo(const entrada& e, const std::wstring& ruta) const {
        const wchar_t tipo = e.es_enlace ? L'l' : e.es_directorio ? L'd' : L'f';
        const bool vacias = tipos_.find(L'e') != tipos_.npos;
        const bool de_un_tipo = tipos_.find_first_not_of(L'e') != tipos_.npos;
        return (!de_un_tipo || tipos_.find(tipo) != tipos_.npos) && (!vacias || i_esta_vacia(e, ruta));
    }

    bool i_por_nombre(const std::wstring& nombre) const {
        if (patron_.empty()) {
            return true;
        }
        if (con_caja_) {
            return entero_ ? cumple_patron_exacto(nombre, patron_) : nombre.find(patron_) != nombre.npos;
        }
        return entero_ ? cumple_patron(nombre, patron_)
                       : en_mayusculas(nombre).find(en_mayusculas(patron_)) != nombre.npos;
    }

    bool i_por_extension(const entrada& e) const {
        return extensiones_.empty() ||
               std::any_of(extensiones_.begin(), extensiones_.end(), [&](const std::wstring& x) {
                   return !e.es_directorio && cumple_patron(extension_de(e.nombre), x);
               });
    }

    std::wstring patron_;
    bool entero_, con_caja_, ruta_entera_;
    std::wstring tipos_;  // their first letters
    std::vector<std::wstring> extensiones_, excluidos_;
    std::optional<medida> medida_;
    std::optional<long long> desde_, hasta_;
};

// ---- find ----

class busqueda {
public:
    busqueda(const peticion& p, const std::wstring& patron)
        : p_(p),
          que_(p, patron),
          halladas_(p),
          mas_hondo_(p.numero("max-depth", 10240, 10240)),
          menos_hondo_(p.numero("min-depth", 0, 10240)),
          cuantos_(p.numero("max-results", 0xFFFFFFFFul, 0xFFFFFFFFul)) {}

    void en(const std::wstring& directorio) {
        comprueba_directorio(directorio);
        recorre_con_progreso(directorio, [&](carpeta& c) { i_mira(c, directorio); });
    }

    int acaba() {
        responde(p_,
                 json::objeto()
                     .pon("found", halladas_.toma_lista())
                     .pon("not_shown", no_mostrados_)
                     .pon("unreadable", ilegibles_.ilegibles),
                 [&] { i_di_el_resto(); });
        di_ilegibles(ilegibles_);
        return hallados_ == 0 || !ilegibles_.ilegibles.empty() ? no : hecho;
    }

private:
    void i_di_el_resto() const {
        if (!tabla_.vacia()) {
            tabla_.pinta(salida());
        }
        if (salida().es_consola() && no_mostrados_ > 0) {
            salida().linea(
                di(no_mostrados_ == 1
                       ? frase("%1 directory whose name begins with a dot is not searched (--hidden)")
                       : frase("%1 directories whose names begin with a dot are not searched (--hidden)"),
                   con_miles(no_mostrados_)),
                estilo::tenue);
        }
    }
    void i_mira(carpeta& c, const std::wstring& base) {
        if (!c.leida) {
            ilegibles_.codigo_ilegible = ilegibles_.ilegibles.empty() ? c.codigo : ilegibles_.codigo_ilegible;
            ilegibles_.ilegibles.push_back(c.ruta);
        }
        const std::wstring directorio = i_como_se_dice(c, base);
        for (entrada& e : c.entradas) {
            if (e.es_directorio && e.nombre.starts_with(L'.') && !p_.tiene("hidden")) {
                e.se_entra = false;
                ++no_mostrados_;
                continue;
            }
            if (que_.excluye(e)) {
                e.se_entra = false;
                continue;
            }
            e.se_entra = c.nivel + 1 < mas_hondo_ && hallados_ < cuantos_;
            if (c.nivel + 1 >= menos_hondo_ && c.nivel < mas_hondo_ && hallados_ < cuantos_) {
                i_prueba(e, directorio.empty() ? e.nombre : bajo_de(directorio, e.nombre));
            }
        }
    }

    // As the person wrote it. The current directory, which nobody wrote, is left out.
    std::wstring i_como_se_dice(const carpeta& c, const std::wstring& base) const {
        if (p_.tiene("absolute-path")) {
            constexpr size_t prefijo = 4;
            const std::wstring& completa = c.del_sistema;
            return completa.starts_with(L"\\\\?\\UNC\\") ? L"\\" + completa.substr(prefijo + 3)
                                                         : completa.substr(prefijo);
        }
        return base == L"." ? (c.nivel == 0 ? L"" : c.bajo) : c.ruta;
    }

    void i_prueba(const entrada& e, const std::wstring& ruta) {
        if (!que_.cumple(e, ruta)) {
            return;
        }
        ++hallados_;
        halladas_.pieza([&] { return json_de(e, ruta, "path"); }, [&] { i_di(e, ruta); });
    }

    void i_di(const entrada& e, const std::wstring& ruta) {
        const std::wstring dicha = e.es_directorio ? ruta + L'\\' : ruta;
        if (p_.tiene("long")) {
            tabla_.fila({letras_de_atributos(e), e.es_directorio ? L"" : con_miles(e.bytes),
                         fecha_en_palabras(e.modificada, false), dicha});
        } else if (p_.tiene("print0")) {
            salida().escribe(ruta + std::wstring(1, L'\0'));
        } else {
            salida().linea(salida().es_consola() ? a_la_vista(dicha) : dicha,
                           e.es_directorio ? estilo::tenue : estilo::normal);
        }
    }

    const peticion& p_;
    criterio que_;
    respuesta_por_piezas halladas_;
    unsigned long mas_hondo_, menos_hondo_, cuantos_;
    unsigned long long hallados_ = 0, no_mostrados_ = 0;
    recuento ilegibles_;
    tabla tabla_{{{.titulo = "attributes"},
                  {.titulo = "bytes", .a_la_derecha = true},
                  {.titulo = "modified"},
                  {.titulo = "path", .elastica = true}}};
};

int i_find(peticion& p) {
    std::vector<std::wstring> donde = p.argumentos;
    std::wstring patron;
    // A pattern holds no separator, unless whole paths are compared. What holds one is where to look, and so is the only
    // argument when it is a directory.
    const bool hay_patron =
        !donde.empty() &&
        (p.tiene("full-path") ||
         (donde[0].find_first_of(L"\\/:") == donde[0].npos &&
          !(donde.size() == 1 && donde[0].find_first_not_of(L'.') == donde[0].npos) &&
          !(donde.size() == 1 && !donde[0].empty() && que_hay_en(donde[0]) == clase_de_entrada::directorio)));
    if (hay_patron) {
        patron = donde[0];
        donde.erase(donde.begin());
    }
    if (donde.empty()) {
        donde.push_back(L".");
    }
    busqueda b(p, patron);
    for (const std::wstring& directorio : donde) {
        b.en(directorio);
    }
    return b.acaba();
}

// ---- du ----

struct parte {
    std::wstring bajo;
    recuento cuenta;
};

// What a directory holds, and what each directory below it does, down to some levels.
std::vector<parte> i_partes_de(const std::wstring& directorio, size_t niveles) {
    std::vector<parte> partes;
    std::vector<size_t> abiertas;  // at each level, the part that gathers what is found now
    recorre_con_progreso(directorio, [&](const carpeta& c) {
        abiertas.resize(std::min(abiertas.size(), c.nivel));
        if (c.nivel <= niveles) {
            abiertas.resize(c.nivel);
            abiertas.push_back(partes.size());
            partes.push_back({c.bajo, {}});
        }
        for (const size_t cual : abiertas) {
            suma(partes[cual].cuenta, c);
        }
    });
    return partes;
}

json i_json_de_parte(const parte& x, std::string_view clave, const std::wstring& nombre) {
    return json::objeto()
        .pon(clave, nombre)
        .pon("bytes", x.cuenta.bytes)
        .pon("files", x.cuenta.ficheros)
        .pon("directories", x.cuenta.directorios)
        .pon("links", x.cuenta.enlaces);
}

class medicion {
public:
    medicion(const peticion& p, bool uno_solo)
        : p_(p),
          niveles_(p.numero("depth", uno_solo ? 1 : 0, 10240)),
          top_(p.numero("top", 1000000, 1000000)) {}

    void de(const std::wstring& ruta) {
        if (que_hay_en(ruta) == clase_de_entrada::fichero) {
            i_fichero(ruta);
            return;
        }
        comprueba_directorio(ruta);
        std::vector<parte> partes = i_partes_de(ruta, niveles_);
        const parte todo = partes.front();
        partes.erase(partes.begin());
        if (!p_.tiene("sort") || en_minusculas(p_.valor("sort")) == L"size") {
            std::stable_sort(partes.begin(), partes.end(),
                             [](const parte& a, const parte& b) { return a.cuenta.bytes > b.cuenta.bytes; });
        } else if (en_minusculas(p_.valor("sort")) != L"name") {
            throw uso_incorrecto{di("--sort must be size or name, not '%1'", p_.valor("sort"))};
        }
        partes.resize(std::min<size_t>(partes.size(), top_));
        i_apunta(ruta, todo, partes);
        for (const std::wstring& ilegible : todo.cuenta.ilegibles) {
            ilegibles_.codigo_ilegible =
                ilegibles_.ilegibles.empty() ? todo.cuenta.codigo_ilegible : ilegibles_.codigo_ilegible;
            ilegibles_.ilegibles.push_back(ilegible);
        }
    }

    int acaba() {
        responde(p_, lista_, [&] { tabla_.pinta(salida()); });
        di_ilegibles(ilegibles_);
        return ilegibles_.ilegibles.empty() && !fallo_ ? hecho : no;
    }

private:
    void i_fichero(const std::wstring& ruta) {
        parte x;
        const std::optional<unsigned long long> bytes = lumodir::get_tamanyo_fichero(ruta_de_trabajo(ruta));
        fallo_ = fallo_ || !bytes;
        x.cuenta.bytes = bytes.value_or(0);
        x.cuenta.ficheros = 1;
        i_apunta(ruta, x, {});
    }

    void i_apunta(const std::wstring& ruta, const parte& todo, const std::vector<parte>& partes) {
        const auto fila = [&](const parte& x, const std::wstring& nombre, estilo como) {
            tabla_.fila({celda(con_miles(x.cuenta.bytes), como), celda(tamanyo_legible(x.cuenta.bytes), como),
                         celda(con_miles(x.cuenta.ficheros), como), celda(nombre, como)});
        };
        for (const parte& x : partes) {
            fila(x, bajo_de(ruta, x.bajo), estilo::normal);
        }
        fila(todo, ruta, partes.empty() ? estilo::normal : estilo::titulo);
        json debajo = json::lista();
        for (const parte& x : partes) {
            debajo.agrega(i_json_de_parte(x, "directory", x.bajo));
        }
        lista_.agrega(i_json_de_parte(todo, "path", ruta)
                          .pon("unreadable", todo.cuenta.ilegibles)
                          .pon("tree", std::move(debajo)));
    }

    const peticion& p_;
    unsigned long niveles_, top_;
    bool fallo_ = false;
    recuento ilegibles_;
    json lista_ = json::lista();
    tabla tabla_{{{.titulo = "bytes", .a_la_derecha = true},
                  {.titulo = "size", .a_la_derecha = true},
                  {.titulo = "files", .a_la_derecha = true},
                  {.titulo = "path", .elastica = true}}};
};

int i_du(peticion& p) {
    const std::vector<std::wstring> rutas =
        p.argumentos.empty() ? std::vector<std::wstring>{L"."} : rutas_de(p, que_valen::todo).rutas;
    for (const std::wstring& ruta : rutas) {
        comprueba_existe(ruta);
    }
    medicion m(p, rutas.size() == 1);
    for (const std::wstring& ruta : rutas) {
        m.de(ruta);
    }
    return m.acaba();
}

constexpr opcion opciones_find[] = {
    {.nombre = "type",
     .valor = "T",
     .ayuda = "only a file, directory, link, or what is empty; the first letter is enough",
     .letra = 't',
     .varias = true},
    {.nombre = "extension",
     .valor = "E",
     .ayuda = "only files with this extension; may be given several times",
     .letra = 'e',
     .varias = true},
    {.nombre = "size",
     .valor = "S",
     .ayuda = "only files of +S (at least), -S (at most) or exactly S: b, k, m, g, t by 1000, ki, mi, gi, ti "
              "by 1024",
     .letra = 'S'},
    {.nombre = "changed-within",
     .valor = "D",
     .ayuda = "changed since: 10min, 2h, 3d, 1week, or a date as touch takes it"},
    {.nombre = "changed-before", .valor = "D", .ayuda = "not changed since"},
    {.nombre = "max-depth", .valor = "N", .ayuda = "not deeper than N levels", .letra = 'd'},
    {.nombre = "min-depth", .valor = "N", .ayuda = "not above N levels"},
    {.nombre = "exclude",
     .valor = "P",
     .ayuda = "leave out what matches the pattern, and what is below; may be given several times",
     .letra = 'E',
     .varias = true},
    {.nombre = "hidden", .ayuda = "search directories whose names begin with a dot too", .letra = 'H'},
    {.nombre = "glob", .ayuda = "PATTERN is that of the whole name, also without * and ?", .letra = 'g'},
    {.nombre = "full-path", .ayuda = "compare PATTERN with the whole path", .letra = 'p'},
    {.nombre = "case-sensitive", .ayuda = "case-sensitive", .letra = 's'},
    {.nombre = "absolute-path", .ayuda = "show full paths", .letra = 'a'},
    {.nombre = "max-results", .valor = "N", .ayuda = "stop after N"},
    {.nombre = "long", .ayuda = "with attributes, sizes and dates", .letra = 'l'},
    {.nombre = "print0", .ayuda = "a zero byte after each path instead of a line break", .letra = '0'},
};
constexpr ejemplo ejemplos_find[] = {
    {.linea = R"(find report C:\data)", .que_hace = "everything whose name holds the word"},
    {.linea = "find *.log --changed-before 30d | lumodir rm - --yes", .que_hace = "deletes old logs"},
    {.linea = R"(find -t f -S +100m C:\)", .que_hace = "files of 100 megabytes and more"},
};
constexpr opcion opciones_du[] = {
    {.nombre = "depth",
     .valor = "N",
     .ayuda = "directories down to N levels (1, or 0 for several paths)",
     .letra = 'd'},
    {.nombre = "sort", .valor = "BY", .ayuda = "by size (the default) or name"},
    {.nombre = "top", .valor = "N", .ayuda = "only the first N"},
};
constexpr ejemplo ejemplos_du[] = {
    {.linea = R"(du C:\data)", .que_hace = "the largest directories first, and the total"},
    {.linea = R"(du C:\data\*)", .que_hace = "one line for each"},
};

constexpr orden tabla_busqueda[] = {
    {.nombre = "find",
     .argumentos = "[PATTERN] [DIR...]",
     .resumen = "find files and directories by name, size or date",
     .detalle = "PATTERN is a part of the name, or with * or ? the whole name, ignoring case. Options have "
                "the names that they have in fd. Links to directories are not followed. The exit code is 1 "
                "when nothing is found, or when a directory could not be read.",
     .maximo = cuantos_sean,
     .opciones = opciones_find,
     .ejemplos = ejemplos_find,
     .ejecuta = i_find},
    {.nombre = "du",
     .argumentos = "[PATH...]",
     .resumen = "what directories hold: bytes and files, everything below included",
     .detalle = "Directories whose names begin with a dot count; links are not followed. The exit code is 1 "
                "when a directory could not be read.",
     .maximo = cuantos_sean,
     .opciones = opciones_du,
     .ejemplos = ejemplos_du,
     .ejecuta = i_du},
};

}  // namespace

const std::span<const orden> ordenes_busqueda = tabla_busqueda;

}  // namespace mando
