// The exports of nomsfich.h.
#include "nomsfich.h"

#include "abi/frontera.hpp"
#include "paths/nomsfich.hpp"

using namespace interno;

namespace {

cadena_a i_copia(vista_a texto) {
    return texto.data() == nullptr ? cadena_a() : cadena_a(texto);
}

vista_a i_base(const Nomsfich* nomsfich) noexcept {
    return a_vista<char>(nomsfich->nombre_base);
}

vista_a i_extension(const Nomsfich* nomsfich) noexcept {
    return a_vista<char>(nomsfich->extension);
}

bool i_hay_dos(const Nomsfich* nomsfich1, const Nomsfich* nomsfich2) noexcept {
    return estan({{nomsfich1, "(nomsfich1) != NULL"}, {nomsfich2, "(nomsfich2) != NULL"}});
}

}  // namespace

Nomsfich* nomsfich_crea(const char* nombre) {
    return i_crea_nomsfich(a_vista(nombre)).suelta();
}

Nomsfich* nomsfich_crea_por_nombre_base_y_extension(const char* nombre_base, const char* extension) {
    return i_registro(i_parte(a_vista(nombre_base)), i_parte(a_vista(extension))).suelta();
}

Nomsfich* nomsfich_copia(const Nomsfich* nomsfich) {
    if (!i_comprueba(nomsfich != nullptr, "(nomsfich) != NULL")) {
        return i_registro_vacio().suelta();
    }
    return i_registro(i_copia(i_base(nomsfich)), i_copia(i_extension(nomsfich))).suelta();
}

Nomsfich* nomsfich_cambia_extension(const Nomsfich* nomsfich, const char* extension) {
    if (!i_comprueba(nomsfich != nullptr, "(nomsfich) != NULL")) {
        return i_registro_vacio().suelta();
    }
    return i_registro(i_copia(i_base(nomsfich)), i_parte(a_vista(extension))).suelta();
}

void nomsfich_destruye(Nomsfich** nomsfich) {
    i_destruye_en(nomsfich, "(nomsfich) != NULL", "(*nomsfich) != NULL", destruye_registro_nomsfich());
}

const char* nomsfich_nombre_base_fichero(const Nomsfich* nomsfich) {
    return i_comprueba(nomsfich != nullptr, "(nomsfich) != NULL") ? nomsfich->nombre_base : nullptr;
}

const char* nomsfich_extension_fichero(const Nomsfich* nomsfich) {
    return i_comprueba(nomsfich != nullptr, "(nomsfich) != NULL") ? nomsfich->extension : nullptr;
}

char* nomsfich_nombre_fichero(const Nomsfich* nomsfich) {
    if (!i_comprueba(nomsfich != nullptr, "(nomsfich) != NULL")) {
        return nuevo_texto(vista_a());
    }
    const vista_a extension = i_extension(nomsfich);
    const vista_a punto = extension.empty() ? vista_a() : vista_a(".");
    return concatena<char>({i_base(nomsfich), punto, extension}).suelta();
}

unsigned short nomsfich_iguales(const Nomsfich* nomsfich1, const Nomsfich* nomsfich2) {
    // Extensions first: in a directory they differ sooner.
    return logico(i_hay_dos(nomsfich1, nomsfich2) && i_extension(nomsfich1) == i_extension(nomsfich2) &&
                  i_base(nomsfich1) == i_base(nomsfich2));
}

int nomsfich_compara(const Nomsfich* nomsfich1, const Nomsfich* nomsfich2) {
    if (!i_hay_dos(nomsfich1, nomsfich2)) {
        return 0;
    }
    const int orden = i_base(nomsfich1).compare(i_base(nomsfich2));
    return orden != 0 ? orden : i_extension(nomsfich1).compare(i_extension(nomsfich2));
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
