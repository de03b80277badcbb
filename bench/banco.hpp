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
    double objetivo = 0;            // at most this ratio of ours to it
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
        std::printf("| %s | %s | %s | %s | %.2f | %.2f |\n", f.nombre.c_str(),
                    con_unidad(mejor[0] / f.elementos).c_str(), f.otros[i].nombre.c_str(),
                    con_unidad(mejor[i + 1] / f.elementos).c_str(), mejor[0] / mejor[i + 1],
                    f.otros[i].objetivo);
        std::fflush(stdout);
    }
}

}  // namespace banco
