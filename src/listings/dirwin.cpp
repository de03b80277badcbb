// See dirwin.hpp.
#include "listings/dirwin.hpp"

#include "companions/error_interno.hpp"
#include "companions/plataforma.hpp"
#include "listings/filtro.hpp"

namespace lumodir {
namespace {

manija_busqueda i_abre_en_sistema(const wchar_t* patron, WIN32_FIND_DATAW* primera, detalle cuanto) noexcept {
    return lmlongpath_FindFirstFileW(patron, primera, cuanto == detalle::sin_nombre_corto);
}
manija_busqueda i_abre_en_sistema(const char* patron, WIN32_FIND_DATAA* primera, detalle) noexcept {
    return manija_busqueda(sistema.FindFirstFileA(patron, primera));
}

bool i_sigue_en_sistema(HANDLE manija, WIN32_FIND_DATAW* destino) noexcept {
    return sistema.FindNextFileW(manija, destino);
}
bool i_sigue_en_sistema(HANDLE manija, WIN32_FIND_DATAA* destino) noexcept {
    return sistema.FindNextFileA(manija, destino);
}

// A text in lower case for the time of one comparison; file names need no block.
class minusculas_temporales {
public:
    explicit minusculas_temporales(vista_a texto) : longitud_(texto.size()) {
        if (longitud_ > sitio_corto) {
            largo_ = cadena_a::con_sitio(longitud_);
        }
        char* destino = largo_.es_nula() ? corto_ : largo_.datos();
        rasgos<char>::copy(destino, texto.data(), longitud_);
        plataforma::minusculas_ansi(destino, longitud_);
    }
    vista_a ver() const noexcept { return {largo_.es_nula() ? corto_ : largo_.c_str(), longitud_}; }

private:
    static constexpr std::size_t sitio_corto = MAX_PATH;
    char corto_[sitio_corto];
    cadena_a largo_;
    std::size_t longitud_;
};

// Letter case counts in the wide flavour only.
bool i_pasa_filtro(vista_w nombre, vista_w filtro) noexcept {
    return i_cumple_filtro<wchar_t>(nombre, filtro);
}
bool i_pasa_filtro(vista_a nombre, vista_a filtro) noexcept {
    const minusculas_temporales nombre_en_minusculas(nombre);
    const minusculas_temporales filtro_en_minusculas(filtro);
    return i_cumple_filtro<char>(nombre_en_minusculas.ver(), filtro_en_minusculas.ver());
}

// The name that a caller's buffer holds; the buffer may never have been written.
template <class C, std::size_t N>
vista<C> i_texto_acotado(const C (&bufer)[N]) noexcept {
    std::size_t longitud = 0;
    while (longitud < N && bufer[longitud] != C(0)) {
        ++longitud;
    }
    return vista<C>(bufer, longitud);
}

void i_informa_de_final(DWORD codigo, const WIN32_FIND_DATAW& ultima) noexcept {
    error_interno_liberando_mensaje_u(
        copiaforu_nousar_formatea(L"GetLastError() = %u [%s]", {codigo, i_texto_acotado(ultima.cFileName)}));
}
void i_informa_de_final(DWORD codigo, const WIN32_FIND_DATAA&) noexcept {
    const cadena_a texto = nousar_formatea("GetLastError() = %d", {static_cast<int>(codigo)});
    error_interno_msg("last_error == ERROR_NO_MORE_FILES", texto.ver());
}

// Where the last component of a pattern begins; 0 when there is no separator before it.
template <class C>
std::size_t i_principio_de_ultimo_componente(vista<C> patron) noexcept {
    return tras_el_ultimo(patron, es_separador<C>);
}

}  // namespace

template <class C>
busqueda<C>::busqueda(const C* patron, entrada<C>* primera, detalle cuanto) {
    const vista<C> completo = a_vista(patron);
    if (patron != nullptr) {
        manija = i_abre_en_sistema(patron, primera, cuanto);
        if (manija.valida()) {
            return;
        }
    }
    // Whatever the reason: the whole directory is searched, and what it holds is filtered here.
    const std::size_t ultimo = i_principio_de_ultimo_componente(completo);
    if (!i_comprueba(ultimo > 0, "(path_filtro_generico) != NULL")) {
        return;
    }
    i_comprueba(ultimo < completo.size(), "i+1 < len");
    const cadena<C> generico = concatena<C>({completo.substr(0, ultimo), LITERAL(C, "*")});
    manija = i_abre_en_sistema(generico.c_str(), primera, cuanto);
    if (manija.valida()) {
        filtro = cadena<C>(completo.substr(ultimo));
    }
}

template <class C>
bool i_siguiente_entrada(HANDLE manija, const C* filtro, unsigned long* num_entradas,
                         entrada<C>* destino) noexcept {
    if (manija == INVALID_HANDLE_VALUE) {
        return false;
    }
    for (;;) {
        if (++*num_entradas > 1 && !i_sigue_en_sistema(manija, destino)) {
            const DWORD codigo = ::GetLastError();
            if (codigo != ERROR_NO_MORE_FILES) {
                i_informa_de_final(codigo, *destino);
            }
            return false;
        }
        if (filtro == nullptr || i_pasa_filtro(i_texto_acotado(destino->cFileName), vista<C>(filtro))) {
            return true;
        }
    }
}

template struct busqueda<char>;
template struct busqueda<wchar_t>;
template bool i_siguiente_entrada<char>(HANDLE, const char*, unsigned long*, entrada<char>*) noexcept;
template bool i_siguiente_entrada<wchar_t>(HANDLE, const wchar_t*, unsigned long*,
                                           entrada<wchar_t>*) noexcept;

namespace {

// The exported records have no gaps between their fields, so the fields are written by value, and what the
// system fills in is taken from a buffer of its own.
static_assert(sizeof(Dirwin) == sizeof(WIN32_FIND_DATAA) + 22 &&
                  sizeof(Dirwin_u) == sizeof(WIN32_FIND_DATAW) + 22,
              "records are packed: other modules rely on their layout");

template <class C>
registro_dirwin<C>* i_crea(const C* patron, lugar donde) {
    auto nuevo = registro<registro_dirwin<C>>::a_cero(1, donde);
    entrada<C> primera = {};
    busqueda<C> abierta(patron, &primera, detalle::todo);
    std::memcpy(nuevo.get(), &primera, sizeof(primera));
    nuevo->con_filtro_propio = abierta.filtro.es_nula() ? FALSO : CIERTO;
    nuevo->filtro_propio = abierta.filtro.suelta();
    nuevo->busqueda = abierta.manija.suelta();
    return nuevo.suelta();
}

template <class C>
unsigned short i_findnextfile(registro_dirwin<C>* dirwin, const char* expresion, entrada<C>* find_data,
                              lugar donde) noexcept {
    const bool hay_enumerador = i_comprueba(dirwin != nullptr, expresion, donde);
    if (!i_comprueba(find_data != nullptr, "(find_data) != NULL", donde) || !hay_enumerador) {
        return FALSO;
    }
    if (dirwin->busqueda == INVALID_HANDLE_VALUE) {
        return FALSO;
    }
    unsigned long num_entradas = dirwin->num_entradas;
    if (num_entradas == 0) {
        std::memcpy(find_data, dirwin, sizeof(*find_data));  // the first entry opens the record
    }
    const C* filtro = dirwin->con_filtro_propio == CIERTO ? dirwin->filtro_propio : nullptr;
    const bool hay = i_siguiente_entrada<C>(dirwin->busqueda, filtro, &num_entradas, find_data);
    dirwin->num_entradas = num_entradas;
    return hay ? CIERTO : FALSO;
}

template <class R>
void i_destruye(R** dirwin, const char* expresion, const char* expresion_puntero, lugar donde) noexcept {
    if (!i_comprueba(dirwin != nullptr, expresion, donde) ||
        !i_comprueba(*dirwin != nullptr, expresion_puntero, donde)) {
        return;
    }
    const manija_busqueda cierra((*dirwin)->busqueda);
    if ((*dirwin)->con_filtro_propio == CIERTO) {
        i_libera((*dirwin)->filtro_propio);
    }
    i_libera(*dirwin);
    *dirwin = nullptr;
}

template <class E>
unsigned short i_con_atributo(const E* entrada, DWORD atributo, lugar donde) noexcept {
    return i_comprueba(entrada != nullptr, "(findData) != NULL", donde) &&
                   (entrada->dwFileAttributes & atributo) != 0
               ? CIERTO
               : FALSO;
}

}  // namespace
}  // namespace lumodir

using namespace lumodir;

Dirwin* dirwin_crea(const char* patron) {
    return i_crea(patron, lugar::aqui());
}

Dirwin_u* dirwin_crea_UNICODE(const wchar_t* patron) {
    return i_crea(patron, lugar::aqui());
}

unsigned short dirwin_findnextfile(Dirwin* dirwin, WIN32_FIND_DATAA* find_data) {
    return i_findnextfile<char>(dirwin, "(dirwin) != NULL", find_data, lugar::aqui());
}

unsigned short dirwin_findnextfile_UNICODE(Dirwin_u* dirwinW, WIN32_FIND_DATAW* find_data) {
    return i_findnextfile<wchar_t>(dirwinW, "(dirwinW) != NULL", find_data, lugar::aqui());
}

unsigned short dirwin_es_directorio(const WIN32_FIND_DATAA* findData) {
    return i_con_atributo(findData, FILE_ATTRIBUTE_DIRECTORY, lugar::aqui());
}

unsigned short dirwin_es_directorio_UNICODE(const WIN32_FIND_DATAW* findData) {
    return i_con_atributo(findData, FILE_ATTRIBUTE_DIRECTORY, lugar::aqui());
}

unsigned short dirwin_es_solo_lectura_UNICODE(const WIN32_FIND_DATAW* findData) {
    return i_con_atributo(findData, FILE_ATTRIBUTE_READONLY, lugar::aqui());
}

unsigned short dirwin_cumple_filtro(const char* nombre_y_extension, const char* filtro_nombre_y_extension) {
    const bool hay_nombre = i_comprueba(nombre_y_extension != nullptr, "(nombre_y_extension) != NULL");
    if (!i_comprueba(filtro_nombre_y_extension != nullptr, "(filtro_nombre_y_extension) != NULL") ||
        !hay_nombre) {
        return FALSO;
    }
    return i_pasa_filtro(a_vista(nombre_y_extension), a_vista(filtro_nombre_y_extension)) ? CIERTO : FALSO;
}

void dirwin_destruye(Dirwin** dirwin) {
    i_destruye(dirwin, "(dirwin) != NULL", "(*dirwin) != NULL", lugar::aqui());
}

void dirwin_destruye_UNICODE(Dirwin_u** dirwinW) {
    i_destruye(dirwinW, "(dirwinW) != NULL", "(*dirwinW) != NULL", lugar::aqui());
}
