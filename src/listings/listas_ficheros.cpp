// See listas_ficheros.hpp.
#include "listings/listas_ficheros.hpp"

#include "companions/acadorde.hpp"
#include "companions/error_interno.hpp"
#include "companions/ordena.hpp"
#include "companions/plataforma.hpp"
#include "frame/puente.hpp"
#include "lumodir.h"
#include "paths/rutas.hpp"
#include "paths/split_makepath.hpp"

namespace lumodir {
namespace {

template <class C>
int i_compara_nombres(const C* a, const C* b) noexcept {
    using sin_signo = std::make_unsigned_t<std::conditional_t<std::is_same_v<C, wchar_t>, short, char>>;
    for (;; ++a, ++b) {
        if (*a != *b || *a == C(0)) {
            const auto x = static_cast<sin_signo>(minuscula_ascii(*a));
            const auto y = static_cast<sin_signo>(minuscula_ascii(*b));
            if (x != y || *a == C(0)) {
                return x < y ? -1 : x > y;
            }
        }
    }
}

// The name of an entry as a list of the flavour shows it, whatever its length.
template <class C>
class nombre_en_sabor {
public:
    explicit nombre_en_sabor(vista_w nombre) noexcept : nombre_(nombre) {}
    vista_w ver() const noexcept { return nombre_; }

private:
    vista_w nombre_;
};
template <>
class nombre_en_sabor<char> {
public:
    explicit nombre_en_sabor(vista_w nombre) noexcept
        : longitud_(plataforma::utf16_a_ansi(nombre.substr(0, MAX_PATH), texto_, max_bytes)) {
        texto_[longitud_] = '\0';
    }
    vista_a ver() const noexcept { return {texto_, longitud_}; }

private:
    static constexpr std::size_t max_bytes =
        std::size_t{4} * MAX_PATH;  // a name in the widest of the code pages
    std::size_t longitud_;
    char texto_[max_bytes + 1];
};

}  // namespace

int i_compara_nombres_de_lista(vista_w a, vista_w b) noexcept {
    return i_compara_nombres(a.data(), b.data());
}

template <class C>
void nombres_en_curso<C>::ordena() {
    ordena_estable(textos_.data(), textos_.size(),
                   [](const C* a, const C* b) { return i_compara_nombres(a, b); });
}

template <class C>
void nombres_en_curso<C>::entrega(lista_ficheros<C>* lista) {
    if (textos_.empty()) {
        return;
    }
    const std::size_t bytes = textos_.size() * sizeof(C*);
    lista->lista = static_cast<C**>(i_reserva(bytes));
    std::memcpy(lista->lista, textos_.data(), bytes);
    lista->num = static_cast<unsigned long>(textos_.size());
    textos_.vacia();
}

template <class C>
void i_lista_directorio(const C* patron, const filtro_extension& filtro, nombres_en_curso<C>* ficheros,
                        nombres_en_curso<C>* directorios, enlaces con_enlaces) {
    enumerador<C> entradas(patron);
    while (const WIN32_FIND_DATAW* e = entradas.siguiente()) {
        const nombre_en_sabor<C> nombre(i_nombre_de_entrada(*e));
        if (!i_es_directorio(*e)) {
            if (ficheros != nullptr && filtro.admite(nombre.ver())) {
                ficheros->anade(nombre.ver());
            }
        } else if (directorios != nullptr && !empieza_por(nombre.ver(), LITERAL(C, ".")) &&
                   (con_enlaces == enlaces::tambien || !i_es_enlace_a_directorio(*e))) {
            directorios->anade(nombre.ver());
        }
    }
    if (ficheros != nullptr) {
        ficheros->ordena();
    }
    if (directorios != nullptr) {
        directorios->ordena();
    }
}

template <class C>
cadena<C> i_path_de_lista(vista<C> unidad, std::type_identity_t<vista<C>> directorio) {
    cadena<C> path = i_makepath<C>(unidad, directorio, {}, {});
    for (std::size_t i = 0; i < path.size(); ++i) {
        if (path.datos()[i] == C('/')) {
            path.datos()[i] = C('\\');
        }
    }
    if (acaba_en_separador(path.ver())) {
        path.acorta(path.size() - 1);
    }
    return path;
}

template <class C>
cadena<C> i_patron_de_todo(vista<C> directorio) {
    return i_makepath<C>({}, directorio, i_elige<C>(comodin_de_todo, comodin_de_todo_u), {});
}

template <class C>
void i_libera_lista(lista_ficheros<C>* lista) noexcept {
    if (!i_comprueba(lista != nullptr, "(lista) != NULL")) {
        return;
    }
    i_libera(lista->path);
    lista->path = nullptr;
    if (lista->num == 0) {
        i_comprueba(lista->lista == nullptr, "lista->lista == NULL");
        return;
    }
    if (i_comprueba(lista->lista != nullptr, "(lista->lista) != NULL")) {
        for (unsigned long i = 0; i < lista->num; ++i) {
            i_libera(lista->lista[i]);
        }
        i_libera(lista->lista);
        lista->lista = nullptr;
    }
    lista->num = 0;
}

template class nombres_en_curso<char>;
template class nombres_en_curso<wchar_t>;
template void i_lista_directorio(const char*, const filtro_extension&, nombres_en_curso<char>*,
                                 nombres_en_curso<char>*, enlaces);
template void i_lista_directorio(const wchar_t*, const filtro_extension&, nombres_en_curso<wchar_t>*,
                                 nombres_en_curso<wchar_t>*, enlaces);
template cadena<char> i_path_de_lista(vista<char>, vista<char>);
template cadena<wchar_t> i_path_de_lista(vista<wchar_t>, vista<wchar_t>);
template cadena<char> i_patron_de_todo(vista<char>);
template cadena<wchar_t> i_patron_de_todo(vista<wchar_t>);
template void i_libera_lista<char>(ListaFicheros*) noexcept;
template void i_libera_lista<wchar_t>(ListaFicheros_u*) noexcept;

namespace {

// Clears the record, whatever it held: it is the caller's, and usually has never been written.
template <class L>
bool i_prepara(L* lista) noexcept {
    if (lista != nullptr) {
        *lista = {};
    }
    return i_comprueba(lista != nullptr, "(lista) != NULL");
}

// The 8-bit flavour hands its filter over in UTF-16.
cadena_w i_filtro_ancho(const char* extension) {
    return a_utf16(extension);
}
vista_w i_filtro_ancho(const wchar_t* extension) noexcept {
    return a_vista(extension);
}

template <class C>
void i_lista_ficheros_de_patron(const C* patron, const C* extension, lista_ficheros<C>* lista) {
    const auto ancha = i_filtro_ancho(extension);
    const filtro_extension filtro{vista_w(ancha)};
    nombres_en_curso<C> ficheros;
    i_lista_directorio<C>(patron, filtro, &ficheros, nullptr);
    ficheros.entrega(lista);
}

// A view without data is a drive, or an extension of the pattern, that was not given.
template <class C>
void i_lista_ficheros(vista<C> unidad, const C* directorio, const C* nombre,
                      std::type_identity_t<vista<C>> ext, const C* extension, lista_ficheros<C>* lista) {
    const bool hay_directorio = i_comprueba(directorio != nullptr, "(directorio) != NULL");
    const bool hay_patron = i_comprueba(nombre != nullptr, "(path_filtro_generico) != NULL");
    if (!i_prepara(lista) || !hay_directorio || !hay_patron) {
        return;
    }
    const vista<C> lugar_listado(directorio);
    const cadena<C> patron = i_makepath<C>(unidad, lugar_listado, vista<C>(nombre), ext);
    i_lista_ficheros_de_patron(patron.c_str(), extension, lista);
    lista->path = i_path_de_lista<C>(unidad, lugar_listado).suelta();
}

template <class C>
void i_lista_ficheros_en_path_filtro(const C* path_filtro, lista_ficheros<C>* lista) {
    const bool hay_patron = i_comprueba(path_filtro != nullptr, "(path_filtro_generico) != NULL");
    if (i_prepara(lista) && hay_patron) {
        i_lista_ficheros_de_patron<C>(path_filtro, nullptr, lista);
    }
}

template <class C>
void i_lista_subdirectorios(const C* directorio, const C* patron, lista_ficheros<C>* lista) {
    const bool hay_directorio = i_comprueba(directorio != nullptr, "(directorio) != NULL");
    const bool hay_patron = i_comprueba(patron != nullptr, "(path_filtro_generico) != NULL");
    if (!i_prepara(lista) || !hay_directorio || !hay_patron) {
        return;
    }
    const vista<C> lugar_listado(directorio);
    const cadena<C> path_filtro = i_concatena_directorios<C>(lugar_listado, vista<C>(patron));
    nombres_en_curso<C> directorios;
    i_lista_directorio<C>(path_filtro.c_str(), filtro_extension{vista_w()}, nullptr, &directorios);
    directorios.entrega(lista);
    lista->path = i_path_de_lista<C>({}, lugar_listado).suelta();
}

// Whether a directory has an entry of the kind that `sirve` looks for; the first one decides.
template <class Sirve>
unsigned short i_hay_entrada(const wchar_t* path, Sirve sirve) {
    if (!i_comprueba(path != nullptr, "(path) != NULL")) {
        return FALSO;
    }
    // A second separator behind a lone one would make a share of the root.
    const vista_w directorio(path);
    const bool es_raiz = directorio.size() == 1 && es_separador(directorio.front());
    const cadena_w patron = concatena<wchar_t>({directorio, es_raiz ? L"*" : L"\\*"});
    enumerador<wchar_t> entradas(patron.c_str());
    while (const WIN32_FIND_DATAW* e = entradas.siguiente()) {
        if (sirve(*e)) {
            return CIERTO;
        }
    }
    return FALSO;
}

}  // namespace
}  // namespace lumodir

using namespace lumodir;

void cdir_lista_de_ficheros_UNICODE(const wchar_t* directorio, const wchar_t* extension,
                                    ListaFicheros_u* lista) {
    i_lista_ficheros<wchar_t>({}, directorio, comodin_de_todo_u, {}, extension, lista);
}

void cdir_lista_de_ficheros(const char* directorio, const char* extension, ListaFicheros* lista) {
    i_lista_ficheros<char>({}, directorio, comodin_de_todo, {}, extension, lista);
}

void cdir_lista_de_ficherosFiltro_UNICODE(const wchar_t* directorio, const wchar_t* extension,
                                          const wchar_t* patron, ListaFicheros_u* lista) {
    i_lista_ficheros<wchar_t>({}, directorio, patron, a_vista(extension), extension, lista);
}

void cdir_lista_de_ficherosFiltro(const char* directorio, const char* extension, const char* patron,
                                  ListaFicheros* lista) {
    i_lista_ficheros<char>({}, directorio, patron, a_vista(extension), extension, lista);
}

void cdir_lista_de_ficherosFiltro_en_unidad(const wchar_t* unidad, const wchar_t* directorio,
                                            const wchar_t* extension, const wchar_t* patron,
                                            ListaFicheros_u* lista) {
    i_lista_ficheros<wchar_t>(a_vista(unidad), directorio, patron, a_vista(extension), extension, lista);
}

void cdir_lista_de_ficheros_en_path_filtro_UNICODE(const wchar_t* path_filtro, ListaFicheros_u* lista) {
    i_lista_ficheros_en_path_filtro(path_filtro, lista);
}

void cdir_lista_de_ficheros_en_path_filtro(const char* path_filtro, ListaFicheros* lista) {
    i_lista_ficheros_en_path_filtro(path_filtro, lista);
}

void cdir_lista_de_directorios_UNICODE(const wchar_t* directorio, const wchar_t* patron,
                                       ListaFicheros_u* lista) {
    i_lista_subdirectorios(directorio, patron, lista);
}

void cdir_lista_de_directorios(const char* directorio, const char* patron, ListaFicheros* lista) {
    i_lista_subdirectorios(directorio, patron, lista);
}

void cdir_libera_lista_de_ficheros_UNICODE(ListaFicheros_u* lista) {
    i_libera_lista<wchar_t>(lista);
}

void cdir_libera_lista_de_ficheros(ListaFicheros* lista) {
    i_libera_lista<char>(lista);
}

AcadOrdeU* lumodir_lista_de_fichero(const wchar_t* path_filtro, const ArrCADENA_u* extensiones) {
    auto encontrados = objeto<AcadOrdeU>::crea();
    encontrados->admite_repetidos = true;
    enumerador<wchar_t> entradas(path_filtro);
    while (const WIN32_FIND_DATAW* e = entradas.siguiente()) {
        const vista_w nombre = i_nombre_de_entrada(*e);
        if (!i_es_directorio(*e) &&
            (extensiones == nullptr || i_tiene_extension_de_la_lista(nombre, *extensiones))) {
            encontrados->textos.anade(cadena_w(nombre));
        }
    }
    // Sorted once instead of at each insertion: the outcome is the same.
    vector_interno<wchar_t*>& textos = encontrados->textos.textos;
    ordena_estable(textos.data(), textos.size(),
                   [](const wchar_t* a, const wchar_t* b) { return vista_w(a).compare(vista_w(b)); });
    return encontrados.suelta();
}

unsigned short lumodir_existenFicheros_UNICODE(const wchar_t* path) {
    return i_hay_entrada(path, [](const WIN32_FIND_DATAW& e) { return !i_es_directorio(e); });
}

unsigned short lumodir_existenFicheros(const char* path) {
    return puente<lumodir_existenFicheros_UNICODE>(path);
}

unsigned short lumodir_existenSubdirectorios_UNICODE(const wchar_t* path) {
    return i_hay_entrada(path, [](const WIN32_FIND_DATAW& e) {
        return i_es_directorio(e) && !empieza_por(i_nombre_de_entrada(e), L".");
    });
}

unsigned short lumodir_existenSubdirectorios(const char* path) {
    return puente<lumodir_existenSubdirectorios_UNICODE>(path);
}
