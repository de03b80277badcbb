// Abbreviated paths against the model, reports and warnings included. Lines: the maximum, the path.
#include "arnes.hpp"
#include "cdir.h"
#include "modelos/abreviada.hpp"

using namespace arnes;

void arnes::prueba(entrada& e) {
    const auto maximo = static_cast<unsigned short>(e.numero());
    const texto_w ruta = e.unidades();
    const justo<wchar_t> texto(ruta);

    modelos::dicho d;
    std::vector<std::string> de_acortar;
    const texto_w esperada = modelos::abreviada(
        ruta, maximo, [&] { return modelos::corta_comprobado(ruta, d); }, de_acortar);
    d.informes.insert(d.informes.end(), de_acortar.begin(), de_acortar.end());
    const texto_w dada = toma(cdir_ruta_abreviada_con_logitud_maxima_u(texto, maximo));
    EXIGE_IGUAL(dada, esperada);
    EXIGE_IGUAL(avisos(), d.avisos);
    EXIGE_IGUAL(informes(), d.informes);

    const texto_w limpia = modelos::recortado(ruta);
    const modelos::juicio j = modelos::juzga(limpia);
    const modelos::corte<texto_w> c = modelos::corta_modelo(limpia, j.es_unc);
    EXIGE(modelos::recortado(dada).ends_with(c.p.nombre + c.p.extension));  // no name is ever cut
    std::vector<std::string> esperados = c.informes;
    std::vector<std::string> mostrados;
    if (j.motivo != 0) {
        esperados.insert(esperados.begin(), "pathCorrecto == CIERTO");
        if (j.motivo != 53949) {
            mostrados = {modelos::texto_en_ingles(j.motivo, apoyo::u8(interno::vista_w(j.argumento)))};
        }
    }
    EXIGE_IGUAL(toma(cdir_nombre_fichero_abreviado_UNICODE(texto)), modelos::forma_fija(c.p));
    EXIGE_IGUAL(informes(), esperados);
    EXIGE_IGUAL(avisos(), mostrados);
}
