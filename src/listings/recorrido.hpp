// The walk of a tree: each directory is opened through the one above it, read once, and stays open while something
// below it is still to be visited.
//
// Promises: a link is not entered, nor anything that turns out, once it is open, to be another object than the one
// whose entry was read; names count as the directory holds them; nothing is reached by a path composed anew. No
// recursion: depth costs heap and one open handle per level, not stack. Paths are written only when somebody asks, from
// the root as the caller gave it.
// Cannot promise: a picture of a single moment while somebody else changes the tree.
// Checked by tests/listings/recorrido_win32_test.cpp, tests/files/borrado_arbol_win32_test.cpp and tools/attack.
#pragma once

#include <utility>

#include "companions/arr.hpp"
#include "companions/directorio_abierto.hpp"
#include "companions/lmlongpath.hpp"

namespace interno {

// What became of a directory that was to be entered.
enum class llegada {
    leido,
    a_medias,  // its reading stopped before its end, which has been reported
    cerrado,  // there, but it was not entered: a link, held by another program, another object than the one named
    falta
};

inline bool i_se_ha_entrado(llegada como) noexcept {
    return como == llegada::leido || como == llegada::a_medias;
}

// Entries of one directory, kept with their names, terminated.
class entradas_guardadas {
public:
    void guarda(const entrada_leida& entrada);
    void vacia() noexcept {
        filas_.vacia();
        nombres_.vacia();
    }
    std::size_t num() const noexcept { return filas_.size(); }
    entrada_leida operator[](std::size_t i) const noexcept;
    void pon_numero_abierto(std::size_t i, unsigned long long numero) noexcept {
        filas_[i].numero_abierto = numero;
    }
    using comparacion = int (*)(vista_w a, vista_w b) noexcept;
    void ordena(comparacion compara);

private:
    struct fila {
        std::size_t principio;  // of the name in `nombres_`
        std::size_t largo;
        DWORD atributos;
        DWORD reanalisis;
        unsigned long long numero;
        unsigned long long numero_abierto;
    };

    vista_w i_nombre(const fila& f) const noexcept { return {nombres_.data() + f.principio, f.largo}; }

    vector_interno<fila> filas_;
    vector_interno<wchar_t> nombres_;
};

// The root of one walk or of several, tied to its place once. Separators at its end are no part of its name; an empty
// one is the current directory. The text must outlive it.
class raiz_de_recorrido {
public:
    explicit raiz_de_recorrido(const wchar_t* dada);

    vista_w dada() const noexcept { return dada_; }
    const ruta_fijada& ruta() const noexcept { return ruta_; }

private:
    vista_w dada_;
    cadena_w sin_separadores_;
    ruta_fijada ruta_;  // of the text before
};

class recorrido {
public:
    // In which order the subdirectories of a directory are entered.
    struct orden {
        entradas_guardadas::comparacion compara;
        bool al_reves;
    };

    // The root must outlive the walk.
    recorrido(const raiz_de_recorrido& raiz, orden en_orden) noexcept : raiz_(raiz), orden_(en_orden) {}
    recorrido(const recorrido&) = delete;
    recorrido& operator=(const recorrido&) = delete;
    ~recorrido();

    // Enters the root, or the next subdirectory of the current directory, and calls `toma(entrada)` for each entry,
    // which answers whether it is kept: a file in `ficheros()`, a subdirectory to be entered later. What was not
    // entered has no level: the current directory is still the one above.
    template <class Toma>
    llegada entra_en_raiz(Toma toma) {
        auto nuevo = objeto<nivel>::crea();
        codigo_ = nuevo->directorio.abre(raiz_.ruta(), trato_);
        return i_entra(std::move(nuevo), toma, i_dice_que_falta(codigo_));
    }
    template <class Toma>
    llegada entra_en_hijo(Toma toma) {
        nivel& arriba = *niveles_.back();
        const entrada_leida cual = arriba.hijos[i_indice(arriba.siguiente++)];
        auto nuevo = objeto<nivel>::crea();
        nuevo->nombre = cual.nombre;
        codigo_ = nuevo->directorio.abre(arriba.directorio, cual);
        if (codigo_ == ERROR_SUCCESS) {
            arriba.hijos.pon_numero_abierto(i_indice(arriba.siguiente - 1), nuevo->directorio.numero());
        }
        return i_entra(std::move(nuevo), toma, i_dice_que_se_ha_ido(codigo_));
    }
    // Why the directory that was tried last was not entered.
    DWORD codigo() const noexcept { return codigo_; }
    // Leaves the current directory, which is closed, for the one above it; answers how it had been entered.
    llegada sale() noexcept;

    // Of the current directory.
    std::size_t profundidad() const noexcept { return niveles_.size(); }  // 1 at the root
    bool en_la_raiz() const noexcept { return niveles_.size() == 1; }
    const entradas_guardadas& ficheros() const noexcept { return cima().ficheros; }
    bool queda_hijo() const noexcept { return cima().siguiente < cima().hijos.num(); }
    // The subdirectory that was entered, or tried, last.
    entrada_leida ultimo_hijo() const noexcept { return cima().hijos[i_indice(cima().siguiente - 1)]; }
    directorio_abierto& aqui() noexcept { return niveles_.back()->directorio; }

    // The path of an entry of the current directory, or its own, from the root as it was given.
    cadena_w ruta(vista_w nombre = {}) const;

    const raiz_de_recorrido& raiz() const noexcept { return raiz_; }
    // Closes the root, which was entered, and removes it.
    DWORD borra_raiz();
    // Sets or clears the read-only mark of the root, which was entered.
    bool protege_raiz(int modo);

private:
    struct nivel {
        directorio_abierto directorio;
        vista_w nombre;  // kept by the level above
        llegada como;
        entradas_guardadas ficheros;
        entradas_guardadas hijos;
        std::size_t siguiente = 0;
    };

    const nivel& cima() const noexcept { return *niveles_.back(); }
    std::size_t i_indice(std::size_t paso) const noexcept {
        return orden_.al_reves ? cima().hijos.num() - 1 - paso : paso;
    }
    template <class Toma>
    llegada i_entra(objeto<nivel> nuevo, Toma& toma, bool falta) {
        if (codigo_ != ERROR_SUCCESS) {
            return falta ? llegada::falta : llegada::cerrado;
        }
        lector_de_directorio lector(nuevo->directorio);
        bool leido_algo = false;
        while (const entrada_leida* entrada = lector.siguiente()) {
            leido_algo = true;
            if (!entrada->es_relativa() && toma(*entrada)) {
                (entrada->es_directorio() ? nuevo->hijos : nuevo->ficheros).guarda(*entrada);
            }
        }
        return i_mete(std::move(nuevo), lector, leido_algo);
    }
    llegada i_mete(objeto<nivel> nuevo, const lector_de_directorio& lector, bool leido_algo);

    const raiz_de_recorrido& raiz_;
    orden orden_;
    trato_con_volumen trato_;
    vector_interno<nivel*> niveles_;
    DWORD codigo_ = ERROR_CANT_ACCESS_FILE;  // nothing has been tried yet
};

}  // namespace interno
