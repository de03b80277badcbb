// The formatter behind every message: see cadena.hpp.
#include "companions/cadena.hpp"

namespace interno {
namespace {

// Length of the placeholder at the start of `formato` (which begins with %); 0 when it is none.
template <class C>
std::size_t i_longitud_marcador(vista<C> formato) noexcept {
    const std::size_t letra = formato.size() > 1 && formato[1] == C('l') ? 2 : 1;
    if (letra >= formato.size()) {
        return 0;
    }
    const C c = formato[letra];
    const bool numero = c == C('d') || c == C('u');
    return numero || (c == C('s') && letra == 1) ? letra + 1 : 0;
}

// Calls `emite` with each piece of the result, in order.
template <class C, class Emite>
void i_recorre_formato(vista<C> formato, const argumento<C>* argumentos, std::size_t num, Emite emite) {
    std::size_t siguiente = 0;
    for (;;) {
        const std::size_t porciento = formato.find(C('%'));
        if (porciento == vista<C>::npos) {
            emite(formato);
            return;
        }
        emite(formato.substr(0, porciento));
        formato.remove_prefix(porciento);
        const std::size_t largo = i_longitud_marcador(formato);
        if (largo != 0 && siguiente < num) {
            emite(argumentos[siguiente++].ver());
            formato.remove_prefix(largo);
        } else {
            emite(formato.substr(0, 1));
            const bool doble = formato.size() > 1 && formato[1] == C('%');
            formato.remove_prefix(doble ? 2 : 1);
        }
    }
}

}  // namespace

template <class C>
cadena<C> i_formatea(vista<C> formato, const argumento<C>* argumentos, std::size_t num, lugar donde) {
    std::size_t longitud = 0;
    i_recorre_formato(formato, argumentos, num, [&](vista<C> trozo) { longitud += trozo.size(); });
    cadena<C> resultado = cadena<C>::con_sitio(longitud, donde);
    C* p = resultado.datos();
    i_recorre_formato(formato, argumentos, num, [&](vista<C> trozo) {
        rasgos<C>::copy(p, trozo.data(), trozo.size());
        p += trozo.size();
    });
    return resultado;
}

template cadena<char> i_formatea(vista<char>, const argumento<char>*, std::size_t, lugar);
template cadena<wchar_t> i_formatea(vista<wchar_t>, const argumento<wchar_t>*, std::size_t, lugar);

}  // namespace interno
