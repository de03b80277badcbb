// Joins, relative and absolute paths and the directories of PATH, against the models. Lines: a directory or base,
// another directory or path, a name, a value of PATH.
#include "paths/rutas.hpp"

#include <cstdlib>

#include "arnes.hpp"
#include "cdir.h"
#include "lumodir.h"
#include "modelos/rutas.hpp"

using namespace arnes;
using modelos::dicho;

namespace {

void compara_dicho(const dicho& d) {
    EXIGE_IGUAL(avisos(), d.avisos);
    EXIGE_IGUAL(informes(), d.informes);
}

template <class C, class Une, class Construye>
void compara_uniones(Une une, Construye construye, const modelos::texto<C>& a, const modelos::texto<C>& b,
                     const modelos::texto<C>& nombre) {
    const justo<C> primero(a);
    const justo<C> segundo(b);
    const auto x = modelos::lee(a);
    const auto y = modelos::lee(b);
    EXIGE_IGUAL(toma(une(primero, segundo)), modelos::escribe(modelos::une(x, y)));
    EXIGE_IGUAL(toma(construye(primero, segundo, justo<C>(nombre))),
                modelos::escribe(modelos::construye(x, y, modelos::lee(nombre))));
}

void compara_conversiones(const texto_w& base, const texto_w& ruta) {
    const justo<wchar_t> base_justa(base);
    const justo<wchar_t> ruta_justa(ruta);
    dicho d;
    EXIGE_IGUAL(lumodir_ruta_es_absoluta(ruta_justa), modelos::es_absoluta(ruta, d) ? 1 : 0);
    compara_dicho(d);
    d = {};
    EXIGE_IGUAL(toma(lumodir_ruta_absoluta_a_relativa(base_justa, ruta_justa)),
                modelos::relativa(base, ruta, d));
    compara_dicho(d);
    d = {};
    const texto_w absoluta = modelos::absoluta(base, ruta, d);
    EXIGE_IGUAL(toma(lumodir_ruta_relativa_a_absoluta(base_justa, ruta_justa)), absoluta);
    compara_dicho(d);
    // There and back: a relative path that was put on its base is found again below it.
    d = {};
    if (!modelos::blanco(base) && !modelos::blanco(ruta) && !modelos::es_absoluta(ruta, d) &&
        ruta.substr(0, 2) != L".\\" && !modelos::blanco(modelos::corta_comprobado(base, d).unidad)) {
        const justo<wchar_t> absoluta_justa(absoluta);
        const texto_w vuelta = toma(lumodir_ruta_absoluta_a_relativa(base_justa, absoluta_justa));
        avisos();
        informes();
        d = {};
        if (!modelos::blanco(modelos::corta_comprobado(absoluta, d).unidad)) {
            EXIGE_IGUAL(vuelta, ruta);
        }
    }
}

void compara_path(const texto_a& valor) {
    ::setenv("PATH", valor.c_str(), 1);
    ArrCADENA_u* lista = lumodir_directorios_del_path();
    std::vector<texto_w> dados;
    for (unsigned long i = 0; i < arr_NumElemsCADENA_u(lista); ++i) {
        dados.emplace_back(arr_GetCADENA_u(lista, i));
    }
    arr_DestruyeCADENA_u(&lista);
    EXIGE_IGUAL(dados, modelos::directorios_del_path(modelos::a_w(valor)));
}

}  // namespace

void arnes::prueba(entrada& e) {
    const texto_a a = e.bytes();
    const texto_a b = e.bytes();
    const texto_a nombre = e.bytes();
    compara_uniones<char>(cdir_concatena_directorios, cdir_construye_path, a, b, nombre);
    compara_uniones<wchar_t>(cdir_concatena_directorios_UNICODE, cdir_construye_path_UNICODE, en_unidades(a),
                             en_unidades(b), en_unidades(nombre));
    compara_conversiones(en_unidades(a), en_unidades(b));
    compara_path(e.bytes());
}
