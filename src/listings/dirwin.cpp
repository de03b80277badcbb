// See dirwin.hpp.
#include "listings/dirwin.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "companions/error_interno.hpp"
#include "companions/plataforma.hpp"
#include "companions/sin_dialogos.hpp"
#include "frame/puente.hpp"
#include "listings/filtro.hpp"

namespace interno {
namespace {

// The name that a caller's buffer holds; the buffer may never have been written.
template <class C, std::size_t N>
vista<C> i_texto_acotado(const C (&bufer)[N]) noexcept {
    return vista<C>(bufer, static_cast<std::size_t>(std::find(bufer, bufer + N, C(0)) - bufer));
}

// The end of a walk that is not that of the directory, as each flavour reports it.
template <class C>
void i_informa_de_final(DWORD codigo, const WIN32_FIND_DATAW& ultima) noexcept {
    if constexpr (es_ancho<C>) {
        interno::i_informa_de_final(codigo, i_texto_acotado(ultima.cFileName));
    } else {
        const cadena_a texto = nousar_formatea("GetLastError() = %d", {static_cast<int>(codigo)});
        error_interno_msg("last_error == ERROR_NO_MORE_FILES", texto.ver());
    }
}

template <class C>
bool i_da_un_paso(HANDLE manija, WIN32_FIND_DATAW& destino) noexcept {
    {
        const sin_dialogos callado;  // not while a receiver of the host's runs
        if (sistema.FindNextFileW(manija, &destino)) {
            return true;
        }
    }
    const DWORD codigo = ::GetLastError();
    if (codigo != ERROR_NO_MORE_FILES) {
        i_informa_de_final<C>(codigo, destino);
    }
    return false;
}

// A pattern tied to its place, together with the search of the whole directory that may have to follow.
class patron_fijado {
public:
    // `ultimo`: where the last component begins; 0 when there is no separator before it.
    patron_fijado(const wchar_t* dado, std::size_t ultimo)
        : entero_(dado, ruta_fijada::uso::busqueda), nombre_(a_vista(dado).substr(ultimo)) {
        const vista_w forma(entero_.c_str());
        directorio_ = forma.substr(0, forma.size() - std::min(nombre_.size(), forma.size()));
        // A full form that has lost the component ("..", a final blank), or that is another place for it (the name of
        // a device), does not tell its directory.
        const bool es_dispositivo = entero_.c_str() != dado && empieza_por(forma, L"\\\\.\\");
        if (ultimo > 0 && (es_dispositivo || !acaba_en(forma, nombre_) || !acaba_en_separador(directorio_))) {
            texto_aparte_ = concatena<wchar_t>({a_vista(dado).substr(0, ultimo), L"*"});
            aparte_.emplace(texto_aparte_.c_str());
        }
    }

    manija_busqueda busca(WIN32_FIND_DATAW& primera, detalle cuanto) const noexcept {
        return lmlongpath_FindFirstFileW(entero_, primera, cuanto);
    }
    manija_busqueda busca_todo(WIN32_FIND_DATAW& primera, detalle cuanto) const {
        return aparte_ ? lmlongpath_FindFirstFileW(*aparte_, primera, cuanto)
                       : lmlongpath_FindFirstFileW(concatena<wchar_t>({directorio_, L"*"}).c_str(), primera,
                                                   cuanto);
    }

private:
    ruta_fijada entero_;
    vista_w nombre_;
    vista_w directorio_;  // of the full form
    cadena_w texto_aparte_;
    std::optional<ruta_fijada> aparte_;
};

// What no other pattern can cure: the directory is missing, or its drive or share is away. To ask again would only
// cost a second time-out.
bool i_falta_el_directorio(DWORD codigo) noexcept {
    switch (codigo) {
        case ERROR_PATH_NOT_FOUND:
        case ERROR_NOT_READY:
        case ERROR_BAD_NETPATH:
        case ERROR_NETNAME_DELETED:
        case ERROR_BAD_NET_NAME:
        case ERROR_NETWORK_UNREACHABLE:
            return true;
        default:
            return false;
    }
}

// The exported records have no gaps between their fields, so the fields are written by value, and what the
// system fills in is taken from a buffer of its own.
static_assert(sizeof(Dirwin) == sizeof(WIN32_FIND_DATAA) + 22 &&
                  sizeof(Dirwin_u) == sizeof(WIN32_FIND_DATAW) + 22,
              "records are packed: other modules rely on their layout");

// A name that an 8-bit record holds; a text that does not fit leaves it empty.
template <std::size_t N>
bool i_escribe_ansi(vista_w texto, char (&destino)[N]) noexcept {
    const std::size_t bytes = plataforma::utf16_a_ansi(texto, destino, N - 1);
    destino[bytes < N ? bytes : 0] = '\0';
    return bytes < N;
}

// The entry as the exported record of a flavour has it. A name too long for an 8-bit record gives way to the file's
// short name, which is its own too; cut, it might be that of another file. Without one the name is empty.
void i_convierte(const WIN32_FIND_DATAW& ancha, WIN32_FIND_DATAW& destino) noexcept {
    destino = ancha;
}
void i_convierte(const WIN32_FIND_DATAW& ancha, WIN32_FIND_DATAA& destino) noexcept {
    // The fields before the names are the same in both.
    destino = {};
    std::memcpy(&destino, &ancha, offsetof(WIN32_FIND_DATAA, cFileName));
    const vista_w corto = i_texto_acotado(ancha.cAlternateFileName);
    i_escribe_ansi(corto, destino.cAlternateFileName);
    if (!i_escribe_ansi(i_texto_acotado(ancha.cFileName), destino.cFileName)) {
        i_escribe_ansi(corto, destino.cFileName);
    }
}

// The next entry of a record, whose first field is the first entry. In 8-bit text an entry without a name that the
// record holds is passed over.
bool i_siguiente_de_registro(const void*, HANDLE manija, const wchar_t* filtro, unsigned long& num_entradas,
                             WIN32_FIND_DATAW& destino) noexcept {
    return i_siguiente_entrada<wchar_t>(manija, filtro, num_entradas, destino);
}
bool i_siguiente_de_registro(const void* primera, HANDLE manija, const char* filtro,
                             unsigned long& num_entradas, WIN32_FIND_DATAA& destino) noexcept {
    WIN32_FIND_DATAW ancha;
    for (;;) {
        WIN32_FIND_DATAA siguiente;
        if (++num_entradas == 1) {
            std::memcpy(&siguiente, primera, sizeof(siguiente));
        } else if (i_da_un_paso<char>(manija, ancha)) {
            i_convierte(ancha, siguiente);
        } else {
            return false;
        }
        const vista_a nombre(siguiente.cFileName);
        if (!nombre.empty() && (filtro == nullptr || i_pasa_filtro(nombre, vista_a(filtro)))) {
            destino = siguiente;
            return true;
        }
    }
}

// The last component of a pattern as the enumerator's own filter, in the pattern's flavour. Written as names are, whichever
// pair a caller took of those that mean the same; bytes that mean nothing stay, or a "?" would stand for them.
cadena_w i_filtro_propio(const wchar_t*, vista_w filtro) {
    return cadena_w(filtro);
}
cadena_a i_filtro_propio(const char* patron, vista_w filtro) {
    cadena_a como_nombres = utunicode_UNICODE_a_ANSI(filtro);
    if (utunicode_ANSI_a_UNICODE(como_nombres.ver()).ver() == filtro) {
        return como_nombres;
    }
    const vista_a dado(patron);
    return cadena_a(dado.substr(tras_el_ultimo(dado, es_separador<char>)));
}

}  // namespace

bool i_es_fichero(const WIN32_FIND_DATAW& e) noexcept {
    return !i_es_directorio(e);
}

bool i_es_directorio_sin_punto(const WIN32_FIND_DATAW& e) noexcept {
    return i_es_directorio(e) && !empieza_por(i_nombre_de_entrada(e), L".");
}

bool i_es_directorio_a_la_vista(const WIN32_FIND_DATAW& e) noexcept {
    return i_es_directorio_sin_punto(e) && (e.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) == 0;
}

bool i_es_directorio_con_punto(const WIN32_FIND_DATAW& e) noexcept {
    return i_es_directorio(e) && !i_es_punto_o_dos(i_nombre_de_entrada(e));
}

void i_informa_de_final(DWORD codigo, vista_w ultimo_nombre) noexcept {
    error_interno_liberando_mensaje_u(
        copiaforu_nousar_formatea(L"GetLastError() = %u [%s]", {codigo, ultimo_nombre}));
}

template <class C>
busqueda<C>::busqueda(const C* patron, WIN32_FIND_DATAW& primera, detalle cuanto) {
    const paso<const C*> ancho(patron);
    const vista_w completo = a_vista(ancho.get());
    const std::size_t ultimo = tras_el_ultimo(completo, es_separador<wchar_t>);
    const patron_fijado fijado(ancho.get(), ultimo);
    DWORD codigo = ERROR_SUCCESS;
    if (patron != nullptr) {
        manija = fijado.busca(primera, cuanto);
        codigo = ::GetLastError();
        if (manija.valida()) {
            return;
        }
    }
    // Whatever the reason: the whole directory is searched, and what it holds is filtered here.
    if (!i_comprueba(ultimo > 0, "(path_filtro_generico) != NULL")) {
        return;
    }
    i_comprueba(ultimo < completo.size(), "i+1 < len");
    if (i_falta_el_directorio(codigo)) {
        return;
    }
    manija = fijado.busca_todo(primera, cuanto);
    if (manija.valida()) {
        filtro = i_filtro_propio(patron, completo.substr(ultimo));
    }
}

template <class C>
bool i_siguiente_entrada(HANDLE manija, const C* filtro, unsigned long& num_entradas,
                         WIN32_FIND_DATAW& destino) noexcept {
    if (manija == INVALID_HANDLE_VALUE) {
        return false;
    }
    for (;;) {
        if (++num_entradas > 1 && !i_da_un_paso<C>(manija, destino)) {
            return false;
        }
        if (filtro == nullptr) {
            return true;
        }
        const vista_w nombre = i_texto_acotado(destino.cFileName);
        if constexpr (es_ancho<C>) {
            if (i_pasa_filtro(nombre, vista_w(filtro))) {
                return true;
            }
        } else if (i_pasa_filtro(utunicode_UNICODE_a_ANSI(nombre).ver(), vista_a(filtro))) {
            return true;
        }
    }
}

template struct busqueda<char>;
template struct busqueda<wchar_t>;
template bool i_siguiente_entrada<char>(HANDLE, const char*, unsigned long&, WIN32_FIND_DATAW&) noexcept;
template bool i_siguiente_entrada<wchar_t>(HANDLE, const wchar_t*, unsigned long&,
                                           WIN32_FIND_DATAW&) noexcept;

bool i_pasa_filtro(vista_w nombre, vista_w filtro) noexcept {
    return i_cumple_filtro<wchar_t>(nombre, filtro);
}

bool i_pasa_filtro(vista_a nombre, vista_a filtro) noexcept {
    const minusculas_temporales nombre_en_minusculas(nombre);
    const minusculas_temporales filtro_en_minusculas(filtro);
    return i_cumple_filtro<char>(nombre_en_minusculas.ver(), filtro_en_minusculas.ver());
}

template <class C>
duenyo_dirwin<C> i_crea_dirwin(const C* patron) {
    duenyo_dirwin<C> nuevo(registro<registro_dirwin<C>>::a_cero().suelta());
    WIN32_FIND_DATAW primera = {};
    busqueda<C> abierta(patron, primera, detalle::todo);
    entrada<C> convertida;
    i_convierte(primera, convertida);
    std::memcpy(nuevo.get(), &convertida, sizeof(convertida));
    nuevo->con_filtro_propio = !abierta.filtro.es_nula();
    nuevo->filtro_propio = abierta.filtro.suelta();
    nuevo->busqueda = abierta.manija.suelta();
    return nuevo;
}

template duenyo_dirwin<char> i_crea_dirwin(const char*);
template duenyo_dirwin<wchar_t> i_crea_dirwin(const wchar_t*);

template <class C>
bool i_siguiente(registro_dirwin<C>& dirwin, entrada<C>* destino) noexcept {
    if (dirwin.busqueda == INVALID_HANDLE_VALUE) {
        return false;
    }
    unsigned long num_entradas = dirwin.num_entradas;
    if (num_entradas == 0) {
        std::memcpy(destino, &dirwin, sizeof(*destino));  // the first entry opens the record
    }
    const C* filtro = dirwin.con_filtro_propio == 1 ? dirwin.filtro_propio : nullptr;
    const bool hay = i_siguiente_de_registro(&dirwin, dirwin.busqueda, filtro, num_entradas, *destino);
    dirwin.num_entradas = num_entradas;
    return hay;
}

template bool i_siguiente<char>(Dirwin&, WIN32_FIND_DATAA*) noexcept;
template bool i_siguiente<wchar_t>(Dirwin_u&, WIN32_FIND_DATAW*) noexcept;

}  // namespace interno
