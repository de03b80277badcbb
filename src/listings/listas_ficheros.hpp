// Sorted lists of the files and subdirectories of one directory: what the list records and the tree listings are
// made of.
//
// Promises: one block a name and one for the array; the names are sorted once, at the end, without regard to the
// case of A to Z; equal names keep the order in which the system gave them.
// Cannot promise: an order that a user's language would choose.
// Checked by tests/listings/listas_ficheros_win32_test.cpp and listas_arbol_win32_test.cpp.
#pragma once

#include "cdir_listas.h"
#include "companions/unicode.hpp"
#include "listings/dirwin.hpp"
#include "listings/filtro_extension.hpp"

namespace lumodir {

template <class C>
using lista_ficheros = std::conditional_t<std::is_same_v<C, wchar_t>, ListaFicheros_u, ListaFicheros>;

// The order of lists: without regard to the case of A to Z.
int i_compara_nombres_de_lista(vista_w a, vista_w b) noexcept;

// Names on their way into a list.
template <class C>
class nombres_en_curso {
public:
    nombres_en_curso() noexcept = default;
    nombres_en_curso(const nombres_en_curso&) = delete;
    nombres_en_curso& operator=(const nombres_en_curso&) = delete;
    ~nombres_en_curso() { vacia(); }

    void anade(vista<C> nombre) { textos_.anade(cadena<C>(nombre).suelta()); }
    void ordena();
    void vacia() noexcept {
        for (C* texto : textos_) {
            i_libera(texto);
        }
        textos_.vacia();
    }
    std::size_t size() const noexcept { return textos_.size(); }
    vista<C> operator[](std::size_t i) const noexcept { return vista<C>(textos_[i]); }

    // The names go into the record, whose array is exactly as long as they are many.
    void entrega(lista_ficheros<C>* lista);

private:
    vector_interno<C*> textos_;
};

// Whether subdirectories that are links count: not for those who would go into them.
enum class enlaces { tambien, no };

// Lists what a pattern finds; `ficheros` and `directorios` are NULL when they are not wanted. Directories whose name
// begins with "." are left out. Both come out sorted.
template <class C>
void i_lista_directorio(const C* patron, const filtro_extension& filtro, nombres_en_curso<C>* ficheros,
                        nombres_en_curso<C>* directorios, enlaces con_enlaces = enlaces::tambien);

// The directory as a record shows it: "\" for "/", and one final "\" less.
template <class C>
cadena<C> i_path_de_lista(vista<C> unidad, std::type_identity_t<vista<C>> directorio);

// What is searched in a directory to see all of it.
template <class C>
cadena<C> i_patron_de_todo(vista<C> directorio);

template <class C>
void i_libera_lista(lista_ficheros<C>* lista) noexcept;

extern template class nombres_en_curso<char>;
extern template class nombres_en_curso<wchar_t>;
extern template void i_lista_directorio(const char*, const filtro_extension&, nombres_en_curso<char>*,
                                        nombres_en_curso<char>*, enlaces);
extern template void i_lista_directorio(const wchar_t*, const filtro_extension&, nombres_en_curso<wchar_t>*,
                                        nombres_en_curso<wchar_t>*, enlaces);
extern template cadena<char> i_path_de_lista(vista<char>, vista<char>);
extern template cadena<wchar_t> i_path_de_lista(vista<wchar_t>, vista<wchar_t>);
extern template cadena<char> i_patron_de_todo(vista<char>);
extern template cadena<wchar_t> i_patron_de_todo(vista<wchar_t>);
extern template void i_libera_lista<char>(ListaFicheros*) noexcept;
extern template void i_libera_lista<wchar_t>(ListaFicheros_u*) noexcept;

}  // namespace lumodir
