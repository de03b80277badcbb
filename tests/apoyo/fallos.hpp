// Faults in the library's calls on files: makes the first, second, ... call of an operation fail, once or for
// ever, and keeps the books of what was called and of the handles that are open. Windows only.
//
//     apoyo::fallos f;                           // every such call passes through here from now on
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
#include "apoyo/llamadas.hpp"
#include "companions/lumospy.h"
#include "companions/lumospy.hpp"

namespace apoyo {

class fallos {
public:
    struct llamada {
        std::string nombre;  // of the system function
        std::string ruta;    // its first text argument, "" when it has none
        bool ha_fallado;     // made to fail here
    };

    fallos() {
        i_actual() = this;
        con_cada_llamada([]<auto Entrada>() {
            using llamada_suya = llamada_de<Entrada>;
            if constexpr (llamada_suya::clase == clase_de_llamada::ficheros) {
                interno::sistema.*Entrada = desvio<Entrada, typename llamada_suya::tipo>::llama;
            }
        });
    }
    ~fallos() { i_actual() = nullptr; }
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

    template <auto Entrada, class Funcion>
    struct desvio;
    template <auto Entrada, class R, class... A>
    struct desvio<Entrada, R(WINAPI*)(A...)> {
        static R WINAPI llama(A... a) {
            fallos& f = *i_actual();
            constexpr bool cierra = llamada_de<Entrada>::cierra;
            if (!f.i_toca_fallar(llamada_de<Entrada>::nombre, i_texto(a...))) {
                const R resultado = (f.antes_.real.*Entrada)(a...);
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
                (f.antes_.real.*Entrada)(a...);
            }
            ::SetLastError(f.ultimo_codigo_);
            return llamada_de<Entrada>::template fallo<R>();
        }
    };

    sistema_guardado antes_;
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

// LUMODIR_A_FONDO asks for all that can be tried, which takes long (tools/largo stress).
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
                const unsigned long long internos = interno::i_bloques_internos_vivos();
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
                EXPECT_EQ(interno::i_bloques_internos_vivos(), internos) << r;
                if (testing::Test::HasFailure()) {
                    return;
                }
            }
            EXPECT_TRUE(limpia) << "still failing after " << max_llamadas << " calls";
        }
    }
}

}  // namespace apoyo
