// Where in the library something happened: the source file and line behind every allocation, release and
// internal-error report. Hosts see the pair (module tag, line); the tag is looked up only when a report is
// made, so passing a place along costs two registers.
//
// Promises: a place taken with `lugar::aqui()` in a default argument is the caller's; a source file without a
// row in `modulos` does not compile (the build hands every file its own stem as LUMODIR_FICHERO).
// Cannot promise: a useful line for code inlined from headers that take no place of their own.
// Checked by tests/companions/lugar_test.cpp.
#pragma once

#include <cstddef>

namespace lumodir {

struct modulo {
    const char* fichero;   // stem of the source file
    const char* etiqueta;  // tag that hosts see
};

inline constexpr const char* etiqueta_lumodir = "lumodir (LUMODIR.DLL)";
inline constexpr const char* etiqueta_lumoreg = "lumoreg (LUMODIR.DLL)";
inline constexpr const char* etiqueta_dirwin = "dirwin (LUMODIR.DLL)";
inline constexpr const char* etiqueta_discos = "discos (LUMODIR.DLL)";
inline constexpr const char* etiqueta_fichsdir = "fichsdir (LUMODIR.DLL)";
inline constexpr const char* etiqueta_nomsfich = "nomsfich (LUMODIR.DLL)";
inline constexpr const char* etiqueta_taskproc = "taskproc (LUMODIR.DLL)";
inline constexpr const char* etiqueta_timefich = "timefich (LUMODIR.DLL)";

// The one list of source files and their tags.
inline constexpr modulo modulos[] = {
    // companions
    {"acadorde", etiqueta_lumodir},
    {"anfitrion_win32", etiqueta_lumodir},
    {"apunorde", etiqueta_lumodir},
    {"arr", etiqueta_lumodir},
    {"buclrein", etiqueta_lumodir},
    {"caracteres", etiqueta_lumodir},
    {"directorio_abierto", etiqueta_lumodir},
    {"error_interno", etiqueta_lumodir},
    {"lmaviso", etiqueta_lumodir},
    {"lmlongpath", etiqueta_lumodir},
    {"lumospy", etiqueta_lumodir},
    {"msglocal", etiqueta_lumodir},
    {"plataforma_win32", etiqueta_lumodir},
    {"reloj", etiqueta_lumodir},
    {"sistema", etiqueta_lumodir},
    {"texto", etiqueta_lumodir},
    {"textos_exportados", etiqueta_lumodir},
    {"unicode", etiqueta_lumodir},
    // frame
    {"avisos", etiqueta_lumodir},
    {"catalogo", etiqueta_lumodir},
    // paths
    {"componentes", etiqueta_lumodir},
    {"nombres_validos", etiqueta_lumodir},
    {"nomsfich", etiqueta_nomsfich},
    {"path_correcto", etiqueta_lumodir},
    {"ruta_abreviada", etiqueta_lumodir},
    {"rutas", etiqueta_lumodir},
    {"split_makepath", etiqueta_lumodir},
    // listings
    {"dirwin", etiqueta_dirwin},
    {"fichsdir", etiqueta_fichsdir},
    {"fichsdir_registros", etiqueta_fichsdir},
    {"filtro_extension", etiqueta_lumodir},
    {"listas_ficheros", etiqueta_lumodir},
    {"listas_arbol", etiqueta_lumodir},
    {"recorrido", etiqueta_lumodir},
    // files
    {"azar", etiqueta_lumodir},
    {"borrado", etiqueta_lumodir},
    {"borrado_arbol", etiqueta_lumodir},
    {"borrado_filtro", etiqueta_lumodir},
    {"cambia_extension", etiqueta_lumodir},
    {"crea_directorios", etiqueta_lumodir},
    {"directorios_vacios", etiqueta_lumodir},
    {"espera_directorio", etiqueta_lumodir},
    {"existencia", etiqueta_lumodir},
    {"nombre_largo", etiqueta_lumodir},
    {"permisos_escritura", etiqueta_lumodir},
    {"programa", etiqueta_lumodir},
    {"recorrido_borrado", etiqueta_lumodir},
    {"renombra_protege", etiqueta_lumodir},
    {"temporales", etiqueta_lumodir},
    {"timefich", etiqueta_timefich},
    // system
    {"discos", etiqueta_discos},
    {"info", etiqueta_discos},
    {"lumoreg", etiqueta_lumoreg},
    {"lumoreg_claves", etiqueta_lumoreg},
    {"lumoreg_valores", etiqueta_lumoreg},
    {"tabla_registro", etiqueta_lumoreg},
    {"taskproc", etiqueta_taskproc},
    {"unidades", etiqueta_lumodir},
    {"wine", etiqueta_lumodir},
};

// Tag of a source file named by its stem or by any path to it; NULL when the list has no row for it.
constexpr const char* etiqueta_de_fichero(const char* fichero) noexcept {
    const char* principio = fichero;
    for (const char* p = fichero; *p != '\0'; ++p) {
        if (*p == '/' || *p == '\\') {
            principio = p + 1;
        }
    }
    for (const modulo& fila : modulos) {
        const char* a = principio;
        const char* b = fila.fichero;
        while (*b != '\0' && *a == *b) {
            ++a;
            ++b;
        }
        if (*b == '\0' && (*a == '\0' || *a == '.')) {
            return fila.etiqueta;
        }
    }
    return nullptr;
}

#ifdef LUMODIR_FICHERO
static_assert(etiqueta_de_fichero(LUMODIR_FICHERO) != nullptr,
              "this source file has no row in the table `modulos`: give it its module tag");
#endif

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
        const char* propia = es_del_anfitrion ? nullptr : etiqueta_de_fichero(fichero);
        return propia != nullptr ? propia : fichero;
    }
};

}  // namespace lumodir
