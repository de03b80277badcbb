// The bridge between the two flavours of text, under the two names that the family knows it by (character-set
// library and character-set utility library): one implementation serves both.
//
// Promises: NULL converts to NULL; nothing else does. Never a look-alike character.
// Cannot promise: a round trip of text that the code page does not hold.
// Checked by tests/companions/unicode_test.cpp.
#pragma once

#include "companions/cadena.hpp"

namespace interno {

cadena_w utunicode_ANSI_a_UNICODE(vista_a texto, lugar donde = lugar::aqui());
cadena_w utunicode_ANSI_a_UNICODE(const char* texto,
                                  lugar donde = lugar::aqui());  // NULL gives a NULL string
cadena_a utunicode_UNICODE_a_ANSI(vista_w texto, lugar donde = lugar::aqui());
cadena_a utunicode_UNICODE_a_ANSI(const wchar_t* texto, lugar donde = lugar::aqui());
// A copy in the flavour that is wanted.
template <class C>
cadena<C> i_en_sabor(vista_w texto, lugar donde = lugar::aqui()) {
    if constexpr (es_ancho<C>) {
        return cadena_w(texto, donde);
    } else {
        return utunicode_UNICODE_a_ANSI(texto, donde);
    }
}

// An 8-bit argument in UTF-16 for the time of one call; short texts need no block.
class utf16_temporal {
public:
    // A view without data stands for NULL, as a pointer that is NULL.
    explicit utf16_temporal(vista_a texto, lugar donde = lugar::aqui()) noexcept;
    explicit utf16_temporal(const char* texto, lugar donde = lugar::aqui()) noexcept
        : utf16_temporal(a_vista(texto), donde) {}
    utf16_temporal(const utf16_temporal&) = delete;
    utf16_temporal& operator=(const utf16_temporal&) = delete;

    const wchar_t* c_str() const noexcept { return texto_; }
    vista_w ver() const noexcept { return vista_w(texto_, longitud_); }

private:
    static constexpr std::size_t sitio_corto = 320;  // units: a classic path and some more
    wchar_t corto_[sitio_corto];
    cadena_w largo_;
    const wchar_t* texto_ = nullptr;
    std::size_t longitud_ = 0;
};

}  // namespace interno
