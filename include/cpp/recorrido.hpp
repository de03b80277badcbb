/**
 * @file recorrido.hpp
 * A walk over everything below a directory: files and directories, hidden ones and those whose name begins with "."
 * among them, with the attributes, size and dates that the directory itself holds for them. It stands on the
 * enumerator of dirwin.h alone.
 *
 * A directory that is missing, one that cannot be read and one that is empty are three different answers: the walk
 * hands out a failure as an entry of its own (`entrada::lectura()`), and goes on with the rest. Nothing is shown or
 * asked.
 *
 * The root is made a full path once, when the walk begins, and entered even if it is a link. A junction or a symbolic
 * link below it is handed out and never entered. Names that the system would change on their way (a final dot or
 * blank, `con`, `aux.txt`) are entered like others; to open such a file take `entrada::ruta_extendida()`.
 *
 * What it cannot promise: that the tree holds still. Somebody who puts a link in the place of a directory between its
 * entry and its opening leads the walk elsewhere; a program that deletes takes the library's deletions of trees, which
 * guard against that. The order is that of the system. One search per level is open while the walk is below it.
 * @code
 * unsigned long long bytes = 0;
 * for (const lumodir::entrada& entry : lumodir::recorre(L"C:\\data")) {
 *     if (!entry)
 *         complain(entry.ruta(), entry.error().message());
 *     else if (entry.es_fichero())
 *         bytes += entry.bytes();
 * }
 * @endcode
 */
#ifndef LUMODIR_CPP_RECORRIDO_HPP
#define LUMODIR_CPP_RECORRIDO_HPP

#include <atomic>
#include <cstdint>
#include <functional>
#include <system_error>

#include "../cdir_ficheros.h"
#include "base.hpp"
#include "listas.hpp"

namespace lumodir {

/** How the reading of a directory went. */
enum class lectura {
    bien,             /**< it was read, and may be empty */
    falta,            /**< there is nothing of that name */
    no_es_directorio, /**< there is a file */
    ilegible,         /**< it is there and could not be opened: no permission, held by somebody, no disk */
    interrumpida      /**< the system gave a part of it and then an error */
};

namespace detalle {

/** A directory of a walk, as the caller sees it and as the system gets it. */
struct directorio_recorrido {
    std::filesystem::path ruta;
    std::wstring extendida;
};

/** The full form of a path with the prefix that lets the system take the text as it is; empty when there is none. */
inline std::wstring ruta_extendida(const std::filesystem::path& ruta) {
    const std::wstring& texto = ruta.native();
    const auto literal = [](std::wstring_view t) {
        return t.substr(0, 4) == L"\\\\?\\" || t.substr(0, 4) == L"\\\\.\\";
    };
    if (literal(texto)) {
        return texto;
    }
    if (texto.find_first_not_of(L' ') == std::wstring::npos || texto.find(L'\0') != std::wstring::npos) {
        return {};  // the system would take a blank path for the current directory
    }
    std::wstring completa;
    for (DWORD sitio = MAX_PATH; sitio > completa.size();) {
        completa.resize(sitio);
        sitio = ::GetFullPathNameW(texto.c_str(), sitio, completa.data(), nullptr);
        if (sitio < completa.size()) {
            completa.resize(sitio);
            break;
        }
    }
    if (completa.empty() || literal(completa)) {
        return completa;
    }
    return completa.compare(0, 2, L"\\\\") == 0 ? L"\\\\?\\UNC\\" + completa.substr(2)
                                                : L"\\\\?\\" + completa;
}

inline std::wstring une_extendida(const std::wstring& directorio, std::wstring_view nombre) {
    std::wstring todo;
    todo.reserve(directorio.size() + nombre.size() + 1);
    todo = directorio;
    if (!acaba_en_separador(todo)) {
        todo += L'\\';
    }
    return todo.append(nombre);
}

}  // namespace detalle

/** What a walk hands out: a file, a directory, or a directory that could not be read. Copies stand by themselves. */
class entrada {
public:
    /** The name, as the directory holds it; that of the root is empty. */
    std::wstring_view nombre() const noexcept { return datos_.cFileName; }
    /** The path, written as the walk's directory was. */
    std::filesystem::path ruta() const { return raiz() ? de_->ruta : de_->ruta / nombre(); }
    /** The full path with the prefix `\\?\`: every function takes it, whatever its length and its name. */
    std::filesystem::path ruta_extendida() const {
        return raiz() ? de_->extendida : detalle::une_extendida(de_->extendida, nombre());
    }
    /** Directories between the root and this entry: 0 for what lies directly in it. */
    std::size_t profundidad() const noexcept { return profundidad_; }

    /** A directory; also one that could not be read. */
    bool es_directorio() const noexcept { return tiene(FILE_ATTRIBUTE_DIRECTORY); }
    bool es_fichero() const noexcept { return !es_directorio(); }
    /** A junction, a symbolic link, or a link whose kind the system does not tell; a walk does not enter it. */
    bool es_enlace() const noexcept {
        return tiene(FILE_ATTRIBUTE_REPARSE_POINT) &&
               (datos_.dwReserved0 == 0 || IsReparseTagNameSurrogate(datos_.dwReserved0));
    }
    bool es_oculto() const noexcept { return tiene(FILE_ATTRIBUTE_HIDDEN); }
    bool es_solo_lectura() const noexcept { return tiene(FILE_ATTRIBUTE_READONLY); }
    /** FILE_ATTRIBUTE_... */
    unsigned long atributos() const noexcept { return datos_.dwFileAttributes; }
    /** The size of a file as its directory tells it; 0 for a directory. */
    unsigned long long bytes() const noexcept {
        return es_directorio() ? 0 : (std::uint64_t{datos_.nFileSizeHigh} << 32) | datos_.nFileSizeLow;
    }
    /** The dates, in UTC; timefich::convertir_fecha() makes local seconds of them. */
    const FILETIME& creacion() const noexcept { return datos_.ftCreationTime; }
    const FILETIME& modificacion() const noexcept { return datos_.ftLastWriteTime; }
    /** The last write in UTC seconds since 1970. */
    long long modificacion_UTC() const noexcept {
        constexpr std::int64_t hasta_1970 = 116444736000000000;  // since 1601, in units of 100 ns
        constexpr std::int64_t por_segundo = 10000000;
        const FILETIME& f = datos_.ftLastWriteTime;
        const std::int64_t desde_1970 =
            static_cast<std::int64_t>((std::uint64_t{f.dwHighDateTime} << 32) | f.dwLowDateTime) - hasta_1970;
        return desde_1970 / por_segundo - (desde_1970 % por_segundo < 0 ? 1 : 0);
    }
    /** All that the system tells. */
    const WIN32_FIND_DATAW& datos() const noexcept { return datos_; }

    /** lectura::bien for an entry; otherwise what is wrong with this directory. */
    lumodir::lectura lectura() const noexcept { return lectura_; }
    /** The system's code for it; 0 for an entry. */
    unsigned long codigo() const noexcept { return codigo_; }
    /** The same for the standard library, which has a text for it. */
    std::error_code error() const noexcept { return {static_cast<int>(codigo_), std::system_category()}; }
    /** True for an entry, false for a directory that could not be read. */
    explicit operator bool() const noexcept { return lectura_ == lumodir::lectura::bien; }

private:
    friend class recorrido;
    bool tiene(DWORD atributo) const noexcept { return (datos_.dwFileAttributes & atributo) != 0; }
    bool raiz() const noexcept { return *datos_.cFileName == 0; }

    std::shared_ptr<const detalle::directorio_recorrido> de_;
    WIN32_FIND_DATAW datos_ = {};
    std::size_t profundidad_ = 0;
    lumodir::lectura lectura_ = lumodir::lectura::bien;
    unsigned long codigo_ = ERROR_SUCCESS;
};

/** What a walk has handed out so far. */
struct cuenta_recorrido {
    unsigned long long ficheros = 0;
    unsigned long long directorios = 0; /**< the root is not counted */
    unsigned long long bytes = 0;       /**< of the files */
    unsigned long long sin_leer = 0;    /**< directories that could not be read, or not to their end */
};

/** How a walk is to go. */
struct opciones_recorrido {
    static constexpr std::size_t sin_limite = ~std::size_t{0};

    /** Deepest level to be handed out: 0 for the directory alone. */
    std::size_t profundidad = sin_limite;
    /** Stops the walk once it is true; another thread may set it. */
    const std::atomic<bool>* para = nullptr;
    /**
     * For a progress display: called before each entry with what there was so far; true stops the walk. What it
     * throws comes out.
     */
    std::function<bool(const cuenta_recorrido&)> progreso = {};
};

/** A walk; recorre() makes it. It is walked once, by one thread at a time. */
class recorrido {
public:
    /** Stands on the entry at hand; all of them move on together. */
    class iterador {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = entrada;
        using difference_type = std::ptrdiff_t;
        using pointer = const entrada*;
        using reference = const entrada&;

        iterador() noexcept = default;
        explicit iterador(recorrido* de) : de_(de) { ++*this; }
        reference operator*() const noexcept { return de_->actual_; }
        pointer operator->() const noexcept { return &de_->actual_; }
        iterador& operator++() {
            if (!de_->siguiente()) {
                de_ = nullptr;
            }
            return *this;
        }
        void operator++(int) { ++*this; }
        friend bool operator==(const iterador& a, const iterador& b) noexcept { return a.de_ == b.de_; }
        friend bool operator!=(const iterador& a, const iterador& b) noexcept { return a.de_ != b.de_; }

    private:
        recorrido* de_ = nullptr;
    };

    /** nullptr counts as a directory that is missing. */
    explicit recorrido(const argumento& directorio, opciones_recorrido opciones = {})
        : opciones_(std::move(opciones)) {
        auto raiz = std::make_shared<detalle::directorio_recorrido>();
        raiz->ruta = std::filesystem::path(detalle::vista(directorio.c_str()));
        raiz->extendida = detalle::ruta_extendida(raiz->ruta);
        actual_.de_ = std::move(raiz);
        actual_.datos_.dwFileAttributes = FILE_ATTRIBUTE_DIRECTORY;
    }
    recorrido(recorrido&&) = default;
    recorrido& operator=(recorrido&&) = default;

    /** Moves on to the next entry; false at the end, and when the walk was stopped. */
    bool siguiente() {
        if (parado_ || debe_parar()) {
            para();
            return false;
        }
        if (por_entrar_) {
            por_entrar_ = false;
            if (!entra()) {
                return true;
            }
        }
        while (!abiertos_.empty()) {
            nivel& dentro = abiertos_.back();
            if (!dentro.entradas.siguiente(actual_.datos_)) {
                if (!cierra()) {
                    return true;
                }
            } else if (!es_el_mismo_o_el_de_arriba(actual_.nombre())) {
                hay_entrada(dentro);
                return true;
            }
        }
        return false;
    }
    /** The entry at hand, after an answer of true. */
    const entrada& actual() const noexcept { return actual_; }
    /** Not into the directory at hand. */
    void no_entres() noexcept { por_entrar_ = false; }
    /** No further: there is no next entry. Nothing stays open. */
    void para() noexcept {
        parado_ = true;
        abiertos_.clear();
    }
    /** Stopped, by para() or by its options, before its end. */
    bool parado() const noexcept { return parado_; }
    const cuenta_recorrido& cuenta() const noexcept { return cuenta_; }
    iterador begin() { return iterador(this); }
    iterador end() const noexcept { return {}; }

private:
    // A directory that is being read.
    struct nivel {
        dirwin::enumerador entradas;
        entrada propia;
        std::shared_ptr<const detalle::directorio_recorrido> como;
    };

    static bool es_el_mismo_o_el_de_arriba(std::wstring_view nombre) noexcept {
        return nombre == L"." || nombre == L"..";
    }

    bool debe_parar() const {
        return (opciones_.para != nullptr && opciones_.para->load(std::memory_order_relaxed)) ||
               (opciones_.progreso && opciones_.progreso(cuenta_));
    }

    // A name with a separator, which no directory of Windows holds, would lead elsewhere.
    static bool es_nombre(std::wstring_view nombre) noexcept {
        return !nombre.empty() && nombre.find_first_of(L"\\/") == std::wstring_view::npos;
    }

    void hay_entrada(const nivel& dentro) noexcept {
        actual_.de_ = dentro.como;
        actual_.profundidad_ = abiertos_.size() - 1;
        actual_.lectura_ = lectura::bien;
        actual_.codigo_ = ERROR_SUCCESS;
        if (actual_.es_directorio()) {
            ++cuenta_.directorios;
            por_entrar_ = !actual_.es_enlace() && actual_.profundidad_ < opciones_.profundidad &&
                          es_nombre(actual_.nombre());
        } else {
            ++cuenta_.ficheros;
            cuenta_.bytes += actual_.bytes();
        }
    }

    bool falla(lectura cual, unsigned long codigo) noexcept {
        actual_.lectura_ = cual;
        actual_.codigo_ = codigo;
        ++cuenta_.sin_leer;
        return false;
    }

    // Opens the directory at hand; false when it is handed out again, as one that could not be read.
    bool entra() {
        std::shared_ptr<const detalle::directorio_recorrido> como = actual_.de_;
        if (!actual_.raiz()) {
            como = std::make_shared<const detalle::directorio_recorrido>(
                detalle::directorio_recorrido{actual_.ruta(), actual_.ruta_extendida().native()});
        }
        if (como->extendida.empty()) {
            return falla(lectura::falta, ERROR_PATH_NOT_FOUND);
        }
        dirwin::enumerador entradas(detalle::une_extendida(como->extendida, L"*"));
        if (!entradas.abierto()) {
            return no_se_abre(como->extendida, entradas.codigo());
        }
        abiertos_.push_back({std::move(entradas), actual_, std::move(como)});
        return true;
    }

    bool no_se_abre(const std::wstring& directorio, unsigned long codigo) {
        if (detalle::si(cdir_es_directorio_u(directorio.c_str()))) {
            // Only the root of a drive lacks "." and ".."; an empty one has no entry at all.
            return codigo == ERROR_FILE_NOT_FOUND || falla(lectura::ilegible, codigo);
        }
        if (detalle::si(cdir_existe_fichero_UNICODE(directorio.c_str()))) {
            return falla(lectura::no_es_directorio, ERROR_DIRECTORY);
        }
        switch (codigo) {
            case ERROR_FILE_NOT_FOUND:
            case ERROR_PATH_NOT_FOUND:
            case ERROR_BAD_NETPATH:
            case ERROR_BAD_NET_NAME:
            case ERROR_INVALID_NAME:
            case ERROR_BAD_PATHNAME:
                return falla(lectura::falta, codigo);
            default:
                return falla(lectura::ilegible, codigo);
        }
    }

    // Leaves a directory that has no more entries; false when it is handed out, as one that was not read to its end.
    bool cierra() {
        const nivel ultimo = std::move(abiertos_.back());
        abiertos_.pop_back();
        if (ultimo.entradas.codigo() == ERROR_SUCCESS) {
            return true;
        }
        actual_ = ultimo.propia;
        return falla(lectura::interrumpida, ultimo.entradas.codigo());
    }

    opciones_recorrido opciones_;
    entrada actual_;
    std::vector<nivel> abiertos_;
    cuenta_recorrido cuenta_;
    bool por_entrar_ = true;  // the root
    bool parado_ = false;
};

/** What a function answers that recorre() calls. */
enum class paso {
    sigue,     /**< go on */
    no_entres, /**< not into this directory */
    para       /**< no further */
};

/** How a walk went. */
struct recorrido_hecho {
    cuenta_recorrido cuenta;
    lumodir::lectura raiz = lumodir::lectura::bien; /**< of the directory that was named */
    bool parado = false;
    /** Whether everything was seen: nothing stopped it, and every directory could be read. */
    explicit operator bool() const noexcept { return !parado && cuenta.sin_leer == 0; }
};

/** Walks a directory and everything below it: `for (const lumodir::entrada& e : lumodir::recorre(path)) ...` */
inline recorrido recorre(const argumento& directorio, opciones_recorrido opciones = {}) {
    return recorrido(directorio, std::move(opciones));
}

/**
 * Calls a function with each entry of a directory and everything below it.
 *
 * @param directorio  Root of the walk.
 * @param funcion     Takes a `const lumodir::entrada&`; answers a lumodir::paso, or nothing. What it throws comes
 *                    out; nothing stays open.
 * @param opciones    How the walk is to go.
 * @return What there was, and whether it was everything.
 */
template <class F, std::enable_if_t<std::is_invocable_v<F&, const entrada&>, int> = 0>
recorrido_hecho recorre(const argumento& directorio, F&& funcion, opciones_recorrido opciones = {}) {
    recorrido todo(directorio, std::move(opciones));
    recorrido_hecho hecho;
    while (todo.siguiente()) {
        const entrada& una = todo.actual();
        if (!una && una.nombre().empty()) {
            hecho.raiz = una.lectura();
        }
        if constexpr (std::is_same_v<std::invoke_result_t<F&, const entrada&>, void>) {
            funcion(una);
        } else {
            const paso siguiente = funcion(una);
            if (siguiente == paso::no_entres) {
                todo.no_entres();
            } else if (siguiente == paso::para) {
                todo.para();
            }
        }
    }
    hecho.cuenta = todo.cuenta();
    hecho.parado = todo.parado();
    return hecho;
}

}  // namespace lumodir

#endif
