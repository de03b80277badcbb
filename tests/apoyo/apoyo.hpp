// What every test leans on: texts as UTF-8 std::string, results taken and freed, and a recorder of everything
// that the library tells its host.
//
// Around every test (principal.cpp): English messages, an empty recorder, no waiting; afterwards the census of
// live blocks must be what it was, and no report, warning or question may be left that the test did not take.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "apoyo/textos.hpp"
#include "companions/lumospy.hpp"

namespace apoyo {

struct informe {
    std::string expresion;
    std::string etiqueta;
    unsigned long linea;
    std::string detalle;  // "(NULL)" when there is none
    friend bool operator==(const informe& a, const informe& b) = default;
};
struct pregunta {
    std::string mensaje;
    unsigned long codigo;
};

// What was recorded since the last call; taking empties it.
std::vector<informe> toma_informes();
informe toma_el_informe();                    // exactly one is expected
std::vector<std::string> toma_expresiones();  // of the reports
std::vector<std::string> toma_avisos();       // warnings shown
std::vector<pregunta> toma_preguntas();
std::vector<unsigned long> toma_esperas();  // milliseconds of each pause
void olvida_todo();

// How the retry question answers during this test (default: gives up); and what is done while the library
// "sleeps" (default: nothing, and no time passes).
void contesta(std::function<unsigned short(const pregunta&)> respuesta);
void al_dormir(std::function<void(unsigned long)> accion);

// Expects exactly these reports (expressions), and forgets them.
#define ESPERA_INFORMES(...) EXPECT_EQ(::apoyo::toma_expresiones(), (std::vector<std::string>{__VA_ARGS__}))
#define ESPERA_AVISOS(...) EXPECT_EQ(::apoyo::toma_avisos(), (std::vector<std::string>{__VA_ARGS__}))

// Chance that always falls on the same side, for sistema.numero_al_azar.
inline unsigned siempre_cero() noexcept {
    return 0;
}

// What stands for the answer of an export that gives none.
constexpr unsigned short no_contesta = 7;

// A value replaced for the life of this object: entries of the tables of system calls.
template <class T>
class sustituye {
public:
    sustituye(T& sitio, std::type_identity_t<T> valor) : sitio_(sitio), antes_(sitio) { sitio = valor; }
    ~sustituye() { sitio_ = antes_; }
    sustituye(const sustituye&) = delete;
    sustituye& operator=(const sustituye&) = delete;

private:
    T& sitio_;
    T antes_;
};

// Counts the blocks that are taken during its life.
class reservas_contadas {
public:
    reservas_contadas() {
        num_ = 0;
        de_antes_ = interno::memoria.reserva;
        interno::memoria.reserva = [](std::size_t bytes) {
            ++num_;
            return de_antes_(bytes);
        };
    }
    ~reservas_contadas() { interno::memoria.reserva = de_antes_; }
    reservas_contadas(const reservas_contadas&) = delete;
    reservas_contadas& operator=(const reservas_contadas&) = delete;

    // Those since it was asked last.
    static unsigned toma() { return std::exchange(num_, 0u); }

private:
    static inline unsigned num_ = 0;
    static inline void* (*de_antes_)(std::size_t) = nullptr;
};

}  // namespace apoyo
