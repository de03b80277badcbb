#include "ayuda.hpp"

#include <algorithm>

#include "anfitrion.hpp"
#include "linea_de_ordenes.hpp"
#include "textos.hpp"

namespace mando {

namespace {

constexpr size_t ancho_de_la_ayuda =
    79;  // a console of 80 columns breaks longer lines in the middle of words

// A text in lines that fit, broken at blanks. `ocupadas` columns of the first line are taken already; the others are
// indented by `sangria`.
void i_parrafo(corriente& donde, const std::wstring& texto, size_t sangria, size_t ocupadas,
               estilo como = estilo::normal) {
    std::wstring linea;
    size_t columnas = ocupadas;
    bool primera = true;
    for (size_t desde = 0; desde < texto.size();) {
        const size_t fin = std::min(texto.find_first_of(L" \n", desde), texto.size());
        const std::wstring palabra = texto.substr(desde, fin - desde);
        desde = fin + 1;
        if (palabra.empty()) {
            continue;
        }
        const size_t ancho = columnas_de(palabra);
        if (!primera && columnas + 1 + ancho > ancho_de_la_ayuda) {
            donde.linea(linea, como).escribe(std::wstring(sangria, L' '));
            linea.clear();
            columnas = sangria;
            primera = true;
        }
        linea += primera ? palabra : L' ' + palabra;
        columnas += ancho + (primera ? 0 : 1);
        primera = false;
    }
    donde.linea(linea, como);
}

void i_resumen(corriente& donde, const orden& o) {
    constexpr size_t ancho = 12;
    donde.escribe("  ").escribe(a_la_izquierda(ancho_de(o.nombre), ancho), estilo::bueno);
    i_parrafo(donde, di(o.resumen), ancho + 2, ancho + 2);
}

using listas_de_opciones = std::initializer_list<std::span<const opcion>>;

void i_opciones(corriente& donde, listas_de_opciones listas) {
    size_t ancho = 14;
    const auto texto = [](const opcion& o) {
        return L"--" + ancho_de(o.nombre) + (o.valor.empty() ? L"" : L" " + ancho_de(o.valor)) +
               (o.letra == '\0' ? L"" : L" (-" + std::wstring(1, static_cast<wchar_t>(o.letra)) + L")");
    };
    for (const auto& opciones : listas) {
        for (const opcion& o : opciones) {
            ancho = std::max(ancho, texto(o).size() + 2);
        }
    }
    for (const auto& opciones : listas) {
        for (const opcion& o : opciones) {
            donde.escribe("  ").escribe(a_la_izquierda(texto(o), ancho), estilo::bueno);
            i_parrafo(donde, di(o.ayuda), ancho + 2, ancho + 2);
        }
    }
}

void i_codigos(corriente& donde) {
    donde.linea().linea(di("Exit code"), estilo::titulo);
    donde.escribe("  ");
    i_parrafo(donde,
              di("0 done, or yes; 1 no, invalid, not found or not done; 2 wrong command line; 0xC000013A "
                 "(-1073741510) ended by Ctrl-C"),
              2, 2);
}

}  // namespace

void di_version(corriente& donde) {
    donde.linea("lumodir " LUMODIR_VERSION);
}

std::wstring uso_de(const orden& cual) {
    const std::wstring argumentos = cual.argumentos.empty() ? L"" : L" " + ancho_de(cual.argumentos);
    const bool dice_todas = std::all_of(cual.opciones.begin(), cual.opciones.end(), [&](const opcion& o) {
        return cual.argumentos.find("--" + std::string(o.nombre)) != cual.argumentos.npos;
    });
    return L"lumodir " + ancho_de(cual.nombre) + argumentos + (dice_todas ? L"" : L" " + di("[OPTION...]"));
}

void di_uso(corriente& donde, const orden& cual) {
    constexpr size_t sangria = 7;
    i_parrafo(donde, di("Usage: %1", uso_de(cual)), sangria, 0);
}

void ayuda_general(corriente& donde) {
    donde.escribe("lumodir - ").linea(di("paths, files and directories from the command line")).linea();
    donde.linea(di("Usage: lumodir COMMAND [ARGUMENT...] [OPTION...]"));
    donde.linea(di("       lumodir COMMAND --help    what the command takes, with examples"));
    for (const grupo& g : grupos()) {
        donde.linea().linea(di(g.titulo), estilo::titulo);
        for (const orden& o : g.ordenes) {
            i_resumen(donde, o);
        }
    }
    donde.linea().linea(di("Options of every command"), estilo::titulo);
    i_opciones(donde, {opciones_generales});
    donde.linea().linea(di("Standard input"), estilo::titulo);
    donde.escribe("  ");
    i_parrafo(
        donde,
        di("a single - in place of PATH..., FILE..., DIR... or NAME... reads them from standard input, one "
           "per line: UTF-8, or else the code page of the console; what is piped out is UTF-8"),
        2, 2);
    donde.linea().linea(di("Languages"), estilo::titulo);
    donde.escribe("  ");
    i_parrafo(donde, nombres_de_idiomas(), 2, 2);
    donde.linea().linea(di("Patterns"), estilo::titulo);
    donde.escribe("  ");
    i_parrafo(
        donde,
        di("commands that take files take patterns with * and ? too (*.txt), in the last part of a path; "
           "what is to be deleted by one is shown before you are asked"),
        2, 2);
    i_codigos(donde);
}

void ayuda_de_orden(corriente& donde, const orden& cual) {
    const std::wstring nombre = L"lumodir " + ancho_de(cual.nombre);
    donde.escribe(nombre, estilo::bueno).escribe(" - ");
    i_parrafo(donde, di(cual.resumen), 2, nombre.size() + 3);
    donde.linea();
    di_uso(donde, cual);
    if (!cual.detalle.vacia()) {
        donde.linea();
        i_parrafo(donde, di(cual.detalle), 0, 0);
    }
    donde.linea().linea(di("Options"), estilo::titulo);
    i_opciones(donde, {cual.opciones, opciones_generales});
    donde.linea().linea(di("Examples"), estilo::titulo);
    for (const ejemplo& e : cual.ejemplos) {
        donde.escribe("  lumodir ").linea(e.linea);
        donde.escribe("      ");
        i_parrafo(donde, di(e.que_hace), 6, 6, estilo::tenue);
    }
    i_codigos(donde);
}

void ayuda_de_familia(corriente& donde, std::wstring_view primera_palabra) {
    donde.linea(di("Usage: lumodir %1 COMMAND [ARGUMENT...] [OPTION...]", primera_palabra)).linea();
    for (const grupo& g : grupos()) {
        for (const orden& o : g.ordenes) {
            if (ancho_de(o.nombre).starts_with(std::wstring(primera_palabra) + L" ")) {
                i_resumen(donde, o);
            }
        }
    }
}

}  // namespace mando
