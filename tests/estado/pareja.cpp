#include "estado/pareja.hpp"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <thread>

#include "estado/companyero.hpp"

namespace estado {

using namespace apoyo;

namespace {

constexpr const char* creacion = "cdir_crea_directorios_si_es_posible";

// Operations that a directory sees as one step, and that tell the host nothing. What takes several steps by its rules
// (creating several levels, deleting a tree, listing, and everything that opens a file that the other may want to
// delete meanwhile) may meet the other half-way, and is not judged here.
const char* const de_un_paso[] = {"cdir_existe_fichero",
                                  "cdir_es_directorio_u",
                                  "cdir_borra_fichero_con_comprobacion",
                                  "cdir_se_borra_directorio",
                                  "cdir_renombra_fichero_si_es_posible",
                                  "cdir_mueve_fichero",
                                  creacion,
                                  "cdir_tiene_permiso_escritura_fichero"};

const fila* la_fila(const std::string& nombre) {
    for (const fila& f : filas()) {
        if (nombre == f.nombre) {
            return &f;
        }
    }
    return nullptr;
}

// Windows looks for a name, in whatever letters, and makes it under one lock. Wine looks first and has it made afterwards,
// in a directory that keeps letter case: of two programs that create `d` and `D` at once, one time in ten each gets its
// own, a state that no volume of Windows' knows. So one creates after the other here.
BOOL WINAPI crea_bajo_llave(const wchar_t* ruta, SECURITY_ATTRIBUTES* seguridad) {
    static const HANDLE llave = ::CreateMutexW(nullptr, FALSE, L"lumodir estado: creation");
    ::WaitForSingleObject(llave, INFINITE);
    const BOOL creado = ::CreateDirectoryW(ruta, seguridad);
    const DWORD codigo = ::GetLastError();
    ::ReleaseMutex(llave);
    ::SetLastError(codigo);
    return creado;
}

// What two at once need of the system.
struct para_dos {
    // No links are about: asking whether one was named would open files in the other's way.
    const sustituye<BOOL(WINAPI*)()> enlaces{interno::sistema.sigue_enlaces,
                                             []() WINAPI { return BOOL{FALSE}; }};
    const sustituye<decltype(&::CreateDirectoryW)> creacion{interno::sistema.CreateDirectoryW,
                                                            crea_bajo_llave};
};

// Few names, so that both want the same.
std::vector<paso> unos_pasos(azar& z) {
    static const std::vector<texto_w> nombres = {L"Q:\\a", L"Q:\\b",           L"Q:\\d",
                                                 L"Q:\\D", L"\\\\srv\\rec\\a", L"Q:\\c"};
    static const std::vector<texto_w> dentro = {L"Q:\\a", L"Q:\\d\\a", L"Q:\\d\\b", L"Q:\\c"};
    std::vector<paso> pasos;
    for (std::size_t n = 2 + z.menor_que(3); n > 0; --n) {
        paso p = {la_fila(de_un_paso[z.menor_que(std::size(de_un_paso))])};
        const bool es_creacion = p.f->nombre == std::string_view(creacion);
        p.a.push_back(es_creacion || z.uno_de_cada(2) ? z.elige(nombres) : z.elige(dentro));
        if (std::strstr(p.f->nombre, "renombra") != nullptr || std::strstr(p.f->nombre, "mueve") != nullptr) {
            p.a.push_back(z.elige(dentro));
        }
        p.ocho = p.f->estrecha != nullptr && z.uno_de_cada(2);
        pasos.push_back(p);
    }
    return pasos;
}

std::vector<std::string> da(const std::vector<paso>& pasos) {
    std::vector<std::string> respuestas;
    for (const paso& p : pasos) {
        respuestas.push_back((p.ocho ? p.f->estrecha : p.f->ancha)(p.a));
    }
    return respuestas;
}

// ---- the other process

constexpr std::size_t sitio = 4096;
struct mesa {
    volatile LONG turno;  // both go when it is 2
    char que[sitio];
    char respuestas[sitio];
};
constexpr const char* el_que_hace_lo_mismo = "estado_pareja";
void escribe_en(char (&donde)[sitio], const std::string& texto) {
    std::memcpy(donde, texto.c_str(), std::min(texto.size() + 1, sitio));
    donde[sitio - 1] = 0;
}
void espera_al_otro(mesa& m) {
    ::InterlockedIncrement(&m.turno);
    while (m.turno < 2) {
        ::SwitchToThread();
    }
}

const papel papel_pareja(el_que_hace_lo_mismo, [] {
    const para_dos preparado;
    if (!::SetCurrentDirectoryW(L"Q:\\")) {
        return 1;
    }
    return acompanya<mesa>(el_que_hace_lo_mismo, [](mesa& m) {
        const std::vector<paso> pasos = de_texto(m.que);
        espera_al_otro(m);
        std::string todas_ellas;
        for (const std::string& r : da(pasos)) {
            todas_ellas += r + "\n";
        }
        escribe_en(m.respuestas, todas_ellas);
    });
});

// ---- is there an order?

struct lado {
    const std::vector<paso>& pasos;
    const std::vector<std::string>& respuestas;
    std::size_t hechos = 0;
    unsigned abierta = 0;  // what the operation under way has opened
    unsigned movida = 0;   // what it has moved and not closed yet

    bool ha_acabado() const { return hechos == pasos.size() && movida == 0; }
    bool va_a_borrar() const {
        return std::any_of(
            pasos.begin() + static_cast<std::ptrdiff_t>(hechos), pasos.end(),
            [](const paso& p) { return std::strstr(p.f->nombre, "borra_fichero") != nullptr; });
    }
};

// Deleting, moving and removing take two steps: they open what bears the name now, and then that goes or moves, also
// if the other has given it another name meanwhile. What has moved is closed in a third step: if the other deletes it
// before, under its new name, it is told yes, and the name stays until then. Creating a directory takes two: the system
// makes it and holds it for a moment, in which nobody can move or remove it; and what is answered is whether it is there
// then.
bool toma_dos_pasos(const std::string& nombre) {
    return nombre == "cdir_borra_fichero_con_comprobacion" || nombre == "cdir_se_borra_directorio" ||
           nombre == "cdir_renombra_fichero_si_es_posible" || nombre == "cdir_mueve_fichero";
}
std::pair<nodo*, nodo*> con_numero(nodo& padre, unsigned numero) {
    for (auto& [clave_, hijo] : padre.hijos) {
        if (hijo.numero == numero) {
            return {&padre, &hijo};
        }
        const auto abajo = con_numero(hijo, numero);
        if (abajo.second != nullptr) {
            return abajo;
        }
    }
    return {nullptr, nullptr};
}
// The second step: what is answered; nothing where the system answers in either way.
std::optional<std::string> acaba(reglas& r, const paso& p, unsigned numero) {
    if (p.f->nombre == std::string_view(creacion)) {
        const hallazgo h = r.v.busca(*p.a[0]);
        return h.codigo == 0 && h.cosa->es_directorio ? "1" : "0";
    }
    const auto [padre, n] = con_numero(r.v.cima, numero);
    if (n == nullptr) {
        return {};
    }
    const std::string nombre = p.f->nombre;
    if (n->se_ira_al_cerrar && nombre != "cdir_borra_fichero_con_comprobacion") {
        padre->hijos.erase(pliega(n->nombre));
        return "0";
    }
    if (nombre == "cdir_borra_fichero_con_comprobacion") {
        return r.v.borra(*padre, *n) == 0 ? "1" : "0";
    }
    if (nombre == "cdir_se_borra_directorio") {
        if (!n->hijos.empty()) {
            return {};  // Wine says yes to who began when it was empty, and it stays
        }
        return r.v.quita_directorio(*padre, *n) == 0 ? "1" : "0";
    }
    const hallazgo donde = r.v.busca(*p.a[1]);
    if (donde.codigo == 0) {
        return donde.cosa == n ? "1" : "0";
    }
    if (donde.padre == nullptr || con_numero(*n, numero).second != nullptr) {
        return "0";
    }
    nodo movido = *n;
    movido.nombre = donde.ultimo;
    nodo* const destino = donde.padre;
    padre->hijos.erase(pliega(n->nombre));
    destino->anade(std::move(movido));
    return "1";
}
// The number by which a thing is found again, whatever its name is by then.
unsigned numera(nodo& cosa) {
    static unsigned numeros = 0;
    cosa.numero = cosa.numero == 0 ? ++numeros : cosa.numero;
    return cosa.numero;
}
bool explica(campo& c, const reglas& r, lado a, lado b) {
    if (a.ha_acabado() && b.ha_acabado()) {
        reglas final = r;
        return c.diferencia(final).empty();
    }
    for (const bool toca_a : {true, false}) {
        lado x = a;
        lado y = b;
        lado& l = toca_a ? x : y;
        const lado& otro = toca_a ? y : x;
        if (l.movida != 0) {
            reglas cerrada = r;
            const auto [padre, n] = con_numero(cerrada.v.cima, l.movida);
            if (n != nullptr && n->se_ira_al_cerrar) {
                padre->hijos.erase(pliega(n->nombre));
            }
            l.movida = 0;
            if (explica(c, cerrada, x, y)) {
                return true;
            }
            continue;
        }
        if (l.hechos == l.pasos.size()) {
            continue;
        }
        const paso& p = l.pasos[l.hechos];
        const std::string& real = l.respuestas[l.hechos];
        reglas despues = r;
        despues.empieza_llamada();
        en_8_bits(p.ocho);
        if (l.abierta != 0) {
            const nodo* const abierto = con_numero(despues.v.cima, l.abierta).second;
            const bool se_ha_movido = abierto != nullptr && despues.v.busca(*p.a[0]).entrada != abierto;
            const reglas sin_efecto = despues;
            const std::optional<std::string> pensado = acaba(despues, p, l.abierta);
            const unsigned lo_suyo = l.abierta;
            l.abierta = 0;
            ++l.hechos;
            // Wine deletes by the name that was opened: what has moved away stays, and nobody is told.
            // And it takes a name away when the last one who has it open is through; until then it is deleted again.
            const bool lo_tiene_el_otro = (otro.abierta == lo_suyo || otro.movida == lo_suyo) &&
                                          real == "1" && std::strstr(p.f->nombre, "borra") != nullptr;
            if (se_ha_movido && explica(c, sin_efecto, x, y)) {
                return true;
            }
            if (lo_tiene_el_otro && abierto != nullptr) {
                reglas a_medias = sin_efecto;
                con_numero(a_medias.v.cima, lo_suyo).second->se_ira_al_cerrar = true;
                if ((otro.abierta == lo_suyo && explica(c, sin_efecto, x, y)) || explica(c, a_medias, x, y)) {
                    return true;
                }
            }
            const bool es_traslado =
                std::strstr(p.f->nombre, "borra") == nullptr && p.f->nombre != std::string_view(creacion);
            // By the name that was opened, again: what is moved before that stays under its new one.
            if (es_traslado && abierto != nullptr && abierto->se_ira_al_cerrar) {
                reglas se_salva = sin_efecto;
                con_numero(se_salva.v.cima, lo_suyo).second->se_ira_al_cerrar = false;
                if (acaba(se_salva, p, lo_suyo) == real && explica(c, se_salva, x, y)) {
                    return true;
                }
            }
            if (es_traslado && pensado == "1" && otro.va_a_borrar()) {
                l.movida = lo_suyo;
            }
            if ((!pensado || *pensado == real) && explica(c, despues, x, y)) {
                return true;
            }
            continue;
        }
        if (p.f->aplicable != nullptr && !p.f->aplicable(despues, p.a)) {
            return true;  // the model says nothing of this order
        }
        const hallazgo h = despues.v.busca(*p.a[0]);
        if (h.codigo == 0 && toma_dos_pasos(p.f->nombre)) {
            const unsigned lo_suyo = numera(*h.cosa);
            // What the other has open is in use.
            if ((otro.abierta == lo_suyo || otro.movida == lo_suyo) && real == "0") {
                ++l.hechos;
                if (explica(c, despues, x, y)) {
                    return true;
                }
                --l.hechos;
            }
            l.abierta = lo_suyo;
            if (explica(c, despues, x, y)) {
                return true;
            }
            continue;
        }
        const bool es_nuevo = h.codigo != 0 && p.f->nombre == std::string_view(creacion);
        const std::string pensado = p.f->modela(despues, p.a, real);
        const bool queda_abierto = es_nuevo && pensado == "1";
        if (queda_abierto || pensado == real || real == "(void)") {
            l.abierta = queda_abierto ? numera(*despues.v.busca(*p.a[0]).cosa) : 0;
            l.hechos += queda_abierto ? 0 : 1;
            if (explica(c, despues, x, y)) {
                return true;
            }
        }
    }
    return false;
}

std::string pasos_contados(const std::vector<paso>& pasos, const std::vector<std::string>& respuestas) {
    std::string t;
    for (std::size_t i = 0; i < pasos.size(); ++i) {
        std::string linea = a_texto({pasos[i]});
        linea.pop_back();
        t += "\n    " + linea + " -> " + (i < respuestas.size() ? respuestas[i] : "?");
    }
    return t;
}

}  // namespace

std::string corre_pareja(campo& c, juntos como, std::uint64_t semilla) {
    const para_dos preparado;
    azar z(semilla);
    reglas r;
    c.empieza(r);
    for (const texto_w& n : {texto_w(L"a"), texto_w(L"b"), texto_w(L"d\\a"), texto_w(L"d\\b")}) {
        if (z.uno_de_cada(2)) {
            continue;
        }
        if (n.size() > 1 && r.v.raiz().hijo(L"d") == nullptr) {
            c.pon_directorio({L"d"});
            r.v.raiz().anade({L"d", true});
        }
        const partes p = r.v.lee(n).nombres;
        const std::size_t bytes = z.menor_que(9);
        c.pon_fichero(p, bytes, false);
        r.v.busca(n).padre->anade({p.back()}).bytes = bytes;
    }
    const std::vector<paso> de_a = unos_pasos(z);
    const std::vector<paso> de_b = unos_pasos(z);
    std::vector<std::string> dice_a;
    std::vector<std::string> dice_b;
    static mesa mesa_propia;
    if (como == juntos::hilos) {
        mesa_propia.turno = 0;
        std::thread otro([&] {
            espera_al_otro(mesa_propia);
            dice_b = da(de_b);
        });
        espera_al_otro(mesa_propia);
        dice_a = da(de_a);
        otro.join();
    } else {
        static companyero<mesa> otro(el_que_hace_lo_mismo);
        mesa& m = otro.mesa();
        m.turno = 0;
        escribe_en(m.que, a_texto(de_b));
        otro.empieza();
        espera_al_otro(m);
        dice_a = da(de_a);
        if (!otro.acaba()) {
            return "the other process does not answer";
        }
        std::string linea;
        for (const char* p = m.respuestas; *p != 0; ++p) {
            if (*p == '\n') {
                dice_b.push_back(linea);
                linea.clear();
            } else {
                linea += *p;
            }
        }
    }
    std::string de_mas;
    for (const std::string& s : c.toma_sucesos()) {
        de_mas += "\n    " + s;
    }
    if (dice_b.size() == de_b.size() && de_mas.empty() && explica(c, r, {de_a, dice_a}, {de_b, dice_b})) {
        return "";
    }
    reglas nada = r;
    return "seed " + std::to_string(semilla) + ": no order explains\n  one:" + pasos_contados(de_a, dice_a) +
           "\n  the other:" + pasos_contados(de_b, dice_b) + "\n  told:" + de_mas +
           "\n  against the beginning: " + c.diferencia(nada);
}

}  // namespace estado
