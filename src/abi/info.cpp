// The exports of info.h.
#include "info.h"

#include "abi/exportacion.hpp"
#include "system/discos.hpp"
#include "system/info.hpp"

using namespace interno;

namespace {

// Copies what fits, terminated; nothing at all where not even a terminator does.
void i_copia_en(wchar_t* buf, unsigned long nbuf, vista_w texto) noexcept {
    if (!i_comprueba(nbuf > texto.size(), "nbuf > len")) {
        texto = texto.substr(0, nbuf == 0 ? 0 : nbuf - 1);
    }
    if (nbuf > 0) {
        rasgos_utf16::copy(buf, texto.data(), texto.size());
        buf[texto.size()] = L'\0';
    }
}

}  // namespace

void info_GetDriveInfoSystem(InfoTabla* tabla) {
    if (i_comprueba(tabla != nullptr, "(tabla) != NULL")) {
        i_llena_tabla(*tabla);
    }
}

unsigned short info_BuscaDiscoId(const InfoTabla* tabla, unsigned short disco) {
    if (!i_comprueba(tabla != nullptr, "(tabla) != NULL") ||
        !i_comprueba(tabla->numDiscos == 0 || tabla->discos != nullptr, "tabla->discos != NULL")) {
        return INFO_DISCO_AUSENTE;
    }
    return i_busca_disco(*tabla, disco).value_or(INFO_DISCO_AUSENTE);
}

char* info_GetTxtDrive(const InfoDisco* disco) {
    if (!i_comprueba(disco != nullptr, "(disco) != NULL") ||
        !i_comprueba(disco->disco < i_NUM_MAX_UNIDADES, "disco->disco < i_NUM_MAX_UNIDADES")) {
        return nuevo_texto(vista_a());
    }
    const char letra = static_cast<char>('A' + disco->disco);
    return concatena<char>({vista_a(&letra, 1), ":"}).suelta();
}

void info_LiberaTabla(InfoTabla* tabla) {
    if (i_comprueba(tabla != nullptr, "(tabla) != NULL")) {
        i_vacia_tabla(*tabla);
    }
}

wchar_t* info_GetActualDirectorio_compatible_chdir(int unidad, wchar_t* buf, unsigned long nbuf) {
    cadena_w actual = i_directorio_actual_de(unidad);
    if (actual.es_nula()) {
        return nullptr;
    }
    if (buf != nullptr) {
        i_copia_en(buf, nbuf, actual.ver());
        return buf;
    }
    i_comprueba(nbuf == 0, "nbuf == 0");
    return actual.suelta();
}
