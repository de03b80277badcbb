// See ruta_abreviada.hpp.
#include "paths/ruta_abreviada.hpp"

#include <utility>

#include "companions/error_interno.hpp"
#include "paths/path_correcto.hpp"
#include "paths/split_makepath.hpp"

namespace interno {
namespace {

constexpr vista_w puntos = L"...";
constexpr vista_w directorio_fijo = L"\\...\\";  // what stands for the whole directory in the fixed form

cadena_w i_forma_fija(const division<wchar_t>& piezas) {
    return concatena<wchar_t>({piezas.unidad, directorio_fijo, piezas.nombre, piezas.extension});
}

// Cuts a directory into components: at "\" as long as there is one ahead, then at "/". An empty component
// ends it, and what comes after a doubled separator is lost with it.
class cortador {
public:
    explicit cortador(vista_w directorio) noexcept
        : directorio_(directorio), ultima_barra_(directorio.rfind(L'\\')) {}

    // The next component; an empty one is the end.
    vista_w siguiente() noexcept {
        if (posicion_ < directorio_.size() && es_separador(directorio_[posicion_])) {
            ++posicion_;
        }
        const bool queda_barra = ultima_barra_ != vista_w::npos && posicion_ <= ultima_barra_;
        const std::size_t fin = directorio_.find(queda_barra ? L'\\' : L'/', posicion_);
        const vista_w componente = directorio_.substr(posicion_, fin - posicion_);
        posicion_ += componente.size();
        return componente;
    }

private:
    vista_w directorio_;
    std::size_t ultima_barra_;
    std::size_t posicion_ = 0;
};

// A directory put together component by component, each with its "\".
class directorio_compuesto {
public:
    explicit directorio_compuesto(std::size_t sitio) : texto_(cadena_w::con_sitio(sitio)) {
        *texto_.datos() = L'\\';
    }

    void anade(vista_w componente) noexcept {
        rasgos_utf16::copy(texto_.datos() + longitud_, componente.data(), componente.size());
        longitud_ += componente.size();
        texto_.datos()[longitud_++] = L'\\';
    }
    cadena_w acaba() noexcept {
        texto_.acorta(longitud_);
        return std::move(texto_);
    }

private:
    cadena_w texto_;
    std::size_t longitud_ = 1;
};

// The components never take more than the directory and a separator; "...\" may come on top.
std::size_t i_sitio_para(vista_w directorio) noexcept {
    return directorio.size() + 2 + puntos.size() + 1;
}

cadena_w i_con_un_componente_elidido(vista_w directorio, vista_w elidido) {
    directorio_compuesto texto(i_sitio_para(directorio));
    cortador corta(directorio);
    for (vista_w c = corta.siguiente(); !c.empty(); c = corta.siguiente()) {
        texto.anade(c.data() == elidido.data() ? puntos : c);
    }
    return texto.acaba();
}

// The components that fit a head and a tail of `tamanyo` units, "..." for those between them; or all of them
// but one, when that one alone is long enough to save `ahorro` units.
cadena_w i_elige_componentes(vista_w directorio, std::size_t tamanyo, std::size_t ahorro) {
    const std::size_t a_repartir = tamanyo > puntos.size() ? tamanyo - puntos.size() : 0;
    const std::size_t cabeza = a_repartir / 2;
    const std::size_t principio_cola = directorio.size() - (a_repartir - cabeza);
    directorio_compuesto texto(i_sitio_para(directorio));
    bool elidido = false;
    std::size_t posicion = 1;  // after the leading separator
    cortador corta(directorio);
    for (vista_w c = corta.siguiente(); !c.empty(); c = corta.siguiente()) {
        if (posicion + c.size() + 1 <= cabeza) {
            texto.anade(c);
        } else if (c.size() >= ahorro + puntos.size()) {
            return i_con_un_componente_elidido(directorio, c);
        } else if (!elidido) {
            texto.anade(puntos);
            elidido = true;
        } else if (posicion > principio_cola) {
            texto.anade(c);
        }
        posicion += c.size() + 1;
    }
    if (!elidido) {
        texto.anade(puntos);
    }
    return texto.acaba();
}

// `ahorro` units are to be saved, fewer than the directory has.
cadena_w i_directorio_abreviado(vista_w directorio, std::size_t ahorro) {
    const std::size_t tamanyo = directorio.size() - ahorro;
    i_comprueba(tamanyo > directorio_fijo.size(), "tam_dir_abreviado > 5");
    i_comprueba(tamanyo < directorio.size(), "tam_dir_abreviado < tam_dir_completo");
    cadena_w abreviado = i_elige_componentes(directorio, tamanyo, ahorro);
    i_comprueba(abreviado.size() <= tamanyo, "widestr_longitud(dir_abreviado) <= tam_dir_abreviado");
    return abreviado;
}

}  // namespace

cadena_w i_ruta_abreviada(vista_w ruta, std::size_t maximo) noexcept {
    if (ruta.size() <= maximo) {
        return cadena_w(ruta);
    }
    const division<wchar_t> piezas(i_comprueba_fichero(ruta));
    const std::size_t corta =
        piezas.unidad.size() + piezas.nombre.size() + directorio_fijo.size() + piezas.extension.size();
    if (corta >= maximo) {
        return i_forma_fija(piezas);
    }
    if (piezas.directorio.size() <= directorio_fijo.size()) {
        return cadena_w(ruta);
    }
    const std::size_t ahorro = ruta.size() - maximo;
    if (piezas.directorio.size() <= ahorro) {
        return i_forma_fija(piezas);
    }
    const cadena_w directorio = i_directorio_abreviado(piezas.directorio, ahorro);
    return concatena<wchar_t>({piezas.unidad, directorio, piezas.nombre, piezas.extension});
}

cadena_w i_nombre_fichero_abreviado(vista_w nombre) noexcept {
    const vista_w recortado = recorta_derecha(nombre);
    const veredicto juicio = i_path_correcto_UNICODE(recortado);
    i_muestra_fallo(juicio, recortado);
    i_comprueba_con(juicio.correcto, "pathCorrecto == CIERTO", recortado);
    return i_forma_fija(division<wchar_t>(recortado, juicio.es_unc));
}

}  // namespace interno
