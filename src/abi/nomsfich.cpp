// The exports of nomsfich.h.
#include "nomsfich.h"

#include "abi/exportacion.hpp"
#include "paths/nomsfich.hpp"

using namespace interno;

namespace {

bool i_hay(const Nomsfich* nomsfich, lugar donde = lugar::aqui()) noexcept {
    return i_comprueba(nomsfich != nullptr, "(nomsfich) != NULL", donde);
}

bool i_hay_dos(const Nomsfich* nomsfich1, const Nomsfich* nomsfich2) noexcept {
    return estan({{nomsfich1, "(nomsfich1) != NULL"}, {nomsfich2, "(nomsfich2) != NULL"}});
}

}  // namespace

Nomsfich* nomsfich_crea(const char* nombre) {
    return i_crea_nomsfich(a_vista(nombre)).suelta();
}

Nomsfich* nomsfich_crea_por_nombre_base_y_extension(const char* nombre_base, const char* extension) {
    return i_crea_nomsfich(a_vista(nombre_base), a_vista(extension)).suelta();
}

Nomsfich* nomsfich_copia(const Nomsfich* nomsfich) {
    return (i_hay(nomsfich) ? i_copia_nomsfich(*nomsfich) : i_registro_vacio()).suelta();
}

Nomsfich* nomsfich_cambia_extension(const Nomsfich* nomsfich, const char* extension) {
    return (i_hay(nomsfich) ? i_copia_nomsfich(*nomsfich, a_vista(extension)) : i_registro_vacio()).suelta();
}

void nomsfich_destruye(Nomsfich** nomsfich) {
    i_destruye_en(nomsfich, "(nomsfich) != NULL", "(*nomsfich) != NULL", destruye_registro_nomsfich());
}

const char* nomsfich_nombre_base_fichero(const Nomsfich* nomsfich) {
    return i_hay(nomsfich) ? nomsfich->nombre_base : nullptr;
}

const char* nomsfich_extension_fichero(const Nomsfich* nomsfich) {
    return i_hay(nomsfich) ? nomsfich->extension : nullptr;
}

char* nomsfich_nombre_fichero(const Nomsfich* nomsfich) {
    return i_hay(nomsfich) ? i_nombre_fichero(*nomsfich).suelta() : nuevo_texto(vista_a());
}

unsigned short nomsfich_iguales(const Nomsfich* nomsfich1, const Nomsfich* nomsfich2) {
    return logico(i_hay_dos(nomsfich1, nomsfich2) && i_iguales(*nomsfich1, *nomsfich2));
}

int nomsfich_compara(const Nomsfich* nomsfich1, const Nomsfich* nomsfich2) {
    return i_hay_dos(nomsfich1, nomsfich2) ? i_compara(*nomsfich1, *nomsfich2) : 0;
}

unsigned short nomsfich_misma_extension(const char* extension1, const char* extension2) {
    return logico(i_misma_extension(a_vista(extension1), a_vista(extension2)));
}

unsigned short nomsfich_mismo_nombre_base(const char* nombre_base1, const char* nombre_base2) {
    return logico(i_mismo_nombre_base(a_vista(nombre_base1), a_vista(nombre_base2)));
}

char* nomsfich_nombre_base_path_completo(const char* path_completo) {
    const bool hay = i_comprueba(path_completo != nullptr, "(path_completo) != NULL");
    return hay ? i_nombre_base_de_path(a_vista(path_completo)).suelta() : nuevo_texto(vista_a());
}
