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
    ordena_estable(destino.hijos.data(), destino.hijos.size(), [](const hijo& a, const hijo& b) {
        return vista_w(a.nombre).compare(vista_w(b.nombre));
    });
}

vista_w i_sin_separadores_finales(vista_w ruta) noexcept {
    while (acaba_en_separador(ruta)) {
        ruta.remove_suffix(1);
    }
    return ruta;
}

// A directory may be walked: it is one, it is no link, and the system says so of the directory itself, opened
// without following links.
bool i_se_puede_entrar(const wchar_t* directorio) noexcept {
    const manija_fichero abierto = lmlongpath_CreateFileW(
        directorio, FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr, nullptr);
    FILE_ATTRIBUTE_TAG_INFO marca;
    if (!abierto.valida() ||
        !sistema.GetFileInformationByHandleEx(abierto.get(), FileAttributeTagInfo, &marca, sizeof marca)) {
        return false;
    }
    return (marca.FileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 &&
           !i_es_marca_de_enlace(marca.FileAttributes, marca.ReparseTag);
}

// The root of a walk has no entry that was read before it, so its own is looked up. Opening it is not enough: some
// systems follow links of their own kind whatever they are asked.
bool i_es_enlace_por_su_nombre(const wchar_t* directorio) noexcept {
    const DWORD atributos = lmlongpath_GetFileAttributesW(directorio);
    if (atributos == INVALID_FILE_ATTRIBUTES) {
        return true;  // missing, or not to be judged
    }
    if ((atributos & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        return false;
    }
    WIN32_FIND_DATAW entrada;
    const cadena_w sin_barra(i_sin_separadores_finales(a_vista(directorio)));
    const manija_busqueda busqueda = lmlongpath_FindFirstFileW(sin_barra.c_str(), &entrada, true);
    return !busqueda.valida() || i_es_enlace_a_directorio(entrada);
}

// Puts a directory on the stack, read once. A link, or what cannot be told from one, shows nothing.
void i_entra(pila_de_niveles& pila, cadena_w ruta, bool enlace, subdirectorios cuales) {
    auto nuevo = objeto<nivel>::crea();
    nuevo->ruta = std::move(ruta);
    if (!enlace && i_se_puede_entrar(nuevo->ruta.c_str())) {
        i_lee(*nuevo, cuales);
    }
    pila.mete(std::move(nuevo));
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
    cadena_w raiz(directorio);
    const bool enlace = i_es_enlace_por_su_nombre(raiz.c_str());
    i_entra(pila, std::move(raiz), enlace, cuales);
    if (!i_recorre_ficheros(pila.cima(), visitante)) {
        return;
    }
    for (;;) {
        nivel& actual = pila.cima();
        if (actual.siguiente < actual.hijos.size()) {
            if (!visitante.sigue()) {
                return;
            }
            const hijo siguiente = actual.hijos[actual.siguiente++];
            i_entra(pila, i_concatena_directorios(actual.ruta.ver(), vista_w(siguiente.nombre)),
                    siguiente.enlace, cuales);
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
