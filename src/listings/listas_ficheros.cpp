// See listas_ficheros.hpp.
#include "listings/listas_ficheros.hpp"

#include <algorithm>

#include "companions/error_interno.hpp"
#include "companions/ordena.hpp"
#include "companions/unicode.hpp"
#include "paths/split_makepath.hpp"

namespace interno {
namespace {

// The unit as it counts in the order: a second byte that looks like a letter is none.
template <class C>
sin_signo<C> i_plegada(const C* nombre, std::size_t i) noexcept {
    return static_cast<sin_signo<C>>(empieza_caracter(vista<C>(nombre, i + 1), i) ? minuscula_ascii(nombre[i])
                                                                                  : nombre[i]);
}

template <class C>
int i_compara_nombres(const C* a, const C* b) noexcept {
    for (std::size_t i = 0;; ++i) {
        if (a[i] != b[i] || a[i] == C(0)) {
            const auto x = i_plegada(a, i);
            const auto y = i_plegada(b, i);
            if (x != y || a[i] == C(0)) {
                return x < y ? -1 : x > y;
            }
        }
    }
}

}  // namespace

int i_compara_nombres_de_lista(vista_w a, vista_w b) noexcept {
    return i_compara_nombres(a.data(), b.data());
}

template <class C>
void nombres_en_curso<C>::ordena() {
    ordena_estable(this->textos.data(), this->num(),
                   [](const C* a, const C* b) { return i_compara_nombres(a, b); });
}

template <class C>
void nombres_en_curso<C>::entrega(lista_ficheros<C>& lista) {
    lista.num = static_cast<unsigned long>(this->num());
    lista.lista = this->textos.suelta_en_bloque();
}

template <class C>
nombres_en_curso<C> i_nombres_de_lista(const C* patron, sirve_entrada* sirve,
                                       const filtro_extension& filtro) {
    nombres_en_curso<C> nombres;
    enumerador<C> entradas(patron);
    while (const WIN32_FIND_DATAW* e = entradas.siguiente(sirve)) {
        const vista_w ancho = i_nombre_de_entrada(*e);
        if constexpr (es_ancho<C>) {
            if (filtro.admite(ancho)) {
                nombres.anade(cadena_w(ancho));
            }
        } else {
            cadena_a nombre = utunicode_UNICODE_a_ANSI(ancho);
            if (filtro.admite(nombre.ver())) {
                nombres.anade(std::move(nombre));
            }
        }
    }
    nombres.ordena();
    return nombres;
}

template <class C>
cadena<C> i_path_de_lista(vista<C> unidad, std::type_identity_t<vista<C>> directorio) {
    cadena<C> path = i_makepath<C>(unidad, directorio, {}, {});
    std::replace(path.datos(), path.datos() + path.size(), C('/'), C('\\'));
    if (acaba_en_separador(path.ver())) {
        path.acorta(path.size() - 1);
    }
    return path;
}

template <class C>
void i_libera_lista(lista_ficheros<C>& lista) noexcept {
    i_libera(lista.path);
    lista.path = nullptr;
    if (lista.num == 0) {
        i_comprueba(lista.lista == nullptr, "lista->lista == NULL");
        return;
    }
    if (i_comprueba(lista.lista != nullptr, "(lista->lista) != NULL")) {
        for (unsigned long i = 0; i < lista.num; ++i) {
            i_libera(lista.lista[i]);
        }
        i_libera(lista.lista);
        lista.lista = nullptr;
    }
    lista.num = 0;
}

template struct nombres_en_curso<char>;
template struct nombres_en_curso<wchar_t>;
template nombres_en_curso<char> i_nombres_de_lista(const char*, sirve_entrada*, const filtro_extension&);
template nombres_en_curso<wchar_t> i_nombres_de_lista(const wchar_t*, sirve_entrada*,
                                                      const filtro_extension&);
template cadena<char> i_path_de_lista(vista<char>, vista<char>);
template cadena<wchar_t> i_path_de_lista(vista<wchar_t>, vista<wchar_t>);
template void i_libera_lista<char>(ListaFicheros&) noexcept;
template void i_libera_lista<wchar_t>(ListaFicheros_u&) noexcept;

objeto<AcadOrdeU> i_ficheros_con_extension_de(const wchar_t* path_filtro, const ArrCADENA_u* extensiones) {
    auto encontrados = objeto<AcadOrdeU>::crea();
    encontrados->admite_repetidos = true;
    enumerador<wchar_t> entradas(path_filtro);
    while (const WIN32_FIND_DATAW* e = entradas.siguiente(i_es_fichero)) {
        const vista_w nombre = i_nombre_de_entrada(*e);
        if (extensiones == nullptr || i_tiene_extension_de_la_lista(nombre, *extensiones)) {
            encontrados->textos.anade(cadena_w(nombre));
        }
    }
    // Sorted once instead of at each insertion: the outcome is the same.
    vector_interno<wchar_t*>& textos = encontrados->textos.textos;
    ordena_estable(textos.data(), textos.size(), widestr_fun_compara);
    return encontrados;
}

bool i_hay_entrada(const wchar_t* directorio, sirve_entrada* sirve) {
    // A second separator behind a lone one would make a share of the root.
    const vista_w dado(directorio);
    const bool es_raiz = dado.size() == 1 && es_separador(dado.front());
    const cadena_w patron = concatena<wchar_t>({dado, es_raiz ? L"*" : L"\\*"});
    return enumerador<wchar_t>(patron.c_str()).siguiente(sirve) != nullptr;
}

}  // namespace interno
