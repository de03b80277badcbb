// A model of what the library does with files and directories, on top of the model of a volume: what each operation
// answers, what it tells its host and in which order, and what it leaves behind. Written from the rules of the library
// alone; of text it knows what the models of `tests/modelos` know.
#pragma once

#include <algorithm>
#include <functional>

#include "estado/registro.hpp"
#include "modelos/componentes.hpp"
#include "modelos/filtro.hpp"
#include "modelos/rutas.hpp"

namespace estado {

// Texts in UTF-8 and UTF-16, as they are in every code page (those of `apoyo` have stand-ins).
texto_w w(std::string_view utf8);
std::string u8(interno::vista_w texto);
inline std::string u8(const wchar_t* texto) {
    return texto == nullptr ? "(NULL)" : u8(interno::vista_w(texto));
}
using lista = std::vector<texto_w>;

inline std::string u(const texto_w& t) {
    return u8(interno::vista_w(t));
}

// The text that the system has for a code, as messages show it.
std::string texto_del_sistema(unsigned long codigo);
// 8-bit text in the code page of the moment, as the system converts it.
std::string a_pagina(const texto_w& t);
texto_w de_pagina(const std::string& t);
// The wall clock's time of a date in UTC.
long long hora_local(long long utc);

// What happens while the user is asked.
enum class entretanto { nada, se_suelta, se_va, se_para };

struct reglas {
    volumen v;
    clave registro;
    unsigned si = 0;  // how often a question is answered with "again"
    entretanto al_preguntar = entretanto::nada;
    bool avisa_de_abiertos = false;  // the file-open callback is set
    unsigned pagina = 0;
    texto_w busqueda_de_programas;  // PATH
    texto_w temporal;               // the directory for temporary files, once a sequence has set it

    std::vector<std::string> sucesos;  // what the host was told during this call
    bool cuenta_lo_dicho = true;       // whether that is to be compared
    unsigned preguntas = 0;
    unsigned short* seguir = nullptr;  // the flag that stops a deletion

    // ---- telling the host

    void aviso(const std::string& texto) { sucesos.push_back("warning: " + texto); }
    void informe(const std::string& expresion, const std::string& detalle = "(NULL)") {
        sucesos.push_back("report: " + expresion + " [" + detalle + "]");
    }
    void oye(const modelos::dicho& d) {
        for (const std::string& a : d.avisos) {
            aviso(a);
        }
        for (const std::string& i : d.informes) {
            informe(i);
        }
    }
    bool pregunta(const std::string& mensaje, unsigned long codigo) {
        sucesos.push_back("question: " + mensaje + (codigo == 0 ? "" : "\n" + texto_del_sistema(codigo)) +
                          " [" + std::to_string(codigo) + "]");
        if (++preguntas == 1) {
            switch (al_preguntar) {
                case entretanto::nada:
                    break;
                case entretanto::se_suelta:
                    v.suelta();
                    break;
                case entretanto::se_va:
                    v.ve_a(L"Q:\\");
                    break;
                case entretanto::se_para:
                    if (seguir != nullptr) {
                        *seguir = 0;
                    }
                    break;
            }
        }
        return preguntas <= si;
    }
    // Tries until it is done or nobody wants to try again.
    bool bucle(bool con_mensajes, const std::function<std::string()>& mensaje,
               const std::function<unsigned long()>& intenta, const texto_w* abierto = nullptr,
               bool dice_el_codigo = true) {
        for (bool primera = true;; primera = false) {
            const unsigned long codigo = intenta();
            if (codigo == 0) {
                return true;
            }
            if (!con_mensajes) {
                return false;
            }
            if (primera && abierto != nullptr && avisa_de_abiertos) {
                sucesos.push_back("open? " + u(*abierto));
            }
            if (!pregunta(mensaje(), dice_el_codigo ? codigo : 0)) {
                return false;
            }
        }
    }

    // ---- existence and access

    bool existe(const texto_w& t) { return v.busca(t).codigo == 0; }
    bool es_directorio(const texto_w& t) {
        const hallazgo h = v.busca(t);
        return h.codigo == 0 && h.cosa->es_directorio;
    }
    bool se_puede_leer(const texto_w& t) { return v.abre(t, {true, false, false, true, false, false}) == 0; }
    bool se_puede_escribir(const texto_w& t, std::string& motivo) {
        const hallazgo h = v.busca(t);
        unsigned long codigo = h.codigo;
        if (codigo == 0 && h.cosa->solo_lectura) {
            motivo = "The file does not have write permission.";
            return false;
        }
        if (codigo == 0) {
            codigo = v.abre(t, {true, true, false, false, false, false});
        } else if (codigo == no_esta && h.padre != nullptr && h.entrada == nullptr) {
            codigo = 0;  // made, and taken away again
        }
        motivo = codigo == 0 ? "(NULL)" : texto_del_sistema(codigo);
        return codigo == 0;
    }
    bool se_puede_escribir_en(const texto_w& path, bool da_el_directorio, std::string& motivo) {
        const modelos::juicio j = modelos::juzga(modelos::recortado(path));
        if (j.motivo != 0) {
            motivo = modelos::texto_en_ingles(j.motivo, u(j.argumento));
            return false;
        }
        const texto_w directorio = da_el_directorio ? path : sin_barra(modelos::directorio_de(path));
        texto_w por_crear = directorio;
        if (directorio.find(L"..") != texto_w::npos) {  // nothing is made only to be left again
            por_crear = L"Q:";
            for (const texto_w& n : v.lee(directorio).nombres) {
                por_crear += L"\\" + n;
            }
        }
        if (!directorio.empty() && !es_directorio(directorio) && !crea_directorios(por_crear, true, false)) {
            motivo = "Cannot create the directory '" + u(directorio) + "'";
            return false;
        }
        motivo = "(NULL)";
        return true;
    }

    // ---- enumeration

    struct visto {
        texto_w nombre;
        const nodo* n;
    };
    struct busqueda {
        bool propia = false;  // filtered by the enumerator itself
        std::vector<visto> entradas;
    };
    // What a search finds, and what is told of it.
    busqueda enumera(const texto_w& patron, bool ancha = true) {
        const std::size_t k = patron.find_last_of(L"\\/");
        const texto_w mascara = k == texto_w::npos ? patron : patron.substr(k + 1);
        const texto_w donde = k == texto_w::npos ? texto_w(L".") : patron.substr(0, k + 1);
        busqueda b;
        std::vector<visto> todas;
        bool alguna = false;
        const hallazgo h = v.busca(donde);
        if (h.codigo == 0 && h.cosa->es_directorio && se_deja(*h.cosa, para_listar)) {
            // Of the top of a drive nobody sees them; of that of a share one does.
            const bool es_recurso = empieza(donde, L"\\\\") && donde[2] != L'?' && donde[2] != L'.';
            if (h.cosa != &v.raiz() || es_recurso) {
                todas.push_back({L".", h.cosa});
                todas.push_back({L"..", h.cosa});
            }
            for (const auto& [clave, n] : h.cosa->hijos) {
                todas.push_back({n.nombre, v.sigue(const_cast<nodo*>(&n))});
            }
            alguna = true;
        }
        for (const visto& x : todas) {
            if (casa(mascara, x.nombre)) {
                b.entradas.push_back(x);
            }
        }
        if (!b.entradas.empty()) {
            return b;
        }
        if (k == texto_w::npos) {
            informe("(path_filtro_generico) != NULL");
            return b;
        }
        if (!alguna || todas.empty()) {
            return b;
        }
        b.propia = true;
        for (const visto& x : todas) {
            const bool vale = ancha ? modelos::cumple_filtro(x.nombre, mascara, true)
                                    : modelos::cumple_filtro(pliega(x.nombre), pliega(mascara), false);
            if (vale) {
                b.entradas.push_back(x);
            }
        }
        return b;
    }
    bool es_directorio(const nodo& n) { return n.es_directorio; }

    bool va_con_extension(const texto_w& nombre, const texto_w* extension) {
        const modelos::admision a = extension == nullptr ? modelos::admision{true, false}
                                                         : modelos::admite_extension(nombre, *extension);
        if (a.informa) {
            informe("widestr_longitud(extFich) > 1");
        }
        return a.admite;
    }

    // ---- one file, one directory

    // What a deletion of a file that is held by its directory does.
    bool borra_fichero(nodo& padre, const texto_w& nombre, const texto_w& mostrado, const texto_w* extra,
                       bool con_mensajes) {
        // The name is looked up again at each attempt: an answer may have changed things.
        return bucle(
            con_mensajes, [&] { return mensaje_de_borrado(mostrado, extra); },
            [&]() -> unsigned long {
                nodo* n = padre.hijo(nombre);
                if (n == nullptr) {
                    return 0;
                }
                if (n->enlace) {
                    return se_queda_el_enlace();
                }
                if (!n->es_directorio) {
                    n->solo_lectura = false;
                }
                return v.borra(padre, *n);
            },
            &mostrado);
    }
    static std::string mensaje_de_borrado(const texto_w& mostrado, const texto_w* extra) {
        return "Cannot delete the file '" + u(mostrado) + "'\n" +
               (extra != nullptr
                    ? u(*extra)
                    : "It may be that it is being used by another application or you do not have "
                      "sufficient privileges to write to this directory.");
    }
    bool borra_si_existe(const texto_w& t, const texto_w* extra, bool con_mensajes) {
        const lugar l = v.lee(t);  // once: nobody who moves the current directory moves the file
        hallazgo h = v.busca(l);
        if (h.codigo == no_esta || h.codigo == no_hay_camino) {
            return true;
        }
        if (h.codigo != 0 || h.padre == nullptr) {
            const unsigned long codigo = h.codigo == 0 ? negado : h.codigo;
            return codigo == nombre_imposible ||
                   bucle(
                       con_mensajes, [&] { return mensaje_de_borrado(t, extra); }, [&] { return codigo; },
                       &t);
        }
        return borra_fichero(*h.padre, h.ultimo, t, extra, con_mensajes);
    }
    bool borra_estricto(const texto_w& t, const texto_w* extra) {
        if (!existe(t)) {
            aviso("Cannot delete the file '" + u(t) + "' (it does not exist)");
            informe("CR_existe", u(t));
            return false;
        }
        return borra_si_existe(t, extra, true);
    }
    bool quita_directorio(const texto_w& t, bool con_mensajes) {
        return quita_directorio(t, v.lee(t), con_mensajes);
    }
    bool quita_directorio(const texto_w& t, const lugar& l, bool con_mensajes) {
        return bucle(
            con_mensajes, [&] { return "Unable to delete the directory '" + u(t) + "'"; },
            [&]() -> unsigned long {
                const hallazgo h = v.busca(l);
                return h.codigo != 0        ? h.codigo
                       : h.padre == nullptr ? negado
                                            : v.quita_directorio(*h.padre, *h.entrada);
            });
    }
    bool quita_directorio_estricto(const texto_w& t) { return quita_directorio_estricto(t, v.lee(t)); }
    bool quita_directorio_estricto(const texto_w& t, const lugar& l) {
        if (v.busca(l).codigo != 0) {
            aviso("Cannot delete the directory '" + u(t) + "' (it does not exist)");
            informe("CR_existe", u(t));
            return false;
        }
        return quita_directorio(t, l, true);
    }
    bool protege(const texto_w& t, bool solo_lectura) {
        const lugar l = v.lee(t);
        return bucle(
            true,
            [&] {
                return std::string("It is not possible to ") + (solo_lectura ? "lock" : "unlock") +
                       " the file '" + u(t) + "'";
            },
            [&]() -> unsigned long {
                const hallazgo h = v.busca(l);
                if (h.codigo == 0) {
                    h.cosa->solo_lectura = solo_lectura;
                }
                return h.codigo;
            },
            nullptr, false);
    }
    bool renombra(const texto_w& viejo, const texto_w& nuevo, bool con_mensajes) {
        const lugar de = v.lee(viejo);
        const lugar a = v.lee(nuevo);
        return bucle(
            con_mensajes, [&] { return "The file cannot be renamed.\n- " + u(viejo) + "\n- " + u(nuevo); },
            [&] { return v.mueve(de, a); });
    }

    // ---- creation

    static texto_w sin_barra(const texto_w& t) { return acaba(t, L"\\") ? t.substr(0, t.size() - 1) : t; }
    bool crea_directorios(const texto_w& path, bool es_directorio_, bool con_mensajes) {
        texto_w hecho;
        if (empieza(path, L"\\\\?\\") || empieza(path, L"\\\\.\\")) {
            hecho = path.substr(0, 6);
            const texto_w limpio = modelos::recortado(path);
            if (modelos::juzga(limpio.substr(4)).motivo != 0) {
                aviso(modelos::aviso_de_incorrecto(limpio));
            }
        } else {
            modelos::dicho d;
            hecho = modelos::corta_comprobado(path, d).unidad;
            oye(d);
        }
        texto_w resto = path.substr(hecho.size());
        const std::vector<texto_w> todos = modelos::componentes(resto);
        const bool desde_raiz = !resto.empty() && es_barra(resto[0]);
        if (resto.find(L"\\..\\") != texto_w::npos) {
            partes pila;
            for (const texto_w& c : todos) {
                if (c == L".." && !pila.empty()) {
                    pila.pop_back();
                } else {
                    pila.push_back(c);
                }
            }
            resto.clear();
            for (const texto_w& c : pila) {
                resto += (resto.empty() && !desde_raiz ? L"" : L"\\") + c;
            }
        }
        if (es_directorio_ && (resto.empty() || !es_barra(resto.back()))) {
            resto += L"\\";
        }
        const texto_w directorio = modelos::directorio_de(resto);
        if (directorio.empty()) {
            return true;
        }
        const std::vector<texto_w> niveles = modelos::componentes(directorio);
        bool bien = true;
        // A question may move the current directory: every level is that of where it began.
        const partes antes = v.actual;
        for (std::size_t i = 0; bien && i < niveles.size(); ++i) {
            hecho += (i > 0 || es_barra(directorio[0]) ? L"\\" : L"") + niveles[i];
            const lugar donde = i_lee_desde(hecho, antes);
            bien = bucle(
                con_mensajes, [&] { return "Cannot create the directory '" + u(hecho) + "'"; },
                [&]() -> unsigned long {
                    const hallazgo h = v.busca(donde);
                    if (h.codigo == 0) {
                        return i + 1 < niveles.size() || h.cosa->es_directorio ? 0 : ya_esta;
                    }
                    if (h.padre == nullptr) {
                        return h.codigo;
                    }
                    h.padre->anade({h.ultimo, true});
                    return 0;
                });
        }
        if (!bien && con_mensajes) {
            aviso("The directory name '" + u(hecho) + "' is incorrect");
        }
        return bien;
    }

    // ---- trees

    // A directory that a deletion may not be given.
    bool se_niega(const texto_w& directorio) {
        if (modelos::recortado(directorio).empty()) {
            informe("widestr_longitud(directorio) > 0");
            return true;
        }
        if (directorio.size() == 2 && directorio[1] == L':') {
            informe("unidad_sin_directorio == FALSO", u(directorio));
            return true;
        }
        return false;
    }
    static texto_w une(const texto_w& a, const texto_w& b) { return modelos::une(a, b); }

    // Without the prefix the system cuts blanks and points where a path ends: the text means another directory.
    static bool se_recorta(const texto_w& t) {
        const texto_w nombre = t.substr(t.find_last_of(L"\\/:") + 1);
        return !empieza(t, L"\\\\?\\") && !nombre.empty() && nombre != L"." && nombre != L".." &&
               (nombre.back() == L'.' || nombre.back() == L' ');
    }
    // A root that the walks enter: a directory, no link, not held, and of that very name.
    nodo* raiz_de_recorrido(const texto_w& t, const lugar& l) {
        const hallazgo h = v.busca(l);
        return h.codigo == 0 && !se_recorta(t) && h.entrada->es_directorio && !h.entrada->enlace &&
                       se_deja(*h.entrada, para_listar)
                   ? h.entrada
                   : nullptr;
    }
    // Files as they are listed; directories by code units, in which the letters of one case come before those of the other.
    static lista nombres(nodo& n, bool de_directorios) {
        lista r;
        for (const auto& [clave, hijo] : n.hijos) {
            if (hijo.es_directorio == de_directorios) {
                r.push_back(hijo.nombre);
            }
        }
        if (de_directorios) {
            std::sort(r.begin(), r.end());
        }
        return r;
    }
    bool parado() const { return seguir != nullptr && *seguir == 0; }

    // Everything in a directory, strictly: what begins with a point and holds something stays with all above it.
    void borra_contenido(nodo& d, const texto_w& mostrado) {
        for (const texto_w& n : nombres(d, false)) {
            if (parado()) {
                return;
            }
            borra_fichero(d, n, une(mostrado, n), nullptr, true);
        }
        for (const texto_w& n : nombres(d, true)) {
            if (n[0] == L'.') {
                continue;
            }
            if (parado()) {
                return;
            }
            const texto_w hijo = une(mostrado, n);
            if (!d.hijo(n)->enlace) {
                if (!se_deja(*d.hijo(n), para_listar)) {
                    continue;
                }
                borra_contenido(*d.hijo(n), hijo);
            }
            if (seguir == nullptr || *seguir == 1) {
                bucle(
                    true, [&] { return "Unable to delete the directory '" + u(hijo) + "'"; },
                    [&]() -> unsigned long {
                        nodo* x = d.hijo(n);
                        return x == nullptr ? no_esta
                               : x->enlace  ? se_queda_el_enlace()
                                            : v.quita_directorio(d, *x);
                    });
            }
        }
    }
    // A link whose removal would take away what it leads to stays. With which code it is shown is the library's own
    // business.
    unsigned long se_queda_el_enlace() {
        cuenta_lo_dicho = false;
        return negado;
    }
    void borra_contenido(const texto_w& t) {
        if (se_niega(t)) {
            return;
        }
        if (nodo* d = raiz_de_recorrido(t, v.lee(t))) {
            borra_contenido(*d, t);
        }
    }
    bool borra_arbol(const texto_w& t) {
        if (se_niega(t)) {
            return false;
        }
        const lugar l = v.lee(t);  // whoever is asked about a file may change the current directory
        borra_contenido(t);
        if (seguir != nullptr && *seguir != 1) {
            return false;
        }
        const hallazgo h = v.busca(l);
        if (h.codigo == 0 && (se_recorta(t) || !h.cosa->es_directorio)) {
            constexpr unsigned long no_se_entra = 1920;
            return bucle(
                true, [&] { return "Unable to delete the directory '" + u(t) + "'"; },
                [&] { return se_recorta(t) ? no_se_entra : no_es_directorio; });
        }
        return quita_directorio_estricto(t, l);
    }

    struct pasada {
        lista quedan;       // files
        bool otra = false;  // a directory whose contents may not be gone yet
        bool quitado = false;
        bool enlaces = false;  // to directories, which stay
    };
    // Answers whether a link stays in it: nobody waits for that to go.
    bool pasa(nodo& d, const texto_w& mostrado, bool recurre, pasada& p) {
        bool queda_un_enlace = false;
        for (const texto_w& n : nombres(d, false)) {
            nodo& hijo = *d.hijo(n);
            hijo.solo_lectura = false;
            if (hijo.enlace || v.borra(d, hijo) != 0) {
                p.quedan.push_back(une(mostrado, n));
            }
        }
        for (const texto_w& n : recurre ? nombres(d, true) : lista()) {
            nodo& hijo = *d.hijo(n);
            if (hijo.enlace) {
                p.enlaces = true;
                queda_un_enlace = true;
                continue;
            }
            const bool lo_tiene = se_deja(hijo, para_listar) && pasa(hijo, une(mostrado, n), true, p);
            queda_un_enlace = queda_un_enlace || lo_tiene;
            const unsigned long codigo = v.quita_directorio(d, *d.hijo(n));
            p.otra = p.otra || codigo == negado || codigo == en_uso || (codigo == no_vacio && !lo_tiene);
        }
        return queda_un_enlace;
    }
    pasada una_pasada(const texto_w& t, const lugar& l, bool quita, bool recurre, bool& entra) {
        pasada p;
        const hallazgo h = v.busca(l);
        nodo* d = raiz_de_recorrido(t, l);
        entra = d != nullptr || h.codigo != 0;
        const bool lo_tiene = d != nullptr && pasa(*d, t, recurre, p);
        if (quita && entra && !se_recorta(t)) {
            const hallazgo otra_vez = v.busca(l);
            const unsigned long codigo = otra_vez.codigo != 0 ? otra_vez.codigo
                                         : otra_vez.padre == nullptr
                                             ? negado
                                             : v.quita_directorio(*otra_vez.padre, *otra_vez.entrada);
            p.quitado = codigo == 0;
            p.otra = p.otra || codigo == negado || codigo == en_uso || (codigo == no_vacio && !lo_tiene);
        }
        return p;
    }
    bool pasadas(const texto_w& t, bool quita, bool recurre, bool tiene_que_salir) {
        if (se_niega(t)) {
            return false;
        }
        const lugar l = v.lee(t);
        bool todos = false;
        for (int i = 0; i < 20; ++i) {
            bool entra = true;
            const pasada p = una_pasada(t, l, quita, recurre, entra);
            todos = p.quedan.empty() && entra && !p.enlaces;
            if (p.quedan.empty() && !p.otra) {
                break;
            }
            sucesos.push_back("pause");
        }
        if (!todos && tiene_que_salir) {
            informe("se_han_borrado_todos_los_ficheros_loc == CIERTO");
        }
        return todos;
    }

    // Texts are compared without the case of A to Z alone.
    static texto_w sin_caja(texto_w t) {
        for (wchar_t& c : t) {
            c = modelos::mayuscula(c);
        }
        return t;
    }
    void sube_por_vacios(const texto_w& directorio, const texto_w* base_dada) {
        texto_w base;
        if (base_dada != nullptr) {
            if (!empieza(sin_caja(directorio), sin_caja(*base_dada))) {
                informe(
                    "widestr_es_subcadena_inicial_may_o_min(path_directorio, path_base_no_borrar) == CIERTO");
                if (sin_barra(directorio).size() <= sin_barra(*base_dada).size()) {
                    informe("widestr_longitud(dir) > widestr_longitud(path_base)");
                }
                return;
            }
            base = *base_dada;
        } else {
            modelos::dicho d;
            base = modelos::corta_comprobado(directorio, d).unidad;
            oye(d);
        }
        base = sin_barra(base);
        const partes no_se_toca = v.lee(base_dada == nullptr || base.empty() ? texto_w(L"\\") : base).nombres;
        texto_w dir = sin_barra(directorio);
        while (sin_caja(dir) != sin_caja(base)) {
            if (dir.size() <= base.size()) {
                informe("widestr_longitud(dir) > widestr_longitud(path_base)");
                return;
            }
            const hallazgo h = v.busca(dir);
            if (h.codigo == 0 && h.cosa->es_directorio) {
                for (const auto& [clave, n] : h.cosa->hijos) {
                    if (!n.es_directorio || !n.tiene_punto()) {
                        return;
                    }
                }
            }
            if (h.codigo == 0 && (h.padre == nullptr || v.quita_directorio(*h.padre, *h.entrada) != 0)) {
                return;
            }
            const texto_w arriba = sin_barra(modelos::directorio_de(dir));
            if (arriba == dir) {
                return;
            }
            dir = arriba;
        }
    }

    void cambia_extension(texto_w directorio, const texto_w& vieja, const texto_w& nueva) {
        for (wchar_t& c : directorio) {
            c = c == L'/' ? L'\\' : c;
        }
        if (modelos::recortado(directorio).empty()) {
            informe("widestr_longitud(directorio) > 0");
            return;
        }
        const auto sin_punto = [](const texto_w& e) { return empieza(e, L".") ? e.substr(1) : e; };
        const texto_w de = sin_punto(vieja);
        const texto_w a = sin_punto(nueva);
        lista ficheros;
        for (const visto& x : enumera(une(directorio, L"*.*")).entradas) {
            if (!x.n->es_directorio && va_con_extension(x.nombre, &de)) {
                ficheros.push_back(x.nombre);
            }
        }
        if (pliega(de) == pliega(a)) {
            return;
        }
        for (const texto_w& f : ficheros) {
            const texto_w base = modelos::corta_modelo(f, false).p.nombre;
            const texto_w otro = une(directorio, a.empty() ? base : base + L"." + a);
            if (existe(otro)) {
                borra_si_existe(otro, nullptr, true);
            }
            renombra(une(directorio, de.empty() ? base : base + L"." + de), otro, true);
        }
    }

    // A new call begins.
    void empieza_llamada() {
        sucesos.clear();
        cuenta_lo_dicho = true;
        preguntas = 0;
        seguir = nullptr;
    }

private:
    lugar i_lee_desde(const texto_w& t, const partes& actual) {
        const partes ahora = v.actual;
        v.actual = actual;
        const lugar l = v.lee(t);
        v.actual = ahora;
        return l;
    }
};

}  // namespace estado
