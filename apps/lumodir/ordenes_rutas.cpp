// Paths as text: check, split, join, name, relative, absolute, shorten, repair.
#include <algorithm>

#include "anfitrion.hpp"
#include "cdir_rutas.h"
#include "consola.hpp"
#include "lumodir.h"
#include "ordenes.hpp"
#include "tabla.hpp"
#include "textos.hpp"

namespace mando {

namespace {

struct juicio {
    bool valida;
    std::wstring mensaje;
};

juicio i_juzga(const std::wstring& ruta) {
    wchar_t* mensaje = nullptr;
    const bool valida = cdir_es_path_valido_UNICODE(ruta.c_str(), &mensaje) == CIERTO;
    return {valida, toma(mensaje)};
}

// Both words in their column, and two blanks.
std::wstring i_juicio_en_palabras(frase cual) {
    constexpr size_t separacion = 2;
    return a_la_izquierda(di(cual),
                          std::max(columnas_de(di("valid")), columnas_de(di("invalid"))) + separacion);
}

int i_check(peticion& p) {
    const std::vector<std::wstring> rutas = p.argumentos_o_entrada();
    const bool solo_malas = p.tiene("quiet");
    json lista = json::lista();
    size_t malas = 0;
    for (const std::wstring& ruta : rutas) {
        const juicio j = i_juzga(ruta);
        malas += j.valida ? 0 : 1;
        if (p.en_json) {
            json fila = json::objeto().pon("path", ruta).pon("valid", j.valida);
            j.valida ? fila.pon("absolute", lumodir_ruta_es_absoluta(ruta.c_str()) == CIERTO)
                     : fila.pon("message", j.mensaje);
            lista.agrega(std::move(fila));
        } else if (j.valida && !solo_malas) {
            salida().escribe(i_juicio_en_palabras("valid"), estilo::bueno).linea(a_la_vista(ruta));
        } else if (!j.valida) {
            salida()
                .escribe(i_juicio_en_palabras("invalid"), estilo::malo)
                .escribe(ruta.empty() ? di("(empty)") : a_la_vista(ruta))
                .escribe(": ")
                .linea(std::wstring_view(j.mensaje));
        }
    }
    if (p.en_json) {
        escribe_json(lista);
    } else if (rutas.size() > 1) {
        salida().linea(di("%1: %2 valid, %3 invalid", plural(rutas.size(), "path", "paths"),
                          con_miles(rutas.size() - malas), con_miles(malas)),
                       malas > 0 ? estilo::aviso : estilo::normal);
    }
    return malas > 0 ? no : hecho;
}

struct piezas {
    std::wstring unidad, directorio, nombre_base, extension;
};

piezas i_corta(const std::wstring& ruta, bool con_comodines) {
    wchar_t *unidad = nullptr, *directorio = nullptr, *nombre_base = nullptr, *extension = nullptr;
    const auto corta =
        con_comodines ? cdir_splitpath_con_comodines_UNICODE : cdir_splitpath_con_comprobacion_UNICODE;
    corta(ruta.c_str(), &unidad, &directorio, &nombre_base, &extension);
    return {toma(unidad), toma(directorio), toma(nombre_base), toma(extension)};
}

int i_split(peticion& p) {
    const std::vector<std::wstring> rutas = p.argumentos_o_entrada();
    json lista = json::lista();
    tabla t({{"drive"}, {"directory", false, true, corte::al_final}, {"base name"}, {"extension"}});
    for (const std::wstring& ruta : rutas) {
        const piezas z = i_corta(ruta, p.tiene("wildcards"));
        if (p.en_json) {
            lista.agrega(json::objeto()
                             .pon("path", ruta)
                             .pon("drive", z.unidad)
                             .pon("directory", z.directorio)
                             .pon("base", z.nombre_base)
                             .pon("extension", z.extension));
        } else if (rutas.size() > 1) {
            t.fila({z.unidad, z.directorio, z.nombre_base, z.extension});
        } else {
            pinta_ficha(salida(), {{"drive", z.unidad},
                                   {"directory", z.directorio},
                                   {"base name", z.nombre_base},
                                   {"extension", z.extension}});
        }
    }
    if (p.en_json) {
        escribe_json(lista);
    } else if (!t.vacia()) {
        t.pinta(salida());
    }
    // An invalid path is split all the same; the library has said so.
    return hubo_quejas() ? no : hecho;
}

// One result of a text operation.
int i_responde(const peticion& p, const std::wstring& resultado) {
    if (p.en_json) {
        escribe_json(json::objeto().pon("path", resultado));
    } else {
        salida().linea(std::wstring_view(resultado));
    }
    return hubo_quejas() ? no : hecho;
}

int i_join(peticion& p) {
    const bool por_piezas = !p.opciones.empty();
    if (por_piezas && !p.argumentos.empty()) {
        throw uso_incorrecto{di("give either parts to join or pieces to compose, not both")};
    }
    if (por_piezas && p.tiene("ext") && !p.tiene("base")) {
        throw uso_incorrecto{di("an extension needs a base name (--base)")};
    }
    if (por_piezas) {
        const int codigo = i_responde(p, toma(cdir_makepath_UNICODE(p.valor("drive"), p.valor("dir"),
                                                                    p.valor("base"), p.valor("ext"))));
        return codigo;
    }
    if (p.argumentos.size() < 2) {
        throw uso_incorrecto{di("joining takes two parts or more")};
    }
    std::wstring ruta = p.argumentos[0];
    for (size_t i = 1; i < p.argumentos.size(); ++i) {
        ruta = toma(cdir_concatena_directorios_UNICODE(ruta.c_str(), p.argumentos[i].c_str()));
    }
    return i_responde(p, ruta);
}

std::wstring i_directorio(const std::wstring& ruta) {
    return ruta.empty() ? ruta : toma(cdir_ruta_acceso_directorio_fichero_UNICODE(ruta.c_str()));
}

// A directory, whose path ends with a separator, has no extension to ask for.
std::wstring i_extension(const std::wstring& ruta) {
    const std::wstring limpia = sin_blancos(ruta);
    return limpia.empty() || limpia.back() == L'\\' ? std::wstring()
                                                    : toma(cdir_extension_fichero_UNICODE(ruta.c_str()));
}

std::wstring i_pieza_pedida(const peticion& p, const std::wstring& ruta) {
    const wchar_t* r = ruta.c_str();
    if (p.tiene("with-ext")) {
        return toma(cdir_nombre_fichero_con_ext_UNICODE(r, p.valor("with-ext")));
    }
    return p.tiene("base")   ? toma(cdir_nombre_base_fichero_UNICODE(r))
           : p.tiene("ext")  ? i_extension(ruta)
           : p.tiene("dir")  ? i_directorio(ruta)
           : p.tiene("stem") ? toma(cdir_ruta_y_nombre_fichero_sin_extension_UNICODE(r))
                             : toma(cdir_nombre_y_ext_fichero_UNICODE(r));
}

int i_name(peticion& p) {
    if (p.opciones.size() > 1) {
        throw uso_incorrecto{di("ask for one piece of the path at a time (or for all of them with --json)")};
    }
    json lista = json::lista();
    bool todas_validas = true;
    for (const std::wstring& ruta : p.argumentos_o_entrada()) {
        const juicio j = i_juzga(ruta);
        if (!j.valida) {
            todas_validas = false;
            errores()
                .escribe("lumodir: ", estilo::aviso)
                .escribe(ruta)
                .escribe(": ")
                .linea(std::wstring_view(j.mensaje));
        }
        if (!p.en_json) {
            salida().linea(std::wstring_view(i_pieza_pedida(p, ruta)));
            continue;
        }
        const wchar_t* r = ruta.c_str();
        json fila = json::objeto()
                        .pon("path", ruta)
                        .pon("name", toma(cdir_nombre_y_ext_fichero_UNICODE(r)))
                        .pon("base", toma(cdir_nombre_base_fichero_UNICODE(r)))
                        .pon("extension", i_extension(ruta))
                        .pon("directory", i_directorio(ruta))
                        .pon("stem", toma(cdir_ruta_y_nombre_fichero_sin_extension_UNICODE(r)));
        if (p.tiene("with-ext")) {
            fila.pon("with_extension", i_pieza_pedida(p, ruta));
        }
        lista.agrega(std::move(fila));
    }
    if (p.en_json) {
        escribe_json(lista);
    }
    return todas_validas ? hecho : no;
}

// The same conversion for each path after the base.
template <wchar_t* (*convierte)(const wchar_t*, const wchar_t*)>
int i_sobre_base(peticion& p) {
    const std::wstring base = p.argumentos[0];
    p.argumentos.erase(p.argumentos.begin());
    json lista = json::lista();
    for (const std::wstring& ruta : p.argumentos_o_entrada()) {
        const std::wstring resultado = toma(convierte(base.c_str(), ruta.c_str()));
        if (p.en_json) {
            lista.agrega(json::objeto().pon("path", ruta).pon("result", resultado));
        } else {
            salida().linea(std::wstring_view(resultado));
        }
    }
    if (p.en_json) {
        escribe_json(lista);
    }
    return hubo_quejas() ? no : hecho;
}

int i_shorten(peticion& p) {
    const unsigned long maximo = a_numero(p.argumentos[1], L"N", 65535);
    const std::wstring& ruta = p.argumentos[0];
    std::wstring corta =
        toma(cdir_ruta_abreviada_con_logitud_maxima_u(ruta.c_str(), static_cast<unsigned short>(maximo)));
    // The abbreviation of a relative path begins with a separator, as if it went from the root.
    const size_t tras_unidad = ruta.size() >= 2 && ruta[1] == L':' ? 2 : 0;
    const auto va_desde_la_raiz = [&](const std::wstring& texto) {
        return texto.find_first_of(L"\\/", tras_unidad) == tras_unidad;
    };
    if (va_desde_la_raiz(corta) && !va_desde_la_raiz(ruta)) {
        corta.erase(tras_unidad, 1);
    }
    return i_responde(p, corta);
}

int i_repair(peticion& p) {
    json lista = json::lista();
    bool todos = true;
    for (const std::wstring& nombre : p.argumentos_o_entrada()) {
        const std::wstring reparado = toma(cdir_dame_nombre_base_valido_UNICODE(nombre.c_str()));
        std::wstring comprobado = reparado;
        // Reserved names and names of which nothing is left stay unusable.
        const bool vale = cdir_nombre_base_valido_UNICODE(comprobado.data()) == CIERTO;
        todos = todos && vale;
        if (p.en_json) {
            lista.agrega(json::objeto().pon("name", nombre).pon("result", reparado).pon("valid", vale));
            continue;
        }
        salida().linea(std::wstring_view(reparado));
        if (!vale) {
            errores()
                .escribe("lumodir: ", estilo::aviso)
                .linea(reparado.empty() ? di("nothing is left of '%1'", nombre)
                                        : di("'%1' cannot be repaired: the system reserves it", reparado));
        }
    }
    if (p.en_json) {
        escribe_json(lista);
    }
    return todos ? hecho : no;
}

constexpr opcion opciones_check[] = {{"quiet", "", "show the invalid ones only"}};
constexpr ejemplo ejemplos_check[] = {
    {R"(check "C:\Users\Ana\report.txt")", "valid"},
    {R"(check "C:\reports\what?.txt" "C:\aux.txt" --lang german)", "the reasons, in German"},
    {R"(tree C:\windows --files | lumodir check - --quiet)", "checks every path of a tree"},
};

constexpr opcion opciones_split[] = {
    {"wildcards", "", "the path may have * as its name and .* as its extension"}};
constexpr ejemplo ejemplos_split[] = {
    {R"(split "C:\windows\system32\notepad.exe")",
     "drive C:, directory \\windows\\system32\\, notepad and .exe"},
    {R"(split "\\server\share\a.tar.gz" --json)", "the drive of a network path is \\\\server\\share"},
};

constexpr opcion opciones_join[] = {
    {"drive", "D", R"(compose instead: the drive (C: or \\server\share))"},
    {"dir", "D", "its directory"},
    {"base", "B", "its base name; repaired when it is not valid"},
    {"ext", "E", "its extension, with or without the dot"},
};
constexpr ejemplo ejemplos_join[] = {
    {R"(join C:\data reports 2024.txt)", R"(C:\data\reports\2024.txt)"},
    {R"(join --drive C: --dir \data --base 2024 --ext txt)", R"(C:\data\2024.txt)"},
};

constexpr opcion opciones_name[] = {
    {"base", "", "the name without its extension"},
    {"ext", "", "the extension without its dot"},
    {"dir", "", "the directory with its final separator"},
    {"stem", "", "the whole path without its extension"},
    {"with-ext", "E", "the whole path with another extension; \"\" for none"},
};
constexpr ejemplo ejemplos_name[] = {
    {R"(name C:\data\2024.txt)", "2024.txt"},
    {R"(name C:\data\2024.txt --with-ext bak)", R"(C:\data\2024.bak)"},
    {R"(name C:\data\2024.txt --json)", "all pieces at once"},
};

constexpr ejemplo ejemplos_relative[] = {
    {R"(relative C:\proj C:\proj\src\a.c)", R"(src\a.c)"},
    {R"(relative C:\proj D:\other\b.c)", R"(D:\other\b.c, which the base does not begin)"},
};
constexpr ejemplo ejemplos_absolute[] = {
    {R"(absolute C:\proj src\a.c)", R"(C:\proj\src\a.c)"},
    {R"(absolute C:\proj .\a.c \b.c)", R"(C:\proj\a.c and \b.c, which was absolute)"},
};
constexpr ejemplo ejemplos_shorten[] = {
    {R"(shorten C:\Files\Customers\Site2024\Images\photo1.png 30)", R"(C:\Files\...\Images\photo1.png)"},
    {R"(shorten C:\Files\Customers\photo1.png 0)", R"(C:\...\photo1.png)"},
};
constexpr ejemplo ejemplos_repair[] = {
    {R"(repair "Sales: May/June?")", "Sales_ May_June_"},
};

constexpr orden ordenes[] = {
    {"check", "PATH...", "tell whether paths are valid, and why not",
     "A path is judged as text: it need not exist. With - as the only PATH the paths\n"
     "are read from standard input, one per line.",
     1, cuantos_sean, opciones_check, ejemplos_check, i_check},
    {"split", "PATH...", "drive, directory, base name and extension of a path",
     "An invalid path is split all the same, and the exit code is 1. Several paths\n"
     "make a table. With - as the only PATH they are read from standard input.",
     1, cuantos_sean, opciones_split, ejemplos_split, i_split},
    {"join", "PART PART... | --base B [--drive D] [--dir D] [--ext E]",
     "join directories and a name into one path",
     "Parts are joined with one separator. With options the path is composed from\n"
     "the pieces that split gives, and checked.",
     0, cuantos_sean, opciones_join, ejemplos_join, i_join},
    {"name", "PATH...", "the file name of a path, or another piece of it",
     "Without an option: the name with its extension.", 1, cuantos_sean, opciones_name, ejemplos_name,
     i_name},
    {"relative",
     "BASE PATH...",
     "paths relative to a base directory",
     "The base has to be the exact beginning of the path, letter case included: "
     "end BASE with \\, or C:\\dir begins C:\\directory too. Any other path comes back as it is. The result "
     "never goes "
     "up with \"..\".",
     2,
     cuantos_sean,
     {},
     ejemplos_relative,
     i_sobre_base<lumodir_ruta_absoluta_a_relativa>},
    {"absolute",
     "BASE PATH...",
     "paths made absolute on a base directory",
     "A path that is absolute already comes back as it is; \"..\" components stay.",
     2,
     cuantos_sean,
     {},
     ejemplos_absolute,
     i_sobre_base<lumodir_ruta_relativa_a_absoluta>},
    {"shorten",
     "PATH N",
     "abbreviate a path to about N characters",
     "Directories give way to \"...\"; drive and name stay whole, so the result may\n"
     "be longer than N.",
     2,
     2,
     {},
     ejemplos_shorten,
     i_shorten},
    {"repair",
     "NAME...",
     "make a valid file name of any text",
     "Invalid characters become _; spaces and dots that Windows would not keep at the ends are removed. "
     "Reserved "
     "names (AUX, NUL) stay, and the exit code is 1.",
     1,
     cuantos_sean,
     {},
     ejemplos_repair,
     i_repair},
};

}  // namespace

const std::span<const orden> ordenes_rutas = ordenes;

}  // namespace mando
