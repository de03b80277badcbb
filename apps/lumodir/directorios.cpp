#include "directorios.hpp"

#include <algorithm>

#include "cdir_ficheros.h"
#include "companions/lumospy.h"
#include "dirwin.h"
#include "lumodir.h"
#include "ordenes.hpp"
#include "sistema_windows.hpp"
#include "textos.hpp"
#include "trabajo.hpp"

namespace mando {

namespace {

// A key that sorts a directory right before what is below it, letter case aside.
std::wstring i_clave(const std::wstring& ruta) {
    std::wstring clave = en_minusculas(ruta);
    std::replace(clave.begin(), clave.end(), L'\\', L'\x01');
    return clave;
}

// Every directory but a drive's root holds "." at least; one that yields nothing was not readable.
bool i_se_puede_recorrer(const std::wstring& directorio) {
    WIN32_FIND_DATAW entrada;
    const wchar_t ultimo = directorio.back();
    const std::wstring patron = directorio + (ultimo == L'\\' || ultimo == L'/' ? L"*" : L"\\*");
    Dirwin_u* recorrido = dirwin_crea_UNICODE(patron.c_str());
    const bool algo = dirwin_findnextfile_UNICODE(recorrido, &entrada) == CIERTO;
    dirwin_destruye_UNICODE(&recorrido);
    const bool es_raiz = ultimo == L'\\' || ultimo == L'/' || ultimo == L':';
    return algo || es_raiz;
}

}  // namespace

void comprueba_directorio(const std::wstring& directorio) {
    if (sin_blancos(directorio).empty()) {
        throw uso_incorrecto{di("the directory is empty; the current one is \".\"")};
    }
    wchar_t* mensaje = nullptr;
    const bool existe =
        cdir_existe_directorio_UNICODE_con_mensaje_opc(directorio.c_str(), &mensaje) == CIERTO;
    const std::wstring texto = toma(mensaje);
    if (!existe) {
        throw fallo{texto};
    }
    if (cdir_es_directorio_u(directorio.c_str()) != CIERTO) {
        throw fallo{di("'%1' is a file, not a directory", directorio)};
    }
    if (!i_se_puede_recorrer(directorio)) {
        throw fallo{di("the directory '%1' cannot be read", directorio)};
    }
}

std::vector<rama> recorre(const std::wstring& base, const wchar_t* extension) {
    unsigned long cuantos = 0;
    ListaFicheros_u* registros = nullptr;
    // What the walk has gathered so far shows in the library's census, which may be asked from any thread.
    const unsigned long long antes = lumospy_bloques_vivos();
    con_progreso(
        [&] {
            lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE(base.c_str(), extension, &cuantos,
                                                                           &registros);
        },
        [&](unsigned segundos) {
            return di("walking %1: about %2 names, %3 s", base, con_miles(lumospy_bloques_vivos() - antes),
                      std::to_wstring(segundos));
        });
    std::vector<rama> arbol;
    arbol.reserve(cuantos);
    for (unsigned long i = 0; i < cuantos; ++i) {
        const ListaFicheros_u& r = registros[i];
        arbol.push_back({r.path ? r.path : L"", {r.lista, r.lista + r.num}});
    }
    lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(cuantos, &registros);
    std::sort(arbol.begin(), arbol.end(),
              [](const rama& a, const rama& b) { return i_clave(a.ruta) < i_clave(b.ruta); });
    return arbol;
}

size_t cuenta_ficheros(const std::vector<rama>& arbol) {
    size_t total = 0;
    for (const rama& r : arbol) {
        total += r.ficheros.size();
    }
    return total;
}

std::wstring bajo_la_base(const std::wstring& ruta, const std::wstring& base) {
    std::wstring_view resto = ruta;
    resto.remove_prefix(std::min(base.size(), ruta.size()));
    while (resto.starts_with(L'\\')) {
        resto.remove_prefix(1);
    }
    return resto.empty() ? L"." : std::wstring(resto);
}

}  // namespace mando
