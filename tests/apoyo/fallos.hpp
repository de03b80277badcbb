// Faults in the library's table of system calls: makes the first, second, ... call of an operation fail, once or for
// ever, and keeps the books of what was called and of the handles that are open. Windows only.
//
//     apoyo::fallos f;                           // every entry of the table passes through here from now on
//     f.falla(2, ERROR_ACCESS_DENIED);           // the second call from here on fails; (.., true): and all later ones
//     f.falla_siempre("DeleteFileW", 32);        // or: every call of this name
//     operation();
//     EXPECT_EQ(f.llamadas(), ...); f.historia(); f.manijas_abiertas();
//
// A call made to fail does not reach Windows, except those that close: they close, and then answer that they did not.
// `con_cada_fallo` runs an operation with each of its calls failing in turn, until a run needs no more calls.
// The executable tells at its end how many calls were made to fail in all ("faults injected: N").
#pragma once

#include <cstdlib>
#include <functional>
#include <set>

#include "apoyo/apoyo.hpp"
#include "apoyo/cuenta_de_fallos.hpp"
#include "companions/lumospy.h"
#include "companions/lumospy.hpp"
#include "companions/sistema.hpp"

namespace apoyo {

class fallos {
public:
    struct llamada {
        std::string nombre;  // of the system function
        std::string ruta;    // its first text argument, "" when it has none
        bool ha_fallado;     // made to fail here
    };

    fallos() : antes_(lumodir::sistema) {
        i_actual() = this;
        i_desvia_todas();
    }
    ~fallos() {
        lumodir::sistema = antes_;
        i_actual() = nullptr;
    }
    fallos(const fallos&) = delete;
    fallos& operator=(const fallos&) = delete;

    // Counting begins again: call number `numero` (from 1) fails with this code and, if so wished, all after it.
    void falla(unsigned numero, DWORD codigo, bool para_siempre = false) {
        historia_.clear();
        numero_ = numero;
        codigo_ = codigo;
        para_siempre_ = para_siempre;
    }
    // Every call of this function fails; `veces` limits how often.
    void falla_siempre(std::string nombre, DWORD codigo, unsigned veces = ~0u) {
        nombre_ = std::move(nombre);
        codigo_nombre_ = codigo;
        veces_ = veces;
    }
    void no_falla() {
        numero_ = 0;
        nombre_.clear();
    }

    // What is done just before each call, with its number (from 1).
    void al_llamar(std::function<void(unsigned)> accion) { al_llamar_ = std::move(accion); }

    std::size_t llamadas() const { return historia_.size(); }
    const std::vector<llamada>& historia() const { return historia_; }
    std::size_t cuenta(std::string_view nombre) const {
        std::size_t num = 0;
        for (const llamada& l : historia_) {
            num += l.nombre == nombre ? 1 : 0;
        }
        return num;
    }
    // The paths given to a function, in their order.
    std::vector<std::string> rutas(std::string_view nombre) const {
        std::vector<std::string> resultado;
        for (const llamada& l : historia_) {
            if (l.nombre == nombre) {
                resultado.push_back(l.ruta);
            }
        }
        return resultado;
    }
    std::size_t manijas_abiertas() const { return abiertas_.size(); }

private:
    static fallos*& i_actual() {
        static fallos* actual = nullptr;
        return actual;
    }

    static std::string i_texto() { return {}; }
    template <class... Resto>
    static std::string i_texto(const wchar_t* ruta, Resto...) {
        return ruta == nullptr ? std::string() : u8(ruta);
    }
    template <class... Resto>
    static std::string i_texto(const char* ruta, Resto...) {
        return ruta == nullptr ? std::string() : de_cp1252(ruta);
    }
    template <class Primero, class... Resto>
    static std::string i_texto(Primero, Resto...) {
        return {};
    }

    bool i_toca_fallar(const char* nombre, const std::string& ruta) {
        const std::size_t esta = historia_.size() + 1;
        if (al_llamar_) {
            al_llamar_(static_cast<unsigned>(esta));
        }
        bool falla = numero_ != 0 && (esta == numero_ || (para_siempre_ && esta > numero_));
        DWORD codigo = codigo_;
        if (!falla && nombre_ == nombre && veces_ > 0) {
            --veces_;
            falla = true;
            codigo = codigo_nombre_;
        }
        historia_.push_back({nombre, ruta, falla});
        ultimo_codigo_ = codigo;
        fallos_inyectados += falla ? 1 : 0;
        return falla;
    }

    template <class Marca, auto Entrada, class Funcion>
    struct desvio;
    template <class Marca, auto Entrada, class R, class... A>
    struct desvio<Marca, Entrada, R(WINAPI*)(A...)> {
        static R WINAPI llama(A... a) {
            fallos& f = *i_actual();
            constexpr bool cierra = Marca::cierra;
            if (!f.i_toca_fallar(Marca::nombre, i_texto(a...))) {
                const R resultado = (f.antes_.*Entrada)(a...);
                if constexpr (cierra) {
                    const DWORD codigo = ::GetLastError();
                    (f.abiertas_.erase(a), ...);
                    ::SetLastError(codigo);
                } else if constexpr (std::is_same_v<R, HANDLE>) {
                    if (resultado != INVALID_HANDLE_VALUE) {
                        const DWORD codigo = ::GetLastError();
                        f.abiertas_.insert(resultado);
                        ::SetLastError(codigo);
                    }
                }
                return resultado;
            }
            if constexpr (cierra) {
                (f.abiertas_.erase(a), ...);
                (f.antes_.*Entrada)(a...);
            }
            ::SetLastError(f.ultimo_codigo_);
            return Marca::template fallo<R>();
        }
    };

#define I_MARCA(Nombre, Cierra, Valor)                 \
    struct marca_##Nombre {                            \
        static constexpr const char* nombre = #Nombre; \
        static constexpr bool cierra = Cierra;         \
        template <class R>                             \
        static R fallo() {                             \
            return Valor;                              \
        }                                              \
    }
#define I_DESVIA(Nombre)                                                              \
    lumodir::sistema.Nombre = desvio<marca_##Nombre, &lumodir::tabla_sistema::Nombre, \
                                     decltype(lumodir::tabla_sistema::Nombre)>::llama

    I_MARCA(GetFileAttributesW, false, INVALID_FILE_ATTRIBUTES);
    I_MARCA(GetFileAttributesExW, false, FALSE);
    I_MARCA(SetFileAttributesW, false, FALSE);
    I_MARCA(CreateFileW, false, INVALID_HANDLE_VALUE);
    I_MARCA(CloseHandle, true, FALSE);
    I_MARCA(GetFileInformationByHandle, false, FALSE);
    I_MARCA(GetFileInformationByHandleEx, false, FALSE);
    I_MARCA(SetFileInformationByHandle, false, FALSE);
    I_MARCA(SetFileTime, false, FALSE);
    I_MARCA(FileTimeToLocalFileTime, false, FALSE);
    I_MARCA(LocalFileTimeToFileTime, false, FALSE);
    I_MARCA(FileTimeToSystemTime, false, FALSE);
    I_MARCA(SystemTimeToTzSpecificLocalTime, false, FALSE);
    I_MARCA(SystemTimeToFileTime, false, FALSE);
    I_MARCA(DeleteFileW, false, FALSE);
    I_MARCA(CreateDirectoryW, false, FALSE);
    I_MARCA(RemoveDirectoryW, false, FALSE);
    I_MARCA(MoveFileExW, false, FALSE);
    I_MARCA(FindFirstFileExW, false, INVALID_HANDLE_VALUE);
    I_MARCA(FindNextFileW, false, FALSE);
    I_MARCA(FindClose, true, FALSE);
    I_MARCA(GetFullPathNameW, false, 0);
    I_MARCA(GetShortPathNameW, false, 0);
    I_MARCA(GetLongPathNameW, false, 0);
    I_MARCA(GetTempPathW, false, 0);
    I_MARCA(GetTempFileNameW, false, 0);
    I_MARCA(GetWindowsDirectoryW, false, 0);
    I_MARCA(GetModuleFileNameW, false, 0);
    I_MARCA(abre_entrada, false, INVALID_HANDLE_VALUE);
    I_MARCA(numero_de_fichero, false, FALSE);
    I_MARCA(nombre_de_fichero, false, FALSE);
    static constexpr std::size_t num_desviadas = 31;
    static constexpr std::size_t num_sin_desviar = 1;  // sigue_enlaces: what this system is cannot fail

    void i_desvia_todas() {
        static_assert(
            sizeof(lumodir::tabla_sistema) == (num_desviadas + num_sin_desviar) * sizeof(void (*)()),
            "an entry of the table does not pass through here yet");
        I_DESVIA(GetFileAttributesW);
        I_DESVIA(GetFileAttributesExW);
        I_DESVIA(SetFileAttributesW);
        I_DESVIA(CreateFileW);
        I_DESVIA(CloseHandle);
        I_DESVIA(GetFileInformationByHandle);
        I_DESVIA(GetFileInformationByHandleEx);
        I_DESVIA(SetFileInformationByHandle);
        I_DESVIA(SetFileTime);
        I_DESVIA(FileTimeToLocalFileTime);
        I_DESVIA(LocalFileTimeToFileTime);
        I_DESVIA(FileTimeToSystemTime);
        I_DESVIA(SystemTimeToTzSpecificLocalTime);
        I_DESVIA(SystemTimeToFileTime);
        I_DESVIA(DeleteFileW);
        I_DESVIA(CreateDirectoryW);
        I_DESVIA(RemoveDirectoryW);
        I_DESVIA(MoveFileExW);
        I_DESVIA(FindFirstFileExW);
        I_DESVIA(FindNextFileW);
        I_DESVIA(FindClose);
        I_DESVIA(GetFullPathNameW);
        I_DESVIA(GetShortPathNameW);
        I_DESVIA(GetLongPathNameW);
        I_DESVIA(GetTempPathW);
        I_DESVIA(GetTempFileNameW);
        I_DESVIA(GetWindowsDirectoryW);
        I_DESVIA(GetModuleFileNameW);
        I_DESVIA(abre_entrada);
        I_DESVIA(numero_de_fichero);
        I_DESVIA(nombre_de_fichero);
    }
#undef I_MARCA
#undef I_DESVIA

    lumodir::tabla_sistema antes_;
    std::vector<llamada> historia_;
    std::set<HANDLE> abiertas_;
    unsigned numero_ = 0;
    DWORD codigo_ = 0;
    bool para_siempre_ = false;
    std::string nombre_;
    DWORD codigo_nombre_ = 0;
    unsigned veces_ = 0;
    DWORD ultimo_codigo_ = 0;
    std::function<void(unsigned)> al_llamar_;
};

// One run of an operation under a fault.
struct ronda {
    unsigned numero;  // of the call that fails, from 1
    DWORD codigo;
    bool para_siempre;    // else only that one call
    bool limpia;          // the operation ended before the fault could strike
    std::string fallada;  // name of the function that failed first, "" in a clean run
    std::size_t llamadas;
};

inline std::ostream& operator<<(std::ostream& salida, const ronda& r) {
    return salida << "call " << r.numero << " (" << r.fallada << ") fails with " << r.codigo
                  << (r.para_siempre ? " for ever" : " once");
}

inline const std::vector<DWORD> codigos_de_fallo = {ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION,
                                                    ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND,
                                                    ERROR_DISK_FULL};

// LUMODIR_A_FONDO asks for all that can be tried, which takes long (tools/stress).
inline bool a_fondo() {
    return std::getenv("LUMODIR_A_FONDO") != nullptr;
}

// The codes that a call is made to fail with: each call with each of them or, in short, with one after the other.
inline std::vector<std::vector<DWORD>> series_de_codigos(
    const std::vector<DWORD>& codigos = codigos_de_fallo) {
    std::vector<std::vector<DWORD>> series;
    for (const DWORD codigo : codigos) {
        series.push_back({codigo});
    }
    return a_fondo() ? series : std::vector<std::vector<DWORD>>{codigos};
}

// Runs `operacion` with its call 1, 2, ... failing with the codes, once and for ever, until a run ends before
// the call that would fail. Around each run: `prepara` before it (no faults), `comprueba(round)` after it (no faults),
// no handle left open, no block of memory left (by then `comprueba` must have freed what the operation gave).
inline void con_cada_fallo(const std::function<void()>& prepara, const std::function<void()>& operacion,
                           const std::function<void(const ronda&)>& comprueba) {
    constexpr unsigned max_llamadas =
        2000;  // an operation that never ends clean is a failure, not a long test
    for (const std::vector<DWORD>& codigos : series_de_codigos()) {
        for (const bool para_siempre : {false, true}) {
            bool limpia = false;
            for (unsigned n = 1; !limpia && n <= max_llamadas; ++n) {
                const DWORD codigo = codigos[n % codigos.size()];
                prepara();
                const unsigned long long vivos = lumospy_bloques_vivos();
                const unsigned long long internos = lumodir::i_bloques_internos_vivos();
                ronda r = {n, codigo, para_siempre, false, {}, 0};
                {
                    fallos f;
                    f.falla(n, codigo, para_siempre);
                    operacion();
                    r.llamadas = f.llamadas();
                    r.limpia = limpia = r.llamadas < n;
                    r.fallada = limpia ? std::string() : f.historia()[n - 1].nombre;
                    EXPECT_EQ(f.manijas_abiertas(), 0u) << r;
                }
                comprueba(r);
                EXPECT_EQ(lumospy_bloques_vivos(), vivos) << r;
                EXPECT_EQ(lumodir::i_bloques_internos_vivos(), internos) << r;
                if (testing::Test::HasFailure()) {
                    return;
                }
            }
            EXPECT_TRUE(limpia) << "still failing after " << max_llamadas << " calls";
        }
    }
}

}  // namespace apoyo
