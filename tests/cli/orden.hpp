// Runs lumodir.exe as a person or a script does: a command line, standard input, and what comes back.
//
// Texts are UTF-8. In arguments and expectations "$D" stands for the test's own directory, which is new, and
// deleted afterwards whatever it holds.
#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace cli {

struct resultado {
    int codigo = -1;
    std::string salida;
    std::string errores;
};

// Where standard output goes: to this process; to where nothing can be written; to nobody any more; nowhere at all.
enum class destino { se_lee, no_se_puede_escribir, ya_no_se_lee, no_hay };

struct entorno {
    std::string entrada;                                         // standard input
    std::vector<std::pair<std::string, std::string>> variables;  // set for the child only
    std::string directorio;                                      // current directory
    bool con_consola = false;   // a console of its own, which nobody sees: the streams stay pipes
    bool con_pantalla = false;  // the same, and the streams are that console
    destino salida = destino::se_lee;
};

// English messages unless the arguments choose another language.
resultado lumodir(const std::vector<std::string>& argumentos, const entorno& donde = {});

// The names of the subcommands, as the general help lists them: two blanks, the name, more blanks.
std::vector<std::string> ordenes();

// A child that is still at work.
class proceso {
public:
    proceso(const std::string& programa, const std::vector<std::string>& argumentos,
            const entorno& donde = {});
    ~proceso();
    proceso(const proceso&) = delete;
    proceso& operator=(const proceso&) = delete;
    unsigned long pid() const { return pid_; }
    // Presses Ctrl-C for it; answers whether the system took it. Needs `con_consola`.
    bool pulsa_control_c() const;
    // Closes its window, as far as a program notices; the thread that the system starts in it for that.
    void* cierra_la_ventana() const;
    void termina() const;
    resultado espera();

private:
    struct tubos;
    tubos* tubos_;
    unsigned long pid_ = 0;
};

// What stands on the screen of a child's console. This process stays on that console, where it hears no Ctrl-C, as
// long as the object lives: the screen can be read after the child has ended.
class pantalla {
public:
    explicit pantalla(const proceso& de);
    ~pantalla();
    pantalla(const pantalla&) = delete;
    pantalla& operator=(const pantalla&) = delete;
    std::string texto() const;  // lines without the blanks at their ends

private:
    void* asa_ = nullptr;
};

// A machine on which another process hardly gets its turn, while the object lives.
class maquina_lenta {
public:
    explicit maquina_lenta(const proceso& de);
    ~maquina_lenta();
    maquina_lenta(const maquina_lenta&) = delete;
    maquina_lenta& operator=(const maquina_lenta&) = delete;

private:
    std::atomic<bool> acaba_{false};
    void* asa_ = nullptr;
    std::thread frena_;
};

// Another program that holds a file open until this object goes or `suelta` is called. Read-only, so that the first
// attempt to delete it shows: the deletion unlocks the file before it tries.
class otro_programa {
public:
    explicit otro_programa(const std::string& fichero);
    ~otro_programa();
    otro_programa(const otro_programa&) = delete;
    otro_programa& operator=(const otro_programa&) = delete;
    void espera_un_intento() const;
    void suelta() const;

private:
    std::string fichero_;
    proceso proceso_;
};

// Asks again and again until the answer is yes or the time is up; answers which.
bool espera_a_que(unsigned long plazo_ms, const std::function<bool()>& cierto);

std::string ruta_de_lumodir();
std::string este_programa();

// Words between blanks; "..." holds blanks together.
std::vector<std::string> palabras(const std::string& linea);

// The whole text of a file, which is not empty; its lines end in "\n", whether it had "\r" before that or not.
std::string lee_fichero(const std::string& fichero);

std::wstring w(const std::string& utf8);
std::string u8(const std::wstring& texto);

// The test's directory and what is put in it; paths of any length.
class directorio_de_prueba {
public:
    directorio_de_prueba();
    ~directorio_de_prueba();
    const std::string& ruta() const { return ruta_; }
    std::string bajo(const std::string& relativa) const { return ruta_ + "\\" + relativa; }
    // "$D" replaced.
    std::string pon(std::string texto) const;

    void crea_directorio(const std::string& relativa) const;  // with its parents
    void crea_fichero(const std::string& relativa, const std::string& contenido = {}) const;

private:
    std::string ruta_;
};

bool existe(const std::string& ruta);
bool se_puede_abrir(const std::string& ruta);  // sharing everything
bool es_solo_lectura(const std::string& ruta);
void pon_solo_lectura(const std::string& ruta);

// A row of a table of command lines.
struct fila {
    std::vector<std::string> argumentos;
    int codigo = 0;
    std::string salida = {};   // whole; with --json in the arguments: as compact JSON
    std::string errores = {};  // whole
    std::string entrada = {};
};

// Runs a row and expects exactly what it says.
void comprueba(const fila& f, const directorio_de_prueba& d);
template <std::size_t N>
void comprueba(const fila (&filas)[N], const directorio_de_prueba& d) {
    for (const fila& f : filas) {
        comprueba(f, d);
    }
}

}  // namespace cli
