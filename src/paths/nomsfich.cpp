// See nomsfich.hpp.
#include "paths/nomsfich.hpp"

#include <utility>

#include "companions/caracteres.hpp"
#include "companions/crt_rutas.hpp"
#include "companions/error_interno.hpp"
#include "companions/plataforma.hpp"
#include "companions/unicode.hpp"

namespace lumodir {
namespace {

constexpr vista_a caracteres_prohibidos = "<>:\"|\\/*?";

// A second byte 0x5C or 0x7C is no separator and no bar.
constexpr bool i_prohibido(vista_a caracter) noexcept {
    return caracter.size() == 1 && caracteres_prohibidos.find(caracter[0]) != vista_a::npos;
}

constexpr bool i_de_control(vista_a caracter) noexcept {
    return caracter.size() == 1 && static_cast<unsigned char>(caracter[0]) < ' ';
}

// Two steps, and the order matters: a control character counts only in a text that holds a forbidden one too.
// Answers whether there is a text at all.
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
    const cadena_w detalle = a_utf16(cadena);
    por_caracteres(cadena, [&](vista_a caracter) {
        if (i_prohibido(caracter) || i_de_control(caracter)) {
            error_interno_msg_u(R"(c >= ' ' && c != '<' && c != '>' && c != ':' && c != '\"' && c != '|' )"
                                R"(&& c != '\\' && c != '/' && c != '*' && c != '?')",
                                detalle.c_str());
        }
    });
    return true;
}

// A missing text is reported as such, and not as an empty one too.
bool i_comprueba_nombre_base(vista_a nombre_base) {
    i_comprueba(nombre_base.data() == nullptr || !nombre_base.empty(), "lmstdc_strlen(nombre_base) > 0");
    return i_comprueba_caracteres(nombre_base);
}

cadena_a i_en_minusculas(vista_a texto) {
    cadena_a minusculas(texto);
    plataforma::minusculas_ansi(minusculas.datos(), minusculas.size());
    return minusculas;
}

// A part as records hold it; NULL stays NULL, for the checks to report.
cadena_a i_parte(vista_a texto) {
    return texto.data() == nullptr ? cadena_a() : i_en_minusculas(recorta_derecha(texto));
}

cadena_a i_copia(vista_a texto) {
    return texto.data() == nullptr ? cadena_a() : cadena_a(texto);
}

cadena_a i_no_nula(cadena_a texto) {
    return texto.es_nula() ? cadena_a(vista_a()) : std::move(texto);
}

// The record takes over both strings; a missing one becomes empty.
registro_nomsfich i_registro(cadena_a nombre_base, cadena_a extension) {
    registro<Nomsfich> nuevo = registro<Nomsfich>::a_cero();
    i_comprueba_nombre_base(nombre_base);
    i_comprueba_caracteres(extension);
    nuevo->nombre_base = i_no_nula(std::move(nombre_base)).suelta();
    nuevo->extension = i_no_nula(std::move(extension)).suelta();
    return registro_nomsfich(nuevo.suelta());
}

// What a function gives for a record that is not there; the report has been made.
Nomsfich* i_registro_vacio() {
    registro<Nomsfich> vacio = registro<Nomsfich>::a_cero();
    vacio->nombre_base = i_no_nula({}).suelta();
    vacio->extension = i_no_nula({}).suelta();
    return vacio.suelta();
}

vista_a i_base(const Nomsfich* nomsfich) noexcept {
    return a_vista<char>(nomsfich->nombre_base);
}

vista_a i_extension(const Nomsfich* nomsfich) noexcept {
    return a_vista<char>(nomsfich->extension);
}

bool i_hay_dos(const Nomsfich* nomsfich1, const Nomsfich* nomsfich2) {
    const bool hay_primero = i_comprueba(nomsfich1 != nullptr, "(nomsfich1) != NULL");
    return i_comprueba(nomsfich2 != nullptr, "(nomsfich2) != NULL") && hay_primero;
}

}  // namespace

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
        return i_registro(i_en_minusculas(nombre), i_no_nula({}));
    }
    return i_registro(i_en_minusculas(nombre.substr(0, tras_punto - 1)),
                      i_en_minusculas(recorta_derecha(nombre.substr(tras_punto))));
}

}  // namespace lumodir

using namespace lumodir;

Nomsfich* nomsfich_crea(const char* nombre) {
    return i_crea_nomsfich(a_vista(nombre)).suelta();
}

Nomsfich* nomsfich_crea_por_nombre_base_y_extension(const char* nombre_base, const char* extension) {
    return i_registro(i_parte(a_vista(nombre_base)), i_parte(a_vista(extension))).suelta();
}

Nomsfich* nomsfich_copia(const Nomsfich* nomsfich) {
    if (!i_comprueba(nomsfich != nullptr, "(nomsfich) != NULL")) {
        return i_registro_vacio();
    }
    return i_registro(i_copia(i_base(nomsfich)), i_copia(i_extension(nomsfich))).suelta();
}

Nomsfich* nomsfich_cambia_extension(const Nomsfich* nomsfich, const char* extension) {
    if (!i_comprueba(nomsfich != nullptr, "(nomsfich) != NULL")) {
        return i_registro_vacio();
    }
    return i_registro(i_copia(i_base(nomsfich)), i_parte(a_vista(extension))).suelta();
}

void nomsfich_destruye(Nomsfich** nomsfich) {
    i_destruye_en(nomsfich, "(nomsfich) != NULL", "(*nomsfich) != NULL", destruye_registro_nomsfich());
}

const char* nomsfich_nombre_base_fichero(const Nomsfich* nomsfich) {
    return i_comprueba(nomsfich != nullptr, "(nomsfich) != NULL") ? nomsfich->nombre_base : nullptr;
}

const char* nomsfich_extension_fichero(const Nomsfich* nomsfich) {
    return i_comprueba(nomsfich != nullptr, "(nomsfich) != NULL") ? nomsfich->extension : nullptr;
}

char* nomsfich_nombre_fichero(const Nomsfich* nomsfich) {
    if (!i_comprueba(nomsfich != nullptr, "(nomsfich) != NULL")) {
        return cadena_a(vista_a()).suelta();
    }
    const vista_a extension = i_extension(nomsfich);
    const vista_a punto = extension.empty() ? vista_a() : vista_a(".");
    return concatena<char>({i_base(nomsfich), punto, extension}).suelta();
}

unsigned short nomsfich_iguales(const Nomsfich* nomsfich1, const Nomsfich* nomsfich2) {
    // Extensions first: in a directory they differ sooner.
    return i_hay_dos(nomsfich1, nomsfich2) && i_extension(nomsfich1) == i_extension(nomsfich2) &&
                   i_base(nomsfich1) == i_base(nomsfich2)
               ? CIERTO
               : FALSO;
}

int nomsfich_compara(const Nomsfich* nomsfich1, const Nomsfich* nomsfich2) {
    if (!i_hay_dos(nomsfich1, nomsfich2)) {
        return 0;
    }
    const int orden = i_base(nomsfich1).compare(i_base(nomsfich2));
    return orden != 0 ? orden : i_extension(nomsfich1).compare(i_extension(nomsfich2));
}

unsigned short nomsfich_misma_extension(const char* extension1, const char* extension2) {
    const bool hay_primera = i_comprueba_caracteres(a_vista(extension1));
    const bool hay_dos = i_comprueba_caracteres(a_vista(extension2)) && hay_primera;
    return hay_dos && a_vista(extension1) == a_vista(extension2) ? CIERTO : FALSO;
}

unsigned short nomsfich_mismo_nombre_base(const char* nombre_base1, const char* nombre_base2) {
    const bool hay_primero = i_comprueba_nombre_base(a_vista(nombre_base1));
    const bool hay_dos = i_comprueba_nombre_base(a_vista(nombre_base2)) && hay_primero;
    return hay_dos && a_vista(nombre_base1) == a_vista(nombre_base2) ? CIERTO : FALSO;
}

char* nomsfich_nombre_base_path_completo(const char* path_completo) {
    if (!i_comprueba(path_completo != nullptr, "(path_completo) != NULL")) {
        return cadena_a(vista_a()).suelta();
    }
    const vista_a nombre = crt_splitpath(a_vista(path_completo)).nombre;
    i_comprueba_caracteres(nombre);
    return i_en_minusculas(nombre).suelta();
}
