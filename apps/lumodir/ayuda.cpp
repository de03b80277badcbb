#include "ayuda.hpp"

#include <algorithm>

#include "anfitrion.hpp"
#include "linea_de_ordenes.hpp"
#include "textos.hpp"

namespace mando {

namespace {

constexpr std::string_view presentacion = "lumodir - paths, files and directories from the command line";

void i_resumen(corriente& donde, const orden& o) {
    donde.escribe("  ").escribe(a_la_izquierda(ancho_de(o.nombre), 12), estilo::bueno).linea(o.resumen);
}

void i_opciones(corriente& donde, std::span<const opcion> opciones) {
    size_t ancho = 14;
    const auto texto = [](const opcion& o) {
        return L"--" + ancho_de(o.nombre) + (o.valor.empty() ? L"" : L" " + ancho_de(o.valor));
    };
    for (const opcion& o : opciones) {
        ancho = std::max(ancho, texto(o).size() + 2);
    }
    for (const opcion& o : opciones) {
        donde.escribe("  ").escribe(a_la_izquierda(texto(o), ancho), estilo::bueno);
        // A longer explanation goes on under its first line.
        size_t desde = 0;
        for (size_t fin; (fin = o.ayuda.find('\n', desde)) != o.ayuda.npos; desde = fin + 1) {
            donde.linea(o.ayuda.substr(desde, fin - desde)).escribe(std::wstring(ancho + 2, L' '));
        }
        donde.linea(o.ayuda.substr(desde));
    }
}

void i_codigos(corriente& donde) {
    donde.linea().linea("Exit code", estilo::titulo);
    donde.linea("  0 done, or yes; 1 no, invalid, not found or not done; 2 wrong command line");
}

}  // namespace

void di_version(corriente& donde) {
    donde.linea("lumodir " LUMODIR_VERSION);
}

void ayuda_general(corriente& donde) {
    donde.linea(presentacion).linea();
    donde.linea("Usage: lumodir COMMAND [ARGUMENT...] [OPTION...]");
    donde.linea("       lumodir COMMAND --help    what the command takes, with examples");
    for (const grupo& g : grupos()) {
        donde.linea().linea(g.titulo, estilo::titulo);
        for (const orden& o : g.ordenes) {
            i_resumen(donde, o);
        }
    }
    donde.linea().linea("Options of every command", estilo::titulo);
    i_opciones(donde, opciones_generales);
    donde.linea().linea("Languages", estilo::titulo);
    donde.escribe("  ").linea(nombres_de_idiomas());
    i_codigos(donde);
}

void ayuda_de_orden(corriente& donde, const orden& cual) {
    donde.escribe("lumodir ", estilo::bueno)
        .escribe(cual.nombre, estilo::bueno)
        .escribe(" - ")
        .linea(cual.resumen);
    donde.linea();
    donde.escribe("Usage: lumodir ").escribe(cual.nombre).escribe(" ").linea(cual.argumentos);
    if (!cual.detalle.empty()) {
        donde.linea().linea(cual.detalle);
    }
    donde.linea().linea("Options", estilo::titulo);
    i_opciones(donde, cual.opciones);
    i_opciones(donde, opciones_generales);
    donde.linea().linea("Examples", estilo::titulo);
    for (const ejemplo& e : cual.ejemplos) {
        donde.escribe("  lumodir ").linea(e.linea);
        donde.escribe("      ").linea(e.que_hace, estilo::tenue);
    }
    i_codigos(donde);
}

void ayuda_de_familia(corriente& donde, std::wstring_view primera_palabra) {
    donde.escribe("Usage: lumodir ")
        .escribe(primera_palabra)
        .linea(" COMMAND [ARGUMENT...] [OPTION...]")
        .linea();
    for (const grupo& g : grupos()) {
        for (const orden& o : g.ordenes) {
            if (ancho_de(o.nombre).starts_with(std::wstring(primera_palabra) + L" ")) {
                i_resumen(donde, o);
            }
        }
    }
}

}  // namespace mando
