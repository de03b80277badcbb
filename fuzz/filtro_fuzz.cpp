// The filters of listings against the models, in both flavours: the enumerator's own, the extension that a list asks
// for, a list of extensions. Lines: a name, a filter, another extension.
#include "listings/filtro.hpp"

#include "arnes.hpp"
#include "listings/filtro_extension.hpp"
#include "modelos/filtro.hpp"

using namespace arnes;
using interno::filtro_extension;
using interno::vista_a;
using interno::vista_w;

namespace {

template <class C, class T>
void compara_filtro(const T& nombre, const T& filtro) {
    const justo<C> nombre_justo(nombre, false);
    const justo<C> filtro_justo(filtro, false);
    const bool ancha = sizeof(C) > 1;
    EXIGE_IGUAL(interno::i_cumple_filtro<C>(nombre_justo.ver(), filtro_justo.ver()) ? 1 : 0,
                modelos::cumple_filtro(modelos::lee(nombre), modelos::lee(filtro), ancha) ? 1 : 0);
    // A name that passes the filter of its own letters: nothing in it is a wildcard.
    const bool llano = nombre.find(C('*')) == T::npos && nombre.find(C('?')) == T::npos;
    if (llano) {
        EXIGE(interno::i_cumple_filtro<C>(nombre_justo.ver(), nombre_justo.ver()));
    }
    // What passes passes still when a character of the filter becomes "?".
    if (!filtro.empty() && filtro[0] != C('*') && filtro[0] != C('.') &&
        interno::i_cumple_filtro<C>(nombre_justo.ver(), filtro_justo.ver())) {
        auto caracteres = modelos::lee(filtro);
        caracteres[0] = '?';
        const T mas_ancho = modelos::escribe(caracteres);
        EXIGE(interno::i_cumple_filtro<C>(nombre_justo.ver(), interno::vista<C>(mas_ancho)));
    }
}

void compara_extension(const texto_w& nombre, const texto_w& extension) {
    const modelos::admision esperada = modelos::admite_extension(nombre, extension);
    const justo<wchar_t> nombre_justo(nombre, false);
    const justo<wchar_t> extension_justa(extension, false);
    EXIGE_IGUAL(filtro_extension(extension_justa.ver()).admite(nombre_justo.ver()) ? 1 : 0,
                esperada.admite ? 1 : 0);
    EXIGE_IGUAL(informes(),
                std::vector<std::string>(esperada.informa ? 1 : 0, "widestr_longitud(extFich) > 1"));
    EXIGE(filtro_extension(vista_w()).admite(nombre_justo.ver()));
}

void compara_extension_de_8_bits(const texto_a& nombre, const texto_w& extension) {
    const modelos::admision esperada = modelos::admite_extension(modelos::a_w(nombre), extension);
    const justo<char> con_fin(nombre);
    EXIGE_IGUAL(filtro_extension(vista_w(extension)).admite(con_fin.ver()) ? 1 : 0, esperada.admite ? 1 : 0);
    EXIGE_IGUAL(informes(),
                std::vector<std::string>(esperada.informa ? 1 : 0, "widestr_longitud(extFich) > 1"));
}

void compara_lista(const texto_w& nombre, const std::vector<texto_w>& extensiones) {
    interno::objeto<ArrCADENA_u> lista = interno::objeto<ArrCADENA_u>::crea();
    for (const texto_w& extension : extensiones) {
        lista->anade(interno::cadena_w(vista_w(extension)));
    }
    const justo<wchar_t> justa(nombre, false);
    EXIGE_IGUAL(interno::i_tiene_extension_de_la_lista(justa.ver(), *lista) ? 1 : 0,
                modelos::esta_en_la_lista(nombre, extensiones) ? 1 : 0);
}

}  // namespace

void arnes::prueba(entrada& e) {
    const texto_a nombre = e.bytes();
    const texto_a filtro = e.bytes();
    const texto_w nombre_w = en_unidades(nombre);
    const texto_w filtro_w = en_unidades(filtro);
    compara_filtro<char>(nombre, filtro);
    compara_filtro<wchar_t>(nombre_w, filtro_w);
    compara_extension(nombre_w, filtro_w);
    compara_extension_de_8_bits(nombre, filtro_w);
    compara_lista(nombre_w, {filtro_w, e.unidades()});
}
