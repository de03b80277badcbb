// See nombre_largo.hpp.
#include "files/nombre_largo.hpp"

#include <atomic>

#include "companions/lmlongpath.hpp"
#include "companions/sin_dialogos.hpp"

namespace lumodir {
namespace {

constexpr DWORD sitio_clasico = MAX_PATH;  // characters, terminator included

funcion_nombre_largo i_busca_en_kernel32() noexcept {
    const HMODULE kernel32 = ::GetModuleHandleA("KERNEL32.DLL");
    return reinterpret_cast<funcion_nombre_largo>(
        reinterpret_cast<void (*)()>(::GetProcAddress(kernel32, "GetLongPathNameW")));
}

DWORD WINAPI i_elige_y_pregunta(const wchar_t* corto, wchar_t* largo, DWORD sitio) noexcept;

// Two threads that ask first at once make the same choice.
std::atomic<funcion_nombre_largo> i_elegida{i_elige_y_pregunta};

DWORD WINAPI i_elige_y_pregunta(const wchar_t* corto, wchar_t* largo, DWORD sitio) noexcept {
    const funcion_nombre_largo propia = busca_nombre_largo();
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

// Owner of a COM object.
template <class T>
class interfaz {
public:
    interfaz() noexcept = default;
    interfaz(const interfaz&) = delete;
    interfaz& operator=(const interfaz&) = delete;
    ~interfaz() {
        if (puntero_ != nullptr) {
            puntero_->Release();
        }
    }
    T** sitio() noexcept { return &puntero_; }
    T* operator->() const noexcept { return puntero_; }

private:
    T* puntero_ = nullptr;
};

// Item list of the shell for a full path, with the allocator that frees it.
class elemento {
public:
    explicit elemento(wchar_t* completa) noexcept {
        interfaz<IShellFolder> carpeta;
        if (SUCCEEDED(escritorio.SHGetMalloc(asignador_.sitio())) &&
            SUCCEEDED(escritorio.SHGetDesktopFolder(carpeta.sitio()))) {
            carpeta->ParseDisplayName(nullptr, nullptr, completa, nullptr, &lista_, nullptr);
        }
    }
    elemento(const elemento&) = delete;
    elemento& operator=(const elemento&) = delete;
    ~elemento() {
        if (lista_ != nullptr) {
            asignador_->Free(lista_);
        }
    }
    bool ruta(wchar_t (&texto)[sitio_clasico]) const noexcept {
        return lista_ != nullptr && escritorio.SHGetPathFromIDListW(lista_, texto);
    }

private:
    interfaz<IMalloc> asignador_;
    PIDLIST_RELATIVE lista_ = nullptr;
};

// The shell is loaded at the first question and stays, as its objects do: whoever loads this library for files alone,
// a service for example, does not get it too. The system finds this name in its own directory before any other.
template <class F>
F i_del_escritorio(const char* nombre) noexcept {
    const HMODULE shell32 = ::LoadLibraryW(L"shell32.dll");
    return shell32 == nullptr
               ? nullptr
               : reinterpret_cast<F>(reinterpret_cast<void (*)()>(::GetProcAddress(shell32, nombre)));
}
HRESULT WINAPI i_asignador_del_escritorio(IMalloc** asignador) {
    const auto pregunta = i_del_escritorio<decltype(&::SHGetMalloc)>("SHGetMalloc");
    return pregunta == nullptr ? E_NOTIMPL : pregunta(asignador);
}
HRESULT WINAPI i_carpeta_del_escritorio(IShellFolder** carpeta) {
    const auto pregunta = i_del_escritorio<decltype(&::SHGetDesktopFolder)>("SHGetDesktopFolder");
    return pregunta == nullptr ? E_NOTIMPL : pregunta(carpeta);
}
BOOL WINAPI i_ruta_de_elemento(PCIDLIST_ABSOLUTE lista, LPWSTR ruta) {
    const auto pregunta = i_del_escritorio<decltype(&::SHGetPathFromIDListW)>("SHGetPathFromIDListW");
    return pregunta == nullptr ? FALSE : pregunta(lista, ruta);
}

DWORD i_falla(DWORD codigo) noexcept {
    ::SetLastError(codigo);
    return 0;
}

}  // namespace

tabla_escritorio escritorio = {i_asignador_del_escritorio, i_carpeta_del_escritorio, i_ruta_de_elemento};
funcion_nombre_largo (*busca_nombre_largo)() noexcept = i_busca_en_kernel32;

void i_olvida_nombre_largo() noexcept {
    i_elegida = i_elige_y_pregunta;
}

DWORD i_nombre_largo(const wchar_t* corto, wchar_t* largo, DWORD sitio) noexcept {
    return i_elegida.load()(corto, largo, sitio);
}

DWORD WINAPI i_nombre_largo_del_escritorio(const wchar_t* corto, wchar_t* largo, DWORD sitio) noexcept {
    if (corto == nullptr) {
        return i_falla(ERROR_INVALID_PARAMETER);
    }
    const sin_dialogos callado;
    if (lmlongpath_GetFileAttributesW(corto) == INVALID_FILE_ATTRIBUTES) {
        return 0;
    }
    wchar_t completa[sitio_clasico];
    const DWORD longitud_completa = sistema.GetFullPathNameW(corto, sitio_clasico, completa, nullptr);
    if (longitud_completa == 0 || longitud_completa >= sitio_clasico) {
        return i_falla(ERROR_BUFFER_OVERFLOW);
    }
    wchar_t texto[sitio_clasico];
    if (!elemento(completa).ruta(texto)) {
        return i_falla(ERROR_PATH_NOT_FOUND);
    }
    const vista_w encontrada(texto);
    if (encontrada.size() >= sitio) {
        return static_cast<DWORD>(encontrada.size() + 1);
    }
    rasgos_utf16::copy(largo, texto, encontrada.size() + 1);
    return static_cast<DWORD>(encontrada.size());
}

}  // namespace lumodir
