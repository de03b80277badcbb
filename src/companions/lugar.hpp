// Where in the library something happened: the source file and line behind every allocation, release and
// internal-error report. Hosts see the pair (module tag, line); the tag is looked up only when a report is
// made, so passing a place along costs two registers.
//
// Promises: a place taken with `lugar::aqui()` in a default argument is the caller's; every file of the library has a
// tag, headers too: that of the family whose name its own begins with, else the library's.
// Cannot promise: a useful line for code inlined from headers that take no place of their own.
// Checked by tests/companions/lugar_test.cpp.
#pragma once

#include <string_view>

namespace interno {

struct familia {
    std::string_view nombre;  // that a file's name begins with, whole or up to a `_`
    const char* etiqueta;     // the tag that hosts see
};

inline constexpr const char* etiqueta_de_las_demas = "lumodir (LUMODIR.DLL)";
inline constexpr familia familias[] = {
    {"dirwin", "dirwin (LUMODIR.DLL)"},     {"discos", "discos (LUMODIR.DLL)"},
    {"fichsdir", "fichsdir (LUMODIR.DLL)"}, {"info", "discos (LUMODIR.DLL)"},
    {"lumoreg", "lumoreg (LUMODIR.DLL)"},   {"nomsfich", "nomsfich (LUMODIR.DLL)"},
    {"taskproc", "taskproc (LUMODIR.DLL)"}, {"timefich", "timefich (LUMODIR.DLL)"},
};

// Tag of a source file named by any path to it.
constexpr const char* etiqueta_de_fichero(std::string_view fichero) noexcept {
    fichero.remove_prefix(fichero.find_last_of("/\\") + 1);  // none found: nothing
    const std::string_view nombre = fichero.substr(0, fichero.find_first_of("._"));
    for (const familia& fila : familias) {
        if (fila.nombre == nombre) {
            return fila.etiqueta;
        }
    }
    return etiqueta_de_las_demas;
}

struct lugar {
    const char* fichero;  // source file of the library, or the tag that a host passed
    unsigned long linea;
    bool es_del_anfitrion = false;

    static constexpr lugar aqui(const char* fichero = __builtin_FILE(),
                                unsigned long linea = __builtin_LINE()) noexcept {
        return {fichero, linea};
    }
    // A host passes its own tag with its own line. It is never looked up: "programa.exe" is no file of ours.
    static constexpr lugar del_anfitrion(const char* etiqueta, unsigned long linea) noexcept {
        return {etiqueta, linea, true};
    }

    const char* etiqueta() const noexcept {
        if (fichero == nullptr) {
            return "";
        }
        return es_del_anfitrion ? fichero : etiqueta_de_fichero(fichero);
    }
};

}  // namespace interno
