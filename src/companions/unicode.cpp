// See unicode.hpp.
#include "companions/unicode.hpp"

#include "companions/caracteres.hpp"
#include "companions/plataforma.hpp"

namespace interno {
namespace {

// Every code page of Windows holds ASCII as it is: the usual text needs no question to the system.
template <class C>
bool i_es_ascii(vista<C> texto) noexcept {
    unsigned bits = 0;
    for (const C c : texto) {
        bits |= static_cast<unsigned>(static_cast<sin_signo<C>>(c));
    }
    return bits < 0x80;
}

template <class D, class C>
void i_copia_ascii(vista<C> texto, D* destino) noexcept {
    for (const C c : texto) {
        *destino++ = static_cast<D>(c);
    }
}

}  // namespace

cadena_w utunicode_ANSI_a_UNICODE(vista_a texto, lugar donde) {
    const bool ascii = i_es_ascii(texto);
    const bool por_bytes = ascii || i_escritura() == escritura::de_un_byte;
    const std::size_t longitud = por_bytes ? texto.size() : plataforma::ansi_a_utf16(texto, nullptr, 0);
    cadena_w resultado = cadena_w::con_sitio(longitud, donde);
    if (ascii) {
        i_copia_ascii(texto, resultado.datos());
    } else if (!i_convierte_de_un_byte(texto, resultado.datos())) {
        plataforma::ansi_a_utf16(texto, resultado.datos(), longitud);
    }
    return resultado;
}

cadena_w utunicode_ANSI_a_UNICODE(const char* texto, lugar donde) {
    return texto == nullptr ? cadena_w() : utunicode_ANSI_a_UNICODE(vista_a(texto), donde);
}

cadena_a utunicode_UNICODE_a_ANSI(vista_w texto, lugar donde) {
    const bool ascii = i_es_ascii(texto);
    const std::size_t longitud = ascii ? texto.size() : plataforma::utf16_a_ansi(texto, nullptr, 0);
    cadena_a resultado = cadena_a::con_sitio(longitud, donde);
    if (ascii) {
        i_copia_ascii(texto, resultado.datos());
    } else {
        plataforma::utf16_a_ansi(texto, resultado.datos(), longitud);
    }
    return resultado;
}

cadena_a utunicode_UNICODE_a_ANSI(const wchar_t* texto, lugar donde) {
    return texto == nullptr ? cadena_a() : utunicode_UNICODE_a_ANSI(vista_w(texto), donde);
}

utf16_temporal::utf16_temporal(vista_a texto, lugar donde) noexcept {
    if (texto.data() == nullptr) {
        return;
    }
    longitud_ = texto.size();
    if (longitud_ < sitio_corto && i_es_ascii(texto)) {
        i_copia_ascii(texto, corto_);
    } else if (longitud_ >= sitio_corto || !i_convierte_de_un_byte(texto, corto_)) {
        longitud_ = plataforma::ansi_a_utf16(texto, corto_, sitio_corto - 1);
    }
    if (longitud_ < sitio_corto) {
        corto_[longitud_] = L'\0';
        texto_ = corto_;
    } else {
        largo_ = utunicode_ANSI_a_UNICODE(texto, donde);
        texto_ = largo_.c_str();
    }
}

}  // namespace interno
