// See nombre_largo.hpp.
#include "files/nombre_largo.hpp"

#include <shlobj.h>

#include <atomic>
#include <utility>

#include "companions/lmlongpath.hpp"
#include "companions/sin_dialogos.hpp"

namespace interno {
namespace {

constexpr DWORD sitio_clasico = MAX_PATH;  // characters, terminator included

DWORD WINAPI i_elige_y_pregunta(const wchar_t* corto, wchar_t* largo, DWORD sitio) noexcept;

// Two threads that ask first at once make the same choice.
std::atomic<funcion_nombre_largo> i_elegida{i_elige_y_pregunta};

DWORD WINAPI i_elige_y_pregunta(const wchar_t* corto, wchar_t* largo, DWORD sitio) noexcept {
    const funcion_nombre_largo propia = sistema.busca_nombre_largo();
    if (propia != nullptr) {
        const DWORD longitud = propia(corto, largo, sitio);
        if (longitud != 0 || ::GetLastError() != ERROR_CALL_NOT_IMPLEMENTED) {
            i_elegida = propia;
            return longitud;
        }
    }
    i_elegida = i_nombre_largo_del_escritorio;
    return i_nombre_largo_del_escritorio(corto, largo, sitio);
}

struct suelta_interfaz {
    template <class T>
    void operator()(T* puntero) const noexcept {
        puntero->Release();
    }
};
// A COM object; NULL when the system does not give it.
template <class T>
duenyo<T, suelta_interfaz> i_pide(HRESULT(WINAPI* pregunta)(T**)) noexcept {
    T* puntero = nullptr;
    const bool dado = SUCCEEDED(pregunta(&puntero));
    duenyo<T, suelta_interfaz> suyo(puntero);
    return dado ? std::move(suyo) : duenyo<T, suelta_interfaz>();
}

// The shell's path for a full one.
bool i_ruta_del_escritorio(wchar_t* completa, wchar_t (&texto)[sitio_clasico]) noexcept {
    const auto asignador = i_pide(sistema.SHGetMalloc);
    const auto carpeta = asignador == nullptr ? nullptr : i_pide(sistema.SHGetDesktopFolder);
    if (carpeta == nullptr) {
        return false;
    }
    PIDLIST_RELATIVE lista = nullptr;
    carpeta->ParseDisplayName(nullptr, nullptr, completa, nullptr, &lista, nullptr);
    const bool hay = lista != nullptr && sistema.SHGetPathFromIDListW(lista, texto);
    if (lista != nullptr) {
        asignador->Free(lista);
    }
    return hay;
}

DWORD i_falla(DWORD codigo) noexcept {
    ::SetLastError(codigo);
    return 0;
}

}  // namespace

void i_olvida_nombre_largo() noexcept {
    i_elegida = i_elige_y_pregunta;
}

DWORD i_nombre_largo(const wchar_t* corto, wchar_t* largo, DWORD sitio) noexcept {
    const sin_dialogos callado;  // both look at the drive
    return i_elegida.load()(corto, largo, sitio);
}

DWORD WINAPI i_nombre_largo_del_escritorio(const wchar_t* corto, wchar_t* largo, DWORD sitio) noexcept {
    if (corto == nullptr) {
        return i_falla(ERROR_INVALID_PARAMETER);
    }
    if (lmlongpath_GetFileAttributesW(corto) == INVALID_FILE_ATTRIBUTES) {
        return 0;
    }
    wchar_t completa[sitio_clasico];
    const DWORD longitud_completa = sistema.GetFullPathNameW(corto, sitio_clasico, completa, nullptr);
    if (longitud_completa == 0 || longitud_completa >= sitio_clasico) {
        return i_falla(ERROR_BUFFER_OVERFLOW);
    }
    wchar_t texto[sitio_clasico];
    if (!i_ruta_del_escritorio(completa, texto)) {
        return i_falla(ERROR_PATH_NOT_FOUND);
    }
    const vista_w encontrada(texto);
    if (encontrada.size() >= sitio) {
        return static_cast<DWORD>(encontrada.size() + 1);
    }
    rasgos_utf16::copy(largo, texto, encontrada.size() + 1);
    return static_cast<DWORD>(encontrada.size());
}

}  // namespace interno
