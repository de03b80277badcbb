// See error_interno.hpp.
#include "companions/error_interno.hpp"

#include <atomic>

#include "companions/anfitrion.hpp"
#include "companions/plataforma.hpp"
#include "companions/unicode.hpp"

namespace interno {
namespace {

ErrorInternoReceptor i_receptor_informe = nullptr;
void* i_contexto_informe = nullptr;

// A line put together without allocating: exhausted memory is reported through here too.
class linea_fija {
public:
    linea_fija& operator<<(vista_w trozo) noexcept {
        for (const wchar_t c : trozo.substr(0, max_unidades - longitud_)) {
            unidades_[longitud_++] =
                c < L' ' ? L' ' : c;  // a line break inside would make two reports of one
        }
        return *this;
    }
    linea_fija& operator<<(const char* trozo) noexcept {
        // As many bytes as units are left: they never convert to more.
        const vista_a cabe = a_vista(trozo).substr(0, max_unidades - longitud_);
        longitud_ += plataforma::ansi_a_utf16(cabe, unidades_ + longitud_, cabe.size());
        return *this;
    }
    vista_w acaba() noexcept {
        const bool en_medio_par = longitud_ > 0 && (unidades_[longitud_ - 1] & 0xFC00) == 0xD800;
        longitud_ -= en_medio_par ? 1 : 0;
        unidades_[longitud_] = L'\n';
        unidades_[longitud_ + 1] = L'\0';
        return vista_w(unidades_, longitud_ + 1);
    }

private:
    static constexpr std::size_t max_unidades = 2048;  // longer details are cut: the line is a hint
    wchar_t unidades_[max_unidades + 2];
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
    const vista_w entera = linea.acaba();
    plataforma::escribe_error_estandar(entera);
    plataforma::escribe_depurador(entera.data());
}

void i_informa(const char* expresion, const wchar_t* detalle, lugar donde) noexcept {
    if (i_receptor_informe != nullptr) {
        llama_al_anfitrion(i_receptor_informe, expresion, donde.etiqueta(), donde.linea, detalle,
                           i_contexto_informe);
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
    const cadena_w copia = detalle.data() == nullptr ? cadena_w() : cadena_w(detalle);
    i_informa(expresion, copia.c_str(), donde);
}

void error_interno_msg(const char* expresion, vista_a detalle, lugar donde) noexcept {
    const cadena_w detalle_u = detalle.data() == nullptr ? cadena_w() : utunicode_ANSI_a_UNICODE(detalle);
    i_informa(expresion, detalle_u.c_str(), donde);
}

void error_interno_liberando_mensaje_u(cadena_w mensaje, lugar donde) noexcept {
    i_informa("mensaje == NULL", mensaje.c_str(), donde);
}

void error_interno_default_error(lugar donde) noexcept {
    i_informa("default", nullptr, donde);
}

void i_memoria_agotada(lugar donde) noexcept {
    static std::atomic<bool> dicho{false};
    if (!dicho.exchange(true)) {
        error_interno("memoria disponible", donde);
    }
    for (;;) {
        plataforma::termina_proceso();
    }
}

void i_establece_receptor(ErrorInternoReceptor receptor, void* contexto) noexcept {
    i_receptor_informe = receptor;
    i_contexto_informe = contexto;
}

}  // namespace interno
