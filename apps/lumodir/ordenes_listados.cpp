// Listings: ls, tree, sets.
#include <algorithm>
#include <utility>

#include "comodines.hpp"
#include "consola.hpp"
#include "directorios.hpp"
#include "entradas.hpp"
#include "ficheros.hpp"
#include "lumodir.hpp"
#include "ordenes.hpp"
#include "respuesta.hpp"
#include "textos.hpp"

namespace mando {

namespace {

celda i_proteccion(bool protegido) {
    return protegido ? celda(di("protected"), estilo::aviso) : celda(std::wstring());
}

// "txt" and ".txt" are the same extension to a person.
void i_quita_punto(peticion& p, std::string_view nombre) {
    const auto fila = p.opciones.find(nombre);
    if (fila != p.opciones.end() && fila->second.starts_with(L'.')) {
        fila->second.erase(0, 1);
    }
}

// "1 directory that begins with a dot is not shown", and how to see it.
std::wstring i_no_mostrados(unsigned long long cuantos) {
    return di(cuantos == 1 ? frase("%1 directory whose name begins with a dot is not shown (--all)")
                           : frase("%1 directories whose names begin with a dot are not shown (--all)"),
              con_miles(cuantos));
}

// ---- ls ----

// A directory, and what of it is wanted: everything, a pattern, or one file.
struct pedido {
    std::wstring directorio, patron;
};

pedido i_que_se_pide(const std::wstring& argumento) {
    const size_t fin = argumento.find_last_of(L"\\/:");
    const std::wstring delante = fin == argumento.npos ? L"" : argumento.substr(0, fin + 1);
    const bool parte =
        es_patron(argumento) || (!argumento.empty() && que_hay_en(argumento) == clase_de_entrada::fichero);
    if (!parte || delante.size() == argumento.size()) {
        return {argumento, L""};
    }
    if (es_patron(delante)) {
        throw fallo{di("'%1': only the last part of a path may be a pattern", argumento)};
    }
    return {delante.empty() ? L"." : delante, argumento.substr(delante.size())};
}

bool i_cumple(const peticion& p, const pedido& que, const entrada& e) {
    if (!que.patron.empty() && !cumple_patron(e.nombre, que.patron)) {
        return false;
    }
    if ((p.tiene("dirs") && !e.es_directorio) || ((p.tiene("files") || p.tiene("ext")) && e.es_directorio)) {
        return false;
    }
    const std::wstring extension = extension_de(e.nombre);
    if (p.tiene("ext") && !cumple_patron(extension, p.valor("ext"))) {
        return false;
    }
    // With --ext the pattern is that of the base name.
    const std::wstring comparado = p.tiene("ext") && !extension.empty()
                                       ? e.nombre.substr(0, e.nombre.size() - extension.size() - 1)
                                       : e.nombre;
    return !p.tiene("filter") || cumple_patron(comparado, p.valor("filter"));
}

void i_ordena(const peticion& p, std::vector<entrada>& entradas) {
    const std::wstring por = p.tiene("sort") ? en_minusculas(p.valor("sort")) : L"name";
    int (*compara)(const entrada&, const entrada&);
    if (por == L"size") {
        compara = [](const entrada& a, const entrada& b) {
            return a.bytes == b.bytes ? 0 : a.bytes > b.bytes ? -1 : 1;
        };
    } else if (por == L"date") {
        compara = [](const entrada& a, const entrada& b) {
            return a.modificada == b.modificada ? 0 : a.modificada > b.modificada ? -1 : 1;
        };
    } else if (por == L"ext") {
        compara = [](const entrada& a, const entrada& b) {
            return compara_nombres(extension_de(a.nombre), extension_de(b.nombre));
        };
    } else if (por == L"name") {
        compara = [](const entrada&, const entrada&) { return 0; };  // as they were read
    } else {
        throw uso_incorrecto{di("--sort must be name, size, date or ext, not '%1'", por)};
    }
    if (p.tiene("reverse")) {
        std::reverse(entradas.begin(), entradas.end());
    }
    const int sentido = p.tiene("reverse") ? -1 : 1;
    std::stable_sort(entradas.begin(), entradas.end(), [&](const entrada& a, const entrada& b) {
        return a.es_directorio != b.es_directorio ? a.es_directorio : compara(a, b) * sentido < 0;
    });
}

struct listado {
    std::vector<entrada> entradas;
    unsigned long long directorios = 0, ficheros = 0, bytes = 0, no_mostrados = 0;
};

listado i_lista(const peticion& p, const pedido& que) {
    listado l;
    for (entrada& e : lee_con_progreso(que.directorio).entradas) {
        if (!i_cumple(p, que, e)) {
            continue;
        }
        if (e.es_directorio && e.nombre.starts_with(L'.') && !p.tiene("all") &&
            !que.patron.starts_with(L'.')) {
            ++l.no_mostrados;
            continue;
        }
        l.directorios += e.es_directorio ? 1 : 0;
        l.ficheros += e.es_directorio ? 0 : 1;
        l.bytes += e.bytes;
        l.entradas.push_back(std::move(e));
    }
    i_ordena(p, l.entradas);
    return l;
}

std::wstring i_resumen(const listado& l) {
    std::wstring texto;
    if (l.directorios > 0) {
        texto = plural(l.directorios, "directory", "directories");
    }
    if (l.ficheros > 0 || l.directorios == 0) {
        texto += (texto.empty() ? L"" : L", ") + plural(l.ficheros, "file", "files") + L", " +
                 tamanyo_legible(l.bytes);
    }
    return texto;
}

estilo i_estilo(const entrada& e) {
    return e.es_directorio ? estilo::tenue : estilo::normal;
}

void i_pinta_con_detalles(const peticion& p, const listado& l) {
    tabla t({{.titulo = "attributes"},
             {.titulo = p.tiene("human") ? frase("size") : frase("bytes"), .a_la_derecha = true},
             {.titulo = "modified"},
             {.titulo = "name", .elastica = true}});
    for (const entrada& e : l.entradas) {
        const std::wstring tamanyo = e.es_directorio    ? L""
                                     : p.tiene("human") ? tamanyo_legible(e.bytes)
                                                        : con_miles(e.bytes);
        t.fila({letras_de_atributos(e), tamanyo, fecha_en_palabras(e.modificada, false),
                celda(nombre_de(e), i_estilo(e))});
    }
    if (!t.vacia()) {
        t.pinta(salida());
    }
}

void i_pinta_listado(const peticion& p, const listado& l) {
    if (p.tiene("long")) {
        i_pinta_con_detalles(p, l);
    } else {
        std::vector<celda> nombres;
        for (const entrada& e : l.entradas) {
            nombres.emplace_back(nombre_de(e), i_estilo(e));
        }
        pinta_en_columnas(salida(), nombres);
    }
    if (p.tiene("long") || salida().es_consola()) {
        salida().linea(i_resumen(l), estilo::titulo);
        if (l.no_mostrados > 0) {
            salida().linea(i_no_mostrados(l.no_mostrados), estilo::tenue);
        }
    }
}

int i_ls(peticion& p) {
    if (p.tiene("dirs") && p.tiene("ext")) {
        throw uso_incorrecto{di("--ext is for files, --dirs for directories; use --filter")};
    }
    if (p.tiene("dirs") && p.tiene("files")) {
        throw uso_incorrecto{di("give either --files or --dirs")};
    }
    i_quita_punto(p, "ext");
    const pedido que = i_que_se_pide(p.directorio());
    comprueba_directorio(que.directorio);
    const listado l = i_lista(p, que);
    json lista = json::lista();
    for (const entrada& e : l.entradas) {
        lista.agrega(json_de(e, e.nombre, "name"));
    }
    const bool buscaba = p.tiene("ext") || p.tiene("filter") || !que.patron.empty();
    return responde(
        p,
        json::objeto()
            .pon("directory", que.directorio)
            .pon("entries", std::move(lista))
            .pon("not_shown", l.no_mostrados),
        [&] { i_pinta_listado(p, l); }, buscaba && l.entradas.empty() ? no : hecho);
}

// ---- tree ----

// One directory of the tree, in the order in which they are drawn.
struct nodo {
    std::wstring nombre, bajo;
    size_t nivel = 0;
    std::vector<std::wstring> ficheros = {};  // with the extension that was asked for
    std::vector<std::wstring> enlaces = {};   // links to directories
    bool leido = true;
    unsigned long long de_abajo = 0;     // its files and those of all directories below
    unsigned long long directorios = 1;  // itself and those below
};

struct arbol {
    std::vector<nodo> nodos;
    recuento todo;
    unsigned long long no_mostrados = 0, bytes = 0;
};

arbol i_arbol(const peticion& p, const std::wstring& base) {
    arbol a;
    recorre_con_progreso(base, [&](carpeta& c) {
        nodo n{.nombre = c.nivel == 0 ? c.ruta : c.bajo.substr(c.bajo.rfind(L'\\') + 1),
               .bajo = c.bajo,
               .nivel = c.nivel,
               .leido = c.leida};
        for (entrada& e : c.entradas) {
            if (e.es_directorio && e.nombre.starts_with(L'.') && !p.tiene("all")) {
                e.se_entra = false;
                ++a.no_mostrados;
            } else if (e.es_enlace && e.es_directorio) {
                n.enlaces.push_back(e.nombre);
            } else if (!e.es_directorio &&
                       (!p.tiene("ext") || cumple_patron(extension_de(e.nombre), p.valor("ext")))) {
                n.ficheros.push_back(e.nombre);
                a.bytes += e.bytes;
            }
        }
        a.todo.ficheros += n.ficheros.size();
        ++a.todo.directorios;
        if (!c.leida) {
            a.todo.codigo_ilegible = a.todo.ilegibles.empty() ? c.codigo : a.todo.codigo_ilegible;
            a.todo.ilegibles.push_back(c.ruta);
        }
        a.nodos.push_back(std::move(n));
    });
    // From the last to the first, each directory comes before the one that holds it.
    std::vector<unsigned long long> ficheros, directorios;  // of each level, gathered from below
    for (size_t i = a.nodos.size(); i-- > 0;) {
        nodo& n = a.nodos[i];
        ficheros.resize(std::max(ficheros.size(), n.nivel + 2));
        directorios.resize(ficheros.size());
        n.de_abajo = n.ficheros.size() + std::exchange(ficheros[n.nivel + 1], 0);
        n.directorios = 1 + std::exchange(directorios[n.nivel + 1], 0);
        ficheros[n.nivel] += n.de_abajo;
        directorios[n.nivel] += n.directorios;
    }
    return a;
}

class dibujo {
public:
    dibujo(const peticion& p, const arbol& a) : arbol_(a), niveles_(p.numero("depth", 10240, 10240)) {
        con_ficheros_ = p.tiene("with-files");
        solo_con_algo_ = p.tiene("ext") && !p.tiene("empty");
    }

    void pinta() {
        std::vector<bool> sigue;  // for each level: whether another one comes below at that level
        for (size_t i = 0; i < arbol_.nodos.size(); ++i) {
            const nodo& n = arbol_.nodos[i];
            if (n.nivel > niveles_ || (solo_con_algo_ && n.de_abajo == 0 && n.nivel > 0)) {
                continue;
            }
            sigue.resize(n.nivel + 1);
            sigue[n.nivel] = !i_es_el_ultimo(i);
            i_pinta_directorio(n, sigue);
            if (con_ficheros_ && n.nivel < niveles_) {
                i_pinta_hojas(n, sigue, i_hay_debajo(i));
            }
        }
    }

private:
    bool i_se_ve(const nodo& n) const { return n.nivel <= niveles_ && !(solo_con_algo_ && n.de_abajo == 0); }

    bool i_es_el_ultimo(size_t i) const {
        for (size_t j = i + 1; j < arbol_.nodos.size() && arbol_.nodos[j].nivel >= arbol_.nodos[i].nivel;
             ++j) {
            if (arbol_.nodos[j].nivel == arbol_.nodos[i].nivel) {
                if (i_se_ve(arbol_.nodos[j])) {
                    return false;
                }
            }
        }
        return true;
    }

    bool i_hay_debajo(size_t i) const {
        for (size_t j = i + 1; j < arbol_.nodos.size() && arbol_.nodos[j].nivel > arbol_.nodos[i].nivel;
             ++j) {
            if (arbol_.nodos[j].nivel == arbol_.nodos[i].nivel + 1 && i_se_ve(arbol_.nodos[j])) {
                return true;
            }
        }
        return false;
    }

    static std::wstring i_ramas(const std::vector<bool>& sigue, size_t niveles) {
        std::wstring ramas;
        for (size_t nivel = 1; nivel < niveles; ++nivel) {
            ramas += sigue[nivel] ? L"\u2502   " : L"    ";
        }
        return ramas;
    }

    void i_pinta_directorio(const nodo& n, const std::vector<bool>& sigue) const {
        if (n.nivel > 0) {
            salida().escribe(
                i_ramas(sigue, n.nivel) + (sigue[n.nivel] ? L"\u251c\u2500\u2500 " : L"\u2514\u2500\u2500 "),
                estilo::tenue);
        }
        salida().escribe(a_la_vista(n.nombre), estilo::bueno);
        const bool cortado = n.nivel == niveles_ && n.directorios > 1;
        const std::wstring ficheros = plural(cortado ? n.de_abajo : n.ficheros.size(), "file", "files");
        if (!n.leido) {
            salida().linea(L"  " + di("cannot be read"), estilo::malo);
        } else if (cortado) {
            salida().linea(L"  " +
                           di("%1 in %2", ficheros, plural(n.directorios, "directory", "directories")));
        } else {
            salida().linea(n.ficheros.empty() ? L"" : L"  " + ficheros);
        }
    }

    static void i_pinta_hojas(const nodo& n, const std::vector<bool>& sigue, bool hay_debajo) {
        std::vector<std::wstring> hojas = n.ficheros;
        for (const std::wstring& enlace : n.enlaces) {
            hojas.push_back(enlace + di(" (the link)"));
        }
        for (size_t i = 0; i < hojas.size(); ++i) {
            const bool ultima = i + 1 == hojas.size() && !hay_debajo;
            salida().escribe(
                i_ramas(sigue, n.nivel + 1) + (ultima ? L"\u2514\u2500\u2500 " : L"\u251c\u2500\u2500 "),
                estilo::tenue);
            salida().linea(a_la_vista(hojas[i]));
        }
    }

    const arbol& arbol_;
    size_t niveles_;
    bool con_ficheros_, solo_con_algo_;
};

struct cuenta {
    std::wstring directorio;  // below the base
    unsigned long long ficheros = 0;
    unsigned long long directorios = 0;  // that are counted together here
};

std::vector<cuenta> i_cuentas(const peticion& p, const arbol& a) {
    const unsigned long niveles = p.numero("depth", 10240, 10240);
    std::vector<cuenta> cuentas;
    for (const nodo& n : a.nodos) {
        const bool juntos = p.tiene("depth") && n.nivel == niveles;
        if (n.nivel <= niveles) {
            cuentas.push_back({n.bajo, juntos ? n.de_abajo : n.ficheros.size(), juntos ? n.directorios : 1});
        }
    }
    if (!p.tiene("empty")) {
        std::erase_if(cuentas, [](const cuenta& c) { return c.ficheros == 0; });
    }
    if (p.tiene("top")) {
        std::stable_sort(cuentas.begin(), cuentas.end(),
                         [](const cuenta& x, const cuenta& y) { return x.ficheros > y.ficheros; });
        cuentas.resize(std::min<size_t>(cuentas.size(), p.numero("top", 0, 1000000)));
    }
    return cuentas;
}

void i_pinta_cuentas(const peticion& p, const arbol& a) {
    const bool juntas = p.tiene("depth");
    std::vector<columna> columnas = {{.titulo = "files", .a_la_derecha = true}};
    if (juntas) {
        columnas.push_back({.titulo = "directories", .a_la_derecha = true});
    }
    columnas.push_back({.titulo = "directory", .elastica = true});
    tabla t(columnas);
    for (const cuenta& c : i_cuentas(p, a)) {
        std::vector<celda> fila = {con_miles(c.ficheros)};
        if (juntas) {
            fila.emplace_back(con_miles(c.directorios));
        }
        fila.emplace_back(c.directorio);
        t.fila(std::move(fila));
    }
    if (!t.vacia()) {
        t.pinta(salida());
    }
}

void i_pinta_resumen(const arbol& a) {
    salida().linea(di("%1 in %2", plural(a.todo.ficheros, "file", "files"),
                      plural(a.todo.directorios, "directory", "directories")) +
                       L", " + tamanyo_legible(a.bytes),
                   estilo::titulo);
    if (a.no_mostrados > 0) {
        salida().linea(i_no_mostrados(a.no_mostrados), estilo::tenue);
    }
}

json i_json_de_arbol(const peticion& p, const arbol& a, const std::wstring& base) {
    json lista = json::lista();
    if (p.tiene("files") || p.tiene("with-files")) {
        for (const nodo& n : a.nodos) {
            if (!n.ficheros.empty() || p.tiene("empty")) {
                lista.agrega(json::objeto()
                                 .pon("directory", n.bajo)
                                 .pon("files", n.ficheros.size())
                                 .pon("names", n.ficheros));
            }
        }
    } else {
        for (const cuenta& c : i_cuentas(p, a)) {
            json fila = json::objeto().pon("directory", c.directorio).pon("files", c.ficheros);
            if (p.tiene("depth")) {
                fila.pon("directories", c.directorios);
            }
            lista.agrega(std::move(fila));
        }
    }
    return json::objeto()
        .pon("directory", base)
        .pon("files", a.todo.ficheros)
        .pon("directories", a.todo.directorios)
        .pon("bytes", a.bytes)
        .pon("not_shown", a.no_mostrados)
        .pon("unreadable", a.todo.ilegibles)
        .pon("tree", std::move(lista));
}

void i_pinta_rutas(const arbol& a, const std::wstring& base) {
    for (const nodo& n : a.nodos) {
        const std::wstring directorio = n.nivel == 0 ? base : bajo_de(base, n.bajo);
        for (const std::wstring& nombre : n.ficheros) {
            const std::wstring ruta = bajo_de(directorio, nombre);
            salida().linea(std::wstring_view(salida().es_consola() ? a_la_vista(ruta) : ruta));
        }
    }
}

void i_pinta_arbol(const peticion& p, const arbol& a, const std::wstring& base) {
    if (p.tiene("files")) {
        i_pinta_rutas(a, base);
        return;
    }
    if (p.tiene("counts") || p.tiene("top")) {
        i_pinta_cuentas(p, a);
    } else {
        dibujo(p, a).pinta();
    }
    i_pinta_resumen(a);
}

int i_tree(peticion& p) {
    const std::wstring directorio = p.directorio();
    if (p.tiene("files") &&
        (p.tiene("depth") || p.tiene("top") || p.tiene("counts") || p.tiene("with-files"))) {
        throw uso_incorrecto{di("--files shows paths and goes with --ext, --all and --empty only")};
    }
    i_quita_punto(p, "ext");
    rechaza_patron(directorio);
    p.numero("depth", 0, 10240);
    p.numero("top", 0, 1000000);
    comprueba_directorio(directorio);
    const arbol a = i_arbol(p, directorio);
    responde(p, i_json_de_arbol(p, a, directorio), [&] { i_pinta_arbol(p, a, directorio); });
    di_ilegibles(a.todo);
    return !a.todo.ilegibles.empty() || (p.tiene("ext") && a.todo.ficheros == 0) ? no : hecho;
}

// ---- sets ----

int i_sets(peticion& p) {
    const std::wstring directorio = p.directorio();
    comprueba_directorio(directorio);
    const lumodir::fichsdir::ficheros_t todos = lumodir::fichsdir::ficheros(ruta_de_trabajo(directorio));
    std::vector<const Fichsdir*> ficheros;
    for (const Fichsdir& f : todos) {
        ficheros.push_back(&f);
    }
    std::stable_sort(ficheros.begin(), ficheros.end(), [&](const Fichsdir* a, const Fichsdir* b) {
        return p.tiene("by-date")
                   ? a->fecha > b->fecha
                   : lumodir::fichsdir::nombre_fichero(*a) < lumodir::fichsdir::nombre_fichero(*b);
    });
    respuesta filas(p, {{.clave = "modified", .como = {.titulo = "modified"}},
                        {.clave = "modified_seconds"},
                        {.clave = "protected", .como = {.titulo = "protection"}},
                        {.clave = "name", .como = {.titulo = "name", .elastica = true}, .nombra = true}});
    for (const Fichsdir* f : ficheros) {
        const bool protegido = lumodir::fichsdir::fichero_esta_protegido(*f);
        filas.fila({valor(fecha_de_pared(f->fecha, L'T'), fecha_de_pared(f->fecha)),
                    valor(f->fecha, celda(L"")), valor(protegido, i_proteccion(protegido)),
                    de_pagina_activa(lumodir::fichsdir::nombre_fichero(*f))});
    }
    return responde(p, json::objeto().pon("directory", directorio).pon("files", filas.como_lista()),
                    [&] { filas.pinta(); });
}

constexpr opcion opciones_ls[] = {
    {.nombre = "ext",
     .valor = "E",
     .ayuda =
         "only files with this extension; ? stands for one character, \"\" for files without an extension"},
    {.nombre = "filter",
     .valor = "P",
     .ayuda = "only names that the pattern matches (img*, *.txt); with --ext the pattern is that of the base "
              "name"},
    {.nombre = "files", .ayuda = "only files"},
    {.nombre = "dirs", .ayuda = "only directories"},
    {.nombre = "all", .ayuda = "directories whose names begin with a dot too"},
    {.nombre = "long",
     .ayuda =
         "with attributes (d directory, l link, r read-only, h hidden, s system, a archive), sizes and dates",
     .letra = 'l'},
    {.nombre = "human", .ayuda = "with --long: sizes in KB, MB and so on"},
    {.nombre = "sort",
     .valor = "BY",
     .ayuda = "by name (the default), size, date (largest and newest first) or ext"},
    {.nombre = "reverse", .ayuda = "the other way round", .letra = 'r'},
};
constexpr ejemplo ejemplos_ls[] = {
    {.linea = R"(ls C:\windows\system32 --ext exe)", .que_hace = "the programs there"},
    {.linea = "ls *.txt", .que_hace = "what matches"},
    {.linea = R"(ls C:\windows --long --sort size --human)", .que_hace = "the largest files first"},
    {.linea = R"(ls . --filter "img??.*" --json)", .que_hace = "for a script"},
};

constexpr opcion opciones_tree[] = {
    {.nombre = "with-files", .ayuda = "draw the files too"},
    {.nombre = "ext", .valor = "E", .ayuda = "only files with this extension"},
    {.nombre = "depth",
     .valor = "N",
     .ayuda = "not deeper than N levels; what is below is counted with the directory above it"},
    {.nombre = "counts", .ayuda = "a table of the files in each directory instead of a drawing"},
    {.nombre = "top", .valor = "N", .ayuda = "only the N directories with the most files, as a table"},
    {.nombre = "all", .ayuda = "directories whose names begin with a dot too"},
    {.nombre = "empty", .ayuda = "with --counts or --ext: directories without any such file too"},
    {.nombre = "files", .ayuda = "the path of every file, one per line"},
};
constexpr ejemplo ejemplos_tree[] = {
    {.linea = R"(tree C:\windows --depth 1)", .que_hace = "where the files are"},
    {.linea = R"(tree C:\windows --ext dll --top 5)",
     .que_hace = "the five directories with the most libraries"},
    {.linea = R"(tree . --files --ext txt)", .que_hace = "every text file below here"},
};

constexpr opcion opciones_sets[] = {
    {.nombre = "by-date", .ayuda = "the newest first, instead of by name"},
};
constexpr ejemplo ejemplos_sets[] = {
    {.linea = R"(sets C:\windows --by-date)", .que_hace = "what changed last"},
};

constexpr orden tabla_listados[] = {
    {.nombre = "ls",
     .argumentos = "[DIR | FILE | PATTERN]",
     .resumen = "the files and directories of a directory",
     .detalle = "Directories come first and end with a separator; names are sorted, ignoring case. "
                "Directories whose names begin with a dot are left out without --all. The exit code is 1 "
                "when a pattern, --ext or --filter finds nothing.",
     .maximo = 1,
     .opciones = opciones_ls,
     .ejemplos = ejemplos_ls,
     .ejecuta = i_ls},
    {.nombre = "tree",
     .argumentos = "[DIR]",
     .resumen = "draw the directories of a tree with the number of their files",
     .detalle =
         "Links to directories are not followed. Directories whose names begin with a dot are left out "
         "without --all. The exit code is 1 when --ext finds nothing, or when a directory could not be read.",
     .maximo = 1,
     .opciones = opciones_tree,
     .ejemplos = ejemplos_tree,
     .ejecuta = i_tree},
    {.nombre = "sets",
     .argumentos = "[DIR]",
     .resumen = "the files of a directory with dates and protection",
     .detalle = "Dates are in local time. Names are those of the active code page: a character that it lacks "
                "shows as its default character (ls --long shows every name whole).",
     .maximo = 1,
     .opciones = opciones_sets,
     .ejemplos = ejemplos_sets,
     .ejecuta = i_sets},
};

}  // namespace

const std::span<const orden> ordenes_listados = tabla_listados;

}  // namespace mando
