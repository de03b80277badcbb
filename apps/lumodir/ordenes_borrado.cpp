// Deletion: rm, rmtree.
#include <map>

#include "cdir_ficheros.h"
#include "cdir_rutas.h"
#include "companions/buclrein.h"
#include "consola.hpp"
#include "directorios.hpp"
#include "ficheros.hpp"
#include "lumodir.h"
#include "ordenes.hpp"
#include "textos.hpp"
#include "trabajo.hpp"

namespace mando {

namespace {

// How patient a single deletion is.
void i_ajusta_reintentos(const peticion& p) {
    if (p.tiene("retries") || p.tiene("wait")) {
        buclrein_establece_politica(p.numero("retries", 5, 1000), p.numero("wait", 100, 60000));
    }
}

// ---- rm ----

std::wstring i_rm_uno(const peticion& p, const std::wstring& ruta) {
    rechaza_raiz(ruta);
    if (p.tiene("if-possible")) {
        unsigned short hay_error = FALSO;
        lumodir_borra_fichero_si_existe_UNICODE(ruta.c_str(), &hay_error);
        return hay_error == CIERTO ? di("'%1' is not deleted", ruta) : std::wstring();
    }
    return cdir_borra_fichero_UNICODE(ruta.c_str()) == CIERTO ? std::wstring()
                                                              : di("'%1' is not deleted", ruta);
}

int i_rm(peticion& p) {
    i_ajusta_reintentos(p);
    const std::vector<std::wstring> rutas = p.argumentos_o_entrada();
    // Nothing is deleted, nor asked, when one of the paths is no file that could be.
    for (const std::wstring& ruta : rutas) {
        rechaza_raiz(ruta);
        if (ruta.find_first_of(L"*?", ruta.starts_with(L"\\\\?\\") ? 4 : 0) != ruta.npos) {
            throw fallo{di("'%1' is a pattern; rm takes names (lumodir ls --filter shows them)", ruta)};
        }
        const clase_de_entrada clase = que_hay_en(ruta);
        if (clase == clase_de_entrada::directorio) {
            throw fallo{di("'%1' is a directory; rmtree deletes trees", ruta)};
        }
        if (clase == clase_de_entrada::ninguna && !p.tiene("if-exists")) {
            throw fallo{di("'%1' does not exist", ruta)};
        }
    }
    std::vector<std::wstring> presentes;
    for (const std::wstring& ruta : rutas) {
        if (que_hay_en(ruta) == clase_de_entrada::fichero) {
            presentes.push_back(ruta);
        }
    }
    if (!presentes.empty()) {
        confirma(p, presentes.size() == 1 ? di("Delete the file '%1'?", presentes[0])
                                          : di("Delete %1?", plural(presentes.size(), "file", "files")));
    }
    return en_cada_una(p, presentes, "deleted", i_rm_uno);
}

// ---- rmtree ----

struct tarea {
    std::wstring directorio;
    std::vector<rama> arbol;  // as it was before
    bool es_enlace = false;
    bool interrumpida = false;
    std::vector<std::wstring> no_borrados;  // files that --if-possible could not delete
};

// How many files of directories that are gone there were. It asks about some directories a time only: the
// deletion is not to be held up by the watching.
class contador_de_borrado {
public:
    explicit contador_de_borrado(const std::vector<rama>& arbol) : arbol_(arbol), ido_(arbol.size(), false) {}

    std::wstring dice(unsigned segundos) {
        constexpr size_t por_vez = 200;
        for (size_t i = 0; i < std::min(por_vez, arbol_.size());
             ++i, siguiente_ = (siguiente_ + 1) % arbol_.size()) {
            const rama& r = arbol_[siguiente_];
            if (!ido_[siguiente_] && cdir_existe_directorio_UNICODE(r.ruta.c_str()) != CIERTO) {
                ido_[siguiente_] = true;
                directorios_ += 1;
                ficheros_ += r.ficheros.size();
            }
        }
        return di("deleting: %1 of %2 gone, with %3, %4 s", con_miles(directorios_),
                  plural(arbol_.size(), "directory", "directories"), plural(ficheros_, "file", "files"),
                  std::to_wstring(segundos));
    }

private:
    const std::vector<rama>& arbol_;
    std::vector<bool> ido_;
    size_t siguiente_ = 0, directorios_ = 0, ficheros_ = 0;
};

void i_borra_parando(tarea& t) {
    unsigned short continuar = CIERTO;
    const interruptor al_pulsar_control_c(continuar);
    contador_de_borrado contador(t.arbol);
    con_progreso([&] { cdir_borra_directorio_y_subdirectorios_parando(t.directorio.c_str(), &continuar); },
                 [&](unsigned segundos) { return contador.dice(segundos) + di(" (Ctrl-C stops)"); });
    t.interrumpida = continuar != CIERTO;
}

void i_borra_si_se_puede(tarea& t) {
    ArrCADENA_u* fallos = arr_CreaCADENA_u(0);
    contador_de_borrado contador(t.arbol);
    con_progreso(
        [&] { cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE(t.directorio.c_str(), fallos); },
        [&](unsigned segundos) { return contador.dice(segundos); });
    t.no_borrados = toma(fallos);
}

void i_borra_en_pasadas(tarea& t) {
    contador_de_borrado contador(t.arbol);
    con_progreso([&] { cdir_borra_contenido_directorio_si_es_posible_reintentando_u(t.directorio.c_str()); },
                 [&](unsigned segundos) { return contador.dice(segundos); });
}

std::wstring i_en_palabras(const std::vector<rama>& arbol) {
    return di("%1 in %2", plural(cuenta_ficheros(arbol), "file", "files"),
              plural(arbol.size(), "directory", "directories"));
}

constexpr size_t a_la_vista = 10;  // lines about what is left

void i_di_ficheros(const std::vector<rama>& resto) {
    size_t dichos = 0;
    for (const rama& r : resto) {
        for (const std::wstring& nombre : r.ficheros) {
            if (dichos++ < a_la_vista) {
                errores().escribe("  ").linea(
                    toma(cdir_concatena_directorios_UNICODE(r.ruta.c_str(), nombre.c_str())));
            }
        }
    }
    if (dichos > a_la_vista) {
        errores().escribe("  ").linea(di("and %1 more", con_miles(dichos - a_la_vista)));
    }
}

// The files left in each directory right below the base: of thousands nobody wants the names.
void i_di_directorios(const std::vector<rama>& resto, const std::wstring& base) {
    std::map<std::wstring, size_t> cuentas;
    for (const rama& r : resto) {
        const std::wstring debajo = bajo_la_base(r.ruta, base);
        cuentas[debajo.substr(0, debajo.find(L'\\'))] += r.ficheros.size();
    }
    size_t dichos = 0;
    for (const auto& [directorio, ficheros] : cuentas) {
        if (ficheros > 0 && dichos++ < a_la_vista) {
            errores().linea(L"  " + directorio + L": " + plural(ficheros, "file", "files"));
        }
    }
    if (dichos > a_la_vista) {
        errores().escribe("  ").linea(
            di("and %1", plural(dichos - a_la_vista, "directory more", "directories more")));
    }
}

void i_di_que_queda(const tarea& t, const std::vector<rama>& resto) {
    if (t.es_enlace) {
        errores().escribe("lumodir: ", estilo::malo).linea(di("the link '%1' is not deleted", t.directorio));
        return;
    }
    errores()
        .escribe("lumodir: ", estilo::malo)
        .linea(di(t.interrumpida ? frase("stopped; %1 left in '%2'") : frase("not deleted; %1 left in '%2'"),
                  i_en_palabras(resto), t.directorio));
    if (t.interrumpida && !resto.empty()) {
        i_di_directorios(resto, resto.front().ruta);
    } else if (cuenta_ficheros(resto) > 0) {
        i_di_ficheros(resto);
    } else {
        errores().escribe("  ").linea(
            di("(directories that begin with a point stay; --if-possible and --retry delete them too)"));
    }
}

int i_cuenta_lo_hecho(const peticion& p, const tarea& t) {
    const bool queda = que_hay_en(t.directorio) != clase_de_entrada::ninguna;
    const std::vector<rama> resto =
        queda && !t.es_enlace ? recorre(t.directorio, nullptr) : std::vector<rama>();
    if (p.en_json) {
        json fila = json::objeto()
                        .pon("path", t.directorio)
                        .pon("done", !queda)
                        .pon("stopped", t.interrumpida)
                        .pon("files_before", cuenta_ficheros(t.arbol))
                        .pon("files_left", cuenta_ficheros(resto))
                        .pon("directories_left", resto.size());
        if (p.tiene("if-possible")) {
            fila.pon("failed", t.no_borrados);
        }
        escribe_json(fila);
    } else if (queda) {
        i_di_que_queda(t, resto);
    } else {
        salida().escribe(di("deleted"), estilo::bueno).escribe(" ").escribe(t.directorio);
        salida().linea(t.es_enlace ? di(" (the link)") : L": " + i_en_palabras(t.arbol));
    }
    return queda ? no : hecho;
}

int i_rmtree(peticion& p) {
    tarea t;
    t.directorio = p.argumentos[0];
    if (p.tiene("if-possible") && p.tiene("retry")) {
        throw uso_incorrecto{di("give either --if-possible or --retry")};
    }
    i_ajusta_reintentos(p);
    rechaza_raiz(t.directorio);
    comprueba_existe(t.directorio);
    if (que_hay_en(t.directorio) == clase_de_entrada::fichero) {
        throw fallo{di("'%1' is a file; rm deletes files", t.directorio)};
    }
    t.es_enlace = es_enlace(t.directorio);
    if (!t.es_enlace) {
        t.arbol = recorre(t.directorio, nullptr);
    }
    confirma(p, t.es_enlace ? di("Delete the link '%1'? What it points to stays.", t.directorio)
                            : di("Delete '%1' with %2?", t.directorio, i_en_palabras(t.arbol)));
    p.tiene("if-possible") ? i_borra_si_se_puede(t)
    : p.tiene("retry")     ? i_borra_en_pasadas(t)
                           : i_borra_parando(t);
    return i_cuenta_lo_hecho(p, t);
}

constexpr opcion opciones_rm[] = {
    {"if-exists", "", "a missing file is no failure"},
    {"if-possible", "", "without a message of the library and without asking"},
    {"retries", "N", "silent attempts before a message (default 5)"},
    {"wait", "MS", "milliseconds before each of them (default 100)"},
};
constexpr ejemplo ejemplos_rm[] = {{"rm report.txt", "asks, then deletes; also a read-only file"},
                                   {"rm a.tmp b.tmp --yes", "without asking"}};

constexpr opcion opciones_rmtree[] = {
    {"if-possible", "", "one silent pass over everything; says which files could not be deleted"},
    {"retry", "", "up to 20 silent passes with pauses, for files that others hold for a moment"},
    {"retries", "N", "silent attempts with each entry before a message (default 5)"},
    {"wait", "MS", "milliseconds before each of them (default 100)"},
};
constexpr ejemplo ejemplos_rmtree[] = {
    {R"(rmtree C:\data\old)", "counts, asks, deletes; Ctrl-C stops"},
    {R"(rmtree C:\build\tmp --yes --retry)", "in a script, while a virus scanner holds some files"},
};

constexpr orden ordenes[] = {
    {"rm", "FILE...", "delete files; asks first",
     "Read-only files are deleted too. A file that another program holds is tried\n"
     "again for a moment; on a terminal you are then asked. Nothing is deleted when\n"
     "one of the paths is missing or a directory.",
     1, cuantos_sean, opciones_rm, ejemplos_rm, i_rm},
    {"rmtree", "DIR [--if-possible | --retry]", "delete a directory with everything in it; asks first",
     "A link to a directory is deleted, never what it points to. Drive roots are\n"
     "refused. Ctrl-C stops before the next entry and says what is left.\n"
     "Without an option directories whose name begins with a point stay, and with\n"
     "them the directories above.",
     1, 1, opciones_rmtree, ejemplos_rmtree, i_rmtree},
};

}  // namespace

const std::span<const orden> ordenes_borrado = ordenes;

}  // namespace mando
