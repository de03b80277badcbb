// Listings: ls, tree, sets.
#include <algorithm>
#include <map>

#include "cdir_listas.h"
#include "cdir_rutas.h"
#include "consola.hpp"
#include "directorios.hpp"
#include "dirwin.h"
#include "ficheros.hpp"
#include "fichsdir.h"
#include "lumodir.h"
#include "ordenes.hpp"
#include "sistema_windows.hpp"
#include "tabla.hpp"
#include "textos.hpp"
#include "timefich.h"

namespace mando {

namespace {

std::vector<std::wstring> i_toma_nombres(ListaFicheros_u& lista) {
    std::vector<std::wstring> nombres(lista.lista, lista.lista + lista.num);
    cdir_libera_lista_de_ficheros_UNICODE(&lista);
    return nombres;
}

std::vector<std::wstring> i_nombres(const peticion& p, const std::wstring& directorio) {
    const wchar_t* filtro = p.valor("filter");
    const wchar_t* extension = p.valor("ext");
    ListaFicheros_u lista{};
    if (p.tiene("dirs")) {
        cdir_lista_de_directorios_UNICODE(directorio.c_str(), filtro ? filtro : L"*", &lista);
    } else if (filtro && !extension) {
        // The pattern is that of the whole name.
        const std::wstring patron = toma(cdir_concatena_directorios_UNICODE(directorio.c_str(), filtro));
        cdir_lista_de_ficheros_en_path_filtro_UNICODE(patron.c_str(), &lista);
    } else if (filtro) {
        cdir_lista_de_ficherosFiltro_UNICODE(directorio.c_str(), extension, filtro, &lista);
    } else {
        cdir_lista_de_ficheros_UNICODE(directorio.c_str(), extension, &lista);
    }
    return i_toma_nombres(lista);
}

// "txt" and ".txt" are the same extension to a person.
void i_quita_punto(peticion& p, std::string_view nombre) {
    const auto fila = p.opciones.find(nombre);
    if (fila != p.opciones.end() && fila->second.starts_with(L'.')) {
        fila->second.erase(0, 1);
    }
}

// What the enumerator knows of each entry.
struct detalle {
    unsigned long long bytes = 0;
    long long fecha = 0;  // on the wall clock
    bool protegido = false;
};

std::map<std::wstring, detalle> i_detalles(const std::wstring& directorio) {
    std::map<std::wstring, detalle> detalles;
    WIN32_FIND_DATAW e;
    Dirwin_u* recorrido =
        dirwin_crea_UNICODE(toma(cdir_concatena_directorios_UNICODE(directorio.c_str(), L"*")).c_str());
    while (dirwin_findnextfile_UNICODE(recorrido, &e) == CIERTO) {
        detalles[e.cFileName] = {static_cast<unsigned long long>(e.nFileSizeHigh) << 32 | e.nFileSizeLow,
                                 timefich_convertir_fecha(&e.ftLastWriteTime),
                                 dirwin_es_solo_lectura_UNICODE(&e) == CIERTO};
    }
    dirwin_destruye_UNICODE(&recorrido);
    return detalles;
}

celda i_proteccion(bool protegido) {
    return protegido ? celda(di("protected"), estilo::aviso) : celda(std::wstring());
}

void i_ls_con_detalles(const peticion& p, const std::wstring& directorio,
                       const std::vector<std::wstring>& nombres) {
    std::map<std::wstring, detalle> detalles = i_detalles(directorio);
    json lista = json::lista();
    tabla t({{"bytes", true}, {"modified"}, {"protection"}, {"name", false, true}});
    unsigned long long total = 0;
    for (const std::wstring& nombre : nombres) {
        const detalle& x = detalles[nombre];
        total += x.bytes;
        if (p.en_json) {
            lista.agrega(json::objeto()
                             .pon("name", nombre)
                             .pon("size", x.bytes)
                             .pon("modified", fecha_de_pared(x.fecha, L'T'))
                             .pon("protected", x.protegido));
        } else {
            t.fila({con_miles(x.bytes), fecha_de_pared(x.fecha), i_proteccion(x.protegido), nombre});
        }
    }
    if (p.en_json) {
        escribe_json(json::objeto().pon("directory", directorio).pon("files", std::move(lista)));
    } else if (!t.vacia()) {
        t.pinta(salida());
        salida().linea(plural(nombres.size(), "file", "files") + L", " + tamanyo_legible(total),
                       estilo::titulo);
    }
}

int i_ls(peticion& p) {
    const std::wstring directorio = p.directorio();
    const bool carpetas = p.tiene("dirs");
    if (carpetas && p.tiene("ext")) {
        throw uso_incorrecto{di("--ext is for files, --dirs for directories; use --filter")};
    }
    if (carpetas && p.tiene("long")) {
        throw uso_incorrecto{di("--long is for files")};
    }
    i_quita_punto(p, "ext");
    comprueba_directorio(directorio);
    const std::vector<std::wstring> nombres = i_nombres(p, directorio);
    const bool buscaba = p.tiene("ext") || p.tiene("filter");
    const int codigo = buscaba && nombres.empty() ? no : hecho;
    if (p.tiene("long")) {
        i_ls_con_detalles(p, directorio, nombres);
        return codigo;
    }
    if (p.en_json) {
        escribe_json(
            json::objeto().pon("directory", directorio).pon(carpetas ? "directories" : "files", nombres));
    } else {
        pinta_en_columnas(salida(), nombres, carpetas ? estilo::tenue : estilo::normal);
    }
    if (!p.en_json && salida().es_consola()) {
        salida().linea(carpetas ? plural(nombres.size(), "directory", "directories")
                                : plural(nombres.size(), "file", "files"),
                       estilo::titulo);
    }
    return codigo;
}

// ---- tree ----

struct cuenta {
    std::wstring directorio;  // below the base
    size_t ficheros = 0;
    size_t directorios = 0;  // that are counted together here
};

// The first `niveles` components of a path below the base.
std::wstring i_hasta_nivel(const std::wstring& ruta, size_t niveles) {
    size_t fin = 0;
    for (size_t i = 0; i < niveles && fin != ruta.npos; ++i) {
        fin = ruta.find(L'\\', fin == 0 ? 0 : fin + 1);
    }
    return niveles == 0 ? L"." : ruta.substr(0, fin);
}

std::vector<cuenta> i_cuentas(const peticion& p, const std::vector<rama>& arbol, const std::wstring& base) {
    const unsigned long niveles = p.numero("depth", 10240, 10240);
    std::vector<cuenta> cuentas;
    std::map<std::wstring, size_t> sitio;
    for (const rama& r : arbol) {
        const std::wstring directorio = i_hasta_nivel(bajo_la_base(r.ruta, base), niveles);
        const auto [fila, es_nuevo] = sitio.try_emplace(directorio, cuentas.size());
        if (es_nuevo) {
            cuentas.push_back({directorio});
        }
        cuentas[fila->second].ficheros += r.ficheros.size();
        cuentas[fila->second].directorios += 1;
    }
    if (!p.tiene("all")) {
        std::erase_if(cuentas, [](const cuenta& c) { return c.ficheros == 0; });
    }
    if (p.tiene("top")) {
        std::stable_sort(cuentas.begin(), cuentas.end(),
                         [](const cuenta& a, const cuenta& b) { return a.ficheros > b.ficheros; });
        cuentas.resize(std::min<size_t>(cuentas.size(), p.numero("top", 0, 1000000)));
    }
    return cuentas;
}

void i_pinta_arbol(const peticion& p, const std::vector<rama>& arbol, const std::wstring& base) {
    const std::vector<cuenta> cuentas = i_cuentas(p, arbol, base);
    const bool juntas = p.tiene("depth");
    std::vector<columna> columnas = {{"files", true}};
    if (juntas) {
        columnas.push_back({"directories", true});
    }
    columnas.push_back({"directory", false, true});
    tabla t(columnas);
    for (const cuenta& c : cuentas) {
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
    const auto con_alguno =
        std::count_if(arbol.begin(), arbol.end(), [](const rama& r) { return !r.ficheros.empty(); });
    salida().linea(di("%1 in %2 of %3", plural(cuenta_ficheros(arbol), "file", "files"),
                      con_miles(static_cast<unsigned long long>(con_alguno)),
                      plural(arbol.size(), "directory", "directories")),
                   estilo::titulo);
}

json i_json_de_arbol(const peticion& p, const std::vector<rama>& arbol, const std::wstring& base) {
    json resultado = json::objeto()
                         .pon("directory", base)
                         .pon("files", cuenta_ficheros(arbol))
                         .pon("directories", arbol.size());
    json lista = json::lista();
    if (p.tiene("files")) {
        for (const rama& r : arbol) {
            if (!r.ficheros.empty() || p.tiene("all")) {
                lista.agrega(json::objeto()
                                 .pon("directory", bajo_la_base(r.ruta, base))
                                 .pon("files", r.ficheros.size())
                                 .pon("names", r.ficheros));
            }
        }
    } else {
        for (const cuenta& c : i_cuentas(p, arbol, base)) {
            json fila = json::objeto().pon("directory", c.directorio).pon("files", c.ficheros);
            if (p.tiene("depth")) {
                fila.pon("directories", c.directorios);
            }
            lista.agrega(std::move(fila));
        }
    }
    return std::move(resultado).pon("tree", std::move(lista));
}

int i_tree(peticion& p) {
    const std::wstring directorio = p.directorio();
    if (p.tiene("files") && (p.tiene("depth") || p.tiene("top"))) {
        throw uso_incorrecto{di("--files shows paths, --depth and --top are for counts")};
    }
    i_quita_punto(p, "ext");
    comprueba_directorio(directorio);
    const std::vector<rama> arbol = recorre(directorio, p.valor("ext"));
    // The listing turns separators and drops a final one; the first record is the base itself.
    const std::wstring base = arbol.empty() ? directorio : arbol.front().ruta;
    if (p.en_json) {
        escribe_json(i_json_de_arbol(p, arbol, base));
    } else if (p.tiene("files")) {
        for (const rama& r : arbol) {
            for (const std::wstring& nombre : r.ficheros) {
                salida().linea(toma(cdir_concatena_directorios_UNICODE(r.ruta.c_str(), nombre.c_str())));
            }
        }
    } else {
        i_pinta_arbol(p, arbol, base);
    }
    return p.tiene("ext") && cuenta_ficheros(arbol) == 0 ? no : hecho;
}

// ---- sets ----

int i_sets(peticion& p) {
    const std::wstring directorio = p.directorio();
    comprueba_directorio(directorio);
    ArrPunteroConTipo* registros = fichsdir_ficheros_u(directorio.c_str());
    std::vector<const Fichsdir*> ficheros;
    for (unsigned long i = 0; i < arr_NumElemsPuntero(registros); ++i) {
        ficheros.push_back(static_cast<const Fichsdir*>(arr_GetPunteroConTipo(registros, i)));
    }
    std::stable_sort(ficheros.begin(), ficheros.end(), [&](const Fichsdir* a, const Fichsdir* b) {
        return p.tiene("by-date") ? a->fecha > b->fecha : fichsdir_compara_nombre(a, b->nombre) < 0;
    });
    json lista = json::lista();
    tabla t({{"modified"}, {"protection"}, {"name", false, true}});
    for (const Fichsdir* f : ficheros) {
        const std::wstring nombre = toma(fichsdir_nombre_fichero(f));
        const bool protegido = fichsdir_fichero_esta_protegido(f) == CIERTO;
        if (p.en_json) {
            lista.agrega(json::objeto()
                             .pon("name", nombre)
                             .pon("modified", fecha_de_pared(f->fecha, L'T'))
                             .pon("modified_seconds", f->fecha)
                             .pon("protected", protegido));
        } else {
            t.fila({fecha_de_pared(f->fecha), i_proteccion(protegido), nombre});
        }
    }
    arr_DestruyeEstructurasConTipo(
        &registros, reinterpret_cast<ArrDestruyeRegistro>(reinterpret_cast<void*>(fichsdir_destruye)));
    if (p.en_json) {
        escribe_json(json::objeto().pon("directory", directorio).pon("files", std::move(lista)));
    } else if (!t.vacia()) {
        t.pinta(salida());
    }
    return hecho;
}

constexpr opcion opciones_ls[] = {
    {"ext", "E",
     "only files with this extension; ? stands for one character, \"\" for\nfiles without an extension"},
    {"filter", "P",
     "only names that the pattern finds (img*, *.txt); with --ext the\npattern is that of the base name"},
    {"dirs", "", "the subdirectories instead of the files"},
    {"long", "", "with sizes, dates and protection"},
};
constexpr ejemplo ejemplos_ls[] = {
    {R"(ls C:\windows\system32 --ext exe)", "the programs there"},
    {R"(ls C:\windows --dirs)", "the subdirectories"},
    {R"(ls . --filter "img??.*" --json)", "for a script"},
};

constexpr opcion opciones_tree[] = {
    {"ext", "E", "count only files with this extension"},
    {"depth", "N", "count deeper directories with the one above them, N levels down"},
    {"top", "N", "only the N directories with the most files"},
    {"all", "", "also directories without any such file"},
    {"files", "", "the path of every file instead of the counts"},
};
constexpr ejemplo ejemplos_tree[] = {
    {R"(tree C:\windows --depth 1)", "where the files are"},
    {R"(tree C:\windows --ext dll --top 5)", "the five directories with the most libraries"},
    {R"(tree . --files --ext txt)", "every text file below here"},
};

constexpr opcion opciones_sets[] = {{"by-date", "", "the newest first, instead of by name"}};
constexpr ejemplo ejemplos_sets[] = {{R"(sets C:\windows --by-date)", "what changed last"}};

constexpr orden ordenes[] = {
    {"ls", "[DIR] [--ext E] [--filter P] [--dirs | --long]",
     "the files, or the subdirectories, of a directory",
     "Sorted without regard to letter case; subdirectories that begin with a point\n"
     "are left out. The exit code is 1 when --ext or --filter finds nothing.",
     0, 1, opciones_ls, ejemplos_ls, i_ls},
    {"tree", "[DIR] [--ext E]", "the files of a whole tree, counted per directory",
     "Links to directories are not gone into, and subdirectories that begin with a\n"
     "point are left out. The exit code is 1 when --ext finds nothing.",
     0, 1, opciones_tree, ejemplos_tree, i_tree},
    {"sets", "[DIR]", "the files of a directory with dates and protection",
     "Dates are on the wall clock. Names are those of the active code page: a\n"
     "character that it lacks shows as its default character.",
     0, 1, opciones_sets, ejemplos_sets, i_sets},
};

}  // namespace

const std::span<const orden> ordenes_listados = ordenes;

}  // namespace mando
