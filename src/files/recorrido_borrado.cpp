// See recorrido_borrado.hpp.
#include "files/recorrido_borrado.hpp"

#include <utility>

#include "companions/lmlongpath.hpp"
#include "companions/ordena.hpp"
#include "listings/dirwin.hpp"
#include "paths/rutas.hpp"

namespace lumodir {
namespace {

struct hijo {
    wchar_t* nombre;
    bool enlace;  // its entry says so, or does not tell
};

// One directory on the way down.
struct nivel {
    cadena_w ruta;
    ArrCADENA_u ficheros;
    vector_interno<hijo> hijos;  // the subdirectories, sorted
    std::size_t siguiente = 0;   // the subdirectory to look at next

    ~nivel() {
        for (const hijo& h : hijos) {
            i_libera(h.nombre);
        }
    }
};

class pila_de_niveles {
public:
    pila_de_niveles() = default;
    pila_de_niveles(const pila_de_niveles&) = delete;
    pila_de_niveles& operator=(const pila_de_niveles&) = delete;
    ~pila_de_niveles() {
        while (!empty()) {
            saca();
        }
    }
    bool empty() const noexcept { return niveles_.empty(); }
    nivel& cima() noexcept { return *niveles_.back(); }
    void mete(objeto<nivel> nuevo) { niveles_.anade(nuevo.suelta()); }
    objeto<nivel> saca() noexcept {
        objeto<nivel> ultimo(niveles_.back());
        niveles_.quita_ultimo();
        return ultimo;
    }

private:
    vector_interno<nivel*> niveles_;
};

bool i_interesa(vista_w nombre, subdirectorios cuales) noexcept {
    switch (cuales) {
        case subdirectorios::sin_punto_inicial:
            return nombre[0] != L'.';
        case subdirectorios::todos:
            return nombre != L"." && nombre != L"..";
        default:
            return false;
    }
}

void i_lee(nivel& destino, subdirectorios cuales) {
    const cadena_w patron = i_concatena_directorios(destino.ruta.ver(), L"*.*");
    enumerador<wchar_t> entradas(patron.c_str());
    while (const WIN32_FIND_DATAW* entrada = entradas.siguiente()) {
        const vista_w nombre(entrada->cFileName);
        if (!i_es_directorio(*entrada)) {
            destino.ficheros.anade(cadena_w(nombre));
        } else if (i_interesa(nombre, cuales)) {
            destino.hijos.anade({cadena_w(nombre).suelta(), i_es_enlace_a_directorio(*entrada)});
        }
    }
    ordena_estable(destino.hijos.data(), destino.hijos.size(),
                   [](const hijo& a, const hijo& b) { return vista_w(a.nombre).compare(vista_w(b.nombre)); });
}

// The root of a walk as it is looked at: a link with a separator after it is followed by some systems. Only the root
// of a drive or of a volume keeps its own.
vista_w i_sin_separadores_finales(vista_w ruta) noexcept {
    vista_w resto = ruta;
    while (acaba_en_separador(resto)) {
        resto.remove_suffix(1);
    }
    const bool es_volumen = empieza_por(resto, L"\\\\?\\") && resto.find_last_of(L"\\/") == 3;
    return resto.empty() || resto.back() == L':' || es_volumen ? ruta : resto;
}

// Not every file system knows the question for the tag (FAT, some shares); what is no reparse point has none. Of one
// whose tag is not told nothing can be known.
bool i_se_puede_entrar_sin_marca(HANDLE directorio) noexcept {
    BY_HANDLE_FILE_INFORMATION datos;
    return sistema.GetFileInformationByHandle(directorio, &datos) &&
           (datos.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) ==
               FILE_ATTRIBUTE_DIRECTORY;
}

// A directory may be walked: it is one, it is no link, and the system says so of the directory itself, opened
// without following links.
bool i_se_puede_entrar(const wchar_t* directorio) noexcept {
    const manija_fichero abierto = lmlongpath_CreateFileW(
        directorio, FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr, nullptr);
    FILE_ATTRIBUTE_TAG_INFO marca;
    if (!abierto.valida()) {
        return false;
    }
    if (!sistema.GetFileInformationByHandleEx(abierto.get(), FileAttributeTagInfo, &marca, sizeof marca)) {
        return i_se_puede_entrar_sin_marca(abierto.get());
    }
    return (marca.FileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 &&
           !i_es_marca_de_enlace(marca.FileAttributes, marca.ReparseTag);
}

// Windows cuts blanks and points where a path ends, but not where it goes on: the directory looked at would not be
// the one walked. With the prefix nothing is cut.
bool i_se_recorta(vista_w directorio) noexcept {
    const vista_w nombre = directorio.substr(directorio.find_last_of(L"\\/:") + 1);
    return !empieza_por(directorio, L"\\\\?\\") &&
           (acaba_en(nombre, L" ") || (nombre.size() > 2 && acaba_en(nombre, L"..")));
}

// The root of a walk has no entry that was read before it, so its own is looked up. Opening it is not enough: some
// systems follow links of their own kind whatever they are asked.
bool i_es_enlace_por_su_nombre(const wchar_t* directorio) noexcept {
    if (i_se_recorta(a_vista(directorio))) {
        return true;
    }
    const DWORD atributos = lmlongpath_GetFileAttributesW(directorio);
    if (atributos == INVALID_FILE_ATTRIBUTES) {
        return true;  // missing, or not to be judged
    }
    if ((atributos & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        return false;
    }
    WIN32_FIND_DATAW entrada;
    const manija_busqueda busqueda = lmlongpath_FindFirstFileW(directorio, &entrada, true);
    return !busqueda.valida() || i_es_enlace_a_directorio(entrada);
}

// Puts a directory on the stack, read once. What may not be walked shows nothing.
void i_entra(pila_de_niveles& pila, cadena_w ruta, bool se_puede, subdirectorios cuales) {
    auto nuevo = objeto<nivel>::crea();
    nuevo->ruta = std::move(ruta);
    if (se_puede) {
        i_lee(*nuevo, cuales);
    }
    pila.mete(std::move(nuevo));
}

void i_entra_en_raiz(pila_de_niveles& pila, vista_w raiz, subdirectorios cuales) {
    const cadena_w nombre(i_sin_separadores_finales(raiz));
    const bool se_puede = !i_es_enlace_por_su_nombre(nombre.c_str()) && i_se_puede_entrar(nombre.c_str());
    i_entra(pila, cadena_w(raiz), se_puede, cuales);
}

void i_entra_en_hijo(pila_de_niveles& pila, const nivel& padre, const hijo& cual, subdirectorios cuales) {
    cadena_w ruta = i_concatena_directorios(padre.ruta.ver(), vista_w(cual.nombre));
    const bool se_puede = !cual.enlace && i_se_puede_entrar(ruta.c_str());
    i_entra(pila, std::move(ruta), se_puede, cuales);
}

bool i_recorre_ficheros(const nivel& actual, visitante_borrado& visitante) {
    for (std::size_t i = 0; i < actual.ficheros.num(); ++i) {
        if (!visitante.fichero(actual.ruta, actual.ficheros.ver(i))) {
            return false;
        }
    }
    return true;
}

}  // namespace

void i_recorre_para_borrar(vista_w directorio, subdirectorios cuales, visitante_borrado& visitante) {
    pila_de_niveles pila;
    i_entra_en_raiz(pila, directorio, cuales);
    if (!i_recorre_ficheros(pila.cima(), visitante)) {
        return;
    }
    for (;;) {
        nivel& actual = pila.cima();
        if (actual.siguiente < actual.hijos.size()) {
            if (!visitante.sigue()) {
                return;
            }
            i_entra_en_hijo(pila, actual, actual.hijos[actual.siguiente++], cuales);
            if (!i_recorre_ficheros(pila.cima(), visitante)) {
                return;
            }
        } else {
            const objeto<nivel> terminado = pila.saca();
            if (pila.empty()) {
                return;
            }
            visitante.subdirectorio(terminado->ruta.c_str());
        }
    }
}

}  // namespace lumodir
