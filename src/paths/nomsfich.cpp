// See nomsfich.hpp.
#include "paths/nomsfich.hpp"

#include <utility>

#include "companions/caracteres.hpp"
#include "companions/crt_rutas.hpp"
#include "companions/error_interno.hpp"
#include "companions/plataforma.hpp"
#include "companions/unicode.hpp"

namespace interno {
namespace {

constexpr vista_a caracteres_prohibidos = "<>:\"|\\/*?";

// Their first byte tells: a second one, 0x5C or 0x7C, is no separator and no bar.
constexpr bool i_prohibido(vista_a caracter) noexcept {
    return caracteres_prohibidos.find(caracter[0]) != vista_a::npos;
}

constexpr bool i_de_control(vista_a caracter) noexcept {
    return static_cast<unsigned char>(caracter[0]) < ' ';
}

cadena_a cad_convertir_a_minusculas(vista_a texto) {
    cadena_a minusculas(texto);
    plataforma::minusculas_ansi(minusculas.datos(), minusculas.size());
    return minusculas;
}

cadena_a i_no_nula(cadena_a texto) {
    return texto.es_nula() ? cadena_a(vista_a()) : std::move(texto);
}

cadena_a i_copia(const char* texto) {
    return texto == nullptr ? cadena_a() : cadena_a(vista_a(texto));
}

vista_a i_base(const Nomsfich& nomsfich) noexcept {
    return a_vista<char>(nomsfich.nombre_base);
}

vista_a i_extension(const Nomsfich& nomsfich) noexcept {
    return a_vista<char>(nomsfich.extension);
}

// Reports what is forbidden in a part, and answers whether there is a text at all.
// Two steps, and the order matters: a control character counts only in a text that holds a forbidden one too.
bool i_comprueba_caracteres(vista_a cadena) {
    if (!i_comprueba(cadena.data() != nullptr, "(cadena) != NULL")) {
        return false;
    }
    bool alguno = false;
    if (cadena.find_first_of(caracteres_prohibidos) != vista_a::npos) {
        por_caracteres(cadena, [&](vista_a caracter) { alguno = alguno || i_prohibido(caracter); });
    }
    if (!alguno) {
        return true;
    }
    // Each of them is a report with the whole text, however long: one conversion serves all.
    const cadena_w detalle = utunicode_ANSI_a_UNICODE(cadena);
    por_caracteres(cadena, [&](vista_a caracter) {
        if (i_prohibido(caracter) || i_de_control(caracter)) {
            error_interno_msg_u(R"(c >= ' ' && c != '<' && c != '>' && c != ':' && c != '\"' && c != '|' )"
                                R"(&& c != '\\' && c != '/' && c != '*' && c != '?')",
                                detalle.c_str());
        }
    });
    return true;
}

// A missing base name is reported as such, and not as an empty one too.
bool i_comprueba_nombre_base(vista_a nombre_base) {
    i_comprueba(nombre_base.data() == nullptr || !nombre_base.empty(), "lmstdc_strlen(nombre_base) > 0");
    return i_comprueba_caracteres(nombre_base);
}

// A part as records hold it; NULL stays NULL, for the checks to report.
cadena_a i_parte(vista_a texto) {
    return texto.data() == nullptr ? cadena_a() : cad_convertir_a_minusculas(recorta_derecha(texto));
}

// The record takes over both strings and is checked; a missing one becomes empty.
registro_nomsfich i_registro(cadena_a nombre_base, cadena_a extension) {
    registro<Nomsfich> nuevo = registro<Nomsfich>::a_cero();
    i_comprueba_nombre_base(nombre_base);
    i_comprueba_caracteres(extension);
    nuevo->nombre_base = i_no_nula(std::move(nombre_base)).suelta();
    nuevo->extension = i_no_nula(std::move(extension)).suelta();
    return registro_nomsfich(nuevo.suelta());
}

}  // namespace

registro_nomsfich i_registro_vacio() {
    registro<Nomsfich> vacio = registro<Nomsfich>::a_cero();
    vacio->nombre_base = i_no_nula({}).suelta();
    vacio->extension = i_no_nula({}).suelta();
    return registro_nomsfich(vacio.suelta());
}

void destruye_registro_nomsfich::operator()(Nomsfich* registro) const noexcept {
    i_libera(registro->nombre_base);
    i_libera(registro->extension);
    i_libera(registro);
}

registro_nomsfich i_crea_nomsfich(vista_a nombre) {
    if (nombre.data() == nullptr) {
        return i_registro({}, i_no_nula({}));
    }
    const std::size_t tras_punto = tras_el_ultimo(nombre, es_punto<char>);
    if (tras_punto == 0) {
        return i_registro(cad_convertir_a_minusculas(nombre), i_no_nula({}));
    }
    return i_registro(cad_convertir_a_minusculas(nombre.substr(0, tras_punto - 1)),
                      cad_convertir_a_minusculas(recorta_derecha(nombre.substr(tras_punto))));
}

registro_nomsfich i_crea_nomsfich(vista_a nombre_base, vista_a extension) {
    return i_registro(i_parte(nombre_base), i_parte(extension));
}

registro_nomsfich i_copia_nomsfich(const Nomsfich& original) {
    return i_registro(i_copia(original.nombre_base), i_copia(original.extension));
}

registro_nomsfich i_copia_nomsfich(const Nomsfich& original, vista_a extension) {
    return i_registro(i_copia(original.nombre_base), i_parte(extension));
}

cadena_a i_nombre_fichero(const Nomsfich& nomsfich) noexcept {
    const vista_a extension = i_extension(nomsfich);
    return concatena<char>({i_base(nomsfich), extension.empty() ? vista_a() : vista_a("."), extension});
}

bool i_iguales(const Nomsfich& nomsfich1, const Nomsfich& nomsfich2) noexcept {
    // Extensions first: in a directory they differ sooner.
    return i_extension(nomsfich1) == i_extension(nomsfich2) && i_base(nomsfich1) == i_base(nomsfich2);
}

int i_compara(const Nomsfich& nomsfich1, const Nomsfich& nomsfich2) noexcept {
    const int por_nombre = i_base(nomsfich1).compare(i_base(nomsfich2));
    return por_nombre != 0 ? por_nombre : i_extension(nomsfich1).compare(i_extension(nomsfich2));
}

bool i_misma_extension(vista_a extension1, vista_a extension2) {
    const bool hay_primera = i_comprueba_caracteres(extension1);
    return i_comprueba_caracteres(extension2) && hay_primera && extension1 == extension2;
}

bool i_mismo_nombre_base(vista_a nombre_base1, vista_a nombre_base2) {
    const bool hay_primero = i_comprueba_nombre_base(nombre_base1);
    return i_comprueba_nombre_base(nombre_base2) && hay_primero && nombre_base1 == nombre_base2;
}

cadena_a i_nombre_base_de_path(vista_a path) noexcept {
    const vista_a nombre = crt_splitpath(path).nombre;
    i_comprueba_caracteres(nombre);
    return cad_convertir_a_minusculas(nombre);
}

}  // namespace interno
