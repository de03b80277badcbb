// Windows, where Wine answers otherwise: a layer over the library's tables of system calls. Windows only.
//
//     apoyo::como_windows w({.borrado_posix = false});     // until it goes
//     w.marca(d.ruta("t"));                                // a read-only directory, which Wine does not have
//     operation();
//
// LUMODIR_COMO_WINDOWS=1 in the environment puts the plain scenario under a whole run (principal.cpp); a test may lay
// another one over it. What replaces entries later, such as `fallos`, stands above this layer; make this one first.
//
// What it imitates is what is documented or was measured by others, each with its address in docs/platforms.md; it is
// no proof of what a Windows machine does. What the tests do by themselves goes straight to Wine and shows through: a
// test that wants a mark or a name remembered says so here.
#pragma once

#include <memory>

#include "apoyo/apoyo.hpp"
#include "apoyo/reglas_por_anyo.hpp"
#include "companions/sistema.hpp"

namespace apoyo {

struct escenario_windows {
    // Directories keep the read-only mark, and are not removed while they bear it (code 5).
    bool directorios_de_solo_lectura = true;
    // A deletion by handle takes the name away at once, whoever holds the file. Without it (FAT, shares, before
    // Windows 10 1607) the name stays until the last handle is closed, and opening it anew fails with 5.
    bool borrado_posix = true;
    // A link that is asked for itself is opened itself, and deleted itself.
    bool enlaces_por_si_mismos = true;
    // The codes with which listings by handle are refused, with the numbers of the files and without; 0: they work.
    DWORD listado_con_numeros = 0;
    DWORD listado_sin_numeros = 0;
    // SMB 1: FileAttributeTagInfo succeeds, and says 0x80 of everything.
    bool marcas_sin_sentido = false;
    // A share's client remembers for five seconds of this object's clock that a name was missing.
    bool recuerda_lo_que_falta = false;
    // A program that looks at each new file as soon as it is closed, for so long on this object's clock: nobody renames
    // or deletes it meanwhile. The code that a renaming then gets; a deletion gets 32.
    unsigned long escaner_ms = 0;
    DWORD codigo_de_escaner = ERROR_SHARING_VIOLATION;
    // What creating a directory that is there already answers: roots, shares and read-only media have their own codes.
    DWORD creacion_de_lo_que_hay = ERROR_ALREADY_EXISTS;
    // Summer time as the years had it.
    const reglas_por_anyo::zona* zona = nullptr;
};

class como_windows {
public:
    explicit como_windows(const escenario_windows& escenario);
    ~como_windows();
    como_windows(const como_windows&) = delete;
    como_windows& operator=(const como_windows&) = delete;

    // The read-only mark of a directory.
    void marca(const std::string& directorio);
    bool esta_marcado(const std::string& directorio) const;

    // Whoever asks for the attributes of it, or opens it, gets this code; its entry in the directory can be read.
    void no_se_deja_preguntar(const std::string& ruta, DWORD codigo);

    // Nobody is let open this registry key, in the view that it was opened in; Wine minds no rights of keys.
    void no_se_deja_abrir(HKEY clave);

    // Time passes on the clock of what is remembered and of who looks at files.
    void pasa_ms(unsigned long milisegundos);

    // A process whose modules, but those of the 64-bit side, are told only to who asks for those of 32-bit programs.
    void es_de_32_bits(DWORD pid);

    // How many calls touched a drive while dialogs were allowed to the thread.
    unsigned dialogos() const;
    // How many snapshots would have started a thread in another process.
    unsigned hilos_ajenos() const;
    // How many calls were refused or answered otherwise than by Wine.
    unsigned intervenciones() const;

    struct estado;

private:
    std::unique_ptr<estado> estado_;
};

// The name of an open key for the whole system, which tells its view; the name that links are made of.
texto_w nombre_de_clave(HKEY clave);

// Whether the environment asks for the plain scenario for the whole run.
bool se_pide_como_windows();

}  // namespace apoyo
