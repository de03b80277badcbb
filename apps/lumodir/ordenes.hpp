// The table of subcommands: name, arguments, options, help and function of each.
//
// What is said about a subcommand is said once, in its row: the reading of the command line, the help and the complaints
// about wrong usage all work from these rows.
#pragma once

#include <map>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "frases.hpp"
#include "json.hpp"

namespace mando {

// Exit codes, the same for every subcommand.
enum codigo { hecho = 0, no = 1, mal_uso = 2 };

struct peticion;

struct opcion {
    std::string_view nombre;      // without its dashes
    std::string_view valor = {};  // what it takes, as the help names it; empty for a switch
    frase ayuda;
    char letra = '\0';    // a short form, as in -t
    bool varias = false;  // it may be given several times: its values come with '|' between them
};

struct ejemplo {
    std::string_view linea;  // after "lumodir "
    frase que_hace;
};

struct orden {
    std::string_view nombre;  // one word, or two ("reg get")
    std::string_view argumentos = {};
    frase resumen;
    frase detalle = {};             // of any length: the help breaks it
    size_t minimo = 0, maximo = 0;  // arguments
    std::span<const opcion> opciones = {};
    std::span<const ejemplo> ejemplos;
    int (*ejecuta)(peticion&);
};

struct grupo {
    frase titulo;
    std::span<const orden> ordenes;
};

constexpr size_t cuantos_sean = static_cast<size_t>(-1);

std::span<const grupo> grupos();
const orden* busca_orden(std::wstring_view nombre);

// One invocation.
struct peticion {
    const orden* cual = nullptr;
    std::vector<std::wstring> argumentos;
    std::map<std::string_view, std::wstring> opciones;
    bool en_json = false;
    bool si_a_todo = false;

    bool tiene(std::string_view nombre) const { return opciones.contains(nombre); }
    // Whether the command only shows what it would do.
    bool en_seco() const { return tiene("dry-run"); }
    // The value of an option, NULL when it was not given.
    const wchar_t* valor(std::string_view nombre) const;
    unsigned long numero(std::string_view nombre, unsigned long si_falta, unsigned long maximo) const;
    // The arguments, where a single "-" stands for the lines of standard input.
    std::vector<std::wstring> argumentos_o_entrada() const;
    // The directory argument, the current directory when there is none.
    std::wstring directorio() const { return argumentos.empty() ? L"." : argumentos[0]; }
};

// The row of every subcommand that changes something.
inline constexpr opcion opcion_en_seco = {.nombre = "dry-run",
                                          .ayuda = "show what would be done, and do nothing"};

unsigned long a_numero(std::wstring_view texto, std::wstring_view que_es, unsigned long maximo);

// What ends a subcommand early: a wrong command line (exit code 2), or something that is not so or cannot be done (exit
// code 1; with --json an object with the text in "error").
struct uso_incorrecto {
    std::wstring texto;
};
struct fallo {
    std::wstring texto;
};

// The groups, one per file.
extern const std::span<const orden> ordenes_rutas;
extern const std::span<const orden> ordenes_listados;
extern const std::span<const orden> ordenes_busqueda;
extern const std::span<const orden> ordenes_ficheros;
extern const std::span<const orden> ordenes_borrado;
extern const std::span<const orden> ordenes_sistema;
extern const std::span<const orden> ordenes_registro;
extern const std::span<const orden> ordenes_interprete;

}  // namespace mando
