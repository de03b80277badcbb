// Directories as they are, for what the command counts, shows and searches: one level at a time, or a tree.
//
// Promises: directories whose names begin with a dot and names that Windows would change (a final blank or dot, device
// names) are read like others; a link is an entry and is never entered; a directory that cannot be read is not taken for
// an empty one.
// Cannot promise: one moment. A tree that others change meanwhile is seen in parts, each as it was when it was read.
// Checked by tests/cli.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace mando {

struct entrada {
    std::wstring nombre;
    unsigned long atributos = 0;
    unsigned long long bytes = 0;
    long long modificada = 0, creada = 0;  // seconds since 1970, UTC
    bool es_directorio = false;            // a link to one too
    bool es_enlace = false;                // a junction or a symbolic link
    bool se_entra = true;                  // may be set to false by whoever is shown the directory above

    bool es_carpeta() const { return es_directorio && !es_enlace; }
};

struct carpeta {
    std::wstring ruta;         // as the person wrote the base, and what is below it
    std::wstring bajo;         // what is below the base; "." for the base itself
    std::wstring del_sistema;  // the same directory, in the form that takes every name
    size_t nivel = 0;          // 0 for the base
    double parte = 1;          // share of the whole walk that lies in and below this directory: a guess
    bool leida = false;
    unsigned long codigo = 0;            // of the system, when it could not be read
    std::vector<entrada> entradas = {};  // sorted by name, without "." and ".."
};

// The full path in the form that takes every name as the directory holds it (\\?\...).
std::wstring ruta_exacta(const std::wstring& ruta);
// The path to hand to the library: as it was given, unless Windows would not find by it what it names (a final blank or
// dot, a device name), or a directory above that; then the exact one.
std::wstring ruta_de_trabajo(const std::wstring& ruta);

// Whether what is found by the path bears the name that was written: Windows takes "d." for "d" where there is no "d.".
bool es_su_nombre(const std::wstring& ruta);

std::wstring bajo_de(const std::wstring& directorio, const std::wstring& nombre);

carpeta lee_carpeta(const std::wstring& ruta);
// The system's code; 0 for a directory that can be read.
unsigned long por_que_no_se_lee(const std::wstring& ruta);

// Shows every directory of a tree to `visita`, a directory before those below it.
void recorre_arbol(const std::wstring& base, const std::function<void(carpeta&)>& visita);

// What a tree holds, the base itself counted among the directories.
struct recuento {
    unsigned long long ficheros = 0, directorios = 0, enlaces = 0, bytes = 0;
    std::vector<std::wstring> ilegibles;
    unsigned long codigo_ilegible = 0;  // of the first of them
};
void suma(recuento& total, const carpeta& c);

// Entries that walks have read so far; for the progress line.
unsigned long long entradas_leidas();
// How much of the current walk is done, from 0 to 1, estimated from what it has seen.
double parte_recorrida();

// The entry by which its directory holds what a path names; nothing when that is missing, or a root.
std::optional<entrada> entrada_de(const std::wstring& ruta);

// Sorts names as the listings do, letter case aside.
int compara_nombres(const std::wstring& a, const std::wstring& b);

// Whether a name passes a pattern with * and ?, letter case aside. "*.*" passes every name, as people expect.
bool cumple_patron(const std::wstring& nombre, const std::wstring& patron);
bool cumple_patron_exacto(const std::wstring& nombre, const std::wstring& patron);  // letter case counts
bool es_patron(const std::wstring& ruta);

}  // namespace mando
