#include "ayuda.hpp"

#include <algorithm>

#include "anfitrion.hpp"
#include "linea_de_ordenes.hpp"
#include "textos.hpp"

namespace mando {

namespace {

void i_resumen(corriente& donde, const orden& o) {
    donde.escribe("  ").escribe(a_la_izquierda(ancho_de(o.nombre), 12), estilo::bueno).linea(di(o.resumen));
}

using listas_de_opciones = std::initializer_list<std::span<const opcion>>;

void i_opciones(corriente& donde, listas_de_opciones listas) {
    size_t ancho = 14;
    const auto texto = [](const opcion& o) {
        return L"--" + ancho_de(o.nombre) + (o.valor.empty() ? L"" : L" " + ancho_de(o.valor));
    };
    for (const auto& opciones : listas) {
        for (const opcion& o : opciones) {
            ancho = std::max(ancho, texto(o).size() + 2);
        }
    }
    for (const auto& opciones : listas) {
        for (const opcion& o : opciones) {
            donde.escribe("  ").escribe(a_la_izquierda(texto(o), ancho), estilo::bueno);
            // A longer explanation goes on under its first line.
            const std::wstring ayuda = di(o.ayuda);
            size_t desde = 0;
            for (size_t fin; (fin = ayuda.find(L'\n', desde)) != ayuda.npos; desde = fin + 1) {
                donde.linea(ayuda.substr(desde, fin - desde)).escribe(std::wstring(ancho + 2, L' '));
            }
            donde.linea(ayuda.substr(desde));
        }
    }
}

void i_codigos(corriente& donde) {
    donde.linea().linea(di("Exit code"), estilo::titulo);
    donde.escribe("  ").linea(
        di("0 done, or yes; 1 no, invalid, not found or not done; 2 wrong command line"));
}

}  // namespace

void di_version(corriente& donde) {
    donde.linea("lumodir " LUMODIR_VERSION);
}

void di_uso(corriente& donde, const orden& cual) {
    const std::wstring argumentos = cual.argumentos.empty() ? L"" : L" " + ancho_de(cual.argumentos);
    donde.linea(di("Usage: lumodir %1", ancho_de(cual.nombre) + argumentos));
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
    donde.escribe("  ").linea(
        di("a single - for PATH..., FILE..., DIR... or NAME... reads them there, one a line"));
    donde.linea().linea(di("Languages"), estilo::titulo);
    donde.escribe("  ").linea(nombres_de_idiomas());
    i_codigos(donde);
}

void ayuda_de_orden(corriente& donde, const orden& cual) {
    donde.escribe("lumodir ", estilo::bueno)
        .escribe(cual.nombre, estilo::bueno)
        .escribe(" - ")
        .linea(di(cual.resumen));
    donde.linea();
    di_uso(donde, cual);
    if (!cual.detalle.vacia()) {
        donde.linea().linea(di(cual.detalle));
    }
    donde.linea().linea(di("Options"), estilo::titulo);
    i_opciones(donde, {cual.opciones, opciones_generales});
    donde.linea().linea(di("Examples"), estilo::titulo);
    for (const ejemplo& e : cual.ejemplos) {
        donde.escribe("  lumodir ").linea(e.linea);
        donde.escribe("      ").linea(di(e.que_hace), estilo::tenue);
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
