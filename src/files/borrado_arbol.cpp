// Deleting the contents of a directory and whole trees, in the two ways of the library: strictly, entry by entry
// with messages, stopping on request; and in silent passes with pauses in between.
//
// Promises: nothing outside the tree is touched, links to directories are removed and never entered; a NULL, empty
// or blank directory deletes nothing. Strict deletion leaves directories whose name begins with "." alone, and
// with them their parents; the passes take them too. Both are meant so.
// Cannot promise: that a tree other programs write into is gone at the end; the answer and the messages tell.
// Checked by tests/files/borrado_arbol_win32_test.cpp.
#include "cdir.h"
#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"
#include "companions/plataforma.hpp"
#include "files/azar.hpp"
#include "files/borrado.hpp"
#include "files/recorrido_borrado.hpp"
#include "frame/puente.hpp"
#include "lumodir.h"
#include "paths/rutas.hpp"

namespace lumodir {
namespace {

// An empty directory must never become the pattern "\*.*".
bool i_es_directorio_borrable(const wchar_t* directorio, lugar donde = lugar::aqui()) noexcept {
    return i_comprueba(directorio != nullptr, "(directorio) != NULL", donde) &&
           i_comprueba(hay_texto(a_vista(directorio)), "widestr_longitud(directorio) > 0", donde);
}

// Strict deletion of contents. The flag, where there is one, is read between entries: another thread, or a
// callback, stores 0 in it to stop.
class borrado_estricto final : public visitante_borrado {
public:
    borrado_estricto(vista_w raiz, const volatile unsigned short* continuar) noexcept
        : raiz_(raiz), continuar_(continuar) {}

    bool fichero(vista_w directorio, vista_w nombre) override {
        if (!sigue()) {
            return false;
        }
        const cadena_w ruta = i_concatena_directorios(directorio, nombre);
        // What a report names is the path as the user knows it: from the root of the deletion on.
        const vista_w bajo_raiz = i_sin_separador_inicial(ruta.ver().substr(raiz_.size()));
        i_borra_fichero_existente(ruta.c_str(), nullptr, {raiz_, bajo_raiz});
        return true;
    }
    bool sigue() override { return continuar_ == nullptr || *continuar_ != 0; }
    void subdirectorio(const wchar_t* ruta) override {
        if (continuar_ == nullptr || *continuar_ == CIERTO) {
            i_borra_directorio_existente(ruta);
        }
    }

private:
    vista_w raiz_;
    const volatile unsigned short* continuar_;
};

void i_borra_contenido(const wchar_t* directorio, const volatile unsigned short* continuar) {
    borrado_estricto visitante(a_vista(directorio), continuar);
    i_recorre_para_borrar(a_vista(directorio), subdirectorios::sin_punto_inicial, visitante);
}

// One silent pass: every file once; what stays is listed. Removals of directories fail in silence.
class pasada_silenciosa final : public visitante_borrado {
public:
    explicit pasada_silenciosa(ArrCADENA_u* sin_borrar) noexcept : sin_borrar_(sin_borrar) {}

    bool fichero(vista_w directorio, vista_w nombre) override {
        cadena_w ruta = i_concatena_directorios(directorio, nombre);
        if (!i_borra(ruta.c_str()) && sin_borrar_ != nullptr) {
            sin_borrar_->anade(std::move(ruta));
        }
        return true;
    }
    bool sigue() override { return true; }
    void subdirectorio(const wchar_t* ruta) override { lmlongpath_RemoveDirectoryW(ruta, nullptr); }

private:
    // Only a file that does not go at once has its read-only mark looked at.
    static bool i_borra(const wchar_t* ruta) {
        DWORD codigo = ERROR_SUCCESS;
        if (lmlongpath_DeleteFileW(ruta, &codigo)) {
            return true;
        }
        if (codigo == ERROR_FILE_NOT_FOUND || codigo == ERROR_PATH_NOT_FOUND) {
            return false;  // somebody else took it: the next pass finds nothing of it
        }
        lumodir_desprotege_fichero_si_existe_UNICODE(ruta);
        return lmlongpath_DeleteFileW(ruta, nullptr) != 0;
    }

    ArrCADENA_u* sin_borrar_;
};

unsigned short i_pasada(const wchar_t* directorio, bool lo_quita, bool recursiva, ArrCADENA_u* sin_borrar) {
    pasada_silenciosa visitante(sin_borrar);
    i_recorre_para_borrar(a_vista(directorio), recursiva ? subdirectorios::todos : subdirectorios::ninguno,
                          visitante);
    return lo_quita && lmlongpath_RemoveDirectoryW(directorio, nullptr) ? CIERTO : FALSO;
}

constexpr unsigned max_pasadas = 20;
constexpr unsigned long pausas_ms[] = {50, 75, 100, 150, 200, 300, 400, 500};
constexpr unsigned num_pausas = sizeof pausas_ms / sizeof pausas_ms[0];

// Passes until nothing is left, with a pause of random length after each that left something, the last included:
// two processes that clean the same tree shall not retry in step.
bool i_pasadas(const wchar_t* directorio, bool lo_quita, bool recursiva) {
    auto sin_borrar = objeto<ArrCADENA_u>::crea();
    for (unsigned pasada = 0; pasada < max_pasadas; ++pasada) {
        sin_borrar->reduce(0);
        i_pasada(directorio, lo_quita, recursiva, sin_borrar.get());
        if (sin_borrar->num() == 0) {
            break;
        }
        plataforma::duerme_ms(pausas_ms[numero_al_azar() % num_pausas]);
    }
    return sin_borrar->num() == 0;
}

void i_pasadas_que_deben_bastar(const wchar_t* directorio, bool lo_quita, bool recursiva, lugar donde) {
    if (i_es_directorio_borrable(directorio, donde)) {
        i_comprueba(i_pasadas(directorio, lo_quita, recursiva),
                    "se_han_borrado_todos_los_ficheros_loc == CIERTO", donde);
    }
}

}  // namespace
}  // namespace lumodir

using namespace lumodir;

void cdir_borra_contenido_directorio_UNICODE(const wchar_t* directorio) {
    if (i_es_directorio_borrable(directorio)) {
        i_borra_contenido(directorio, nullptr);
    }
}

void cdir_borra_contenido_directorio(const char* directorio) {
    puente<cdir_borra_contenido_directorio_UNICODE>(directorio);
}

unsigned short cdir_borra_directorio_y_subdirectorios_UNICODE(const wchar_t* directorio) {
    if (!i_es_directorio_borrable(directorio)) {
        return FALSO;
    }
    i_borra_contenido(directorio, nullptr);
    return i_borra_directorio_existente(directorio);
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
    i_borra_contenido(directorio, bandera);
    const unsigned short valor = *bandera;
    return valor == CIERTO ? i_borra_directorio_existente(directorio) : valor;
}

// The three sets of arguments are as callers have come to rely on them: the content deletion that may fail removes
// the directory too, the one that must not fail leaves subdirectories alone.
void cdir_borra_contenido_directorio_reintentando_u(const wchar_t* directorio) {
    i_pasadas_que_deben_bastar(directorio, false, false, lugar::aqui());
}

unsigned short cdir_borra_contenido_directorio_si_es_posible_reintentando_u(const wchar_t* directorio) {
    return i_es_directorio_borrable(directorio) && i_pasadas(directorio, true, true) ? CIERTO : FALSO;
}

void cdir_borra_directorio_y_subdirectorios_reintentando_u(const wchar_t* directorio) {
    i_pasadas_que_deben_bastar(directorio, true, true, lugar::aqui());
}

unsigned short cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE(const wchar_t* directorio,
                                                                          ArrCADENA_u* sin_borrar) {
    return i_es_directorio_borrable(directorio) ? i_pasada(directorio, true, true, sin_borrar) : FALSO;
}
