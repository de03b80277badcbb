// What a subcommand answers: made once, and told in words or as JSON.
//
// Promises: with --json one value on standard output, whatever a person would have been shown; a row that failed is a
// row too, with its "error".
// Checked by tests/cli.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "json.hpp"
#include "ordenes.hpp"
#include "tabla.hpp"
#include "textos.hpp"

namespace mando {

// Writes an answer for scripts.
void escribe_json(const json& que);

// A complaint to the person, on standard error.
void di_queja(std::wstring_view texto, estilo como = estilo::malo);

// An answer of one piece.
int responde(const peticion& p, const json& para_guiones, const std::function<void()>& en_palabras,
             int codigo = hecho);
// A text, under its key for scripts.
int responde(const peticion& p, std::string_view clave, const std::wstring& texto, int codigo = hecho);

// Pieces that are told one by one, as they come; a list for scripts.
class respuesta_por_piezas {
public:
    explicit respuesta_por_piezas(const peticion& p) : en_json_(p.en_json) {}
    void pieza(json para_guiones, const std::function<void()>& en_palabras);
    // The same where the JSON takes time to make, or makes the library complain a second time.
    void pieza(const std::function<json()>& para_guiones, const std::function<void()>& en_palabras);
    // The end of it, with what a person is told last.
    int acaba(
        bool bien, const std::function<void()>& al_final = [] {});
    // The list, where it is a part of the answer instead.
    json toma_lista() { return std::move(lista_); }

private:
    bool en_json_;
    json lista_ = json::lista();
};

// One thing that is told: its value for scripts, its text for people.
struct valor {
    json para_guiones;
    celda para_personas;

    valor(std::wstring_view texto) : para_guiones(texto), para_personas(std::wstring(texto)) {}
    valor(const std::wstring& texto) : valor(std::wstring_view(texto)) {}
    valor(std::wstring&& texto) : valor(std::wstring_view(texto)) {}
    valor(const wchar_t* texto) : valor(std::wstring_view(texto)) {}
    valor(frase una) : para_guiones(una.ingles()), para_personas(di(una)) {}
    valor(bool si) : para_guiones(si), para_personas(di(si ? frase("yes") : frase("no"))) {}
    valor(unsigned long long cuantos) : para_guiones(cuantos), para_personas(con_miles(cuantos)) {}
    valor(json guiones, celda personas)
        : para_guiones(std::move(guiones)), para_personas(std::move(personas)) {}
};

// What the values in one place of every row are: under which key scripts find them, under which heading people do.
struct campo {
    std::string_view clave = {};  // empty: not for scripts
    columna como = {};            // without a heading: not for people
    bool nombra = false;          // what the row is about: first for scripts
};

// Rows of one shape: a table or a record for people, a list or an object for scripts.
class respuesta {
public:
    respuesta(const peticion& p, std::vector<campo> campos)
        : en_json_(p.en_json), campos_(std::move(campos)) {}

    void fila(std::vector<valor> valores) { filas_.push_back(std::move(valores)); }
    // A row of which nothing is known but its name: people are told at once.
    void falla(const std::wstring& nombre, const std::wstring& por_que);
    // A last row, for people only.
    void total(std::vector<celda> celdas) { total_ = std::move(celdas); }
    bool vacia() const { return filas_.empty() && fallidas_.empty(); }

    json como_lista() const;
    void pinta() const;        // the table, if there is a row
    void di_lista() const;     // either of them
    void di_ficha() const;     // the only row, as an object or as a record
    void pinta_ficha() const;  // the only row

private:
    json i_objeto(const std::vector<valor>& valores) const;

    bool en_json_;
    std::vector<campo> campos_;
    std::vector<std::vector<valor>> filas_;
    // By how many good rows came before.
    std::vector<std::pair<size_t, json>> fallidas_;
    std::vector<celda> total_;
};

}  // namespace mando
