// The catalogue of the library's messages: one builder per message, which fills a message record.
//
// Promises: a builder fills every field; all 41 slots hold a text that begins with the "<id>" of the
// message; a slot without a text of its own holds the very pointer of the Spanish or the English slot; the
// texts are constants and need not be freed; the placeholders (%s, %ld) are the same, in the same order, in
// all languages, so that any text can be formatted with the same arguments.
// Cannot promise: that an id names one message. 53951 and 74876 stand twice, each time with another place
// (line or file) in the message files: name messages by their builder.
// `registro` must not be NULL: builders are called by the message library only, with a record of its own.
//
// Checked by tests/frame/catalogo_test.cpp.

#pragma once

#include <cstddef>
#include <initializer_list>

#include "companions/registro_mensaje.hpp"

namespace interno {

// The messages, by ascending id: builders, their declarations and the table are made from this list. The builder of
// 53955_fichero_no_correcto is i_msg_53955_fichero_no_correcto.
#define LUMODIR_MENSAJES(X)                                         \
    X(31827_no_existe_directorio)                                   \
    X(53948_no_se_puede_crear_directorio)                           \
    X(53949_caracteres_no_validos_en_nombre)                        \
    X(53950_no_se_puede_borrar_fichero_que_no_existe)               \
    X(53951_no_se_puede_borrar_fichero)                             \
    X(53951_no_se_puede_renombrar)                                  \
    X(53952_nombre_directorio_incorrecto)                           \
    X(53953_no_se_puede_borrar_directorio_que_no_existe)            \
    X(53954_no_se_puede_borrar_directorio)                          \
    X(53955_fichero_no_correcto)                                    \
    X(53957_punto_al_principio_o_final)                             \
    X(53958_unidad_debe_ser_letra)                                  \
    X(53959_unidad_de_red_incompleta)                               \
    X(53960_sin_nombre_de_directorio)                               \
    X(53961_no_se_puede_proteger_fichero)                           \
    X(53962_no_se_puede_desproteger_fichero)                        \
    X(53963_esperando_acceso_a_directorio)                          \
    X(74876_no_existe_fichero)                                      \
    X(74876_no_existe_fichero_sin_comillas) /* for error reports */ \
    X(158391_no_se_puede_abrir_para_cambiar_fecha)                  \
    X(374376_path_demasiado_largo)                                  \
    X(385690_no_se_puede_crear_temporal)                            \
    X(385691_codigo_de_error_de_windows)                            \
    X(385692_modificar_variable_temp)                               \
    X(401224_fichero_en_uso_o_sin_permiso)                          \
    X(402847_borrar_ficheros_o_modificar_temp)                      \
    X(404522_sin_permiso_en_directorio)                             \
    X(404523_fichero_sin_permiso_de_escritura)

#define I_DECLARADO(mensaje) void i_msg_##mensaje(RegistroMensaje* registro);
LUMODIR_MENSAJES(I_DECLARADO)
#undef I_DECLARADO

// All of them, in that order, for tests and tools that go over the whole catalogue.
struct fila_catalogo {
    const char* nombre;  // name of the builder
    unsigned long id;
    ConstructorMensaje construye;
};

#define I_UNO(mensaje) 1,
constexpr std::size_t num_mensajes_catalogo = std::initializer_list<int>{LUMODIR_MENSAJES(I_UNO)}.size();
#undef I_UNO
extern const fila_catalogo catalogo[num_mensajes_catalogo];

}  // namespace interno
