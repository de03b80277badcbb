// See recorrido.hpp.
#include "listings/recorrido.hpp"

#include "companions/ordena.hpp"
#include "listings/dirwin.hpp"

namespace interno {
namespace {

// A link with a separator after it is followed by some systems. Only the root of a drive or of a volume keeps its own.
vista_w i_nombre_de_raiz(vista_w ruta) noexcept {
    const vista_w resto = i_sin_separadores_finales(ruta);
    const bool es_volumen = i_lleva_prefijo(resto) && resto.find_last_of(L"\\/") == 3;
    return resto.empty() || resto.back() == L':' || es_volumen ? ruta : resto;
}

}  // namespace

void entradas_guardadas::guarda(const entrada_leida& entrada) {
    const std::size_t principio = nombres_.size();
    nombres_.anade_varios(entrada.nombre.data(), entrada.nombre.size());
    nombres_.anade(L'\0');
    filas_.anade({principio, entrada.nombre.size(), entrada.atributos, entrada.reanalisis, entrada.numero,
                  entrada.numero_abierto});
}

entrada_leida entradas_guardadas::operator[](std::size_t i) const noexcept {
    const fila& f = filas_[i];
    return {i_nombre(f), f.atributos, f.reanalisis, f.numero, {}, f.numero_abierto};
}

void entradas_guardadas::ordena(comparacion compara) {
    ordena_estable(filas_.data(), filas_.size(),
                   [&](const fila& a, const fila& b) { return compara(i_nombre(a), i_nombre(b)); });
}

raiz_de_recorrido::raiz_de_recorrido(const wchar_t* dada)
    : dada_(dada),
      sin_separadores_(dada_.empty() ? vista_w(L".") : i_nombre_de_raiz(dada_)),
      ruta_(sin_separadores_.c_str()) {}

recorrido::~recorrido() {
    while (!niveles_.empty()) {
        sale();
    }
}

llegada recorrido::sale() noexcept {
    const objeto<nivel> ultimo(niveles_.back());
    niveles_.quita_ultimo();
    return ultimo->como;
}

llegada recorrido::i_mete(objeto<nivel> nuevo, const lector_de_directorio& lector, bool leido_algo) {
    const bool entero = lector.codigo() == ERROR_NO_MORE_FILES;
    if (!entero && !leido_algo) {
        codigo_ = lector.codigo();
        return llegada::cerrado;
    }
    if (!entero) {
        i_informa_de_final(lector.codigo(), lector.ultimo_nombre());
    }
    nuevo->hijos.ordena(orden_.compara);
    nuevo->como = entero ? llegada::leido : llegada::a_medias;
    const llegada como = nuevo->como;
    niveles_.anade(nuevo.suelta());
    return como;
}

cadena_w recorrido::ruta(vista_w nombre) const {
    return i_ruta_bajo(raiz_.dada(), niveles_.size() - (nombre.empty() ? 1 : 0), [&](std::size_t i) {
        return i + 1 < niveles_.size() ? niveles_[i + 1]->nombre : nombre;
    });
}

bool recorrido::protege_raiz(int modo) {
    return niveles_[0]->directorio.protege_raiz(raiz_.ruta(), modo) == ERROR_SUCCESS;
}

DWORD recorrido::borra_raiz() {
    directorio_abierto& raiz = niveles_[0]->directorio;
    raiz.cierra();
    return raiz.borra_raiz(raiz_.ruta());
}

}  // namespace interno
