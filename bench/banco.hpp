// A bench that is fair on a noisy machine: the contenders of a row run in turn within each round, and the best
// round of each counts. A row states the ratio it aims at; nothing fails when it is missed.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace banco {

struct contendiente {
    std::string nombre;
    std::function<void()> trabajo;  // one unit of work
    double objetivo = 0;  // at most this ratio of ours to it; 0: there to show what the system takes
};

struct fila {
    std::string nombre;
    std::function<void()> nuestro;
    std::vector<contendiente> otros;
    unsigned vueltas;  // units of work a round
    unsigned rondas = 15;
    unsigned elementos = 1;  // what a unit of work handles: times are shown for one of them
};

// Keeps the optimiser from dropping a result.
inline void usa(const void* p) {
    static volatile const void* sumidero;
    sumidero = p;
    static_cast<void>(sumidero);
}

// Nanoseconds a unit of work in one round.
inline double ronda(const std::function<void()>& trabajo, unsigned vueltas) {
    const auto principio = std::chrono::steady_clock::now();
    for (unsigned i = 0; i < vueltas; ++i) {
        trabajo();
    }
    const std::chrono::duration<double, std::nano> pasado = std::chrono::steady_clock::now() - principio;
    return pasado.count() / vueltas;
}

inline std::string con_unidad(double ns) {
    char texto[32];
    if (ns < 10'000) {
        std::snprintf(texto, sizeof texto, "%.0f ns", ns);
    } else if (ns < 10'000'000) {
        std::snprintf(texto, sizeof texto, "%.1f us", ns / 1'000);
    } else {
        std::snprintf(texto, sizeof texto, "%.1f ms", ns / 1'000'000);
    }
    return texto;
}

inline std::string con_objetivo(double objetivo) {
    char texto[32] = "";
    if (objetivo > 0) {
        std::snprintf(texto, sizeof texto, "%.2f", objetivo);
    }
    return texto;
}

// One line of the table: what ours takes against one of the others.
inline void escribe(const std::string& que, double nuestro, const contendiente& otro, double suyo) {
    std::printf("| %s | %s | %s | %s | %.2f | %s |\n", que.c_str(), con_unidad(nuestro).c_str(),
                otro.nombre.c_str(), con_unidad(suyo).c_str(), nuestro / suyo,
                con_objetivo(otro.objetivo).c_str());
    std::fflush(stdout);
}

inline void encabezado() {
    std::printf("| what | lumodir | against | takes | ratio | target |\n|---|---|---|---|---|---|\n");
}

inline void corre(const fila& f) {
    std::vector<double> mejor(f.otros.size() + 1, 1e300);
    for (unsigned r = 0; r < f.rondas; ++r) {
        mejor[0] = std::min(mejor[0], ronda(f.nuestro, f.vueltas));
        for (std::size_t i = 0; i < f.otros.size(); ++i) {
            mejor[i + 1] = std::min(mejor[i + 1], ronda(f.otros[i].trabajo, f.vueltas));
        }
    }
    for (std::size_t i = 0; i < f.otros.size(); ++i) {
        escribe(f.nombre, mejor[0] / f.elementos, f.otros[i], mejor[i + 1] / f.elementos);
    }
}

}  // namespace banco
