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

#include "companions/registro_mensaje.hpp"

namespace lumodir {

// Path names
void i_msg_53949_caracteres_no_validos_en_nombre(RegistroMensaje* registro);
void i_msg_53955_fichero_no_correcto(RegistroMensaje* registro);
void i_msg_53957_punto_al_principio_o_final(RegistroMensaje* registro);
void i_msg_53958_unidad_debe_ser_letra(RegistroMensaje* registro);
void i_msg_53959_unidad_de_red_incompleta(RegistroMensaje* registro);
void i_msg_53960_sin_nombre_de_directorio(RegistroMensaje* registro);
void i_msg_374376_path_demasiado_largo(RegistroMensaje* registro);

// Existence and access
void i_msg_31827_no_existe_directorio(RegistroMensaje* registro);
void i_msg_53963_esperando_acceso_a_directorio(RegistroMensaje* registro);
void i_msg_74876_no_existe_fichero(RegistroMensaje* registro);
void i_msg_74876_no_existe_fichero_sin_comillas(RegistroMensaje* registro);  // for error reports
void i_msg_404522_sin_permiso_en_directorio(RegistroMensaje* registro);
void i_msg_404523_fichero_sin_permiso_de_escritura(RegistroMensaje* registro);

// Deletion
void i_msg_53950_no_se_puede_borrar_fichero_que_no_existe(RegistroMensaje* registro);
void i_msg_53951_no_se_puede_borrar_fichero(RegistroMensaje* registro);
void i_msg_53953_no_se_puede_borrar_directorio_que_no_existe(RegistroMensaje* registro);
void i_msg_53954_no_se_puede_borrar_directorio(RegistroMensaje* registro);
void i_msg_401224_fichero_en_uso_o_sin_permiso(RegistroMensaje* registro);

// Creation, renaming, read-only protection, dates
void i_msg_53948_no_se_puede_crear_directorio(RegistroMensaje* registro);
void i_msg_53951_no_se_puede_renombrar(RegistroMensaje* registro);
void i_msg_53952_nombre_directorio_incorrecto(RegistroMensaje* registro);
void i_msg_53961_no_se_puede_proteger_fichero(RegistroMensaje* registro);
void i_msg_53962_no_se_puede_desproteger_fichero(RegistroMensaje* registro);
void i_msg_158391_no_se_puede_abrir_para_cambiar_fecha(RegistroMensaje* registro);

// Temporary files
void i_msg_385690_no_se_puede_crear_temporal(RegistroMensaje* registro);
void i_msg_385691_codigo_de_error_de_windows(RegistroMensaje* registro);
void i_msg_385692_modificar_variable_temp(RegistroMensaje* registro);
void i_msg_402847_borrar_ficheros_o_modificar_temp(RegistroMensaje* registro);

// All messages, by ascending id, for tests and tools that go over the whole catalogue.
struct entrada_catalogo {
    const char* nombre;  // name of the builder
    unsigned long id;
    ConstructorMensaje construye;
};

constexpr std::size_t num_mensajes_catalogo = 28;
extern const entrada_catalogo catalogo[num_mensajes_catalogo];

}  // namespace lumodir
