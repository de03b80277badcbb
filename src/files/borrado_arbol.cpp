// See borrado_arbol.hpp.
#include "files/borrado_arbol.hpp"

#include "companions/sistema.hpp"
#include "files/borrado.hpp"
#include "files/recorrido_borrado.hpp"
#include "files/renombra_protege.hpp"

namespace interno {
namespace {

// Strict deletion of contents.
class borrado_estricto final : public visitante_borrado {
public:
    borrado_estricto(vista_w raiz, const freno& para) noexcept : raiz_(raiz), freno_(para) {}

    bool fichero(entrada_de_arbol& fichero) override {
        if (!sigue()) {
            return false;
        }
        i_borra_fichero_existente(fichero, nullptr, raiz_);
        return true;
    }
    bool sigue() override { return freno_.contesta(marcha::entera) != marcha::ninguna; }
    bool quita_directorios() const { return freno_.contesta(marcha::entera) == marcha::entera; }
    void subdirectorio(entrada_de_arbol& directorio, llegada) override {
        if (quita_directorios()) {
            i_borra_directorio_existente(directorio);
        }
    }

private:
    vista_w raiz_;
    const freno& freno_;
};

// What a pass left.
struct resultado_de_pasada {
    bool raiz_quitada = false;
    bool sin_ficheros = true;
    bool visto_todo = true;    // nothing stayed that was not looked into
    bool otra_pasada = false;  // a directory could not be removed because of something that passes
};

// The directory still holds what another program has open, or the name of a file that is being deleted.
bool i_pasara(DWORD codigo) noexcept {
    return codigo == ERROR_DIR_NOT_EMPTY || codigo == ERROR_ACCESS_DENIED ||
           codigo == ERROR_SHARING_VIOLATION || codigo == ERROR_DELETE_PENDING;
}

// One silent pass: every file once; what stays is listed. Removals of directories fail in silence.
class pasada_silenciosa final : public visitante_borrado {
public:
    explicit pasada_silenciosa(lista_textos<wchar_t>* sin_borrar) noexcept : sin_borrar_(sin_borrar) {}

    bool fichero(entrada_de_arbol& fichero) override {
        if (!i_borra(fichero)) {
            resultado_.sin_ficheros = false;
            if (sin_borrar_ != nullptr) {
                sin_borrar_->anade(cadena_w(vista_w(fichero.texto())));
            }
        }
        return true;
    }
    bool sigue() override { return true; }
    void subdirectorio(entrada_de_arbol& directorio, llegada como) override {
        // Its entry was there: whether it is gone, or only said to be, the next pass tells.
        if (como == llegada::falta) {
            resultado_.visto_todo = false;
            resultado_.otra_pasada = true;
        } else if (!quita(directorio, como, directorio.profundidad()) && como == llegada::a_medias) {
            resultado_.visto_todo = false;
        }
    }

    // Removes a directory that has been walked; what was not entered and stays has not been seen. The depth of the
    // root is 0.
    bool quita(objetivo& directorio, llegada como, std::size_t profundidad) {
        if (como == llegada::falta) {
            return false;
        }
        bool guarda_algo = !con_algo_dejado_.empty() && con_algo_dejado_.back() == profundidad;
        if (guarda_algo) {
            con_algo_dejado_.quita_ultimo();
        }
        const desenlace intento = i_quita_directorio(directorio);
        if (intento.hecho) {
            return true;
        }
        const bool pasara = i_pasara(intento.codigo);
        if (como == llegada::cerrado) {
            resultado_.visto_todo = false;
            guarda_algo = !pasara;
        }
        // What is left on purpose keeps the directories above it full for good.
        const bool lleno_para_siempre = guarda_algo && intento.codigo == ERROR_DIR_NOT_EMPTY;
        resultado_.otra_pasada = resultado_.otra_pasada || (pasara && !lleno_para_siempre);
        if (guarda_algo && profundidad > 0) {
            i_deja_algo_en(profundidad - 1);
        }
        return false;
    }
    resultado_de_pasada& resultado() noexcept { return resultado_; }

private:
    void i_deja_algo_en(std::size_t profundidad) {
        if (con_algo_dejado_.empty() || con_algo_dejado_.back() != profundidad) {
            con_algo_dejado_.anade(profundidad);
        }
    }
    // Only a file that does not go at once has its read-only mark looked at.
    static bool i_borra(entrada_de_arbol& fichero) {
        const desenlace primero = fichero.borra();
        if (primero.hecho) {
            return true;
        }
        if (primero.ya_no_esta()) {
            return false;  // the next pass finds nothing of it
        }
        const existencia que_hay = fichero.mira();
        if (!que_hay.hay()) {
            return false;  // gone meanwhile, or not to be touched
        }
        if (que_hay.es_de_solo_lectura()) {
            i_cambia_proteccion(fichero, modo_escritura, true);
        }
        return fichero.borra().hecho;
    }

    lista_textos<wchar_t>* sin_borrar_;  // NULL when nobody wants to know
    vector_interno<std::size_t>
        con_algo_dejado_;  // depths of open directories, growing: what is left there stays
    resultado_de_pasada resultado_;
};

resultado_de_pasada i_pasada(const raiz_de_recorrido& directorio, bool lo_quita, bool recursiva,
                             lista_textos<wchar_t>* sin_borrar) {
    recorrido arbol(directorio, orden_de_borrado);
    pasada_silenciosa visitante(sin_borrar);
    const llegada como =
        i_recorre_para_borrar(arbol, recursiva ? subdirectorios::todos : subdirectorios::ninguno, visitante);
    resultado_de_pasada& resultado = visitante.resultado();
    if (lo_quita) {
        raiz_de_arbol raiz(arbol, como);
        resultado.raiz_quitada = visitante.quita(raiz, como, 0);
    }
    const bool raiz_sin_ver =
        como == llegada::a_medias || (como == llegada::cerrado && !resultado.raiz_quitada);
    resultado.visto_todo = resultado.visto_todo && !raiz_sin_ver;
    return resultado;
}

constexpr unsigned max_pasadas = 20;
constexpr unsigned long pausas_ms[] = {50, 75, 100, 150, 200, 300, 400, 500};

}  // namespace

bool i_borra_arbol(const wchar_t* directorio, bool lo_quita, const freno& para) {
    const raiz_de_recorrido raiz(directorio);
    recorrido arbol(raiz, orden_de_borrado);
    borrado_estricto visitante(vista_w(directorio), para);
    const llegada como = i_recorre_para_borrar(arbol, subdirectorios::sin_punto_inicial, visitante);
    // The walk stays until the root itself has been removed, which must be the one that was walked.
    raiz_de_arbol recorrida(arbol, como);
    return lo_quita && visitante.quita_directorios() && i_borra_directorio_existente(recorrida);
}

bool i_borra_en_pasadas(const wchar_t* directorio, bool lo_quita, bool recursiva) {
    const raiz_de_recorrido raiz(directorio);  // for all passes: the pauses are long
    resultado_de_pasada resultado;
    for (unsigned pasada = 0; pasada < max_pasadas; ++pasada) {
        resultado = i_pasada(raiz, lo_quita, recursiva, nullptr);
        if (resultado.sin_ficheros && !resultado.otra_pasada) {
            break;
        }
        sistema.duerme_ms(pausas_ms[sistema.numero_al_azar() % std::size(pausas_ms)]);
    }
    return resultado.sin_ficheros && resultado.visto_todo;
}

bool i_borra_en_una_pasada(const wchar_t* directorio, lista_textos<wchar_t>* sin_borrar) {
    return i_pasada(raiz_de_recorrido(directorio), true, true, sin_borrar).raiz_quitada;
}

}  // namespace interno
