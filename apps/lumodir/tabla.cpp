#include "tabla.hpp"

#include <algorithm>
#include <numeric>

#include "textos.hpp"

namespace mando {

namespace {

constexpr size_t separacion = 2;

}  // namespace

void tabla::pinta(corriente& donde) const {
    std::vector<size_t> anchuras;
    for (size_t i = 0; i < columnas_.size(); ++i) {
        size_t ancho = columnas_de(di(columnas_[i].titulo));
        for (const auto& fila : filas_) {
            ancho = std::max(ancho, columnas_de(a_la_vista(fila[i].texto)));
        }
        anchuras.push_back(ancho);
    }
    const size_t total =
        std::accumulate(anchuras.begin(), anchuras.end(), separacion * (anchuras.size() - 1));
    for (size_t i = 0; donde.es_consola() && i < columnas_.size(); ++i) {
        const size_t sobra = total + 1 > donde.columnas() ? total + 1 - donde.columnas() : 0;
        if (columnas_[i].elastica && anchuras[i] > sobra + 10) {
            anchuras[i] -= sobra;
        }
    }
    const auto pinta_fila = [&](auto&& celda_de) {
        for (size_t i = 0; i < columnas_.size(); ++i) {
            celda c = celda_de(i);
            c.texto = a_la_vista(c.texto);
            const std::wstring texto = columnas_de(c.texto) <= anchuras[i] ? c.texto
                                       : columnas_[i].corta == corte::al_final
                                           ? cortado(c.texto, anchuras[i])
                                           : abreviado(c.texto, anchuras[i]);
            const bool ultima = i + 1 == columnas_.size();
            donde.escribe(columnas_[i].a_la_derecha ? a_la_derecha(texto, anchuras[i])
                          : ultima                  ? texto
                                                    : a_la_izquierda(texto, anchuras[i]),
                          c.como);
            donde.escribe(ultima ? L"\n" : L"  ");
        }
    };
    pinta_fila([&](size_t i) { return celda(di(columnas_[i].titulo), estilo::titulo); });
    for (const auto& fila : filas_) {
        pinta_fila([&](size_t i) { return fila[i]; });
    }
}

void pinta_ficha(corriente& donde, const ficha& datos) {
    size_t ancho = 0;
    for (const dato& d : datos) {
        ancho = std::max(ancho, columnas_de(di(d.nombre)) + separacion);
    }
    for (const dato& d : datos) {
        donde.escribe(a_la_izquierda(di(d.nombre), ancho), estilo::titulo)
            .linea(a_la_vista(d.valor.texto), d.valor.como);
    }
}

void pinta_en_columnas(corriente& donde, const std::vector<celda>& tal_cual) {
    // Whoever reads a pipe wants the names as they are.
    std::vector<celda> nombres = tal_cual;
    for (celda& nombre : nombres) {
        nombre.texto = donde.es_consola() ? a_la_vista(nombre.texto) : nombre.texto;
    }
    size_t ancho = 1;
    for (const celda& nombre : nombres) {
        ancho = std::max(ancho, columnas_de(nombre.texto));
    }
    const size_t por_linea =
        donde.es_consola() ? std::max<size_t>(1, donde.columnas() / (ancho + separacion)) : 1;
    const size_t lineas = (nombres.size() + por_linea - 1) / por_linea;
    for (size_t y = 0; y < lineas; ++y) {
        for (size_t i = y; i < nombres.size(); i += lineas) {
            const bool ultimo = i + lineas >= nombres.size();
            donde.escribe(ultimo ? nombres[i].texto : a_la_izquierda(nombres[i].texto, ancho + separacion),
                          nombres[i].como);
        }
        donde.linea();
    }
}

}  // namespace mando
