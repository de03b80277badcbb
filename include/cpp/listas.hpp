/**
 * @file listas.hpp
 * What is in a directory (cdir_listas.h, fichsdir.h, dirwin.h, lumodir_listas.h): lists of names,
 * trees, file sets, and the enumerator. The names are those of the C functions, as told in rutas.hpp.
 *
 * A directory that is missing or cannot be read is an empty list here, as in C, and the listings of trees leave out
 * the directories whose name begins with ".". A program that must see everything, or be told what it could not see,
 * takes lumodir::recorre() (recorrido.hpp).
 *
 * A listing with progress calls a function before each entry; an answer that is true stops it, whatever its type
 * (in C only 1 does). An exception of that function stops it too, and comes out of the listing.
 */
#ifndef LUMODIR_CPP_LISTAS_HPP
#define LUMODIR_CPP_LISTAS_HPP

#include <exception>

#include "../cdir_listas.h"
#include "../companions/apunorde.h"
#include "../dirwin.h"
#include "../fichsdir.h"
#include "../lumodir.h"
#include "base.hpp"

namespace lumodir {

namespace detalle {

constexpr bool es_separador(wchar_t unidad) noexcept {
    return unidad == L'\\' || unidad == L'/';
}
inline bool acaba_en_separador(std::wstring_view texto) noexcept {
    return !texto.empty() && es_separador(texto.back());
}

/** The names in a record of the library, one record of a list or of a tree. */
class nombres {
public:
    using value_type = std::wstring_view;
    using const_iterator = iterador<nombres, nombres>;

    nombres() noexcept = default;
    explicit nombres(const ListaFicheros_u* registro, bool es_raiz = false) noexcept
        : registro_(registro), es_raiz_(es_raiz) {}
    /** Listed directory; empty when listed by full pattern. */
    std::wstring_view path() const noexcept {
        return registro_ == nullptr ? std::wstring_view() : vista<wchar_t>(registro_->path);
    }
    std::size_t size() const noexcept { return registro_ == nullptr ? 0 : registro_->num; }
    bool empty() const noexcept { return size() == 0; }
    /** A name that there is: `i` below size(). */
    std::wstring_view operator[](std::size_t i) const noexcept { return registro_->lista[i]; }
    const_iterator begin() const noexcept { return {*this, 0}; }
    const_iterator end() const noexcept { return {*this, size()}; }
    /** Copies of the names. */
    std::vector<std::wstring> vector() const { return {begin(), end()}; }
    /**
     * The paths: directory and name, joined as the library joins them. The directory of a root stands without its
     * separator (`C:` for `C:\`), and is a root all the same. A list by full pattern knows no directory: bare names.
     */
    std::vector<std::filesystem::path> rutas() const {
        std::wstring directorio(path());
        if (!directorio.empty() ? !acaba_en_separador(directorio) : es_raiz_) {
            directorio += L'\\';
        }
        std::vector<std::filesystem::path> copia;
        copia.reserve(size());
        for (std::wstring_view nombre : *this) {
            copia.emplace_back(suma<wchar_t>(directorio, nombre));
        }
        return copia;
    }

private:
    const ListaFicheros_u* registro_ = nullptr;
    bool es_raiz_ = false;
};

// Whether a directory is the root of the current drive, whose text is empty once its separator is gone.
inline bool es_raiz(const argumento& directorio) noexcept {
    const std::wstring_view texto = vista(directorio.c_str());
    return texto.size() == 1 && es_separador(texto.front());
}

template <>
struct destruccion<ListaFicheros_u> {
    static void libera(ListaFicheros_u* registro) noexcept {
        if (registro->path != nullptr || registro->num != 0) {
            cdir_libera_lista_de_ficheros_UNICODE(registro);
        }
    }
};

/** The lists of a tree, one for each directory. */
struct listas_de_arbol {
    unsigned long num = 0;
    ListaFicheros_u* directorios = nullptr;
};
template <>
struct destruccion<listas_de_arbol> {
    static void libera(listas_de_arbol* arbol) noexcept {
        if (arbol->directorios != nullptr) {
            lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(arbol->num,
                                                                                    &arbol->directorios);
        }
    }
};

template <>
struct destruccion<Fichsdir> {
    static void libera(Fichsdir** registro) noexcept { fichsdir_destruye(registro); }
};
template <>
struct destruccion<ApunOrde> {
    static void libera(ApunOrde** registros) noexcept { apunorde_nousar_destruye(registros); }
};
template <>
struct destruccion<Dirwin_u> {
    static void libera(Dirwin_u** busqueda) noexcept { dirwin_destruye_UNICODE(busqueda); }
};

}  // namespace detalle

/** The sorted names of the files or directories of one directory, owned. */
class lista_ficheros {
public:
    using value_type = std::wstring_view;
    using const_iterator = detalle::iterador<lista_ficheros>;

    lista_ficheros() noexcept = default;
    /** To be filled; says whether the root of the current drive will be listed, which the record does not tell. */
    explicit lista_ficheros(bool es_raiz) noexcept : es_raiz_(es_raiz) {}

    std::wstring_view path() const noexcept { return detalle::nombres(&registro_.get()).path(); }
    std::size_t size() const noexcept { return registro_.get().num; }
    bool empty() const noexcept { return size() == 0; }
    /** A name that there is: `i` below size(). */
    std::wstring_view operator[](std::size_t i) const noexcept { return registro_.get().lista[i]; }
    /** The first and the last name of a list that has one. */
    std::wstring_view front() const noexcept { return (*this)[0]; }
    std::wstring_view back() const noexcept { return (*this)[size() - 1]; }
    const_iterator begin() const noexcept { return {this, 0}; }
    const_iterator end() const noexcept { return {this, size()}; }
    /** Copies of the names. */
    std::vector<std::wstring> vector() const { return detalle::nombres(&registro_.get()).vector(); }
    /** The paths, joined as the library joins them; bare names where listed by full pattern. */
    std::vector<std::filesystem::path> rutas() const {
        return detalle::nombres(&registro_.get(), es_raiz_).rutas();
    }
    ListaFicheros_u* direccion() noexcept { return registro_.direccion(); }

private:
    detalle::dueno<ListaFicheros_u> registro_;
    bool es_raiz_ = false;
};

/** The files of a tree, owned: one element per directory, with its path and its names. */
class arbol {
public:
    using value_type = detalle::nombres;
    using const_iterator = detalle::iterador<arbol>;

    arbol() noexcept = default;
    arbol(unsigned long num, ListaFicheros_u* nuevos, bool es_raiz = false) noexcept
        : listas_(detalle::listas_de_arbol{num, nuevos}), es_raiz_(es_raiz) {}

    std::size_t size() const noexcept { return listas_.get().num; }
    bool empty() const noexcept { return size() == 0; }
    /** A directory that there is: `i` below size(). */
    value_type operator[](std::size_t i) const noexcept {
        return value_type(listas_.get().directorios + i, es_raiz_);
    }
    /** The first and the last directory of a tree that has one. */
    value_type front() const noexcept { return (*this)[0]; }
    value_type back() const noexcept { return (*this)[size() - 1]; }
    const_iterator begin() const noexcept { return {this, 0}; }
    const_iterator end() const noexcept { return {this, size()}; }

private:
    detalle::dueno<detalle::listas_de_arbol> listas_;
    bool es_raiz_ = false;
};

namespace cdir {

/** The files of a directory; an extension filter, or nullptr for every file. */
inline lista_ficheros lista_de_ficheros(const argumento& directorio, const argumento& extension = nullptr) {
    lista_ficheros l(lumodir::detalle::es_raiz(directorio));
    cdir_lista_de_ficheros_UNICODE(directorio.c_str(), extension.c_str(), l.direccion());
    return l;
}
/** The same, of the names that a pattern finds. */
inline lista_ficheros lista_de_ficherosFiltro(const argumento& directorio, const argumento& extension,
                                              const argumento& patron) {
    lista_ficheros l(lumodir::detalle::es_raiz(directorio));
    cdir_lista_de_ficherosFiltro_UNICODE(directorio.c_str(), extension.c_str(), patron.c_str(),
                                         l.direccion());
    return l;
}
/** The same with the drive apart; with nothing behind it a drive is its current directory, and path() says so (`X:.`). */
inline lista_ficheros lista_de_ficherosFiltro_en_unidad(const argumento& unidad, const argumento& directorio,
                                                        const argumento& extension, const argumento& patron) {
    lista_ficheros l(lumodir::detalle::es_raiz(directorio));
    const std::wstring_view de_unidad = lumodir::detalle::vista(unidad.c_str());
    // A name behind the drive alone would be one of the root.
    const bool es_actual = directorio.c_str() != nullptr && *directorio.c_str() == L'\0' &&
                           !de_unidad.empty() && de_unidad.back() == L':';
    cdir_lista_de_ficherosFiltro_en_unidad(unidad.c_str(), es_actual ? L"." : directorio.c_str(),
                                           extension.c_str(), patron.c_str(), l.direccion());
    return l;
}
/** The files that a full search pattern finds; path() is empty. */
inline lista_ficheros lista_de_ficheros_en_path_filtro(const argumento& path_filtro) {
    lista_ficheros l;
    cdir_lista_de_ficheros_en_path_filtro_UNICODE(path_filtro.c_str(), l.direccion());
    return l;
}
/** The subdirectories that a pattern finds; of an empty text those of the root. */
inline lista_ficheros lista_de_directorios(const argumento& directorio, const argumento& patron = L"*") {
    lista_ficheros l(lumodir::detalle::es_raiz(directorio) ||
                     lumodir::detalle::vista(directorio.c_str()).empty());
    cdir_lista_de_directorios_UNICODE(directorio.c_str(), patron.c_str(), l.direccion());
    return l;
}

}  // namespace cdir

/** The files of a tree: the directories that have a matching one. */
inline arbol lista_de_ficheros_en_directorio_y_subdirectorios(const argumento& base,
                                                              const argumento& extension = nullptr) {
    unsigned long num = 0;
    ListaFicheros_u* directorios = nullptr;
    lumodir_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(base.c_str(), extension.c_str(), &num,
                                                                     &directorios);
    return arbol(num, directorios, detalle::es_raiz(base));
}
/** The same with every directory of the tree. */
inline arbol lista_de_ficheros_y_directorios_recursivamente(const argumento& base,
                                                            const argumento& extension = nullptr) {
    unsigned long num = 0;
    ListaFicheros_u* directorios = nullptr;
    lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE(base.c_str(), extension.c_str(), &num,
                                                                   &directorios);
    return arbol(num, directorios, detalle::es_raiz(base));
}
/** The sorted names that a pattern finds and whose extension is one of a list, or of any. */
inline ordenada lista_de_fichero(const argumento& path_filtro,
                                 const std::vector<std::wstring>& extensiones = {}) {
    lista lista_de_extensiones;
    if (!extensiones.empty()) {
        lista_de_extensiones = lista(arr_CreaCADENA_u(static_cast<unsigned long>(extensiones.size())));
        for (const std::wstring& extension : extensiones) {
            arr_AppendCADENA_u(lista_de_extensiones.get(), extension.c_str());
        }
    }
    return ordenada(lumodir_lista_de_fichero(path_filtro.c_str(), lista_de_extensiones.get()));
}
/** Whether a directory holds a file. */
inline bool existenFicheros(const argumento& path) {
    return detalle::si(lumodir_existenFicheros_UNICODE(path.c_str()));
}
/** Whether a directory holds a subdirectory. */
inline bool existenSubdirectorios(const argumento& path) {
    return detalle::si(lumodir_existenSubdirectorios_UNICODE(path.c_str()));
}

/* ---- File sets ---- */

namespace detalle {

/** The caller's function behind the library's callback, and what it threw. */
template <class F>
struct progreso {
    F& funcion;
    std::exception_ptr excepcion = nullptr;
    unsigned short interrumpido = FALSO;

    static unsigned short pregunta(void* este) noexcept {
        auto& yo = *static_cast<progreso*>(este);
        try {
            return corto(static_cast<bool>(yo.funcion()));
        } catch (...) {
            yo.excepcion = std::current_exception();
            return CIERTO;
        }
    }
    void relanza() const {
        if (excepcion != nullptr) {
            std::rethrow_exception(excepcion);
        }
    }
};

}  // namespace detalle

namespace fichsdir {

using ficheros_t = registros<Fichsdir>; /**< records with name (8-bit), date, protection and directory */

/** The outcome of a listing that can be stopped. */
template <class L>
struct con_progreso {
    L elementos;               /**< what was taken, all of it or up to the stop */
    bool interrumpido = false; /**< stopped */
};

/** The files of a directory as records. */
inline ficheros_t ficheros(const argumento& directorio) {
    return ficheros_t(fichsdir_ficheros_u(directorio.c_str()));
}
/** The same, interruptible; the directory is 8-bit. */
template <class F>
con_progreso<ficheros_t> ficheros_prog(const argumento_a& directorio, F&& usuario_cierra) {
    lumodir::detalle::progreso<F> p{usuario_cierra};
    ficheros_t elementos(fichsdir_ficheros_prog(directorio.c_str(), &p, &p.interrumpido, p.pregunta));
    p.relanza();
    return {std::move(elementos), lumodir::detalle::si(p.interrumpido)};
}
/** The sorted directories of a directory; the directory is 8-bit, interruptible. */
template <class F>
con_progreso<lista_a> directorios_prog(const argumento_a& directorio, F&& usuario_cierra) {
    lumodir::detalle::progreso<F> p{usuario_cierra};
    lista_a elementos(fichsdir_directorios_prog(directorio.c_str(), &p, &p.interrumpido, p.pregunta));
    p.relanza();
    return {std::move(elementos), lumodir::detalle::si(p.interrumpido)};
}
/** The names of the files of a directory; the directory is 8-bit, interruptible. */
template <class F>
con_progreso<lista_a> nombres_ficheros_prog(const argumento_a& directorio, F&& usuario_cierra) {
    lumodir::detalle::progreso<F> p{usuario_cierra};
    lista_a elementos(fichsdir_nombres_ficheros_prog(directorio.c_str(), &p, &p.interrumpido, p.pregunta));
    p.relanza();
    return {std::move(elementos), lumodir::detalle::si(p.interrumpido)};
}

/** The files of a directory (8-bit) as records sorted by name, owned. */
class ordenados {
public:
    using value_type = Fichsdir;
    using const_iterator = lumodir::detalle::iterador<ordenados>;

    explicit ordenados(ApunOrde* nuevos) noexcept : registros_(nuevos) {}

    std::size_t size() const noexcept {
        return registros_.get() == nullptr ? 0 : apunorde_nousar_num_elems(registros_.get());
    }
    bool empty() const noexcept { return size() == 0; }
    /** An element that there is: `i` below size(). */
    const Fichsdir& operator[](std::size_t i) const noexcept {
        return *static_cast<const Fichsdir*>(
            apunorde_nousar_get(registros_.get(), static_cast<unsigned long>(i)));
    }
    const_iterator begin() const noexcept { return {this, 0}; }
    const_iterator end() const noexcept { return {this, size()}; }
    /** The record of a name, nullptr when there is none; valid as long as the owner. */
    const Fichsdir* busca(const argumento_a& nombre) const {
        return registros_.get() == nullptr ? nullptr
                                           : static_cast<const Fichsdir*>(apunorde_nousar_busca(
                                                 registros_.get(), nombre.c_str(), compara));
    }

private:
    static int compara(const void* registro, const void* clave) noexcept {
        return fichsdir_compara_nombre(static_cast<const Fichsdir*>(registro),
                                       static_cast<const char*>(clave));
    }
    lumodir::detalle::dueno<ApunOrde*> registros_;
};

/** The files of a directory (8-bit) as records sorted by name. */
inline ordenados ficheros_existentes_ordenados(const argumento_a& directorio) {
    return ordenados(fichsdir_ficheros_existentes_ordenados(directorio.c_str()));
}
/** The directories, sorted. */
inline lista directorios(const argumento& directorio) {
    return lista(fichsdir_directorios_u(directorio.c_str()));
}
/** The same without the names that have an extension, in 8-bit. */
inline lista_a directorios_sin_extension(const argumento_a& directorio) {
    return lista_a(fichsdir_directorios_sin_extension(directorio.c_str()));
}
/** The directories without the hidden ones. */
inline lista directorios_sin_ocultos(const argumento& directorio) {
    return lista(fichsdir_directorios_sin_ocultos_u(directorio.c_str()));
}
/** The directories with those whose name begins with ".". */
inline lista directorios_incluyendo_empiezan_por_puntos(const argumento& directorio) {
    return lista(fichsdir_directorios_incluyendo_empiezan_por_puntos_u(directorio.c_str()));
}
/** The directories that a pattern finds, "." and ".." included. */
inline lista nombres_directorios_cumplen_filtro(const argumento& path_filtro) {
    return lista(fichsdir_nombres_directorios_cumplen_filtro_u(path_filtro.c_str()));
}
/** The names of the files. */
inline lista nombres_ficheros(const argumento& directorio) {
    return lista(fichsdir_nombres_ficheros_u(directorio.c_str()));
}
/** The names of the files that a pattern finds. */
inline lista nombres_ficheros_cumplen_filtro(const argumento& path_filtro) {
    return lista(fichsdir_nombres_ficheros_cumplen_filtro_u(path_filtro.c_str()));
}
/** The names of the files that have an extension. */
inline lista nombres_ficheros_con_extension(const argumento& directorio, const argumento& extension) {
    return lista(fichsdir_nombres_ficheros_con_extension_u(directorio.c_str(), extension.c_str()));
}
/** The base names in upper case of the files that have an extension; sorted, in 8-bit. */
inline ordenada_a nombres_base_en_mayusculas_ficheros_con_extension(const argumento_a& directorio,
                                                                    const argumento_a& extension) {
    return ordenada_a(
        fichsdir_nombres_base_en_mayusculas_ficheros_con_extension(directorio.c_str(), extension.c_str()));
}
/** The same in lower case. */
inline ordenada_a nombres_base_en_minusculas_ficheros_con_extension(const argumento_a& directorio,
                                                                    const argumento_a& extension) {
    return ordenada_a(
        fichsdir_nombres_base_en_minusculas_ficheros_con_extension(directorio.c_str(), extension.c_str()));
}
/** The name of a record; the view is valid as long as the record. */
inline std::string_view nombre_fichero(const Fichsdir& registro) noexcept {
    return registro.nombre;
}
/** The full path of a record. */
inline cadena path_fichero(const Fichsdir& registro) {
    return cadena(fichsdir_path_fichero(&registro));
}
/** The last write of a record, local seconds since 1970. */
inline long long fecha_fichero(const Fichsdir& registro) {
    return fichsdir_fecha_fichero(&registro);
}
/** Whether the file of a record was read-only. */
inline bool fichero_esta_protegido(const Fichsdir& registro) {
    return lumodir::detalle::si(fichsdir_fichero_esta_protegido(&registro));
}

}  // namespace fichsdir

/* ---- The enumerator ---- */

namespace dirwin {

/**
 * Walks the entries that a pattern finds, "." and ".." among them: `for (const WIN32_FIND_DATAW& e : entries) ...`,
 * or `for (WIN32_FIND_DATAW e; entries.siguiente(e);) ...`. It is walked once.
 */
class enumerador {
public:
    /** Stands on the entry at hand; all of them move on together. */
    class iterador {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = WIN32_FIND_DATAW;
        using difference_type = std::ptrdiff_t;
        using pointer = const WIN32_FIND_DATAW*;
        using reference = const WIN32_FIND_DATAW&;

        iterador() noexcept = default;
        explicit iterador(enumerador* de) : de_(de) { ++*this; }
        reference operator*() const noexcept { return de_->actual_; }
        pointer operator->() const noexcept { return &de_->actual_; }
        iterador& operator++() {
            if (!de_->siguiente(de_->actual_)) {
                de_ = nullptr;
            }
            return *this;
        }
        void operator++(int) { ++*this; }
        friend bool operator==(const iterador& a, const iterador& b) noexcept { return a.de_ == b.de_; }
        friend bool operator!=(const iterador& a, const iterador& b) noexcept { return a.de_ != b.de_; }

    private:
        enumerador* de_ = nullptr;
    };

    explicit enumerador(const argumento& patron) : enumerador(dirwin_crea_UNICODE(patron.c_str())) {}
    /** Takes over a new enumerator of the library, at once after it was made. */
    explicit enumerador(Dirwin_u* nuevo) noexcept : dirwin_(nuevo) {
        if (nuevo != nullptr && nuevo->busqueda == INVALID_HANDLE_VALUE) {
            codigo_ = algun_codigo(::GetLastError());
        }
    }
    /** Stores the next entry; false at the end. */
    bool siguiente(WIN32_FIND_DATAW& entrada) {
        if (lumodir::detalle::si(dirwin_findnextfile_UNICODE(dirwin_.get(), &entrada))) {
            return true;
        }
        if (const DWORD codigo = ::GetLastError(); abierto() && codigo != ERROR_NO_MORE_FILES) {
            codigo_ = algun_codigo(codigo);
        }
        return false;
    }
    /** Whether the search was opened, by the pattern or by the own filter. */
    bool abierto() const noexcept {
        return dirwin_.get() != nullptr && dirwin_.get()->busqueda != INVALID_HANDLE_VALUE;
    }
    /** The system's code when the search could not be opened, or ended before its end; else 0. */
    unsigned long codigo() const noexcept { return codigo_; }
    iterador begin() { return iterador(this); }
    iterador end() const noexcept { return {}; }

private:
    // Something went wrong, even if the code of it was lost on the way.
    static unsigned long algun_codigo(DWORD codigo) noexcept {
        return codigo == ERROR_SUCCESS ? ERROR_GEN_FAILURE : codigo;
    }

    lumodir::detalle::dueno<Dirwin_u*> dirwin_;
    unsigned long codigo_ = ERROR_SUCCESS;
    WIN32_FIND_DATAW actual_ = {};
};

/** Whether an entry is a directory. */
inline bool es_directorio(const WIN32_FIND_DATAW& entrada) {
    return lumodir::detalle::si(dirwin_es_directorio_UNICODE(&entrada));
}
/** Whether an entry is read-only. */
inline bool es_solo_lectura(const WIN32_FIND_DATAW& entrada) {
    return lumodir::detalle::si(dirwin_es_solo_lectura_UNICODE(&entrada));
}
/** Whether a name (8-bit) passes a filter by the enumerator's own rules. */
inline bool cumple_filtro(const argumento_a& nombre, const argumento_a& filtro) {
    return lumodir::detalle::si(dirwin_cumple_filtro(nombre.c_str(), filtro.c_str()));
}

}  // namespace dirwin

}  // namespace lumodir

#endif
