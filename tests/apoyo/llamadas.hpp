// The calls of the library's table that can fail, one by one, for whoever puts something else in their places. Made from
// the library's own list, so that none can be forgotten. Windows only.
#pragma once

#include <string_view>

#include "companions/sistema.hpp"

namespace apoyo {

enum class clase_de_llamada { ficheros, claves, procesos, discos, escritorio, proceso };

// What is known of a call, by its place in the table.
template <auto Entrada>
struct llamada_de;

constexpr bool cierra_una_manija(std::string_view nombre) {
    return nombre == "CloseHandle" || nombre == "FindClose" || nombre == "RegCloseKey";
}

#define I_LLAMADA(Clase, Nombre, Fallo)                                    \
    template <>                                                            \
    struct llamada_de<&interno::tabla_sistema::Nombre> {                   \
        static constexpr const char* nombre = #Nombre;                     \
        static constexpr clase_de_llamada clase = clase_de_llamada::Clase; \
        static constexpr bool cierra = cierra_una_manija(#Nombre);         \
        using tipo = decltype(interno::tabla_sistema::Nombre);             \
        template <class R>                                                 \
        static R fallo() {                                                 \
            return Fallo;                                                  \
        }                                                                  \
    };
LUMODIR_LLAMADAS_QUE_FALLAN(I_LLAMADA)
#undef I_LLAMADA

// Calls `haz` once for each of them, with its place as the template argument.
template <class Haz>
void con_cada_llamada(Haz haz) {
#define I_LLAMADA(Clase, Nombre, Fallo) haz.template operator()<&interno::tabla_sistema::Nombre>();
    LUMODIR_LLAMADAS_QUE_FALLAN(I_LLAMADA)
#undef I_LLAMADA
}

// The whole table, put back as it was at the end of a block.
class sistema_guardado {
public:
    sistema_guardado() = default;
    ~sistema_guardado() { interno::sistema = real; }
    sistema_guardado(const sistema_guardado&) = delete;
    sistema_guardado& operator=(const sistema_guardado&) = delete;

    const interno::tabla_sistema real = interno::sistema;
};

}  // namespace apoyo
