// Paths as text: check, split, join, name, relative, absolute, shorten, repair.
#include <algorithm>

#include "anfitrion.hpp"
#include "consola.hpp"
#include "lumodir.hpp"
#include "ordenes.hpp"
#include "respuesta.hpp"
#include "textos.hpp"

namespace mando {

namespace {

namespace cdir = lumodir::cdir;

// "valid" or "invalid", padded to one column, and two blanks.
std::wstring i_juicio_en_palabras(frase cual) {
    constexpr size_t separacion = 2;
    return a_la_izquierda(di(cual),
                          std::max(columnas_de(di("valid")), columnas_de(di("invalid"))) + separacion);
}

int i_check(peticion& p) {
    const std::vector<std::wstring> rutas = p.argumentos_o_entrada();
    const bool solo_malas = p.tiene("quiet");
    respuesta_por_piezas juicios(p);
    size_t malas = 0;
    for (const std::wstring& ruta : rutas) {
        const lumodir::respuesta valida = cdir::es_path_valido(ruta);
        malas += valida ? 0 : 1;
        json fila = json::objeto().pon("path", ruta).pon("valid", valida.bien);
        if (valida) {
            fila.pon("absolute", lumodir::ruta_es_absoluta(ruta));
        } else {
            fila.pon("message", valida.motivo.vista());
        }
        juicios.pieza(std::move(fila), [&] {
            if (!valida) {
                salida()
                    .escribe(i_juicio_en_palabras("invalid"), estilo::malo)
                    .escribe(ruta.empty() ? di("(empty)") : a_la_vista(ruta))
                    .escribe(": ")
                    .linea(valida.motivo.vista());
            } else if (!solo_malas) {
                salida().escribe(i_juicio_en_palabras("valid"), estilo::bueno).linea(a_la_vista(ruta));
            }
        });
    }
    return juicios.acaba(malas == 0, [&] {
        if (rutas.size() > 1) {
            salida().linea(di("%1: %2 valid, %3 invalid", plural(rutas.size(), "path", "paths"),
                              con_miles(rutas.size() - malas), con_miles(malas)),
                           malas > 0 ? estilo::aviso : estilo::normal);
        }
    });
}

int i_split(peticion& p) {
    const std::vector<std::wstring> rutas = p.argumentos_o_entrada();
    respuesta cortadas(p, {{.clave = "path"},
                           {.clave = "drive", .como = {.titulo = "drive"}},
                           {.clave = "directory",
                            .como = {.titulo = "directory", .elastica = true, .corta = corte::al_final}},
                           {.clave = "base", .como = {.titulo = "base name"}},
                           {.clave = "extension", .como = {.titulo = "extension"}}});
    for (const std::wstring& ruta : rutas) {
        const cdir::piezas z = p.tiene("wildcards") ? cdir::splitpath_con_comodines(ruta)
                                                    : cdir::splitpath_con_comprobacion(ruta);
        cortadas.fila(
            {ruta, z.unidad.vista(), z.directorio.vista(), z.nombre_base.vista(), z.extension.vista()});
    }
    // An invalid path is split all the same; the library has complained of it.
    return responde(
        p, cortadas.como_lista(),
        [&] {
            if (rutas.size() == 1) {
                cortadas.pinta_ficha();
            } else {
                cortadas.pinta();
            }
        },
        hubo_quejas() ? no : hecho);
}

// The result of a text operation; what the library complained of makes the exit code.
int i_responde(const peticion& p, const std::wstring& resultado) {
    return responde(p, "path", resultado, hubo_quejas() ? no : hecho);
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
        return i_responde(p,
                          cdir::makepath(p.valor("drive"), p.valor("dir"), p.valor("base"), p.valor("ext")));
    }
    if (p.argumentos.size() < 2) {
        throw uso_incorrecto{di("joining takes two parts or more")};
    }
    std::wstring ruta = p.argumentos[0];
    for (size_t i = 1; i < p.argumentos.size(); ++i) {
        ruta = cdir::concatena_directorios(ruta, p.argumentos[i]);
    }
    return i_responde(p, ruta);
}

std::wstring i_directorio(const std::wstring& ruta) {
    return ruta.empty() ? ruta : cdir::ruta_acceso_directorio_fichero(ruta).texto();
}

// A directory, whose path ends with a separator, has no extension to ask for.
std::wstring i_extension(const std::wstring& ruta) {
    const std::wstring limpia = sin_blancos(ruta);
    return limpia.empty() || limpia.back() == L'\\' ? std::wstring() : cdir::extension_fichero(ruta).texto();
}

std::wstring i_pieza_pedida(const peticion& p, const std::wstring& ruta) {
    if (p.tiene("with-ext")) {
        return cdir::nombre_fichero_con_ext(ruta, p.valor("with-ext"));
    }
    if (p.tiene("base")) {
        return cdir::nombre_base_fichero(ruta);
    }
    if (p.tiene("ext")) {
        return i_extension(ruta);
    }
    if (p.tiene("dir")) {
        return i_directorio(ruta);
    }
    return p.tiene("stem") ? cdir::ruta_y_nombre_fichero_sin_extension(ruta)
                           : cdir::nombre_y_ext_fichero(ruta);
}

json i_todas_las_piezas(const peticion& p, const std::wstring& ruta) {
    json fila = json::objeto()
                    .pon("path", ruta)
                    .pon("name", cdir::nombre_y_ext_fichero(ruta).vista())
                    .pon("base", cdir::nombre_base_fichero(ruta).vista())
                    .pon("extension", i_extension(ruta))
                    .pon("directory", i_directorio(ruta))
                    .pon("stem", cdir::ruta_y_nombre_fichero_sin_extension(ruta).vista());
    if (p.tiene("with-ext")) {
        fila.pon("with_extension", i_pieza_pedida(p, ruta));
    }
    return fila;
}

int i_name(peticion& p) {
    if (p.opciones.size() > 1) {
        throw uso_incorrecto{di("ask for one piece of the path at a time (or for all of them with --json)")};
    }
    respuesta_por_piezas nombres(p);
    bool todas_validas = true;
    for (const std::wstring& ruta : p.argumentos_o_entrada()) {
        if (const lumodir::respuesta valida = cdir::es_path_valido(ruta); !valida) {
            todas_validas = false;
            di_queja(ruta + L": " + valida.motivo, estilo::aviso);
        }
        nombres.pieza([&] { return i_todas_las_piezas(p, ruta); },
                      [&] { salida().linea(std::wstring_view(i_pieza_pedida(p, ruta))); });
    }
    return nombres.acaba(todas_validas);
}

// The same conversion for each path after the base.
template <lumodir::cadena (*convierte)(const lumodir::argumento&, const lumodir::argumento&)>
int i_sobre_base(peticion& p) {
    const std::wstring base = p.argumentos[0];
    p.argumentos.erase(p.argumentos.begin());
    respuesta_por_piezas convertidas(p);
    for (const std::wstring& ruta : p.argumentos_o_entrada()) {
        const lumodir::cadena resultado = convierte(base, ruta);
        convertidas.pieza(json::objeto().pon("path", ruta).pon("result", resultado.vista()),
                          [&] { salida().linea(resultado.vista()); });
    }
    return convertidas.acaba(!hubo_quejas());
}

int i_shorten(peticion& p) {
    const unsigned long maximo = a_numero(p.argumentos[1], L"N", 65535);
    const std::wstring& ruta = p.argumentos[0];
    std::wstring corta = cdir::ruta_abreviada_con_logitud_maxima(ruta, static_cast<unsigned short>(maximo));
    // The abbreviation of a relative path begins with a separator, as if it went from the root.
    const size_t tras_unidad = ruta.size() >= 2 && ruta[1] == L':' ? 2 : 0;
    const auto va_desde_la_raiz = [&](const std::wstring& texto) {
        return texto.find_first_of(L"\\/", tras_unidad) == tras_unidad;
    };
    if (va_desde_la_raiz(corta) && !va_desde_la_raiz(ruta)) {
        corta.erase(tras_unidad, 1);
    }
    return i_responde(p, corta.size() < ruta.size() ? corta : ruta);
}

int i_repair(peticion& p) {
    respuesta_por_piezas reparados(p);
    bool todos = true;
    for (const std::wstring& nombre : p.argumentos_o_entrada()) {
        const std::wstring reparado = cdir::dame_nombre_base_valido(nombre);
        std::wstring comprobado = reparado;
        // Reserved names and names of which nothing is left stay unusable.
        const bool vale = cdir::nombre_base_valido(comprobado);
        todos = todos && vale;
        reparados.pieza(json::objeto().pon("name", nombre).pon("result", reparado).pon("valid", vale), [&] {
            salida().linea(std::wstring_view(reparado));
            if (!vale) {
                di_queja(reparado.empty() ? di("nothing is left of '%1'", nombre)
                                          : di("'%1' cannot be repaired: the system reserves it", reparado),
                         estilo::aviso);
            }
        });
    }
    return reparados.acaba(todos);
}

constexpr opcion opciones_check[] = {
    {.nombre = "quiet", .ayuda = "show the invalid ones only"},
};
constexpr ejemplo ejemplos_check[] = {
    {.linea = R"(check "C:\Users\Ana\report.txt")", .que_hace = "valid"},
    {.linea = R"(check "C:\reports\what?.txt" "C:\aux.txt" --lang german)",
     .que_hace = "the reasons, in German"},
    {.linea = R"(tree C:\windows --files | lumodir check - --quiet)",
     .que_hace = "checks every path of a tree"},
};

constexpr opcion opciones_split[] = {
    {.nombre = "wildcards", .ayuda = "the path may have * as its name and .* as its extension"},
};
constexpr ejemplo ejemplos_split[] = {
    {.linea = R"(split "C:\windows\system32\notepad.exe")",
     .que_hace = "drive C:, directory \\windows\\system32\\, notepad and .exe"},
    {.linea = R"(split "\\server\share\a.tar.gz" --json)",
     .que_hace = "the drive of a network path is \\\\server\\share"},
};

constexpr opcion opciones_join[] = {
    {.nombre = "drive", .valor = "D", .ayuda = R"(compose instead: the drive (C: or \\server\share))"},
    {.nombre = "dir", .valor = "D", .ayuda = "its directory"},
    {.nombre = "base", .valor = "B", .ayuda = "its base name; repaired when it is not valid"},
    {.nombre = "ext", .valor = "E", .ayuda = "its extension, with or without the dot"},
};
constexpr ejemplo ejemplos_join[] = {
    {.linea = R"(join C:\data reports 2024.txt)", .que_hace = R"(C:\data\reports\2024.txt)"},
    {.linea = R"(join --drive C: --dir \data --base 2024 --ext txt)", .que_hace = R"(C:\data\2024.txt)"},
};

constexpr opcion opciones_name[] = {
    {.nombre = "base", .ayuda = "the name without its extension"},
    {.nombre = "ext", .ayuda = "the extension without its dot"},
    {.nombre = "dir", .ayuda = "the directory with its final separator"},
    {.nombre = "stem", .ayuda = "the whole path without its extension"},
    {.nombre = "with-ext", .valor = "E", .ayuda = "the whole path with another extension; \"\" for none"},
};
constexpr ejemplo ejemplos_name[] = {
    {.linea = R"(name C:\data\2024.txt)", .que_hace = "2024.txt"},
    {.linea = R"(name C:\data\2024.txt --with-ext bak)", .que_hace = R"(C:\data\2024.bak)"},
    {.linea = R"(name C:\data\2024.txt --json)", .que_hace = "all pieces at once"},
};

constexpr ejemplo ejemplos_relative[] = {
    {.linea = R"(relative C:\proj C:\proj\src\a.c)", .que_hace = R"(src\a.c)"},
    {.linea = R"(relative C:\proj D:\other\b.c)",
     .que_hace = R"(D:\other\b.c, which the base does not begin)"},
};
constexpr ejemplo ejemplos_absolute[] = {
    {.linea = R"(absolute C:\proj src\a.c)", .que_hace = R"(C:\proj\src\a.c)"},
    {.linea = R"(absolute C:\proj .\a.c \b.c)", .que_hace = R"(C:\proj\a.c and \b.c, which was absolute)"},
};
constexpr ejemplo ejemplos_shorten[] = {
    {.linea = R"(shorten C:\Files\Customers\Site2024\Images\photo1.png 30)",
     .que_hace = R"(C:\Files\...\Images\photo1.png)"},
    {.linea = R"(shorten C:\Files\Customers\photo1.png 0)", .que_hace = R"(C:\...\photo1.png)"},
};
constexpr ejemplo ejemplos_repair[] = {
    {.linea = R"(repair "Sales: May/June?")", .que_hace = "Sales_ May_June_"},
};

constexpr orden tabla_rutas[] = {
    {.nombre = "check",
     .argumentos = "PATH...",
     .resumen = "tell whether paths are valid, and why not",
     .detalle = "A path is judged as text: it need not exist. With - as the only PATH the paths\n"
                "are read from standard input, one per line.",
     .minimo = 1,
     .maximo = cuantos_sean,
     .opciones = opciones_check,
     .ejemplos = ejemplos_check,
     .ejecuta = i_check},
    {.nombre = "split",
     .argumentos = "PATH...",
     .resumen = "drive, directory, base name and extension of a path",
     .detalle = "An invalid path is split all the same, and the exit code is 1. Several paths\n"
                "make a table. With - as the only PATH they are read from standard input.",
     .minimo = 1,
     .maximo = cuantos_sean,
     .opciones = opciones_split,
     .ejemplos = ejemplos_split,
     .ejecuta = i_split},
    {.nombre = "join",
     .argumentos = "PART PART... | --base B [--drive D] [--dir D] [--ext E]",
     .resumen = "join directories and a name into one path",
     .detalle = "Parts are joined with one separator. With options the path is composed from\n"
                "the pieces that split gives, and checked.",
     .maximo = cuantos_sean,
     .opciones = opciones_join,
     .ejemplos = ejemplos_join,
     .ejecuta = i_join},
    {.nombre = "name",
     .argumentos = "PATH...",
     .resumen = "the file name of a path, or another piece of it",
     .detalle = "Without an option: the name with its extension.",
     .minimo = 1,
     .maximo = cuantos_sean,
     .opciones = opciones_name,
     .ejemplos = ejemplos_name,
     .ejecuta = i_name},
    {.nombre = "relative",
     .argumentos = "BASE PATH...",
     .resumen = "paths relative to a base directory",
     .detalle = "The base has to be the exact beginning of the path, letter case included: end BASE with \\, "
                "or C:\\dir begins C:\\directory too. Any other path comes back as it is. The result never "
                "goes up with \"..\".",
     .minimo = 2,
     .maximo = cuantos_sean,
     .ejemplos = ejemplos_relative,
     .ejecuta = i_sobre_base<lumodir::ruta_absoluta_a_relativa>},
    {.nombre = "absolute",
     .argumentos = "BASE PATH...",
     .resumen = "paths made absolute on a base directory",
     .detalle = "A path that is absolute already comes back as it is; \"..\" components stay.",
     .minimo = 2,
     .maximo = cuantos_sean,
     .ejemplos = ejemplos_absolute,
     .ejecuta = i_sobre_base<lumodir::ruta_relativa_a_absoluta>},
    {.nombre = "shorten",
     .argumentos = "PATH N",
     .resumen = "abbreviate a path to about N characters",
     .detalle = "Directories give way to \"...\"; drive and name stay whole, so the result may\n"
                "be longer than N.",
     .minimo = 2,
     .maximo = 2,
     .ejemplos = ejemplos_shorten,
     .ejecuta = i_shorten},
    {.nombre = "repair",
     .argumentos = "NAME...",
     .resumen = "make a valid file name of any text",
     .detalle =
         "Invalid characters become _; spaces and dots that Windows would not keep at the ends are removed. "
         "Reserved "
         "names (AUX, NUL) stay, and the exit code is 1.",
     .minimo = 1,
     .maximo = cuantos_sean,
     .ejemplos = ejemplos_repair,
     .ejecuta = i_repair},
};

}  // namespace

const std::span<const orden> ordenes_rutas = tabla_rutas;

}  // namespace mando
