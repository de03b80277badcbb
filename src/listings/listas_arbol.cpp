// Listings of a whole tree: one list record a directory.
//
// Promises: no recursion, so depth costs memory only; the base first, then depth first, and among siblings the one
// that sorts last comes first; a link to a directory is not gone into and has no record, nor has a directory that
// was put in another's place meanwhile.
// Cannot promise: a picture of one moment, when somebody changes the tree meanwhile.
// Checked by tests/listings/listas_arbol_win32_test.cpp.
#include "companions/arr.hpp"
#include "companions/error_interno.hpp"
#include "listings/listas_ficheros.hpp"
#include "listings/recorrido.hpp"
#include "lumodir.h"

namespace lumodir {
namespace {

enum class registros { con_ficheros, todos };

// The records of a tree, until they are handed over.
class arbol_en_curso {
public:
    arbol_en_curso() noexcept = default;
    arbol_en_curso(const arbol_en_curso&) = delete;
    arbol_en_curso& operator=(const arbol_en_curso&) = delete;
    ~arbol_en_curso() {
        for (ListaFicheros_u& lista : listas_) {
            i_libera_lista<wchar_t>(&lista);  // GCOVR_EXCL_LINE: no walk is given up half-way
        }
    }

    void anade(vista_w directorio, nombres_en_curso<wchar_t>& ficheros) {
        ListaFicheros_u lista = {};
        ficheros.entrega(&lista);
        lista.path = i_path_de_lista<wchar_t>({}, directorio).suelta();
        listas_.anade(lista);
    }
    void entrega(unsigned long* num, ListaFicheros_u** listas) {
        if (listas_.empty()) {
            return;
        }
        const std::size_t bytes = listas_.size() * sizeof(ListaFicheros_u);
        *listas = static_cast<ListaFicheros_u*>(i_reserva(bytes));
        std::memcpy(*listas, listas_.data(), bytes);
        *num = static_cast<unsigned long>(listas_.size());
        listas_.vacia();
    }

private:
    vector_interno<ListaFicheros_u> listas_;
};

// The base as it is walked. Without its separator a drive would be the current directory there.
cadena_w i_base_de_recorrido(vista_w base) {
    const bool es_unidad = base.size() == 2 && base[1] == L':';
    return es_unidad ? concatena<wchar_t>({base, L"\\"}) : cadena_w(base);
}

void i_lista_arbol(vista_w base, const filtro_extension& filtro, registros cuales, arbol_en_curso& arbol) {
    const cadena_w texto = i_base_de_recorrido(base);
    const raiz_de_recorrido raiz(texto.c_str());
    recorrido directorios(raiz, {i_compara_nombres_de_lista, true});
    nombres_en_curso<wchar_t> ficheros;
    const auto toma = [&](const entrada_leida& entrada) {
        if (entrada.es_directorio()) {
            return !empieza_por(entrada.nombre, L".") &&
                   !i_es_marca_de_enlace(entrada.atributos, entrada.marca);
        }
        if (filtro.admite(entrada.nombre)) {
            ficheros.anade(entrada.nombre);
        }
        return false;
    };
    const auto anota = [&](vista_w directorio) {
        ficheros.ordena();
        if (cuales == registros::todos || ficheros.size() > 0) {
            arbol.anade(directorio, ficheros);
        }
    };
    const bool hay_base = i_se_ha_entrado(directorios.entra_en_raiz(toma));
    anota(base);
    while (hay_base && (directorios.queda_hijo() || !directorios.en_la_raiz())) {
        if (!directorios.queda_hijo()) {
            directorios.sale();
            continue;
        }
        const llegada como = directorios.entra_en_hijo(toma);
        if (i_se_ha_entrado(como)) {
            anota(directorios.ruta());
        } else if (directorios.codigo() != ERROR_CANT_ACCESS_FILE) {
            anota(directorios.ruta(
                directorios.ultimo_hijo().nombre));  // it may not be read, or is gone already
        }
    }
}

void i_lista_arbol(const wchar_t* base, const wchar_t* extension, registros cuales, unsigned long* num,
                   ListaFicheros_u** listas) {
    const bool hay_base = i_comprueba(base != nullptr, "(dirBase) != NULL");
    const bool hay_num = i_comprueba(num != nullptr, "(numDir) != NULL");
    const bool hay_listas = i_comprueba(listas != nullptr, "(ficheros) != NULL");
    if (hay_num) {
        *num = 0;
    }
    if (hay_listas) {
        *listas = nullptr;
    }
    if (!hay_base || !hay_num || !hay_listas) {
        return;
    }
    // A base that is only a separator is the root.
    vista_w sin_barra(base);
    if (sin_barra.size() > 1 && acaba_en(sin_barra, L"\\")) {
        sin_barra.remove_suffix(1);
    }
    arbol_en_curso arbol;
    i_lista_arbol(sin_barra, filtro_extension(a_vista(extension)), cuales, arbol);
    arbol.entrega(num, listas);
}

}  // namespace
}  // namespace lumodir

using namespace lumodir;

void lumodir_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(const wchar_t* dirBase,
                                                                      const wchar_t* extension,
                                                                      unsigned long* numDir,
                                                                      ListaFicheros_u** ficheros) {
    i_lista_arbol(dirBase, extension, registros::con_ficheros, numDir, ficheros);
}

void lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE(const wchar_t* dirBase,
                                                                    const wchar_t* extension,
                                                                    unsigned long* numDir,
                                                                    ListaFicheros_u** ficheros) {
    i_lista_arbol(dirBase, extension, registros::todos, numDir, ficheros);
}

void lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(unsigned long numDir,
                                                                             ListaFicheros_u** ficheros) {
    if (!i_comprueba(ficheros != nullptr, "(ficheros) != NULL")) {
        return;
    }
    if (numDir == 0) {
        i_comprueba(*ficheros == nullptr, "*ficheros == NULL");
        return;
    }
    if (!i_comprueba(*ficheros != nullptr, "(*ficheros) != NULL")) {
        return;
    }
    for (unsigned long i = 0; i < numDir; ++i) {
        i_libera_lista<wchar_t>(&(*ficheros)[i]);
    }
    i_libera(*ficheros);
    *ficheros = nullptr;
}
