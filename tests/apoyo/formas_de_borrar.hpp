// Every way of deleting a tree or the contents of a directory, in both flavours where there are two, with what each is
// meant to take and to answer. Windows only.
#pragma once

#include "apoyo/directorio.hpp"
#include "apoyo/exportada.hpp"
#include "cdir.h"
#include "companions/arr.h"

namespace apoyo {

enum class respuesta { ninguna, se_fue_el_directorio, se_fueron_los_ficheros };

// What the climb reports of a base that is not the beginning of the path.
inline const std::string no_es_principio =
    "widestr_es_subcadena_inicial_may_o_min(path_directorio, path_base_no_borrar) == CIERTO";

struct forma_de_borrar {
    const char* nombre;
    bool quita_raiz;
    bool recursiva;
    bool con_puntos;  // takes directories whose name begins with "." too
    bool por_pasadas;
    bool debe;  // reports when not every file went
    respuesta contesta;
    std::function<unsigned short(const std::string&)> borra;

    bool da_respuesta() const { return contesta != respuesta::ninguna; }
};

inline const forma_de_borrar formas_de_borrar[] = {
    {"cdir_borra_contenido_directorio_UNICODE", false, true, false, false, false, respuesta::ninguna,
     [](const std::string& r) { return llama(cdir_borra_contenido_directorio_UNICODE, r); }},
    {"cdir_borra_contenido_directorio", false, true, false, false, false, respuesta::ninguna,
     [](const std::string& r) { return llama(cdir_borra_contenido_directorio, r); }},
    {"cdir_borra_directorio_y_subdirectorios_UNICODE", true, true, false, false, false,
     respuesta::se_fue_el_directorio,
     [](const std::string& r) { return llama(cdir_borra_directorio_y_subdirectorios_UNICODE, r); }},
    {"cdir_borra_directorio_y_subdirectorios", true, true, false, false, false, respuesta::ninguna,
     [](const std::string& r) { return llama(cdir_borra_directorio_y_subdirectorios, r); }},
    {"cdir_borra_directorio_y_subdirectorios_parando", true, true, false, false, false,
     respuesta::se_fue_el_directorio,
     [](const std::string& r) {
         unsigned short sigue = 1;
         return llama(cdir_borra_directorio_y_subdirectorios_parando, r, &sigue);
     }},
    {"cdir_borra_contenido_directorio_reintentando_u", false, false, true, true, true, respuesta::ninguna,
     [](const std::string& r) { return llama(cdir_borra_contenido_directorio_reintentando_u, r); }},
    {"cdir_borra_contenido_directorio_si_es_posible_reintentando_u", true, true, true, true, false,
     respuesta::se_fueron_los_ficheros,
     [](const std::string& r) {
         return llama(cdir_borra_contenido_directorio_si_es_posible_reintentando_u, r);
     }},
    {"cdir_borra_directorio_y_subdirectorios_reintentando_u", true, true, true, true, true,
     respuesta::ninguna,
     [](const std::string& r) { return llama(cdir_borra_directorio_y_subdirectorios_reintentando_u, r); }},
    {"cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE", true, true, true, false, false,
     respuesta::se_fue_el_directorio,
     [](const std::string& r) {
         return llama(cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE, r, nullptr);
     }},
};

inline const char* const no_se_han_borrado_todos = "se_han_borrado_todos_los_ficheros_loc == CIERTO";

// The files that one silent pass could not delete, as it lists them; and its answer.
struct pasada {
    unsigned short respuesta;
    std::vector<std::string> sin_borrar;
};
inline pasada una_pasada(const std::string& ruta) {
    ArrCADENA_u* quedan = arr_CreaCADENA_u(0);
    pasada resultado;
    resultado.respuesta = cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE(w(ruta).c_str(), quedan);
    for (unsigned long i = 0; i < arr_NumElemsCADENA_u(quedan); ++i) {
        resultado.sin_borrar.push_back(u8(arr_GetCADENA_u(quedan, i)));
    }
    arr_DestruyeCADENA_u(&quedan);
    std::sort(resultado.sin_borrar.begin(), resultado.sin_borrar.end());
    return resultado;
}

}  // namespace apoyo
