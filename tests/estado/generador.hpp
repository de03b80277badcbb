// What a sequence's calls are about: names, places and the ways of writing a path, chosen by chance from what the model
// says is there.
#pragma once

#include "estado/azar.hpp"
#include "estado/reglas.hpp"

namespace estado {

using argumento = std::optional<texto_w>;  // none: NULL
using argumentos = std::vector<argumento>;

inline texto_w numero(long long n) {
    return w(std::to_string(n));
}

// Ways of writing a path that a function is given or spared.
enum forma : unsigned {
    relativa = 1,
    completa = 2,
    desde_raiz = 4,
    de_unidad = 8,
    compartida = 16,
    literal = 32,
    de_dispositivo = 64,
    con_rodeos = 128,  // ".\", "x\..\", doubled separators
    con_otra_barra = 256,
    con_otra_caja = 512,
    con_cola = 1024,  // a point or a blank at the end, or a final separator
    cualquiera = 2047,
    que_pasan_la_prueba = relativa | completa | desde_raiz | compartida | con_otra_barra | con_otra_caja
};

struct generador {
    azar& z;
    reglas& r;

    // ---- names

    texto_w nombre() {
        static const std::vector<texto_w> corrientes = {L"a.txt",   L"b.txt", L"a.tmp", L"b.tmp",
                                                        L"b.bak",   L"c",     L"a",     L"la.TXT",
                                                        L"x.y.txt", L".git",  L".x"};
        static const std::vector<texto_w> raros = {w("\xC3\xB1u.txt"), w("\xCE\xA9.txt"),
                                                   w("\xE6\x97\xA5\xE6\x9C\xAC.tmp"),
                                                   L"largo con blancos.dat", texto_w(60, L'l') + L".txt"};
        return z.uno_de_cada(5) ? z.elige(raros) : z.elige(corrientes);
    }
    texto_w nombre_de_directorio() {
        static const std::vector<texto_w> corrientes = {L"d",   L"e",    L"d", L"g g",
                                                        L"d.x", L".svn", L"b", L"h"};
        // What lies in a directory of the long name, Windows would refuse without the prefix.
        return z.uno_de_cada(8)    ? w("d\xC3\xB1")
               : z.uno_de_cada(15) ? texto_w(240, L'm')
                                   : z.elige(corrientes);
    }
    // Names that a program can only give with the prefix.
    texto_w nombre_imposible_de_dar() {
        static const std::vector<texto_w> todos_ellos = {L"p.",  L"p ",   L"con", L"aux.tmp",
                                                         L"nul", L"q. .", L"p. "};
        return z.elige(todos_ellos);
    }
    static bool es_raro(const texto_w& n) {
        const texto_w tronco = pliega(n.substr(0, n.find(L'.')));
        return n.back() == L'.' || n.back() == L' ' || tronco == L"CON" || tronco == L"NUL" ||
               tronco == L"AUX";
    }

    // ---- places

    void reune(const nodo& n, const partes& donde, std::vector<partes>& ficheros,
               std::vector<partes>& directorios) {
        for (const auto& [clave, hijo] : n.hijos) {
            partes p = donde;
            p.push_back(hijo.nombre);
            (hijo.es_directorio ? directorios : ficheros).push_back(p);
            if (hijo.es_directorio && !hijo.enlace) {
                reune(hijo, p, ficheros, directorios);
            }
        }
    }
    partes un_directorio(bool con_la_raiz = false) {
        std::vector<partes> f;
        std::vector<partes> d;
        reune(r.v.raiz(), {}, f, d);
        if (con_la_raiz || d.empty()) {
            d.push_back({});
        }
        return z.elige(d);
    }
    partes un_fichero() {
        std::vector<partes> f;
        std::vector<partes> d;
        reune(r.v.raiz(), {}, f, d);
        return f.empty() ? algo_nuevo() : z.elige(f);
    }
    partes algo_nuevo() {
        partes p = un_directorio(true);
        if (p.size() < 4 && z.uno_de_cada(6)) {
            p.push_back(nombre_de_directorio());
        }
        p.push_back(z.uno_de_cada(3) ? nombre_de_directorio() : nombre());
        return p;
    }
    partes de_fichero() {
        return z.uno_de_cada(5) ? algo_nuevo() : z.uno_de_cada(8) ? un_directorio() : un_fichero();
    }
    partes de_directorio() {
        return z.uno_de_cada(7) ? algo_nuevo() : z.uno_de_cada(10) ? un_fichero() : un_directorio();
    }

    // ---- the text of a path

    static texto_w junta(const partes& p, std::size_t desde = 0) {
        texto_w t;
        for (std::size_t i = desde; i < p.size(); ++i) {
            t += (i > desde ? L"\\" : L"") + p[i];
        }
        return t;
    }
    // A name that the system would read otherwise goes with the prefix, or not at all.
    texto_w escribe(partes p, unsigned formas, bool admite_barra_final = false) {
        for (texto_w& n : p) {
            if (es_raro(n) && (formas & literal) != 0) {
                return L"\\\\?\\Q:\\" + junta(p);
            }
            n = es_raro(n) ? texto_w(L"h") : n;
        }
        std::vector<unsigned> posibles;
        for (const unsigned f : {relativa, relativa, relativa, completa, completa, desde_raiz, de_unidad,
                                 compartida, literal, de_dispositivo}) {
            if ((formas & f) != 0) {
                posibles.push_back(f);
            }
        }
        const unsigned f = z.elige(posibles);
        texto_w t;
        switch (f) {
            case relativa:
            case de_unidad: {
                const partes& base = r.v.actual;
                std::size_t comun = 0;
                while (comun < base.size() && comun < p.size() && pliega(base[comun]) == pliega(p[comun])) {
                    ++comun;
                }
                if (comun == p.size() || (comun < base.size() && (formas & con_rodeos) == 0)) {
                    t = L"\\" + junta(p);  // no plain way of saying it
                    break;
                }
                for (std::size_t i = comun; i < base.size(); ++i) {
                    t += L"..\\";
                }
                t += junta(p, comun);
                if (f == de_unidad) {
                    t = L"Q:" + t;
                } else if ((formas & con_rodeos) != 0 && z.uno_de_cada(6)) {
                    t = L".\\" + t;
                }
                break;
            }
            case completa:
                t = (z.uno_de_cada(5) && (formas & con_otra_caja) != 0 ? L"q:\\" : L"Q:\\") + junta(p);
                break;
            case desde_raiz:
                t = L"\\" + junta(p);
                break;
            case compartida:
                t = L"\\\\srv\\rec\\" + junta(p);
                break;
            case literal:
                return L"\\\\?\\Q:\\" + junta(p);
            default:
                t = L"\\\\.\\Q:\\" + junta(p);
        }
        if ((formas & con_rodeos) != 0 && f != compartida && z.uno_de_cada(10)) {
            const std::size_t k = t.rfind(L'\\');
            if (k != texto_w::npos && k > 2) {
                t.insert(k, z.uno_de_cada(2) ? L"\\nada\\.." : L"\\.");
            }
        }
        if ((formas & con_otra_caja) != 0 && z.uno_de_cada(8)) {
            for (std::size_t i = t.rfind(L'\\') + 1; i < t.size(); ++i) {
                t[i] = pliega(t[i]);
            }
        }
        if ((formas & con_otra_barra) != 0 && f != compartida && f != de_dispositivo && z.uno_de_cada(8)) {
            for (std::size_t i = 1; i < t.size(); ++i) {
                t[i] = t[i] == L'\\' ? L'/' : t[i];
            }
        }
        if (admite_barra_final && !p.empty() && z.uno_de_cada(8)) {
            return t + L"\\";
        }
        if ((formas & con_cola) != 0 && !p.empty() && f != de_dispositivo && z.uno_de_cada(14)) {
            t += z.uno_de_cada(2) ? L" " : L".";
        }
        return t;
    }

    argumento fichero(unsigned formas = cualquiera) { return escribe(de_fichero(), formas); }
    argumento directorio(unsigned formas = cualquiera) {
        const partes p = de_directorio();
        const hallazgo h = r.v.busca(p);
        return escribe(p, formas, h.codigo == 0 && h.cosa->es_directorio && (formas & con_cola) != 0);
    }
    argumento nuevo(unsigned formas = cualquiera) { return escribe(algo_nuevo(), formas); }
    argumento extra() { return z.uno_de_cada(2) ? argumento(w("aviso extra \xC3\xB1")) : argumento(); }
    texto_w mascara() {
        static const std::vector<texto_w> todas_ellas = {L"*",  L"*.*",   L"*.txt", L"*.tmp", L"a*",
                                                         L"b*", L"a.txt", L"l*",    L"*.zzz", L"zz.txt"};
        return z.elige(todas_ellas);
    }
    argumento patron(unsigned formas = cualquiera & ~con_cola) {
        if (z.uno_de_cada(8)) {
            return mascara();
        }
        const partes p = z.uno_de_cada(4) ? r.v.actual : de_directorio();
        texto_w t = p.empty() ? texto_w(L"\\") : escribe(p, formas);
        if (!es_barra(t.back())) {
            t += L"\\";
        }
        return t + mascara();
    }
    argumento extension() {
        static const std::vector<texto_w> todas_ellas = {L"txt", L"tmp", L"TXT", L"bak",
                                                         L"",    L"t?t", L"*",   L"zz"};
        return z.elige(todas_ellas);
    }
};

}  // namespace estado
