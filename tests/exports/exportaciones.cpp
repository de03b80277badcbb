#include "exports/exportaciones.hpp"

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

const std::vector<exportacion>& exportaciones() {
    static const std::vector<exportacion> todas = {
#define EXPORTACION(nombre) hace(#nombre, nombre),
#include "cabeceras/exportaciones.inc"
#undef EXPORTACION
    };
    return todas;
}

}  // namespace exports
