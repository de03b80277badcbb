#include "estado/con_fallos.hpp"

#include "apoyo/fallos.hpp"

namespace estado {

using namespace apoyo;

namespace {

using estado_del_disco = std::map<std::string, std::string>;

estado_del_disco disco(const std::vector<entrada_real>& entradas) {
    estado_del_disco d;
    for (const entrada_real& e : entradas) {
        d[e.ruta] = std::string(1, e.tipo) + (e.tipo == 'f' ? std::to_string(e.bytes) : "");
    }
    return d;
}

std::string contado(const estado_del_disco& d) {
    std::string t;
    for (const auto& [ruta, que] : d) {
        t += "\n    " + que + " " + ruta;
    }
    return t;
}

// Names that the library makes up for itself.
bool es_de_la_casa(const std::string& ruta) {
    const std::string nombre = ruta.substr(ruta.rfind('/') + 1);
    return nombre.compare(0, 8, "~lumo~~_") == 0 || nombre.compare(0, 2, "LU") == 0;
}

// Where a call of the system fails, these may turn to a directory of the user's, which is no drive of the sequences'.
bool puede_ir_fuera(const std::string& nombre) {
    return nombre == "lumodir_creaFicheroTemporal" || nombre == "lumodir_creaFicheroTemporalConExt";
}

// Answers that count what there is and cannot be told from those of a disk that does not answer.
bool puede_ser_menos(const std::string& nombre) {
    for (const char* s : {"dirwin", "lista", "fichsdir", "timefich_obtener", "tamanyo", "existenFicheros"}) {
        if (nombre.find(s) != nombre.npos) {
            return true;
        }
    }
    return false;
}

}  // namespace

desenlace corre_con_fallos(campo& c, std::uint64_t semilla, unsigned long long& golpes) {
    azar z(semilla);
    reglas r;
    c.empieza(r);
    std::vector<paso> pasos;
    unsigned total = 0;
    for (const fila& f : filas()) {
        total += f.peso;
    }
    const std::size_t largo = 20 + z.menor_que(31);
    while (pasos.size() < largo) {
        std::size_t cual = z.menor_que(total);
        const fila* f = filas().data();
        while (cual >= f->peso) {
            cual -= f->peso;
            ++f;
        }
        generador g{z, r};
        paso p = {f, false, f->genera(g)};
        // What the host does when it is asked, only the model would do: it does not know of the faults.
        if (f->ancha == nullptr || std::string(f->nombre) == "preguntas" || puede_ir_fuera(f->nombre) ||
            (f->aplicable != nullptr && !f->aplicable(r, p.a))) {
            continue;
        }
        pasos.push_back(p);
        const estado_del_disco antes = disco(c.entradas());
        const volumen anterior = r.v;
        const unsigned long long vivos = lumospy_bloques_vivos();
        const unsigned long long internos = interno::i_bloques_internos_vivos();
        static const std::vector<DWORD> codigos = {ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION,
                                                   ERROR_DISK_FULL, ERROR_NETNAME_DELETED};
        const auto llamada = static_cast<unsigned>(1 + z.menor_que(14));
        const DWORD codigo = z.elige(codigos);
        const bool para_siempre = z.uno_de_cada(3);
        c.preguntas = 0;
        std::string real;
        std::string fallo;
        bool golpe = false;
        std::string hecho;
        {
            fallos con;
            con.falla(llamada, codigo, para_siempre);
            real = f->ancha(p.a);
            for (const auto& l : con.historia()) {
                hecho += "\n    " + l.nombre + " " + l.ruta + (l.ha_fallado ? ": fails" : "");
                golpe = golpe || l.ha_fallado;
                golpes += l.ha_fallado ? 1 : 0;
            }
            if (con.manijas_abiertas() != 0) {
                fallo += "\n  a handle is left open";
            }
        }
        c.toma_sucesos();
        if (lumospy_bloques_vivos() != vivos || interno::i_bloques_internos_vivos() != internos) {
            fallo += "\n  blocks are left";
        }
        // What the call would have done to a disk that always answers.
        const std::vector<entrada_real> quedo = c.entradas();
        const estado_del_disco despues = disco(quedo);
        r.empieza_llamada();
        en_8_bits(false);
        const std::string pensado = f->modela(r, p.a, real);
        estado_del_disco entero = disco(c.pensadas(r));
        for (const auto& [ruta, que] : antes) {
            const auto i = despues.find(ruta);
            const auto pensada = entero.find(ruta);
            if ((i == despues.end() || i->second != que) && pensada != entero.end() &&
                pensada->second == que) {
                fallo += "\n  changed though nobody asked: " + ruta;
            }
        }
        // A probe that nothing lets go any more.
        const bool deja_la_sonda =
            para_siempre && std::string(f->nombre).find("se_puede_escribir") != std::string::npos;
        for (const auto& [ruta, que] : despues) {
            if (!deja_la_sonda && antes.count(ruta) == 0 && entero.count(ruta) == 0 && !es_de_la_casa(ruta)) {
                fallo += "\n  made though nobody asked: " + ruta;
            }
        }
        const std::string nombre = f->nombre;
        estado_del_disco sin_la_casa = despues;
        std::erase_if(sin_la_casa, [](const auto& e) { return es_de_la_casa(e.first); });
        std::erase_if(entero, [](const auto& e) { return es_de_la_casa(e.first); });
        if (nombre.find("renombra") != nombre.npos || nombre.find("mueve") != nombre.npos ||
            nombre.find("cambia_extension") != nombre.npos) {
            std::size_t ficheros_antes = 0;
            std::size_t ficheros_despues = 0;
            std::size_t ficheros_pensados = 0;
            for (const auto& [ruta, que] : antes) {
                ficheros_antes += que[0] == 'f' ? 1 : 0;
            }
            for (const auto& [ruta, que] : despues) {
                ficheros_despues += que[0] == 'f' ? 1 : 0;
            }
            for (const auto& [ruta, que] : entero) {
                ficheros_pensados += que[0] == 'f' ? 1 : 0;
            }
            if (ficheros_despues < std::min(ficheros_antes, ficheros_pensados)) {
                fallo += "\n  a file is lost in a renaming";
            }
        }
        const bool es_un_error =  // what they answer with 1
            nombre == "lumodir_borra_fichero_si_existe" ||
            nombre == "lumodir_borra_fichero_con_mensaje_extra_si_existe";
        if (golpe && !es_un_error && real.compare(0, 1, "1") == 0 && !puede_ser_menos(nombre)) {
            const bool sin_directorios = nombre.find("si_es_posible_reintentando") != nombre.npos;
            // What is gone counts as deleted; and Wine lets root open what is read-only.
            const bool da_igual = nombre.find("borra_fichero") != nombre.npos ||
                                  nombre.find("se_puede_escribir") != nombre.npos;
            if (pensado.compare(0, 1, "1") != 0 && !da_igual) {
                fallo += "\n  says yes and should not: " + real + ", expected: " + pensado;
            } else if (pensado.compare(0, 1, "1") == 0 && !sin_directorios && !deja_la_sonda &&
                       sin_la_casa != entero) {
                fallo += "\n  says yes and it is not done; the disk:" + contado(sin_la_casa) +
                         "\n  expected:" + contado(entero);
            }
        }
        if (!fallo.empty()) {
            return {pasos, fallo + "\n  call " + std::to_string(llamada) + " failing with " +
                               std::to_string(codigo) + (para_siempre ? " for ever" : " once") + hecho};
        }
        c.aprende(r, anterior, quedo);
    }
    return {pasos, ""};
}

}  // namespace estado
