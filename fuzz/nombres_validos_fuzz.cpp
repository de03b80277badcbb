// Valid names and extensions, in both flavours where there are two, against the models; a repaired name is valid and
// stays as it is. Lines: how many characters a converter is to write, the name.
#include "paths/nombres_validos.hpp"

#include "arnes.hpp"
#include "cdir.h"

using namespace arnes;

namespace {

template <class C, class T, class Convierte>
void compara_conversion(Convierte convierte, const T& nombre, unsigned short longitud) {
    const justo<C> texto(nombre);
    const justo<C> bufer(T(longitud, C('#')));
    EXIGE_IGUAL(convierte(texto, bufer.datos(), longitud), longitud);
    const T resultado(bufer.datos(), longitud);
    EXIGE_IGUAL(resultado, modelos::convertido(nombre, longitud));
    EXIGE(bufer[longitud] == C(0));
    // Once more, in its place: nothing is left to convert.
    convierte(bufer, bufer.datos(), longitud);
    EXIGE_IGUAL(T(bufer.datos(), longitud), resultado);
}

texto_w repara(const texto_w& nombre) {
    const texto_w reparado = toma(cdir_dame_nombre_base_valido_UNICODE(justo<wchar_t>(nombre)));
    const justo<wchar_t> sin_fin(nombre, false);
    EXIGE(interno::i_nombre_base_reparado(sin_fin.ver()).ver() == interno::vista_w(reparado));
    return reparado;
}

void compara_reparacion(const texto_w& nombre) {
    const texto_w reparado = repara(nombre);
    EXIGE_IGUAL(reparado, modelos::reparado(nombre));
    const justo<wchar_t> bufer(reparado);
    EXIGE_IGUAL(cdir_nombre_base_valido_UNICODE(bufer.datos()), modelos::nombre_valido(reparado) ? 1 : 0);
    // The cut at 255 may leave a dot or a blank at the end; everything else is mended for good.
    const texto_w otra_vez = repara(reparado);
    if (reparado.size() < 255) {
        EXIGE_IGUAL(otra_vez, reparado);
    }
    EXIGE_IGUAL(repara(otra_vez), otra_vez);
}

void compara_extension(const texto_w& ext) {
    bool valida = true;
    for (const wchar_t c : ext) {
        valida = valida && modelos::caracter_valido(static_cast<unsigned short>(c));
    }
    const justo<wchar_t> texto(ext);
    EXIGE_IGUAL(cdir_extension_valida_UNICODE(texto), valida ? 1 : 0);
    const texto_w recortada = modelos::recortado(ext);
    EXIGE_IGUAL(toma(cdir_extension_con_dolar_UNICODE(texto)),
                recortada.empty()
                    ? texto_w(L".$")
                    : recortada.substr(0, recortada.size() - (recortada.size() >= 4 ? 1 : 0)) + L"$");
    std::vector<std::string> esperados;
    if (!recortada.empty() && recortada[0] != L'.') {
        esperados = {"ext_sin_espacios[0] == L'.'"};
    }
    EXIGE_IGUAL(informes(), esperados);
}

}  // namespace

void arnes::prueba(entrada& e) {
    const auto longitud = static_cast<unsigned short>(e.numero() % (e.es_larga() ? 65536 : 600));
    const texto_a bytes = e.bytes();
    const texto_w unidades = en_unidades(bytes);
    compara_conversion<wchar_t>(cdir_convierte_a_nombre_base_valido_UNICODE, unidades, longitud);
    compara_conversion<char>(cdir_convierte_a_nombre_base_valido, bytes, longitud);
    compara_reparacion(unidades);
    compara_extension(unidades);
    const texto_w ancha = modelos::a_w(bytes);
    EXIGE_IGUAL(cdir_extension_valida(justo<char>(bytes)),
                cdir_extension_valida_UNICODE(justo<wchar_t>(ancha)));
}
