// See error_interno.hpp.
#include "companions/error_interno.hpp"

#include <algorithm>

#include "companions/anfitrion.hpp"
#include "companions/error_interno.h"
#include "companions/plataforma.hpp"
#include "companions/unicode.hpp"

namespace lumodir {
namespace {

ErrorInternoReceptor i_receptor = nullptr;
void* i_contexto = nullptr;

// A line put together without allocating: exhausted memory is reported through here too.
class linea_fija {
public:
    linea_fija& operator<<(vista_w trozo) noexcept {
        const std::size_t cabe = std::min(trozo.size(), max_unidades - longitud_);
        rasgos_utf16::copy(unidades_ + longitud_, trozo.data(), cabe);
        longitud_ += cabe;
        return *this;
    }
    linea_fija& operator<<(const char* trozo) noexcept {
        const std::size_t escritas =
            plataforma::ansi_a_utf16(a_vista(trozo), unidades_ + longitud_, max_unidades - longitud_);
        longitud_ += std::min(escritas, max_unidades - longitud_);
        return *this;
    }
    vista_w ver() const noexcept { return vista_w(unidades_, longitud_); }
    const wchar_t* c_str() noexcept {
        unidades_[longitud_] = L'\0';
        return unidades_;
    }

private:
    static constexpr std::size_t max_unidades = 2048;  // longer details are cut: the line is a hint
    wchar_t unidades_[max_unidades + 1];
    std::size_t longitud_ = 0;
};

// A host that plugs in nothing still learns of the report: on standard error and in its debugger.
void i_recibe_por_defecto(const char* expresion, lugar donde, const wchar_t* detalle) noexcept {
    linea_fija linea;
    linea << L"internal error: " << donde.etiqueta() << L", line " << argumento<wchar_t>(donde.linea).ver()
          << L": " << expresion;
    if (detalle != nullptr) {
        linea << L" [" << a_vista(detalle) << L"]";
    }
    linea << L"\n";
    plataforma::escribe_error_estandar(linea.ver());
    plataforma::escribe_depurador(linea.c_str());
}

void i_informa(const char* expresion, const wchar_t* detalle, lugar donde) noexcept {
    if (i_receptor != nullptr) {
        llama_al_anfitrion(i_receptor, expresion, donde.etiqueta(), donde.linea, detalle, i_contexto);
    } else {
        i_recibe_por_defecto(expresion, donde, detalle);
    }
}

}  // namespace

void error_interno(const char* expresion, lugar donde) noexcept {
    i_informa(expresion, nullptr, donde);
}

void error_interno_msg_u(const char* expresion, const wchar_t* detalle, lugar donde) noexcept {
    i_informa(expresion, detalle, donde);
}

void error_interno_msg_u(const char* expresion, vista_w detalle, lugar donde) noexcept {
    const cadena_w copia(detalle);
    i_informa(expresion, copia.c_str(), donde);
}

void error_interno_msg(const char* expresion, vista_a detalle, lugar donde) noexcept {
    const cadena_w detalle_u = a_utf16(detalle);
    i_informa(expresion, detalle_u.c_str(), donde);
}

void error_interno_liberando_mensaje_u(cadena_w mensaje, lugar donde) noexcept {
    i_informa("mensaje == NULL", mensaje.c_str(), donde);
}

void error_interno_default_error(lugar donde) noexcept {
    i_informa("default", nullptr, donde);
}

}  // namespace lumodir

void error_interno_establece_receptor(ErrorInternoReceptor receive, void* context) {
    lumodir::i_receptor = receive;
    lumodir::i_contexto = context;
}
