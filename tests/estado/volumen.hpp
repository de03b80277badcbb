// A model of a Windows volume: a tree of names without letter case, the current directory, files that another process
// holds, links, and how the system reads the text of a path. Each call answers as the system's does: 0 or its error code.
//
// It is written from what Windows documents, shares no line with the library, and is a plain value: a copy of it is a
// volume of its own. Where Wine is known to do otherwise, sequences keep away (`aplicable` in filas.cpp says why).
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "apoyo/textos.hpp"

namespace estado {

using apoyo::texto_w;
using partes = std::vector<texto_w>;

inline constexpr unsigned long no_esta = 2, no_hay_camino = 3, negado = 5, en_uso = 32, ya_esta = 183,
                               nombre_imposible = 123, no_vacio = 145, no_es_directorio = 267,
                               sin_servidor = 53;

// Letter case as far as the names of the sequences go: ASCII, Latin-1, Greek.
inline wchar_t pliega(wchar_t c) {
    const bool latina = c >= 0xE0 && c <= 0xFE && c != 0xF7;
    const bool griega = c >= 0x3B1 && c <= 0x3C9 && c != 0x3C2;
    return (c >= L'a' && c <= L'z') || latina || griega ? static_cast<wchar_t>(c - 32) : c;
}
inline texto_w pliega(texto_w nombre) {
    for (wchar_t& c : nombre) {
        c = pliega(c);
    }
    return nombre;
}

inline bool es_barra(wchar_t c) {
    return c == L'\\' || c == L'/';
}
inline bool empieza(const texto_w& t, const texto_w& principio) {
    return t.compare(0, principio.size(), principio) == 0;
}
inline bool acaba(const texto_w& t, const texto_w& final) {
    return t.size() >= final.size() && t.compare(t.size() - final.size(), final.size(), final) == 0;
}

// What others have open: which rights they use and which they leave to others.
struct sujecion {
    bool lee, escribe, borra;
    bool deja_leer, deja_escribir, deja_borrar;
};

struct nodo {
    texto_w nombre;
    bool es_directorio = false;
    bool solo_lectura = false;
    bool oculto = false;
    unsigned numero = 0;            // tells it from others, for who needs it
    bool se_ira_al_cerrar = false;  // deleted by one of two while the other has it open
    bool es_actual = false;         // the current directory of the process
    std::size_t bytes = 0;
    std::optional<long long> fecha = {};  // last write, UTC seconds; none: somewhen during the run
    std::optional<sujecion> sujeto = {};
    std::optional<partes> enlace = {};   // a link: where it leads to, from the top of the volume
    std::map<texto_w, nodo> hijos = {};  // by folded name: the order of a listing

    nodo* hijo(const texto_w& n) {
        const auto i = hijos.find(pliega(n));
        return i == hijos.end() ? nullptr : &i->second;
    }
    nodo& anade(nodo n) {
        const texto_w clave = pliega(n.nombre);
        return hijos[clave] = std::move(n);
    }
    bool tiene_punto() const { return !nombre.empty() && nombre[0] == L'.'; }
};

// Whether somebody who wants these rights, and leaves those to others, gets in.
inline bool se_deja(const nodo& n, const sujecion& quiero) {
    if (!n.sujeto) {
        return true;
    }
    const sujecion& s = *n.sujeto;
    return !(quiero.lee && !s.deja_leer) && !(quiero.escribe && !s.deja_escribir) &&
           !(quiero.borra && !s.deja_borrar) && !(s.lee && !quiero.deja_leer) &&
           !(s.escribe && !quiero.deja_escribir) && !(s.borra && !quiero.deja_borrar);
}
inline constexpr sujecion para_borrar = {false, false, true, true, true, true};
inline constexpr sujecion para_listar = {true, false, false, true, true, true};

// Where a text leads: names from the root of the drive, or the code with which the system refuses the text.
struct lugar {
    partes nombres = {};
    unsigned long codigo = 0;
};

struct hallazgo {
    nodo* padre = nullptr;    // that of the last name, when there is one
    nodo* entrada = nullptr;  // as the directory holds it: a link is the link
    nodo* cosa = nullptr;     // what it leads to; null: a link to nothing
    texto_w ultimo = {};
    unsigned long codigo = no_esta;  // 0: found
};

class volumen {
public:
    // The top holds the drive `Q:` and what lies outside of it, which only links reach.
    nodo cima = {L"", true};
    partes actual = {};

    volumen() {
        cima.anade({L"dentro", true});
        cima.anade({L"fuera", true});
        raiz().es_actual = true;
    }
    nodo& raiz() { return *cima.hijo(L"dentro"); }
    nodo& fuera() { return *cima.hijo(L"fuera"); }

    // How the system reads a path.
    lugar lee(const texto_w& texto) const {
        if (texto.empty()) {
            return {{}, no_hay_camino};
        }
        if (empieza(texto, L"\\\\?\\")) {  // taken literally
            const texto_w t = texto.substr(4);
            const texto_w resto = empieza(pliega(t), L"UNC\\SRV\\REC") ? t.substr(11) : t.substr(2);
            return i_valido({i_corta(resto), 0});
        }
        texto_w t = texto;
        for (wchar_t& c : t) {
            c = c == L'/' ? L'\\' : c;
        }
        partes base;
        if (empieza(t, L"\\\\.\\")) {
            t = t.substr(6);
        } else if (empieza(t, L"\\\\")) {
            const partes p = i_corta(t);
            if (p.size() < 2) {
                return {{}, sin_servidor};
            }
            t = t.substr(t.find(p[1], t.find(p[0]) + p[0].size()) + p[1].size());
        } else if (t.size() >= 2 && t[1] == L':') {
            t = t.substr(2);
            base = empieza(t, L"\\") ? partes() : actual;
        } else {
            base = empieza(t, L"\\") ? partes() : actual;
        }
        // Blanks and points at the very end do not count, and of names in between one point.
        while (!t.empty() && (t.back() == L' ' || (t.back() == L'.' && !i_es_de_puntos(t)))) {
            t.pop_back();
        }
        const partes todos = i_corta(t);
        const bool con_barra = !t.empty() && t.back() == L'\\';
        for (std::size_t i = 0; i < todos.size(); ++i) {
            texto_w p = todos[i];
            if (p == L"..") {
                if (!base.empty()) {
                    base.pop_back();
                }
            } else if (p != L".") {
                if ((con_barra || i + 1 < todos.size()) && p.back() == L'.') {
                    p.pop_back();
                }
                base.push_back(p);
            }
        }
        return i_valido({base, 0});
    }

    hallazgo busca(const lugar& l) {
        hallazgo h;
        if (l.codigo != 0) {
            h.codigo = l.codigo;
            return h;
        }
        h = {nullptr, &raiz(), &raiz(), {}, 0};
        for (std::size_t i = 0; i < l.nombres.size(); ++i) {
            if (h.cosa == nullptr || !h.cosa->es_directorio) {
                return {nullptr, nullptr, nullptr, {}, no_hay_camino};
            }
            h.padre = h.cosa;
            h.ultimo = l.nombres[i];
            h.entrada = h.padre->hijo(h.ultimo);
            if (h.entrada == nullptr) {
                const bool es_el_ultimo = i + 1 == l.nombres.size();
                return {es_el_ultimo ? h.padre : nullptr, nullptr, nullptr, h.ultimo,
                        es_el_ultimo ? no_esta : no_hay_camino};
            }
            h.cosa = sigue(h.entrada);
        }
        h.codigo = h.cosa == nullptr ? no_esta : 0;
        return h;
    }
    hallazgo busca(const texto_w& texto) { return busca(lee(texto)); }
    hallazgo busca(const partes& nombres) { return busca(lugar{nombres, 0}); }

    nodo* sigue(nodo* n) {
        for (int vueltas = 0; n != nullptr && n->enlace; ++vueltas) {
            const partes destino = *n->enlace;
            n = vueltas > 8 ? nullptr : &cima;
            for (const texto_w& p : destino) {
                n = n == nullptr ? nullptr : n->hijo(p);
            }
        }
        return n;
    }

    // ---- the calls of the system

    unsigned long crea_directorio(const texto_w& t) {
        hallazgo h = busca(t);
        if (h.codigo == 0) {
            return ya_esta;
        }
        if (h.padre == nullptr) {
            return h.codigo;
        }
        h.padre->anade({h.ultimo, true});
        return 0;
    }
    unsigned long quita_directorio(const texto_w& t) {
        const hallazgo h = busca(t);
        return h.codigo != 0        ? h.codigo
               : h.padre == nullptr ? negado
                                    : quita_directorio(*h.padre, *h.entrada);
    }
    unsigned long quita_directorio(nodo& padre, nodo& n) {
        if (!n.es_directorio) {
            return no_es_directorio;
        }
        if (n.es_actual || !se_deja(n, para_borrar)) {
            return en_uso;
        }
        if (!n.hijos.empty()) {
            return no_vacio;
        }
        padre.hijos.erase(pliega(n.nombre));
        return 0;
    }
    unsigned long borra(const texto_w& t) {
        const hallazgo h = busca(t);
        return h.codigo != 0 ? h.codigo : h.padre == nullptr ? negado : borra(*h.padre, *h.entrada);
    }
    unsigned long borra(nodo& padre, nodo& n) {
        if (n.es_directorio) {
            return negado;
        }
        if (!se_deja(n, para_borrar)) {
            return en_uso;
        }
        if (n.solo_lectura) {
            return negado;
        }
        padre.hijos.erase(pliega(n.nombre));
        return 0;
    }
    unsigned long mueve(const texto_w& viejo, const texto_w& nuevo) { return mueve(lee(viejo), lee(nuevo)); }
    unsigned long mueve(const lugar& viejo, const lugar& nuevo) {
        const hallazgo de = busca(viejo);
        if (de.codigo != 0) {
            return de.codigo;
        }
        if (de.padre == nullptr) {
            return negado;
        }
        if (de.entrada->es_actual || !se_deja(*de.entrada, para_borrar)) {
            return en_uso;
        }
        const hallazgo a = busca(nuevo);
        if (a.codigo == 0) {
            return ya_esta;
        }
        if (a.padre == nullptr) {
            return a.codigo;
        }
        nodo n = *de.entrada;
        n.nombre = a.ultimo;
        nodo* const destino = a.padre;
        de.padre->hijos.erase(pliega(de.entrada->nombre));
        destino->anade(std::move(n));
        return 0;
    }
    // Opens a file that is there.
    unsigned long abre(const texto_w& t, const sujecion& quiero) { return abre(lee(t), quiero); }
    unsigned long abre(const lugar& l, const sujecion& quiero) {
        const hallazgo h = busca(l);
        return h.codigo != 0              ? h.codigo
               : h.cosa->es_directorio    ? negado
               : se_deja(*h.cosa, quiero) ? 0
                                          : en_uso;
    }
    unsigned long ve_a(const texto_w& t) {
        const lugar l = lee(t);
        const hallazgo h = busca(l);
        if (h.codigo != 0) {
            return h.codigo;
        }
        if (!h.cosa->es_directorio) {
            return no_es_directorio;
        }
        busca(actual).cosa->es_actual = false;
        h.cosa->es_actual = true;
        actual = l.nombres;
        return 0;
    }
    void suelta(nodo& n) {
        n.sujeto.reset();
        for (auto& [clave, hijo] : n.hijos) {
            suelta(hijo);
        }
    }
    void suelta() { suelta(cima); }

private:
    static partes i_corta(const texto_w& t) {
        partes p(1);
        for (const wchar_t c : t) {
            if (c == L'\\') {
                p.emplace_back();
            } else {
                p.back().push_back(c);
            }
        }
        std::erase_if(p, [](const texto_w& x) { return x.empty(); });
        return p;
    }
    // Whether the last name is "." or "..".
    static bool i_es_de_puntos(const texto_w& t) {
        return t == L"." || t == L".." || acaba(t, L"\\.") || acaba(t, L"\\..");
    }
    static lugar i_valido(lugar l) {
        for (const texto_w& p : l.nombres) {
            for (const wchar_t c : p) {
                if (c < 32 || texto_w(L"/:*?\"<>|").find(c) != texto_w::npos) {
                    l.codigo = nombre_imposible;
                }
            }
        }
        return l;
    }
};

// Whether a search of the system finds a name by a mask: those of `*` alone, in front of a point, or at the end.
inline bool casa(const texto_w& mascara, const texto_w& nombre) {
    if (mascara == L"*" || mascara == L"*.*") {
        return true;
    }
    const texto_w m = pliega(mascara);
    const texto_w n = pliega(nombre);
    const std::size_t k = m.find(L'*');
    if (k == texto_w::npos) {
        return m == n;
    }
    return n.size() + 1 >= m.size() && empieza(n, m.substr(0, k)) && acaba(n, m.substr(k + 1));
}

}  // namespace estado
