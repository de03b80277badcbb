// Every call of the table that can fail behind one counter: call number N of an operation fails, once or for ever; all
// others go on to the real system. Windows only.
//
// A call that would change anything outside the test's own directory and its own key of the registry does not go on:
// it fails and is remembered (`fuera()`), whatever path the library may have come to.
#pragma once

#include <set>

#include "apoyo/apoyo.hpp"
#include "apoyo/cuenta_de_fallos.hpp"
#include "apoyo/llamadas.hpp"
#include "files/nombre_largo.hpp"

namespace exports {

class todas_las_llamadas {
public:
    todas_las_llamadas(apoyo::texto_w carpeta, apoyo::texto_w clave)
        : carpeta_(std::move(carpeta)), clave_(std::move(clave)) {
        i_yo() = this;
        interno::i_olvida_nombre_largo();
        ::SetThreadErrorMode(0, &modo_de_antes_);
        apoyo::con_cada_llamada([]<auto Entrada>() {
            interno::sistema.*Entrada = desvio<Entrada, typename apoyo::llamada_de<Entrada>::tipo>::llama;
        });
        interno::sistema.busca_nombre_largo = []() -> interno::funcion_nombre_largo {
            return i_nombre_largo;
        };
    }
    ~todas_las_llamadas() {
        i_yo() = nullptr;
        interno::i_olvida_nombre_largo();
        ::SetThreadErrorMode(modo_de_antes_, nullptr);
    }
    todas_las_llamadas(const todas_las_llamadas&) = delete;
    todas_las_llamadas& operator=(const todas_las_llamadas&) = delete;

    // Counting begins again.
    void falla(unsigned long numero, bool para_siempre) {
        llamadas_ = 0;
        numero_ = numero;
        para_siempre_ = para_siempre;
        cambiado_ = false;
        quiso_nombre_largo_ = false;
    }
    // As on a system that has no long names of its own: the shell is asked for them.
    void sin_nombres_largos() {
        interno::sistema.busca_nombre_largo = []() -> interno::funcion_nombre_largo { return nullptr; };
    }
    // Whether an operation wanted the long form of a name.
    bool quiso_nombre_largo() const { return quiso_nombre_largo_; }
    unsigned long llamadas_al_escritorio() const { return al_escritorio_; }
    unsigned long llamadas() const { return llamadas_; }
    bool ha_cambiado_algo() const { return cambiado_; }
    std::size_t abiertas() const { return abiertas_.size(); }
    const std::vector<std::string>& fuera() const { return fuera_; }
    // Calls that came upon a drive while the system's dialogs were allowed to the thread.
    const std::set<std::string>& con_dialogos() const { return con_dialogos_; }
    // What an operation that was broken off could not close.
    void cierra_lo_abierto() {
        for (const auto& [manija, cierra] : std::set<std::pair<void*, void (*)(void*)>>(abiertas_)) {
            cierra(manija);
        }
        abiertas_.clear();
        claves_suyas_.clear();
    }

private:
    static todas_las_llamadas*& i_yo() {
        static todas_las_llamadas* yo = nullptr;
        return yo;
    }
    bool i_toca_fallar() {
        ++llamadas_;
        const bool toca = numero_ != 0 && (para_siempre_ ? llamadas_ >= numero_ : llamadas_ == numero_);
        apoyo::fallos_inyectados += toca ? 1 : 0;
        return toca;
    }
    bool i_es_suyo(const wchar_t* ruta, bool cuenta = true) {
        wchar_t completa[2048];
        const DWORD largo = ::GetFullPathNameW(ruta, 2048, completa, nullptr);
        apoyo::texto_w texto(completa, largo < 2048 ? largo : 0);
        if (texto.compare(0, 4, L"\\\\?\\") == 0) {
            texto.erase(0, 4);
        }
        const bool es = i_empieza(texto, carpeta_);
        if (!es && cuenta) {
            fuera_.push_back(apoyo::u8(ruta));
        }
        return es;
    }
    // The very name, or something below it; another name that only begins alike is not.
    static bool i_empieza(const apoyo::texto_w& ruta, const apoyo::texto_w& principio) {
        const auto largo = static_cast<int>(principio.size());
        return ruta.size() >= principio.size() &&
               (ruta.size() == principio.size() || ruta[principio.size()] == L'\\') &&
               ::CompareStringOrdinal(ruta.c_str(), largo, principio.c_str(), largo, TRUE) == CSTR_EQUAL;
    }
    static apoyo::texto_w i_ancha(const wchar_t* clave) { return clave; }
    static apoyo::texto_w i_ancha(const char* clave) { return apoyo::w(apoyo::de_cp1252(clave)); }
    template <class C>
    bool i_es_su_clave(const C* clave) {
        // One export tries whether it may write to the machine's keys: it makes this one and deletes it.
        const apoyo::texto_w de_permiso = L"SOFTWARE\\LUMO";
        const bool es =
            clave != nullptr && (i_empieza(i_ancha(clave), clave_) || i_empieza(i_ancha(clave), de_permiso));
        if (!es) {
            fuera_.push_back("key " + (clave == nullptr ? std::string() : apoyo::u8(i_ancha(clave).c_str())));
        }
        return es;
    }

    template <class R, auto Entrada>
    static R i_fallo() {
        ::SetLastError(ERROR_ACCESS_DENIED);
        return apoyo::llamada_de<Entrada>::template fallo<R>();
    }

    // What each kind of call opens and changes.
    template <auto A, auto B>
    static constexpr bool i_es() {
        if constexpr (std::is_same_v<decltype(A), decltype(B)>) {
            return A == B;
        } else {
            return false;
        }
    }
    template <auto Entrada>
    static constexpr bool i_cambia() {
        using t = interno::tabla_sistema;
        return i_es<&t::DeleteFileW, Entrada>() || i_es<&t::RemoveDirectoryW, Entrada>() ||
               i_es<&t::CreateDirectoryW, Entrada>() || i_es<&t::SetFileAttributesW, Entrada>() ||
               i_es<&t::MoveFileExW, Entrada>() || i_es<&t::CreateFileW, Entrada>() ||
               i_es<&t::GetTempFileNameW, Entrada>() || i_es<&t::abre_entrada, Entrada>() ||
               i_abre_clave<Entrada>() || i_es<&interno::tabla_sistema::TerminateProcess, Entrada>();
    }
    // What changes keys and values does so by a handle that one of these gave.
    template <auto Entrada>
    static constexpr bool i_abre_clave() {
        using t = interno::tabla_sistema;
        return i_es<&t::RegOpenKeyExA, Entrada>() || i_es<&t::RegOpenKeyExW, Entrada>() ||
               i_es<&t::RegCreateKeyExW, Entrada>();
    }
    template <auto Entrada>
    static void (*i_quien_cierra())(void*) {
        using t = interno::tabla_sistema;
        if constexpr (i_es<&t::FindFirstFileExW, Entrada>()) {
            return [](void* h) { ::FindClose(h); };
        } else {
            return [](void* h) { ::CloseHandle(h); };
        }
    }
    // Of an entry of an open directory: what is opened to be changed must lie in the folder.
    static bool i_permite_entrada(const wchar_t* nombre, HANDLE directorio, DWORD acceso, DWORD, DWORD,
                                  DWORD) {
        if ((acceso & (DELETE | FILE_WRITE_ATTRIBUTES)) == 0) {
            return true;
        }
        i_yo()->cambiado_ = true;
        constexpr std::size_t prefijo = 4;  // of a native path, and of what the system tells of a handle
        wchar_t ruta[0x4000] = {};
        if (directorio == nullptr) {
            return apoyo::texto_w(nombre).size() > prefijo && i_yo()->i_es_suyo(nombre + prefijo, true);
        }
        const DWORD largo = ::GetFinalPathNameByHandleW(directorio, ruta, 0x2000, 0);
        return largo > prefijo && largo < 0x2000 &&
               i_yo()->i_es_suyo((apoyo::texto_w(ruta + prefijo) + L"\\" + nombre).c_str(), true);
    }
    // Only what changes something asks; reading is free.
    template <auto Entrada, class... A>
    static bool i_permite(A... a) {
        if constexpr (i_es<&interno::tabla_sistema::TerminateProcess, Entrada>()) {
            return false;
        } else if constexpr (i_abre_clave<Entrada>()) {
            return i_permite_clave<Entrada>(a...);
        } else if constexpr (i_es<&interno::tabla_sistema::abre_entrada, Entrada>()) {
            return i_permite_entrada(a...);
        } else {
            return i_permite_ruta<Entrada>(a...);
        }
    }
    template <auto Entrada, class... A>
    static bool i_permite_clave(A... a) {
        const auto argumentos = std::make_tuple(a...);
        // What lies below a key of its own is its own, by whatever name.
        if (i_yo()->claves_suyas_.count(std::get<0>(argumentos)) != 0) {
            return i_yo()->abre_clave_suya_ = true;
        }
        if constexpr (!i_es<&interno::tabla_sistema::RegCreateKeyExW, Entrada>()) {
            constexpr REGSAM para_leer = KEY_READ | KEY_WOW64_64KEY | KEY_WOW64_32KEY;
            if ((std::get<3>(argumentos) & ~para_leer) == 0) {
                return true;
            }
        }
        return i_yo()->abre_clave_suya_ = i_yo()->i_es_su_clave(std::get<1>(argumentos));
    }
    template <auto Entrada, class... A>
    static bool i_permite_ruta(A... a) {
        using t = interno::tabla_sistema;
        const auto primera = std::get<0>(std::make_tuple(a...));
        if constexpr (i_es<&t::CreateFileW, Entrada>()) {
            const auto argumentos = std::make_tuple(a...);
            constexpr DWORD para_leer =
                GENERIC_READ | FILE_READ_ATTRIBUTES | FILE_READ_DATA | FILE_LIST_DIRECTORY | SYNCHRONIZE;
            if ((std::get<1>(argumentos) & ~para_leer) == 0 && std::get<4>(argumentos) == OPEN_EXISTING &&
                (std::get<5>(argumentos) & FILE_FLAG_DELETE_ON_CLOSE) == 0) {
                return true;
            }
        }
        i_yo()->cambiado_ = true;
        if constexpr (i_es<&t::MoveFileExW, Entrada>()) {
            return i_yo()->i_es_suyo(primera) && i_yo()->i_es_suyo(std::get<1>(std::make_tuple(a...)));
        } else {
            // A parent that is there is created without harm, and so is a temporary file where it belongs.
            constexpr bool crea =
                i_es<&t::CreateDirectoryW, Entrada>() || i_es<&t::GetTempFileNameW, Entrada>();
            return i_yo()->i_es_suyo(primera, !crea);
        }
    }

    // A drive without a medium would bring a dialog out of these.
    template <auto Entrada>
    static constexpr bool i_toca_unidad() {
        using t = interno::tabla_sistema;
        constexpr bool sin_unidad =
            i_es<&t::CloseHandle, Entrada>() || i_es<&t::FindClose, Entrada>() ||
            i_es<&t::FileTimeToLocalFileTime, Entrada>() || i_es<&t::LocalFileTimeToFileTime, Entrada>() ||
            i_es<&t::FileTimeToSystemTime, Entrada>() || i_es<&t::SystemTimeToFileTime, Entrada>() ||
            i_es<&t::SystemTimeToTzSpecificLocalTime, Entrada>() || i_es<&t::GetFullPathNameW, Entrada>() ||
            i_es<&t::GetTempPathW, Entrada>() || i_es<&t::GetWindowsDirectoryW, Entrada>() ||
            i_es<&t::GetModuleFileNameW, Entrada>() || i_es<&t::GetLogicalDrives, Entrada>() ||
            i_es<&t::QueryDosDeviceW, Entrada>() || i_es<&t::_getdrive, Entrada>();
        constexpr apoyo::clase_de_llamada clase = apoyo::llamada_de<Entrada>::clase;
        return !sin_unidad &&
               (clase == apoyo::clase_de_llamada::ficheros || clase == apoyo::clase_de_llamada::discos ||
                clase == apoyo::clase_de_llamada::escritorio);
    }
    static void i_mira_el_modo(const char* quien) {
        if (!i_yo()->sin_modo_ && (::GetThreadErrorMode() & SEM_FAILCRITICALERRORS) == 0) {
            i_yo()->con_dialogos_.insert(quien);
        }
    }

    template <auto Entrada, class F>
    struct desvio;
    template <auto Entrada, class R, class... A>
    struct desvio<Entrada, R (*)(A...)> {
        static R llama(A... a) {
            todas_las_llamadas& yo = *i_yo();
            const bool toca = yo.i_toca_fallar();
            if constexpr (i_es<&interno::tabla_sistema::GetThreadErrorMode, Entrada>() ||
                          i_es<&interno::tabla_sistema::SetThreadErrorMode, Entrada>()) {
                yo.sin_modo_ = yo.sin_modo_ || toca;
            }
            if constexpr (i_toca_unidad<Entrada>()) {
                i_mira_el_modo(apoyo::llamada_de<Entrada>::nombre);
            }
            if constexpr (apoyo::llamada_de<Entrada>::clase == apoyo::clase_de_llamada::escritorio) {
                ++yo.al_escritorio_;
            }
            const auto real = yo.guardado_.real.*Entrada;
            if constexpr (apoyo::llamada_de<Entrada>::cierra) {
                i_quita(a...);
                const R resultado = real(a...);
                return toca ? i_fallo<R, Entrada>() : resultado;
            } else {
                if (toca) {
                    return i_fallo<R, Entrada>();
                }
                yo.abre_clave_suya_ = false;
                if constexpr (i_cambia<Entrada>()) {
                    if (!i_permite<Entrada>(a...)) {
                        return i_fallo<R, Entrada>();
                    }
                }
                const R resultado = real(a...);
                i_apunta<R>(resultado, a...);
                return resultado;
            }
        }
        template <class M>
        static void i_quita(M manija) {
            std::erase_if(i_yo()->abiertas_, [&](const auto& par) { return par.first == manija; });
            i_yo()->claves_suyas_.erase(manija);
        }
        template <class Resultado>
        static void i_apunta(Resultado resultado, A... a) {
            const DWORD codigo = ::GetLastError();
            if constexpr (std::is_same_v<Resultado, HANDLE>) {
                if (resultado != INVALID_HANDLE_VALUE && resultado != nullptr) {
                    i_yo()->abiertas_.insert({resultado, i_quien_cierra<Entrada>()});
                }
            } else if constexpr (std::is_same_v<Resultado, LSTATUS>) {
                (i_apunta_clave(resultado, a), ...);
            }
            ::SetLastError(codigo);
        }
        template <class T>
        static void i_apunta_clave(LSTATUS resultado, T a) {
            if constexpr (std::is_same_v<T, HKEY*>) {
                if (resultado == ERROR_SUCCESS) {
                    i_yo()->abiertas_.insert({*a, [](void* h) { ::RegCloseKey(static_cast<HKEY>(h)); }});
                    if (i_yo()->abre_clave_suya_) {
                        i_yo()->claves_suyas_.insert(*a);
                    }
                }
            }
        }
    };

    static DWORD WINAPI i_nombre_largo(const wchar_t* corto, wchar_t* largo, DWORD sitio) {
        i_yo()->quiso_nombre_largo_ = true;
        i_mira_el_modo("GetLongPathNameW of KERNEL32");
        if (i_yo()->i_toca_fallar()) {
            ::SetLastError(ERROR_ACCESS_DENIED);
            return 0;
        }
        return ::GetLongPathNameW(corto, largo, sitio);
    }

    const apoyo::sistema_guardado guardado_;
    const apoyo::texto_w carpeta_;
    const apoyo::texto_w clave_;
    unsigned long llamadas_ = 0;
    unsigned long al_escritorio_ = 0;
    unsigned long numero_ = 0;
    bool para_siempre_ = false;
    bool cambiado_ = false;
    bool quiso_nombre_largo_ = false;
    std::set<std::pair<void*, void (*)(void*)>> abiertas_;
    std::set<void*> claves_suyas_;  // open for changes
    bool abre_clave_suya_ = false;  // the call under way
    std::vector<std::string> fuera_;
    DWORD modo_de_antes_ = 0;
    bool sin_modo_ = false;  // a call about the mode itself was made to fail
    std::set<std::string> con_dialogos_;
};

}  // namespace exports
