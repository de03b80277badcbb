// See componentes.hpp.
#include "paths/componentes.hpp"

#include "companions/error_interno.hpp"
#include "paths/split_makepath.hpp"

namespace interno {
namespace {

// The base name and the extension that it gives are parts of the path and outlive it; the drive and the
// directory of a share may not.
template <class C>
division<C> i_division_con_comodines(vista<C> ruta) {
    return division<C>(i_comprueba_con_comodines(ruta));
}

// To the composer a view without data is a piece that was not given; the splitter's pieces all are.
template <class C>
vista<C> i_dada(vista<C> pieza) noexcept {
    return pieza.data() == nullptr ? LITERAL(C, "") : pieza;
}

// The path is checked and known not to be NULL. Blanks between the base name and its extension go with it.
template <class C>
cadena<C> i_compone_con_ext(vista<C> ruta, vista<C> ext) {
    const division<C> piezas = i_division_con_comodines(ruta);
    return i_makepath(i_dada(piezas.unidad), i_dada(piezas.directorio),
                      i_dada(recorta_derecha(piezas.nombre)), ext);
}

// A name that ends in a separator has nothing to take an extension from; "/" is let through as it always was.
template <class C>
void i_comprueba_no_acaba_en_barra(vista<C> ruta) {
    const bool bien = !acaba_en(ruta, LITERAL(C, "\\"));
    if constexpr (es_ancho<C>) {
        i_comprueba(bien, R"(path_sin_espacios[num_caracteres - 1] != L'\\')");
    } else {
        i_comprueba_con(bien, R"(path_sin_espacios[num_caracteres - 1] != '\\')", ruta);
    }
}

}  // namespace

template <class C>
vista<C> i_nombre_base_fichero(vista<C> ruta) {
    const bool hay = i_comprueba(ruta.data() != nullptr, "(ruta_completa) != NULL");
    return hay ? i_division_con_comodines(ruta).nombre : vista<C>();
}

template <class C>
vista<C> i_extension_fichero(vista<C> ruta) {
    if (!i_comprueba(ruta.data() != nullptr, "ruta_completa != NULL")) {
        return {};
    }
    const vista<C> recortada = recorta_derecha(ruta);
    i_comprueba(!recortada.empty(), "num_caracteres > 0");
    i_comprueba_no_acaba_en_barra(recortada);
    vista<C> extension = i_division_con_comodines(ruta).extension;
    if (!extension.empty()) {
        extension.remove_prefix(1);
    }
    return extension;
}

template <class C>
cadena<C> i_nombre_y_ext_fichero(vista<C> ruta) {
    const bool hay = i_comprueba(ruta.data() != nullptr, "(nombre) != NULL");
    return cadena<C>(hay ? i_division_con_comodines(ruta).nombre_y_extension() : vista<C>());
}

template <class C>
cadena<C> i_ruta_y_nombre_fichero_sin_extension(vista<C> ruta) {
    const bool hay = i_comprueba(ruta.data() != nullptr, "(ruta_completa) != NULL");
    return hay ? i_compone_con_ext(ruta, vista<C>()) : cadena<C>(vista<C>());
}

template <class C>
cadena<C> i_nombre_fichero_con_ext(vista<C> ruta, std::type_identity_t<vista<C>> ext) {
    const bool hay = i_comprueba(ruta.data() != nullptr, "(nombre) != NULL");
    return hay ? i_compone_con_ext(ruta, ext) : cadena<C>(vista<C>());
}

void i_suprime_barra_final_si_hay(cadena_w& directorio) noexcept {
    if (acaba_en(directorio.ver(), L"\\")) {
        directorio.acorta(directorio.size() - 1);
    }
}

template vista<char> i_nombre_base_fichero(vista<char>);
template vista<wchar_t> i_nombre_base_fichero(vista<wchar_t>);
template vista<char> i_extension_fichero(vista<char>);
template vista<wchar_t> i_extension_fichero(vista<wchar_t>);
template cadena<char> i_nombre_y_ext_fichero(vista<char>);
template cadena<wchar_t> i_nombre_y_ext_fichero(vista<wchar_t>);
template cadena<char> i_ruta_y_nombre_fichero_sin_extension(vista<char>);
template cadena<wchar_t> i_ruta_y_nombre_fichero_sin_extension(vista<wchar_t>);
template cadena<char> i_nombre_fichero_con_ext(vista<char>, vista<char>);
template cadena<wchar_t> i_nombre_fichero_con_ext(vista<wchar_t>, vista<wchar_t>);

}  // namespace interno
