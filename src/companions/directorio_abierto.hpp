// A directory that is open: it lists itself, and opens, deletes and marks what it holds by the bare names of its
// entries, relative to itself. A path is looked up anew at each call; an open directory has been found once and for all.
//
// What this stands against: somebody who renames directories or puts links in their place while a tree is being
// listed or deleted, and names that the Windows API would read otherwise than the directory that holds them (a blank
// or a dot at the end, device names).
//
// Promises: an entry is reached through its directory's handle and by the name it bears there; a subdirectory is
// opened only if what was opened is a directory, no link, and the very object whose entry was read, each by itself:
// one that cannot be judged by its number is held so that nobody can rename it, and its entry read again; where a file
// system refuses to open relative to a handle, every directory above is held likewise, and the full path is used;
// besides, nobody is kept out by a directory that is open. A system that follows links although it was
// asked not to (Wine) is noticed: what lies elsewhere than its name says is left alone.
// Cannot promise: anything about what the file system does to a directory behind its handle; identity, where a file
// system has no numbers for its files.
// Checked by tests/companions/directorio_abierto_win32_test.cpp, tests/files/borrado_arbol_win32_test.cpp and
// tools/attack.
#pragma once

#include "companions/ruta_fijada.hpp"

namespace interno {

// What a directory tells of an entry. The name is terminated where the entry has been kept, not where it was read.
struct entrada_leida {
    vista_w nombre;
    DWORD atributos;
    DWORD reanalisis;  // the reparse tag; 0 when the system does not tell
    unsigned long long numero;
    FILETIME modificado;
    unsigned long long numero_abierto = 0;  // what its handle told when it was entered; 0 before

    bool es_directorio() const noexcept { return (atributos & FILE_ATTRIBUTE_DIRECTORY) != 0; }
    // "." and "..", which every directory has but a root.
    bool es_relativa() const noexcept { return i_es_punto_o_dos(nombre); }
};

// Another name of some other place (junction, symbolic link), or perhaps one, because the system does not tell the
// tag. Other reparse points, such as those of cloud storage, are ordinary.
inline bool i_es_de_enlace(DWORD atributos, DWORD reanalisis) noexcept {
    constexpr DWORD bit_sustituto_de_nombre = 0x20000000;  // of the reparse tag
    return (atributos & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (reanalisis == 0 || (reanalisis & bit_sustituto_de_nombre) != 0);
}

// Of an entry that was there to be read: only these codes say that it is gone by now, others that it was not reached.
inline bool i_dice_que_se_ha_ido(DWORD codigo) noexcept {
    return codigo == ERROR_FILE_NOT_FOUND || codigo == ERROR_PATH_NOT_FOUND;
}

// The number of an open file; 0 when the system does not tell.
inline unsigned long long i_numero(HANDLE abierta) noexcept {
    unsigned long long numero = 0;
    return sistema.numero_de_fichero(abierta, &numero) ? numero : 0;
}

// ERROR_SUCCESS when a deletion, a renaming or a mark by this path acts on what bears its name; else why not: it cannot be
// opened, or a system that follows links (Wine) might act on what a link leads to (ERROR_CANT_ACCESS_FILE). Where links
// are not followed nothing is asked.
DWORD i_codigo_si_lleva_a_otro_sitio(const ruta_fijada& ruta);

// How the file system of a tree wants to be treated: learned at the first refusal, kept for the walk. And the room
// that all directories of the walk are read into, one after the other.
struct trato_con_volumen {
    enum class lectura { con_numeros, sin_numeros, por_busqueda };
    static constexpr DWORD bytes_de_lectura = 64 * 1024;

    lectura como_se_lee = lectura::con_numeros;
    bool relativo = true;            // opens relative to a handle
    bool sin_seguir = true;          // knows OBJ_DONT_REPARSE
    bool posix = true;               // deletes names at once, whoever holds the file
    bool numeros_coherentes = true;  // no handle has been seen to tell another number than its listing

    unsigned char* bufer();

private:
    vector_interno<unsigned long long> palabras_;  // of the room, aligned for the records that it holds
};

// What becomes of a root that is a link.
enum class enlace_raiz { se_deja, se_sigue };

class directorio_abierto {
public:
    directorio_abierto() noexcept = default;
    directorio_abierto(const directorio_abierto&) = delete;
    directorio_abierto& operator=(const directorio_abierto&) = delete;

    // Opens the root of a walk, which bears no separator at its end; both must outlive this. Answers a system code:
    // what is a link or cannot be judged has ERROR_CANT_ACCESS_FILE.
    DWORD abre(const ruta_fijada& raiz, trato_con_volumen& trato,
               enlace_raiz si_es_enlace = enlace_raiz::se_deja);
    // Opens a subdirectory of `padre`, which must outlive this and stay where it is in memory, like the name of the
    // entry.
    DWORD abre(directorio_abierto& padre, const entrada_leida& cual);
    void cierra() noexcept { manija_.cierra(); }
    // What its handle told; 0 when the system does not tell.
    unsigned long long numero() const noexcept { return numero_; }

    // Of an entry whose name is terminated. Where nothing else is said, a system code is answered.
    DWORD borra(const entrada_leida& cual);  // a file, a link itself, an empty directory
    DWORD pon_atributos(const entrada_leida& cual, DWORD atributos);
    // One that is there and cannot be asked has the attributes that were read of it.
    existencia mira(const entrada_leida& cual);

    // Of the root: removes it, if the path still leads to what is open here (or was, before it was closed). Where the
    // system tells no numbers, to a directory that is no link.
    DWORD borra_raiz(const ruta_fijada& raiz);
    DWORD protege_raiz(const ruta_fijada& raiz, int modo);  // likewise, its read-only mark
    // Of a root: whether its path, links followed, leads to it.
    bool esta_en(const ruta_fijada& raiz) const;

private:
    friend class lector_de_directorio;
    enum class identidad { es_ella, es_otra, no_se_sabe };

    struct manera {
        DWORD acceso;
        DWORD opciones;
        DWORD compartir;
    };

    fichero_abierto i_abre_retenida(const entrada_leida& cual, const manera& como);
    fichero_abierto i_abre_entrada(const entrada_leida& cual, DWORD acceso);
    fichero_abierto i_abre_nombrado(vista_w nombre, const manera& como);
    fichero_abierto i_abre_por_nombre(vista_w nombre, const manera& como);
    fichero_abierto i_abre_por_ruta(vista_w nombre, const manera& como);
    vector_interno<directorio_abierto*> i_desde_la_raiz();
    DWORD i_retiene();
    DWORD i_retiene_este();
    cadena_w i_ruta_nativa(vista_w nombre = {});
    identidad i_identidad(const entrada_leida& cual);
    vista_w i_ruta_verdadera();
    bool i_esta_donde_dice(HANDLE abierta, vista_w nombre);
    bool i_es_raiz_sin_enlace();
    fichero_abierto i_abre_raiz_otra_vez(const ruta_fijada& raiz, DWORD acceso) const;
    unsigned long long i_numero_en_listado(vista_w nombre);

    fichero_abierto manija_;
    trato_con_volumen* trato_ = nullptr;
    directorio_abierto* padre_ = nullptr;
    vista_w nombre_;                     // in the directory above
    const ruta_fijada* raiz_ = nullptr;  // of a root
    cadena_w nombre_verdadero_;          // where the system follows links: where it really lies, once asked
    unsigned long long numero_ = 0;
    bool retenido_ = false;  // open so that nobody can rename it
};

// Reads an open directory in the best way that its file system offers, "." and ".." included. One at a time in a walk.
class lector_de_directorio {
public:
    explicit lector_de_directorio(directorio_abierto& directorio) noexcept : directorio_(directorio) {}
    lector_de_directorio(const lector_de_directorio&) = delete;
    lector_de_directorio& operator=(const lector_de_directorio&) = delete;

    // Holds until the next one is asked for; NULL at the end.
    const entrada_leida* siguiente();
    // At the end: ERROR_NO_MORE_FILES, or what ended the reading before the directory did.
    DWORD codigo() const noexcept { return codigo_; }
    // The last name that came.
    vista_w ultimo_nombre() const noexcept { return {ultimo_nombre_, largo_del_ultimo_}; }

private:
    using lectura = trato_con_volumen::lectura;
    static constexpr std::size_t max_nombre = MAX_PATH;

    bool i_llena();
    bool i_llena_como(lectura como);
    bool i_empieza_busqueda();
    bool i_sigue_busqueda();
    void i_recuerda_ultimo(vista_w nombre) noexcept;
    template <class Registro>
    bool i_toma_registro() noexcept;
    void i_toma_de_busqueda() noexcept;

    directorio_abierto& directorio_;
    unsigned char* registro_ = nullptr;  // the next one; NULL when more must be asked for
    bool empezado_ = false;
    DWORD codigo_ = ERROR_SUCCESS;
    entrada_leida entrada_ = {};
    manija_busqueda busqueda_;
    wchar_t ultimo_nombre_[max_nombre];
    std::size_t largo_del_ultimo_ = 0;
};

}  // namespace interno
