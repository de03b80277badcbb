// Deletion: rm, rmtree.
//
// Promises: what is asked about is what is deleted, and what is told as left is there: both are counted by the same
// walk, directories whose names begin with a dot included.
#include <algorithm>
#include <map>
#include <mutex>
#include <set>

#include "anfitrion.hpp"
#include "comodines.hpp"
#include "consola.hpp"
#include "directorios.hpp"
#include "ficheros.hpp"
#include "lumodir.hpp"
#include "ordenes.hpp"
#include "respuesta.hpp"
#include "sistema_windows.hpp"
#include "textos.hpp"
#include "trabajo.hpp"

namespace mando {

namespace {

// How patient a single deletion is.
void i_ajusta_reintentos(const peticion& p) {
    if (p.tiene("retries") || p.tiene("wait")) {
        lumodir::establece_politica(p.numero("retries", 5, 1000), p.numero("wait", 100, 60000));
    }
}

// ---- rm ----

resultado i_rm_uno(const peticion& p, const std::wstring& ruta) {
    rechaza_raiz(ruta);
    if (p.en_seco()) {
        return {};
    }
    const std::wstring de_trabajo = ruta_de_trabajo(ruta);
    if (p.tiene("if-possible")) {
        lumodir::borra_fichero_si_existe_sin_mensaje(de_trabajo);
    } else {
        lumodir::cdir::borra_fichero(de_trabajo);
    }
    // Once the entry is gone, the text as given may name another one ("a." is "a" to the system).
    return que_hay_en(de_trabajo) == clase_de_entrada::ninguna
               ? resultado()
               : con_ocupantes(di("'%1' is not deleted", ruta), ruta);
}

// What the arguments name: with --if-exists a pattern that finds nothing is no failure either.
rutas_dadas i_que_se_borra(const peticion& p) {
    if (!p.tiene("if-exists")) {
        return rutas_de(p, que_valen::ficheros);
    }
    std::vector<std::wstring> escritas = p.argumentos_o_entrada();
    std::erase_if(escritas, [](const std::wstring& ruta) {
        return es_patron(ruta) && expande(ruta, que_valen::ficheros).empty();
    });
    return rutas_expandidas(escritas, que_valen::ficheros);
}

void i_pregunta_por(const peticion& p, const rutas_dadas& dadas) {
    if (dadas.rutas.empty()) {
        return;
    }
    if (dadas.rutas.size() == 1) {
        confirma(p, di("Delete the file '%1'?", dadas.rutas[0]));
        return;
    }
    if (!p.si_a_todo && !p.en_seco()) {
        di_cuales(dadas.rutas);
    }
    unsigned long long bytes = 0;
    con_cada_ruta(dadas.rutas, [&](const std::wstring& ruta) {
        bytes += lumodir::get_tamanyo_fichero(ruta_de_trabajo(ruta)).value_or(0);
    });
    confirma(p, di("Delete %1 (%2)?", plural(dadas.rutas.size(), "file", "files"), tamanyo_legible(bytes)));
}

int i_rm(peticion& p) {
    i_ajusta_reintentos(p);
    rutas_dadas dadas = i_que_se_borra(p);
    // Nothing is asked or deleted if one of the paths is not a file that can be deleted.
    con_cada_ruta(dadas.rutas, [&](const std::wstring& ruta) {
        rechaza_raiz(ruta);
        const clase_de_entrada clase = que_hay_en(ruta);
        if (clase == clase_de_entrada::directorio) {
            throw fallo{di("'%1' is a directory; rmtree deletes trees", ruta)};
        }
        if (clase == clase_de_entrada::ninguna && !p.tiene("if-exists")) {
            throw fallo{di("'%1' does not exist", ruta)};
        }
    });
    std::erase_if(dadas.rutas,
                  [](const std::wstring& ruta) { return que_hay_en(ruta) != clase_de_entrada::fichero; });
    // "a.txt" and "./a.txt" are one file, and it goes once.
    std::set<std::wstring> ya;
    std::erase_if(dadas.rutas, [&](const std::wstring& ruta) {
        return !ya.insert(en_mayusculas(ruta_exacta(ruta_de_trabajo(ruta)))).second;
    });
    i_pregunta_por(p, dadas);
    return en_cada_una(p, dadas.rutas, {.hecho = "deleted", .se_haria = "would delete"}, i_rm_uno);
}

// ---- rmtree ----

// An entry by which the progress line sees how far a deletion is: a directory or, where a directory holds many files,
// one of every so many.
struct testigo {
    std::wstring del_sistema;
    unsigned long long ficheros = 0;  // for which it stands
    unsigned directorios = 0;
};

struct tarea {
    std::wstring directorio;
    // For the system: once the directory is gone, the text as given may name another one ("d." is "d" then).
    std::wstring del_sistema;
    recuento antes;
    std::vector<testigo> testigos;
    bool es_enlace = false;
    bool con_punto = false;  // holds directories whose names begin with a dot
    bool interrumpida = false;
    std::vector<std::wstring> no_borrados;  // files that --if-possible could not delete
};

// How much is gone, by the entries that stand for it. It asks about only some of them at a time, so that watching does
// not hold up the deletion.
class contador_de_borrado {
public:
    explicit contador_de_borrado(const tarea& t)
        : testigos_(t.testigos),
          total_(t.antes.directorios),
          todo_(t.antes.ficheros + t.antes.enlaces + t.antes.directorios),
          ido_(testigos_.size(), false) {}

    std::wstring dice(unsigned segundos) {
        const std::lock_guard turno(guarda_);
        i_mira();
        const double parte =
            todo_ == 0 ? 0 : static_cast<double>(directorios_ + ficheros_) / static_cast<double>(todo_);
        return di("deleting: %1 of %2 gone, with %3, %4 s", con_miles(directorios_),
                  plural(total_, "directory", "directories"), plural(ficheros_, "file", "files"),
                  std::to_wstring(segundos)) +
               lo_que_falta(parte, segundos);
    }
    // From the thread that tells of Ctrl-C, which has no time to look at everything.
    std::wstring despide() {
        constexpr int miradas = 25;
        const std::lock_guard turno(guarda_);
        for (int i = 0; i < miradas; ++i) {
            i_mira();
        }
        return di("stopped; at least %1 with %2 are gone, the rest may still be there",
                  plural(directorios_, "directory", "directories"), plural(ficheros_, "file", "files"));
    }

private:
    void i_mira() {
        constexpr size_t por_vez = 200;
        for (size_t i = 0; i < std::min(por_vez, testigos_.size());
             ++i, siguiente_ = (siguiente_ + 1) % testigos_.size()) {
            const testigo& este = testigos_[siguiente_];
            if (!ido_[siguiente_] &&
                GetFileAttributesW(este.del_sistema.c_str()) == INVALID_FILE_ATTRIBUTES) {
                ido_[siguiente_] = true;
                directorios_ += este.directorios;
                ficheros_ += este.ficheros;
            }
        }
    }

    std::mutex guarda_;
    const std::vector<testigo>& testigos_;
    unsigned long long total_, todo_;  // directories; entries of every kind
    std::vector<bool> ido_;
    size_t siguiente_ = 0;
    unsigned long long directorios_ = 0, ficheros_ = 0;
};

void i_con_contador(const tarea& t, const std::function<void()>& borra) {
    contador_de_borrado contador(t);
    const despedida al_acabar([&] { return contador.despide(); });
    con_progreso(borra, [&](unsigned segundos) { return contador.dice(segundos) + di(" (Ctrl-C stops)"); });
}

void i_borra_parando(tarea& t) {
    unsigned short continuar = CIERTO;
    const interruptor al_pulsar_control_c(&continuar);
    i_con_contador(
        t, [&] { lumodir::cdir::borra_directorio_y_subdirectorios_parando(t.del_sistema, continuar); });
    t.interrumpida = continuar != CIERTO;
}

void i_borra_si_se_puede(tarea& t) {
    i_con_contador(t, [&] {
        t.no_borrados =
            lumodir::cdir::borra_directorio_y_subdirectorios_si_se_puede(t.del_sistema).fallos.vector();
    });
}

void i_borra_en_pasadas(tarea& t) {
    i_con_contador(
        t, [&] { lumodir::cdir::borra_contenido_directorio_si_es_posible_reintentando(t.del_sistema); });
}

std::wstring i_en_palabras(const recuento& r) {
    const std::wstring ficheros = plural(r.ficheros, "file", "files");
    const std::wstring todo =
        r.enlaces == 0 ? ficheros : di("%1 and %2", ficheros, plural(r.enlaces, "link", "links"));
    return di("%1 in %2", todo, plural(r.directorios, "directory", "directories"));
}

constexpr size_t a_la_vista_caben = 10;  // lines about what is left

// What is left, by name, with who holds it: few names when it is little, else a number for each directory right
// below the base.
struct lo_que_queda {
    recuento cuenta;
    std::vector<std::wstring> ficheros;                    // the first of them
    std::map<std::wstring, unsigned long long> por_ramas;  // files below each directory right below the base
};

lo_que_queda i_mira_lo_que_queda(const std::wstring& directorio) {
    lo_que_queda resto;
    recorre_con_progreso(directorio, [&](const carpeta& c) {
        suma(resto.cuenta, c);
        const std::wstring rama_de_arriba = c.bajo.substr(0, c.bajo.find(L'\\'));
        for (const entrada& e : c.entradas) {
            if (e.es_carpeta()) {
                continue;
            }
            resto.por_ramas[rama_de_arriba] += 1;
            if (resto.ficheros.size() < a_la_vista_caben) {
                resto.ficheros.push_back(bajo_de(c.ruta, e.nombre));
            }
        }
    });
    return resto;
}

void i_di_ficheros(const lo_que_queda& resto) {
    for (const std::wstring& ruta : resto.ficheros) {
        const std::wstring quienes = quienes_tienen(ruta);
        const std::wstring nombre = a_la_vista(ruta);
        errores().escribe("  ").linea(quienes.empty() ? nombre : di("%1 (held by %2)", nombre, quienes));
    }
    const unsigned long long todos = resto.cuenta.ficheros + resto.cuenta.enlaces;
    if (todos > resto.ficheros.size()) {
        errores().escribe("  ").linea(di("and %1 more", con_miles(todos - resto.ficheros.size())));
    }
}

void i_di_ramas(const lo_que_queda& resto) {
    size_t dichas = 0;
    for (const auto& [directorio, ficheros] : resto.por_ramas) {
        if (dichas++ < a_la_vista_caben) {
            errores().linea(L"  " + a_la_vista(directorio) + L": " + plural(ficheros, "file", "files"));
        }
    }
    if (dichas > a_la_vista_caben) {
        errores().escribe("  ").linea(
            di("and %1", plural(dichas - a_la_vista_caben, "more directory", "more directories")));
    }
}

void i_di_que_queda(const tarea& t, const lo_que_queda& resto) {
    if (t.es_enlace) {
        di_queja(di("the link '%1' is not deleted", t.directorio));
        return;
    }
    di_queja(di(t.interrumpida ? frase("stopped; left in '%2': %1") : frase("not deleted; left in '%2': %1"),
                i_en_palabras(resto.cuenta), t.directorio));
    if (t.interrumpida) {
        i_di_ramas(resto);
    } else {
        i_di_ficheros(resto);
    }
    if (t.antes.ilegibles.empty()) {  // what could not be read before has been said
        di_ilegibles(resto.cuenta);
    }
}

json i_json(const peticion& p, const tarea& t, bool queda, const recuento& resto) {
    json fila = json::objeto()
                    .pon("path", t.directorio)
                    .pon("done", !queda)
                    .pon("link", t.es_enlace)
                    .pon("stopped", t.interrumpida)
                    .pon("files_before", t.antes.ficheros)
                    .pon("directories_before", t.antes.directorios)
                    .pon("links_before", t.antes.enlaces)
                    .pon("bytes_before", t.antes.bytes)
                    .pon("unreadable_before", t.antes.ilegibles)
                    .pon("files_left", resto.ficheros)
                    .pon("directories_left", resto.directorios)
                    .pon("links_left", resto.enlaces);
    if (p.en_seco()) {
        fila.pon("dry_run", true);
    }
    if (p.tiene("if-possible")) {
        fila.pon("failed", t.no_borrados);
    }
    return fila;
}

void i_di_hecho(const tarea& t, frase que, estilo como) {
    salida().escribe(di(que), como).escribe(" ").escribe(a_la_vista(t.directorio));
    salida().linea(t.es_enlace ? di(" (the link)") : L": " + i_en_palabras(t.antes));
}

int i_cuenta_lo_hecho(const peticion& p, const tarea& t) {
    const bool queda = que_hay_en(t.del_sistema) != clase_de_entrada::ninguna;
    const lo_que_queda resto = queda && !t.es_enlace ? i_mira_lo_que_queda(t.directorio) : lo_que_queda();
    return responde(
        p, i_json(p, t, queda, resto.cuenta),
        [&] {
            if (queda) {
                i_di_que_queda(t, resto);
            } else {
                i_di_hecho(t, "deleted", estilo::bueno);
            }
        },
        queda ? no : hecho);
}

int i_en_seco(const peticion& p, const tarea& t) {
    return responde(
        p, i_json(p, t, true, t.antes), [&] { i_di_hecho(t, "would delete", estilo::aviso); },
        t.antes.ilegibles.empty() ? hecho : no);
}

void i_mira_lo_que_hay(tarea& t) {
    recorre_con_progreso(t.directorio, [&](const carpeta& c) {
        constexpr unsigned long long cada = 200;  // files
        suma(t.antes, c);
        unsigned long long ficheros = 0;
        for (const entrada& e : c.entradas) {
            t.con_punto = t.con_punto || (e.es_directorio && e.nombre.starts_with(L'.'));
            ficheros += e.es_carpeta() ? 0 : 1;
            if (ficheros == cada) {
                t.testigos.push_back({.del_sistema = bajo_de(c.del_sistema, e.nombre), .ficheros = cada});
                ficheros = 0;
            }
        }
        t.testigos.push_back({.del_sistema = c.del_sistema, .ficheros = ficheros, .directorios = 1});
    });
    di_ilegibles(t.antes);
}

int i_rmtree(peticion& p) {
    tarea t;
    t.directorio = p.argumentos[0];
    if (p.tiene("if-possible") && p.tiene("retry")) {
        throw uso_incorrecto{di("give either --if-possible or --retry")};
    }
    i_ajusta_reintentos(p);
    rechaza_raiz(t.directorio);
    rechaza_patron(t.directorio);
    comprueba_existe(t.directorio);
    if (!es_su_nombre(t.directorio)) {
        throw fallo{di("'%1' does not exist", t.directorio)};
    }
    t.del_sistema = ruta_de_trabajo(t.directorio);
    if (que_hay_en(t.directorio) == clase_de_entrada::fichero) {
        throw fallo{di("'%1' is a file; rm deletes files", t.directorio)};
    }
    t.es_enlace = es_enlace(t.directorio);
    if (!t.es_enlace) {
        i_mira_lo_que_hay(t);
    }
    if (p.en_seco()) {
        return i_en_seco(p, t);
    }
    confirma(p, t.es_enlace ? di("Delete the link '%1'? What it points to stays.", t.directorio)
                            : di("Delete '%1' with %2?", t.directorio, i_en_palabras(t.antes)));
    // The deletion that asks about what is held leaves directories whose names begin with a dot; the one in passes
    // takes them.
    if (p.tiene("if-possible")) {
        i_borra_si_se_puede(t);
    } else if (p.tiene("retry") || t.con_punto) {
        i_borra_en_pasadas(t);
    } else {
        i_borra_parando(t);
    }
    return i_cuenta_lo_hecho(p, t);
}

constexpr opcion opciones_rm[] = {
    {.nombre = "if-exists", .ayuda = "a missing file is no failure"},
    {.nombre = "if-possible", .ayuda = "without a message of the library and without asking"},
    {.nombre = "retries", .valor = "N", .ayuda = "silent retries before you are asked (default 5)"},
    {.nombre = "wait", .valor = "MS", .ayuda = "milliseconds to wait before each retry (default 100)"},
    opcion_en_seco,
};
constexpr ejemplo ejemplos_rm[] = {
    {.linea = "rm report.txt", .que_hace = "asks, then deletes; also a read-only file"},
    {.linea = "rm *.tmp", .que_hace = "shows what matches, asks, then deletes"},
    {.linea = "rm a.tmp b.tmp --yes", .que_hace = "without asking"},
};

constexpr opcion opciones_rmtree[] = {
    {.nombre = "if-possible",
     .ayuda = "one silent pass over everything; says which files could not be deleted"},
    {.nombre = "retry",
     .ayuda = "up to 20 silent passes with pauses, for files that other programs hold for a moment"},
    {.nombre = "retries",
     .valor = "N",
     .ayuda = "silent retries with each entry before you are asked (default 5)"},
    {.nombre = "wait", .valor = "MS", .ayuda = "milliseconds to wait before each retry (default 100)"},
    opcion_en_seco,
};
constexpr ejemplo ejemplos_rmtree[] = {
    {.linea = R"(rmtree C:\data\old)", .que_hace = "counts, asks, deletes; Ctrl-C stops"},
    {.linea = R"(rmtree C:\data\old --dry-run)", .que_hace = "counts only"},
    {.linea = R"(rmtree C:\build\tmp --yes --retry)",
     .que_hace = "in a script, while a virus scanner holds some files"},
};

constexpr orden tabla_borrado[] = {
    {.nombre = "rm",
     .argumentos = "FILE...",
     .resumen = "delete files; asks first",
     .detalle = "Read-only files are deleted too. A file that another program holds is tried "
                "again for a moment; on a terminal you are then told who holds it and asked. Nothing is "
                "deleted when "
                "one of the paths is missing or a directory. A pattern (*.tmp) means the files that it "
                "matches, which are shown before you are asked.",
     .minimo = 1,
     .maximo = cuantos_sean,
     .opciones = opciones_rm,
     .ejemplos = ejemplos_rm,
     .ejecuta = i_rm},
    {.nombre = "rmtree",
     .argumentos = "DIR [--if-possible | --retry]",
     .resumen = "delete a directory with everything in it; asks first",
     .detalle = "Everything goes, directories whose names begin with a dot included. A link is deleted, "
                "never what it "
                "points to. Drive roots are refused. Ctrl-C stops and says what is left. When the tree holds "
                "directories whose names begin with a dot, it is deleted in passes as with --retry.",
     .minimo = 1,
     .maximo = 1,
     .opciones = opciones_rmtree,
     .ejemplos = ejemplos_rmtree,
     .ejecuta = i_rmtree},
};

}  // namespace

const std::span<const orden> ordenes_borrado = tabla_borrado;

}  // namespace mando
