#include "exports/exportaciones.hpp"

#include <cstdio>

namespace dll {

std::wstring texto_sano(const llamada& para) {
    if (para.es("lumoreg_")) {
        return exports::clave_en_curso();
    }
    return para.es("taskproc_") ? L"lumodir_no_hay.exe" : exports::texto_en_curso();
}

std::string en_8_bits(const std::wstring& texto) {
    return apoyo::cp1252(apoyo::u8(texto.c_str()));
}

void libera_registros(ArrPunteroConTipo** v, const llamada& de) {
    if (*v == nullptr) {
        return;
    }
    ArrDestruyeRegistro destruye = destruye_bloque;
    if (de.es("fichsdir_")) {
        destruye = reinterpret_cast<ArrDestruyeRegistro>(reinterpret_cast<void (*)()>(fichsdir_destruye));
    } else if (de.es("Unidades")) {
        destruye = reinterpret_cast<ArrDestruyeRegistro>(
            reinterpret_cast<void (*)()>(lumodir_destruyeEstructuraUnidadSistema));
    } else if (de.es("taskproc_")) {
        destruye = reinterpret_cast<ArrDestruyeRegistro>(reinterpret_cast<void (*)()>(taskproc_destruye));
    } else if (de.es("lumoreg_")) {
        destruye = [](void** registro) { arr_DestruyeCADENA_u(reinterpret_cast<ArrCADENA_u**>(registro)); };
    }
    arr_DestruyeEstructurasConTipo(v, destruye);
}

}  // namespace dll

namespace exports {

std::string como_texto(const wchar_t* texto) {
    return texto == nullptr ? "NULL" : apoyo::u8(texto);
}
std::string como_texto(const char* texto) {
    return texto == nullptr ? "NULL" : apoyo::de_cp1252(texto);
}

static std::string como_texto(const ArrCADENA_u* lista) {
    std::string texto;
    for (unsigned long i = 0; lista != nullptr && i < arr_NumElemsCADENA_u(lista); ++i) {
        texto += como_texto(arr_GetCADENA_u(lista, i)) + '|';
    }
    return texto;
}
static std::string como_texto(const ArrCADENA* lista) {
    std::string texto;
    for (unsigned long i = 0; lista != nullptr && i < arr_NumElemsCADENA(lista); ++i) {
        texto += como_texto(arr_GetCADENA(lista, i)) + '|';
    }
    return texto;
}
static std::string como_texto(const ArrPunteroConTipo* lista) {
    return lista == nullptr ? "NULL" : std::to_string(arr_NumElemsPuntero(lista));
}
static std::string como_texto(const void* resultado) {
    return resultado == nullptr ? "NULL" : "something";
}
template <class T>
requires std::is_integral_v<T> std::string como_texto(T resultado) {
    return std::to_string(resultado);
}

namespace {

template <class R>
void acaba(R resultado, const llamada& como, std::string* respuesta) {
    if (respuesta != nullptr) {
        *respuesta += como_texto(resultado);
    }
    if (!como.es("info_GetActualDirectorio")) {  // that one gives back the buffer
        dll::libera_resultado(resultado, como);
    }
}

template <class R, class... A>
class preparada_de final : public preparada {
public:
    explicit preparada_de(const exportacion& e)
        : como_(e.como), funcion_(reinterpret_cast<R (*)(A...)>(e.funcion)), valores_(e.como) {}
    void llama(std::string* respuesta) override {
        if constexpr (std::is_void_v<R>) {
            valores_.da_a(funcion_);
        } else {
            acaba(valores_.da_a(funcion_), como_, respuesta);
        }
    }

private:
    const llamada& como_;
    R (*funcion_)(A...);
    dll::juego<dll::valor, A...> valores_;
};

template <class R, class... A>
exportacion hace(const char* nombre, R (*funcion)(A...)) {
    return {{nombre},
            reinterpret_cast<void (*)()>(funcion),
            [](const exportacion& e) -> std::unique_ptr<preparada> {
                return std::unique_ptr<preparada>(new preparada_de<R, A...>(e));
            }};
}

}  // namespace

// No object: MinGW's threads free what is local to them before they run its destructors.
static thread_local char g_en_curso[200] = "";

void pon_en_curso(const std::string& llamada) {
    g_en_curso[llamada.copy(g_en_curso, sizeof g_en_curso - 1)] = '\0';
}
const char* en_curso() {
    return g_en_curso;
}

static LONG CALLBACK dice_donde(EXCEPTION_POINTERS* excepcion) {
    const DWORD codigo = excepcion->ExceptionRecord->ExceptionCode;
    // The second is how undefined behaviour traps.
    if (codigo == static_cast<DWORD>(EXCEPTION_ACCESS_VIOLATION) ||
        codigo == static_cast<DWORD>(EXCEPTION_ILLEGAL_INSTRUCTION)) {
        std::fprintf(stderr, "exception %lX in %s\n", codigo, g_en_curso);
        std::fflush(stderr);
    }
    return EXCEPTION_CONTINUE_SEARCH;
}
[[maybe_unused]] static void* const g_escucha = ::AddVectoredExceptionHandler(1, dice_donde);

const std::vector<exportacion>& exportaciones() {
    static const std::vector<exportacion> todas = {
#define EXPORTACION(nombre) hace(#nombre, nombre),
#include "cabeceras/exportaciones.inc"
#undef EXPORTACION
    };
    return todas;
}

}  // namespace exports
