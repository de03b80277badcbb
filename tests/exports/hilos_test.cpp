// Sixteen threads, each calling every export with sane arguments on a directory and a key of its own: each gets what
// a thread alone gets, every block and every handle comes back, and no directory but its own changes.
//
// The cases are made from the headers, so that a new export cannot be forgotten; left out is what sets something for
// the whole process. Short here; tools/largo stress goes on for LUMODIR_SEGUNDOS.
#include <cstdlib>
#include <map>
#include <thread>

#include "apoyo/directorio.hpp"
#include "apoyo/recursos.hpp"
#include "companions/plataforma.hpp"
#include "exports/exportaciones.hpp"

namespace exports {
namespace {

constexpr unsigned num_hilos = 16;

// ---- what one call answered and told its host, as text

thread_local std::string* g_dicho = nullptr;

void recibe_informe(const char* expresion, const char*, unsigned long, const wchar_t* detalle, void*) {
    *g_dicho += '\n' + como_texto(expresion) + como_texto(detalle);
}
void recibe_aviso(const wchar_t* texto, void*) {
    *g_dicho += '\n' + como_texto(texto);
}
unsigned short recibe_pregunta(const wchar_t* texto, unsigned long codigo, void*) {
    recibe_aviso(texto, nullptr);
    *g_dicho += std::to_string(codigo);
    return 0;
}

// ---- the exports

// What is set for the whole process is set by its one host, before there are threads, and one key of the machine is
// made and deleted by whoever asks whether it may write; what shows the whole process or draws a new name answers
// something else each time.
bool es_de_todo_el_proceso(const llamada& como) {
    return como.es("_establece_receptor") || como.es("_establece_politica") ||
           como.es("permisos_escribir_en_registro") || como.es("msglocal_establece") ||
           como.es("_establece_modo") || como.es("_set_func_");
}
bool cambia_cada_vez(const llamada& como) {
    return como.es("bloques_vivos") || como.es("_crea_fichero") || como.es("_creaFichero");
}

// Two walk over every process of the machine: two threads at once are enough of that.
bool recorre_la_maquina(const llamada& como) {
    return como.es("taskproc_busca_proceso_abierto") || como.es("taskproc_mata_procesos");
}

std::vector<exportacion> todas() {
    std::vector<exportacion> resultado = exportaciones();
    std::erase_if(resultado, [](const exportacion& e) { return es_de_todo_el_proceso(e.como); });
    return resultado;
}

// ---- one thread with its own directory and key

class propio {
public:
    propio(const apoyo::directorio_temporal& d, unsigned numero)
        : d_(d), nombre_("hilo" + std::to_string(100 + numero)) {}

    // What the export answers about its own directory, whose name is blotted out.
    std::string llama(const exportacion& e, unsigned cual) {
        prepara();
        static const char* const textos[] = {"\\arbol", "\\arbol\\uno.txt", "\\arbol\\*.txt"};
        textos_del_hilo() = &textos_;
        texto_en_curso() = d_.ruta_w(nombre_ + textos[cual]).c_str();
        clave_en_curso() = std::wstring(clave_de_prueba) + L"\\" + apoyo::w(nombre_).c_str();
        if (e.como.es("lumoreg_")) {
            ::RegDeleteTreeW(HKEY_CURRENT_USER, clave_en_curso().c_str());
        }
        std::string dicho;
        pon_en_curso(e.como.funcion + ", a thread on " + nombre_);
        g_dicho = &dicho;
        e.prepara()->llama(&dicho);
        g_dicho = nullptr;
        textos_del_hilo() = nullptr;
        for (std::size_t i = dicho.find(nombre_); i != dicho.npos; i = dicho.find(nombre_)) {
            dicho.replace(i, nombre_.size(), "<own>");
        }
        return dicho;
    }
    std::vector<std::string> arbol() const { return d_.arbol(nombre_); }
    void limpia() const { d_.borra(nombre_); }

private:
    // As if nothing had been called yet. Some calls remove empty parents: the file stops them.
    void prepara() const {
        if (d_.arbol(nombre_).size() != 5 || d_.atributos(nombre_ + "\\arbol\\uno.txt") != normales_) {
            d_.borra(nombre_);
            d_.fichero(nombre_ + "\\guarda.txt");
            d_.fichero(nombre_ + "\\arbol\\uno.txt");
            d_.fichero(nombre_ + "\\arbol\\sub\\dos.txt");
            normales_ = d_.atributos(nombre_ + "\\arbol\\uno.txt");
        }
        d_.pon_fecha(nombre_ + "\\arbol\\uno.txt", 1'600'000'000);
        d_.pon_fecha(nombre_ + "\\arbol", 1'600'000'000);
    }
    const apoyo::directorio_temporal& d_;
    const std::string nombre_;
    textos_sanos textos_;
    mutable DWORD normales_ = 0;
};

unsigned segundos() {
    const char* texto = std::getenv("LUMODIR_SEGUNDOS");
    return texto == nullptr ? 0 : static_cast<unsigned>(std::atoi(texto));
}
// Files for what is about files; the directory for all else. At length: every text for every export.
bool toca(const exportacion& e, unsigned cual) {
    const bool de_ficheros = e.como.es("fichero") || e.como.es("Fichero") || e.como.es("timefich_");
    return segundos() != 0 || cual == (de_ficheros ? 1 : 0);
}

struct prevista {
    const exportacion* e;
    unsigned cual;
    std::string dicho;
    bool siempre_igual;  // two threads alone, one after the other, are told the same
};

std::vector<prevista> previstas(const std::vector<exportacion>& llamables,
                                const apoyo::directorio_temporal& d) {
    std::vector<prevista> resultado;
    propio uno(d, 90);
    propio otro(d, 91);
    for (const exportacion& e : llamables) {
        for (unsigned cual = 0; cual < 3; ++cual) {
            if (toca(e, cual)) {
                std::string dicho = uno.llama(e, cual);
                const bool igual = otro.llama(e, cual) == dicho && !cambia_cada_vez(e.como);
                resultado.push_back({&e, cual, std::move(dicho), igual});
            }
        }
    }
    uno.limpia();
    otro.limpia();
    return resultado;
}

}  // namespace

TEST(hilos, dieciseis_llaman_a_todo_y_cada_uno_obtiene_lo_que_obtiene_solo) {
    error_interno_establece_receptor(recibe_informe, nullptr);
    lmaviso_establece_receptor(recibe_aviso, nullptr);
    buclrein_establece_receptor(recibe_pregunta, nullptr);
    const apoyo::sustituye nadie_duerme(interno::plataforma::duerme_ms, [](unsigned long) {});
    const apoyo::directorio_temporal d;
    d.fichero("guarda.txt");
    wchar_t temporal[MAX_PATH + 1];
    ::GetTempPathW(MAX_PATH + 1, temporal);
    ::SetEnvironmentVariableW(L"TMP", d.ruta_w("de todos").c_str());
    ::SetEnvironmentVariableW(L"TEMP", d.ruta_w("de todos").c_str());
    d.directorio("de todos");
    const std::vector<exportacion> llamables = todas();
    const std::vector<prevista> lo_previsto = previstas(llamables, d);
    std::size_t por_hilo = 0;
    for (const prevista& p : lo_previsto) {
        por_hilo += recorre_la_maquina(p.e->como) ? 0 : 1;
        EXPECT_TRUE(p.siempre_igual || cambia_cada_vez(p.e->como))
            << p.e->como.funcion << " answers differently each time: " << p.dicho;
    }

    const unsigned long long vivos = lumospy_bloques_vivos();
    std::atomic<unsigned long> llamadas{0};
    std::vector<std::string> distintas(num_hilos);
    std::size_t antes = 0;
    // The first turn, with few calls, leaves behind what the system keeps for itself.
    for (const bool de_verdad : {false, true}) {
        antes = apoyo::manijas_del_proceso();
        llamadas = 0;
        const ULONGLONG fin = ::GetTickCount64() + 1000ull * segundos();
        std::vector<std::thread> hilos;
        for (unsigned i = 0; i < num_hilos; ++i) {
            hilos.emplace_back([&, i] {
                propio mio(d, i);
                unsigned vuelta = 0;
                do {
                    for (std::size_t n = 0; n < (de_verdad ? lo_previsto.size() : 20); ++n) {
                        // All at the same place, or each at another one.
                        const prevista& p = lo_previsto[(n + i * 21 * (vuelta % 2)) % lo_previsto.size()];
                        if (recorre_la_maquina(p.e->como) && i >= 2) {
                            continue;
                        }
                        const std::string dicho = mio.llama(*p.e, p.cual);
                        ++llamadas;
                        if (p.siempre_igual && dicho != p.dicho && distintas[i].empty()) {
                            distintas[i] = p.e->como.funcion + ": " + dicho + "\ninstead of " + p.dicho;
                        }
                    }
                    ++vuelta;
                } while (de_verdad && ::GetTickCount64() < fin);
                mio.limpia();
            });
        }
        for (std::thread& hilo : hilos) {
            hilo.join();
        }
    }
    for (const std::string& distinta : distintas) {
        EXPECT_EQ(distinta, "");
    }
    EXPECT_GE(llamadas, num_hilos * por_hilo + 2 * (lo_previsto.size() - por_hilo));
    EXPECT_EQ(lumospy_bloques_vivos(), vivos);
    // Whoever waits for a lock for the first time may cost the system a handle, once; an export that leaves one open costs
    // each thread one.
    EXPECT_LT(apoyo::manijas_del_proceso(), antes + num_hilos);
    EXPECT_EQ(d.contenido("guarda.txt"), "contenido");
    d.borra("de todos");
    EXPECT_EQ(d.arbol(), std::vector<std::string>{"guarda.txt"});
    std::printf("calls by 16 threads: %lu, of %zu exports\n", llamadas.load(), llamables.size());
    ::SetEnvironmentVariableW(L"TMP", temporal);
    ::SetEnvironmentVariableW(L"TEMP", temporal);
}

}  // namespace exports
