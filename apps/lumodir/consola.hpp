// What the command writes and reads: UTF-16 to a console, UTF-8 bytes to a file or a pipe; colours, the
// progress line and questions only where a person is looking.
//
// Promises: nothing but the text itself is written to what is not a console (no colour, no progress line);
// control characters never reach a console, where they could move the cursor: they are drawn as symbols, and what
// turns the writing direction is written out. What
// goes to standard error appears after what went to standard output before it.
// Cannot promise: alignment on a terminal whose font disagrees about the width of a character.
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

    // Writes as it is, control characters included: for the progress line.
    void mueve(std::wstring_view texto);

private:
    void i_entrega(std::wstring_view texto);

    void* asa_;
    bool consola_;
    bool con_color_;
    unsigned short atributos_;  // the console's own colours
    bool queda_color_ = false;  // the last visible text was coloured
    std::wstring pendiente_;
};

corriente& salida();
corriente& errores();

// Taken around output that several threads may write: a deletion at work and the progress line over it.
std::recursive_timed_mutex& turno_de_consola();

// One line that is written over, on a terminal only, and wiped when it goes.
class linea_de_progreso {
public:
    ~linea_de_progreso() { borra(); }
    void muestra(std::wstring_view texto);
    void borra();

private:
    size_t ocupadas_ = 0;
};
linea_de_progreso& progreso();

// True when both the person's answers and the questions go through a console.
bool hay_quien_conteste();

// The next line of standard input, from a person or from a pipe; nothing at its end. A pipe brings UTF-8, or UTF-16
// after its mark; a line that is neither is read in the console's code page, and throws fallo when it is not
// that either: no name with a replacement character in it is ever made up. A zero byte ends a line too.
std::optional<std::wstring> lee_linea();
std::vector<std::wstring> lee_lineas();

// Asks on standard error; only "y" or "yes" is a yes, in Spanish "s", "si" and "sí" too, and the end of the
// input is a no.
bool pregunta(std::wstring_view texto);

}  // namespace mando
