#include "estado/filas.hpp"

#include <algorithm>
#include <cstring>

#include "dirwin.h"
#include "estado/llamadas.hpp"
#include "modelos/nomsfich.hpp"
#include "timefich.h"

namespace estado {

using namespace apoyo;

namespace {

// A call on one text with a text to fill in.
constexpr wchar_t intacto[] = L"(untouched)";
template <auto F>
std::string con_texto(const argumentos& a) {
    wchar_t* texto = const_cast<wchar_t*>(intacto);
    const unsigned short r = F(ancho{a[0]}, &texto);
    return std::to_string(r) + " " + (texto == intacto ? "(untouched)" : toma(texto));
}
// A call that fills in a list of files.
template <auto F, class L, class... C>
std::string con_lista(const argumentos& a) {
    L l;
    std::memset(&l, 0x5A, sizeof l);
    return [&]<std::size_t... I>(std::index_sequence<I...>) {
        F(convierte<C>(a[I])..., &l);
        return muestra(l);
    }
    (std::index_sequence_for<C...>());
}
using tw = const wchar_t*;
using ta = const char*;

// ---- what the rows share

std::string si_o_no(bool b) {
    return b ? "1" : "0";
}
const texto_w* opcional(const argumento& a) {
    return a ? &*a : nullptr;
}
texto_w ida_y_vuelta(const texto_w& t) {
    return de_pagina(a_pagina(t));
}

argumentos un_fichero(generador& g) {
    return {g.fichero()};
}
argumentos un_directorio(generador& g) {
    return {g.directorio()};
}
argumentos un_patron(generador& g) {
    return {g.patron()};
}

// The system itself and the model have nothing to say to each other about the read-only mark of directories (Wine has
// none), about what Wine does with a link that is named outright, and about the root.
bool nada_de_directorios(reglas& r, const argumentos& a) {
    const hallazgo h = r.v.busca(*a[0]);
    return h.codigo != 0 || (!h.cosa->es_directorio && !h.entrada->enlace);
}
// A tree that can be walked from its root as the text names it: no link that is named outright, not the drive itself.
bool arbol_con_raiz(reglas& r, const argumentos& a) {
    const hallazgo h = r.v.busca(*a[0]);
    return h.codigo != 0 ||
           (h.padre != nullptr && !h.entrada->enlace && (h.cosa->es_directorio || !h.cosa->sujeto));
}
bool ningun_enlace(reglas& r, const argumentos& a) {
    const hallazgo h = r.v.busca(*a[0]);
    return h.entrada == nullptr || !h.entrada->enlace;
}
bool ni_raiz_ni_enlace(reglas& r, const argumentos& a) {
    const hallazgo h = r.v.busca(*a[0]);
    return h.codigo != 0 || (h.padre != nullptr && !h.entrada->enlace);
}
template <class Que>
bool hay_algo(const nodo& n, Que que) {
    if (que(n)) {
        return true;
    }
    for (const auto& [clave, hijo] : n.hijos) {
        if (hay_algo(hijo, que)) {
            return true;
        }
    }
    return false;
}
// Windows does not rename a directory below which something is open or where somebody is; Wine does.
bool se_puede_mover(reglas& r, const argumentos& a) {
    const hallazgo h = r.v.busca(*a[0]);
    if (h.codigo != 0) {
        return true;
    }
    if (h.padre == nullptr || h.entrada->enlace || h.cosa->es_directorio) {
        if (h.padre == nullptr || h.entrada->enlace ||
            hay_algo(*h.cosa, [](const nodo& n) { return n.es_actual || n.sujeto.has_value(); })) {
            return false;
        }
        // Nor into itself, which each refuses in its own way: by its own name, or by that of a link.
        const hallazgo destino = r.v.busca(*a[1]);
        if (hay_algo(*h.cosa, [&](const nodo& n) { return &n == destino.padre || &n == destino.cosa; })) {
            return false;
        }
        const lugar de = r.v.lee(*a[0]);
        const lugar donde = r.v.lee(*a[1]);
        for (std::size_t i = 0; i < de.nombres.size(); ++i) {
            if (i >= donde.nombres.size() || pliega(de.nombres[i]) != pliega(donde.nombres[i])) {
                return true;
            }
        }
        return false;
    }
    const hallazgo destino = r.v.busca(*a[1]);
    return destino.codigo != 0 || destino.cosa != h.cosa;
}

std::string lista_de(const lista& l) {
    std::vector<std::string> v;
    for (const texto_w& t : l) {
        v.push_back(u(t));
    }
    return entre_barras(v);
}
// Sorted by code unit, by byte, and by either without the case of A to Z.
lista ordenada(lista l) {
    std::sort(l.begin(), l.end());
    return l;
}
lista ordenada_en_bytes(lista l) {
    std::vector<std::string> v;
    for (const texto_w& t : l) {
        v.push_back(a_pagina(t));
    }
    std::sort(v.begin(), v.end(),
              [](const std::string& a, const std::string& b) { return modelos::orden_de_bytes(a, b) < 0; });
    l.clear();
    for (const std::string& t : v) {
        l.push_back(de_pagina(t));
    }
    return l;
}
template <class T>
T minusculas_ascii(T t) {
    for (auto& c : t) {
        c = c >= 'A' && c <= 'Z' ? static_cast<std::decay_t<decltype(c)>>(c + 32) : c;
    }
    return t;
}
lista ordenada_sin_caja(lista l) {
    std::stable_sort(l.begin(), l.end(), [](const texto_w& a, const texto_w& b) {
        return minusculas_ascii(a) < minusculas_ascii(b);
    });
    return l;
}
lista ordenada_sin_caja_en_bytes(lista l) {
    std::stable_sort(l.begin(), l.end(), [](const texto_w& a, const texto_w& b) {
        return modelos::orden_de_bytes(minusculas_ascii(a_pagina(a)), minusculas_ascii(a_pagina(b))) < 0;
    });
    for (texto_w& t : l) {
        t = ida_y_vuelta(t);
    }
    return l;
}
bool g_en_8_bits = false;

enum class cuales { ficheros, directorios };
template <class Vale>
lista nombres_que(reglas& r, const texto_w& patron, cuales c, Vale vale) {
    lista l;
    for (const auto& x : r.enumera(patron, true).entradas) {
        if (x.n->es_directorio == (c == cuales::directorios) && vale(x.nombre, *x.n)) {
            l.push_back(x.nombre);
        }
    }
    return l;
}
bool vale_todo(const texto_w&, const nodo&) {
    return true;
}
texto_w patron_de_conjunto(const texto_w& d) {
    return d + (acaba(d, L"\\") ? L"*.*" : L"\\*.*");
}
// The first entries of a directory, "." and ".." included.
std::vector<reglas::visto> las_primeras(reglas& r, const texto_w& d, std::size_t cuantas) {
    std::vector<reglas::visto> v = r.enumera(patron_de_conjunto(d)).entradas;
    v.resize(std::min(v.size(), cuantas));
    return v;
}
lista pasada_por_8_bits(lista l) {
    for (texto_w& t : l) {
        t = ida_y_vuelta(t);
    }
    return l;
}

template <cuales Cuales>
std::string modela_lista(reglas& r, const texto_w& patron, const texto_w* extension, const texto_w* path) {
    lista l = nombres_que(r, patron, Cuales, [&](const texto_w& n, const nodo&) {
        return Cuales == cuales::directorios
                   ? n[0] != L'.'
                   : r.va_con_extension(g_en_8_bits ? ida_y_vuelta(n) : n, extension);
    });
    l = g_en_8_bits ? ordenada_sin_caja_en_bytes(l) : ordenada_sin_caja(l);
    std::string donde = "(NULL)";
    if (path != nullptr) {
        texto_w p = *path;
        for (wchar_t& c : p) {
            c = c == L'/' ? L'\\' : c;
        }
        donde = u(reglas::sin_barra(p));
    }
    return donde + " " + lista_de(l);
}
// The directory as patterns are composed from it.
texto_w compuesto(const texto_w& directorio, const texto_w& nombre) {
    return directorio + (directorio.empty() || es_barra(directorio.back()) ? L"" : L"\\") + nombre;
}

std::string modela_fichsdir(reglas& r, const texto_w& d, const std::string& real, bool ordenado,
                            std::size_t cuantas = ~std::size_t{0}) {
    struct registro {
        std::string nombre;
        std::string texto;
    };
    std::vector<registro> v;
    for (const auto& x : las_primeras(r, d, cuantas)) {
        if (x.n->es_directorio) {
            continue;
        }
        const std::string nombre = u(ida_y_vuelta(x.nombre));
        std::string fecha;
        if (x.n->fecha) {
            fecha = std::to_string(hora_local(*x.n->fecha));
        } else {  // as it is: somewhen now
            const std::string antes = nombre + " ";
            std::size_t k =
                real.find(antes, 1);  // at the beginning of a record: a path may hold such a text too
            while (k != std::string::npos && std::strchr("[|", real[k - 1]) == nullptr) {
                k = real.find(antes, k + 1);
            }
            fecha = k == std::string::npos ? "?" : real.substr(k + antes.size());
            fecha = fecha.substr(0, fecha.find(' '));
        }
        v.push_back(
            {a_pagina(x.nombre), nombre + " " + fecha + " " + si_o_no(x.n->solo_lectura) + " " + u(d)});
    }
    if (ordenado) {
        std::stable_sort(v.begin(), v.end(), [](const registro& a, const registro& b) {
            return modelos::orden_de_bytes(a.nombre, b.nombre) < 0;
        });
    }
    std::vector<std::string> textos;
    for (const registro& x : v) {
        textos.push_back(x.texto);
    }
    return entre_barras(textos);
}

void modela_arbol(reglas& r, nodo& n, const texto_w& mostrado, const texto_w* extension, bool todos,
                  std::vector<std::string>& registros) {
    if (!se_deja(n, para_listar)) {
        return;
    }
    lista ficheros;
    lista directorios;
    for (const auto& [clave, hijo] : n.hijos) {
        if (!hijo.es_directorio && r.va_con_extension(hijo.nombre, extension)) {
            ficheros.push_back(hijo.nombre);
        } else if (hijo.es_directorio && !hijo.tiene_punto() && !hijo.enlace) {
            directorios.push_back(hijo.nombre);
        }
    }
    if (todos || !ficheros.empty()) {
        registros.push_back(u(mostrado) + " " + lista_de(ordenada_sin_caja(ficheros)));
    }
    directorios = ordenada_sin_caja(directorios);
    for (auto i = directorios.rbegin(); i != directorios.rend(); ++i) {
        modela_arbol(r, *n.hijo(*i), modelos::une(mostrado, *i), extension, todos, registros);
    }
}
template <auto F>
std::string llama_arbol(const argumentos& a) {
    unsigned long num = 77;
    ListaFicheros_u* listas = reinterpret_cast<ListaFicheros_u*>(0x5A5Aull);
    F(ancho{a[0]}, ancho{a[1]}, &num, &listas);
    std::vector<std::string> v;
    for (unsigned long i = 0; i < num; ++i) {
        std::vector<std::string> nombres;
        for (unsigned long k = 0; k < listas[i].num; ++k) {
            nombres.push_back(u8(listas[i].lista[k]));
        }
        v.push_back(u8(listas[i].path) + " " + entre_barras(nombres));
    }
    if (num == 0 && listas != nullptr) {
        return "no records, and not NULL";
    }
    lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(num, &listas);
    return entre_barras(v);
}
template <bool Todos>
std::string modela_llamada_arbol(reglas& r, const argumentos& a, const std::string&) {
    std::vector<std::string> registros;
    texto_w base = *a[0];
    for (wchar_t& c : base) {
        c = c == L'/' ? L'\\' : c;
    }
    base = reglas::sin_barra(base);
    const hallazgo h = r.v.busca(*a[0]);
    if (h.codigo == 0 && h.cosa->es_directorio) {
        modela_arbol(r, *h.cosa, base, opcional(a[1]), Todos, registros);
    } else if (Todos) {
        registros.push_back(u(base) + " []");
    }
    return entre_barras(registros);
}

template <auto F>
std::string con_bandera(const argumentos& a) {
    unsigned short bandera = 0x5A5A;
    F(ancho{a[0]}, &bandera);
    return std::to_string(bandera);
}

// Listings that somebody stops when he is asked for the so-manieth time, which is before so many entries.
argumentos directorio_y_tope(generador& g) {
    return {g.directorio(), numero(static_cast<long long>(1 + g.z.menor_que(7)))};
}
template <auto F>
std::string con_tope(const argumentos& a) {
    long long quedan = entero(a[1]);
    unsigned short parado = 0;
    auto* l = F(estrecho(a[0]), &quedan, &parado,
                [](void* p) -> unsigned short { return --*static_cast<long long*>(p) <= 0 ? 1 : 0; });
    return std::to_string(parado) + " " + muestra(l);
}
std::size_t antes_del_tope(const argumentos& a) {
    return static_cast<std::size_t>(entero(a[1])) - 1;
}
std::string modela_parado(reglas& r, const argumentos& a) {
    return si_o_no(r.enumera(patron_de_conjunto(*a[0])).entradas.size() > antes_del_tope(a)) + " ";
}

// Sets of names in 8 bits are made of file-name records. What those report of names that they cannot hold is their own
// business; what the code page cannot hold is left out here.
bool cabe_en_la_pagina(reglas& r, const argumentos& a) {
    for (const auto& x : r.enumera(patron_de_conjunto(*a[0])).entradas) {
        if (ida_y_vuelta(x.nombre) != x.nombre) {
            return false;
        }
    }
    return true;
}
modelos::partes registro_de(reglas& r, const texto_w& nombre) {
    const modelos::partes p = modelos::crea_nomsfich(a_pagina(nombre));
    r.cuenta_lo_dicho = r.cuenta_lo_dicho && modelos::informes_de(p).empty();
    return p;
}
std::string capital(const std::string& caracter) {
    const texto_w c = de_pagina(caracter);
    for (const modelos::mayusculas_seguidas& m : modelos::mayusculas_de_las_paginas) {
        if (c.size() == 1 && c[0] - m.distancia >= m.primera && c[0] - m.distancia <= m.ultima) {
            const std::string otro = a_pagina(texto_w(1, static_cast<wchar_t>(c[0] - m.distancia)));
            return modelos::minusculas(otro) == caracter ? otro : caracter;
        }
    }
    return caracter;
}
template <bool EnMayusculas>
std::string modela_bases(reglas& r, const argumentos& a, const std::string&) {
    std::vector<std::string> bases;
    for (const texto_w& n : nombres_que(r, patron_de_conjunto(*a[0]), cuales::ficheros, vale_todo)) {
        const modelos::partes p = registro_de(r, n);
        if (p.extension == a_pagina(*a[1])) {
            std::string base;
            for (const char32_t c : modelos::en_caracteres(p.base)) {
                const std::string caracter = modelos::en_bytes({c});
                base += EnMayusculas ? capital(caracter) : caracter;
            }
            bases.push_back(base);
        }
    }
    std::sort(bases.begin(), bases.end(),
              [](const std::string& x, const std::string& y) { return modelos::orden_de_bytes(x, y) < 0; });
    bases.erase(std::unique(bases.begin(), bases.end()), bases.end());
    lista l;
    for (const std::string& b : bases) {
        l.push_back(de_pagina(b));
    }
    return lista_de(l);
}
argumentos directorio_y_extension(generador& g) {
    static const std::vector<texto_w> extensiones = {L"txt", L"txt", L"tmp", L"TMP", L"", L"y", L"git"};
    return {g.directorio(), g.z.elige(extensiones)};
}

// A pattern that is put together: directory, name, extension.
argumentos directorio_extension_y_nombre(generador& g) {
    static const std::vector<texto_w> nombres = {L"*", L"*", L"a*", L"b", L"l*", L"c", L"zz"};
    static const std::vector<texto_w> extensiones = {L"txt", L"tmp", L"TXT", L"bak", L"", L"zz"};
    return {g.directorio(), g.z.elige(extensiones), g.z.elige(nombres)};
}
texto_w con_extension(const texto_w& nombre, const texto_w& extension) {
    return nombre + (extension.empty() ? L"" : L".") + extension;
}

// The path of something that is there, with its names as the directories hold them.
texto_w verdadero(reglas& r, const lugar& l) {
    texto_w t = L"Q:\\";
    nodo* n = &r.v.raiz();
    for (const texto_w& nombre : l.nombres) {
        n = n->hijo(nombre);
        t += (t.back() == L'\\' ? L"" : L"\\") + n->nombre;
    }
    return t;
}

// The directories of PATH, and where a name is found in them.
lista encontrados(reglas& r, const texto_w& nombre) {
    lista l;
    texto_w trozo;
    for (const wchar_t c : r.busqueda_de_programas + L";") {
        if (c != L';') {
            trozo += c;
            continue;
        }
        if (!trozo.empty()) {
            trozo.erase(0, std::min(trozo.find_first_not_of(L' '), trozo.size()));
            const texto_w t = modelos::une(modelos::recortado(trozo), nombre);
            if (r.existe(t)) {
                l.push_back(t);
            }
        }
        trozo.clear();
    }
    return l;
}

// Dates as the wall clock shows them.
constexpr long long inicio_de_1970 = 116'444'736'000'000'000;
FILETIME filetime_de(long long segundos) {
    const auto v = static_cast<unsigned long long>(segundos * 10'000'000 + inicio_de_1970);
    return {static_cast<DWORD>(v & 0xFFFFFFFFu), static_cast<DWORD>(v >> 32)};
}
std::string segundos_de(const FILETIME& f) {
    const auto v =
        static_cast<long long>(static_cast<unsigned long long>(f.dwHighDateTime) << 32 | f.dwLowDateTime);
    return v == 0 ? "(untouched)" : std::to_string((v - inicio_de_1970) / 10'000'000);
}
long long utc_de(long long local) {
    return local - (hora_local(local) - local);
}

std::string fecha_de(reglas& r, const texto_w& t, const std::string& real, bool local) {
    const hallazgo h = r.v.busca(t);
    if (h.codigo != 0) {
        return "-1";
    }
    if (!h.cosa->fecha) {
        return std::stoll(real) > 1'600'000'000 ? real : "a date of today";
    }
    return std::to_string(local ? hora_local(*h.cosa->fecha) - 3600 : *h.cosa->fecha);
}
bool pon_fecha(reglas& r, const texto_w& t, long long utc, bool con_mensajes) {
    const lugar l = r.v.lee(t);
    return r.bucle(
        con_mensajes, [&] { return "The '" + u(t) + "' file cannot be opened to modify its date."; },
        [&]() -> unsigned long {
            const unsigned long codigo = r.v.abre(l, {false, true, false, false, false, false});
            if (codigo == 0) {
                r.v.busca(l).cosa->fecha = utc;
            }
            return codigo;
        });
}
argumentos fichero_y_fecha(generador& g) {
    return {g.fichero(), numero(static_cast<long long>(1'000'000'000 + g.z.menor_que(500'000'000)))};
}
// Wine lets root write on what is read-only.
bool no_es_de_solo_lectura(reglas& r, const argumentos& a) {
    const hallazgo h = r.v.busca(*a[0]);
    return h.codigo != 0 || !h.cosa->solo_lectura;
}

// A file that a call made up a name for: the answer is true if it names a new, empty file where it must be.
std::string adopta(reglas& r, const partes& donde, const std::string& real, const texto_w& con_extension) {
    const texto_w t = w(real);
    const lugar l = r.v.lee(t);
    const hallazgo h = r.v.busca(l);
    const hallazgo d = r.v.busca(donde);
    if (h.codigo != no_esta || h.padre == nullptr || d.codigo != 0 || h.padre != d.cosa) {
        return "a new file in the directory";
    }
    if (!empieza(pliega(h.ultimo), L"LUM") && !empieza(pliega(h.ultimo), L"LU")) {
        return "a name that begins with LU";
    }
    if (!acaba(pliega(h.ultimo), pliega(con_extension))) {
        return "a name with the extension";
    }
    h.padre->anade({h.ultimo});
    return real;
}

// Where the system has a limit of its own, whoever calls it.
constexpr std::size_t cabe_sin_prefijo = 200;
bool hay_temporal(reglas& r, const argumentos&) {
    return !r.temporal.empty() && r.es_directorio(r.temporal);
}

// ---- the rows

// Made when it is first asked for: a child process plays its part before other objects are.
const std::vector<fila>& todas_las_filas() {
    static const std::vector<fila> todas = {
    // What happens to the disk beside the library, and how the host behaves.
    {"pon_fichero", 60,
     [](generador& g) -> argumentos {
         partes p = g.un_directorio(true);
         p.push_back(g.z.uno_de_cada(6) ? g.nombre_imposible_de_dar() : g.nombre());
         return {L"\\\\?\\Q:\\" + generador::junta(p), numero(static_cast<long long>(g.z.menor_que(9))),
                 numero(g.z.uno_de_cada(5) ? 1 : 0)};
     },
     [](const argumentos& a) -> std::string {
         volumen v;
         campo::actual()->pon_fichero(v.lee(*a[0]).nombres, static_cast<std::size_t>(entero(a[1])), entero(a[2]) == 1);
         return "";
     },
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         nodo& n = r.v.busca(*a[0]).padre->anade({r.v.lee(*a[0]).nombres.back()});
         n.bytes = static_cast<std::size_t>(entero(a[1]));
         n.solo_lectura = entero(a[2]) == 1;
         return "";
     },
     [](reglas& r, const argumentos& a) {
         const hallazgo h = r.v.busca(*a[0]);
         return h.codigo != 0 && h.padre != nullptr;
     }},
    {"pon_directorio", 35,
     [](generador& g) -> argumentos {
         partes p = g.un_directorio(true);
         p.push_back(g.z.uno_de_cada(8) ? g.nombre_imposible_de_dar() : g.nombre_de_directorio());
         return {L"\\\\?\\Q:\\" + generador::junta(p)};
     },
     [](const argumentos& a) -> std::string {
         volumen v;
         campo::actual()->pon_directorio(v.lee(*a[0]).nombres);
         return "";
     },
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         r.v.busca(*a[0]).padre->anade({r.v.lee(*a[0]).nombres.back(), true});
         return "";
     },
     [](reglas& r, const argumentos& a) {
         const hallazgo h = r.v.busca(*a[0]);
         return h.codigo != 0 && h.padre != nullptr && r.v.lee(*a[0]).nombres.size() < 5;
     }},
    {"pon_enlace", 8,
     [](generador& g) -> argumentos {
         static const std::vector<texto_w> destinos = {L"fuera\\lleno", L"fuera\\vacio", L"fuera\\f.txt"};
         partes p = g.un_directorio(true);
         p.push_back(g.z.uno_de_cada(2) ? g.nombre() : g.nombre_de_directorio());
         return {L"\\\\?\\Q:\\" + generador::junta(p), g.z.elige(destinos)};
     },
     [](const argumentos& a) -> std::string {
         volumen v;
         campo::actual()->pon_enlace(v.lee(*a[0]).nombres, v.lee(*a[1]).nombres);
         return "";
     },
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         nodo& n = r.v.busca(*a[0]).padre->anade({r.v.lee(*a[0]).nombres.back()});
         const volumen nuevo;
         n.enlace = nuevo.lee(*a[1]).nombres;
         n.es_directorio = r.v.sigue(&n)->es_directorio;
         return "";
     },
     [](reglas& r, const argumentos& a) {
         const hallazgo h = r.v.busca(*a[0]);
         return h.codigo != 0 && h.padre != nullptr && h.entrada == nullptr;
     }},
    {"sujeta", 10,
     [](generador& g) -> argumentos {
         return {L"\\\\?\\Q:\\" + generador::junta(g.un_fichero()), numero(static_cast<long long>(g.z.menor_que(3)))};
     },
     [](const argumentos& a) -> std::string {
         return campo::actual()->sujeta(*a[0], static_cast<unsigned>(entero(a[1]))) ? "1" : "0";
     },
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         const long long modo = entero(a[1]);
         r.v.busca(*a[0]).cosa->sujeto = sujecion{true, false, false, modo > 0, modo > 1, false};
         return "1";
     },
     [](reglas& r, const argumentos& a) {
         const hallazgo h = r.v.busca(*a[0]);
         return h.codigo == 0 && !h.cosa->sujeto && !h.cosa->es_directorio;
     }},
    {"suelta", 6, [](generador&) -> argumentos { return {}; },
     [](const argumentos&) -> std::string {
         campo::actual()->suelta();
         return "";
     },
     nullptr,
     [](reglas& r, const argumentos&, const std::string&) -> std::string {
         r.v.suelta();
         return "";
     },
     nullptr},
    {"ve_a", 12, [](generador& g) -> argumentos { return {g.escribe(g.un_directorio(true), literal | completa)}; },
     [](const argumentos& a) -> std::string {
         const texto_w t = empieza(*a[0], L"\\\\?\\") ? a[0]->substr(4) : *a[0];
         return ::SetCurrentDirectoryW(t.c_str()) ? "1" : "0";
     },
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         return si_o_no(r.v.ve_a(empieza(*a[0], L"\\\\?\\") ? a[0]->substr(4) : *a[0]) == 0);
     },
     [](reglas& r, const argumentos& a) {
         const lugar l = r.v.lee(*a[0]);
         for (const texto_w& n : l.nombres) {
             if (generador::es_raro(n)) {
                 return false;
             }
         }
         const hallazgo h = r.v.busca(l);
         return h.codigo == 0 && h.cosa->es_directorio && !h.entrada->enlace && a[0]->size() < cabe_sin_prefijo;
     }},
    {"pon_busqueda_de_programas", 5,
     [](generador& g) -> argumentos {
         texto_w t;
         for (std::size_t n = g.z.menor_que(4); n > 0; --n) {
             t += (t.empty() ? L"" : L";") + texto_w(g.z.uno_de_cada(5) ? L" " : L"") +
                  (g.z.uno_de_cada(9) ? texto_w() : *g.directorio(relativa | completa | desde_raiz | compartida)) +
                  texto_w(g.z.uno_de_cada(7) ? L";;" : L"");
         }
         return {t};
     },
     [](const argumentos& a) -> std::string {
         ::SetEnvironmentVariableW(L"PATH", a[0]->c_str());
         return "";
     },
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         r.busqueda_de_programas = *a[0];
         return "";
     },
     nullptr},
    {"pon_temporal", 5, [](generador& g) -> argumentos { return {g.escribe(g.un_directorio(true), completa)}; },
     [](const argumentos& a) -> std::string {
         ::SetEnvironmentVariableW(L"TMP", a[0]->c_str());
         return "";
     },
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         r.temporal = *a[0];
         return "";
     },
     [](reglas&, const argumentos& a) { return a[0]->size() < cabe_sin_prefijo; }},
    {"preguntas", 8,
     [](generador& g) -> argumentos {
         return {numero(static_cast<long long>(g.z.menor_que(3))), numero(static_cast<long long>(g.z.menor_que(4)))};
     },
     [](const argumentos& a) -> std::string {
         campo::actual()->si = static_cast<unsigned>(entero(a[0]));
         campo::actual()->al_preguntar = static_cast<entretanto>(entero(a[1]));
         return "";
     },
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         r.si = static_cast<unsigned>(entero(a[0]));
         r.al_preguntar = static_cast<entretanto>(entero(a[1]));
         return "";
     },
     nullptr},
    {"avisa_de_abiertos", 3, [](generador& g) -> argumentos { return {numero(g.z.uno_de_cada(2) ? 1 : 0)}; },
     [](const argumentos& a) -> std::string {
         lumodir_set_func_comprobar_fichero_no_esta_abierto(
             entero(a[0]) == 1 ? +[](const wchar_t* ruta) -> unsigned short {
                 campo::actual()->sucesos.push_back("open? " + u8(ruta));
                 return 0;
             }
                               : nullptr);
         return "";
     },
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         r.avisa_de_abiertos = entero(a[0]) == 1;
         return "";
     },
     nullptr},
    {"pagina", 5,
     [](generador& g) -> argumentos {
         static const std::vector<long long> paginas = {0, 932, 936, 949, 950, 65001, 874};
         return {numero(g.z.elige(paginas))};
     },
     [](const argumentos& a) -> std::string {
         interno::plataforma::pagina_de_codigos = static_cast<unsigned>(entero(a[0]));
         return "";
     },
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         r.pagina = static_cast<unsigned>(entero(a[0]));
         return "";
     },
     nullptr},

    // Existence and access.
    {"cdir_existe_fichero", 10, un_fichero, simple<cdir_existe_fichero_UNICODE>, simple<cdir_existe_fichero>,
     [](reglas& r, const argumentos& a, const std::string&) { return si_o_no(r.existe(*a[0])); }, nullptr},
    {"cdir_existe_directorio", 8, un_directorio, simple<cdir_existe_directorio_UNICODE>,
     simple<cdir_existe_directorio>,
     [](reglas& r, const argumentos& a, const std::string&) { return si_o_no(r.existe(*a[0])); }, nullptr},
    {"cdir_existe_directorio_con_mensaje_opc", 6, un_directorio,
     con_texto<cdir_existe_directorio_UNICODE_con_mensaje_opc>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         return r.existe(*a[0]) ? "1 (NULL)" : "0 Directory '" + u(*a[0]) + "' does not exist.";
     },
     nullptr},
    {"cdir_comprueba_existe_fichero", 6, un_fichero, simple<cdir_comprueba_existe_fichero>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         if (r.existe(*a[0])) {
             return si_o_no(true);
         }
         r.aviso("This file '" + u(*a[0]) + "' does not exist");
         r.informe("");
         return si_o_no(false);
     },
     nullptr},
    {"cdir_es_directorio_u", 8, un_directorio, simple<cdir_es_directorio_u>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) { return si_o_no(r.es_directorio(*a[0])); }, nullptr},
    {"cdir_existe_fichero_filtro", 8, un_patron, simple<cdir_existe_fichero_filtro_UNICODE>,
     simple<cdir_existe_fichero_filtro>,
     [](reglas& r, const argumentos& a, const std::string&) {
         return si_o_no(!nombres_que(r, *a[0], cuales::ficheros, vale_todo).empty());
     },
     nullptr},
    {"cdir_existe_directorio_filtro", 8, un_patron, con_texto<cdir_existe_directorio_filtro>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         const lista l = nombres_que(r, *a[0], cuales::directorios, vale_todo);
         return l.empty() ? "0 (untouched)" : "1 " + u(l[0]);
     },
     nullptr},
    {"cdir_se_puede_leer", 8, un_fichero, simple<cdir_se_puede_leer_UNICODE>, simple<cdir_se_puede_leer>,
     [](reglas& r, const argumentos& a, const std::string&) { return si_o_no(r.se_puede_leer(*a[0])); }, nullptr},
    {"cdir_se_puede_escribir", 8, un_fichero, simple<cdir_se_puede_escribir_UNICODE>, simple<cdir_se_puede_escribir>,
     [](reglas& r, const argumentos& a, const std::string&) {
         std::string motivo;
         return si_o_no(r.se_puede_escribir(*a[0], motivo));
     },
     nullptr},
    {"lumodir_se_puede_escribir_ex", 8, un_fichero, con_texto<lumodir_se_puede_escribir_UNICODE_ex>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         std::string motivo;
         const std::string si = si_o_no(r.se_puede_escribir(*a[0], motivo));
         return si + " " + motivo;
     },
     nullptr},
    {"cdir_se_puede_escribir_en_directorio", 8,
     [](generador& g) -> argumentos { return {g.directorio(que_pasan_la_prueba | con_rodeos)}; },
     con_texto<cdir_se_puede_escribir_en_directorio>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         std::string motivo;
         const std::string si = si_o_no(r.se_puede_escribir_en(*a[0], true, motivo));
         return si + " " + motivo;
     },
     nullptr},
    {"cdir_se_puede_escribir_fichero_en_directorio", 8,
     [](generador& g) -> argumentos { return {g.fichero(que_pasan_la_prueba | con_rodeos)}; },
     con_texto<cdir_se_puede_escribir_fichero_en_directorio>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         std::string motivo;
         const std::string si = si_o_no(r.se_puede_escribir_en(*a[0], false, motivo));
         return si + " " + motivo;
     },
     nullptr},
    {"cdir_tiene_permiso_escritura_fichero", 5, un_fichero, simple<lumodir_tiene_permiso_escritura_fichero_UNICODE>,
     simple<cdir_tiene_permiso_escritura_fichero>,
     [](reglas& r, const argumentos& a, const std::string&) {
         const hallazgo h = r.v.busca(*a[0]);
         return si_o_no(h.codigo == 0 && !h.cosa->solo_lectura);
     },
     nullptr},
    {"lumodir_get_tamanyo_fichero", 5, un_fichero,
     [](const argumentos& a) -> std::string {
         unsigned long codigo = 77;
         const unsigned long long n = lumodir_get_tamanyo_fichero(ancho{a[0]}, &codigo);
         return n == ~0ull ? "error " + std::to_string(codigo) : std::to_string(n);
     },
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         const hallazgo h = r.v.busca(*a[0]);
         return h.codigo != 0 ? "error " + std::to_string(h.codigo) : std::to_string(h.cosa->bytes);
     },
     nada_de_directorios},

    // Deletion.
    {"cdir_borra_fichero", 10, un_fichero, simple<cdir_borra_fichero_UNICODE>, simple<cdir_borra_fichero>,
     [](reglas& r, const argumentos& a, const std::string&) { return si_o_no(r.borra_estricto(*a[0], nullptr)); },
     ningun_enlace},
    {"cdir_borra_fichero_con_mensaje_extra", 8, [](generador& g) -> argumentos { return {g.fichero(), g.extra()}; },
     simple<cdir_borra_fichero_con_mensaje_extra_UNICODE>, simple<cdir_borra_fichero_con_mensaje_extra>,
     [](reglas& r, const argumentos& a, const std::string&) {
         return si_o_no(r.borra_estricto(*a[0], opcional(a[1])));
     },
     ningun_enlace},
    {"cdir_borra_fichero_si_existe", 10, un_fichero, simple<cdir_borra_fichero_si_existe_UNICODE>,
     simple<cdir_borra_fichero_si_existe>,
     [](reglas& r, const argumentos& a, const std::string&) {
         return si_o_no(r.borra_si_existe(*a[0], nullptr, true));
     },
     ningun_enlace},
    {"lumodir_borra_fichero_si_existe", 6, un_fichero, con_bandera<lumodir_borra_fichero_si_existe_UNICODE>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         return si_o_no(!r.borra_si_existe(*a[0], nullptr, false));
     },
     ningun_enlace},
    {"lumodir_borra_fichero_con_mensaje_extra_si_existe", 5,
     [](generador& g) -> argumentos { return {g.fichero(), g.extra()}; },
     [](const argumentos& a) -> std::string {
         unsigned short bandera = 0x5A5A;
         lumodir_borra_fichero_con_mensaje_extra_si_existe_UNICODE(ancho{a[0]}, ancho{a[1]}, &bandera);
         return std::to_string(bandera);
     },
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         return si_o_no(!r.borra_si_existe(*a[0], opcional(a[1]), false));
     },
     ningun_enlace},
    {"cdir_borra_fichero_con_comprobacion", 8, un_fichero, simple<cdir_borra_fichero_con_comprobacion_UNICODE>,
     simple<cdir_borra_fichero_con_comprobacion>,
     [](reglas& r, const argumentos& a, const std::string&) { return si_o_no(r.v.borra(*a[0]) == 0); }, ningun_enlace},
    {"cdir_delete_ficheros", 6, un_patron, simple<cdir_delete_ficheros_UNICODE>, simple<cdir_delete_ficheros>,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         if (modelos::juzga(modelos::sin_comodines(modelos::recortado(*a[0]))).motivo != 0) {
             r.informe("path_correcto == CIERTO", u(*a[0]));
         }
         const std::size_t dichos = r.sucesos.size();
         const std::size_t k = a[0]->find_last_of(L"\\/");
         const auto b = r.enumera(*a[0]);
         r.sucesos.resize(dichos);  // the enumerator's own filter never comes into it
         lista que_se_van;
         for (const auto& x : b.entradas) {
             if (!x.n->es_directorio && !b.propia) {
                 que_se_van.push_back(x.nombre);
             }
         }
         if (!que_se_van.empty()) {
             nodo& d = *r.v.busca(k == texto_w::npos ? texto_w(L".") : a[0]->substr(0, k + 1)).cosa;
             for (const texto_w& n : que_se_van) {
                 if (!d.hijo(n)->enlace) {
                     r.v.borra(d, *d.hijo(n));
                 }
             }
         }
         return "(void)";
     },
     nullptr},
    {"cdir_cambia_extension_ficheros_u", 8,
     [](generador& g) -> argumentos {
         static const std::vector<texto_w> todas_ellas = {L"txt", L".tmp", L"bak", L"", L"y", L".dat"};
         return {g.directorio(relativa | completa | desde_raiz | con_otra_barra | con_cola), g.z.elige(todas_ellas),
                 g.z.elige(todas_ellas)};
     },
     simple<cdir_cambia_extension_ficheros_u>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         r.cambia_extension(*a[0], *a[1], *a[2]);
         return "(void)";
     },
     [](reglas& r, const argumentos& a) {
         return pliega(*a[1]) != pliega(*a[2]) &&
                !hay_algo(r.v.raiz(), [](const nodo& n) {
                    // Texts that the system would read otherwise are the library's business to tie to their names.
                    return n.enlace.has_value() || (!n.nombre.empty() && generador::es_raro(n.nombre));
                }) && !reglas::se_recorta(*a[0]);
     }},
    {"cdir_borra_directorio", 8, un_directorio, simple<cdir_borra_directorio_UNICODE>, simple<cdir_borra_directorio>,
     [](reglas& r, const argumentos& a, const std::string&) { return si_o_no(r.quita_directorio_estricto(*a[0])); },
     ni_raiz_ni_enlace},
    {"cdir_borra_directorio_si_existe", 8, un_directorio, simple<cdir_borra_directorio_si_existe_UNICODE>,
     simple<cdir_borra_directorio_si_existe>,
     [](reglas& r, const argumentos& a, const std::string&) {
         return si_o_no(r.existe(*a[0]) && r.quita_directorio(*a[0], true));
     },
     ni_raiz_ni_enlace},
    {"cdir_se_borra_directorio", 6, un_directorio, simple<cdir_se_borra_directorio>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         return si_o_no(r.existe(*a[0]) && r.quita_directorio(*a[0], false));
     },
     ni_raiz_ni_enlace},
    {"cdir_borra_contenido_directorio", 6, un_directorio, simple<cdir_borra_contenido_directorio_UNICODE>,
     simple<cdir_borra_contenido_directorio>,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         r.borra_contenido(*a[0]);
         return "(void)";
     },
     arbol_con_raiz},
    {"cdir_borra_directorio_y_subdirectorios", 6, un_directorio,
     simple<cdir_borra_directorio_y_subdirectorios_UNICODE>, simple<cdir_borra_directorio_y_subdirectorios>,
     [](reglas& r, const argumentos& a, const std::string&) { return si_o_no(r.borra_arbol(*a[0])); },
     arbol_con_raiz},
    {"cdir_borra_directorio_y_subdirectorios_parando", 5,
     [](generador& g) -> argumentos { return {g.directorio(), numero(static_cast<long long>(g.z.menor_que(3)))}; },
     [](const argumentos& a) -> std::string {
         auto bandera = static_cast<unsigned short>(entero(a[1]));
         campo::actual()->seguir = &bandera;
         const unsigned short resultado = cdir_borra_directorio_y_subdirectorios_parando(ancho{a[0]}, &bandera);
         campo::actual()->seguir = nullptr;
         return std::to_string(resultado) + " " + std::to_string(bandera);
     },
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         auto bandera = static_cast<unsigned short>(entero(a[1]));
         r.seguir = &bandera;
         const bool quitado = r.borra_arbol(*a[0]);
         r.seguir = nullptr;
         const bool negado_del_todo = modelos::recortado(*a[0]).empty() || (a[0]->size() == 2 && (*a[0])[1] == L':');
         return (bandera != 1 && !negado_del_todo ? std::to_string(bandera) : si_o_no(quitado)) + " " +
                std::to_string(bandera);
     },
     arbol_con_raiz},
    {"cdir_borra_contenido_directorio_reintentando_u", 4, un_directorio,
     simple<cdir_borra_contenido_directorio_reintentando_u>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         r.pasadas(*a[0], false, false, true);
         return "(void)";
     },
     arbol_con_raiz},
    {"cdir_borra_contenido_directorio_si_es_posible_reintentando_u", 4, un_directorio,
     simple<cdir_borra_contenido_directorio_si_es_posible_reintentando_u>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) { return si_o_no(r.pasadas(*a[0], true, true, false)); },
     arbol_con_raiz},
    {"cdir_borra_directorio_y_subdirectorios_reintentando_u", 4, un_directorio,
     simple<cdir_borra_directorio_y_subdirectorios_reintentando_u>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         r.pasadas(*a[0], true, true, true);
         return "(void)";
     },
     arbol_con_raiz},
    {"cdir_borra_directorio_y_subdirectorios_si_se_puede", 5, un_directorio,
     [](const argumentos& a) -> std::string {
         ArrCADENA_u* fallos = arr_CreaCADENA_u(0);
         const unsigned short resultado =
             cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE(ancho{a[0]}, fallos);
         return std::to_string(resultado) + " " + muestra(fallos);
     },
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         if (r.se_niega(*a[0])) {
             return std::string("0 []");
         }
         bool entra = false;
         const auto p = r.una_pasada(*a[0], r.v.lee(*a[0]), true, true, entra);
         return si_o_no(p.quitado) + " " + lista_de(p.quedan);
     },
     arbol_con_raiz},
    {"lumodir_borra_directorios_de_path_si_estan_vacios", 8,
     [](generador& g) -> argumentos {
         const partes p = g.z.uno_de_cada(6) || g.un_directorio().empty() ? g.algo_nuevo() : g.un_directorio();
         const texto_w t = g.escribe(p, relativa | completa | desde_raiz);
         argumento base;
         const std::size_t k = t.rfind(L'\\');
         switch (g.z.menor_que(4)) {
             case 0:
                 break;
             case 1:
                 base = k == texto_w::npos || k == 0 ? t : t.substr(0, k);
                 break;
             case 2: {
                 const std::size_t j = k == texto_w::npos || k == 0 ? k : t.rfind(L'\\', k - 1);
                 base = j == texto_w::npos || j == 0 ? t : pliega(t.substr(0, j));
                 break;
             }
             default:
                 base = g.z.uno_de_cada(3) ? g.escribe(g.un_directorio(), completa) : t;
         }
         return {t, base};
     },
     simple<lumodir_borra_directorios_de_path_si_estan_vacios_UNICODE>,
     simple<lumodir_borra_directorios_de_path_si_estan_vacios>,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         r.sube_por_vacios(*a[0], opcional(a[1]));
         return "(void)";
     },
     [](reglas& r, const argumentos&) {
         return !hay_algo(r.v.raiz(), [](const nodo& n) { return n.enlace.has_value(); });
     }},

    // Creation, renaming, protection.
    {"cdir_crea_directorios", 8,
     [](generador& g) -> argumentos {
         partes p = g.de_directorio();
         p.push_back(g.nombre_de_directorio());
         return {g.escribe(p, que_pasan_la_prueba | con_rodeos | literal, true), numero(g.z.uno_de_cada(2) ? 1 : 0)};
     },
     simple<cdir_crea_directorios_UNICODE>, simple<cdir_crea_directorios>,
     [](reglas& r, const argumentos& a, const std::string&) {
         return si_o_no(r.crea_directorios(*a[0], entero(a[1]) == 1, true));
     },
     nullptr},
    {"cdir_crea_directorios_del_path", 8,
     [](generador& g) -> argumentos {
         partes p = g.de_directorio();
         p.push_back(g.nombre_de_directorio());
         return {g.escribe(p, que_pasan_la_prueba | con_rodeos | de_unidad | literal, true)};
     },
     simple<cdir_crea_directorios_del_path_UNICODE>, simple<cdir_crea_directorios_del_path>,
     [](reglas& r, const argumentos& a, const std::string&) { return si_o_no(r.crea_directorios(*a[0], true, true)); },
     nullptr},
    {"cdir_crea_directorios_fichero", 6,
     [](generador& g) -> argumentos { return {g.nuevo(que_pasan_la_prueba | con_rodeos | de_unidad | literal)}; },
     simple<cdir_crea_directorios_fichero_UNICODE>, simple<cdir_crea_directorios_fichero>,
     [](reglas& r, const argumentos& a, const std::string&) { return si_o_no(r.crea_directorios(*a[0], false, true)); },
     nullptr},
    {"cdir_crea_directorios_si_es_posible", 5,
     [](generador& g) -> argumentos { return {g.directorio(que_pasan_la_prueba | con_rodeos | de_unidad | literal)}; },
     simple<cdir_crea_directorios_si_es_posible_UNICODE>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) { return si_o_no(r.crea_directorios(*a[0], true, false)); },
     nullptr},
    {"cdir_crea_directorios_fichero_si_es_posible", 5,
     [](generador& g) -> argumentos { return {g.nuevo(que_pasan_la_prueba | con_rodeos | de_unidad | literal)}; },
     simple<cdir_crea_directorios_fichero_si_es_posible_UNICODE>, simple<cdir_crea_directorios_fichero_si_es_posible>,
     [](reglas& r, const argumentos& a, const std::string&) {
         return si_o_no(r.crea_directorios(*a[0], false, false));
     },
     nullptr},
    {"cdir_renombra_fichero", 8, [](generador& g) -> argumentos { return {g.fichero(), g.nuevo()}; },
     simple<cdir_renombra_fichero_UNICODE>, simple<cdir_renombra_fichero>,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         r.renombra(*a[0], *a[1], true);
         return "(void)";
     },
     se_puede_mover},
    {"cdir_renombra_fichero_si_es_posible", 8,
     [](generador& g) -> argumentos { return {g.fichero(), g.z.uno_de_cada(3) ? g.fichero() : g.nuevo()}; },
     simple<cdir_renombra_fichero_si_es_posible_UNICODE>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) { return si_o_no(r.renombra(*a[0], *a[1], false)); },
     se_puede_mover},
    {"cdir_mueve_fichero", 8,
     [](generador& g) -> argumentos { return {g.z.uno_de_cada(3) ? g.directorio() : g.fichero(), g.nuevo()}; },
     simple<cdir_mueve_fichero>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) { return si_o_no(r.v.mueve(*a[0], *a[1]) == 0); },
     se_puede_mover},
    {"lumodir_protege_fichero", 6, un_fichero, simple<lumodir_protege_fichero_UNICODE>,
     simple<lumodir_protege_fichero>,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         r.protege(*a[0], true);
         return "(void)";
     },
     nada_de_directorios},
    {"lumodir_desprotege_fichero", 5, un_fichero, simple<lumodir_desprotege_fichero_UNICODE>,
     simple<lumodir_desprotege_fichero>,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         r.protege(*a[0], false);
         return "(void)";
     },
     nada_de_directorios},
    {"lumodir_desprotege_fichero_si_existe", 4, un_fichero, simple<lumodir_desprotege_fichero_si_existe_UNICODE>,
     simple<lumodir_desprotege_fichero_si_existe>,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         if (r.existe(*a[0])) {
             r.protege(*a[0], false);
         }
         return "(void)";
     },
     nada_de_directorios},

    // Temporary files.
    {"lumodir_creaFicheroUnicoEnDirectorio", 5,
     [](generador& g) -> argumentos {
         static const std::vector<texto_w> extensiones = {L"dat", L".x", L"tmp", L""};
         return {g.escribe(g.de_directorio(), relativa | completa | desde_raiz | con_otra_barra, true),
                 g.z.elige(extensiones)};
     },
     simple<lumodir_creaFicheroUnicoEnDirectorio>, nullptr,
     [](reglas& r, const argumentos& a, const std::string& real) -> std::string {
         const lugar l = r.v.lee(*a[0]);
         constexpr std::size_t max_dado = 259;
         constexpr std::size_t max_entero = 246;
         if (a[0]->size() > max_dado) {
             r.informe("longitud < _MAX_PATH");
         }
         if (!r.es_directorio(*a[0]) || generador::junta(l.nombres).size() + 3 > max_entero) {
             r.informe("resp != 0", u(*a[0]));
             return "";
         }
         const texto_w& e = *a[1];
         return adopta(r, l.nombres, real, e.empty() || e[0] == L'.' ? e : L"." + e);
     },
     nullptr},
    {"lumodir_dameDirectorioTemporal", 3, [](generador&) -> argumentos { return {}; },
     simple<lumodir_dameDirectorioTemporal>, nullptr,
     [](reglas& r, const argumentos&, const std::string& real) -> std::string {
         texto_w t = verdadero(r, r.v.lee(r.temporal));
         t += acaba(t, L"\\") ? L"" : L"\\";
         return pliega(t) == pliega(w(real)) ? real : u(t);  // in which letter case is the system's choice
     },
     hay_temporal},
    {"lumodir_creaFicheroTemporal", 4, [](generador&) -> argumentos { return {}; }, simple<lumodir_creaFicheroTemporal>,
     nullptr,
     [](reglas& r, const argumentos&, const std::string& real) -> std::string {
         return adopta(r, r.v.lee(r.temporal).nombres, real, L".tmp");
     },
     hay_temporal},
    {"lumodir_creaFicheroTemporalConExt", 4,
     [](generador& g) -> argumentos {
         static const std::vector<texto_w> extensiones = {L"dat", L"x", L"tmp", L"TmP"};
         return {g.z.elige(extensiones)};
     },
     simple<lumodir_creaFicheroTemporalConExt>, nullptr,
     [](reglas& r, const argumentos& a, const std::string& real) -> std::string {
         return adopta(r, r.v.lee(r.temporal).nombres, real, L"." + *a[0]);
     },
     hay_temporal},
    {"lumodir_creaFicheroTemporalEnDirectorio", 4,
     [](generador& g) -> argumentos {
         return {g.z.uno_de_cada(9) ? argumento() : g.directorio(relativa | completa | desde_raiz | con_otra_barra),
                 g.z.uno_de_cada(9) ? argumento(L"") : argumento(g.nombre())};
     },
     simple<lumodir_creaFicheroTemporalEnDirectorio>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) -> std::string {
         if (!a[0] || !a[1] || a[0]->empty() || a[1]->empty()) {
             return "(NULL)";
         }
         r.crea_directorios(*a[0], true, true);
         return u(modelos::une(*a[0], *a[1]));
     },
     nullptr},

    // Dates.
    {"timefich_obtener_fecha_fichero_UTC", 5, un_fichero, simple<timefich_obtener_fecha_fichero_UTC>,
     simple<timefich_obtener_fecha_fichero_ansi_UTC>,
     [](reglas& r, const argumentos& a, const std::string& real) { return fecha_de(r, *a[0], real, false); },
     nada_de_directorios},
    {"timefich_obtener_fecha_fichero", 5, un_fichero, simple<timefich_obtener_fecha_fichero_u>,
     simple<timefich_obtener_fecha_fichero>,
     [](reglas& r, const argumentos& a, const std::string& real) { return fecha_de(r, *a[0], real, true); },
     nada_de_directorios},
    {"timefich_obtener_fecha_fichero_existente_UTC", 4, un_fichero,
     simple<timefich_obtener_fecha_fichero_existente_UTC>, simple<timefich_obtener_fecha_fichero_ansi_existente_UTC>,
     [](reglas& r, const argumentos& a, const std::string& real) {
         if (!r.existe(*a[0])) {
             r.informe("mensaje == NULL", "This file " + u(*a[0]) + " does not exist");
         }
         return fecha_de(r, *a[0], real, false);
     },
     nada_de_directorios},
    {"timefich_asignar_fecha_fichero_UTC", 6, fichero_y_fecha, simple<timefich_asignar_fecha_fichero_UTC>,
     simple<timefich_asignar_fecha_fichero_ansi_UTC>,
     [](reglas& r, const argumentos& a, const std::string&) {
         return si_o_no(pon_fecha(r, *a[0], entero(a[1]), true));
     },
     no_es_de_solo_lectura},
    {"timefich_asignar_fecha_fichero_UTC_si_es_posible", 4, fichero_y_fecha,
     simple<timefich_asignar_fecha_fichero_UTC_si_es_posible>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         return si_o_no(pon_fecha(r, *a[0], entero(a[1]), false));
     },
     no_es_de_solo_lectura},

    {"timefich_obtener_fecha_fichero_existente", 4, un_fichero, simple<timefich_obtener_fecha_fichero_existente_u>,
     simple<timefich_obtener_fecha_fichero_existente>,
     [](reglas& r, const argumentos& a, const std::string& real) {
         if (!r.existe(*a[0])) {
             r.informe("mensaje == NULL", "This file " + u(*a[0]) + " does not exist");
         }
         return fecha_de(r, *a[0], real, true);
     },
     nada_de_directorios},
    {"timefich_obtener_fecha_fichero_y_codigo_error", 3, un_fichero, nullptr,
     [](const argumentos& a) -> std::string {
         unsigned int codigo = 77;
         const long long n = timefich_obtener_fecha_fichero_ansi_y_codigo_error_UTC(estrecho(a[0]), &codigo);
         return std::to_string(n) + " " + std::to_string(codigo);
     },
     [](reglas& r, const argumentos& a, const std::string& real) {
         return fecha_de(r, *a[0], real.substr(0, real.find(' ')), false) + " " +
                std::to_string(r.v.busca(*a[0]).codigo);
     },
     nada_de_directorios},
    {"timefich_obtener_fecha", 4, un_fichero,
     [](const argumentos& a) -> std::string {
         FILETIME f = {};
         const unsigned short resultado = timefich_obtener_fecha_u(ancho{a[0]}, nullptr, &f);
         return std::to_string(resultado) + " " + segundos_de(f);
     },
     [](const argumentos& a) -> std::string {
         FILETIME f = {};
         timefich_obtener_fecha(estrecho(a[0]), nullptr, &f);
         return "- " + segundos_de(f);
     },
     [](reglas& r, const argumentos& a, const std::string& real) -> std::string {
         const hallazgo h = r.v.busca(*a[0]);
         const std::string principio = g_en_8_bits ? "- " : si_o_no(h.codigo == 0) + " ";
         if (h.codigo != 0) {
             constexpr int pausas = 4;
             r.sucesos.insert(r.sucesos.end(), pausas, "pause");
             r.informe("ok == CIERTO", u(*a[0]));
             return principio + "(untouched)";
         }
         if (!h.cosa->fecha) {
             const std::string dicha = real.substr(real.find(' ') + 1);
             return principio + (dicha[0] != '(' && std::stoll(dicha) > 1'600'000'000 ? dicha : "a date of today");
         }
         return principio + std::to_string(hora_local(*h.cosa->fecha));
     },
     nada_de_directorios},
    {"timefich_asignar_fecha", 4, fichero_y_fecha,
     [](const argumentos& a) -> std::string {
         const FILETIME f = filetime_de(entero(a[1]));
         return std::to_string(timefich_asignar_fecha_u(ancho{a[0]}, nullptr, &f));
     },
     [](const argumentos& a) -> std::string {
         const FILETIME f = filetime_de(entero(a[1]));
         timefich_asignar_fecha(estrecho(a[0]), nullptr, &f);
         return "(void)";
     },
     [](reglas& r, const argumentos& a, const std::string&) {
         return si_o_no(pon_fecha(r, *a[0], utc_de(entero(a[1])), true));
     },
     no_es_de_solo_lectura},
    {"timefich_asignar_fecha_fichero", 4, fichero_y_fecha, simple<timefich_asignar_fecha_fichero_unicode>,
     simple<timefich_asignar_fecha_fichero>,
     [](reglas& r, const argumentos& a, const std::string&) {
         constexpr long long convenio = 3600;
         return si_o_no(pon_fecha(r, *a[0], utc_de(entero(a[1]) + convenio), true));
     },
     no_es_de_solo_lectura},

    // Where one is, and where programs are.
    {"cdir_obtener_path_actual", 5, [](generador&) -> argumentos { return {}; },
     simple<cdir_obtener_path_actual_UNICODE>, simple<cdir_obtener_path_actual>,
     [](reglas& r, const argumentos&, const std::string&) {
         const texto_w t = verdadero(r, r.v.lee(L"."));
         return u(g_en_8_bits ? ida_y_vuelta(t) : t);
     },
     nullptr},
    {"lumodir_dame_path_largo", 5,
     [](generador& g) -> argumentos {
         return {g.z.uno_de_cada(2) ? g.fichero(relativa | completa | desde_raiz | con_otra_caja)
                                    : g.directorio(relativa | completa | desde_raiz | con_otra_caja)};
     },
     simple<lumodir_dame_path_largo_UNICODE>, nullptr,
     [](reglas& r, const argumentos& a, const std::string& real) -> std::string {
         const hallazgo h = r.v.busca(*a[0]);
         if (h.codigo != 0) {
             return u(*a[0]);
         }
         // The same thing; in which letter case is the system's choice.
         const texto_w t = w(real);
         const hallazgo otra_vez = r.v.busca(t);
         const texto_w ultimo = t.substr(t.find_last_of(L"\\/:") + 1);
         const bool con_su_nombre = h.padre == nullptr || pliega(ultimo) == pliega(h.entrada->nombre);
         return otra_vez.entrada == h.entrada && con_su_nombre ? real : "the path of that very thing";
     },
     [](reglas& r, const argumentos& a) {
         const texto_w ultimo = a[0]->substr(a[0]->find_last_of(L"\\/:") + 1);
         return generador::junta(r.v.lee(*a[0]).nombres).size() < cabe_sin_prefijo && ultimo != L".." &&
                a[0]->size() < cabe_sin_prefijo && (r.v.busca(*a[0]).codigo == 0 || a[0]->find(L"..") == texto_w::npos);
     }},
    {"lumodir_busca_ejecutable_del_path", 5,
     [](generador& g) -> argumentos { return {g.z.uno_de_cada(4) ? g.nombre_de_directorio() : g.nombre()}; },
     con_texto<lumodir_busca_ejecutable_del_path>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         const lista l = encontrados(r, *a[0]);
         return l.empty() ? "0 (NULL)" : "1 " + u(l[0]);
     },
     nullptr},
    {"lumodir_busca_ejecutables_del_path", 5,
     [](generador& g) -> argumentos { return {g.z.uno_de_cada(4) ? g.nombre_de_directorio() : g.nombre()}; },
     [](const argumentos& a) -> std::string {
         auto* l = reinterpret_cast<ArrCADENA_u*>(0x5A5Aull);
         const unsigned short uno = lumodir_busca_ejecutables_del_path(ancho{a[0]}, nullptr);
         const unsigned short todos_ellos = lumodir_busca_ejecutables_del_path(ancho{a[0]}, &l);
         return std::to_string(uno) + std::to_string(todos_ellos) + " " + muestra(l);
     },
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         const lista l = encontrados(r, *a[0]);
         return (l.empty() ? "00 " : "11 ") + lista_de(l);
     },
     nullptr},
    {"lumodir_espera_acceso_a_recursos_en_directorio", 4, un_directorio, nullptr,
     simple<lumodir_espera_acceso_a_recursos_en_directorio>,
     [](reglas& r, const argumentos& a, const std::string&) { return si_o_no(r.existe(*a[0])); }, nullptr},

    // Listings.
    {"dirwin", 8, un_patron,
     [](const argumentos& a) -> std::string {
         std::vector<std::string> v;
         Dirwin_u* d = dirwin_crea_UNICODE(ancho{a[0]});
         WIN32_FIND_DATAW datos;
         while (dirwin_findnextfile_UNICODE(d, &datos) == 1) {
             v.push_back(u8(datos.cFileName) + (dirwin_es_directorio_UNICODE(&datos) == 1 ? "\\" : "") +
                         (dirwin_es_solo_lectura_UNICODE(&datos) == 1 ? " r" : ""));
         }
         const bool propio = d->con_filtro_propio == 1;
         dirwin_destruye_UNICODE(&d);
         return si_o_no(propio) + " " + entre_barras(v);
     },
     [](const argumentos& a) -> std::string {
         std::vector<std::string> v;
         Dirwin* d = dirwin_crea(estrecho(a[0]));
         WIN32_FIND_DATAA datos;
         while (dirwin_findnextfile(d, &datos) == 1) {
             v.push_back(u(de_pagina(datos.cFileName)) + (dirwin_es_directorio(&datos) == 1 ? "\\" : "") +
                         ((datos.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0 ? " r" : ""));
         }
         const bool propio = d->con_filtro_propio == 1;
         dirwin_destruye(&d);
         return si_o_no(propio) + " " + entre_barras(v);
     },
     [](reglas& r, const argumentos& a, const std::string&) {
         std::vector<std::string> v;
         const auto b = r.enumera(*a[0], !g_en_8_bits);
         for (const auto& x : b.entradas) {
             v.push_back(u(g_en_8_bits ? ida_y_vuelta(x.nombre) : x.nombre) + (x.n->es_directorio ? "\\" : "") +
                         (x.n->solo_lectura ? " r" : ""));
         }
         return si_o_no(b.propia) + " " + entre_barras(v);
     },
     nullptr},
    {"cdir_lista_de_ficheros", 8, [](generador& g) -> argumentos { return {g.directorio(), g.extension()}; },
     con_lista<cdir_lista_de_ficheros_UNICODE, ListaFicheros_u, tw, tw>,
     con_lista<cdir_lista_de_ficheros, ListaFicheros, ta, ta>,
     [](reglas& r, const argumentos& a, const std::string&) {
         return modela_lista<cuales::ficheros>(r, compuesto(*a[0], L"*.*"), opcional(a[1]), opcional(a[0]));
     },
     nullptr},
    {"cdir_lista_de_ficherosFiltro", 6, directorio_extension_y_nombre,
     con_lista<cdir_lista_de_ficherosFiltro_UNICODE, ListaFicheros_u, tw, tw, tw>,
     con_lista<cdir_lista_de_ficherosFiltro, ListaFicheros, ta, ta, ta>,
     [](reglas& r, const argumentos& a, const std::string&) {
         return modela_lista<cuales::ficheros>(r, compuesto(*a[0], con_extension(*a[2], *a[1])), opcional(a[1]),
                                               opcional(a[0]));
     },
     nullptr},
    {"cdir_lista_de_ficherosFiltro_en_unidad", 4,
     [](generador& g) -> argumentos {
         argumentos a = directorio_extension_y_nombre(g);
         const texto_w t = g.escribe(g.de_directorio(), completa | desde_raiz | de_unidad | compartida, true);
         const std::size_t unidad = empieza(t, L"Q:") ? 2 : empieza(t, L"\\\\") ? 9 : 0;
         a[0] = t.substr(unidad);
         a.insert(a.begin(), unidad == 0 ? argumento() : argumento(t.substr(0, unidad)));
         return a;
     },
     con_lista<cdir_lista_de_ficherosFiltro_en_unidad, ListaFicheros_u, tw, tw, tw, tw>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         const texto_w d = a[0].value_or(L"") + *a[1];
         return modela_lista<cuales::ficheros>(r, compuesto(d, con_extension(*a[3], *a[2])), opcional(a[2]), &d);
     },
     [](reglas&, const argumentos& a) { return !a[1]->empty(); }},
    {"cdir_lista_de_ficheros_en_path_filtro", 6, un_patron,
     con_lista<cdir_lista_de_ficheros_en_path_filtro_UNICODE, ListaFicheros_u, tw>,
     con_lista<cdir_lista_de_ficheros_en_path_filtro, ListaFicheros, ta>,
     [](reglas& r, const argumentos& a, const std::string&) {
         return modela_lista<cuales::ficheros>(r, *a[0], nullptr, nullptr);
     },
     nullptr},
    {"cdir_lista_de_directorios", 6, [](generador& g) -> argumentos { return {g.directorio(), argumento(L"*")}; },
     con_lista<cdir_lista_de_directorios_UNICODE, ListaFicheros_u, tw, tw>,
     con_lista<cdir_lista_de_directorios, ListaFicheros, ta, ta>,
     [](reglas& r, const argumentos& a, const std::string&) {
         return modela_lista<cuales::directorios>(r, modelos::une(*a[0], *a[1]), nullptr, opcional(a[0]));
     },
     nullptr},
    {"lumodir_lista_de_ficheros_en_directorio_y_subdirectorios", 6,
     [](generador& g) -> argumentos { return {g.directorio(), g.extension()}; },
     llama_arbol<lumodir_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE>, nullptr,
     modela_llamada_arbol<false>, arbol_con_raiz},
    {"lumodir_lista_de_ficheros_y_directorios_recursivamente", 6,
     [](generador& g) -> argumentos { return {g.directorio(), g.extension()}; },
     llama_arbol<lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE>, nullptr,
     modela_llamada_arbol<true>, arbol_con_raiz},
    {"lumodir_lista_de_fichero", 5, un_patron,
     [](const argumentos& a) -> std::string { return muestra(lumodir_lista_de_fichero(ancho{a[0]}, nullptr)); },
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         return lista_de(ordenada(nombres_que(r, *a[0], cuales::ficheros, vale_todo)));
     },
     nullptr},
    {"lumodir_existenFicheros", 6, un_directorio, simple<lumodir_existenFicheros_UNICODE>,
     simple<lumodir_existenFicheros>,
     [](reglas& r, const argumentos& a, const std::string&) {
         return si_o_no(!nombres_que(r, *a[0] + L"\\*", cuales::ficheros, vale_todo).empty());
     },
     [](reglas& r, const argumentos& a) {
         // The pattern is the text and "\\*": after a final separator that is two of them, which Wine does not take
         // in a share.
         return !(empieza(*a[0], L"\\\\") && acaba(*a[0], L"\\")) && (r.v.busca(*a[0]).padre != nullptr);
     }},
    {"lumodir_existenSubdirectorios", 6, un_directorio, simple<lumodir_existenSubdirectorios_UNICODE>,
     simple<lumodir_existenSubdirectorios>,
     [](reglas& r, const argumentos& a, const std::string&) {
         return si_o_no(!nombres_que(r, *a[0] + L"\\*", cuales::directorios, [](const texto_w& n, const nodo&) {
                             return n[0] != L'.';
                         }).empty());
     },
     [](reglas& r, const argumentos& a) {
         // The pattern is the text and "\\*": after a final separator that is two of them, which Wine does not take
         // in a share.
         return !(empieza(*a[0], L"\\\\") && acaba(*a[0], L"\\")) && (r.v.busca(*a[0]).padre != nullptr);
     }},
    {"fichsdir_ficheros", 6, un_directorio, simple<fichsdir_ficheros_u>, simple<fichsdir_ficheros>,
     [](reglas& r, const argumentos& a, const std::string& real) { return modela_fichsdir(r, *a[0], real, false); },
     nullptr},
    {"fichsdir_ficheros_existentes_ordenados", 4, un_directorio, nullptr,
     simple<fichsdir_ficheros_existentes_ordenados>,
     [](reglas& r, const argumentos& a, const std::string& real) { return modela_fichsdir(r, *a[0], real, true); },
     nullptr},
    {"fichsdir_directorios", 6, un_directorio, simple<fichsdir_directorios_u>, simple<fichsdir_directorios>,
     [](reglas& r, const argumentos& a, const std::string&) {
         const lista l = nombres_que(r, patron_de_conjunto(*a[0]), cuales::directorios,
                                     [](const texto_w& n, const nodo&) { return n[0] != L'.'; });
         return lista_de(g_en_8_bits ? ordenada_en_bytes(l) : ordenada(l));
     },
     nullptr},
    {"fichsdir_directorios_prog", 3, directorio_y_tope, nullptr, con_tope<fichsdir_directorios_prog>,
     [](reglas& r, const argumentos& a, const std::string&) {
         lista l;
         for (const auto& x : las_primeras(r, *a[0], antes_del_tope(a))) {
             if (x.n->es_directorio && x.nombre[0] != L'.') {
                 l.push_back(x.nombre);
             }
         }
         return modela_parado(r, a) + lista_de(ordenada_en_bytes(l));
     },
     nullptr},
    {"fichsdir_nombres_ficheros_prog", 3, directorio_y_tope, nullptr, con_tope<fichsdir_nombres_ficheros_prog>,
     [](reglas& r, const argumentos& a, const std::string&) {
         lista l;
         for (const auto& x : las_primeras(r, *a[0], antes_del_tope(a))) {
             if (!x.n->es_directorio) {
                 l.push_back(x.nombre);
             }
         }
         return modela_parado(r, a) + lista_de(pasada_por_8_bits(l));
     },
     nullptr},
    {"fichsdir_ficheros_prog", 3, directorio_y_tope, nullptr, con_tope<fichsdir_ficheros_prog>,
     [](reglas& r, const argumentos& a, const std::string& real) {
         return modela_parado(r, a) + modela_fichsdir(r, *a[0], real, false, antes_del_tope(a));
     },
     nullptr},
    {"fichsdir_directorios_sin_extension", 4, un_directorio, nullptr, simple<fichsdir_directorios_sin_extension>,
     [](reglas& r, const argumentos& a, const std::string&) {
         return lista_de(ordenada_en_bytes(nombres_que(r, patron_de_conjunto(*a[0]), cuales::directorios,
                                                       [&](const texto_w& n, const nodo&) {
                                                           return n[0] != L'.' && registro_de(r, n).extension.empty();
                                                       })));
     },
     cabe_en_la_pagina},
    {"fichsdir_directorios_sin_ocultos_u", 3, un_directorio, simple<fichsdir_directorios_sin_ocultos_u>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         return lista_de(ordenada(nombres_que(r, patron_de_conjunto(*a[0]), cuales::directorios,
                                              [](const texto_w& n, const nodo&) { return n[0] != L'.'; })));
     },
     nullptr},
    {"fichsdir_nombres_ficheros_con_extension", 4, directorio_y_extension, nullptr,
     simple<fichsdir_nombres_ficheros_con_extension>,
     [](reglas& r, const argumentos& a, const std::string&) {
         return lista_de(nombres_que(r, patron_de_conjunto(*a[0]), cuales::ficheros,
                                     [&](const texto_w& n, const nodo&) {
                                         return registro_de(r, n).extension == a_pagina(*a[1]);
                                     }));
     },
     cabe_en_la_pagina},
    {"fichsdir_nombres_base_en_mayusculas_ficheros_con_extension", 4, directorio_y_extension, nullptr,
     simple<fichsdir_nombres_base_en_mayusculas_ficheros_con_extension>, modela_bases<true>, cabe_en_la_pagina},
    {"fichsdir_nombres_base_en_minusculas_ficheros_con_extension", 4, directorio_y_extension, nullptr,
     simple<fichsdir_nombres_base_en_minusculas_ficheros_con_extension>, modela_bases<false>, cabe_en_la_pagina},
    {"fichsdir_nombres_ficheros_cumplen_filtro", 4, un_patron, simple<fichsdir_nombres_ficheros_cumplen_filtro>,
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         return lista_de(pasada_por_8_bits(nombres_que(r, *a[0], cuales::ficheros, vale_todo)));
     },
     nullptr},
    {"fichsdir_directorios_incluyendo_empiezan_por_puntos_u", 4, un_directorio,
     simple<fichsdir_directorios_incluyendo_empiezan_por_puntos_u>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         return lista_de(ordenada(nombres_que(r, patron_de_conjunto(*a[0]), cuales::directorios,
                                              [](const texto_w& n, const nodo&) { return n != L"." && n != L".."; })));
     },
     nullptr},
    {"fichsdir_nombres_ficheros", 6, un_directorio, simple<fichsdir_nombres_ficheros_u>,
     simple<fichsdir_nombres_ficheros>,
     [](reglas& r, const argumentos& a, const std::string&) {
         const lista l = nombres_que(r, patron_de_conjunto(*a[0]), cuales::ficheros, vale_todo);
         return lista_de(g_en_8_bits ? pasada_por_8_bits(l) : l);
     },
     nullptr},
    {"fichsdir_nombres_ficheros_cumplen_filtro_u", 4, un_patron, simple<fichsdir_nombres_ficheros_cumplen_filtro_u>,
     nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         return lista_de(nombres_que(r, *a[0], cuales::ficheros, vale_todo));
     },
     nullptr},
    {"fichsdir_nombres_directorios_cumplen_filtro_u", 4, un_patron,
     simple<fichsdir_nombres_directorios_cumplen_filtro_u>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         return lista_de(nombres_que(r, *a[0], cuales::directorios, vale_todo));
     },
     nullptr},
    {"fichsdir_nombres_ficheros_con_extension_u", 4,
     [](generador& g) -> argumentos {
         static const std::vector<texto_w> extensiones = {L"txt", L"TMP", L"", L"y", L"git"};
         return {g.directorio(), g.z.elige(extensiones)};
     },
     simple<fichsdir_nombres_ficheros_con_extension_u>, nullptr,
     [](reglas& r, const argumentos& a, const std::string&) {
         return lista_de(nombres_que(r, patron_de_conjunto(*a[0]), cuales::ficheros,
                                     [&](const texto_w& n, const nodo&) {
                                         return minusculas_ascii(modelos::extension_sin_punto(
                                                    modelos::corta_modelo(modelos::recortado(n), false).p)) ==
                                                minusculas_ascii(*a[1]);
                                     }));
     },
     nullptr},
    };
    return todas;
}

}  // namespace

const std::vector<fila>& filas() {
    return todas_las_filas();
}

void en_8_bits(bool si) {
    g_en_8_bits = si;
}
bool modela_en_8_bits() {
    return g_en_8_bits;
}

}  // namespace estado
