// Deleting the contents of a directory and whole trees, in the two ways of the library: strictly, entry by entry
// with messages, stopping on request; and in silent passes with pauses in between.
//
// Promises: nothing outside the tree is touched, whoever puts links in the place of directories meanwhile; links are
// removed themselves, or left where the system would remove what they point to; a NULL, empty or blank directory and
// a bare drive delete nothing. "All deleted" is answered only by a walk that saw all. Strict deletion leaves
// directories whose name begins with "." alone, and with them their parents; the passes take them too. Both are
// meant so.
// Cannot promise: that a tree other programs write into is gone at the end; the answer and the messages tell.
// Checked by tests/files/borrado_arbol_win32_test.cpp and tools/attack.
#include "cdir.h"
#include "companions/error_interno.hpp"
#include "companions/plataforma.hpp"
#include "companions/sistema.hpp"
#include "files/borrado.hpp"
#include "files/recorrido_borrado.hpp"
#include "files/renombra_protege.hpp"
#include "frame/puente.hpp"
#include "lumodir.h"

namespace lumodir {
namespace {

bool i_es_unidad_sola(vista_w directorio) noexcept {
    return directorio.size() == 2 && es_letra(directorio[0]) && directorio[1] == L':';
}

// An empty directory must never become the root. A bare drive is the current directory to the system and the root to
// who reads it: nobody guesses.
bool i_es_directorio_borrable(const wchar_t* directorio) noexcept {
    return i_comprueba(directorio != nullptr, "(directorio) != NULL") &&
           i_comprueba(hay_texto(a_vista(directorio)), "widestr_longitud(directorio) > 0") &&
           i_comprueba_con(!i_es_unidad_sola(recorta_derecha(a_vista(directorio))),
                           "unidad_sin_directorio == FALSO", a_vista(directorio));
}

// Strict deletion of contents. The flag, where there is one, is read between entries: another thread, or a
// callback, stores 0 in it to stop.
class borrado_estricto final : public visitante_borrado {
public:
    borrado_estricto(vista_w raiz, const volatile unsigned short* continuar) noexcept
        : raiz_(raiz), continuar_(continuar) {}

    bool fichero(entrada_de_arbol& fichero) override {
        if (!sigue()) {
            return false;
        }
        i_borra_fichero_existente(fichero, nullptr, raiz_);
        return true;
    }
    bool sigue() override { return continuar_ == nullptr || *continuar_ != 0; }
    void subdirectorio(entrada_de_arbol& directorio, llegada) override {
        if (continuar_ == nullptr || *continuar_ == CIERTO) {
            i_borra_directorio_existente(directorio);
        }
    }

private:
    vista_w raiz_;
    const volatile unsigned short* continuar_;
};

// The walk stays until the root itself has been removed, which must be the one that was walked.
class arbol_estricto {
public:
    arbol_estricto(const wchar_t* raiz, const volatile unsigned short* continuar)
        : raiz_(raiz), arbol_(raiz_, i_orden_de_borrado()) {
        borrado_estricto visitante(vista_w(raiz), continuar);
        como_ = i_recorre_para_borrar(arbol_, subdirectorios::sin_punto_inicial, visitante);
    }
    unsigned short quita_raiz() {
        raiz_de_arbol raiz(arbol_, como_);
        return i_borra_directorio_existente(raiz);
    }

private:
    raiz_de_recorrido raiz_;
    recorrido arbol_;
    llegada como_;
};

// What a pass left.
struct resultado_de_pasada {
    bool raiz_quitada = false;
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
    explicit pasada_silenciosa(ArrCADENA_u* sin_borrar) noexcept : sin_borrar_(sin_borrar) {}

    bool fichero(entrada_de_arbol& fichero) override {
        if (!i_borra(fichero) && sin_borrar_ != nullptr) {
            sin_borrar_->anade(cadena_w(vista_w(fichero.texto())));
        }
        return true;
    }
    bool sigue() override { return true; }
    void subdirectorio(entrada_de_arbol& directorio, llegada como) override {
        // Its entry was there: whether it is gone, or only said to be, the next pass tells.
        if (como == llegada::falta) {
            resultado_.visto_todo = false;
            resultado_.otra_pasada = true;
        } else if (!quita(directorio, como) && como == llegada::a_medias) {
            resultado_.visto_todo = false;
        }
    }

    // Removes a directory that has been walked; what was not entered and stays has not been seen.
    bool quita(objetivo& directorio, llegada como) {
        if (como == llegada::falta) {
            return false;
        }
        const desenlace intento = i_quita_directorio(directorio);
        if (intento.hecho) {
            return true;
        }
        const bool pasara = i_pasara(intento.codigo);
        if (como == llegada::cerrado) {
            resultado_.visto_todo = false;
            dejado_para_siempre_ = dejado_para_siempre_ || !pasara;
        }
        // What is left on purpose keeps its directories full for good.
        const bool lleno_para_siempre = dejado_para_siempre_ && intento.codigo == ERROR_DIR_NOT_EMPTY;
        resultado_.otra_pasada = resultado_.otra_pasada || (pasara && !lleno_para_siempre);
        return false;
    }
    resultado_de_pasada& resultado() noexcept { return resultado_; }

private:
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
            i_cambia_proteccion(fichero, modo_escritura, CIERTO);
        }
        return fichero.borra().hecho;
    }

    ArrCADENA_u* sin_borrar_;
    bool dejado_para_siempre_ = false;
    resultado_de_pasada resultado_;
};

resultado_de_pasada i_pasada(const raiz_de_recorrido& directorio, bool lo_quita, bool recursiva,
                             ArrCADENA_u* sin_borrar) {
    recorrido arbol(directorio, i_orden_de_borrado());
    pasada_silenciosa visitante(sin_borrar);
    const llegada como =
        i_recorre_para_borrar(arbol, recursiva ? subdirectorios::todos : subdirectorios::ninguno, visitante);
    resultado_de_pasada& resultado = visitante.resultado();
    if (lo_quita) {
        raiz_de_arbol raiz(arbol, como);
        resultado.raiz_quitada = visitante.quita(raiz, como);
    }
    const bool raiz_sin_ver =
        como == llegada::a_medias || (como == llegada::cerrado && !resultado.raiz_quitada);
    resultado.visto_todo = resultado.visto_todo && !raiz_sin_ver;
    return resultado;
}

constexpr unsigned max_pasadas = 20;
constexpr unsigned long pausas_ms[] = {50, 75, 100, 150, 200, 300, 400, 500};
constexpr unsigned num_pausas = sizeof pausas_ms / sizeof pausas_ms[0];

// Passes until nothing is left, with a pause of random length after each that left something, the last included:
// two processes that clean the same tree shall not retry in step.
bool i_pasadas(const wchar_t* directorio, bool lo_quita, bool recursiva) {
    auto sin_borrar = objeto<ArrCADENA_u>::crea();
    const raiz_de_recorrido raiz(directorio);  // for all passes: the pauses are long
    resultado_de_pasada resultado;
    for (unsigned pasada = 0; pasada < max_pasadas; ++pasada) {
        sin_borrar->reduce(0);
        resultado = i_pasada(raiz, lo_quita, recursiva, sin_borrar.get());
        if (sin_borrar->num() == 0 && !resultado.otra_pasada) {
            break;
        }
        plataforma::duerme_ms(pausas_ms[sistema.numero_al_azar() % num_pausas]);
    }
    return sin_borrar->num() == 0 && resultado.visto_todo;
}

void i_pasadas_que_deben_bastar(const wchar_t* directorio, bool lo_quita, bool recursiva) {
    if (i_es_directorio_borrable(directorio)) {
        i_comprueba(i_pasadas(directorio, lo_quita, recursiva),
                    "se_han_borrado_todos_los_ficheros_loc == CIERTO");
    }
}

}  // namespace
}  // namespace lumodir

using namespace lumodir;

void cdir_borra_contenido_directorio_UNICODE(const wchar_t* directorio) {
    if (i_es_directorio_borrable(directorio)) {
        arbol_estricto(directorio, nullptr);
    }
}

void cdir_borra_contenido_directorio(const char* directorio) {
    puente<cdir_borra_contenido_directorio_UNICODE>(directorio);
}

unsigned short cdir_borra_directorio_y_subdirectorios_UNICODE(const wchar_t* directorio) {
    if (!i_es_directorio_borrable(directorio)) {
        return FALSO;
    }
    return arbol_estricto(directorio, nullptr).quita_raiz();
}

void cdir_borra_directorio_y_subdirectorios(const char* directorio) {
    puente_sin_resultado<cdir_borra_directorio_y_subdirectorios_UNICODE>(directorio);
}

unsigned short cdir_borra_directorio_y_subdirectorios_parando(const wchar_t* directorio,
                                                              unsigned short* continuar) {
    // The expression has always been spelled so.
    if (!i_comprueba(continuar != nullptr, "cotinuar != NULL") || !i_es_directorio_borrable(directorio)) {
        return FALSO;
    }
    const volatile unsigned short* bandera = continuar;
    arbol_estricto arbol(directorio, bandera);
    const unsigned short valor = *bandera;
    return valor == CIERTO ? arbol.quita_raiz() : valor;
}

// The three sets of arguments are as callers have come to rely on them: the content deletion that may fail removes
// the directory too, the one that must not fail leaves subdirectories alone.
void cdir_borra_contenido_directorio_reintentando_u(const wchar_t* directorio) {
    i_pasadas_que_deben_bastar(directorio, false, false);
}

unsigned short cdir_borra_contenido_directorio_si_es_posible_reintentando_u(const wchar_t* directorio) {
    return i_es_directorio_borrable(directorio) && i_pasadas(directorio, true, true) ? CIERTO : FALSO;
}

void cdir_borra_directorio_y_subdirectorios_reintentando_u(const wchar_t* directorio) {
    i_pasadas_que_deben_bastar(directorio, true, true);
}

unsigned short cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE(const wchar_t* directorio,
                                                                          ArrCADENA_u* sin_borrar) {
    return i_es_directorio_borrable(directorio) &&
                   i_pasada(raiz_de_recorrido(directorio), true, true, sin_borrar).raiz_quitada
               ? CIERTO
               : FALSO;
}
