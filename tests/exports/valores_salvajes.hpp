// Wild but readable arguments for any export: texts of any units (halves of pairs among them), of any length, each
// ending right before a page that cannot be read; extreme numbers; records with such texts; comparisons without order.
// Objects of the library are real ones: a wild pointer to one is nobody's promise. Windows only.
#pragma once

#define DE_LA_DLL(nombre) nombre
#include "dll/valores.hpp"
// Leans on the types that the header above brings.
#include "exports/sistema_mentiroso.hpp"

namespace exports {

using dll::inmovil;
using dll::llamada;

// What the sane text arguments of a call are, in this thread: those of the registry, and all but those of processes.
inline constexpr const wchar_t* clave_de_prueba = L"Software\\lumodir_prueba_exports";
struct textos_sanos {
    std::wstring texto = L"C:\\nada.txt";
    std::wstring clave = clave_de_prueba;
};
// Those of a thread that has its own; a plain pointer, because MinGW's threads free what is local to them before they
// run its destructors.
inline textos_sanos*& textos_del_hilo() {
    static thread_local textos_sanos* suyos = nullptr;
    return suyos;
}
inline textos_sanos& textos_en_curso() {
    static textos_sanos de_todos;
    return textos_del_hilo() != nullptr ? *textos_del_hilo() : de_todos;
}
inline std::wstring& texto_en_curso() {
    return textos_en_curso().texto;
}
inline std::wstring& clave_en_curso() {
    return textos_en_curso().clave;
}

// The source of the call in progress.
inline fuente& azar() {
    static fuente f;
    return f;
}

// Room that ends at a page that cannot be touched: what an argument points to lies at its very end.
class sitio_guardado {
public:
    static constexpr std::size_t bytes_max = std::size_t{1} << 20;

    sitio_guardado() {
        base_ = static_cast<unsigned char*>(
            ::VirtualAlloc(nullptr, bytes_max + 4096, MEM_RESERVE, PAGE_NOACCESS));
        ::VirtualAlloc(base_, bytes_max, MEM_COMMIT, PAGE_READWRITE);
    }
    template <class T>
    T* ultimos(std::size_t cuantos) const {
        return reinterpret_cast<T*>(base_ + bytes_max - cuantos * sizeof(T));
    }

private:
    unsigned char* base_;
};

// Rooms are kept and lent: making one costs more than a call.
class prestado {
public:
    prestado() {
        if (libres().empty()) {
            libres().push_back(new sitio_guardado);
        }
        mio_ = libres().back();
        libres().pop_back();
    }
    ~prestado() { libres().push_back(mio_); }
    prestado(const prestado&) = delete;
    prestado& operator=(const prestado&) = delete;
    sitio_guardado* operator->() const { return mio_; }

private:
    static std::vector<sitio_guardado*>& libres() {
        static std::vector<sitio_guardado*> todos;
        return todos;
    }
    sitio_guardado* mio_;
};

// A wild text, without its terminator.
template <class C>
std::basic_string<C> texto_salvaje() {
    static const char* const trozos[] = {"\\",        "/",    ":",    ".",    "..",      " ",
                                         "*",         "?",    "C:",   "c:\\", "\\\\?\\", "\\\\?\\UNC\\",
                                         "\\\\.\\",   "a",    "B",    "~",    "$",       "CON",
                                         "nul.x",     ".txt", "\"",   "<",    "|",       "\x01",
                                         "%s",        "%lu",  "\t",   ";",    "-",       "dir",
                                         "file",      "\xF1", "\x80", "\\.",  ".\\",     "1",
                                         "\\\\srv\\", "..\\", ";;"};
    static const std::size_t largos[] = {247,   248,   255,   256,   259,   260,   1023,
                                         10239, 10240, 10241, 32767, 65535, 65536, 70000};
    fuente& f = azar();
    std::basic_string<C> texto;
    switch (uno_de(f, 16)) {
        case 0:  // long, of one unit
            texto.assign(largos[uno_de(f, sizeof largos / sizeof *largos)],
                         static_cast<C>(uno_de(f, 2) == 0 ? 'a' : 1 + uno_de(f, 0xFF)));
            texto.insert(0, uno_de(f, 2) == 0 ? 0 : 1, C('\\'));
            break;
        case 1:  // long, of many pieces
            for (unsigned i = 0; i < 40; ++i) {
                texto.append(uno_de(f, 256), C('n')).push_back(C('\\'));
            }
            break;
        case 2:
        case 3:
        case 4:  // any units at all
            for (unsigned i = uno_de(f, 60); i > 0; --i) {
                const auto unidad = static_cast<C>(f());
                texto.push_back(unidad == C() ? C('x') : unidad);
            }
            break;
        case 5:  // halves of pairs
            for (unsigned i = uno_de(f, 20); i > 0; --i) {
                const auto media = static_cast<C>(0xD800 + uno_de(f, 0x800));
                texto.push_back(media == C() ? C('x') : media);
            }
            break;
        default:  // what paths are made of
            for (unsigned i = uno_de(f, 14); i > 0; --i) {
                for (const char* p = trozos[uno_de(f, sizeof trozos / sizeof *trozos)]; *p != '\0'; ++p) {
                    texto.push_back(static_cast<C>(static_cast<unsigned char>(*p)));
                }
            }
    }
    return texto;
}

// The same in guarded room, with its terminator in the very last unit.
template <class C>
class texto_guardado : inmovil {
public:
    texto_guardado() {
        const std::basic_string<C> texto = texto_salvaje<C>();
        donde_ = sitio_->ultimos<C>(texto.size() + 1);
        std::memcpy(donde_, texto.c_str(), (texto.size() + 1) * sizeof(C));
    }
    C* get() const { return donde_; }

private:
    prestado sitio_;
    C* donde_;
};

template <class T>
T numero_salvaje() {
    static const unsigned long long extremos[] = {
        0,     1,          2,          3,           25,           26,           255,
        256,   0x7FFF,     0x8000,     0xFFFF,      0x7FFFFFFF,   0x80000000,   0xFFFFFFFF,
        ~0ull, ~0ull >> 1, 1ull << 63, 11644473600, 253402300799, 910692730085, 1ull << 40};
    fuente& f = azar();
    return static_cast<T>(uno_de(f, 3) == 0 ? (static_cast<unsigned long long>(f()) << 32 | f())
                                            : extremos[uno_de(f, sizeof extremos / sizeof *extremos)]);
}

// How much room the buffer argument of this call has; its size argument says the same.
inline std::size_t& sitio_del_bufer() {
    static std::size_t unidades = 0;
    return unidades;
}
inline bool lleva_bufer(const llamada& para) {
    return para.es("convierte_a_nombre_base_valido") || para.es("info_GetActualDirectorio");
}
// One unit more than told: the terminator of the first family.
inline std::size_t sitio_de_verdad(const llamada& para) {
    return sitio_del_bufer() + (para.es("convierte_a") ? 1 : 0);
}

// The general form is the sane value of that type.
template <class T>
struct salvaje : dll::valor<T> {
    explicit salvaje(const llamada& para) : dll::valor<T>(para) {}
};

template <class T>
requires std::is_integral_v<T>
struct salvaje<T> : inmovil {
    T v;
    explicit salvaje(const llamada& para) : v(numero_salvaje<T>()) {
        // A size that no machine has ends the process, as it should: that has tests of its own.
        if (para.es("alloc") || para.es("arr_Crea")) {
            v = static_cast<T>(static_cast<unsigned long long>(v) % 3000);
        }
        if (lleva_bufer(para) && !std::is_same_v<T, int>) {
            v = static_cast<T>(sitio_del_bufer());
        }
    }
    T da() { return v; }
};
template <>
struct salvaje<const wchar_t*> : inmovil {
    texto_guardado<wchar_t> v;
    explicit salvaje(const llamada&) {}
    const wchar_t* da() { return v.get(); }
};
template <>
struct salvaje<const char*> : inmovil {
    texto_guardado<char> v;
    explicit salvaje(const llamada&) {}
    const char* da() { return v.get(); }
};
// Texts changed in place have their own room and no more; buffers have what the call tells.
template <class C>
struct en_su_sitio : inmovil {
    texto_guardado<C> v;
    prestado sitio;
    C* bufer = nullptr;
    explicit en_su_sitio(const llamada& para) {
        if (lleva_bufer(para)) {
            bufer = sitio->ultimos<C>(sitio_de_verdad(para));
        }
    }
    C* da() { return bufer != nullptr ? bufer : v.get(); }
};
template <>
struct salvaje<wchar_t*> : en_su_sitio<wchar_t> {
    using en_su_sitio::en_su_sitio;
};
template <>
struct salvaje<char*> : en_su_sitio<char> {
    using en_su_sitio::en_su_sitio;
};

// Records of plain bytes, at the end of their room.
template <class T>
struct de_bytes : inmovil {
    prestado sitio;
    T* v;
    explicit de_bytes(const llamada&) : v(sitio->ultimos<T>(1)) {
        auto* p = reinterpret_cast<unsigned char*>(v);
        for (std::size_t i = 0; i < sizeof(T); ++i) {
            p[i] = static_cast<unsigned char>(azar()());
        }
    }
    T* da() { return v; }
};
#define DE_BYTES(tipo)                             \
    template <>                                    \
    struct salvaje<tipo*> : de_bytes<tipo> {       \
        using de_bytes::de_bytes;                  \
    };                                             \
    template <>                                    \
    struct salvaje<const tipo*> : de_bytes<tipo> { \
        using de_bytes::de_bytes;                  \
    }
DE_BYTES(FILETIME);
DE_BYTES(WIN32_FIND_DATAA);
DE_BYTES(WIN32_FIND_DATAW);
DE_BYTES(unsigned short);
DE_BYTES(unsigned int);
#undef DE_BYTES

// Records with texts in them.
template <>
struct salvaje<const Fichsdir*> : inmovil {
    texto_guardado<char> nombre;
    texto_guardado<wchar_t> ruta;
    Fichsdir v = {nombre.get(), numero_salvaje<long long>(), numero_salvaje<unsigned short>(), ruta.get()};
    explicit salvaje(const llamada&) {}
    const Fichsdir* da() { return &v; }
};
template <>
struct salvaje<const Taskproc*> : inmovil {
    texto_guardado<wchar_t> modulo;
    texto_guardado<wchar_t> ruta;
    Taskproc v = {modulo.get(), numero_salvaje<unsigned long>(), ruta.get()};
    explicit salvaje(const llamada&) {}
    const Taskproc* da() { return &v; }
};
template <>
struct salvaje<const UnidadSistema*> : inmovil {
    texto_guardado<wchar_t> nombre;
    UnidadSistema v = {nombre.get(), numero_salvaje<unsigned long>()};
    explicit salvaje(const llamada&) {}
    const UnidadSistema* da() { return &v; }
};
template <>
struct salvaje<const InfoDisco*> : inmovil {
    InfoDisco v = {numero_salvaje<unsigned short>(), numero_salvaje<unsigned long>(), nullptr};
    explicit salvaje(const llamada&) {}
    const InfoDisco* da() { return &v; }
};
template <>
struct salvaje<const InfoTabla*> : inmovil {
    prestado sitio;
    InfoTabla v = {};
    explicit salvaje(const llamada&) {
        v.numDiscos = static_cast<unsigned short>(uno_de(azar(), 30));
        v.discos = sitio->ultimos<InfoDisco>(v.numDiscos);
        for (unsigned i = 0; i < v.numDiscos; ++i) {
            v.discos[i] = {numero_salvaje<unsigned short>(), numero_salvaje<unsigned long>(), nullptr};
        }
    }
    const InfoTabla* da() { return &v; }
};
// A table to fill, or to empty.
template <>
struct salvaje<InfoTabla*> : inmovil {
    InfoTabla v = {};
    explicit salvaje(const llamada&) {}
    ~salvaje() {
        if (v.discos != nullptr) {
            info_LiberaTabla(&v);
        }
    }
    InfoTabla* da() { return &v; }
};

// Records that their destroyers take.
template <class T>
struct registro_vivo : inmovil {
    T* v = static_cast<T*>(lumospy_nousar_calloc(1, sizeof(T)));
    explicit registro_vivo(const llamada&) {}
    static wchar_t* copia() { return widestr_nousar_copia(texto_guardado<wchar_t>().get(), "prueba", 1); }
    T** da() { return &v; }
};
template <>
struct salvaje<Fichsdir**> : registro_vivo<Fichsdir> {
    explicit salvaje(const llamada& para) : registro_vivo(para) {
        dll::crea(v->nombre);
        v->ruta = copia();
    }
    ~salvaje() {
        if (v != nullptr) {
            fichsdir_destruye(&v);
        }
    }
};
template <>
struct salvaje<Taskproc**> : registro_vivo<Taskproc> {
    explicit salvaje(const llamada& para) : registro_vivo(para) {
        v->modulo = copia();
        v->ruta = copia();
    }
    ~salvaje() {
        if (v != nullptr) {
            taskproc_destruye(&v);
        }
    }
};
template <>
struct salvaje<UnidadSistema**> : registro_vivo<UnidadSistema> {
    explicit salvaje(const llamada& para) : registro_vivo(para) { v->nombre = copia(); }
    ~salvaje() {
        if (v != nullptr) {
            lumodir_destruyeEstructuraUnidadSistema(&v);
        }
    }
};

// Functions of the host: they answer anything, so that a comparison has no order at all.
template <class R, class... A>
struct salvaje<R (*)(A...)> : inmovil {
    explicit salvaje(const llamada&) {}
    R (*da())(A...) {
        return [](A...) -> R {
            if constexpr (std::is_void_v<R>) {
                return;
            } else {
                return static_cast<R>(azar()());
            }
        };
    }
};

}  // namespace exports
