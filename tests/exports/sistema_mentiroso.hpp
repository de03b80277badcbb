// A system that never does anything: every call of the table that can fail answers out of a random source, and
// none reaches Windows. What a wild argument asks for cannot happen to any real file, key or process. Windows only.
//
// It fails with codes of all kinds or, when told to lie, answers success with rubbish: names of any length, any
// attributes, any sizes. A lie costs one of a number of lies, so that no enumeration lasts for ever.
#pragma once

#include <random>
#include <set>

#include "apoyo/apoyo.hpp"
#include "apoyo/llamadas.hpp"
#include "files/nombre_largo.hpp"

namespace exports {

using fuente = std::mt19937;

inline unsigned uno_de(fuente& f, unsigned cuantos) {
    return static_cast<unsigned>(f() % cuantos);
}

class sistema_mentiroso {
public:
    sistema_mentiroso(fuente& f, unsigned mentiras) : f_(f), mentiras_(mentiras) {
        i_yo() = this;
        interno::i_olvida_nombre_largo();
        apoyo::con_cada_llamada([]<auto Entrada>() { i_desvia(&(interno::sistema.*Entrada)); });
        i_desvia_lo_particular();
    }
    ~sistema_mentiroso() {
        i_yo() = nullptr;
        interno::i_olvida_nombre_largo();
    }
    sistema_mentiroso(const sistema_mentiroso&) = delete;
    sistema_mentiroso& operator=(const sistema_mentiroso&) = delete;

    unsigned long llamadas() const { return llamadas_; }
    std::size_t abiertas() const { return abiertas_.size(); }

private:
    static sistema_mentiroso*& i_yo() {
        static sistema_mentiroso* yo = nullptr;
        return yo;
    }
    // Whether this call lies; a call that does not fails, with its code told.
    static bool i_miente() {
        sistema_mentiroso& yo = *i_yo();
        ++yo.llamadas_;
        ::SetLastError(i_codigo());
        if (yo.mentiras_ == 0 || uno_de(yo.f_, 6) == 0) {
            return false;
        }
        --yo.mentiras_;
        return true;
    }
    static DWORD i_codigo() {
        static const DWORD codigos[] = {
            ERROR_FILE_NOT_FOUND,   ERROR_PATH_NOT_FOUND,  ERROR_ACCESS_DENIED,       ERROR_NO_MORE_FILES,
            ERROR_WRITE_PROTECT,    ERROR_NOT_READY,       ERROR_SHARING_VIOLATION,   ERROR_LOCK_VIOLATION,
            ERROR_FILE_EXISTS,      ERROR_DISK_FULL,       ERROR_INSUFFICIENT_BUFFER, ERROR_INVALID_NAME,
            ERROR_DIR_NOT_EMPTY,    ERROR_ALREADY_EXISTS,  ERROR_MORE_DATA,           ERROR_NO_MORE_ITEMS,
            ERROR_INVALID_FUNCTION, ERROR_NETNAME_DELETED, ERROR_FILENAME_EXCED_RANGE};
        const unsigned cual = uno_de(i_yo()->f_, 1 + sizeof codigos / sizeof *codigos);
        return cual == 0 ? static_cast<DWORD>(i_yo()->f_()) | 1u : codigos[cual - 1];
    }
    static HANDLE i_manija() {
        const auto nueva = reinterpret_cast<HANDLE>(++i_yo()->ultima_ * 4);
        i_yo()->abiertas_.insert(nueva);
        return nueva;
    }

    // What an out-argument receives in a lie, by its type.
    template <class T>
    static void i_bytes(T* destino, std::size_t bytes = sizeof(T)) {
        auto* p = reinterpret_cast<unsigned char*>(destino);
        for (std::size_t i = 0; i < bytes; ++i) {
            p[i] = static_cast<unsigned char>(i_yo()->f_());
        }
    }
    template <class C>
    static void i_nombre(C* destino, std::size_t sitio) {
        static const char trozos[] = "ab. ~$\\/:*?-\x80\xFF";
        std::size_t largo = uno_de(i_yo()->f_, 8) == 0 ? sitio - 1 : uno_de(i_yo()->f_, 12);
        largo = largo < sitio ? largo : sitio - 1;
        for (std::size_t i = 0; i < largo; ++i) {
            const unsigned cual = uno_de(i_yo()->f_, sizeof trozos + 1);
            const auto raro = static_cast<C>(0xD800 + uno_de(i_yo()->f_, 0x800));  // half a pair
            destino[i] = cual < sizeof trozos - 1 ? static_cast<C>(trozos[cual]) : raro == 0 ? C('x') : raro;
        }
        destino[largo] = C();
    }
    static void i_llena(WIN32_FIND_DATAW* d) {
        i_bytes(d);
        i_nombre(d->cFileName, MAX_PATH);
        i_nombre(d->cAlternateFileName, 14);
    }
    static void i_llena(WIN32_FIND_DATAA* d) {
        i_bytes(d);
        i_nombre(d->cFileName, MAX_PATH);
        i_nombre(d->cAlternateFileName, 14);
    }
    // Fields past the size that the caller tells are not there.
    static void i_llena(PROCESSENTRY32W* d) {
        d->th32ProcessID = static_cast<DWORD>(i_yo()->f_());
        i_nombre(d->szExeFile, 100);
    }
    static void i_llena(MODULEENTRY32W* d) {
        i_nombre(d->szModule, 100);
        i_nombre(d->szExePath, 100);
    }
    static void i_llena(DWORD* d) { *d = uno_de(i_yo()->f_, 2) == 0 ? uno_de(i_yo()->f_, 64) : 0; }
    static void i_llena(FILETIME* d) { i_bytes(d); }
    static void i_llena(SYSTEMTIME* d) { i_bytes(d); }
    static void i_llena(BY_HANDLE_FILE_INFORMATION* d) { i_bytes(d); }
    static void i_llena(HKEY* d) { *d = static_cast<HKEY>(i_manija()); }
    template <class T>
    static void i_llena(T) {}  // an argument that goes in

    // One text that a call gives back: the length when it fits, else what it would need.
    template <class C>
    static DWORD i_texto(C* destino, DWORD sitio) {
        if (!i_miente()) {
            return 0;
        }
        if (destino == nullptr || sitio == 0 || uno_de(i_yo()->f_, 6) == 0) {
            return sitio + 1 + uno_de(i_yo()->f_, 300);
        }
        i_nombre(destino, sitio);
        return static_cast<DWORD>(std::char_traits<C>::length(destino));
    }

    // The general form of an answer.
    template <class R>
    static R i_fallo() {
        if constexpr (std::is_same_v<R, HANDLE>) {
            return INVALID_HANDLE_VALUE;
        } else if constexpr (std::is_same_v<R, LSTATUS>) {
            return static_cast<LSTATUS>(::GetLastError());
        } else if constexpr (std::is_same_v<R, DWORD>) {
            return ~DWORD{0};
        } else {
            return R();
        }
    }
    template <class R>
    static R i_exito() {
        if constexpr (std::is_same_v<R, HANDLE>) {
            return i_manija();
        } else if constexpr (std::is_same_v<R, LSTATUS>) {
            return ERROR_SUCCESS;
        } else if constexpr (std::is_same_v<R, BOOL>) {
            return TRUE;
        } else if constexpr (std::is_pointer_v<R>) {
            return R();
        } else {
            return static_cast<R>(i_yo()->f_());
        }
    }
    template <class R, class... A>
    static R i_responde(A... a) {
        if (!i_miente()) {
            return i_fallo<R>();
        }
        (i_llena_si_hay(a), ...);
        return i_exito<R>();
    }
    template <class T>
    static void i_llena_si_hay(T a) {
        if constexpr (std::is_pointer_v<T>) {
            if (a != nullptr) {
                i_llena(a);
            }
        }
    }
    template <class R, class... A>
    static void i_desvia(R (**entrada)(A...)) {
        *entrada = i_responde<R, A...>;
    }
    template <class R, class M>
    static R i_cierra(M manija) {
        ++i_yo()->llamadas_;
        EXPECT_EQ(i_yo()->abiertas_.erase(manija), 1u) << "closed, but not open";
        if constexpr (std::is_same_v<R, LSTATUS>) {
            return uno_de(i_yo()->f_, 5) == 0 ? ERROR_INVALID_HANDLE : ERROR_SUCCESS;
        } else {
            return uno_de(i_yo()->f_, 5) != 0;
        }
    }

    // Where the general form says too little.
    static BOOL WINAPI i_pone_informacion(HANDLE, FILE_INFO_BY_HANDLE_CLASS, LPVOID, DWORD) {
        return i_miente();  // nothing is written to what goes in
    }
    static BOOL WINAPI i_informacion(HANDLE, FILE_INFO_BY_HANDLE_CLASS, LPVOID datos, DWORD bytes) {
        if (!i_miente()) {
            return FALSE;
        }
        i_bytes(static_cast<char*>(datos), bytes);
        return TRUE;
    }
    static BOOL WINAPI i_atributos(LPCWSTR, GET_FILEEX_INFO_LEVELS, LPVOID datos) {
        return i_informacion(nullptr, FileBasicInfo, datos, sizeof(WIN32_FILE_ATTRIBUTE_DATA));
    }
    static HANDLE WINAPI i_busca(LPCWSTR, FINDEX_INFO_LEVELS, LPVOID datos, FINDEX_SEARCH_OPS, LPVOID,
                                 DWORD) {
        if (!i_miente()) {
            return INVALID_HANDLE_VALUE;
        }
        i_llena(static_cast<WIN32_FIND_DATAW*>(datos));
        return i_manija();
    }
    static DWORD WINAPI i_completo(LPCWSTR, DWORD sitio, LPWSTR destino, LPWSTR* parte) {
        if (parte != nullptr) {
            *parte = nullptr;
        }
        return i_texto(destino, sitio);
    }
    static DWORD WINAPI i_otra_forma(LPCWSTR, LPWSTR destino, DWORD sitio) { return i_texto(destino, sitio); }
    static DWORD WINAPI i_temporal(DWORD sitio, LPWSTR destino) { return i_texto(destino, sitio); }
    static UINT WINAPI i_fichero_temporal(LPCWSTR, LPCWSTR, UINT, LPWSTR destino) {
        if (!i_miente()) {
            return 0;
        }
        i_nombre(destino, MAX_PATH);
        return 1;
    }
    static BOOL WINAPI i_nombre_de_fichero(HANDLE, void* bufer, DWORD bytes, const wchar_t** nombre,
                                           DWORD* unidades) {
        *nombre = static_cast<wchar_t*>(bufer);
        *unidades = i_texto(static_cast<wchar_t*>(bufer), bytes / 4);
        *unidades = *unidades < bytes / 4 ? *unidades : 0;
        return *unidades != 0;
    }
    static UINT WINAPI i_windows(LPWSTR destino, UINT sitio) { return i_texto(destino, sitio); }
    static DWORD WINAPI i_modulo_w(HMODULE, LPWSTR destino, DWORD sitio) {
        const DWORD largo = i_texto(destino, sitio);
        return largo < sitio ? largo : sitio;
    }
    template <class C>
    static LSTATUS WINAPI i_valor(HKEY, const C*, DWORD*, DWORD* tipo, BYTE* datos, DWORD* bytes) {
        i_llena_si_hay(tipo);
        return i_da_datos(datos, bytes);
    }
    static LSTATUS WINAPI i_enumera_valor(HKEY, DWORD, LPWSTR nombre, DWORD* largo, DWORD*, DWORD* tipo,
                                          BYTE* datos, DWORD* bytes) {
        i_llena_si_hay(tipo);
        if (*largo == 0 || uno_de(i_yo()->f_, 8) == 0) {
            return i_miente() ? ERROR_MORE_DATA : ERROR_NO_MORE_ITEMS;
        }
        i_nombre(nombre, *largo);
        *largo = static_cast<DWORD>(std::char_traits<wchar_t>::length(nombre));
        return datos == nullptr && bytes == nullptr ? (i_miente() ? ERROR_SUCCESS : ERROR_NO_MORE_ITEMS)
                                                    : i_da_datos(datos, bytes);
    }
    static LSTATUS i_da_datos(BYTE* datos, DWORD* bytes) {
        if (!i_miente()) {
            return static_cast<LSTATUS>(::GetLastError());
        }
        const DWORD sitio = *bytes;
        *bytes = uno_de(i_yo()->f_, 80);
        if (datos == nullptr) {
            return ERROR_SUCCESS;
        }
        if (*bytes > sitio) {
            return ERROR_MORE_DATA;
        }
        i_bytes(datos, *bytes);
        return ERROR_SUCCESS;
    }
    template <class C>
    static LSTATUS WINAPI i_subclave(HKEY, DWORD, C* nombre, DWORD* largo, DWORD*, C*, DWORD*, FILETIME*) {
        if (!i_miente()) {
            return static_cast<LSTATUS>(::GetLastError());
        }
        if (*largo == 0) {
            return ERROR_MORE_DATA;
        }
        i_nombre(nombre, *largo);
        *largo = static_cast<DWORD>(std::char_traits<C>::length(nombre));
        return ERROR_SUCCESS;
    }
    static DWORD WINAPI i_mensaje(DWORD, LPCVOID, DWORD, DWORD, LPWSTR destino, DWORD sitio, char**) {
        const DWORD largo = i_texto(destino, sitio);
        return largo < sitio ? largo : 0;
    }
    static HANDLE WINAPI i_abre_proceso(DWORD, BOOL, DWORD) { return i_miente() ? i_manija() : nullptr; }
    static BOOL WINAPI i_volumen(LPCWSTR, LPWSTR nombre, DWORD sitio, DWORD*, DWORD*, DWORD*, LPWSTR, DWORD) {
        const DWORD largo = i_texto(nombre, sitio);
        return largo != 0 && largo < sitio;
    }
    static DWORD WINAPI i_dispositivo(LPCWSTR, LPWSTR destino, DWORD sitio) {
        const DWORD largo = i_texto(destino, sitio);
        return largo < sitio ? largo : 0;
    }
    static DWORD WINAPI i_red(LPCWSTR, LPWSTR destino, DWORD* sitio) {
        const DWORD largo = i_texto(destino, *sitio);
        return largo < *sitio ? NO_ERROR : ERROR_MORE_DATA;
    }
    template <class C>
    static C* i_directorio(C* destino, int sitio) {
        const DWORD largo = i_texto(destino, static_cast<DWORD>(sitio));
        return largo != 0 && largo < static_cast<DWORD>(sitio) ? destino : nullptr;
    }
    static wchar_t* i_directorio_de(int, wchar_t* destino, int sitio) { return i_directorio(destino, sitio); }

    void i_desvia_lo_particular() {
        interno::tabla_sistema& t = interno::sistema;
        t.GetFileAttributesExW = i_atributos;
        t.CloseHandle = i_cierra<BOOL, HANDLE>;
        t.GetFileInformationByHandleEx = i_informacion;
        t.SetFileInformationByHandle = i_pone_informacion;
        t.FindFirstFileExW = i_busca;
        t.FindClose = i_cierra<BOOL, HANDLE>;
        t.GetFullPathNameW = i_completo;
        t.GetShortPathNameW = i_otra_forma;
        t.GetLongPathNameW = i_otra_forma;
        t.GetTempPathW = i_temporal;
        t.GetTempFileNameW = i_fichero_temporal;
        t.GetWindowsDirectoryW = i_windows;
        t.GetModuleFileNameW = i_modulo_w;
        t.nombre_de_fichero = i_nombre_de_fichero;
        t.RegCloseKey = i_cierra<LSTATUS, HKEY>;
        t.RegQueryValueExA = i_valor<char>;
        t.RegQueryValueExW = i_valor<wchar_t>;
        t.RegEnumKeyExA = i_subclave<char>;
        t.RegEnumKeyExW = i_subclave<wchar_t>;
        t.RegEnumValueW = i_enumera_valor;
        t.OpenProcess = i_abre_proceso;
        t.CloseHandle = i_cierra<BOOL, HANDLE>;
        t.GetVolumeInformationW = i_volumen;
        t.QueryDosDeviceW = i_dispositivo;
        t.WNetGetConnectionW = i_red;
        t._wgetdcwd = i_directorio_de;
        t.GetEnvironmentVariableW = i_otra_forma;
        t.FormatMessageW = i_mensaje;
        t._wgetcwd = i_directorio<wchar_t>;
        i_desvia(&t.sigue_enlaces);
        t.busca_nombre_largo = []() -> interno::funcion_nombre_largo { return i_otra_forma; };
        // Never asked while the answer above is there; were it asked, it has nothing.
        t.SHGetMalloc = [](IMalloc**) -> HRESULT { return E_FAIL; };
        t.SHGetDesktopFolder = [](IShellFolder**) -> HRESULT { return E_FAIL; };
        t.SHGetPathFromIDListW = [](const _ITEMIDLIST*, LPWSTR) -> BOOL { return FALSE; };
    }

    const apoyo::sistema_guardado guardado_;
    fuente& f_;
    unsigned mentiras_;
    unsigned long llamadas_ = 0;
    std::uintptr_t ultima_ = 0x1000;
    std::set<HANDLE> abiertas_;
};

}  // namespace exports
