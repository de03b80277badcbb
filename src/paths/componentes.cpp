// See componentes.hpp.
#include "paths/componentes.hpp"

#include "cdir.h"
#include "companions/error_interno.hpp"
#include "lumodir.h"
#include "paths/split_makepath.hpp"

namespace lumodir {
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
    if constexpr (std::is_same_v<C, wchar_t>) {
        i_comprueba(bien, R"(path_sin_espacios[num_caracteres - 1] != L'\\')");
    } else {
        i_comprueba_con(bien, R"(path_sin_espacios[num_caracteres - 1] != '\\')", ruta);
    }
}

}  // namespace

template <class C>
vista<C> i_nombre_base_fichero(vista<C> ruta) {
    if (!i_comprueba(ruta.data() != nullptr, "(ruta_completa) != NULL")) {
        return {};
    }
    return i_division_con_comodines(ruta).nombre;
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
    if (!extension.empty() && extension.front() == C('.')) {
        extension.remove_prefix(1);
    }
    return extension;
}

template <class C>
vista<C> i_nombre_y_extension(vista<C> ruta) {
    if (!i_comprueba(ruta.data() != nullptr, "(nombre) != NULL")) {
        return {};
    }
    return i_division_con_comodines(ruta).nombre_y_extension();
}

template <class C>
cadena<C> i_nombre_fichero_con_ext(vista<C> ruta, std::type_identity_t<vista<C>> ext) {
    if (!i_comprueba(ruta.data() != nullptr, "(nombre) != NULL")) {
        return cadena<C>(vista<C>());
    }
    return i_compone_con_ext(ruta, ext);
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
template vista<char> i_nombre_y_extension(vista<char>);
template vista<wchar_t> i_nombre_y_extension(vista<wchar_t>);
template cadena<char> i_nombre_fichero_con_ext(vista<char>, vista<char>);
template cadena<wchar_t> i_nombre_fichero_con_ext(vista<wchar_t>, vista<wchar_t>);

namespace {

template <class C>
C* i_nueva(vista<C> texto) {
    return cadena<C>(texto).suelta();
}

template <class C>
C* i_nombre_suprimiendo_path(const C* nombre) {
    i_comprueba(nombre != nullptr, "(nombre) != NULL");
    return i_nueva(i_nombre_tras_ultima_barra(a_vista(nombre)));
}

template <class C>
C* i_directorio_nuevo(const C* ruta) {
    if (i_comprueba(ruta != nullptr, "ruta_completa != NULL")) {
        i_comprueba_con(!a_vista(ruta).empty(), "num_caracteres > 0", a_vista(ruta));
    }
    return i_nueva(i_directorio_de_fichero(a_vista(ruta)));
}

template <class C>
C* i_sin_extension(const C* ruta) {
    if (!i_comprueba(ruta != nullptr, "(ruta_completa) != NULL")) {
        return i_nueva(vista<C>());
    }
    return i_compone_con_ext(a_vista(ruta), vista<C>()).suelta();
}

// The name with its extension is cut at "\" alone and not checked, the base name is: callers rely on both.
template <class C>
void i_directorio_y_nombre(const C* ruta, bool con_extension, C** directorio, C** nombre) {
    const bool hay_ruta = i_comprueba(ruta != nullptr, "(ruta_completa) != NULL");
    if (directorio != nullptr) {
        *directorio = hay_ruta ? i_directorio_nuevo(ruta) : i_nueva(vista<C>());
    }
    if (nombre != nullptr) {
        const vista<C> texto = a_vista(ruta);
        *nombre = i_nueva(!hay_ruta       ? vista<C>()
                          : con_extension ? i_nombre_tras_ultima_barra(texto)
                                          : i_nombre_base_fichero(texto));
    }
}

}  // namespace
}  // namespace lumodir

using namespace lumodir;

wchar_t* cdir_nombre_base_fichero_UNICODE(const wchar_t* ruta_completa) {
    return i_nueva(i_nombre_base_fichero(a_vista(ruta_completa)));
}

char* cdir_nombre_base_fichero(const char* ruta_completa) {
    return i_nueva(i_nombre_base_fichero(a_vista(ruta_completa)));
}

wchar_t* cdir_extension_fichero_UNICODE(const wchar_t* ruta_completa) {
    return i_nueva(i_extension_fichero(a_vista(ruta_completa)));
}

char* cdir_extension_fichero(const char* ruta_completa) {
    return i_nueva(i_extension_fichero(a_vista(ruta_completa)));
}

wchar_t* cdir_nombre_y_ext_fichero_UNICODE(const wchar_t* nombre) {
    return i_nueva(i_nombre_y_extension(a_vista(nombre)));
}

char* cdir_nombre_y_ext_fichero(const char* nombre) {
    return i_nueva(i_nombre_y_extension(a_vista(nombre)));
}

wchar_t* cdir_nombre_de_fichero_suprimiendo_path_UNICODE(const wchar_t* nombre) {
    return i_nombre_suprimiendo_path(nombre);
}

char* cdir_nombre_de_fichero_suprimiendo_path(const char* nombre) {
    return i_nombre_suprimiendo_path(nombre);
}

wchar_t* cdir_ruta_acceso_directorio_fichero_UNICODE(const wchar_t* ruta_completa) {
    return i_directorio_nuevo(ruta_completa);
}

char* cdir_ruta_acceso_directorio_fichero(const char* ruta_completa) {
    return i_directorio_nuevo(ruta_completa);
}

wchar_t* cdir_ruta_y_nombre_fichero_sin_extension_UNICODE(const wchar_t* ruta_completa) {
    return i_sin_extension(ruta_completa);
}

char* cdir_ruta_y_nombre_fichero_sin_extension(const char* ruta_completa) {
    return i_sin_extension(ruta_completa);
}

wchar_t* cdir_nombre_fichero_con_ext_UNICODE(const wchar_t* nombre, const wchar_t* ext) {
    return i_nombre_fichero_con_ext(a_vista(nombre), a_vista(ext)).suelta();
}

char* cdir_nombre_fichero_con_ext(const char* nombre, const char* ext) {
    return i_nombre_fichero_con_ext(a_vista(nombre), a_vista(ext)).suelta();
}

void cdir_cambia_extension_nombre_fichero_u(wchar_t** nombre, const wchar_t* ext) {
    if (!i_comprueba(nombre != nullptr && *nombre != nullptr, "(nombre) != NULL")) {
        return;
    }
    // The extension may be a part of the name that goes: the old string lives until the new one is made.
    const cadena_w antiguo = cadena_w::adopta(*nombre);
    *nombre = i_nombre_fichero_con_ext(antiguo.ver(), a_vista(ext)).suelta();
}

void lumodir_directorio_y_nombre_base_fichero_UNICODE(const wchar_t* ruta_completa,
                                                      unsigned short con_extension, wchar_t** directorio,
                                                      wchar_t** nombre) {
    i_directorio_y_nombre(ruta_completa, con_extension == CIERTO, directorio, nombre);
}

void lumodir_directorio_y_nombre_base_fichero(const char* ruta_completa, unsigned short con_extension,
                                              char** directorio, char** nombre) {
    i_directorio_y_nombre(ruta_completa, con_extension == CIERTO, directorio, nombre);
}

void lumodir_suprime_barra_final_si_hay(wchar_t** directorio) {
    if (!i_comprueba(directorio != nullptr && *directorio != nullptr, "(directorio) != NULL")) {
        return;
    }
    const std::size_t longitud = a_vista(*directorio).size();
    if (longitud > 0 && (*directorio)[longitud - 1] == L'\\') {
        (*directorio)[longitud - 1] = L'\0';
    }
}
