// What the command writes and reads: UTF-16 on a console, UTF-8 in a file or a pipe; colours, the progress line and
// questions only where a person is looking.
//
// Promises: a file or a pipe gets the text alone (no colour, no progress line). Control characters never reach a console,
// where they could move the cursor: they are drawn as symbols, and characters that change the writing direction are
// spelled out. What was written to standard output appears before what is written to standard error after it.
// Cannot promise: aligned columns in a font that disagrees about the width of a character.
// Checked by tests/cli.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mando {

enum class estilo { normal, titulo, bueno, malo, aviso, tenue };

class corriente {
public:
    explicit corriente(unsigned long cual);  // STD_OUTPUT_HANDLE or STD_ERROR_HANDLE
    ~corriente() { vacia(); }
    corriente(const corriente&) = delete;
    corriente& operator=(const corriente&) = delete;

    bool es_consola() const { return consola_; }
    // Columns of the console; 80 for anything else.
    size_t columnas() const;

    corriente& escribe(std::wstring_view texto, estilo como = estilo::normal);
    corriente& escribe(std::string_view ascii, estilo como = estilo::normal);
    corriente& linea(std::wstring_view texto = {}, estilo como = estilo::normal);
    corriente& linea(std::string_view ascii, estilo como = estilo::normal);
    void vacia();
    // Before the program ends: writes what is left, and leaves the terminal in its own colours.
    void cierra();

    // The system's error where something could not be written, from which on nothing is written any more; 0 if none.
    unsigned long error() const { return error_; }

    // Writes as it is, control characters included: for the progress line.
    void mueve(std::wstring_view texto);

private:
    void i_entrega(std::wstring_view texto);
    unsigned long i_escribe_bytes(std::string_view bytes) const;
    unsigned long i_escribe_en_consola(std::wstring_view texto) const;

    void* asa_;
    unsigned long error_ = 0;
    bool consola_;
    bool con_color_;
    unsigned short atributos_;  // the console's own colours
    bool queda_color_ = false;  // the last visible text was coloured
    std::wstring pendiente_;
};

corriente& salida();
corriente& errores();

// Held while something is written that another thread must not interrupt: a deletion and its progress line both write.
std::recursive_timed_mutex& turno_de_consola();

// A line on a terminal that is overwritten again and again, and wiped at the end; nothing anywhere else.
class linea_de_progreso {
public:
    ~linea_de_progreso() { borra(); }
    void muestra(std::wstring_view texto);
    void borra();

private:
    size_t ocupadas_ = 0;
};
linea_de_progreso& progreso();

// Whether a person can answer: standard input and standard error are both consoles.
bool hay_quien_conteste();

// The next line of standard input, from a person or from a pipe; nothing at its end. A pipe holds UTF-8, or UTF-16 after
// a byte-order mark; a line that is neither is read in the console's code page. Throws fallo when it is not valid there
// either, so that no name with a replacement character is ever made up. A zero byte ends a line too.
std::optional<std::wstring> lee_linea();
std::vector<std::wstring> lee_lineas();

// Asks on standard error. Yes is "y" or "yes", in Spanish also "s", "si" and "sí"; anything else, and the end of the
// input, is no.
bool pregunta(std::wstring_view texto);

}  // namespace mando
