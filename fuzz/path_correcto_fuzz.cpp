// The path checker: every entry that judges a path or a name, in both flavours, against the model. One line: the text.
#include "paths/path_correcto.hpp"

#include "arnes.hpp"
#include "cdir.h"

using namespace arnes;
using modelos::juicio;
using modelos::juzga;

namespace {

void compara_mensaje(unsigned short correcto, wchar_t* mensaje, const juicio& j) {
    EXIGE_IGUAL(correcto, j.motivo == 0 ? 1 : 0);
    if (j.motivo == 0) {
        EXIGE(mensaje == nullptr);
        return;
    }
    EXIGE_IGUAL(apoyo::u8(interno::vista_w(toma(mensaje))),
                modelos::texto_en_ingles(j.motivo, apoyo::u8(interno::vista_w(j.argumento))));
}

// What is shown to the user of a failure: everything but a bad component.
void compara_mostrado(const juicio& j) {
    std::vector<std::string> esperados;
    if (j.motivo != 0 && j.motivo != 53949) {
        esperados = {modelos::texto_en_ingles(j.motivo, apoyo::u8(interno::vista_w(j.argumento)))};
    }
    EXIGE_IGUAL(avisos(), esperados);
}

void compara_ancha(const texto_w& path) {
    const justo<wchar_t> sin_fin(path, false);
    const justo<wchar_t> texto(path);
    const juicio entero = juzga(path);
    const interno::veredicto juicio_entero = interno::i_path_correcto_UNICODE(sin_fin.ver());
    wchar_t* mensaje = juicio_entero.motivo == nullptr
                           ? nullptr
                           : interno::i_texto_del_fallo(juicio_entero, sin_fin.ver()).suelta();
    compara_mensaje(juicio_entero.correcto ? 1 : 0, mensaje, entero);
    EXIGE(juicio_entero.es_unc == entero.es_unc);
    const interno::veredicto o_vacio = interno::i_path_correcto_UNICODE(sin_fin.ver(), true);
    EXIGE(o_vacio.correcto == (juzga(path, true).motivo == 0));
    interno::i_muestra_fallo(o_vacio, sin_fin.ver());
    compara_mostrado(juzga(path, true));

    const juicio recortado = juzga(modelos::recortado(path));
    mensaje = nullptr;
    EXIGE_IGUAL(cdir_path_valido_UNICODE(texto, 1), recortado.motivo == 0 ? 1 : 0);
    compara_mostrado(recortado);
    const unsigned short valido = cdir_es_path_valido_UNICODE(texto, &mensaje);
    compara_mensaje(valido, mensaje, recortado);

    const juicio con_comodines = juzga(modelos::sin_comodines(path));
    const interno::veredicto comodines = interno::i_path_correcto_con_comodines_UNICODE(sin_fin.ver());
    EXIGE(comodines.correcto == (con_comodines.motivo == 0));
    EXIGE(comodines.es_unc == con_comodines.es_unc);
    EXIGE(texto.ver() == interno::vista_w(path));  // none of them writes to its argument
}

// The two that trim what they are given.
void compara_nombres(const texto_w& nombre) {
    const bool de_puntos = nombre == L"." || nombre == L"..";
    const bool acaba_en_punto = !nombre.empty() && nombre.back() == L'.';
    const justo<wchar_t> uno(nombre);
    EXIGE_IGUAL(cdir_nombre_base_valido_UNICODE(uno.datos()),
                de_puntos || modelos::nombre_valido(nombre) ? 1 : 0);
    EXIGE_IGUAL(texto_w(uno.datos()), modelos::recortado(nombre));
    const justo<wchar_t> otro(nombre);
    EXIGE_IGUAL(cdir_nombre_fichero_valido(otro.datos()),
                !acaba_en_punto && modelos::nombre_valido(nombre) ? 1 : 0);
    EXIGE_IGUAL(texto_w(otro.datos()), modelos::recortado(nombre));
}

void compara_de_8_bits(const texto_a& path) {
    const texto_w ancho = modelos::a_w(path);
    const justo<char> sin_fin(path, false);
    const justo<char> texto(path);
    const juicio entero = juzga(ancho);
    const interno::veredicto juicio_entero = interno::i_path_correcto(sin_fin.ver());
    EXIGE(juicio_entero.correcto == (entero.motivo == 0));
    EXIGE(juicio_entero.es_unc == entero.es_unc);
    interno::i_muestra_fallo(juicio_entero, sin_fin.ver());
    compara_mostrado(entero);
    EXIGE_IGUAL(cdir_path_valido(texto, 0), juzga(modelos::recortado(ancho)).motivo == 0 ? 1 : 0);
    const juicio con_comodines = juzga(modelos::sin_comodines(ancho));
    const interno::veredicto comodines = interno::i_path_correcto_con_comodines(sin_fin.ver());
    EXIGE(comodines.correcto == (con_comodines.motivo == 0));
    EXIGE(comodines.es_unc == con_comodines.es_unc);
    EXIGE_IGUAL(cdir_nombre_base_valido(texto),
                ancho == L"." || ancho == L".." || modelos::nombre_valido(ancho) ? 1 : 0);
    EXIGE(texto.ver() == interno::vista_a(path));
}

}  // namespace

void arnes::prueba(entrada& e) {
    const texto_a bytes = e.bytes();
    const texto_w unidades = en_unidades(bytes);
    compara_ancha(unidades);
    compara_nombres(unidades);
    compara_de_8_bits(bytes);
}
