#include "directorios.hpp"

#include <algorithm>

#include "consola.hpp"
#include "ficheros.hpp"
#include "lumodir.hpp"
#include "ordenes.hpp"
#include "respuesta.hpp"
#include "sistema_windows.hpp"
#include "textos.hpp"
#include "trabajo.hpp"

namespace mando {

void comprueba_directorio(const std::wstring& directorio) {
    if (sin_blancos(directorio).empty()) {
        throw fallo{di("the directory is empty; the current one is \".\"")};
    }
    const std::wstring de_trabajo = ruta_de_trabajo(directorio);
    if (que_hay_en(directorio) == clase_de_entrada::fichero) {
        throw fallo{di("'%1' is a file, not a directory", directorio)};
    }
    if (const auto existe = lumodir::cdir::existe_directorio_con_mensaje_opc(de_trabajo); !existe) {
        throw fallo{existe.motivo};
    }
    if (const unsigned long codigo = por_que_no_se_lee(directorio)) {
        throw fallo{di("the directory '%1' cannot be read: %2", directorio, texto_del_sistema(codigo))};
    }
}

namespace {

std::wstring i_por_donde_va(const std::wstring& base, unsigned long long desde, unsigned segundos) {
    return di("walking %1: %2 names, %3 s", base, con_miles(entradas_leidas() - desde),
              std::to_wstring(segundos)) +
           lo_que_falta(parte_recorrida(), segundos);
}

}  // namespace

void recorre_con_progreso(const std::wstring& base, const std::function<void(carpeta&)>& visita) {
    const unsigned long long desde = entradas_leidas();
    const despedida al_acabar([&] {
        return di("stopped after %1 names; nothing was changed", con_miles(entradas_leidas() - desde));
    });
    con_progreso([&] { recorre_arbol(base, visita); },
                 [&](unsigned segundos) { return i_por_donde_va(base, desde, segundos); });
}

carpeta lee_con_progreso(const std::wstring& directorio) {
    const unsigned long long desde = entradas_leidas();
    carpeta c;
    con_progreso([&] { c = lee_carpeta(directorio); },
                 [&](unsigned segundos) { return i_por_donde_va(directorio, desde, segundos); });
    return c;
}

void di_ilegibles(const recuento& total) {
    constexpr size_t a_la_vista_caben = 10;
    for (size_t i = 0; i < std::min(total.ilegibles.size(), a_la_vista_caben); ++i) {
        di_queja(i == 0 ? di("the directory '%1' cannot be read: %2", total.ilegibles[i],
                             texto_del_sistema(total.codigo_ilegible))
                        : di("the directory '%1' cannot be read", total.ilegibles[i]));
    }
    if (total.ilegibles.size() > a_la_vista_caben) {
        errores().escribe("  ").linea(
            di("and %1 more", con_miles(total.ilegibles.size() - a_la_vista_caben)));
    }
}

}  // namespace mando
