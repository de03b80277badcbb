#include "estado/secuencia.hpp"

#include <algorithm>
#include <cstdlib>
#include <iostream>

#include "apoyo/recursos.hpp"
#include "companions/lumospy.h"
#include "companions/lumospy.hpp"

namespace estado {

using namespace apoyo;

namespace {

std::string entre_comillas(const argumento& a) {
    if (!a) {
        return "-";
    }
    std::string t = "\"";
    for (const char c : u(*a)) {
        t += c == '"' || c == '%' ? std::string("%") + c : std::string(1, c);
    }
    return t + "\"";
}

std::string en_lineas(const std::vector<std::string>& v) {
    std::string t;
    constexpr std::size_t bastantes = 30;
    for (std::size_t i = 0; i < v.size() && i < bastantes; ++i) {
        t += "\n    " + v[i];
    }
    if (v.size() > bastantes) {
        t += "\n    ... " + std::to_string(v.size()) + " in all";
    }
    return t.empty() ? "\n    (nothing)" : t;
}

struct marcha {
    campo& c;
    reglas r = {};
    std::vector<paso> pasos = {};
    asunto de_que;
    std::size_t manijas = 0;

    marcha(campo& campo_, asunto asunto_) : c(campo_), de_que(asunto_) {
        c.empieza(r);
        if (de_que == asunto::registro) {
            empieza_el_registro(r);
        }
        manijas = manijas_del_proceso();
    }

    bool se_aplica(const paso& p) { return p.f->aplicable == nullptr || p.f->aplicable(r, p.a); }
    // Runs one operation; answers what library and model do not agree on.
    std::string da(const paso& p) {
        pasos.push_back(p);
        if (std::getenv("LUMODIR_ESTADO_DICE") != nullptr) {  // what a program that dies was about
            std::cerr << a_texto({p}) << std::flush;
        }
        const unsigned long long vivos = lumospy_bloques_vivos();
        const unsigned long long internos = interno::i_bloques_internos_vivos();
        c.preguntas = 0;
        c.sucesos.clear();
        const std::string real = (p.ocho ? p.f->estrecha : p.f->ancha)(p.a);
        r.empieza_llamada();
        en_8_bits(p.ocho);
        std::string pensado = p.f->modela(r, p.a, real);
        if (real == "(void)") {
            pensado = real;  // the 8-bit flavour may have dropped the answer
        }
        const std::vector<std::string> oido = c.toma_sucesos();
        std::string fallo;
        if (real != pensado) {
            fallo += "\n  answer:   " + real + "\n  expected: " + pensado;
        }
        if (r.cuenta_lo_dicho && oido != r.sucesos) {
            fallo += "\n  told:" + en_lineas(oido) + "\n  expected:" + en_lineas(r.sucesos);
        }
        const std::string d = de_que == asunto::registro ? diferencia_en_el_registro(r) : c.diferencia(r);
        if (!d.empty()) {
            fallo += "\n  " + d;
        }
        if (lumospy_bloques_vivos() != vivos || interno::i_bloques_internos_vivos() != internos) {
            fallo += "\n  blocks are left";
        }
        return fallo;
    }
    std::string acaba() const {
        c.suelta();
        return manijas_del_proceso() == manijas ? "" : "\n  a handle is left open";
    }
};

}  // namespace

std::string a_texto(const std::vector<paso>& pasos) {
    std::string t;
    for (const paso& p : pasos) {
        t += std::string(p.f->nombre) + (p.ocho ? "/8" : "");
        for (const argumento& a : p.a) {
            t += " " + entre_comillas(a);
        }
        t += "\n";
    }
    return t;
}

std::vector<paso> de_texto(const std::string& texto) {
    std::vector<paso> pasos;
    std::size_t i = 0;
    while (i < texto.size()) {
        std::size_t fin = texto.find('\n', i);
        fin = fin == texto.npos ? texto.size() : fin;
        std::string linea = texto.substr(i, fin - i);
        i = fin + 1;
        while (!linea.empty() && linea.back() == '\r') {
            linea.pop_back();
        }
        if (linea.empty() || linea[0] == '#') {
            continue;
        }
        std::string nombre = linea.substr(0, linea.find(' '));
        paso p = {nullptr};
        if (nombre.size() > 2 && nombre.substr(nombre.size() - 2) == "/8") {
            p.ocho = true;
            nombre.resize(nombre.size() - 2);
        }
        for (const auto* tabla : {&filas(), &filas_del_registro()}) {
            for (const fila& f : *tabla) {
                p.f = nombre == f.nombre ? &f : p.f;
            }
        }
        EXPECT_NE(p.f, nullptr) << "no such operation: " << linea;
        if (p.f == nullptr) {
            continue;
        }
        for (std::size_t k = linea.find(' '); k < linea.size();) {
            ++k;  // the blank
            if (linea[k] == '-') {
                p.a.push_back({});
                ++k;
                continue;
            }
            std::string a;
            for (++k; k < linea.size() && linea[k] != '"'; ++k) {
                k += linea[k] == '%' ? 1 : 0;
                a += linea[k];
            }
            ++k;
            p.a.push_back(w(a));
        }
        pasos.push_back(p);
    }
    return pasos;
}

desenlace corre_al_azar(campo& c, asunto de_que, std::uint64_t semilla) {
    const std::vector<fila>& tabla = de_que == asunto::registro ? filas_del_registro() : filas();
    unsigned total = 0;
    for (const fila& f : tabla) {
        total += f.peso;
    }
    azar z(semilla);
    marcha m(c, de_que);
    const std::size_t largo = 20 + z.menor_que(31);
    for (std::size_t hechos = 0; hechos < largo;) {
        std::size_t cual = z.menor_que(total);
        const fila* f = tabla.data();
        while (cual >= f->peso) {
            cual -= f->peso;
            ++f;
        }
        generador g{z, m.r};
        paso p = {f, false, f->genera(g)};
        const bool cabe = std::all_of(p.a.begin(), p.a.end(),
                                      [](const argumento& a) { return !a || de_pagina(a_pagina(*a)) == *a; });
        p.ocho = f->estrecha != nullptr && (f->ancha == nullptr || z.uno_de_cada(2)) && cabe;
        if ((!p.ocho && f->ancha == nullptr) || !m.se_aplica(p)) {
            continue;
        }
        ++hechos;
        if (std::string fallo = m.da(p); !fallo.empty()) {
            return {m.pasos, fallo};
        }
    }
    return {m.pasos, m.acaba()};
}

desenlace corre(campo& c, const std::vector<paso>& pasos) {
    const bool es_de_registro = !pasos.empty() && pasos[0].f >= filas_del_registro().data() &&
                                pasos[0].f < filas_del_registro().data() + filas_del_registro().size();
    marcha m(c, es_de_registro ? asunto::registro : asunto::ficheros);
    for (const paso& p : pasos) {
        if (!m.se_aplica(p)) {
            continue;
        }
        if (std::string fallo = m.da(p); !fallo.empty()) {
            return {m.pasos, fallo};
        }
    }
    return {m.pasos, m.acaba()};
}

desenlace acorta(campo& c, desenlace d) {
    // Pieces of half the length, of a quarter, ... are left out, as long as the same operation fails.
    const fila* const culpable = d.pasos.back().f;
    for (std::size_t trozo = d.pasos.size() / 2; trozo > 0;) {
        bool menos = false;
        for (std::size_t i = 0; i + 1 < d.pasos.size();) {
            std::vector<paso> resto = d.pasos;
            const std::size_t hasta = std::min(i + trozo, d.pasos.size() - 1);
            resto.erase(resto.begin() + static_cast<std::ptrdiff_t>(i),
                        resto.begin() + static_cast<std::ptrdiff_t>(hasta));
            desenlace e = corre(c, resto);
            if (!e.fallo.empty() && e.pasos.back().f == culpable) {
                menos = menos || e.pasos.size() < d.pasos.size();
                d = e;
            } else {
                i += trozo;
            }
        }
        trozo = menos ? trozo : trozo / 2;
    }
    return d;
}

}  // namespace estado
