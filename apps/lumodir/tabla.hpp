// Tables aligned by display width, and names in columns.
//
// Promises: columns line up whatever the script of the cells; on a terminal the elastic column is abbreviated
// so that no line wraps, while elsewhere every cell is written whole.
// Checked by tests/cli.
#pragma once

#include <string>
#include <vector>

#include "consola.hpp"
#include "frases.hpp"

namespace mando {

enum class corte { como_ruta, al_final };

struct columna {
    frase titulo = {};
    bool a_la_derecha = false;
    bool elastica = false;           // the one that gives way on a narrow terminal
    corte corta = corte::como_ruta;  // how
};

struct celda {
    std::wstring texto;
    estilo como = estilo::normal;
    celda(std::wstring que, estilo de_que_modo = estilo::normal) : texto(std::move(que)), como(de_que_modo) {}
};

class tabla {
public:
    explicit tabla(std::vector<columna> columnas) : columnas_(std::move(columnas)) {}
    void fila(std::vector<celda> celdas) { filas_.push_back(std::move(celdas)); }
    bool vacia() const { return filas_.empty(); }
    void pinta(corriente& donde) const;

private:
    std::vector<columna> columnas_;
    std::vector<std::vector<celda>> filas_;
};

// Pairs of a label and a text, aligned.
struct dato {
    frase nombre;
    celda valor;
};
using ficha = std::vector<dato>;
void pinta_ficha(corriente& donde, const ficha& datos);

// On a terminal as many columns as fit, downwards; elsewhere a name a line.
void pinta_en_columnas(corriente& donde, const std::vector<celda>& nombres);

}  // namespace mando
