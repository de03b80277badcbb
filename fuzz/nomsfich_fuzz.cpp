// File-name records against the models: parts, reports, order and equality; the whole name gives the same record
// again. 8-bit alone. Lines: a name, a base name, an extension.
#include "paths/nomsfich.hpp"

#include "arnes.hpp"
#include "modelos/nomsfich.hpp"

using namespace arnes;
using modelos::informes_de;
using modelos::minusculas;
using modelos::partes;
using modelos::recortado;

namespace {

// A record as a host has it, against what it should hold; destroyed at the end.
class registro_visto {
public:
    registro_visto(Nomsfich* registro, const partes& esperadas) : registro_(registro), partes_(esperadas) {
        EXIGE(registro != nullptr);
        EXIGE_IGUAL(texto_a(nomsfich_nombre_base_fichero(registro)), esperadas.base);
        EXIGE_IGUAL(texto_a(nomsfich_extension_fichero(registro)), esperadas.extension);
        EXIGE_IGUAL(toma(nomsfich_nombre_fichero(registro)), entero());
        EXIGE_IGUAL(informes(), informes_de(esperadas));
    }
    registro_visto(const registro_visto&) = delete;
    registro_visto& operator=(const registro_visto&) = delete;
    ~registro_visto() {
        nomsfich_destruye(&registro_);
        EXIGE(registro_ == nullptr);
    }
    const Nomsfich* get() const { return registro_; }
    const partes& esperadas() const { return partes_; }
    texto_a entero() const {
        return partes_.base + (partes_.extension.empty() ? "" : ".") + partes_.extension;
    }

private:
    Nomsfich* registro_;
    partes partes_;
};

void compara_orden(const registro_visto& x, const registro_visto& y) {
    const int esperado = modelos::orden(x.esperadas(), y.esperadas());
    EXIGE_IGUAL(modelos::signo(nomsfich_compara(x.get(), y.get())), esperado);
    EXIGE_IGUAL(modelos::signo(nomsfich_compara(y.get(), x.get())), -esperado);
    EXIGE_IGUAL(nomsfich_iguales(x.get(), y.get()), esperado == 0 ? 1 : 0);
}

void compara_textos(const texto_a& a, const texto_a& b) {
    const justo<char> uno(a);
    const justo<char> otro(b);
    std::vector<std::string> esperados = informes_de({"x", a});
    const std::vector<std::string> del_otro = informes_de({"x", b});
    esperados.insert(esperados.end(), del_otro.begin(), del_otro.end());
    EXIGE_IGUAL(nomsfich_misma_extension(uno, otro), a == b ? 1 : 0);
    EXIGE_IGUAL(informes(), esperados);
    esperados = informes_de({a, ""});
    const std::vector<std::string> de_la_base = informes_de({b, ""});
    esperados.insert(esperados.end(), de_la_base.begin(), de_la_base.end());
    EXIGE_IGUAL(nomsfich_mismo_nombre_base(uno, otro), a == b ? 1 : 0);
    EXIGE_IGUAL(informes(), esperados);
}

}  // namespace

void arnes::prueba(entrada& e) {
    const texto_a nombre = e.bytes();
    const texto_a base = e.bytes();
    const texto_a extension = e.bytes();
    const registro_visto uno(nomsfich_crea(justo<char>(nombre)), modelos::crea_nomsfich(nombre));
    const registro_visto copia(nomsfich_copia(uno.get()), uno.esperadas());
    const registro_visto otro(
        nomsfich_crea_por_nombre_base_y_extension(justo<char>(base), justo<char>(extension)),
        {minusculas(recortado(base)), minusculas(recortado(extension))});
    const registro_visto cambiado(nomsfich_cambia_extension(uno.get(), justo<char>(extension)),
                                  {uno.esperadas().base, otro.esperadas().extension});
    EXIGE_IGUAL(texto_a(nomsfich_extension_fichero(uno.get())), uno.esperadas().extension);
    for (const registro_visto* x : {&uno, &copia, &otro, &cambiado}) {
        compara_orden(*x, uno);
        compara_orden(*x, otro);
    }
    // The whole name gives the same record again, unless a dot in it is only in the base name, or a first byte that
    // makes no character with the next one makes one with its lower-case letter, which has another in its turn.
    if (const texto_a entero = uno.entero(); !uno.esperadas().extension.empty()) {
        const registro_visto otra_vez(nomsfich_crea(justo<char>(entero)), modelos::crea_nomsfich(entero));
        EXIGE((nomsfich_compara(uno.get(), otra_vez.get()) == 0) == (minusculas(entero) == entero));
    }
    compara_textos(base, extension);
    compara_textos(base, base);

    const texto_a de_path = modelos::escribe(modelos::corta_como_el_crt(modelos::lee(nombre)).nombre);
    EXIGE_IGUAL(toma(nomsfich_nombre_base_path_completo(justo<char>(nombre))), minusculas(de_path));
    EXIGE_IGUAL(informes(), informes_de({"x", de_path}));
}
