// The exports of lumodir_listas.h.
#include "lumodir_listas.h"

#include "abi/exportacion.hpp"
#include "frame/puente.hpp"
#include "listings/listas_arbol.hpp"

using namespace interno;

namespace {

void i_lista(const wchar_t* base, const wchar_t* extension, registros cuales, unsigned long* num,
             ListaFicheros_u** listas) {
    const bool hay_base = i_comprueba(base != nullptr, "(dirBase) != NULL");
    const bool hay_num = i_comprueba(num != nullptr, "(numDir) != NULL");
    const bool hay_listas = i_comprueba(listas != nullptr, "(ficheros) != NULL");
    if (hay_num) {
        *num = 0;
    }
    if (hay_listas) {
        *listas = nullptr;
    }
    if (hay_base && hay_num && hay_listas) {
        arbol_de_listas arbol = i_lista_arbol(vista_w(base), filtro_extension(a_vista(extension)), cuales);
        *num = arbol.num();
        *listas = arbol.suelta();
    }
}

unsigned short i_hay_en(const wchar_t* path, sirve_entrada* sirve) {
    return logico(i_comprueba(path != nullptr, "(path) != NULL") && i_hay_entrada(path, sirve));
}

}  // namespace

void lumodir_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(const wchar_t* dirBase,
                                                                      const wchar_t* extension,
                                                                      unsigned long* numDir,
                                                                      ListaFicheros_u** ficheros) {
    i_lista(dirBase, extension, registros::con_ficheros, numDir, ficheros);
}

void lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE(const wchar_t* dirBase,
                                                                    const wchar_t* extension,
                                                                    unsigned long* numDir,
                                                                    ListaFicheros_u** ficheros) {
    i_lista(dirBase, extension, registros::todos, numDir, ficheros);
}

void lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(unsigned long numDir,
                                                                             ListaFicheros_u** ficheros) {
    if (numDir == 0) {
        if (i_comprueba(ficheros != nullptr, "(ficheros) != NULL")) {
            i_comprueba(*ficheros == nullptr, "*ficheros == NULL");
        }
        return;
    }
    i_destruye_en(ficheros, "(ficheros) != NULL", "(*ficheros) != NULL", [numDir](ListaFicheros_u* listas) {
        for (unsigned long i = 0; i < numDir; ++i) {
            i_libera_lista<wchar_t>(listas[i]);
        }
        i_libera(listas);
    });
}

AcadOrdeU* lumodir_lista_de_fichero(const wchar_t* path_filtro, const ArrCADENA_u* extensiones) {
    return i_ficheros_con_extension_de(path_filtro, extensiones).suelta();
}

unsigned short lumodir_existenFicheros_UNICODE(const wchar_t* path) {
    return i_hay_en(path, i_es_fichero);
}
unsigned short lumodir_existenFicheros(const char* path) {
    return puente<lumodir_existenFicheros_UNICODE>(path);
}

unsigned short lumodir_existenSubdirectorios_UNICODE(const wchar_t* path) {
    return i_hay_en(path, i_es_directorio_sin_punto);
}
unsigned short lumodir_existenSubdirectorios(const char* path) {
    return puente<lumodir_existenSubdirectorios_UNICODE>(path);
}
